#include "support/proof/tame_panels.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <random>

#include "support/dxf.h"

namespace kv::test {

namespace {

constexpr double HalfTurnRadians = 3.14159265358979323846;
constexpr double CellSize = 170; // mm: a feature with its tool and its leads
constexpr double CellMargin = 20;
constexpr double ViewGap = 60;

// A closed or open polyline with bulges, from which the pieces of a way and the entities are made.
using Outline = std::vector<Vertex>;

Move PieceBetween(const Vertex& from, const Vertex& to)
{
    Move piece;
    piece.From = {from.X, from.Y};
    piece.To = {to.X, to.Y};
    if (from.Bulge == 0)
        return piece;
    const double left = (1 - from.Bulge * from.Bulge) / (4 * from.Bulge);
    piece.IsArc = true;
    piece.Centre = {(from.X + to.X) / 2 - left * (to.Y - from.Y),
                    (from.Y + to.Y) / 2 + left * (to.X - from.X)};
    piece.Sweep = 4 * std::atan(from.Bulge) / HalfTurnRadians * 180;
    return piece;
}

std::vector<Move> PiecesAlong(const Outline& outline, bool closed)
{
    std::vector<Move> pieces;
    for (std::size_t i = 0; i + (closed ? 0 : 1) < outline.size(); ++i)
        pieces.push_back(PieceBetween(outline[i], outline[(i + 1) % outline.size()]));
    return pieces;
}

Outline RunBackward(const Outline& outline, bool closed)
{
    Outline turned(outline.rbegin(), outline.rend());
    for (std::size_t i = 0; i < turned.size(); ++i) {
        const std::size_t behind = (i + 1) % turned.size();
        turned[i].Bulge = behind == 0 && !closed ? 0 : -outline[turned.size() - 1 - behind].Bulge;
    }
    return turned;
}

// Where a piece of a plane lies in the drawing: moved, and in the views of edges turned or mirrored.
struct DrawingPlace {
    PathPoint (*Turn)(const PathPoint& at, double thickness) = nullptr;
    PathPoint Move;
    double Thickness = 0;
    bool Mirrors = false;

    PathPoint Of(const PathPoint& at) const
    {
        const PathPoint turned = Turn(at, Thickness);
        return {turned.X + Move.X, turned.Y + Move.Y};
    }
    Outline Of(Outline outline) const
    {
        for (Vertex& vertex : outline) {
            const PathPoint at = Of(PathPoint{vertex.X, vertex.Y});
            vertex.X = at.X;
            vertex.Y = at.Y;
            vertex.Bulge = Mirrors ? -vertex.Bulge : vertex.Bulge;
        }
        return outline;
    }
};

PathPoint AsOnFace(const PathPoint& at, double)
{
    return at;
}
// The views' lines next to the face are its upper edge: V runs away from the panel in views 2 and 3's
// own directions, and back in views 1 and 4.
PathPoint AsInView1(const PathPoint& at, double thickness)
{
    return {at.X, thickness - at.Y};
}
PathPoint AsInView3(const PathPoint& at, double)
{
    return {at.Y, at.X};
}
PathPoint AsInView4(const PathPoint& at, double thickness)
{
    return {thickness - at.Y, at.X};
}

class Designer {
  public:
    explicit Designer(unsigned seed) : Numbers(seed) {}

    TamePanel Draw()
    {
        DrawPanel();
        std::vector<PathPoint> cells = Cells();
        const int features = 1 + Upto(std::min(3, static_cast<int>(cells.size()) - 1));
        for (int i = 0; i < features; ++i)
            DrawFeature(cells[static_cast<std::size_t>(i)]);
        if (Chance(4))
            DrawAcross();
        if (HasViews)
            DrawInViews();
        if (Chance(2))
            DrawBores();
        Made.Drawing = kv::test::Drawing(Border() + Gathered());
        return std::move(Made);
    }

  private:
    int Upto(int last) { return static_cast<int>(Numbers() % static_cast<unsigned>(last + 1)); }
    bool Chance(int in) { return Upto(in - 1) == 0; }
    // On a grid of 0.1 or 0.001, as typed or as picked.
    double Amid(double low, double high)
    {
        const double grid = Chance(2) ? 10 : 1000;
        const double at = std::uniform_real_distribution<double>(low, high)(Numbers);
        return std::clamp(std::round(at * grid) / grid, low, high);
    }
    template <typename Value> Value Pick(std::initializer_list<Value> values)
    {
        return *(values.begin() + Upto(static_cast<int>(values.size()) - 1));
    }

