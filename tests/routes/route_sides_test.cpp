// The view of each route and circle, and the coordinates that each control system wants there.
#include "routes/route_sides.h"

#include <gtest/gtest.h>

#include <vector>

#include "routes/route_runs.h"
#include "state/run.h"
#include "support/scene.h"

namespace kv {
namespace {

using namespace test;

constexpr Int Cnc = 0, Genesis = 1, Evolution = 2;

struct Placed {
    Int Side;
    Single X, Y, Aux1, Aux2;
    friend bool operator==(const Placed&, const Placed&) = default;
    friend void PrintTo(const Placed& record, std::ostream* out)
    {
        *out << "{side " << record.Side << ": " << record.X << ", " << record.Y << " aux " << record.Aux1
             << ", " << record.Aux2 << "}";
    }
};
using PlacedRecords = std::vector<Placed>;

// The face is (100, 80) to (700, 480), 20 thick; views of the edges around it, 32 away, so the
// margins are a quarter of 52: 13.
//   side 1: (100, 512) to (700, 532)     side 2: (100, 28) to (700, 48)
//   side 3: (48, 80) to (68, 480)        side 4: (732, 80) to (752, 480)
struct RouteSides : testing::Test {
    RunBlock& Run = kv::Run;

    void SetUp() override
    {
        ResetProcess();
        ResetRun();
        Run.OriginX = 100;
        Run.OriginY = 80;
        Run.PartThickness = 20;
        Run.SideMarginX = 13;
        Run.SideMarginY = 13;
        Extents(1, 100, 512, 700, 532);
        Extents(2, 100, 28, 700, 48);
        Extents(3, 48, 80, 68, 480);
        Extents(4, 732, 80, 752, 480);
        Extents(5, 100, 80, 700, 480);
    }
    void TearDown() override { ResetProcess(); }

    void Extents(std::size_t side, Single minX, Single minY, Single maxX, Single maxY)
    {
        Run.SideMinX[side] = minX;
        Run.SideMinY[side] = minY;
        Run.SideMaxX[side] = maxX;
        Run.SideMaxY[side] = maxY;
        Run.SideWidth[side] = maxX - minX;
        Run.SideHeight[side] = maxY - minY;
        Run.SidePresent[side] = True;
    }

    void Add(Int kind, Single x, Single y, Single aux1 = 0, Single aux2 = 0, Int dir = 0)
    {
        RouteSegment record;
        record.Kind = kind;
        record.X = x;
        record.Y = y;
        record.Aux1 = aux1;
        record.Aux2 = aux2;
        record.Dir = dir;
        RouteSegments.Append(record);
    }

    // A route of points; the first opens it.
    void AddRoute(const std::vector<PlanePoint>& points)
    {
        Int kind = -5;
        for (const PlanePoint& p : points) {
            Add(kind, ToSingle(p.X), ToSingle(p.Y), 0, 0, kind < 0 ? RouteStart : Int{0});
            kind = 5;
        }
    }

    // One route in a view: a polyline start with a bulge, a further bulge, an arc, a line.
    void AddRouteOfAllKinds(Single x, Single y)
    {
        Add(-5, x, y, -1, .5F, RouteStart);
        Add(5, x, y, -1, .25F);
        Add(-3, x, y, x + 1, y + 2);
        Add(3, x, y, 90, 30, 0);
        Add(3, x, y, 90, 30, True);
        Add(-1, x, y, 45, 0);
        Add(1, x, y);
    }

    PlacedRecords AssignedFor(Int controlType)
    {
        Run.ControlType = controlType;
        AssignRouteSides();
        PlacedRecords records;
        for (Long i = 1; i <= RouteSegments.Last(); ++i) {
            const RouteSegment& record = RouteSegments[i];
            records.push_back({record.Side, record.X, record.Y, record.Aux1, record.Aux2});
        }
        return records;
    }

