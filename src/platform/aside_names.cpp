#include "platform/aside_names.h"

#include <charconv>
#include <cstdint>

#include "platform/numbers.h"
#include "platform/text.h"
#include "platform/this_process.h"

namespace kv {

namespace {

constexpr std::string_view Tail = ".tmp";
constexpr std::size_t TagDigits = 8;
constexpr std::string_view HexDigits = "0123456789abcdef";

// Eight hexadecimal digits, the same in all processes of the machine.
const std::string& MachineTag()
{
    static const std::string tag = [] {
        std::uint32_t hash = 2166136261u; // FNV-1a
        for (const char c : MachineIdentity())
            hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
        std::string digits;
        for (std::size_t i = 0; i < TagDigits; ++i, hash >>= 4)
            digits += HexDigits[hash & 0xF];
        return digits;
    }();
    return tag;
}

bool IsWholeNumber(std::string_view text)
{
    constexpr std::size_t most = 18; // digits of a long long
    return !text.empty() && text.size() <= most &&
           text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool IsTag(std::string_view text)
{
    return text.size() == TagDigits && text.find_first_not_of(HexDigits) == std::string_view::npos;
}

long long NumberOf(std::string_view digits)
{
    long long number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

} // namespace

std::string AsideName(unsigned counter)
{
    return std::string(OwnNameHead) + WholeText(ProcessNumber()) + '-' + MachineTag() + '-' +
           WholeText(counter) + std::string(Tail);
}

AsideOwner OwnerOfAside(std::string_view name)
{
    if (!name.starts_with(OwnNameHead) || !name.ends_with(Tail) ||
        name.size() < OwnNameHead.size() + Tail.size())
        return AsideOwner::None;
    name = name.substr(OwnNameHead.size(), name.size() - OwnNameHead.size() - Tail.size());
    const std::string_view process = name.substr(0, name.find('-'));
    const std::string_view count = name.substr(name.rfind('-') + 1); // all of it without a "-"
    if (!IsWholeNumber(process) || !IsWholeNumber(count) || process.size() + count.size() >= name.size())
        return AsideOwner::None;
    const std::string_view between = name.substr(process.size(), name.size() - process.size() - count.size());
    const bool tagged = between.size() == TagDigits + 2 && IsTag(between.substr(1, TagDigits));
    if (between != "-" && !tagged)
        return AsideOwner::None;
    if (tagged && between.substr(1, TagDigits) != MachineTag())
        return AsideOwner::Elsewhere;
    return ProcessRuns(NumberOf(process)) ? AsideOwner::Runs : AsideOwner::Ended;
}

} // namespace kv
