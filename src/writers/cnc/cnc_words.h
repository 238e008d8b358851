// The words of a program line.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/numbers.h"

namespace kv {

// The words one behind the other. A list is worked out from left to right, the operands of a sum in any
// order; words that remember something or refuse a value must come in the order of the line.
std::string InOrder(std::initializer_list<std::string> words);
// Letter and value, empty for 0.
std::string WholeWord(std::string_view letter, Long value);
std::string PlainWord(std::string_view letter, Single value);
std::string PlaceWords(Single x, Single y); // "X100Y50"
// The speed, remembered where it is above 0; a record without one has no word.
std::string SpeedWord(Int speed);
// Depth text: "12.5", or for 90 and more "=" and the character of that code.
std::string DepthWord(Single depth);
bool IsDepthCode(Single depth);
// "T", group and tool where the tool has a value, else "R54=" and the diameter, by which the control
// picks the tool.
std::string BoreToolWord(std::string_view tool, Int group, Single diameter);

} // namespace kv
