// Nearly all lines are plain ASCII and stay untouched. A letter of another page in a layer's name must not
// become a code of the layer language: "\U+00C4" holds C4, and the bytes of a page with two for a letter hold
// plain letters. Control characters that a text spells become blanks, since a line end would make a pair of
// it.
#include "import/drawing_letters.h"

#include <array>
#include <cctype>
#include <optional>

#include "import/code_pages.h"
#include "import/pair_reader.h"
#include "platform/nearest_letters.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr int FirstUtf8Version = 1021; // R2007
constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view LittleMark = "\xFF\xFE", BigMark = "\xFE\xFF";

class LetterReader {
  public:
    LetterReader(DrawnPage page, LettersTaken& taken) : Page(page), Taken(taken) {}
    // Of one line; false where nothing is to be changed.
    bool Rewrite(std::string_view line, bool isLayer, std::string& rewritten);

  private:
    void TakeOne(std::string_view line, std::size_t& at, std::string& out);
    bool TakeEscape(std::string_view line, std::size_t& at, std::string& out);
    char32_t LetterAt(std::string_view line, std::size_t& at) const;
    void Add(char32_t letter, std::string& out);

    DrawnPage Page;
    LettersTaken& Taken;
    bool SawForeign = false; // in the line
};

bool IsPlain(std::string_view line)
{
    bool high = false, escape = false;
    for (const char c : line) {
        high |= static_cast<unsigned char>(c) >= 0x80;
        escape |= c == '\\';
    }
    return !high && !(escape && (Holds(line, "\\U+") || Holds(line, "\\u+") || Holds(line, "\\M+") ||
                                 Holds(line, "\\m+")));
}

std::optional<char32_t> HexNumber(std::string_view digits)
{
    char32_t number = 0;
    for (const char c : digits) {
        if (std::isxdigit(static_cast<unsigned char>(c)) == 0)
            return std::nullopt;
        const int digit = c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10;
        number = number * 16 + static_cast<char32_t>(digit);
    }
    return number;
}

void LetterReader::Add(char32_t letter, std::string& out)
{
    if (letter < 0x20)
        letter = U' ';
    const std::size_t before = out.size();
    AddNearestAnsi(out, letter);
    if (!IsForeignLetter(letter))
        return;
    SawForeign = true;
    if (++Taken.Foreign > 1)
        return;
    Taken.FirstForeign = letter;
    Taken.FirstNearest = out.substr(before);
}

// "\U+XXXX", or "\M+NXXXX": a letter of two bytes, of a page that N numbers. A pair of surrogates is one.
bool LetterReader::TakeEscape(std::string_view line, std::size_t& at, std::string& out)
{
    const std::string_view rest = line.substr(at);
    if (rest.size() < 7 || rest[0] != '\\' || rest[2] != '+')
        return false;
    const char kind = UpperChar(rest[1]);
    if (kind == 'M' && rest.size() >= 8 && HexNumber(rest.substr(3, 5))) {
        Add(0xFFFD, out);
        at += 8;
        return true;
    }
    const std::optional<char32_t> unit = HexNumber(rest.substr(3, 4));
    if (kind != 'U' || !unit)
        return false;
    char32_t letter = *unit;
    at += 7;
    if (letter >= 0xD800 && letter <= 0xDBFF && BeginsWith(UpperCase(rest.substr(7, 3)), "\\U+") &&
        rest.size() >= 14) {
        const std::optional<char32_t> low = HexNumber(rest.substr(10, 4));
        if (low && *low >= 0xDC00 && *low <= 0xDFFF) {
            letter = 0x10000 + ((letter - 0xD800) << 10) + (*low - 0xDC00);
            at += 7;
        }
    }
    Add(letter, out);
    return true;
}

char32_t LetterReader::LetterAt(std::string_view line, std::size_t& at) const
{
    constexpr char32_t unknown = 0xFFFD;
    const auto byte = static_cast<unsigned char>(line[at]);
    switch (Page.Kind) {
    case PageKind::Utf8:
        return TakeLetter(line, at);
    case PageKind::Table:
        ++at;
        return byte < 0x80 ? byte : Page.Table->Letters[byte - 0x80];
    case PageKind::DoubleByte:
        at += Page.IsLead(byte) && at + 1 < line.size() ? 2 : 1;
        return byte < 0x80 ? byte : unknown;
    case PageKind::Western:
    case PageKind::Unknown:
        break;
    }
    ++at;
    return byte;
}

