// Distances of lines and arcs against places that lie close together on them.
#include "geometry/path_spans.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "support/random_rounds.h"

namespace kv {
namespace {

constexpr int Places = 100; // on a span
constexpr double Full = 2 * std::numbers::pi;

// A span as it was made, so that its places need no rule of the code that is tried.
struct DrawnSpan {
    PathSpan Span;
    double Start = 0, Turn = 0; // of an arc, radians

    double Length() const
    {
        return Span.IsArc ? std::fabs(Turn) * Span.Radius
                          : std::hypot(Span.To.X - Span.From.X, Span.To.Y - Span.From.Y);
    }
    PlanePoint At(double share) const
    {
        if (!Span.IsArc)
            return {Span.From.X + share * (Span.To.X - Span.From.X),
                    Span.From.Y + share * (Span.To.Y - Span.From.Y)};
        const double angle = Start + share * Turn;
        return {Span.Centre.X + Span.Radius * std::cos(angle), Span.Centre.Y + Span.Radius * std::sin(angle)};
    }
};

class RandomSpans : public testing::Test {
  protected:
    double Between(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(Engine);
    }
    PlanePoint AnyPlace() { return {Between(-100, 100), Between(-100, 100)}; }

    DrawnSpan AnySpan()
    {
        DrawnSpan drawn;
        if (Between(0, 1) < 0.4) {
            drawn.Span = {AnyPlace(), AnyPlace(), false, false, {}, 0};
            return drawn;
        }
        const bool half = Between(0, 1) < 0.2;
        drawn.Start = Between(0, Full);
        drawn.Turn = (half ? Full / 2 : Between(0.01, Full - 0.01)) * (Between(0, 1) < 0.5 ? 1 : -1);
        drawn.Span.IsArc = true;
        drawn.Span.CounterClockwise = drawn.Turn > 0;
        drawn.Span.Centre = AnyPlace();
        drawn.Span.Radius = Between(1, 80);
        drawn.Span.From = drawn.At(0);
        drawn.Span.To = drawn.At(1);
        return drawn;
    }

    static double FromPlaces(const DrawnSpan& drawn, const PlanePoint& point)
    {
        double nearest = 1e9;
        for (int i = 0; i <= Places; ++i) {
            const PlanePoint at = drawn.At(static_cast<double>(i) / Places);
            nearest = std::min(nearest, std::hypot(at.X - point.X, at.Y - point.Y));
        }
        return nearest;
    }

    std::mt19937 Engine{test::Seed(517)};
};

TEST_F(RandomSpans, NearestPlaceIsNoFurtherThanAnyPlaceOnTheSpan)
{
    for (int round = 0; round < test::Rounds(4000); ++round) {
        const DrawnSpan drawn = AnySpan();
        const PlanePoint point = AnyPlace(), found = NearestOnSpan(drawn.Span, point);
        const double distance = std::hypot(found.X - point.X, found.Y - point.Y);
        const double gap = drawn.Length() / Places; // between two places
        const double nearest = FromPlaces(drawn, point);
        ASSERT_LE(distance, nearest + 1e-9) << test::RoundName(round);
        ASSERT_GE(distance, nearest - gap / 2 - 1e-9) << test::RoundName(round);
        ASSERT_LE(FromPlaces(drawn, found), gap / 2 + 1e-9) << test::RoundName(round);
    }
}

TEST_F(RandomSpans, DistanceOfTwoSpansIsThatOfTheirNearestPlaces)
{
    int crossing = 0, apart = 0;
    for (int round = 0; round < test::Rounds(400); ++round) {
        const DrawnSpan a = AnySpan(), b = AnySpan();
        double nearest = 1e9;
        for (int i = 0; i <= Places; ++i)
            nearest = std::min(nearest, FromPlaces(b, a.At(static_cast<double>(i) / Places)));
        const double distance = DistanceBetween(a.Span, b.Span);
        ASSERT_EQ(distance, DistanceBetween(b.Span, a.Span)) << test::RoundName(round);
        ASSERT_LE(distance, nearest + 1e-9) << test::RoundName(round);
        ASSERT_GE(distance, nearest - (a.Length() + b.Length()) / Places) << test::RoundName(round);
        ++(distance == 0 ? crossing : apart);
    }
    EXPECT_GT(crossing, 50);
    EXPECT_GT(apart, 50);
}

TEST(PathSpans, ArcWithoutLengthFacesItsOwnPlaceAlone)
{
    const PathSpan arc{{10, 0}, {10, 0}, true, true, {0, 0}, 10};
    EXPECT_EQ(NearestOnSpan(arc, {-20, 0}).X, 10);
    EXPECT_EQ(NearestOnSpan(arc, {0, 20}).X, 10);
    EXPECT_EQ(NearestOnSpan(arc, {20, 0}).X, 10);
}

} // namespace
} // namespace kv
