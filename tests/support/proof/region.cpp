#include "support/proof/region.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include <polyclipping/clipper.hpp>

namespace kv::test {

namespace {

using ClipperLib::Clipper;
using ClipperLib::ClipperOffset;
using ClipperLib::IntPoint;
using ClipperLib::Path;
using ClipperLib::Paths;
using ClipperLib::PolyNode;
using ClipperLib::PolyTree;

constexpr double Pi = 3.14159265358979323846;
constexpr double Units = 1e5; // in a millimetre
constexpr double BesideArc = 0.002;
constexpr double SmallestArea = 1e-6; // mm2: what rounding to the grid leaves between rings that touch

IntPoint OnGrid(double x, double y)
{
    return {std::llround(x * Units), std::llround(y * Units)};
}

Paths PathsOf(const Region& region)
{
    Paths paths;
    paths.reserve(region.Rings.size());
    for (const Ring& ring : region.Rings) {
        Path path;
        path.reserve(ring.size());
        for (const GridPoint& point : ring)
            path.emplace_back(point.X, point.Y);
        paths.push_back(std::move(path));
    }
    return paths;
}

Region RegionOf(const Paths& paths)
{
    Region region;
    for (const Path& path : paths) {
        Ring ring;
        ring.reserve(path.size());
        for (const IntPoint& point : path)
            ring.push_back({point.X, point.Y});
        region.Rings.push_back(std::move(ring));
    }
    return region;
}

Region Joined(const Paths& paths, ClipperLib::PolyFillType inside)
{
    Clipper clipper;
    clipper.AddPaths(paths, ClipperLib::ptSubject, true);
    Paths result;
    clipper.Execute(ClipperLib::ctUnion, result, inside, inside);
    return RegionOf(result);
}

// The same for many paths that overlap a few others each: groups of neighbours first, then their sums.
Region JoinedInGroups(const Paths& paths)
{
    constexpr std::ptrdiff_t groupSize = 48;
    std::vector<Paths> sums;
    for (auto at = paths.begin(); at != paths.end();) {
        const auto end = at + std::min(groupSize, paths.end() - at);
        sums.push_back(PathsOf(Joined(Paths(at, end), ClipperLib::pftNonZero)));
        at = end;
    }
    while (sums.size() > 1) {
        std::vector<Paths> halves;
        for (std::size_t i = 0; i < sums.size(); i += 2) {
            if (i + 1 < sums.size())
                sums[i].insert(sums[i].end(), sums[i + 1].begin(), sums[i + 1].end());
            halves.push_back(PathsOf(Joined(sums[i], ClipperLib::pftNonZero)));
        }
        sums = std::move(halves);
    }
    return sums.empty() ? Region{} : RegionOf(sums.front());
}

Region Combined(ClipperLib::ClipType how, const Region& a, const Region& b)
{
    Clipper clipper;
    clipper.AddPaths(PathsOf(a), ClipperLib::ptSubject, true);
    clipper.AddPaths(PathsOf(b), ClipperLib::ptClip, true);
    Paths result;
    clipper.Execute(how, result, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
    return RegionOf(result);
}

// Chords for a sweep in radians, none further from the arc than allowed.
int ChordsFor(double radius, double sweep)
{
    if (radius <= BesideArc)
        return std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / (Pi / 2))));
    const double step = 2 * std::acos(1 - BesideArc / radius);
    return std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / step)));
}

// The ends of the chords, both ends of the arc among them.
void AddArcPoints(Path& path, const PathPoint& centre, double radius, double from, double sweep)
{
    const int chords = ChordsFor(radius, sweep);
    for (int i = 0; i <= chords; ++i) {
        const double angle = from + sweep * i / chords;
        path.push_back(OnGrid(centre.X + radius * std::cos(angle), centre.Y + radius * std::sin(angle)));
    }
}

double AngleFrom(const PathPoint& centre, const PathPoint& place)
{
    return std::atan2(place.Y - centre.Y, place.X - centre.X);
}

