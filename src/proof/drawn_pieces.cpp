#include "proof/drawn_pieces.h"

#include <cmath>

#include "machine/arcs.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr double FullTurn = 360; // degrees
constexpr double StraightBulge = 1e-9;

double Millimetres(double drawn)
{
    return drawn * Run.DrawingScale * Run.UnitFactor;
}

// An entity with a normal of its own is drawn seen along it: downward the drawing runs to the left.
bool IsSeenFromBelow(const DxfEntity& entity)
{
    return entity.Side == "5" && entity.ExtrusionZ == -1;
}

PathPoint PlaceIn(const DxfEntity& entity, double x, double y)
{
    return {Millimetres(entity.Side == "5" ? std::fabs(x) : x), Millimetres(y)};
}

// Where no letter of the layer gives the depth. Heights are not scaled.
double DepthAt(const DxfEntity& entity, double z)
{
    const double elevation = std::fabs(entity.Side == "5" ? entity.Z1 : entity.Elevation);
    return (elevation != 0 ? elevation : std::fabs(z)) * Run.UnitFactor;
}

Move LineBetween(const PathPoint& from, const PathPoint& to)
{
    Move line;
    line.From = from;
    line.To = to;
    return line;
}

PathPoint OnRim(const PathPoint& centre, double radius, double degrees)
{
    return {centre.X + radius * std::cos(degrees * Degree), centre.Y + radius * std::sin(degrees * Degree)};
}

Move Clockwise(const PathPoint& centre, double radius, double from, double sweep)
{
    Move arc = LineBetween(OnRim(centre, radius, from), OnRim(centre, radius, from - sweep));
    arc.IsArc = true;
    arc.Centre = centre;
    arc.Sweep = -sweep;
    return arc;
}

Move ArcOf(const DxfEntity& entity)
{
    const bool isMirrored = IsSeenFromBelow(entity);
    const double end = isMirrored ? FullTurn / 2 - entity.StartAngle : entity.EndAngle;
    const double start = isMirrored ? FullTurn / 2 - entity.EndAngle : entity.StartAngle;
    double sweep = std::fmod(end - start, FullTurn);
    sweep += sweep > 0 ? 0 : FullTurn;
    return Clockwise(PlaceIn(entity, entity.X1, entity.Y1), Millimetres(entity.Radius), end, sweep);
}

struct VertexPlace {
    PathPoint At;
    double Bulge = 0, Depth = 0;
    Long Drawn = 0;
};

Move SpanBetween(const VertexPlace& a, const VertexPlace& b)
{
    Move span = LineBetween(a.At, b.At);
    const double chord = Between(a.At, b.At);
    if (std::fabs(a.Bulge) > StraightBulge && chord > 0) {
        const double radius = chord * (1 + a.Bulge * a.Bulge) / (4 * std::fabs(a.Bulge));
        TurnByRadius(span, b.At, std::fabs(a.Bulge) > 1 ? -radius : radius, a.Bulge > 0);
    }
    span.DepthFrom = a.Depth;
    span.DepthTo = b.Depth;
    return span;
}

// Widths and thickness below 0 count as 0.
double NotBelowZero(double length)
{
    return length > 0 ? length : 0;
}

void TakeHead(DrawnShapePieces& shape, const DxfEntity& head)
{
    shape.Thickness = std::fabs(Millimetres(head.Thickness));
    shape.StartWidth = NotBelowZero(Millimetres(head.Radius));
    shape.EndWidth = NotBelowZero(Millimetres(head.EndWidth));
    shape.IsTapered = head.Radius * Run.DrawingScale != head.EndWidth;
    shape.IsClosed = (head.Flags & 1) != 0;
}

DrawnShapePieces PolylinePieces(Long& index)
{
    DrawnShapePieces shape;
    shape.Kind = PieceKind::Polyline;
    TakeHead(shape, Entities[index]);
    const Long whole = Entities[index].Drawn;
    const bool isMirrored = IsSeenFromBelow(Entities[index]);
    std::vector<VertexPlace> corners;
    while (index < Entities.Last() && !(Entities[index + 1].Kind == "SEQEND")) {
        const DxfEntity& vertex = Entities[++index];
        if (!(vertex.Kind == "VERTEX"))
            continue;
        if (corners.empty())
            shape.IsTapered |= vertex.Radius * Run.DrawingScale != vertex.EndWidth;
        // The heights of vertices of a route have no say but their Z.
        corners.push_back({PlaceIn(vertex, vertex.X1, vertex.Y1),
                           isMirrored ? -vertex.Bulge : static_cast<double>(vertex.Bulge),
                           static_cast<double>(vertex.Z1) * Run.UnitFactor, whole});
    }
    shape.Vertices = corners.size();
    for (std::size_t i = 0; i + 1 < corners.size(); ++i)
        shape.Pieces.push_back({SpanBetween(corners[i], corners[i + 1]), whole});
    if (shape.IsClosed && corners.size() > 1)
        shape.Pieces.push_back({SpanBetween(corners.back(), corners.front()), whole});
    return shape;
}

} // namespace

DrawnShapePieces ShapePiecesAt(Long& index)
{
    const DxfEntity& entity = Entities[index];
    DrawnShapePieces shape;
    if (entity.Kind == "POLYLINE")
        return PolylinePieces(index);
    const bool isOnFace = entity.Side == "" || entity.Side == "5";
    if (!isOnFace)
        return shape;
    shape.Thickness = std::fabs(Millimetres(entity.Thickness));
    DrawnPiece piece;
    piece.Drawn = entity.Drawn;
    const PathPoint at = PlaceIn(entity, entity.X1, entity.Y1);
    if (entity.Kind == "LINE") {
        piece.Way = LineBetween(at, PlaceIn(entity, entity.X2, entity.Y2));
    } else if (entity.Kind == "CIRCLE" && entity.Radius > 0) {
        shape.Kind = PieceKind::Circle;
        piece.Way = Clockwise(at, Millimetres(entity.Radius), FullTurn / 4, FullTurn);
    } else if (entity.Kind == "ARC" && entity.Radius > 0) {
        shape.Kind = PieceKind::Arc;
        piece.Way = ArcOf(entity);
    } else {
        return shape;
    }
    piece.Way.DepthFrom = DepthAt(entity, entity.Z1);
    piece.Way.DepthTo = entity.Kind == "LINE" ? DepthAt(entity, entity.Z2) : piece.Way.DepthFrom;
    shape.Pieces.push_back(piece);
    return shape;
}

} // namespace kv
