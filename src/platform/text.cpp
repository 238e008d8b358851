// Text in the Windows ANSI code page: case tables, tokens and the small cleaners of the conversion.
// Relies on nothing but bytes: positions count from 1, no locale is asked.
// The converters at the end are for the edges of the program, where people and hosts speak UTF-8.
#include "platform/text.h"

#include <algorithm>
#include <array>

#include "platform/stand_ins.h"

namespace kv {

namespace {

constexpr unsigned char Byte(char c)
{
    return static_cast<unsigned char>(c);
}

// In the letters' rows of the code page lower and upper case stand 32 apart; four pairs stand elsewhere.
constexpr unsigned char UpperOf(unsigned char c)
{
    if (c >= 'a' && c <= 'z')
        return static_cast<unsigned char>(c - 32);
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7) // 0xF7 is the division sign
        return static_cast<unsigned char>(c - 32);
    if (c == 0x9A || c == 0x9C || c == 0x9E) // s-caron, oe, z-caron
        return static_cast<unsigned char>(c - 16);
    if (c == 0xFF) // y-diaeresis
        return 0x9F;
    return c;
}

constexpr std::array<char, 256> MakeUpperTable()
{
    std::array<char, 256> table{};
    for (unsigned c = 0; c < 256; ++c)
        table[c] = static_cast<char>(UpperOf(static_cast<unsigned char>(c)));
    return table;
}

constexpr std::array<char, 256> MakeLowerTable()
{
    std::array<char, 256> table{};
    for (unsigned c = 0; c < 256; ++c)
        table[c] = static_cast<char>(c);
    for (unsigned c = 0; c < 256; ++c) {
        const unsigned char upper = UpperOf(static_cast<unsigned char>(c));
        if (upper != c)
            table[upper] = static_cast<char>(c);
    }
    return table;
}

constexpr std::array<char, 256> UpperTable = MakeUpperTable();
constexpr std::array<char, 256> LowerTable = MakeLowerTable();

// Unicode of the bytes 0x80 to 0x9F; the five that the code page leaves free keep their number.
constexpr std::array<std::uint16_t, 32> UnicodeOfHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::size_t Start(Long position)
{
    return position > 1 ? static_cast<std::size_t>(position) - 1 : 0;
}

Long Position(std::size_t at)
{
    return at == std::string_view::npos ? 0 : static_cast<Long>(at + 1);
}

} // namespace

char UpperChar(char c)
{
    return UpperTable[Byte(c)];
}

char LowerChar(char c)
{
    return LowerTable[Byte(c)];
}

std::string UpperCase(std::string_view text)
{
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperChar);
    return upper;
}

std::string LowerCase(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerChar);
    return lower;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](char x, char y) { return UpperChar(x) == UpperChar(y); });
}

std::string_view TrimLeft(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::string_view TrimRight(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view Trim(std::string_view text)
{
    return TrimRight(TrimLeft(text));
}

bool Holds(std::string_view text, std::string_view part)
{
    return Find(1, text, part) != 0;
}

bool BeginsWith(std::string_view text, std::string_view head)
{
    return text.starts_with(head);
}

std::string_view Mid(std::string_view text, Long position, std::size_t length)
{
    if (position < 1 || Start(position) >= text.size())
        return {};
    return text.substr(Start(position), length);
}

Long Find(Long position, std::string_view text, std::string_view part)
{
    return part.empty() ? 0 : Position(text.find(part, Start(position)));
}

Long FindAnyOf(Long position, std::string_view text, std::string_view characters)
{
    // One pass with a table of what to stop at; find_first_of looks through `characters` at each place.
    bool stops[256] = {};
    for (const char c : characters)
        stops[Byte(c)] = true;
    for (std::size_t at = Start(position); at < text.size(); ++at) {
        if (stops[Byte(text[at])])
            return Position(at);
    }
    return 0;
}

std::string_view ParseString(Long& position, std::string_view text, std::string_view delimiters)
{
    if (position < 1 || Start(position) > text.size()) {
        position = 0;
        return {};
    }
    const std::size_t start = Start(position);
    const std::size_t end = text.find_first_of(delimiters, start);
    if (end == std::string_view::npos) {
        position = 0;
        return text.substr(start);
    }
    position = static_cast<Long>(end + 2);
    return text.substr(start, end - start);
}

std::string_view NextToken(Long& position, std::string_view text)
{
    std::string_view token;
    do {
        token = ParseString(position, text, "= ");
    } while (token.empty() && position != 0);
    return token;
}

std::string Compact(std::string_view text)
{
    std::string kept;
    kept.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept),
                 [](char c) { return c != ' ' && c != '\0'; });
    return kept;
}

