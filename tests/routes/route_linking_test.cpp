// Linking of touching paths into chains: what touches, which way goes on at a fork, what is turned.
#include <algorithm>

#include "routes/route_chain_scene.h"

namespace kv {
namespace {

using chain_test::Arc;
using chain_test::ChainLengthsNow;
using chain_test::ChainStartsNow;
using chain_test::Drawing;
using chain_test::KindsNow;
using chain_test::Line;
using chain_test::OnPass;
using chain_test::PlacesNow;
using chain_test::Points;
using chain_test::Polyline;
using chain_test::Segment;
using chain_test::Segments;

using Lengths = std::vector<std::size_t>;

class RouteLinking : public chain_test::RouteChainTest {
  protected:
    // Places of the chain that starts here.
    static Points ChainFrom(chain_test::Point start)
    {
        for (Long i = 1; i <= RouteSegments.Last(); ++i) {
            if (!StartsRoute(RouteSegments[i]) ||
                !(chain_test::Point{RouteSegments[i].X, RouteSegments[i].Y} == start))
                continue;
            Points places;
            for (Long k = i; k <= LastOfRoute(i); ++k)
                places.push_back({RouteSegments[k].X, RouteSegments[k].Y});
            return places;
        }
        return {};
    }
};

// ---- What touches

TEST_F(RouteLinking, LinesThatMeetAreOneChain)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({100, 0}, {200, 0})));
    EXPECT_EQ(PlacesNow(), (Points{{0, 0}, {100, 0}, {100, 0}, {200, 0}}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -1, 1}));
    EXPECT_EQ(ChainLengthsNow(), (Lengths{4}));
}

TEST_F(RouteLinking, LinesWithinTheToleranceAreOneChain)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({100.0625F, 0.0625F}, {200, 0}))); // .088 apart
    EXPECT_EQ(ChainLengthsNow(), (Lengths{4}));
    EXPECT_EQ(PlacesNow()[2], (chain_test::Point{100.0625F, 0.0625F})); // as drawn
}

TEST_F(RouteLinking, LinesFurtherApartAreTwoChains)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({100.0625F, 0.09375F}, {200, 0}))); // .113 apart
    EXPECT_EQ(ChainLengthsNow(), (Lengths{2, 2}));
}

TEST_F(RouteLinking, ToleranceItselfIsTooFar)
{
    Chain(Drawing(Line({-100, 0}, {0, 0}), Line({0.1F, 0}, {100, 0})));
    EXPECT_EQ(ChainLengthsNow(), (Lengths{2, 2}));
}

TEST_F(RouteLinking, LinesOfTwoPassesStayApart)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), OnPass(2, Line({100, 0}, {200, 0}))));
    EXPECT_EQ(ChainLengthsNow(), (Lengths{2, 2}));
}

TEST_F(RouteLinking, FirstRecordOfAChainIsMarked)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({100, 0}, {200, 0})));
    EXPECT_EQ(RouteSegments[1].Dir, -8);
    for (Long i = 2; i <= 4; ++i)
        EXPECT_EQ(RouteSegments[i].Dir, 0) << i;
}

TEST_F(RouteLinking, LineTakesItsAngle)
{
    Chain(Drawing(Line({0, 0}, {100, 100}), Line({100, 100}, {100, 200})));
    EXPECT_NEAR(RouteSegments[1].Aux1, 45, 0.001);
    EXPECT_EQ(RouteSegments[3].Aux1, 90);
    EXPECT_EQ(RouteSegments[2].Aux1, 0);
}

TEST_F(RouteLinking, PolylineTakesTheAngleFromItsFirstToItsLastPoint)
{
    Segments polyline = Polyline({{0, 0}, {70, 20}, {0, 100}});
    polyline[0].Aux1 = True; // the mark of a bulge gives way
    polyline[0].Aux2 = 0.5F;
    Chain(polyline);
    EXPECT_EQ(RouteSegments[1].Aux1, 90);
    EXPECT_EQ(RouteSegments[1].Aux2, 0.5F);
}

