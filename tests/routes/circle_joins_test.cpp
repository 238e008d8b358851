// Circles that touch a path become a detour of it; circles that touch nothing become closed arcs.
#include "routes/route_chain_scene.h"

namespace kv {
namespace {

using chain_test::Arc;
using chain_test::ChainLengthsNow;
using chain_test::Circle;
using chain_test::Circles;
using chain_test::Drawing;
using chain_test::KindsNow;
using chain_test::LayRoutes;
using chain_test::Line;
using chain_test::OnPass;
using chain_test::PlacesNow;
using chain_test::Point;
using chain_test::Points;
using chain_test::Polyline;
using chain_test::Segments;
using chain_test::SegmentsNow;

using Lengths = std::vector<std::size_t>;

class CircleJoins : public chain_test::RouteChainTest {
  protected:
    // Dir of the arc that one path and one circle leave as records 3 and 4.
    static Int HandOf(const Segments& path, const RouteCircle& circle)
    {
        Chain(path, {circle});
        EXPECT_EQ(KindsNow().size(), 4U);
        EXPECT_EQ(ChainLengthsNow(), (Lengths{4}));
        return RouteSegments[4].Dir;
    }

    static bool Joins(const Segments& path, const RouteCircle& circle)
    {
        Chain(path, {circle});
        return ChainLengthsNow().size() == 1;
    }
};

// The line meets the rim at (100, 100), the leftmost place of the circle.
const Segments ToTheCircle = Line({0, 100}, {100, 100});
const RouteCircle Disc = Circle({150, 100}, 50);

// ---- One path, one circle

TEST_F(CircleJoins, LineThatEndsOnTheRimGoesAround)
{
    Chain(ToTheCircle, {Disc});
    EXPECT_EQ(PlacesNow(), (Points{{0, 100}, {100, 100}, {100, 100}, {100, 100}}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -3, 3}));
    EXPECT_EQ(ChainLengthsNow(), (Lengths{4}));
    EXPECT_EQ(RouteSegments[3].Aux1, 150);
    EXPECT_EQ(RouteSegments[3].Aux2, 100);
    EXPECT_EQ(RouteSegments[4].Aux1, 180);
    EXPECT_EQ(RouteSegments[4].Aux2, 180);
    EXPECT_EQ(RouteCircles[1].Used, True);
    EXPECT_EQ(RouteCircles[1].Pass, 0);
    EXPECT_EQ(RouteSegments[3].Pass, 1);
    EXPECT_EQ(RouteSegments[4].Pass, 1);
}

TEST_F(CircleJoins, LineThatStartsOnTheRimIsTurnedAndGoesAround)
{
    Chain(Line({100, 100}, {0, 100}), {Disc});
    EXPECT_EQ(PlacesNow(), (Points{{0, 100}, {100, 100}, {100, 100}, {100, 100}}));
    EXPECT_EQ(RouteSegments[1].Aux1, 0);
    EXPECT_EQ(RouteSegments[1].Dir, -8);
    EXPECT_EQ(RouteSegments[4].Aux2, 180);
}

TEST_F(CircleJoins, ArcTakesTheCirclesValues)
{
    RouteCircle circle = Disc;
    circle.Group = 3;
    circle.Feed = 21;
    circle.FeedDown = 22;
    circle.FeedRapid = 23;
    circle.LeadIn = 24;
    circle.RampOut = 25;
    circle.RampIn = 26;
    circle.Sequence = 0;
    circle.MCode = 28;
    circle.ExtraSlot = 29;
    circle.OscZ = 2;
    circle.Tool = "0708";
    circle.ToolNo = 5;
    circle.Comp = "G41";
    Segments line = ToTheCircle;
    line[0].ToolNo = 9;
    line[0].Comp = "G42";
    Chain(line, {circle});
    for (Long i = 3; i <= 4; ++i) {
        const RouteSegment& record = RouteSegments[i];
        EXPECT_EQ(record.Z, 7);
        EXPECT_EQ(record.Group, 3);
        EXPECT_EQ(record.Feed, 21);
        EXPECT_EQ(record.FeedDown, 22);
        EXPECT_EQ(record.FeedRapid, 23);
        EXPECT_EQ(record.LeadIn, 24);
        EXPECT_EQ(record.RampOut, 25);
        EXPECT_EQ(record.RampIn, 26);
        EXPECT_EQ(record.MCode, 28);
        EXPECT_EQ(record.ExtraSlot, 29);
        EXPECT_EQ(record.OscZ, 2);
        EXPECT_TRUE(record.Tool == "0708");
        EXPECT_EQ(record.ToolNo, 9); // of the chain's first record
        EXPECT_TRUE(record.Comp == "G42");
    }
}

TEST_F(CircleJoins, CutGoesOnAsItArrives)
{
    const Segments up = Line({100, 0}, {100, 100});
    EXPECT_EQ(HandOf(up, Circle({50, 100}, 50)), True);   // centre on the left: counter-clockwise
    EXPECT_EQ(HandOf(up, Circle({150, 100}, 50)), False); // on the right: clockwise
}

TEST_F(CircleJoins, CutGoesOnAsItArrivesFromALineDrawnTheOtherWay)
{
    const Segments down = Line({100, 100}, {100, 0});
    EXPECT_EQ(HandOf(down, Circle({50, 100}, 50)), True);
    EXPECT_EQ(HandOf(down, Circle({150, 100}, 50)), False);
}

TEST_F(CircleJoins, CutThatArrivesSquareToTheRimGoesClockwise)
{
    EXPECT_EQ(HandOf(ToTheCircle, Disc), False);
    EXPECT_EQ(HandOf(Line({100, 100}, {0, 100}), Disc), False);
}

TEST_F(CircleJoins, ArcThatEndsOnTheRimArrivesInItsStartDirection)
{
    // From (100, 0) to (0, 100) around (0, 0): directions 270 and 0. The entry lies at 270 of the
    // circle, where 270 is neither way around and 0 would be counter-clockwise.
    const Segments arc = Arc({0, 0}, {100, 0}, {0, 100}, 0, 90);
    EXPECT_EQ(HandOf(arc, Circle({0, 150}, 50)), False);
    // At 180 of the circle 270 is counter-clockwise; 0 would be neither.
    EXPECT_EQ(HandOf(arc, Circle({50, 100}, 50)), True);
}

TEST_F(CircleJoins, ArcThatStartsOnTheRimArrivesAgainstItsEndDirection)
{
    // Directions 270 and 0, so it arrives along 180; the entry lies at 90 of the circle, where that is
    // counter-clockwise.
    EXPECT_EQ(HandOf(Arc({0, 0}, {100, 0}, {0, 100}, 0, 90), Circle({100, -50}, 50)), True);
}

TEST_F(CircleJoins, RimIsATwentiethWide)
{
    EXPECT_TRUE(Joins(ToTheCircle, Circle({150, 100}, 50.046875F)));
    EXPECT_FALSE(Joins(ToTheCircle, Circle({150, 100}, 50.0625F)));
    EXPECT_TRUE(Joins(ToTheCircle, Circle({150, 100}, 49.953125F)));
    EXPECT_FALSE(Joins(ToTheCircle, Circle({150, 100}, 49.9375F)));
}

TEST_F(CircleJoins, EntryIsThePathsEndEvenWhereTheRimIsALittleOff)
{
    Chain(ToTheCircle, {Circle({150, 100}, 50.03125F)});
    EXPECT_EQ(PlacesNow()[2], (Point{100, 100}));
    EXPECT_EQ(PlacesNow()[3], (Point{100, 100}));
}

TEST_F(CircleJoins, CircleAroundAnEndIsNotMet)
{
    EXPECT_FALSE(Joins(ToTheCircle, Circle({100, 100}, 50)));
}

TEST_F(CircleJoins, CircleOfAnotherPassIsNotMet)
{
    EXPECT_FALSE(Joins(OnPass(2, ToTheCircle), Disc));
}

TEST_F(CircleJoins, PolylineMeetsNoCircle)
{
    EXPECT_FALSE(Joins(Polyline({{0, 100}, {100, 100}}), Disc));
}

TEST_F(CircleJoins, PathWhoseLastRecordIsAPolylinesMeetsNoCircle)
{
    // What is left of a tapered polyline stands behind the line as a part of it.
    Chain(Drawing(Line({0, 0}, {50, 0}), Polyline({{300, 0}, {310, 0}, {100, 100}}, -4)), {Disc});
    EXPECT_EQ(KindsNow(), (std::vector<int>{-4, 4, -3, 3, -1, 1, 5}));
}

TEST_F(CircleJoins, StartMarkMeetsACircle)
{
    Chain(Polyline({{0, 100}, {100, 100}}, -4), {Disc});
    EXPECT_EQ(KindsNow(), (std::vector<int>{-4, 4, -3, 3}));
    EXPECT_EQ(ChainLengthsNow(), (Lengths{4}));
}

TEST_F(CircleJoins, UsedCircleIsNotMet)
{
    RouteCircle used = Disc;
    used.Used = True;
    Chain(ToTheCircle, {used});
    EXPECT_EQ(PlacesNow().size(), 2U);
}

TEST_F(CircleJoins, PocketIsNotMetAndStays)
{
    RouteCircle pocket = Disc;
    pocket.OscZ = -5;
    Chain(ToTheCircle, {pocket});
    EXPECT_EQ(PlacesNow(), (Points{{0, 100}, {100, 100}}));
    EXPECT_EQ(RouteCircles[1].Used, False);
    EXPECT_EQ(RouteCircles[1].Pass, 1);
}

// ---- Which circle, which end

TEST_F(CircleJoins, OneCircleIsJoinedInATurnAndThenThePathsAreAsked)
{
    // Circles on both ends: the one that comes first in the list; with no path behind it, the other
    // stays free.
    const RouteCircle left = Circle({-50, 100}, 50);
    Chain(ToTheCircle, {Disc, left});
    EXPECT_EQ(ChainLengthsNow(), (Lengths{4, 2}));
    EXPECT_EQ(PlacesNow()[3], (Point{100, 100}));
    Chain(ToTheCircle, {left, Disc});
    EXPECT_EQ(PlacesNow()[0], (Point{150, 150})); // the free one is nearer to the far corner
    EXPECT_EQ(PlacesNow()[5], (Point{0, 100}));
    EXPECT_EQ(ChainLengthsNow(), (Lengths{2, 4}));
}

TEST_F(CircleJoins, StartIsAskedBeforeTheEnd)
{
    // Both ends lie on the rim.
    Chain(Line({100, 100}, {200, 100}), {Disc});
    EXPECT_EQ(PlacesNow(), (Points{{200, 100}, {100, 100}, {100, 100}, {100, 100}}));
}

TEST_F(CircleJoins, OnlyTheHeadMeetsACircleAtItsStart)
{
    // The second line's start lies on the rim, the head's end .078 from it does not.
    const Segments head = Line({0, 100}, {99.921875F, 100}), next = Line({100, 100}, {100, 20});
    Chain(Drawing(head, next), {Disc});
    EXPECT_EQ(PlacesNow(),
              (Points{{150, 150}, {150, 150}, {0, 100}, {99.921875F, 100}, {100, 100}, {100, 20}}));
    Chain(next, {Disc});
    EXPECT_EQ(ChainLengthsNow(), (Lengths{4}));
}

TEST_F(CircleJoins, SecondPathOfAChainMeetsACircleAtItsEnd)
{
    Chain(Drawing(Line({0, 0}, {0, 100}), ToTheCircle), {Disc});
    EXPECT_EQ(ChainLengthsNow(), (Lengths{6}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -1, 1, -3, 3}));
}

