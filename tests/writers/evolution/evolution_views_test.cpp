// Where the tool of a Genesis Evolution goes beside the line that was drawn: programs are read back, taken
// from the machine's corner and from each edge's own plane to the drawing again, and held against the drawn
// steps. Routes on the face and in the views around it, with the machine's origin in each corner.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/plane.h"
#include "support/scene.h"

namespace kv::test {
namespace {

constexpr double ToolRadius = 3;
constexpr double Turn = 2 * 3.14159265358979323846;

using Way = std::vector<PathPoint>;

// Places of the tool's centre along a step; `hand` is 1 left of the way, -1 right of it.
void AddLineStep(Way& way, const PathPoint& from, const PathPoint& to, double hand)
{
    const double length = Between(from, to);
    for (const double part : {0.25, 0.5, 0.75})
        way.push_back({from.X + part * (to.X - from.X) - hand * ToolRadius * (to.Y - from.Y) / length,
                       from.Y + part * (to.Y - from.Y) + hand * ToolRadius * (to.X - from.X) / length});
}

void AddArcStep(Way& way, const PathPoint& from, const PathPoint& to, const PathPoint& centre, bool left,
                double hand)
{
    const double begin = std::atan2(from.Y - centre.Y, from.X - centre.X);
    double angle = std::atan2(to.Y - centre.Y, to.X - centre.X) - begin;
    while (angle <= 1e-4)
        angle += Turn;
    if (!left)
        angle -= Turn;
    const double radius = Between(from, centre) + (left ? -hand : hand) * ToolRadius;
    for (const double part : {0.25, 0.5, 0.75})
        way.push_back({centre.X + radius * std::cos(begin + part * angle),
                       centre.Y + radius * std::sin(begin + part * angle)});
}

// The way beside a polyline as drawn.
Way BesidePolyline(const std::vector<Vertex>& vertices, double hand)
{
    Way way;
    for (std::size_t i = 1; i < vertices.size(); ++i) {
        const PathPoint from{vertices[i - 1].X, vertices[i - 1].Y};
        const PathPoint to{vertices[i].X, vertices[i].Y};
        const double bulge = vertices[i - 1].Bulge;
        if (bulge == 0) {
            AddLineStep(way, from, to, hand);
            continue;
        }
        // The centre lies left of the chord's middle, by (1 - b b) / (4 b) of the chord.
        const double left = (1 - bulge * bulge) / (4 * bulge);
        const PathPoint centre{(from.X + to.X) / 2 - left * (to.Y - from.Y),
                               (from.Y + to.Y) / 2 + left * (to.X - from.X)};
        AddArcStep(way, from, to, centre, bulge > 0, hand);
    }
    return way;
}

std::map<std::string, std::string> WordsOf(const std::string& line)
{
    std::map<std::string, std::string> words;
    std::istringstream text(line);
    for (std::string word; text >> word;) {
        const std::size_t equals = word.find('=');
        words[word.substr(0, equals)] = equals == std::string::npos ? "" : word.substr(equals + 1);
    }
    return words;
}

// The tool's way that the operations of one side describe, in that side's own plane.
Way WayOf(const std::vector<std::string>& lines)
{
    Way way;
    PathPoint at;
    double hand = 0;
    for (const std::string& line : lines) {
        std::map<std::string, std::string> words = WordsOf(line);
        if (line.starts_with("W#89{")) {
            at = {std::stod(words["#1"]), std::stod(words["#2"])};
            hand = words["#40"] == "1" ? 1 : words["#40"] == "2" ? -1 : 0;
        } else if (line.starts_with("W#2201{")) {
            const PathPoint to{std::stod(words["#1"]), std::stod(words["#2"])};
            AddLineStep(way, at, to, hand);
            at = to;
        } else if (line.starts_with("W#2113{")) {
            PathPoint centre;
            if (words["#31"].starts_with("a;"))
                centre = {std::stod(words["#31"].substr(2)), std::stod(words["#32"].substr(2))};
            else
                centre = {at.X + std::stod(words["#31"]), at.Y + std::stod(words["#32"])};
            const double angle = std::stod(words["#8044"]) * Turn / 360, radius = Between(at, centre);
            const PathPoint to{centre.X + radius * std::cos(angle), centre.Y + radius * std::sin(angle)};
            AddArcStep(way, at, to, centre, words["#34"] == "1", hand);
            at = to;
        }
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

// A side of the program, and the place in the drawing of a point in its plane as read from the lower left:
// along the edge, and away from the view's outer or lower limit.
struct View {
    int ProgramSide;
    bool AlongX;
    PathPoint (*Drawn)(const PathPoint& p);
};
const View Above{5, true, [](const PathPoint& p) { return PathPoint{p.X + 50, 486 - p.Y}; }};
const View Below{3, true, [](const PathPoint& p) { return PathPoint{p.X + 50, p.Y + 14}; }};
const View LeftOf{6, false, [](const PathPoint& p) { return PathPoint{p.Y + 14, p.X + 50}; }};
const View RightOf{4, false, [](const PathPoint& p) { return PathPoint{686 - p.Y, p.X + 50}; }};
const View OnFace{1, true, [](const PathPoint& p) { return PathPoint{p.X + 50, p.Y + 50}; }};

struct EvolutionViews : testing::Test {
    RunBlock& Run = kv::Run;
    Scene Home;

    void SetUp() override
    {
        Home.Write("EvHeader.dat", "HEAD\r\n\r\n::SIDE=\r\n\r\nEND\r\n");
        Config.PrecisionMetric = "5";
        Run.ControlType = 2;
    }
    std::vector<std::string> SideLines(int side)
    {
        std::istringstream text(Home.Read(Home.Programs / "DOOR.CNC"));
        std::vector<std::string> lines;
        bool inside = false;
        for (std::string line; std::getline(text, line);) {
            if (line.starts_with("SIDE#"))
                inside = line.starts_with("SIDE#" + std::to_string(side));
            else if (inside && line.starts_with("W#"))
                lines.push_back(line);
        }
        return lines;
    }
    // Under each corner the tool goes where the drawing wants it.
    void ExpectWay(const std::string& entities, const View& view, const Way& drawn)
    {
        ASSERT_FALSE(drawn.empty());
        for (const std::string corner : {"LL", "LR", "UL", "UR"}) {
            ASSERT_TRUE(Home.Convert(Drawing(ViewsOn("BORDER" + corner + "Z18") + entities)))
                << Home.ReportText();
            const Way way = WayOf(SideLines(view.ProgramSide));
            ASSERT_EQ(way.size(), drawn.size()) << corner;
            const bool right = corner[1] == 'R', top = corner[0] == 'U', face = view.ProgramSide == 1;
            for (std::size_t i = 0; i < way.size(); ++i) {
                PathPoint at = way[i];
                if (view.AlongX ? right : top)
                    at.X = (view.AlongX ? 600 : 400) - at.X;
                if (face && top)
                    at.Y = 400 - at.Y;
                at = view.Drawn(at);
                EXPECT_NEAR(at.X, drawn[i].X, 0.01) << corner << " " << i;
                EXPECT_NEAR(at.Y, drawn[i].Y, 0.01) << corner << " " << i;
            }
        }
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
            ExpectWay(Polyline(OnTheLeft, vertices), *place.In, BesidePolyline(vertices, 1));
            ExpectWay(Polyline(OnTheRight, vertices), *place.In, BesidePolyline(vertices, -1));
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
        const PathPoint from{c.X, c.Y + 5}, to{c.X + 5, c.Y};
        for (const double hand : {1.0, -1.0}) {
            Way drawn;
            AddArcStep(drawn, from, to, c, false, hand);
            ExpectWay(Arc(hand > 0 ? OnTheLeft : OnTheRight, c.X, c.Y, 5, 0, 90), *place.In, drawn);
        }
    }
}

TEST_F(EvolutionViews, ViewsAboveAndBelowAreMeasuredFromTheirOwnExtents)
{
    ASSERT_TRUE(Home.Convert(Drawing(ViewsOn("BORDERZ18") + Line("ROUTEZ5T71", 150, 472, 250, 472) +
                                     Line("ROUTEZ5T71", 160, 20, 260, 20))));
    EXPECT_NE(SideLines(5).at(0).find("#1=100 #2=14 #3=-5"), std::string::npos) << SideLines(5).at(0);
    EXPECT_NE(SideLines(3).at(0).find("#1=110 #2=6 #3=-5"), std::string::npos) << SideLines(3).at(0);
}

} // namespace
} // namespace kv::test