TEST_F(RouteLinking, StartMarkKeepsItsWidths)
{
    Segments mark = Polyline({{0, 0}, {0, 100}}, -4);
    mark[0].Aux1 = 3;
    mark[0].Aux2 = 1;
    Chain(mark);
    EXPECT_EQ(RouteSegments[1].Aux1, 3);
    EXPECT_EQ(RouteSegments[1].Aux2, 1);
}

// ---- What is turned

TEST_F(RouteLinking, LineThatEndsAtTheEndIsTurned)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({200, 0}, {100, 0})));
    EXPECT_EQ(PlacesNow(), (Points{{0, 0}, {100, 0}, {100, 0}, {200, 0}}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -1, 1}));
    EXPECT_EQ(RouteSegments[3].Aux1, 0); // 180 turned
}

TEST_F(RouteLinking, HeadIsTurnedForALineThatStartsAtItsStart)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({0, 0}, {0, 50})));
    EXPECT_EQ(PlacesNow(), (Points{{100, 0}, {0, 0}, {0, 0}, {0, 50}}));
    EXPECT_EQ(RouteSegments[1].Aux1, 180);
    EXPECT_EQ(RouteSegments[1].Dir, -8);
}

TEST_F(RouteLinking, BothAreTurnedForALineThatEndsAtTheHeadsStart)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({0, 50}, {0, 0})));
    EXPECT_EQ(PlacesNow(), (Points{{100, 0}, {0, 0}, {0, 0}, {0, 50}}));
    EXPECT_EQ(RouteSegments[3].Aux1, 90);
}

TEST_F(RouteLinking, OnlyTheFirstLinkTurnsTheHead)
{
    // Behind the first link the chain goes on at its end alone: what meets the joint stays outside.
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({100, 0}, {200, 0}), Line({100, 0}, {100, 90})));
    EXPECT_EQ(ChainFrom({0, 0}), (Points{{0, 0}, {100, 0}, {100, 0}, {200, 0}}));
    EXPECT_EQ(ChainFrom({100, 0}), (Points{{100, 0}, {100, 90}}));
}

TEST_F(RouteLinking, TurnedLineKeepsItsKindsAndParametersInPlace)
{
    Segments line = Line({200, 0}, {100, 0});
    line[0].Z = 3;
    line[1].Z = 4;
    line[0].Feed = 30;
    line[1].Feed = 40;
    line[0].ExtraSlot = 5;
    line[1].ExtraSlot = 6;
    line[0].ParamA = 1;
    line[1].ParamA = 2;
    line[0].ParamB = 7;
    line[1].ParamB = 8;
    Chain(Drawing(Line({0, 0}, {100, 0}), line));
    const RouteSegment& first = RouteSegments[3];
    const RouteSegment& last = RouteSegments[4];
    EXPECT_EQ(first.Z, 4);
    EXPECT_EQ(last.Z, 3);
    EXPECT_EQ(first.Feed, 40);
    EXPECT_EQ(last.Feed, 30);
    EXPECT_EQ(first.ExtraSlot, 6);
    EXPECT_EQ(last.ExtraSlot, 5);
    EXPECT_EQ(first.ParamA, 1);
    EXPECT_EQ(last.ParamA, 2);
    EXPECT_EQ(first.ParamB, 7);
    EXPECT_EQ(last.ParamB, 8);
}

