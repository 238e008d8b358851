#include "window/scene_shapes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kv {

namespace {

constexpr double ArcTolerance = 0.02; // mm between an arc and its chords

} // namespace

bool IsHole(WorkShape shape)
{
    return shape == WorkShape::Bore || shape == WorkShape::Plunge;
}

SceneShapes::SceneShapes(const Scene& picture) : Picture(picture)
{
    HolesOfGroup.resize(Picture.Groups.size());
    for (std::size_t i = 0; i < Picture.Items.size(); ++i) {
        const SceneItem& item = Picture.Items[i];
        if (IsHole(item.Shape)) {
            const double radius = item.Width > 0 ? item.Width / 2 : UnknownMarkRadius;
            HolesOfGroup[item.Group].push_back({item.At.X, item.At.Y, radius, static_cast<std::uint32_t>(i)});
            continue;
        }
        const std::size_t moves = item.Way.size();
        if (item.Width > 0)
            AddWay(Pieces[Swept], i, item.Swept, 0, item.Swept.size(), item.Width / 2);
        AddWay(Pieces[Lead], i, item.Way, 0, item.LeadIn, 0);
        // The middle of the blade is what counts, not the way that it was given.
        if (item.Shape == WorkShape::Saw)
            AddWay(Pieces[Way], i, item.Swept, 0, item.Swept.size(), 0);
        else
            AddWay(Pieces[Way], i, item.Way, item.LeadIn, moves - item.LeadOut, 0);
        AddWay(Pieces[Lead], i, item.Way, moves - item.LeadOut, moves, 0);
    }
    for (std::size_t i = 0; i < Picture.Drawn.size(); ++i)
        AddWay(Drawn, i, Picture.Drawn[i].Way, 0, Picture.Drawn[i].Way.size(), 0);
    SortByGroups();
}

void SceneShapes::SortByGroups()
{
    for (std::size_t layer = 0; layer < Layers; ++layer) {
        PiecesOfGroup[layer].resize(Picture.Groups.size());
        for (std::size_t i = 0; i < Pieces[layer].size(); ++i)
            PiecesOfGroup[layer][Picture.Items[Pieces[layer][i].Item].Group].push_back(
                static_cast<std::uint32_t>(i));
    }
}

void SceneShapes::AddPoints(const Move& move)
{
    const double radius = Between(move.Centre, move.From);
    if (move.IsArc && radius > 0) {
        const double finest = std::clamp(1 - ArcTolerance / radius, 0.0, 0.9999);
        const double step = std::min(2 * std::acos(finest) / Degree, 30.0);
        const int parts = std::max(1, static_cast<int>(std::ceil(std::fabs(move.Sweep) / step)));
        const double start = DirectionTo(move.Centre, move.From);
        for (int i = 1; i < parts; ++i) {
            const double angle = (start + move.Sweep * i / parts) * Degree;
            Points.emplace_back(move.Centre.X + radius * std::cos(angle),
                                move.Centre.Y + radius * std::sin(angle));
        }
    }
    Points.emplace_back(move.To.X, move.To.Y);
}

void SceneShapes::AddWay(std::vector<Piece>& pieces, std::size_t owner, const std::vector<Move>& way,
                         std::size_t first, std::size_t last, double aside)
{
    if (first >= last || last > way.size())
        return;
    std::size_t start = Points.size();
    Points.emplace_back(way[first].From.X, way[first].From.Y);
    for (std::size_t i = first; i < last; ++i) {
        const QPointF begin(way[i].From.X, way[i].From.Y);
        if (std::hypot(begin.x() - Points.back().x(), begin.y() - Points.back().y()) > ArcTolerance) {
            AddPieces(pieces, owner, start, aside);
            start = Points.size();
            Points.push_back(begin);
        }
        AddPoints(way[i]);
    }
    AddPieces(pieces, owner, start, aside);
}

