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

TEST(FileNames, DevicesOfWindowsGetAnUnderscoreBehindTheirWord)
{
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"CON", "CON_"},         {"con", "con_"},       {"NUL.TXT", "NUL_.TXT"}, {"Aux.a.b", "Aux_.a.b"},
        {"PRN ", "PRN _"},       {"COM1", "COM1_"},     {"COM0", "COM0_"},       {"lpt9.cnc", "lpt9_.cnc"},
        {"LPT\xB2", "LPT\xB2_"}, {"CONIN$", "CONIN$_"}, {"NUL .X", "NUL _.X"},
    };
    for (const auto& [name, made] : rows)
        EXPECT_EQ(NameForFile(name), made);
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
