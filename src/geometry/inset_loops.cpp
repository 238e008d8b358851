// Inset loops by the diagram of the walls: within a cell a line of equal distance runs beside the cell's
// chord or around the cell's point. Loops are followed from edge to edge by the diagram's own order
// alone: rounding can move a point, but never breaks a loop. Pieces of one wall then become one again.
#include "geometry/inset_loops.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace kv {

namespace {

using Edge = InsetDiagram::Edge;
constexpr std::int32_t NoCrossing = -1;
constexpr double SmoothShare = 4; // chord tolerances by which a corner moves the line that is none

// The part of a loop within one cell.
struct CellPiece {
    std::int32_t Cell = 0;
    PlanePoint From, To; // grid steps
};

// The turn from one direction to another, -pi to pi.
double TurnBetween(const PlanePoint& a, const PlanePoint& b)
{
    return AngleOfVector(Cross(a, b), a.X * b.X + a.Y * b.Y);
}

// What the walls' chords make of the pieces of a loop.
class LoopPieces {
  public:
    LoopPieces(const InsetDiagram& diagram, double clearance) : Diagram(diagram), Clearance(clearance) {}
    InsetLoop Joined(std::vector<CellPiece> pieces) const;

  private:
    const CellSite& SiteOf(const CellPiece& piece) const
    {
        return Diagram.Sites[static_cast<std::size_t>(piece.Cell)];
    }
    const FlatChord& ChordAt(std::int32_t number) const
    {
        return Diagram.Paths.Chords[static_cast<std::size_t>(number)];
    }
    PlanePoint TangentAt(std::int32_t chord, bool atEnd) const;
    bool IsSmoothCorner(std::int32_t chord) const;
    bool IsSmoothPoint(const CellSite& site) const { return site.IsPoint && IsSmoothCorner(site.Chord); }
    bool Continues(const CellPiece& piece, const CellPiece& next) const;
    PathSpan PieceOf(const CellPiece& piece) const;
    std::optional<PlanePoint> UprightJoint(const CellPiece& piece, const CellPiece& next) const;
    void SmoothenJoints(std::vector<CellPiece>& pieces) const;
    InsetLoop MergedPieces(const std::vector<CellPiece>& pieces) const;