TEST_F(CircleJoins, SecondCircleThroughTheSameEntryIsNotMetWithoutAPathBetween)
{
    Chain(ToTheCircle, {Disc, Circle({100, 150}, 50)});
    EXPECT_EQ(ChainLengthsNow().size(), 2U);
}

// ---- On to another path

TEST_F(CircleJoins, TwoLinesAndACircle)
{
    Chain(Drawing(ToTheCircle, Line({150, 150}, {150, 250})), {Disc});
    EXPECT_EQ(
        PlacesNow(),
        (Points{
            {0, 100}, {100, 100}, {100, 100}, {100, 100}, {150, 150}, {150, 150}, {150, 150}, {150, 250}}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -3, 3, -3, 3, -1, 1}));
    EXPECT_EQ(ChainLengthsNow(), (Lengths{8}));
    EXPECT_EQ(RouteSegments[5].Aux1, 150); // the second arc: same centre
    EXPECT_EQ(RouteSegments[5].Aux2, 100);
    EXPECT_EQ(RouteSegments[6].Aux1, 180); // from where the first one began
    EXPECT_EQ(RouteSegments[6].Aux2, 90);
    EXPECT_EQ(RouteSegments[6].Dir, RouteSegments[4].Dir);
    EXPECT_EQ(RouteSegments[5].Pass, 1);
    EXPECT_EQ(RouteSegments[6].Pass, 1);
}

