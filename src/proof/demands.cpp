// Walks the entities once. Routes and pockets are gathered by layer first, since entities that touch are one
// way; bores and grooves are asked for by each entity alone.
#include "proof/demands.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "proof/asked_letters.h"
#include "proof/drawn_pieces.h"
#include "proof/drawn_ways.h"
#include "proof/edge_demands.h"
#include "proof/panel_views.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr std::string_view DepthByCode = "its depth is a code of the machine";

double ByUnit(double length)
{
    return length * Run.UnitFactor;
}

struct RouteLayer {
    AskedLetters Letters;
    bool IsPocket = false;
    std::vector<DrawnShapePieces> Shapes;
};

class Gathering {
  public:
    Demands Gather()
    {
        All.Length = ByUnit(Run.SideWidth[Face]);
        All.Width = ByUnit(Run.SideHeight[Face]);
        All.Thickness = ByUnit(Run.PartThickness);
        for (Long i = 1; i <= Entities.Last(); ++i)
            if (Entities[i].Drawn != 0)
                Take(i);
        for (const std::string& name : Order)
            TakeLayer(Routes.at(name));
        AddEdgeBoresOfLines(EdgeLines, All);
        return std::move(All);
    }

  private:
    void Take(Long& index);
    void TakeShape(Long& index, LayerTask task);
    void TakeVerticalBore(const DxfEntity& entity);
    void TakeGroove(const DxfEntity& entity, const DrawnShapePieces& shape);
    void TakeLayer(const RouteLayer& layer);
    void TakeWay(AskedWay way, const RouteLayer& layer);
    void TakePocket(const AskedWay& way);
    double LeadOf(const AskedLetters& letters) const;
    void Leave(Long drawn, std::string_view why) { All.Left.push_back({drawn, std::string(why)}); }

    Demands All;
    std::map<std::string, RouteLayer> Routes;
    std::vector<std::string> Order; // of their names
    std::vector<EdgeLine> EdgeLines;
};

void Gathering::Take(Long& index)
{
    const DxfEntity& entity = Entities[index];
    const std::string_view layer = entity.Layer.Trimmed();
    const bool isPoint = entity.Kind == "POINT", isCircle = entity.Kind == "CIRCLE";
    if (isPoint || isCircle) {
        const LayerTask task = TaskOfCircle(layer);
        if (task == LayerTask::VerticalBore)
            return TakeVerticalBore(entity);
        if (isCircle && task == LayerTask::HorizontalBore)
            return AddEdgeBoreOfView(entity, All);
        if (isPoint)
            return;
    }
    if (!isCircle && !(entity.Kind == "LINE") && !(entity.Kind == "ARC") && !(entity.Kind == "POLYLINE"))
        return;
    TakeShape(index, TaskOfLine(layer));
}

void Gathering::TakeShape(Long& index, LayerTask task)
{
    const DxfEntity& entity = Entities[index];
    const DrawnShapePieces shape = ShapePiecesAt(index);
    if (shape.Pieces.empty())
        return;
    if (task == LayerTask::Groove && (shape.Kind == PieceKind::Line || shape.Kind == PieceKind::Polyline))
        return TakeGroove(entity, shape);
    if (task == LayerTask::HorizontalBore) {
        for (const DrawnPiece& piece : shape.Pieces)
            EdgeLines.push_back(EdgeLineOf(entity, piece));
        return;
    }
    if (task != LayerTask::Route && task != LayerTask::Pocket)
        return;
    const std::string name(entity.Layer.Trimmed());
    const auto [layer, isNew] = Routes.try_emplace(name);
    if (isNew) {
        layer->second.Letters = AskedLettersOf(name);
        layer->second.IsPocket = task == LayerTask::Pocket;
        Order.push_back(name);
    }
    if (Run.NoteCount > 0)
        return Leave(entity.Drawn, "notes of the drawing may change what its layer asks for");
    layer->second.Shapes.push_back(shape);
}

