// Stops of the drill head that no operator would want.
#pragma once

namespace kv {

// When the stops are planned and still count from the drawing's corner.
void TellStopDoubts();

} // namespace kv
