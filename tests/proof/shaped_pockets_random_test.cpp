// Pockets of any shape, as the written program cuts them: random outlines of lines and arcs with islands,
// drawn as entities, converted, read back and swept with the tool.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "machine/cnc_reader.h"
#include "routes/route_program.h"
#include "support/proof/region.h"
#include "support/random_regions.h"
#include "support/random_rounds.h"

namespace kv::test {
namespace {

constexpr double Outside = 0.05; // mm that the tool's edge may lie beyond the wall
constexpr double Floor = 0.1;    // mm: what may be left is nowhere as wide
constexpr double Hair = 0.021;   // of the radius: what the tool keeps away from corners of its own radius

struct PocketTool {
    double Radius = 0, Pitch = 0; // mm
    char Letter = 'R';
};

class ShapedPockets : public RouteProgram {
  protected:
    void SetUp() override
    {
        RouteProgram::SetUp();
        Config.PrecisionMetric = "4";
        Config.Pockets = "any";
        Config.LineLimit = "30000"; // one program, no portions
    }

    static std::vector<PathPoint> FineChords(const Contour& contour) { return Chords(contour, 400); }

    static Region RegionOf(const RandomRegion& drawn)
    {
        Region region = Polygon(FineChords(drawn.Outline));
        for (const Contour& island : drawn.Islands)
            region = Difference(region, Polygon(FineChords(island)));
        return region;
    }

    // One way or the other, as designers do.
    static std::string Drawn(const std::string& layer, const Contour& contour, bool inPieces)
    {
        if (contour.size() == 2 && contour[0].Bulge == 1 && contour[1].Bulge == 1)
            return Circle(layer, (contour[0].X + contour[1].X) / 2, contour[0].Y,
                          std::fabs(contour[1].X - contour[0].X) / 2);
        if (!inPieces)
            return Polyline(layer, contour, Closed);
        std::string text;
        for (std::size_t i = 0; i < contour.size(); ++i)
            text += Piece(layer, contour[i], contour[(i + 1) % contour.size()]);
        return text;
    }
    static std::string Piece(const std::string& layer, const Vertex& from, const Vertex& to)
    {
        if (from.Bulge == 0)
            return Line(layer, from.X, from.Y, to.X, to.Y);
        const double half = std::hypot(to.X - from.X, to.Y - from.Y) / 2;
        const double ahead = half * (1 - from.Bulge * from.Bulge) / (2 * from.Bulge);
        const double toX = (to.X - from.X) / (2 * half), toY = (to.Y - from.Y) / (2 * half);
        const double x = (from.X + to.X) / 2 - toY * ahead, y = (from.Y + to.Y) / 2 + toX * ahead;
        const auto angle = [&](const Vertex& point) {
            return std::atan2(point.Y - y, point.X - x) * 180 / 3.14159265358979323846;
        };
        const double radius = std::hypot(from.X - x, from.Y - y);
        return from.Bulge > 0 ? Arc(layer, x, y, radius, angle(from), angle(to))
                              : Arc(layer, x, y, radius, angle(to), angle(from));
    }

