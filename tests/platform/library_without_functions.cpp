// A shared library that has none of the functions that are looked for in it.

extern "C" int LibraryWithoutFunctions() { return 0; }
