#include "machine/text_lines.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace kv {

std::vector<std::string> LinesOf(std::string_view text)
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string line(text.substr(0, end));
        while (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(std::move(line));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::optional<double> PlainNumber(const std::string& text)
{
    double value = 0;
    const auto result =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::string UnreadLine(std::size_t number, const std::string& text)
{
    return std::to_string(number) + ": " + text;
}

} // namespace kv
