// Where the tool of a Genesis Evolution goes beside the line that was drawn: programs are read back, taken
// from the machine's corner and from each edge's own plane to the drawing again, and held against the drawn
// steps. Routes on the face and in the views around it, with the machine's origin in each corner.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "machine/evolution_reader.h"
#include "machine/path_point.h"
#include "machine/text_lines.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv::test {
namespace {

constexpr double ToolRadius = 3;

using Way = std::vector<Move>;

Move DrawnStep(const PathPoint& from, const PathPoint& to)
{
    Move step;
    step.From = from;
    step.To = to;
    return step;
}

// The way of a polyline as drawn.
Way WayOfPolyline(const std::vector<Vertex>& vertices)
{
    Way way;
    for (std::size_t i = 1; i < vertices.size(); ++i) {
        const PathPoint from{vertices[i - 1].X, vertices[i - 1].Y};
        const PathPoint to{vertices[i].X, vertices[i].Y};
        way.push_back(DrawnStep(from, to));
        const double bulge = vertices[i - 1].Bulge;
        if (bulge == 0)
            continue;
        // The centre lies left of the chord's middle, by (1 - b b) / (4 b) of the chord.
        const double left = (1 - bulge * bulge) / (4 * bulge);
        way.back().IsArc = true;
        way.back().Sweep = 4 * std::atan(bulge) * 45 / std::atan(1);
        way.back().Centre = {(from.X + to.X) / 2 - left * (to.Y - from.Y),
                             (from.Y + to.Y) / 2 + left * (to.X - from.X)};
    }
    return way;
}

// The face from (50, 50) on, 600 x 400 x 18; above it Y 468 to 486, below 14 to 32, left X 14 to 32, right
// 668 to 686.
std::string ViewsOn(const std::string& layer)
{
    return Rectangle(layer, 50, 50, 600, 400) + Rectangle(layer, 50, 468, 600, 18) +
           Rectangle(layer, 50, 14, 600, 18) + Rectangle(layer, 14, 50, 18, 400) +
           Rectangle(layer, 668, 50, 18, 400);
}

// A plane of the panel, where it is drawn, and its place in the drawing: along the edge, and up from its
// underside. Left of the way is left in both, but for the views that show the plane from its other side.
struct View {
    Plane On;
    bool IsMirrored;
    PathPoint (*Drawn)(const PathPoint& p);
};
const View Above{Plane::Edge1, true, [](const PathPoint& p) { return PathPoint{p.X + 50, 486 - p.Y}; }};
const View Below{Plane::Edge2, false, [](const PathPoint& p) { return PathPoint{p.X + 50, p.Y + 14}; }};
const View LeftOf{Plane::Edge3, true, [](const PathPoint& p) { return PathPoint{p.Y + 14, p.X + 50}; }};
const View RightOf{Plane::Edge4, false, [](const PathPoint& p) { return PathPoint{686 - p.Y, p.X + 50}; }};
const View OnFace{Plane::Surface, false, [](const PathPoint& p) { return PathPoint{p.X + 50, p.Y + 50}; }};

struct EvolutionViews : testing::Test {
    RunBlock& Run = kv::Run;
    Scene Home;

