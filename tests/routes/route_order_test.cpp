// The order of the paths before they are chained: free ends to the front, start marks to the head.
#include "routes/route_order.h"

#include "routes/route_chain_scene.h"

namespace kv {
namespace {

using chain_test::Arc;
using chain_test::Drawing;
using chain_test::KindsNow;
using chain_test::LayRoutes;
using chain_test::Line;
using chain_test::OnPass;
using chain_test::PlacesNow;
using chain_test::Points;
using chain_test::Polyline;
using chain_test::Segment;
using chain_test::Segments;
using chain_test::SegmentsNow;

const Segments Lone = Line({500, 300}, {600, 300});

class RouteOrder : public chain_test::RouteChainTest {
  protected:
    // Whether the line from the left and this line from its end are taken for two ends of a chain.
    static bool Touches(chain_test::Point from)
    {
        return Order(Drawing(Lone, Line({-100, 0}, {0, 0}), Line(from, {100, 50}))).front() ==
               chain_test::Point{-100, 0};
    }

    // A start mark of two records.
    static Segments Mark(chain_test::Point from, chain_test::Point to, Single paramA, Single paramB)
    {
        Segments mark = Polyline({from, to}, -4);
        mark[0].ParamA = paramA;
        mark[0].ParamB = paramB;
        return mark;
    }
};

TEST_F(RouteOrder, EndsOfAChainComeBeforeItsMiddle)
{
    EXPECT_EQ(Order(Drawing(Line({100, 0}, {200, 0}), Line({0, 0}, {100, 0}), Line({200, 0}, {300, 0}))),
              (Points{{0, 0}, {100, 0}, {200, 0}, {300, 0}, {100, 0}, {200, 0}}));
}

TEST_F(RouteOrder, EndsOfAChainComeBeforePiecesThatTouchNothing)
{
    EXPECT_EQ(Order(Drawing(Lone, Line({0, 0}, {100, 0}), Line({200, 0}, {100, 0}))),
              (Points{{0, 0}, {100, 0}, {200, 0}, {100, 0}, {500, 300}, {600, 300}}));
}

TEST_F(RouteOrder, LoopOfTwoKeepsItsOrder)
{
    const Segments drawn = Drawing(Lone, Line({0, 0}, {100, 0}), Line({100, 0}, {0, 0}));
    EXPECT_EQ(Order(drawn), (Points{{500, 300}, {600, 300}, {0, 0}, {100, 0}, {100, 0}, {0, 0}}));
}

TEST_F(RouteOrder, TouchingIsJudgedByEachCoordinate)
{
    EXPECT_TRUE(Touches({0.0049F, 0}));
    EXPECT_TRUE(Touches({0.0049F, -0.0049F})); // .0069 apart
    EXPECT_FALSE(Touches({0.0051F, 0}));
    EXPECT_FALSE(Touches({0, -0.0051F}));
}

TEST_F(RouteOrder, PieceOfAnotherPassDoesNotTouch)
{
    EXPECT_EQ(Order(Drawing(Lone, Line({0, 0}, {100, 0}), OnPass(2, Line({100, 0}, {200, 0})))).front(),
              (chain_test::Point{500, 300}));
}

TEST_F(RouteOrder, PieceThatTouchesAPolylineIsAnEnd)
{
    // The polyline is one too, but no sweep looks for its kind.
    EXPECT_EQ(Order(Drawing(Lone, Polyline({{100, 0}, {200, 0}}), Line({0, 0}, {100, 0}))),
              (Points{{0, 0}, {100, 0}, {500, 300}, {600, 300}, {100, 0}, {200, 0}}));
}

TEST_F(RouteOrder, PolylineInsideTouchesWithItsEndsAlone)
{
    const Segments drawn = Drawing(Lone, Polyline({{50, 80}, {100, 0}, {200, 0}}), Line({0, 0}, {100, 0}));
    EXPECT_EQ(Order(drawn).front(), (chain_test::Point{500, 300}));
}

TEST_F(RouteOrder, LinesStandBeforeArcsBeforeThreePointArcs)
{
    // Each is the end of a chain with a polyline of its own.
    Order(Drawing(Polyline({{10, 0}, {20, 0}}), Segments{Segment(-2, 0, 0), Segment(2, 10, 0)},
                  Polyline({{10, 100}, {20, 100}}), Arc({5, 100}, {0, 100}, {10, 100}, 180, 0),
                  Polyline({{10, 200}, {20, 200}}), Line({0, 200}, {10, 200})));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -3, 3, -2, 2, -5, 5, -5, 5, -5, 5}));
}

