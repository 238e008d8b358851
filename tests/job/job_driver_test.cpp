// From a job line to names, the order of the steps, what each way of ending leaves, and the meters.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "drawing/layer_rules.h"
#include "job/job_driver.h"
#include "platform/clock.h"
#include "platform/events.h"
#include "platform/paths.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"
#include "writers/program_writers.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

const std::string Door = Drawing(Rectangle("BORDERLL", 10, 20, 600, 400) + Circle("VBORE Z12", 110, 70, 4));

class JobDriver : public testing::Test {
  protected:
    RunBlock& Run = kv::Run; // the test class has a Run of its own
    Scene Home;

    std::string Base() const { return FromHostPath(Home.Folder.string()) + "\\"; }
    // Runs the line as it stands; returns it as the driver left it.
    std::string Process(std::string jobLine)
    {
        Home.Lines.clear();
        Home.Boxes.clear();
        Run.RunFailed = False;
        ProcessDrawingFile(jobLine);
        ReportMessage(2, "");
        return jobLine;
    }
    std::vector<std::string> StageNames(const std::string& drawing)
    {
        static std::vector<std::string> names;
        names.clear();
        Stages.Done = [](std::string_view stage) { names.emplace_back(stage); };
        Home.Convert(drawing);
        Stages.Done = nullptr;
        return names;
    }
};

// The job line.

TEST_F(JobDriver, ACaretAloneDoesNotSplitTheName)
{
    Process(Base() + "B.DXF^FRONT");
    EXPECT_EQ(Run.SourceFile, Base() + "B.DXF^FRONT");
    EXPECT_EQ(Run.SourceName, "B.DXF^FRONT");
    EXPECT_EQ(Run.PartName, "B");
    EXPECT_EQ(Run.SourceFolder, Base());
}

TEST_F(JobDriver, ACaretNameWithoutExtensionGetsIt)
{
    Process(Base() + "B^FRONT");
    EXPECT_EQ(Run.SourceFile, Base() + "B^FRONT.DXF");
    EXPECT_EQ(Run.SourceName, "B^FRONT");
    EXPECT_EQ(Run.PartName, "B^FRONT");
}

TEST_F(JobDriver, TheByte255SplitsFileAndPartName)
{
    EXPECT_EQ(Process("  " + Base() +
                      "B\xFF"
                      "FRONT  "),
              Base() + "B^FRONT");
    EXPECT_EQ(Run.SourceFile, Base() + "B.DXF");
    EXPECT_EQ(Run.SourceName, "B");
    EXPECT_EQ(Run.PartName, "FRONT");
}

TEST_F(JobDriver, AllBytes255OfTheLineBecomeCarets)
{
    EXPECT_EQ(Process(Base() + "B\xFF"
                               "C\xFF"
                               "D"),
              Base() + "B^C^D");
    EXPECT_EQ(Run.SourceFile, Base() + "B.DXF");
    EXPECT_EQ(Run.PartName, "C^D");
}

TEST_F(JobDriver, AByte255InFirstPlaceDoesNotSplit)
{
    Process("\xFF"
            "FRONT");
    EXPECT_EQ(Run.SourceFile, "^FRONT.DXF");
    EXPECT_EQ(Run.PartName, "^FRONT");
}

TEST_F(JobDriver, ThePartNameIsCutAtItsExtension)
{
    Process(Base() + "B.DXF\xFF"
                     "X.DXF");
    EXPECT_EQ(Run.PartName, "X");
    Process(Base() + "B.DXF\xFF"
                     "X.dxf.bak");
    EXPECT_EQ(Run.PartName, "X");
}

TEST_F(JobDriver, BlanksBehindTheSeparatorStay)
{
    Process(Base() + "B.DXF\xFF  FRONT");
    EXPECT_EQ(Run.PartName, "  FRONT") << "the rest is trimmed in front of its caret, not behind it";
}

TEST_F(JobDriver, ASeparatorWithNothingBehindTakesTheFilesName)
{
    Process(Base() + "B.DXF\xFF");
    EXPECT_EQ(Run.PartName, "B");
}

TEST_F(JobDriver, ALowerCaseExtensionKeepsItsSpelling)
{
    Process(Base() + "b.dxf");
    EXPECT_EQ(Run.SourceFile, Base() + "b.dxf");
    EXPECT_EQ(Run.PartName, "b");
}

