// Paths that touch become chains; circles whose rim a path meets become part of them.
#pragma once

#include "routes/route_paths.h"

namespace kv {

// Links all paths, in list order; each chain's first entry is its head. The records of joined
// circles stand behind the last one. False when the operator asked to abort.
bool LinkPaths(std::vector<ChainEntry>& paths, std::vector<ChainEntry>& linked);

} // namespace kv
