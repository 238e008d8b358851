// What the tool cuts of the walls where a contour begins in an inner corner: the report's line beside the
// program drawn with its tool. The tool has radius 6, the contours are holes: what is cut outside of
// them is wall.
#include <cmath>
#include <random>

#include "job/job_driver.h"
#include "routes/route_program.h"
#include "support/proof/beside_outline.h"
#include "support/random_rounds.h"

namespace kv::lead_doubts {
namespace {

using namespace test;

constexpr double HalfDisc = 3.14159265358979323846 / 2 * 36;
constexpr double GridShare = 4; // what the grid's cells may be off on the rim of a disc

class LeadDoubts : public RouteProgram {
  protected:
    static std::string LeadLine(const std::string& layer, const std::string& place)
    {
        return "Layer " + layer + ": the lead at " + place + " cuts into the walls of its corner";
    }
    static std::string BareLine(const std::string& layer, const std::string& place)
    {
        return "Layer " + layer + ": the contour at " + place +
               " begins in an inner corner without a lead and cuts into its wall";
    }
    // Lines of the report that name a layer.
    std::vector<std::string> DoubtsOf(const std::string& entities, const std::string& panel = Panel)
    {
        EXPECT_TRUE(Home.Convert(Drawing(panel + entities))) << Home.ReportText();
        std::vector<std::string> doubts;
        for (const std::string& line : Home.Lines)
            if (line.rfind("Layer ", 0) == 0)
                doubts.push_back(line);
        return doubts;
    }
    double CutOutside(const std::vector<PathPoint>& hole)
    {
        const DrawnArea area = AreaBeside(Home.Program(), Polygon(hole));
        EXPECT_EQ(area.Fault, "");
        return area.CutOutside;
    }
};

using Texts = std::vector<std::string>;
const Texts None;

// A closed polyline, which begins at its first point.
std::string Hole(const std::string& layer, const std::vector<PathPoint>& points)
{
    std::vector<Vertex> vertices;
    for (const PathPoint& point : points)
        vertices.push_back({point.X, point.Y});
    return Polyline(layer, vertices, Closed);
}

const std::vector<PathPoint> SquareHole = {{100, 100}, {250, 100}, {250, 250}, {100, 250}};

// A corner of `angle` degrees at (200, 150), its first wall along X, its last one 100 long.
std::vector<PathPoint> Wedge(double angle)
{
    const double radians = angle * 3.14159265358979323846 / 180;
    return {
        {200, 150}, {350, 150}, {350, 300}, {200 + 100 * std::cos(radians), 150 + 100 * std::sin(radians)}};
}

std::string LayerWith(double lead)
{
    return "ROUTEZ5T71L6LD" + Number(lead);
}

TEST_F(LeadDoubts, LeadOnTheBisectorOfASquareCornerNeeds2414Radii)
{
    for (const double lead : {3.0, 6.0, 12.0, 14.4, 14.46})
        EXPECT_EQ(DoubtsOf(Hole(LayerWith(lead), SquareHole)), Texts{LeadLine(LayerWith(lead), "X100 Y100")});
    for (const double lead : {14.49, 15.0, 20.0, 40.0})
        EXPECT_EQ(DoubtsOf(Hole(LayerWith(lead), SquareHole)), None) << lead;
}

TEST_F(LeadDoubts, ShortLeadCutsTheWallsAndALongOneDoesNot)
{
    DoubtsOf(Hole(LayerWith(10), SquareHole));
    EXPECT_GT(CutOutside(SquareHole), 20);
    DoubtsOf(Hole(LayerWith(14), SquareHole));
    EXPECT_GT(CutOutside(SquareHole), 0);
    DoubtsOf(Hole(LayerWith(14.5), SquareHole));
    EXPECT_EQ(CutOutside(SquareHole), 0);
}

TEST_F(LeadDoubts, OtherCornersNeedTheRadiusByTheTangentOfAQuarterOfTheirAngle)
{
    for (const double angle : {40.0, 60.0, 90.0, 120.0, 150.0}) {
        const double needed = 6 / std::tan(angle / 4 * 3.14159265358979323846 / 180);
        const std::vector<PathPoint> hole = Wedge(angle);
        SCOPED_TRACE(angle);
        // A hundredth of a millimetre into the wall is passed over, also in the flattest of these corners.
        const std::string tooShort = LayerWith(std::floor(needed * 100) / 100 - 0.03);
        EXPECT_EQ(DoubtsOf(Hole(tooShort, hole)), Texts{LeadLine(tooShort, "X200 Y150")});
        EXPECT_EQ(DoubtsOf(Hole(LayerWith(std::ceil(needed * 100) / 100), hole)), None);
        EXPECT_EQ(CutOutside(hole), 0);
        DoubtsOf(Hole(LayerWith(std::floor(needed * 80) / 100), hole));
        EXPECT_GT(CutOutside(hole), 0);
    }
}

// A wedge turned by `turn` degrees, away from the panel's edges.
std::vector<PathPoint> TurnedWedge(double angle, double turn)
{
    const double radians = turn * 3.14159265358979323846 / 180;
    std::vector<PathPoint> points = Wedge(angle);
    for (PathPoint& point : points) {
        const double x = point.X - 260, y = point.Y - 200;
        point = {300 + x * std::cos(radians) - y * std::sin(radians),
                 200 + x * std::sin(radians) + y * std::cos(radians)};
    }
    return points;
}

TEST_F(LeadDoubts, RandomCornersAreToldWhereTheyAreCut)
{
    std::mt19937 engine{Seed(2414)};
    const auto pick = [&engine](double low, double high) {
        return std::round(std::uniform_real_distribution<double>(low, high)(engine) * 100) / 100;
    };
    int told = 0, silent = 0;
    for (int round = 0; round < Rounds(40); ++round) {
        const double angle = pick(40, 140), radius = pick(2, 8);
        const double half = angle / 2 * 3.14159265358979323846 / 180;
        const double needed = radius * (1 + std::cos(half)) / std::sin(half);
        const double lead = pick(0.3 * needed, 1.7 * needed);
        const double depth = (needed - lead) * std::sin(half); // of the cut
        if (std::fabs(depth) < 0.02)
            continue;
        const std::vector<PathPoint> hole = TurnedWedge(angle, pick(0, 360));
        const Texts doubts = DoubtsOf(Hole("ROUTEZ5T71L" + Number(radius) + "LD" + Number(lead), hole));
        ASSERT_EQ(doubts.empty(), depth < 0) << RoundName(round) << Home.ReportText();
        const double cut = CutOutside(hole);
        ASSERT_TRUE(doubts.empty() ? cut == 0 : cut > 0 || depth < 1) << RoundName(round) << " " << cut;
        (doubts.empty() ? silent : told) += 1;
    }
    EXPECT_GT(told, 5);
    EXPECT_GT(silent, 5);
}

TEST_F(LeadDoubts, ClockwiseHoleWithRightCompensation)
{
    const std::vector<PathPoint> clockwise(SquareHole.rbegin(), SquareHole.rend());
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71R6LD14", clockwise)),
              Texts{LeadLine("ROUTEZ5T71R6LD14", "X100 Y250")});
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71R6LD15", clockwise)), None);
}

TEST_F(LeadDoubts, LeadOfThePostInstructionsCountsToo)
{
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71L6", SquareHole) + Instructions({"LEAD=ON 12"})),
              Texts{LeadLine("ROUTEZ5T71L6", "X100 Y100")});
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71L6", SquareHole) + Instructions({"LEAD=ON 15"})), None);
}

