// The view of a program: what is painted where, zooming, moving, sides and what lies under the pointer.
#include "window/scene_view.h"

#include <cmath>

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QTest>

#include "machine/program_reader.h"

namespace kv {
namespace {

// A through bore, a blind one, one of edge 2 and a line of the router.
constexpr std::string_view SmallProgram = "G71X600Y400Z20T00N4L1\n"
                                          "G81G90G55P5R54=30X100Y300Z20\n"
                                          "G81G90G55P5R54=30X200Y300Z2\n"
                                          "G81G90G55P2R54=8X100Y30Z4\n"
                                          "G88G90G55P5T0171G41R5X300Y100Z5\nG1G90F3000X500Y100Z5\n";

Scene SmallScene()
{
    return SceneOf(ReadProgram(SmallProgram));
}

int Apart(const QColor& a, const QColor& b)
{
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
}

std::unique_ptr<SceneViewer> OpenViewer()
{
    auto viewer = std::make_unique<SceneViewer>();
    viewer->resize(1000, 700);
    viewer->show();
    viewer->Show(SmallScene());
    QApplication::processEvents();
    return viewer;
}

QColor ColourAt(SceneViewer& viewer, const PathPoint& at)
{
    const QImage image = viewer.grab().toImage();
    const double dense = image.devicePixelRatio();
    return image.pixelColor((viewer.Place.PixelOf(at) * dense).toPoint());
}

TEST(SceneViewTest, AThroughBoreIsFullAndABlindOnePale)
{
    const auto viewer = OpenViewer();
    ASSERT_EQ(viewer->Shown().Items.size(), 4U);
    const SceneColours colours = ColoursOfScene(viewer->palette().color(QPalette::Base).lightness() < 128);
    EXPECT_LT(Apart(ColourAt(*viewer, {100, 300}), colours.Hole), 12);
    EXPECT_LT(Apart(ColourAt(*viewer, {50, 200}), colours.Face), 12);
    const QColor blind = ColourAt(*viewer, {200, 300});
    EXPECT_GT(Apart(blind, colours.Hole), 100);
    EXPECT_GT(Apart(blind, colours.Face), 30);
}

TEST(SceneViewTest, DarkSchemePaintsOnDarkPaper)
{
    const auto viewer = OpenViewer();
    QPalette palette = viewer->palette();
    palette.setColor(QPalette::Base, Qt::black);
    viewer->setPalette(palette);
    EXPECT_EQ(ColourAt(*viewer, {-15, 410}), ColoursOfScene(true).Paper);
    palette.setColor(QPalette::Base, Qt::white);
    viewer->setPalette(palette);
    EXPECT_EQ(ColourAt(*viewer, {-15, 410}), ColoursOfScene(false).Paper);
}

TEST(SceneViewTest, TheWheelKeepsThePlaceUnderThePointer)
{
    const auto viewer = OpenViewer();
    const QPointF pointer(400, 300);
    const PathPoint before = viewer->Place.SheetOf(pointer);
    const double scale = viewer->Place.Scale;
    QWheelEvent event(pointer, viewer->mapToGlobal(pointer), {}, {0, 240}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewer.get(), &event);
    EXPECT_GT(viewer->Place.Scale, 1.2 * scale);
    const PathPoint after = viewer->Place.SheetOf(pointer);
    EXPECT_NEAR(after.X, before.X, 1e-6);
    EXPECT_NEAR(after.Y, before.Y, 1e-6);
}

TEST(SceneViewTest, KeysZoomFitAndShowASide)
{
    const auto viewer = OpenViewer();
    const double fitted = viewer->Place.Scale;
    QTest::keyClick(viewer.get(), Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_GT(viewer->Place.Scale, fitted);
    QTest::keyClick(viewer.get(), Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_NEAR(viewer->Place.Scale, fitted, 1e-9);
    for (const SceneView& view : viewer->Shown().Views) {
        QTest::keyClick(viewer.get(), static_cast<Qt::Key>(Qt::Key_0 + static_cast<int>(view.On)));
        const PathPoint middle{view.Box.X + view.Box.Width / 2, view.Box.Y + view.Box.Height / 2};
        const QPointF shown = viewer->Place.PixelOf(middle);
        EXPECT_NEAR(shown.x(), 500, 1) << static_cast<int>(view.On);
        EXPECT_NEAR(shown.y(), 350, 1) << static_cast<int>(view.On);
    }
    QTest::keyClick(viewer.get(), Qt::Key_F);
    EXPECT_NEAR(viewer->Place.Scale, fitted, 1e-9);
}

TEST(SceneViewTest, DraggingMovesTheSheetAndSelectsNothing)
{
    const auto viewer = OpenViewer();
    int clicks = 0;
    viewer->Clicked = [&](std::size_t) { ++clicks; };
    const QPointF before = viewer->Place.Corner;
    QTest::mousePress(viewer.get(), Qt::LeftButton, {}, {300, 300});
    QMouseEvent move(QEvent::MouseMove, QPointF(340, 320), viewer->mapToGlobal(QPointF(340, 320)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(viewer.get(), &move);
    QTest::mouseRelease(viewer.get(), Qt::LeftButton, {}, {340, 320});
    EXPECT_EQ(viewer->Place.Corner, before + QPointF(40, 20));
    EXPECT_EQ(clicks, 0);
}

TEST(SceneViewTest, AClickGivesTheItemUnderThePointer)
{
    const auto viewer = OpenViewer();
    std::vector<std::size_t> clicked;
    viewer->Clicked = [&](std::size_t item) { clicked.push_back(item); };
    for (const PathPoint& at :
         {PathPoint{105, 302}, PathPoint{200, 300}, PathPoint{400, 100}, PathPoint{50, 50}})
        QTest::mouseClick(viewer.get(), Qt::LeftButton, {}, viewer->Place.PixelOf(at).toPoint());
    EXPECT_EQ(clicked, (std::vector<std::size_t>{0, 1, 3, NoItem}));
}

TEST(SceneViewTest, AHiddenGroupIsNeitherPaintedNorHit)
{
    const auto viewer = OpenViewer();
    const QColor shown = ColourAt(*viewer, {100, 300});
    viewer->HideGroup(viewer->Shown().Items[0].Group, true);
    const QColor hidden = ColourAt(*viewer, {100, 300});
    EXPECT_GT(Apart(shown, hidden), 100);
    EXPECT_EQ(viewer->ItemAtPixel(viewer->Place.PixelOf({100, 300})), NoItem);
    viewer->HideGroup(viewer->Shown().Items[0].Group, false);
    EXPECT_EQ(ColourAt(*viewer, {100, 300}), shown);
}

TEST(SceneViewTest, ALitItemOutsideTheViewIsBroughtIntoIt)
{
    const auto viewer = OpenViewer();
    viewer->ShowSide(Plane::Edge1);
    const QRectF room = viewer->rect();
    ASSERT_FALSE(room.contains(viewer->Place.PixelOf({300, 100})));
    viewer->Light(3);
    EXPECT_TRUE(room.contains(viewer->Place.PixelOf({300, 100})));
}

// 3,000 bores are drawn plainly on the screen; where they are stays the same.
TEST(SceneViewTest, ACrowdedViewHasItsBoresWhereTheyBelong)
{
    std::string program = "G71X600Y400Z20T00N4L1\n";
    for (int i = 0; i < 3000; ++i)
        program += "G81G90G55P5R54=5X" + std::to_string(10 + i % 60 * 9) + "Y" +
                   std::to_string(10 + i / 60 * 7) + "Z20\n";
    SceneViewer viewer;
    viewer.resize(1000, 700);
    viewer.show();
    viewer.Show(SceneOf(ReadProgram(program)));
    ASSERT_EQ(viewer.Shown().Items.size(), 3000U);
    const SceneColours colours = ColoursOfScene(viewer.palette().color(QPalette::Base).lightness() < 128);
    const QImage image = viewer.grab().toImage();
    const auto colourAt = [&](const PathPoint& at) {
        return image.pixelColor((viewer.Place.PixelOf(at) * image.devicePixelRatio()).toPoint());
    };
    for (const SceneItem& item : viewer.Shown().Items)
        ASSERT_LT(Apart(colourAt(item.At), colours.Hole), 60) << item.Line;
    EXPECT_LT(Apart(colourAt({5, 380}), colours.Face), 12);
}

TEST(SceneViewTest, WithoutAPanelTheReasonIsShown)
{
    SceneViewer viewer;
    viewer.Empty = QStringLiteral("No program");
    viewer.resize(300, 200);
    const QImage before = viewer.grab().toImage();
    viewer.Empty.clear();
    EXPECT_NE(viewer.grab().toImage(), before);
    EXPECT_FALSE(viewer.HasPanel());
}

} // namespace
} // namespace kv
