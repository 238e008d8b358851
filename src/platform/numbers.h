// Numbers as the conversion knows them: 32-bit Singles, 16-bit Ints, 32-bit Longs, the lenient
// reading of a number from a text and the plain text of a number. No locale, no streams.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kv {

using Single = float;
using Int = std::int16_t;
using Long = std::int32_t;

constexpr int MaxIndex = 32767; // highest value of an Int, so the highest index of most arrays

// The number at the head of a text: leading blanks, sign, digits with one point, exponent by E or D
// in either case when digits follow it. No number gives 0; a tab is no blank. A value beyond a
// double is an infinity, which every conversion below refuses.
double Val(std::string_view text);

// Nearest whole number, halves to even. Out of range, or not a number: RunError 6.
Int ToInt(double value);
Long ToLong(double value);

// Rounds to 32 bits. A value that no Single holds: RunError 6.
Single ToSingle(double value);

// Shortest decimal text of at most 7 significant digits: no exponent, no blank, no zero before the
// point, no "-0" (12345.678 gives "12345.68", 0.5 gives ".5"). Infinite or no number: RunError 6.
std::string PlainText(Single value);

// Decimal digits of a whole number, without a leading blank.
std::string WholeText(long long value);

} // namespace kv
