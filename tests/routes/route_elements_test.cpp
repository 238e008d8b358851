// First and last elements of routes: directions, senses and radii worked out by hand.
#include "routes/route_elements.h"

#include "routes/lead_routes.h"
#include "support/scene.h"

namespace kv::lead_test {
namespace {

class ElementsOfRoutes : public testing::Test {
  protected:
    void SetUp() override { test::ResetProcess(); }
    void TearDown() override { test::ResetProcess(); }
};

constexpr double Degrees = 180 / 3.14159265358979323846;

TEST_F(ElementsOfRoutes, LineHasItsBearingAndLength)
{
    const RouteElement first = FirstElement(Record(-1, 10, 20), Record(1, 13, 16));
    EXPECT_EQ(first.Shape, ElementShape::Line);
    EXPECT_EQ(first.Sense, 0);
    EXPECT_DOUBLE_EQ(first.Radius, 5);
    EXPECT_NEAR(first.Direction, 360 - std::atan2(4, 3) * Degrees, 0.0001);
    const RouteElement last = LastElement(Record(1, 10, 20), Record(1, 10, 5));
    EXPECT_EQ(last.Direction, 270);
    EXPECT_EQ(last.Radius, 15);
}

TEST_F(ElementsOfRoutes, ArcIsEnteredAndLeftAtARightAngleToItsRadius)
{
    const Route left = Arc({100, 50}, 10, 300, 30, true);
    const RouteElement in = FirstElement(left[0], left[1]);
    EXPECT_EQ(in.Shape, ElementShape::Arc);
    EXPECT_EQ(in.Sense, 1);
    EXPECT_EQ(in.Direction, 30);
    EXPECT_EQ(in.StartAngle, 300);
    EXPECT_NEAR(in.Radius, 10, 1e-5);
    EXPECT_EQ(in.Centre.X, 100);
    EXPECT_EQ(in.Centre.Y, 50);
    EXPECT_EQ(LastElement(left[0], left[1]).Direction, 120);
    const Route right = Arc({100, 50}, 10, 30, 300, false);
    EXPECT_EQ(FirstElement(right[0], right[1]).Direction, 300);
    EXPECT_EQ(LastElement(right[0], right[1]).Direction, 210);
    EXPECT_EQ(LastElement(right[0], right[1]).Sense, -1);
}

// A drawing's arc may have ends at unequal distances; each end has its own radius.
TEST_F(ElementsOfRoutes, RadiusOfAnArcIsThatOfTheEndAskedFor)
{
    const RouteSegment from = Record(-3, 110, 50, 100, 50), to = Record(3, 100, 62, 0, 90, -1);
    EXPECT_EQ(FirstElement(from, to).Radius, 10);
    EXPECT_EQ(LastElement(from, to).Radius, 12);
}

TEST_F(ElementsOfRoutes, AngleBeyondATurnIsTurnedBack)
{
    EXPECT_EQ(FirstElement(Record(-3, 110, 50, 100, 50), Record(3, 110, 50, 720, 360)).Direction, 270);
    EXPECT_EQ(FirstElement(Record(-3, 110, 50, 100, 50), Record(3, 110, 50, -450, 0, -1)).Direction, 0);
}

TEST_F(ElementsOfRoutes, HalfCircleBulge)
{
    const RouteElement in = FirstElement(Record(-5, 0, 0, -1, 1), Record(5, 20, 0));
    EXPECT_EQ(in.Shape, ElementShape::Bulge);
    EXPECT_EQ(in.Sense, 1);
    EXPECT_NEAR(in.Radius, 10, 1e-9);
    EXPECT_NEAR(in.ArcLength, 31.4159, 0.0001);
    EXPECT_NEAR(in.Direction, 270, 0.0001);
    EXPECT_NEAR(LastElement(Record(5, 0, 0, -1, 1), Record(5, 20, 0)).Direction, 90, 0.0001);
}

// A sixth of a circle to the right: tangents 30 degrees off the chord.
TEST_F(ElementsOfRoutes, FlatBulgeToTheRight)
{
    const double bulge = -std::tan(15 / Degrees);
    const RouteSegment from = Record(-5, 0, 0, -1, bulge), to = Record(5, 0, 10);
    const RouteElement in = FirstElement(from, to);
    EXPECT_EQ(in.Sense, -1);
    EXPECT_NEAR(in.Radius, 10, 1e-5);
    EXPECT_NEAR(in.ArcLength, 10 * 60 / Degrees, 1e-4);
    EXPECT_NEAR(in.Direction, 120, 0.0001);
    EXPECT_NEAR(LastElement(from, to).Direction, 60, 0.0001);
}

// 270 degrees: the radius is not that of the 90 degrees over the same chord mirrored, nor is the way.
TEST_F(ElementsOfRoutes, BulgeOfMoreThanAHalfCircleGoesTheLongWay)
{
    const double bulge = std::tan(67.5 / Degrees);
    const RouteSegment from = Record(-5, 10, 0, -1, bulge), to = Record(5, 0, -10);
    const RouteElement in = FirstElement(from, to);
    EXPECT_NEAR(in.Radius, 10, 1e-5);
    EXPECT_NEAR(in.ArcLength, 10 * 270 / Degrees, 1e-4);
    EXPECT_NEAR(in.Direction, 90, 0.0002);
    EXPECT_NEAR(std::remainder(LastElement(from, to).Direction, 360), 0, 0.0002);
}

TEST_F(ElementsOfRoutes, BulgeNeedsTwoVerticesThatDiffer)
{
    EXPECT_EQ(FirstElement(Record(-5, 5, 5, -1, 1), Record(5, 5, 5)).Shape, ElementShape::Line);
    EXPECT_EQ(FirstElement(Record(-5, 5, 5, -1, 1), Record(5, 5, 6)).Shape, ElementShape::Bulge);
    EXPECT_EQ(FirstElement(Record(-5, 5, 5, -1, 1), Record(5, 6, 5)).Shape, ElementShape::Bulge);
    EXPECT_EQ(FirstElement(Record(-5, 5, 5, -1, 1), Record(1, 5, 6)).Shape, ElementShape::Line);
    EXPECT_EQ(FirstElement(Record(-1, 5, 5, -1, 1), Record(5, 5, 6)).Shape, ElementShape::Line);
    EXPECT_EQ(FirstElement(Record(-5, 5, 5, 30, 0), Record(5, 5, 6)).Shape, ElementShape::Line);
}

// The widths of a tapered start are no bulge.
TEST_F(ElementsOfRoutes, TaperedStartIsALine)
{
    EXPECT_EQ(FirstElement(Record(-4, 5, 5, 2, 3), Record(5, 5, 6)).Shape, ElementShape::Line);
    EXPECT_EQ(FirstElement(Record(-4, 5, 5, 2, 3), Record(4, 5, 6)).Shape, ElementShape::Line);
}

TEST_F(ElementsOfRoutes, ArcNeedsBothOfItsRecords)
{
    EXPECT_EQ(FirstElement(Record(-3, 5, 5, 5, 8), Record(-1, 5, 5)).Shape, ElementShape::Line);
    EXPECT_EQ(LastElement(Record(-1, 5, 5), Record(3, 5, 6, 0, 90)).Shape, ElementShape::Line);
    EXPECT_EQ(LastElement(Record(3, 5, 5), Record(3, 5, 6, 0, 90)).Shape, ElementShape::Line);
}

TEST_F(ElementsOfRoutes, NoElementHasAValueThatIsNoNumber)
{
    const double large = 3e38, small = 1e-45;
    std::vector<Route> pairs = {{Record(-1, 5, 5), Record(1, 5, 5)},
                                {Record(-3, 5, 5, 5, 5), Record(3, 5, 5)},
                                {Record(-3, 5, 5, 5, 5), Record(3, 5, 5, large, -large)},
                                {Record(-5, 5, 5, -1, large), Record(5, 5, 6)},
                                {Record(-5, 5, 5, -1, small), Record(5, 5, 6)},
                                {Record(-5, 0, 0, -1, small), Record(5, 0, small)},
                                {Record(-5, -large, 0, -1, -large), Record(5, large, 0)}};
    for (const Route& pair : pairs)
        for (const RouteElement& e : {FirstElement(pair[0], pair[1]), LastElement(pair[0], pair[1])}) {
            EXPECT_TRUE(std::isfinite(e.Direction) && std::isfinite(e.Radius) && std::isfinite(e.ArcLength))
                << TextOf(pair);
            EXPECT_TRUE(e.Direction >= 0 && e.Direction < 360) << TextOf(pair);
            EXPECT_TRUE(e.Shape != ElementShape::Bulge || e.Radius > 0) << TextOf(pair);
        }
}

// The angles that leads are worked out with.
TEST_F(ElementsOfRoutes, NormalizeAngleTakesOneStepOnly)
{
    EXPECT_EQ(NormalizeAngle(725), 365);
    EXPECT_EQ(NormalizeAngle(360), 0);
    EXPECT_EQ(NormalizeAngle(-500), -140);
    EXPECT_EQ(NormalizeAngle(-0.5), 359.5);
    EXPECT_EQ(NormalizeAngle(180), 180);
}

TEST_F(ElementsOfRoutes, AngleBetweenTakesTheShortWay)
{
    EXPECT_EQ(AngleBetween(350, 10), 20);
    EXPECT_EQ(AngleBetween(10, 350), 20);
    EXPECT_EQ(AngleBetween(30, 210), 180);
}

} // namespace
} // namespace kv::lead_test
