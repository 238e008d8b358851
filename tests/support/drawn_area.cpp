#include "support/drawn_area.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <optional>

namespace kv::test {

namespace {

constexpr double DegreeInRadians = 3.14159265358979323846 / 180;
constexpr double Cell = 0.5;
constexpr double EdgeLeftOpen = 0.01;
constexpr double ShortestMove = 0.0005; // three decimals

PathPoint Toward(const PathPoint& from, double distance, double angle)
{
    return {from.X + distance * std::cos(angle * DegreeInRadians),
            from.Y + distance * std::sin(angle * DegreeInRadians)};
}
double AngleTo(const PathPoint& from, const PathPoint& to)
{
    return std::atan2(to.Y - from.Y, to.X - from.X) / DegreeInRadians;
}

// A straight piece, or one around a centre: counter-clockwise where the sweep is above 0.
struct Piece {
    bool IsArc = false;
    PathPoint From, To;
    PathPoint Centre;
    double Radius = 0, Angle = 0, Sweep = 0;

    double DirectionAtStart() const { return IsArc ? Angle + Quarter() : AngleTo(From, To); }
    double DirectionAtEnd() const { return IsArc ? Angle + Sweep + Quarter() : AngleTo(From, To); }
    double Quarter() const { return Sweep > 0 ? 90 : -90; }
};

Piece LinePiece(const PathPoint& from, const PathPoint& to)
{
    Piece piece;
    piece.From = from;
    piece.To = to;
    return piece;
}

Piece ArcPiece(const PathPoint& centre, double radius, double angle, double sweep)
{
    Piece piece{
        true, Toward(centre, radius, angle), Toward(centre, radius, angle + sweep), centre, radius, angle,
        sweep};
    return piece;
}

// From the point to an end angle; the same angle is the full turn.
Piece ArcTo(const PathPoint& from, const PathPoint& centre, double endAngle, bool counterClockwise)
{
    const double start = AngleTo(centre, from);
    double sweep = std::fmod(counterClockwise ? endAngle - start : start - endAngle, 360);
    if (sweep <= 0.001) // an end angle has three decimals
        sweep += 360;
    if (sweep <= 0.001)
        sweep += 360;
    return ArcPiece(centre, Between(centre, from), start, counterClockwise ? sweep : -sweep);
}

double DistanceTo(const Piece& piece, const PathPoint& point)
{
    if (piece.IsArc) {
        const double turn = AngleTo(piece.Centre, point) - piece.Angle;
        double along = std::fmod(piece.Sweep > 0 ? turn : -turn, 360);
        along += along < 0 ? 360 : 0;
        if (along <= std::fabs(piece.Sweep))
            return std::fabs(Between(piece.Centre, point) - piece.Radius);
        return std::min(Between(point, piece.From), Between(point, piece.To));
    }
    const double dx = piece.To.X - piece.From.X;
    const double dy = piece.To.Y - piece.From.Y;
    const double square = dx * dx + dy * dy;
    const double along =
        square > 0 ? ((point.X - piece.From.X) * dx + (point.Y - piece.From.Y) * dy) / square : 0;
    const double t = std::clamp(along, 0.0, 1.0);
    return Between(point, {piece.From.X + t * dx, piece.From.Y + t * dy});
}

// The tool's centre beside a piece; `aside` is above 0 to the left of the way.
Piece Beside(const Piece& piece, double aside)
{
    if (!piece.IsArc) {
        const double normal = piece.DirectionAtStart() + 90;
        return LinePiece(Toward(piece.From, aside, normal), Toward(piece.To, aside, normal));
    }
    const double radius = piece.Radius - (piece.Sweep > 0 ? aside : -aside);
    return radius >= 0 ? ArcPiece(piece.Centre, radius, piece.Angle, piece.Sweep)
                       : ArcPiece(piece.Centre, -radius, piece.Angle + 180, piece.Sweep);
}

std::vector<PathPoint> LineAcrossCircle(const Piece& line, const Piece& arc)
{
    const double direction = AngleTo(line.From, line.To) * DegreeInRadians;
    const PathPoint way{std::cos(direction), std::sin(direction)};
    const double along = (arc.Centre.X - line.From.X) * way.X + (arc.Centre.Y - line.From.Y) * way.Y;
    const PathPoint foot{line.From.X + along * way.X, line.From.Y + along * way.Y};
    const double square = arc.Radius * arc.Radius - std::pow(Between(foot, arc.Centre), 2);
    if (square < 0)
        return {};
    const double half = std::sqrt(square);
    return {{foot.X + half * way.X, foot.Y + half * way.Y}, {foot.X - half * way.X, foot.Y - half * way.Y}};
}

std::vector<PathPoint> LineAcrossLine(const Piece& a, const Piece& b)
{
    const double ax = a.To.X - a.From.X, ay = a.To.Y - a.From.Y;
    const double bx = b.To.X - b.From.X, by = b.To.Y - b.From.Y;
    const double cross = ax * by - ay * bx;
    if (std::fabs(cross) < 1e-9)
        return {};
    const double t = ((b.From.X - a.From.X) * by - (b.From.Y - a.From.Y) * bx) / cross;
    return {{a.From.X + t * ax, a.From.Y + t * ay}};
}

std::vector<PathPoint> CircleAcrossCircle(const Piece& a, const Piece& b)
{
    const double apart = Between(a.Centre, b.Centre);
    if (!(apart > 0))
        return {};
    const double along = (a.Radius * a.Radius - b.Radius * b.Radius + apart * apart) / (2 * apart);
    const double square = a.Radius * a.Radius - along * along;
    if (square < 0)
        return {};
    const double direction = AngleTo(a.Centre, b.Centre);
    const PathPoint foot = Toward(a.Centre, along, direction);
    const double half = std::sqrt(square);
    return {Toward(foot, half, direction + 90), Toward(foot, half, direction - 90)};
}

std::optional<PathPoint> Crossing(const Piece& a, const Piece& b, const PathPoint& corner)
{
    std::vector<PathPoint> points;
    if (a.IsArc && b.IsArc)
        points = CircleAcrossCircle(a, b);
    else if (a.IsArc)
        points = LineAcrossCircle(b, a);
    else
        points = b.IsArc ? LineAcrossCircle(a, b) : LineAcrossLine(a, b);
    std::optional<PathPoint> nearest;
    for (const PathPoint& point : points)
        if (!nearest || Between(point, corner) < Between(*nearest, corner))
            nearest = point;
    return nearest;
}

void EndAt(Piece& piece, const PathPoint& point)
{
    piece.To = point;
    if (piece.IsArc) {
        const double sweep = AngleTo(piece.Centre, point) - piece.Angle;
        piece.Sweep += std::remainder(sweep - piece.Sweep, 360);
    }
}

void BeginAt(Piece& piece, const PathPoint& point)
{
    piece.From = point;
    if (piece.IsArc) {
        const double shift = std::remainder(AngleTo(piece.Centre, point) - piece.Angle, 360);
        piece.Angle += shift;
        piece.Sweep -= shift;
    }
}

// The tool's way along the pieces of one route.
void AddCentreWay(const std::vector<Piece>& pieces, double aside, std::vector<Piece>& way)
{
    const std::size_t begin = way.size();
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        Piece next = Beside(pieces[i], aside);
        if (way.size() > begin) {
            const PathPoint corner = pieces[i].From;
            const double turn =
                std::remainder(pieces[i].DirectionAtStart() - pieces[i - 1].DirectionAtEnd(), 360);
            const std::optional<PathPoint> crossing = Crossing(way.back(), next, corner);
            if (turn * aside > 0 && crossing && Between(way.back().To, next.From) > ShortestMove) {
                EndAt(way.back(), *crossing);
                BeginAt(next, *crossing);
            } else if (turn * aside < 0) {
                const double from = AngleTo(corner, way.back().To);
                way.push_back(ArcPiece(corner, std::fabs(aside), from, turn));
            } else {
                way.push_back(LinePiece(way.back().To, next.From));
            }
        }
        way.push_back(next);
    }
}

struct DrawnTool {
    double Radius = 0;
    std::vector<Piece> Way; // of its centre
};

std::map<char, double> WordsOf(const std::string& line)
{
    std::map<char, double> words;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] < 'A' || line[at] > 'Z')
            continue;
        const char* const from = line.c_str() + at + 1;
        char* end = nullptr;
        const double value = std::strtod(from, &end);
        if (end != from)
            words[line[at]] = value; // of several G words the last
    }
    return words;
}

