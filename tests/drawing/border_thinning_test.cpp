// Outlines along the panel's edges: which are thinned, and what is left of them.
#include "drawing/border_thinning.h"

#include "drawing/route_scene.h"

namespace kv {
namespace {

using namespace test;
using Places = std::vector<KindAndPlace>;

// The panel is (100, 50) to (700, 450).
struct BorderThinning : RouteScene {
    void ReadThinned(const std::string& entities) { Read(Instructions({"REMBORDER ON"}) + entities); }
};

const std::string Closed = Pair(70, "1");

// The whole outline with a notch in its upper edge.
std::vector<Vertex> Notched()
{
    return {{100, 50}, {700, 50}, {700, 450}, {450, 450}, {450, 350}, {350, 350}, {350, 450}, {100, 450}};
}

TEST_F(BorderThinning, OnlyTheNotchOfAnOutlineStays)
{
    ReadThinned(Polyline("ROUTEZ5", Notched(), Closed));
    EXPECT_EQ(KindsAndPlaces(Segments),
              (Places{{-5, 450, 450, 5}, {5, 450, 350, 5}, {5, 350, 350, 5}, {5, 350, 450, 5}}));
}

TEST_F(BorderThinning, OutlineStaysWithoutTheSwitch)
{
    Read(Polyline("ROUTEZ5", Notched(), Closed));
    EXPECT_EQ(Segments.size(), 9U);
}

TEST_F(BorderThinning, PlainOutlineLeavesNothing)
{
    ReadThinned(Polyline("ROUTEZ5", {{100, 50}, {700, 50}, {700, 450}, {100, 450}}, Closed) +
                Line("ROUTEZ5", 150, 90, 300, 90));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-1, 150, 90, 5}, {1, 300, 90, 5}}));
    EXPECT_TRUE(Uncut().empty());
}

// Four vertices in X and four in Y must lie on edges: here 3 and 4, and 4 and 3.
TEST_F(BorderThinning, ThreeVerticesOnTheEdgesOfADirectionAreNoOutline)
{
    ReadThinned(Polyline("ROUTEZ5", {{100, 50}, {700, 50}, {700, 450}, {400, 450}}) +
                Polyline("ROUTEZ5", {{100, 50}, {700, 50}, {700, 450}, {100, 300}}));
    EXPECT_EQ(Segments.size(), 8U);
}

TEST_F(BorderThinning, ClosingRecordDoesNotCount)
{
    // X: 100, 700, 700 and, closing, 100 again.
    ReadThinned(Polyline("ROUTEZ5", {{100, 50}, {700, 50}, {700, 450}, {400, 450}}, Closed));
    EXPECT_EQ(Segments.size(), 5U);
}

TEST_F(BorderThinning, StepToTheClosingRecordIsWalked)
{
    const std::vector<Vertex> outline{{100, 250}, {100, 50}, {700, 50}, {700, 450}, {300, 450}};
    ReadThinned(Polyline("ROUTEZ5", outline));
    EXPECT_TRUE(Segments.empty());
    ReadThinned(Polyline("ROUTEZ5", outline, Closed));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 300, 450, 5}, {5, 100, 250, 5}}));
}

TEST_F(BorderThinning, PointsLeftOfThePanelOrBelowItCountWhereverTheyLie)
{
    // X: 100, 700, 700 and 50. The last step, from (50, 450) to (100, 50), lies on no edge.
    ReadThinned(Polyline("ROUTEZ5", {{100, 50}, {700, 50}, {700, 450}, {50, 450}}, Closed));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 50, 450, 5}, {5, 100, 50, 5}}));
    // Y: 450, 450, 50 and 20.
    ReadThinned(Polyline("ROUTEZ5", {{100, 450}, {700, 450}, {700, 50}, {100, 20}}, Closed));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 700, 50, 5}, {5, 100, 20, 5}}));
}

