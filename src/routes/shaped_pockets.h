// Pockets of any shape, cleared by true insets of their outlines, islands left standing.
#pragma once

#include "routes/pocket_list.h"

namespace kv {

// The setting Pockets: "any". Anything but that and "told" is reported.
bool ClearsAnyShape();
// The route list with its pockets cleared, those of the circle list after the others. What cannot be
// cleared stays a plain route and is reported.
PocketList ClearAnyShapes(ChainSpan drawn);

} // namespace kv
