// Reads route records as a machine would run them: the moves between them, each with its directions and
// circle, worked out from the points alone. A break in the path, a bad arc or no number is a failure
// where it is read.
#pragma once

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "routes/lead_routes.h"

namespace kv::lead_test {

constexpr double TruePi = 3.14159265358979323846;

struct Move {
    PlanePoint From, To;
    bool Arc = false;
    PlanePoint Centre;
    double Radius = 0; // of a line its length
    int Sense = 0;
    double Sweep = 0;                            // degrees
    double StartDirection = 0, EndDirection = 0; // degrees
};

inline double DirectionOf(const PlanePoint& p, const PlanePoint& q)
{
    return std::atan2(q.Y - p.Y, q.X - p.X) * 180 / TruePi;
}

// The angle from a to b, -180 to 180.
inline double Between(double a, double b)
{
    return std::remainder(b - a, 360);
}

inline double Left(double angle) // 0 to below 360
{
    const double turned = std::fmod(angle, 360);
    return turned < 0 ? turned + 360 : turned;
}

inline Move LineMove(const PlanePoint& p, const PlanePoint& q)
{
    Move move;
    move.From = p;
    move.To = q;
    move.Radius = std::hypot(q.X - p.X, q.Y - p.Y);
    move.StartDirection = move.EndDirection = DirectionOf(p, q);
    return move;
}

inline Move CircleMove(const PlanePoint& p, const PlanePoint& q, const PlanePoint& centre, int sense)
{
    Move move;
    move.From = p;
    move.To = q;
    move.Arc = true;
    move.Centre = centre;
    move.Sense = sense;
    move.Radius = std::hypot(p.X - centre.X, p.Y - centre.Y);
    const double from = DirectionOf(centre, p), to = DirectionOf(centre, q);
    move.Sweep = Left(sense * (to - from));
    if (p.X == q.X && p.Y == q.Y)
        move.Sweep = 360;
    move.StartDirection = from + 90 * sense;
    move.EndDirection = to + 90 * sense;
    return move;
}

// The centre lies on the chord's normal, (1 - b b) / 4b of the chord from its middle.
inline Move BulgeMove(const PlanePoint& p, const PlanePoint& q, double b)
{
    const double k = (1 - b * b) / (4 * b);
    const PlanePoint centre{(p.X + q.X) / 2 - k * (q.Y - p.Y), (p.Y + q.Y) / 2 + k * (q.X - p.X)};
    return CircleMove(p, q, centre, b > 0 ? 1 : -1);
}

inline std::vector<Move> MovesOf(const Route& route)
{
    std::vector<Move> moves;
    const auto at = [](const RouteSegment& r) { return PlanePoint{r.X, r.Y}; };
    for (std::size_t i = 0; i < route.size(); ++i) {
        const RouteSegment& r = route[i];
        for (double value : {r.X, r.Y, r.Z, r.Aux1, r.Aux2})
            EXPECT_TRUE(std::isfinite(value)) << TextOf(r);
        EXPECT_EQ(r.Dir == -8, i == 0) << "record " << i + 1;
        if (r.Kind < 0) {
            if (i > 0) {
                EXPECT_TRUE(r.X == route[i - 1].X && r.Y == route[i - 1].Y)
                    << "a break in front of record " << i + 1;
            }
            continue;
        }
        if (i == 0) {
            ADD_FAILURE() << "a route does not start with a point of its way";
            continue;
        }
        const RouteSegment& before = route[i - 1];
        if (r.Kind == 3) {
            EXPECT_EQ(before.Kind, -3);
            const Move arc = CircleMove(at(before), at(r), {before.Aux1, before.Aux2}, r.Dir != 0 ? 1 : -1);
            const double endRadius = std::hypot(arc.To.X - arc.Centre.X, arc.To.Y - arc.Centre.Y);
            EXPECT_NEAR(arc.Radius, endRadius, 0.01);
            EXPECT_GT(arc.Radius, 0.01);
            EXPECT_NEAR(Between(DirectionOf(arc.Centre, arc.From), r.Aux1), 0, 0.05);
            EXPECT_NEAR(Between(DirectionOf(arc.Centre, arc.To), r.Aux2), 0, 0.05);
            moves.push_back(arc);
        } else if (before.Aux2 == 0) {
            moves.push_back(LineMove(at(before), at(r)));
        } else {
            EXPECT_NE(before.Kind, 3) << "an end angle is read as a bulge";
            moves.push_back(BulgeMove(at(before), at(r), before.Aux2));
        }
    }
    return moves;
}

} // namespace kv::lead_test
