// The screen counts Y downward: places are turned over by SheetPlace and nowhere else.
#include "window/scene_painter.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <QImage>
#include <QPainterPath>
#include <QPolygonF>

namespace kv {

namespace {

using Box = SceneShapes::Box;
using Hole = SceneShapes::Hole;
using Piece = SceneShapes::Piece;

constexpr double CarefulPoints = 10000;     // in view; above, a frame is drawn plainly
constexpr double CarefulWhileMoving = 1500; // the same, where the next frame is due soon
constexpr double SpriteLimit = 64;          // pixels: larger holes are drawn one by one
constexpr std::size_t MostOrderTexts = 1500;
constexpr double SheetMargin = 0.02; // of the area, around what is fitted

QPen Pen(const QColor& colour, double width, Qt::PenStyle style = Qt::SolidLine)
{
    QPen pen(colour, width, style, Qt::FlatCap, Qt::RoundJoin);
    pen.setCosmetic(true);
    return pen;
}

QColor Mixed(const QColor& over, const QColor& under, double opacity)
{
    const auto mix = [&](int a, int b) {
        return static_cast<int>(std::lround(a * opacity + b * (1 - opacity)));
    };
    return {mix(over.red(), under.red()), mix(over.green(), under.green()), mix(over.blue(), under.blue())};
}

QColor WithOpacity(QColor colour, double opacity)
{
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

} // namespace

SceneColours ColoursOfScene(bool isDark)
{
    if (isDark)
        return {QColor(0x1d1a16), QColor(0x5d4a2f), QColor(0xc9b48c), QColor(0x4b3b25), QColor(0xe2b469),
                QColor(0xb9cf7c), QColor(0xf0e8da), QColor(0x66c4ee), QColor(0xf3e3c4), QColor(0x9b9384),
                QColor(0x8db8f0), QColor(0xff5c5c), QColor(0xff8f85), QColor(0xff9df0)};
    return {QColor(0xfbf8f2), QColor(0xecd9b6), QColor(0x7a6440), QColor(0xdcc499), QColor(0x8a5a1c),
            QColor(0x5b6b2f), QColor(0x2b2418), QColor(0x0b6e99), QColor(0x3d2a12), QColor(0x8c8577),
            QColor(0x2e5f9e), QColor(0xd00000), QColor(0xa3201a), QColor(0xb000a0)};
}

SheetPlace PlaceToShow(const SheetBox& box, const QRectF& area)
{
    const double width = std::max(box.Width, 1.0), height = std::max(box.Height, 1.0);
    SheetPlace place;
    place.Scale =
        std::max(1e-4, (1 - 2 * SheetMargin) * std::min(area.width() / width, area.height() / height));
    place.Corner = {area.center().x() - (box.X + width / 2) * place.Scale,
                    area.center().y() + (box.Y + height / 2) * place.Scale};
    return place;
}

ScenePainter::ScenePainter(Scene scene) : Picture(std::move(scene)), Shapes(Picture) {}

struct ScenePainter::Frame {
    QPainter& To;
    QRectF Area;
    const SheetPlace& Place;
    const SceneLook& Look;
    const SceneColours& Colours;
    Box InView{}; // mm on the sheet
    bool Plainly = false;