TEST_F(LeadDoubts, NothingIsSaidWhereTheToolHasRoomOrItsRadiusIsNotKnown)
{
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71R6LD6.1", SquareHole)), None); // outer corners
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71R6", SquareHole)), None);
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71LLD3", SquareHole)), None); // no radius
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71L", SquareHole)), None);
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71LD3", SquareHole)), None); // no compensation
    EXPECT_EQ(DoubtsOf(Line("ROUTEZ5T71L6", 100, 100, 250, 100) + Line("ROUTEZ5T71L6", 250, 100, 250, 250)),
              None); // open
}

TEST_F(LeadDoubts, ContourWithoutALeadBeginsHalfInItsWall)
{
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71L6", SquareHole)), Texts{BareLine("ROUTEZ5T71L6", "X100 Y100")});
    // Beside the first line's start and beside the last one's end.
    EXPECT_NEAR(CutOutside(SquareHole), 2 * HalfDisc, 2 * GridShare);
}

TEST_F(LeadDoubts, ContourThatBeginsInMidLineLeavesItsWallsWhole)
{
    const std::vector<PathPoint> fromTheMiddle = {{175, 100}, {250, 100}, {250, 250}, {100, 250}, {100, 100}};
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71L6", fromTheMiddle)), None);
    EXPECT_EQ(CutOutside(SquareHole), 0);
    const std::string polyline =
        Polyline("ROUTEZ5T71L6", {{100, 100}, {250, 100}, {250, 250}, {100, 250}}, Closed);
    EXPECT_EQ(DoubtsOf(polyline), Texts{BareLine("ROUTEZ5T71L6", "X100 Y100")});
    EXPECT_EQ(DoubtsOf(polyline + Instructions({"CORNERCOMP ON"})), None);
}

