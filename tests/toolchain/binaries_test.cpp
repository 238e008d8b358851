// The editor of the Winner90 driven by keystrokes: what is typed, when, and what stops it.
#include "toolchain/binaries.h"

#include "toolchain/outside_programs.h"

namespace kv {
namespace {

class Binaries : public OutsidePrograms {
  protected:
    void SetUp() override
    {
        OutsidePrograms::SetUp();
        // The step writes into the current folder.
        Before = std::filesystem::current_path();
        std::filesystem::create_directories(Folder / "current");
        std::filesystem::current_path(Folder / "current");
        MakeFolder("Winner90");
        SetExeFolder("C:\\Winner90\\");
        Config.MakeBinaries = 1;
        ProgramList = {"DOOR", "SIDE", "TOP"};
        Outside.PollsUntilEnd = 0;
    }
    void TearDown() override
    {
        std::filesystem::current_path(Before);
        OutsidePrograms::TearDown();
    }

    static LogLines Joined(std::initializer_list<LogLines> parts)
    {
        LogLines all;
        for (const LogLines& part : parts)
            all.insert(all.end(), part.begin(), part.end());
        return all;
    }
    static LogLines Typed(const std::string& name)
    {
        return {"keys <15>YN+{TAB}" + name, "keys <13>", "keys <13>", "keys ^S<13>N", "focus", "pause .1"};
    }
    static LogLines Asked(const std::string& name)
    {
        return {"ask Korvanti: Binary Processing was stopped at " + name +
                "<13><10>Do You Wish to Continue Processing?"};
    }
    const LogLines Launch = {"start C:\\Winner90\\Edigraf.exe", "pause 2"};
    const LogLines FirstLaunch = {"pause 2", "start C:\\Winner90\\Edigraf.exe", "pause 2"};
    const LogLines Close = {"pause 3", "keys %{F4}"};
    const LogLines Ended = {"hidden", "pause .05", "poll 7", "forget 7", "shown", "pause .1"};