TEST_F(CircleJoins, SecondArcKeepsTheHandOfTheFirst)
{
    // Up along the right side of the circle: counter-clockwise.
    Chain(Drawing(Line({200, 0}, {200, 100}), Line({150, 150}, {0, 150})), {Disc});
    ASSERT_EQ(ChainLengthsNow(), (Lengths{8}));
    EXPECT_EQ(RouteSegments[4].Dir, True);
    EXPECT_EQ(RouteSegments[6].Dir, True);
    EXPECT_EQ(RouteSegments[6].Aux1, 0);
    EXPECT_EQ(RouteSegments[6].Aux2, 90);
}

TEST_F(CircleJoins, LineThatEndsOnTheJoinedCircleIsTurned)
{
    Chain(Drawing(ToTheCircle, Line({150, 250}, {150, 150})), {Disc});
    ASSERT_EQ(ChainLengthsNow(), (Lengths{8}));
    EXPECT_EQ(PlacesNow()[6], (Point{150, 150}));
    EXPECT_EQ(PlacesNow()[7], (Point{150, 250}));
    EXPECT_EQ(RouteSegments[7].Aux1, 90);
}

TEST_F(CircleJoins, OtherPathMustLieOnTheRimWithinAThousandth)
{
    Chain(Drawing(ToTheCircle, Line({150, 150.0005F}, {150, 250})), {Disc});
    EXPECT_EQ(ChainLengthsNow(), (Lengths{8}));
    Chain(Drawing(ToTheCircle, Line({150, 150.002F}, {150, 250})), {Disc});
    EXPECT_EQ(ChainLengthsNow().size(), 2U);
}

