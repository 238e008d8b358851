// Layers and kinds of entities as the drawing spells them. The run rewrites the layers and cuts the kinds,
// but a person who reads the report looks for what stands in the drawing.
#pragma once

#include <string>
#include <string_view>

#include "platform/numbers.h"

namespace kv {

// Before a drawing is read.
void ForgetDrawnNames();
// The number of a name, from 1; 0 for an empty one. The same name has the same number.
Long NumberOfName(std::string_view name);
// Empty for 0.
std::string_view NameOfNumber(Long number);

// A rewritten layer comes from the one of that number. Of several the first counts.
void NoteDrawnLayer(std::string_view rewritten, Long number);
// Empty where no layer of the drawing became this one.
std::string_view DrawnLayer(std::string_view rewritten);

} // namespace kv
