// The name by which the processes of one installation find each other. A hash, since the folder itself
// may be longer than a name can be and holds characters that a name cannot.
#include "platform/instance.h"

#include <array>
#include <charconv>
#include <cstdint>

namespace kv {

std::string InstanceName(std::string_view folder)
{
    constexpr std::uint64_t Basis = 14695981039346656037U; // FNV-1a, 64 bits
    constexpr std::uint64_t Prime = 1099511628211U;
    std::uint64_t hash = Basis;
    for (const char c : folder)
        hash = (hash ^ static_cast<unsigned char>(c)) * Prime;
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), hash, 16).ptr;
    return "korvanti-" + std::string(digits.data(), end);
}

} // namespace kv
