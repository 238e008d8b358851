// Pockets of any shape by the setting Pockets=any: a drawing in, the report and the program out, the
// program read back and drawn with its tool. Tool radius 4, depth 6, step 5, where nothing else is said.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "machine/cnc_reader.h"
#include "proof/shop.h"
#include "routes/route_program.h"
#include "support/proof/region.h"

namespace kv::test {
namespace {

constexpr double Hairline = 0.01; // mm: what is no wider comes from chords
const std::string Pocket = "EXCAV_K5_Z6_T71_R4";

std::string Path(const std::vector<PathPoint>& points, const std::string& layer = Pocket)
{
    std::string text;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const PathPoint& to = points[(i + 1) % points.size()];
        text += Line(layer, points[i].X, points[i].Y, to.X, to.Y);
    }
    return text;
}

std::string Told(const std::string& place, const std::string& what, const std::string& layer = Pocket)
{
    return "Layer " + layer + ": the pocket at " + place + " " + what;
}

const std::vector<PathPoint> Ell = {{100, 100}, {300, 100}, {300, 150}, {160, 150}, {160, 250}, {100, 250}};

class ShapedPocket : public RouteProgram {
  protected:
    void SetUp() override
    {
        RouteProgram::SetUp();
        Config.PrecisionMetric = "4";
        Config.Pockets = "any";
    }
    MachineSteps Steps(const std::string& entities)
    {
        EXPECT_TRUE(Home.Convert(Drawing(Panel + entities))) << Home.ReportText();
        const MachineSteps steps = ReadCnc(Home.Program());
        EXPECT_EQ(steps.Unread, ProgramText());
        for (const WayFault& fault : WayFaults(steps))
            ADD_FAILURE() << fault.Text << " in line " << fault.Line << ": " << Home.Program()[fault.Line - 2]
                          << " " << Home.Program()[fault.Line - 1] << " " << Home.Program()[fault.Line];
        return steps;
    }
    // Nothing outside; left is only what a disc a hundredth wider than the tool cannot reach.
    void ExpectOnly(const MachineSteps& steps, const Region& pocket, double radius = 4)
    {
        const Region swept = SweptFace(steps);
        EXPECT_EQ(Described(ReachedBy(Difference(swept, pocket), Hairline)), "");
        const Region left = Difference(ReachedBy(pocket, 2.02 * radius), swept);
        EXPECT_EQ(Described(ReachedBy(left, 2 * Hairline)), "");
    }
    void ExpectCleared(const std::string& entities, const Region& pocket, double radius = 4)
    {
        ExpectOnly(Steps(entities), pocket, radius);
        EXPECT_EQ(LayerLines(), ProgramText());
    }
    ProgramText LayerLines() const
    {
        ProgramText lines;
        for (const std::string& line : Home.Lines)
            if (line.rfind("Layer ", 0) == 0)
                lines.push_back(line);
        return lines;
    }
    // One line says why; the outline is cut as the route that it is.
    void ExpectUncleared(const std::string& entities, const std::string& told)
    {
        EXPECT_TRUE(Home.Convert(Drawing(Panel + entities))) << Home.ReportText();
        EXPECT_EQ(LayerLines(), ProgramText{told});
        const MachineSteps steps = ReadCnc(Home.Program());
        ASSERT_FALSE(steps.Cuts.empty());
        for (const RouterCut& cut : steps.Cuts)
            EXPECT_LE(cut.Moves.size(), 6U);
    }
};

TEST_F(ShapedPocket, EllIsClearedToItsCorners)
{
    ExpectCleared(Path(Ell), Polygon(Ell));
}

TEST_F(ShapedPocket, EllStaysARouteWithoutTheSetting)
{
    for (const std::string told : {"", "told", "Told"}) {
        Config.Pockets = told;
        ExpectUncleared(Path(Ell), Told("X100 Y100", "is not cleared, no start mark meets its outline"));
    }
}

TEST_F(ShapedPocket, AnotherWordIsReportedAndTakenAsTold)
{
    Config.Pockets = "all";
    Home.Convert(Drawing(Panel + Path(Ell)));
    EXPECT_TRUE(Home.Reported("Setting Pockets: \"all\" is neither told nor any, told is taken"));
    EXPECT_TRUE(Home.Reported(Told("X100 Y100", "is not cleared, no start mark meets its outline")));
}

TEST_F(ShapedPocket, RectangleRoundedRectangleAndCircleGoTheSameWay)
{
    ExpectCleared(Rectangle(Pocket, 100, 100, 200, 120), BoxOf({100, 100}, {300, 220}));
    ExpectCleared(Lwpolyline(Pocket,
                             {{120, 100},
                              {280, 100, std::sqrt(2) - 1},
                              {300, 120},
                              {300, 200, std::sqrt(2) - 1},
                              {280, 220},
                              {120, 220, std::sqrt(2) - 1},
                              {100, 200},
                              {100, 120, std::sqrt(2) - 1}},
                             Closed),
                  BoxOf({100, 100}, {300, 220}, 20));
    ExpectCleared(test::Circle(Pocket, 300, 200, 57), DiscOf({300, 200}, 57));
    ExpectCleared(Arc(Pocket, 300, 200, 57, 45, 225) + Arc(Pocket, 300, 200, 57, 225, 45),
                  DiscOf({300, 200}, 57));
}

TEST_F(ShapedPocket, VerticesWithinStraightSides)
{
    const std::vector<PathPoint> points = {{100, 100}, {150, 100}, {180, 100}, {300, 100},
                                           {300, 130}, {300, 220}, {250, 220}, {249, 220},
                                           {100, 220}, {100, 180}, {100, 110}};
    const std::vector<PathPoint> island = {{180, 150}, {200, 150}, {220, 150},
                                           {220, 170}, {200, 170}, {180, 170}};
    ExpectCleared(Path(points), Polygon(points));
    ExpectCleared(Path(points) + Path(island), Difference(Polygon(points), Polygon(island)));
}

TEST_F(ShapedPocket, HexagonWithTheLettersLAndR)
{
    std::vector<PathPoint> hexagon;
    for (int corner = 0; corner < 6; ++corner)
        hexagon.push_back(
            {300 + 90 * std::cos(corner * 1.0471975511966), 200 + 90 * std::sin(corner * 1.0471975511966)});
    for (const std::string letter : {"L", "R"}) {
        const std::string layer = "EXCAV_K5_Z6_T71_" + letter + "4";
        const MachineSteps steps = Steps(Path(hexagon, layer));
        ExpectOnly(steps, Polygon(hexagon));
        for (const RouterCut& cut : steps.Cuts)
            EXPECT_EQ(cut.Side, letter == "L" ? 1 : -1);
    }
}

TEST_F(ShapedPocket, IslandsAreLeftStandingAndWhatIsInsideThemIsCleared)
{
    const Region pocket = Union(
        Difference(BoxOf({50, 50}, {550, 350}), Union(BoxOf({100, 100}, {300, 300}), DiscOf({450, 200}, 40))),
        BoxOf({150, 150}, {250, 250}));
    ExpectCleared(Rectangle(Pocket, 50, 50, 500, 300) + Rectangle(Pocket, 100, 100, 200, 200) +
                      test::Circle(Pocket, 450, 200, 40) + Rectangle(Pocket, 150, 150, 100, 100),
                  pocket);
}

TEST_F(ShapedPocket, StepsUpToTheToolsOwnWidthLeaveNoFloor)
{
    for (const std::string pitch : {"1", "4", "6.9", "7.9"})
        ExpectCleared(Path(Ell, "EXCAV_K" + pitch + "_Z6_T71_R4"), Polygon(Ell));
    Config.LineLimit = "32000"; // a hundredth of the tool
    ExpectCleared(Rectangle("EXCAV_K.08_Z6_T71_R4", 100, 100, 30, 20), BoxOf({100, 100}, {130, 120}));
}

TEST_F(ShapedPocket, StepOfTheToolsWidthOrMoreIsCutDown)
{
    const std::string wide = "EXCAV_K8.1_Z6_T71_R4";
    ExpectOnly(Steps(Path(Ell, wide)), Polygon(Ell));
    EXPECT_EQ(LayerLines(), ProgramText{Told("X100 Y100", "has a pitch above its tool, 7.6 is taken", wide)});
    ExpectCleared(Path(Ell, "EXCAV_K8_Z6_T71_R4"), Polygon(Ell));
    ExpectCleared(Path(Ell, "EXCAV_Z6_T71_R4"), Polygon(Ell)); // the tool's width is the step
}

TEST_F(ShapedPocket, GoesDownOnARampAwayFromTheCorners)
{
    const MachineSteps steps = Steps(Rectangle(Pocket, 100, 100, 200, 120));
    ASSERT_EQ(steps.Cuts.size(), 1U);
    const RouterCut& cut = steps.Cuts.front();
    EXPECT_EQ(cut.StartDepth, 0);
    EXPECT_GT(cut.Moves.size(), 10U);
    double depth = 0, length = 0;
    for (const Move& move : cut.Moves) {
        EXPECT_GE(move.DepthTo, depth);
        depth = move.DepthTo;
        length += depth < 6 ? Between(move.From, move.To) : 0;
    }
    EXPECT_EQ(depth, 6);
    EXPECT_GT(length, 30); // one in five
    EXPECT_GT(std::min({cut.Start.X - 100, 300 - cut.Start.X}), 20);
}

TEST_F(ShapedPocket, GoesDownStraightWhereItsMarkPoints)
{
    const std::string mark = Polyline(Pocket, {{195, 160}, {200, 160}}, Arrow);
    const MachineSteps steps = Steps(Rectangle(Pocket, 100, 100, 200, 120) + mark);
    ExpectOnly(steps, BoxOf({100, 100}, {300, 220}));
    ASSERT_EQ(steps.Cuts.size(), 1U);
    EXPECT_EQ(steps.Cuts.front().StartDepth, 6);
    EXPECT_NEAR(steps.Cuts.front().Start.X, 200, 6);
    EXPECT_EQ(LayerLines(), ProgramText());
}

TEST_F(ShapedPocket, MarkOnTheOutlineIsTheOutlinesOwn)
{
    const std::string mark = Polyline(Pocket, {{99, 100}, {100, 100}}, Arrow);
    const MachineSteps steps = Steps(Path(Ell) + mark);
    ExpectOnly(steps, Polygon(Ell));
    EXPECT_EQ(steps.Cuts.front().StartDepth, 6);
    EXPECT_EQ(LayerLines(), ProgramText());
}

TEST_F(ShapedPocket, MarkServesForOneWayAndTheOthersGoDownOnRamps)
{
    const std::vector<PathPoint> bone = {{100, 100}, {200, 100}, {200, 140}, {300, 140},
                                         {300, 100}, {400, 100}, {400, 200}, {300, 200},
                                         {300, 160}, {200, 160}, {200, 200}, {100, 200}};
    const std::string mark = Polyline(Pocket, {{345, 150}, {350, 150}}, Arrow);
    const MachineSteps steps = Steps(Path(bone) + mark);
    ExpectOnly(steps, Polygon(bone));
    ASSERT_EQ(steps.Cuts.size(), 2U);
    for (const RouterCut& cut : steps.Cuts)
        EXPECT_EQ(cut.StartDepth, cut.Start.X > 250 ? 6 : 0);
}

TEST_F(ShapedPocket, ThicknessIsNoToolRadius)
{
    const std::string layer = "EXCAV_K5_Z6_T71";
    Home.Convert(Drawing(Panel + test::Circle(layer, 300, 200, 50, Pair(39, 6.0))));
    EXPECT_EQ(LayerLines(),
              ProgramText{Told("X300 Y200", "is not cleared, its tool's radius is not given", layer)});
}

TEST_F(ShapedPocket, MarkOutsideIsReported)
{
    const std::string mark = Polyline(Pocket, {{400, 350}, {420, 350}}, Arrow);
    const MachineSteps steps = Steps(Rectangle(Pocket, 100, 100, 200, 120) + mark);
    ExpectOnly(steps, BoxOf({100, 100}, {300, 220}));
    EXPECT_EQ(steps.Cuts.front().StartDepth, 0);
    EXPECT_EQ(LayerLines(),
              ProgramText{"Layer " + Pocket + ": the start mark at X420 Y350 is outside of every outline"});
}

TEST_F(ShapedPocket, NarrowerThanItsToolIsNotCut)
{
    Home.Convert(Drawing(Panel + Rectangle(Pocket, 100, 100, 7.9, 50)));
    EXPECT_EQ(LayerLines(), ProgramText{Told("X100 Y100", "is not cleared, it is narrower than its tool")});
    EXPECT_TRUE(Home.Reported("No Selected Operations found for PTP"));
    // A hair wider than the tool is a pocket.
    ExpectCleared(Rectangle(Pocket, 100, 100, 8.02, 50), BoxOf({100, 100}, {108.02, 150}), 3.96);
}

TEST_F(ShapedPocket, NeckThatTheToolCannotPassIsReported)
{
    const std::vector<PathPoint> bone = {{100, 100}, {200, 100}, {200, 146}, {300, 146},
                                         {300, 100}, {400, 100}, {400, 200}, {300, 200},
                                         {300, 153}, {200, 153}, {200, 200}, {100, 200}};
    ExpectOnly(Steps(Path(bone)), Polygon(bone));
    ASSERT_EQ(LayerLines().size(), 1U);
    EXPECT_EQ(
        LayerLines().front().find(Told("X100 Y100", "has places that are narrower than its tool, one at X")),
        0U)
        << LayerLines().front();
}

TEST_F(ShapedPocket, OutlineThatCrossesItself)
{
    ExpectUncleared(Path({{100, 100}, {300, 200}, {300, 100}, {100, 200}}),
                    Told("X100 Y100", "is not cleared, its outline crosses or touches itself at X200 Y150"));
}

TEST_F(ShapedPocket, IslandThatTouchesOrCrossesTheWall)
{
    for (const double x : {100.0, 90.0}) {
        Home.Convert(
            Drawing(Panel + Rectangle(Pocket, 100, 100, 200, 120) + Rectangle(Pocket, x, 130, 50, 50)));
        ASSERT_FALSE(LayerLines().empty());
        for (const std::string& line : LayerLines())
            EXPECT_NE(line.find(" is not cleared, its outline crosses or touches another one at X100 Y"),
                      std::string::npos)
                << line;
        EXPECT_LE(Home.Program().size(), 16U);
    }
}

TEST_F(ShapedPocket, GapThatIsClosedIsReportedWithItsPlace)
{
    const std::string open = Line(Pocket, 100, 100, 300, 100) + Line(Pocket, 300, 100.02, 300, 200) +
                             Line(Pocket, 300, 200, 100, 200) + Line(Pocket, 100, 200, 100, 100);
    ExpectOnly(Steps(open), BoxOf({100, 100}, {300, 200}));
    EXPECT_EQ(LayerLines(),
              ProgramText{Told("X100 Y100", "has a gap in its outline at X300 Y100, it is closed by "
                                            "a line of .02")});
}

TEST_F(ShapedPocket, OutlineThatIsOpenIsReportedWithItsPlace)
{
    ExpectUncleared(Line(Pocket, 100, 100, 300, 100) + Line(Pocket, 300, 101, 300, 200) +
                        Line(Pocket, 300, 200, 100, 200) + Line(Pocket, 100, 200, 100, 100),
                    Told("X300 Y100", "is not cleared, its outline is open at X300 Y101 by 1"));
}

TEST_F(ShapedPocket, NothingIsClearedAroundALineThatCouldBeAnIsland)
{
    Home.Convert(Drawing(Panel + Rectangle(Pocket, 100, 100, 300, 200) + Line(Pocket, 200, 150, 250, 150) +
                         Line(Pocket, 250, 150, 250, 200)));
    EXPECT_TRUE(
        Home.Reported(Told("X100 Y100", "is not cleared, the outline inside it at X200 Y150 is not closed")))
        << Home.ReportText();
    EXPECT_LE(Home.Program().size(), 14U);
}

TEST_F(ShapedPocket, OutlineOfPolylinesThatMeetEndToEnd)
{
    ExpectCleared(Polyline(Pocket, {{100, 100}, {300, 100}, {300, 150}, {160, 150}}) +
                      Polyline(Pocket, {{100, 100}, {100, 250}, {160, 250}, {160, 150}}),
                  Polygon(Ell));
}

TEST_F(ShapedPocket, ToolWithoutARadiusIsReported)
{
    const std::string layer = "EXCAV_K5_Z6_T71";
    ExpectUncleared(Path(Ell, layer),
                    Told("X100 Y100", "is not cleared, its tool's radius is not given", layer));
}

TEST_F(ShapedPocket, ThirtyThousandVertices)
{
    std::vector<Vertex> wave;
    for (int i = 0; i < 30000; ++i) {
        const double angle = i * 6.283185307179586 / 30000;
        const double radius = 150 + 10 * std::sin(12 * angle);
        Vertex vertex;
        vertex.X = 300 + radius * std::cos(angle);
        vertex.Y = 200 + radius * std::sin(angle);
        wave.push_back(vertex);
    }
    Config.LineLimit = "32000";
    std::vector<PathPoint> points;
    for (const Vertex& vertex : wave)
        points.push_back({vertex.X, vertex.Y});
    const MachineSteps steps = Steps(Lwpolyline(Pocket, wave, Closed));
    EXPECT_EQ(LayerLines(), ProgramText());
    ASSERT_FALSE(steps.Cuts.empty());
    for (const RouterCut& cut : steps.Cuts) { // the tool's centre, plainly
        const ToolWay way = WayOf(cut);
        for (std::size_t i = 0; i < way.Pieces.size(); i += 60) {
            double nearest = 1000;
            for (const PathPoint& point : points)
                nearest = std::min(nearest, Between(point, way.Pieces[i].To));
            ASSERT_GT(nearest, 3.99) << way.Pieces[i].Line;
        }
    }
}

TEST_F(ShapedPocket, StepSoSmallThatTheRecordsDoNotHoldItsWays)
{
    Home.Convert(Drawing(Panel + Rectangle("EXCAV_K.001_Z6_T71_R4", 100, 100, 200, 120)));
    EXPECT_EQ(LayerLines(), ProgramText{Told("X100 Y100", "is not cleared, its ways are too many",
                                             "EXCAV_K.001_Z6_T71_R4")});
}

TEST_F(ShapedPocket, PocketsComeAheadOfWhatIsCutFreeAndGetNoLeads)
{
    Config.LeadS = 1;
    Config.LeadLength = "15";
    const MachineSteps steps = Steps(Rectangle("ROUTE_Z18_T72_R4", 50, 50, 400, 300) + Path(Ell));
    ASSERT_EQ(steps.Cuts.size(), 2U);
    MachineSteps first = steps;
    first.Cuts.pop_back();
    ExpectOnly(first, Polygon(Ell));
}

TEST_F(ShapedPocket, DepthPassesGoDownStepByStep)
{
    const MachineSteps steps = Steps(Path(Ell, "EXCAV_K5_Z6_M3_T71_R4"));
    ExpectOnly(steps, Polygon(Ell));
    for (const double depth : {2.0, 4.0, 6.0}) {
        Sweep pass;
        pass.Depth = depth;
        EXPECT_EQ(
            Described(ReachedBy(Difference(ReachedBy(Polygon(Ell), 8.08), SweptFace(steps, pass)), 0.02)),
            "");
    }
}

TEST_F(ShapedPocket, WaysLongerThanAProgramMayBeAreCutIntoRoutes)
{
    Config.LineLimit = "200";
    ASSERT_TRUE(Home.Convert(Drawing(Panel + Path(Ell, "EXCAV_K.5_Z6_T71_R4")))) << Home.ReportText();
    MachineSteps all;
    int portions = 0;
    for (int portion = 1; Home.HasProgram("DOOR" + std::to_string(portion)); ++portion, ++portions) {
        const ProgramText lines = Home.Program("DOOR" + std::to_string(portion));
        EXPECT_LE(lines.size(), 205U);
        const MachineSteps steps = ReadCnc(lines);
        EXPECT_EQ(steps.Unread, ProgramText());
        all.Cuts.insert(all.Cuts.end(), steps.Cuts.begin(), steps.Cuts.end());
    }
    EXPECT_GT(portions, 1);
    ExpectOnly(all, Polygon(Ell));
    EXPECT_EQ(WayFaults(all).size(), 0U);
}

const std::string EllWithIsland = Path(Ell) + test::Circle(Pocket, 130, 130, 12);

TEST(ShapedPocketOnEachControl, IsTheSame)
{
    for (const Control control : {Control::Cnc90, Control::Genesis, Control::Evolution})
        for (const Corner& corner :
             {Corner{}, Corner{true, false}, Corner{false, true}, Corner{true, true}}) {
            SCOPED_TRACE(ShownControl(control));
            Shop shop(control);
            Config.Pockets = "any";
            const std::string border =
                std::string("BORDER") + (corner.Top ? "U" : "L") + (corner.Right ? "R" : "L") + "Z18";
            const MachineSteps steps =
                shop.StepsOf(Drawing(Rectangle(border, 0, 0, 600, 400) + EllWithIsland), corner);
            EXPECT_EQ(steps.Unread, ProgramText());
            EXPECT_EQ(WayFaults(steps).size(), 0U);
            const Region pocket = Difference(Polygon(Ell), DiscOf({130, 130}, 12));
            const Region swept = SweptFace(steps);
            EXPECT_EQ(Described(ReachedBy(Difference(swept, pocket), Hairline)), "");
            EXPECT_EQ(Described(ReachedBy(Difference(ReachedBy(pocket, 8.08), swept), 2 * Hairline)), "");
        }
}

} // namespace
} // namespace kv::test
