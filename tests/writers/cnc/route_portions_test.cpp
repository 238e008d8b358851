// Routes in whole programs: the worked panel, portions, drillings between the routes.
#include "support/program_checker.h"
#include "writers/cnc/route_records.h"

namespace kv {
namespace {

const std::string Header = "G71X600Y400Z18T00";

class RoutePrograms : public RouteRecords {
  protected:
    // A route of some moves along Y = y.
    static void AddRoute(int moves, Single y, Int tool = 71)
    {
        AddStart(10, y).ToolNo = tool;
        for (int i = 1; i <= moves; ++i)
            AddPoint(static_cast<Single>(10 + i), y).ToolNo = tool;
    }
    static std::string StartAt(int y, const std::string& tool = "T0171")
    {
        return "G88G90F2000G55P5" + tool + "S18000G41R5X10Y" + std::to_string(y) + "Z5";
    }
    static std::string MoveTo(int x, int y)
    {
        return "G1G90F5000X" + std::to_string(x) + "Y" + std::to_string(y) + "Z5";
    }
    static std::string BoreAt(int x) { return "G81G90G55P5R54=8X" + std::to_string(x) + "Y50Z12"; }
    static void AddBores(int count)
    {
        for (int i = 1; i <= count; ++i)
            VBores.Append(Bore(static_cast<Single>(i), 50, 12, 8));
    }
    static Texts LinesIn(const std::string& file)
    {
        Texts lines;
        for (std::size_t at = 0; at < file.size(); at = file.find("\r\n", at) + 2)
            lines.push_back(file.substr(at, file.find("\r\n", at) - at));
        return lines;
    }
};

TEST_F(RoutePrograms, ABoreAndARouteByteForByte)
{
    AddBore();
    VBores[1].Feed = 3000;
    AddStart(10, 10);
    AddPoint(300, 10);
    WriteCncProgram();
    EXPECT_EQ(Get("PROG/SRG/D/OOR"),
              FileOf({"G71X600Y400Z18T00N6L3", "G150(DOOR)", "G81G90F3000G55P5R54=8X100Y50Z12",
                      "G88G90F2000G55P5T0171S18000G41R5X10Y10Z5", "G1G90F5000X300Y10Z5", "M2"}));
    EXPECT_EQ(Reported(),
              (Texts{"Processed in 2.5 Sec.", "CNC90/WINNER90", "CONVERSION COMPLETED.  6 Lines"}));
}

TEST_F(RoutePrograms, RoutesFirstGiveTheHeadTheirSpeed)
{
    Run.SequenceName = "RVGH";
    AddRoute(1, 10);
    HeadPosition stop;
    stop.Tool = "10";
    HeadPositions.Append(stop);
    WriteCncProgram();
    EXPECT_EQ(LinesIn(Get("PROG/SRG/D/OOR")), (Texts{Header + "N6L3", "G150(DOOR)", StartAt(10),
                                                     MoveTo(11, 10), "G81G90G55P5T0110S18000X0Y0Z0", "M2"}));
}

TEST_F(RoutePrograms, ADrawingOfRoutesAloneIsAProgram)
{
    AddRoute(1, 10);
    WriteCncProgram();
    EXPECT_TRUE(Stands("PROG/SRG/D/OOR"));
    EXPECT_FALSE(WasReported(" No Selected Operations found for PTP"));
}

TEST_F(RoutePrograms, PortionsAreCutBetweenRoutes)
{
    Config.LineLimit = "7";
    for (const int y : {10, 20, 30})
        AddRoute(2, static_cast<Single>(y)); // lines 2 to 10, M2 is 11
    WriteCncProgram();
    const std::string head = Header + "N12L9";
    // Up to line 7 the last start is 5, so 2 to 4; then 5 to 12 at most: all the rest.
    EXPECT_EQ(LinesIn(Get("PROG/SRG/D/OOR1")),
              (Texts{head, "G150(DOOR)", StartAt(10), MoveTo(11, 10), MoveTo(12, 10), "M2"}));
    EXPECT_EQ(LinesIn(Get("PROG/SRG/D/OOR2")),
              (Texts{head, "G150(DOOR)", StartAt(20), MoveTo(11, 20), MoveTo(12, 20), StartAt(30),
                     MoveTo(11, 30), MoveTo(12, 30), "M2"}));
    EXPECT_FALSE(Stands("PROG/SRG/D/OOR3"));
    for (const std::string portion : {"1", "2"})
        EXPECT_EQ(test::ProgramFaults(LinesIn(Get("PROG/SRG/D/OOR" + portion))), Texts());
}

TEST_F(RoutePrograms, ACutMayFallBetweenABoreAndARoute)
{
    Config.LineLimit = "5";
    AddBores(2);
    AddRoute(3, 10); // lines 2, 3, then 4 to 7, M2 is 8
    WriteCncProgram();
    EXPECT_EQ(LinesIn(Get("PROG/SRG/D/OOR1")),
              (Texts{Header + "N9L6", "G150(DOOR)", BoreAt(1), BoreAt(2), "M2"}));
    EXPECT_EQ(LinesIn(Get("PROG/SRG/D/OOR2")), (Texts{Header + "N9L6", "G150(DOOR)", StartAt(10),
                                                      MoveTo(11, 10), MoveTo(12, 10), MoveTo(13, 10), "M2"}));
}

TEST_F(RoutePrograms, ARouteLongerThanAPortionCannotBeCut)
{
    Config.LineLimit = "5";
    AddBores(1);
    AddRoute(7, 10); // lines 3 to 10
    AddRoute(1, 20);
    WriteCncProgram();
    EXPECT_TRUE(Stands("PROG/SRG/D/OOR1")); // the bore alone
    EXPECT_FALSE(Stands("PROG/SRG/D/OOR2"));
    EXPECT_TRUE(WasReported("Too many segements in single route for portion"));
    EXPECT_TRUE(WasReported("Import Aborted"));
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_EQ(Run.FailedFiles, (Texts{"", Run.SourceFile}));
}

TEST_F(RoutePrograms, ALastRouteOfExactlyTheLimitCannotBeCutEither)
{
    Config.LineLimit = "5";
    AddBores(2);
    AddRoute(4, 10); // lines 4 to 8, M2 is 9: as many behind line 4 as the limit
    WriteCncProgram();
    EXPECT_TRUE(Stands("PROG/SRG/D/OOR1"));
    EXPECT_FALSE(Stands("PROG/SRG/D/OOR2"));
    EXPECT_TRUE(WasReported("Too many segements in single route for portion"));
}

TEST_F(RoutePrograms, DrillingsGoBetweenTheToolsOfTheRoutes)
{
    Config.DRAlternate = "1";
    AddBores(4);
    AddRoute(1, 10, 71);
    AddRoute(1, 20, 71); // no change
    AddRoute(1, 30, 105);
    AddRoute(1, 40, 115);
    WriteCncProgram();
    const Texts lines = LinesIn(Get("PROG/SRG/D/OOR"));
    EXPECT_EQ(lines, (Texts{Header + "N15L12", "G150(DOOR)", StartAt(10), MoveTo(11, 10), StartAt(20),
                            MoveTo(11, 20), BoreAt(1), BoreAt(2), StartAt(30, "T01a5"), MoveTo(11, 30),
                            BoreAt(3), BoreAt(4), StartAt(40, "T01b5"), MoveTo(11, 40), "M2"}));
    EXPECT_EQ(test::ProgramFaults(lines), Texts());
    EXPECT_EQ(test::PathFaults(lines, test::CurrentRoutes()), Texts());
}

TEST_F(RoutePrograms, TenDrillingsAmongFourToolsLoseOneAndEndTwice)
{
    Config.DRAlternate = "1";
    AddBores(10);
    for (const int n : {1, 2, 3, 4})
        AddRoute(1, static_cast<Single>(10 * n), static_cast<Int>(70 + n));
    WriteCncProgram();
    const Texts lines = LinesIn(Get("PROG/SRG/D/OOR"));
    ASSERT_EQ(lines.size(), 21U);
    EXPECT_EQ(lines[0], Header + "N21L18"); // not counted again
    EXPECT_EQ(lines[18], MoveTo(11, 40));
    EXPECT_EQ(lines[19], "M2");
    EXPECT_EQ(lines[20], "M2");
    EXPECT_EQ(std::count(lines.begin(), lines.end(), BoreAt(10)), 0);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), BoreAt(9)), 1);
}

TEST_F(RoutePrograms, RoutesPickedByDiameterChangeNoTool)
{
    Config.DRAlternate = "1";
    AddBores(1);
    AddRoute(1, 10, 71);
    AddRoute(1, 20, 71);
    for (Long i = 3; i <= 4; ++i) {
        RouteSegments[i].ToolNo = 0;
        RouteSegments[i].Diameter = 8;
    }
    WriteCncProgram();
    // No "T" at all behind the second G88: its key is 0, and that differs from 171.
    const Texts lines = LinesIn(Get("PROG/SRG/D/OOR"));
    EXPECT_EQ(lines[4], BoreAt(1));
    EXPECT_EQ(lines[5], StartAt(20, "R54=8"));
}

TEST_F(RoutePrograms, ThirtyThousandRecordsAreWrittenInOneGo)
{
    Config.LineLimit = "99999";
    for (int i = 0; i < 3276; ++i)
        AddRoute(9, static_cast<Single>(i % 400));
    WriteCncProgram();
    EXPECT_TRUE(WasReported("CONVERSION COMPLETED.  32763 Lines"));
}

} // namespace
} // namespace kv
