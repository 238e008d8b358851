// Backslash paths on their own host.
#include "platform/paths.h"

#include "platform/scratch_folder.h"
#include "platform/text.h"

namespace kv {
namespace {

class WindowsPaths : public ScratchFolder {};

TEST_F(WindowsPaths, EitherSlashGivesAFullBackslashPath)
{
    EXPECT_EQ(FromHostPath("C:/dxf/door.dxf"), "C:\\dxf\\door.dxf");
    EXPECT_EQ(FromHostPath("C:\\dxf\\.\\x\\..\\door.dxf"), "C:\\dxf\\door.dxf");
    EXPECT_EQ(FromHostPath("C:\\dxf\\"), "C:\\dxf\\");
    EXPECT_EQ(FromHostPath("door.dxf").substr(1, 2), ":\\"); // of the current folder
    EXPECT_EQ(FromHostPath(""), "");
}

TEST_F(WindowsPaths, ANetworkPathStaysOne)
{
    EXPECT_EQ(FromHostPath("\\\\server\\dxf\\door.dxf"), "\\\\server\\dxf\\door.dxf");
    EXPECT_EQ(FromHostPath("//server/dxf/door.dxf"), "\\\\server\\dxf\\door.dxf");
    EXPECT_EQ(ShownPath("\\\\server\\dxf\\"), "\\\\server\\dxf\\");
}

TEST_F(WindowsPaths, HostTextIsUtf8AndThePathAnsi)
{
    EXPECT_EQ(FromHostPath("C:\\T\xC3\xBCr"), "C:\\T\xFCr");
    EXPECT_EQ(ToHostPath("C:\\T\xFCr"), "C:\\T\xC3\xBCr");
    EXPECT_EQ(FromHostPath("C:\\\xD0\xB4"), "C:\\d~9BC37E61");
    EXPECT_EQ(ToHostPath("C:\\d~9BC37E61"), "C:\\\xD0\xB4");
    EXPECT_EQ(ToHostPath("C:\\?"), ""); // leads nowhere
}

TEST_F(WindowsPaths, BytesThatAreNoUtf8NameNoFile)
{
    const std::string replaced = ToHostPath(FromHostPath("C:\\T\xFCr.dxf"));
    EXPECT_EQ(replaced, "C:\\T\xEF\xBF\xBDr.dxf"); // which is no name that a person gives
}

TEST_F(WindowsPaths, LettersThatAnsiOnlyHasALikenessOfKeepTheirOwnFile)
{
    // A Greek alpha is no "a", nor is a wide "A", nor one with a macron.
    for (const std::string path : {"C:\\\xCE\xB1.dxf", "C:\\\xEF\xBC\xA1.dxf", "C:\\\xC4\x80.dxf"}) {
        EXPECT_NE(UpperCase(FromHostPath(path)), "C:\\A.DXF");
        EXPECT_EQ(ToHostPath(FromHostPath(path)), path);
    }
}

TEST_F(WindowsPaths, TheMarkOfALongPathIsTakenOff)
{
    EXPECT_EQ(FromHostPath("\\\\?\\C:\\dxf\\door.dxf"), "C:\\dxf\\door.dxf");
    EXPECT_EQ(FromHostPath("\\\\?\\UNC\\server\\dxf\\door.dxf"), "\\\\server\\dxf\\door.dxf");
}

TEST_F(WindowsPaths, ALongPathIsNotCut)
{
    const std::string path = "C:\\" + std::string(150, 'a') + "\\" + std::string(150, 'b');
    EXPECT_EQ(FromHostPath(path), path);
}

TEST_F(WindowsPaths, TheSystemsPlacesAreFolders)
{
    EXPECT_TRUE(std::filesystem::is_regular_file(ExeName()));
    EXPECT_TRUE(std::filesystem::is_directory(GetWindowsFolder()));
    EXPECT_EQ(GetWindowsFolder().back(), '\\');
    EXPECT_EQ(UserConfigFolder(), WithBackslash(Environment("APPDATA")) + "Korvanti\\");
}

TEST_F(WindowsPaths, AnUnsetVariableIsEmpty)
{
    SetVariable("KV_TEST_COLOUR", "blue");
    EXPECT_EQ(Environment("KV_TEST_COLOUR"), "blue");
    SetVariable("KV_TEST_COLOUR", std::nullopt);
    EXPECT_EQ(Environment("KV_TEST_COLOUR"), "");
}

} // namespace
} // namespace kv