    // The lines of the program near one of them.
    std::string Around(std::size_t line) const
    {
        const ProgramText program = Home.Program();
        std::string text;
        for (std::size_t i = line > 5 ? line - 5 : 0; i < std::min(line + 4, program.size()); ++i)
            text += "\n" + program[i];
        return text;
    }
    // What the program does beside the pocket; empty when all is well.
    std::string FaultsOf(const RandomRegion& drawn, double toolRadius)
    {
        const MachineSteps steps = ReadCnc(Home.Program());
        if (!steps.Unread.empty())
            return "unread: " + steps.Unread.front();
        for (const RouterCut& cut : steps.Cuts)
            if (cut.Radius != toolRadius)
                return "a cut without its radius";
        const std::vector<WayFault> ways = WayFaults(steps);
        if (!ways.empty())
            return ways.front().Text + " in line " + std::to_string(ways.front().Line) +
                   Around(ways.front().Line);
        const Region pocket = RegionOf(drawn);
        const Region swept = SweptFace(steps);
        const Region outside = Difference(swept, Grown(pocket, Outside));
        if (!outside.IsEmpty())
            return "outside: " + Described(outside);
        Sweep deep;
        deep.Depth = 6;
        const Region left =
            Difference(ReachedBy(pocket, 2 * toolRadius * (1 + Hair)), SweptFace(steps, deep));
        return IsWiderThan(left, Floor) ? "left: " + Described(left) : "";
    }
    // As lines and arcs, the islands as polylines, or the other way round. Counts what is cleared.
    void ExpectClearedAsDrawn(const RandomRegion& drawn, const PocketTool& tool, bool inPieces, int& cleared)
    {
        const std::string layer =
            "EXCAV_K" + Number(tool.Pitch) + "_Z6_T71_" + tool.Letter + Number(tool.Radius);
        SCOPED_TRACE(layer);
        std::string entities = Drawn(layer, drawn.Outline, inPieces);
        for (const Contour& island : drawn.Islands)
            entities += Drawn(layer, island, !inPieces);
        if (!Home.Convert(Drawing(Panel + entities))) { // all of it may be narrower than the tool
            ASSERT_NE(Home.ReportText().find("is narrower than its tool"), std::string::npos)
                << Home.ReportText();
            return;
        }
        ++cleared;
        ASSERT_EQ(FaultsOf(drawn, tool.Radius), "") << Home.ReportText();
    }
};

TEST_F(ShapedPockets, AreClearedToTheirWallsAndNotBeyond)
{
    std::mt19937 numbers(Seed(1311));
    std::uniform_real_distribution<double> share(0, 1);
    int cleared = 0;
    for (int round = 0; round < Rounds(14); ++round) {
        SCOPED_TRACE(RoundName(round));
        const RandomRegion drawn = DrawRegion(numbers, {{300, 200}, 80, 10, 3});
        PocketTool tool;
        tool.Radius = std::vector<double>{3, 4, 6, 8}[numbers() % 4];
        tool.Pitch = std::round(tool.Radius * (0.4 + 1.8 * share(numbers)) * 10) / 10;
        tool.Letter = numbers() % 2 == 0 ? 'R' : 'L';
        ExpectClearedAsDrawn(drawn, tool, numbers() % 2 == 0, cleared);
        if (HasFatalFailure())
            return;
    }
    EXPECT_GT(cleared, Rounds(14) / 2);
}

// Each has a place that its ways once missed: a short arc of a loop whose ends passed each other; a neck
// whose middle line rises to one side only; a tip with a piece of a thousandth; an arc beside a corner that
// is flat.
TEST_F(ShapedPockets, PlacesThatRandomOnesSeldomHave)
{
    const RandomRegion passedEnds{
        {{349.401, 175.132, -0.0403},
         {317.773, 159.121, -0.0401},
         {269.017, 139.636, 0},
         {251.454, 151.811, 0.114},
         {247.161, 204.836, 0},
         {265.425, 225.067, 0},
         {288.933, 253.127, 0},
         {324.374, 252.499, 0},
         {343.39, 225.545, 0},
         {374.923, 188.204, 0.0765}},
        {{{267.4999, 190.0967, 1}, {285.167, 190.0967, 1}},
         {{273.238, 220.245, 0},
          {270.637, 222.727, 0.2102},
          {273.437, 225.783, 0},
          {276.526, 221.469, 0.5182}},
         {{286.007, 218.222, -0.3288}, {278.652, 225.952, 0}, {287.62, 231.892, 0}, {297.268, 224.696, 0}}}};
    const RandomRegion neck{{{372.033, 211.522, 0},
                             {328.363, 224.402, 0},
                             {318.321, 275.415, 0},
                             {280.681, 236.943, 0},
                             {258.074, 240.252, 0},
                             {224.818, 208.566, 0.5057},
                             {262.18, 161.722, 0},
                             {295.137, 161.136, 0},
                             {311.404, 141.844, 0},
                             {354.209, 170.45, 0}},
                            {{{291.6935, 176.4913, 1}, {300.458, 176.4913, 1}},
                             {{248.7772, 189.9975, 1}, {271.6814, 189.9975, 1}},
                             {{286.791, 193.958, 0},
                              {282.989, 194.508, 0.1125},
                              {283.389, 196.537, 0},
                              {285.93, 197.476, 0},
                              {288.452, 195.147, 0}}}};
    const RandomRegion tip{{{342.54, 138.89, 0.2717},
                            {273.574, 148.046, 0},
                            {248.338, 192.838, 0},
                            {262.857, 220.878, 0},
                            {288.754, 255.971, 0},
                            {320.99, 252.568, 0},
                            {362.61, 208.595, -0.095}},
                           {{{316.816, 164.938, 0}, {319.046, 169.652, 0}, {330.648, 162.127, 0}},
                            {{326.9597726, 199.6288879, 1}, {352.7552776, 199.6288879, 1}},
                            {{279.9979925, 177.5738649, 1}, {288.130541, 177.5738649, 1}}}};
    const RandomRegion flatArc{{{331.2, 181.132, 0}, {286.97, 277.914, 0.3039}, {285.177, 147.194, -0.0454}},
                               {{{294.92, 222.803, 0},
                                 {293.234, 227.49, 0.4006},
                                 {288.541, 230.94, 0},
                                 {283.576, 223.921, 0},
                                 {282.772, 219.612, 0},
                                 {287.531, 218.683, 0.1362},
                                 {291.523, 219.563, 0}},
                                {{284.9392352, 200.1812322, 1}, {315.2838542, 200.1812322, 1}}}};
    const RandomRegion seamBesideNeck{
        {{367.255, 230.156, 0},
         {309.424, 236.044, 0},
         {233.545, 222.908, 0},
         {277.841, 170.099, 0},
         {324.882, 150.036, 0}},
        {{{326.753, 203.338, 0}, {321.627, 215.307, 0.0556}, {303.96, 212.685, 0}, {325.414, 189.21, 0}},
         {{287.1238375, 222.5520936, 1}, {296.0933729, 222.5520936, 1}}}};
    int cleared = 0;
    for (const bool inPieces : {false, true}) {
        ExpectClearedAsDrawn(passedEnds, {4, 7.1, 'L'}, inPieces, cleared);
        ExpectClearedAsDrawn(neck, {3, 3.7, 'R'}, inPieces, cleared);
        ExpectClearedAsDrawn(tip, {8, 15.8, 'R'}, inPieces, cleared);
        ExpectClearedAsDrawn(flatArc, {4, 6.9, 'L'}, inPieces, cleared);
        ExpectClearedAsDrawn(seamBesideNeck, {8, 15.7, 'L'}, inPieces, cleared);
    }
    EXPECT_EQ(cleared, 10);
}

} // namespace
} // namespace kv::test
