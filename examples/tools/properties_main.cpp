#include <QTimer>

#include "tools/properties_window.h"
#include "tools/toolkit.h"

int main(int argc, char** argv) {
  using namespace tarvo::tools;
  return RunTool("_PROPERTIES", argc, argv, [](Tool& tool, const ToolOptions& options) {
    Toolkit toolkit;
    PropertiesWindow window(tool);
    if (options.closes) QTimer::singleShot(0, &window, &QDialog::accept);
    toolkit.Run(window);
    return 0;
  });
}