  private:
    std::filesystem::path Before;
};

TEST_F(Binaries, EachProgramIsOpenedAndSavedThenTheEditorIsClosed)
{
    MakeBinaries();
    EXPECT_EQ(Outside.Log, Joined({FirstLaunch, Typed("DOOR"), Typed("SIDE"), Typed("TOP"), Close, Ended}));
}

TEST_F(Binaries, TheModeIsResetInTheCurrentFolderNotInTheControls)
{
    MakeBinaries();
    std::ifstream file(Folder / "current" / "TPA.INI", std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "[edigraf-exec]\r\nExec=0\r\n");
    EXPECT_FALSE(Stands("Winner90/TPA.INI"));
}

TEST_F(Binaries, ReadingTheEditorsSettingChangesNothing)
{
    const std::string ini = "[edigraf-edit]\r\nPincoPalla=" + std::string(200, '7') + "\r\n";
    Put("Winner90/TPA.INI", ini);
    MakeBinaries();
    EXPECT_EQ(Get("Winner90/TPA.INI"), ini);
    EXPECT_EQ(Outside.Log.size(), 29U); // 3 + 3 * 6 + 2 + 6
}

TEST_F(Binaries, NothingRunsWithTheBoxOff)
{
    Config.MakeBinaries = 0;
    MakeBinaries();
    EXPECT_EQ(Outside.Log, LogLines{});
}

TEST_F(Binaries, WithTheBoxOnButAFolderWithoutWinner90NothingRunsAndNothingShows)
{
    kv::Run.FailedFiles = {"", "C:\\DXF\\BAD.DXF"};
    for (const char* const folder : {"C:\\KV90\\", "C:\\Genesis\\Bin\\", "C:\\Evol\\", "C:\\Winner 90\\"}) {
        SetExeFolder(folder);
        MakeBinaries();
        EXPECT_EQ(Outside.Log, LogLines{}) << folder;
    }
    EXPECT_EQ(Outside.Report, LogLines{});
    EXPECT_TRUE(std::filesystem::is_empty(Folder / "current"));
}

TEST_F(Binaries, WithoutAProgramNothingRunsAndNothingIsAsked)
{
    ProgramList.clear();
    kv::Run.FailedFiles = {"", "C:\\DXF\\BAD.DXF"};
    MakeBinaries();
    EXPECT_EQ(Outside.Log, LogLines{});
    EXPECT_TRUE(std::filesystem::is_empty(Folder / "current"));
}

const char* const FailedQuestion =
    "ask Korvanti: Some files failed to process.<13><10>Do you wish to Continue with Binaries?";

TEST_F(Binaries, FailedFilesAreAskedAboutAndNoEndsTheStep)
{
    kv::Run.FailedFiles = {"", "C:\\DXF\\BAD.DXF"};
    Outside.Answers = {false};
    MakeBinaries();
    EXPECT_EQ(Outside.Log, (LogLines{FailedQuestion}));
    EXPECT_TRUE(std::filesystem::is_empty(Folder / "current"));
}

TEST_F(Binaries, FailedFilesAreAskedAboutAndYesGoesOn)
{
    kv::Run.FailedFiles = {"", "C:\\DXF\\BAD.DXF"};
    Outside.Answers = {true};
    ProgramList = {"DOOR"};
    MakeBinaries();
    EXPECT_EQ(Outside.Log, Joined({{FailedQuestion}, FirstLaunch, Typed("DOOR"), Close, Ended}));
}

TEST_F(Binaries, AListOfFailedFilesWithItsBlankFirstElementAloneIsEmpty)
{
    kv::Run.FailedFiles = {""};
    ProgramList = {"DOOR"};
    MakeBinaries();
    EXPECT_EQ(Outside.Log.at(0), "pause 2");
}

TEST_F(Binaries, KeysGoingAstrayAtTheFirstProgramAndNoEndTheStep)
{
    Outside.TitleLengths = {8};
    Outside.Answers = {false};
    MakeBinaries();
    EXPECT_EQ(Outside.Log, Joined({FirstLaunch, Typed("DOOR"), Ended, Asked("DOOR")}));
}

TEST_F(Binaries, KeysGoingAstrayAtTheFirstProgramAndYesBeginAgainAtTheSecond)
{
    Outside.TitleLengths = {8};
    Outside.Answers = {true};
    MakeBinaries();
    // The second launch comes without the pause before it.
    EXPECT_EQ(Outside.Log, Joined({FirstLaunch, Typed("DOOR"), Ended, Asked("DOOR"), Launch, Typed("SIDE"),
                                   Typed("TOP"), Close, Ended}));
}

TEST_F(Binaries, TheSecondLaunchDoesNotResetTheModeAgain)
{
    Outside.TitleLengths = {8};
    Outside.Answers = {true};
    Dialogs.Ask = [](std::string_view, std::string_view, std::string_view) {
        std::ofstream("TPA.INI", std::ios::binary) << "by hand";
        return true;
    };
    MakeBinaries();
    std::ifstream file(Folder / "current" / "TPA.INI", std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "by hand");
}

TEST_F(Binaries, KeysGoingAstrayAtAMiddleProgramAndNoEndTheStep)
{
    Outside.TitleLengths = {0, 1};
    Outside.Answers = {false};
    MakeBinaries();
    EXPECT_EQ(Outside.Log, Joined({FirstLaunch, Typed("DOOR"), Typed("SIDE"), Ended, Asked("SIDE")}));
}

TEST_F(Binaries, KeysGoingAstrayAtAMiddleProgramAndYesBeginAgainAtTheNext)
{
    Outside.TitleLengths = {0, 1};
    Outside.Answers = {true};
    MakeBinaries();
    EXPECT_EQ(Outside.Log, Joined({FirstLaunch, Typed("DOOR"), Typed("SIDE"), Ended, Asked("SIDE"), Launch,
                                   Typed("TOP"), Close, Ended}));
}

TEST_F(Binaries, KeysGoingAstrayAtTheLastProgramAreNotAskedAbout)
{
    Outside.TitleLengths = {0, 0, 8};
    Outside.Answers = {true};
    MakeBinaries();
    EXPECT_EQ(Outside.Log, Joined({FirstLaunch, Typed("DOOR"), Typed("SIDE"), Typed("TOP"), Ended}));
}

TEST_F(Binaries, KeysGoingAstrayAgainAreAskedAboutAgain)
{
    Outside.TitleLengths = {8, 8};
    Outside.Answers = {true, false};
    MakeBinaries();
    EXPECT_EQ(Outside.Log, Joined({FirstLaunch, Typed("DOOR"), Ended, Asked("DOOR"), Launch, Typed("SIDE"),
                                   Ended, Asked("SIDE")}));
}

TEST_F(Binaries, NamesAreTypedAsTheyStandKeySyntaxIncluded)
{
    ProgramList = {"A+B^C%{D}"};
    MakeBinaries();
    EXPECT_EQ(Outside.Log.at(3), "keys <15>YN+{TAB}A+B^C%{D}");
}

TEST_F(Binaries, AnEditorThatDoesNotStartIsToldAndTheFocusTestStopsTheKeys)
{
    Outside.NextHandle = 0;
    Outside.TitleLengths = {8}; // the keys reached this program's own window
    MakeBinaries();
    EXPECT_EQ(Outside.Log, Joined({FirstLaunch,
                                   {"box Error: C:\\Winner90\\Edigraf.exe Not Loaded"},
                                   Typed("DOOR"),
                                   {"pause .1"},
                                   Asked("DOOR")}));
}

TEST_F(Binaries, TheEndOfTheProgramAsksNothingMore)
{
    Outside.TitleLengths = {8};
    Outside.InTheEvents = [] { Shell.Ended = true; };
    MakeBinaries();
    EXPECT_EQ(Outside.Log, Joined({FirstLaunch, Typed("DOOR"), {"hidden", "forget 7", "shown", "pause .1"}}));
}

} // namespace
} // namespace kv
