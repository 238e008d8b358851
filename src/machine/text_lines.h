// The lines of a program as its machine gets them, and the numbers in them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

// Parted at each LF, without the CRs in front of it; an empty line after the last LF does not count.
std::vector<std::string> LinesOf(std::string_view text);
// "-12.5", ".5", "45."; a lone point is no number.
std::optional<double> PlainNumber(const std::string& text);
// "7: G4F2", as MachineSteps names a line.
std::string UnreadLine(std::size_t number, const std::string& text);

} // namespace kv
