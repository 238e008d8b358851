// Pockets that are hardly any: steps and tools that do not fit, outlines that cross themselves, are open or
// touch, marks that point past them, thousands of vertices. The job ends well, the program cuts what is
// drawn, and one clear line tells of each. The tool has radius 3.
#include <algorithm>
#include <chrono>
#include <cmath>

#include "routes/route_program.h"
#include "support/proof/beside_outline.h"

namespace kv::bad_pockets {
namespace {

using namespace test;

constexpr double Pi = 3.14159265358979323846;
constexpr double HalfTool = Pi / 2 * 9; // what a start in a sharp corner cuts of the wall
constexpr double CornerRest = (1 - Pi / 4) * 9;
constexpr double GridShare = 1.5;
const std::string Layer = "EXCAVZ5K4T71R3";

using Texts = std::vector<std::string>;

class BadPockets : public RouteProgram {
  protected:
    // Lines of the report behind "Layer ...: the pocket at "; the job ends well and makes a program.
    Texts ToldOf(const std::string& entities)
    {
        EXPECT_TRUE(Home.Convert(Drawing(Panel + entities))) << Home.ReportText();
        EXPECT_EQ(Run.RunFailed, False);
        EXPECT_TRUE(Home.HasProgram()) << Home.ReportText();
        EXPECT_EQ(ProgramFaults(Home.Program()), Texts());
        Texts told;
        const std::string place = ": the pocket at ";
        for (const std::string& line : Home.Lines)
            if (line.find(place) != std::string::npos)
                told.push_back(line.substr(line.find(place) + place.size()));
        return told;
    }
    DrawnArea AreaIn(const PathPoint& low, const PathPoint& high)
    {
        const DrawnArea area = AreaBeside(Home.Program(), BoxOf(low, high));
        EXPECT_EQ(area.Fault, "");
        return area;
    }
    // The program cuts the lines as a route, in this order.
    void ExpectRoute(const std::vector<PathPoint>& points, const std::string& start)
    {
        ProgramText program = {Start + start};
        for (std::size_t i = 1; i < points.size(); ++i)
            program.push_back("G1G90X" + Number(points[i].X) + "Y" + Number(points[i].Y) + "Z5");
        EXPECT_EQ(Home.Program(), kv::test::Around(program)) << Home.ReportText();
    }
};

std::string StartMark(double x1, double y1, double x2, double y2, const std::string& layer = Layer)
{
    return Polyline(layer, {{x1, y1}, {x2, y2}}, Arrow);
}

// Lines from point to point, not back to the first.
std::string Steps(const std::vector<PathPoint>& points)
{
    std::string lines;
    for (std::size_t i = 1; i < points.size(); ++i)
        lines += Line(Layer, points[i - 1].X, points[i - 1].Y, points[i].X, points[i].Y);
    return lines;
}

const std::string Box = Rectangle(Layer, 100, 100, 100, 60);
const std::string Narrow = "has ways that are narrower than its tool";
const std::string SharpBegin = "begins in a sharp corner and cuts into its wall";
const Texts Cleared = {"X99 Y100 " + Narrow, "X99 Y100 " + SharpBegin};

std::string BoxWith(const std::string& values, double width, double height)
{
    const std::string layer = "EXCAVZ5" + values;
    return Rectangle(layer, 100, 100, width, height) + StartMark(99, 100, 100, 100, layer);
}

TEST_F(BadPockets, PitchAboveTheToolsDiameter)
{
    EXPECT_EQ(ToldOf(BoxWith("K7T71R3", 100, 60)),
              (Texts{Cleared[0], Cleared[1], "X99 Y100 leaves wood between its ways"}));
    const DrawnArea area = AreaIn({100, 100}, {200, 160});
    EXPECT_NEAR(area.CutOutside, HalfTool, GridShare);
    EXPECT_GT(area.LeftInside, 250); // one wide, three times around
}

TEST_F(BadPockets, PitchOfTheToolsDiameter)
{
    const Texts told = {Cleared[0], Cleared[1], "X99 Y100 leaves islands at its sharp corners"};
    EXPECT_EQ(ToldOf(BoxWith("K6T71R3", 100, 60)), told);
    EXPECT_EQ(ToldOf(BoxWith("T71R3", 100, 60)), told); // no step: the tool's diameter
    const DrawnArea area = AreaIn({100, 100}, {200, 160});
    EXPECT_NEAR(area.CutOutside, HalfTool, GridShare);
    EXPECT_GT(area.LeftInside, 15 * CornerRest);
}

TEST_F(BadPockets, PitchOfAHundredthOfTheToolsDiameter)
{
    EXPECT_EQ(ToldOf(BoxWith("K.06T71R3", 24, 12)), Cleared);
    const DrawnArea area = AreaIn({100, 100}, {124, 112});
    EXPECT_NEAR(area.CutOutside, HalfTool, GridShare);
    EXPECT_NEAR(area.LeftInside, 3 * CornerRest, GridShare);
}

TEST_F(BadPockets, ToolWiderThanThePocketIsReportedAndNothingOfItIsCut)
{
    const std::string beside = Rectangle("ROUTEZ18T72", 50, 50, 300, 250);
    const auto cutsOfBeside = [&] {
        std::size_t starts = 0;
        for (const std::string& text : Home.Program())
            starts += text.rfind("G88", 0) == 0 ? 1U : 0U;
        return starts;
    };
    for (const double height : {5.0, 5.98}) {
        EXPECT_EQ(ToldOf(BoxWith("K4T71R3", 40, height) + beside),
                  Texts{"X99 Y100 is not cleared, it is narrower than its tool"});
        EXPECT_EQ(cutsOfBeside(), 1U);
    }
    for (const std::string& circle : {Circle(Layer, 200, 200, 2.9), Arc(Layer, 200, 200, 2.9, 0, 180) +
                                                                        Arc(Layer, 200, 200, 2.9, 180, 0)}) {
        const Texts lines = ToldOf(circle + beside);
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_TRUE(lines[0].ends_with(" is not cleared, it is narrower than its tool")) << lines[0];
        EXPECT_EQ(cutsOfBeside(), 1U);
    }
    EXPECT_EQ(ToldOf(BoxWith("K5T71R3", 40, 6)), Texts{Cleared[1]}); // as wide as the tool
}

TEST_F(BadPockets, OutlineThatCrossesItself)
{
    const std::vector<PathPoint> bow = {{100, 100}, {200, 160}, {200, 100}, {100, 160}, {100, 100}};
    EXPECT_EQ(ToldOf(Steps(bow) + StartMark(99, 100, 100, 100)),
              Texts{"X99 Y100 is not cleared, its outline is no rectangle"});
    ExpectRoute(bow, "G42R3X100Y100Z5");
    // Four sides of a box, but the way goes over two of them twice.
    EXPECT_EQ(ToldOf(Steps({{100, 100},
                            {200, 100},
                            {200, 160},
                            {150, 160},
                            {150, 100},
                            {120, 100},
                            {120, 160},
                            {100, 160},
                            {100, 100}}) +
                     StartMark(99, 100, 100, 100)),
              Texts{"X99 Y100 is not cleared, its outline is no rectangle"});
}

// Open by `gap` in the middle of the right side, at the end of the upper one, at the start.
std::vector<std::string> OpenOutlines(double gap)
{
    return {Line(Layer, 100, 100, 200, 100) + Line(Layer, 200, 100, 200, 130) +
                Steps({{200, 130 + gap}, {200, 160}, {100, 160}, {100, 100}}),
            Steps({{100, 100}, {200, 100}, {200, 160}, {100, 160}}) + Line(Layer, 100, 160 - gap, 100, 100),
            Steps({{100, 100}, {200, 100}, {200, 160}, {100, 160}, {100, 100 + gap}})};
}

TEST_F(BadPockets, OutlineOpenByMoreThanTheToleranceIsToldWithThePlaceOfItsGap)
{
    const Texts places = {"X200 Y130", "X100 Y160", "X100 Y100.02"};
    Config.RouteTolerance = ".01";
    const std::vector<std::string> drawn = OpenOutlines(0.02);
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        SCOPED_TRACE(places[i]);
        EXPECT_EQ(ToldOf(drawn[i] + StartMark(99, 100, 100, 100)),
                  Texts{"X99 Y100 is not cleared, its outline is open at " + places[i] + " by .02"});
        // Nor does another pocket of the layer, near to the gap, mislead.
        EXPECT_EQ(ToldOf(drawn[i] + StartMark(99, 100, 100, 100) + Circle(Layer, 230, 130, 29.99) +
                         Rectangle(Layer, 300, 100, 100, 60) + StartMark(299, 100, 300, 100)),
                  (Texts{"X299 Y100 " + Narrow, "X299 Y100 " + SharpBegin,
                         "X99 Y100 is not cleared, its outline is open at " + places[i] + " by .02"}));
    }
}

TEST_F(BadPockets, OutlineOpenByLessThanTheToleranceIsClearedAndItsGapIsReported)
{
    for (const std::string& drawn : OpenOutlines(0.02)) { // within 0.1
        Texts lines = ToldOf(drawn + StartMark(99, 100, 100, 100));
        const auto isGap = [](const std::string& line) {
            return line.find(" has a gap in its outline at X") != std::string::npos &&
                   line.ends_with(" of .02");
        };
        EXPECT_EQ(std::erase_if(lines, isGap), 1U) << Home.ReportText();
        EXPECT_EQ(lines, Cleared);
        const DrawnArea area = AreaIn({100, 100}, {200, 160});
        EXPECT_NEAR(area.CutOutside, HalfTool, GridShare);
        EXPECT_NEAR(area.LeftInside, 3 * CornerRest, GridShare);
    }
}

TEST_F(BadPockets, OpenOutlinesInOtherForms)
{
    // Without a start mark the gap is told all the same.
    EXPECT_EQ(ToldOf(Steps({{100, 100}, {200, 100}, {200, 160}, {100, 160}, {100, 100.2}})),
              Texts{"X100 Y100 is not cleared, its outline is open at X100 Y100.2 by .2"});
    EXPECT_EQ(ToldOf(Polyline(Layer, {{100, 100}, {200, 100}, {200, 160}, {100, 160}, {100, 100.2}}) +
                     StartMark(99, 100, 100, 100)),
              Texts{"X99 Y100 is not cleared, its outline is open at X100 Y100.2 by .2"});
    // Two arcs, one of them two degrees short of meeting the other.
    EXPECT_EQ(ToldOf(Arc(Layer, 300, 200, 50, 90, 270) + Arc(Layer, 300, 200, 50, 270, 88)),
              Texts{"X300 Y250 is not cleared, its outline is open at X301.745 Y249.9695 by 1.7452"});
}

TEST_F(BadPockets, MarkOutsideOfItsOutline)
{
    EXPECT_EQ(ToldOf(Box + StartMark(50, 50, 60, 60)),
              (Texts{"X50 Y50 is not cleared", "X100 Y100 is not cleared, no start mark meets its outline"}));
    ExpectRoute({{100, 100}, {200, 100}, {200, 160}, {100, 160}, {100, 100}}, "G42R3X100Y100Z5");
}

TEST_F(BadPockets, MarkThatPointsAnyWay)
{
    for (int bearing = 0; bearing < 360; bearing += 15) {
        const double x = 100 + 5 * std::cos(bearing * Pi / 180), y = 100 + 5 * std::sin(bearing * Pi / 180);
        EXPECT_EQ(ToldOf(Box + StartMark(x, y, 100, 100)).size(), 2U) << bearing << Home.ReportText();
        const DrawnArea area = AreaIn({100, 100}, {200, 160});
        EXPECT_NEAR(area.CutOutside, HalfTool, GridShare) << bearing;
        EXPECT_NEAR(area.LeftInside, 3 * CornerRest, GridShare) << bearing;
    }
}

double SecondsSince(const std::chrono::steady_clock::time_point& begin)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}
constexpr double LongestWait = 20; // seconds, for a sanitized build on a busy machine; it takes about one

