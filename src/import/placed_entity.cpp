// Ends of lines, points and polylines in space are in the drawing's own system; all else is in the object
// system of its extrusion.
#include "import/placed_entity.h"

#include <cmath>
#include <numbers>

#include "import/drawn_curves.h"

namespace kv {

namespace {

constexpr double DegreesOfRadian = 180 / std::numbers::pi;

double AngleOf(SpacePoint direction)
{
    return std::atan2(direction.Y, direction.X) * DegreesOfRadian;
}

double InCircle(double degrees)
{
    const double rest = std::fmod(degrees, 360);
    return rest < 0 ? rest + 360 : rest;
}

void MovePoint(VertexPoint& point, const Placement& placement)
{
    const SpacePoint moved = placement.Placed({point.X, point.Y, point.Z});
    point.X = moved.X;
    point.Y = moved.Y;
    point.Z = moved.Z;
}

void TurnArc(FlatEntity& arc, const PlaneMap& map)
{
    const double turn = AngleOf(map.Map.Ax);
    const double start = arc.StartAngle, end = arc.EndAngle;
    if (!map.IsMirrored && turn == 0)
        return;
    arc.StartAngle = InCircle(map.IsMirrored ? turn - end : start + turn);
    arc.EndAngle = InCircle(map.IsMirrored ? turn - start : end + turn);
}

// A circle or an arc that is squeezed.
bool BecomeEllipseWay(FlatEntity& round, const PlaneMap& map, double tolerance)
{
    const VertexPoint middle = round.Points.front();
    const bool isWhole = round.Kind == FlatKind::Circle;
    double from = 0, to = 2 * std::numbers::pi;
    if (!isWhole) {
        from = round.StartAngle / DegreesOfRadian;
        double swept = std::fmod(round.EndAngle - round.StartAngle, 360);
        if (swept <= 0)
            swept += 360;
        to = from + swept / DegreesOfRadian;
    }
    const SpacePoint at = map.Map.Placed({middle.X, middle.Y, middle.Z});
    round.Points = FitEllipseWay(at, map.Map.Turned({round.Radius, 0, 0}),
                                 map.Map.Turned({0, round.Radius, 0}), from, to, tolerance);
    if (round.Points.size() < 2)
        return false;
    for (VertexPoint& point : round.Points)
        point.Z = at.Z;
    round.Kind = FlatKind::Polyline;
    round.Flags = isWhole ? 1 : 0;
    if (isWhole)
        round.Points.pop_back();
    return true;
}

// The way from a bulged vertex to the next, squeezed; without its last point.
std::vector<VertexPoint> SqueezedBulge(const VertexPoint& from, const VertexPoint& to, const PlaneMap& map,
                                       double tolerance)
{
    const double dx = to.X - from.X, dy = to.Y - from.Y;
    const double toCentre = (1 - from.Bulge * from.Bulge) / (4 * from.Bulge);
    const SpacePoint centre{(from.X + to.X) / 2 - dy * toCentre, (from.Y + to.Y) / 2 + dx * toCentre, from.Z};
    const double radius = std::hypot(from.X - centre.X, from.Y - centre.Y);
    const double start = std::atan2(from.Y - centre.Y, from.X - centre.X);
    std::vector<VertexPoint> way =
        FitEllipseWay(map.Map.Placed(centre), map.Map.Turned({radius, 0, 0}), map.Map.Turned({0, radius, 0}),
                      start, start + 4 * std::atan(from.Bulge), tolerance);
    if (way.size() < 2)
        return {};
    way.pop_back();
    for (VertexPoint& point : way)
        point.Z = map.Map.Placed(centre).Z;
    return way;
}

void PlaceVertices(FlatEntity& polyline, const PlaneMap& map, double tolerance)
{
    std::vector<VertexPoint> placed;
    const std::size_t count = polyline.Points.size();
    for (std::size_t i = 0; i < count; ++i) {
        VertexPoint point = polyline.Points[i];
        const bool hasNext = i + 1 < count || polyline.IsClosed();
        const VertexPoint& next = polyline.Points[(i + 1) % count];
        std::vector<VertexPoint> way;
        if (!map.IsSimilar && point.Bulge != 0 && hasNext)
            way = SqueezedBulge(point, next, map, tolerance);
        MovePoint(point, map.Map);
        point.StartWidth *= map.Scale;
        point.EndWidth *= map.Scale;
        if (map.IsMirrored)
            point.Bulge = -point.Bulge;
        if (way.empty()) {
            placed.push_back(point);
            continue;
        }
        point.Bulge = way.front().Bulge;
        placed.push_back(point);
        placed.insert(placed.end(), way.begin() + 1, way.end());
    }
    polyline.Points = std::move(placed);
    polyline.StartWidth *= map.Scale;
    polyline.EndWidth *= map.Scale;
}

void PlaceText(FlatEntity& text, const PlaneMap& map)
{
    const double turn = text.StartAngle / DegreesOfRadian;
    text.StartAngle = InCircle(AngleOf(map.Map.Turned({std::cos(turn), std::sin(turn), 0})));
    text.Radius *= LengthOf(map.Map.Ay);
    for (VertexPoint& point : text.Points)
        MovePoint(point, map.Map);
}

bool IsInDrawingSystem(const FlatEntity& flat)
{
    return flat.Kind == FlatKind::Line || flat.Kind == FlatKind::Point || flat.IsInSpace;
}

} // namespace

std::optional<FlatEntity> PlacedEntity(const FlatEntity& flat, const Placement& placement, double tolerance)
{
    const PlaneMap map = MapPlane(flat.Extrusion, placement);
    if (map.IsDegenerate)
        return std::nullopt;
    FlatEntity placed = flat;
    placed.Extrusion = map.Extrusion;
    placed.Thickness *= LengthOf(map.Map.Az);
    placed.Elevation *= LengthOf(map.Map.Az);
    if (IsInDrawingSystem(flat)) {
        for (VertexPoint& point : placed.Points)
            MovePoint(point, placement);
        return placed;
    }
    switch (flat.Kind) {
    case FlatKind::Circle:
    case FlatKind::Arc:
        if (!map.IsSimilar)
            return BecomeEllipseWay(placed, map, tolerance) ? std::optional(placed) : std::nullopt;
        MovePoint(placed.Points.front(), map.Map);
        placed.Radius *= map.Scale;
        if (flat.Kind == FlatKind::Arc)
            TurnArc(placed, map);
        return placed;
    case FlatKind::Polyline:
        PlaceVertices(placed, map, tolerance);
        return placed;
    case FlatKind::Text:
        PlaceText(placed, map);
        return placed;
    default:
        for (VertexPoint& point : placed.Points)
            MovePoint(point, map.Map);
        return placed;
    }
}

} // namespace kv