TEST_F(RouteOrder, SweepOfOneKindMovesItsEndsBeforeTheNextSweepLooks)
{
    // The arc goes to the front by its own sweep, the line in front of it by the next one.
    EXPECT_EQ(Order(Drawing(Line({50, 100}, {50, 50}), Lone, Arc({25, 50}, {0, 50}, {50, 50}, 180, 0))),
              (Points{{50, 100}, {50, 50}, {0, 50}, {50, 50}, {500, 300}, {600, 300}}));
}

TEST_F(RouteOrder, OfALongPieceOnlyTheFirstAndTheLastRecordMove)
{
    const Segments run{Segment(-2, 0, 0), Segment(2, 5, 5), Segment(2, 10, 0)};
    EXPECT_EQ(Order(Drawing(Polyline({{10, 0}, {20, 0}}), run)),
              (Points{{0, 0}, {10, 0}, {10, 0}, {20, 0}, {5, 5}}));
}

TEST_F(RouteOrder, PieceWithoutARecordBehindItEndsTheSweep)
{
    const Segments drawn =
        Drawing(Lone, Line({0, 0}, {100, 0}), Line({100, 0}, {200, 0}), Segments{Segment(-1, 700, 0)});
    EXPECT_EQ(Order(drawn).front(), (chain_test::Point{500, 300}));
}

TEST_F(RouteOrder, WhatTheSweepHasMarkedBeforeItsEndMoves)
{
    EXPECT_EQ(Order(Drawing(Line({0, 0}, {100, 0}), Segments{Segment(-1, 700, 0)}, Line({100, 0}, {200, 0}))),
              (Points{{100, 0}, {200, 0}, {0, 0}, {100, 0}, {700, 0}}));
}

TEST_F(RouteOrder, PieceWithoutARecordBehindItEndsTheSweepOfItsOwnKindAlone)
{
    EXPECT_EQ(
        Order(Drawing(Lone, Line({0, 0}, {100, 0}), Line({100, 0}, {200, 0}), Segments{Segment(-3, 700, 0)}))
            .front(),
        (chain_test::Point{0, 0}));
}

TEST_F(RouteOrder, MarksOfTheSweepAreCleared)
{
    Order(Drawing(Line({0, 0}, {100, 0}), Line({100, 0}, {200, 0})));
    for (const RouteSegment& record : SegmentsNow())
        EXPECT_EQ(record.Flag, 0);
}

TEST_F(RouteOrder, EmptyListStaysEmpty)
{
    EXPECT_TRUE(Order({}).empty());
}

// ---- Start marks

TEST_F(RouteOrder, StartMarkComesToTheHeadAsKind4)
{
    EXPECT_EQ(Order(Drawing(Lone, Mark({50, 50}, {60, 50}, 0, 1))),
              (Points{{50, 50}, {60, 50}, {500, 300}, {600, 300}}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-4, 4, -1, 1}));
    EXPECT_EQ(RouteSegments[1].Z, 10);
    EXPECT_EQ(RouteSegments[2].Z, 10);
}

TEST_F(RouteOrder, StartMarkWithADepthOfItsOwnBecomesALine)
{
    Order(Drawing(Lone, Mark({50, 50}, {60, 50}, 3, 0)));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -1, 1}));
    EXPECT_EQ(RouteSegments[1].Z, 3);
    EXPECT_EQ(RouteSegments[2].Z, 0);
}

