// Group codes and numbers of a drawing's lines. Each line of a drawing comes here, so what nearly all of them
// want stands in the header.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kv {

constexpr int OtherGroup = -1;
constexpr int NoNumber = -2;

// A group code is compared as a text without blanks and NUL bytes, so "08" is not group 8 but OtherGroup.
inline int GroupCode(std::string_view line)
{
    std::size_t at = 0;
    while (at < line.size() && line[at] == ' ')
        ++at;
    const std::size_t first = at;
    int code = 0;
    for (; at < line.size() && line[at] >= '0' && line[at] <= '9'; ++at)
        if (code < 100000) // none that long is kept, whatever its last digits
            code = code * 10 + (line[at] - '0');
    const std::size_t digits = at - first;
    while (at < line.size() && line[at] == ' ')
        ++at;
    if (at != line.size() || digits == 0)
        return NoNumber;
    return digits > 1 && line[first] == '0' ? OtherGroup : code;
}

// Whether the drawing's reader takes anything of the group.
inline bool IsKeptGroup(int code)
{
    switch (code) {
    case 0:
    case 1:
    case 2:
    case 5:
    case 8:
    case 10:
    case 11:
    case 12:
    case 13:
    case 20:
    case 21:
    case 22:
    case 23:
    case 30:
    case 31:
    case 38:
    case 39:
    case 40:
    case 41:
    case 42:
    case 50:
    case 51:
    case 62:
    case 66:
    case 67:
    case 70:
    case 72:
    case 73:
    case 75:
    case 210:
    case 220:
    case 230:
        return true;
    default:
        return false;
    }
}

// The rare forms: NUL bytes or blanks within the code, a sign.
int UnusualGroupCode(std::string_view line);
// What nearly all numbers of a drawing are: blanks, a sign, at most 15 digits, a point among them. False
// for any other form.
inline bool ReadPlainNumber(std::string_view line, double& number)
{
    constexpr double powersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                      1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const char* at = line.data();
    const char* const end = at + line.size();
    while (at < end && *at == ' ')
        ++at;
    const bool isNegative = at < end && *at == '-';
    if (isNegative)
        ++at;
    if (end - at > 16 || at == end)
        return false;
    std::int64_t digits = 0;
    const char* const first = at;
    while (at < end && *at >= '0' && *at <= '9')
        digits = digits * 10 + (*at++ - '0');
    std::ptrdiff_t count = at - first;
    std::ptrdiff_t decimals = 0;
    if (at < end && *at == '.') {
        const char* const point = ++at;
        while (at < end && *at >= '0' && *at <= '9')
            digits = digits * 10 + (*at++ - '0');
        decimals = at - point;
        count += decimals;
    }
    if (at != end || count == 0 || count > 15)
        return false;
    const double magnitude = static_cast<double>(digits) / powersOfTen[decimals];
    number = isNegative && digits != 0 ? -magnitude : magnitude; // "-0" is 0
    return true;
}

} // namespace kv
