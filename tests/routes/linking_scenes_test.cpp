// Paths that meet, fork and close, and the order of what does not meet.
#include "routes/route_program.h"

namespace kv::test {
namespace {

class LinkingScene : public RouteProgram {
  protected:
    const std::string Route = "ROUTEZ5T71";

    // A line to (200, 100) and one on from `gap` behind it. Unlinked, the second line is cut first: it
    // begins nearer the upper right corner.
    std::string Corner(double gap)
    {
        return Line(Route, 100, 100, 200, 100) + Line(Route, 200 + gap, 100, 200 + gap, 200);
    }
    // An end touches within the tolerance: the step to the second line's start has no line of its own.
    ProgramText OneRoute(const std::string& x)
    {
        return {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X" + x + "Y200Z5"};
    }
    ProgramText TwoRoutes(const std::string& x)
    {
        return {Start + "X" + x + "Y100Z5", "G1G90X" + x + "Y200Z5", Start + "X100Y100Z5", "G1G90X200Y100Z5"};
    }
};

TEST_F(LinkingScene, LinesThatMeetAreOneRoute)
{
    Expect(Corner(0), OneRoute("200"));
}

TEST_F(LinkingScene, TheToleranceIsATenthOfAMillimetreWhenNothingIsSet)
{
    Expect(Corner(0.09375), OneRoute("200.094"), AcrossGaps);
    Expect(Corner(0.109375), TwoRoutes("200.109"));
}

TEST_F(LinkingScene, JustBelowTheToleranceTheyMeet)
{
    Config.RouteTolerance = "0.5";
    Expect(Corner(0.4375), OneRoute("200.438"), AcrossGaps);
}

TEST_F(LinkingScene, AtTheToleranceTheyDoNotMeet)
{
    Config.RouteTolerance = "0.5";
    Expect(Corner(0.5), TwoRoutes("200.5"));
}

TEST_F(LinkingScene, JustAboveTheToleranceTheyDoNotMeet)
{
    Config.RouteTolerance = "0.5";
    Expect(Corner(0.5625), TwoRoutes("200.563"));
}

TEST_F(LinkingScene, AnInchDrawingTakesTheSettingInMillimetres)
{
    Config.RouteTolerance = "25.4"; // one inch
    const std::string panel = Rectangle("BORDERZ0.75", 0, 0, 40, 20);
    const auto corner = [&](double x) {
        return Drawing(panel + Line("ROUTEZ.25T71", 5, 5, 10, 5) + Line("ROUTEZ.25T71", x, 5, x, 10));
    };
    const std::string size = "G70X40Y20Z.75T00";
    ASSERT_TRUE(Home.Convert(corner(10.9375))) << Home.ReportText();
    EXPECT_EQ(Home.Program(), Around({Start + "X5Y5Z.25", "G1G90X10Y5Z.25", "G1G90X10.938Y10Z.25"}, size));
    ASSERT_TRUE(Home.Convert(corner(11))) << Home.ReportText();
    EXPECT_EQ(Home.Program(),
              Around({Start + "X11Y5Z.25", "G1G90X11Y10Z.25", Start + "X5Y5Z.25", "G1G90X10Y5Z.25"}, size));
}

TEST_F(LinkingScene, LinesDrawnAgainstTheWayAreTurned)
{
    // The first line heads the chain; the second one's end meets its end.
    Expect(Line(Route, 100, 100, 200, 100) + Line(Route, 200, 200, 200, 100), OneRoute("200"));
    // The second one's end meets the head's start: that way round nothing is turned but the head and the
    // second line, so the chain begins at the head's end.
    Expect(Line(Route, 200, 100, 100, 100) + Line(Route, 200, 200, 200, 100), OneRoute("200"));
}

// The tool stays where it was drawn: left of the first line is above it, and on the way back that is the
// right hand. What stands behind the code stays.
TEST_F(LinkingScene, ATurnedHeadHasItsToolOnTheSideThatWasDrawn)
{
    const std::string left = "ROUTEZ5T71L5.5", right = "ROUTEZ5T71R5.5";
    const ProgramText moves = {"X200Y100Z5", "G1G90X100Y100Z5", "G1G90X100Y200Z5"};
    Expect(Line(left, 100, 100, 200, 100) + Line(left, 100, 100, 100, 200),
           {Start + "G42R5.5" + moves[0], moves[1], moves[2]});
    Expect(Line(right, 100, 100, 200, 100) + Line(right, 100, 100, 100, 200),
           {Start + "G41R5.5" + moves[0], moves[1], moves[2]});
    // Not turned, it keeps its hand.
    Expect(Line(left, 200, 100, 100, 100) + Line(left, 100, 100, 100, 200),
           {Start + "G41R5.5" + moves[0], moves[1], moves[2]});
}

TEST_F(LinkingScene, ATurnedArcHasItsToolOnTheSideThatWasDrawn)
{
    // Both are stored clockwise from (100, 150); the first is run back to there.
    Expect(Arc("ROUTEZ5T71L5", 100, 100, 50, 0, 90) + Arc("ROUTEZ5T71L5", 50, 150, 50, 270, 0),
           {Start + "G42R5X150Y100Z5", "G38G90X100Y100A90.Z5", "G37G90X50Y150A270.Z5"});
}

TEST_F(LinkingScene, AtAForkTheStraightBranchGoesOn)
{
    // The branch is drawn before the way straight on. It is a chain of its own and begins nearer the
    // upper right corner, so it is cut first.
    Expect(Line(Route, 100, 100, 200, 100) + Line(Route, 200, 100, 200, 200) +
               Line(Route, 200, 100, 300, 100),
           {Start + "X200Y100Z5", "G1G90X200Y200Z5", Start + "X100Y100Z5", "G1G90X200Y100Z5",
            "G1G90X300Y100Z5"});
}

TEST_F(LinkingScene, ALineAndAnArcCloseALoop)
{
    // The arc is stored from 180 to 0 degrees and meets the line's end with its end: turned, it runs
    // counter-clockwise to 180.
    Expect(Line(Route, 100, 100, 200, 100) + Arc(Route, 150, 100, 50, 0, 180),
           {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G38G90X150Y100A180.Z5"});
}

TEST_F(LinkingScene, ALoopBeginsWithThePathDrawnFirst)
{
    Expect(Arc(Route, 150, 100, 50, 0, 180) + Line(Route, 100, 100, 200, 100),
           {Start + "X100Y100Z5", "G37G90X150Y100A0.00Z5", "G1G90X100Y100Z5"});
}

TEST_F(LinkingScene, FreeEndsComeToTheFront)
{
    // The middle line is drawn first, yet the chain begins at a free end: that of the second line, which
    // heads the list now. The middle line's end meets its start, so both are turned; the third is turned
    // too.
    Expect(Line(Route, 200, 100, 300, 100) + Line(Route, 300, 100, 300, 200) +
               Line(Route, 100, 100, 200, 100),
           {Start + "X300Y200Z5", "G1G90X300Y100Z5", "G1G90X200Y100Z5", "G1G90X100Y100Z5"});
}

TEST_F(LinkingScene, LayersAreNotLinkedWithEachOther)
{
    // Both begin chains; the second start lies nearer the corner.
    Expect(Line("ROUTEZ5T71", 100, 100, 200, 100) + Line("ROUTEZ6T71", 200, 100, 200, 200),
           {Start + "X200Y100Z6", "G1G90X200Y200Z6", Start + "X100Y100Z5", "G1G90X200Y100Z5"});
}

TEST_F(LinkingScene, FeedsSpeedsAndSlotsHaveTheirWords)
{
    const std::string layer = "ROUTEZ5T71S18F5000FA3000FD2000FR9000EX4L5.5";
    // Lines take their feed from the record before them, an arc from its own first one.
    Expect(Line(layer, 100, 100, 200, 100) + Arc(layer, 200, 150, 50, 270, 0),
           {"G88G90E4F2000B9000G55P5T0171S18000G41R5.5X100Y100Z5", "G1G90F5000X200Y100Z5",
            "G38G90F3000X200Y150A0.00Z5"});
}

TEST_F(LinkingScene, TheNearestChainFollows)
{
    // From (600, 400): the line at (500, 300), then from its end (400, 300) the one at (390, 200), whose
    // end (100, 200) lies nearer (100, 90) than (590, 90).
    Expect(Line(Route, 590, 90, 580, 90) + Line(Route, 100, 90, 110, 90) + Line(Route, 500, 300, 400, 300) +
               Line(Route, 390, 200, 100, 200),
           {Start + "X500Y300Z5", "G1G90X400Y300Z5", Start + "X390Y200Z5", "G1G90X100Y200Z5",
            Start + "X100Y90Z5", "G1G90X110Y90Z5", Start + "X590Y90Z5", "G1G90X580Y90Z5"});
}

TEST_F(LinkingScene, ToolsGoUpWhateverIsNearest)
{
    Expect(Line("ROUTEZ5T73", 500, 300, 400, 300) + Line("ROUTEZ5T72", 100, 100, 200, 100) +
               Line("ROUTEZ5T71", 100, 200, 200, 200),
           {"G88G90G55P5T0171X100Y200Z5", "G1G90X200Y200Z5", "G88G90G55P5T0172X100Y100Z5", "G1G90X200Y100Z5",
            "G88G90G55P5T0173X500Y300Z5", "G1G90X400Y300Z5"});
}

TEST_F(LinkingScene, SequencesGoBeforeTools)
{
    // 5 and 3 of the names, and none, which is the lowest.
    Expect(Line("ROUTE5Z5T71", 500, 300, 400, 300) + Line("ROUTE3Z5T72", 100, 100, 200, 100) +
               Line("ROUTEZ5T73", 100, 200, 200, 200),
           {"G88G90G55P5T0173X100Y200Z5", "G1G90X200Y200Z5", "G88G90G55P5T0172X100Y100Z5", "G1G90X200Y100Z5",
            "G88G90G55P5T0171X500Y300Z5", "G1G90X400Y300Z5"});
}

TEST_F(LinkingScene, AmongEqualSequencesTheToolOrderStands)
{
    Expect(
        Line("ROUTE5Z5T72", 500, 300, 400, 300) + Line("ROUTE5Z5T71", 100, 100, 200, 100),
        {"G88G90G55P5T0171X100Y100Z5", "G1G90X200Y100Z5", "G88G90G55P5T0172X500Y300Z5", "G1G90X400Y300Z5"});
}

TEST_F(LinkingScene, ANegativeToolIsOutOfTheSortAndDropsOut)
{
    Expect(Line("ROUTEZ5T-71", 500, 300, 400, 300) + Line(Route, 100, 100, 200, 100),
           {Start + "X100Y100Z5", "G1G90X200Y100Z5"});
    EXPECT_TRUE(Home.Reported("Layer ROUTEZ5T-71: 1 route is not cut, its tool number is below 0"))
        << Home.ReportText();
}

TEST_F(LinkingScene, WithNothingButANegativeToolThereIsNoProgram)
{
    EXPECT_TRUE(Home.Convert(Drawing(Panel + Line("ROUTEZ5T-71", 500, 300, 400, 300))));
    EXPECT_FALSE(Home.HasProgram());
    EXPECT_TRUE(Home.Reported("No Selected Operations found for PTP")) << Home.ReportText();
}

TEST_F(LinkingScene, LowAndHighToolsHaveGroupTwo)
{
    Expect(Line("ROUTEZ5T5", 100, 100, 200, 100) + Line("ROUTEZ5T105", 100, 200, 200, 200) +
               Line("ROUTEZ5T205", 100, 300, 200, 300),
           {"G88G90G55P5T025X100Y100Z5", "G1G90X200Y100Z5", "G88G90G55P5T01a5X100Y200Z5", "G1G90X200Y200Z5",
            "G88G90G55P5T0205M66X100Y300Z5", "G1G90X200Y300Z5"});
}

TEST_F(LinkingScene, AFlatArcIsALine)
{
    // Radius 1000 and a chord of 5.236 mm (0.3 degrees): a line, unless the drawing says otherwise. The
    // arc is cut from its DXF end to its start.
    const std::string arc = Arc(Route, 200, -900, 1000, 89.85, 90.15);
    Expect(arc, {Start + "X197.382Y99.997Z5", "G1G90X202.618Y99.997Z5"});
    Expect(Instructions({"NOARCSUB"}) + arc, {Start + "X197.382Y99.997Z5", "G37G90X200Y-900A89.85Z5"});
}

} // namespace
} // namespace kv::test