    const InsetDiagram& Diagram;
    double Clearance; // grid steps
};

// Direction of the wall's own line or arc at the beginning or end of a span's chord.
PlanePoint LoopPieces::TangentAt(std::int32_t number, bool atEnd) const
{
    const FlatChord& chord = ChordAt(number);
    const PathSpan& span = Diagram.Paths.Spans[static_cast<std::size_t>(chord.Span)];
    if (!span.IsArc)
        return Minus(span.To, span.From);
    const PlanePoint off = Minus(atEnd ? span.To : span.From, span.Centre);
    return span.CounterClockwise ? PlanePoint{-off.Y, off.X} : PlanePoint{off.Y, -off.X};
}

// Whether the wall runs on smoothly at a chord's beginning: within an arc, or from one span to the next.
bool LoopPieces::IsSmoothCorner(std::int32_t number) const
{
    const FlatChord& chord = ChordAt(number);
    const std::size_t path = static_cast<std::size_t>(chord.Path);
    const std::size_t before = static_cast<std::size_t>(number) > Diagram.Paths.FirstChord[path]
                                   ? static_cast<std::size_t>(number) - 1
                                   : Diagram.Paths.FirstChord[path + 1] - 1;
    const FlatChord& previous = Diagram.Paths.Chords[before];
    if (previous.Span == chord.Span && previous.Place < chord.Place)
        return true;
    const double turn =
        TurnBetween(TangentAt(static_cast<std::int32_t>(before), true), TangentAt(number, false));
    return std::fabs(turn) * Clearance < SmoothShare * Diagram.Tolerance * Diagram.Paths.Scale;
}

// Whether the two pieces are one: both belong to one span, and the wall between them is smooth.
bool LoopPieces::Continues(const CellPiece& piece, const CellPiece& next) const
{
    const CellSite& a = SiteOf(piece);
    const CellSite& b = SiteOf(next);
    const FlatChord& one = ChordAt(a.Chord);
    const FlatChord& two = ChordAt(b.Chord);
    if (one.Span != two.Span)
        return false;
    if (a.IsPoint && b.IsPoint)
        return false;
    if (a.IsPoint) // a point is the beginning of its chord
        return a.Chord == b.Chord && one.Place > 0;
    return b.IsPoint ? one.Next == b.Chord && two.Place > 0 : one.Next == b.Chord;
}

PathSpan LoopPieces::PieceOf(const CellPiece& piece) const
{
    const CellSite& site = SiteOf(piece);
    const FlatChord& chord = ChordAt(site.Chord);
    const PathSpan& wall = Diagram.Paths.Spans[static_cast<std::size_t>(chord.Span)];
    PathSpan span;
    span.From = Diagram.Paths.ToPlane(piece.From.X, piece.From.Y);
    span.To = Diagram.Paths.ToPlane(piece.To.X, piece.To.Y);
    const double inset = Clearance / Diagram.Paths.Scale;
    if (site.IsPoint && chord.Place == 0) {
        span.IsArc = true;
        span.CounterClockwise = false;
        span.Centre = Diagram.Paths.ToPlane(site.From.X, site.From.Y);
        span.Radius = inset;
    } else if (wall.IsArc) {
        span.IsArc = true;
        span.CounterClockwise = wall.CounterClockwise;
        span.Centre = wall.Centre;
        span.Radius = wall.CounterClockwise ? wall.Radius - inset : wall.Radius + inset;
    }
    return span;
}

// Where a span's own way ends, at a point that the tool goes round or that leads smoothly to the next
// span, the joint lies upright on the wall's own point: chords of an arc would put it beside.
std::optional<PlanePoint> LoopPieces::UprightJoint(const CellPiece& piece, const CellPiece& next) const
{
    const CellSite& own = SiteOf(piece);
    const CellSite& other = SiteOf(next);
    if (own.IsPoint && other.IsPoint)
        return std::nullopt;
    if (ChordAt(other.Chord).Place != 0)
        return std::nullopt;
    const bool follows = own.IsPoint ? own.Chord == other.Chord : ChordAt(own.Chord).Next == other.Chord;
    if (!follows || (!own.IsPoint && !other.IsPoint && !IsSmoothCorner(other.Chord)))
        return std::nullopt;
    const PlanePoint tangent = other.IsPoint ? TangentAt(own.Chord, true) : TangentAt(other.Chord, false);
    const double share = Clearance / LengthOf(tangent);
    return PlanePoint{other.From.X - tangent.Y * share, other.From.Y + tangent.X * share};
}

// A smooth point's own tiny arc goes. What it leaves open beside another wall is closed where the pieces' own
// lines and circles cross: a line must not be moved off its own place.
void LoopPieces::SmoothenJoints(std::vector<CellPiece>& pieces) const
{
    std::vector<CellPiece> kept;
    for (const CellPiece& piece : pieces) {
        const CellSite& site = SiteOf(piece);
        const FlatChord& chord = ChordAt(site.Chord);
        if (!(IsSmoothPoint(site) && chord.Place == 0))
            kept.push_back(piece);
    }
    if (kept.size() < 2)
        return;
    for (std::size_t i = 0; i < kept.size(); ++i) {
        CellPiece& next = kept[(i + 1) % kept.size()];
        if (const std::optional<PlanePoint> joint = UprightJoint(kept[i], next))
            kept[i].To = next.From = *joint;
    }
    pieces = std::move(kept);
}

// Where two lines, or the circles of arcs, cross nearest to a point; none where they do not.
std::optional<PlanePoint> CrossingNear(const PathSpan& a, const PathSpan& b, const PlanePoint& near)
{
    std::optional<PlanePoint> nearest;
    for (const PlanePoint& point : CrossingsOfWholes(a, b))
        if (!nearest || Distance(point, near) < Distance(*nearest, near))
            nearest = point;
    return nearest;
}

// The point of the piece's own line or circle.
PlanePoint SettledOn(const PathSpan& span, const PlanePoint& point)
{
    const double distance = span.IsArc ? Distance(span.Centre, point) : 0;
    return distance > 0 ? PointAlong(span.Centre, point, span.Radius / distance) : point;
}

// The pieces are exact but for their ends, which come from chords: those meet where the pieces' own lines
// and circles cross. Pieces that run on into each other meet where they are said to.
InsetLoop MetAtJoints(InsetLoop loop, double tolerance)
{
    constexpr double farAlong = 8; // chords of the tolerance lie beside an arc by less
    for (std::size_t i = 0; i < loop.size() && loop.size() > 1; ++i) {
        PathSpan& span = loop[i];
        PathSpan& next = loop[(i + 1) % loop.size()];
        const PlanePoint end = SettledOn(span, span.To), begin = SettledOn(next, next.From);
        PlanePoint joint = PointAlong(end, begin, 0.5);
        const double apart = Distance(end, begin);
        if (apart > tolerance / 4) {
            const double furthest =
                apart + farAlong * std::sqrt(tolerance * std::max(span.Radius, next.Radius));
            const std::optional<PlanePoint> crossing = CrossingNear(span, next, joint);
            if (crossing && Distance(*crossing, joint) <= furthest)
                joint = *crossing;
        }
        span.To = next.From = joint;
    }
    return loop;
}

// Where the two joints of a short arc have passed each other, it would run nearly all the way round: its
// neighbours meet without it.
InsetLoop WithJoints(InsetLoop loop, double tolerance)
{
    for (;;) {
        const InsetLoop met = MetAtJoints(loop, tolerance);
        InsetLoop kept;
        for (std::size_t i = 0; i < met.size(); ++i)
            if (!met[i].IsArc || SweepOfArc(met[i]) <= SweepOfArc(loop[i]) + std::numbers::pi)
                kept.push_back(loop[i]);
        if (kept.size() == loop.size())
            return met;
        loop = std::move(kept);
    }
}

// Pieces of one span become one; what has no length goes. An arc whose ends rounding has put in the wrong
// order would run nearly all the way round.
InsetLoop LoopPieces::MergedPieces(const std::vector<CellPiece>& pieces) const
{
    const double least = 1e-9 * Clearance / Diagram.Paths.Scale;
    InsetLoop loop;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        PathSpan span = PieceOf(pieces[i]);
        double length = Distance(span.From, span.To);
        while (i + 1 < pieces.size() && Continues(pieces[i], pieces[i + 1])) {
            const PathSpan next = PieceOf(pieces[++i]);
            length += Distance(next.From, next.To);
            span.To = next.To;
        }
        if (span.IsArc && !(span.Radius > least))
            continue;
        const bool isTurnedOver =
            span.IsArc && SweepOfArc(span) > std::numbers::pi && SweepOfArc(span) * span.Radius > 2 * length;
        if (!isTurnedOver && Distance(span.From, span.To) > least)
            loop.push_back(span);
    }
    return loop;
}

