#include "machine/text_lines.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace kv {

namespace {

constexpr std::string_view ByteMark = "\xEF\xBB\xBF";

// Of the end that the rest begins with. Programs that add a CR to each LF make CR CR LF of an end that had
// one; more than a few CRs are lines that end in a CR alone.
std::size_t EndLength(std::string_view rest)
{
    constexpr std::size_t mostReturns = 8;
    const std::size_t other = rest.substr(0, mostReturns + 1).find_first_not_of('\r');
    return other != std::string_view::npos && rest[other] == '\n' ? other + 1 : 1;
}

} // namespace

LineWalk::LineWalk(std::string_view text) : Rest(text)
{
    if (Rest.starts_with(ByteMark))
        Rest.remove_prefix(ByteMark.size());
}

bool LineWalk::Next()
{
    if (Parted != nullptr) {
        if (Count == Parted->size())
            return false;
        Current = (*Parted)[Count++];
        return true;
    }
    if (Rest.empty())
        return false;
    std::size_t end = 0;
    while (end < Rest.size() && Rest[end] != '\n' && Rest[end] != '\r')
        ++end;
    Current = Rest.substr(0, end);
    Rest.remove_prefix(end);
    Rest.remove_prefix(std::min(EndLength(Rest), Rest.size()));
    ++Count;
    return true;
}

std::vector<std::string> LinesOf(std::string_view text)
{
    std::vector<std::string> lines;
    LineWalk walk(text);
    while (walk.Next())
        lines.emplace_back(walk.Line());
    return lines;
}

std::optional<double> PlainNumber(std::string_view text, double largest)
{
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    double value = 0;
    const auto result =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size() ||
        !(std::fabs(value) <= largest)) // what is no number compares false
        return std::nullopt;
    return value;
}

bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool IsDecimalDigit(char c)
{
    return c >= '0' && c <= '9';
}

char CapitalOf(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string CapitalsOf(std::string_view text)
{
    std::string capitals(text);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(), CapitalOf);
    return capitals;
}

bool SameLetters(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return CapitalOf(x) == CapitalOf(y); });
}

std::string_view WithoutBlanksAround(std::string_view text)
{
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string HeadOfLine(std::string_view line, std::size_t most)
{
    std::string head;
    for (std::size_t i = 0; i < line.size() && head.size() < most; ++i)
        if (!IsBlank(line[i]))
            head += CapitalOf(line[i]);
    return head;
}

std::string UnreadLine(std::size_t number, std::string_view text)
{
    return std::to_string(number) + ": " + std::string(text.substr(0, LongestProgramLine));
}

} // namespace kv
