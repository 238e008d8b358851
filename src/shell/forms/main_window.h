// The program's one working window, Form1.
#pragma once

#include <QMainWindow>

namespace kv {

// The whole life of the window program; gives its exit status.
int RunWindow(int argc, char** argv);

class MainWindow : public QMainWindow {
  public:
    MainWindow();
};

} // namespace kv
