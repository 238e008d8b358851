// The number forms of all machine programs.
#pragma once

#include <string>

#include "platform/numbers.h"

namespace kv {

// Rounds half away from zero, on the exact binary value, to the decimals of the setting for the
// drawing's unit (PrecisionInch or PrecisionMetric), and keeps 32 bits.
Single RoundToPrecision(Single value);
// Plain text of RoundToPrecision: "600", ".5", "-.25", "0". No number or infinite: RunError 6.
std::string FormatCoord(Single value);
// Arc angles: "0.00" for what rounds to nothing, else at most three decimals and always a point: "45.", ".5".
std::string FormatAngle(Single value);
// The last two characters of "0" and the number.
std::string TwoDigits(Long number);

} // namespace kv
