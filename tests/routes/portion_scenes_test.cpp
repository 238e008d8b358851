// What becomes of the finished lines: programs cut into portions, drillings between tool changes, the
// order of blocks, texts among routes, and what one drawing leaves to the next.
#include "routes/route_program.h"

namespace kv::test {
namespace {

class PortionScene : public RouteProgram {
  protected:
    const std::string Route = "ROUTEZ5T71";
    // Cut in this order: each begins where the one before ends, in X, but for the first.
    const std::string ThreeLines =
        Line(Route, 500, 300, 400, 300) + Line(Route, 390, 300, 300, 300) + Line(Route, 290, 300, 200, 300);
    const std::string Whole = "G71X600Y400Z18T00N9L6";
    const std::string Name = "G150(KORVANTI DXF IMPORT)";
};

TEST_F(PortionScene, ALongProgramIsCutBeforeARoute)
{
    // Nine lines, upper index 8. The first portion would reach line 5, a move; it ends before line 4.
    Config.LineLimit = "5";
    EXPECT_TRUE(Home.Convert(Drawing(Panel + ThreeLines))) << Home.ReportText();
    EXPECT_EQ(Home.Program("DOOR1"),
              (ProgramText{Whole, Name, Start + "X500Y300Z5", "G1G90X400Y300Z5", "M2"}));
    EXPECT_EQ(Home.Program("DOOR2"), (ProgramText{Whole, Name, Start + "X390Y300Z5", "G1G90X300Y300Z5",
                                                  Start + "X290Y300Z5", "G1G90X200Y300Z5", "M2"}));
    EXPECT_FALSE(Home.HasProgram("DOOR3"));
    EXPECT_FALSE(Home.HasProgram("DOOR"));
    EXPECT_TRUE(Home.Reported("Breaking up into multiples...")) << Home.ReportText();
    EXPECT_TRUE(Home.Reported("PORTION1 - DOOR1 COMPLETED.")) << Home.ReportText();
    EXPECT_TRUE(Home.Reported("PORTION2 - DOOR2 COMPLETED.")) << Home.ReportText();
    EXPECT_TRUE(Home.Reported("CONVERSION COMPLETED.  9 Lines")) << Home.ReportText();
}

TEST_F(PortionScene, AtTheLimitTheProgramStaysWhole)
{
    Config.LineLimit = "8";
    Expect(ThreeLines, {Start + "X500Y300Z5", "G1G90X400Y300Z5", Start + "X390Y300Z5", "G1G90X300Y300Z5",
                        Start + "X290Y300Z5", "G1G90X200Y300Z5"});
}

TEST_F(PortionScene, ARouteLongerThanAPortionCannotBeCut)
{
    // The only place to cut is before the route, so the first portion holds nothing; then there is none.
    Config.LineLimit = "5";
    std::vector<Vertex> vertices;
    for (int i = 0; i <= 8; ++i)
        vertices.push_back({100.0 + 10 * i, 100.0 + i % 2});
    EXPECT_FALSE(Home.Convert(Drawing(Panel + Polyline(Route, vertices))));
    EXPECT_EQ(
        Home.Lines,
        (std::vector<std::string>{
            "DOOR", "Processed in 0 Sec.", "Breaking up into multiples...", "PORTION1 - DOOR1 COMPLETED.",
            "Breaking up into multiples...", "Too many segements in single route for portion",
            "Import Aborted", "Parts of the failed program are in the program folder and its index: DOOR1",
            "---------------------------------------***------------------------------------"}));
    EXPECT_EQ(Home.Program("DOOR1"), (ProgramText{"G71X600Y400Z18T00N12L9", Name, "M2"}));
    EXPECT_FALSE(Home.HasProgram("DOOR2"));
    ASSERT_EQ(Run.FailedFiles.size(), 2U);
}

TEST_F(PortionScene, DepthPassesMakeARouteDivisible)
{
    // Two passes of four lines each: one portion each.
    Config.LineLimit = "6";
    EXPECT_TRUE(Home.Convert(
        Drawing(Panel + Polyline("ROUTEZ10M2T71", {{100, 100}, {200, 100}, {200, 200}}, Closed))))
        << Home.ReportText();
    const std::string header = "G71X600Y400Z18T00N11L8";
    EXPECT_EQ(Home.Program("DOOR1"), (ProgramText{header, Name, Start + "X100Y100Z5", "G1G90X200Y100Z5",
                                                  "G1G90X200Y200Z5", "G1G90X100Y100Z5", "M2"}));
    EXPECT_EQ(Home.Program("DOOR2"), (ProgramText{header, Name, Start + "X100Y100Z10", "G1G90X200Y100Z10",
                                                  "G1G90X200Y200Z10", "G1G90X100Y100Z10", "M2"}));
}

// The nearest bore to the upper right corner first: 300, 200, 100.
const std::string ThreeBores =
    Circle("VBOREZ12", 100, 50, 4) + Circle("VBOREZ12", 200, 50, 4) + Circle("VBOREZ12", 300, 50, 4);
const std::string Bore = "G81G90G55P5R54=8X";
const std::string ThreeTools = Line("ROUTEZ5T73", 500, 300, 400, 300) +
                               Line("ROUTEZ5T72", 390, 300, 300, 300) +
                               Line("ROUTEZ5T71", 290, 300, 200, 300);

TEST_F(PortionScene, DrillingsComeBeforeRoutes)
{
    Expect(ThreeBores + ThreeTools,
           {Bore + "300Y50Z12", Bore + "200Y50Z12", Bore + "100Y50Z12", "G88G90G55P5T0171X290Y300Z5",
            "G1G90X200Y300Z5", "G88G90G55P5T0172X390Y300Z5", "G1G90X300Y300Z5", "G88G90G55P5T0173X500Y300Z5",
            "G1G90X400Y300Z5"});
}

TEST_F(PortionScene, DrillingsFillTheToolChanges)
{
    // Three over two changes are one and a half: two before the first, the rest before the second.
    const ProgramText mixed = {"G88G90G55P5T0171X290Y300Z5",
                               "G1G90X200Y300Z5",
                               Bore + "300Y50Z12",
                               Bore + "200Y50Z12",
                               "G88G90G55P5T0172X390Y300Z5",
                               "G1G90X300Y300Z5",
                               Bore + "100Y50Z12",
                               "G88G90G55P5T0173X500Y300Z5",
                               "G1G90X400Y300Z5"};
    Config.DRAlternate = "1";
    Expect(ThreeBores + ThreeTools, mixed);
    Config.DRAlternate = "0";
    Expect(Instructions({"DRALT"}) + ThreeBores + ThreeTools, mixed);
}

TEST_F(PortionScene, OneToolLeavesTheDrillingsInFront)
{
    Config.DRAlternate = "1";
    Expect(ThreeBores + Line(Route, 390, 300, 300, 300),
           {Bore + "300Y50Z12", Bore + "200Y50Z12", Bore + "100Y50Z12", Start + "X390Y300Z5",
            "G1G90X300Y300Z5"});
}

TEST_F(PortionScene, TooSmallABatchLosesADrillingAndRepeatsTheEnd)
{
    // Four bores over three changes: one each, and the fourth is dropped. One line less leaves the last
    // line twice; the header still counts it.
    Config.DRAlternate = "1";
    const std::string bores = ThreeBores + Circle("VBOREZ12", 50, 50, 4);
    ASSERT_TRUE(Home.Convert(Drawing(Panel + bores + ThreeTools + Line("ROUTEZ5T74", 190, 300, 100, 300))));
    EXPECT_EQ(Home.Program(),
              (ProgramText{"G71X600Y400Z18T00N15L12", Name, "G88G90G55P5T0171X290Y300Z5", "G1G90X200Y300Z5",
                           Bore + "300Y50Z12", "G88G90G55P5T0172X390Y300Z5", "G1G90X300Y300Z5",
                           Bore + "200Y50Z12", "G88G90G55P5T0173X500Y300Z5", "G1G90X400Y300Z5",
                           Bore + "100Y50Z12", "G88G90G55P5T0174X190Y300Z5", "G1G90X100Y300Z5", "M2", "M2"}));
}

TEST_F(PortionScene, TheSequencePutsRoutesFirst)
{
    Config.Sequence = "RVGH";
    Expect(ThreeBores + Line(Route, 390, 300, 300, 300),
           {Start + "X390Y300Z5", "G1G90X300Y300Z5", Bore + "300Y50Z12", Bore + "200Y50Z12",
            Bore + "100Y50Z12"});
}

TEST_F(PortionScene, TheDrawingsTextsStandAroundThePaths)
{
    Expect(TextAt("GCODE1", 0, 0, "M50") + TextAt("GCODE2", 0, 0, "M51") + TextAt("GCODE3", 0, 0, "M52") +
               Line(Route, 390, 300, 300, 300) + Circle("EXCAVZ5T71", 100, 100, 10),
           {"M50", Start + "X100Y90Z5", "G2G90G17X100Y90I0J10", "M51", Start + "X390Y300Z5",
            "G1G90X300Y300Z5", "M52"});
}

class NextScene : public RouteProgram {
  protected:
    void First(const std::string& entities)
    {
        ASSERT_TRUE(Home.Convert(Drawing(Panel + entities), "FIRST.DXF")) << Home.ReportText();
    }
};

TEST_F(NextScene, TheToolWordStaysInForce)
{
    // Neither tool nor diameter: the word of the drawing before.
    const std::string bare = Line("ROUTEZ5", 100, 100, 200, 100);
    Expect(bare, {"G88G90G55P5X100Y100Z5", "G1G90X200Y100Z5"});
    First(Line("ROUTEZ5T71", 300, 100, 400, 100));
    Expect(bare, {Start + "X100Y100Z5", "G1G90X200Y100Z5"});
    First(Line("ROUTEZ5D8", 300, 100, 400, 100));
    Expect(bare, {"G88G90G55P5R54=8X100Y100Z5", "G1G90X200Y100Z5"});
}

TEST_F(NextScene, ARouteWithoutASpeedHasNone)
{
    First(Line("ROUTEZ5T71S18", 300, 100, 400, 100));
    Expect(Line("ROUTEZ5T71", 100, 100, 200, 100), {Start + "X100Y100Z5", "G1G90X200Y100Z5"});
}

TEST_F(NextScene, TheRampsOfCirclesEndWithTheDrawing)
{
    const std::string other = Line("ROUTEZ5T71", 500, 300, 550, 300);
    First(other + Circle("ROUTEZ5T71L5LD20RI6RO7", 300, 200, 50));
    Expect(other + Circle("ROUTEZ5T71L5LD20", 300, 200, 50),
           {Start + "X500Y300Z5", "G1G90X550Y300Z5", Start + "G41R5X280Y270Z5", "G38G90X300Y270A270.Z5",
            "G37G90X300Y200A90.Z5", "G38G90X300Y270A0.00Z5"});
}

TEST_F(NextScene, NothingOfTheFirstDrawingsRoutesIsInTheSecond)
{
    // A drawing of everything, then one bore.
    const std::string pocket = "EXCAVZ5K4T71R2";
    First(Instructions({"CORNERCOMP ON", "NOARCSUB", "LEAD=ON 30", "RAMPIN ON", "REMBORDER ON"}) +
          Line("ROUTE5Z18M3T71L5LD20", 100, 100, 200, 100) + Circle(pocket, 300, 200, 20) +
          Circle("EXCAVZ5T71", 400, 200, 10) + Arc("ROUTEZ20OZ2T72", 300, 300, 20, 0, 180) +
          Polyline("ROUTEZ5T73", {{100, 300}, {200, 300, 0.5}, {200, 380}}, Closed));
    EXPECT_EQ(RouteSegments.Last(), 0);
    EXPECT_EQ(RouteCircles.Last(), 0);
    Expect(Circle("VBOREZ12", 100, 50, 4), {Bore + "100Y50Z12"});
    Expect(Rectangle("ROUTEZ5T71L5", 100, 100, 100, 100),
           {Start + "G41R5X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5", "G1G90X100Y200Z5",
            "G1G90X100Y100Z5"});
}

// As told, not as meant.
TEST_F(NextScene, APanelGivenByItsSolidKeepsThePlaneOfTheDrawingBefore)
{
    const std::string solid =
        PanelSolid("PANEL", 0, 0, 600, 400, 18) + Line("ROUTEZ5T71", 100, 100, 200, 100);
    ExpectOf(solid, {Start + "X100Y100Z5", "G1G90X200Y100Z5"});
    First(Rectangle("BORDERZ18", 0, 418, 600, 18) + Line("ROUTEZ5T71", 100, 422, 200, 422));
    ASSERT_TRUE(Home.Convert(Drawing(solid))) << Home.ReportText(); // no path that the checker could follow
    EXPECT_EQ(Home.Program(), Around({"G88G90G55P1T0171X100Y100Z5", "G1G90X200Y100Z5"}));
}

TEST_F(NextScene, AFailedDrawingLeavesOnlyItsToolWord)
{
    // The second route cannot be written, the first one has been.
    EXPECT_FALSE(Home.Convert(Drawing(Panel + Line("ROUTEZ5T72", 500, 300, 550, 300) +
                                      Line("ROUTEZ5T73", 100, 300, 200, 300) +
                                      Polyline("ROUTEZ5T74", {{100, 100, 1e38}, {200, 100}})),
                              "BAD.DXF"));
    EXPECT_FALSE(Home.HasProgram("BAD"));
    Expect(Line("ROUTEZ5", 100, 100, 200, 100), {"G88G90G55P5T0174X100Y100Z5", "G1G90X200Y100Z5"});
}

} // namespace
} // namespace kv::test
