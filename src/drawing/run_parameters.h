// Lead length, ramp height, switches and offsets of the run: the settings, and over them what the
// drawing's instructions say. Needs the drawing's unit.
#pragma once

namespace kv {

void SettleRunParameters();

} // namespace kv