InsetLoop LoopPieces::Joined(std::vector<CellPiece> pieces) const
{
    SmoothenJoints(pieces);
    std::size_t begin = 0; // a piece that does not continue the one in front
    while (begin < pieces.size() &&
           Continues(pieces[(begin + pieces.size() - 1) % pieces.size()], pieces[begin]))
        ++begin;
    std::rotate(pieces.begin(), pieces.begin() + static_cast<std::ptrdiff_t>(begin % pieces.size()),
                pieces.end());
    return WithJoints(MergedPieces(pieces), Diagram.Tolerance);
}

// The crossings of one distance, and the way from one to the next.
class LoopWalk {
  public:
    LoopWalk(const InsetDiagram& diagram, double clearance);
    // From a crossing until one that is taken already.
    std::vector<CellPiece> From(std::size_t crossing);
    std::size_t Count() const { return Crossings.size(); }

  private:
    bool IsLower(const Edge& edge) const { return Diagram.NumberOf(edge) < Diagram.NumberOf(*edge.twin()); }
    std::int32_t LastOn(const Edge& edge) const;

    const InsetDiagram& Diagram;
    std::vector<Crossing> Crossings;
    std::vector<std::int32_t> First; // of each half-edge of the lower number; the second follows it
    std::vector<char> IsTaken;
};

LoopWalk::LoopWalk(const InsetDiagram& diagram, double clearance)
    : Diagram(diagram), First(diagram.Graph.edges().size(), NoCrossing)
{
    for (const Edge& edge : diagram.Graph.edges()) {
        if (!IsLower(edge) || !diagram.IsWithinRegion(edge))
            continue;
        const std::size_t before = Crossings.size();
        diagram.AddCrossings(edge, clearance, Crossings);
        if (Crossings.size() > before)
            First[static_cast<std::size_t>(diagram.NumberOf(edge))] = static_cast<std::int32_t>(before);
    }
    IsTaken.assign(Crossings.size(), 0);
}

// The last crossing of a half-edge in its own direction.
std::int32_t LoopWalk::LastOn(const Edge& edge) const
{
    const bool isLower = IsLower(edge);
    const std::int32_t number = Diagram.NumberOf(isLower ? edge : *edge.twin());
    const std::int32_t first = First[static_cast<std::size_t>(number)];
    if (first == NoCrossing || !isLower)
        return first;
    const auto next = static_cast<std::size_t>(first) + 1;
    return next < Crossings.size() && Crossings[next].Edge == number ? first + 1 : first;
}

// Along a cell's edges, counter-clockwise, the distance rises above the line and falls below it in turn. A
// piece begins where it falls and ends where it last rose; there the next cell's piece begins.
std::vector<CellPiece> LoopWalk::From(std::size_t crossing)
{
    std::vector<CellPiece> pieces;
    for (std::size_t at = crossing; IsTaken[at] == 0;) {
        IsTaken[at] = 1;
        const Crossing& from = Crossings[at];
        const Edge* edge = &Diagram.Graph.edges()[static_cast<std::size_t>(from.Edge)];
        if (from.Rises)
            edge = edge->twin();
        const std::size_t cell = Diagram.CellOf(*edge);
        std::int32_t to = NoCrossing;
        do {
            edge = edge->prev();
            to = LastOn(*edge);
        } while (to == NoCrossing);
        at = static_cast<std::size_t>(to);
        pieces.push_back({static_cast<std::int32_t>(cell), from.At, Crossings[at].At});
    }
    return pieces;
}

} // namespace

std::vector<InsetLoop> LoopsOf(const InsetDiagram& diagram, double clearance)
{
    const double distance = clearance * diagram.Paths.Scale;
    LoopWalk walk(diagram, distance);
    const LoopPieces joiner(diagram, distance);
    std::vector<InsetLoop> loops;
    for (std::size_t begin = 0; begin < walk.Count(); ++begin) {
        std::vector<CellPiece> pieces = walk.From(begin);
        if (pieces.size() < 2)
            continue;
        InsetLoop loop = joiner.Joined(std::move(pieces));
        if (!loop.empty())
            loops.push_back(std::move(loop));
    }
    return loops;
}

} // namespace kv