    bool Shows(const Box& box) const
    {
        return box.MaxX >= InView.MinX && box.MinX <= InView.MaxX && box.MaxY >= InView.MinY &&
               box.MinY <= InView.MaxY;
    }
    bool Shows(const Hole& hole) const
    {
        return hole.X + hole.Radius >= InView.MinX && hole.X - hole.Radius <= InView.MaxX &&
               hole.Y + hole.Radius >= InView.MinY && hole.Y - hole.Radius <= InView.MaxY;
    }
    // A line of the SVG picture, between one and three pixels wide.
    double LineWidth(double millimetres) const { return std::clamp(millimetres * Place.Scale, 1.0, 3.0); }
    QRectF RectOf(const SheetBox& box) const
    {
        return {Place.PixelOf({box.X, box.Y + box.Height}), Place.PixelOf({box.X + box.Width, box.Y})};
    }
};

bool ScenePainter::IsCrowded(const Frame& frame, double most) const
{
    double points = 0;
    for (const auto& layer : Shapes.Pieces)
        for (const Piece& piece : layer)
            if (frame.Shows(piece.Around))
                points += piece.Count;
    for (const Piece& piece : Shapes.Drawn)
        if (frame.Look.Drawing && frame.Shows(piece.Around))
            points += piece.Count;
    for (const auto& holes : Shapes.HolesOfGroup)
        for (const Hole& hole : holes)
            if (frame.Shows(hole))
                points += 8; // a hole costs as much as a short way
    return points > most;
}

double ScenePainter::OpacityOf(const SceneGroup& group) const
{
    const double share = Picture.Thickness > 0 ? std::clamp(group.Depth / Picture.Thickness, 0.0, 1.0) : 0.5;
    return group.IsThrough ? 1 : 0.15 + 0.55 * share;
}

void ScenePainter::PaintPanel(const Frame& frame) const
{
    frame.To.fillRect(frame.Area, frame.Colours.Paper);
    frame.To.setPen(Pen(frame.Colours.FaceRim, frame.LineWidth(1)));
    for (const SceneView& view : Picture.Views) {
        frame.To.setBrush(view.On == Plane::Surface ? frame.Colours.Face : frame.Colours.Fold);
        frame.To.drawRect(frame.RectOf(view.Box));
    }
    frame.To.setBrush(Qt::NoBrush);
}

void ScenePainter::PaintRapids(const Frame& frame) const
{
    if (!frame.Look.Rapids)
        return;
    QList<QLineF> lines;
    for (const SceneRapid& rapid : Picture.Rapids) {
        const Box box{std::min(rapid.From.X, rapid.To.X), std::min(rapid.From.Y, rapid.To.Y),
                      std::max(rapid.From.X, rapid.To.X), std::max(rapid.From.Y, rapid.To.Y)};
        const QLineF line(frame.Place.PixelOf(rapid.From), frame.Place.PixelOf(rapid.To));
        if (frame.Shows(box) && std::fabs(line.dx()) + std::fabs(line.dy()) >= 2)
            lines.push_back(line);
    }
    const bool dashed = lines.size() < 4000;
    QPen pen = Pen(frame.Colours.Rapid, dashed ? frame.LineWidth(0.5) : 0);
    if (dashed)
        pen.setDashPattern({1, 2.5});
    frame.To.setPen(pen);
    frame.To.drawLines(lines);
}

// One by one, so that where two ways cross the deeper tone shows it; a way of several pieces in one go.
void ScenePainter::PaintLayer(const Frame& frame, SceneShapes::Layer layer, std::size_t group) const
{
    const std::vector<std::uint32_t>& pieces = Shapes.PiecesOfGroup[layer][group];
    QPolygonF line;
    const auto flush = [&] {
        if (line.size() > 1)
            frame.To.drawPolyline(line);
        line.clear();
    };
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Piece& piece = Shapes.Pieces[layer][pieces[i]];
        const bool follows = i > 0 && piece.Item == Shapes.Pieces[layer][pieces[i - 1]].Item &&
                             piece.First == Shapes.Pieces[layer][pieces[i - 1]].First + PointsInPiece;
        if (!follows || !frame.Shows(piece.Around))
            flush();
        if (!frame.Shows(piece.Around))
            continue;
        for (std::size_t k = line.isEmpty() ? 0 : 1; k < piece.Count; ++k) {
            const QPointF& p = Shapes.Points[piece.First + k];
            const QPointF at = frame.Place.PixelOf({p.x(), p.y()});
            constexpr double leastStep = 0.4; // pixels
            if (k > 0 && k + 1 < piece.Count && (at - line.back()).manhattanLength() < leastStep)
                continue;
            line.push_back(at);
        }
    }
    flush();
}

void ScenePainter::AddLines(const Frame& frame, const Piece& piece, QList<QLineF>& lines) const
{
    constexpr double leastStep = 1.5; // pixels
    const QPointF* const points = Shapes.Points.data() + piece.First;
    QPointF from = frame.Place.PixelOf({points[0].x(), points[0].y()});
    for (std::uint32_t k = 1; k < piece.Count; ++k) {
        const QPointF to = frame.Place.PixelOf({points[k].x(), points[k].y()});
        const double step = std::max(std::fabs(to.x() - from.x()), std::fabs(to.y() - from.y()));
        if (step < leastStep && k + 1 < piece.Count)
            continue;
        lines.emplace_back(from, to);
        from = to;
    }
}

// Opaque and without joins: the quick way of the painter, for thousands of them.
void ScenePainter::PaintLinesPlainly(const Frame& frame, SceneShapes::Layer layer, std::size_t group) const
{
    QList<QLineF> lines;
    for (const std::uint32_t index : Shapes.PiecesOfGroup[layer][group])
        if (const Piece& piece = Shapes.Pieces[layer][index]; frame.Shows(piece.Around))
            AddLines(frame, piece, lines);
    frame.To.drawLines(lines);
}

void ScenePainter::PaintBands(const Frame& frame) const
{
    constexpr double leastBand = 1.5; // pixels; below, the way stands for it
    for (std::size_t group = 0; group < Picture.Groups.size(); ++group) {
        const SceneGroup& work = Picture.Groups[group];
        const double width = work.Width * frame.Place.Scale;
        if (frame.Look.Hides(group) || (frame.Plainly && width < leastBand))
            continue;
        const bool isSaw = work.Shape == WorkShape::Saw;
        const QColor& colour = isSaw ? frame.Colours.Blade : frame.Colours.Band;
        if (frame.Plainly) {
            QPen pen = Pen(Mixed(colour, frame.Colours.Face, OpacityOf(work)), width);
            pen.setCapStyle(Qt::FlatCap);
            frame.To.setPen(pen);
            PaintLinesPlainly(frame, SceneShapes::Swept, group);
            continue;
        }
        QPen pen = Pen(WithOpacity(colour, OpacityOf(work)), width);
        if (!isSaw)
            pen.setCapStyle(Qt::RoundCap);
        frame.To.setPen(pen);
        PaintLayer(frame, SceneShapes::Swept, group);
    }
}

void ScenePainter::PaintWays(const Frame& frame) const
{
    constexpr double bandForBoth = 5; // pixels; a narrower band leaves no room for its way when it is crowded
    for (std::size_t group = 0; group < Picture.Groups.size(); ++group) {
        const SceneGroup& work = Picture.Groups[group];
        const double band = work.Width * frame.Place.Scale;
        if (frame.Look.Hides(group))
            continue;
        const bool isSaw = work.Shape == WorkShape::Saw, isRow = work.Shape == WorkShape::BoreRow;
        const QColor& colour = isSaw ? frame.Colours.Blade : isRow ? frame.Colours.Hole : frame.Colours.Way;
        if (frame.Plainly) {
            frame.To.setPen(Pen(colour, 0));
            if (band < 1.5 || band >= bandForBoth)
                PaintLinesPlainly(frame, SceneShapes::Way, group);
            frame.To.setPen(Pen(frame.Colours.Lead, 0));
            PaintLinesPlainly(frame, SceneShapes::Lead, group);
            continue;
        }
        QPen pen = Pen(colour, frame.LineWidth(0.6));
        if (isSaw)
            pen.setDashPattern({10, 3, 2, 3});
        if (isRow)
            pen.setDashPattern({5, 2});
        frame.To.setPen(pen);
        PaintLayer(frame, SceneShapes::Way, group);
        QPen lead = Pen(frame.Colours.Lead, frame.LineWidth(0.9));
        lead.setDashPattern({3, 1.5});
        frame.To.setPen(lead);
        PaintLayer(frame, SceneShapes::Lead, group);
    }
}

// A ring where the tool comes down, and an arrow where the way begins after its lead.
void ScenePainter::PaintStart(const Frame& frame, const SceneItem& item) const
{
    constexpr double leastSize = 3, mostSize = 12, toolShare = 0.4; // pixels
    const double tool = (item.Width > 0 ? item.Width : 6) * frame.Place.Scale;
    const double size = std::clamp(toolShare * tool, leastSize, mostSize);
    frame.To.setPen(Pen(frame.Colours.Lead, frame.LineWidth(1)));
    frame.To.setBrush(Qt::NoBrush);
    frame.To.drawEllipse(frame.Place.PixelOf(item.At), size, size);
    if (item.Way.size() <= item.LeadIn)
        return;
    const Move& move = item.Way[item.LeadIn];
    QPointF along(move.To.X - move.From.X, move.From.Y - move.To.Y);
    if (move.IsArc) {
        const double sense = move.Sweep > 0 ? 1 : -1;
        along = {-sense * (move.From.Y - move.Centre.Y), -sense * (move.From.X - move.Centre.X)};
    }
    const double length = std::hypot(along.x(), along.y());
    if (!(length > 0))
        return;
    along *= size / length;
    const QPointF at = frame.Place.PixelOf(move.From), across(-along.y(), along.x());
    frame.To.setPen(Qt::NoPen);
    frame.To.setBrush(frame.Colours.Way);
    frame.To.drawPolygon(QPolygonF({at + 2 * along, at + across, at - across}));
    frame.To.setBrush(Qt::NoBrush);
}

void ScenePainter::PaintStarts(const Frame& frame) const
{
    if (frame.Plainly)
        return;
    for (const SceneItem& item : Picture.Items) {
        const bool isWay = item.Shape == WorkShape::Route;
        if (isWay && !frame.Look.Hides(item.Group) &&
            frame.Area.adjusted(-20, -20, 20, 20).contains(frame.Place.PixelOf(item.At)))
            PaintStart(frame, item);
    }
}

namespace {

// A bore or plunge: its rim always, full where it is through, the paler the less deep it is.
void PaintHole(QPainter& painter, const QPointF& at, double radius, const QColor& colour, double opacity,
               bool isKnown, double line)
{
    QPen pen = Pen(colour, line);
    if (!isKnown)
        pen.setDashPattern({2, 1.5});
    painter.setPen(pen);
    painter.setBrush(isKnown ? QBrush(WithOpacity(colour, opacity)) : QBrush(Qt::NoBrush));
    painter.drawEllipse(at, radius, radius);
    if (isKnown)
        return;
    painter.drawLine(QPointF(at.x() - radius, at.y()), QPointF(at.x() + radius, at.y()));
    painter.drawLine(QPointF(at.x(), at.y() - radius), QPointF(at.x(), at.y() + radius));
}

} // namespace

// By one picture, laid down at whole pixels, where there are many. `radius`: pixels.
void ScenePainter::LayDownHoles(const Frame& frame, std::size_t group, double radius,
                                const std::function<void(QPainter&, const QPointF&)>& paintOne) const
{
    const std::vector<Hole>& holes = Shapes.HolesOfGroup[group];
    if (!frame.Plainly || 2 * radius > SpriteLimit) {
        for (const Hole& hole : holes)
            if (frame.Shows(hole))
                paintOne(frame.To, frame.Place.PixelOf({hole.X, hole.Y}));
        return;
    }
    const double dense = frame.To.device()->devicePixelRatioF();
    const double half = std::ceil(radius + 2);
    QImage sprite(QSize(static_cast<int>(2 * half * dense), static_cast<int>(2 * half * dense)),
                  QImage::Format_ARGB32_Premultiplied);
    sprite.setDevicePixelRatio(dense);
    sprite.fill(Qt::transparent);
    {
        QPainter painter(&sprite);
        painter.setRenderHint(QPainter::Antialiasing);
        paintOne(painter, {half, half});
    }
    for (const Hole& hole : holes)
        if (frame.Shows(hole)) {
            const QPointF at = frame.Place.PixelOf({hole.X, hole.Y});
            frame.To.drawImage(QPointF(std::round(at.x() - half), std::round(at.y() - half)), sprite);
        }
}

double ScenePainter::RadiusOfHoles(const Frame& frame, std::size_t group) const
{
    const std::vector<Hole>& holes = Shapes.HolesOfGroup[group];
    return holes.empty() ? 0 : std::max(holes.front().Radius * frame.Place.Scale, 0.7);
}

void ScenePainter::PaintHolesOfGroup(const Frame& frame, std::size_t group) const
{
    if (Shapes.HolesOfGroup[group].empty() || frame.Look.Hides(group))
        return;
    const SceneGroup& work = Picture.Groups[group];
    const double radius = RadiusOfHoles(frame, group);
    const double opacity = OpacityOf(work), line = frame.LineWidth(0.6);
    LayDownHoles(frame, group, radius, [&](QPainter& painter, const QPointF& at) {
        PaintHole(painter, at, radius, frame.Colours.Hole, opacity, work.Width > 0, line);
    });
}

void ScenePainter::PaintHoles(const Frame& frame) const
{
    for (std::size_t group = 0; group < Shapes.HolesOfGroup.size(); ++group)
        PaintHolesOfGroup(frame, group);
    frame.To.setBrush(Qt::NoBrush);
}

void ScenePainter::PaintOrder(const Frame& frame) const
{
    if (!frame.Look.Order)
        return;
    frame.To.setPen(frame.Colours.Origin);
    std::size_t texts = 0;
    for (std::size_t i = 0; i < Picture.Items.size() && texts < MostOrderTexts; ++i) {
        const SceneItem& item = Picture.Items[i];
        const QPointF at = frame.Place.PixelOf(item.At);
        if (frame.Look.Hides(item.Group) || !frame.Area.contains(at))
            continue;
        frame.To.drawText(at + QPointF(4, -4), QString::number(i + 1));
        ++texts;
    }
}

// The drawing over the program; what the program lacks is red and stands out by its dashes too.
void ScenePainter::PaintDrawing(const Frame& frame) const
{
    if (!frame.Look.Drawing)
        return;
    if (frame.Plainly)
        PaintDrawingPlainly(frame);
    const std::vector<Piece>& pieces = Shapes.Drawn;
    for (const Piece& piece : pieces) {
        const DrawnShape& shape = Picture.Drawn[piece.Item];
        const bool isLit = frame.Look.LightsDrawn(shape.Line);
        if (!frame.Shows(piece.Around) || (frame.Plainly && !isLit))
            continue;
        QPen pen = Pen(shape.IsLeft ? frame.Colours.Left : frame.Colours.Drawn, shape.IsLeft ? 2.5 : 1);
        pen.setDashPattern(shape.IsLeft ? QList<qreal>{4, 2} : QList<qreal>{6, 3});
        if (isLit)
            pen = Pen(frame.Colours.Lit, shape.IsLeft ? 4 : 3);
        frame.To.setPen(pen);
        QPolygonF line;
        for (std::size_t k = 0; k < piece.Count; ++k) {
            const QPointF& p = Shapes.Points[piece.First + k];
            line.push_back(frame.Place.PixelOf({p.x(), p.y()}));
        }
        frame.To.drawPolyline(line);
    }
}

// What is left alone last, so that nothing hides it.
void ScenePainter::PaintDrawingPlainly(const Frame& frame) const
{
    QList<QLineF> lines, left;
    for (const Piece& piece : Shapes.Drawn)
        if (frame.Shows(piece.Around))
            AddLines(frame, piece, Picture.Drawn[piece.Item].IsLeft ? left : lines);
    frame.To.setPen(Pen(frame.Colours.Drawn, 0));
    frame.To.drawLines(lines);
    frame.To.setPen(Pen(frame.Colours.Left, 2.5));
    frame.To.drawLines(left);
}

// The corner that the program counts from, with the directions of its X and Y.
void ScenePainter::PaintOrigin(const Frame& frame) const
{
    constexpr double arm = 36, ring = 4; // pixels
    const PathPoint corner{Picture.Origin.Right ? Picture.Length : 0, Picture.Origin.Top ? Picture.Width : 0};
    const QPointF at = frame.Place.PixelOf(corner);
    const QPointF x = at + QPointF(Picture.Origin.Right ? -arm : arm, 0);
    const QPointF y = at + QPointF(0, Picture.Origin.Top ? arm : -arm);
    frame.To.setPen(Pen(frame.Colours.Origin, 2));
    frame.To.drawLine(at, x);
    frame.To.drawLine(at, y);
    frame.To.drawEllipse(at, ring, ring);
    frame.To.drawText(x + QPointF(0, -4), QStringLiteral("X"));
    frame.To.drawText(y + QPointF(5, 0), QStringLiteral("Y"));
}

void ScenePainter::PaintOutline(const Frame& frame, std::size_t index) const
{
    const SceneItem& item = Picture.Items[index];
    if (IsHole(item.Shape)) {
        const double radius = (item.Width > 0 ? item.Width / 2 : UnknownMarkRadius) * frame.Place.Scale;
        frame.To.drawEllipse(frame.Place.PixelOf(item.At), radius + 2, radius + 2);
        return;
    }
    for (const SceneShapes::Layer layer : {SceneShapes::Way, SceneShapes::Lead}) {
        const auto isBefore = [](const Piece& piece, std::size_t wanted) { return piece.Item < wanted; };
        const auto& pieces = Shapes.Pieces[layer];
        for (auto at = std::lower_bound(pieces.begin(), pieces.end(), index, isBefore);
             at != pieces.end() && at->Item == index; ++at) {
            QPolygonF line;
            for (std::size_t k = 0; k < at->Count; ++k)
                line.push_back(frame.Place.PixelOf(
                    {Shapes.Points[at->First + k].x(), Shapes.Points[at->First + k].y()}));
            frame.To.drawPolyline(line);
        }
    }
}

void ScenePainter::PaintLitGroup(const Frame& frame) const
{
    const std::size_t group = frame.Look.LitGroup;
    if (group >= Picture.Groups.size() || frame.Look.Hides(group))
        return;
    frame.To.setPen(Pen(frame.Colours.Lit, frame.Plainly ? 0 : 2));
    for (const SceneShapes::Layer layer : {SceneShapes::Way, SceneShapes::Lead})
        if (frame.Plainly)
            PaintLinesPlainly(frame, layer, group);
        else
            PaintLayer(frame, layer, group);
    const double radius = RadiusOfHoles(frame, group) + 2;
    LayDownHoles(frame, group, radius, [&](QPainter& painter, const QPointF& at) {
        painter.setPen(Pen(frame.Colours.Lit, 2));
        painter.drawEllipse(at, radius, radius);
    });
}

// Wider than the rest of its way, and with a ring where the tool is after it.
void ScenePainter::PaintLitMove(const Frame& frame) const
{
    constexpr double wide = 6, ring = 6; // pixels
    frame.To.setPen(Pen(frame.Colours.Lit, wide));
    for (const Move& move : Picture.Items[frame.Look.Lit].Way) {
        if (move.Line != frame.Look.LitLine || move.Line == 0)
            continue;
        const QPointF to = frame.Place.PixelOf(move.To);
        const double radius = Between(move.Centre, move.From) * frame.Place.Scale;
        QPainterPath path(frame.Place.PixelOf(move.From));
        if (move.IsArc && radius > 0) {
            const QPointF centre = frame.Place.PixelOf(move.Centre);
            path.arcTo(QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius),
                       DirectionTo(move.Centre, move.From), move.Sweep);
        } else {
            path.lineTo(to);
        }
        frame.To.drawPath(path);
        frame.To.drawEllipse(to, ring, ring);
    }
}