    std::vector<Int> Directions() const
    {
        std::vector<Int> directions;
        for (Long i = 1; i <= RouteSegments.Last(); ++i)
            directions.push_back(RouteSegments[i].Dir);
        return directions;
    }
};

const std::vector<Int> DirectionsAsDrawn{RouteStart, 0, 0, 0, True, 0, 0};
const std::vector<Int> DirectionsMirrored{RouteStart, 0, 0, True, 0, 0, 0};

// What AddRouteOfAllKinds gives at one place: (x, y), the arc's centre, the first bulge.
PlacedRecords AllKinds(Int side, Single x, Single y, Single centreX, Single centreY, Single firstBulge)
{
    return {{side, x, y, -1, firstBulge},
            {side, x, y, -1, .25F},
            {side, x, y, centreX, centreY},
            {side, x, y, 90, 30},
            {side, x, y, 90, 30},
            {side, x, y, 45, 0},
            {side, x, y, 0, 0}};
}

// Transforms: the face

TEST_F(RouteSides, FaceTakesOffTheOriginUnderEachControl)
{
    for (const Int control : {Cnc, Genesis, Evolution}) {
        RouteSegments.Clear();
        AddRouteOfAllKinds(300, 200);
        EXPECT_EQ(AssignedFor(control), AllKinds(5, 200, 120, 201, 122, .5F)) << control;
        EXPECT_EQ(Directions(), DirectionsAsDrawn);
    }
}

// Evolution

TEST_F(RouteSides, EvolutionMirrorsTheViewAbove)
{
    // y: 532 - 520 = 12; the centre, 2 higher, 10.
    AddRouteOfAllKinds(300, 520);
    EXPECT_EQ(AssignedFor(Evolution), AllKinds(1, 200, 12, 201, 10, .5F));
    EXPECT_EQ(Directions(), DirectionsMirrored);
}

TEST_F(RouteSides, EvolutionMeasuresTheViewBelowFromItsLowerEdge)
{
    AddRouteOfAllKinds(300, 40); // 40 - 28
    EXPECT_EQ(AssignedFor(Evolution), AllKinds(2, 200, 12, 201, 14, .5F));
    EXPECT_EQ(Directions(), DirectionsAsDrawn);
}

TEST_F(RouteSides, EvolutionSwapsTheAxesOfTheLeftView)
{
    AddRouteOfAllKinds(55, 200);
    EXPECT_EQ(AssignedFor(Evolution), AllKinds(3, 120, 7, 122, 8, .5F));
    EXPECT_EQ(Directions(), DirectionsMirrored);
}

TEST_F(RouteSides, EvolutionMeasuresTheRightViewFromItsFarEnd)
{
    AddRouteOfAllKinds(740, 200);
    EXPECT_EQ(AssignedFor(Evolution), AllKinds(4, 120, 12, 122, 11, .5F));
    EXPECT_EQ(Directions(), DirectionsAsDrawn);
}

// CNC90, WINNER90 and GENESIS

TEST_F(RouteSides, OtherControlsTakeOffTheOriginAlongTheEdgeAlone)
{
    for (const Int control : {Cnc, Genesis}) {
        RouteSegments.Clear();
        AddRouteOfAllKinds(300, 520);
        EXPECT_EQ(AssignedFor(control), AllKinds(1, 200, 520, 201, 522, .5F));
        RouteSegments.Clear();
        AddRouteOfAllKinds(300, 40);
        EXPECT_EQ(AssignedFor(control), AllKinds(2, 200, 40, 201, 42, .5F));
        RouteSegments.Clear();
        AddRouteOfAllKinds(55, 200);
        EXPECT_EQ(AssignedFor(control), AllKinds(3, 55, 120, 56, 122, .5F));
        RouteSegments.Clear();
        AddRouteOfAllKinds(740, 200);
        EXPECT_EQ(AssignedFor(control), AllKinds(4, 740, 120, 741, 122, .5F));
        EXPECT_EQ(Directions(), DirectionsAsDrawn);
    }
}

// Which view

TEST_F(RouteSides, ViewWithMostPointsTakesTheWholeRoute)
{
    AddRoute({{300, 520}, {300, 521}, {300, 400}});
    EXPECT_EQ(AssignedFor(Cnc),
              (PlacedRecords{{1, 200, 520, 0, 0}, {1, 200, 521, 0, 0}, {1, 200, 400, 0, 0}}));
}

TEST_F(RouteSides, LowerSideWinsWhereTwoHoldTheSameNumberOfPoints)
{
    AddRoute({{300, 300}, {300, 520}});
    AddRoute({{740, 200}, {55, 200}, {300, 300}});
    AddRoute({{740, 200}, {740, 201}, {55, 200}});
    const PlacedRecords records = AssignedFor(Cnc);
    EXPECT_EQ(records[0].Side, 1);
    EXPECT_EQ(records[1].Side, 1);
    EXPECT_EQ(records[2].Side, 3);
    EXPECT_EQ(records[5].Side, 4);
}

TEST_F(RouteSides, EachRouteHasItsOwnView)
{
    AddRoute({{300, 300}, {310, 300}});
    AddRoute({{300, 520}, {310, 520}});
    AddRoute({{300, 300}, {310, 300}});
    EXPECT_EQ(AssignedFor(Cnc), (PlacedRecords{{5, 200, 220, 0, 0},
                                               {5, 210, 220, 0, 0},
                                               {1, 200, 520, 0, 0},
                                               {1, 210, 520, 0, 0},
                                               {5, 200, 220, 0, 0},
                                               {5, 210, 220, 0, 0}}));
}

TEST_F(RouteSides, PathsOfOneRouteShareItsView)
{
    Add(-1, 300, 520, 0, 0, RouteStart);
    Add(1, 400, 520);
    Add(-1, 400, 520);
    Add(1, 400, 300);
    const PlacedRecords records = AssignedFor(Cnc);
    for (const Placed& record : records)
        EXPECT_EQ(record.Side, 1);
}

TEST_F(RouteSides, MarginWidensEachViewAndItsLimitIsOutside)
{
    // Side 1 reaches from (87, 499) to (713, 545).
    const std::vector<PlanePoint> inside{{87.01, 520}, {712.99, 520}, {300, 499.01}, {300, 544.99}};
    const std::vector<PlanePoint> outside{{87, 520}, {713, 520}, {300, 499}, {300, 545}};
    for (const PlanePoint& p : inside)
        AddRoute({p});
    for (const PlanePoint& p : outside)
        AddRoute({p});
    const PlacedRecords records = AssignedFor(Cnc);
    ASSERT_EQ(records.size(), 8U);
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(records[i].Side, i < 4 ? 1 : 5) << i;
}

TEST_F(RouteSides, PointWhereTwoViewsOverlapBelongsToTheLowerSide)
{
    Extents(3, 48, 80, 120, 540);
    AddRoute({{110, 520}});
    EXPECT_EQ(AssignedFor(Cnc)[0].Side, 1);
}

TEST_F(RouteSides, ViewsThatADrawingDoesNotShowHoldNoPoint)
{
    ResetRun();
    Extents(5, 0, 0, 600, 400);
    AddRoute({{0, 0}, {-50, 900}});
    EXPECT_EQ(AssignedFor(Cnc), (PlacedRecords{{5, 0, 0, 0, 0}, {5, -50, 900, 0, 0}}));
}

TEST_F(RouteSides, NoRoutesAreFine)
{
    EXPECT_TRUE(AssignedFor(Evolution).empty());
}

// Circles

TEST_F(RouteSides, CirclesTakeTheViewOfTheirCentreAndOnlyTheFaceTakesOffTheOrigin)
{
    for (const PlanePoint& p : std::vector<PlanePoint>{{300, 200}, {300, 520}, {740, 200}}) {
        RouteCircle circle;
        circle.X = ToSingle(p.X);
        circle.Y = ToSingle(p.Y);
        RouteCircles.Append(circle);
    }
    Run.ControlType = Evolution;
    AssignRouteSides();
    EXPECT_EQ(RouteCircles[1].Side, 5);
    EXPECT_EQ(RouteCircles[1].X, 200);
    EXPECT_EQ(RouteCircles[1].Y, 120);
    EXPECT_EQ(RouteCircles[2].Side, 1);
    EXPECT_EQ(RouteCircles[2].X, 300);
    EXPECT_EQ(RouteCircles[2].Y, 520);
    EXPECT_EQ(RouteCircles[3].Side, 4);
    EXPECT_EQ(RouteCircles[3].X, 740);
    EXPECT_EQ(RouteCircles[0].Side, 0) << "the blank element stays blank";
    EXPECT_EQ(RouteSegments[0].Side, 0);
}

TEST_F(RouteSides, ValuesAreRoundedOnce)
{
    // As Singles: 732.09997559 + 20.29999924 - 740.70001221 = 11.69996262. Rounded step by step it would
    // be 11.69995117.
    Extents(4, 732.1F, 80, 752.4F, 480);
    Run.SideWidth[4] = 20.3F;
    AddRoute({{740.7, 200}});
    EXPECT_EQ(AssignedFor(Evolution)[0].Y, 11.69996262F);
}

} // namespace
} // namespace kv
