// Lines of the blocks V, G and H, and the G-code texts among the routes.
#include <limits>

#include "platform/run_error.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/program_scene.h"
#include "writers/writer_memory.h"

namespace kv {
namespace {

class CncBlocks : public ProgramScene {
  protected:
    Texts LinesOf(bool (*block)(CncProgram&))
    {
        CncProgram program;
        program.OffsetWord = "G55";
        EXPECT_TRUE(block(program));
        HorizontalWritten = program.HorizontalWritten;
        return TextsOf(program.Lines);
    }
    Texts LinesOfStop(const HeadPosition& stop)
    {
        HeadPositions.Append(stop);
        return LinesOf(WriteVerticalBlock);
    }
    Texts LinesOfTool(const std::string& tool, Int group = 1)
    {
        VBoreRecord bore = Bore(100, 50, 12, 8);
        bore.Tool = tool;
        bore.Group = group;
        VBores.Append(bore);
        return LinesOf(WriteVerticalBlock);
    }
    static HeadPosition Stop(Int chainSize, Int direction)
    {
        HeadPosition stop;
        stop.X = 37;
        stop.Y = 50.5F;
        stop.EndX = 133;
        stop.EndY = 210;
        stop.Depth = 12;
        stop.Tool = "101214";
        stop.ChainSize = chainSize;
        stop.Direction = direction;
        return stop;
    }
    static GroovePass Groove(Single x1, Single y1, Single x2, Single y2)
    {
        GroovePass groove;
        groove.X1 = x1;
        groove.Y1 = y1;
        groove.X2 = x2;
        groove.Y2 = y2;
        groove.Depth = 8.5F;
        return groove;
    }
    Texts LinesOfGroove(const GroovePass& groove)
    {
        GroovePasses.Append(groove);
        return LinesOf(WriteGrooveBlock);
    }

