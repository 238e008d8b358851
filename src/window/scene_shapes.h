// A scene's items as points, pieces of ways and holes, laid down once: what is painted in each frame, and
// what lies under the cursor.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <QPointF>

#include "scene/scene.h"

namespace kv {

constexpr std::size_t NoItem = static_cast<std::size_t>(-1);

class SceneShapes {
  public:
    enum Layer { Swept, Way, Lead, Layers };
    struct Box {
        double MinX, MinY, MaxX, MaxY; // mm on the sheet
    };
    // Points that follow each other; its last one is the first one of the item's next piece.
    struct Piece {
        std::uint32_t Item, First, Count;
        Box Around;
    };
    struct Hole {
        double X, Y, Radius;
        std::uint32_t Item;
    };

    explicit SceneShapes(const Scene& picture); // which must outlive it
    // The smallest that is shown there; `reach` in mm for what is thin, `hidden` by group.
    std::size_t ItemAt(const PathPoint& at, double reach, const std::vector<bool>& hidden) const;
    // Around its ways and its hole.
    SheetBox BoxOfItem(std::size_t item) const;

    std::vector<QPointF> Points; // mm on the sheet
    std::array<std::vector<Piece>, Layers> Pieces;
    std::array<std::vector<std::vector<std::uint32_t>>, Layers> PiecesOfGroup;
    std::vector<std::vector<Hole>> HolesOfGroup;
    std::vector<Piece> Drawn; // of the drawing's entities: their Item is the place in Scene::Drawn

  private:
    void AddWay(std::vector<Piece>& pieces, std::size_t owner, const std::vector<Move>& way,
                std::size_t first, std::size_t last, double aside);
    void AddPoints(const Move& move);
    void AddPieces(std::vector<Piece>& pieces, std::size_t owner, std::size_t first, double aside);
    void SortByGroups();

    const Scene& Picture;
};

constexpr std::size_t PointsInPiece = 48; // small enough to leave out what is not in view
constexpr double UnknownMarkRadius = 3;   // mm: of a bore whose diameter is not known
bool IsHole(WorkShape shape);

} // namespace kv
