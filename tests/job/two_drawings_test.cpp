// What one drawing leaves to the next, seen by converting two in one process.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "drawing/layer_rules.h"
#include "platform/clock.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"
#include "writers/program_writers.h"
#include "writers/writer_memory.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

const std::string Bore = Circle("VBORE Z12", 110, 70, 4);

std::string Bordered(const std::string& flags, const std::string& more = Bore)
{
    return Drawing(Rectangle("BORDER" + flags, 10, 20, 600, 400) + more);
}

// A panel given by its solid has no BORDER layer, so its drawing says nothing of what the flags set.
std::string Panel(const std::string& more = Bore)
{
    return Drawing(PanelSolid("PANEL", 10, 20, 600, 400, 18) + more);
}

class TwoDrawings : public testing::Test {
  protected:
    RunBlock& Run = kv::Run; // the test class has a Run of its own
    Scene Home;

    void First(const std::string& drawing)
    {
        ASSERT_TRUE(Home.Convert(drawing, "FIRST.DXF")) << Home.ReportText();
    }
    void Second(const std::string& drawing)
    {
        ASSERT_TRUE(Home.Convert(drawing, "SECOND.DXF")) << Home.ReportText();
    }
};

TEST_F(TwoDrawings, OutfitStaysWithoutABorderFlag)
{
    First(Bordered("OF7"));
    EXPECT_EQ(Home.Program("FIRST")[0].substr(0, 16), "G71X600Y400Z0T07");
    Second(Panel());
    EXPECT_EQ(Run.Outfit, 7);
    EXPECT_EQ(Home.Program("SECOND")[0].substr(0, 17), "G71X600Y400Z18T07");
}

TEST_F(TwoDrawings, ABorderWithoutTheFlagTakesTheDefaultAgain)
{
    First(Bordered("OF7"));
    Second(Bordered(""));
    EXPECT_EQ(Run.Outfit, 0);
}

TEST_F(TwoDrawings, TheDefaultOutfitOfAnInstructionDoesNotStay)
{
    First(Drawing(Instructions({"OUTFIT=4"}) + Rectangle("BORDER", 10, 20, 600, 400) + Bore));
    EXPECT_EQ(Run.Outfit, 4);
    Second(Bordered(""));
    EXPECT_EQ(Run.Outfit, 0);
}

TEST_F(TwoDrawings, OptimizeFlagAndSideStayWithoutABorder)
{
    First(Bordered("OPLF", ""));
    const Int flag = Run.OptimizeFlag, side = Run.OptimizeSide;
    EXPECT_EQ(flag, True);
    Second(Panel(""));
    EXPECT_EQ(Run.OptimizeFlag, flag);
    EXPECT_EQ(Run.OptimizeSide, side);
    EXPECT_TRUE(Home.Convert(Bordered("", ""), "THIRD.DXF"));
    EXPECT_EQ(Run.OptimizeFlag, False);
    EXPECT_EQ(Run.OptimizeSide, 0);
}

TEST_F(TwoDrawings, ControlTypeOfABorderStaysUntilTheShellSetsIt)
{
    First(Bordered("GE"));
    EXPECT_EQ(Run.ControlType, 1);
    Second(Panel());
    EXPECT_EQ(Run.ControlType, 1) << "the reset keeps it; the shell sets it for each job";
    EXPECT_FALSE(Home.HasProgram("SECOND")) << "a Genesis program stands elsewhere";
}

TEST_F(TwoDrawings, ASequenceThatNoWriterUsedStays)
{
    Run.CncOff = True; // a batch command: the writer that uses it up does not run
    First(Bordered("SQRHGV"));
    EXPECT_EQ(Run.SequenceName, "RHGV");
    Second(Panel());
    EXPECT_EQ(Run.SequenceName, "RHGV");
}

TEST_F(TwoDrawings, TheSequenceIsUsedUpByTheWriter)
{
    First(Bordered("SQRHGV"));
    EXPECT_EQ(Run.SequenceName, "");
}

TEST_F(TwoDrawings, MinSequenceOnlyFalls)
{
    // Outside of the route passes the names of the borders count.
    Run.MinSequence = -5;
    First(Bordered(""));
    EXPECT_EQ(Run.MinSequence, -5);
    Second(Panel());
    EXPECT_EQ(Run.MinSequence, -5);
}

TEST_F(TwoDrawings, MaxSequenceIsClearedAtEachDrawing)
{
    Run.MaxSequence = 40;
    First(Bordered(""));
    EXPECT_EQ(Run.MaxSequence, 0);
}

