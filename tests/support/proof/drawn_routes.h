// What a DXF drawing asks of the router, by a small reading of its own: entities of the layers that hold
// ROUT or EXCAV, values from the layer's name. For drawings without seams that instructions drop.
#pragma once

#include <string>

#include "support/proof/asked.h"

namespace kv::test {

// Lengths are the drawing's units, taken for millimetres. `radiusIfUnknown` serves for layers that name
// no radius.
DrawnPanel PanelDrawnIn(const std::string& dxf, double radiusIfUnknown);

} // namespace kv::test
