// A scene to look around in: wheel and Ctrl with + and - zoom, dragging moves it, F shows all, 1 to 5 a side.
#pragma once

#include <functional>
#include <memory>

#include <QTimer>
#include <QWidget>

#include "window/scene_painter.h"

namespace kv {

class SceneViewer : public QWidget {
  public:
    SceneViewer();
    // All of it is shown. A scene without a panel shows `Empty` instead.
    void Show(Scene scene);
    const Scene& Shown() const { return Painter->Picture; }
    bool HasPanel() const { return Shown().Length > 0 && Shown().Width > 0; }

    void Fit();
    void ShowSide(Plane side);
    void ZoomBy(double factor, const QPointF& around);
    // Moves the view only where the item is outside of it.
    // `line`: of the program: of a route the move that stands there.
    void Light(std::size_t item, std::size_t line = 0);
    // The drawing's entities at those lines of its file; the view moves where the first is outside of it.
    void LightDrawn(std::vector<std::size_t> lines);
    void LightGroup(std::size_t group); // NoItem: none
    void HideGroup(std::size_t group, bool hidden);
    std::size_t ItemAtPixel(const QPointF& pixel) const;
    // As it is to be saved: all of the sheet, in light colours.
    void PaintWhole(QPainter& painter, const QRectF& area) const;

    SheetPlace Place;
    SceneLook Look;
    QString Empty;                                     // what is said while there is no panel
    std::function<void(std::size_t)> Clicked;          // NoItem: beside all items
    std::function<void(const PathPoint*)> CursorMoved; // on the sheet; null: it has left

    QSize sizeHint() const override { return {640, 480}; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void BringIntoView(const PathPoint& place);
    void ShowMoved();

    std::unique_ptr<ScenePainter> Painter;
    QTimer Rest;          // runs while the view moves, and a little longer
    bool IsFitted = true; // stays so when the room changes
    bool IsDragged = false;
    QPointF PressedAt, CornerAtPress;
};

} // namespace kv
