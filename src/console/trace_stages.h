// The stages of a conversion at which a trace looks, and what it shows there.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "console/record_fields.h"

namespace kv {

// After the writers; only then are their programs worked out.
constexpr std::string_view ProgramsStage = "programs";

// In the order in which a drawing passes them.
const std::vector<std::string>& StageNames();

// The arrays of the stage and the run block as they stand now.
Json ShowStage(std::string_view stage);

} // namespace kv
