// Which viewer is started, what its TPA.INI says before, and how long everybody waits.
#include "toolchain/viewers.h"

#include "toolchain/outside_programs.h"

namespace kv {
namespace {

class Viewers : public OutsidePrograms {};

constexpr const char* WinnerIni =
    "[edigraf-exec]\r\nFileIn=DOOR\r\nFileOut=DOOR\r\nExec=2\r\nOutCom=\"OAK DOOR\"\r\n";

// Starting a program.

TEST_F(Viewers, AStartedProgramIsGivenTheGraphicDelay)
{
    Config.GraphicDelay = ".5";
    EXPECT_EQ(LaunchProgram({"C:\\A.EXE", "X"}), 7);
    EXPECT_EQ(Outside.Log, (LogLines{"start C:\\A.EXE X", "pause .5"}));
}

TEST_F(Viewers, AProgramThatDoesNotStartIsToldInABoxBehindTheDelay)
{
    Outside.NextHandle = 0;
    EXPECT_EQ(LaunchProgram({"C:\\A.EXE", "X"}), 0);
    EXPECT_EQ(Outside.Log, (LogLines{"start C:\\A.EXE X", "pause 2", "box Error: C:\\A.EXE X Not Loaded"}));
}

// Waiting for it.

TEST_F(Viewers, TheWindowIsHiddenUntilTheProgramHasEnded)
{
    Outside.PollsUntilEnd = 2;
    WaitForExternalProgram(7);
    EXPECT_EQ(Outside.Log, (LogLines{"hidden", "pause .05", "poll 7", "pause .05", "poll 7", "pause .05",
                                     "poll 7", "forget 7", "shown"}));
}

TEST_F(Viewers, EventsRunWhileTheProgramIsWaitedFor)
{
    Outside.PollsUntilEnd = 2;
    int pumped = 0;
    Outside.InTheEvents = [&] { ++pumped; };
    WaitForExternalProgram(7);
    EXPECT_EQ(pumped, 3);
}

TEST_F(Viewers, NothingIsWaitedForWithoutAHandle)
{
    WaitForExternalProgram(0);
    EXPECT_EQ(Outside.Log, LogLines{});
}

TEST_F(Viewers, TheEndOfTheProgramEndsTheWait)
{
    Outside.PollsUntilEnd = 1000000;
    int pumped = 0;
    Outside.InTheEvents = [&] { Shell.Ended = ++pumped == 2; };
    WaitForExternalProgram(7);
    EXPECT_EQ(Outside.Log, (LogLines{"hidden", "pause .05", "poll 7", "forget 7", "shown"}));
}

TEST_F(Viewers, AnAbortOfTheRunEndsTheWait)
{
    Outside.PollsUntilEnd = 1000000;
    Outside.InTheEvents = [] { kv::Run.RunState = 1; };
    WaitForExternalProgram(7);
    EXPECT_EQ(Outside.Log, (LogLines{"hidden", "forget 7", "shown"}));
}

TEST_F(Viewers, ARunThatWasAbortedBeforeIsWaitedForAllTheSame)
{
    kv::Run.RunState = 1;
    Outside.PollsUntilEnd = 1;
    WaitForExternalProgram(7);
    EXPECT_EQ(Outside.Log,
              (LogLines{"hidden", "pause .05", "poll 7", "pause .05", "poll 7", "forget 7", "shown"}));
}

// Genesis Evolution.

class EvolutionEditors : public Viewers {
  protected:
    void SetUp() override
    {
        Viewers::SetUp();
        kv::Run.ControlType = 2;
        kv::Run.PartName = "OUT\\Panel";
        Config.DestinationPathEV = " C:\\EvPrg\\ ";
        LastProgram = {"Panel.CNC", "C:\\EvPrg\\Panel.CNC", ""};
    }
};

TEST_F(EvolutionEditors, PanEditComesFirst)
{
    Put("Evol/Bin/PanEdit.exe");
    Put("Evol/Bin/edibus32.exe");
    Put("Evol/Bin/Edipan32.exe");
    EXPECT_EQ(ShowEvolutionProgram("not used"), 7);
    EXPECT_EQ(Outside.Log, (LogLines{"start C:\\Evol\\Bin\\PanEdit C:\\EvPrg\\Panel.CNC", "pause 2"}));
}

TEST_F(EvolutionEditors, ThenEdiBus)
{
    Put("Evol/Bin/edibus32.exe");
    Put("Evol/Bin/Edipan32.exe");
    EXPECT_EQ(ShowEvolutionProgram("not used"), 7);
    EXPECT_EQ(Outside.Log.at(0), "start C:\\Evol\\Bin\\EdiBus32 C:\\EvPrg\\Panel.CNC");
}

TEST_F(EvolutionEditors, ThenEdipan)
{
    Put("Evol/Bin/Edipan32.exe");
    EXPECT_EQ(ShowEvolutionProgram("not used"), 7);
    EXPECT_EQ(Outside.Log.at(0), "start C:\\Evol\\Bin\\Edipan32 C:\\EvPrg\\Panel.CNC");
}

TEST_F(EvolutionEditors, TheKeyEditorPathNamesTheirFolder)
{
    Put("Evol/Bin/PanEdit.exe");
    Put("Tools/edibus32.exe");
    Config.EditorPath = "C:\\Tools\\";
    ShowEvolutionProgram("");
    EXPECT_EQ(Outside.Log.at(0), "start C:\\Tools\\EdiBus32 C:\\EvPrg\\Panel.CNC");
}

TEST_F(EvolutionEditors, AFolderWithoutItsBackslashIsAFolderToo)
{
    Put("Tools/PanEdit.exe");
    Config.EditorPath = "C:\\Tools";
    Config.DestinationPathEV = "C:\\EvPrg";
    ShowEvolutionProgram("");
    EXPECT_EQ(Outside.Log.at(0), "start C:\\Tools\\PanEdit C:\\EvPrg\\Panel.CNC");
}

TEST_F(EvolutionEditors, AnOutputNameThatIsAFolderTakesTheDrawingsName)
{
    Put("Evol/Bin/PanEdit.exe");
    kv::Run.PartName = "OUT\\";
    kv::Run.SourceName = "Side.dxf";
    ShowEvolutionProgram("");
    EXPECT_EQ(Outside.Log.at(0), "start C:\\Evol\\Bin\\PanEdit C:\\EvPrg\\Side.CNC");
}

TEST_F(EvolutionEditors, WhereNoneCanBeStartedTheViewerOfTheSettingsIs)
{
    Config.Viewer = "view %1";
    Outside.Starts = "view";
    EXPECT_EQ(ShowEvolutionProgram("C:\\OTHER.CNC"), 7);
    EXPECT_EQ(Outside.Log,
              (LogLines{"start C:\\Evol\\Bin\\Edipan32 C:\\EvPrg\\Panel.CNC",
                        "start view " + (Folder / "c" / "EvPrg/Panel.CNC").string(), "pause 2"}));
}

TEST_F(EvolutionEditors, OneThatNobodyCanSeeIsTriedAllTheSame)
{
    Config.Viewer = "view %1";
    EXPECT_EQ(ShowEvolutionProgram(""), 7);
    EXPECT_EQ(Outside.Log, (LogLines{"start C:\\Evol\\Bin\\Edipan32 C:\\EvPrg\\Panel.CNC", "pause 2"}));
}

TEST_F(EvolutionEditors, WithoutAnyViewerABoxNamesTheEditor)
{
    Outside.NextHandle = 0;
    EXPECT_EQ(ShowEvolutionProgram(""), 0);
    EXPECT_EQ(Outside.Log, (LogLines{"start C:\\Evol\\Bin\\Edipan32 C:\\EvPrg\\Panel.CNC", "pause 2",
                                     "box Error: C:\\Evol\\Bin\\Edipan32 C:\\EvPrg\\Panel.CNC Not Loaded"}));
}

TEST_F(EvolutionEditors, ANameWithBlanksAndQuotesIsOneArgument)
{
    Put("Evol/Bin/PanEdit.exe");
    kv::Run.PartName = "MY \"DOOR\" /X";
    ShowEvolutionProgram("");
    EXPECT_EQ(Outside.Words, (ProgramCall{"C:\\Evol\\Bin\\PanEdit", "C:\\EvPrg\\MY \"DOOR\" /X.CNC"}));
}

// CNC90.

TEST_F(Viewers, WithCnc90FilesOnDriveCTheCnc90FolderIsTaken)
{
    Put("CNC90/CNC90.CFG");
    Put("CNC90/SETCNC.BAT");
    EXPECT_EQ(ShowProgramGraphic("not used"), 7);
    EXPECT_EQ(Outside.Log, (LogLines{"start C:\\CNC90\\SETCNC.BAT S N", "pause 2"}));
}

TEST_F(Viewers, APifFileIsStartedInPlaceOfTheBatchFile)
{
    Put("CNC90/CNC90.CFG");
    Put("CNC90/SETCNC.BAT");
    Put("CNC90/SETCNC.PIF");
    EXPECT_EQ(ShowProgramGraphic(""), 7);
    EXPECT_EQ(Outside.Log, (LogLines{"start C:\\CNC90\\SETCNC.PIF /e:1024 /c setcnc.bat S N", "pause 2"}));
}

TEST_F(Viewers, ABatchFileThatOnlyTheSearchPathMayKnowIsTriedFirst)
{
    Put("CNC90/CNC90.CFG");
    Put("CNC90/SETCNC.PIF"); // alone it is nothing
    Config.Viewer = "view %1";
    EXPECT_EQ(ShowProgramGraphic(""), 7);
    EXPECT_EQ(Outside.Log, (LogLines{"start SETCNC.BAT S N", "pause 2"}));
    Outside.Log.clear();
    Outside.Starts = "view";
    EXPECT_EQ(ShowProgramGraphic(""), 7);
    EXPECT_EQ(Outside.Log, (LogLines{"start SETCNC.BAT S N",
                                     "start view " + (Folder / "c" / "PRG/SRG/D/OOR").string(), "pause 2"}));
}

TEST_F(Viewers, ABatchFileIsGivenNoKeysAndNoIniFile)
{
    Put("CNC90/CNC90.CFG");
    Put("CNC90/SETCNC.BAT");
    Put("CNC90/TPA.INI", "[TPA]\r\n");
    ShowProgramGraphic("");
    EXPECT_EQ(Get("CNC90/TPA.INI"), "[TPA]\r\n");
    EXPECT_EQ(Outside.Log.size(), 2U);
}

// WINNER90.

TEST_F(Viewers, WithoutCnc90FilesABlankEditorPathIsWinner90)
{
    MakeFolder("CNC90"); // no file in it
    Put("Winner90/Edigraf.exe");
    EXPECT_EQ(ShowProgramGraphic("not used"), 7);
    EXPECT_EQ(Get("Winner90/TPA.INI"), WinnerIni);
    EXPECT_EQ(Outside.Log, (LogLines{"pause .1", "start C:\\Winner90\\Edigraf.exe", "pause 2", "pause 6",
                                     "keys <13> without waiting"}));
}

TEST_F(Viewers, OtherFilesInTheCnc90FolderDoNotCount)
{
    Put("CNC90/SETCNC.BAT");
    Put("Winner90/Edigraf.exe");
    ShowProgramGraphic("");
    EXPECT_EQ(Outside.Log.at(1), "start C:\\Winner90\\Edigraf.exe");
}

TEST_F(Viewers, TheSecondStartDoesNotWaitThreeTimesTheDelay)
{
    Put("Winner90/Edigraf.exe");
    ShowProgramGraphic("");
    Outside.Log.clear();
    ShowProgramGraphic("");
    EXPECT_EQ(Outside.Log, (LogLines{"pause .1", "start C:\\Winner90\\Edigraf.exe", "pause 2",
                                     "keys <13> without waiting"}));
}

TEST_F(Viewers, AHandSetFolderWithWinner90InItsNameDecidesWhateverTheControl)
{
    Put("My.Winner90.Tools/Edigraf.exe");
    Config.EditorPath = "C:\\My.Winner90.Tools\\";
    for (const Int control : {Int{0}, Int{1}}) {
        kv::Run.ControlType = control;
        Outside.Log.clear();
        EXPECT_EQ(ShowProgramGraphic(""), 7) << control;
        EXPECT_EQ(Outside.Log.at(1), "start C:\\My.Winner90.Tools\\Edigraf.exe") << control;
        EXPECT_EQ(Get("My.Winner90.Tools/TPA.INI"), WinnerIni) << control; // no DirProd
    }
}

TEST_F(Viewers, OfSeveralWordsInTheFolderCnc90WinsThenWinner90)
{
    Put("GENESIS/WINNER90/CNC90/SETCNC.BAT");
    Put("GENESIS/WINNER90/Edigraf.exe");
    Config.EditorPath = "C:\\GENESIS\\WINNER90\\CNC90\\";
    ShowProgramGraphic("");
    EXPECT_EQ(Outside.Log.at(0), "start C:\\GENESIS\\WINNER90\\CNC90\\SETCNC.BAT S N");
    Outside.Log.clear();
    Config.EditorPath = "C:\\GENESIS\\WINNER90\\";
    Config.DestinationPath90 = "C:\\PRG\\";
    ShowProgramGraphic("");
    EXPECT_EQ(Get("GENESIS/WINNER90/TPA.INI"), WinnerIni);
}

TEST_F(Viewers, OtherKeysOfTheControlsFileStay)
{
    Put("Winner90/Edigraf.exe");
    Put("Winner90/TPA.INI", "; by hand\r\n[edigraf-exec]\r\nExec=0\r\nColour=3\r\n[TPA]\r\nDirProd=X\r\n");
    ShowProgramGraphic("");
    EXPECT_EQ(Get("Winner90/TPA.INI"),
              "; by hand\r\n[edigraf-exec]\r\nExec=2\r\nColour=3\r\nFileIn=DOOR\r\nFileOut=DOOR\r\n"
              "OutCom=\"OAK DOOR\"\r\n[TPA]\r\nDirProd=X\r\n");
}

TEST_F(Viewers, AnEdigrafThatDoesNotStartIsToldAndTheReturnIsSentAllTheSame)
{
    Put("Winner90/Edigraf.exe");
    Outside.NextHandle = 0;
    EXPECT_EQ(ShowProgramGraphic(""), 0);
    EXPECT_EQ(Outside.Log, (LogLines{"pause .1", "start C:\\Winner90\\Edigraf.exe", "pause 2",
                                     "box Error: C:\\Winner90\\Edigraf.exe Not Loaded", "pause 6",
                                     "keys <13> without waiting"}));
}

TEST_F(Viewers, AnEdigrafThatCannotBeStartedLeavesTheKeysOfTheIniAndNoKeystrokeIsSentToTheOther)
{
    MakeFolder("Winner90");
    Config.Viewer = "view %1";
    Outside.Starts = "view";
    EXPECT_EQ(ShowProgramGraphic(""), 7);
    EXPECT_EQ(Get("Winner90/TPA.INI"), WinnerIni);
    EXPECT_EQ(Outside.Log, (LogLines{"pause .1", "start C:\\Winner90\\Edigraf.exe",
                                     "start view " + (Folder / "c" / "PRG/SRG/D/OOR").string(), "pause 2"}));
    // The control's own viewer has not been started yet.
    Outside.Starts.clear();
    Outside.Log.clear();
    ShowProgramGraphic("");
    EXPECT_EQ(Outside.Log, (LogLines{"pause .1", "start C:\\Winner90\\Edigraf.exe", "pause 2", "pause 6",
                                     "keys <13> without waiting"}));
}

TEST_F(Viewers, WhereNeitherCanBeStartedTheBoxNamesTheControlsOwn)
{
    Config.Viewer = "view %1";
    Outside.NextHandle = 0;
    EXPECT_EQ(ShowProgramGraphic(""), 0);
    EXPECT_FALSE(Stands("Winner90/TPA.INI")); // no folder is made for it
    EXPECT_EQ(Outside.Log, (LogLines{"pause .1", "start C:\\Winner90\\Edigraf.exe",
                                     "start view " + (Folder / "c" / "PRG/SRG/D/OOR").string(), "pause 2",
                                     "box Error: C:\\Winner90\\Edigraf.exe Not Loaded", "pause 6",
                                     "keys <13> without waiting"}));
}

// GENESIS.

class GenesisViewer : public Viewers {
  protected:
    void SetUp() override
    {
        Viewers::SetUp();
        kv::Run.ControlType = 1;
        Config.DestinationPathGen = " C:\\GenPrg\\ ";
        Put("Genesis/Bin/Edigraf.exe");
    }
    static constexpr const char* GenesisIni = "[edigraf-exec]\r\nFileIn=DOOR\r\nFileOut=DOOR\r\nExec=2\r\n"
                                              "OutCom=\"OAK DOOR\"\r\n\r\n[TPA]\r\nDirProd=C:\\GenPrg\r\n";
};

TEST_F(GenesisViewer, WithoutAnIniFileBesideTheEditorTheWindowsFolderIsTaken)
{
    MakeFolder("Windows");
    EXPECT_EQ(ShowProgramGraphic("not used"), 7);
    EXPECT_EQ(Get("Windows/TPA.INI"), GenesisIni);
    EXPECT_FALSE(Stands("Genesis/Bin/TPA.INI"));
    EXPECT_EQ(Outside.Log, (LogLines{"pause .1", "start C:\\Genesis\\Bin\\Edigraf.exe", "pause 2", "pause 6",
                                     "keys <13> without waiting"}));
}

TEST_F(GenesisViewer, AnIniFileBesideTheEditorIsTaken)
{
    MakeFolder("Windows");
    Put("Genesis/Bin/TPA.INI");
    ShowProgramGraphic("");
    EXPECT_EQ(Get("Genesis/Bin/TPA.INI"), GenesisIni);
    EXPECT_FALSE(Stands("Windows/TPA.INI"));
}

TEST_F(GenesisViewer, ABlankProgramFolderIsNotWritten)
{
    Put("Genesis/Bin/TPA.INI");
    for (const char* const blank : {"", "  ", "\\"}) {
        Config.DestinationPathGen = blank;
        ShowProgramGraphic("");
        EXPECT_EQ(Get("Genesis/Bin/TPA.INI"), WinnerIni) << blank;
    }
}

TEST_F(GenesisViewer, AProgramFolderWithoutBackslashIsWrittenAsItIs)
{
    Put("Genesis/Bin/TPA.INI", "[TPA]\r\nDirProd=C:\\OLD\r\n");
    Config.DestinationPathGen = "C:\\GenPrg";
    ShowProgramGraphic("");
    EXPECT_EQ(Get("Genesis/Bin/TPA.INI"), "[TPA]\r\nDirProd=C:\\GenPrg\r\n\r\n" + std::string(WinnerIni));
}

TEST_F(GenesisViewer, TheProgramFolderIsThatOfTheRunningSystem)
{
    Put("Genesis/Bin/TPA.INI");
    Config.EditorPath = "C:\\Genesis\\Bin\\";
    Config.DestinationPath90 = "C:\\Prg90\\";
    kv::Run.ControlType = 0;
    ShowProgramGraphic("");
    EXPECT_EQ(Get("Genesis/Bin/TPA.INI"), std::string(WinnerIni) + "\r\n[TPA]\r\nDirProd=C:\\Prg90\r\n");
}

TEST_F(Viewers, AFolderWithNoneOfTheThreeWordsStartsNothing)
{
    Put("Tools/Edigraf.exe");
    Put("Tools/SETCNC.BAT");
    Config.EditorPath = "C:\\Tools\\";
    Config.Viewer = "view %1";
    EXPECT_EQ(ShowProgramGraphic(""), 0);
    EXPECT_EQ(Outside.Log, LogLines{});
    EXPECT_EQ(Outside.Report, LogLines{});
    EXPECT_FALSE(Stands("Tools/TPA.INI"));
}

// The viewer of the settings.

class OwnViewer : public Viewers {
  protected:
    std::string Started(const std::string& viewer, const std::string& program)
    {
        Config.Viewer = viewer;
        LastProgram.Path = program;
        Outside.Starts = "view";
        if (viewer.starts_with('"'))
            Outside.Starts = "\"C:\\The viewer\"";
        Outside.Log.clear();
        ShowProgramGraphic("C:\\ASKED FOR");
        return Outside.Log.at(2);
    }
    std::string Host(const std::string& name) const { return (Folder / "c" / name).string(); }
};

TEST_F(OwnViewer, APathWithBlanksIsQuoted)
{
    EXPECT_EQ(Started("view -x %1 -y", "C:\\My Prg\\DOOR"),
              "start view -x \"" + Host("My Prg/DOOR") + "\" -y");
}

TEST_F(OwnViewer, APathThatTheLineQuotesIsNotQuotedTwice)
{
    EXPECT_EQ(Started("view \"%1\"", "C:\\My Prg\\DOOR"), "start view \"" + Host("My Prg/DOOR") + "\"");
    EXPECT_EQ(Started("view \"file=%1\" %1", "C:\\My Prg\\DOOR"),
              "start view \"file=" + Host("My Prg/DOOR") + "\" \"" + Host("My Prg/DOOR") + "\"");
    EXPECT_EQ(Outside.Words, (ProgramCall{"view", "file=" + Host("My Prg/DOOR"), Host("My Prg/DOOR")}));
    EXPECT_EQ(Started("\"C:\\The viewer\" %1", "C:\\My Prg\\DOOR"),
              "start \"C:\\The viewer\" \"" + Host("My Prg/DOOR") + "\"");
}

TEST_F(OwnViewer, AQuoteInTheNameAddsNoArgument)
{
    Started("view %1 -y", "C:\\Prg\\A\" --delete \"B");
    EXPECT_EQ(Outside.Words, (ProgramCall{"view", Host("Prg/A\" --delete \"B"), "-y"}));
    Started("view \"%1\"", "C:\\Prg\\A\" --delete \"B");
    EXPECT_EQ(Outside.Words, (ProgramCall{"view", Host("Prg/A\" --delete \"B")}));
}

TEST_F(OwnViewer, ThePathHasTheSpellingOfTheDisk)
{
    Put("prg/Srg/door");
    EXPECT_EQ(Started("view %1", "C:\\PRG\\SRG\\DOOR"), "start view " + Host("prg/Srg/door"));
}

TEST_F(OwnViewer, ALineWithoutAPlaceForThePathIsStartedAsItIs)
{
    EXPECT_EQ(Started("view 100%", "C:\\PRG\\DOOR"), "start view 100%");
}

TEST_F(OwnViewer, BeforeAnyProgramWasWrittenThePathAskedForIsShown)
{
    EXPECT_EQ(Started("view %1", ""), "start view \"" + Host("ASKED FOR") + "\"");
}

// The control's folder, the viewer's mode, the entry in the editor.

TEST(ControlFolder, EndsOneCharacterBehindTheFirstWinner90)
{
    EXPECT_EQ(ControlFolderOf("C:\\Winner90\\PRG\\"), "C:\\Winner90\\");
    EXPECT_EQ(ControlFolderOf("D:\\A\\winner90\\WINNER90\\PRG\\"), "D:\\A\\winner90\\");
    EXPECT_EQ(ControlFolderOf("C:\\WINNER90.OLD\\PRG\\"), "C:\\WINNER90.");
    EXPECT_EQ(ControlFolderOf("C:\\WINNER90"), "C:\\WINNER90");
}

TEST(ControlFolder, WithCnc90AloneTheFirstEightCharactersStandForIt)
{
    EXPECT_EQ(ControlFolderOf("C:\\CNC90\\PRG\\"), "C:\\CNC90");
    EXPECT_EQ(ControlFolderOf("D:\\A\\cnc90\\"), "D:\\A\\cnc");
    EXPECT_EQ(ControlFolderOf("CNC90"), "CNC90");
}

TEST(ControlFolder, APathWithoutEitherWordHasNone)
{
    EXPECT_EQ(ControlFolderOf("C:\\PROGS\\CNC\\"), "");
    EXPECT_EQ(ControlFolderOf("C:\\PRG\\"), "");
    EXPECT_EQ(ControlFolderOf(""), "");
}

TEST_F(Viewers, TheViewersModeIsResetInTheControlsFolder)
{
    Put("Winner90/TPA.INI", WinnerIni);
    ResetViewerMode("C:\\Winner90\\");
    EXPECT_EQ(Get("Winner90/TPA.INI"),
              "[edigraf-exec]\r\nFileIn=DOOR\r\nFileOut=DOOR\r\nExec=0\r\nOutCom=\"OAK DOOR\"\r\n");
}

TEST_F(Viewers, TheConverterIsEnteredInTheFolderOfTheControl)
{
    MakeFolder("Winner90");
    Config.DestinationPath90 = "C:\\WINNER90\\PRG\\";
    Config.SourcePath90 = "C:\\DXF\\";
    RegisterWithEditor();
    EXPECT_EQ(Get("Winner90/TPA.INI"), "[edigraf-conv]\r\nconv01=\"Select DXF File|*.dxf|C:\\WINNER90\\"
                                       "KV90WIN.exe|/|C:\\DXF\\|\"\r\nconv02=\r\n");
}

TEST_F(Viewers, TheConverterIsEnteredByTheFirstEightCharactersOfACnc90Folder)
{
    MakeFolder("CNC90");
    Config.DestinationPath90 = "C:\\CNC90\\CNC\\";
    Config.SourcePath90 = "";
    RegisterWithEditor();
    // Eight characters are C:\CNC90 without its backslash, so the file's name grows.
    EXPECT_EQ(Get("CNC90TPA.INI"),
              "[edigraf-conv]\r\nconv01=\"Select DXF File|*.dxf|C:\\CNC90KV90WIN.exe|/||\"\r\nconv02=\r\n");
    EXPECT_FALSE(Stands("CNC90/TPA.INI"));
}

TEST_F(Viewers, InNoOtherFolderAFileOfTheControlAppears)
{
    MakeFolder("PRG90");
    Config.DestinationPath90 = "C:\\PRG90\\CNC\\";
    RegisterWithEditor();
    ResetViewerMode(ControlFolderOf(Config.DestinationPath90));
    EXPECT_FALSE(Stands("PRG90TPA.INI"));
    EXPECT_FALSE(Stands("PRG90/TPA.INI"));
}

TEST_F(Viewers, WithoutAProgramFolderNoFileAppearsInTheCurrentFolder)
{
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(Folder);
    Config.DestinationPath90 = "";
    RegisterWithEditor();
    ResetViewerMode(ControlFolderOf(Config.DestinationPath90));
    std::filesystem::current_path(before);
    EXPECT_EQ(Names(), (LogLines{"c"}));
}

TEST_F(Viewers, AControlFolderThatIsNotThereIsNotMadeAndNotTold)
{
    Config.DestinationPath90 = "C:\\WINNER90\\PRG\\";
    RegisterWithEditor();
    ResetViewerMode("C:\\WINNER90\\");
    EXPECT_FALSE(Stands("WINNER90"));
    EXPECT_EQ(Outside.Log, LogLines{});
}

} // namespace
} // namespace kv
