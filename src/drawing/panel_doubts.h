// A panel that is there but may not be the one that was drawn.
#pragma once

namespace kv {

// When border, unit and tolerance are settled.
void TellPanelDoubts();
// Entities that a person does not see and that changed the panel, or kept it from being found.
void TellHiddenOfPanel();

} // namespace kv