TEST_F(BorderThinning, PointsRightOfThePanelOrAboveItDoNotCount)
{
    ReadThinned(Polyline("ROUTEZ5", {{100, 50}, {700, 50}, {750, 450}, {100, 450}}, Closed));
    EXPECT_EQ(Segments.size(), 5U);
    ReadThinned(Polyline("ROUTEZ5", {{100, 50}, {700, 50}, {700, 480}, {100, 450}}, Closed));
    EXPECT_EQ(Segments.size(), 5U);
}

TEST_F(BorderThinning, StepsBesideThePanelStayAndRunsAtBothEndsAreNotJoined)
{
    ReadThinned(
        Polyline("ROUTEZ5", {{50, 100}, {50, 400}, {300, 450}, {700, 450}, {700, 50}, {300, 50}}, Closed));
    EXPECT_EQ(
        KindsAndPlaces(Segments),
        (Places{{-5, 50, 100, 5}, {5, 50, 400, 5}, {5, 300, 450, 5}, {-5, 300, 50, 5}, {5, 50, 100, 5}}));
}

TEST_F(BorderThinning, StepBetweenTwoEdgesStays)
{
    // The corner at (700, 450) is cut off.
    ReadThinned(Polyline("ROUTEZ5", {{100, 50}, {700, 50}, {700, 400}, {650, 450}, {100, 450}}, Closed));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 700, 400, 5}, {5, 650, 450, 5}}));
}

TEST_F(BorderThinning, HundredthFromTheEdgeIsTheLimit)
{
    // .0078125 is a Single's own; .01171875 is beyond the limit.
    const double near = .0078125;
    const double far = .01171875;
    ReadThinned(Polyline("ROUTEZ5",
                         {{100 + near, 50 + near},
                          {700 - near, 50 + near},
                          {700 + near, 450 - near},
                          {100 - near, 450 + near}},
                         Closed));
    EXPECT_TRUE(Segments.empty());
    for (int corner = 0; corner < 4; ++corner) {
        std::vector<Vertex> outline{{100, 50}, {700, 50}, {700, 450}, {100, 450}};
        outline[static_cast<std::size_t>(corner)].X += corner % 3 == 0 ? far : -far; // inwards
        ReadThinned(Polyline("ROUTEZ5", outline, Closed));
        EXPECT_EQ(Segments.size(), 5U) << corner;
    }
}

TEST_F(BorderThinning, StepThatLeavesTheEdgeByMoreThanAHundredthStays)
{
    // Five vertices count in X; the one off the left edge does not.
    const Single off = 100.01171875F;
    ReadThinned(Polyline("ROUTEZ5", {{100, 50}, {700, 50}, {700, 450}, {100, 450}, {off, 250}}, Closed));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 100, 450, 5}, {5, off, 250, 5}, {5, 100, 50, 5}}));
}

TEST_F(BorderThinning, BulgedStepCountsLikeAStraightOneAndRecordsKeepTheirBulge)
{
    std::vector<Vertex> outline = Notched();
    outline[0].Bulge = .5;  // dropped step
    outline[4].Bulge = .25; // kept step
    outline[6].Bulge = .75; // the last record of the run
    ReadThinned(Polyline("ROUTEZ5", outline, Closed));
    EXPECT_EQ(KindsAndPlaces(Segments),
              (Places{{-5, 450, 450, 5}, {5, 450, 350, 5}, {5, 350, 350, 5}, {5, 350, 450, 5}}));
    EXPECT_EQ(Segments[0].Aux2, 0);
    EXPECT_EQ(Segments[1].Aux1, -1);
    EXPECT_EQ(Segments[1].Aux2, .25F);
    EXPECT_EQ(Segments[3].Aux2, .75F);
}

