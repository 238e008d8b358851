// Where the border of a drawing is wrong, when no panel was found in it.
#pragma once

namespace kv {

// After FindPanel or AnalyseBorder has failed: the ends and outlines that make no rectangle, and what a
// person does not see of them.
void TellBorderFaults();

} // namespace kv
