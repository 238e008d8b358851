// Levels of loops: one pitch apart, and between them where the tool leaves floor. Relies on the
// distance field of the walls; leaves loops of few pieces.
#include "routes/pocket_rings.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "platform/trigonometry.h"

namespace kv {

namespace {

constexpr double HairShare = 0.01;       // of the tool's radius
constexpr double WallTolerance = 0.0005; // of the radius, on the walls' own loops
constexpr double FloorTolerance = 0.01;  // on loops further in: floor is cut twice there
constexpr double StraightTurn = 0.35;    // radians; a corner of more is kept
constexpr double SmallestArc = 0.02;     // of the radius
constexpr double ShortestPiece = 0.0005; // of the radius
constexpr double PeakShare = 0.1;        // of the radius
constexpr double OverlapShare = 1.9;     // of the radius, between two loops
constexpr double FloorReach = 0.94; // of the radius, from a corner of the centre's loop, which is cut round

double OffChord(const PlanePoint& a, const PlanePoint& b, const PlanePoint& point)
{
    const double length = Distance(a, b);
    if (!(length > 0))
        return Distance(a, point);
    return std::fabs((b.X - a.X) * (point.Y - a.Y) - (b.Y - a.Y) * (point.X - a.X)) / length;
}

double CornerTurn(const PathSpan& span, const PathSpan& next)
{
    const double ax = span.To.X - span.From.X, ay = span.To.Y - span.From.Y;
    const double bx = next.To.X - next.From.X, by = next.To.Y - next.From.Y;
    return AngleOfVector(ax * by - ay * bx, ax * bx + ay * by);
}

// How far the arc rises above its chord.
double RiseOf(const PathSpan& arc)
{
    return arc.Radius * (1 - Cosine(SweepOfArc(arc) / 2));
}

bool LiesOn(const PathSpan& arc, const PlanePoint& point)
{
    return std::fabs(Distance(arc.Centre, point) - arc.Radius) < arc.Radius / 4;
}

// Flat arcs are taken as their chords, and so are those inside which the tool's centre hardly moves: rounding
// could turn what the control's compensation leaves of them.
void AddFlattened(const PathSpan& span, double tolerance, double smallestArc, InsetLoop& loop)
{
    constexpr double mostTurn = std::numbers::pi / 3;
    const double sweep = span.IsArc ? SweepOfArc(span) : 0;
    const bool isFlat = span.IsArc && sweep <= StraightTurn && RiseOf(span) <= tolerance / 4;
    const bool isTiny = span.IsArc && span.CounterClockwise && span.Radius < smallestArc;
    if (!isFlat && !isTiny) {
        loop.push_back(span);
        return;
    }
    // Ends that lie beside a tiny arc say nothing about its sweep.
    const bool isVague = !LiesOn(span, span.From) || !LiesOn(span, span.To);
    const int chords = isFlat || isVague ? 1 : static_cast<int>(std::ceil(sweep / mostTurn));
    const double begin = AngleOfVector(span.From.Y - span.Centre.Y, span.From.X - span.Centre.X);
    PathSpan chord;
    chord.From = span.From;
    for (int i = 1; i <= chords; ++i) {
        const double angle = begin + sweep * i / chords;
        chord.To = i == chords ? span.To
                               : PlanePoint{span.Centre.X + span.Radius * Cosine(angle),
                                            span.Centre.Y + span.Radius * Sine(angle)};
        loop.push_back(chord);
        chord.From = chord.To;
    }
}

// The points between first and last that a chord within the tolerance cannot leave out.
void KeepPoints(const InsetLoop& lines, std::size_t first, std::size_t last, double tolerance,
                std::vector<char>& keeps)
{
    std::vector<std::pair<std::size_t, std::size_t>> open{{first, last}};
    while (!open.empty()) {
        const auto [begin, end] = open.back();
        open.pop_back();
        double furthest = tolerance;
        std::size_t at = end;
        for (std::size_t i = begin + 1; i < end; ++i) {
            const double off = OffChord(lines[begin].From, lines[end].From, lines[i].From);
            if (off > furthest) {
                furthest = off;
                at = i;
            }
        }
        if (at == end)
            continue;
        keeps[at] = 1;
        open.push_back({begin, at});
        open.push_back({at, end});
    }
}

// A run of lines with few points. Beside an arc the line that meets it stays, unless it is no more than a
// tolerance long; before and after a corner the points stay.
void AddRun(const InsetLoop& run, bool besideArcs, double tolerance, InsetLoop& loop)
{
    std::vector<char> keeps(run.size() + 1, 0);
    const auto isLong = [&](const PathSpan& line) { return Distance(line.From, line.To) > 2 * tolerance; };
    keeps.front() = 1;
    for (std::size_t i = 1; i < run.size(); ++i)
        if (std::fabs(CornerTurn(run[i - 1], run[i])) > StraightTurn)
            keeps[i] = 1;
    if (besideArcs && isLong(run.front()))
        keeps[1] = 1;
    if (besideArcs && isLong(run.back()))
        keeps[run.size() - 1] = 1;
    InsetLoop points = run; // the point after the last line ends the run
    points.push_back({run.back().To, run.back().To, false, false, {}, 0});
    keeps.back() = 1;
    std::size_t first = 0;
    for (std::size_t i = 1; i <= run.size(); ++i)
        if (keeps[i] != 0) {
            KeepPoints(points, first, i, tolerance, keeps);
            first = i;
        }
    for (std::size_t i = 0; i < run.size(); ++i) {
        if (keeps[i] != 0)
            loop.push_back(run[i]);
        else
            loop.back().To = run[i].To;
    }
}

// What is shorter has no direction that rounding leaves: the piece after it begins where it began. Pieces in
// a row add up.
InsetLoop WithoutShortest(const InsetLoop& drawn, double shortest)
{
    const auto isShort = [shortest](const PathSpan& span) {
        return Distance(span.From, span.To) < shortest &&
               (!span.IsArc || SweepOfArc(span) < std::numbers::pi);
    };
    const auto first = std::find_if_not(drawn.begin(), drawn.end(), isShort);
    if (first == drawn.end())
        return drawn;
    InsetLoop loop(first, drawn.end());
    loop.insert(loop.end(), drawn.begin(), first);
    std::size_t kept = 0;
    for (std::size_t i = 1; i < loop.size(); ++i) {
        PathSpan span = loop[i];
        span.From = loop[kept].To;
        if (!isShort(span))
            loop[++kept] = span;
    }
    loop.resize(kept + 1);
    loop.front().From = loop.back().To;
    return loop;
}

InsetLoop Simplified(const InsetLoop& drawn, double tolerance, double smallestArc)
{
    InsetLoop flat;
    for (const PathSpan& span : drawn)
        AddFlattened(span, tolerance, smallestArc, flat);
    const auto isArc = [](const PathSpan& span) { return span.IsArc; };
    auto begin = std::find_if(flat.begin(), flat.end(), isArc);
    const bool hasArcs = begin != flat.end();
    for (auto line = flat.begin(); line != flat.end() && begin == flat.end(); ++line) // else from a corner
        if (std::fabs(CornerTurn(line == flat.begin() ? flat.back() : *(line - 1), *line)) > StraightTurn)
            begin = line;
    std::rotate(flat.begin(), begin, flat.end());
    InsetLoop loop, run;
    const auto endRun = [&] {
        if (!run.empty())
            AddRun(run, hasArcs, tolerance, loop);
        run.clear();
    };
    for (const PathSpan& span : flat) {
        if (!span.IsArc) {
            run.push_back(span);
            continue;
        }
        endRun();
        loop.push_back(span);
    }
    endRun();
    return loop;
}

InsetLoop CircleAround(const PlanePoint& centre, double radius)
{
    const PlanePoint right{centre.X + radius, centre.Y}, left{centre.X - radius, centre.Y};
    return {{right, left, true, true, centre, radius}, {left, right, true, true, centre, radius}};
}

// Around a peak of the distance a loop may be hardly larger than a point, and its lines so short that a
// program's digits turn them. Then the tool goes round the peak on a circle that clears as much. Further from
// the walls there is room for a larger one.
std::optional<InsetLoop> PeakCircle(const InsetLoop& loop, double clearance, const ToolReach& reach)
{
    PlanePoint low = loop.front().From, high = low;
    for (const PathSpan& span : loop) {
        low = {std::min(low.X, span.From.X), std::min(low.Y, span.From.Y)};
        high = {std::max(high.X, span.From.X), std::max(high.Y, span.From.Y)};
    }
    const PlanePoint centre{(low.X + high.X) / 2, (low.Y + high.Y) / 2};
    const double wide = PeakShare * reach.Radius;
    const bool hasRoom = clearance - wide >= reach.Aside();
    if (Distance(low, high) / 2 > (hasRoom ? wide : 2 * HairShare * reach.Radius))
        return std::nullopt;
    return CircleAround(centre, hasRoom ? wide : reach.Hair);
}

bool Encloses(const FlatPaths& rings, std::int32_t ring, const std::vector<PlanePoint>& points)
{
    return std::any_of(points.begin(), points.end(),
                       [&](const PlanePoint& point) { return IsInside(rings, ring, point); });
}

// Of the loops those around the points, with the islands inside them.
std::vector<InsetLoop> RingsAround(const std::vector<InsetLoop>& loops, const std::vector<PlanePoint>& points,
                                   double tolerance)
{
    if (loops.empty())
        return {};
    std::vector<ClosedPath> paths;
    for (const InsetLoop& loop : loops)
        paths.push_back(PathOf(loop));
    const FlatPaths flat(paths, tolerance);
    std::vector<char> isTaken(loops.size(), 0);
    for (std::size_t i = 0; i < loops.size(); ++i)
        isTaken[i] = SignedArea(paths[i]) > 0 && Encloses(flat, static_cast<std::int32_t>(i), points) ? 1 : 0;
    std::vector<InsetLoop> rings;
    for (std::size_t i = 0; i < loops.size(); ++i) {
        bool isIn = isTaken[i] != 0;
        for (std::size_t k = 0; k < loops.size() && !isIn && SignedArea(paths[i]) <= 0; ++k)
            isIn = isTaken[k] != 0 && IsInside(flat, static_cast<std::int32_t>(k), loops[i].front().From);
        if (isIn)
            rings.push_back(loops[i]);
    }
    return rings;
}

} // namespace

ClosedPath PathOf(const InsetLoop& loop)
{
    ClosedPath path;
    for (const PathSpan& span : loop) {
        const double bulge = span.IsArc ? Tangent(SweepOfArc(span) / 4) : 0;
        path.push_back({span.From, span.CounterClockwise ? bulge : -bulge});
    }
    return path;
}

ToolReach ReachOf(double toolRadius, double deepest)
{
    const double room = std::max(0.0, deepest - toolRadius);
    return {toolRadius, std::min(HairShare * toolRadius, room / 2)};
}

double LargestStep(double toolRadius)
{
    return OverlapShare * toolRadius;
}

std::vector<RingLevel> RingLevelsOf(const InsetField& field, const ToolReach& reach, double pitch,
                                    std::size_t mostPieces)
{
    const double step = std::min(pitch, LargestStep(reach.Radius));
    const double tolerance = FloorTolerance * reach.Radius;
    std::vector<RingLevel> levels;
    std::size_t pieces = 0;
    const auto add = [&](double clearance, const std::vector<InsetLoop>& loops, double within) {
        RingLevel level{clearance, {}};
        for (const InsetLoop& loop : loops) {
            const std::optional<InsetLoop> circle = PeakCircle(loop, clearance, reach);
            level.Rings.push_back(circle ? *circle
                                         : Simplified(WithoutShortest(loop, ShortestPiece * reach.Radius),
                                                      within, SmallestArc * reach.Radius));
            pieces += level.Rings.back().size();
        }
        if (!level.Rings.empty())
            levels.push_back(std::move(level));
    };
    for (int k = 0; pieces <= mostPieces; ++k) {
        const double clearance = reach.Aside() + k * step;
        const std::vector<InsetLoop> loops = field.LoopsAt(clearance);
        if (loops.empty())
            break;
        add(clearance, loops, k == 0 ? WallTolerance * reach.Radius : tolerance);
        // What the tool leaves between this level and the next.
        const double cleared = k * step + 2 * reach.Radius - tolerance;
        if (!(clearance + step > cleared))
            continue;
        const std::vector<PlanePoint> left =
            field.FarFromLoops(cleared, clearance + step, FloorReach * reach.Radius);
        if (left.empty())
            continue;
        const double between = clearance + step / 2;
        add(between, RingsAround(field.LoopsAt(between), left, tolerance), tolerance);
    }
    return levels;
}

} // namespace kv
