// What chaining does with whole chains: nearest first, by tool, by sequence, common values, depths of
// arcs; and how it tells its progress and sees an abort.
#include "routes/route_chains.h"

#include <algorithm>

#include "platform/events.h"
#include "routes/route_chain_scene.h"
#include "state/report.h"

namespace kv {
namespace {

using chain_test::Arc;
using chain_test::ChainLengthsNow;
using chain_test::ChainStartsNow;
using chain_test::Circle;
using chain_test::Drawing;
using chain_test::KindsNow;
using chain_test::LayRoutes;
using chain_test::Line;
using chain_test::PlacesNow;
using chain_test::Point;
using chain_test::Points;
using chain_test::Polyline;
using chain_test::Segment;
using chain_test::Segments;
using chain_test::SegmentsNow;

class RouteChains : public chain_test::RouteChainTest {
  protected:
    // A chain of one short line; nearer to the far corner, so earlier, the greater X is.
    static Segments At(Single x, Int toolNo = 0, Int sequence = 0)
    {
        Segments line = Line({x, 0}, {x, 5});
        for (RouteSegment& record : line) {
            record.ToolNo = toolNo;
            record.Sequence = sequence;
        }
        return line;
    }
    static std::vector<Single> PlacesInX()
    {
        std::vector<Single> places;
        for (const Point& start : ChainStartsNow())
            places.push_back(start.X);
        return places;
    }
};

using Xs = std::vector<Single>;

// ---- Dead records

TEST_F(RouteChains, DeadRecordsAreDropped)
{
    const RouteSegment dead;
    LayRoutes(Drawing(Segments{dead}, Line({0, 0}, {1, 0}), Segments{dead}, Line({2, 0}, {3, 0}),
                      Segments{dead, dead}));
    DropDeadSegments();
    EXPECT_EQ(PlacesNow(), (Points{{0, 0}, {1, 0}, {2, 0}, {3, 0}}));
    EXPECT_EQ(Run.SegmentCount, 4);
    EXPECT_EQ(RouteSegments[0].Kind, 0);
}

TEST_F(RouteChains, OnlyDeadRecordsLeaveAnEmptyList)
{
    LayRoutes(Segments(3));
    DropDeadSegments();
    EXPECT_EQ(RouteSegments.Last(), 0);
    EXPECT_EQ(Run.SegmentCount, 0);
}

TEST_F(RouteChains, EmptyListStaysEmpty)
{
    LayRoutes({});
    CloseLoneCircles();
    EXPECT_TRUE(ChainRoutes());
    EXPECT_EQ(RouteSegments.Last(), 0);
}

// ---- Nearest first

TEST_F(RouteChains, NearestToTheFarCornerIsFirstThenNearestToItsEnd)
{
    // From (1000, 500): B; from B's end (0, 0): A; then C.
    Chain(Drawing(Line({10, 0}, {300, 10}), Line({900, 450}, {0, 0}), Line({800, 450}, {820, 450})));
    EXPECT_EQ(ChainStartsNow(), (Points{{900, 450}, {10, 0}, {800, 450}}));
}

TEST_F(RouteChains, EquallyNearChainsKeepTheirOrder)
{
    Chain(Drawing(Line({900, 500}, {900, 501}), Line({1000, 400}, {1001, 400})));
    EXPECT_EQ(ChainStartsNow().front(), (Point{900, 500}));
    Chain(Drawing(Line({1000, 400}, {1001, 400}), Line({900, 500}, {900, 501})));
    EXPECT_EQ(ChainStartsNow().front(), (Point{1000, 400}));
}

TEST_F(RouteChains, NoChainDropsOutForItsDistance)
{
    LayRoutes(Drawing(Line({1e6F, 10}, {1e6F, 0}), Line({110, 10}, {110, 0}), Line({10, 109}, {0, 109})));
    Run.SideWidth[5] = 10;
    Run.SideHeight[5] = 10; // chains are looked for from (10, 10) on
    EXPECT_TRUE(ChainRoutes());
    EXPECT_EQ(PlacesNow(), (Points{{10, 109}, {0, 109}, {110, 10}, {110, 0}, {1e6F, 10}, {1e6F, 0}}));
    EXPECT_EQ(Run.SegmentCount, 6);
}

TEST_F(RouteChains, FarChainIsReachedFromTheOneBeforeIt)
{
    LayRoutes(Drawing(Line({205, 10}, {210, 10}), Line({100, 10}, {200, 10})));
    Run.SideWidth[5] = 10;
    Run.SideHeight[5] = 10;
    EXPECT_TRUE(ChainRoutes());
    EXPECT_EQ(ChainStartsNow(), (Points{{100, 10}, {205, 10}}));
}

TEST_F(RouteChains, PanelWithoutSizeKeepsAll)
{
    LayRoutes(At(100));
    const Long laid = RouteSegments.Last();
    Run.SideWidth[5] = 0;
    EXPECT_TRUE(ChainRoutes());
    EXPECT_GT(laid, 0);
    EXPECT_EQ(RouteSegments.Last(), laid);
}

// ---- Tools

TEST_F(RouteChains, ChainsGoByTool)
{
    Chain(Drawing(At(900, 3), At(800, 1), At(700, 3), At(600, 2), At(500, 1)));
    EXPECT_EQ(PlacesInX(), (Xs{800, 500, 600, 900, 700}));
}

TEST_F(RouteChains, NegativeToolIsNotCopiedOut)
{
    Chain(Drawing(At(900, 3), At(800, -1), At(700, 0)));
    EXPECT_EQ(PlacesInX(), (Xs{700, 900}));
    EXPECT_EQ(Run.SegmentCount, 4);
}

TEST_F(RouteChains, ToolOfAChainIsThatOfItsFirstRecord)
{
    Segments line = At(900, 5);
    line[1].ToolNo = -1;
    Chain(Drawing(line, At(800, 2)));
    EXPECT_EQ(PlacesInX(), (Xs{800, 900}));
    EXPECT_EQ(RouteSegments[4].ToolNo, 5);
}

// ---- Sequences

TEST_F(RouteChains, SequencesFiveThreeAndNone)
{
    Chain(Drawing(At(900, 0, 5), At(800, 0, 3), At(700)));
    EXPECT_EQ(PlacesInX(), (Xs{700, 800, 900}));
    EXPECT_EQ(Run.MaxSequence, 5);
    EXPECT_EQ(Run.MinSequence, 0);
}

TEST_F(RouteChains, SequenceComesBeforeTool)
{
    Chain(Drawing(At(900, 1, 5), At(800, 9, 3), At(700, 4, 5)));
    EXPECT_EQ(PlacesInX(), (Xs{800, 900, 700}));
}

TEST_F(RouteChains, EqualSequencesGoByToolThenByNearness)
{
    Chain(Drawing(At(900, 2, 5), At(800, 1, 5), At(700, 1, 5), At(600, 0, 7)));
    EXPECT_EQ(PlacesInX(), (Xs{800, 700, 900, 600}));
}

TEST_F(RouteChains, NegativeSequencesComeFirst)
{
    Chain(Drawing(At(900, 0, 4), At(800, 0, 0), At(700, 0, -3)));
    EXPECT_EQ(PlacesInX(), (Xs{700, 800, 900}));
    EXPECT_EQ(Run.MinSequence, -3);
}

TEST_F(RouteChains, WithoutASequenceAboveZeroTheToolsOrderStands)
{
    Chain(Drawing(At(900, 1, 0), At(800, 0, -2), At(700, 0, -3)));
    EXPECT_EQ(PlacesInX(), (Xs{800, 700, 900}));
    EXPECT_EQ(Run.MaxSequence, 0);
    EXPECT_EQ(Run.MinSequence, -3);
}

TEST_F(RouteChains, SequencesSeenElsewhereCountToo)
{
    LayRoutes(Drawing(At(900, 0, 0), At(800, 0, -3)));
    Run.MaxSequence = 12; // of a layer
    EXPECT_TRUE(ChainRoutes());
    EXPECT_EQ(PlacesInX(), (Xs{800, 900}));
    EXPECT_EQ(Run.MaxSequence, 12);
}

TEST_F(RouteChains, AnyRecordWidensTheRangeOfSequences)
{
    Segments line = At(900, 0, 1);
    line[1].Sequence = 8;
    Chain(Drawing(line, At(800, 0, 2)));
    EXPECT_EQ(PlacesInX(), (Xs{900, 800})); // the chain's is that of its first record
    EXPECT_EQ(Run.MaxSequence, 8);
}

TEST_F(RouteChains, KeyAboveNinetyThousandDropsOut)
{
    LayRoutes(Drawing(At(900, 0, 0), At(800, 0, 1)));
    Run.MinSequence = -89990; // it only falls, from drawing to drawing
    EXPECT_TRUE(ChainRoutes());
    EXPECT_EQ(PlacesInX(), (Xs{900}));
    LayRoutes(Drawing(At(900), At(800)));
    Run.MinSequence = -99999;
    EXPECT_TRUE(ChainRoutes()); // no sequence: no sort
    EXPECT_EQ(PlacesInX(), (Xs{900, 800}));
}

TEST_F(RouteChains, StartMarkTakesTheSequenceOfThePathBehindIt)
{
    Segments mark = Polyline({{950, 0}, {950, 5}}, -4), polyline = Polyline({{950, 5}, {980, 5}});
    for (RouteSegment& record : polyline)
        record.Sequence = 7;
    Chain(Drawing(mark, polyline, At(100, 0, 6)));
    EXPECT_EQ(PlacesInX(), (Xs{100, 950}));
    ASSERT_EQ(KindsNow(), (std::vector<int>{-1, 1, -4, 4, -5, 5}));
    EXPECT_EQ(RouteSegments[3].Sequence, 7);
    EXPECT_EQ(RouteSegments[4].Sequence, 7);
    EXPECT_EQ(Run.MaxSequence, 7);
}

TEST_F(RouteChains, StartMarksOwnSequenceDoesNotCount)
{
    Segments mark = Polyline({{950, 0}, {950, 5}}, -4);
    mark[0].Sequence = 90;
    mark[1].Sequence = -90;
    Chain(Drawing(mark, At(100, 0, 6)));
    EXPECT_EQ(Run.MaxSequence, 6);
    EXPECT_EQ(Run.MinSequence, 0);
    EXPECT_EQ(RouteSegments[1].Sequence, 6); // of the next chain, where nothing is linked
}

TEST_F(RouteChains, StartMarkAtTheEndKeepsItsSequence)
{
    Segments mark = Polyline({{100, 0}, {100, 5}}, -4);
    mark[0].Sequence = 3;
    mark[1].Sequence = 4;
    Chain(Drawing(At(900, 0, 6), mark));
    ASSERT_EQ(KindsNow(), (std::vector<int>{-4, 4, -1, 1}));
    EXPECT_EQ(RouteSegments[1].Sequence, 3);
    EXPECT_EQ(RouteSegments[2].Sequence, 4);
}

// ---- Copy out

TEST_F(RouteChains, FirstEntityDecidesForItsChain)
{
    Segments first = Line({0, 0}, {100, 0}), second = Line({100, 0}, {200, 0});
    for (RouteSegment& record : first) {
        record.ToolNo = 4;
        record.Diameter = 8;
        record.Comp = "G41";
        record.Speed = 18000;
        record.Feed = 1000;
        record.Tool = "04";
        record.Z = 5;
    }
    first[1].Speed = 12000;
    for (RouteSegment& record : second) {
        record.ToolNo = 1;
        record.Diameter = 20;
        record.Comp = "G42";
        record.Speed = 9000;
        record.Feed = 2000;
        record.Tool = "01";
        record.Z = 6;
        record.MCode = 3;
    }
    Chain(Drawing(first, second));
    ASSERT_EQ(ChainLengthsNow(), (std::vector<std::size_t>{4}));
    for (const RouteSegment& record : SegmentsNow()) {
        EXPECT_EQ(record.ToolNo, 4);
        EXPECT_EQ(record.Diameter, 8);
        EXPECT_TRUE(record.Comp == "G41");
        EXPECT_EQ(record.Speed, 18000);
    }
    EXPECT_EQ(RouteSegments[2].Feed, 1000);
    for (Long i = 3; i <= 4; ++i) { // all else stays its own
        EXPECT_EQ(RouteSegments[i].Feed, 2000);
        EXPECT_TRUE(RouteSegments[i].Tool == "01");
        EXPECT_EQ(RouteSegments[i].Z, 6);
        EXPECT_EQ(RouteSegments[i].MCode, 3);
    }
}

TEST_F(RouteChains, ChainsAreWrittenWhole)
{
    Chain(Drawing(At(900, 2), Line({0, 0}, {100, 0}), Line({100, 0}, {200, 0}), At(800, 1)));
    EXPECT_EQ(ChainStartsNow(), (Points{{0, 0}, {800, 0}, {900, 0}}));
    EXPECT_EQ(ChainLengthsNow(), (std::vector<std::size_t>{4, 2, 2}));
    EXPECT_EQ(Run.SegmentCount, 8);
}

TEST_F(RouteChains, ChainingClearsTheMarksOfTheOrder)
{
    Chain(Drawing(Line({0, 0}, {100, 0}), Line({100, 0}, {200, 0})));
    for (const RouteSegment& record : SegmentsNow())
        EXPECT_EQ(record.Flag, 0);
}

// ---- Depths of arcs

TEST_F(RouteChains, ArcWithoutDepthTakesThatOfTheRecordBeforeIt)
{
    Segments arc = Arc({100, 50}, {100, 0}, {50, 50}, 270, 180);
    arc[0].Z = arc[1].Z = 0;
    Chain(Drawing(Line({200, 0}, {100, 0}), arc));
    ASSERT_EQ(KindsNow(), (std::vector<int>{-1, 1, -3, 3}));
    EXPECT_EQ(RouteSegments[3].Z, 10);
    EXPECT_EQ(RouteSegments[4].Z, 10);
}

TEST_F(RouteChains, CircleWithoutDepthTakesThatOfItsLine)
{
    RouteCircle circle = Circle({150, 100}, 50);
    circle.Z = 0;
    Chain(Line({0, 100}, {100, 100}), {circle});
    ASSERT_EQ(KindsNow(), (std::vector<int>{-1, 1, -3, 3}));
    EXPECT_EQ(RouteSegments[4].Z, 10);
}

TEST_F(RouteChains, ArcWithoutDepthTakesEvenThatOfTheChainBefore)
{
    Segments arc = Arc({100, 50}, {100, 0}, {50, 50}, 270, 180);
    arc[0].Z = arc[1].Z = 0;
    Segments line = At(900);
    line[1].Z = 4;
    Chain(Drawing(arc, line));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-1, 1, -3, 3}));
    EXPECT_EQ(RouteSegments[3].Z, 4);
    EXPECT_EQ(RouteSegments[4].Z, 4);
}