TEST_F(RouteLinking, TurnedStartMarkBearsASign)
{
    Segments mark = Polyline({{100, 0}, {0, 0}}, -4);
    mark[0].Aux1 = 3;
    mark[0].Aux2 = 1;
    Chain(Drawing(mark, Polyline({{100, 0}, {200, 0}})));
    EXPECT_EQ(PlacesNow(), (Points{{0, 0}, {100, 0}, {100, 0}, {200, 0}}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-4, 4, -5, 5}));
    EXPECT_EQ(RouteSegments[1].Aux1, 0); // 180 turned
    EXPECT_EQ(RouteSegments[1].Aux2, -1);
    EXPECT_EQ(RouteSegments[2].Aux1, 3); // the widths go with the exchange
    EXPECT_EQ(RouteSegments[2].Aux2, 1);
}

TEST_F(RouteLinking, ThreePointArcsAreTurnedAsAWhole)
{
    // Touched at both ends, so that the order of the paths leaves it whole.
    Segments run{Segment(-2, 200, 0), Segment(2, 150, 20), Segment(2, 100, 0)};
    for (int i = 0; i < 3; ++i)
        run[static_cast<std::size_t>(i)].ParamA = static_cast<Single>(i + 1);
    Chain(Drawing(Line({0, 0}, {100, 0}), run, Line({200, 0}, {300, 0})));
    EXPECT_EQ(PlacesNow(), (Points{{0, 0}, {100, 0}, {100, 0}, {150, 20}, {200, 0}, {200, 0}, {300, 0}}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -2, 2, 2, -1, 1}));
    EXPECT_EQ(RouteSegments[3].ParamA, 3);
    EXPECT_EQ(RouteSegments[4].ParamA, 2);
    EXPECT_EQ(RouteSegments[5].ParamA, 1);
}

TEST_F(RouteLinking, ThreePointArcGoesOnInTheDirectionOfItsLastStep)
{
    // Drawn towards the joint: turned, its end looks along the step it began with, down to (200, -100).
    const Segments run{Segment(-2, 200, -100), Segment(2, 200, 0), Segment(2, 100, 0)};
    Chain(Drawing(Line({0, 0}, {100, 0}), run, Polyline({{200, -100}, {300, -100}}),
                  Polyline({{200, -100}, {200, -200}})));
    EXPECT_EQ(ChainFrom({0, 0}),
              (Points{{0, 0}, {100, 0}, {100, 0}, {200, 0}, {200, -100}, {200, -100}, {200, -200}}));
}

TEST_F(RouteLinking, ArcIsLinkedAsItStands)
{
    Chain(Drawing(Line({200, 0}, {100, 0}), Arc({100, 50}, {100, 0}, {50, 50}, 270, 180)));
    EXPECT_EQ(PlacesNow(), (Points{{200, 0}, {100, 0}, {100, 0}, {50, 50}}));
    EXPECT_EQ(RouteSegments[4].Aux1, 270);
    EXPECT_EQ(RouteSegments[4].Aux2, 180);
    EXPECT_EQ(RouteSegments[4].Dir, 0);
}

TEST_F(RouteLinking, TurnedArcChangesItsPlacesAnglesAndHand)
{
    Segments arc = Arc({100, 50}, {50, 50}, {100, 0}, 180, 270);
    arc[0].Z = 3;
    arc[1].Z = 4;
    Chain(Drawing(Line({200, 0}, {100, 0}), arc));
    EXPECT_EQ(PlacesNow(), (Points{{200, 0}, {100, 0}, {100, 0}, {50, 50}}));
    EXPECT_EQ(RouteSegments[3].Aux1, 100);
    EXPECT_EQ(RouteSegments[3].Aux2, 50);
    EXPECT_EQ(RouteSegments[4].Aux1, 270);
    EXPECT_EQ(RouteSegments[4].Aux2, 180);
    EXPECT_EQ(RouteSegments[4].Dir, -1);
    EXPECT_EQ(RouteSegments[3].Z, 3); // all else stays
    EXPECT_EQ(RouteSegments[4].Z, 4);
}

