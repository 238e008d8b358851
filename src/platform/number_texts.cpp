// The grammar of Val, asked for its end instead of its value. Relies on nothing.
#include "platform/number_texts.h"

#include <cmath>
#include <limits>

#include "platform/numbers.h"
#include "platform/text.h"

namespace kv {

namespace {

bool IsDigitAt(std::string_view text, std::size_t at)
{
    return at < text.size() && text[at] >= '0' && text[at] <= '9';
}

std::size_t PassDigits(std::string_view text, std::size_t at)
{
    while (IsDigitAt(text, at))
        ++at;
    return at;
}

std::size_t PassSign(std::string_view text, std::size_t at)
{
    return at < text.size() && (text[at] == '+' || text[at] == '-') ? at + 1 : at;
}

// A letter without digits behind it is not part of the number.
std::size_t PassExponent(std::string_view text, std::size_t at)
{
    if (at >= text.size() || std::string_view("EeDd").find(text[at]) == std::string_view::npos)
        return at;
    const std::size_t digits = PassSign(text, at + 1);
    return IsDigitAt(text, digits) ? PassDigits(text, digits) : at;
}

} // namespace

bool IsReadToItsEnd(std::string_view text)
{
    text = Trim(text);
    if (text.empty())
        return true;
    const std::size_t first = PassSign(text, 0);
    std::size_t at = PassDigits(text, first);
    std::size_t digits = at - first;
    if (at < text.size() && text[at] == '.') {
        const std::size_t behind = PassDigits(text, at + 1);
        digits += behind - at - 1;
        at = behind;
    }
    return digits > 0 && PassExponent(text, at) == text.size();
}

std::string NumberTaken(std::string_view text)
{
    const double value = Val(text);
    const bool fits = std::fabs(value) < static_cast<double>(std::numeric_limits<Single>::max());
    return fits ? PlainText(ToSingle(value)) : "a number out of range";
}

} // namespace kv