TEST_F(TwoDrawings, TheInstructionLayerStaysAndItsTextsAreObeyed)
{
    First(Drawing(Instructions({"FLAG=1"}, "INFO") + Rectangle("BORDER", 10, 20, 600, 400) + Bore));
    // No title of its own, but a text on a layer of that name.
    Second(Drawing(Rectangle("BORDER", 10, 20, 600, 400) + TextAt("INFO", 0, 0, "FLAG=3") + Bore));
    EXPECT_EQ(Run.InstructionLayer, "INFO");
    EXPECT_EQ(Run.FlagMask, 8) << "bit 3 of this drawing; bit 1 of the one before is cleared";
}

TEST_F(TwoDrawings, ATitleOfItsOwnReplacesTheInstructionLayer)
{
    First(Drawing(Instructions({"FLAG=1"}, "INFO") + Rectangle("BORDER", 10, 20, 600, 400) + Bore));
    Second(Drawing(Instructions({"FLAG=2"}, "ORDERS") + TextAt("INFO", 0, 0, "FLAG=3") +
                   Rectangle("BORDER", 10, 20, 600, 400) + Bore));
    EXPECT_EQ(Run.InstructionLayer, "ORDERS");
    EXPECT_EQ(Run.FlagMask, 4);
}

TEST_F(TwoDrawings, AFailedReadingsTitleStaysToo)
{
    EXPECT_FALSE(Home.Convert("ENTITIES\n0\nTEXT\n8\nINFO\n1\nPOST INSTRUCTIONS\n0\nLINE\n", "CUT.DXF"));
    EXPECT_EQ(Run.InstructionLayer, "INFO");
}

TEST_F(TwoDrawings, InstructionsOfTheFirstAreForgotten)
{
    Config.PTSPath = FromHostPath(Home.Folder.string() + "/");
    Config.PTSName = "LIST";
    First(Drawing(Instructions({"SCALE=2", "NOCODE", "DRALT", "OFFSET=1.5", "CORNERCOMP ON", "VAR A=1",
                                "OP 3=X", "PTS 2=X", "DESCR=OAK", "ZRAMP=3", "LEAD OFF"}) +
                  Rectangle("BORDER", 10, 20, 600, 400) + Bore));
    EXPECT_EQ(Run.NoCode, True);
    Second(Panel());
    EXPECT_EQ(Run.DrawingScale, 1);
    EXPECT_EQ(Run.NoCode, False);
    EXPECT_EQ(Run.DrAlt, False);
    EXPECT_EQ(Run.OffsetX, 0);
    EXPECT_EQ(Run.CornerComp, 0);
    EXPECT_EQ(Run.HasVars, False);
    EXPECT_TRUE(Run.OpStrings.empty());
    EXPECT_EQ(Run.PtsValues[2], "");
    EXPECT_EQ(Run.LeadSwitch, 0);
    EXPECT_EQ(Run.RampHeightOverride, 0);
    EXPECT_EQ(Home.Program("SECOND")[1], "G150(KORVANTI DXF IMPORT)");
}

TEST_F(TwoDrawings, PanelUnitAndOriginOfTheFirstAreForgotten)
{
    First(Drawing(PanelSolid("PANEL", 1, 2, 30, 20, 0.75) + Circle("VBORE Z.5", 11, 7, 0.2)));
    EXPECT_EQ(Run.DrawingInInch, True);
    Second(Bordered(""));
    EXPECT_EQ(Run.DrawingInInch, False);
    EXPECT_EQ(Run.PanelFound, 0);
    EXPECT_EQ(Run.PartThickness, 0);
    EXPECT_EQ(Run.OriginX, 10);
    EXPECT_EQ(Run.OriginY, 20);
}

TEST_F(TwoDrawings, TextsOfTheFirstAreForgotten)
{
    First(Bordered("", Bore + TextAt("GCODE1", 0, 0, "M98 P1") + TextAt("GCODE2", 0, 0, "M98 P2")));
    Second(Bordered(""));
    EXPECT_TRUE(Run.GCode1.empty());
    for (const std::string& line : Home.Program("SECOND"))
        EXPECT_FALSE(Holds(line, "M98")) << line;
}

// The writers.

TEST_F(TwoDrawings, ADrawingWithoutOperationsAloneWritesNoProgram)
{
    First(Bordered("", ""));
    EXPECT_FALSE(Home.HasProgram("FIRST"));
    EXPECT_TRUE(Home.Reported("No Selected Operations found for PTP")) << Home.ReportText();
}

TEST_F(TwoDrawings, ADrawingWithoutOperationsBehindOneWithThemWritesItsShortProgram)
{
    First(Bordered(""));
    Second(Bordered("", ""));
    EXPECT_EQ(Home.Program("SECOND"),
              (std::vector<std::string>{"G71X600Y400Z0T00N3L0", "G150(KORVANTI DXF IMPORT)", "M2"}));
}