// By its own colour, and by the four corners around it.
void ScenePainter::PaintLit(const Frame& frame) const
{
    frame.To.setBrush(Qt::NoBrush);
    PaintLitGroup(frame);
    if (frame.Look.Lit >= Picture.Items.size())
        return;
    frame.To.setPen(Pen(frame.Colours.Lit, 3));
    PaintOutline(frame, frame.Look.Lit);
    PaintLitMove(frame);
    constexpr double clear = 7, arm = 8; // pixels
    const QRectF box = frame.RectOf(Shapes.BoxOfItem(frame.Look.Lit)).adjusted(-clear, -clear, clear, clear);
    for (const QPointF& corner : {box.topLeft(), box.topRight(), box.bottomLeft(), box.bottomRight()}) {
        const QPointF inward(corner.x() < box.center().x() ? arm : -arm,
                             corner.y() < box.center().y() ? arm : -arm);
        frame.To.drawLine(corner, corner + QPointF(inward.x(), 0));
        frame.To.drawLine(corner, corner + QPointF(0, inward.y()));
    }
}

void ScenePainter::Paint(QPainter& painter, const QRectF& area, const SheetPlace& place,
                         const SceneLook& look, const SceneColours& colours, PaintWith care) const
{
    const PathPoint low = place.SheetOf(area.bottomLeft()), high = place.SheetOf(area.topRight());
    Frame frame{painter, area, place, look, colours, {low.X, low.Y, high.X, high.Y}, false};
    frame.Plainly = care != PaintWith::FullCare &&
                    IsCrowded(frame, care == PaintWith::Moving ? CarefulWhileMoving : CarefulPoints);
    painter.save();
    painter.setClipRect(area);
    painter.setRenderHint(QPainter::Antialiasing, !frame.Plainly);
    PaintPanel(frame);
    PaintRapids(frame);
    PaintBands(frame);
    PaintWays(frame);
    PaintStarts(frame);
    PaintHoles(frame);
    PaintDrawing(frame);
    PaintOrder(frame);
    PaintOrigin(frame);
    PaintLit(frame);
    painter.restore();
}

} // namespace kv
