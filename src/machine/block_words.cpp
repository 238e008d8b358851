#include "machine/block_words.h"

#include <algorithm>
#include <charconv>

#include "machine/text_lines.h"

namespace kv {

namespace {

constexpr int ChoosingCodes[] = {17, 18, 19, 40, 41, 42, 54, 55, 56, 57, 90};
constexpr std::string_view NumberLetters = "FEBSXYZIJKUACVQRPNL";

bool IsBlockLetter(char c)
{
    return CapitalOf(c) >= 'A' && CapitalOf(c) <= 'Z';
}

bool IsHeaderCode(int code)
{
    return code == 70 || code == 71;
}

// Of a code that chooses its place in the list, below 0 for any other.
int ChoicePlace(int code)
{
    const auto* const found = std::find(std::begin(ChoosingCodes), std::end(ChoosingCodes), code);
    return found == std::end(ChoosingCodes) ? -1 : static_cast<int>(found - std::begin(ChoosingCodes));
}

// "88", "01"; below 0 for anything else.
int CodeOfText(std::string_view text)
{
    int code = -1;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), code);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() ? code : -1;
}

bool HasBlankInside(std::string_view text)
{
    return std::any_of(text.begin(), text.end(), IsBlank);
}

// Tools 100 to 199 are a letter and a digit after the two digits of the group: "01a5". A capital letter means
// the same, since no other word of such a line has its place there with a single digit: "T01G41" goes on.
bool IsToolWithLetter(std::string_view text)
{
    const auto digit = [text](std::size_t at) { return at < text.size() && IsDecimalDigit(text[at]); };
    if (!digit(0) || !digit(1) || !digit(3) || digit(4) || text.substr(4).starts_with('.'))
        return false;
    const char letter = text[2];
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'J');
}

// Takes the words of one line from its begin to its end.
struct BlockScan {
    std::string_view Line;
    BlockWords Words = {};
    std::size_t At = 0;
    bool AfterNumber = false; // without a blank between

    char Letter() const { return At < Line.size() ? CapitalOf(Line[At]) : '\0'; }
    void PassBlanks()
    {
        while (At < Line.size() && IsBlank(Line[At]))
            ++At;
    }
    // Up to the next letter, without the blanks around.
    std::string_view TextOfWord()
    {
        const std::size_t begin = At;
        while (At < Line.size() && !IsBlockLetter(Line[At]))
            ++At;
        return WithoutBlanksAround(Line.substr(begin, At - begin));
    }
    bool TakeCode()
    {
        const int code = CodeOfText(TextOfWord());
        if (ChoicePlace(code) >= 0)
            return Words.SetChoice(code);
        const bool first = Words.Code < 0;
        Words.Code = code;
        return first && code >= 0;
    }
    // "M66" comes after tools above 200; "M2" stands alone.
    bool TakeMachineCode(bool alone)
    {
        const int code = CodeOfText(TextOfWord());
        if (code == 66 && !Words.Tool.empty() && Words.Tool.find('M') == std::string::npos) {
            Words.Tool += "M66";
            return true;
        }
        Words.EndsProgram = code == 2 && alone && At == Line.size();
        return Words.EndsProgram;
    }
    bool TakeTool()
    {
        PassBlanks();
        const bool first = Words.Tool.empty();
        // The header's is the outfit, which may have the flags after it: "T12F8".
        if (!IsHeaderCode(Words.Code) && IsToolWithLetter(Line.substr(At))) {
            Words.Tool = Line.substr(At, 4);
            Words.Tool[2] = static_cast<char>(CapitalOf(Words.Tool[2]) - 'A' + 'a');
            At += 4;
        } else {
            Words.Tool = TextOfWord();
        }
        return first && !Words.Tool.empty() && !HasBlankInside(Words.Tool);
    }
    bool TakeDepthLetter()
    {
        ++At; // the sign of equality
        PassBlanks();
        if (At == Line.size() || Words.DepthLetter || Words.Has('Z'))
            return false;
        Words.DepthLetter = Line[At++];
        return true;
    }
    bool TakeNumber(char letter)
    {
        const std::size_t begin = At;
        std::string_view text = TextOfWord();
        AfterNumber = At > begin && !IsBlank(Line[At - 1]);
        if (letter == 'R' && text.starts_with("54") && WithoutBlanksAround(text.substr(2)).starts_with('=')) {
            const bool first = !Words.Diameter;
            Words.Diameter = PlainNumber(WithoutBlanksAround(text.substr(text.find('=') + 1)));
            return first && Words.Diameter;
        }
        const bool ofCentre = (Words.Code == 2 || Words.Code == 3) && letter >= 'I' && letter <= 'K';
        const std::optional<double> value =
            PlainNumber(text, letter == 'U' || ofCentre ? LargestRadius : LargestPlace);
        return value && NumberLetters.find(letter) != std::string_view::npos &&
               !(letter == 'Z' && Words.DepthLetter) && Words.SetNumber(letter, *value);
    }
    bool TakeWord()
    {
        const char letter = Letter();
        const bool alone = At == 0;
        // "X1E300" is no place with a slot but a number with a power of ten, which controls do not know.
        const bool power = letter == 'E' && AfterNumber;
        AfterNumber = false;
        ++At;
        if (!IsBlockLetter(letter) || power)
            return false;
        if (letter == 'G')
            return TakeCode();
        if (letter == 'M')
            return TakeMachineCode(alone);
        if (letter == 'T')
            return TakeTool();
        PassBlanks();
        return letter == 'Z' && Letter() == '=' ? TakeDepthLetter() : TakeNumber(letter);
    }
};

} // namespace

