#include "tools/tool_windows.h"

int main(int argc, char** argv) {
  using namespace tarvo::tools;
  return RunTool("_PROPERTIES", argc, argv, &ShowProperties);
}