void AddDisc(Paths& paths, const PathPoint& centre, double radius)
{
    Path path;
    AddArcPoints(path, centre, radius, 0, 2 * Pi);
    path.pop_back();
    paths.push_back(path);
}

void AddCapsule(Paths& paths, const PathPoint& from, const PathPoint& to, double radius)
{
    const double angle = AngleFrom(from, to);
    Path path;
    AddArcPoints(path, to, radius, angle - Pi / 2, Pi);
    AddArcPoints(path, from, radius, angle + Pi / 2, Pi);
    paths.push_back(path);
}

// The places beside an arc of up to half a turn and around its ends, counter-clockwise.
void AddBand(Paths& paths, const Move& arc, double radius)
{
    const double middle = Between(arc.Centre, arc.From);
    const double inner = middle - radius, outer = middle + radius;
    const double sweep = std::fabs(arc.Sweep) * Pi / 180;
    const double from = AngleFrom(arc.Centre, arc.From) - (arc.Sweep < 0 ? sweep : 0);
    const PathPoint &first = arc.Sweep < 0 ? arc.To : arc.From, &last = arc.Sweep < 0 ? arc.From : arc.To;
    Path path;
    AddArcPoints(path, arc.Centre, outer, from, sweep);
    if (inner > 0) {
        AddArcPoints(path, last, radius, from + sweep, Pi);
        AddArcPoints(path, arc.Centre, inner, from + sweep, -sweep);
        AddArcPoints(path, first, radius, from + Pi, Pi);
    } else {
        path.push_back(OnGrid(arc.Centre.X, arc.Centre.Y));
        AddDisc(paths, first, radius);
        AddDisc(paths, last, radius);
    }
    paths.push_back(path);
}

PathPoint TurnedAround(const PathPoint& centre, const PathPoint& place, double degrees)
{
    const double cosine = std::cos(degrees * Pi / 180), sine = std::sin(degrees * Pi / 180);
    const double x = place.X - centre.X, y = place.Y - centre.Y;
    return {centre.X + cosine * x - sine * y, centre.Y + sine * x + cosine * y};
}

// Rings here are all counter-clockwise, so that none takes away what others cover: more than half a turn
// is two arcs.
void AddSweptMove(Paths& paths, const Move& move, double radius)
{
    if (!move.IsArc) {
        AddCapsule(paths, move.From, move.To, radius);
    } else if (std::fabs(move.Sweep) > 180) {
        Move first = move, second = move;
        first.Sweep = second.Sweep = move.Sweep / 2;
        first.To = second.From = TurnedAround(move.Centre, move.From, first.Sweep);
        AddSweptMove(paths, first, radius);
        AddSweptMove(paths, second, radius);
    } else {
        AddBand(paths, move, radius);
    }
}

void AddSweptWay(Paths& paths, const ToolWay& way)
{
    if (way.Pieces.empty())
        AddDisc(paths, way.Start, way.Radius);
    for (const Move& piece : way.Pieces)
        AddSweptMove(paths, piece, way.Radius);
}

Region OffsetOf(const Region& region, double by)
{
    ClipperOffset offset(2, BesideArc * Units);
    offset.AddPaths(PathsOf(region), ClipperLib::jtRound, ClipperLib::etClosedPolygon);
    Paths result;
    offset.Execute(result, by * Units);
    return RegionOf(result);
}

double SignedArea(const Ring& ring)
{
    double twice = 0;
    for (std::size_t i = 0, last = ring.size() - 1; i < ring.size(); last = i++) {
        const double x1 = static_cast<double>(ring[last].X - ring[0].X),
                     y1 = static_cast<double>(ring[last].Y - ring[0].Y);
        const double x2 = static_cast<double>(ring[i].X - ring[0].X),
                     y2 = static_cast<double>(ring[i].Y - ring[0].Y);
        twice += x1 * y2 - x2 * y1;
    }
    return twice / 2 / Units / Units;
}

