// The start of the program in its order, its end, and what is stored when a box of the window changes.
#include "shell/start_up.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "shell/batch_safety.h"
#include "shell/control_tables.h"
#include "shell/file_list.h"
#include "shell/setup_rules.h"
#include "toolchain/outside_programs.h"

namespace kv {
namespace {

constexpr int BannerRows = 10;

class StartUp : public OutsidePrograms {
  protected:
    void SetUp() override
    {
        OutsidePrograms::SetUp();
        SetVariable("XDG_CONFIG_HOME", (Folder / "person").string());
        MakeFolder("KV90");
        FileList = FileListState{};
    }
    void TearDown() override
    {
        FileList = FileListState{};
        OutsidePrograms::TearDown();
    }
    void PutSettings(const std::string& keys) const { Put("KV90/KV90.INI", "[Configuration]\r\n" + keys); }
    std::string Stored(const std::string& key) const { return GetConfigValue(key); }
    static std::string BannerLine(int row) { return Outside.Report.at(static_cast<std::size_t>(row)); }
};

// Where the program lives.

TEST_F(StartUp, TheNamedFolderIsTheInstallation)
{
    SetVariable("KORVANTI_HOME", (Folder / "c").string());
    EXPECT_EQ(InstallationFolder((Folder / "c" / "KV90").string()), PathOf("c\\KV90\\"));
}

TEST_F(StartUp, ANamedFolderThatIsNotThereIsNone)
{
    EXPECT_EQ(InstallationFolder((Folder / "nowhere").string()), "");
    SetVariable("KORVANTI_HOME", (Folder / "nowhere").string());
    EXPECT_EQ(InstallationFolder(""), "");
}

TEST_F(StartUp, TheEnvironmentNamesTheInstallationWhereNothingElseDoes)
{
    SetVariable("KORVANTI_HOME", (Folder / "c" / "KV90").string() + "/");
    EXPECT_EQ(InstallationFolder(""), PathOf("c\\KV90\\"));
}

TEST_F(StartUp, AnInstalledProgramLivesInThePersonsFolder)
{
    SetVariable("KORVANTI_HOME", std::nullopt);
    EXPECT_EQ(InstallationFolder(""), PathOf("person\\korvanti\\"));
}

TEST_F(StartUp, TheBoxForBinariesIsHiddenInFoldersOfTheOtherControls)
{
    for (const char* const folder : {"C:\\Genesis\\Bin\\", "D:\\evol\\", "C:\\DEVOLO\\"}) {
        SetExeFolder(folder);
        EXPECT_TRUE(BinHidden()) << folder;
    }
    for (const char* const folder : {"C:\\Winner90\\", "C:\\GENE\\SIS\\", ""}) {
        SetExeFolder(folder);
        EXPECT_FALSE(BinHidden()) << folder;
    }
}

// The order of the start.

TEST_F(StartUp, WithoutSettingsTheDefaultsOfAFreshInstallStand)
{
    StartShell();
    EXPECT_EQ(Config.SourcePath90, "");
    EXPECT_EQ(Config.SawKerf, "3");
    EXPECT_EQ(Config.PrecisionMetric, "2");
    EXPECT_EQ(Config.PrecisionInch, "3");
    EXPECT_EQ(Config.LineLimit, "600");
    EXPECT_EQ(Config.GraphicDelay, ".5");
    EXPECT_EQ(Config.HBDDestinationPath, "C:\\Albatros\\Product\\");
    EXPECT_TRUE(Config.HbdAvailable);
    EXPECT_TRUE(Shell.LoadDr);
    EXPECT_TRUE(Shell.Timer1);
    EXPECT_EQ(Outside.Report.size(), static_cast<std::size_t>(BannerRows));
    EXPECT_FALSE(Stands("KV90/KV90.INI")); // a start stores nothing
}

TEST_F(StartUp, TheBannerComesWhenAllIsLoadedAndBeforeTheAutostartRuns)
{
    MakeFolder("Winner90");
    PutSettings("DestinationPath90=C:\\Winner90\\PRG\\\r\n[PTSDATA]\r\nName=CUT\r\n"
                "[ToolSubData]\r\nTool0=12\r\n");
    static bool loaded;
    static bool timers;
    loaded = timers = false;
    Report.ShowRow = [](const ReportRow&) {
        if (!Outside.Report.empty())
            return;
        Outside.Report.emplace_back("seen");
        loaded = Config.PTSName == "CUT" && !Config.ToolSubData.empty() && Config.ToolSubData[0].Tool == "12";
        timers = Shell.LoadDr && !Shell.Timer1 && !Config.HbdAvailable;
    };
    StartShell();
    EXPECT_TRUE(loaded);
    EXPECT_TRUE(timers);
    EXPECT_TRUE(Shell.Timer1);
}

TEST_F(StartUp, TheWindowHearsOfTheStartAtItsEnd)
{
    StartShell();
    EXPECT_EQ(Outside.Log, (LogLines{"shown"}));
}

TEST_F(StartUp, StoredWidthsOfColumnsAreTakenAndZeroLeavesTheDesignedOne)
{
    const auto designed = FileListState{}.Widths;
    PutSettings(
        "ListColumnWidth1=3\r\nListColumnWidth3=21.5\r\nListColumnWidth4=0\r\nListColumnWidth6=14\r\n");
    StartShell();
    EXPECT_EQ(FileList.Widths[0], designed[0]); // only columns 3 to 6 are stored
    EXPECT_EQ(FileList.Widths[2], 21.5);
    EXPECT_EQ(FileList.Widths[3], designed[3]);
    EXPECT_EQ(FileList.Widths[4], designed[4]);
    EXPECT_EQ(FileList.Widths[5], 14);
}

TEST_F(StartUp, TheBoxesOfOptimizerAndAlternationComeFromTheirKeys)
{
    PutSettings("Optimizer=1\r\nDRAlternate=1\r\n");
    StartShell();
    EXPECT_TRUE(Config.OptimizerBox);
    EXPECT_EQ(Config.DRAlternate, "1");
    PutSettings("Optimizer=0\r\nDRAlternate=0\r\n");
    StartShell();
    EXPECT_FALSE(Config.OptimizerBox);
    EXPECT_EQ(Config.DRAlternate, "0");
}

TEST_F(StartUp, TheOptimizersKeyIsReadBehindTheExchangeSoItCountsForTheEvolutionToo)
{
    PutSettings("GenesisEV=True\r\nOptimizer=1\r\n");
    StartShell();
    EXPECT_TRUE(Config.OptimizerBox);
    EXPECT_EQ(Stored("Optimizer"), "1");
    ExchangeSettings(false); // as Cancel of the Setup dialog does
    EXPECT_FALSE(Config.OptimizerBox);
}

TEST_F(StartUp, TheCursorTipsAreSetOrClearedByTheLoadedSetting)
{
    static std::string tips;
    tips.clear();
    Tips.Install = [](bool on) { tips += on ? "on " : "off "; };
    PutSettings("TipsEnable= 1\r\n");
    StartShell();
    PutSettings("TipsEnable= 0\r\n");
    StartShell();
    Tips = {};
    EXPECT_EQ(tips, "on off ");
}

TEST_F(StartUp, SettingsThatCannotBeReadAreToldAndNothingIsStored)
{
    MakeFolder("Winner90");
    std::filesystem::create_symlink("KV90.INI", Folder / "c" / "KV90" / "KV90.INI");
    StartShell();
    const std::string fault = ": Too many levels of symbolic links";
    EXPECT_EQ(Outside.Report.back(), "Nothing is converted and no setting is kept: " +
                                         (Folder / "C" / "KV90" / "KV90.INI").string() + fault);
    // From now on it could be read, and overwritten with what stands designed.
    std::filesystem::remove(Folder / "c" / "KV90" / "KV90.INI");
    const std::string settings = "SawKerf=7\r\nDestinationPath90=C:\\Winner90\\PRG\\\r\n";
    PutSettings(settings);
    OpenSetup();
    AcceptSetup(nullptr);
    EXPECT_EQ(Outside.Report.back(),
              "No setting is kept: " + (Folder / "C" / "KV90" / "KV90.INI").string() + fault);
    StoreOptimizerBox(true);
    StopShell();
    EXPECT_EQ(Get("KV90/KV90.INI"), "[Configuration]\r\n" + settings);
    EXPECT_FALSE(Stands("Winner90/TPA.INI"));
}

TEST_F(StartUp, WithoutACommandLineTheEditorLearnsOfTheConverter)
{
    MakeFolder("Winner90");
    PutSettings("SourcePath90=C:\\DXF\\\r\nDestinationPath90=C:\\Winner90\\PRG\\\r\n");
    StartShell();
    EXPECT_EQ(Get("Winner90/TPA.INI"), "[edigraf-conv]\r\nconv01=\"Select DXF File|*.dxf|C:\\Winner90\\"
                                       "KV90WIN.exe|/|C:\\DXF\\|\"\r\nconv02=\r\n");
}

TEST_F(StartUp, WithACommandLineTheEditorIsLeftAlone)
{
    MakeFolder("Winner90");
    PutSettings("SourcePath90=C:\\DXF\\\r\nDestinationPath90=C:\\Winner90\\PRG\\\r\n");
    Shell.CommandLine = "/S";
    StartShell();
    EXPECT_FALSE(Stands("Winner90/TPA.INI"));
    EXPECT_EQ(Shell.CommandLine, "/S");
}

TEST_F(StartUp, EvolutionHasNoGraphic)
{
    PutSettings("GraphicAfterAuto= 1\r\nGraphicAfterMan= 1\r\nGenesisEV=True\r\n");
    StartShell();
    EXPECT_EQ(Config.GraphicAfterAuto, 0);
    EXPECT_EQ(Config.GraphicAfterMan, 0);
    PutSettings("GraphicAfterAuto= 1\r\nGraphicAfterMan= 1\r\nGenesis=True\r\n");
    StartShell();
    EXPECT_EQ(Config.GraphicAfterAuto, 1);
    EXPECT_EQ(Config.GraphicAfterMan, 1);
}

TEST_F(StartUp, UnfinishedBatchesAreToldBehindTheBannerOnceForEachFolder)
{
    PutSettings("SourcePath90=C:\\DXF\\\r\nSourcePathGen=C:\\dxf\r\nSourcePathEV=C:\\EV\\\r\n");
    Put("DXF/BATCH.RUN", "A.DXF\r\nB.DXF\r\n");
    Put("EV/BATCH.RUN", "C.DXF\r\n");
    StartShell();
    ASSERT_EQ(Outside.Report.size(), static_cast<std::size_t>(BannerRows + 2));
    EXPECT_EQ(BannerLine(1), "Korvanti for Windows  Version " + std::string(ProductVersion));
    EXPECT_TRUE(BannerLine(BannerRows).starts_with("Unfinished batch: 2 lines kept in "));
    EXPECT_TRUE(BannerLine(BannerRows).ends_with("BATCH.OLD"));
    EXPECT_TRUE(BannerLine(BannerRows + 1).starts_with("Unfinished batch: 1 lines kept in "));
    EXPECT_FALSE(Stands("DXF/BATCH.RUN"));
    EXPECT_TRUE(Stands("DXF/BATCH.OLD"));
    EXPECT_TRUE(Stands("EV/BATCH.OLD"));
}

TEST_F(StartUp, AnUnfinishedBatchThatCannotBeSetAsideIsToldOnceForAFolderOfTwoSystems)
{
    PutSettings("SourcePath90=C:\\DXF\\\r\nSourcePathGen=C:\\dxf\r\n");
    Put("DXF/BATCH.RUN", "A.DXF\r\n");
    MakeFolder("DXF/BATCH.OLD"); // in the way
    StartShell();
    EXPECT_EQ(Outside.Report.size(), static_cast<std::size_t>(BannerRows + 1));
    EXPECT_EQ(Get("DXF/BATCH.RUN"), "A.DXF\r\n");
}

TEST_F(StartUp, SettingsThatCannotBeKeptAreToldOnce)
{
    const std::filesystem::path ini = Folder / "c" / "KV90" / "KV90.INI";
    PutSettings("SawKerf=7\r\n");
    const int held = ::open(ini.c_str(), O_RDWR);
    ASSERT_EQ(::flock(held, LOCK_EX), 0); // by another program
    StartShell();
    ASSERT_EQ(Outside.Report.size(), static_cast<std::size_t>(BannerRows + 1));
    EXPECT_TRUE(BannerLine(BannerRows).starts_with("No setting is kept: "));
    EXPECT_TRUE(BannerLine(BannerRows).ends_with("KV90.INI: in use by another program"));
    EXPECT_EQ(Config.SawKerf, "7");

    Shell.CommandLine = "C:\\DXF\\DOOR.DXF"; // stores nothing and is not held up
    Outside.Report.clear();
    StartShell();
    EXPECT_EQ(Outside.Report.size(), static_cast<std::size_t>(BannerRows));
    ::close(held);
}

TEST_F(StartUp, AFolderInPlaceOfTheSettingsIsToldWhateverTheCommandLine)
{
    MakeFolder("KV90/KV90.INI"); // in the way
    for (const char* const line : {"", "C:\\DXF\\DOOR.DXF"}) {
        Shell.CommandLine = line;
        Outside.Report.clear();
        StartShell();
        ASSERT_EQ(Outside.Report.size(), static_cast<std::size_t>(BannerRows + 1));
        EXPECT_TRUE(BannerLine(BannerRows).starts_with("Nothing is converted and no setting is kept: "));
        EXPECT_TRUE(BannerLine(BannerRows).ends_with("KV90.INI: is a folder"));
    }
}

TEST_F(StartUp, LookingWhetherSettingsAreKeptLeavesNothingBehind)
{
    const auto entries = [this] {
        return std::distance(std::filesystem::directory_iterator(Folder / "c" / "KV90"),
                             std::filesystem::directory_iterator());
    };
    const auto before = entries();
    StartShell();
    EXPECT_EQ(Outside.Report.size(), static_cast<std::size_t>(BannerRows));
    EXPECT_EQ(entries(), before);
    EXPECT_FALSE(Stands("KV90/KV90.INI"));
}

TEST_F(StartUp, ABlankSourceFolderIsNotTheCurrentOne)
{
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(Folder);
    PutFile("BATCH.RUN", "A.DXF\r\n");
    PutSettings("SourcePath90=\r\n");
    StartShell();
    std::filesystem::current_path(before);
    EXPECT_EQ(FileText("BATCH.RUN"), "A.DXF\r\n");
    EXPECT_EQ(Outside.Report.size(), static_cast<std::size_t>(BannerRows));
}

// The end.

TEST_F(StartUp, LeavingResetsTheViewersModeAndSavesTheSettings)
{
    Put("Winner90/TPA.INI", "[edigraf-exec]\r\nExec=2\r\n");
    PutSettings("DestinationPath90=C:\\Winner90\\PRG\\\r\nSourcePath90=C:\\OLD\\\r\n");
    StartShell();
    Put("Winner90/TPA.INI", "[edigraf-exec]\r\nExec=2\r\n");
    Config.SawKerf = "4";
    Config.SourcePath90 = " "; // an emptied field does not erase the stored path
    static std::string kerfInTheEvents;
    kerfInTheEvents.clear();
    Outside.InTheEvents = [] { kerfInTheEvents = GetConfigValue("SawKerf"); };
    StopShell();
    EXPECT_EQ(Get("Winner90/TPA.INI"), "[edigraf-exec]\r\nExec=0\r\n");
    EXPECT_EQ(Stored("SawKerf"), "4");
    EXPECT_EQ(Stored("SourcePath90"), "C:\\OLD\\");
    EXPECT_EQ(kerfInTheEvents, "4"); // events run when all is saved
}

TEST_F(StartUp, LeavingWithoutAProgramFolderWritesNoViewersMode)
{
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(Folder);
    StartShell();
    StopShell();
    std::filesystem::current_path(before);
    EXPECT_EQ(Names(), (LogLines{"c"}));
}

// Boxes of the window.

TEST(SequenceBoxes, LettersStandInTheOrderOfTheList)
{
    const char* const letters[] = {" ", "V", "H", "G", "R"};
    for (int place = 0; place < 5; ++place)
        EXPECT_EQ(SequenceLetter(place), letters[place]);
    EXPECT_EQ(SequenceLetter(-1), " ");
    EXPECT_EQ(SequenceLetter(5), " ");
}

TEST(SequenceBoxes, AnotherCharacterLeavesTheBoxAlone)
{
    EXPECT_EQ(SequencePlace('V'), 1);
    EXPECT_EQ(SequencePlace('H'), 2);
    EXPECT_EQ(SequencePlace('G'), 3);
    EXPECT_EQ(SequencePlace('R'), 4);
    for (const char other : {' ', 'v', 'X', '\0', '\xD6'})
        EXPECT_EQ(SequencePlace(other), -1) << static_cast<int>(other);
}

TEST_F(StartUp, AChangedBoxStoresTheFourLettersJoined)
{
    StoreSequence({3, 1, 0, 4});
    EXPECT_EQ(Config.Sequence, "GV R");
    EXPECT_EQ(Get("KV90/KV90.INI"), "[ConFiguration]\r\nSequence=GV R\r\n");
    StartShell();
    EXPECT_EQ(Config.Sequence, "GV R");
}

TEST_F(StartUp, ABlankFirstBoxIsLostWhenTheKeyIsReadAgain)
{
    StoreSequence({0, 1, 2, 3});
    EXPECT_EQ(Config.Sequence, " VHG");
    StartShell();
    EXPECT_EQ(Config.Sequence, "VHG");
}

TEST_F(StartUp, TheOptimizersBoxIsStored)
{
    StoreOptimizerBox(true);
    EXPECT_EQ(Get("KV90/KV90.INI"), "[ConFiguration]\r\nOptimizer=1\r\n");
    EXPECT_TRUE(Config.OptimizerBox);
    EXPECT_EQ(Config.Optimizer, "1");
    StoreOptimizerBox(false);
    EXPECT_EQ(Get("KV90/KV90.INI"), "[ConFiguration]\r\nOptimizer=0\r\n");
    EXPECT_FALSE(Config.OptimizerBox);
    EXPECT_EQ(Config.Optimizer, "0");
}

TEST_F(StartUp, TheAlternationsBoxIsStored)
{
    StoreAlternation(true);
    EXPECT_EQ(Get("KV90/KV90.INI"), "[ConFiguration]\r\nDRAlternate=1\r\n");
    EXPECT_EQ(Config.DRAlternate, "1");
    StoreAlternation(false);
    EXPECT_EQ(Get("KV90/KV90.INI"), "[ConFiguration]\r\nDRAlternate=0\r\n");
    EXPECT_EQ(Config.DRAlternate, "0");
}

// Positions of the windows.

class WindowPlace : public StartUp {
  protected:
    // Top and Left as the file of the person holds them.
    void PutPlace(const std::string& section, const std::string& top, const std::string& left) const
    {
        std::filesystem::create_directories(Folder / "person" / "korvanti");
        PutFile("person/korvanti/user.ini",
                "[ZLT\\" + section + "]\r\nTop=" + top + "\r\nLeft=" + left + "\r\n");
    }
    static void ExpectPlace(const WindowPosition& place, Long top, Long left)
    {
        EXPECT_EQ(place.Top, top);
        EXPECT_EQ(place.Left, left);
    }
};

TEST_F(WindowPlace, WithoutAStoredOneIs500)
{
    ExpectPlace(LoadWindowPosition(MainPositionSection, true), 500, 500);
    ExpectPlace(LoadWindowPosition(AboutPositionSection, false), 500, 500);
}

TEST_F(WindowPlace, ANegativeOneOfTheMainWindowBecomes500)
{
    PutPlace("KVFrmMain", "-15", "0");
    ExpectPlace(LoadWindowPosition(MainPositionSection, true), 500, 0);
    PutPlace("KVFrmMain", "1200", "-1");
    ExpectPlace(LoadWindowPosition(MainPositionSection, true), 1200, 500);
}

TEST_F(WindowPlace, ANegativeOneOfTheAboutWindowStays)
{
    PutPlace("AboutFrmMain", "-15", "-4500");
    ExpectPlace(LoadWindowPosition(AboutPositionSection, false), -15, -4500);
}

TEST_F(WindowPlace, IsStoredInPlainNumbersAndComesBack)
{
    EXPECT_TRUE(SaveWindowPosition(MainPositionSection, {1230, 45}).Ok());
    EXPECT_TRUE(SaveWindowPosition(AboutPositionSection, {-30, 0}).Ok());
    EXPECT_TRUE(Outside.Report.empty());
    EXPECT_EQ(FileText("person/korvanti/user.ini"), "[ZLT\\KVFrmMain]\r\nTop=1230\r\nLeft=45\r\n\r\n"
                                                    "[ZLT\\AboutFrmMain]\r\nTop=-30\r\nLeft=0\r\n");
    ExpectPlace(LoadWindowPosition(MainPositionSection, true), 1230, 45);
    ExpectPlace(LoadWindowPosition(AboutPositionSection, false), -30, 0);
}

TEST_F(WindowPlace, OneThatCannotBeStoredIsReportedWithFileAndCause)
{
    std::filesystem::create_directories(Folder / "person" / "korvanti" / "user.ini");
    const FileOutcome outcome = SaveWindowPosition(MainPositionSection, {1230, 45});
    ASSERT_FALSE(outcome.Ok());
    const std::string line =
        "The window's position is not kept: " + ShownPath(PathOf("person\\korvanti\\user.ini")) +
        ": is a folder";
    EXPECT_EQ(UnkeptPositionLine(outcome), line);
    ASSERT_FALSE(Outside.Report.empty());
    EXPECT_NE(Outside.Report.back().find(line), std::string::npos) << Outside.Report.back();
}

TEST_F(WindowPlace, ATextThatIsNoPlaceDoesNoHarm)
{
    PutPlace("KVFrmMain", "left", "1e99");
    ExpectPlace(LoadWindowPosition(MainPositionSection, true), 0, 500);
    PutPlace("KVFrmMain", "12.6 px", "-1e99");
    ExpectPlace(LoadWindowPosition(MainPositionSection, true), 13, 500);
}

// The Help menu.

TEST_F(StartUp, EachItemOfTheHelpMenuStartsItsCommandLine)
{
    Put("KV90/KV90.INI",
        "[System]\r\nHelp=winhlp32 C:\\KV90\\KV90.HLP\r\nOLHelp=browse C:\\KV90\\index.htm\r\n");
    LoadOtherKeys();
    StartHelp("Help");
    StartHelp("OLHelp");
    EXPECT_EQ(Outside.Log, (LogLines{"start winhlp32 C:\\KV90\\KV90.HLP", "forget 7",
                                     "start browse C:\\KV90\\index.htm", "forget 7"}));
}

TEST_F(StartUp, AHelpFileThatDoesNotStartIsToldWithTheKeyToSet)
{
    Outside.NextHandle = 0;
    StartHelp("Help");
    StartHelp("OLHelp");
    const std::string told = "box File Problem: Unable to load Help file.<13><10>Check " + ShownPath(IniPath);
    EXPECT_EQ(Outside.Log, (LogLines{"start ", told + " under System/Help for correct path", "start ",
                                     told + " under System/OLHelp for correct path"}));
}

} // namespace
} // namespace kv
