// The pump of the window: called for every group pair of a drawing, and often it has nothing to do.
#pragma once

namespace kv {

// Lets the window's events run when it is time. `before` runs first then.
void PumpEvents(void (*before)());

} // namespace kv
