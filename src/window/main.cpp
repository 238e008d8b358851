// The window program: finds the installation, makes the window and hands it the command line.
#include "shell/forms/main_window.h"

int main(int argc, char** argv)
{
    return kv::RunWindow(argc, argv);
}
