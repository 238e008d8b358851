// Standard streams on Windows. A pipe or file gets the same bytes as on other hosts, LF and no CR LF: a
// report or a JSON document is then one file wherever it was written, and every reader of text or JSON
// here takes LF. A console window is set to UTF-8 and to the signs for colours while the program runs; it
// is the window of the person's shell, so it is put back, also when Ctrl-C ends the program.
#include "platform/terminal.h"

#include <cstddef>
#include <cstdio>

#include <windows.h>

#include <fcntl.h>
#include <io.h>

namespace kv {

namespace {

constexpr std::size_t StreamBuffer = 1 << 16; // bytes

struct ConsoleMode {
    HANDLE Console = nullptr; // null: the stream is none
    DWORD Before = 0;
};
ConsoleMode Modes[2];    // output and error
UINT CodePageBefore = 0; // 0: no console

HANDLE HandleOf(StandardStream stream)
{
    return GetStdHandle(stream == StandardStream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

void ShowColours(StandardStream stream, ConsoleMode& mode)
{
    const HANDLE handle = HandleOf(stream);
    if (GetConsoleMode(handle, &mode.Before) == 0)
        return;
    mode.Console = handle;
    // An older window refuses it and is no terminal then.
    SetConsoleMode(handle, mode.Before | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

void RestoreWindow()
{
    for (const ConsoleMode& mode : Modes) {
        if (mode.Console != nullptr)
            SetConsoleMode(mode.Console, mode.Before);
    }
    if (CodePageBefore != 0)
        SetConsoleOutputCP(CodePageBefore);
}

// Asked when nobody else takes the interruption: the system ends the program behind it. The streams stay
// as they are, since the program may just wait for one.
BOOL WINAPI OnInterruption(DWORD)
{
    RestoreWindow();
    return FALSE;
}

} // namespace

void PrepareStreams()
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    // Without a buffer a window would get the bytes of a letter one by one and show none of them.
    std::setvbuf(stdout, nullptr, _IOFBF, StreamBuffer);
    std::setvbuf(stderr, nullptr, _IOFBF, StreamBuffer);
    ShowColours(StandardStream::Output, Modes[0]);
    ShowColours(StandardStream::Error, Modes[1]);
    CodePageBefore = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    SetConsoleCtrlHandler(OnInterruption, TRUE);
}

bool ReachesCaller(StandardStream stream)
{
    const HANDLE handle = HandleOf(stream);
    if (handle != nullptr && handle != INVALID_HANDLE_VALUE)
        return true; // a pipe or a file of the caller
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0 && GetLastError() != ERROR_ACCESS_DENIED)
        return false; // denied: it has been taken before
    return std::freopen("CONOUT$", "w", stream == StandardStream::Output ? stdout : stderr) != nullptr;
}

void RestoreStreams()
{
    std::fflush(stdout);
    std::fflush(stderr);
    RestoreWindow();
}

bool IsTerminal(StandardStream stream)
{
    DWORD mode = 0;
    return GetConsoleMode(HandleOf(stream), &mode) != 0 && (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

} // namespace kv
