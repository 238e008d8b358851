// Numbers: the lenient reader of numbers, the checked conversions and the plain text of a Single.
// Relies on the exact conversions of the standard library; no locale has a say in them.
// Val is the busiest function of a big drawing: short decimals are put together by hand, which is
// exact as long as the digits fit 53 bits and the power of ten is exact too.
#include "platform/numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>

#include "platform/run_error.h"

namespace kv {

namespace {

constexpr std::array<double, 20> ExactPowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,
                                                     1e7,  1e8,  1e9,  1e10, 1e11, 1e12, 1e13,
                                                     1e14, 1e15, 1e16, 1e17, 1e18, 1e19};
constexpr std::ptrdiff_t DigitsOfWord = 19;                          // always fit 64 bits
constexpr std::uint64_t ExactMantissaLimit = std::uint64_t{1} << 53; // whole numbers of a double
constexpr int ExponentLimit = 100'000'000;                           // far beyond any double

// The first double that rounds to no Single any more.
constexpr double SingleLimit = 0x1.ffffffp+127;

// What has to be known of a number that goes to the library.
struct Decimal {
    int Digits = 0;      // from the first one that is not 0
    int Exponent = 0;    // power of ten of the last digit
    std::size_t End = 0; // behind the last character of the number
    std::size_t ExponentAt = std::string_view::npos;
};

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsExponentLetter(char c)
{
    return c == 'E' || c == 'e' || c == 'D' || c == 'd';
}

Decimal ScanMantissa(std::string_view text)
{
    Decimal number;
    bool behindPoint = false;
    std::size_t at = 0;
    for (; at < text.size() && (IsDigit(text[at]) || (text[at] == '.' && !behindPoint)); ++at) {
        if (text[at] == '.') {
            behindPoint = true;
            continue;
        }
        if (behindPoint)
            --number.Exponent;
        if (text[at] != '0' || number.Digits > 0)
            ++number.Digits;
    }
    number.End = at;
    return number;
}

// An exponent counts only with a digit behind its letter and sign.
void ScanExponent(std::string_view text, Decimal& number)
{
    std::size_t at = number.End;
    if (at >= text.size() || !IsExponentLetter(text[at]))
        return;
    ++at;
    bool negative = false;
    if (at < text.size() && (text[at] == '+' || text[at] == '-'))
        negative = text[at++] == '-';
    if (at >= text.size() || !IsDigit(text[at]))
        return;
    int power = 0;
    for (; at < text.size() && IsDigit(text[at]); ++at) {
        if (power < ExponentLimit)
            power = power * 10 + (text[at] - '0');
    }
    number.ExponentAt = number.End;
    number.End = at;
    number.Exponent += negative ? -power : power;
}

// Any number behind its sign, exactly rounded.
double ReadAnyNumber(std::string_view text)
{
    Decimal number = ScanMantissa(text);
    if (number.Digits == 0)
        return 0;
    ScanExponent(text, number);
    std::string clean(text.substr(0, number.End));
    if (number.ExponentAt != std::string_view::npos)
        clean[number.ExponentAt] = 'e'; // the library knows no D
    double value = 0;
    const std::from_chars_result result = std::from_chars(clean.data(), clean.data() + clean.size(), value);
    if (result.ec == std::errc())
        return value;
    // Out of range either way; the place of the leading digit tells which.
    return number.Exponent + number.Digits > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

[[noreturn]] void ThrowOutOfRange(double value, std::string_view kind)
{
    std::array<char, 32> digits{};
    const std::to_chars_result result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    throw RunError{ErrorOverflow, "the number " + std::string(digits.data(), result.ptr) +
                                      " does not fit into " + std::string(kind)};
}

} // namespace

double Val(std::string_view text)
{
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end && *at == ' ')
        ++at;
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+'))
        ++at;
    const char* const start = at;

    // Digits that fit a word; leading zeros count along, which costs a long text the slow way.
    std::uint64_t mantissa = 0;
    while (at != end && IsDigit(*at))
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*at++ - '0');
    std::ptrdiff_t digits = at - start, decimals = 0;
    if (at != end && *at == '.') {
        const char* const point = at++;
        while (at != end && IsDigit(*at))
            mantissa = mantissa * 10 + static_cast<std::uint64_t>(*at++ - '0');
        decimals = at - point - 1;
        digits += decimals;
    }
    if (digits == 0)
        return 0;
    double value = 0;
    if (digits <= DigitsOfWord && mantissa < ExactMantissaLimit && (at == end || !IsExponentLetter(*at)))
        value = static_cast<double>(mantissa) / ExactPowersOfTen[static_cast<std::size_t>(decimals)];
    else
        value = ReadAnyNumber({start, static_cast<std::size_t>(end - start)});
    return negative && value != 0 ? -value : value; // "-0" too is 0: its sign would turn an arctangent
}

Int ToInt(double value)
{
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<Int>::min() && rounded <= std::numeric_limits<Int>::max()))
        ThrowOutOfRange(value, "16 bits");
    return static_cast<Int>(rounded);
}

Long ToLong(double value)
{
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<Long>::min() && rounded <= std::numeric_limits<Long>::max()))
        ThrowOutOfRange(value, "32 bits");
    return static_cast<Long>(rounded);
}

Single ToSingle(double value)
{
    if (!(std::fabs(value) < SingleLimit))
        ThrowOutOfRange(value, "a 32-bit coordinate");
    return static_cast<Single>(value);
}

std::string PlainText(Single value)
{
    if (!std::isfinite(value))
        ThrowOutOfRange(static_cast<double>(value), "a text");
    if (value == 0)
        return "0";
    constexpr int Decimals = 6;  // behind the first digit: 7 significant digits in all
    std::array<char, 32> form{}; // "d.dddddde-dd"
    const std::to_chars_result result =
        std::to_chars(form.data(), form.data() + form.size(), std::fabs(static_cast<double>(value)),
                      std::chars_format::scientific, Decimals);
    const char* const letter = form.data() + 2 + Decimals;
    int exponent = 0;
    std::from_chars(letter[1] == '+' ? letter + 2 : letter + 1, result.ptr, exponent);

    std::string digits(1, form[0]);
    digits.append(form.data() + 2, Decimals);
    digits.erase(digits.find_last_not_of('0') + 1);

    std::string text = value < 0 ? "-" : "";
    if (exponent < 0)
        return text + '.' + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    const std::size_t whole = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= whole)
        return text + digits + std::string(whole - digits.size(), '0');
    return text + digits.substr(0, whole) + '.' + digits.substr(whole);
}

std::string WholeText(long long value)
{
    std::array<char, 24> digits{};
    const std::to_chars_result result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return {digits.data(), result.ptr};
}

} // namespace kv
