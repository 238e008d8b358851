// A panel that is there but may not be the one that was drawn.
#pragma once

namespace kv {

// When border, unit and tolerance are settled.
void TellPanelDoubts();

} // namespace kv