TEST_F(JobDriver, TheExtensionCountsAnywhereInTheFilesPath)
{
    Process(Base() + "jobs.dxf\\B");
    EXPECT_EQ(Run.SourceFile, Base() + "jobs.dxf\\B");
    EXPECT_EQ(Run.PartName, "B");
}

TEST_F(JobDriver, ABlankLineIsADrawingOfNoName)
{
    EXPECT_EQ(Process("    "), "");
    EXPECT_EQ(Run.SourceFile, ".DXF");
    EXPECT_EQ(Home.Lines, std::vector<std::string>{".DXF  NOT FOUND"});
    EXPECT_EQ(Run.RunFailed, True);
}

TEST_F(JobDriver, AMissingFileIsToldAndListed)
{
    Process(Base() + "NONE");
    EXPECT_EQ(Home.Lines, std::vector<std::string>{ShownPath(Base() + "NONE.DXF") + "  NOT FOUND"});
    EXPECT_EQ(Run.FailedFiles, (std::vector<std::string>{"", Base() + "NONE.DXF"}));
    EXPECT_EQ(Run.RunFailed, True);
}

TEST_F(JobDriver, TheStartTimeIsTakenFirst)
{
    Clock.SecondsSinceMidnight = [] { return 3600.25; };
    Process(Base() + "NONE");
    EXPECT_EQ(Run.RunStartTime, 3600.25F);
}

TEST_F(JobDriver, TheJobIsReportedByItsPartNameWithoutFolder)
{
    Home.Convert(Door, "B.DXF", Base() + "prg\\FRONT");
    ASSERT_FALSE(Home.Lines.empty());
    EXPECT_EQ(Home.Lines[0], "FRONT");
}

TEST_F(JobDriver, APartNameThatIsAFolderIsReportedByTheFilesName)
{
    Home.Convert(Door, "B.DXF", Base() + "prg\\");
    ASSERT_FALSE(Home.Lines.empty());
    EXPECT_EQ(Home.Lines[0], "B.DXF");
}

// The order of the steps.

TEST_F(JobDriver, StagesComeInTheirOrder)
{
    const std::vector<std::string> all{"entities", "layers", "border",    "operations", "routes", "chained",
                                       "pockets",  "tour",   "optimized", "leads",      "final",  "programs"};
    EXPECT_EQ(StageNames(Door), all);
    EXPECT_EQ(Run.RunFailed, False) << Home.ReportText();
}

TEST_F(JobDriver, ADrawingWithoutCodeStopsBehindItsOperations)
{
    const std::vector<std::string> some{"entities", "layers", "border", "operations"};
    EXPECT_EQ(StageNames(Drawing(Instructions({"NOCODE"}) + Rectangle("BORDER", 10, 20, 600, 400))), some);
}

TEST_F(JobDriver, ABorderFailureLeavesAtOnce)
{
    const std::vector<std::string> some{"entities", "layers"};
    EXPECT_EQ(StageNames(Drawing(Circle("VBORE", 1, 1, 4))), some);
    EXPECT_EQ(Home.Lines, (std::vector<std::string>{"DOOR", "Part BORDER or BORDER Layer NOT Found!!!",
                                                    "CONVERSION PROCESS ABORTED."}));
    EXPECT_EQ(Run.FailedFiles, (std::vector<std::string>{"", Base() + "DOOR.DXF"}));
    EXPECT_GT(Entities.Last(), 0) << "the arrays are left as they are";
}

TEST_F(JobDriver, TheReaderRunsBeforeTheReset)
{
    Run.PartDescription = "OLD";
    Run.NoCode = True;
    std::string folder = "?";
    Long count = -1;
    Single scale = -1, tolerance = -1, minX = 0;
    const AtStage look("entities", [&] {
        folder = kv::Run.SourceFolder;
        count = kv::Run.EntityCount;
        scale = kv::Run.DrawingScale;
        tolerance = kv::Run.RouteTolerance;
        minX = kv::Run.SideMinX[5];
    });
    Home.Convert(Door);
    EXPECT_EQ(folder, "") << "set by the driver, blanked by the reset";
    EXPECT_EQ(count, 7) << "element 1, four lines, a circle and the blank tail";
    EXPECT_EQ(scale, 1);
    EXPECT_EQ(tolerance, 0.008F);
    EXPECT_EQ(minX, 9999999.0F);
}

