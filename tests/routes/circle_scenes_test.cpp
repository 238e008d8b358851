// Circles on route layers: as detours of lines that touch them, with leads of their own, alone.
#include "routes/route_program.h"

namespace kv::test {
namespace {

class CircleScene : public RouteProgram {
  protected:
    const std::string Route = "ROUTEZ5T71";
    const std::string Left = "ROUTEZ5T71L5LD20", Right = "ROUTEZ5T71R5LD20";
    // A route that is cut first and keeps the circles from being alone.
    const std::string Other = Line(Route, 500, 300, 550, 300);

    ProgramText BehindOther(const ProgramText& operations)
    {
        ProgramText all = {Start + "X500Y300Z5", "G1G90X550Y300Z5"};
        all.insert(all.end(), operations.begin(), operations.end());
        return all;
    }
};

TEST_F(CircleScene, OnALinesEndTheCircleIsCutOnTheWay)
{
    // Straight at the circle both ways round are as good, and the clockwise one is taken.
    Expect(Line(Route, 100, 100, 200, 100) + Circle(Route, 250, 100, 50),
           {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G37G90X250Y100A180.Z5"});
}

TEST_F(CircleScene, ACutGoesOnTheWayItArrives)
{
    // The line runs along the circle's tangent at its left: upward is clockwise there.
    Expect(Line(Route, 200, 50, 200, 100) + Circle(Route, 250, 100, 50),
           {Start + "X200Y50Z5", "G1G90X200Y100Z5", "G37G90X250Y100A180.Z5"});
    Expect(Line(Route, 200, 150, 200, 100) + Circle(Route, 250, 100, 50),
           {Start + "X200Y150Z5", "G1G90X200Y100Z5", "G38G90X250Y100A180.Z5"});
}

TEST_F(CircleScene, OnALinesStartTheLineIsTurned)
{
    Expect(Line(Route, 200, 100, 200, 50) + Circle(Route, 250, 100, 50),
           {Start + "X200Y50Z5", "G1G90X200Y100Z5", "G37G90X250Y100A180.Z5"});
    Expect(Line(Route, 200, 100, 200, 150) + Circle(Route, 250, 100, 50),
           {Start + "X200Y150Z5", "G1G90X200Y100Z5", "G38G90X250Y100A180.Z5"});
}

TEST_F(CircleScene, TheRimReachesALittle)
{
    // 0.046875 mm before the rim still touches; 0.0625 mm does not, and the circle is cut by itself,
    // after the line: its top (250, 150) is the chain's first point, and it lies nearer the corner.
    Expect(Line(Route, 100, 100, 199.953125, 100) + Circle(Route, 250, 100, 50),
           {Start + "X100Y100Z5", "G1G90X199.953Y100Z5", "G37G90X250Y100A180.Z5"});
    Expect(Line(Route, 100, 100, 199.9375, 100) + Circle(Route, 250, 100, 50),
           {Start + "X250Y150Z5", "G37G90X250Y100A90.Z5", Start + "X100Y100Z5", "G1G90X199.938Y100Z5"});
}

TEST_F(CircleScene, BetweenTwoLinesASecondArcGoesOn)
{
    // The whole circle, then half of it again, from the first line's end to the second one's start.
    Expect(Line(Route, 100, 100, 200, 100) + Line(Route, 300, 100, 400, 100) + Circle(Route, 250, 100, 50),
           {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G37G90X250Y100A180.Z5", "G37G90X250Y100A0.00Z5",
            "G1G90X400Y100Z5"});
}

TEST_F(CircleScene, ALineThatEndsOnTheSameCircleIsTurned)
{
    Expect(Line(Route, 100, 100, 200, 100) + Line(Route, 400, 100, 300, 100) + Circle(Route, 250, 100, 50),
           {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G37G90X250Y100A180.Z5", "G37G90X250Y100A0.00Z5",
            "G1G90X400Y100Z5"});
}

TEST_F(CircleScene, TwoLinesThatMeetOnTheRimNeedNoSecondArc)
{
    // Arriving upward at the left: clockwise. The second line begins where the circle ends.
    Expect(Line(Route, 200, 50, 200, 100) + Line(Route, 200, 100, 150, 100) + Circle(Route, 250, 100, 50),
           {Start + "X200Y50Z5", "G1G90X200Y100Z5", "G37G90X250Y100A180.Z5", "G1G90X150Y100Z5"});
}

TEST_F(CircleScene, TheCircleHasItsOwnDepthAndTheChainsTool)
{
    // One layer for both, so the depths are those of the drawing: 3 and 8 by Z.
    Expect(Line("ROUTET71", 100, 100, 200, 100, Pair(30, 3.0) + Pair(31, 3.0)) +
               Circle("ROUTET71", 250, 100, 50, Pair(30, 8.0)),
           {Start + "X100Y100Z3", "G1G90X200Y100Z3", "G37G90X250Y100A180.Z8"});
}

TEST_F(CircleScene, AFreeCircleBeginsAtItsTopAndRunsClockwise)
{
    Expect(Other + Circle(Route, 300, 200, 50), BehindOther({Start + "X300Y250Z5", "G37G90X300Y200A90.Z5"}));
    Expect(Circle(Route, 300, 200, 50), {Start + "X300Y250Z5", "G37G90X300Y200A90.Z5"});
}

TEST_F(CircleScene, ALeftCircleIsEnteredFromOutside)
{
    // A quarter turn of 20 mm from (280, 270) round (300, 270) to the top, and one away to (320, 270).
    Expect(Other + Circle(Left, 300, 200, 50),
           BehindOther({Start + "G41R5X280Y270Z5", "G38G90X300Y270A270.Z5", "G37G90X300Y200A90.Z5",
                        "G38G90X300Y270A0.00Z5"}));
}

TEST_F(CircleScene, ARightCircleIsEnteredFromInside)
{
    Expect(Other + Circle(Right, 300, 200, 50),
           BehindOther({Start + "G42R5X280Y230Z5", "G37G90X300Y230A90.Z5", "G37G90X300Y200A90.Z5",
                        "G37G90X300Y230A0.00Z5"}));
}

TEST_F(CircleScene, RampsLowerTheFirstPointAndLengthenTheCircle)
{
    // 20 mm of a circumference of 314.159 mm are 22.918 degrees beyond the top.
    Expect(Other + Circle("ROUTEZ5T71L5LD20RI6RO7", 300, 200, 50),
           BehindOther({Start + "G41R5X280Y270Z-6", "G38G90X300Y270A270.Z5", "G37G90X300Y200A90.Z5",
                        "G37G90X300Y200A67.082Z-7"}));
}

TEST_F(CircleScene, ALongRampedLeadEndsAtHalfATurn)
{
    // 60 mm of a circumference of 62.8 mm would be 343 degrees. The angle is written as 90 less 180.
    Expect(Other + Circle("ROUTEZ5T71L5LD60RO7", 300, 200, 10),
           BehindOther({Start + "G41R5X240Y270Z5", "G38G90X300Y270A270.Z5", "G37G90X300Y200A90.Z5",
                        "G37G90X300Y200A-90.Z-7"}));
}

TEST_F(CircleScene, ARampOnceSeenStaysInForceForTheCirclesBehindIt)
{
    // The second layer has no ramp and leaves with the first one's. Its circle's first point (180, 270)
    // is farther from the line's end than (280, 270).
    Expect(Other + Circle("ROUTEZ5T71L5LD20RO7", 300, 200, 50) + Circle(Left, 200, 200, 50),
           BehindOther({Start + "G41R5X280Y270Z5", "G38G90X300Y270A270.Z5", "G37G90X300Y200A90.Z5",
                        "G37G90X300Y200A67.082Z-7", Start + "G41R5X180Y270Z5", "G38G90X200Y270A270.Z5",
                        "G37G90X200Y200A90.Z5", "G37G90X200Y200A67.082Z-7"}));
}

TEST_F(CircleScene, AnUncompensatedCircleGetsNoLead)
{
    Expect(Other + Circle("ROUTEZ5T71LD20", 300, 200, 50),
           BehindOther({Start + "X300Y250Z5", "G37G90X300Y200A90.Z5"}));
}

TEST_F(CircleScene, WithTheSwitchEveryCompensatedCircleHasTheSetLead)
{
    Config.LeadS = 1;
    Config.LeadLength = "10";
    Expect(Other + Circle("ROUTEZ5T71L5", 300, 200, 50),
           BehindOther({Start + "G41R5X290Y260Z5", "G38G90X300Y260A270.Z5", "G37G90X300Y200A90.Z5",
                        "G38G90X300Y260A0.00Z5"}));
}

TEST_F(CircleScene, AloneACompensatedCircleIsAClosedContour)
{
    // The arc pair exists before circle leads are looked for; the leads of contours give the same way.
    Expect(Circle(Left, 300, 200, 50), {Start + "G41R5X280Y270Z5", "G38G90X300Y270A270.Z5",
                                        "G37G90X300Y200A90.Z5", "G38G90X300Y270A0.00Z5"});
    Expect(Circle(Right, 300, 200, 50), {Start + "G42R5X280Y230Z5", "G37G90X300Y230A90.Z5",
                                         "G37G90X300Y200A90.Z5", "G37G90X300Y230A0.00Z5"});
}

TEST_F(CircleScene, AloneARampedCircleRunsOnAlongItsRim)
{
    Expect(Circle("ROUTEZ5T71L5LD20RI6RO7", 300, 200, 50),
           {Start + "G41R5X280Y270Z-6", "G38G90X300Y270A270.Z5", "G37G90X300Y200A90.Z5",
            "G37G90X300Y200A67.082Z-7"});
}

TEST_F(CircleScene, AloneAShortRampedCircleRunsOnForTwentyDegrees)
{
    // A lead of 100 mm is longer than the circumference of 62.8 mm. The lead-in's first element is an arc
    // turned away from the tool (clockwise for G41), so it is no short one: a quarter turn of 100 mm.
    Expect(Circle("ROUTEZ5T71L5LD100RO7", 300, 200, 10), {Start + "G41R5X200Y310Z5", "G38G90X300Y310A270.Z5",
                                                          "G37G90X300Y200A90.Z5", "G37G90X300Y200A70.Z-7"});
}

TEST_F(CircleScene, AloneASmallInnerCircleIsEnteredStraight)
{
    // Radius 10 below a lead of 20 and the arc turns toward the tool: straight leads, no longer than the
    // radius, square to the way: from and to the centre. A line does not follow an arc directly, yet the
    // path is the same.
    Expect(Circle(Right, 300, 200, 10),
           {Start + "G42R5X300Y200Z5", "G1G90X300Y210Z5", "G37G90X300Y200A90.Z5", "G1G90X300Y200Z5"});
}

} // namespace
} // namespace kv::test