// Cuts the points from `first` on into pieces.
void SceneShapes::AddPieces(std::vector<Piece>& pieces, std::size_t owner, std::size_t first, double aside)
{
    for (std::size_t i = first; i + 1 < Points.size(); i += PointsInPiece) {
        const std::size_t count = std::min(PointsInPiece + 1, Points.size() - i);
        const double far = std::numeric_limits<double>::infinity();
        Box box{far, far, -far, -far};
        for (std::size_t k = i; k < i + count; ++k) {
            box.MinX = std::min(box.MinX, Points[k].x() - aside);
            box.MaxX = std::max(box.MaxX, Points[k].x() + aside);
            box.MinY = std::min(box.MinY, Points[k].y() - aside);
            box.MaxY = std::max(box.MaxY, Points[k].y() + aside);
        }
        pieces.push_back({static_cast<std::uint32_t>(owner), static_cast<std::uint32_t>(i),
                          static_cast<std::uint32_t>(count), box});
    }
}

SheetBox SceneShapes::BoxOfItem(std::size_t index) const
{
    const SceneItem& item = Picture.Items[index];
    Box box{item.At.X, item.At.Y, item.At.X, item.At.Y};
    const auto add = [&box](double minX, double minY, double maxX, double maxY) {
        box = {std::min(box.MinX, minX), std::min(box.MinY, minY), std::max(box.MaxX, maxX),
               std::max(box.MaxY, maxY)};
    };
    if (IsHole(item.Shape)) {
        const double radius = item.Width > 0 ? item.Width / 2 : UnknownMarkRadius;
        add(item.At.X - radius, item.At.Y - radius, item.At.X + radius, item.At.Y + radius);
    }
    for (const auto& layer : Pieces) {
        const auto isBefore = [](const Piece& piece, std::size_t wanted) { return piece.Item < wanted; };
        for (auto at = std::lower_bound(layer.begin(), layer.end(), index, isBefore);
             at != layer.end() && at->Item == index; ++at)
            add(at->Around.MinX, at->Around.MinY, at->Around.MaxX, at->Around.MaxY);
    }
    return {box.MinX, box.MinY, box.MaxX - box.MinX, box.MaxY - box.MinY};
}

namespace {

double DistanceToLine(const PathPoint& at, const QPointF& from, const QPointF& to)
{
    const double dx = to.x() - from.x(), dy = to.y() - from.y(), square = dx * dx + dy * dy;
    const double along =
        square > 0 ? std::clamp(((at.X - from.x()) * dx + (at.Y - from.y()) * dy) / square, 0.0, 1.0) : 0;
    return std::hypot(at.X - from.x() - along * dx, at.Y - from.y() - along * dy);
}

} // namespace

std::size_t SceneShapes::ItemAt(const PathPoint& at, double reach, const std::vector<bool>& hidden) const
{
    const auto isHidden = [&](std::size_t group) { return group < hidden.size() && hidden[group]; };
    std::size_t found = NoItem;
    double smallest = std::numeric_limits<double>::infinity(); // half a width, mm
    const auto take = [&](std::size_t item, double size) {
        if (size < smallest || (size == smallest && (found == NoItem || item > found))) {
            smallest = size;
            found = item;
        }
    };
    for (std::size_t group = 0; group < HolesOfGroup.size(); ++group)
        for (const Hole& hole : HolesOfGroup[group])
            if (!isHidden(group) && std::hypot(at.X - hole.X, at.Y - hole.Y) <= std::max(hole.Radius, reach))
                take(hole.Item, hole.Radius);
    if (found != NoItem) // holes lie above all else
        return found;
    for (const Layer layer : {Swept, Way, Lead})
        for (const Piece& piece : Pieces[layer]) {
            const SceneItem& item = Picture.Items[piece.Item];
            const double half = layer == Swept ? std::max(item.Width / 2, reach) : reach;
            const Box& box = piece.Around;
            if (isHidden(item.Group) || at.X < box.MinX - reach || at.X > box.MaxX + reach ||
                at.Y < box.MinY - reach || at.Y > box.MaxY + reach)
                continue;
            for (std::size_t k = piece.First; k + 1 < piece.First + piece.Count; ++k)
                if (DistanceToLine(at, Points[k], Points[k + 1]) <= half)
                    take(piece.Item, item.Width / 2);
        }
    return found;
}

} // namespace kv
