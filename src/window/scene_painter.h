// Paints a scene at any scale, for the screen and for picture files.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <vector>

#include <QColor>
#include <QLineF>
#include <QList>
#include <QPainter>
#include <QPointF>
#include <QRectF>

#include "scene/scene.h"
#include "window/scene_shapes.h"

namespace kv {

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
    std::size_t LitLine = 0;           // of the program: the lit item's move
    std::vector<std::size_t> LitDrawn; // lines of the drawing's file: entities that are lit
    bool LightsDrawn(std::size_t line) const
    {
        return line > 0 && std::find(LitDrawn.begin(), LitDrawn.end(), line) != LitDrawn.end();
    }
    bool Hides(std::size_t group) const { return group < Hidden.size() && Hidden[group]; }
};

// On the screen a crowded view is drawn plainly: without smooth edges and without what is below a pixel.
// While the view moves fewer works make it crowded.
enum class PaintWith { Screen, Moving, FullCare };

class ScenePainter {
  public:
    explicit ScenePainter(Scene scene);
    ScenePainter(const ScenePainter&) = delete; // its shapes are of its own picture
    ScenePainter& operator=(const ScenePainter&) = delete;
    void Paint(QPainter& painter, const QRectF& area, const SheetPlace& place, const SceneLook& look,
               const SceneColours& colours, PaintWith care = PaintWith::Screen) const;
    // The smallest that is shown there; `reach` in mm for what is thin.
    std::size_t ItemAt(const PathPoint& at, double reach, const SceneLook& look) const
    {
        return Shapes.ItemAt(at, reach, look.Hidden);
    }
    SheetBox BoxOfItem(std::size_t item) const { return Shapes.BoxOfItem(item); }

    const Scene Picture;

  private:
    struct Frame; // what is the same for all that is painted in one go

    bool IsCrowded(const Frame& frame, double most) const;
    void PaintPanel(const Frame& frame) const;
    void PaintRapids(const Frame& frame) const;
    void PaintBands(const Frame& frame) const;
    void PaintWays(const Frame& frame) const;
    void PaintLayer(const Frame& frame, SceneShapes::Layer layer, std::size_t group) const;
    void PaintLinesPlainly(const Frame& frame, SceneShapes::Layer layer, std::size_t group) const;
    void PaintStarts(const Frame& frame) const;
    void PaintStart(const Frame& frame, const SceneItem& item) const;
    void PaintHoles(const Frame& frame) const;
    void LayDownHoles(const Frame& frame, std::size_t group, double radius,
                      const std::function<void(QPainter&, const QPointF&)>& paintOne) const;
    double RadiusOfHoles(const Frame& frame, std::size_t group) const;
    void PaintHolesOfGroup(const Frame& frame, std::size_t group) const;
    void PaintOrder(const Frame& frame) const;
    void AddLines(const Frame& frame, const SceneShapes::Piece& piece, QList<QLineF>& lines) const;
    void PaintDrawing(const Frame& frame) const;
    void PaintDrawingPlainly(const Frame& frame) const;
    void PaintOrigin(const Frame& frame) const;
    void PaintLitGroup(const Frame& frame) const;
    void PaintLitMove(const Frame& frame) const;
    void PaintLit(const Frame& frame) const;
    void PaintOutline(const Frame& frame, std::size_t item) const;
    double OpacityOf(const SceneGroup& group) const;

    const SceneShapes Shapes; // of Picture
};

} // namespace kv
