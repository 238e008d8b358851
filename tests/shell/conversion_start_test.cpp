// The list of selected drawings: what is switched around it, each file's steps, abort, graphic,
// failures, and that nothing begins inside it.
#include "shell/conversion_start.h"

#include <algorithm>

#include "shell/unattended.h"
#include "writers/program_writers.h"

namespace kv {
namespace {

class ConversionStart : public Unattended {
  protected:
    void SetUp() override
    {
        Unattended::SetUp();
        for (const char* const name : {"A.DXF", "B.DXF", "C.DXF"})
            Put(name, BoredPanel());
        Shell.LoadDr = Shell.Timer1 = true;
    }
    // Like the operator: presses and releases.
    void Start()
    {
        PressStart();
        StartConversion();
    }
    static std::ptrdiff_t Count(const std::vector<double>& pauses, double seconds)
    {
        return std::count(pauses.begin(), pauses.end(), seconds);
    }
};

TEST_F(ConversionStart, PressingClearsWhatTheLastRunLeft)
{
    kv::Run.RunState = 1;
    kv::Run.RunFailed = True;
    PressStart();
    EXPECT_EQ(kv::Run.RunState, -1);
    EXPECT_EQ(kv::Run.RunFailed, False);
}

TEST_F(ConversionStart, WithoutSelectionOnlyTimerAndFrameComeOn)
{
    ListFiles({"A.DXF"});
    FileList.Rows[0].Selected = false;
    Shell.Timer1 = Shell.Frame2Enabled = false;
    kv::Run.FailedFiles = {"", "X"};
    ReportMessage(3, "old");
    const int rows = ReportRowCount();
    Start();
    EXPECT_TRUE(Shell.Timer1);
    EXPECT_TRUE(Shell.Frame2Enabled);
    EXPECT_EQ(kv::Run.FailedFiles.size(), 2U);
    EXPECT_EQ(ReportRowCount(), rows);
    EXPECT_TRUE(Pauses.empty());
}

TEST_F(ConversionStart, EachSelectedRowIsConvertedByColumnTwoTrimmed)
{
    ListFiles({" A.DXF ", "B.DXF", "C.DXF"});
    FileList.Rows[1].Selected = false;
    FileList.Rows[0].Cells[2] = "SHORT";
    Start();
    EXPECT_TRUE(Here.HasProgram("A")) << Here.ReportText();
    EXPECT_FALSE(Here.HasProgram("B"));
    EXPECT_TRUE(Here.HasProgram("C"));
    EXPECT_EQ(Count(Pauses, 0.3), 2);
}

TEST_F(ConversionStart, EmptyRowsArePassedOver)
{
    ListFiles({"", "A.DXF"});
    Start();
    EXPECT_TRUE(Here.HasProgram("A"));
    EXPECT_TRUE(kv::Run.FailedFiles.empty());
}

TEST_F(ConversionStart, SwitchesStandAsToldWhileAListRuns)
{
    ListFiles({"A.DXF"});
    bool looked = false;
    const test::AtStage look("final", [&] {
        looked = true;
        EXPECT_TRUE(Shell.RunActive);
        EXPECT_TRUE(Shell.BtnAbortShown);
        EXPECT_FALSE(Shell.Timer1);
        EXPECT_FALSE(Shell.Frame2Enabled);
        EXPECT_FALSE(Shell.LoadDr);
        EXPECT_FALSE(Shell.StartEnabled);
    });
    Start();
    EXPECT_TRUE(looked);
    EXPECT_FALSE(Shell.RunActive);
    EXPECT_FALSE(Shell.BtnAbortShown);
    EXPECT_TRUE(Shell.Timer1);
    EXPECT_TRUE(Shell.Frame2Enabled);
    EXPECT_TRUE(Shell.LoadDr);
    EXPECT_TRUE(Shell.StartEnabled);
    EXPECT_FALSE(AnyRowSelected());
    ASSERT_FALSE(Focused.empty());
    EXPECT_EQ(Focused.back(), FocusPlace::List1);
}

TEST_F(ConversionStart, ReportProgramsAndFailuresOfTheLastRunAreForgotten)
{
    static int clears = 0;
    clears = 0;
    Report.ClearRows = [] { ++clears; };
    ProgramList = {"OLD"};
    kv::Run.FailedFiles = {"", "OLD"};
    ListFiles({"A.DXF"});
    Start();
    EXPECT_EQ(clears, 1);
    EXPECT_EQ(ProgramList, (Names{"A"}));
    EXPECT_EQ(Told("OLD"), 0);
}

TEST_F(ConversionStart, TheSystemIsSelectedAnewForEachFile)
{
    Put("A.DXF", BoredPanel("", "BORDERGE_Z18"));
    ListFiles({"A.DXF", "B.DXF"});
    std::vector<Int> systems;
    const test::AtStage look("final", [&] { systems.push_back(kv::Run.ControlType); });
    kv::Run.ControlType = 2;
    Start();
    EXPECT_EQ(systems, (std::vector<Int>{1, 0})); // the first border names its control
}

TEST_F(ConversionStart, AFailedFileDoesNotKeepTheNextFromBeingConverted)
{
    Put("A.DXF", FailingDrawing());
    ListFiles({"A.DXF", "B.DXF"});
    Start();
    EXPECT_TRUE(Here.HasProgram("B")) << Here.ReportText();
    EXPECT_EQ(Shell.FailedJobs, 1);
    ASSERT_EQ(Told("*** The Following files failed to process: ***"), 1);
    ASSERT_GT(Here.Lines.size(), 1U);
    EXPECT_EQ(*std::prev(Here.Lines.end(), 2), Source("A.DXF").string());
    EXPECT_EQ(Here.Lines.back(), "1 written, 1 failed, 0 not begun");
}

TEST_F(ConversionStart, AbortLeavesTheList)
{
    ListFiles({"A.DXF", "B.DXF", "A.DXF"});
    int jobs = 0;
    const test::AtStage look("final", [&] {
        if (++jobs == 1)
            kv::Run.RunState = 1;
    });
    Start();
    EXPECT_EQ(jobs, 1);
    EXPECT_FALSE(Here.HasProgram("B"));
    EXPECT_EQ(Told("Stopped before 2 more drawings of the list"), 1) << Here.ReportText();
    EXPECT_EQ(Here.Lines.back(), "1 written, 0 failed, 2 not begun");
    EXPECT_FALSE(Shell.BtnAbortShown);
    EXPECT_TRUE(Shell.StartEnabled);
}

TEST_F(ConversionStart, AbortBehindAFileLeavesTheList)
{
    ListFiles({"A.DXF", "B.DXF"});
    int jobs = 0;
    const test::AtStage look("entities", [&] { ++jobs; });
    InThePause = [](double) { kv::Run.RunState = 1; };
    Start();
    EXPECT_EQ(jobs, 1);
    EXPECT_TRUE(Here.HasProgram("A"));
    EXPECT_EQ(Told("USER ABORTED"), 0); // the next one is not even tried
}

TEST_F(ConversionStart, AbortDuringAFileIsNotWrittenOverByThePause)
{
    Config.GraphicAfterMan = Config.PauseForMessages = 1;
    ListFiles({"A.DXF", "B.DXF"});
    int jobs = 0;
    const test::AtStage look("final", [&] {
        if (++jobs == 1)
            kv::Run.RunState = 1;
    });
    Start();
    EXPECT_EQ(jobs, 1);
    EXPECT_FALSE(Here.HasProgram("B"));
    EXPECT_TRUE(Started.empty());
}

TEST_F(ConversionStart, ADoubleClickAfterAnAbortConverts)
{
    ListFiles({"A.DXF"});
    kv::Run.RunState = 1; // no press of `Start` comes before
    kv::Run.RunFailed = True;
    StartConversion();
    EXPECT_TRUE(Here.HasProgram("A")) << Here.ReportText();
}

TEST_F(ConversionStart, GraphicIsShownAfterEachFileThatWentWell)
{
    Config.GraphicAfterMan = 1;
    Put("B.DXF", FailingDrawing());
    ListFiles({"A.DXF", "B.DXF", "C.DXF"});
    Start();
    ASSERT_EQ(Started.size(), 2U);
    EXPECT_EQ(Started[0], "view " + (Here.Programs / "SRG/00/A").make_preferred().string());
    EXPECT_EQ(Started[1], "view " + (Here.Programs / "SRG/00/C").make_preferred().string());
    EXPECT_EQ(Forgotten.size(), 2U);
}

TEST_F(ConversionStart, WithoutTheSwitchNoGraphicIsShown)
{
    Config.GraphicAfterAuto = 1;
    ListFiles({"A.DXF"});
    Start();
    EXPECT_TRUE(Started.empty());
}

TEST_F(ConversionStart, PauseForMessagesKeepsTheReportInPlaceOfTheGraphic)
{
    Config.GraphicAfterMan = Config.PauseForMessages = 1;
    ListFiles({"A.DXF", "B.DXF"});
    Start();
    EXPECT_TRUE(Started.empty());
    EXPECT_EQ(kv::Run.RunState, 2);
    EXPECT_TRUE(Here.HasProgram("B"));
}

TEST_F(ConversionStart, MetersRestAfterEachFile)
{
    ListFiles({"A.DXF", "B.DXF"});
    std::vector<int> parsing;
    InThePause = [&](double) { parsing.push_back(MeterValue(Meter::Parsing)); };
    Start();
    EXPECT_EQ(parsing, (std::vector<int>{100, 100}));
    for (int i = 0; i < MeterCount; ++i)
        EXPECT_EQ(MeterValue(static_cast<Meter>(i)), 0);
    EXPECT_EQ(MeterInterval(), 0);
}

TEST_F(ConversionStart, ARowThatGoesAwayMeanwhileIsStillConverted)
{
    ListFiles({"A.DXF", "B.DXF"});
    InThePause = [](double) { FileList.Rows.clear(); };
    Start();
    EXPECT_TRUE(Here.HasProgram("B"));
}

TEST_F(ConversionStart, StartInsideARunDoesNothing)
{
    ListFiles({"A.DXF"});
    int jobs = 0;
    const test::AtStage look("entities", [&] {
        ++jobs;
        kv::Run.RunState = 5;
        PressStart();
        EXPECT_EQ(kv::Run.RunState, 5);
        kv::Run.RunState = -1;
        StartConversion();
        ConvertDroppedDrawings({FromHostPath(Source("B.DXF").string())});
    });
    Start();
    EXPECT_EQ(jobs, 1);
    EXPECT_TRUE(Here.HasProgram("A"));
    EXPECT_FALSE(Here.HasProgram("B"));
}

TEST_F(ConversionStart, ATickInsideAListDoesNothing)
{
    Config.AutoStartTemp = true;
    WarmUp();
    Put("Temp.DXF", BoredPanel());
    ListFiles({"A.DXF", "B.DXF"});
    InThePause = [](double) { AutostartTick(); };
    Start();
    EXPECT_TRUE(Stands("Temp.DXF"));
    EXPECT_FALSE(Here.HasProgram("TEMP"));
    EXPECT_TRUE(Here.HasProgram("B"));
}

TEST_F(ConversionStart, DroppedDrawingsAreConvertedByTheirPaths)
{
    std::filesystem::create_directories(Here.Folder / "other");
    const std::filesystem::path place = Here.Write("other/DROP.DXF", BoredPanel());
    ConvertDroppedDrawings({FromHostPath(place.string())});
    EXPECT_TRUE(Here.HasProgram("DROP")) << Here.ReportText();
    EXPECT_FALSE(Shell.RunActive);
}

TEST_F(ConversionStart, WithTheSettingStrictADoubtfulDrawingLeavesNothingAndTheListGoesOn)
{
    Config.Strict = "Yes";
    Put("A.DXF", BoredPanel(test::Line("ROUTE Z5T71", 50, 50, 50, 50)));
    LastProgram = {"OLD", "C:\\OLD", ""};
    ListFiles({"A.DXF"});
    Start();
    EXPECT_FALSE(Here.HasProgram("A")) << Here.ReportText();
    EXPECT_EQ(LastProgram.FileName, "OLD") << "a viewer shows no program that is not there";
    FileList.Rows.clear();
    ListFiles({"A.DXF", "B.DXF"});
    Start();
    EXPECT_FALSE(Here.HasProgram("A"));
    EXPECT_TRUE(Here.HasProgram("B"));
    EXPECT_EQ(Told(Source("A.DXF").string() + ": 1 doubt; nothing was written"), 2) << Here.ReportText();
    EXPECT_EQ(kv::Run.FailedFiles.size(), 2U);
}

} // namespace
} // namespace kv
