// Angles: known values, the last bit against a wider type, symmetry, and arguments that are no angle.
#include "platform/trigonometry.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include <gtest/gtest.h>

#include "support/random_rounds.h"

namespace kv {
namespace {

constexpr double Pi = std::numbers::pi;
constexpr double Infinite = std::numeric_limits<double>::infinity();

// In units of the last place of a double of that size.
double DigitsOff(double got, long double exact)
{
    const double size = std::fabs(static_cast<double>(exact));
    return static_cast<double>(std::fabs(got - exact) / (std::nextafter(size, Infinite) - size));
}

TEST(Trigonometry, ValuesThatAreKnown)
{
    EXPECT_EQ(Sine(0), 0);
    EXPECT_EQ(Cosine(0), 1);
    EXPECT_EQ(Sine(Pi / 2), 1);
    EXPECT_EQ(Cosine(Pi), -1);
    EXPECT_EQ(Sine(-Pi / 2), -1);
    EXPECT_EQ(Tangent(0), 0);
    EXPECT_EQ(ArcTangent(0), 0);
    EXPECT_EQ(ArcTangent(1), Pi / 4);
    EXPECT_EQ(ArcTangent(-1), -Pi / 4);
    // What a double lacks of Pi is what its sine leaves.
    EXPECT_EQ(Sine(Pi), 0x1.1a62633145c07p-53);
    EXPECT_EQ(Cosine(Pi / 2), 0x1.1a62633145c07p-54);
}

TEST(Trigonometry, TheLastBitIsRight)
{
    constexpr double HalfAUnit = 0.502;  // and what the wider type itself may miss
    constexpr double FarFromZero = 0.02; // near a zero the wider type may be no better
    std::mt19937_64 numbers(test::Seed(4711));
    std::uniform_real_distribution<double> spread(-1, 1);
    for (int i = 0; i < test::Rounds(100'000); ++i) {
        const double angle = spread(numbers) * (i % 2 == 0 ? 1.6 : 13);
        const long double wide = angle;
        if (std::fabs(std::sin(angle)) > FarFromZero) {
            ASSERT_LE(DigitsOff(Sine(angle), std::sin(wide)), HalfAUnit)
                << angle << ", " << test::RoundName(i);
        }
        if (std::fabs(std::cos(angle)) > FarFromZero) {
            ASSERT_LE(DigitsOff(Cosine(angle), std::cos(wide)), HalfAUnit)
                << angle << ", " << test::RoundName(i);
        }
        if (std::fabs(std::sin(2 * angle)) > FarFromZero) {
            ASSERT_LE(DigitsOff(Tangent(angle), std::tan(wide)), HalfAUnit)
                << angle << ", " << test::RoundName(i);
        }
        const double slope = i % 3 == 0 ? 1 / angle : angle;
        ASSERT_LE(DigitsOff(ArcTangent(slope), std::atan(static_cast<long double>(slope))), HalfAUnit)
            << slope << ", " << test::RoundName(i);
    }
}

TEST(Trigonometry, SmallArgumentsAreTheirOwnValue)
{
    for (const double small : {1e-9, -1e-9, 1e-300, std::numeric_limits<double>::denorm_min()}) {
        EXPECT_EQ(Sine(small), small);
        EXPECT_EQ(Tangent(small), small);
        EXPECT_EQ(ArcTangent(small), small);
        EXPECT_EQ(Cosine(small), 1);
    }
}

TEST(Trigonometry, AMirroredArgumentGivesTheMirroredValue)
{
    for (double x = 0.0009765625; x < 2000; x *= 1.37) {
        EXPECT_EQ(Sine(-x), -Sine(x));
        EXPECT_EQ(Cosine(-x), Cosine(x));
        EXPECT_EQ(Tangent(-x), -Tangent(x));
        EXPECT_EQ(ArcTangent(-x), -ArcTangent(x));
    }
}

TEST(Trigonometry, SteepSlopesEndAtTheQuarterTurn)
{
    EXPECT_EQ(ArcTangent(1e300), Pi / 2);
    EXPECT_EQ(ArcTangent(-Infinite), -Pi / 2);
    EXPECT_LT(ArcTangent(1e15), Pi / 2);
}

TEST(Trigonometry, ArgumentsBeyondAnyTurnStayWithinOne)
{
    for (const double far : {1e6, 1.00001e6, 1e12, 1e300}) {
        EXPECT_LE(std::fabs(Sine(far)), 1) << far;
        EXPECT_NEAR(Sine(far) * Sine(far) + Cosine(far) * Cosine(far), 1, 1e-15) << far;
    }
}

TEST(Trigonometry, WhatIsNoNumberStaysNone)
{
    EXPECT_TRUE(std::isnan(Sine(Infinite)));
    EXPECT_TRUE(std::isnan(Cosine(std::nan(""))));
    EXPECT_TRUE(std::isnan(Tangent(-Infinite)));
    EXPECT_TRUE(std::isnan(ArcTangent(std::nan(""))));
}

} // namespace
} // namespace kv
