// Stand-ins of names: made from the name alone, remembered by their number.
#include "platform/stand_ins.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <unordered_map>

#include "platform/nearest_letters.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr std::size_t Nowhere = std::string_view::npos;
constexpr char Mark = '~';
constexpr std::size_t NumberDigits = 8;
constexpr std::size_t MostLetters = 24;     // of a stem: a path of many such folders stays short
constexpr std::size_t LongestExtension = 8; // with its point
constexpr std::string_view Digits = "0123456789ABCDEF";

struct RealName {
    std::string Letters; // of the stand-in, CP1252
    std::string Stem;    // the host's bytes
};
std::unordered_multimap<std::uint32_t, RealName> Met; // by the number

std::uint32_t NumberOfStem(std::string_view stem)
{
    std::uint32_t number = 2166136261U; // FNV-1a
    for (const char c : stem)
        number = (number ^ static_cast<unsigned char>(c)) * 16777619U;
    return number;
}

std::string DigitsOf(std::uint32_t number)
{
    std::string digits(NumberDigits, '0');
    for (std::size_t at = NumberDigits; at > 0; number >>= 4)
        digits[--at] = Digits[number & 0xF];
    return digits;
}

// Of the eight digits at that place; false where there are others.
bool ReadStandInNumber(std::string_view text, std::size_t at, std::uint32_t& number)
{
    if (at + NumberDigits > text.size())
        return false;
    number = 0;
    for (std::size_t i = 0; i < NumberDigits; ++i) {
        const std::size_t digit = Digits.find(UpperChar(text[at + i]));
        if (digit == Nowhere)
            return false;
        number = number << 4 | static_cast<std::uint32_t>(digit);
    }
    return true;
}

// The extension with its point; empty when what follows the last point is none of plain letters and digits.
std::string_view ExtensionIn(std::string_view name)
{
    const std::size_t point = name.rfind('.');
    if (point == Nowhere || point == 0 || name.size() - point > LongestExtension)
        return {};
    const std::string_view extension = name.substr(point);
    const bool plain = std::ranges::all_of(extension.substr(1), [](char c) {
        return (c >= '0' && c <= '9') || (UpperChar(c) >= 'A' && UpperChar(c) <= 'Z');
    });
    return plain ? extension : std::string_view();
}

bool HasStandInForm(std::string_view name)
{
    const std::string_view stem = name.substr(0, name.size() - ExtensionIn(name).size());
    std::uint32_t number = 0;
    return stem.size() > NumberDigits && stem[stem.size() - NumberDigits - 1] == Mark &&
           ReadStandInNumber(stem, stem.size() - NumberDigits, number);
}

// What has a meaning in paths, lists or programs' names is "_".
std::string LettersOf(std::string_view stem)
{
    constexpr std::string_view notInNames = "\\/:*?\"<>|~.,;^%\xFF";
    std::string letters = NearestAnsi(stem).substr(0, MostLetters);
    for (char& c : letters) {
        if (static_cast<unsigned char>(c) < ' ' || notInNames.find(c) != Nowhere)
            c = '_';
    }
    return letters;
}

// False when another name has the same stand-in.
bool Remember(std::uint32_t number, const std::string& letters, std::string_view stem)
{
    const auto [first, end] = Met.equal_range(number);
    for (auto met = first; met != end; ++met) {
        if (EqualIgnoringCase(met->second.Letters, letters))
            return met->second.Stem == stem;
    }
    Met.emplace(number, RealName{letters, std::string(stem)});
    return true;
}

// A known stand-in in a text.
struct Place {
    std::size_t Start = 0, End = 0; // of its letters and digits, without extension
    const RealName* Name = nullptr; // null: none
};

Place FindStandIn(std::string_view text, std::size_t from)
{
    for (std::size_t mark = text.find(Mark, from); mark != Nowhere; mark = text.find(Mark, mark + 1)) {
        std::uint32_t number = 0;
        if (!ReadStandInNumber(text, mark + 1, number))
            continue;
        const std::string_view head = text.substr(from, mark - from);
        const auto [first, end] = Met.equal_range(number);
        for (auto met = first; met != end; ++met) {
            const std::string& letters = met->second.Letters;
            if (head.size() >= letters.size() &&
                EqualIgnoringCase(head.substr(head.size() - letters.size()), letters))
                return {mark - letters.size(), mark + 1 + NumberDigits, &met->second};
        }
    }
    return {};
}

// The text with `put(name, stand-in)` in place of each known stand-in and `keep(part)` of all else.
template <typename Keep, typename Put>
std::string Replaced(std::string_view text, const Keep& keep, const Put& put)
{
    std::string made;
    std::size_t at = 0;
    if (!Met.empty()) {
        for (Place place = FindStandIn(text, at); place.Name != nullptr; place = FindStandIn(text, at)) {
            made += keep(text.substr(at, place.Start - at));
            made += put(*place.Name, text.substr(place.Start, place.End - place.Start));
            at = place.End;
        }
    }
    made += keep(text.substr(at));
    return made;
}

std::string ValidUtf8(std::string_view bytes)
{
    std::string valid;
    for (std::size_t at = 0; at < bytes.size();)
        AddUtf8(valid, TakeLetter(bytes, at));
    return valid;
}

// Batches are upper-cased, and so are the names in them.
std::string MachineName(const RealName& name, std::string_view standIn)
{
    const std::string letters = NearestAnsi(name.Stem);
    const bool readable = std::ranges::any_of(
        letters, [](char c) { return (c >= '0' && c <= '9') || UpperChar(c) != LowerChar(c); });
    if (!readable)
        return DigitsOf(NumberOfStem(name.Stem));
    const bool raised = standIn == UpperCase(standIn) && !standIn.starts_with(name.Letters);
    return raised ? UpperCase(letters) : letters;
}

} // namespace

std::string NameFromUtf8(std::string_view name)
{
    std::string ansi = AnsiFromUtf8(name);
    const bool foreign = ansi.find('?') != std::string::npos;
    if ((!foreign && !HasStandInForm(ansi)) || name.find('?') != Nowhere)
        return ansi;
    const std::string_view extension = ExtensionIn(name);
    const std::string_view stem = name.substr(0, name.size() - extension.size());
    const std::uint32_t number = NumberOfStem(stem);
    const std::string letters = LettersOf(stem);
    if (!Remember(number, letters, stem))
        return foreign ? ansi : "?" + ansi;
    return letters + Mark + DigitsOf(number) + std::string(extension);
}

std::string PathFromUtf8(std::string_view path)
{
    const bool hasDrive = path.size() >= 2 && path[1] == ':';
    std::string ansi(path.substr(0, hasDrive ? 2 : 0));
    path.remove_prefix(ansi.size());
    for (;;) {
        const std::size_t end = std::min(path.find_first_of("/\\"), path.size());
        ansi += NameFromUtf8(path.substr(0, end));
        if (end == path.size())
            return ansi;
        ansi += path[end];
        path.remove_prefix(end + 1);
    }
}

bool MayHoldStandIn(std::string_view ansi)
{
    return ansi.find(Mark) != Nowhere;
}

bool IsUnknownStandIn(std::string_view name)
{
    return HasStandInForm(name) && FindStandIn(name, 0).Name == nullptr;
}

std::string NameForMachines(std::string_view ansi)
{
    return Replaced(
        ansi, [](std::string_view part) { return part; }, MachineName);
}

std::string WithRealNames(std::string_view ansi, bool host)
{
    return Replaced(ansi, Utf8OfLetters, [host](const RealName& name, std::string_view) {
        return host ? name.Stem : ValidUtf8(name.Stem);
    });
}

} // namespace kv
