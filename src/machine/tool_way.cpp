#include "machine/tool_way.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace kv {

namespace {

constexpr double JoinedPlace = 1e-6;
// Ends beside a smooth corner that are so near are joined: coordinates and end angles have three or four
// decimals.
constexpr double SmoothGap = 0.02;
constexpr double UsedUp = 0.0005; // mm, of a radius; of a length it is the rounding of a place
constexpr double TurnedOver = 0.002;
constexpr double Reversal = 179.9; // degrees: the way comes back on itself

PathPoint PlaceAt(const PathPoint& from, double distance, double angle)
{
    return {from.X + distance * std::cos(angle * Degree), from.Y + distance * std::sin(angle * Degree)};
}

// Direction of the way at a place of the move.
double DirectionAt(const Move& move, const PathPoint& place)
{
    if (!move.IsArc)
        return DirectionTo(move.From, move.To);
    return DirectionTo(move.Centre, place) + (move.Sweep > 0 ? 90 : -90);
}

double RadiusOf(const Move& move)
{
    return Between(move.Centre, move.From);
}

// Moves in which nothing moves would have no direction.
std::vector<Move> MovesWithLength(const std::vector<Move>& moves)
{
    std::vector<Move> all;
    for (const Move& move : moves)
        if (move.IsArc ? RadiusOf(move) * std::fabs(move.Sweep) * Degree > UsedUp
                       : Between(move.From, move.To) > UsedUp)
            all.push_back(move);
    return all;
}

struct Compensation {
    ToolWay Way;
    double Aside = 0; // of the tool's centre, above 0 to the left

    void Fault(const Move& move, const std::string& what)
    {
        Way.Faults.push_back({"narrower than the tool: " + what, move.From, move.Line});
    }
    // The tool's centre beside one move.
    Move Beside(const Move& move)
    {
        Move beside = move;
        const auto shifted = [&](const PathPoint& place, double along) {
            return PlaceAt(place, Aside, along + 90);
        };
        beside.From = shifted(move.From, DirectionAt(move, move.From));
        beside.To = shifted(move.To, DirectionAt(move, move.To));
        if (move.IsArc) {
            const double radius = RadiusOf(move) - (move.Sweep > 0 ? Aside : -Aside);
            if (radius < UsedUp)
                Fault(move, "an arc of radius " + std::to_string(RadiusOf(move)));
        }
        return beside;
    }
    static Move Link(const Move& before, const PathPoint& to)
    {
        Move link;
        link.From = before.To;
        link.To = to;
        link.DepthFrom = link.DepthTo = before.DepthTo;
        link.Line = before.Line;
        return link;
    }
    void AddLink(const PathPoint& to)
    {
        if (Between(Way.Pieces.back().To, to) > JoinedPlace)
            Way.Pieces.push_back(Link(Way.Pieces.back(), to));
    }
    void RollAround(const PathPoint& corner, const PathPoint& to, double turn)
    {
        Move roll = Link(Way.Pieces.back(), to);
        roll.IsArc = true;
        roll.Centre = corner;
        roll.Sweep = turn;
        Way.Pieces.push_back(roll);
    }
    void Add(const Move& move, const Move* before);
};

// A line through the move's ends across a circle around its centre, and so on: the places where the two
// moves cross when they go on.
std::vector<PathPoint> LineAcrossLine(const Move& a, const Move& b)
{
    const double ax = a.To.X - a.From.X, ay = a.To.Y - a.From.Y;
    const double bx = b.To.X - b.From.X, by = b.To.Y - b.From.Y;
    const double cross = ax * by - ay * bx;
    if (std::fabs(cross) < 1e-9 * std::hypot(ax, ay) * std::hypot(bx, by))
        return {};
    const double t = ((b.From.X - a.From.X) * by - (b.From.Y - a.From.Y) * bx) / cross;
    return {{a.From.X + t * ax, a.From.Y + t * ay}};
}

std::vector<PathPoint> LineAcrossArc(const Move& line, const Move& arc)
{
    const double length = Between(line.From, line.To);
    const double dx = (line.To.X - line.From.X) / length, dy = (line.To.Y - line.From.Y) / length;
    const double along = (arc.Centre.X - line.From.X) * dx + (arc.Centre.Y - line.From.Y) * dy;
    const PathPoint foot{line.From.X + along * dx, line.From.Y + along * dy};
    const double radius = RadiusOf(arc), away = Between(foot, arc.Centre);
    if (away > radius)
        return {};
    const double half = std::sqrt(radius * radius - away * away);
    return {{foot.X + half * dx, foot.Y + half * dy}, {foot.X - half * dx, foot.Y - half * dy}};
}

std::vector<PathPoint> ArcAcrossArc(const Move& a, const Move& b)
{
    const double apart = Between(a.Centre, b.Centre);
    if (apart < JoinedPlace)
        return {};
    const double ra = RadiusOf(a), rb = RadiusOf(b);
    const double along = (ra * ra - rb * rb + apart * apart) / (2 * apart);
    if (along * along > ra * ra)
        return {};
    const double direction = DirectionTo(a.Centre, b.Centre);
    const PathPoint foot = PlaceAt(a.Centre, along, direction);
    const double half = std::sqrt(ra * ra - along * along);
    return {PlaceAt(foot, half, direction + 90), PlaceAt(foot, half, direction - 90)};
}

// The crossing that is nearest to the corner.
std::optional<PathPoint> CrossingAt(const PathPoint& corner, const Move& a, const Move& b)
{
    std::vector<PathPoint> places;
    if (a.IsArc && b.IsArc)
        places = ArcAcrossArc(a, b);
    else if (a.IsArc)
        places = LineAcrossArc(b, a);
    else
        places = b.IsArc ? LineAcrossArc(a, b) : LineAcrossLine(a, b);
    std::optional<PathPoint> nearest;
    for (const PathPoint& place : places)
        if (!nearest || Between(place, corner) < Between(*nearest, corner))
            nearest = place;
    return nearest;
}

// The piece's end or start moved along it; its sweep changes by less than half a turn.
void EndPieceAt(Move& piece, const PathPoint& place)
{
    if (piece.IsArc)
        piece.Sweep +=
            std::remainder(DirectionTo(piece.Centre, place) - DirectionTo(piece.Centre, piece.To), 360);
    piece.To = place;
}

void StartPieceAt(Move& piece, const PathPoint& place)
{
    if (piece.IsArc)
        piece.Sweep -=
            std::remainder(DirectionTo(piece.Centre, place) - DirectionTo(piece.Centre, piece.From), 360);
    piece.From = place;
}

double CurvatureOf(const Move& move)
{
    return move.IsArc ? (move.Sweep > 0 ? 1 : -1) / RadiusOf(move) : 0;
}

// Where a way comes back on itself: above 0 where it does so on its left, 0 on the same line.
double TipSide(const Move& before, const Move& after)
{
    const double side = -CurvatureOf(before) - CurvatureOf(after);
    return std::fabs(side) > 1e-9 ? side : 0;
}

void Compensation::Add(const Move& move, const Move* before)
{
    Move next = Beside(move);
    if (before == nullptr) {
        Way.Pieces.push_back(next);
        return;
    }
    Move& last = Way.Pieces.back();
    const double turn = std::remainder(DirectionAt(move, move.From) - DirectionAt(*before, before->To), 360);
    const bool reverses = std::fabs(turn) >= Reversal;
    const bool inner = (reverses ? TipSide(*before, move) : turn) * Aside > 0;
    if (Between(last.To, next.From) <= SmoothGap || Aside == 0) {
        AddLink(next.From);
    } else if (inner) {
        const std::optional<PathPoint> crossing = CrossingAt(move.From, last, next);
        if (crossing) {
            EndPieceAt(last, *crossing);
            StartPieceAt(next, *crossing);
        } else {
            Fault(move, "two ways that do not meet");
            AddLink(next.From);
        }
    } else {
        RollAround(move.From, next.From, turn * Aside > 0 ? turn - std::copysign(360, turn) : turn);
    }
    Way.Pieces.push_back(next);
}

// Of a piece whose corners have taken more than all of it.
bool IsTurnedOver(const Move& piece, const Move& programmed)
{
    if (piece.IsArc)
        return piece.Sweep * (programmed.Sweep > 0 ? 1 : -1) * Degree * RadiusOf(piece) < -TurnedOver;
    const double dx = programmed.To.X - programmed.From.X, dy = programmed.To.Y - programmed.From.Y;
    const double along = (piece.To.X - piece.From.X) * dx + (piece.To.Y - piece.From.Y) * dy;
    return along / std::hypot(dx, dy) < -TurnedOver;
}

} // namespace

