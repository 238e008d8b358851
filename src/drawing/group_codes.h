// Group codes and numbers of a drawing's lines.
#pragma once

#include <string_view>

namespace kv {

constexpr int OtherGroup = -1;
constexpr int NoNumber = -2;

// A group code is compared as a text without blanks and NUL bytes, so "08" is not group 8 but OtherGroup.
int GroupCode(std::string_view line);
// The rare forms: NUL bytes or blanks within the code, a sign.
int UnusualGroupCode(std::string_view line);
// What nearly all numbers of a drawing are: blanks, a sign, at most 15 digits, a point among them. False
// for any other form.
bool ReadPlainNumber(std::string_view line, double& number);

} // namespace kv
