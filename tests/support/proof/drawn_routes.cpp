#include "support/proof/drawn_routes.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <map>
#include <sstream>

namespace kv::test {

namespace {

constexpr double Joint = 0.1; // mm between ends that meet
constexpr double DegreesOfCircle = 360;

struct DxfVertex {
    double X = 0, Y = 0, Bulge = 0, StartWidth = 0, EndWidth = 0;
};

struct Entity {
    std::string Kind, Layer, Text;
    std::map<int, double> Values;
    std::vector<DxfVertex> Vertices;
    bool Closed = false;
};

std::string WithoutBlanks(const std::string& text)
{
    const std::size_t from = text.find_first_not_of(" \t\r");
    return from == std::string::npos ? "" : text.substr(from, text.find_last_not_of(" \t\r") - from + 1);
}

void TakeVertexGroup(DxfVertex& vertex, int code, double value)
{
    if (code == 10)
        vertex.X = value;
    else if (code == 20)
        vertex.Y = value;
    else if (code == 40)
        vertex.StartWidth = value;
    else if (code == 41)
        vertex.EndWidth = value;
    else if (code == 42)
        vertex.Bulge = value;
}

// The entities in order; the vertices of a polyline are its own.
std::vector<Entity> EntitiesIn(const std::string& dxf)
{
    std::vector<Entity> entities;
    std::istringstream text(dxf);
    std::string codeLine, value;
    bool inEntities = false, inVertex = false;
    while (std::getline(text, codeLine) && std::getline(text, value)) {
        const int code = std::atoi(codeLine.c_str());
        value = WithoutBlanks(value);
        if (code == 2 && (value == "ENTITIES" || value == "OBJECTS"))
            inEntities = value == "ENTITIES";
        if (!inEntities)
            continue;
        if (code == 0) {
            inVertex = value == "VERTEX";
            if (inVertex)
                entities.back().Vertices.emplace_back();
            else
                entities.emplace_back().Kind = value;
        } else if (entities.empty()) {
            continue;
        } else if (inVertex) {
            TakeVertexGroup(entities.back().Vertices.back(), code, std::atof(value.c_str()));
        } else if (code == 8) {
            entities.back().Layer = value;
        } else if (code == 1) {
            entities.back().Text = value;
        } else if (code == 70) {
            entities.back().Closed = std::atoi(value.c_str()) % 2 == 1;
        } else if (entities.back().Kind == "LWPOLYLINE" &&
                   (code == 10 || !entities.back().Vertices.empty())) {
            if (code == 10)
                entities.back().Vertices.emplace_back();
            TakeVertexGroup(entities.back().Vertices.back(), code, std::atof(value.c_str()));
        } else {
            entities.back().Values[code] = std::atof(value.c_str());
        }
    }
    return entities;
}

// --- layer names

// The number behind the first place where the code stands, behind the layer's word, a number or a blank;
// `missing` where none does, `bare` where no number follows.
double ValueOf(const std::string& layer, const std::string& code, double missing, double bare)
{
    std::size_t word = 0;
    for (const char* const known : {"ROUTE", "EXCAV", "BORDER"})
        if (layer.starts_with(known))
            word = std::string(known).size();
    for (std::size_t at = layer.find(code, word); at != std::string::npos; at = layer.find(code, at + 1)) {
        const std::size_t behind = at + code.size();
        const bool begins = at == word || std::isalpha(static_cast<unsigned char>(layer[at - 1])) == 0;
        const bool ends =
            behind >= layer.size() || std::isalpha(static_cast<unsigned char>(layer[behind])) == 0;
        if (!begins || !ends)
            continue;
        std::string number = layer.substr(behind, layer.find_first_not_of("0123456789.P", behind) - behind);
        std::replace(number.begin(), number.end(), 'P', '.');
        return number.empty() ? bare : std::atof(number.c_str());
    }
    return missing;
}

void TakeLayer(DrawnWay& way, const std::string& layer, double radiusIfUnknown)
{
    way.Name = layer;
    way.Depth = ValueOf(layer, "Z", 0, 0);
    way.Passes = std::max(1, static_cast<int>(ValueOf(layer, "M", 1, 1)));
    way.Lead = ValueOf(layer, "LD", 0, 0);
    way.Ramps = ValueOf(layer, "RI", 0, 1) != 0 || ValueOf(layer, "RO", 0, 1) != 0;
    way.Side = 0;
    way.Radius = radiusIfUnknown;
    for (const char letter : {'L', 'R'}) {
        const double radius = ValueOf(layer, std::string(1, letter), -1, 0);
        if (radius < 0)
            continue;
        way.Side = letter == 'L' ? 1 : -1;
        way.Radius = radius > 0 ? radius : radiusIfUnknown;
    }
}

// --- pieces

Move LineFrom(const PathPoint& from, const PathPoint& to)
{
    Move piece;
    piece.From = from;
    piece.To = to;
    return piece;
}

PathPoint OnCircle(const PathPoint& centre, double radius, double degrees)
{
    const double radians = degrees / 180 * 3.14159265358979323846;
    return {centre.X + radius * std::cos(radians), centre.Y + radius * std::sin(radians)};
}

// Clockwise, as arcs and circles are cut.
Move ClockwiseArc(const PathPoint& centre, double radius, double from, double sweep)
{
    Move piece = LineFrom(OnCircle(centre, radius, from), OnCircle(centre, radius, from - sweep));
    piece.IsArc = true;
    piece.Centre = centre;
    piece.Sweep = -sweep;
    return piece;
}

Move SpanOf(const DxfVertex& a, const DxfVertex& b)
{
    Move piece = LineFrom({a.X, a.Y}, {b.X, b.Y});
    if (a.Bulge == 0)
        return piece;
    const double left = (1 - a.Bulge * a.Bulge) / (4 * a.Bulge);
    piece.IsArc = true;
    piece.Centre = {(a.X + b.X) / 2 - left * (b.Y - a.Y), (a.Y + b.Y) / 2 + left * (b.X - a.X)};
    piece.Sweep = 4 * std::atan(a.Bulge) / 3.14159265358979323846 * 180;
    return piece;
}

std::vector<Move> PiecesOfEntity(const Entity& entity)
{
    const auto value = [&entity](int code) {
        const auto found = entity.Values.find(code);
        return found == entity.Values.end() ? 0 : found->second;
    };
    const PathPoint at{value(10), value(20)};
    if (entity.Kind == "LINE")
        return {LineFrom(at, {value(11), value(21)})};
    if (entity.Kind == "CIRCLE")
        return {ClockwiseArc(at, value(40), 90, DegreesOfCircle)};
    if (entity.Kind == "ARC") {
        const double sweep = std::fmod(value(51) - value(50) + DegreesOfCircle, DegreesOfCircle);
        return {ClockwiseArc(at, value(40), value(51), sweep == 0 ? DegreesOfCircle : sweep)};
    }
    std::vector<Move> pieces;
    for (std::size_t i = 0; i + (entity.Closed ? 0 : 1) < entity.Vertices.size(); ++i)
        pieces.push_back(SpanOf(entity.Vertices[i], entity.Vertices[(i + 1) % entity.Vertices.size()]));
    return pieces;
}

Move Backward(Move piece)
{
    std::swap(piece.From, piece.To);
    piece.Sweep = -piece.Sweep;
    return piece;
}

bool IsMark(const Entity& entity)
{
    const auto value = [&entity](int code) {
        const auto found = entity.Values.find(code);
        return found == entity.Values.end() ? 0 : found->second;
    };
    if (entity.Vertices.size() != 2)
        return false;
    const DxfVertex& first = entity.Vertices.front();
    return first.StartWidth != first.EndWidth || value(40) != value(41);
}

// --- the panel and its planes

struct DrawnBox {
    PathPoint Low, High;

