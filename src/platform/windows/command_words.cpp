// The words of a Windows call, from the wide command line. Those of main() are ANSI: a letter that the code
// page lacks has become one that looks like it there, which may be the name of another file.
#include "platform/command_words.h"

#include <windows.h>
// Beside it, as the lean one leaves it out.
#include <shellapi.h>

#include "platform/windows/wide_text.h"

namespace kv {

std::vector<std::string> CommandWords(int, const char* const*)
{
    int count = 0;
    LPWSTR* const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> words;
    for (int i = 1; i < count; ++i)
        words.push_back(Utf8FromWide(wide[i]));
    LocalFree(wide);
    return words;
}

} // namespace kv