TEST_F(CircleJoins, PathAtTheEntryNeedsNoSecondArc)
{
    Chain(Drawing(ToTheCircle, Line({100, 100}, {0, 200})), {Disc});
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -3, 3, -1, 1}));
    EXPECT_EQ(ChainLengthsNow(), (Lengths{6}));
}

TEST_F(CircleJoins, EntryThatDiffersByAHairGetsASecondArc)
{
    Chain(Drawing(ToTheCircle, Line({100, 100.0078125F}, {0, 200})), {Disc});
    EXPECT_EQ(ChainLengthsNow(), (Lengths{8}));
    EXPECT_EQ(PlacesNow()[4], (Point{100, 100.0078125F}));
}

TEST_F(CircleJoins, FirstOtherPathInTheListEndsTheSearch)
{
    Chain(Drawing(ToTheCircle, Line({150, 50}, {150, 0}), Line({150, 150}, {150, 250})), {Disc});
    EXPECT_EQ(ChainLengthsNow(), (Lengths{2, 8}));
    EXPECT_EQ(PlacesNow()[9], (Point{150, 0}));
}

TEST_F(CircleJoins, OtherPathIsNoPolyline)
{
    Chain(Drawing(ToTheCircle, Polyline({{150, 150}, {150, 250}})), {Disc});
    EXPECT_EQ(ChainLengthsNow().size(), 2U);
    EXPECT_EQ(PlacesNow().size(), 6U);
}

TEST_F(CircleJoins, OtherPathIsOfTheCirclesPass)
{
    Chain(Drawing(ToTheCircle, OnPass(2, Line({150, 150}, {150, 250}))), {Disc});
    EXPECT_EQ(ChainLengthsNow().size(), 2U);
    EXPECT_EQ(PlacesNow().size(), 6U);
}

TEST_F(CircleJoins, PathBehindTheCircleMeetsTheNextCircle)
{
    Chain(Drawing(ToTheCircle, Line({150, 150}, {150, 250})), {Disc, Circle({150, 300}, 50)});
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -3, 3, -3, 3, -1, 1, -3, 3}));
    EXPECT_EQ(ChainLengthsNow(), (Lengths{10}));
}

TEST_F(CircleJoins, JoinedArcGoesOnAlongItsTangent)
{
    // Clockwise at 180 of the circle is up: the second line goes straight on, the first one bends off.
    Chain(Drawing(ToTheCircle, Line({100, 100}, {0, 200}), Line({100, 100}, {100, 300})), {Disc});
    EXPECT_EQ(ChainLengthsNow(), (Lengths{2, 6}));
    EXPECT_EQ(PlacesNow()[7], (Point{100, 300}));
}