void Gathering::TakeVerticalBore(const DxfEntity& entity)
{
    const bool isOnEdge = entity.Kind == "CIRCLE" && !(entity.Side == "") && !(entity.Side == "5");
    if (isOnEdge)
        return AddEdgeBoreByNormal(entity, All);
    const AskedLetters letters = AskedLettersOf(entity.Layer.Trimmed());
    if (letters.DepthIsCode)
        return Leave(entity.Drawn, DepthByCode);
    const bool isCircle = entity.Kind == "CIRCLE";
    AskedBore bore;
    const double scale = Run.DrawingScale;
    bore.Drawn = entity.Drawn;
    const double x = entity.Side == "5" ? std::fabs(entity.X1) : entity.X1;
    bore.At = PlaceInView(Plane::Surface, {ByUnit(x * scale), ByUnit(entity.Y1 * scale)});
    bore.Depth = ByUnit(letters.Depth.value_or(0));
    if (bore.Depth == 0 && isCircle)
        bore.Depth = ByUnit(std::fabs(entity.Thickness) * scale);
    bore.Diameter = ByUnit(letters.Diameter > 0 || !isCircle ? letters.Diameter : 2 * entity.Radius * scale);
    All.Bores.push_back(bore);
}

void Gathering::TakeGroove(const DxfEntity& entity, const DrawnShapePieces& shape)
{
    const AskedLetters letters = AskedLettersOf(entity.Layer.Trimmed());
    if (letters.DepthIsCode)
        return Leave(entity.Drawn, DepthByCode);
    const bool isLine = shape.Kind == PieceKind::Line;
    if (!isLine && shape.StartWidth != shape.EndWidth)
        return Leave(entity.Drawn, "its width changes");
    AskedGroove groove;
    groove.Drawn = entity.Drawn;
    groove.From = PlaceInView(Plane::Surface, shape.Pieces.front().Way.From);
    groove.To = PlaceInView(Plane::Surface, shape.Pieces.front().Way.To);
    groove.Kerf = letters.Step > 0 ? ByUnit(letters.Step) : Val(Config.SawKerf);
    groove.Width = letters.Diameter > 0 && isLine ? ByUnit(letters.Diameter) : isLine ? 0 : shape.StartWidth;
    groove.Side = GrooveSideOf(entity.Layer.Trimmed());
    groove.Depth = ByUnit(letters.Depth.value_or(0));
    if (groove.Depth == 0)
        groove.Depth = isLine ? ByUnit(std::fabs(entity.Elevation)) : shape.Thickness;
    if (groove.Side != 0 && groove.Width > groove.Kerf)
        return Leave(entity.Drawn, "its width and the side of its line cannot both hold");
    All.Grooves.push_back(groove);
}

double Gathering::LeadOf(const AskedLetters& letters) const
{
    constexpr double ofTheSettings = 999;
    const double lead = letters.Lead.value_or(0);
    if (lead == ofTheSettings || (lead == 0 && Run.LeadsOn != False))
        return ByUnit(Run.LeadLength);
    return ByUnit(lead);
}

// Where the layer has no Z: the entities' own heights, which may change along the way.
void SettleDepth(AskedWay& way, const AskedLetters& letters, double thickness)
{
    if (letters.Depth.value_or(0) != 0) {
        way.DepthLeast = way.DepthMost = ByUnit(*letters.Depth);
    } else if (thickness > 0) {
        way.DepthLeast = way.DepthMost = thickness;
    } else {
        way.DepthLeast = way.Pieces.front().DepthFrom;
        way.DepthMost = way.DepthLeast;
        for (const Move& piece : way.Pieces)
            for (const double depth : {piece.DepthFrom, piece.DepthTo}) {
                way.DepthLeast = std::min(way.DepthLeast, depth);
                way.DepthMost = std::max(way.DepthMost, depth);
            }
    }
    way.DepthMost += ByUnit(letters.Swing);
}

