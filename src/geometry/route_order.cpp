#include "geometry/route_order.h"

namespace kv {

void OrderRouteChains() {}

} // namespace kv