void LetterReader::TakeOne(std::string_view line, std::size_t& at, std::string& out)
{
    const bool isOwn = Page.Kind == PageKind::Western || Page.Kind == PageKind::Unknown;
    if (static_cast<unsigned char>(line[at]) < 0x80 || isOwn)
        out += line[at++];
    else
        Add(LetterAt(line, at), out);
}

bool LetterReader::Rewrite(std::string_view line, bool isLayer, std::string& rewritten)
{
    SawForeign = false;
    rewritten.clear();
    for (std::size_t at = 0; at < line.size();)
        if (!TakeEscape(line, at, rewritten))
            TakeOne(line, at, rewritten);
    if (isLayer && SawForeign)
        Taken.Layers.insert(std::string(Trim(rewritten)));
    return rewritten != line;
}

DrawnPage PageOf(const DrawnLetters& drawn, std::string_view text, LettersTaken& taken)
{
    const DrawnPage page = FindCodePage(drawn.CodePage);
    const bool saysUtf8 = drawn.Version >= FirstUtf8Version || page.Kind == PageKind::Utf8;
    const bool saysNothing = drawn.Version == 0 && drawn.CodePage.empty();
    if (saysUtf8 || saysNothing) {
        if (IsUtf8(text))
            return {PageKind::Utf8};
        taken.IsNoUtf8 = saysUtf8;
    }
    if (page.Kind == PageKind::Unknown)
        taken.UnknownPage = drawn.CodePage;
    return page.Kind == PageKind::Utf8 ? DrawnPage{} : page;
}

// UTF-8 of a text in UTF-16 without its mark.
std::string Utf8OfUtf16(std::string_view bytes, bool isBigEndian)
{
    const auto unitAt = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<char32_t>(isBigEndian ? first << 8 | second : second << 8 | first);
    };
    std::string utf8;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t letter = unitAt(at);
        const bool isHigh = letter >= 0xD800 && letter <= 0xDBFF && at + 3 < bytes.size();
        if (const char32_t low = isHigh ? unitAt(at + 2) : 0; low >= 0xDC00 && low <= 0xDFFF) {
            letter = 0x10000 + ((letter - 0xD800) << 10) + (low - 0xDC00);
            at += 2;
        }
        AddUtf8(utf8, letter >= 0xD800 && letter <= 0xDFFF ? 0xFFFD : letter);
    }
    return utf8;
}

} // namespace

// The variables of the HEADER section, which is the first one where there is any.
DrawnLetters LettersOfHeader(std::string_view text)
{
    DrawnLetters drawn;
    PairReader pairs(text);
    std::string variable;
    while (pairs.Next()) {
        const std::string_view value = Trim(pairs.Value());
        if (pairs.Code() == 0 && value == "ENDSEC")
            break;
        if (pairs.Code() == 9)
            variable = value;
        else if (pairs.Code() == 1 && variable == "$ACADVER" && BeginsWith(value, "AC"))
            drawn.Version = static_cast<int>(Val(value.substr(2, 4)));
        else if (pairs.Code() == 3 && variable == "$DWGCODEPAGE")
            drawn.CodePage = value;
    }
    return drawn;
}

LettersTaken TakeLetters(std::string& text)
{
    LettersTaken taken;
    const DrawnLetters drawn = LettersOfHeader(text);
    LetterReader letters(PageOf(drawn, text, taken), taken);
    std::string out, line;
    std::size_t kept = 0; // of the text, up to here in `out`
    bool isLayer = false;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t feed = text.find('\n', at);
        const std::size_t end = feed == std::string::npos ? text.size() : feed;
        const std::string_view old = std::string_view(text).substr(at, end - at);
        if (!IsPlain(old) && letters.Rewrite(old, isLayer, line)) {
            out.append(text, kept, at - kept);
            out += line;
            kept = end;
        }
        isLayer = old.size() <= 8 && Trim(old.substr(0, old.find('\r'))) == "8";
        at = end + 1;
    }
    taken.IsChanged = kept > 0;
    if (taken.IsChanged) {
        out.append(text, kept);
        text = std::move(out);
    }
    return taken;
}

bool HasUnicodeMark(std::string_view head)
{
    return BeginsWith(head, Utf8Mark) || BeginsWith(head, LittleMark) || BeginsWith(head, BigMark);
}

void DropUnicodeMark(std::string& text)
{
    if (BeginsWith(text, Utf8Mark))
        text.erase(0, Utf8Mark.size());
    else if (BeginsWith(text, LittleMark) || BeginsWith(text, BigMark))
        text = Utf8OfUtf16(std::string_view(text).substr(2), BeginsWith(text, BigMark));
}

} // namespace kv