TEST_F(JobDriver, InstructionsRunBeforeTheLayersAreRewritten)
{
    // The renamed layer has a code of two letters and a flag of the border: both are obeyed.
    const std::string drawing = Drawing(Instructions({"LAYER 7=VBORE FD900", "LAYER RIM=BORDEROP"}) +
                                        Rectangle("RIM", 10, 20, 600, 400) + Circle("7", 110, 70, 4));
    Single feed = 0;
    const AtStage look("operations", [&] { feed = VBores.Last() == 1 ? VBores[1].Feed : -1; });
    EXPECT_TRUE(Home.Convert(drawing)) << Home.ReportText();
    EXPECT_EQ(feed, 900);
    EXPECT_EQ(Run.OptimizeFlag, True);
}

TEST_F(JobDriver, EntitiesAreReleasedBehindTheRoutePasses)
{
    Long before = 0, behind = -1;
    const AtStage routes("routes", [&] { before = Entities.Last(); });
    const AtStage chained("chained", [&] { behind = Entities.Last(); });
    Home.Convert(Door);
    EXPECT_EQ(before, 7);
    EXPECT_EQ(behind, 0);
}

TEST_F(JobDriver, ArraysAndProgramNameAreReleasedAtTheEnd)
{
    ASSERT_TRUE(Home.Convert(Door)) << Home.ReportText();
    EXPECT_EQ(VBores.Last(), 0);
    EXPECT_EQ(Entities.Last(), 0);
    EXPECT_EQ(EntityTexts.size(), 1U);
    EXPECT_EQ(Run.ProgramFileName, "");
}

TEST_F(JobDriver, DescriptionIsReportedBehindThePartNameLine)
{
    const std::string drawing = Drawing(Rectangle("BORDER", 10, 20, 600, 400) + TextAt("DESCR", 0, 0, "OAK") +
                                        TextAt("NAME", 0, 0, "side") + Circle("VBORE Z12", 110, 70, 4));
    ASSERT_TRUE(Home.Convert(drawing)) << Home.ReportText();
    ASSERT_GE(Home.Lines.size(), 4U);
    EXPECT_EQ(Home.Lines[0], "DOOR");
    EXPECT_EQ(Home.Lines[1], "Layer BORDER: the panel has no thickness");
    EXPECT_EQ(Home.Lines[2], "USING \"SIDE\" FOR THE PART NAME");
    EXPECT_EQ(Home.Lines[3], "Descr: OAK");
}

TEST_F(JobDriver, TheOptimizerRunsBySettingOrFlagWithABore)
{
    EXPECT_FALSE(StageNames(Door).empty());
    Config.Optimizer = "1";
    EXPECT_TRUE(Home.Convert(Door)) << Home.ReportText();
    // A drawing without any vertical bore must pass as well.
    EXPECT_TRUE(Home.Convert(Drawing(Rectangle("BORDEROP", 10, 20, 600, 400)))) << Home.ReportText();
}

// A drawing without code.

TEST_F(JobDriver, WithoutCodeThereIsACutListRowButNoProgram)
{
    Config.PTSPath = Base();
    Config.PTSName = "LIST";
    Config.PtsFields[1] = "NAME";
    Config.PtsFieldCount = 1;
    const std::string drawing =
        Drawing(Instructions({"PTS NAME=DOOR FRONT LEFT HAND", "NOCODE"}) +
                Rectangle("BORDER", 10, 20, 600, 400) + Circle("VBORE Z12", 110, 70, 4));
    EXPECT_TRUE(Home.Convert(drawing)) << Home.ReportText();
    EXPECT_FALSE(Home.HasProgram());
    EXPECT_EQ(Home.Read(Home.Folder / "LIST.PTS"), "2.00, 1,M\r\nDOOR FRONT LEFT HAND\r\n");
    ASSERT_GE(Home.Lines.size(), 2U);
    EXPECT_EQ(Home.Lines.back(), "Code Generation Turned Off in Drawing");
    EXPECT_EQ(Home.Lines[Home.Lines.size() - 2], "Entry to PTS: " + (Home.Folder / "LIST.PTS").string());
    EXPECT_EQ(Entities.Last(), 0);
}

TEST_F(JobDriver, WithoutCodeNoOperationIsRead)
{
    Long bores = -1;
    const AtStage look("operations", [&] { bores = VBores.Last(); });
    Home.Convert(Drawing(Instructions({"NOCODE"}) + Rectangle("BORDER", 10, 20, 600, 400) +
                         Circle("VBORE Z12", 110, 70, 4) + TextAt("DESCR", 0, 0, "OAK")));
    EXPECT_EQ(bores, 0);
    EXPECT_FALSE(Home.Reported("Descr: OAK")) << "texts are read with the operations";
}

