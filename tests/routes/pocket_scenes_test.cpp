// Pockets in the program: rectangles out of a start mark and lines, with round corners or without,
// circles out of two arcs, circles as such, and pockets that cannot be cleared.
#include "routes/route_program.h"

namespace kv::test {
namespace {

class PocketScene : public RouteProgram {
  protected:
    // K 4: loops 4 mm apart.
    const std::string Pocket = "EXCAVZ5K4T71R2";
    const std::string PocketStart = Start + "G42R2";

    static std::string Mark(const std::string& layer, double x1, double y1, double x2, double y2)
    {
        return Polyline(layer, {{x1, y1}, {x2, y2}}, Arrow);
    }
    // 100 to 160 by 100 to 142, corners of radius 10, counter-clockwise behind a mark.
    static std::string RoundedRectangle(const std::string& layer)
    {
        return Line(layer, 110, 100, 150, 100) + Arc(layer, 150, 110, 10, 270, 0) +
               Line(layer, 160, 110, 160, 132) + Arc(layer, 150, 132, 10, 0, 90) +
               Line(layer, 150, 142, 110, 142) + Arc(layer, 110, 132, 10, 90, 180) +
               Line(layer, 100, 132, 100, 110) + Arc(layer, 110, 110, 10, 180, 270) +
               Mark(layer, 109, 100, 110, 100);
    }
    // Two half circles of radius 10 round (100, 100), from the top.
    static std::string HalfCircles(const std::string& layer)
    {
        return Arc(layer, 100, 100, 10, 270, 90) + Arc(layer, 100, 100, 10, 90, 270);
    }
    static void AddLines(ProgramText& program, const std::vector<std::pair<int, int>>& points)
    {
        for (const auto& [x, y] : points)
            program.push_back("G1G90X" + std::to_string(x) + "Y" + std::to_string(y) + "Z5");
    }
};

TEST_F(PocketScene, ARectangleWithRoundCornersIsClearedInward)
{
    // The outline is run backward, so clockwise, from its left side on. Corners of radius 10 and 6 are
    // arcs; the next would be 2, not above the pitch: there the corner of the inset box stands for it,
    // once for the side that ends there and once for the corner itself.
    ProgramText program = {PocketStart + "X100Y110Z5"};
    const auto addRound = [&](int left, int right, int lower, int upper) {
        AddLines(program, {{left, 132}});
        program.push_back("G37G90X110Y132A90.Z5");
        AddLines(program, {{150, upper}});
        program.push_back("G37G90X150Y132A0.00Z5");
        AddLines(program, {{right, 110}});
        program.push_back("G37G90X150Y110A270.Z5");
        AddLines(program, {{110, lower}});
        program.push_back("G37G90X110Y110A180.Z5");
    };
    addRound(100, 160, 100, 142);
    addRound(104, 156, 104, 138);
    // 20 mm inside both ends of the middle line, (121, 121) and (139, 121), are reached.
    for (int d = 8; d <= 20; d += 4) {
        const int left = 100 + d, right = 160 - d, lower = 100 + d, upper = 142 - d;
        AddLines(program, {{left, upper},
                           {left, upper},
                           {right, upper},
                           {right, upper},
                           {right, lower},
                           {right, lower},
                           {left, lower},
                           {left, lower}});
    }
    Expect(RoundedRectangle(Pocket), program, LoopByLoop);
    EXPECT_FALSE(Home.Reported("Excavation Pitch not specified! (Rectangle)")) << Home.ReportText();
}

TEST_F(PocketScene, ARectangleOfFourLinesIsClearedInward)
{
    // 100 to 200 by 100 to 160; the ends of the middle line are (130, 130) and (170, 130). Loops at 0, 4,
    // ... 28; each loop's lines end at its corners, clockwise from the lower left.
    ProgramText program = {PocketStart + "X100Y100Z5"};
    for (int d = 0; d <= 28; d += 4)
        AddLines(program, {{100 + d, 160 - d}, {200 - d, 160 - d}, {200 - d, 100 + d}, {100 + d, 100 + d}});
    Expect(Rectangle(Pocket, 100, 100, 100, 60) + Mark(Pocket, 99, 100, 100, 100), program, LoopByLoop);
}

TEST_F(PocketScene, TheOutlineSaysOnWhichSideItIsCut)
{
    // It runs clockwise and the loops counter-clockwise, so the pocket is cut on the left, against what
    // its layer says.
    const std::string clockwise = Line(Pocket, 100, 100, 100, 160) + Line(Pocket, 100, 160, 200, 160) +
                                  Line(Pocket, 200, 160, 200, 100) + Line(Pocket, 200, 100, 100, 100);
    ProgramText program = {Start + "G41R2X100Y100Z5"};
    for (int d = 0; d <= 28; d += 4)
        AddLines(program, {{200 - d, 100 + d}, {200 - d, 160 - d}, {100 + d, 160 - d}, {100 + d, 100 + d}});
    Expect(clockwise + Mark(Pocket, 100, 99, 100, 100), program, LoopByLoop);
}

TEST_F(PocketScene, WithoutAPitchTheToolsDiameterIsTaken)
{
    // Radius 2 behind the compensation.
    ProgramText program = {PocketStart + "X100Y100Z5"};
    for (int d = 0; d <= 28; d += 4)
        AddLines(program, {{100 + d, 160 - d}, {200 - d, 160 - d}, {200 - d, 100 + d}, {100 + d, 100 + d}});
    const std::string layer = "EXCAVZ5T71R2";
    Expect(Rectangle(layer, 100, 100, 100, 60) + Mark(layer, 99, 100, 100, 100), program, LoopByLoop);
}

TEST_F(PocketScene, ARectangleWithoutAPitchStaysARoute)
{
    const std::string layer = "EXCAVZ5T71";
    Expect(
        Rectangle(layer, 100, 100, 100, 60) + Mark(layer, 99, 100, 100, 100),
        {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y160Z5", "G1G90X100Y160Z5", "G1G90X100Y100Z5"});
    EXPECT_TRUE(Home.Reported("Excavation Pitch not specified! (Rectangle)")) << Home.ReportText();
}

TEST_F(PocketScene, WithoutAMarkThereIsNoPocket)
{
    Expect(Rectangle(Pocket, 100, 100, 100, 60), {PocketStart + "X100Y100Z5", "G1G90X200Y100Z5",
                                                  "G1G90X200Y160Z5", "G1G90X100Y160Z5", "G1G90X100Y100Z5"});
}

TEST_F(PocketScene, APolylineIsToBeExploded)
{
    Expect(Polyline(Pocket, {{100, 100}, {200, 100}, {200, 160}, {100, 160}}, Closed),
           {PocketStart + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y160Z5", "G1G90X100Y160Z5",
            "G1G90X100Y100Z5"});
    EXPECT_TRUE(Home.Reported("Explode Polylines for Excavation.")) << Home.ReportText();
}

TEST_F(PocketScene, ACircleOfTwoArcsIsClearedFromTheInsideOut)
{
    // Half turns of radius 3, 5, 7, 9 and 10 round centres that change sides, then the circle once more.
    Expect(HalfCircles(Pocket),
           {PocketStart + "X100Y98Z5", "G37G90X100Y101A90.Z5", "G37G90X100Y99A270.Z5", "G37G90X100Y101A90.Z5",
            "G37G90X100Y99A270.Z5", "G37G90X100Y100A90.Z5", "G37G90X100Y100A270.Z5", "G37G90X100Y100A90.Z5"},
           HalfTurns);
}

TEST_F(PocketScene, ACircleOfTwoArcsIsCutOnItsInnerSideWhateverItsLayerSays)
{
    // The arcs run clockwise, so the inner side is on the right.
    Expect(HalfCircles("EXCAVZ5K4T71L2"),
           {PocketStart + "X100Y98Z5", "G37G90X100Y101A90.Z5", "G37G90X100Y99A270.Z5", "G37G90X100Y101A90.Z5",
            "G37G90X100Y99A270.Z5", "G37G90X100Y100A90.Z5", "G37G90X100Y100A270.Z5", "G37G90X100Y100A90.Z5"},
           HalfTurns);
}

TEST_F(PocketScene, ACircleIsClearedFromItsCentre)
{
    // Half turns of radius 3, 5, 7, 9 and 10, the whole circle, and 35 degrees more.
    const ProgramText program = {PocketStart + "X100Y98Z5", "G37G90X100Y101A90.Z5", "G37G90X100Y99A270.Z5",
                                 "G37G90X100Y101A90.Z5",    "G37G90X100Y99A270.Z5", "G37G90X100Y100A90.Z5",
                                 "G37G90X100Y100A90.Z5",    "G37G90X100Y100A55.Z5"};
    Expect(Circle(Pocket, 100, 100, 10), program, HalfTurns);
    // Beside another route too; pockets come first.
    ProgramText inFront = program;
    inFront.insert(inFront.end(), {Start + "X500Y300Z5", "G1G90X550Y300Z5"});
    Expect(Circle(Pocket, 100, 100, 10) + Line("ROUTEZ5T71", 500, 300, 550, 300), inFront, HalfTurns);
}

TEST_F(PocketScene, ACircleBelowHalfThePitchIsRunRoundOnce)
{
    // Radius 1: no half turn; the circle from its lower point, where the first half turn would begin.
    Expect(Circle("EXCAVZ5K4T71R.9", 100, 100, 1),
           {Start + "G42R.9X100Y99Z5", "G37G90X100Y100A270.Z5", "G37G90X100Y100A235.Z5"});
}

TEST_F(PocketScene, ACircleBelowThePitchHasOneHalfTurn)
{
    // Radius 3: a half turn from (100, 98) of radius 2.5 to the top, then round.
    Expect(
        Circle(Pocket, 100, 100, 3),
        {PocketStart + "X100Y98Z5", "G37G90X100Y100.5A90.Z5", "G37G90X100Y100A90.Z5", "G37G90X100Y100A55.Z5"},
        HalfTurns);
}

TEST_F(PocketScene, ACircleWithoutAPitchIsCutAsACircle)
{
    Expect(Circle("EXCAVZ5T71", 100, 100, 10), {Start + "X100Y90Z5", "G2G90G17X100Y90I0J10"});
    EXPECT_TRUE(Home.Reported("Excavation Pitch not specified! (Circle)")) << Home.ReportText();
}

TEST_F(PocketScene, CirclesComeBeforePathsInTheProgram)
{
    Expect(Line("ROUTEZ5T71", 500, 300, 550, 300) + Circle("EXCAVZ5T71", 100, 100, 10),
           {Start + "X100Y90Z5", "G2G90G17X100Y90I0J10", Start + "X500Y300Z5", "G1G90X550Y300Z5"});
}

TEST_F(PocketScene, ACircleWithoutAPitchInAViewLiesInItsPlane)
{
    // Above the face: centre at 300 along the edge and 9 deep, lowest point 5 lower. The circle's own line
    // has no word for that depth; it is where the start left it.
    const std::string views =
        Rectangle("BORDERZ18", 50, 50, 600, 400) + Rectangle("BORDERZ18", 50, 468, 600, 18);
    ASSERT_TRUE(Home.Convert(Drawing(views + Circle("EXCAVZ5T71", 350, 477, 5)))) << Home.ReportText();
    EXPECT_EQ(Home.Program(), Around({"G88G90G55P1T0171X350Y5Z4", "G2G90G18X350I0K5"}));
}

TEST_F(PocketScene, APocketGetsNoLeads)
{
    Config.LeadS = 1;
    Config.LeadLength = "20";
    ProgramText program = {PocketStart + "X100Y100Z5"};
    for (int d = 0; d <= 28; d += 4)
        AddLines(program, {{100 + d, 160 - d}, {200 - d, 160 - d}, {200 - d, 100 + d}, {100 + d, 100 + d}});
    Expect(Rectangle(Pocket, 100, 100, 100, 60) + Mark(Pocket, 99, 100, 100, 100), program, LoopByLoop);
}

TEST_F(PocketScene, APocketInPassesIsClearedAtEachDepth)
{
    // Both depths from the start on; codes other than the depth are the same.
    const std::string layer = "EXCAVZ10K4M2T71R2";
    ProgramText program;
    for (const char* const z : {"Z5", "Z10"}) {
        program.push_back(PocketStart + "X100Y98" + z);
        for (const char* const arc :
             {"101A90.", "99A270.", "101A90.", "99A270.", "100A90.", "100A270.", "100A90."})
            program.push_back(std::string("G37G90X100Y") + arc + z);
    }
    Expect(HalfCircles(layer), program, HalfTurns);
}

TEST_F(PocketScene, PocketsComeInFrontOfTheRoutesByTheirTools)
{
    // Circles of tools 72 and 71 and two half circles of tool 71; routes of tools 70 and 73.
    std::vector<std::string> tools;
    const AtStage look("pockets", [&] {
        for (const RouteSegment& record : RouteSegments)
            if (record.Dir == -8)
                tools.push_back((record.X > 350 ? "route " : "pocket ") + std::to_string(record.ToolNo));
    });
    const std::string drawn = Circle("EXCAVZ5K4T72R2", 300, 100, 10) +
                              Circle("EXCAVZ5K4T71R2", 300, 200, 10) + HalfCircles("EXCAVZ5K4T71R2") +
                              Line("ROUTEZ5T70", 500, 300, 550, 300) + Line("ROUTEZ5T73", 500, 100, 550, 100);
    ASSERT_TRUE(Home.Convert(Drawing(Panel + drawn))) << Home.ReportText();
    const std::vector<std::string> expected = {"pocket 71", "pocket 71", "pocket 72", "route 70", "route 73"};
    EXPECT_EQ(tools, expected);
}

TEST_F(PocketScene, WhereNumbersGiveTheOrderOnlyPocketsOfTheCircleListMove)
{
    // The half circles have no number, as the circles; the outline's is 20. Number 0 comes first: two
    // half circles, and a circle in front of the numbered route.
    std::vector<int> places;
    const AtStage look("pockets", [&] {
        EXPECT_NE(Run.MaxSequence, 0);
        for (const RouteSegment& record : RouteSegments)
            if (record.Dir == -8)
                places.push_back(record.X > 450 ? 3 : record.X > 250 ? 2 : 1);
    });
    const std::string drawn = Circle("EXCAVZ5K4T71R2", 300, 100, 10) + HalfCircles("EXCAVZ5K4T73R2") +
                              Line("ROUTE2Z5T72", 500, 300, 550, 300);
    ASSERT_TRUE(Home.Convert(Drawing(Panel + drawn))) << Home.ReportText();
    const std::vector<int> expected = {1, 2, 3};
    EXPECT_EQ(places, expected);
}

TEST_F(PocketScene, OscillationWithoutANumberMakesNoPocketOfARoute)
{
    // Circles and a marked rectangle of a ROUTE layer: routes as drawn, and nothing is told.
    const std::string layer = "ROUTEZ5T71R2OZ";
    for (const std::string& drawn : {Circle(layer, 100, 100, 10), HalfCircles(layer),
                                     Rectangle(layer, 100, 100, 100, 60) + Mark(layer, 99, 100, 100, 100)}) {
        ASSERT_TRUE(Home.Convert(Drawing(Panel + drawn))) << Home.ReportText();
        EXPECT_LE(Home.Program().size(), 8U) << Home.ReportText();
        EXPECT_EQ(Home.ReportText().find("pocket"), std::string::npos) << Home.ReportText();
        EXPECT_EQ(Home.ReportText().find("Pitch"), std::string::npos) << Home.ReportText();
    }
}

} // namespace
} // namespace kv::test