void ReplaceChar(std::string& text, char old, char with)
{
    std::replace(text.begin(), text.end(), old, with);
}

Long InCount(std::string_view text, char c)
{
    return static_cast<Long>(std::count(text.begin(), text.end(), c));
}

Long FindLast(std::string_view text, char c)
{
    return Position(text.rfind(c));
}

std::string CleanText(std::string& text)
{
    std::string kept;
    for (const char c : text) {
        const unsigned char code = Byte(c);
        if ((code >= 43 && code <= 58) || (code >= 64 && code <= 122) || c == ' ')
            kept += c;
    }
    text.clear();
    return std::string(Trim(kept));
}

std::string PadNumber(std::string_view text)
{
    const std::string padded = "000" + std::string(text);
    return padded.size() > 4 ? padded.substr(padded.size() - 4) : padded;
}

std::string Padded(std::string_view text, std::size_t width)
{
    std::string field(text.substr(0, width));
    field.resize(width, ' ');
    return field;
}

char AnsiOfLetter(char32_t code)
{
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF))
        return static_cast<char>(code);
    const auto found = std::find(UnicodeOfHighControls.begin(), UnicodeOfHighControls.end(), code);
    if (found == UnicodeOfHighControls.end())
        return '?';
    return static_cast<char>(0x80 + (found - UnicodeOfHighControls.begin()));
}

char32_t TakeLetter(std::string_view text, std::size_t& at)
{
    constexpr char32_t Broken = 0xFFFD;
    const unsigned char first = Byte(text[at++]);
    if (first < 0x80)
        return first;
    const std::size_t followers = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    if (first < 0xC2 || first > 0xF4 || at + followers > text.size())
        return Broken;
    char32_t code = first & (0x3Fu >> followers);
    for (std::size_t i = 0; i < followers; ++i) {
        const unsigned char c = Byte(text[at + i]);
        if ((c & 0xC0) != 0x80)
            return Broken;
        code = (code << 6) | (c & 0x3Fu);
    }
    constexpr std::array<char32_t, 4> Shortest = {0, 0x80, 0x800, 0x10000};
    if (code < Shortest[followers] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return Broken;
    at += followers;
    return code;
}

std::string AnsiFromUtf8(std::string_view utf8)
{
    std::string ansi;
    ansi.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();)
        ansi += AnsiOfLetter(TakeLetter(utf8, at));
    return ansi;
}

std::string Utf8OfLetters(std::string_view ansi)
{
    std::string utf8;
    utf8.reserve(ansi.size());
    for (const char c : ansi) {
        const unsigned char byte = Byte(c);
        const unsigned code = byte >= 0x80 && byte < 0xA0 ? UnicodeOfHighControls[byte - 0x80u] : byte;
        if (code < 0x80) {
            utf8 += c;
        } else if (code < 0x800) {
            utf8 += static_cast<char>(0xC0 | (code >> 6));
            utf8 += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            utf8 += static_cast<char>(0xE0 | (code >> 12));
            utf8 += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            utf8 += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return utf8;
}

std::string Utf8FromAnsi(std::string_view ansi)
{
    return MayHoldStandIn(ansi) ? WithRealNames(ansi, false) : Utf8OfLetters(ansi);
}

std::string HostFromAnsi(std::string_view ansi)
{
    return MayHoldStandIn(ansi) ? WithRealNames(ansi, true) : Utf8OfLetters(ansi);
}

} // namespace kv
