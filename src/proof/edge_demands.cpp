#include "proof/edge_demands.h"

#include <cmath>
#include <utility>

#include "proof/asked_letters.h"
#include "proof/panel_views.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr double Touching = 0.01; // drawing units
constexpr std::string_view DepthCode = "its depth is a code of the machine";

double InMillimetres(double drawn)
{
    return drawn * Run.DrawingScale * Run.UnitFactor;
}

// The normal says that it is an edge, the place which of the two.
Plane EdgeOfNormal(int side, double x, double y)
{
    constexpr double near = 0.5; // drawing units
    const auto isAt = [](double place, double limit) { return std::fabs(place - limit) < near; };
    if (side == 1 && isAt(y, Run.SideMinY[Face]))
        return Plane::Edge2;
    if (side == 2 && isAt(y, Run.SideMaxY[Face]))
        return Plane::Edge1;
    if (side == 3 && isAt(x, Run.SideMaxX[Face]))
        return Plane::Edge4;
    if (side == 4 && isAt(x, Run.SideMinX[Face]))
        return Plane::Edge3;
    return static_cast<Plane>(side);
}

// The edge that a place of the face lies on.
bool IsOnEdge(Plane edge, const PathPoint& at, const Demands& panel)
{
    const double near = Touching * Run.UnitFactor;
    switch (edge) {
    case Plane::Edge1:
        return std::fabs(at.Y - panel.Width) < near;
    case Plane::Edge2:
        return std::fabs(at.Y) < near;
    case Plane::Edge3:
        return std::fabs(at.X) < near;
    case Plane::Edge4:
        return std::fabs(at.X - panel.Length) < near;
    case Plane::Surface:
        break;
    }
    return false;
}

constexpr Plane EdgesInOrder[] = {Plane::Edge4, Plane::Edge3, Plane::Edge1, Plane::Edge2};

// Of a stem: its edge, and the end that lies in the panel.
struct Stem {
    Plane On = Plane::Surface; // none
    PathPoint Inner;
    double Length = 0;
};

Stem StemOf(const EdgeLine& line, const Demands& panel)
{
    for (const Plane edge : EdgesInOrder)
        for (const auto& [outer, inner] : {std::pair{line.From, line.To}, std::pair{line.To, line.From}})
            if (IsOnEdge(edge, outer, panel))
                return {edge, inner, Between(outer, inner)};
    return {};
}

// The bar holds the stem's end, and lies along the edge.
bool IsBarOf(const EdgeLine& bar, const Stem& stem)
{
    const double near = Touching * Run.UnitFactor;
    const bool alongX = stem.On == Plane::Edge1 || stem.On == Plane::Edge2;
    const auto across = [&](const PathPoint& at) { return alongX ? at.Y : at.X; };
    const auto along = [&](const PathPoint& at) { return alongX ? at.X : at.Y; };
    const double low = std::min(along(bar.From), along(bar.To)),
                 high = std::max(along(bar.From), along(bar.To));
    return std::fabs(across(bar.From) - across(stem.Inner)) < near &&
           std::fabs(across(bar.To) - across(stem.Inner)) < near && along(stem.Inner) > low - near &&
           along(stem.Inner) < high + near;
}

} // namespace

void AddEdgeBoreByNormal(const DxfEntity& circle, Demands& demands)
{
    const AskedLetters letters = AskedLettersOf(circle.Layer.Trimmed());
    const int side = circle.Side.Trimmed()[0] - '0';
    const double scale = Run.DrawingScale;
    // In the plane of its normal the circle's X runs along the edge, its Y is the height.
    const bool alongX = side == 1 || side == 2;
    const double along = std::fabs(circle.X1 * scale), height = std::fabs(circle.Y1 * scale);
    const double across = std::fabs(circle.Z1);
    AskedBore bore;
    bore.On = EdgeOfNormal(side, alongX ? along : across, alongX ? across : along);
    const double origin = alongX ? Run.OriginX : Run.OriginY;
    bore.At = {(along - origin) * Run.UnitFactor, (Run.PartThickness - height) * Run.UnitFactor};
    bore.Depth = std::fabs(InMillimetres(circle.Thickness));
    bore.Diameter =
        letters.Diameter > 0 ? letters.Diameter * Run.UnitFactor : 2 * InMillimetres(circle.Radius);
    bore.Drawn = circle.Drawn;
    demands.Bores.push_back(bore);
}

void AddEdgeBoreOfView(const DxfEntity& circle, Demands& demands)
{
    const AskedLetters letters = AskedLettersOf(circle.Layer.Trimmed());
    const PathPoint drawn{InMillimetres(circle.X1), InMillimetres(circle.Y1)};
    AskedBore bore;
    bore.On = ViewAt(drawn);
    bore.Drawn = circle.Drawn;
    if (letters.DepthIsCode || bore.On == Plane::Surface) {
        demands.Left.push_back(
            {circle.Drawn, std::string(letters.DepthIsCode ? DepthCode : "it is in no view of an edge")});
        return;
    }
    bore.At = PlaceInView(bore.On, drawn);
    bore.Depth = letters.Depth.value_or(0) * Run.UnitFactor;
    bore.Diameter =
        letters.Diameter > 0 ? letters.Diameter * Run.UnitFactor : 2 * InMillimetres(circle.Radius);
    demands.Bores.push_back(bore);
}

EdgeLine EdgeLineOf(const DxfEntity& entity, const DrawnPiece& piece)
{
    const AskedLetters letters = AskedLettersOf(entity.Layer.Trimmed());
    EdgeLine line;
    line.From = PlaceInView(Plane::Surface, piece.Way.From);
    line.To = PlaceInView(Plane::Surface, piece.Way.To);
    line.Height = letters.Depth.value_or(0) * Run.UnitFactor;
    if (line.Height == 0)
        line.Height = std::fabs(entity.Elevation) * Run.UnitFactor;
    line.IsDepthCode = letters.DepthIsCode;
    line.Drawn = piece.Drawn;
    return line;
}

void AddEdgeBoresOfLines(std::vector<EdgeLine> lines, Demands& demands)
{
    std::vector<Stem> stems;
    std::vector<EdgeLine> bars;
    for (const EdgeLine& line : lines)
        if (const Stem stem = StemOf(line, demands); stem.On != Plane::Surface)
            stems.push_back(stem);
        else
            bars.push_back(line);
    for (const EdgeLine& bar : bars)
        for (const Stem& stem : stems) {
            if (!IsBarOf(bar, stem))
                continue;
            const PathPoint middle{(bar.From.X + bar.To.X) / 2, (bar.From.Y + bar.To.Y) / 2};
            const bool alongX = stem.On == Plane::Edge1 || stem.On == Plane::Edge2;
            AskedBore bore;
            bore.On = stem.On;
            bore.At = {alongX ? middle.X : middle.Y, demands.Thickness - bar.Height};
            bore.Depth = stem.Length;
            bore.Diameter = Between(bar.From, bar.To);
            bore.Drawn = bar.Drawn;
            if (bar.IsDepthCode)
                demands.Left.push_back({bar.Drawn, std::string(DepthCode)});
            else
                demands.Bores.push_back(bore);
            break;
        }
}

} // namespace kv