TEST_F(RouteChains, FirstRecordOfAllAndLinesKeepTheirDepthOfZero)
{
    Segments arc = Arc({900, 50}, {900, 0}, {850, 50}, 270, 180), line = At(100);
    arc[0].Z = 0;
    line[0].Z = line[1].Z = 0;
    Chain(Drawing(arc, line));
    ASSERT_EQ(KindsNow(), (std::vector<int>{-3, 3, -1, 1}));
    EXPECT_EQ(RouteSegments[1].Z, 0);
    EXPECT_EQ(RouteSegments[2].Z, 10);
    EXPECT_EQ(RouteSegments[3].Z, 0);
    EXPECT_EQ(RouteSegments[4].Z, 0);
}

// ---- Meter and abort

std::vector<int> Moves;
int Pumps = 0;
int AbortAtPump = 0;

class RouteChainsProgress : public RouteChains {
  protected:
    void SetUp() override
    {
        RouteChains::SetUp();
        Moves.clear();
        Pumps = AbortAtPump = 0;
        Events.Pump = [] {
            if (++Pumps == AbortAtPump)
                kv::Run.RunState = 1;
        };
        Report.MeterMoved = [](Meter meter, int percent) {
            if (meter == Meter::Processing)
                Moves.push_back(percent);
        };
    }