// A closed polyline of equal steps on a circle of radius 100.
std::string StepsRound(const std::string& layer, int count)
{
    std::vector<Vertex> points;
    for (int i = 0; i < count; ++i) {
        const double angle = i * 2 * 3.14159265358979323846 / count;
        points.push_back({300 + 100 * std::cos(angle), 200 + 100 * std::sin(angle)});
    }
    return Polyline(layer, points, Closed);
}

TEST_F(LeadDoubts, ManyStepsRoundACurveAreNoCorner)
{
    // 6 (1 - cos(360 / n)): 0.117 of 32 steps, 0.091 of 36; the route tolerance is 0.1.
    EXPECT_EQ(DoubtsOf(StepsRound("ROUTEZ5T71L6", 32)), Texts{BareLine("ROUTEZ5T71L6", "X400 Y200")});
    EXPECT_EQ(DoubtsOf(StepsRound("ROUTEZ5T71L6", 36)), None);
}

TEST_F(LeadDoubts, ARampOutFollowsTheContourButTheLeadInIsStillShort)
{
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71L6LD12RO3", SquareHole)),
              Texts{LeadLine("ROUTEZ5T71L6LD12RO3", "X100 Y100")});
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71L6LD15RO3", SquareHole)), None);
}

TEST_F(LeadDoubts, CornersOfALineAndAnArc)
{
    // The half disc of radius 50 above (200, 200), clockwise: from the left over the top and back.
    std::vector<PathPoint> hole;
    for (int step = 0; step <= 180; ++step) {
        const double angle = step * 3.14159265358979323846 / 180;
        hole.push_back({200 + 50 * std::cos(angle), 200 + 50 * std::sin(angle)});
    }
    const auto half = [](const std::string& layer, bool arcFirst) {
        const std::string arc = Arc(layer, 200, 200, 50, 0, 180);
        const std::string line = Line(layer, 250, 200, 150, 200);
        return arcFirst ? arc + line : line + arc;
    };
    for (const double lead : {12.0, 20.0, 40.0}) {
        const std::string layer = "ROUTEZ5T71R6LD" + Number(lead);
        EXPECT_EQ(DoubtsOf(half(layer, true)), Texts{LeadLine(layer, "X150 Y200")});
        EXPECT_GT(CutOutside(hole), 0) << lead;
    }
    // The line first, leads on the bisector: beside the lead-out's end the tool's centre lies 44 from the
    // middle of the arc where u = lead / sqrt 2 fulfils (54.243 - u)^2 + (u + 4.243)^2 = 44^2: 20.33.
    for (const double lead : {10.0, 14.0, 18.0, 20.3, 20.4, 30.0}) {
        const Texts doubts = DoubtsOf(half("ROUTEZ5T71R6LD" + Number(lead), false));
        EXPECT_EQ(doubts.empty(), lead > 20.33) << lead;
        if (lead <= 18 || lead >= 20.4) { // between them the cut is finer than the grid
            EXPECT_EQ(doubts.empty(), CutOutside(hole) == 0) << lead;
        }
    }
}

// Counter-clockwise from (200, 200) over an arc that turns away from the tool; the last wall comes in `turn`
// degrees to the right of the first direction.
struct ArcFirst {
    PathPoint Before;

