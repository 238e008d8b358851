// Relies on ScenePainter for all that is drawn; here is which part of the sheet, and the hand.
#include "window/scene_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace kv {

namespace {

constexpr double KeyZoom = 1.25;
constexpr double WheelStep = 120;                     // of one notch
constexpr double LeastScale = 0.002, MostScale = 400; // pixels a millimetre
constexpr double ClickReach = 5;                      // pixels
constexpr double DragStart = 4;                       // pixels
constexpr int RestAfter = 150;                        // ms without another move
constexpr int DarkBelow = 128;

} // namespace

SceneViewer::SceneViewer() : Painter(std::make_unique<ScenePainter>(Scene{}))
{
    setObjectName(QStringLiteral("SceneView"));
    setAccessibleName(QStringLiteral("Picture of the program"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(200, 150);
    setAttribute(Qt::WA_OpaquePaintEvent);
    Rest.setSingleShot(true);
    Rest.setInterval(RestAfter);
    connect(&Rest, &QTimer::timeout, this, [this] { update(); });
}

void SceneViewer::Show(Scene scene)
{
    Painter = std::make_unique<ScenePainter>(std::move(scene));
    Look.Hidden.clear();
    Look.Lit = Look.LitGroup = NoItem;
    Look.LitDrawn.clear();
    Fit();
}

void SceneViewer::Fit()
{
    Place = PlaceToShow(Shown().Sheet, rect());
    IsFitted = true;
    update();
}

void SceneViewer::ShowSide(Plane side)
{
    constexpr double rim = 15; // mm
    for (const SceneView& view : Shown().Views)
        if (view.On == side) {
            const SheetBox& box = view.Box;
            Place =
                PlaceToShow({box.X - rim, box.Y - rim, box.Width + 2 * rim, box.Height + 2 * rim}, rect());
            IsFitted = false;
        }
    update();
}

void SceneViewer::ZoomBy(double factor, const QPointF& around)
{
    const PathPoint kept = Place.SheetOf(around);
    Place.Scale = std::clamp(Place.Scale * factor, LeastScale, MostScale);
    Place.Corner = {around.x() - kept.X * Place.Scale, around.y() + kept.Y * Place.Scale};
    ShowMoved();
}

// Plainly at first where there is much to see; with care when nobody moves it any more.
void SceneViewer::ShowMoved()
{
    IsFitted = false;
    Rest.start();
    update();
}

void SceneViewer::Light(std::size_t item, std::size_t line)
{
    Look.Lit = item;
    Look.LitLine = line;
    Look.LitDrawn.clear();
    if (item < Shown().Items.size()) {
        Look.LitDrawn = Shown().Items[item].DrawnLines;
        BringIntoView(Shown().Items[item].At);
    }
    update();
}

void SceneViewer::BringIntoView(const PathPoint& place)
{
    const QPointF at = Place.PixelOf(place);
    if (QRectF(rect()).contains(at))
        return;
    Place.Corner += QRectF(rect()).center() - at;
    IsFitted = false;
}

void SceneViewer::LightDrawn(std::vector<std::size_t> lines)
{
    Look.Lit = NoItem;
    Look.LitDrawn = std::move(lines);
    for (const DrawnShape& shape : Shown().Drawn)
        if (Look.LightsDrawn(shape.Line) && !shape.Way.empty()) {
            BringIntoView(shape.Way.front().From);
            break;
        }
    update();
}

void SceneViewer::LightGroup(std::size_t group)
{
    Look.LitGroup = group;
    update();
}

void SceneViewer::HideGroup(std::size_t group, bool hidden)
{
    Look.Hidden.resize(std::max(Look.Hidden.size(), Shown().Groups.size()));
    if (group < Look.Hidden.size())
        Look.Hidden[group] = hidden;
    update();
}

std::size_t SceneViewer::ItemAtPixel(const QPointF& pixel) const
{
    return Painter->ItemAt(Place.SheetOf(pixel), ClickReach / Place.Scale, Look);
}

void SceneViewer::PaintWhole(QPainter& painter, const QRectF& area) const
{
    SceneLook look = Look;
    look.Lit = look.LitGroup = NoItem;
    look.LitDrawn.clear();
    Painter->Paint(painter, area, PlaceToShow(Shown().Sheet, area), look, ColoursOfScene(false),
                   PaintWith::FullCare);
}

void SceneViewer::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const bool isDark = palette().color(QPalette::Base).lightness() < DarkBelow;
    if (HasPanel()) {
        Painter->Paint(painter, rect(), Place, Look, ColoursOfScene(isDark),
                       Rest.isActive() ? PaintWith::Moving : PaintWith::Screen);
    } else {
        painter.fillRect(rect(), palette().color(QPalette::Base));
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(rect().adjusted(12, 12, -12, -12), Qt::AlignCenter | Qt::TextWordWrap, Empty);
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void SceneViewer::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const QPointF middle = QRectF(rect()).center();
    if (key == Qt::Key_F && event->modifiers() == Qt::NoModifier)
        Fit();
    else if (key >= Qt::Key_1 && key <= Qt::Key_5 && !(event->modifiers() & Qt::ControlModifier))
        ShowSide(static_cast<Plane>(key - Qt::Key_0));
    else if (key == Qt::Key_Plus || key == Qt::Key_Equal)
        ZoomBy(KeyZoom, middle);
    else if (key == Qt::Key_Minus)
        ZoomBy(1 / KeyZoom, middle);
    else
        QWidget::keyPressEvent(event);
}

void SceneViewer::leaveEvent(QEvent* event)
{
    QWidget::leaveEvent(event);
    if (CursorMoved)
        CursorMoved(nullptr);
}

void SceneViewer::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    PressedAt = event->position();
    CornerAtPress = Place.Corner;
    IsDragged = false;
}

void SceneViewer::mouseMoveEvent(QMouseEvent* event)
{
    if (CursorMoved) {
        const PathPoint at = Place.SheetOf(event->position());
        CursorMoved(&at);
    }
    if (!(event->buttons() & Qt::LeftButton))
        return;
    const QPointF way = event->position() - PressedAt;
    IsDragged = IsDragged || std::hypot(way.x(), way.y()) >= DragStart;
    if (!IsDragged)
        return;
    Place.Corner = CornerAtPress + way;
    ShowMoved();
}

void SceneViewer::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && !IsDragged && Clicked && HasPanel())
        Clicked(ItemAtPixel(event->position()));
}

void SceneViewer::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (IsFitted)
        Fit();
}

void SceneViewer::wheelEvent(QWheelEvent* event)
{
    ZoomBy(std::pow(KeyZoom, event->angleDelta().y() / WheelStep), event->position());
    event->accept();
}

} // namespace kv
