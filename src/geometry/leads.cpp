// There are no routes to lead into yet.
#include "geometry/leads.h"

namespace kv {

void SynthesizeLeads() {}

} // namespace kv