    void SetUp() override
    {
        Home.Write("EvHeader.dat", "HEAD\r\n\r\n::SIDE=\r\n\r\nEND\r\n");
        Config.PrecisionMetric = "5";
        Run.ControlType = 2;
    }
    std::vector<std::string> ProgramLines() { return LinesOf(Home.Read(Home.Programs / "DOOR.CNC")); }
    // Under each corner the tool goes beside each drawn step, on the hand that is drawn: 1 left, -1 right.
    void ExpectWay(const std::string& entities, const View& view, const Way& drawn, int hand)
    {
        for (const std::string corner : {"LL", "LR", "UL", "UR"}) {
            SCOPED_TRACE(corner);
            ASSERT_TRUE(Home.Convert(Drawing(ViewsOn("BORDER" + corner + "Z18") + entities)))
                << Home.ReportText();
            const MachineSteps steps =
                ReadEvolution(ProgramLines(), {{corner[1] == 'R', corner[0] == 'U'}, true});
            EXPECT_EQ(steps.Unread, std::vector<std::string>());
            ASSERT_EQ(steps.Cuts.size(), 1U);
            const RouterCut& cut = steps.Cuts[0];
            const int sense = view.IsMirrored ? -1 : 1;
            EXPECT_EQ(cut.On, view.On);
            EXPECT_EQ(cut.Side, hand * sense);
            EXPECT_EQ(cut.Radius, ToolRadius);
            ASSERT_EQ(cut.Moves.size(), drawn.size());
            for (std::size_t i = 0; i < drawn.size(); ++i)
                ExpectMove(cut.Moves[i], view, drawn[i], sense);
        }
    }
    static void ExpectMove(const Move& move, const View& view, const Move& drawn, int sense)
    {
        EXPECT_LT(Between(view.Drawn(move.From), drawn.From), 0.01);
        EXPECT_LT(Between(view.Drawn(move.To), drawn.To), 0.01);
        ASSERT_EQ(move.IsArc, drawn.IsArc);
        if (!move.IsArc)
            return;
        EXPECT_LT(Between(view.Drawn(move.Centre), drawn.Centre), 0.01);
        EXPECT_NEAR(move.Sweep * sense, drawn.Sweep, 0.1);
    }
};

const std::string OnTheLeft = "ROUTEZ5T71L3", OnTheRight = "ROUTEZ5T71R3";

// A step, a bulge, a step back: with the bulge to either hand, and first of all or later.
std::vector<std::vector<Vertex>> Polylines(double x, double y, double dx, double dy)
{
    std::vector<std::vector<Vertex>> all;
    for (const double bulge : {0.6, -0.6, 1.5, -1.5}) {
        all.push_back({{x, y, bulge}, {x + dx, y + dy}, {x + 2 * dx, y + dy}});
        all.push_back({{x, y}, {x + dx, y + dy, bulge}, {x + dx, y + 2 * dy}, {x + 3 * dx, y + 2 * dy}});
    }
    return all;
}

TEST_F(EvolutionViews, BesideAPolylineTheToolStaysOnItsSideOnTheFaceAndInEveryView)
{
    struct Place {
        const View* In;
        double X, Y;
    };
    for (const Place& place : {Place{&OnFace, 300, 200},
                               {&Above, 200, 472},
                               {&Below, 200, 18},
                               {&LeftOf, 18, 150},
                               {&RightOf, 672, 150}})
        for (const std::vector<Vertex>& vertices : Polylines(place.X, place.Y, 4, 5)) {
            ExpectWay(Polyline(OnTheLeft, vertices), *place.In, WayOfPolyline(vertices), 1);
            ExpectWay(Polyline(OnTheRight, vertices), *place.In, WayOfPolyline(vertices), -1);
        }
}

TEST_F(EvolutionViews, BesideAnArcTheToolStaysOnItsSideOnTheFaceAndInEveryView)
{
    struct Place {
        const View* In;
        PathPoint Centre;
    };
    for (const Place& place : {Place{&OnFace, {300, 200}},
                               {&Above, {300, 477}},
                               {&Below, {300, 23}},
                               {&LeftOf, {23, 200}},
                               {&RightOf, {677, 200}}}) {
        // An arc is cut clockwise, from its end.
        const PathPoint& c = place.Centre;
        Move drawn = DrawnStep({c.X, c.Y + 5}, {c.X + 5, c.Y});
        drawn.IsArc = true;
        drawn.Centre = c;
        drawn.Sweep = -90;
        ExpectWay(Arc(OnTheLeft, c.X, c.Y, 5, 0, 90), *place.In, {drawn}, 1);
        ExpectWay(Arc(OnTheRight, c.X, c.Y, 5, 0, 90), *place.In, {drawn}, -1);
    }
}

TEST_F(EvolutionViews, ViewsAboveAndBelowAreMeasuredFromTheirOwnExtents)
{
    ASSERT_TRUE(Home.Convert(Drawing(ViewsOn("BORDERZ18") + Line("ROUTEZ5T71", 150, 472, 250, 472) +
                                     Line("ROUTEZ5T71", 160, 20, 260, 20))));
    const MachineSteps steps = ReadEvolution(ProgramLines());
    ASSERT_EQ(steps.Cuts.size(), 2U);
    const RouterCut &below = steps.Cuts[0], &above = steps.Cuts[1]; // sides 3 and 5 of the program
    EXPECT_EQ(below.On, Plane::Edge2);
    EXPECT_EQ(Between(below.Start, {110, 6}), 0);
    EXPECT_EQ(below.StartDepth, 5);
    EXPECT_EQ(above.On, Plane::Edge1);
    EXPECT_EQ(Between(above.Start, {100, 14}), 0);
    EXPECT_EQ(above.StartDepth, 5);
}

} // namespace
} // namespace kv::test
