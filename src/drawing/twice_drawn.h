// Routes and grooves that are drawn twice at one place: the copy lies on the original, and nobody sees it.
#pragma once

namespace kv {

// When the routes are read and before the entities are given back.
void TellDrawnTwice();

} // namespace kv
