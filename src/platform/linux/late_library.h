#pragma once

namespace tarvo {

// A shared library that is loaded when it is first needed and stays until the end of the run. The
// desktop's libraries are reached in this way: few runs of tarvoctl have a use for them, and
// loading them at every start would take longer than most of its work. A system without them has no
// desktop to speak to.
class LateLibrary {
 public:
  // The library's name with its version: "libxcb.so.1".
  explicit LateLibrary(const char* name);

  // Whether the library is there, with every function that was looked for.
  bool IsWhole() const { return isWhole_; }

  // Where a function is; null when the library or the function is not there.
  void* Find(const char* name);

 private:
  void* handle_;
  bool isWhole_;
};

// A function of such a library, called like the one that `Function` is the type of. Only those of a
// whole library may be called.
template <typename Function>
class LateFunction {
 public:
  LateFunction(LateLibrary& library, const char* name)
      : function_(reinterpret_cast<Function*>(library.Find(name))) {}

  template <typename... Arguments>
  auto operator()(Arguments... arguments) const {
    return function_(arguments...);
  }

 private:
  Function* function_;
};

}  // namespace tarvo
