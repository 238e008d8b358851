// Paints a scene at any scale, for the screen and for picture files. Ways are laid down as points once, so
// that a frame of a large program is little more than their lines.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <QColor>
#include <QPainter>
#include <QPointF>
#include <QRectF>

#include "scene/scene.h"

namespace kv {

constexpr std::size_t NoItem = static_cast<std::size_t>(-1);

struct SceneColours {
    QColor Paper, Face, FaceRim, Fold, Band, Blade, Way, Lead, Hole, Rapid, Drawn, Left, Origin, Lit;
};
SceneColours ColoursOfScene(bool isDark);

// Which part of the sheet is shown: the pixel of the face's lower left corner, and pixels a millimetre.
struct SheetPlace {
    QPointF Corner;
    double Scale = 1;
    QPointF PixelOf(const PathPoint& p) const { return {Corner.x() + p.X * Scale, Corner.y() - p.Y * Scale}; }
    PathPoint SheetOf(const QPointF& p) const
    {
        return {(p.x() - Corner.x()) / Scale, (Corner.y() - p.y()) / Scale};
    }
};
// All of the box in the middle of the area.
SheetPlace PlaceToShow(const SheetBox& box, const QRectF& area);

struct SceneLook {
    std::vector<bool> Hidden; // by group; short: shown
    bool Order = false, Rapids = true, Drawing = true;
    std::size_t Lit = NoItem, LitGroup = NoItem;
    std::vector<std::size_t> LitDrawn; // lines of the drawing's file: entities that are lit
    bool LightsDrawn(std::size_t line) const
    {
        return line > 0 && std::find(LitDrawn.begin(), LitDrawn.end(), line) != LitDrawn.end();
    }
    bool Hides(std::size_t group) const { return group < Hidden.size() && Hidden[group]; }
};

// On the screen a crowded view is drawn plainly: without smooth edges and without what is below a pixel.
enum class PaintWith { Screen, FullCare };

class ScenePainter {
  public:
    explicit ScenePainter(Scene scene);
    void Paint(QPainter& painter, const QRectF& area, const SheetPlace& place, const SceneLook& look,
               const SceneColours& colours, PaintWith care = PaintWith::Screen) const;
    // The smallest that is shown there; `reach` in mm for what is thin.
    std::size_t ItemAt(const PathPoint& at, double reach, const SceneLook& look) const;
    // Around its ways and its hole.
    SheetBox BoxOfItem(std::size_t item) const;

    const Scene Picture;

  private:
    enum Layer { Swept, Way, Lead, Layers };
    struct Box {
        double MinX, MinY, MaxX, MaxY;
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
    struct Frame; // what is the same for all that is painted in one go

    void AddWay(std::size_t item, Layer layer, const std::vector<Move>& way, std::size_t first,
                std::size_t last, double aside);
    void AddPoints(const Move& move);
    void AddPieces(std::size_t item, Layer layer, std::size_t first, double aside);
    bool IsCrowded(const Frame& frame) const;
    void PaintPanel(const Frame& frame) const;
    void PaintRapids(const Frame& frame) const;
    void PaintBands(const Frame& frame) const;
    void PaintWays(const Frame& frame) const;
    void PaintLayer(const Frame& frame, Layer layer, std::size_t group) const;
    void PaintLinesPlainly(const Frame& frame, Layer layer, std::size_t group) const;
    void PaintStarts(const Frame& frame) const;
    void PaintStart(const Frame& frame, const SceneItem& item) const;
    void PaintHoles(const Frame& frame) const;
    void PaintHolesOfGroup(const Frame& frame, std::size_t group) const;
    void PaintOrder(const Frame& frame) const;
    void PaintDrawing(const Frame& frame) const;
    void PaintOrigin(const Frame& frame) const;
    void PaintLit(const Frame& frame) const;
    void PaintOutline(const Frame& frame, std::size_t item) const;
    double OpacityOf(const SceneGroup& group) const;

    std::vector<QPointF> Points; // mm on the sheet
    std::array<std::vector<Piece>, Layers> Pieces;
    std::array<std::vector<std::vector<std::uint32_t>>, Layers> PiecesOfGroup;
    std::vector<std::vector<Hole>> HolesOfGroup;
};

} // namespace kv
