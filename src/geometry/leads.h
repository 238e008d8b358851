// Lead-ins, lead-outs and ramps of routes.
#pragma once

namespace kv {

void SynthesizeLeads();

} // namespace kv