    // Lines that touch nothing.
    static Segments Lines(int count)
    {
        Segments lines;
        for (int i = 0; i < count; ++i)
            chain_test::Add(lines,
                            Line({static_cast<Single>(i % 100) * 9, static_cast<Single>(i / 100) * 9},
                                 {static_cast<Single>(i % 100) * 9 + 5, static_cast<Single>(i / 100) * 9}));
        return lines;
    }
};

TEST_F(RouteChainsProgress, EachStepAddsFive)
{
    SetMeter(Meter::Processing, 30);
    Moves.clear();
    Chain(At(100));
    EXPECT_EQ(MeterValue(Meter::Processing), 95); // 13 steps
    EXPECT_EQ(Moves, (std::vector<int>{35, 40, 45, 50, 55, 60, 65, 70, 75, 80, 85, 90, 95}));
}

TEST_F(RouteChainsProgress, MeterStaysBelowAHundred)
{
    SetMeter(Meter::Processing, 60);
    Chain(At(100));
    EXPECT_EQ(MeterValue(Meter::Processing), 95);
    SetMeter(Meter::Processing, 94);
    Chain(At(100));
    EXPECT_EQ(MeterValue(Meter::Processing), 99);
}

TEST_F(RouteChainsProgress, AbortIsSeenAtTheFirstStep)
{
    const Segments drawn = Drawing(At(100), Line({0, 0}, {10, 0}), Line({10, 0}, {20, 0}));
    LayRoutes(drawn);
    Run.RunState = 1;
    EXPECT_FALSE(ChainRoutes());
    EXPECT_EQ(PlacesNow().front(), (Point{100, 0})); // not even put in order
    EXPECT_EQ(Pumps, 0);
}

