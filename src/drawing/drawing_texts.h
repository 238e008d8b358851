// Texts outside the instruction layer: part name, description, shop notes and literal G-code.
#pragma once

#include <string>

namespace kv {

// Takes the TEXT in CurrentEntity by its layer. `partNameRead` is what is reported after the pass.
void TakeDrawingText(std::string& partNameRead);

} // namespace kv
