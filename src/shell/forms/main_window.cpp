#include "shell/forms/main_window.h"
namespace kv {
int RunWindow(int, char**)
{
    return 0;
}
MainWindow::MainWindow() = default;
} // namespace kv
