// The directive language under the title POST INSTRUCTIONS: overrides of settings, renames of layers
// and colours, variables, flags, cut list values, operation strings and notes pinned to points.
#pragma once

namespace kv {

// Walks the texts on InstructionLayer, then renames layers, shifts a BORDER that reaches below zero
// and renames by colour. Does nothing without an instruction layer.
void ReadInstructions();

} // namespace kv
