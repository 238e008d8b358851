// What a file may be called, by the rules of Windows.
#include "platform/file_names.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace kv {
namespace {

TEST(FileNames, NearlyEveryNameStaysAsItIs)
{
    for (const char* name : {"DOOR", "Door 12.left", "T\xFCr-1_(2)&3", "CONSOLE", "COM", "COM12", "LPTX",
                             "NULL", ".door", "door..1", "", "A'B"})
        EXPECT_EQ(NameForFile(name), name);
}

TEST(FileNames, ForbiddenAndControlCharactersBecomeUnderscores)
{
    EXPECT_EQ(NameForFile("a\"b<c>d|e?f*g:h/i\\j"), "a_b_c_d_e_f_g_h_i_j");
    for (int c = 0; c < 256; ++c) {
        const std::string name = {'A', static_cast<char>(c), 'B'};
        const bool forbidden =
            c < 32 || c == 127 || std::string("\"<>|?*:/\\").find(static_cast<char>(c)) != std::string::npos;
        EXPECT_EQ(NameForFile(name), forbidden ? "A_B" : name) << c;
    }
}

TEST(FileNames, DevicesOfWindowsGetAnUnderscoreInFront)
{
    for (const std::string name : {"CON", "con", "NUL.TXT", "Aux.a.b", "PRN ", "COM1", "lpt9.cnc", "COM0",
                                   "LPT\xB2", "CONIN$", "NUL .X"})
        EXPECT_EQ(NameForFile(name), "_" + name);
}

TEST(FileNames, AChangedNameIsNotChangedAgain)
{
    for (const char* name : {"CON", "a?b", "NUL:", "C:CON", "\x01"})
        EXPECT_EQ(NameForFile(NameForFile(name)), NameForFile(name)) << name;
}

TEST(FileNames, TheFolderPartEndsAtTheLastSeparator)
{
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"DOOR", ""},
        {"A\\DOOR", "A\\"},
        {"a/b/DOOR", "a/b/"},
        {"C:DOOR", "C:"},
        {"C:\\x/DOOR", "C:\\x/"},
        {"..\\..\\", "..\\..\\"},
        {"\\\\pc\\s\\D:x", "\\\\pc\\s\\D:"},
        {"", ""},
    };
    for (const auto& [text, folder] : rows)
        EXPECT_EQ(FolderPartOf(text), folder) << text;
}

} // namespace
} // namespace kv