TEST_F(CircleJoins, JoinedArcGoesOnAlongItsTangentCounterClockwise)
{
    // Up along the right side, counter-clockwise: at the entry, 0 of the circle, straight on is up.
    Chain(Drawing(Line({200, 0}, {200, 100}), Line({200, 100}, {200, 30}), Line({200, 100}, {290, 300})),
          {Disc});
    EXPECT_EQ(RouteSegments[RouteSegments.Last()].X, 290);
    EXPECT_EQ(ChainLengthsNow(), (Lengths{2, 6}));
}

// ---- Free circles

TEST_F(CircleJoins, FreeCircleBecomesAChainOfItsOwnFromItsTop)
{
    Chain(Line({0, 0}, {10, 0}), {Circle({700, 300}, 50)});
    EXPECT_EQ(ChainLengthsNow(), (Lengths{2, 2}));
    EXPECT_EQ(PlacesNow()[0], (Point{700, 350}));
    EXPECT_EQ(PlacesNow()[1], (Point{700, 350}));
    EXPECT_EQ(RouteSegments[1].Kind, -3);
    EXPECT_EQ(RouteSegments[1].Dir, -8);
    EXPECT_EQ(RouteSegments[1].Aux1, 700);
    EXPECT_EQ(RouteSegments[1].Aux2, 300);
    EXPECT_EQ(RouteSegments[1].Pass, 1);
    EXPECT_EQ(RouteSegments[2].Aux1, 90);
    EXPECT_EQ(RouteSegments[2].Aux2, 90);
    EXPECT_EQ(RouteSegments[2].Dir, False);
    EXPECT_EQ(RouteCircles[1].Used, True);
    EXPECT_EQ(RouteCircles[1].Pass, 0);
}

TEST_F(CircleJoins, CirclesWithoutAnySegmentAreClosedAtOnce)
{
    RouteCircle pocket = Circle({500, 300}, 20);
    pocket.OscZ = -5;
    LayRoutes({}, {Circle({700, 300}, 50), pocket, Circle({100, 100}, 30)});
    CloseLoneCircles();
    EXPECT_EQ(PlacesNow(), (Points{{700, 350}, {700, 350}, {100, 130}, {100, 130}}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-3, 3, -3, 3}));
    for (Long i = 1; i <= 4; ++i) {
        EXPECT_EQ(RouteSegments[i].Dir, i % 2 == 1 ? -8 : 0);
        EXPECT_EQ(RouteSegments[i].Pass, 1);
    }
    EXPECT_EQ(RouteSegments[2].Aux1, 90);
    EXPECT_EQ(RouteSegments[2].Aux2, 90);
    EXPECT_EQ(RouteCircles[1].Used, True);
    EXPECT_EQ(RouteCircles[2].Used, False);
    EXPECT_EQ(RouteCircles[3].Used, True);
}

TEST_F(CircleJoins, CirclesBesideASegmentWaitForTheChaining)
{
    LayRoutes(Line({0, 0}, {10, 0}), {Circle({700, 300}, 50)});
    CloseLoneCircles();
    EXPECT_EQ(PlacesNow().size(), 2U);
    EXPECT_EQ(RouteCircles[1].Used, False);
}

TEST_F(CircleJoins, ClosedCirclesAreChainsOfTheirOwn)
{
    // Two circles that meet at their tops: linked, but each keeps its mark.
    LayRoutes({}, {Circle({300, 300}, 50), Circle({300, 320}, 30)});
    CloseLoneCircles();
    EXPECT_TRUE(ChainRoutes());
    EXPECT_EQ(ChainLengthsNow(), (Lengths{2, 2}));
}

TEST_F(CircleJoins, MoreRecordsThanAnIntCountsEndTheRun)
{
    Segments lines;
    for (int i = 0; i < 16383; ++i)
        chain_test::Add(lines, Line({0, static_cast<Single>(i)}, {0.5F, static_cast<Single>(i)}));
    LayRoutes(lines);
    EXPECT_TRUE(ChainRoutes());
    LayRoutes(lines, {Circle({900, 300}, 50)});
    EXPECT_THROW(ChainRoutes(), RunError);
}

} // namespace
} // namespace kv
