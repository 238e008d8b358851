// The window program: finds the installation, makes the window and hands it the command line.
#include "window/main_window.h"

int main(int argc, char** argv)
{
    return kv::RunWindow(argc, argv);
}