TEST_F(RouteOrder, AMarkThatBecomesALineLosesWidthsAndParameters)
{
    Segments mark = Mark({50, 50}, {60, 50}, 3, 1);
    mark[0].Aux1 = 6;
    mark[0].Aux2 = 2;
    mark[1].Aux1 = -1;
    mark[1].Aux2 = .5F;
    mark[1].ParamA = 7;
    Order(mark);
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1}));
    for (Long i = 1; i <= 2; ++i) {
        EXPECT_EQ(RouteSegments[i].Aux1, 0) << i;
        EXPECT_EQ(RouteSegments[i].Aux2, 0) << i;
        EXPECT_EQ(RouteSegments[i].ParamA, 0) << i;
        EXPECT_EQ(RouteSegments[i].ParamB, 0) << i;
    }
}

TEST_F(RouteOrder, StartMarkWithADefaultedDepthKeepsIt)
{
    Order(Drawing(Lone, Mark({50, 50}, {60, 50}, 3, 1)));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -1, 1}));
    EXPECT_EQ(RouteSegments[1].Z, 10);
    EXPECT_EQ(RouteSegments[2].Z, 0);
}

TEST_F(RouteOrder, MarksParametersAreThoseOfItsFirstRecord)
{
    Segments mark = Mark({50, 50}, {60, 50}, 0, 0);
    mark[1].ParamA = 9;
    Order(mark);
    EXPECT_EQ(KindsNow(), (std::vector<int>{-4, 4}));
}

TEST_F(RouteOrder, SettingNoLeavesStartMarksInTheirPlace)
{
    for (const char* no : {"NO", "no", "No"}) {
        Config.SPDA = no;
        EXPECT_EQ(Order(Drawing(Lone, Mark({50, 50}, {60, 50}, 3, 0))).front(), (chain_test::Point{500, 300}))
            << no;
        EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -4, 5})) << no;
    }
}

TEST_F(RouteOrder, SettingNoLeavesTheSweeps)
{
    Config.SPDA = "NO";
    EXPECT_EQ(Order(Drawing(Lone, Line({0, 0}, {100, 0}), Line({100, 0}, {200, 0}))).front(),
              (chain_test::Point{0, 0}));
}

TEST_F(RouteOrder, SettingNoIsTheWordAlone)
{
    for (const char* other : {"", "YES", "NONE", " NO", "NO "}) {
        Config.SPDA = other;
        EXPECT_EQ(Order(Drawing(Lone, Mark({50, 50}, {60, 50}, 0, 0))).front(), (chain_test::Point{50, 50}))
            << '[' << other << ']';
    }
}

TEST_F(RouteOrder, EachStartMarkGoesInFrontOfTheOneBefore)
{
    EXPECT_EQ(Order(Drawing(Mark({1, 0}, {2, 0}, 0, 0), Lone, Mark({3, 0}, {4, 0}, 0, 0),
                            Mark({5, 0}, {6, 0}, 0, 0))),
              (Points{{5, 0}, {6, 0}, {3, 0}, {4, 0}, {1, 0}, {2, 0}, {500, 300}, {600, 300}}));
}

TEST_F(RouteOrder, OfALongerTaperedPolylineOnlyTheFirstTwoRecordsMove)
{
    EXPECT_EQ(Order(Drawing(Lone, Polyline({{1, 0}, {2, 0}, {3, 0}, {4, 0}}, -4))),
              (Points{{1, 0}, {2, 0}, {500, 300}, {600, 300}, {3, 0}, {4, 0}}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-4, 4, -1, 1, 5, 5}));
}

TEST_F(RouteOrder, StartMarkAsTheLastRecordStays)
{
    EXPECT_EQ(Order(Drawing(Lone, Segments{Segment(-4, 50, 50)})),
              (Points{{500, 300}, {600, 300}, {50, 50}}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -4}));
}

TEST_F(RouteOrder, StartMarkTakesTheRecordBehindItWhateverThatIs)
{
    EXPECT_EQ(Order(Drawing(Lone, Segments{Segment(-4, 50, 50)}, Line({1, 0}, {2, 0}))),
              (Points{{50, 50}, {1, 0}, {500, 300}, {600, 300}, {2, 0}}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-4, 4, -1, 1, 1}));
}

TEST_F(RouteOrder, PolylinesThatAreNotTaperedStay)
{
    EXPECT_EQ(Order(Drawing(Lone, Polyline({{1, 0}, {2, 0}}))).front(), (chain_test::Point{500, 300}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -5, 5}));
}

} // namespace
} // namespace kv