TEST_F(RouteChainsProgress, OtherRunStatesDoNotStop)
{
    for (const Int state : {Int(-1), Int(0), Int(2)}) {
        LayRoutes(At(100));
        Run.RunState = state;
        EXPECT_TRUE(ChainRoutes());
        EXPECT_EQ(ChainStartsNow().size(), 1U);
    }
}

TEST_F(RouteChainsProgress, EventsRunForEachPath)
{
    Chain(Lines(300));
    EXPECT_GE(Pumps, 300);
}

TEST_F(RouteChainsProgress, FewPathsAreAllLinkedBeforeAnAbortIsSeen)
{
    AbortAtPump = 10;
    LayRoutes(Lines(4000));
    EXPECT_FALSE(ChainRoutes());
    EXPECT_GE(Pumps, 4000);
}

TEST_F(RouteChainsProgress, OfMoreThan4000PathsAnAbortIsSeenAtEach)
{
    AbortAtPump = 10;
    LayRoutes(Lines(4001));
    EXPECT_FALSE(ChainRoutes());
    EXPECT_GE(Pumps, 10);
    EXPECT_LE(Pumps, 11);
}

TEST_F(RouteChainsProgress, OneLongChainSeesAnAbortAtEachOfItsPaths)
{
    Segments line;
    for (int i = 0; i < 4001; ++i)
        chain_test::Add(line, Line({static_cast<Single>(i), 0}, {static_cast<Single>(i + 1), 0}));
    AbortAtPump = 10;
    LayRoutes(line);
    EXPECT_FALSE(ChainRoutes());
    EXPECT_GE(Pumps, 10);
    EXPECT_LE(Pumps, 11);
}

TEST_F(RouteChainsProgress, OfMoreThan4000PathsTheLinkingMovesTheMeter)
{
    SetMeter(Meter::Processing, 30);
    Chain(Lines(4000));
    const std::size_t few = Moves.size();
    Moves.clear();
    SetMeter(Meter::Processing, 30);
    Chain(Lines(4001));
    EXPECT_GT(Moves.size(), few + 5);
    EXPECT_TRUE(std::is_sorted(Moves.begin(), Moves.end()));
    EXPECT_LE(*std::max_element(Moves.begin(), Moves.end()), 100);
    EXPECT_EQ(ChainStartsNow().size(), 4001U);
}

} // namespace
} // namespace kv
