// The proof of a nested sheet beside the areas of the same moves by Clipper alone: all that the programs
// sweep against all that is asked for, both ways, without a look at ways that match. Both are timed in one
// run.
#include <benchmark/benchmark.h>

#include <cmath>
#include <ctime>
#include <polyclipping/clipper.hpp>
#include <vector>

#include "proof/proof.h"

namespace kv::bench {
namespace {

constexpr double PartLength = 640, PartWidth = 220, ToolOfParts = 6; // mm
constexpr double AreaGrid = 1e4;                                     // steps in a millimetre

double SecondsSpent()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

Move LineMove(const PathPoint& from, const PathPoint& to)
{
    Move move;
    move.From = from;
    move.To = to;
    move.DepthFrom = move.DepthTo = 18.2;
    return move;
}

// Counter-clockwise from the middle of its lower side, with quarter circles at its corners.
std::vector<Move> RoundedBox(double x, double y, double length, double width, double corner)
{
    std::vector<Move> moves;
    const PathPoint middles[] = {{x + length - corner, y + corner},
                                 {x + length - corner, y + width - corner},
                                 {x + corner, y + width - corner},
                                 {x + corner, y + corner}};
    const PathPoint out[] = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}};
    PathPoint at{x + length / 2, y};
    const PathPoint begin = at;
    for (int i = 0; i < 4; ++i) {
        const PathPoint& next = out[(i + 1) % 4];
        const PathPoint from{middles[i].X + corner * out[i].X, middles[i].Y + corner * out[i].Y};
        const PathPoint to{middles[i].X + corner * next.X, middles[i].Y + corner * next.Y};
        moves.push_back(LineMove(at, from));
        Move arc = LineMove(from, to);
        arc.IsArc = true;
        arc.Centre = middles[i];
        arc.Sweep = 90;
        moves.push_back(arc);
        at = to;
    }
    moves.push_back(LineMove(at, begin));
    return moves;
}

struct Sheet {
    Demands Asked;
    MachineSteps Made;
};

void AddContour(Sheet& sheet, const std::vector<Move>& way, int side)
{
    AskedWay asked;
    asked.Pieces = way;
    asked.Drawn.assign(way.size(), 1);
    asked.IsClosed = true;
    asked.Side = side;
    asked.Radius = ToolOfParts;
    asked.DepthLeast = asked.DepthMost = 18.2;
    asked.Lead = 8;
    sheet.Asked.Ways.push_back(asked);
    RouterCut cut;
    cut.Radius = ToolOfParts;
    cut.Side = side;
    cut.Moves = way;
    cut.Start = way.front().From;
    cut.StartDepth = 18.2;
    sheet.Made.Cuts.push_back(cut);
}

// 32 parts with a cutout and twelve bores each on 2,800 x 2,070 mm. `shift`: mm by which the programs are
// beside the drawing.
Sheet NestedSheet(double shift)
{
    Sheet sheet;
    sheet.Asked.Length = sheet.Made.Length = 2800;
    sheet.Asked.Width = sheet.Made.Width = 2070;
    sheet.Asked.Thickness = sheet.Made.Thickness = 18;
    for (int part = 0; part < 32; ++part) {
        const double x = 25 + part % 4 * (PartLength + 30), y = 25 + part / 4 * (PartWidth + 30);
        AddContour(sheet, RoundedBox(x, y, PartLength, PartWidth, 20), -1);
        AddContour(sheet, RoundedBox(x + 200, y + 60, 240, 100, 12), 1);
        for (int bore = 0; bore < 12; ++bore) {
            const PathPoint at{x + 40 + bore % 6 * 32, y + 20 + bore / 6 * 180.0};
            sheet.Asked.Bores.push_back({Plane::Surface, at, 12, 5, 1});
            sheet.Made.Bores.push_back({Plane::Surface, at, 12, 5, "", 1});
        }
    }
    for (RouterCut& cut : sheet.Made.Cuts)
        for (Move& move : cut.Moves)
            for (PathPoint* const at : {&move.From, &move.To, &move.Centre})
                at->Y += shift;
    return sheet;
}

// --- Clipper

ClipperLib::Path GridPath(const std::vector<Move>& moves)
{
    ClipperLib::Path path;
    for (const Move& move : moves) {
        const int chords = move.IsArc ? 24 : 1;
        for (int i = 0; i <= chords; ++i) {
            PathPoint at = i == 0 ? move.From : move.To;
            if (move.IsArc) {
                const double angle = (DirectionTo(move.Centre, move.From) + move.Sweep * i / chords) * Degree;
                const double radius = Between(move.Centre, move.From);
                at = {move.Centre.X + radius * std::cos(angle), move.Centre.Y + radius * std::sin(angle)};
            }
            path << ClipperLib::IntPoint(std::llround(at.X * AreaGrid), std::llround(at.Y * AreaGrid));
        }
    }
    return path;
}

ClipperLib::Paths SweptByClipper(const std::vector<std::vector<Move>>& ways)
{
    ClipperLib::ClipperOffset offset(2, 0.01 * AreaGrid);
    for (const std::vector<Move>& way : ways)
        offset.AddPath(GridPath(way), ClipperLib::jtRound, ClipperLib::etOpenRound);
    ClipperLib::Paths swept;
    offset.Execute(swept, ToolOfParts * AreaGrid);
    return swept;
}

double AreaDifference(const Sheet& sheet)
{
    std::vector<std::vector<Move>> asked, made;
    for (const AskedWay& way : sheet.Asked.Ways)
        asked.push_back(way.Pieces);
    for (const RouterCut& cut : sheet.Made.Cuts)
        made.push_back(cut.Moves);
    const ClipperLib::Paths a = SweptByClipper(asked), b = SweptByClipper(made);
    double area = 0;
    for (const auto& [one, other] : {std::pair{&a, &b}, std::pair{&b, &a}}) {
        ClipperLib::Clipper clipper;
        clipper.AddPaths(*one, ClipperLib::ptSubject, true);
        clipper.AddPaths(*other, ClipperLib::ptClip, true);
        ClipperLib::Paths rests;
        clipper.Execute(ClipperLib::ctDifference, rests, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
        for (const ClipperLib::Path& rest : rests)
            area += ClipperLib::Area(rest);
    }
    return area;
}

void ProofAgainstClipper(benchmark::State& state)
{
    const double shift = static_cast<double>(state.range(0)) / 100;
    const Sheet sheet = NestedSheet(shift);
    double proof = 0, clipper = 0;
    std::size_t findings = 0;
    for ([[maybe_unused]] auto round : state) {
        const double start = SecondsSpent();
        findings = Prove(sheet.Asked, {sheet.Made}, UsualTolerance).Findings.size();
        const double between = SecondsSpent();
        benchmark::DoNotOptimize(AreaDifference(sheet));
        proof += between - start;
        clipper += SecondsSpent() - between;
    }
    state.counters["findings"] = static_cast<double>(findings);
    state.counters["proof_ms"] = 1000 * proof / static_cast<double>(state.iterations());
    state.counters["clipper_ms"] = 1000 * clipper / static_cast<double>(state.iterations());
    state.counters["proof_by_clipper"] = proof / clipper;
}
BENCHMARK(ProofAgainstClipper)->Arg(0)->Arg(30)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace kv::bench
