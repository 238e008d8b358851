// Paths as chords on a grid, signed areas, points inside.
#include "geometry/closed_paths.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/trigonometry.h"

namespace kv {

namespace {

constexpr double GridReach = 1 << 28; // grid steps from the middle to the furthest point
constexpr int MostChords = 4096;      // of one arc

double CrossOf(const PlanePoint& a, const PlanePoint& b)
{
    return a.X * b.Y - a.Y * b.X;
}

// Above 0 counter-clockwise.
double SweepOf(double bulge)
{
    return 4 * ArcTangent(bulge);
}

int ChordsOf(double radius, double sweep, double tolerance)
{
    const double chord = 4 * ArcTangent(std::sqrt(tolerance / std::max(tolerance, 2 * radius - tolerance)));
    if (!(chord > 0))
        return MostChords;
    return static_cast<int>(std::clamp(std::ceil(std::fabs(sweep) / chord), 1.0, double(MostChords)));
}

struct Extent {
    PlanePoint Low, High;
    void Widen(const PlanePoint& point)
    {
        Low = {std::min(Low.X, point.X), std::min(Low.Y, point.Y)};
        High = {std::max(High.X, point.X), std::max(High.Y, point.Y)};
    }
};

// With room for the arcs, which leave the box of their ends by their rise.
Extent ExtentOf(const std::vector<ClosedPath>& paths)
{
    Extent extent{paths.front().front().At, paths.front().front().At};
    for (const ClosedPath& path : paths)
        for (std::size_t i = 0; i < path.size(); ++i) {
            const PlanePoint& at = path[i].At;
            const double half = Distance(at, path[(i + 1) % path.size()].At) / 2;
            const double reach = half * std::max(1.0, std::fabs(path[i].Bulge));
            extent.Widen(at);
            if (path[i].Bulge != 0) {
                extent.Widen({at.X - 2 * reach, at.Y - 2 * reach});
                extent.Widen({at.X + 2 * reach, at.Y + 2 * reach});
            }
        }
    return extent;
}

} // namespace

double SignedArea(const ClosedPath& path)
{
    double twice = 0;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const PlanePoint& to = path[(i + 1) % path.size()].At;
        twice += CrossOf(path[i].At, to);
        if (path[i].Bulge == 0)
            continue;
        const double sweep = SweepOf(path[i].Bulge);
        const double radius = SpanBetween(path[i], to).Radius;
        twice += radius * radius * (sweep - Sine(sweep)); // the segment between arc and chord
    }
    return twice / 2;
}

ClosedPath ReversedPath(const ClosedPath& path)
{
    ClosedPath reversed;
    reversed.reserve(path.size());
    for (std::size_t i = path.size(); i-- > 0;)
        reversed.push_back({path[i].At, -path[i > 0 ? i - 1 : path.size() - 1].Bulge});
    return reversed;
}

FlatPaths::FlatPaths(const std::vector<ClosedPath>& paths, double tolerance)
{
    const Extent extent = ExtentOf(paths);
    Middle = {(extent.Low.X + extent.High.X) / 2, (extent.Low.Y + extent.High.Y) / 2};
    const double reach = std::max({extent.High.X - Middle.X, extent.High.Y - Middle.Y, 1e-3});
    int exponent = 0; // the largest power of two that keeps the reach
    std::frexp(GridReach / reach, &exponent);
    Scale = std::ldexp(1, exponent - 1);
    for (const ClosedPath& path : paths)
        AddPath(path, static_cast<std::int32_t>(FirstChord.size()), tolerance);
    FirstChord.push_back(Chords.size());
}

WholePoint FlatPaths::ToGrid(const PlanePoint& point) const
{
    return {std::llround((point.X - Middle.X) * Scale), std::llround((point.Y - Middle.Y) * Scale)};
}

void FlatPaths::AddPath(const ClosedPath& path, std::int32_t number, double tolerance)
{
    const std::size_t first = Chords.size();
    const std::size_t firstSpan = Spans.size();
    FirstChord.push_back(first);
    for (std::size_t i = 0; i < path.size(); ++i) {
        const PathSpan span = SpanBetween(path[i], path[(i + 1) % path.size()].At);
        const double sweep = SweepOf(path[i].Bulge);
        const int count = span.IsArc ? ChordsOf(span.Radius, sweep, tolerance) : 1;
        const double begin = AngleOfVector(span.From.Y - span.Centre.Y, span.From.X - span.Centre.X);
        WholePoint from = ToGrid(span.From);
        for (int k = 0; k < count; ++k) {
            PlanePoint end = span.To;
            if (k + 1 < count) {
                const double angle = begin + sweep * (k + 1) / count;
                end = {span.Centre.X + span.Radius * Cosine(angle),
                       span.Centre.Y + span.Radius * Sine(angle)};
            }
            const WholePoint to = ToGrid(end);
            if (from == to)
                continue;
            Chords.push_back({from, to, number, static_cast<std::int32_t>(Spans.size()), k,
                              static_cast<std::int32_t>(Chords.size() + 1)});
            from = to;
        }
        Spans.push_back(span);
        NextSpan.push_back(static_cast<std::int32_t>(Spans.size()));
    }
    if (Chords.size() > first)
        Chords.back().Next = static_cast<std::int32_t>(first);
    if (Spans.size() > firstSpan)
        NextSpan.back() = static_cast<std::int32_t>(firstSpan);
}

bool IsInside(const FlatPaths& paths, std::int32_t path, const PlanePoint& point)
{
    const double x = (point.X - paths.Middle.X) * paths.Scale;
    const double y = (point.Y - paths.Middle.Y) * paths.Scale;
    bool isInside = false;
    const auto number = static_cast<std::size_t>(path);
    for (std::size_t i = paths.FirstChord[number]; i < paths.FirstChord[number + 1]; ++i) {
        const FlatChord& chord = paths.Chords[i];
        const auto ax = static_cast<double>(chord.From.X), ay = static_cast<double>(chord.From.Y);
        const auto bx = static_cast<double>(chord.To.X), by = static_cast<double>(chord.To.Y);
        if ((ay > y) != (by > y) && x < (bx - ax) * (y - ay) / (by - ay) + ax)
            isInside = !isInside;
    }
    return isInside;
}

} // namespace kv