// The view in which most of its ends lie.
Plane ViewOf(const AskedWay& way)
{
    std::map<Plane, int> count;
    for (const Move& piece : way.Pieces)
        ++count[ViewAt(piece.To)];
    const auto most = std::max_element(count.begin(), count.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    return most->first;
}

// A polyline of two vertices and two widths shows where a contour begins.
bool IsStartMark(const DrawnShapePieces& shape)
{
    return shape.Kind == PieceKind::Polyline && shape.Vertices == 2 && shape.IsTapered;
}

// What goes on from a circle, or comes to it, decides the sense in which it is cut.
bool IsTouched(const Move& circle, const std::vector<DrawnShapePieces>& shapes)
{
    constexpr double touching = 0.05;
    const double radius = Between(circle.Centre, circle.From);
    const auto touches = [&](const PathPoint& at) {
        return std::fabs(Between(at, circle.Centre) - radius) < touching;
    };
    return std::any_of(shapes.begin(), shapes.end(), [&](const DrawnShapePieces& shape) {
        const bool isLoose = shape.Kind == PieceKind::Line || shape.Kind == PieceKind::Arc;
        return isLoose && (touches(shape.Pieces.front().Way.From) || touches(shape.Pieces.front().Way.To));
    });
}

void Gathering::TakeLayer(const RouteLayer& layer)
{
    std::vector<DrawnShapePieces> shapes;
    for (const DrawnShapePieces& shape : layer.Shapes)
        if (layer.Letters.DepthIsCode)
            Leave(shape.Pieces.front().Drawn, DepthByCode);
        else if (!IsStartMark(shape))
            shapes.push_back(shape);
        else if (shape.Pieces.front().Way.DepthFrom != 0)
            Leave(shape.Pieces.front().Drawn, "a start mark with a depth of its own");
    const double joint = std::max(0.01, ByUnit(Run.RouteTolerance));
    for (AskedWay& way : WaysOf(shapes, layer.Letters.Side, joint)) {
        const bool isCircle = way.Pieces.size() == 1 && way.IsClosed;
        way.IsSideOpen |= way.Side != 0 && isCircle && IsTouched(way.Pieces.front(), shapes);
        TakeWay(std::move(way), layer);
    }
}

const DrawnShapePieces& ShapeOf(const RouteLayer& layer, Long drawn)
{
    const auto is = [drawn](const DrawnShapePieces& shape) { return shape.Pieces.front().Drawn == drawn; };
    return *std::find_if(layer.Shapes.begin(), layer.Shapes.end(), is);
}

void Gathering::TakeWay(AskedWay way, const RouteLayer& layer)
{
    const DrawnShapePieces& first = ShapeOf(layer, way.Drawn.front());
    const bool isPolyline = first.Kind == PieceKind::Polyline;
    SettleDepth(way, layer.Letters, isPolyline ? first.Thickness : 0);
    way.On = ViewOf(way);
    for (Move& piece : way.Pieces)
        piece = MoveInView(way.On, piece);
    way.Side = IsMirroredView(way.On) ? -way.Side : way.Side;
    const AskedLetters& letters = layer.Letters;
    // Without a letter a polyline's width, or an entity's thickness, is the tool's diameter.
    const double drawnRadius = (isPolyline ? first.StartWidth : first.Thickness) / 2;
    way.Radius = letters.ToolRadius > 0 ? ByUnit(letters.ToolRadius)
                 : letters.Diameter > 0 ? ByUnit(letters.Diameter) / 2
                                        : drawnRadius;
    way.Tool = letters.Tool;
    way.Lead = LeadOf(letters);
    if (layer.IsPocket)
        return TakePocket(way);
    All.Ways.push_back(std::move(way));
}

void Gathering::TakePocket(const AskedWay& way)
{
    if (!way.IsClosed || way.On != Plane::Surface || way.Radius == 0)
        return Leave(way.Drawn.front(), way.IsClosed ? "a pocket without a tool's radius, or on an edge"
                                                     : "its outline is open");
    AskedPocket pocket;
    pocket.Outline = way.Pieces;
    pocket.Drawn = way.Drawn;
    pocket.Radius = way.Radius;
    pocket.Depth = way.DepthMost;
    pocket.Tool = way.Tool;
    All.Pockets.push_back(std::move(pocket));
}

} // namespace

Demands DemandsOfRun()
{
    return Gathering().Gather();
}

} // namespace kv
