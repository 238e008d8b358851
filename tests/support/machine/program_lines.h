// The lines of a program as its machine gets them.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace kv::test {

// Parted at each LF or CR LF; a last line without one counts, an empty one behind the last does not.
inline std::vector<std::string> LinesOf(std::string_view text)
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

} // namespace kv::test
