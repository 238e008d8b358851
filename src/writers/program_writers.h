// Chooses the writers of a drawing and holds what outlives it.
#pragma once

namespace kv {

// Mirrors the records to the corner of the machine's origin.
void ApplyMachineOrigin();
// HBD first, since it takes bores away from the others, then the writer of the control.
void RunProgramWriters();
// The writers' working variables as at program start.
void ResetWriters();

} // namespace kv
