// Depth along a route: passes, oscillation, depths of the drawing, coded depths.
#include "routes/route_program.h"

namespace kv::test {
namespace {

class DepthScene : public RouteProgram {
  protected:
    bool Warned() const { return Home.Reported("OSCILLATION IN Z attempted on shallow route!"); }
};

TEST_F(DepthScene, ThreePassesOfAThirdEach)
{
    Expect(Line("ROUTEZ18M3T71", 100, 100, 200, 100) + Line("ROUTEZ18M3T71", 200, 100, 200, 200),
           {Start + "X100Y100Z6", "G1G90X200Y100Z6", "G1G90X200Y200Z6", Start + "X100Y100Z12",
            "G1G90X200Y100Z12", "G1G90X200Y200Z12", Start + "X100Y100Z18", "G1G90X200Y100Z18",
            "G1G90X200Y200Z18"});
}

TEST_F(DepthScene, OnePassIsNoPass)
{
    Expect(Line("ROUTEZ18M1T71", 100, 100, 200, 100), {Start + "X100Y100Z18", "G1G90X200Y100Z18"});
}

TEST_F(DepthScene, OnlyTheRouteWithPassesIsDivided)
{
    Expect(Line("ROUTEZ18M2T71", 100, 100, 200, 100) + Line("ROUTEZ5T72", 300, 100, 400, 100),
           {Start + "X100Y100Z9", "G1G90X200Y100Z9", Start + "X100Y100Z18", "G1G90X200Y100Z18",
            "G88G90G55P5T0172X300Y100Z5", "G1G90X400Y100Z5"});
}

TEST_F(DepthScene, ACodedDepthIsTheSameInEachPass)
{
    Expect(Line("ROUTEZAM2T71", 100, 100, 200, 100),
           {Start + "X100Y100Z=a", "G1G90X200Y100Z=a", Start + "X100Y100Z=a", "G1G90X200Y100Z=a"});
}

TEST_F(DepthScene, AClosedPolylineInPassesComesBackAtEachDepth)
{
    Expect(Polyline("ROUTEZ10M2T71", {{100, 100}, {200, 100}, {200, 200}}, Closed),
           {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5", "G1G90X100Y100Z5",
            Start + "X100Y100Z10", "G1G90X200Y100Z10", "G1G90X200Y200Z10", "G1G90X100Y100Z10"});
}

// A wave of 2 mm over 4 mm of way, 20 deep in a panel of 18.
TEST_F(DepthScene, AThroughCutOscillates)
{
    // Steps of 1, 2, 3, 2 and 1 mm: up by .5, 1 and 1.5 (held at 2), then down by 1 and .5.
    const std::string layer = "ROUTEZ20OZ2T71";
    Expect(Line(layer, 100, 100, 101, 100) + Line(layer, 101, 100, 103, 100) +
               Line(layer, 103, 100, 106, 100) + Line(layer, 106, 100, 108, 100) +
               Line(layer, 108, 100, 109, 100),
           {Start + "X100Y100Z20", "G1G90X101Y100Z20.5", "G1G90X103Y100Z21.5", "G1G90X106Y100Z22",
            "G1G90X108Y100Z21", "G1G90X109Y100Z20.5"});
}

TEST_F(DepthScene, LongMovesGoFromOneEndOfTheWaveToTheOther)
{
    const std::string layer = "ROUTEZ20OZ2T71";
    Expect(Polyline(layer, {{100, 100}, {200, 100}, {300, 100}, {400, 100}}),
           {Start + "X100Y100Z20", "G1G90X200Y100Z22", "G1G90X300Y100Z20", "G1G90X400Y100Z22"});
}

TEST_F(DepthScene, ALongMoveThatWouldEndAsItBeganTakesTheOtherEnd)
{
    // At 1.5 the long way ends at 2, less than half a wave away: so it ends at 0, and goes up from there.
    const std::string layer = "ROUTEZ20OZ2T71";
    Expect(Polyline(layer, {{100, 100}, {101, 100}, {103, 100}, {203, 100}, {204, 100}}),
           {Start + "X100Y100Z20", "G1G90X101Y100Z20.5", "G1G90X103Y100Z21.5", "G1G90X203Y100Z20",
            "G1G90X204Y100Z20.5"});
}

TEST_F(DepthScene, AShallowCutDoesNotOscillateAndSaysSo)
{
    Expect(Line("ROUTEZ10OZ2T71", 100, 100, 200, 100) + Line("ROUTEZ18OZ2T72", 100, 200, 200, 200),
           {Start + "X100Y100Z10", "G1G90X200Y100Z10", "G88G90G55P5T0172X100Y200Z18", "G1G90X200Y200Z18"});
    EXPECT_TRUE(Warned()) << Home.ReportText();
    int times = 0;
    for (const std::string& line : Home.Lines)
        times += line == "OSCILLATION IN Z attempted on shallow route!";
    EXPECT_EQ(times, 1);
}

TEST_F(DepthScene, AThousandthThroughIsThrough)
{
    Expect(Line("ROUTEZ18.001OZ2T71", 100, 100, 200, 100),
           {Start + "X100Y100Z18.001", "G1G90X200Y100Z20.001"});
    EXPECT_FALSE(Warned());
}

TEST_F(DepthScene, EachRouteBeginsItsOwnWave)
{
    // The second one begins nearer the first one's end than the panel's corner and is shorter.
    const std::string layer = "ROUTEZ20OZ2T71";
    Expect(Line(layer, 300, 300, 302, 300) + Line(layer, 200, 200, 201, 200),
           {Start + "X300Y300Z20", "G1G90X302Y300Z21", Start + "X200Y200Z20", "G1G90X201Y200Z20.5"});
}

TEST_F(DepthScene, OscillationComesBeforeThePasses)
{
    // 20 and 22 in two passes.
    Expect(Line("ROUTEZ20OZ2M2T71", 100, 100, 200, 100),
           {Start + "X100Y100Z10", "G1G90X200Y100Z11", Start + "X100Y100Z20", "G1G90X200Y100Z22"});
}

TEST_F(DepthScene, ALineWithoutADepthHasThatOfItsEnds)
{
    Expect(Line("ROUTET71", 100, 100, 200, 100, Pair(30, -3.0) + Pair(31, -4.0)),
           {Start + "X100Y100Z3", "G1G90X200Y100Z4"});
}

TEST_F(DepthScene, AnElevationCountsBeforeTheEnds)
{
    // The layer's depth wins over both.
    const std::string raised = Pair(38, 5.0) + Pair(30, -3.0) + Pair(31, -3.0);
    Expect(Line("ROUTET71", 100, 100, 200, 100, raised), {Start + "X100Y100Z5", "G1G90X200Y100Z5"});
    Expect(Line("ROUTEZ10T71", 100, 100, 200, 100, raised), {Start + "X100Y100Z10", "G1G90X200Y100Z10"});
}

TEST_F(DepthScene, AnArcWithoutADepthGoesOnAtTheOneBefore)
{
    Expect(Line("ROUTET71", 100, 100, 200, 100, Pair(30, 3.0) + Pair(31, 3.0)) +
               Arc("ROUTET71", 200, 150, 50, 270, 0),
           {Start + "X100Y100Z3", "G1G90X200Y100Z3", "G38G90X200Y150A0.00Z3"});
}

} // namespace
} // namespace kv::test