TEST_F(BorderThinning, RunTakesTheDepthOfItsFirstRecord)
{
    std::vector<Vertex> outline = Notched();
    for (std::size_t i = 0; i < outline.size(); ++i)
        outline[i].Z = -1.0 - static_cast<double>(i);
    ReadThinned(Polyline("ROUTE", outline, Closed));
    EXPECT_EQ(KindsAndPlaces(Segments),
              (Places{{-5, 450, 450, -4}, {5, 450, 350, -4}, {5, 350, 350, -4}, {5, 350, 450, -4}}));
}

TEST_F(BorderThinning, TwoNotchesAreTwoRunsWithTheirOwnDepths)
{
    const std::vector<Vertex> outline{
        {100, 50, 0, 0, 0, -1}, {300, 50, 0, 0, 0, -2},  {300, 150, 0, 0, 0, -3}, {400, 50, 0, 0, 0, -4},
        {700, 50, 0, 0, 0, -5}, {700, 450, 0, 0, 0, -6}, {400, 300, 0, 0, 0, -7}, {100, 450, 0, 0, 0, -8}};
    ReadThinned(Polyline("ROUTE", outline, Closed));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 300, 50, -2},
                                                {5, 300, 150, -2},
                                                {5, 400, 50, -2},
                                                {-5, 700, 450, -6},
                                                {5, 400, 300, -6},
                                                {5, 100, 450, -6}}));
}

TEST_F(BorderThinning, TaperedOutlineLeavesEvenRuns)
{
    // The run begins with the first record: its widths must not be read as a bulge.
    ReadThinned(Polyline(
        "ROUTEZ5", {{450, 450, .125}, {350, 450.5}, {100, 450}, {100, 250}, {100, 50}, {700, 50}, {700, 450}},
        Pair(40, 6) + Pair(41, 2)));
    // X: 100, 100, 100, 700, 700; Y: 450, 450, 50, 50, 450.
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 450, 450, 5}, {5, 350, 450.5, 5}, {5, 100, 450, 5}}));
    EXPECT_EQ(Segments[0].Aux1, -1);
    EXPECT_EQ(Segments[0].Aux2, .125F);
    EXPECT_EQ(Segments[0].ParamA, 0);
}

TEST_F(BorderThinning, CountsBeginAnewForEachPolyline)
{
    ReadThinned(Polyline("ROUTEZ5", {{100, 50}, {700, 50}}) + Polyline("ROUTEZ5", {{700, 450}, {100, 450}}));
    EXPECT_EQ(Segments.size(), 4U);
}

TEST_F(BorderThinning, PolylineInFrontStaysAsItIs)
{
    ReadThinned(Line("ROUTEZ5", 100, 50, 700, 50) + Polyline("ROUTEZ5", Notched(), Closed) +
                Line("ROUTEZ5", 100, 450, 700, 450));
    ASSERT_EQ(Segments.size(), 8U);
    EXPECT_EQ(Segments[0].Kind, -1);
    EXPECT_EQ(Segments[1].X, 700);
    EXPECT_EQ(Segments[2].Kind, -5);
    EXPECT_EQ(Segments[6].Kind, -1);
}

TEST_F(BorderThinning, NestedPartInTheCornerOfASheetIsCutOnlyInsideTheSheet)
{
    // Vertices along the two shared edges, as a nesting program leaves them.
    ReadThinned(
        Polyline("ROUTEZ18",
                 {{100, 50}, {150, 50}, {200, 50}, {300, 50}, {300, 200}, {100, 200}, {100, 150}, {100, 100}},
                 Closed) +
        Polyline("ROUTEZ18", {{310, 60}, {500, 60}, {500, 200}, {310, 200}}, Closed));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 300, 50, 18},
                                                {5, 300, 200, 18},
                                                {5, 100, 200, 18},
                                                {-5, 310, 60, 18},
                                                {5, 500, 60, 18},
                                                {5, 500, 200, 18},
                                                {5, 310, 200, 18},
                                                {5, 310, 60, 18}}));
}

} // namespace
} // namespace kv