// Where a level line enters and leaves the rings, from left to right.
std::vector<double> CrossingsAt(const Region& region, double y)
{
    std::vector<double> places;
    for (const Ring& ring : region.Rings)
        for (std::size_t i = 0, last = ring.size() - 1; i < ring.size(); last = i++) {
            const double x1 = static_cast<double>(ring[last].X), y1 = static_cast<double>(ring[last].Y);
            const double x2 = static_cast<double>(ring[i].X), y2 = static_cast<double>(ring[i].Y);
            if ((y1 > y) != (y2 > y))
                places.push_back(x1 + (y - y1) / (y2 - y1) * (x2 - x1));
        }
    std::sort(places.begin(), places.end());
    return places;
}

// In the middle of the widest stretch among some level lines through the region.
PathPoint PlaceIn(const Region& region)
{
    long long low = region.Rings[0][0].Y, high = low;
    for (const GridPoint& point : region.Rings[0]) {
        low = std::min(low, point.Y);
        high = std::max(high, point.Y);
    }
    constexpr int Levels = 15;
    PathPoint best;
    double widest = -1;
    for (int i = 0; i < Levels; ++i) {
        const double y = static_cast<double>(low) + static_cast<double>(high - low) * (i + 0.5) / Levels;
        const std::vector<double> places = CrossingsAt(region, y);
        for (std::size_t k = 0; k + 1 < places.size(); k += 2)
            if (places[k + 1] - places[k] > widest) {
                widest = places[k + 1] - places[k];
                best = {(places[k] + places[k + 1]) / 2 / Units, y / Units};
            }
    }
    return best;
}

void AddPieces(const PolyNode& node, std::vector<RegionPiece>& pieces)
{
    for (const PolyNode* outer : node.Childs) {
        RegionPiece piece;
        Paths rings = {outer->Contour};
        for (const PolyNode* hole : outer->Childs) {
            rings.push_back(hole->Contour);
            AddPieces(*hole, pieces);
        }
        piece.Itself = RegionOf(rings);
        piece.Area = AreaOf(piece.Itself);
        if (piece.Area < SmallestArea)
            continue;
        piece.Inside = PlaceIn(piece.Itself);
        pieces.push_back(std::move(piece));
    }
}

std::string ShortNumber(double value)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.4g", value);
    return text;
}

} // namespace

Region Polygon(const std::vector<PathPoint>& points)
{
    Path path;
    for (const PathPoint& point : points)
        path.push_back(OnGrid(point.X, point.Y));
    return Joined({path}, ClipperLib::pftEvenOdd);
}

Region Inside(const std::vector<std::vector<Move>>& contours)
{
    Paths paths;
    for (const std::vector<Move>& contour : contours) {
        Path path;
        for (const Move& move : contour)
            if (move.IsArc)
                AddArcPoints(path, move.Centre, Between(move.Centre, move.From),
                             AngleFrom(move.Centre, move.From), move.Sweep * Pi / 180);
            else
                path.push_back(OnGrid(move.From.X, move.From.Y));
        paths.push_back(path);
    }
    return Joined(paths, ClipperLib::pftEvenOdd);
}

Region DiscOf(const PathPoint& centre, double radius)
{
    Paths paths;
    AddDisc(paths, centre, radius);
    return RegionOf(paths);
}

Region BoxOf(const PathPoint& low, const PathPoint& high, double cornerRadius)
{
    const double r = cornerRadius;
    Path path;
    AddArcPoints(path, {high.X - r, high.Y - r}, r, 0, Pi / 2);
    AddArcPoints(path, {low.X + r, high.Y - r}, r, Pi / 2, Pi / 2);
    AddArcPoints(path, {low.X + r, low.Y + r}, r, Pi, Pi / 2);
    AddArcPoints(path, {high.X - r, low.Y + r}, r, 3 * Pi / 2, Pi / 2);
    return Joined({path}, ClipperLib::pftNonZero);
}

Region Union(const Region& a, const Region& b)
{
    return Combined(ClipperLib::ctUnion, a, b);
}

