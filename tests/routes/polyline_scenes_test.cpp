// Polylines: open and closed, bulged, tapered ones as start marks, outlines along the panel's edge,
// closed ones that begin in the middle of a side.
#include "routes/route_program.h"

namespace kv::test {
namespace {

class PolylineScene : public RouteProgram {
  protected:
    const std::string Route = "ROUTEZ5T71";
    const std::vector<Vertex> Square = {{100, 100}, {200, 100}, {200, 200}, {100, 200}};

    static std::string Mark(const std::string& layer, double x1, double y1, double x2, double y2)
    {
        return Polyline(layer, {{x1, y1}, {x2, y2}}, Arrow);
    }
};

TEST_F(PolylineScene, AnOpenOneEndsAtItsLastVertex)
{
    Expect(Polyline(Route, Square),
           {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5", "G1G90X100Y200Z5"});
}

TEST_F(PolylineScene, AClosedOneComesBack)
{
    const ProgramText around = {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5", "G1G90X100Y200Z5",
                                "G1G90X100Y100Z5"};
    Expect(Polyline(Route, Square, Closed), around);
    Expect(Lwpolyline(Route, Square, Closed), around);
}

TEST_F(PolylineScene, BulgesAreArcsWithTheirRadius)
{
    // Bulge 1: a half circle over 100 mm. Bulge -.5: s = 25, (2500 + 625) / 50 = 62.5, clockwise. Bulge
    // 1.5: s = 75, (2500 + 5625) / 150 = 54.167, the long way round.
    Expect(
        Polyline(Route, {{100, 100, 1}, {200, 100, -0.5}, {200, 200, 1.5}, {100, 200}}),
        {Start + "X100Y100Z5", "G38G90X200Y100U50Z5", "G37G90X200Y200U62.5Z5", "G38G90X100Y200U-54.167Z5"});
}

TEST_F(PolylineScene, TheClosingStepHasTheLastVertexsBulge)
{
    Expect(Polyline(Route, {{100, 100}, {200, 100}, {200, 200, 1}}, Closed),
           // From (200, 200) to (100, 100): half the chord is 70.711, which is the radius.
           {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5", "G38G90X100Y100U70.711Z5"});
}

TEST_F(PolylineScene, ABulgeWithoutAChordGivesNoLine)
{
    Expect(Polyline(Route, {{100, 100, 1}, {100, 100}, {200, 100}}),
           {Start + "X100Y100Z5", "G1G90X200Y100Z5"});
}

TEST_F(PolylineScene, NothingIsLinkedToAPolyline)
{
    // The line's end lies at the polyline's start, so the polyline goes on; the line at its end does not.
    Expect(
        Line(Route, 50, 100, 100, 100) + Polyline(Route, {{100, 100}, {200, 100}}) +
            Line(Route, 200, 100, 200, 200),
        {Start + "X200Y100Z5", "G1G90X200Y200Z5", Start + "X50Y100Z5", "G1G90X100Y100Z5", "G1G90X200Y100Z5"});
}

TEST_F(PolylineScene, APolylineIsNeverTurned)
{
    // Its end lies at the line's end: two routes.
    Expect(Line(Route, 50, 100, 100, 100) + Polyline(Route, {{200, 100}, {100, 100}}),
           {Start + "X200Y100Z5", "G1G90X100Y100Z5", Start + "X50Y100Z5", "G1G90X100Y100Z5"});
}

TEST_F(PolylineScene, AStartMarkLeadsToItsContour)
{
    // The mark gives no lines; the contour begins where it is drawn to begin.
    const ProgramText around = {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5", "G1G90X100Y200Z5",
                                "G1G90X100Y100Z5"};
    Expect(Polyline(Route, Square, Closed) + Mark(Route, 90, 100, 100, 100), around);
    // Either end of the mark may touch it.
    Expect(Polyline(Route, Square, Closed) + Mark(Route, 100, 100, 90, 100), around);
}

TEST_F(PolylineScene, AStartMarkChoosesTheFirstOfManyLines)
{
    // Without it the first line drawn would be the first one cut.
    const std::string square = Line(Route, 200, 100, 200, 200) + Line(Route, 200, 200, 100, 200) +
                               Line(Route, 100, 200, 100, 100) + Line(Route, 100, 100, 200, 100);
    Expect(square, {Start + "X200Y100Z5", "G1G90X200Y200Z5", "G1G90X100Y200Z5", "G1G90X100Y100Z5",
                    "G1G90X200Y100Z5"});
    Expect(
        square + Mark(Route, 90, 100, 100, 100),
        {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5", "G1G90X100Y200Z5", "G1G90X100Y100Z5"});
}

// Drawn away from the contour, the mark is turned; the contour is not, and its hand counts.
TEST_F(PolylineScene, BehindAMarkTheContoursOwnHandCounts)
{
    const std::string layer = "ROUTEZ5T71L5";
    const ProgramText cut = {Start + "G41R5X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5"};
    for (const bool away : {true, false})
        Expect(Polyline(layer, {{100, 100}, {200, 100}, {200, 200}}) +
                   (away ? Mark(layer, 100, 100, 90, 100) : Mark(layer, 90, 100, 100, 100)),
               cut);
    // A line that is turned behind the mark has changed hands.
    Expect(Line(layer, 200, 100, 100, 100) + Mark(layer, 90, 100, 100, 100),
           {Start + "G42R5X100Y100Z5", "G1G90X200Y100Z5"});
}

// The mark hands its place on to the closing record, which starts nothing.
TEST_F(PolylineScene, AClosedMarkWithoutAContourFailsTheJobWithItsLayer)
{
    EXPECT_FALSE(Home.Convert(Drawing(Panel + Polyline(Route, {{90, 100}, {100, 100}}, Closed + Arrow))));
    EXPECT_TRUE(Home.Reported((Home.Folder / "DOOR.DXF").string() +
                              ": Layer ROUTEZ5T71: a move stands in front of its route's start"))
        << Home.ReportText();
    EXPECT_FALSE(Home.HasProgram());
}

TEST_F(PolylineScene, AMarkWithAZIsALineDownToTheContour)
{
    // Z 3 where it begins, 0 where it meets the polyline, which goes on at its own depth.
    const std::string mark = Polyline(Route, {{90, 100, 0, 0, 0, 3}, {100, 100, 0, 0, 0, 3}}, Arrow);
    Expect(Polyline(Route, {{100, 100}, {200, 100}, {200, 200}}) + mark,
           {Start + "X90Y100Z3", "G1G90X100Y100Z0", "G1G90X200Y100Z5", "G1G90X200Y200Z5"});
}

TEST_F(PolylineScene, AClosedOneIsNotLinkedBehindThatLine)
{
    const std::string mark = Polyline(Route, {{90, 100, 0, 0, 0, 3}, {100, 100, 0, 0, 0, 3}}, Arrow);
    Expect(Polyline(Route, Square, Closed) + mark,
           {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5", "G1G90X100Y200Z5", "G1G90X100Y100Z5",
            Start + "X90Y100Z3", "G1G90X100Y100Z0"});
}

TEST_F(PolylineScene, AMarkWithAZIsAStraightLineWhateverItsWidths)
{
    const std::string mark =
        Polyline(Route, {{90, 100, 0, 0, 0, 3}, {100, 100, 0, 0, 0, 3}}, Pair(40, 0.0) + Pair(41, 2.0));
    Expect(Polyline(Route, {{100, 100}, {200, 100}}) + mark,
           {Start + "X90Y100Z3", "G1G90X100Y100Z0", "G1G90X200Y100Z5"});
}

TEST_F(PolylineScene, WithTheMarkLeftInPlaceALoopOfLinesRunsTheOtherWay)
{
    // The lines begin .0625 mm beside the mark's end and close .0156 mm beside it (30 and less counts as
    // closed, in thousandths); no two ends touch so well that one of the lines came to the front.
    const std::string loop = Mark(Route, 90, 100, 100, 100) + Line(Route, 100.0625, 100, 200, 100) +
                             Line(Route, 200, 100.0625, 200, 200) +
                             Line(Route, 200, 200.0625, 100, 100.015625);
    Expect(loop, {Start + "X100.063Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5", "G1G90X100Y100.016Z5"},
           AcrossGaps);
    // Turned, all points are one polyline.
    Config.SPDA = "no";
    Expect(loop, {Start + "X100Y100.016Z5", "G1G90X200Y200.063Z5", "G1G90X200Y200Z5", "G1G90X200Y100.063Z5",
                  "G1G90X200Y100Z5", "G1G90X100.063Y100Z5"});
}

TEST_F(PolylineScene, ALongTaperedOneIsCutAsAPlainOneAndItsWidthsAreTold)
{
    for (const char* const marks : {"YES", "NO"}) {
        Config.SPDA = marks;
        Expect(Polyline(Route, Square, Closed + Arrow),
               {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5", "G1G90X100Y200Z5",
                "G1G90X100Y100Z5"});
        EXPECT_TRUE(Home.Reported(
            "Layer ROUTEZ5T71: the widths of 1 polyline with more than 2 points are passed over"))
            << Home.ReportText();
    }
    // Open ones, and widths of the first point; its bulge is cut as drawn.
    Expect(Polyline(Route, {{100, 100, 1, 3, 0}, {200, 100}, {200, 200}}) +
               Polyline(Route, {{100, 300}, {200, 300}, {300, 300}}, Arrow),
           {Start + "X100Y300Z5", "G1G90X200Y300Z5", "G1G90X300Y300Z5", Start + "X100Y100Z5",
            "G38G90X200Y100U50Z5", "G1G90X200Y200Z5"});
    EXPECT_TRUE(
        Home.Reported("Layer ROUTEZ5T71: the widths of 2 polylines with more than 2 points are passed over"))
        << Home.ReportText();
}

TEST_F(PolylineScene, WidthsOfAStartMarkAreNotTold)
{
    EXPECT_TRUE(
        Home.Convert(Drawing(Panel + Polyline(Route, Square, Closed) + Mark(Route, 90, 100, 100, 100))));
    EXPECT_EQ(Home.ReportText().find("widths"), std::string::npos) << Home.ReportText();
}

TEST_F(PolylineScene, WithCornerCompAClosedOneBeginsInTheMiddleOfItsFirstSide)
{
    const std::string cutOut = Polyline("ROUTEZ5T71R5", Square, Closed);
    const std::string start = Start + "G42R5";
    const ProgramText atCorner = {start + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5",
                                  "G1G90X100Y200Z5", "G1G90X100Y100Z5"};
    const ProgramText inMiddle = {start + "X150Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5",
                                  "G1G90X100Y200Z5",    "G1G90X100Y100Z5", "G1G90X150Y100Z5"};
    Expect(cutOut, atCorner);
    Config.CornerComp = 1;
    Expect(cutOut, inMiddle);
    Expect(Instructions({"CORNERCOMP OFF"}) + cutOut, atCorner);
    Config.CornerComp = 0;
    Expect(Instructions({"CORNERCOMP ON"}) + cutOut, inMiddle);
}

TEST_F(PolylineScene, CornerCompLeavesOpenAndRoundBeginningsAlone)
{
    Config.CornerComp = 1;
    Expect(Polyline(Route, Square),
           {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5", "G1G90X100Y200Z5"});
    Expect(Polyline(Route, {{100, 100, 1}, {200, 100}, {200, 200}}, Closed),
           {Start + "X100Y100Z5", "G38G90X200Y100U50Z5", "G1G90X200Y200Z5", "G1G90X100Y100Z5"});
}

// The outline of a part along the whole panel, with a notch in its upper edge and one in its right edge.
TEST_F(PolylineScene, RemBorderLeavesWhatDoesNotRunAlongTheEdges)
{
    const std::string outline = Polyline("ROUTEZ19T71",
                                         {{0, 0},
                                          {600, 0},
                                          {600, 100},
                                          {500, 100},
                                          {500, 200},
                                          {600, 200},
                                          {600, 400},
                                          {350, 400},
                                          {350, 300},
                                          {250, 300},
                                          {250, 400},
                                          {0, 400}},
                                         Closed);
    Config.RemoveBorderRoute = 1;
    const ProgramText notches = {Start + "X350Y400Z19", "G1G90X350Y300Z19",    "G1G90X250Y300Z19",
                                 "G1G90X250Y400Z19",    Start + "X600Y100Z19", "G1G90X500Y100Z19",
                                 "G1G90X500Y200Z19",    "G1G90X600Y200Z19"};
    Expect(outline, notches);
    Config.RemoveBorderRoute = 0;
    Expect(Instructions({"REMBORDER ON"}) + outline, notches);
}

TEST_F(PolylineScene, RemBorderWantsFourVerticesOnEachPairOfEdges)
{
    // Three on left and right edges, so the outline stays whole.
    Config.RemoveBorderRoute = 1;
    Expect(Polyline("ROUTEZ19T71", {{0, 0}, {600, 0}, {600, 400}, {300, 400}, {300, 200}}, Closed),
           {Start + "X0Y0Z19", "G1G90X600Y0Z19", "G1G90X600Y400Z19", "G1G90X300Y400Z19", "G1G90X300Y200Z19",
            "G1G90X0Y0Z19"});
}

TEST_F(PolylineScene, RemBorderOfANestedPartKeepsTheCutsBetweenTheParts)
{
    // Two parts on one sheet, both drawn along the sheet's edges: the cut at X 300 remains, once from
    // each part. The left part ends its cut at (300, 400); the right one begins at (300, 400).
    Config.RemoveBorderRoute = 1;
    const std::string outline =
        Polyline("ROUTEZ19T71", {{0, 0}, {300, 0}, {300, 400}, {0, 400}, {0, 200}, {0, 100}}, Closed) +
        Polyline("ROUTEZ19T71", {{600, 100}, {600, 400}, {300, 400}, {300, 0}, {600, 0}, {600, 50}}, Closed);
    Expect(outline, {Start + "X300Y400Z19", "G1G90X300Y0Z19", Start + "X300Y0Z19", "G1G90X300Y400Z19"});
}

} // namespace
} // namespace kv::test
