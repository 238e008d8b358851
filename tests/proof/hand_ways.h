// Ways of the router made by hand: each move begins where the one in front ends.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "machine/steps.h"

namespace kv::test::ways {

inline Move LineTo(double x, double y)
{
    Move move;
    move.To = {x, y};
    return move;
}

inline Move ArcTo(double x, double y, const PathPoint& centre, double sweep)
{
    Move move = LineTo(x, y);
    move.IsArc = true;
    move.Centre = centre;
    move.Sweep = sweep;
    return move;
}

inline std::vector<Move> Joined(const PathPoint& start, std::vector<Move> moves)
{
    PathPoint at = start;
    for (std::size_t i = 0; i < moves.size(); ++i) {
        moves[i].From = at;
        moves[i].Line = i + 1;
        at = moves[i].To;
    }
    return moves;
}

inline RouterCut CutOf(int side, double radius, const PathPoint& start, std::vector<Move> moves)
{
    RouterCut cut;
    cut.Side = side;
    cut.Radius = radius;
    cut.Start = start;
    cut.Moves = Joined(start, std::move(moves));
    return cut;
}

} // namespace kv::test::ways
