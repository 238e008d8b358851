// The painter's quick way: while a crowded view moves it is drawn plainly, and nothing may vanish by it.
#include "window/scene_painter.h"

#include <set>

#include <gtest/gtest.h>

#include <QImage>
#include <QTest>

#include "window/scene_view.h"

namespace kv {
namespace {

constexpr int Columns = 60, Rows = 40;
constexpr double Pitch = 20; // mm

// More bores than a moving view draws with care.
Scene CrowdedScene()
{
    MachineSteps steps;
    steps.Length = (Columns + 1) * Pitch;
    steps.Width = (Rows + 1) * Pitch;
    steps.Thickness = 19;
    for (int i = 0; i < Columns * Rows; ++i) {
        Bore bore;
        bore.At = {(1 + i % Columns) * Pitch, (1 + i / Columns) * Pitch};
        bore.Diameter = 5;
        bore.Depth = i % 2 == 0 ? 19 : 6;
        bore.Line = static_cast<std::size_t>(i + 2);
        steps.Bores.push_back(bore);
    }
    return SceneOf(steps);
}

QImage ImageOf(const Scene& scene, const SceneLook& look, PaintWith care, SheetPlace& place)
{
    QImage image(1300, 900, QImage::Format_RGB32);
    const ScenePainter painter(scene);
    place = PlaceToShow(scene.Sheet, image.rect());
    QPainter to(&image);
    painter.Paint(to, image.rect(), place, look, ColoursOfScene(false), care);
    return image;
}

// Of the pixels around a place the one that is least like the panel.
int FarthestFrom(const QColor& ground, const QImage& image, const QPointF& at, int reach)
{
    int farthest = 0;
    for (int dx = -reach; dx <= reach; ++dx)
        for (int dy = -reach; dy <= reach; ++dy) {
            const QColor pixel = image.pixelColor(at.toPoint() + QPoint(dx, dy));
            farthest = std::max(farthest, std::abs(pixel.red() - ground.red()) +
                                              std::abs(pixel.green() - ground.green()) +
                                              std::abs(pixel.blue() - ground.blue()));
        }
    return farthest;
}

bool HasColour(const QColor& colour, const QImage& image, const QPointF& at, int reach)
{
    for (int dx = -reach; dx <= reach; ++dx)
        for (int dy = -reach; dy <= reach; ++dy)
            if (image.pixelColor(at.toPoint() + QPoint(dx, dy)) == colour)
                return true;
    return false;
}

TEST(ScenePainterTest, AMovingViewLeavesNoWorkOut)
{
    const Scene scene = CrowdedScene();
    const QColor ground = ColoursOfScene(false).Face;
    SheetPlace place;
    const QImage moving = ImageOf(scene, {}, PaintWith::Moving, place);
    for (const SceneItem& item : scene.Items)
        ASSERT_GT(FarthestFrom(ground, moving, place.PixelOf(item.At), 3), 60)
            << item.At.X << ", " << item.At.Y;
    const QPointF between = place.PixelOf({1.5 * Pitch, 1.5 * Pitch});
    EXPECT_EQ(FarthestFrom(ground, moving, between, 2), 0);
}

TEST(ScenePainterTest, ALitGroupIsLitInACrowdedViewAndTheOthersAreNot)
{
    const Scene scene = CrowdedScene();
    ASSERT_EQ(scene.Groups.size(), 2U);
    const QColor lit = ColoursOfScene(false).Lit;
    SceneLook look;
    look.LitGroup = scene.Items[0].Group;
    SheetPlace place;
    const QImage moving = ImageOf(scene, look, PaintWith::Moving, place);
    for (std::size_t i = 0; i < 200; ++i)
        ASSERT_EQ(HasColour(lit, moving, place.PixelOf(scene.Items[i].At), 6),
                  scene.Items[i].Group == look.LitGroup)
            << i;
}

TEST(ScenePainterTest, WhatIsLeftAloneIsRedInACrowdedView)
{
    Scene scene = CrowdedScene();
    Move line;
    line.From = {Pitch * 1.5, Pitch * 1.5};
    line.To = {Pitch * 9.5, Pitch * 1.5};
    scene.Drawn.push_back({{line}, true, "LINE", 12});
    line.From.Y = line.To.Y = Pitch * 3.5;
    scene.Drawn.push_back({{line}, false, "LINE", 20});
    const SceneColours colours = ColoursOfScene(false);
    SheetPlace place;
    const QImage moving = ImageOf(scene, {}, PaintWith::Moving, place);
    EXPECT_TRUE(HasColour(colours.Left, moving, place.PixelOf({Pitch * 5, Pitch * 1.5}), 1));
    EXPECT_TRUE(HasColour(colours.Drawn, moving, place.PixelOf({Pitch * 5, Pitch * 3.5}), 1));
    SceneLook look;
    look.LitDrawn = {20};
    const QImage lit = ImageOf(scene, look, PaintWith::Moving, place);
    EXPECT_TRUE(HasColour(colours.Lit, lit, place.PixelOf({Pitch * 5, Pitch * 3.5}), 1));
    look.Drawing = false;
    const QImage bare = ImageOf(scene, look, PaintWith::Moving, place);
    EXPECT_FALSE(HasColour(colours.Left, bare, place.PixelOf({Pitch * 5, Pitch * 1.5}), 1));
}

std::size_t ColoursIn(const QImage& image)
{
    std::set<QRgb> colours;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    return colours.size();
}

// Smooth edges have many shades.
TEST(ScenePainterTest, AViewThatHasComeToRestIsPaintedWithCare)
{
    SceneViewer viewer;
    viewer.resize(700, 500);
    Scene scene = CrowdedScene();
    scene.Rapids.clear();
    viewer.Show(scene);
    viewer.ZoomBy(3, {350, 250}); // some 270 bores: too many for a moving view, few for one at rest
    const std::size_t moving = ColoursIn(viewer.grab().toImage());
    ASSERT_TRUE(QTest::qWaitFor([&] { return ColoursIn(viewer.grab().toImage()) > 2 * moving; }, 3000));
}

} // namespace
} // namespace kv
