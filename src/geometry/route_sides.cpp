#include "geometry/route_sides.h"

namespace kv {

void AssignRouteSides() {}

} // namespace kv