bool BlockWords::HasAll(std::string_view letters) const
{
    return std::all_of(letters.begin(), letters.end(), [this](char letter) { return Has(letter); });
}

bool BlockWords::Chooses(int code) const
{
    const int place = ChoicePlace(code);
    return place >= 0 && (Choices >> place & 1) != 0;
}

bool BlockWords::SetNumber(char letter, double value)
{
    if (Has(letter))
        return false;
    Given |= std::uint32_t{1} << Place(letter);
    Numbers[Place(letter)] = value;
    return true;
}

bool BlockWords::SetChoice(int code)
{
    const int place = ChoicePlace(code);
    if (place < 0 || Chooses(code))
        return false;
    Choices |= std::uint32_t{1} << place;
    return true;
}

BlockWords WordsOfBlock(std::string_view line)
{
    BlockScan scan{WithoutBlanksAround(line)};
    while (scan.At < scan.Line.size()) { // a header that is not sound still has its other sizes
        scan.Words.Sound = scan.TakeWord() && scan.Words.Sound;
        scan.PassBlanks();
    }
    return scan.Words;
}

bool LooksLikeCncHeader(std::string_view line)
{
    constexpr std::size_t longest = 200; // no header is so long
    const std::string head = HeadOfLine(line, longest);
    const std::size_t code = head.find_first_not_of('0', 1);
    if (!head.starts_with('G') || code == std::string::npos || head.size() == longest ||
        (head.compare(code, 2, "70") != 0 && head.compare(code, 2, "71") != 0) ||
        (code + 2 < head.size() && IsDecimalDigit(head[code + 2])))
        return false;
    const std::string_view words = std::string_view(head).substr(code + 2);
    const auto has = [words](char letter) { return words.find(letter) != std::string_view::npos; };
    return has('X') && has('Y') && has('Z') && std::all_of(words.begin(), words.end(), [](char c) {
               return !IsBlockLetter(c) || std::string_view("XYZTFNL").find(c) != std::string_view::npos;
           });
}

bool IsCncName(std::string_view line)
{
    return HeadOfLine(line, 5) == "G150(";
}

} // namespace kv
