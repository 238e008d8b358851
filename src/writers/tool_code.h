// Tool numbers as programs name them.
#pragma once

#include <string>

#include "platform/numbers.h"

namespace kv {

// After the operator's substitutions.
std::string ToolCode(Long number);

} // namespace kv
