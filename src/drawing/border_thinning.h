// An outline drawn as one polyline that runs along the panel's edges: the panel is cut there already.
#pragma once

#include "platform/numbers.h"

namespace kv {

// Counts a polyline's vertices on the outline, while they are read.
struct EdgeCounts {
    Long X = 0, Y = 0; // on the left or right edge, on the lower or upper edge

    void Add(Single x, Single y);
    bool TellOutline() const; // enough of both for the polyline to be the panel's outline
};

// Drops the steps on the panel's outline from the polyline that fills RouteSegments from `first` to
// its end. Each run of steps that stays becomes a polyline of its own, at the depth of its first record.
void DropStepsOnOutline(Long first);

} // namespace kv
