// Paths between people, program and the POSIX host: both forms, drives, lookup without case.
#include "platform/paths.h"

#include "platform/files.h"
#include "platform/run_error.h"
#include "platform/scratch_folder.h"
#include "platform/text.h"
#include "support/answers.h"

namespace kv {
namespace {

constexpr const char* Drives = "KORVANTI_DRIVES";

class HostPaths : public ScratchFolder {
  protected:
    void SetUp() override
    {
        ScratchFolder::SetUp();
        FolderBefore = std::filesystem::current_path();
        std::filesystem::current_path(Folder);
        SetVariable(Drives, std::nullopt);
    }
    void TearDown() override
    {
        std::filesystem::current_path(FolderBefore);
        ScratchFolder::TearDown();
    }
    void MakeFolderFor(const std::string& name) const { std::filesystem::create_directories(Folder / name); }
    // Host path of an entry of the folder.
    std::string Host(const std::string& name) const { return (Folder / name).string(); }

  private:
    std::filesystem::path FolderBefore;
};

TEST_F(HostPaths, BothFormsBecomeBackslashPaths)
{
    EXPECT_EQ(FromHostPath("/srv/dxf/"), "\\srv\\dxf\\");
    EXPECT_EQ(FromHostPath("/srv/dxf"), "\\srv\\dxf");
    EXPECT_EQ(FromHostPath("\\srv\\dxf\\door.dxf"), "\\srv\\dxf\\door.dxf");
    EXPECT_EQ(FromHostPath("/"), "\\");
    EXPECT_EQ(FromHostPath("/srv//dxf/./a"), "\\srv\\dxf\\a");
    EXPECT_EQ(FromHostPath("/srv/../a"), "\\srv\\..\\a"); // the folder above a link is the disk's affair
    EXPECT_EQ(FromHostPath("\\\\server\\share\\a"), "\\\\server\\share\\a");
}

TEST_F(HostPaths, DrivePathsStayDrivePaths)
{
    EXPECT_EQ(FromHostPath("C:\\dxf\\a.dxf"), "C:\\dxf\\a.dxf");
    EXPECT_EQ(FromHostPath("c:/dxf/"), "c:\\dxf\\");
    EXPECT_EQ(FromHostPath("C:"), "C:\\");
    EXPECT_EQ(FromHostPath("C:dxf"), "C:\\dxf");
}

TEST_F(HostPaths, ARelativePathStandsInTheCurrentFolder)
{
    EXPECT_EQ(ShownPath(FromHostPath("door.dxf")), Host("door.dxf"));
    EXPECT_EQ(ShownPath(FromHostPath("./sub/door.dxf")), Host("sub/door.dxf"));
    EXPECT_EQ(ShownPath(FromHostPath("sub\\door.dxf")), Host("sub/door.dxf"));
    EXPECT_EQ(ShownPath(FromHostPath(".")), Folder.string());
    EXPECT_EQ(ShownPath(FromHostPath("../a")), Host("../a"));
    std::filesystem::current_path("/");
    EXPECT_EQ(FromHostPath("door.dxf"), "\\door.dxf");
    EXPECT_EQ(FromHostPath("."), "\\");
}

TEST_F(HostPaths, AnEmptyPathStaysEmptyAndLeadsNowhere)
{
    EXPECT_EQ(FromHostPath(""), "");
    EXPECT_EQ(ToHostPath(""), "");
    EXPECT_FALSE(test::FolderStands(""));
    EXPECT_EQ(ReplaceFile("", "x").Number, ErrorPathNotFound);
    EXPECT_TRUE(Names().empty());
}

TEST_F(HostPaths, HostNamesAreUtf8)
{
    EXPECT_EQ(FromHostPath("/srv/T\xC3\xBCr.dxf"), "\\srv\\T\xFCr.dxf");
    PutFile("T\xC3\xBCr.dxf", "x");
    EXPECT_EQ(ToHostPath(PathOf("T\xC3\xBCr.dxf")), Host("T\xC3\xBCr.dxf"));
    EXPECT_EQ(ToHostPath(PathOf("T\xC3\x9CR.DXF")), Host("T\xC3\xBCr.dxf")); // U-umlaut
}

TEST_F(HostPaths, EachComponentIsLookedUpWithoutCase)
{
    MakeFolderFor("Srg/Deep");
    PutFile("Srg/Deep/Door.Dxf", "x");
    EXPECT_EQ(ToHostPath(PathOf("SRG\\DEEP\\DOOR.DXF")), Host("Srg/Deep/Door.Dxf"));
    EXPECT_EQ(ToHostPath(PathOf("srg\\deep\\")), Host("Srg/Deep/"));
    EXPECT_TRUE(test::FileStands(PathOf("srg\\deep\\door.dxf")));
}

TEST_F(HostPaths, TheExactSpellingWinsOverAnother)
{
    PutFile("DOOR.DXF", "upper");
    PutFile("door.dxf", "lower");
    std::string contents;
    EXPECT_TRUE(ReadWholeFile(PathOf("door.dxf"), contents).Ok());
    EXPECT_EQ(contents, "lower");
    EXPECT_TRUE(ReadWholeFile(PathOf("DOOR.DXF"), contents).Ok());
    EXPECT_EQ(contents, "upper");
}

TEST_F(HostPaths, OfSeveralOtherSpellingsTheFirstInByteOrderIsTaken)
{
    for (const char* const name : {"door", "doOr", "dOor", "DOor", "Door", "DooR", "dooR", "doOR"})
        PutFile(name, name);
    EXPECT_EQ(ToHostPath(PathOf("DOOR")), Host("DOor"));
}

TEST_F(HostPaths, TheExactFolderWinsForANewFileToo)
{
    MakeFolderFor("SRG");
    MakeFolderFor("Srg");
    EXPECT_EQ(ToHostPath(PathOf("Srg\\new")), Host("Srg/new"));
    EXPECT_EQ(ToHostPath(PathOf("srg\\new")), Host("SRG/new"));
}

TEST_F(HostPaths, ANewComponentIsMadeAsSpelled)
{
    MakeFolderFor("srg");
    EXPECT_EQ(ToHostPath(PathOf("SRG\\New\\Door.P")), Host("srg/New/Door.P"));
    EXPECT_TRUE(MakeFolders(PathOf("SRG\\New\\Sub\\")).Ok());
    EXPECT_TRUE(ReplaceFile(PathOf("SRG\\NEW\\SUB\\Door.P"), "x").Ok());
    EXPECT_EQ(FileText("srg/New/Sub/Door.P"), "x");
    EXPECT_EQ(Names(), std::vector<std::string>{"srg"});
}

TEST_F(HostPaths, AFileWrittenInAnotherCaseReplacesTheOneThatStands)
{
    PutFile("Indice.prg", "old");
    EXPECT_TRUE(ReplaceFile(PathOf("INDICE.PRG"), "new").Ok());
    EXPECT_EQ(Names(), std::vector<std::string>{"Indice.prg"});
    EXPECT_EQ(FileText("Indice.prg"), "new");
}

TEST_F(HostPaths, ALinkWithoutAnEndIsAnEntryThatStands)
{
    std::filesystem::create_symlink("nowhere", Folder / "Link");
    EXPECT_EQ(ToHostPath(PathOf("lINK")), Host("Link"));
    PutFile("LINK", "x");
    EXPECT_EQ(ToHostPath(PathOf("Link")), Host("Link"));
}

TEST_F(HostPaths, DriveLettersAreFoldersUnderTheDrivesFolder)
{
    MakeFolderFor("drives/c/dxf");
    SetVariable(Drives, Host("drives"));
    PutFile("drives/c/dxf/door.dxf", "x");
    EXPECT_EQ(ToHostPath("C:\\DXF\\Door.dxf"), Host("drives") + "/c/dxf/door.dxf");
    EXPECT_TRUE(test::FileStands("c:\\dxf\\door.dxf"));
    EXPECT_TRUE(test::FolderStands("C:\\"));
    EXPECT_TRUE(test::FolderStands("C:"));
}

TEST_F(HostPaths, ADriveThatIsNotThereLeadsNowhere)
{
    MakeFolderFor("drives/c");
    SetVariable(Drives, Host("drives"));
    EXPECT_EQ(ToHostPath("D:\\dxf\\door.dxf"), "");
    EXPECT_EQ(MakeFolders("D:\\dxf\\").Number, ErrorPathNotFound);
    EXPECT_EQ(MakeFolders("D:\\dxf\\").Cause, "no drive D:");
    EXPECT_FALSE(std::filesystem::exists(Folder / "drives/D"));
}

TEST_F(HostPaths, WithoutADrivesFolderADrivePathNeverLandsInTheCurrentFolder)
{
    for (const std::optional<std::string>& unset :
         {std::optional<std::string>(), std::optional<std::string>("")}) {
        SetVariable(Drives, unset);
        for (const std::string path : {"C:\\door.p", "C:\\sub\\door.p", "C:door.p", "C:"}) {
            EXPECT_EQ(ToHostPath(path), "") << path;
            EXPECT_EQ(ReplaceFile(path, "x").Number, ErrorPathNotFound) << path;
            EXPECT_EQ(MakeFolders(path).Number, ErrorPathNotFound) << path;
            EXPECT_EQ(CheckWritable(path).Number, ErrorPathNotFound) << path;
            EXPECT_FALSE(test::FolderStands(path)) << path;
        }
    }
    EXPECT_TRUE(Names().empty());
}

TEST_F(HostPaths, ANameOutsideTheCodePageGoesUnderItsStandIn)
{
    PutFile("\xD0\x94.dxf", "Cyrillic");
    PutFile("\xFF.dxf", "no UTF-8");
    PutFile("?.dxf", "question mark");
    const std::string path = PathOf("\xD0\x94.dxf");
    EXPECT_EQ(FileNameOf(path).substr(0, 2), "D~");
    EXPECT_EQ(ToHostPath(path), Host("\xD0\x94.dxf"));
    EXPECT_TRUE(ReplaceFile(path, "x").Ok());
    EXPECT_EQ(FileText("\xD0\x94.dxf"), "x");
    EXPECT_TRUE(ReplaceFile(PathOf("\xFF.dxf"), "y").Ok());
    EXPECT_EQ(FileText("\xFF.dxf"), "y");
    EXPECT_EQ(ToHostPath(PathOf("?.dxf")), "");
    EXPECT_EQ(ReplaceFile(PathOf("?.dxf"), "x").Number, ErrorPathNotFound);
    EXPECT_EQ(FileText("?.dxf"), "question mark");
    EXPECT_EQ(Names().size(), 3u);
}

TEST_F(HostPaths, ANulByteLeadsNowhere)
{
    PutFile("door", "x");
    EXPECT_FALSE(test::FileStands(PathOf("door") + std::string("\0.dxf", 5)));
}

TEST_F(HostPaths, PathsForPeopleAreInTheHostsForm)
{
    EXPECT_EQ(ShownPath("\\srv\\T\xFCr.dxf"), "/srv/T\xFCr.dxf");
    EXPECT_EQ(ShownPath("C:\\dxf\\a.dxf"), "C:\\dxf\\a.dxf"); // no folder stands for the drive
    SetVariable(Drives, "/mnt/shop");
    EXPECT_EQ(ShownPath("C:\\dxf\\a.dxf"), "/mnt/shop/C/dxf/a.dxf");
    EXPECT_EQ(ShownPath("C:dxf"), "/mnt/shop/C/dxf");
    EXPECT_EQ(ShownPath(""), "");
}

TEST_F(HostPaths, TheConfigurationFolderFollowsTheDesktopsRules)
{
    SetVariable("XDG_CONFIG_HOME", "/cfg");
    EXPECT_EQ(UserConfigFolder(), "\\cfg\\korvanti\\");
    SetVariable("XDG_CONFIG_HOME", "relative"); // to be ignored
    SetVariable("HOME", "/home/anna");
    EXPECT_EQ(UserConfigFolder(), "\\home\\anna\\.config\\korvanti\\");
    SetVariable("XDG_CONFIG_HOME", std::nullopt);
    EXPECT_EQ(UserConfigFolder(), "\\home\\anna\\.config\\korvanti\\");
}

TEST_F(HostPaths, EnvironmentVariablesAreTextOfTheCodePage)
{
    SetVariable("DIRNOT", "/not/T\xC3\xBCr");
    EXPECT_EQ(Environment("DIRNOT"), "/not/T\xFCr");
    SetVariable("DIRNOT", std::nullopt);
    EXPECT_EQ(Environment("DIRNOT"), "");
}

TEST_F(HostPaths, TheExecutableStandsWhereItsNameSays)
{
    EXPECT_TRUE(test::FileStands(ExeName()));
    EXPECT_TRUE(BeginsWith(ExeName(), "\\"));
}

} // namespace
} // namespace kv
