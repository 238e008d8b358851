// The names by which the processes of one installation find each other. A hash, since the folder itself
// may be longer than a name can be and holds characters that a name cannot.
#include "platform/instance.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "platform/file_lock.h"
#include "platform/paths.h"
#include "platform/text.h"

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

std::string InstanceFile(std::string_view folder)
{
    return WithBackslash(folder) + "KORVANTI";
}

// A holder is said to be the same program by what it wrote of itself, but for its process number.
InstanceAnswer HeldBy(const std::string& holder)
{
    constexpr std::string_view number = "0123456789";
    const auto withoutNumber = [number](std::string_view text) {
        const std::size_t first = text.find_first_of(number, text.find(", process "));
        if (first == std::string_view::npos)
            return std::string(text);
        const std::size_t end = std::min(text.find_first_not_of(number, first), text.size());
        return std::string(text.substr(0, first)).append(text.substr(end));
    };
    const std::string own = HolderOf(LockHolderText());
    return {false, holder, withoutNumber(holder) == withoutNumber(own)};
}

} // namespace kv
