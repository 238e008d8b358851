// hold_file SIGN MILLISECONDS FILE...: a Windows program that has files open and shares them with nobody, as
// another program of the shop might. Makes the file SIGN when it holds them all; lets go after the time, or
// when SIGN is taken away. Status 1, and no SIGN, when a file cannot be opened.
#include <cstdio>
#include <string>

#include <windows.h>

#include <shellapi.h>

namespace {

HANDLE Open(const std::wstring& path, DWORD access, DWORD way)
{
    constexpr DWORD sharedWithNobody = 0;
    return CreateFileW(path.c_str(), access, sharedWithNobody, nullptr, way, FILE_ATTRIBUTE_NORMAL, nullptr);
}

} // namespace

int main()
{
    int count = 0;
    LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
    if (count < 4) {
        std::fputs("hold_file SIGN MILLISECONDS FILE...\n", stderr);
        return 2;
    }
    for (int i = 3; i < count; ++i) {
        if (Open(words[i], GENERIC_READ, OPEN_EXISTING) == INVALID_HANDLE_VALUE) {
            std::fprintf(stderr, "hold_file: word %d cannot be opened (%lu)\n", i, GetLastError());
            return 1;
        }
    }
    CloseHandle(Open(words[1], GENERIC_WRITE, CREATE_ALWAYS));
    const ULONGLONG end = GetTickCount64() + std::stoul(words[2]);
    while (GetTickCount64() < end && GetFileAttributesW(words[1]) != INVALID_FILE_ATTRIBUTES)
        Sleep(5);
    return 0; // the system closes the files
}