    double Wide() const { return High.X - Low.X; }
    double Tall() const { return High.Y - Low.Y; }
    bool Holds(const PathPoint& at) const
    {
        return at.X > Low.X - 1 && at.X < High.X + 1 && at.Y > Low.Y - 1 && at.Y < High.Y + 1;
    }
};

void Widen(DrawnBox& box, const PathPoint& at)
{
    box.Low = {std::min(box.Low.X, at.X), std::min(box.Low.Y, at.Y)};
    box.High = {std::max(box.High.X, at.X), std::max(box.High.Y, at.Y)};
}

struct Planes {
    std::map<Plane, DrawnBox> Boxes;
    double Thickness = 0;

    Plane Of(const Move& piece) const
    {
        const PathPoint middle = PointsAlong(piece)[PointsAlong(piece).size() / 2];
        for (const auto& [plane, box] : Boxes)
            if (plane != Plane::Surface && box.Holds(middle))
                return plane;
        return Plane::Surface;
    }
    PathPoint At(Plane plane, const PathPoint& drawn) const
    {
        const DrawnBox& box = Boxes.at(plane);
        const double x = drawn.X - box.Low.X, y = drawn.Y - box.Low.Y;
        switch (plane) {
        case Plane::Edge1:
            return {x, Thickness - y};
        case Plane::Edge3:
            return {y, x};
        case Plane::Edge4:
            return {y, Thickness - x};
        default:
            return {x, y};
        }
    }
    // In the plane's own coordinates; views 1 and 3 show it mirrored.
    Move Of(Plane plane, Move piece) const
    {
        piece.From = At(plane, piece.From);
        piece.To = At(plane, piece.To);
        piece.Centre = At(plane, piece.Centre);
        piece.Sweep = Mirrors(plane) ? -piece.Sweep : piece.Sweep;
        return piece;
    }
    static bool Mirrors(Plane plane) { return plane == Plane::Edge1 || plane == Plane::Edge3; }
};

// Boxes of the border's outlines: polylines, or lines four by four.
std::vector<DrawnBox> BorderBoxes(const std::vector<Entity>& entities)
{
    std::vector<DrawnBox> boxes;
    std::vector<Move> lines;
    for (const Entity& entity : entities) {
        if (entity.Layer.find("BORDER") == std::string::npos || entity.Kind == "TEXT")
            continue;
        const std::vector<Move> pieces = PiecesOfEntity(entity);
        if (entity.Kind == "LINE" && (lines.push_back(pieces.front()), lines.size() % 4 != 0))
            continue;
        const std::vector<Move> four =
            entity.Kind == "LINE" ? std::vector<Move>(lines.end() - 4, lines.end()) : pieces;
        if (four.empty())
            continue;
        DrawnBox box{four.front().From, four.front().From};
        for (const Move& piece : four)
            Widen(box, piece.To);
        boxes.push_back(box);
    }
    return boxes;
}

Planes PlanesOf(const std::vector<Entity>& entities)
{
    Planes planes;
    const std::vector<DrawnBox> boxes = BorderBoxes(entities);
    const auto face = std::max_element(boxes.begin(), boxes.end(), [](const DrawnBox& a, const DrawnBox& b) {
        return a.Wide() * a.Tall() < b.Wide() * b.Tall();
    });
    if (face == boxes.end())
        return planes;
    planes.Boxes[Plane::Surface] = *face;
    for (const DrawnBox& box : boxes) {
        if (box.Low.Y > face->High.Y)
            planes.Boxes[Plane::Edge1] = box;
        else if (box.High.Y < face->Low.Y)
            planes.Boxes[Plane::Edge2] = box;
        else if (box.High.X < face->Low.X)
            planes.Boxes[Plane::Edge3] = box;
        else if (box.Low.X > face->High.X)
            planes.Boxes[Plane::Edge4] = box;
    }
    for (const auto& [plane, box] : planes.Boxes)
        if (plane != Plane::Surface)
            planes.Thickness = std::min(box.Wide(), box.Tall());
    for (const Entity& entity : entities)
        if (entity.Layer.find("BORDER") != std::string::npos)
            planes.Thickness = ValueOf(entity.Layer, "Z", planes.Thickness, planes.Thickness);
    return planes;
}

// --- contours

class Gathering {
  public:
    Gathering(const std::vector<Entity>& entities, double radiusIfUnknown)
        : All(entities), Used(entities.size(), false), Where(PlanesOf(entities)),
          RadiusIfUnknown(radiusIfUnknown)
    {
        for (const Entity& entity : entities)
            MidLine = MidLine || entity.Text == "CORNERCOMP ON";
    }

