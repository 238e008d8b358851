// There are no routes to clear pockets from yet.
#include "geometry/pockets.h"

namespace kv {

void ExcavatePockets() {}

} // namespace kv