TEST_F(TwoDrawings, AProgramFolderThatIsChangedBetweenThemHoldsForTheSecond)
{
    First(Bordered(""));
    const fs::path other = Home.Folder / "other";
    fs::create_directories(other);
    std::ofstream(other / "INDICE.PRG").close();
    DestinationPath(0) = FromHostPath(other.string() + "/");
    Second(Bordered(""));
    EXPECT_FALSE(Home.HasProgram("SECOND"));
    EXPECT_TRUE(fs::exists(other / "SRG" / "S" / "ECOND"));
    EXPECT_EQ(fs::file_size(other / "INDICE.PRG"), 82U);
    EXPECT_EQ(fs::file_size(Home.Programs / "INDICE.PRG"), 82U);
}

// Bores enough for two programs of 200 lines each, at depths that tell whose they are.
std::string LongDrawing(const std::string& depth)
{
    std::string bores;
    for (int i = 0; i < 250; ++i)
        bores += Circle("VBORE Z" + depth, 20 + 2 * i, 70, 2);
    return Bordered("", bores);
}

TEST_F(TwoDrawings, TwoLongDrawingsHavePortionsOfTheirOwnNames)
{
    Config.LineLimit = "200";
    First(LongDrawing("11"));
    const std::vector<std::string> one = Home.Program("FIRST1"), two = Home.Program("FIRST2");
    Second(LongDrawing("12"));
    EXPECT_TRUE(Home.Reported("PORTION2 - SECOND2 COMPLETED.")) << Home.ReportText();
    EXPECT_EQ(Home.Program("FIRST1"), one) << "the second drawing must not touch the first one's";
    EXPECT_EQ(Home.Program("FIRST2"), two);
    for (const std::string name : {"SECOND1", "SECOND2"}) {
        ASSERT_TRUE(Home.HasProgram(name)) << name;
        EXPECT_TRUE(Holds(Home.Program(name)[2], "Z12")) << Home.Program(name)[2];
    }
    EXPECT_EQ(ProgramList, (std::vector<std::string>{"FIRST1", "FIRST2", "SECOND1", "SECOND2"}));
}

TEST_F(TwoDrawings, TheSameDrawingTwiceGivesTheSameProgramAndOneIndexRecord)
{
    First(Bordered(""));
    const std::string program = Home.Read(Home.Programs / "SRG" / "F" / "IRST");
    const std::string index = Home.Read(Home.Programs / "INDICE.PRG");
    First(Bordered(""));
    EXPECT_EQ(Home.Read(Home.Programs / "SRG" / "F" / "IRST"), program);
    EXPECT_EQ(Home.Read(Home.Programs / "INDICE.PRG"), index);
    EXPECT_EQ(index.size(), 82U);
}

TEST_F(TwoDrawings, ASecondDrawingEqualsTheSameInAFreshProcess)
{
    Clock.TodayMmDdYy = [] { return std::string("07/04/26"); };
    const std::string drawing = Bordered("", Bore + Line("GROOVE D8Z6T18", 20, 60, 500, 60) +
                                                 Line("HBORE Z9D8T61", 10, 100, 40, 100));
    First(drawing);
    Second(drawing);
    const std::string second = Home.Read(Home.Programs / "SRG" / "S" / "ECOND");
    EXPECT_EQ(Home.Read(Home.Programs / "SRG" / "F" / "IRST"), second);
}

// A program line is made word by word, and its depth comes behind tool and speed.
TEST_F(TwoDrawings, ARefusedRecordLeavesToolAndSpeedToTheNextOne)
{
    struct Row {
        const char* What;
        std::string Refused;
    };
    const Row rows[] = {
        {"bore", Circle("VBOREZ300T05S6", 110, 70, 4)},
        {"bore in an edge", Line("HBORE", 300, 420, 300, 390) + Line("HBORE Z300T05S6", 296, 390, 304, 390)},
    };
    for (const Row& row : rows) {
        First(Bordered("", Circle("VBOREZ12T07S9", 110, 70, 4)));
        EXPECT_FALSE(Home.Convert(Bordered("", row.Refused), "BAD.DXF")) << row.What;
        EXPECT_TRUE(Home.Reported("Unable to Process file. 5")) << row.What << ": " << Home.ReportText();
        EXPECT_EQ(Writers.LastSpeed, 6000) << row.What;
        Second(Bordered("", Line("ROUTE1Z5", 110, 70, 310, 70)));
        EXPECT_EQ(Home.Program("SECOND")[2], "G88G90G55P5T0105X100Y50Z5") << row.What;
        EXPECT_TRUE(Home.Reported("Taken over from an earlier drawing: tool T0105"))
            << row.What << ": " << Home.ReportText();
        ResetWriters();
    }
}

TEST_F(TwoDrawings, TheProgramListGrowsOverTheRun)
{
    First(Bordered(""));
    Second(Bordered(""));
    ASSERT_EQ(ProgramList.size(), 2U);
    EXPECT_EQ(ProgramList[0], "FIRST");
    EXPECT_EQ(ProgramList[1], "SECOND");
}

} // namespace
} // namespace kv::test