Region Union(const std::vector<Region>& regions)
{
    Paths all;
    for (const Region& region : regions) {
        const Paths paths = PathsOf(region);
        all.insert(all.end(), paths.begin(), paths.end());
    }
    return Joined(all, ClipperLib::pftNonZero);
}

Region Difference(const Region& a, const Region& b)
{
    return Combined(ClipperLib::ctDifference, a, b);
}

Region Intersection(const Region& a, const Region& b)
{
    return Combined(ClipperLib::ctIntersection, a, b);
}

Region Grown(const Region& region, double by)
{
    return OffsetOf(region, by);
}

Region Shrunk(const Region& region, double by)
{
    return OffsetOf(region, -by);
}

Region ReachedBy(const Region& region, double discDiameter)
{
    return Grown(Shrunk(region, discDiameter / 2), discDiameter / 2);
}

bool IsWiderThan(const Region& region, double width)
{
    return AreaOf(Shrunk(region, width / 2)) >= SmallestArea;
}

double AreaOf(const Region& region)
{
    double area = 0;
    for (const Ring& ring : region.Rings)
        area += SignedArea(ring);
    return area;
}

bool Holds(const Region& region, const PathPoint& point)
{
    const std::vector<double> places = CrossingsAt(region, point.Y * Units);
    return (std::upper_bound(places.begin(), places.end(), point.X * Units) - places.begin()) % 2 == 1;
}

std::vector<RegionPiece> PiecesOf(const Region& region)
{
    Clipper clipper;
    clipper.AddPaths(PathsOf(region), ClipperLib::ptSubject, true);
    PolyTree tree;
    clipper.Execute(ClipperLib::ctUnion, tree, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
    std::vector<RegionPiece> pieces;
    AddPieces(tree, pieces);
    std::sort(pieces.begin(), pieces.end(),
              [](const RegionPiece& a, const RegionPiece& b) { return a.Area > b.Area; });
    return pieces;
}

std::string Described(const Region& region, std::size_t most)
{
    const std::vector<RegionPiece> pieces = PiecesOf(region);
    std::string text;
    for (std::size_t i = 0; i < std::min(most, pieces.size()); ++i)
        text += (i > 0 ? ", " : "") + ShortNumber(pieces[i].Area) + " mm2 at X" +
                ShortNumber(pieces[i].Inside.X) + " Y" + ShortNumber(pieces[i].Inside.Y);
    if (pieces.size() > most)
        text += " and " + std::to_string(pieces.size() - most) + " more";
    return text;
}

Region SweptAlong(const std::vector<Move>& pieces, double radius)
{
    Paths paths;
    for (const Move& piece : pieces)
        AddSweptMove(paths, piece, radius);
    return JoinedInGroups(paths);
}

Region SweptBy(const ToolWay& way)
{
    return SweptBy(std::vector<ToolWay>{way});
}

Region SweptBy(const std::vector<ToolWay>& ways)
{
    Paths paths;
    for (const ToolWay& way : ways)
        AddSweptWay(paths, way);
    return JoinedInGroups(paths);
}

std::map<Plane, Region> SweptAreas(const MachineSteps& steps, const Sweep& how)
{
    std::map<Plane, Paths> paths;
    for (const RouterCut& cut : steps.Cuts) {
        if (how.Take && !how.Take(cut))
            continue;
        ToolWay way = WayOf(cut, how.RadiusIfUnknown);
        const bool plunge = way.Pieces.empty();
        std::erase_if(way.Pieces, [&](const Move& piece) {
            return std::max(piece.DepthFrom, piece.DepthTo) < how.Depth;
        });
        if (plunge ? way.StartDepth >= how.Depth : !way.Pieces.empty())
            AddSweptWay(paths[cut.On], way);
    }
    std::map<Plane, Region> areas;
    for (const auto& [plane, all] : paths)
        areas[plane] = JoinedInGroups(all);
    return areas;
}

Region SweptFace(const MachineSteps& steps, const Sweep& how)
{
    std::map<Plane, Region> areas = SweptAreas(steps, how);
    return areas[Plane::Surface];
}

} // namespace kv::test
