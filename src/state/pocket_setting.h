// The setting Pockets, which the drawing's pass and the pockets' ask for.
#pragma once

namespace kv {

// Whether it has its word for any shape.
bool WantsPocketsOfAnyShape();

} // namespace kv
