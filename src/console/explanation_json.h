// An explained drawing as JSON for scripts.
#pragma once

#include <nlohmann/json.hpp>

#include "shell/explanation_views.h"

namespace kv {

nlohmann::ordered_json ExplanationJson(const ExplainedDrawing& drawing);

} // namespace kv
