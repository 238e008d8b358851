// Whether a pocket's loops and ways are what a control can compensate. Rounding in a region's tightest places
// may leave a loop that runs twice round itself or a way whose pieces have been turned over: such ways would
// be cut wrong or refused, so they are made anew or the pocket is reported.
#pragma once

#include <vector>

#include "routes/pocket_rings.h"
#include "routes/pocket_ways.h"

namespace kv {

// Each loop turns round once, by a whole turn.
bool TurnOnce(const std::vector<RingLevel>& levels);
// The tool's centre, its radius to the left of each span, gets from span to span: it rolls around outer
// corners, and beside inner ones the spans meet and are not used up.
bool CanBeCompensated(const PocketWay& way, double toolRadius);

} // namespace kv
