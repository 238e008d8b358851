// Texts that people type where a number is wanted.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// Whether Val takes the text to its end; blanks around the number do not count, and neither does a text of
// blanks alone.
bool IsReadToItsEnd(std::string_view text);
// What Val takes the text for, as people write it.
std::string NumberTaken(std::string_view text);

} // namespace kv
