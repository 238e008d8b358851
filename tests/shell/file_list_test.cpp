// The refresh of the file list against real folders: what is listed, when it is built anew, what the
// refresh leaves alone and what may happen while it yields.
#include "shell/file_list_scene.h"

namespace kv {
namespace {

class FileListRefresh : public FileListScene {};

TEST_F(FileListRefresh, ShowsNamesSizeDateAndTimeOfEachDrawing)
{
    PutDrawing("Door left 01.dxf", 1234);
    StampDrawing("Door left 01.dxf", 2003, 2, 7, 4, 5, 6);
    RefreshFileList();
    ASSERT_EQ(FileList.Rows.size(), 1U);
    const std::array<std::string, FileColumns> cells = {"DOORLE~1", "Door left 01.dxf", "Door left 01.dxf",
                                                        "1234",     "02/07/2003",       "04:05:06"};
    EXPECT_EQ(FileList.Rows[0].Cells, cells);
    EXPECT_EQ(FileList.LabDXFPath, Config.SourcePath90);
    EXPECT_EQ(FileList.FileCount, 1);
    EXPECT_EQ(RowsTold, 1);
}

TEST_F(FileListRefresh, SortsByTheShownNameWithoutCase)
{
    for (const char* name : {"beta.dxf", "Gamma.dxf", "ALPHA.DXF"})
        PutDrawing(name);
    RefreshFileList();
    EXPECT_EQ(Column(3), (Texts{"ALPHA.DXF", "beta.dxf", "Gamma.dxf"}));
}

TEST_F(FileListRefresh, OtherFilesAndFoldersAreNotListed)
{
    PutDrawing("a.dxf");
    PutDrawing("a.dwg");
    MakeSource("dxf/old.dxf");
    RefreshFileList();
    EXPECT_EQ(Column(2), (Texts{"a.dxf"}));
}

#if !defined(_WIN32) // where no file has such a name
TEST_F(FileListRefresh, DrawingsThatCannotBeListedAreReportedOnce)
{
    PutDrawing("a.dxf");
    RefreshFileList();
    EXPECT_TRUE(Lines.empty());
    const auto put = [&](const std::u8string& name) {
        std::ofstream(Source("dxf") / std::filesystem::path(name)) << 'x';
    };
    put(u8"a?.dxf");
    put(u8"notes?.txt");
    const std::string folder = ShownPath(Config.SourcePath90);
    const std::string cause = ": its name holds a question mark or a backslash";
    RefreshFileList();
    RefreshFileList();
    EXPECT_EQ(Lines, (Texts{folder + ": 1 drawing cannot be listed, a?.dxf" + cause}));
    EXPECT_EQ(Column(2), (Texts{"a.dxf"}));
    put(u8"?.DXF");
    RefreshFileList();
    ASSERT_EQ(Lines.size(), 2U);
    EXPECT_EQ(Lines[1].find(folder + ": 2 drawings cannot be listed, the first "), 0U) << Lines[1];
}
#endif

TEST_F(FileListRefresh, ManyEqualFilesChangeNothingAndTellNobody)
{
    for (int i = 0; i < 2000; ++i)
        PutDrawing("P" + std::to_string(i) + ".dxf", 0);
    RefreshFileList();
    Select("P77.dxf");
    const Texts before = Column(2);
    RowsTold = Pumps = 0;
    RefreshFileList();
    EXPECT_EQ(RowsTold, 0);
    EXPECT_EQ(SelectionsTold, 0);
    EXPECT_GE(Pumps, 2000); // events run behind each equal entry
    EXPECT_EQ(Column(2), before);
    EXPECT_TRUE(AnyRowSelected());
}

TEST_F(FileListRefresh, SavedAgainWithTheSameSizeAndAnotherTimeStampLosesTheSelection)
{
    PutDrawing("a.dxf");
    PutDrawing("b.dxf");
    StampDrawing("a.dxf", 2003, 2, 7, 4, 5, 6);
    RefreshFileList();
    Select("b.dxf");
    FileList.Current = 1;
    StampDrawing("a.dxf", 2003, 2, 7, 4, 5, 7);
    RefreshFileList();
    EXPECT_EQ(FileList.Rows[0].Cells[5], "04:05:07");
    EXPECT_FALSE(AnyRowSelected());
    EXPECT_EQ(FileList.Current, -1);
    EXPECT_EQ(RowsTold, 2);
    EXPECT_EQ(SelectionsTold, 1);
}

TEST_F(FileListRefresh, AnotherSizeOrAnotherNameBuildsTheListAnew)
{
    PutDrawing("a.dxf", 10);
    StampDrawing("a.dxf", 2003, 2, 7, 4, 5, 6);
    RefreshFileList();
    PutDrawing("a.dxf", 11);
    StampDrawing("a.dxf", 2003, 2, 7, 4, 5, 6);
    RefreshFileList();
    EXPECT_EQ(Column(4), (Texts{"11"}));
    std::filesystem::rename(Source("dxf") / "a.dxf", Source("dxf") / "c.dxf");
    RefreshFileList();
    EXPECT_EQ(Column(2), (Texts{"c.dxf"}));
    EXPECT_EQ(RowsTold, 3);
}

TEST_F(FileListRefresh, AFileMoreOrLessBuildsTheListAnew)
{
    PutDrawing("a.dxf");
    RefreshFileList();
    PutDrawing("b.dxf");
    RefreshFileList();
    EXPECT_EQ(Column(2), (Texts{"a.dxf", "b.dxf"}));
    RemoveDrawing("a.dxf");
    RefreshFileList();
    EXPECT_EQ(Column(2), (Texts{"b.dxf"}));
}

TEST_F(FileListRefresh, AFolderThatDoesNotExistListsNothing)
{
    UseSource("nowhere");
    RefreshFileList();
    EXPECT_TRUE(FileList.Rows.empty());
    EXPECT_EQ(FileList.LabDXFPath, "");
    EXPECT_EQ(RowsTold, 0);
}

TEST_F(FileListRefresh, AFolderThatVanishesEmptiesTheListOnceAndFillsItAgain)
{
    PutDrawing("a.dxf");
    RefreshFileList();
    Select("a.dxf");
    std::filesystem::rename(Source("dxf"), Source("away"));
    RefreshFileList();
    EXPECT_TRUE(FileList.Rows.empty());
    EXPECT_EQ(FileList.LabDXFPath, "");
    EXPECT_EQ(RowsTold, 2);
    EXPECT_EQ(SelectionsTold, 1);
    RefreshFileList();
    EXPECT_EQ(RowsTold, 2);
    std::filesystem::rename(Source("away"), Source("dxf"));
    RefreshFileList();
    EXPECT_EQ(Column(2), (Texts{"a.dxf"}));
    EXPECT_EQ(FileList.LabDXFPath, Config.SourcePath90);
}

TEST_F(FileListRefresh, ABlankSourcePathListsNothing)
{
    PutDrawing("a.dxf");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(Source("dxf")); // which a name without folder would be looked for in
    for (const char* blank : {"", "   "}) {
        Config.SourcePath90 = blank;
        RefreshFileList();
        EXPECT_TRUE(FileList.Rows.empty());
    }
    std::filesystem::current_path(before);
}

TEST_F(FileListRefresh, ASourcePathMayLackItsBackslash)
{
    PutDrawing("a.dxf");
    Config.SourcePath90.pop_back();
    RefreshFileList();
    EXPECT_EQ(Column(2), (Texts{"a.dxf"}));
    EXPECT_EQ(FileList.LabDXFPath, Config.SourcePath90 + "\\");
}

TEST_F(FileListRefresh, TheSourceFolderIsThatOfTheSelectedSystem)
{
    MakeSource("evo");
    PutFile("evo/e.dxf", "x");
    PutDrawing("a.dxf");
    Config.SourcePathEV = FromHostPath(Source("evo").string() + "/");
    RefreshFileList();
    EXPECT_EQ(Column(2), (Texts{"a.dxf"}));
    Config.GenesisEV = true;
    RefreshFileList();
    EXPECT_EQ(Column(2), (Texts{"e.dxf"}));
    EXPECT_EQ(FileList.LabDXFPath, Config.SourcePathEV);
}

// Nothing but the listing is compared.
TEST_F(FileListRefresh, AnotherFolderWithTheSameListingKeepsTheCaption)
{
    MakeSource("twin");
    PutDrawing("a.dxf");
    StampDrawing("a.dxf", 2003, 2, 7, 4, 5, 6);
    std::filesystem::copy_file(Source("dxf") / "a.dxf", Source("twin") / "a.dxf");
    std::filesystem::last_write_time(Source("twin") / "a.dxf",
                                     std::filesystem::last_write_time(Source("dxf") / "a.dxf"));
    RefreshFileList();
    const std::string caption = FileList.LabDXFPath;
    UseSource("twin");
    RefreshFileList();
    EXPECT_EQ(RowsTold, 1);
    EXPECT_EQ(FileList.LabDXFPath, caption);
}

TEST_F(FileListRefresh, ACountedEntryWithAnotherExtensionLeavesAnEmptyRowAtTheEnd)
{
    PutDrawing("a.dxfx"); // stands first in the listing
    PutDrawing("b.dxf");
    PutDrawing("c.DXF");
    RefreshFileList();
    EXPECT_EQ(FileList.FileCount, 3);
    EXPECT_EQ(Column(2), (Texts{"b.dxf", "c.DXF", ""}));
    EXPECT_EQ(FileList.Rows[2].Cells, FileRow().Cells);
}

TEST_F(FileListRefresh, AFolderOfUncountedExtensionsAloneHasEmptyRowsOnly)
{
    PutDrawing("a.dxf~");
    RefreshFileList();
    EXPECT_EQ(Column(2), (Texts{""}));
    EXPECT_EQ(FileList.LabDXFPath, Config.SourcePath90);
}

TEST_F(FileListRefresh, ANarrowNameColumnShowsShortNamesAndKeepsTheLongOnes)
{
    PutDrawing("kitchen door.dxf");
    FileList.Widths[2] = 11;
    RefreshFileList();
    EXPECT_EQ(Column(3), (Texts{"KITCHE~1"}));
    EXPECT_EQ(Column(2), (Texts{"kitchen door.dxf"}));
    EXPECT_EQ(FileList.Shown, ShownNames::ShortNames);
}

TEST_F(FileListRefresh, ANameColumnJustAboveElevenShowsLongNames)
{
    PutDrawing("kitchen door.dxf");
    FileList.Widths[2] = 11.1;
    RefreshFileList();
    EXPECT_EQ(Column(3), (Texts{"kitchen door.dxf"}));
    EXPECT_EQ(FileList.Shown, ShownNames::LongNames);
}

TEST_F(FileListRefresh, ATickWithinATickDoesNothing)
{
    PutDrawing("a.dxf");
    PutDrawing("b.dxf");
    RefreshFileList();
    Pumps = 0;
    OnPump = [] { RefreshFileList(); };
    RefreshFileList();
    EXPECT_EQ(Pumps, 2);
    EXPECT_EQ(RowsTold, 1);
}

TEST_F(FileListRefresh, AFolderChangedWhileItYieldsIsReadByTheNextTick)
{
    MakeSource("other");
    PutFile("other/o.dxf", "x");
    PutDrawing("a.dxf");
    PutDrawing("b.dxf", 1);
    RefreshFileList();
    PutDrawing("b.dxf", 2); // so the first entry is equal and the second is not
    OnPump = [this] { UseSource("other"); };
    RefreshFileList();
    EXPECT_EQ(RowsTold, 1);
    EXPECT_EQ(Column(2), (Texts{"a.dxf", "b.dxf"}));
    OnPump = nullptr;
    RefreshFileList();
    EXPECT_EQ(Column(2), (Texts{"o.dxf"}));
}

TEST_F(FileListRefresh, AListThatIsEmptiedWhileItYieldsIsBuiltAnew)
{
    PutDrawing("a.dxf");
    PutDrawing("b.dxf");
    RefreshFileList();
    OnPump = [] {
        FileList.Listing.clear();
        FileList.Rows.clear();
    };
    RefreshFileList();
    EXPECT_EQ(Column(2), (Texts{"a.dxf", "b.dxf"}));
}

TEST_F(FileListRefresh, NamesBeyondAsciiAreListedInTheProgramsCode)
{
    std::ofstream(Source("dxf") / u8"T\u00FCr.dxf") << 'x';
    std::ofstream(Source("dxf") / u8"\u0434.dxf") << 'x'; // not in the code page
    RefreshFileList();
    EXPECT_EQ(Column(2), (Texts{"d~9BC37E61.dxf", "T\xFCr.dxf"}));
    EXPECT_EQ(Column(1), (Texts{"D", "T\xDCR"}));
}

TEST_F(FileListRefresh, CellsAreWrittenByCodes)
{
    SetFileListCell(2, "nowhere"); // there is no row yet
    EXPECT_TRUE(FileList.Rows.empty());
    SetFileListCell(1, "A");
    SetFileListCell(2, "a.dxf");
    SetFileListCell(1, "B");
    SetFileListCell(6, "10:00:00");
    SetFileListCell(7, "beyond");
    EXPECT_EQ(Column(1), (Texts{"A", "B"}));
    EXPECT_EQ(Column(2), (Texts{"a.dxf", ""}));
    EXPECT_EQ(Column(6), (Texts{"", "10:00:00"}));
    SetFileListCell(0, "");
    EXPECT_TRUE(FileList.Rows.empty());
    SetFileListCell(1, "C");
    EXPECT_EQ(Column(1), (Texts{"C"}));
}

} // namespace
} // namespace kv
