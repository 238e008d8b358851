// Pockets of any shape, as the written program cuts them: random outlines of lines and arcs with islands,
// drawn as entities, converted, read back and swept with the tool.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "routes/route_program.h"
#include "support/machine/cnc_reader.h"
#include "support/proof/region.h"
#include "support/random_regions.h"
#include "support/random_rounds.h"

namespace kv::test {
namespace {

constexpr double Outside = 0.05; // mm that the tool's edge may lie beyond the wall
constexpr double Floor = 0.1;    // mm: what may be left is nowhere as wide
constexpr double Hair = 0.021;   // of the radius: what the tool keeps away from corners of its own radius

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
};

TEST_F(ShapedPockets, AreClearedToTheirWallsAndNotBeyond)
{
    std::mt19937 numbers(Seed(1311));
    std::uniform_real_distribution<double> share(0, 1);
    int cleared = 0;
    for (int round = 0; round < Rounds(14); ++round) {
        SCOPED_TRACE(RoundName(round));
        const RandomRegion drawn = DrawRegion(numbers, {{300, 200}, 80, 10, 3});
        const double radius = std::vector<double>{3, 4, 6, 8}[numbers() % 4];
        const double pitch = std::round(radius * (0.4 + 1.8 * share(numbers)) * 10) / 10;
        const std::string layer =
            "EXCAV_K" + Number(pitch) + "_Z6_T71_" + (numbers() % 2 == 0 ? "R" : "L") + Number(radius);
        const bool inPieces = numbers() % 2 == 0;
        std::string entities = Drawn(layer, drawn.Outline, inPieces);
        for (const Contour& island : drawn.Islands)
            entities += Drawn(layer, island, !inPieces);
        SCOPED_TRACE(layer);
        if (!Home.Convert(Drawing(Panel + entities))) { // all of it may be narrower than the tool
            ASSERT_NE(Home.ReportText().find("is narrower than its tool"), std::string::npos)
                << Home.ReportText();
            continue;
        }
        ++cleared;
        ASSERT_EQ(FaultsOf(drawn, radius), "") << Home.ReportText();
    }
    EXPECT_GT(cleared, Rounds(14) / 2);
}

} // namespace
} // namespace kv::test
