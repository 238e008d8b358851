#include "proof/piece_cover.h"

#include <algorithm>
#include <cmath>

#include "machine/tool_way.h"

namespace kv {

namespace {

constexpr double OnTheWay = 0.03; // mm: rounded places of arcs, chords of the same arc
constexpr double CellSize = 50;   // mm
constexpr double LeastPart = 0.02;

// From 0 to the move's length, in mm.
struct Stretch {
    double From = 0, To = 0;
};

double RadiusOfArc(const Move& arc)
{
    return Between(arc.Centre, arc.From);
}

double LengthOfMove(const Move& move)
{
    return move.IsArc ? RadiusOfArc(move) * std::fabs(move.Sweep) * Degree : Between(move.From, move.To);
}

// The move from one length to another.
Move PartOf(const Move& move, const Stretch& stretch)
{
    const double length = LengthOfMove(move);
    Move part = move;
    const auto at = [&](double along) {
        const double share = length > 0 ? along / length : 0;
        if (!move.IsArc)
            return PathPoint{move.From.X + (move.To.X - move.From.X) * share,
                             move.From.Y + (move.To.Y - move.From.Y) * share};
        const double angle = (DirectionTo(move.Centre, move.From) + move.Sweep * share) * Degree;
        const double radius = RadiusOfArc(move);
        return PathPoint{move.Centre.X + radius * std::cos(angle), move.Centre.Y + radius * std::sin(angle)};
    };
    part.From = at(stretch.From);
    part.To = at(stretch.To);
    if (move.IsArc && length > 0)
        part.Sweep = move.Sweep * (stretch.To - stretch.From) / length;
    return part;
}

void AddOnLine(std::vector<Stretch>& covered, const Move& line, const Move& other)
{
    const double length = LengthOfMove(line);
    const double dx = (line.To.X - line.From.X) / length, dy = (line.To.Y - line.From.Y) / length;
    const auto along = [&](const PathPoint& p) {
        return (p.X - line.From.X) * dx + (p.Y - line.From.Y) * dy;
    };
    const auto aside = [&](const PathPoint& p) {
        return (p.Y - line.From.Y) * dx - (p.X - line.From.X) * dy;
    };
    double t0 = along(other.From), t1 = along(other.To), s0 = aside(other.From), s1 = aside(other.To);
    if (t0 > t1) {
        std::swap(t0, t1);
        std::swap(s0, s1);
    }
    const double from = std::max(t0, 0.0), to = std::min(t1, length);
    if (from > to + OnTheWay)
        return;
    const auto asideAt = [&](double t) { return t1 > t0 ? s0 + (s1 - s0) * (t - t0) / (t1 - t0) : s0; };
    if (std::fabs(asideAt(from)) <= OnTheWay && std::fabs(asideAt(to)) <= OnTheWay)
        covered.push_back({from - OnTheWay, to + OnTheWay});
}

void AddOnArc(std::vector<Stretch>& covered, const Move& arc, const Move& other)
{
    const double radius = RadiusOfArc(arc);
    if (Between(arc.Centre, other.Centre) + std::fabs(RadiusOfArc(other) - radius) > OnTheWay)
        return;
    const double start = DirectionTo(arc.Centre, arc.From), sense = arc.Sweep > 0 ? 1 : -1;
    // Where the other one begins, going in the sense of this one; it may be met twice around the circle.
    const double otherStart = DirectionTo(other.Centre, other.Sweep * sense > 0 ? other.From : other.To);
    double from = std::fmod((otherStart - start) * sense, 360);
    from += from < 0 ? 360 : 0;
    for (const double turn : {from, from - 360})
        covered.push_back({turn * Degree * radius - OnTheWay,
                           (turn + std::fabs(other.Sweep)) * Degree * radius + OnTheWay});
}

} // namespace

PieceBox BoxOfPiece(const Move& way, double radius)
{
    PieceBox box{{std::min(way.From.X, way.To.X), std::min(way.From.Y, way.To.Y)},
                 {std::max(way.From.X, way.To.X), std::max(way.From.Y, way.To.Y)}};
    double margin = radius;
    if (way.IsArc) { // the whole circle's box, or the chord's with the arc's height, whatever is less
        const double r = RadiusOfArc(way);
        if (std::fabs(way.Sweep) >= 180)
            box = {{way.Centre.X - r, way.Centre.Y - r}, {way.Centre.X + r, way.Centre.Y + r}};
        else
            margin += r * (1 - std::cos(way.Sweep / 2 * Degree));
    }
    return {{box.Low.X - margin, box.Low.Y - margin}, {box.High.X + margin, box.High.Y + margin}};
}

namespace {

int CellAt(double place)
{
    constexpr double farthest = 1e6; // cells
    return static_cast<int>(std::clamp(std::floor(place / CellSize), -farthest, farthest));
}

// A piece of a program with places beyond reason is not in a million cells.
constexpr int MostCells = 4096;

} // namespace

PieceIndex::PieceIndex(const std::vector<CutPiece>& pieces)
{
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const PieceBox box = BoxOfPiece(pieces[i].Way, pieces[i].Radius);
        const int lowX = CellAt(box.Low.X), lowY = CellAt(box.Low.Y);
        const int highX = std::min(CellAt(box.High.X), lowX + MostCells);
        const int highY = std::min(CellAt(box.High.Y), lowY + MostCells);
        for (int x = lowX; x <= highX; ++x)
            for (int y = lowY; y <= highY; ++y)
                Cells[{static_cast<int>(pieces[i].On), {x, y}}].push_back(i);
    }
}

std::vector<std::size_t> PieceIndex::Near(Plane on, const PieceBox& box) const
{
    std::vector<std::size_t> near;
    const int lowX = CellAt(box.Low.X), lowY = CellAt(box.Low.Y);
    const int highX = std::min(CellAt(box.High.X), lowX + MostCells);
    const int highY = std::min(CellAt(box.High.Y), lowY + MostCells);
    for (int x = lowX; x <= highX; ++x)
        for (int y = lowY; y <= highY; ++y)
            if (const auto cell = Cells.find({static_cast<int>(on), {x, y}}); cell != Cells.end())
                near.insert(near.end(), cell->second.begin(), cell->second.end());
    std::sort(near.begin(), near.end());
    near.erase(std::unique(near.begin(), near.end()), near.end());
    return near;
}

std::vector<Move> PartsBeside(const Move& way, const std::vector<const Move*>& others)
{
    const double length = LengthOfMove(way);
    if (length < LeastPart) { // a place
        const auto holds = [&](const Move* other) { return DistanceFrom(*other, way.From) <= OnTheWay; };
        return std::any_of(others.begin(), others.end(), holds) ? std::vector<Move>{}
                                                                : std::vector<Move>{way};
    }
    std::vector<Stretch> covered;
    for (const Move* const other : others)
        if (other->IsArc == way.IsArc)
            way.IsArc ? AddOnArc(covered, way, *other) : AddOnLine(covered, way, *other);
    std::sort(covered.begin(), covered.end(),
              [](const Stretch& a, const Stretch& b) { return a.From < b.From; });
    std::vector<Move> parts;
    double done = 0;
    for (const Stretch& stretch : covered) {
        if (stretch.From > done + LeastPart)
            parts.push_back(PartOf(way, {done, std::min(stretch.From, length)}));
        done = std::max(done, stretch.To);
        if (done >= length)
            break;
    }
    if (done < length - LeastPart)
        parts.push_back(PartOf(way, {done, length}));
    return parts;
}

} // namespace kv