// Ends.

TEST_F(JobDriver, AFailedProgramStillGetsItsCutListRow)
{
    fs::remove(Home.Programs / "INDICE.PRG");
    Config.PTSPath = Base();
    Config.PTSName = "LIST";
    Config.PtsFields[1] = "NAME";
    Config.PtsFieldCount = 1;
    EXPECT_FALSE(
        Home.Convert(Drawing(Instructions({"PTS NAME=LEFT HAND DOOR FRONT"}) +
                             Rectangle("BORDER", 10, 20, 600, 400) + Circle("VBORE Z12", 110, 70, 4))));
    EXPECT_TRUE(fs::exists(Home.Folder / "LIST.PTS")) << Home.ReportText();
}

TEST_F(JobDriver, RunFailedStaysUntilTheCallerClearsIt)
{
    Process(Base() + "NONE");
    std::string job = FromHostPath(Home.Write("DOOR.DXF", Door).string());
    ProcessDrawingFile(job);
    ReportMessage(2, "");
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_FALSE(Home.HasProgram()) << "the drawing is read, but not converted";
    EXPECT_EQ(Home.Lines.back(), "DOOR");
}

TEST_F(JobDriver, AnAbortWhileReadingEndsTheJobWithoutConversion)
{
    static int calls = 0;
    calls = 0;
    Events.Pump = [] {
        if (++calls == 5)
            kv::Run.RunState = 1;
    };
    EXPECT_TRUE(StageNames(Door).empty());
    EXPECT_EQ(Home.Lines, (std::vector<std::string>{"DOOR", "USER ABORTED"}));
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_EQ(Run.RunState, 1) << "the shell's";
    EXPECT_TRUE(Run.FailedFiles.empty()) << "an abort is no failure of the file";
    EXPECT_FALSE(Home.HasProgram());
}

TEST_F(JobDriver, AnAbortWhileWritingLeavesNoProgram)
{
    static bool writing = false;
    writing = false;
    const AtStage look("final", [] { writing = true; });
    Events.Pump = [] {
        if (writing)
            kv::Run.RunState = 1;
    };
    EXPECT_FALSE(Home.Convert(Door));
    EXPECT_TRUE(Home.Reported("USER ABORTED")) << Home.ReportText();
    EXPECT_FALSE(Home.HasProgram());
    EXPECT_EQ(VBores.Last(), 0) << "the run goes on behind the writer to its normal end";
}

TEST_F(JobDriver, AnAbortWhileChainingLeavesTheRunAtOnce)
{
    const AtStage look("routes", [] { kv::Run.RunState = 1; });
    EXPECT_FALSE(
        Home.Convert(Drawing(Rectangle("BORDER", 10, 20, 600, 400) + Circle("VBORE Z12", 110, 70, 4) +
                             Line("ROUTE T71 Z5", 20, 60, 500, 60))));
    EXPECT_TRUE(Home.Reported("USER ABORTED")) << Home.ReportText();
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_TRUE(Run.FailedFiles.empty()) << "an abort is no failure of the file";
    EXPECT_FALSE(Home.HasProgram());
    EXPECT_EQ(VBores.Last(), 1) << "the arrays are left as they are";
    EXPECT_EQ(RouteSegments.Last(), 2);
}

TEST_F(JobDriver, BehindAnAbortTheNextJobConverts)
{
    Run.RunState = 1;
    EXPECT_FALSE(Home.Convert(Door));
    Run.RunState = 0;
    EXPECT_TRUE(Home.Convert(Door)) << Home.ReportText();
    EXPECT_TRUE(Home.HasProgram());
}

TEST_F(JobDriver, ARunErrorEmptiesTheArraysAndMakesNoCutListRow)
{
    Config.PTSPath = Base();
    Config.PTSName = "LIST";
    Config.PtsFields[1] = "NAME";
    Config.PtsFieldCount = 1;
    EXPECT_FALSE(Home.Convert(
        Drawing(Instructions({"PTS NAME=X", "PTS 51=A"}) + Rectangle("BORDER", 10, 20, 600, 400))));
    EXPECT_EQ(Home.Lines.size(), 2U) << Home.ReportText();
    EXPECT_TRUE(Home.Lines.back().starts_with((Home.Folder / "DOOR.DXF").string() + ": "))
        << Home.ReportText();
    EXPECT_EQ(Run.FailedFiles, (std::vector<std::string>{"", Base() + "DOOR.DXF"}));
    EXPECT_EQ(Entities.Last(), 0);
    EXPECT_EQ(EntityTexts.size(), 1U);
    EXPECT_FALSE(fs::exists(Home.Folder / "LIST.PTS"));
}

