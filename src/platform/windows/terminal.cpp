// Asks Windows whether a standard stream is a console window that a person watches.
#include "platform/terminal.h"

#include <windows.h>

namespace kv {

bool IsTerminal(StandardStream stream)
{
    const HANDLE handle =
        GetStdHandle(stream == StandardStream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != 0;
}

} // namespace kv
