// The path fields of Setup: completion, the questions for missing folders, the bad drive. The folders
// are real ones.
#include <string>
#include <vector>

#include "platform/dialogs.h"
#include "platform/directory.h"
#include "platform/scratch_folder.h"
#include "shell/setup_rules.h"
#include "state/settings.h"
#include "support/answers.h"

namespace kv {
namespace {

std::vector<std::string> Questions, Boxes, Titles;
std::vector<bool> Answers; // to the questions, in turn; No when there are no more

class PathFields : public ScratchFolder {
  protected:
    void SetUp() override
    {
        ScratchFolder::SetUp();
        Questions.clear();
        Boxes.clear();
        Titles.clear();
        Answers.clear();
        Dialogs.Ask = [](std::string_view text, std::string_view title, std::string_view) {
            Questions.emplace_back(text);
            Titles.emplace_back(title);
            return Questions.size() <= Answers.size() && Answers[Questions.size() - 1];
        };
        Dialogs.Box = [](std::string_view text, std::string_view title, BoxIcon) {
            Boxes.emplace_back(text);
            Titles.emplace_back(title);
        };
    }
    void TearDown() override
    {
        Dialogs = {};
        Config = Settings{};
        ScratchFolder::TearDown();
    }
    bool Stands(const std::string& name) const { return std::filesystem::is_directory(Folder / name); }
    // The drive C in the scratch folder.
    void GiveDriveC()
    {
        std::filesystem::create_directories(Folder / "drives" / "C");
        SetVariable("KORVANTI_DRIVES", (Folder / "drives").string());
    }
};

TEST_F(PathFields, FolderThatStandsIsNotAskedFor)
{
    std::filesystem::create_directories(Folder / "dxf");
    EXPECT_EQ(CheckPath(PathOf("dxf\\")), PathOf("dxf") + "\\");
    EXPECT_TRUE(Questions.empty());
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(PathFields, MissingFolderIsAskedForUnderTheProductsName)
{
    EXPECT_EQ(CheckPath(PathOf("dxf\\")), PathOf("dxf") + "\\");
    const std::string shown = (Folder / "dxf").string();
    ASSERT_EQ(Questions.size(), 1U);
    EXPECT_EQ(Questions[0], shown + "\r\nPath Does Not Exist.\r\nDo You Wish to Create Path?");
    EXPECT_EQ(Titles[0], "Korvanti");
}

TEST_F(PathFields, YesMakesTheFolder)
{
    Answers = {true};
    CheckPath(PathOf("dxf\\"));
    EXPECT_TRUE(Stands("dxf"));
}

TEST_F(PathFields, EachMissingLevelIsAskedForAgain)
{
    Answers = {true, true, true};
    EXPECT_EQ(CheckPath(PathOf("a\\b\\c\\")), PathOf("a\\b\\c") + "\\");
    EXPECT_EQ(Questions.size(), 3U);
    EXPECT_TRUE(Stands("a/b/c"));
}

TEST_F(PathFields, NoStopsTheWalk)
{
    Answers = {true, false, true};
    CheckPath(PathOf("a\\b\\c\\"));
    EXPECT_EQ(Questions.size(), 2U);
    EXPECT_TRUE(Stands("a"));
    EXPECT_FALSE(Stands("a/b"));
}

TEST_F(PathFields, RefusedPathStaysInTheFieldAndTheListIsEmpty)
{
    const std::string kept = LeavePathField(PathOf("dxf"), true);
    EXPECT_EQ(kept, PathOf("dxf") + "\\");
    EXPECT_FALSE(Stands("dxf"));
    Config.SourcePath90 = kept;
    EXPECT_EQ(test::Counted(CurrentSourcePath() + "*.DXF"), 0);
}

TEST_F(PathFields, FolderThatCannotBeMadeIsNotTold)
{
    PutFile("dxf", "a file in its place");
    Answers = {true, true};
    EXPECT_EQ(CheckPath(PathOf("dxf\\in\\")), PathOf("dxf\\in") + "\\");
    EXPECT_EQ(Questions.size(), 2U); // the next level is missing too
    EXPECT_TRUE(Boxes.empty());
    EXPECT_EQ(FileText("dxf"), "a file in its place");
}

TEST_F(PathFields, FolderOfAnotherSpellingStandsAlready)
{
    std::filesystem::create_directories(Folder / "Dxf");
    CheckPath(PathOf("DXF\\"));
    EXPECT_TRUE(Questions.empty());
}

TEST_F(PathFields, BadDriveIsToldAndNothingIsAsked)
{
    GiveDriveC();
    EXPECT_EQ(CheckPath("Q:\\DXF\\"), "Q:\\DXF\\");
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0], "Drive Q: Invalid!");
    EXPECT_EQ(Titles[0], "Korvanti");
    EXPECT_TRUE(Questions.empty());
}

TEST_F(PathFields, FolderOnAGoodDriveIsMade)
{
    GiveDriveC();
    Answers = {true};
    EXPECT_EQ(CheckPath("C:\\DXF"), "C:\\DXF\\");
    ASSERT_EQ(Questions.size(), 1U);
    EXPECT_EQ(Questions[0], (Folder / "drives" / "C" / "DXF").string() +
                                "\r\nPath Does Not Exist.\r\nDo You Wish to Create Path?");
    EXPECT_TRUE(Stands("drives/C/DXF"));
}

TEST_F(PathFields, RootIsNeverAskedFor)
{
    EXPECT_EQ(CheckPath("\\"), "\\");
    GiveDriveC();
    EXPECT_EQ(CheckPath("C:\\"), "C:\\");
    EXPECT_TRUE(Questions.empty());
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(PathFields, ServerAndShareAreNotAskedFor)
{
    EXPECT_EQ(CheckPath("\\\\kvserver\\share\\"), "\\\\kvserver\\share\\");
    EXPECT_TRUE(Questions.empty());
    // The folder on it is, or the system cannot reach the server and says why.
    CheckPath("\\\\kvserver\\share\\dxf\\");
    EXPECT_EQ(Questions.size() + Boxes.size(), 1U);
}

TEST_F(PathFields, BackslashIsAddedWhenTheFieldIsLeft)
{
    std::filesystem::create_directories(Folder / "dxf");
    EXPECT_EQ(LeavePathField(PathOf("dxf"), true), PathOf("dxf") + "\\");
    EXPECT_EQ(LeavePathField(PathOf("dxf") + "\\", true), PathOf("dxf") + "\\");
}

TEST_F(PathFields, OnlyTheDrawingsPathIsTrimmed)
{
    std::filesystem::create_directories(Folder / "dxf");
    EXPECT_EQ(LeavePathField("  " + PathOf("dxf") + "  ", true), PathOf("dxf") + "\\");
    EXPECT_EQ(LeavePathField(PathOf("dxf") + " ", false), PathOf("dxf") + " \\");
}

TEST_F(PathFields, EmptyFieldStaysEmptyAndIsNotAskedFor)
{
    EXPECT_EQ(LeavePathField("", false), "");
    EXPECT_EQ(LeavePathField("   ", true), "");
    EXPECT_TRUE(Questions.empty());
}

TEST_F(PathFields, BrowsedFolderEndsInABackslash)
{
    EXPECT_EQ(BrowsedPath("C:\\DXF"), "C:\\DXF\\");
    EXPECT_EQ(BrowsedPath("C:\\"), "C:\\");
}

} // namespace
} // namespace kv