TEST_F(JobDriver, ACauseIsOneRowWhateverBytesItQuotes)
{
    EXPECT_FALSE(Home.Convert("0\nSECTION\n2\nENTITIES\n0\nLINE\n8\rA\tB\nX\n0\nENDSEC\n"));
    EXPECT_EQ(Home.Lines,
              (std::vector<std::string>{"DOOR", (Home.Folder / "DOOR.DXF").string() +
                                                    ": Group code \"8?A?B\" in line 7 is no number"}));
}

// Without ENTITIES.

TEST_F(JobDriver, WithoutEntitiesTheRunGoesOnAndFailsAtTheBorder)
{
    EXPECT_FALSE(Home.Convert("0\nSECTION\n2\nHEADER\n0\nENDSEC\n0\nEOF\n"));
    EXPECT_EQ(Home.Boxes, std::vector<std::string>{"ENTITIES Section not found in  " +
                                                   (Home.Folder / "DOOR.DXF").string() + "    "});
    EXPECT_EQ(Home.Lines, (std::vector<std::string>{"DOOR", "Part BORDER or BORDER Layer NOT Found!!!",
                                                    "CONVERSION PROCESS ABORTED."}));
    EXPECT_EQ(Run.FailedFiles, (std::vector<std::string>{"", "~"}));
}

// Meters.

std::vector<std::pair<Meter, int>> Moves;

TEST_F(JobDriver, MetersMoveInTheOrderOfTheSteps)
{
    Moves.clear();
    Report.MeterMoved = [](Meter meter, int percent) { Moves.emplace_back(meter, percent); };
    ASSERT_TRUE(Home.Convert(Drawing(Instructions({"LEAD OFF"}) + Rectangle("BORDER", 10, 20, 600, 400) +
                                     Circle("VBORE Z12", 110, 70, 4))))
        << Home.ReportText();
    const auto place = [](Meter meter, int percent) {
        return std::find(Moves.begin(), Moves.end(), std::pair{meter, percent}) - Moves.begin();
    };
    EXPECT_EQ(place(Meter::Parsing, 100), 0);
    EXPECT_EQ(place(Meter::ReadingInfo, 100), 1);
    EXPECT_EQ(place(Meter::Processing, 1), 2);
    const auto processed = place(Meter::Processing, 100);
    const auto written = place(Meter::PgmCode, 100);
    EXPECT_GT(processed, 2);
    EXPECT_GT(written, processed);
    EXPECT_LT(static_cast<std::size_t>(written), Moves.size());
}

TEST_F(JobDriver, WithoutInstructionsTheirMeterStays)
{
    Home.Convert(Door);
    EXPECT_EQ(MeterValue(Meter::ReadingInfo), 0);
}

TEST_F(JobDriver, ProcessingClimbsTo30WithTheEntitiesAndNeverFalls)
{
    std::string entities = Rectangle("BORDER", 10, 20, 600, 400);
    for (int i = 0; i < 93; ++i)
        entities += Circle("VBORE Z12", 20 + i, 70, 4);
    Moves.clear();
    Report.MeterMoved = [](Meter meter, int percent) {
        if (meter == Meter::Processing)
            Moves.emplace_back(meter, percent);
    };
    ASSERT_TRUE(Home.Convert(Drawing(entities))) << Home.ReportText();
    // 99 is the highest index: elements 0 and 1, 97 entities, the tail.
    std::vector<int> expected{1};
    for (int index = 10; index <= 90; index += 10)
        expected.push_back(index * 30 / 99);
    expected.push_back(100);
    std::vector<int> seen;
    for (const auto& move : Moves)
        seen.push_back(move.second);
    EXPECT_EQ(seen, expected);
}

// Settings stop the files, not the run.

TEST_F(JobDriver, StoppedBeforeTheWritersNothingIsWritten)
{
    Stages.StopBeforeWriters = true;
    EXPECT_TRUE(Home.Convert(Door));
    EXPECT_FALSE(Home.HasProgram());
    EXPECT_EQ(Home.Read(Home.Programs / "INDICE.PRG"), "");
}

} // namespace
} // namespace kv::test
