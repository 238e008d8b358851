// Arcs from the forms in which programs give them: each sets the way of a move whose start is known.
#pragma once

#include "machine/steps.h"

namespace kv {

// Around a centre to the angle of the end, in degrees; the same angle again is the full turn.
void TurnToAngle(Move& move, const PathPoint& centre, double endAngle, bool left);
// Around a centre to a place on the circle; the same place again is the full turn. False where the place is
// off the circle, or the circle has no radius.
bool TurnAround(Move& move, const PathPoint& centre, const PathPoint& to, bool left);
// To a place with a radius; below 0 the long way round. False where the chord is longer than the diameter,
// which then is drawn as half a turn, or is nothing.
bool TurnByRadius(Move& move, const PathPoint& to, double radius, bool left);
// Through a place to another. False where the three lie on a line, which then is drawn straight.
bool TurnThrough(Move& move, const PathPoint& middle, const PathPoint& to);

} // namespace kv
