// The area that a tool sweeps, as a region and as plain distances: on random ways, random places lie in
// the region where the way passes them nearer than the tool's radius, and nowhere else.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "support/proof/region.h"
#include "support/random_rounds.h"

namespace kv::test {
namespace {

constexpr double BesideEdge = 0.003; // mm: chords in place of arcs, and the grid

struct RandomWays {
    std::mt19937 Random;

    double Between(double low, double high)
    {
        return low + (high - low) * std::uniform_real_distribution<double>(0, 1)(Random);
    }
    bool Chance(double share) { return Between(0, 1) < share; }

    Move ArcFrom(const PathPoint& from)
    {
        Move move;
        move.IsArc = true;
        move.From = from;
        const double radius = Between(0.2, 40), toCentre = Between(0, 6.283185307179586);
        move.Centre = {from.X + radius * std::cos(toCentre), from.Y + radius * std::sin(toCentre)};
        move.Sweep = Chance(0.1) ? 360 : Between(1, 359);
        move.Sweep *= Chance(0.5) ? 1 : -1;
        const double end = toCentre + 3.141592653589793 + move.Sweep * 3.141592653589793 / 180;
        move.To = {move.Centre.X + radius * std::cos(end), move.Centre.Y + radius * std::sin(end)};
        return move;
    }
    Move LineFrom(const PathPoint& from)
    {
        Move move;
        move.From = from;
        move.To = {from.X + Between(-60, 60), from.Y + Between(-60, 60)};
        return move;
    }
    RouterCut Cut()
    {
        RouterCut cut;
        cut.Radius = Between(0.5, 12);
        cut.Side = static_cast<int>(Between(0, 3)) - 1;
        cut.Start = {Between(0, 200), Between(0, 200)};
        PathPoint at = cut.Start;
        for (int i = static_cast<int>(Between(0, 9)); i > 0; --i) {
            cut.Moves.push_back(Chance(0.4) ? ArcFrom(at) : LineFrom(at));
            at = cut.Moves.back().To;
        }
        return cut;
    }
};

double DistanceFromWay(const ToolWay& way, const PathPoint& place)
{
    double distance = Between(way.Start, place);
    for (const Move& piece : way.Pieces)
        distance = std::min(distance, DistanceFrom(piece, place));
    return distance;
}

TEST(SweptAreaRandom, HoldsThePlacesThatTheToolPassesAndNoOther)
{
    RandomWays ways{std::mt19937(Seed(20))};
    int inside = 0, outside = 0;
    for (int round = 0; round < Rounds(300); ++round) {
        SCOPED_TRACE(RoundName(round));
        const std::vector<ToolWay> all = {WayOf(ways.Cut()), WayOf(ways.Cut())};
        const Region swept = SweptBy(all);
        for (int i = 0; i < 200; ++i) {
            const PathPoint place{ways.Between(-20, 220), ways.Between(-20, 220)};
            const double beyond = std::min(DistanceFromWay(all[0], place) - all[0].Radius,
                                           DistanceFromWay(all[1], place) - all[1].Radius);
            if (std::fabs(beyond) < BesideEdge)
                continue;
            (beyond < 0 ? inside : outside) += 1;
            ASSERT_EQ(Holds(swept, place), beyond < 0) << place.X << " " << place.Y << ", " << beyond;
        }
    }
    EXPECT_GT(inside, 4000);
    EXPECT_GT(outside, 5000);
}

TEST(SweptAreaRandom, EachPieceOfAWayBeginsWhereTheLastOneEnds)
{
    RandomWays ways{std::mt19937(Seed(21))};
    for (int round = 0; round < Rounds(2000); ++round) {
        SCOPED_TRACE(RoundName(round));
        const ToolWay way = WayOf(ways.Cut());
        for (std::size_t i = 1; i < way.Pieces.size(); ++i)
            ASSERT_LT(Between(way.Pieces[i - 1].To, way.Pieces[i].From), 1e-5) << i;
        for (const Move& piece : way.Pieces)
            if (piece.IsArc) {
                const double angle =
                    std::atan2(piece.From.Y - piece.Centre.Y, piece.From.X - piece.Centre.X) +
                    piece.Sweep * 3.141592653589793 / 180;
                const double radius = Between(piece.Centre, piece.From);
                ASSERT_LT(Between(piece.To, {piece.Centre.X + radius * std::cos(angle),
                                             piece.Centre.Y + radius * std::sin(angle)}),
                          1e-5);
            }
    }
}

} // namespace
} // namespace kv::test
