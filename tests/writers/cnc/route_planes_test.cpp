// Routes of edge views in the plane of their edge.
#include "writers/cnc/route_records.h"
#include "writers/writer_memory.h"

namespace kv {
namespace {

constexpr const char* StartOf = "S18000G41R5";

class RoutePlanes : public RouteRecords {
  protected:
    void SetUp() override
    {
        RouteRecords::SetUp();
        SetViews();
    }
    void SetViews() // each 50 away from the panel of 600 by 400
    {
        Run.SideMinY[1] = 450;
        Run.SideMaxY[1] = 470;
        Run.SideMinY[2] = -70;
        Run.SideMaxY[2] = -50;
        Run.SideMinX[3] = -70;
        Run.SideMaxX[3] = -50;
        Run.SideMinX[4] = 650;
        Run.SideMaxX[4] = 670;
    }
    static RouteSegment& OnSide(RouteSegment& record, Int side)
    {
        record.Side = side;
        record.Z = 12;
        return record;
    }
    // A start, a line and an arc of a route on a side, all 12 deep.
    static void AddRoute(Int side, PlanePoint start, PlanePoint corner, PlanePoint centre, PlanePoint end,
                         Int dir)
    {
        OnSide(AddStart(ToSingle(start.X), ToSingle(start.Y)), side);
        OnSide(AddPoint(ToSingle(corner.X), ToSingle(corner.Y)), side);
        OnSide(AddArc(corner, centre, end, 0, 90, dir), side);
        OnSide(RouteSegments[RouteSegments.Last() - 1], side);
    }
    static std::string Start(const std::string& plane, const std::string& rest)
    {
        return "G88G90F2000G55" + plane + "T0171" + StartOf + rest;
    }
};

TEST_F(RoutePlanes, AboveTheFaceTheDepthIsCountedFromTheLowerLimit)
{
    AddRoute(1, {100, 460}, {300, 465}, {300, 475}, {310, 475}, 0);
    EXPECT_EQ(LinesOfRoutes(),
              (Texts{Start("P1", "X100Y12Z10"), "G1G90F5000X300Y12Z15", "G2G90G18F4000X310Z25I0K10"}));
    EXPECT_EQ(Writers.SideMask, 0x10); // as on the face
}

TEST_F(RoutePlanes, BelowTheFaceItIsCountedFromTheUpperLimitAndTheCentreTurns)
{
    AddRoute(2, {100, -60}, {300, -65}, {302, -75}, {310, -75}, -1);
    EXPECT_EQ(LinesOfRoutes(),
              (Texts{Start("P2", "X100Y12Z10"), "G1G90F5000X300Y12Z15", "G3G90G18F4000X310Z25I2K10"}));
}

TEST_F(RoutePlanes, LeftOfTheFaceItIsCountedFromTheRightLimit)
{
    AddRoute(3, {-60, 100}, {-65, 300}, {-80, 303}, {-75, 315}, 0);
    EXPECT_EQ(LinesOfRoutes(),
              (Texts{Start("P3", "X12Y100Z10"), "G1G90F5000X12Y300Z15", "G2G90G19F4000Y315Z25J3K15"}));
}

TEST_F(RoutePlanes, RightOfTheFaceItIsCountedFromTheLeftLimit)
{
    AddRoute(4, {660, 100}, {665, 300}, {680, 303}, {675, 315}, 1);
    EXPECT_EQ(LinesOfRoutes(),
              (Texts{Start("P4", "X12Y100Z10"), "G1G90F5000X12Y300Z15", "G3G90G19F4000Y315Z25J3K15"}));
}

TEST_F(RoutePlanes, AnArcOpensItsRouteAtItsStartInThePlane)
{
    OnSide(AddArc({300, 465}, {300, 475}, {310, 475}, 270, 0, 0), 1).Z = 13;
    OnSide(RouteSegments[1], 1).Dir = -8;
    EXPECT_EQ(LinesOfRoutes(), (Texts{"G88G90F2000G55P1T0171S18000G41R5X300Y12Z15", //
                                      "G2G90G18F4000X310Z25I0K10"}));
}

TEST_F(RoutePlanes, ABulgeKeepsTheRadiusOfTheDrawing)
{
    OnSide(AddStart(100, 460, -5), 1).Aux2 = 1;
    OnSide(AddPoint(200, 460, 5), 1);
    EXPECT_EQ(LinesOfRoutes().back(), "G38G90F5000X200Y12U50Z10");
}

TEST_F(RoutePlanes, ACodeIsTheNumberOfADepthThere)
{
    OnSide(AddStart(100, 460), 1).Z = 97;
    OnSide(AddPoint(100, 545), 1);
    EXPECT_EQ(LinesOfRoutes(), (Texts{Start("P1", "X100Y97Z10"), "G1G90F5000X100Y12Z95"}));
}

TEST_F(RoutePlanes, ACircleIsCutInThePlaneWithItsFeed)
{
    for (const auto& [side, centre] : std::map<Int, PlanePoint>{{1, {100, 475}}, {3, {-75, 100}}})
        AddCircle(ToSingle(centre.X), ToSingle(centre.Y), 5).Side = side;
    EXPECT_EQ(LinesOfRoutes(), (Texts{"G88G90F2000G55P1T0171S18000G41X100Y5Z20", "G2G90G18F5000X100I0K5",
                                      "G88G90F2000G55P3T0171S18000G41X5Y95Z25", "G2G90G19F5000Y95J5K0"}));
}

TEST_F(RoutePlanes, OnlyTheRecordThatOpensARouteSetsItsSide)
{
    OnSide(AddStart(100, 460), 1);
    OnSide(AddPoint(200, 460), 5);
    AddStart(10, 10);
    OnSide(AddPoint(200, 460), 1);
    AddArc({200, 460}, {250, 460}, {300, 460}, 180, 0, 0);
    const Texts lines = LinesOfRoutes();
    EXPECT_EQ(lines[1], "G1G90F5000X200Y12Z10");
    EXPECT_EQ(lines[2].substr(14, 2), "P5");
    EXPECT_EQ(lines[3], "G1G90F5000X200Y460Z12");
    EXPECT_EQ(lines[4], "G37G90F4000X250Y460A0.00Z5");
}

TEST_F(RoutePlanes, ARecordOfNoSideLiesOnTheFace)
{
    AddStart(10, 10).Side = 0;
    AddArc({10, 10}, {60, 10}, {110, 10}, 180, 0, 0);
    EXPECT_EQ(LinesOfRoutes(), (Texts{Start("P5", "X10Y10Z5"), "G37G90F4000X60Y10A0.00Z5"}));
}

TEST_F(RoutePlanes, APanelFromASolidLeavesTheWordsAndTheDrawingsValues)
{
    Run.PanelFound = 1;
    OnSide(AddStart(100, 460), 1).Z = 97;
    OnSide(AddPoint(300, 460), 1);
    EXPECT_EQ(LinesOfRoutes(), (Texts{Start("P5", "X100Y460Z=a"), "G1G90F5000X300Y460Z12"}));
}

TEST_F(RoutePlanes, BehindADrawingWithViewsASolidsRoutesKeepTheLastPlane)
{
    AddRoute(3, {-60, 100}, {-65, 300}, {-80, 303}, {-75, 315}, 0);
    LinesOfRoutes();
    NewDrawing("SOLID");
    Run.PanelFound = 1;
    RouteSegments.Clear();
    AddStart(10, 20);
    AddPoint(30, 20);
    EXPECT_EQ(LinesOfRoutes(), (Texts{Start("P3", "X10Y20Z5"), "G1G90F5000X30Y20Z5"}));
    RouteSegments.Clear();
    AddRoute(1, {1, 2}, {3, 4}, {5, 6}, {7, 8}, 0);
    EXPECT_EQ(LinesOfRoutes().back(), "G2G90G19F4000Y315Z25J3K15");
    NewDrawing("VIEWS");
    RouteSegments.Clear();
    AddStart(10, 20);
    EXPECT_EQ(LinesOfRoutes(), Texts{Start("P5", "X10Y20Z5")});
    EXPECT_EQ(Writers.Plane.Code, "G17");
    EXPECT_EQ(Writers.Plane.Y + Writers.Plane.Z + Writers.Plane.J + Writers.Plane.K, "");
}

} // namespace
} // namespace kv