    explicit ArcFirst(double turn)
    {
        const double radians = turn * 3.14159265358979323846 / 180;
        Before = {200 - 80 * std::cos(radians), 200 + 80 * std::sin(radians)};
    }
    std::string Drawn(const std::string& layer) const
    {
        const PathPoint corners[] = {{250, 150},      {250, 60}, {350, 60}, {350, 350},
                                     {Before.X, 350}, Before,    {200, 200}};
        std::string text = Arc(layer, 200, 150, 50, 0, 90);
        for (std::size_t i = 1; i < std::size(corners); ++i)
            text += Line(layer, corners[i - 1].X, corners[i - 1].Y, corners[i].X, corners[i].Y);
        return text;
    }
    std::vector<PathPoint> Hole() const
    {
        std::vector<PathPoint> points = {{250, 60}, {350, 60}, {350, 350}, {Before.X, 350}, Before};
        for (int step = 90; step >= 0; --step) {
            const double angle = step * 3.14159265358979323846 / 180;
            points.push_back({200 + 50 * std::cos(angle), 150 + 50 * std::sin(angle)});
        }
        return points;
    }
};

TEST_F(LeadDoubts, AQuarterCircleBeforeAnArcTurnsThroughTheWallBesideIt)
{
    // As deep as 12 (1 - cos turn): a hundredth at 2.34 degrees, where the tool beside the far end is clear.
    for (const double turn : {0.0, 1.0, 2.0, 2.3})
        EXPECT_EQ(DoubtsOf(ArcFirst(turn).Drawn("ROUTEZ5T71L6LD12")), None) << turn;
    for (const double turn : {2.4, 5.0, 20.0, 45.0, 70.0, 90.0}) {
        const Texts doubts = DoubtsOf(ArcFirst(turn).Drawn("ROUTEZ5T71L6LD12"));
        ASSERT_EQ(doubts.size(), 1U) << turn;
        EXPECT_TRUE(doubts[0].starts_with("Layer ROUTEZ5T71L6LD12: the lead at X200 Y200 cuts into "))
            << turn;
        if (turn >= 5) { // below that the cut is finer than chords and grid
            EXPECT_GT(CutOutside(ArcFirst(turn).Hole()), 0) << turn;
        }
    }
}

std::string ContourLine(const std::string& layer, const std::string& place)
{
    return "Layer " + layer + ": the lead at " + place + " cuts into its contour";
}

TEST_F(LeadDoubts, ALeadThatIsTooLongForTheRoomMeetsTheOppositeWall)
{
    // 40 wide: the tool beside the quarter circle reaches as far as the lead and its own radius.
    const std::vector<PathPoint> slot = {{200, 100}, {300, 100}, {300, 140}, {100, 140}, {100, 100}};
    for (const double lead : {20.0, 33.9, 34.1, 38.0}) {
        const std::string layer = "ROUTEZ5T71L6LD" + Number(lead);
        const Texts doubts = DoubtsOf(Hole(layer, slot));
        EXPECT_EQ(doubts, lead > 34 ? Texts{ContourLine(layer, "X200 Y100")} : None);
        EXPECT_EQ(CutOutside(slot) > 0, lead > 34) << lead;
    }
}

TEST_F(LeadDoubts, AQuarterCircleSmallerThanTheToolTurnsItOver)
{
    const Region around = Difference(BoxOf({0, 0}, {600, 400}), Polygon(SquareHole));
    for (const double lead : {3.0, 5.5, 6.0, 7.0}) {
        const std::string layer = "ROUTEZ5T71R6LD" + Number(lead);
        EXPECT_EQ(DoubtsOf(Hole(layer, SquareHole)),
                  lead < 6 ? Texts{ContourLine(layer, "X100 Y100")} : None);
        EXPECT_EQ(AreaBeside(Home.Program(), around).CutOutside > 0, lead < 6) << lead;
    }
}