// Steps on a circle of radius 190: 0.04 long as a polyline of 30,000, 0.11 as 11,000 lines.
std::vector<Vertex> OnCircle(int count)
{
    std::vector<Vertex> points;
    for (int i = 0; i < count; ++i)
        points.push_back(
            {300 + 190 * std::cos(2 * Pi * i / count), 200 + 190 * std::sin(2 * Pi * i / count)});
    return points;
}

TEST_F(BadPockets, OutlinesOfThousandsOfVerticesAreTold)
{
    Config.LineLimit = "40000";
    const std::string mark = StartMark(489, 200, 490, 200);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(ToldOf(Polyline(Layer, OnCircle(30000), Closed) + mark),
              Texts{"X489 Y200 is not cleared, its outline is no rectangle"});
    std::string lines;
    const std::vector<Vertex> points = OnCircle(11000);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Vertex& to = points[(i + 1) % points.size()];
        lines += Line(Layer, points[i].X, points[i].Y, to.X, to.Y);
    }
    EXPECT_EQ(ToldOf(lines + mark), Texts{"X489 Y200 is not cleared, its outline is no rectangle"});
    EXPECT_LT(SecondsSince(begin), LongestWait);
}

TEST_F(BadPockets, ThousandsOfOpenOutlinesAreEachTold)
{
    // Each half a unit from the next: the gaps are looked for among all their ends.
    Config.LineLimit = "40000";
    std::string lines;
    for (int i = 0; i < 8000; ++i)
        lines += Line(Layer, 10 + 0.5 * (i % 1000), 10 + 2 * (i / 1000), 10 + 0.5 * (i % 1000),
                      11 + 2 * (i / 1000));
    const auto begin = std::chrono::steady_clock::now();
    ToldOf(lines);
    EXPECT_LT(SecondsSince(begin), LongestWait);
    EXPECT_EQ(std::count_if(Home.Lines.begin(), Home.Lines.end(),
                            [](const std::string& line) {
                                return line.find(
                                           ": 8000 pockets are not cleared, their outlines are open, the "
                                           "first at X") != std::string::npos;
                            }),
              1)
        << Home.ReportText();
    Report.MostEqualLines = 8000;
    const Texts told = ToldOf(lines);
    Report.MostEqualLines = ReportHooks().MostEqualLines;
    ASSERT_EQ(told.size(), 8000U);
    for (const std::string& line : told)
        ASSERT_NE(line.find("is not cleared, its outline is open at "), std::string::npos) << line;
}

