// Letters of any script as the nearest letters of CP1252.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// A letter that CP1252 has is itself; "Ł" is "L", "ж" is "zh". What has no likeness, an ideograph say, is
// "_". Combining marks and letters without a sound are empty.
void AddNearestAnsi(std::string& ansi, char32_t letter);
// False for a letter that CP1252 has.
bool IsForeignLetter(char32_t letter);
// Of a text in UTF-8; bytes that are no UTF-8 are "_".
std::string NearestAnsi(std::string_view utf8);
// The letter as UTF-8.
void AddUtf8(std::string& utf8, char32_t letter);
// Whether the bytes are UTF-8 from end to end.
bool IsUtf8(std::string_view bytes);

} // namespace kv
