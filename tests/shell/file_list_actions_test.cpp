// What the operator does with the file list: order, widths, selection, and the popup's deletion with its
// question.
#include "shell/file_list_scene.h"

#if !defined(_WIN32)
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace kv {
namespace {

class FileListActions : public FileListScene {
  protected:
    void PutThree() const
    {
        PutDrawing("a.dxf", 900);
        PutDrawing("b.dxf", 1000);
        PutDrawing("c.dxf", 95);
        StampDrawing("a.dxf", 2003, 12, 1, 9, 0, 0);
        StampDrawing("b.dxf", 2004, 1, 31, 8, 0, 0);
        StampDrawing("c.dxf", 2003, 2, 28, 7, 30, 0);
        RefreshFileList();
    }
};

TEST_F(FileListActions, AClickOnAHeaderSortsAscendingAndASecondOneDescending)
{
    PutThree();
    SortFileList(6);
    EXPECT_EQ(Column(2), (Texts{"c.dxf", "b.dxf", "a.dxf"}));
    SortFileList(6);
    EXPECT_EQ(Column(2), (Texts{"a.dxf", "b.dxf", "c.dxf"}));
    SortFileList(6);
    EXPECT_EQ(Column(2), (Texts{"c.dxf", "b.dxf", "a.dxf"}));
    SortFileList(3); // another column begins ascending
    EXPECT_EQ(Column(2), (Texts{"a.dxf", "b.dxf", "c.dxf"}));
    EXPECT_EQ(FileList.SortedColumn, 3);
    EXPECT_EQ(FileList.SortOrder, 1);
}

TEST_F(FileListActions, SizesSortByTheirValue)
{
    PutThree();
    SortFileList(4);
    EXPECT_EQ(Column(4), (Texts{"95", "900", "1000"}));
    SortFileList(4);
    EXPECT_EQ(Column(4), (Texts{"1000", "900", "95"}));
}

TEST_F(FileListActions, DatesSortInTheOrderOfTime)
{
    PutThree();
    SortFileList(5);
    EXPECT_EQ(Column(5), (Texts{"02/28/2003", "12/01/2003", "01/31/2004"}));
}

TEST_F(FileListActions, TheSortStateOutlivesARebuildThatStandsByName)
{
    PutThree();
    SortFileList(4);
    PutDrawing("d.dxf", 1);
    RefreshFileList();
    EXPECT_EQ(Column(2), (Texts{"a.dxf", "b.dxf", "c.dxf", "d.dxf"}));
    EXPECT_EQ(FileList.SortedColumn, 4);
    SortFileList(4); // still the second click on this column
    EXPECT_EQ(Column(4), (Texts{"1000", "900", "95", "1"}));
}

TEST_F(FileListActions, EqualRowsKeepTheirOrderInBothDirections)
{
    for (const char* name : {"a.dxf", "b.dxf", "c.dxf", "d.dxf"})
        PutDrawing(name, name[0] == 'b' ? 5 : 7);
    RefreshFileList();
    SortFileList(4);
    EXPECT_EQ(Column(2), (Texts{"b.dxf", "a.dxf", "c.dxf", "d.dxf"}));
    SortFileList(4);
    EXPECT_EQ(Column(2), (Texts{"a.dxf", "c.dxf", "d.dxf", "b.dxf"}));
}

TEST_F(FileListActions, EmptyRowsStayAtTheEndInEitherOrder)
{
    PutDrawing("a.dxfx");
    PutDrawing("b.dxf");
    PutDrawing("c.dxf");
    RefreshFileList();
    SortFileList(3);
    EXPECT_EQ(Column(2), (Texts{"b.dxf", "c.dxf", ""}));
    SortFileList(3);
    EXPECT_EQ(Column(2), (Texts{"c.dxf", "b.dxf", ""}));
}

TEST_F(FileListActions, SelectionAndListIndexGoWithTheirRows)
{
    PutThree();
    Select("c.dxf");
    FileList.Current = 1; // b.dxf
    SortFileList(4);      // c, a, b
    EXPECT_TRUE(FileList.Rows[0].Selected);
    EXPECT_FALSE(FileList.Rows[2].Selected);
    EXPECT_EQ(FileList.Current, 2);
}

TEST_F(FileListActions, AClickBesideTheColumnsSortsNothing)
{
    PutThree();
    SortFileList(0);
    SortFileList(8);
    EXPECT_EQ(FileList.SortedColumn, 0);
    EXPECT_EQ(RowsTold, 1);
}

TEST_F(FileListActions, TheWidthOfTheNameColumnDecidesWhichNamesItShows)
{
    PutDrawing("kitchen door.dxf");
    RefreshFileList();
    ResizeFileColumn(3, 11);
    EXPECT_EQ(Column(3), (Texts{"KITCHE~1"}));
    EXPECT_EQ(RowsTold, 2);
    ResizeFileColumn(3, 8); // they show already
    EXPECT_EQ(RowsTold, 2);
    ResizeFileColumn(3, 12);
    EXPECT_EQ(Column(3), (Texts{"kitchen door.dxf"}));
    EXPECT_EQ(Column(2), (Texts{"kitchen door.dxf"}));
    EXPECT_EQ(RowsTold, 3);
}

TEST_F(FileListActions, AnotherColumnsWidthChangesNoNames)
{
    PutDrawing("kitchen door.dxf");
    RefreshFileList();
    ResizeFileColumn(4, 3);
    EXPECT_EQ(Column(3), (Texts{"kitchen door.dxf"}));
}

TEST_F(FileListActions, WidthsAreStoredAsPrintedNumbers)
{
    ResizeFileColumn(3, 10.5);
    ResizeFileColumn(4, 12);
    ResizeFileColumn(1, 7.25); // any column
    EXPECT_EQ(GetConfigValue("ListColumnWidth3"), "10.5");
    EXPECT_EQ(GetConfigValue("ListColumnWidth4"), "12");
    EXPECT_EQ(GetConfigValue("ListColumnWidth1"), "7.25");
    EXPECT_EQ(Config.ListColumnWidth[0], "10.5");
    EXPECT_EQ(Config.ListColumnWidth[1], "12");
    EXPECT_EQ(Config.ListColumnWidth[2], "");
}

TEST_F(FileListActions, StoredWidthsComeBackAtTheNextStart)
{
    ResizeFileColumn(3, 10.5);
    ResizeFileColumn(6, 14);
    FileList = {};
    Config = Settings{};
    LoadOtherKeys();
    LoadFileColumnWidths();
    EXPECT_EQ(FileList.Widths[2], 10.5);
    EXPECT_EQ(FileList.Widths[5], 14);
}

TEST_F(FileListActions, AZeroOrMissingWidthLeavesTheDesignedOne)
{
    const std::array<double, FileColumns> designed = FileList.Widths;
    Config.ListColumnWidth = {"0", "", "wide", "-3"};
    LoadFileColumnWidths();
    EXPECT_EQ(FileList.Widths, designed);
}

TEST_F(FileListActions, AWidthBeyondAllMeasureIsTheWidest)
{
    Config.ListColumnWidth = {"1e999", "300", "", ""};
    LoadFileColumnWidths();
    EXPECT_EQ(FileList.Widths[2], WidestColumn);
    EXPECT_EQ(FileList.Widths[3], WidestColumn);
    ResizeFileColumn(5, 1e30);
    ResizeFileColumn(6, -4);
    EXPECT_EQ(GetConfigValue("ListColumnWidth5"), "255");
    EXPECT_EQ(GetConfigValue("ListColumnWidth6"), "0");
}

TEST_F(FileListActions, SpaceMovesTheListIndexOnAndStaysOnTheLastRow)
{
    MoveListIndexOn(); // an empty list has none
    EXPECT_EQ(FileList.Current, -1);
    PutThree();
    MoveListIndexOn();
    EXPECT_EQ(FileList.Current, 0);
    MoveListIndexOn();
    MoveListIndexOn();
    MoveListIndexOn();
    EXPECT_EQ(FileList.Current, 2);
    EXPECT_EQ(SelectionsTold, 3);
    EXPECT_FALSE(AnyRowSelected());
}

TEST_F(FileListActions, ClearSelectionTellsTheWindowWhenThereWasOne)
{
    PutThree();
    ClearSelection();
    EXPECT_EQ(SelectionsTold, 0);
    Select("a.dxf");
    Select("c.dxf");
    ClearSelection();
    EXPECT_FALSE(AnyRowSelected());
    EXPECT_EQ(SelectionsTold, 1);
}

TEST_F(FileListActions, YesDeletesTheSelectedFiles)
{
    PutThree();
    Select("a.dxf");
    Select("c.dxf");
    Answer = true;
    Pumps = 0;
    PopupDelete();
    EXPECT_EQ(Asked, (Texts{"Delete Selected Files|Do you wish to Delete these files?"}));
    EXPECT_FALSE(DrawingStands("a.dxf"));
    EXPECT_TRUE(DrawingStands("b.dxf"));
    EXPECT_FALSE(DrawingStands("c.dxf"));
    EXPECT_TRUE(Lines.empty());
    EXPECT_FALSE(AnyRowSelected());
    EXPECT_EQ(Pumps, 1);
    EXPECT_EQ(Focused, (std::vector<FocusPlace>{FocusPlace::List1}));
    EXPECT_FALSE(FileList.DeleteAsked);
    EXPECT_EQ(FileList.Rows.size(), 3U); // until the next tick
}

TEST_F(FileListActions, NoDeletesNothingAndClearsTheSelection)
{
    PutThree();
    Select("a.dxf");
    PopupDelete();
    EXPECT_EQ(Asked.size(), 1U);
    EXPECT_TRUE(DrawingStands("a.dxf"));
    EXPECT_FALSE(AnyRowSelected());
    EXPECT_FALSE(FileList.DeleteAsked);
}

TEST_F(FileListActions, WithoutSelectionABoxSaysSo)
{
    PutThree();
    PopupDelete();
    EXPECT_EQ(Boxes, (Texts{"Delete Selected Files|No files selected to Delete."}));
    EXPECT_TRUE(Asked.empty());
    EXPECT_EQ(Focused.size(), 1U);
    EXPECT_FALSE(FileList.DeleteAsked);
}

TEST_F(FileListActions, APopupThatClosesWithoutDeleteDoesNothing)
{
    PutThree();
    Select("a.dxf");
    Answer = true;
    FinishPopup();
    EXPECT_TRUE(Asked.empty());
    EXPECT_TRUE(Focused.empty());
    EXPECT_TRUE(AnyRowSelected());
    EXPECT_TRUE(DrawingStands("a.dxf"));
}

TEST_F(FileListActions, DeletionGoesByTheCurrentSystemsFolder)
{
    MakeSource("gen");
    PutFile("gen/a.dxf", "x");
    Config.SourcePathGen = FromHostPath(Source("gen").string() + "/");
    PutThree();
    Select("a.dxf");
    Config.Genesis = true; // the list still shows the other folder
    Answer = true;
    PopupDelete();
    EXPECT_TRUE(DrawingStands("a.dxf"));
    EXPECT_FALSE(FileStands("gen/a.dxf"));
}

TEST_F(FileListActions, AFileThatCannotBeDeletedIsToldAndTheRestIsDeleted)
{
    PutThree();
    for (const char* name : {"a.dxf", "b.dxf", "c.dxf"})
        Select(name);
    RemoveDrawing("b.dxf"); // and what stands there now is a folder, which no user may unlink
    MakeSource("dxf/b.dxf");
    Answer = true;
    PopupDelete();
    EXPECT_FALSE(DrawingStands("a.dxf"));
    EXPECT_TRUE(DrawingStands("b.dxf"));
    EXPECT_FALSE(DrawingStands("c.dxf"));
    ASSERT_EQ(Lines.size(), 1U);
    EXPECT_EQ(Lines[0], (Source("dxf") / "b.dxf").string() + " cannot be deleted: there is no such file");
}

#if !defined(_WIN32) // rights of a folder by the bits of its mode
TEST_F(FileListActions, AFileInAFolderThatMayNotBeChangedIsToldWithTheCause)
{
    PutThree();
    Select("a.dxf");
    Answer = true;
    ASSERT_EQ(::chmod(Source("dxf").c_str(), 0555), 0);
    constexpr uid_t Nobody = 65534;
    const bool superuser = ::geteuid() == 0; // who may delete anything
    if (superuser) {
        ASSERT_EQ(::seteuid(Nobody), 0);
    }
    PopupDelete();
    if (superuser) {
        ASSERT_EQ(::seteuid(0), 0);
    }
    ASSERT_EQ(::chmod(Source("dxf").c_str(), 0755), 0);
    EXPECT_TRUE(DrawingStands("a.dxf"));
    ASSERT_EQ(Lines.size(), 1U);
    EXPECT_EQ(Lines[0], (Source("dxf") / "a.dxf").string() + " cannot be deleted: Permission denied");
}
#endif

TEST_F(FileListActions, WithoutASourceFolderNothingIsDeleted)
{
    PutThree();
    Select("a.dxf");
    Config.SourcePath90.clear();
    Answer = true;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(Source("dxf"));
    PopupDelete();
    std::filesystem::current_path(before);
    EXPECT_TRUE(DrawingStands("a.dxf"));
    EXPECT_EQ(Lines, (Texts{"a.dxf cannot be deleted: no source folder is set"}));
}

TEST_F(FileListActions, ASelectedEmptyRowDeletesNothing)
{
    PutDrawing("a.dxfx");
    RefreshFileList();
    ASSERT_EQ(FileList.Rows.size(), 1U);
    FileList.Rows[0].Selected = true;
    Answer = true;
    PopupDelete();
    EXPECT_EQ(Asked.size(), 1U);
    EXPECT_TRUE(Lines.empty());
    EXPECT_TRUE(DrawingStands("a.dxfx"));
}

TEST_F(FileListActions, ARefreshBehindTheQuestionDoesNotChangeWhatYesMeans)
{
    PutThree();
    Select("a.dxf");
    Answer = true;
    OnQuestion = [this] {
        PutDrawing("d.dxf");
        RefreshFileList();
    };
    PopupDelete();
    EXPECT_FALSE(DrawingStands("a.dxf"));
    EXPECT_TRUE(DrawingStands("b.dxf"));
    EXPECT_TRUE(DrawingStands("d.dxf"));
}

// A trash that is a folder of the test.
class FileListTrash : public FileListScene {
  protected:
    void SetUp() override
    {
        FileListScene::SetUp();
        Trash = Folder / "trash";
        std::filesystem::create_directories(Trash);
        Refuses.clear();
        FileListWindow.ToTrash = [](const std::string& path, std::string& place) -> FileOutcome {
            if (FileNameOf(path) == Refuses)
                return {ErrorFileAccess, "no trash"};
            const std::filesystem::path from = ToHostPath(path);
            place = (Trash / from.filename()).string();
            std::filesystem::rename(from, place);
            return {};
        };
        FileListWindow.FromTrash = [](const std::string& place, const std::string& path) -> FileOutcome {
            if (!std::filesystem::exists(place))
                return {ErrorFileNotFound, "it is not there"};
            std::filesystem::rename(place, ToHostPath(path));
            return {};
        };
        for (const char* const name : {"a.dxf", "b.dxf", "c.dxf"})
            PutDrawing(name);
        RefreshFileList();
        Lines.clear();
        Asked.clear();
    }
    void Delete(const Texts& names)
    {
        for (const std::string& name : names)
            Select(name);
        Answer = true;
        PopupDelete();
        RefreshFileList();
    }
    static inline std::filesystem::path Trash;
    static inline std::string Refuses;
};

TEST_F(FileListTrash, DeletedDrawingsComeBackOneDeletionAtATime)
{
    Delete({"a.dxf", "b.dxf"});
    Delete({"c.dxf"});
    EXPECT_FALSE(DrawingStands("a.dxf"));
    EXPECT_TRUE(MayUndoDelete());
    UndoDelete();
    EXPECT_TRUE(DrawingStands("c.dxf"));
    EXPECT_FALSE(DrawingStands("a.dxf"));
    UndoDelete();
    EXPECT_TRUE(DrawingStands("a.dxf"));
    EXPECT_TRUE(DrawingStands("b.dxf"));
    EXPECT_FALSE(MayUndoDelete());
    EXPECT_EQ(Column(2), (Texts{"a.dxf", "b.dxf", "c.dxf"}));
}

TEST_F(FileListTrash, TheQuestionHasNumberAndNames)
{
    Delete({"a.dxf", "c.dxf"});
    EXPECT_EQ(Details, (Texts{"2 drawings: a.dxf, c.dxf"}));
    Details.clear();
    UndoDelete();
    Delete({"b.dxf"});
    EXPECT_EQ(Details, (Texts{"1 drawing: b.dxf"}));
}

TEST_F(FileListTrash, WhatTheTrashRefusesIsAskedAboutAgain)
{
    Refuses = "b.dxf";
    Answer = true;
    OnQuestion = [] { Answer = Asked.size() == 1; }; // Yes, then No
    Select("a.dxf");
    Select("b.dxf");
    PopupDelete();
    EXPECT_FALSE(DrawingStands("a.dxf"));
    EXPECT_TRUE(DrawingStands("b.dxf"));
    ASSERT_EQ(Asked.size(), 2U);
    EXPECT_EQ(
        Asked[1],
        "Delete Selected Files|The trash does not take these files.\r\nDo you wish to Delete them for good?");
    EXPECT_EQ(Details.back(), "1 drawing: b.dxf");
    OnQuestion = nullptr;
    RefreshFileList();
    Delete({"b.dxf"});
    EXPECT_FALSE(DrawingStands("b.dxf"));
    UndoDelete();
    EXPECT_TRUE(DrawingStands("a.dxf"));
    EXPECT_FALSE(DrawingStands("b.dxf")); // for good
}

TEST_F(FileListTrash, WhatCannotComeBackIsReportedAndKept)
{
    Delete({"a.dxf", "b.dxf"});
    std::filesystem::rename(Trash / "a.dxf", Trash / "away");
    UndoDelete();
    EXPECT_TRUE(DrawingStands("b.dxf"));
    ASSERT_EQ(Lines.size(), 1U);
    EXPECT_EQ(Lines[0],
              ShownPath(FromHostPath(Source("dxf/a.dxf").string())) + " cannot be restored: it is not there");
    std::filesystem::rename(Trash / "away", Trash / "a.dxf");
    UndoDelete();
    EXPECT_TRUE(DrawingStands("a.dxf"));
    EXPECT_FALSE(MayUndoDelete());
}

} // namespace
} // namespace kv
