// The number forms of all machine programs. Relies on Run.DrawingInInch and the precision settings;
// keeps nothing. A rounding here looks at the exact binary value, half away from zero: .125 gives
// .13, while the Single nearest to 2.675 lies below it and gives 2.67.
#include "writers/number_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "platform/run_error.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr int MostDecimals = 149; // no Single has more
constexpr int MostDigits = 39;    // before the point
constexpr std::size_t AngleDecimals = 3;
constexpr double WholeFrom = 16777216.0; // 2^24: from here on every Single is a whole number

// 24 bits of a Single times these stay below 2^53 for values under WholeFrom: exact in a double.
constexpr std::array<double, 9> ExactPowersOfTen = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};

void CheckFinite(Single value)
{
    if (!std::isfinite(value))
        throw RunError{ErrorOverflow, "A coordinate of the program is no finite number"};
}

int DecimalsOfDrawing()
{
    const double wanted = Val(Run.DrawingInInch != 0 ? Config.PrecisionInch : Config.PrecisionMetric);
    return static_cast<int>(std::clamp(wanted, 0.0, static_cast<double>(MostDecimals)));
}

void AddOne(std::string& digits)
{
    for (std::size_t i = digits.size(); i > 0; --i) {
        if (digits[i - 1] != '9') {
            ++digits[i - 1];
            return;
        }
        digits[i - 1] = '0';
    }
    digits.insert(digits.begin(), '1');
}

// By all the digits that the value has; for many decimals and for big values.
std::string ScaledDigitsInFull(double magnitude, std::size_t decimals)
{
    std::array<char, MostDigits + 1 + MostDecimals> text{};
    const std::to_chars_result result = std::to_chars(text.data(), text.data() + text.size(), magnitude,
                                                      std::chars_format::fixed, MostDecimals);
    std::string digits(text.data(), result.ptr);
    const std::size_t point = digits.find('.');
    digits.erase(point, 1);
    const std::size_t kept = point + decimals;
    const bool up = kept < digits.size() && digits[kept] >= '5';
    digits.resize(kept);
    if (up)
        AddOne(digits);
    return digits;
}

// The digits of magnitude times 10 to the power `decimals`, rounded half up; zeros may lead.
std::string ScaledDigits(double magnitude, std::size_t decimals)
{
    if (magnitude >= WholeFrom || decimals >= ExactPowersOfTen.size())
        return ScaledDigitsInFull(magnitude, decimals);
    const double scaled = magnitude * ExactPowersOfTen[decimals];
    const double whole = std::floor(scaled);
    return WholeText(static_cast<long long>(whole) + (scaled - whole >= 0.5 ? 1 : 0));
}

} // namespace

Single RoundToPrecision(Single value)
{
    CheckFinite(value);
    const double magnitude = std::fabs(static_cast<double>(value));
    if (magnitude >= WholeFrom)
        return value;
    const int decimals = DecimalsOfDrawing();
    const std::string text =
        ScaledDigits(magnitude, static_cast<std::size_t>(decimals)) + "e-" + WholeText(decimals);
    Single rounded = 0;
    std::from_chars(text.data(), text.data() + text.size(), rounded);
    return value < 0 && rounded != 0 ? -rounded : rounded;
}

std::string FormatCoord(Single value)
{
    return PlainText(RoundToPrecision(value));
}

std::string FormatAngle(Single value)
{
    CheckFinite(value);
    std::string digits = ScaledDigits(std::fabs(static_cast<double>(value)), AngleDecimals);
    if (digits.find_first_not_of('0') == std::string::npos)
        return "0.00"; // a lone point is no number to a control
    if (digits.size() < AngleDecimals)
        digits.insert(0, AngleDecimals - digits.size(), '0');
    const std::size_t point = digits.size() - AngleDecimals;
    std::string text = digits.substr(0, point) + '.' + digits.substr(point);
    text.erase(text.find_last_not_of('0') + 1);
    text.erase(0, text.find_first_not_of('0'));
    return value < 0 ? '-' + text : text;
}

std::string TwoDigits(Long number)
{
    const std::string text = "0" + WholeText(number);
    return text.substr(text.size() - 2);
}

} // namespace kv