TEST_F(RouteLinking, TurnedArcTurnsItsDirectionsWithoutExchange)
{
    // The arc's directions are 90 and 180; turned, its end looks along 0, not along 270.
    const Segments arc = Arc({100, 50}, {50, 50}, {100, 0}, 180, 270);
    Chain(Drawing(Line({200, 0}, {100, 0}), arc, Line({50, 50}, {50, -100}), Line({50, 50}, {300, 50})));
    EXPECT_EQ(ChainFrom({200, 0}), (Points{{200, 0}, {100, 0}, {100, 0}, {50, 50}, {50, 50}, {300, 50}}));
}

// ---- Forks

TEST_F(RouteLinking, ForkGoesOnTheStraightestWay)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({100, 0}, {100, 50}), Line({100, 0}, {200, 10})));
    EXPECT_EQ(ChainFrom({0, 0}), (Points{{0, 0}, {100, 0}, {100, 0}, {200, 10}}));
    EXPECT_EQ(ChainFrom({100, 0}), (Points{{100, 0}, {100, 50}}));
    EXPECT_EQ(ChainLengthsNow().size(), 2U);
}

TEST_F(RouteLinking, ForkLooksAtALineAsItWouldBeTurned)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({100, 0}, {100, 50}), Line({200, 10}, {100, 0})));
    EXPECT_EQ(ChainFrom({0, 0}), (Points{{0, 0}, {100, 0}, {100, 0}, {200, 10}}));
}

TEST_F(RouteLinking, ForkOfEqualTurnsTakesTheFirst)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({100, 0}, {100, -50}), Line({100, 0}, {100, 50})));
    EXPECT_EQ(ChainFrom({0, 0}).back(), (chain_test::Point{100, -50}));
}

TEST_F(RouteLinking, ForkTurnsTheHeadForAStraighterWay)
{
    // At the head's end a right angle, at its start straight on.
    Chain(Drawing(Line({0, 0}, {100, 0}), Polyline({{100, 0}, {100, 50}}), Polyline({{0, 0}, {-90, 0}})));
    EXPECT_EQ(ChainFrom({100, 0}), (Points{{100, 0}, {0, 0}, {0, 0}, {-90, 0}}));
    EXPECT_EQ(ChainLengthsNow(), (Lengths{4, 2})); // both start at one place: as drawn
}

TEST_F(RouteLinking, WayStraightBackIsTakenWhereThereIsNoOther)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({100, 0}, {10, 0})));
    EXPECT_EQ(ChainLengthsNow(), (Lengths{4}));
}

TEST_F(RouteLinking, NearestOfTheFourDistancesDecidesEvenWhereItIsBarred)
{
    // The third line's start is within reach of the short second line's end, but nearer to its start,
    // and the head has its first link already.
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({100, 0}, {100.0625F, 0}), Line({100.015625F, 0}, {200, 0})));
    EXPECT_EQ(ChainFrom({0, 0}), (Points{{0, 0}, {100, 0}, {100, 0}, {100.0625F, 0}}));
    EXPECT_EQ(ChainLengthsNow().size(), 2U);
}

// ---- Polylines

TEST_F(RouteLinking, PolylineIsLinkedAndEndsTheChain)
{
    Chain(
        Drawing(Line({0, 0}, {100, 0}), Polyline({{100, 0}, {150, 50}, {200, 0}}), Line({200, 0}, {300, 0})));
    EXPECT_EQ(ChainFrom({0, 0}), (Points{{0, 0}, {100, 0}, {100, 0}, {150, 50}, {200, 0}}));
    EXPECT_EQ(ChainFrom({200, 0}), (Points{{200, 0}, {300, 0}}));
}

TEST_F(RouteLinking, PolylineIsNeverTurned)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Polyline({{200, 0}, {150, 50}, {100, 0}})));
    EXPECT_EQ(ChainFrom({200, 0}), (Points{{200, 0}, {150, 50}, {100, 0}}));
    EXPECT_EQ(ChainLengthsNow().size(), 2U);
}

