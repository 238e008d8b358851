// A batch of the unattended mode, from BATCH.LST to PROC.LST.
#pragma once

#include <string>

namespace kv {

// Runs BATCH.LST of the folder of the tick, when it is written to its end. False: the tick ends.
bool RunBatch(const std::string& folder);

} // namespace kv