struct DrawnProgram {
    std::vector<DrawnTool> Tools; // one a route
    std::vector<Piece> Pieces;
    double Aside = 0;
    PathPoint At;
    std::string Fault;

    void EndRoute()
    {
        if (Tools.empty())
            return;
        if (Pieces.empty())
            Pieces.push_back(LinePiece(At, At));
        AddCentreWay(Pieces, Aside, Tools.back().Way);
        Pieces.clear();
    }
    void Add(const Piece& piece)
    {
        if (piece.IsArc || Between(piece.From, piece.To) > ShortestMove)
            Pieces.push_back(piece);
        At = piece.To;
    }
    void Take(const std::string& line)
    {
        const std::map<char, double> words = WordsOf(line);
        const auto starts = [&line](const char* code) { return line.rfind(code, 0) == 0; };
        const auto word = [&words](char letter) {
            const auto found = words.find(letter);
            return found == words.end() ? 0 : found->second;
        };
        const PathPoint to{word('X'), word('Y')};
        if (starts("G88")) {
            EndRoute();
            const double radius = word('R');
            Tools.push_back({radius, {}});
            Aside = line.find("G41") != std::string::npos   ? radius
                    : line.find("G42") != std::string::npos ? -radius
                                                            : 0;
            At = to;
        } else if (starts("G1G")) {
            Add(LinePiece(At, to));
        } else if ((starts("G37") || starts("G38")) && words.count('A') > 0) {
            Add(ArcTo(At, to, word('A'), starts("G38")));
        } else if (starts("G2G") || starts("G3G")) {
            const PathPoint centre{At.X + word('I'), At.Y + word('J')};
            Add(ArcTo(At, centre, AngleTo(centre, to), starts("G3G")));
        } else if (!starts("G71") && !starts("G150") && !starts("M2")) {
            Fault = line;
        }
    }
};