ToolWay WayOf(const RouterCut& cut, double radiusIfUnknown)
{
    Compensation compensation;
    ToolWay& way = compensation.Way;
    way.On = cut.On;
    way.Radius = cut.Radius > 0 ? cut.Radius : radiusIfUnknown;
    way.Start = cut.Start;
    way.StartDepth = cut.StartDepth;
    compensation.Aside = cut.Side * way.Radius;
    const std::vector<Move> moves = MovesWithLength(cut.Moves);
    std::vector<std::size_t> pieceOf;
    for (std::size_t i = 0; i < moves.size(); ++i) {
        compensation.Add(moves[i], i > 0 ? &moves[i - 1] : nullptr);
        pieceOf.push_back(way.Pieces.size() - 1);
    }
    for (std::size_t i = 0; i < moves.size(); ++i)
        if (IsTurnedOver(way.Pieces[pieceOf[i]], moves[i]))
            compensation.Fault(moves[i], "a move that its corners use up");
    if (!way.Pieces.empty())
        way.Start = way.Pieces.front().From;
    return way;
}

std::vector<WayFault> WayFaults(const MachineSteps& steps, double radiusIfUnknown)
{
    std::vector<WayFault> all;
    for (const RouterCut& cut : steps.Cuts) {
        const std::vector<WayFault> faults = WayOf(cut, radiusIfUnknown).Faults;
        all.insert(all.end(), faults.begin(), faults.end());
    }
    return all;
}

double DistanceFrom(const Move& move, const PathPoint& point)
{
    if (move.IsArc) {
        const double turn = DirectionTo(move.Centre, point) - DirectionTo(move.Centre, move.From);
        double along = std::fmod(move.Sweep > 0 ? turn : -turn, 360);
        along += along < 0 ? 360 : 0;
        if (along <= std::fabs(move.Sweep))
            return std::fabs(Between(move.Centre, point) - RadiusOf(move));
        return std::min(Between(point, move.From), Between(point, move.To));
    }
    const double dx = move.To.X - move.From.X, dy = move.To.Y - move.From.Y;
    const double square = dx * dx + dy * dy;
    const double along =
        square > 0 ? ((point.X - move.From.X) * dx + (point.Y - move.From.Y) * dy) / square : 0;
    const double t = std::clamp(along, 0.0, 1.0);
    return Between(point, {move.From.X + t * dx, move.From.Y + t * dy});
}

} // namespace kv