TEST_F(BadPockets, TwoOutlinesThatTouch)
{
    const std::string second = Rectangle(Layer, 200, 100, 100, 60);
    const std::string mark = StartMark(99, 100, 100, 100);
    // Their marks come into one chain where both stand on the common side or corner.
    EXPECT_EQ(ToldOf(Box + second + mark + StartMark(199, 100, 200, 100)),
              Texts{"X199 Y100 is not cleared, its outline meets another start mark"});
    EXPECT_EQ(ToldOf(Box + Rectangle(Layer, 200, 160, 100, 60) + mark + StartMark(199, 160, 200, 160)),
              Texts{"X199 Y160 is not cleared, its outline meets another start mark"});
    // On layers of their own they are two pockets.
    std::string other = second + StartMark(199, 100, 200, 100);
    for (std::size_t at = 0; (at = other.find(Layer, at)) != std::string::npos; at += Layer.size())
        other.insert(at + Layer.size(), "S18");
    EXPECT_EQ(ToldOf(Box + mark + other),
              (Texts{"X199 Y100 " + Narrow, "X199 Y100 " + SharpBegin, Cleared[0], Cleared[1]}));
}

TEST_F(BadPockets, TextsOnTheLayerChangeNothing)
{
    ToldOf(Box + StartMark(99, 100, 100, 100));
    const ProgramText program = Home.Program();
    EXPECT_EQ(ToldOf(TextAt(Layer, 120, 120, "POCKET") + Box + TextAt(Layer, 100, 100, "K99") +
                     StartMark(99, 100, 100, 100) + TextAt(Layer, 200, 100, "EXCAV")),
              Cleared);
    EXPECT_EQ(Home.Program(), program);
}

} // namespace
} // namespace kv::bad_pockets