TEST_F(LeadDoubts, ARampOutPastTheEndOfItsArcCutsTheWallBehindIt)
{
    // A part with a corner of 20, clockwise from the middle of its right end: the arc is 31.416 long, and
    // beyond it the tool's edge is a hundredth deep where (20 + 6) (1 - cos a) is, after .55 more.
    Region part = BoxOf({100, 100}, {300, 250});
    std::vector<PathPoint> corner = {{100, 100}};
    for (int step = 0; step <= 90; ++step) {
        const double angle = (180 + step) * 3.14159265358979323846 / 180;
        corner.push_back({120 + 20 * std::cos(angle), 120 + 20 * std::sin(angle)});
    }
    part = Difference(part, Polygon(corner));
    for (const double lead : {20.0, 31.4, 31.9, 32.1, 40.0, 60.0}) {
        const std::string layer = "ROUTEZ5T71L6RO4LD" + Number(lead);
        const Texts doubts = DoubtsOf(Arc(layer, 120, 120, 20, 180, 270) + Line(layer, 100, 120, 100, 250) +
                                      Line(layer, 100, 250, 300, 250) + Line(layer, 300, 250, 300, 100) +
                                      Line(layer, 300, 100, 120, 100));
        EXPECT_EQ(doubts, lead > 32 ? Texts{ContourLine(layer, "X120 Y100")} : None);
        const DrawnArea area = AreaBeside(Home.Program(), Difference(BoxOf({0, 0}, {600, 400}), part));
        EXPECT_EQ(area.Fault, "");
        if (lead < 32 || lead >= 40) {
            EXPECT_EQ(area.CutOutside > 0, lead > 32) << lead << " " << area.Outside;
        }
    }
}

TEST_F(LeadDoubts, PassesOfOneContourAreOneLine)
{
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ10M3T71L6LD12", SquareHole)),
              Texts{LeadLine("ROUTEZ10M3T71L6LD12", "X100 Y100")});
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ10M3T71L6", SquareHole)), Texts{BareLine("ROUTEZ10M3T71L6", "X100 Y100")});
}

TEST_F(LeadDoubts, PlacesAreThoseOfTheDrawing)
{
    const std::string panel = Rectangle("BORDERZ18", 40.3, 25.7, 600, 400);
    EXPECT_EQ(DoubtsOf(Hole("ROUTEZ5T71L6LD12", SquareHole), panel),
              Texts{LeadLine("ROUTEZ5T71L6LD12", "X100 Y100")});
}

TEST_F(LeadDoubts, PlacesInEdgeViewsAreThoseOfTheDrawing)
{
    // The face from (100, 100), views of 18 around it, 50 away. No programs: Evolution needs its files.
    Stages.StopBeforeWriters = true;
    const std::string panel =
        Rectangle("BORDERZ18", 100, 100, 600, 400) + Rectangle("BORDERZ18", 100, 550, 600, 18) +
        Rectangle("BORDERZ18", 100, 32, 600, 18) + Rectangle("BORDERZ18", 32, 100, 18, 400) +
        Rectangle("BORDERZ18", 750, 100, 18, 400);
    const std::string layer = "ROUTEZ5T71L2LD3";
    const PathPoint corners[] = {{230, 553}, {230, 35}, {35, 230}, {753, 230}, {230, 230}};
    for (const int control : {0, 1, 2})
        for (const PathPoint& at : corners) {
            const std::string flag = control == 0 ? "" : control == 1 ? "GE" : "EV";

            const std::string hole = Rectangle(layer, at.X, at.Y, 12, 12);
            std::string drawn = panel;
            for (std::size_t place = 0; (place = drawn.find("BORDERZ18", place)) != std::string::npos;
                 place += 9)
                drawn.replace(place, 9, "BORDER" + flag + "Z18");
            EXPECT_EQ(DoubtsOf(hole, drawn), Texts{LeadLine(layer, "X" + Number(at.X) + " Y" + Number(at.Y))})
                << control << Home.ReportText();
        }
    Stages.StopBeforeWriters = false;
}

TEST_F(LeadDoubts, InchDrawings)
{
    const std::string panel = Rectangle("BORDERZ.75", 0, 0, 24, 16);
    const std::vector<PathPoint> hole = {{4, 4}, {10, 4}, {10, 10}, {4, 10}};
    const std::string tooShort = "ROUTEZ.2T71L.25LD.602", enough = "ROUTEZ.2T71L.25LD.604";
    EXPECT_EQ(DoubtsOf(Hole(tooShort, hole), panel), Texts{LeadLine(tooShort, "X4 Y4")});
    EXPECT_EQ(DoubtsOf(Hole(enough, hole), panel), None);
}

} // namespace
} // namespace kv::lead_doubts