    DrawnPanel Gather()
    {
        Panel.Length = Where.Boxes[Plane::Surface].Wide();
        Panel.Width = Where.Boxes[Plane::Surface].Tall();
        Panel.Thickness = Where.Thickness;
        for (std::size_t i = 0; i < All.size(); ++i) {
            const bool routed = All[i].Layer.find("ROUT") != std::string::npos;
            const bool pocket = All[i].Layer.find("EXCAV") != std::string::npos;
            if (!Used[i] && (routed || pocket) && !IsMark(All[i]) && !PiecesOfEntity(All[i]).empty())
                pocket ? TakePocket(i) : TakeWay(i);
        }
        return Panel;
    }

  private:
    bool IsPolyline(std::size_t i) const { return All[i].Kind.find("POLYLINE") != std::string::npos; }
    bool IsAlone(std::size_t i) const { return IsPolyline(i) || All[i].Kind == "CIRCLE"; }

    // The pieces of the same layer that go on from the first one, at both ends of it.
    std::vector<Move> ChainFrom(std::size_t first)
    {
        std::vector<Move> chain = PiecesOfEntity(All[first]);
        Used[first] = true;
        if (IsAlone(first))
            return chain;
        for (bool found = true; found;) {
            found = false;
            for (std::size_t i = 0; i < All.size() && !found; ++i) {
                if (Used[i] || All[i].Layer != All[first].Layer || IsAlone(i) ||
                    PiecesOfEntity(All[i]).empty() || Between(chain.front().From, chain.back().To) < Joint)
                    continue;
                found = Joined(chain, PiecesOfEntity(All[i]).front());
                Used[i] = Used[i] || found;
            }
        }
        return chain;
    }
    // All of the layer that lies on the plane of the first one.
    std::vector<Move> AllLike(std::size_t first)
    {
        std::vector<Move> all;
        const Plane plane = Where.Of(PiecesOfEntity(All[first]).front());
        for (std::size_t i = first; i < All.size(); ++i) {
            const std::vector<Move> pieces = PiecesOfEntity(All[i]);
            if (Used[i] || All[i].Layer != All[first].Layer || pieces.empty() ||
                Where.Of(pieces.front()) != plane)
                continue;
            Used[i] = true;
            all.insert(all.end(), pieces.begin(), pieces.end());
        }
        return all;
    }
    static bool Joined(std::vector<Move>& chain, const Move& piece)
    {
        for (const Move& way : {piece, Backward(piece)}) {
            if (Between(chain.back().To, way.From) < Joint)
                chain.push_back(way);
            else if (Between(chain.front().From, way.To) < Joint)
                chain.insert(chain.begin(), way);
            else
                continue;
            return true;
        }
        return false;
    }

