// Arcs through three points: start, middle, end.
#include "writers/cnc/route_records.h"
#include "writers/writer_memory.h"

namespace kv {
namespace {

constexpr const char* FitStart = "G88G90F2000G55P5T0171S18000G41R5X0Y0Z5";

class FitPoints : public RouteRecords {
  protected:
    static RouteSegment& AddFit(Single x, Single y) { return AddPoint(x, y, 2); }
    // The line of the arc from (0, 0) through a middle point to an end.
    static std::string ArcThrough(PlanePoint middle, PlanePoint end)
    {
        RouteSegments.Clear();
        AddStart(0, 0, -2);
        AddFit(ToSingle(middle.X), ToSingle(middle.Y));
        AddFit(ToSingle(end.X), ToSingle(end.Y));
        const Texts lines = LinesOfRoutes();
        EXPECT_EQ(lines.size(), 2U);
        return lines.back();
    }
};

TEST_F(FitPoints, ThreePointsMakeOneArcThatNamesTheMiddle)
{
    // Middle to start: 225 with X and Y exchanged; end to start 270.
    EXPECT_EQ(ArcThrough({10, 10}, {20, 0}), "G112G90G17F5000X20Y0I10J10");
    // 315 and 270.
    EXPECT_EQ(ArcThrough({10, -10}, {20, 0}), "G113G90G17F5000X20Y0I10J-10");
    EXPECT_TRUE(Writers.RouteWritten);
    EXPECT_EQ(Writers.SideMask, 0x10);
}

TEST_F(FitPoints, PointsOnALineAreAStraightMove)
{
    EXPECT_EQ(ArcThrough({10, 0}, {20, 0}), "G1G90F5000X20Y0Z5");
}

TEST_F(FitPoints, TheLimitOfAStraightMoveIsFiveThousandthsOfADegree)
{
    EXPECT_EQ(ArcThrough({10, 0.0008F}, {20, 0}).substr(0, 5), "G1G90");  // 0.0046
    EXPECT_EQ(ArcThrough({10, 0.001F}, {20, 0}).substr(0, 7), "G112G90"); // 0.0057
    EXPECT_EQ(ArcThrough({10, -0.0008F}, {20, 0}).substr(0, 5), "G1G90");
    EXPECT_EQ(ArcThrough({10, -0.001F}, {20, 0}).substr(0, 7), "G113G90");
}

TEST_F(FitPoints, TheTurnIsNotBroughtIntoOneTurn)
{
    // Straight down: 315 and 0, so 315 above nothing, although the arc turns clockwise.
    EXPECT_EQ(ArcThrough({10, -10}, {0, -20}), "G113G90G17F5000X0Y-20I10J-10");
}

TEST_F(FitPoints, TheEndIsTheStartOfTheNextArc)
{
    AddStart(0, 0, -2);
    AddFit(10, 10);
    AddFit(20, 0);
    AddFit(30, -10).Feed = 1;
    AddFit(40, 0).Feed = 2;
    EXPECT_EQ(LinesOfRoutes(), (Texts{FitStart, "G112G90G17F5000X20Y0I10J10", "G113G90G17F2X40Y0I30J-10"}));
}

TEST_F(FitPoints, APointThatWaitsIsDroppedByTheNextStart)
{
    AddStart(0, 0, -2);
    AddFit(10, 10);
    AddFit(20, 0);
    AddFit(30, 30);
    AddStart(0, 0, -2);
    AddFit(10, 10);
    AddFit(20, 0);
    EXPECT_EQ(LinesOfRoutes(), (Texts{FitStart, "G112G90G17F5000X20Y0I10J10", //
                                      FitStart, "G112G90G17F5000X20Y0I10J10"}));
}

TEST_F(FitPoints, APointThatWaitsAtTheEndTakesThePlaceOfTheLastLine)
{
    AddStart(0, 0, -2);
    AddFit(10, 10);
    AddFit(20, 0);
    RouteSegment& waiting = AddFit(30, 30);
    waiting.Z = 98;
    waiting.Feed = 77;
    Run.GCode3 = {"", "M40"};
    EXPECT_EQ(LinesOfRoutes(), (Texts{FitStart, "G1G90F77X30Y30Z=b", "M40"}));
}

TEST_F(FitPoints, APointWaitsBeyondRecordsOfOtherKinds)
{
    AddStart(0, 0, -2);
    AddFit(10, 10);
    AddPoint(500, 500);
    AddFit(20, 0);
    EXPECT_EQ(LinesOfRoutes(), (Texts{FitStart, "G1G90F5000X500Y500Z5", "G112G90G17F5000X20Y0I10J10"}));
}

TEST_F(FitPoints, NoPointWaitsIntoTheNextDrawing)
{
    AddStart(0, 0, -2);
    AddFit(10, 10);
    LinesOfRoutes();
    RouteSegments.Clear();
    AddStart(400, 500);
    AddPoint(500, 500);
    const Texts lines = LinesOfRoutes();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1], "G1G90F5000X500Y500Z5");
}

TEST_F(FitPoints, WithoutAStartTheyAreRefusedWhateverTheLastDrawingLeft)
{
    ArcThrough({10, 10}, {20, 0});
    RouteSegments.Clear();
    AddFit(30, 10);
    AddFit(40, 20);
    EXPECT_THROW(LinesOfRoutes(), RunError);
}

TEST_F(FitPoints, TheStartLiesOnTheFaceWhateverItsSide)
{
    Run.SideMinY[1] = 450;
    RouteSegment& start = AddStart(0, 0, -2);
    start.Side = 1;
    start.ExtraSlot = 2;
    start.FeedRapid = 900;
    start.ParamA = 4; // no parameters here
    EXPECT_EQ(LinesOfRoutes(), Texts{"G88G90E2F2000B900G55P5T0171S18000G41R5X0Y0Z5"});
    EXPECT_EQ(Writers.RouteSide, 5);
}

} // namespace
} // namespace kv