    // --- the panel

    void DrawPanel()
    {
        Columns = 2 + Upto(1);
        Rows = 1 + Upto(1);
        Made.Model.Length = Columns * CellSize + 2 * CellMargin;
        Made.Model.Width = Rows * CellSize + 2 * CellMargin;
        Made.Model.Thickness = Pick({16.0, 18.0, 19.0, 22.0, 30.0});
        HasViews = Chance(3);
        const double low = HasViews ? ViewGap + 40 : 0;
        FaceCorner = {low + Upto(3) * 50, low + Amid(0, 100)};
        Made.Origin = {Chance(2), Chance(2)};
        Made.For = Pick({Control::Cnc90, Control::Genesis, Control::Evolution, Control::Evolution});
        Made.SeamInMidLine = Chance(5);
    }
    std::string Box(const std::string& layer, double x, double y, double width, double height)
    {
        const Outline corners = {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
        switch (Upto(2)) {
        case 0:
            return Rectangle(layer, x, y, width, height);
        case 1:
            return Polyline(layer, corners, Pair(70, "1"));
        default:
            return Lwpolyline(layer, corners, Pair(90, "4") + Pair(70, "1"));
        }
    }
    std::string Border()
    {
        const DrawnPanel& panel = Made.Model;
        const std::string layer = std::string("BORDER") + (Made.Origin.Top ? "U" : "L") +
                                  (Made.Origin.Right ? "R" : "L") + "Z" + Number(panel.Thickness);
        std::string entities = Box(layer, FaceCorner.X, FaceCorner.Y, panel.Length, panel.Width);
        if (!HasViews)
            return entities;
        for (const Plane plane : {Plane::Edge1, Plane::Edge2, Plane::Edge3, Plane::Edge4}) {
            const PathPoint low = ViewCorner(plane);
            const bool along = plane == Plane::Edge1 || plane == Plane::Edge2;
            entities += Box(layer, low.X, low.Y, along ? panel.Length : panel.Thickness,
                            along ? panel.Thickness : panel.Width);
        }
        return entities;
    }
    PathPoint ViewCorner(Plane plane) const
    {
        const DrawnPanel& panel = Made.Model;
        switch (plane) {
        case Plane::Edge1:
            return {FaceCorner.X, FaceCorner.Y + panel.Width + ViewGap};
        case Plane::Edge2:
            return {FaceCorner.X, FaceCorner.Y - ViewGap - panel.Thickness};
        case Plane::Edge3:
            return {FaceCorner.X - ViewGap - panel.Thickness, FaceCorner.Y};
        case Plane::Edge4:
            return {FaceCorner.X + panel.Length + ViewGap, FaceCorner.Y};
        default:
            return FaceCorner;
        }
    }
    DrawingPlace PlaceOf(Plane plane) const
    {
        const PathPoint at = ViewCorner(plane);
        const double thickness = Made.Model.Thickness;
        switch (plane) {
        case Plane::Edge1:
            return {AsInView1, at, thickness, true};
        case Plane::Edge3:
            return {AsInView3, at, thickness, true};
        case Plane::Edge4:
            return {AsInView4, at, thickness, false};
        default:
            return {AsOnFace, at, thickness, false};
        }
    }
    // Middles of the cells in random order.
    std::vector<PathPoint> Cells()
    {
        std::vector<PathPoint> cells;
        for (int column = 0; column < Columns; ++column)
            for (int row = 0; row < Rows; ++row)
                cells.push_back(
                    {CellMargin + (column + 0.5) * CellSize, CellMargin + (row + 0.5) * CellSize});
        std::shuffle(cells.begin(), cells.end(), Numbers);
        return cells;
    }
    // The entities of the features one after the other, or mixed; those of one keep their order.
    std::string Gathered()
    {
        std::string text;
        const bool mixed = Chance(3);
        std::vector<std::size_t> next(Drawn.size(), 0);
        for (;;) {
            std::vector<std::size_t> left;
            for (std::size_t i = 0; i < Drawn.size(); ++i)
                if (next[i] < Drawn[i].size())
                    left.push_back(i);
            if (left.empty())
                return text;
            const std::size_t i =
                mixed ? left[static_cast<std::size_t>(Upto(static_cast<int>(left.size()) - 1))]
                      : left.front();
            text += Drawn[i][next[i]++];
        }
    }

    // --- features

    void DrawFeature(const PathPoint& middle)
    {
        switch (Upto(9)) {
        case 0:
        case 1:
            DrawBoxPocket(middle);
            break;
        case 2:
            DrawRoundPocket(middle);
            break;
        case 3:
        case 4:
            DrawChain(middle);
            break;
        default:
            DrawContour(middle);
            break;
        }
    }
    // A layer name for one feature alone.
    std::string LayerOf(const std::string& word, DrawnWay& way, char side)
    {
        std::string layer = word + (word == "ROUTE" && Chance(3) ? Number(1 + Upto(3)) : std::string());
        way.Depth = Chance(3) ? Made.Model.Thickness + 0.2 : Amid(2, Made.Model.Thickness);
        way.Passes = Chance(6) ? 2 + Upto(1) : 1;
        layer += "Z" + Number(way.Depth) + "T" + Number(71 + Upto(9));
        if (side != 0)
            layer += side + Number(way.Radius);
        if (way.Passes > 1)
            layer += "M" + Number(way.Passes);
        if (way.Lead > 0)
            layer += "LD" + Number(way.Lead);
        if (way.Ramps)
            layer += Pick({"RI3", "RO3", "RI2RO4"});
        return layer + "F" + Number(5000 + static_cast<int>(Drawn.size()));
    }

    // --- closed contours

    static Outline Moved(Outline outline, const PathPoint& middle, double degrees)
    {
        const double c = std::cos(degrees / 180 * HalfTurnRadians),
                     s = std::sin(degrees / 180 * HalfTurnRadians);
        for (Vertex& vertex : outline) {
            const double x = vertex.X, y = vertex.Y;
            vertex.X = middle.X + (degrees == 0 ? x : c * x - s * y);
            vertex.Y = middle.Y + (degrees == 0 ? y : s * x + c * y);
        }
        return outline;
    }
    // Counter-clockwise; each corner sharp, rounded, cut off, or taken out round.
    Outline CorneredBox(double width, double height)
    {
        static const double quarter = std::tan(HalfTurnRadians / 8);
        const double w = width / 2, h = height / 2;
        const double most = std::min(width, height) / 2 - 3;
        const Outline corners = {{-w, -h}, {w, -h}, {w, h}, {-w, h}};
        const PathPoint ways[] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
        Outline outline;
        for (std::size_t i = 0; i < 4; ++i) {
            const PathPoint in = ways[(i + 3) % 4], out = ways[i];
            const int form = Upto(4);
            if (form < 2) {
                outline.push_back(corners[i]);
                continue;
            }
            const double r = Amid(std::min(most, 4.0), std::min(most, 28.0));
            const double bulge = form == 2 ? quarter : form == 3 ? 0 : -quarter;
            outline.push_back({corners[i].X - r * in.X, corners[i].Y - r * in.Y, bulge});
            outline.push_back({corners[i].X + r * out.X, corners[i].Y + r * out.Y});
        }
        return outline;
    }
    Outline Star()
    {
        const int corners = 3 + Upto(4);
        Outline outline;
        for (int i = 0; i < corners; ++i) {
            const double angle = (i + Amid(0.3, 0.7)) * 2 * HalfTurnRadians / corners;
            const double radius = Amid(28, 48);
            outline.push_back({radius * std::cos(angle), radius * std::sin(angle),
                               Chance(3) ? Amid(0.08, 0.45) * (Chance(2) ? 1 : -1) : 0});
        }
        return outline;
    }
    Outline SomeOutline()
    {
        const double w = Amid(40, 90), h = Amid(36, 70);
        switch (Upto(6)) {
        case 0:
            return Star();
        case 1: // slot
            return {{-w / 2, -h / 3}, {w / 2, -h / 3, 1}, {w / 2, h / 3}, {-w / 2, h / 3, 1}};
        case 2: // half a disc on a box
            return {{-w / 2, 0}, {-w / 2, -h / 2}, {w / 2, -h / 2}, {w / 2, 0, 1}};
        case 3: // half a disc
            return {{-w / 2, -h / 4}, {w / 2, -h / 4, 1}};
        case 4: // an L
            return {{-w / 2, -h / 2}, {w / 2, -h / 2}, {w / 2, -h / 6},
                    {0, -h / 6},      {0, h / 2},      {-w / 2, h / 2}};
        default:
            return CorneredBox(w, h);
        }
    }
    static bool IsSimple(const std::vector<Move>& pieces)
    {
        constexpr double MostTurn = 150; // degrees
        for (std::size_t i = 0; i < pieces.size(); ++i)
            if (std::fabs(Seam{pieces[i], pieces[(i + 1) % pieces.size()]}.Turn()) > MostTurn)
                return false;
        const Region inside = Inside({pieces});
        return inside.Rings.size() == 1 && ReachedBy(inside, 4).Rings.size() == 1;
    }
    struct Sketch {
        DrawnWay Way;
        std::vector<std::string> Entities;
    };
    void DrawContour(const PathPoint& middle)
    {
        for (int tries = 0; tries < 12; ++tries) {
            Sketch sketch;
            sketch.Way.Closed = true;
            sketch.Way.Radius = Pick({2.0, 3.0, 4.0, 5.0, 6.0});
            const int side = Chance(6) ? 0 : Chance(2) ? 1 : -1; // 1: the tool inside
            if (side != 0 && Chance(2)) {
                sketch.Way.Lead = sketch.Way.Radius + 1 + Amid(1, 14);
                sketch.Way.Ramps = Chance(4);
            }
            if (Chance(6))
                SketchCircle(sketch, middle, side);
            else
                SketchOutline(sketch, middle, side);
            if (sketch.Entities.empty())
                continue;
            AskedCut asked = AskedOf(sketch.Way, Made.Model);
            if (!asked.Doubts.empty() && !Chance(12))
                continue;
            Keep(std::move(sketch), std::move(asked));
            return;
        }
    }
    void Keep(Sketch sketch, AskedCut asked)
    {
        Made.Model.Ways.push_back(std::move(sketch.Way));
        Made.Asked.push_back(std::move(asked));
        Drawn.push_back(std::move(sketch.Entities));
    }
    // One CIRCLE: from its top, clockwise.
    void SketchCircle(Sketch& sketch, const PathPoint& middle, int side)
    {
        const double radius = Amid(2 * sketch.Way.Radius + 2, 45);
        const std::string layer = LayerOf("ROUTE", sketch.Way, side == 0 ? char{0} : side > 0 ? 'R' : 'L');
        Move around;
        around.IsArc = true;
        around.Centre = middle;
        around.From = around.To = {middle.X, middle.Y + radius};
        around.Sweep = -360;
        sketch.Way.Name = layer;
        sketch.Way.Side = -side;
        sketch.Way.Pieces = {around};
        if (side != 0)
            sketch.Way.Seams = {{around, around}};
        const PathPoint at = PlaceOf(Plane::Surface).Of(middle);
        sketch.Entities = {Circle(layer, at.X, at.Y, radius)};
    }
    void SketchOutline(Sketch& sketch, const PathPoint& middle, int side)
    {
        Outline outline = Moved(SomeOutline(), middle, Pick({0.0, 0.0, 90.0, 180.0, Amid(0, 360)}));
        if (Chance(2))
            outline = RunBackward(outline, true);
        std::rotate(outline.begin(), outline.begin() + Upto(static_cast<int>(outline.size()) - 1),
                    outline.end());
        sketch.Way.Pieces = PiecesAlong(outline, true);
        if (!IsSimple(sketch.Way.Pieces))
            return;
        SketchClosed(sketch, outline, side);
    }
    static bool IsCounterClockwise(const std::vector<Move>& pieces)
    {
        double twice = 0;
        for (const Move& piece : pieces) {
            const std::vector<PathPoint> points = PointsAlong(piece);
            for (std::size_t i = 1; i < points.size(); ++i)
                twice += points[i - 1].X * points[i].Y - points[i].X * points[i - 1].Y;
        }
        return twice > 0;
    }
    // As a polyline, or as lines and arcs in any order and direction.
    void SketchClosed(Sketch& sketch, const Outline& outline, int side)
    {
        DrawnWay& way = sketch.Way;
        const DrawingPlace place = PlaceOf(way.On);
        way.Side = side == 0 ? 0 : IsCounterClockwise(way.Pieces) == (side > 0) ? 1 : -1;
        const bool mirrored = place.Mirrors;
        const int drawnSide = mirrored ? -way.Side : way.Side;
        if (Chance(2)) {
            const std::string layer = LayerOf("ROUTE", way, Letter(drawnSide));
            way.Name = layer;
            if (side != 0)
                way.Seams = {PolylineSeam(way.Pieces)};
            sketch.Entities = {AsPolyline(layer, place.Of(outline), true)};
            return;
        }
        std::vector<std::size_t> order(way.Pieces.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        if (!Chance(3))
            std::shuffle(order.begin(), order.end(), Numbers);
        const std::size_t first = order.front();
        const bool along = DrawnAlong(way.Pieces[first], mirrored);
        const std::string layer = LayerOf("ROUTE", way, Letter(along ? drawnSide : -drawnSide));
        way.Name = layer;
        if (side != 0)
            way.Seams = SeamsOfPieces(way.Pieces, first);
        for (const std::size_t i : order)
            sketch.Entities.push_back(AsEntity(layer, way.Pieces[i], place, i == first ? along : Chance(2)));
    }
    static char Letter(int side) { return side == 0 ? char{0} : side > 0 ? 'L' : 'R'; }
    // Whether the entity runs with the way: lines either way, an arc's way is clockwise as drawn.
    bool DrawnAlong(const Move& piece, bool mirrored)
    {
        return piece.IsArc ? (piece.Sweep < 0) != mirrored : Chance(2);
    }
    static std::string AsEntity(const std::string& layer, const Move& piece, const DrawingPlace& place,
                                bool along)
    {
        const PathPoint from = place.Of(along ? piece.From : piece.To);
        const PathPoint to = place.Of(along ? piece.To : piece.From);
        if (!piece.IsArc)
            return Line(layer, from.X, from.Y, to.X, to.Y);
        const PathPoint centre = place.Of(piece.Centre);
        const bool leftward = (piece.Sweep > 0) != place.Mirrors;
        const PathPoint start = place.Of(leftward ? piece.From : piece.To);
        const PathPoint end = place.Of(leftward ? piece.To : piece.From);
        return Arc(layer, centre.X, centre.Y, Between(piece.Centre, piece.From), Angle(centre, start),
                   Angle(centre, end));
    }
    static double Angle(const PathPoint& centre, const PathPoint& at)
    {
        const double angle = std::atan2(at.Y - centre.Y, at.X - centre.X) / HalfTurnRadians * 180;
        return angle < 0 ? angle + 360 : angle;
    }
    std::string AsPolyline(const std::string& layer, const Outline& drawn, bool closed)
    {
        const std::string flag = closed ? Pair(70, "1") : std::string();
        if (Chance(2))
            return Polyline(layer, drawn, flag);
        return Lwpolyline(layer, drawn, Pair(90, static_cast<double>(drawn.size())) + flag);
    }
    // A closed polyline begins at its first vertex, or in the middle of its first straight.
    Seam PolylineSeam(const std::vector<Move>& pieces) const
    {
        if (!Made.SeamInMidLine || pieces.front().IsArc)
            return {pieces.back(), pieces.front()};
        return SeamInMiddleOf(pieces.front());
    }

    // --- open chains

    void DrawChain(const PathPoint& middle)
    {
        for (int tries = 0; tries < 12; ++tries) {
            Sketch sketch;
            sketch.Way.Radius = Pick({2.0, 3.0, 4.0});
            sketch.Way.Side = Upto(2) - 1;
            const double least = 5 * sketch.Way.Radius;
            const int points = 2 + Upto(3);
            Outline outline;
            double x = -60;
            for (int i = 0; i < points; ++i, x += least + Amid(0, 10))
                outline.push_back({x, Amid(-40, 40), 0});
            for (std::size_t i = 1; i + 2 < outline.size(); ++i)
                outline[i].Bulge = Chance(2) ? Amid(-0.5, 0.5) : 0;
            outline = Moved(outline, middle, Pick({0.0, 90.0, Amid(0, 360)}));
            if (!IsTameChain(outline))
                continue;
            if (Chance(3))
                sketch.Way.Lead = sketch.Way.Radius + 5; // ends inside the panel get none
            SketchChain(sketch, outline);
            AskedCut asked = AskedOf(sketch.Way, Made.Model);
            if (!asked.Doubts.empty())
                continue;
            Keep(std::move(sketch), std::move(asked));
            return;
        }
    }
    static bool IsTameChain(const Outline& outline)
    {
        constexpr double MostTurn = 120;
        const std::vector<Move> pieces = PiecesAlong(outline, false);
        for (std::size_t i = 1; i < pieces.size(); ++i)
            if (std::fabs(std::remainder(DirectionAtStart(pieces[i]) - DirectionAtEnd(pieces[i - 1]), 360)) >
                MostTurn)
                return false;
        return SweptAlong(pieces, 4).Rings.size() == 1;
    }
    void SketchChain(Sketch& sketch, const Outline& outline)
    {
        DrawnWay& way = sketch.Way;
        const DrawingPlace place = PlaceOf(way.On);
        way.Pieces = PiecesAlong(outline, false);
        const int drawnSide = place.Mirrors ? -way.Side : way.Side;
        const bool polyline = Chance(2);
        const bool turned = Chance(2);
        const std::string layer = LayerOf("ROUTE", way, Letter(turned ? -drawnSide : drawnSide));
        way.Name = layer;
        if (polyline) {
            sketch.Entities = {
                AsPolyline(layer, place.Of(turned ? RunBackward(outline, false) : outline), false)};
            return;
        }
        // The pieces at both ends are lines that run the same way, so that the tool's side is one.
        for (std::size_t i = 0; i < way.Pieces.size(); ++i)
            sketch.Entities.push_back(
                AsEntity(layer, way.Pieces[i], place, way.Side != 0 ? !turned : Chance(2)));
        if (Chance(2))
            std::shuffle(sketch.Entities.begin(), sketch.Entities.end(), Numbers);
    }

    // From edge to edge of the panel, below the cells; led in and out outside of it.
    void DrawAcross()
    {
        Sketch sketch;
        sketch.Way.Radius = Pick({2.0, 3.0, 4.0});
        sketch.Way.Side = Upto(2) - 1;
        if (Chance(2))
            sketch.Way.Lead = sketch.Way.Radius + Amid(1, 20);
        SketchChain(sketch, {{0, Amid(8, 12)}, {Made.Model.Length, Amid(8, 12)}});
        AskedCut asked = AskedOf(sketch.Way, Made.Model);
        Keep(std::move(sketch), std::move(asked));
    }

    // --- pockets

    std::string PocketLayer(DrawnPocket& pocket)
    {
        DrawnWay values;
        values.Radius = pocket.Radius;
        pocket.Pitch = std::round(pocket.Radius * Amid(0.4, 1.6) * 100) / 100;
        std::string layer = LayerOf("EXCAV", values, Chance(2) ? 'R' : 'L');
        layer += "K" + Number(pocket.Pitch);
        pocket.Depth = values.Depth;
        pocket.Passes = values.Passes;
        pocket.Name = layer;
        return layer;
    }
    void KeepPocket(DrawnPocket pocket, std::vector<std::string> entities)
    {
        Made.Asked.push_back(AskedOf(pocket));
        Made.Model.Pockets.push_back(std::move(pocket));
        Drawn.push_back(std::move(entities));
    }
    Outline PocketBox(const PathPoint& middle, double width, double height, double corner)
    {
        static const double quarter = std::tan(HalfTurnRadians / 8);
        const double w = width / 2, h = height / 2, r = corner;
        Outline box;
        if (r > 0)
            box = {{-w + r, -h}, {w - r, -h, quarter}, {w, -h + r}, {w, h - r, quarter},
                   {w - r, h},   {-w + r, h, quarter}, {-w, h - r}, {-w, -h + r, quarter}};
        else
            box = {{-w, -h}, {w, -h}, {w, h}, {-w, h}};
        return Moved(box, middle, 0);
    }
    // Its tip lies where the first line begins, its tail before that.
    std::string MarkOf(const DrawnPocket& pocket, const std::string& layer) const
    {
        constexpr double Length = 5;
        const Move& first = pocket.Outline.front();
        const double share = Length / Between(first.From, first.To);
        const PathPoint tip = PlaceOf(Plane::Surface).Of(first.From);
        return Polyline(
            layer,
            {{tip.X - share * (first.To.X - first.From.X), tip.Y - share * (first.To.Y - first.From.Y)},
             {tip.X, tip.Y}},
            Pair(40, 2.0));
    }
    // Lines, one behind the other, arcs between them, and the mark whose tip is where the first line begins.
    void DrawBoxPocket(const PathPoint& middle)
    {
        DrawnPocket pocket;
        pocket.IsBox = true;
        pocket.Radius = Pick({3.0, 4.0, 5.0, 6.0});
        const double least = Chance(12)  ? 1.5 * pocket.Radius
                             : Chance(3) ? 2.5 * pocket.Radius
                                         : 6 * pocket.Radius;
        const double width = Amid(least, 76), height = Amid(least, 64);
        const double most = std::min(width, height) / 2 - 1;
        const double corner = Chance(2) || most < 2 ? 0 : Amid(2, std::min(28.0, most));
        Outline outline = PocketBox(middle, width, height, corner);
        if (Chance(2))
            outline = RunBackward(outline, true);
        while (outline.front().Bulge != 0)
            std::rotate(outline.begin(), outline.begin() + 1, outline.end());
        const int lines = Upto(3) * (corner > 0 ? 2 : 1);
        std::rotate(outline.begin(), outline.begin() + lines, outline.end());
        pocket.Outline = PiecesAlong(outline, true);
        pocket.Mark = pocket.Outline.front().From;
        const std::string layer = PocketLayer(pocket);
        const DrawingPlace place = PlaceOf(Plane::Surface);
        const std::string mark = MarkOf(pocket, layer);
        std::vector<std::string> entities;
        if (corner == 0 && Chance(4)) {
            entities = {mark, AsPolyline(layer, place.Of(outline), true)};
        } else {
            for (const Move& piece : pocket.Outline)
                entities.push_back(AsEntity(layer, piece, place, true));
            entities.insert(Chance(2) ? entities.begin() : entities.end(), mark);
        }
        KeepPocket(std::move(pocket), std::move(entities));
    }
    void DrawRoundPocket(const PathPoint& middle)
    {
        DrawnPocket pocket;
        pocket.Radius = Pick({3.0, 4.0, 5.0, 6.0});
        const double radius = Amid(Chance(12) ? 0.7 * pocket.Radius : 2 * pocket.Radius, 36);
        Move half;
        half.IsArc = true;
        half.Centre = middle;
        const double begin = Pick({0.0, 90.0, 180.0, 270.0, Amid(0, 360)}) / 180 * HalfTurnRadians;
        half.From = {middle.X + radius * std::cos(begin), middle.Y + radius * std::sin(begin)};
        half.To = {middle.X - radius * std::cos(begin), middle.Y - radius * std::sin(begin)};
        half.Sweep = 180;
        Move other = half;
        std::swap(other.From, other.To);
        pocket.Outline = {half, other};
        const std::string layer = PocketLayer(pocket);
        const DrawingPlace place = PlaceOf(Plane::Surface);
        const PathPoint at = place.Of(middle);
        std::vector<std::string> entities;
        if (Chance(2))
            entities = {Circle(layer, at.X, at.Y, radius)};
        else
            entities = {AsEntity(layer, half, place, true), AsEntity(layer, other, place, true)};
        if (Chance(2))
            std::reverse(entities.begin(), entities.end());
        KeepPocket(std::move(pocket), std::move(entities));
    }

    // --- edges

    double EdgeLength(Plane plane) const
    {
        return plane == Plane::Edge1 || plane == Plane::Edge2 ? Made.Model.Length : Made.Model.Width;
    }
    void DrawInViews()
    {
        for (const Plane plane : {Plane::Edge1, Plane::Edge2, Plane::Edge3, Plane::Edge4})
            if (Chance(2))
                DrawInView(plane);
            else
                DrawBoresInView(plane);
    }
    void DrawBoresInView(Plane plane)
    {
        std::vector<std::string> entities;
        for (int left = Upto(2); left > 0; --left) {
            Bore bore;
            bore.On = plane;
            bore.At = {Amid(10, EdgeLength(plane) - 10), Amid(6, Made.Model.Thickness - 6)};
            bore.Depth = Amid(15, 40);
            bore.Diameter = Pick({5.0, 8.0});
            const PathPoint at = PlaceOf(plane).Of(bore.At);
            entities.push_back(Circle("HBOREZ" + Number(bore.Depth), at.X, at.Y, bore.Diameter / 2));
            Made.Model.Bores.push_back(bore);
        }
        Drawn.push_back(std::move(entities));
    }
    void DrawInView(Plane plane)
    {
        Sketch sketch;
        sketch.Way.On = plane;
        sketch.Way.Radius = Pick({1.5, 2.0, 2.5});
        const double r = sketch.Way.Radius;
        const double v = Made.Model.Thickness / 2 + Amid(-1, 1), h = 2 * r + Amid(0.5, 1);
        const double begin = Amid(20, EdgeLength(plane) / 2), end = begin + Amid(20, 60);
        const bool closed = Chance(2);
        Outline outline = {{begin, v}, {end, v + Amid(-2, 2)}};
        if (closed)
            outline = {{begin, v - h / 2}, {end, v - h / 2, 1}, {end, v + h / 2}, {begin, v + h / 2, 1}};
        if (closed && Chance(2))
            outline = RunBackward(outline, true);
        sketch.Way.Closed = closed;
        sketch.Way.Side = closed ? 0 : Upto(2) - 1;
        if (closed) {
            sketch.Way.Pieces = PiecesAlong(outline, true);
            SketchClosed(sketch, outline, Chance(3) ? 0 : 1);
        } else {
            SketchChain(sketch, outline);
        }
        AskedCut asked = AskedOf(sketch.Way, Made.Model);
        Keep(std::move(sketch), std::move(asked));
    }
    // Bores of the face; and in the edges, drawn in plan as a T.
    void DrawBores()
    {
        std::vector<std::string> entities;
        for (int left = Upto(3); left > 0; --left) {
            const Bore bore{Plane::Surface, {Amid(10, Made.Model.Length - 10), Amid(10, Made.Model.Width - 10)},
                            Amid(5, 15), Pick({5.0, 8.0, 10.0}),
                            "",          0};
            const PathPoint at = PlaceOf(Plane::Surface).Of(bore.At);
            entities.push_back(Circle("VBOREZ" + Number(bore.Depth), at.X, at.Y, bore.Diameter / 2));
            Made.Model.Bores.push_back(bore);
        }
        for (int left = Upto(4), number = 0; left > 0; --left, ++number)
            DrawT(Pick({Plane::Edge1, Plane::Edge2, Plane::Edge3, Plane::Edge4}), number, entities);
        Drawn.push_back(std::move(entities));
    }
    void DrawT(Plane plane, int number, std::vector<std::string>& entities)
    {
        Bore bore;
        bore.On = plane;
        const double belowFace = Amid(6, Made.Model.Thickness - 6);
        bore.At = {20 + 30 * number + Amid(0, 10), Made.Model.Thickness - belowFace};
        bore.Depth = Amid(15, 40);
        bore.Diameter = Pick({6.0, 8.0, 10.0});
        const double length = Made.Model.Length, width = Made.Model.Width;
        const double u = bore.At.X, d = bore.Depth, half = bore.Diameter / 2;
        PathPoint foot, inner, one, other;
        switch (plane) {
        case Plane::Edge1:
            foot = {u, width}, inner = {u, width - d};
            break;
        case Plane::Edge2:
            foot = {u, 0}, inner = {u, d};
            break;
        case Plane::Edge3:
            foot = {0, u}, inner = {d, u};
            break;
        default:
            foot = {length, u}, inner = {length - d, u};
            break;
        }
        const bool upright = plane == Plane::Edge3 || plane == Plane::Edge4;
        one = {inner.X - (upright ? 0 : half), inner.Y - (upright ? half : 0)};
        other = {inner.X + (upright ? 0 : half), inner.Y + (upright ? half : 0)};
        const auto line = [&](const std::string& layer, PathPoint from, PathPoint to) {
            if (Chance(2))
                std::swap(from, to);
            from = PlaceOf(Plane::Surface).Of(from);
            to = PlaceOf(Plane::Surface).Of(to);
            return Line(layer, from.X, from.Y, to.X, to.Y);
        };
        std::string stem = line("HBORE", foot, inner), bar = line("HBOREZ" + Number(belowFace), one, other);
        if (Chance(2))
            std::swap(stem, bar);
        entities.push_back(stem);
        entities.push_back(bar);
        Made.Model.Bores.push_back(bore);
    }

    std::mt19937 Numbers;
    TamePanel Made;
    int Columns = 0, Rows = 0;
    bool HasViews = false;
    PathPoint FaceCorner;                        // of the face in the drawing, lower left
    std::vector<std::vector<std::string>> Drawn; // entities by feature
};

} // namespace

TamePanel TamePanelOf(unsigned seed)
{
    return Designer(seed).Draw();
}

} // namespace kv::test
