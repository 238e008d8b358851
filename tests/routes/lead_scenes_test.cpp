// Leads in the program: closed contours at open, closed and smooth seams on both hands, straight, arc
// and ramped; routes that reach the panel's edge. Leads are 20 mm, by the layer's code.
#include "routes/route_program.h"

namespace kv::test {
namespace {

class LeadScene : public RouteProgram {
  protected:
    const std::string Left = "ROUTEZ5T71L5LD20", Right = "ROUTEZ5T71R5LD20", Plain = "ROUTEZ5T71LD20";
    const std::string LeftStart = Start + "G41R5", RightStart = Start + "G42R5";

    static std::string Square(const std::string& layer)
    {
        return Rectangle(layer, 100, 100, 100, 100); // counter-clockwise from the lower left
    }
    static std::string SquareClockwise(const std::string& layer)
    {
        return Line(layer, 100, 100, 100, 200) + Line(layer, 100, 200, 200, 200) +
               Line(layer, 200, 200, 200, 100) + Line(layer, 200, 100, 100, 100);
    }
};

TEST_F(LeadScene, AtAnOpenCornerBothLeadsLieOnTheBisector)
{
    // The tool is inside: in and out at 45 degrees, 20 mm long.
    Expect(Square(Left),
           {LeftStart + "X114.142Y114.142Z5", "G1G90X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5",
            "G1G90X100Y200Z5", "G1G90X100Y100Z5", "G1G90X114.142Y114.142Z5"});
}

TEST_F(LeadScene, AtAClosedCornerQuarterArcsAreTangentToTheirSides)
{
    Expect(Square(Right), {RightStart + "X80Y80Z5", "G37G90X100Y80A90.Z5", "G1G90X200Y100Z5",
                           "G1G90X200Y200Z5", "G1G90X100Y200Z5", "G1G90X100Y100Z5", "G37G90X80Y100A270.Z5"});
}

TEST_F(LeadScene, TheOtherWayRoundTheHandsChangePlaces)
{
    Expect(SquareClockwise(Left),
           {LeftStart + "X80Y80Z5", "G38G90X80Y100A0.00Z5", "G1G90X100Y200Z5", "G1G90X200Y200Z5",
            "G1G90X200Y100Z5", "G1G90X100Y100Z5", "G38G90X100Y80A180.Z5"});
    Expect(SquareClockwise(Right),
           {RightStart + "X114.142Y114.142Z5", "G1G90X100Y100Z5", "G1G90X100Y200Z5", "G1G90X200Y200Z5",
            "G1G90X200Y100Z5", "G1G90X100Y100Z5", "G1G90X114.142Y114.142Z5"});
}

TEST_F(LeadScene, ARampedLeadOutRunsOnAlongTheFirstSide)
{
    // The ramp in without a number is the set height.
    Config.LeadRampHeight = "9";
    Expect(Square("ROUTEZ5T71R5LD20RIRO6"),
           {RightStart + "X80Y80Z-9", "G37G90X100Y80A90.Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5",
            "G1G90X100Y200Z5", "G1G90X100Y100Z5", "G1G90X120Y100Z-6"});
    // At an open corner too.
    Expect(Square("ROUTEZ5T71L5LD20RIRO6"),
           {LeftStart + "X114.142Y114.142Z-9", "G1G90X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5",
            "G1G90X100Y200Z5", "G1G90X100Y100Z5", "G1G90X120Y100Z-6"});
}

TEST_F(LeadScene, ARampedLeadOutIsNoLongerThanTheFirstSide)
{
    Expect(Square("ROUTEZ5T71R5LD120RO6"),
           // The sides are shorter than the lead and so is each lead: straight, square to the last side.
           {RightStart + "X0Y100Z5", "G1G90X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5",
            "G1G90X100Y200Z5", "G1G90X100Y100Z5", "G1G90X200Y100Z-6"});
}

TEST_F(LeadScene, ALeadLongerThanTheSidesIsStraightAndNoLongerThanTheFirst)
{
    Expect(Square("ROUTEZ5T71R5LD120"),
           {RightStart + "X0Y100Z5", "G1G90X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5",
            "G1G90X100Y200Z5", "G1G90X100Y100Z5", "G1G90X0Y100Z5"});
}

TEST_F(LeadScene, ASmoothSeamHasTangentArcs)
{
    // The square begins in the middle of its lower side.
    Config.CornerComp = 1;
    const std::vector<Vertex> square = {{100, 100}, {200, 100}, {200, 200}, {100, 200}};
    const auto around = [](const std::string& start, const std::string& in, const std::string& out) {
        return ProgramText{start,
                           in,
                           "G1G90X200Y100Z5",
                           "G1G90X200Y200Z5",
                           "G1G90X100Y200Z5",
                           "G1G90X100Y100Z5",
                           "G1G90X150Y100Z5",
                           out};
    };
    Expect(Polyline(Left, square, Closed),
           around(LeftStart + "X130Y120Z5", "G38G90X150Y120A270.Z5", "G38G90X150Y120A0.00Z5"));
    Expect(Polyline(Right, square, Closed),
           around(RightStart + "X130Y80Z5", "G37G90X150Y80A90.Z5", "G37G90X150Y80A0.00Z5"));
}

TEST_F(LeadScene, ASmoothSeamRampedRunsOnStraight)
{
    Config.CornerComp = 1;
    const std::vector<Vertex> square = {{100, 100}, {200, 100}, {200, 200}, {100, 200}};
    Expect(Polyline("ROUTEZ5T71L5LD20RI3RO6", square, Closed),
           {LeftStart + "X130Y120Z-3", "G38G90X150Y120A270.Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5",
            "G1G90X100Y200Z5", "G1G90X100Y100Z5", "G1G90X150Y100Z5", "G1G90X170Y100Z-6"});
}

TEST_F(LeadScene, AShortRoundEndIsLeftStraightOnItsOwnSide)
{
    // A slot from (100, 100) with ends of radius 10: smooth at its seam. Behind the last arc, which is
    // shorter than the lead and turns toward the tool, the way out is straight; the way in is an arc.
    const std::string slot = Line(Left, 100, 100, 200, 100) + Arc(Left, 200, 110, 10, 270, 90) +
                             Line(Left, 200, 120, 100, 120) + Arc(Left, 100, 110, 10, 90, 270);
    Expect(slot, {LeftStart + "X80Y120Z5", "G38G90X100Y120A270.Z5", "G1G90X200Y100Z5", "G38G90X200Y110A90.Z5",
                  "G1G90X100Y120Z5", "G38G90X100Y110A270.Z5", "G1G90X100Y120Z5"});
}

TEST_F(LeadScene, AnArcTurnedAwayIsNoShortElement)
{
    // The same slot on the right: the last arc turns away from the tool, so both leads are arcs.
    const std::string slot = Line(Right, 100, 100, 200, 100) + Arc(Right, 200, 110, 10, 270, 90) +
                             Line(Right, 200, 120, 100, 120) + Arc(Right, 100, 110, 10, 90, 270);
    Expect(slot, {RightStart + "X80Y80Z5", "G37G90X100Y80A90.Z5", "G1G90X200Y100Z5", "G38G90X200Y110A90.Z5",
                  "G1G90X100Y120Z5", "G38G90X100Y110A270.Z5", "G37G90X100Y80A0.00Z5"});
}

TEST_F(LeadScene, ARampedLeadOutRunsOnAlongAFirstArc)
{
    // A half disc from its arc on: down the arc from (100, 100), clockwise from 180 degrees; 20 mm of a
    // circumference of 314.159 are 22.918 degrees. The way in on the bisector of the corner: up at the
    // start (90), out to the left (180), back 0, so half of 90 to the right of 90.
    const std::string layer = "ROUTEZ5T71R5LD20RO6";
    Expect(Arc(layer, 150, 100, 50, 0, 180) + Line(layer, 100, 100, 200, 100),
           // For an arc the lead-in at an open corner is a quarter arc: centre (120, 100), to 180 degrees.
           {RightStart + "X120Y80Z5", "G37G90X120Y100A180.Z5", "G37G90X150Y100A0.00Z5", "G1G90X100Y100Z5",
            "G37G90X150Y100A157.082Z-6"});
}

TEST_F(LeadScene, ARampedLeadOutRunsOnAlongAFirstBulge)
{
    // A half circle of radius 50 as a bulge of 1: 20 mm are .4 radians, and their bulge tan .1 = .10033
    // again has radius 50. It ends 22.918 degrees behind 180: 150 - 50 cos, 100 - 50 sin.
    const std::string layer = "ROUTEZ5T71L5LD20RO6";
    Expect(Polyline(layer, {{100, 100, 1}, {200, 100}, {200, 200}, {100, 200}}, Closed),
           // In 270, out 270: smooth, an arc of 20 mm to the right of the way down: round (120, 100).
           {LeftStart + "X120Y120Z5", "G38G90X120Y100A180.Z5", "G38G90X200Y100U50Z5", "G1G90X200Y200Z5",
            "G1G90X100Y200Z5", "G1G90X100Y100Z5", "G38G90X103.947Y80.529U50Z-6"});
}

TEST_F(LeadScene, AnUncompensatedContourInsideGetsNoLead)
{
    Expect(Square(Plain), {Start + "X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5", "G1G90X100Y200Z5",
                           "G1G90X100Y100Z5"});
}

TEST_F(LeadScene, AnOpenRouteInsideGetsNoLead)
{
    Config.LeadS = 1;
    Config.LeadLength = "20";
    Expect(Line("ROUTEZ5T71L5", 100, 100, 200, 100), {LeftStart + "X100Y100Z5", "G1G90X200Y100Z5"});
}

TEST_F(LeadScene, TheCodeWithoutALengthTakesTheSetOne)
{
    // The switch is off; the code asks for the set length.
    Config.LeadLength = "10";
    Expect(Square("ROUTEZ5T71L5LD"),
           {LeftStart + "X107.071Y107.071Z5", "G1G90X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5",
            "G1G90X100Y200Z5", "G1G90X100Y100Z5", "G1G90X107.071Y107.071Z5"});
    // The drawing's own length wins over it.
    Expect(Instructions({"LEAD=30"}) + Square("ROUTEZ5T71L5LD"),
           {LeftStart + "X121.213Y121.213Z5", "G1G90X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5",
            "G1G90X100Y200Z5", "G1G90X100Y100Z5", "G1G90X121.213Y121.213Z5"});
}

TEST_F(LeadScene, AStartMarkGivesItsPlaceToTheLead)
{
    Expect(Square(Left) + Polyline(Left, {{90, 100}, {100, 100}}, Arrow),
           {LeftStart + "X114.142Y114.142Z5", "G1G90X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5",
            "G1G90X100Y200Z5", "G1G90X100Y100Z5", "G1G90X114.142Y114.142Z5"});
}

TEST_F(LeadScene, EachDepthPassHasItsLeads)
{
    Expect(Square("ROUTEZ10M2T71L5LD20"),
           {LeftStart + "X114.142Y114.142Z5", "G1G90X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y200Z5",
            "G1G90X100Y200Z5", "G1G90X100Y100Z5", "G1G90X114.142Y114.142Z5",
            LeftStart + "X114.142Y114.142Z10", "G1G90X100Y100Z10", "G1G90X200Y100Z10", "G1G90X200Y200Z10",
            "G1G90X100Y200Z10", "G1G90X100Y100Z10", "G1G90X114.142Y114.142Z10"});
}

TEST_F(LeadScene, AcrossThePanelTheLeadsExtendTheLine)
{
    Expect(Line(Plain, 0, 100, 600, 100),
           {Start + "X-20Y100Z5", "G1G90X0Y100Z5", "G1G90X600Y100Z5", "G1G90X620Y100Z5"});
}

TEST_F(LeadScene, OnlyTheEndAtTheEdgeGetsItsLead)
{
    Expect(Line(Plain, 0, 100, 300, 100), {Start + "X-20Y100Z5", "G1G90X0Y100Z5", "G1G90X300Y100Z5"});
    Expect(Line(Plain, 300, 100, 600, 100), {Start + "X300Y100Z5", "G1G90X600Y100Z5", "G1G90X620Y100Z5"});
}

TEST_F(LeadScene, AlongTheEdgeQuarterArcsLeaveThePanel)
{
    Expect(Line(Plain, 0, 100, 0, 300),
           {Start + "X-20Y80Z5", "G38G90X-20Y100A0.00Z5", "G1G90X0Y300Z5", "G38G90X-20Y300A90.Z5"});
    // The upper edge, to the left: outward is up.
    Expect(Line(Plain, 400, 400, 200, 400),
           {Start + "X420Y420Z5", "G37G90X400Y420A270.Z5", "G1G90X200Y400Z5", "G37G90X200Y420A180.Z5"});
}

TEST_F(LeadScene, InACornerTheLeadStaysStraight)
{
    Expect(Line(Plain, 0, 0, 0, 100),
           {Start + "X0Y-20Z5", "G1G90X0Y0Z5", "G1G90X0Y100Z5", "G38G90X-20Y100A90.Z5"});
    // The panel's whole outline: closed, but at the edge; straight on from both ends.
    Expect(Rectangle(Plain, 0, 0, 600, 400),
           {Start + "X-20Y0Z5", "G1G90X0Y0Z5", "G1G90X600Y0Z5", "G1G90X600Y400Z5", "G1G90X0Y400Z5",
            "G1G90X0Y0Z5", "G1G90X0Y-20Z5"});
}

TEST_F(LeadScene, AnArcSquareToTheEdgeTurnsOn)
{
    // A half circle over the lower edge, from (200, 0) to (400, 0), clockwise like both leads.
    Expect(Arc(Plain, 300, 0, 100, 0, 180),
           {Start + "X220Y-20Z5", "G37G90X220Y0A180.Z5", "G37G90X300Y0A0.00Z5", "G37G90X380Y0A270.Z5"});
}

TEST_F(LeadScene, ABulgeAtTheEdgeIsLeftStraight)
{
    // A half circle from (200, 0) over (300, -100)... drawn upward: bulge -1 runs clockwise.
    Expect(Polyline(Plain, {{200, 0, -1}, {400, 0}}),
           {Start + "X200Y-20Z5", "G1G90X200Y0Z5", "G37G90X400Y0U100Z5", "G1G90X400Y-20Z5"});
}

TEST_F(LeadScene, AtTheEdgeNothingIsRamped)
{
    Expect(Line("ROUTEZ5T71LD20RI3RO3", 0, 100, 600, 100),
           {Start + "X-20Y100Z5", "G1G90X0Y100Z5", "G1G90X600Y100Z5", "G1G90X620Y100Z5"});
}

TEST_F(LeadScene, ThePanelsPlaceInTheDrawingDoesNotMatter)
{
    ASSERT_TRUE(
        Home.Convert(Drawing(Rectangle("BORDERZ18", 10, 20, 600, 400) + Line(Plain, 10, 120, 610, 120))));
    EXPECT_EQ(Home.Program(),
              Around({Start + "X-20Y100Z5", "G1G90X0Y100Z5", "G1G90X600Y100Z5", "G1G90X620Y100Z5"}));
}

TEST_F(LeadScene, TheMachinesCornerMirrorsLeadsWithTheirRoute)
{
    // Upper left: Y from 400. The sense of arcs and the compensation stay as they are.
    ASSERT_TRUE(
        Home.Convert(Drawing(Rectangle("BORDERULZ18", 0, 0, 600, 400) + Line(Plain, 0, 100, 0, 300))));
    EXPECT_EQ(Home.Program(), Around({"G88G90G54P5T0171X-20Y320Z5", "G38G90X-20Y300A0.00Z5", "G1G90X0Y100Z5",
                                      "G38G90X-20Y100A90.Z5"}));
}

} // namespace
} // namespace kv::test