    bool HorizontalWritten = false;
};

TEST_F(CncBlocks, ABoreWithoutToolIsPickedByItsDiameter)
{
    AddBore();
    EXPECT_EQ(LinesOf(WriteVerticalBlock), Texts{"G81G90G55P5R54=8X100Y50Z12"});
    EXPECT_TRUE(Writers.TopDrillingWritten);
    EXPECT_EQ(Writers.SideMask, 0x10);
    EXPECT_EQ(MeterValue(Meter::PgmCode), 50);
}

TEST_F(CncBlocks, AllWordsOfABoreStandInTheirOrder)
{
    VBoreRecord bore = Bore(100.126F, 50, 97, 8);
    bore.ExtraSlot = 3;
    bore.Feed = 3000.5F;
    bore.Speed = 6000;
    bore.Tool = "01 02";
    bore.Group = 2;
    VBores.Append(bore);
    EXPECT_EQ(LinesOf(WriteVerticalBlock), Texts{"G81G90E3F3000.5G55P5T020102S6000X100.13Y50Z=a"});
}

TEST_F(CncBlocks, AnExtraSlotBelowNothingPrintsAsItIs)
{
    AddBore();
    VBores[1].ExtraSlot = -1;
    EXPECT_EQ(LinesOf(WriteVerticalBlock), Texts{"G81G90E-1G55P5R54=8X100Y50Z12"});
}

TEST_F(CncBlocks, ToolSeventyIsARouterTool)
{
    EXPECT_EQ(LinesOfTool("70"), Texts{"G88G90G55P5T0170X100Y50Z12"});
}

TEST_F(CncBlocks, FourCharactersNameDrillsWhateverTheirValue)
{
    EXPECT_EQ(LinesOfTool("7001"), Texts{"G81G90G55P5T017001X100Y50Z12"});
}

TEST_F(CncBlocks, SixtyThreeIsTheLastDrill)
{
    EXPECT_EQ(LinesOfTool("63").back().substr(0, 3), "G81");
    EXPECT_EQ(LinesOfTool("64").back().substr(0, 3), "G88");
    EXPECT_EQ(LinesOfTool("999").back().substr(0, 3), "G88");
}

TEST_F(CncBlocks, AToolTextWithoutValueIsNoTool)
{
    EXPECT_EQ(LinesOfTool("00"), Texts{"G81G90G55P5R54=8X100Y50Z12"});
}

TEST_F(CncBlocks, BoresThatAnotherMachineTookAreLeftOut)
{
    AddBore();
    VBores[1].Group = 0;
    AddHBore(1);
    HBores[1].Group = 0;
    EXPECT_TRUE(LinesOf(WriteVerticalBlock).empty());
    EXPECT_TRUE(LinesOf(WriteHorizontalBlock).empty());
    EXPECT_FALSE(Writers.TopDrillingWritten);
    EXPECT_FALSE(HorizontalWritten);
    EXPECT_EQ(Writers.SideMask, 0);
}

TEST_F(CncBlocks, ALoneStopIsASingleDrilling)
{
    EXPECT_EQ(LinesOfStop(Stop(1, 0)), Texts{"G81G90G55P5T01101214X37Y50.5Z12"});
    EXPECT_TRUE(Writers.TopDrillingWritten);
    EXPECT_EQ(Writers.SideMask, 0x10);
}

TEST_F(CncBlocks, ALoneStopAlongXIsASingleDrillingToo)
{
    EXPECT_EQ(LinesOfStop(Stop(1, 1)), Texts{"G81G90G55P5T01101214X37Y50.5Z12"});
}

TEST_F(CncBlocks, ARowAlongXNamesItsEnd)
{
    HeadPosition row = Stop(3, 1);
    row.Tool = "10|12";
    row.ExtraSlot = 2;
    row.Feed = 1500;
    EXPECT_EQ(LinesOfStop(row), Texts{"G183G90E2F1500G55P5T0110|12X37Y50.5Z12I133"});
}

TEST_F(CncBlocks, AStopOfNoBoreAlongXIsARow)
{
    EXPECT_EQ(LinesOfStop(Stop(0, 1)), Texts{"G183G90G55P5T01101214X37Y50.5Z12I133"});
}

TEST_F(CncBlocks, ARowAlongYLeavesAnEmptyLineInFront)
{
    EXPECT_EQ(LinesOfStop(Stop(3, -1)), (Texts{"", "G184G90G55P5T01101214X37Y50.5Z12J210"}));
}

TEST_F(CncBlocks, MergedStopsAreLeftOut)
{
    HeadPosition merged = Stop(1, 0);
    merged.Tool = "";
    EXPECT_TRUE(LinesOfStop(merged).empty());
    EXPECT_FALSE(Writers.TopDrillingWritten);
}

TEST_F(CncBlocks, StopsPrintTheLastSpeedAndStandBeforeTheBores)
{
    Writers.LastSpeed = 4500;
    AddBore();
    VBores[1].Speed = 6000;
    EXPECT_EQ(LinesOfStop(Stop(1, 0)), (Texts{"G81G90G55P5T01101214S4500X37Y50.5Z12", //
                                              "G81G90G55P5R54=8S6000X100Y50Z12"}));
    EXPECT_EQ(Writers.LastSpeed, 6000);
}

TEST_F(CncBlocks, AGrooveAlongXEndsInX)
{
    EXPECT_EQ(LinesOfGroove(Groove(10, 20, 590, 22)), Texts{"G85G55P5T0160X10Y20Z8.5Q590"});
    EXPECT_TRUE(Writers.GrooveWritten);
    EXPECT_EQ(Writers.SideMask, 0x10);
}

TEST_F(CncBlocks, AGrooveAlongYEndsInY)
{
    GroovePass groove = Groove(20, 390, 20, 10);
    groove.Feed = 4000;
    groove.FeedDown = 900;
    groove.GrooveSide = -1;
    EXPECT_EQ(LinesOfGroove(groove), Texts{"G86F4000G55P5T0161G41X20Y390Z8.5Q10"});
}

TEST_F(CncBlocks, AGrooveOfEqualExtentsRunsAlongX)
{
    EXPECT_EQ(LinesOfGroove(Groove(0, 0, 100, -100)), Texts{"G85G55P5T0160X0Y0Z8.5Q100"});
}

TEST_F(CncBlocks, AGrooveRightOfItsLineIsG42)
{
    GroovePass groove = Groove(0, 0, 100, 0);
    groove.ToolNumber = 65;
    groove.GrooveSide = 1;
    EXPECT_EQ(LinesOfGroove(groove), Texts{"G85G55P5T0165G42X0Y0Z8.5Q100"});
}

TEST_F(CncBlocks, TheBlankBehindACodedGrooveDepthStays)
{
    GroovePass groove = Groove(0, 0, 100, 0);
    groove.Depth = 97;
    EXPECT_EQ(LinesOfGroove(groove), Texts{"G85G55P5T0160X0Y0Z=a Q100"});
}

TEST_F(CncBlocks, AGrooveToolInLetterFormIsReplacedByTheSaw)
{
    GroovePass groove = Groove(0, 0, 100, 0);
    groove.ToolNumber = 105; // "a5" has no value
    EXPECT_EQ(LinesOfGroove(groove), Texts{"G85G55P5T0160X0Y0Z8.5Q100"});
}

TEST_F(CncBlocks, TheSawItselfCanBeSubstituted)
{
    Config.ToolSubData = {{"1", "60", "205"}};
    EXPECT_EQ(LinesOfGroove(Groove(0, 0, 100, 0)), Texts{"G85G55P5T0105M66X0Y0Z8.5Q100"});
    EXPECT_TRUE(Writers.ToolSubstituted);
}

TEST_F(CncBlocks, AHorizontalBoreNamesItsSide)
{
    AddHBore(3);
    HBores[1].ExtraSlot = 4;
    HBores[1].Feed = 2000;
    HBores[1].Speed = 3500;
    EXPECT_EQ(LinesOf(WriteHorizontalBlock), Texts{"G81G90E4F2000G55P3R54=8S3500X50Y9Z30"});
    EXPECT_TRUE(HorizontalWritten);
    EXPECT_EQ(Writers.SideMask, 0x04);
}

TEST_F(CncBlocks, EachSideOfHorizontalBoresHasItsBit)
{
    for (const Long side : {1, 2, 4})
        AddHBore(side);
    HBores[1].Tool = "31";
    EXPECT_EQ(LinesOf(WriteHorizontalBlock).front(), "G81G90G55P1T0131X50Y9Z30");
    EXPECT_EQ(Writers.SideMask, 0x01 | 0x02 | 0x08);
}

TEST_F(CncBlocks, HorizontalToolsAboveTheDrillsStayDrillings)
{
    AddHBore(1);
    HBores[1].Tool = "70";
    EXPECT_EQ(LinesOf(WriteHorizontalBlock), Texts{"G81G90G55P1T0170X50Y9Z30"});
}

TEST_F(CncBlocks, GCodeTextsAmongTheRoutesStandAsTheyAre)
{
    Run.GCode2 = {"", "M30 X1", "M31"};
    Run.GCode3 = {"", "M40 "};
    EXPECT_EQ(LinesOf(WriteRouteBlock), (Texts{"M30 X1", "M31", "M40 "}));
    EXPECT_EQ(MeterValue(Meter::PgmCode), 75);
    EXPECT_FALSE(Writers.RouteWritten);
}

TEST_F(CncBlocks, AnAbortIsSeenAtTheNextRecord)
{
    for (int i = 0; i < 5; ++i)
        AddBore();
    Events.Pump = [] {
        static int pumped = 0;
        if (++pumped == 3)
            kv::Run.RunState = 1;
    };
    CncProgram program;
    EXPECT_FALSE(WriteVerticalBlock(program));
    EXPECT_EQ(program.Lines.size(), 2U);
}

TEST_F(CncBlocks, EveryBlockSeesTheAbort)
{
    AddBore();
    AddGroove();
    AddHBore(1);
    HeadPositions.Append(Stop(1, 0));
    Run.RunState = 1;
    CncProgram program;
    EXPECT_FALSE(WriteVerticalBlock(program));
    EXPECT_FALSE(WriteGrooveBlock(program));
    EXPECT_FALSE(WriteHorizontalBlock(program));
    EXPECT_TRUE(program.Lines.empty());
}

TEST_F(CncBlocks, ADepthThatIsNoNumberEndsTheRun)
{
    AddBore();
    VBores[1].Depth = std::numeric_limits<Single>::quiet_NaN();
    CncProgram program;
    EXPECT_THROW(WriteVerticalBlock(program), RunError);
}

} // namespace
} // namespace kv
