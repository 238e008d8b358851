// A saw cuts along X or Y and is narrower than most grooves: each groove becomes parallel passes.
#pragma once

namespace kv {

// Grooves to GroovePasses; lines of a pair are joined first. Slanted grooves give no pass.
void ExpandGrooves();

} // namespace kv