    void TakeWay(std::size_t first)
    {
        DrawnWay way;
        TakeLayer(way, All[first].Layer, RadiusIfUnknown);
        const bool onTheLine = way.Side == 0 && way.Lead == 0; // whatever becomes one route
        const std::vector<Move> drawn = onTheLine ? AllLike(first) : ChainFrom(first);
        way.On = Where.Of(drawn.front());
        for (const Move& piece : drawn)
            way.Pieces.push_back(Where.Of(way.On, piece));
        if (Planes::Mirrors(way.On))
            way.Side = -way.Side;
        way.Closed = Between(drawn.front().From, drawn.back().To) < Joint;
        if (way.Closed && way.Side != 0)
            way.Seams = SeamsOf(way.Pieces, first);
        Panel.Ways.push_back(way);
    }
    // The first piece of the chain is the one that was drawn first; the others are behind it or before it.
    std::vector<Seam> SeamsOf(const std::vector<Move>& pieces, std::size_t first) const
    {
        const bool inMidLine = MidLine && IsPolyline(first) && !pieces.front().IsArc;
        if (IsPolyline(first))
            return {inMidLine ? SeamInMiddleOf(pieces.front()) : Seam{pieces.back(), pieces.front()}};
        if (All[first].Kind == "CIRCLE")
            return {{pieces.front(), pieces.front()}};
        const PathPoint begin =
            Where.At(Where.Of(PiecesOfEntity(All[first]).front()), PiecesOfEntity(All[first]).front().From);
        std::size_t drawn = 0;
        while (drawn + 1 < pieces.size() && Between(pieces[drawn].From, begin) > Joint)
            ++drawn;
        return SeamsOfPieces(pieces, drawn);
    }