TEST_F(RouteLinking, PolylineThatEndsAtTheHeadsStartStaysApart)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Polyline({{-90, 0}, {0, 0}})));
    EXPECT_EQ(ChainLengthsNow().size(), 2U);
}

TEST_F(RouteLinking, PolylineThatStartsAtTheHeadsStartTurnsTheHead)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Polyline({{0, 0}, {-90, 0}})));
    EXPECT_EQ(PlacesNow(), (Points{{100, 0}, {0, 0}, {0, 0}, {-90, 0}}));
}

TEST_F(RouteLinking, PolylineWhoseEndIsNearerThanItsStartIsNoFit)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Polyline({{100.0625F, 0}, {200, 90}, {100.015625F, 0}})));
    EXPECT_EQ(ChainLengthsNow().size(), 2U);
}

TEST_F(RouteLinking, ClosedPolylineIsAChainOfItsOwn)
{
    const Points square{{100, 0}, {200, 0}, {200, 90}, {100, 0}};
    Chain(Drawing(Line({0, 0}, {100, 0}), Polyline(square), Line({100, 0}, {100, -80})));
    EXPECT_EQ(ChainFrom({100, 0}), square);
    EXPECT_EQ(ChainFrom({0, 0}), (Points{{0, 0}, {100, 0}, {100, 0}, {100, -80}}));
}

TEST_F(RouteLinking, ClosedPolylineIsLinkedBehindAStartMark)
{
    const Segments mark = Polyline({{0, 0}, {100, 0}}, -4);
    Chain(Drawing(Polyline({{100, 0}, {200, 0}, {200, 90}, {100, 0}}), mark));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-4, 4, -5, 5, 5, 5}));
    EXPECT_EQ(ChainLengthsNow(), (Lengths{6}));
}

TEST_F(RouteLinking, ClosedIsExact)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Polyline({{100, 0}, {200, 0}, {200, 90}, {100, 0.0078125F}})));
    EXPECT_EQ(ChainLengthsNow(), (Lengths{6}));
}

// ---- Paths

TEST_F(RouteLinking, FirstRecordAtTheListsEndIsNoPath)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Segments{Segment(-1, 100, 0)}));
    EXPECT_EQ(PlacesNow(), (Points{{0, 0}, {100, 0}}));
    EXPECT_EQ(kv::Run.SegmentCount, 2);
}

TEST_F(RouteLinking, FirstRecordAloneInsideTheListIsAPath)
{
    Chain(Drawing(Segments{Segment(-1, 100, 0)}, Polyline({{300, 0}, {400, 0}})));
    EXPECT_EQ(ChainFrom({100, 0}), (Points{{100, 0}}));
    EXPECT_EQ(ChainLengthsNow().size(), 2U);
}

TEST_F(RouteLinking, RecordsInFrontOfTheFirstPathDropOut)
{
    Chain(Drawing(Segments{Segment(5, 7, 7)}, Line({0, 0}, {100, 0})));
    EXPECT_EQ(PlacesNow(), (Points{{0, 0}, {100, 0}}));
}

TEST_F(RouteLinking, SquareOfFourLinesInAnyOrderIsOneChain)
{
    const Segments lines[] = {Line({0, 0}, {100, 0}), Line({100, 90}, {100, 0}), Line({100, 90}, {0, 90}),
                              Line({0, 0}, {0, 90})};
    int order[] = {0, 1, 2, 3};
    do {
        Chain(Drawing(lines[order[0]], lines[order[1]], lines[order[2]], lines[order[3]]));
        EXPECT_EQ(ChainLengthsNow(), (Lengths{8}));
        for (Long i = 2; i < 8; i += 2) {
            EXPECT_EQ(RouteSegments[i].X, RouteSegments[i + 1].X);
            EXPECT_EQ(RouteSegments[i].Y, RouteSegments[i + 1].Y);
        }
    } while (std::next_permutation(std::begin(order), std::end(order)));
}

} // namespace
} // namespace kv
