#include "proof/piece_cover.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kv {
namespace {

Move LinePiece(const PathPoint& from, const PathPoint& to)
{
    Move move;
    move.From = from;
    move.To = to;
    return move;
}

Move ArcPiece(double radius, double from, double sweep)
{
    Move move =
        LinePiece({radius * std::cos(from * Degree), radius * std::sin(from * Degree)},
                  {radius * std::cos((from + sweep) * Degree), radius * std::sin((from + sweep) * Degree)});
    move.IsArc = true;
    move.Sweep = sweep;
    return move;
}

TEST(PieceCover, ALineOnTwoOthersIsWhollyOnThem)
{
    const Move a = LinePiece({60, 0}, {-10, 0}), b = LinePiece({60, 0}, {120, 0});
    EXPECT_TRUE(PartsBeside(LinePiece({0, 0}, {100, 0}), {&a, &b}).empty());
}

TEST(PieceCover, TheGapBetweenThemIsBeside)
{
    const Move a = LinePiece({0, 0}, {40, 0}), b = LinePiece({60, 0}, {100, 0});
    const std::vector<Move> parts = PartsBeside(LinePiece({0, 0}, {100, 0}), {&a, &b});
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_NEAR(parts[0].From.X, 40.03, 1e-9);
    EXPECT_NEAR(parts[0].To.X, 59.97, 1e-9);
}

TEST(PieceCover, ALineThatIsSetAsideOrTurnedIsBeside)
{
    const Move aside = LinePiece({0, 0.05}, {100, 0.05}), turned = LinePiece({0, 0}, {100, 0.1});
    EXPECT_EQ(PartsBeside(LinePiece({0, 0}, {100, 0}), {&aside}).size(), 1u);
    EXPECT_FALSE(PartsBeside(LinePiece({0, 0}, {100, 0}), {&turned}).empty());
}

TEST(PieceCover, AnArcOnACircleOfEitherSenseIsOnIt)
{
    const Move left = ArcPiece(50, 300, 360), right = ArcPiece(50, 10, -360);
    EXPECT_TRUE(PartsBeside(ArcPiece(50, 350, 30), {&left}).empty());
    EXPECT_TRUE(PartsBeside(ArcPiece(50, 350, 30), {&right}).empty());
    EXPECT_TRUE(PartsBeside(ArcPiece(50, 20, -60), {&right}).empty());
}

TEST(PieceCover, AnArcPastTheEndOfAnotherIsBesideThere)
{
    const Move other = ArcPiece(50, 0, 60);
    const std::vector<Move> parts = PartsBeside(ArcPiece(50, 30, 60), {&other});
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_NEAR(parts[0].Sweep, 30, 0.1);
    EXPECT_NEAR(parts[0].To.Y, 50, 1e-9);
}

TEST(PieceCover, APlaceIsOnAWayThatPassesIt)
{
    const Move way = LinePiece({0, 0}, {100, 0});
    EXPECT_TRUE(PartsBeside(LinePiece({50, 0.02}, {50, 0.02}), {&way}).empty());
    EXPECT_EQ(PartsBeside(LinePiece({50, 0.2}, {50, 0.2}), {&way}).size(), 1u);
}

TEST(PieceCover, TheIndexFindsPiecesByPlaneAndPlaceOnceEach)
{
    const std::vector<CutPiece> pieces = {
        {Plane::Surface, LinePiece({0, 0}, {2000, 1000}), 5, 1, 1, 0, false},
        {Plane::Edge1, LinePiece({0, 0}, {100, 0}), 5, 1, 1, 1, false},
        {Plane::Surface, LinePiece({500, 0}, {600, 0}), 5, 1, 1, 2, false}};
    const PieceIndex index(pieces);
    EXPECT_EQ(index.Near(Plane::Surface, {{0, 0}, {2000, 1000}}), (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(index.Near(Plane::Edge1, {{10, 0}, {11, 1}}), (std::vector<std::size_t>{1}));
    EXPECT_TRUE(index.Near(Plane::Edge2, {{10, 0}, {11, 1}}).empty());
}

TEST(PieceCover, APieceOfPlacesBeyondReasonIsNoEndlessWork)
{
    const std::vector<CutPiece> pieces = {
        {Plane::Surface, LinePiece({-1e300, 0}, {1e300, 0}), 5, 1, 1, 0, false}};
    EXPECT_FALSE(PieceIndex(pieces).Near(Plane::Surface, {{-1e300, 0}, {1e300, 1}}).empty());
}

} // namespace
} // namespace kv