    void TakePocket(std::size_t first)
    {
        DrawnWay values;
        TakeLayer(values, All[first].Layer, RadiusIfUnknown);
        DrawnPocket pocket;
        pocket.Name = values.Name;
        pocket.Radius = values.Radius;
        pocket.Depth = values.Depth;
        pocket.Passes = values.Passes;
        pocket.Pitch = ValueOf(values.Name, "K", 2 * values.Radius, 2 * values.Radius);
        for (const Move& piece : ChainFrom(first))
            pocket.Outline.push_back(Where.Of(Plane::Surface, piece));
        if (All[first].Kind == "CIRCLE") {
            const Move whole = pocket.Outline.front();
            Move half = whole;
            half.Sweep /= 2;
            half.To = {2 * whole.Centre.X - whole.From.X, 2 * whole.Centre.Y - whole.From.Y};
            Move other = half;
            std::swap(other.From, other.To);
            pocket.Outline = {half, other};
        }
        for (const Move& piece : pocket.Outline)
            pocket.IsBox = pocket.IsBox || !piece.IsArc;
        if (pocket.IsBox)
            BeginAtMark(pocket);
        Panel.Pockets.push_back(pocket);
    }
    void BeginAtMark(DrawnPocket& pocket) const
    {
        for (const Entity& entity : All) {
            if (!IsMark(entity) || entity.Layer != pocket.Name)
                continue;
            const PathPoint tip = Where.At(Plane::Surface, {entity.Vertices.back().X, entity.Vertices.back().Y});
            for (std::size_t i = 0; i < pocket.Outline.size(); ++i)
                if (!pocket.Outline[i].IsArc && Between(pocket.Outline[i].From, tip) < Joint) {
                    std::rotate(pocket.Outline.begin(),
                                pocket.Outline.begin() + static_cast<std::ptrdiff_t>(i),
                                pocket.Outline.end());
                    pocket.Mark = tip;
                    return;
                }
        }
    }

    const std::vector<Entity>& All;
    std::vector<bool> Used;
    Planes Where;
    double RadiusIfUnknown;
    bool MidLine = false;
    DrawnPanel Panel;
};

} // namespace

DrawnPanel PanelDrawnIn(const std::string& dxf, double radiusIfUnknown)
{
    const std::vector<Entity> entities = EntitiesIn(dxf);
    return Gathering(entities, radiusIfUnknown).Gather();
}

} // namespace kv::test