bool IsInside(const std::vector<PathPoint>& polygon, const PathPoint& point)
{
    bool inside = false;
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const PathPoint &a = polygon[i], &b = polygon[j];
        if ((a.Y > point.Y) != (b.Y > point.Y) && point.X < (b.X - a.X) * (point.Y - a.Y) / (b.Y - a.Y) + a.X)
            inside = !inside;
    }
    return inside;
}

// How far the point lies beyond the tool's edge; below 0 where it is cut.
double BeyondEdge(const DrawnProgram& drawing, const PathPoint& point)
{
    double beyond = std::numeric_limits<double>::infinity();
    for (const DrawnTool& tool : drawing.Tools)
        for (const Piece& piece : tool.Way)
            beyond = std::min(beyond, DistanceTo(piece, point) - tool.Radius);
    return beyond;
}

} // namespace

DrawnArea AreaBeside(const std::vector<std::string>& program, const std::vector<PathPoint>& outline)
{
    DrawnProgram drawing;
    for (const std::string& line : program)
        drawing.Take(line);
    drawing.EndRoute();
    DrawnArea area;
    area.Fault = drawing.Fault;
    PathPoint low = outline.front(), high = low;
    const auto widen = [&](const PathPoint& point, double by) {
        low = {std::min(low.X, point.X - by), std::min(low.Y, point.Y - by)};
        high = {std::max(high.X, point.X + by), std::max(high.Y, point.Y + by)};
    };
    for (const PathPoint& point : outline)
        widen(point, 0);
    const PathPoint origin = low; // the cells lie along the outline's sides
    for (const DrawnTool& tool : drawing.Tools)
        for (const Piece& piece : tool.Way)
            for (const PathPoint& point : {piece.From, piece.To})
                widen(point, tool.Radius + piece.Radius);
    const auto cellsTo = [](double from, double to) {
        return static_cast<int>(std::floor((to - from) / Cell));
    };
    for (int row = cellsTo(origin.Y, low.Y); row <= cellsTo(origin.Y, high.Y); ++row)
        for (int column = cellsTo(origin.X, low.X); column <= cellsTo(origin.X, high.X); ++column) {
            const PathPoint point{origin.X + (column + 0.5) * Cell, origin.Y + (row + 0.5) * Cell};
            const double beyond = BeyondEdge(drawing, point);
            if (IsInside(outline, point))
                area.LeftInside += beyond > EdgeLeftOpen ? Cell * Cell : 0;
            else
                area.CutOutside += beyond < -EdgeLeftOpen ? Cell * Cell : 0;
        }
    return area;
}

std::vector<PathPoint> RoundedBox(const PathPoint& low, const PathPoint& high, double cornerRadius)
{
    const double r = cornerRadius;
    const PathPoint centres[] = {
        {high.X - r, high.Y - r}, {low.X + r, high.Y - r}, {low.X + r, low.Y + r}, {high.X - r, low.Y + r}};
    std::vector<PathPoint> outline;
    for (int corner = 0; corner < 4; ++corner)
        for (int step = 0; step <= 90; ++step)
            outline.push_back(Toward(centres[corner], r, corner * 90 + step));
    return outline;
}

std::vector<PathPoint> Disc(const PathPoint& centre, double radius)
{
    return RoundedBox({centre.X - radius, centre.Y - radius}, {centre.X + radius, centre.Y + radius}, radius);
}

} // namespace kv::test
