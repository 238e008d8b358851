// The words of a Windows call, from the wide command line. Those of main() are ANSI: a letter that the code
// page lacks has become one that looks like it there, which may be the name of another file. The shells of
// this system leave "*" and "?" to the program.
#include "platform/command_words.h"

#include <algorithm>

#include <windows.h>
// Beside it, as the lean one leaves it out.
#include <shellapi.h>

#include "platform/windows/wide_text.h"

namespace kv {

namespace {

// The files that a pattern counts, by name; none when the word is no pattern.
std::vector<std::string> FilesOf(const std::wstring& word)
{
    std::vector<std::string> files;
    const std::size_t name = word.find_last_of(L"\\/:") + 1; // none: npos + 1 is 0
    if (word.find_first_of(L"*?", name) == std::wstring::npos)
        return files;
    WIN32_FIND_DATAW found{};
    const HANDLE open = FindFirstFileW(word.c_str(), &found);
    if (open == INVALID_HANDLE_VALUE)
        return files;
    do {
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
            files.push_back(Utf8FromWide(word.substr(0, name) + found.cFileName));
    } while (FindNextFileW(open, &found) != 0);
    FindClose(open);
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

std::vector<std::string> CommandWords(int, const char* const*)
{
    int count = 0;
    LPWSTR* const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> words;
    for (int i = 1; i < count; ++i) {
        const std::vector<std::string> files = FilesOf(wide[i]);
        words.insert(words.end(), files.begin(), files.end());
        if (files.empty())
            words.push_back(Utf8FromWide(wide[i]));
    }
    LocalFree(wide);
    return words;
}

} // namespace kv
