// The parameter readers. Each takes its code from the note in force, else from the layer of
// CurrentEntity, whose two-letter codes are markers by now. A number is a whole part and a fraction
// behind "." or "P"; the fraction is always looked for on the layer, even when the code stands in
// the note.
#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "drawing/layer_rules.h"
#include "platform/text.h"

namespace kv {

Int DepthFromEntity = False;

namespace {

constexpr std::size_t LayerWidth = 114;
// What ends a number; feed on arcs, extra slot and oscillation are not among them.
constexpr std::string_view CodeStarts = " DEFGIKLMORSTVXYZ\xE6\xE7\xE4\xE5\xE8\xE9";

constexpr Single SymbolicZD = 100; // ZD
constexpr Single TableDepth = 200; // ZRn is 200 + n

// Where a code was found and the text that it was found in.
struct Found {
    std::string Source;
    Long Number = 0; // position behind the code; 0: not found
    std::string_view Text() const { return Mid(Source, Number); }
};

std::string SourceFor(char code)
{
    if (Holds(CurrentEntity.NoteText, std::string_view(&code, 1)))
        return "      " + CurrentEntity.NoteText;
    return CurrentEntity.Layer;
}

// A D or E behind a number would read as an exponent.
void HideFirst(std::string& text, Long from, std::string_view characters)
{
    const Long place = FindAnyOf(from, text, characters);
    if (place > 0)
        text[static_cast<std::size_t>(place - 1)] = '~';
}

// T and G may stand on the fifth place of a name without a longer word.
Found FindCode(char code, bool fromFifth = false)
{
    Found found;
    found.Source = SourceFor(code);
    const Long start = FirstCodePosition(found.Source);
    HideFirst(found.Source, start, "D");
    const Long place = Find(fromFifth && start == 6 ? 5 : start, found.Source, std::string_view(&code, 1));
    found.Number = place > 0 ? place + 1 : 0;
    return found;
}

[[noreturn]] void RefuseValue(std::string_view text)
{
    throw RunError{ErrorOverflow, "Value out of range at \"" + std::string(text) + "\" on layer " +
                                      ShownLayer(CurrentEntity.Layer)};
}

Single StoredSingle(double value, std::string_view text)
{
    if (!(std::abs(value) <= static_cast<double>(std::numeric_limits<Single>::max())))
        RefuseValue(text);
    return static_cast<Single>(value);
}

Int StoredInt(double value, std::string_view text)
{
    if (!(value >= -32768.5 && value < 32767.5))
        RefuseValue(text);
    return ToInt(value);
}

double ReadFraction(Long position)
{
    std::string layer = Padded(CurrentEntity.Layer, LayerWidth);
    const Long next = FindAnyOf(position, layer, CodeStarts);
    const Long point = FindAnyOf(position, layer, "P.");
    if (point == 0 || point + 1 >= next)
        return 0;
    HideFirst(layer, position, "DE");
    return Val("." + std::string(Mid(layer, point + 1)));
}

double WholeAndFraction(const Found& found)
{
    return std::floor(Val(found.Text())) + ReadFraction(found.Number);
}

Single ReadNumber(char code)
{
    const Found found = FindCode(code);
    if (found.Number == 0)
        return 0;
    return StoredSingle(WholeAndFraction(found), found.Text());
}

// A ramp may be switched off by a written 0; a code without number asks for the run's default.
Single ReadRamp(char code)
{
    const Found found = FindCode(code);
    if (found.Number == 0)
        return 0;
    const Single value = StoredSingle(WholeAndFraction(found), found.Text());
    if (value != 0)
        return value;
    return BeginsWith(TrimLeft(found.Text()), "0") ? 0 : RunDefault;
}

// Present without a value is -1.
Single ReadPositive(char code)
{
    const Found found = FindCode(code);
    if (found.Number == 0)
        return 0;
    const Single value = StoredSingle(std::abs(WholeAndFraction(found)), found.Text());
    return value != 0 ? value : -1;
}

Int ReadWhole(char code)
{
    const Found found = FindCode(code, true);
    return found.Number == 0 ? Int{0} : StoredInt(Val(found.Text()), found.Text());
}

std::string ReadCompensation(char code, std::string_view prefix)
{
    const Found found = FindCode(code);
    if (found.Number == 0)
        return {};
    const Single radius = StoredSingle(WholeAndFraction(found), found.Text());
    std::string text(prefix);
    if (radius != 0)
        text += " R" + PlainText(radius); // a radius is R for both hands
    return text;
}

} // namespace

Single ReadDepth()
{
    std::string source = SourceFor('Z');
    const Long start = FirstCodePosition(source);
    while (Find(start, source, "D") > 0)
        HideFirst(source, start, "D");
    const Long place = Find(start, source, "Z");
    DepthFromEntity = place == 0 ? True : False;
    if (place == 0)
        return 0;
    const Found found{source, place + 1};
    const std::string_view text = found.Text();
    const char next = text.empty() ? ' ' : LowerChar(text.front());
    if (next == '~')
        return SymbolicZD;
    if (next == MarkZTable)
        return StoredSingle(std::floor(Val(text.substr(1))) + TableDepth, text);
    if (next >= 'a' && next <= 'i' && next != 'h')
        return static_cast<Single>(next); // a symbol of the control, by its character code
    return StoredSingle(WholeAndFraction(found), text);
}

Single ReadDiameter()
{
    Found found{SourceFor('D'), 0};
    Long place = Find(FirstCodePosition(found.Source), found.Source, "D");
    // A D right behind a Z is the symbolic depth.
    while (place > 1 && UpperChar(found.Source[static_cast<std::size_t>(place - 2)]) == 'Z')
        place = Find(place + 1, found.Source, "D");
    if (place == 0)
        return 0;
    found.Number = place + 1;
    return StoredSingle(WholeAndFraction(found), found.Text());
}

Int ReadToolNumber()
{
    return ReadWhole('T');
}

Int ReadGroup()
{
    return ReadWhole('G');
}

Int ReadSpeed()
{
    const Found found = FindCode('S');
    if (found.Number == 0)
        return 0;
    const double speed = Val(found.Text());
    return StoredInt(speed < 30 ? speed * 1000 : speed, found.Text());
}

Single ReadFeed()
{
    return ReadNumber('F');
}

Single ReadFeedArc()
{
    return FindCode(MarkFeedArc).Number == 0 ? ReadFeed() : ReadNumber(MarkFeedArc);
}

Single ReadFeedDown()
{
    return ReadNumber(MarkFeedDown);
}

Single ReadFeedRapid()
{
    return ReadNumber(MarkFeedRapid);
}

Single ReadParamA()
{
    return ReadNumber('A');
}

Single ReadParamB()
{
    return ReadNumber('B');
}

Single ReadExcav()
{
    return std::max(ReadNumber('K'), Single{0});
}

Single ReadLeadIn()
{
    const Found found = FindCode(MarkLeadIn);
    if (found.Number == 0)
        return 0;
    const Single value = StoredSingle(WholeAndFraction(found), found.Text());
    return value != 0 ? value : RunDefault;
}

Single ReadRampOut()
{
    return ReadRamp(MarkRampOut);
}

Single ReadRampIn()
{
    return ReadRamp(MarkRampIn);
}

Single ReadPeckDepth()
{
    return ReadPositive(MarkPeckDepth);
}

Single ReadOscZ()
{
    return ReadPositive(MarkOscZ);
}

Int ReadExtraSlot()
{
    const Found found = FindCode(MarkExtraSlot);
    if (found.Number == 0)
        return 0;
    const Int slot = StoredInt(std::abs(std::floor(Val(found.Text()))), found.Text());
    return slot != 0 ? slot : Int{-1};
}

Int ReadMCode()
{
    const Found found = FindCode('M');
    if (found.Number == 0)
        return 0;
    const Int code = StoredInt(Val(found.Text()), found.Text());
    return code < 2 ? Int{0} : code;
}

// L wins whole over R.
std::string ReadComp()
{
    const std::string right = ReadCompensation('R', "G42");
    const std::string left = ReadCompensation('L', "G41");
    return left.empty() ? right : left;
}

Int ReadBottom()
{
    constexpr char marks[] = {MarkBottom0, MarkBottom1, MarkBottom2, MarkBottom3, MarkBottom4, MarkBottom5};
    for (std::size_t i = 0; i < std::size(marks); ++i)
        if (Holds(CurrentEntity.Layer, std::string_view(&marks[i], 1)))
            return static_cast<Int>(i);
    return 0;
}

Int ReadGrooveSide()
{
    const std::string_view flags = Mid(CurrentEntity.Layer, 7);
    if (Holds(flags, "L"))
        return -1;
    return Holds(flags, "R") ? Int{1} : Int{0};
}

// Pairs of digits behind each T. A single digit gets a leading zero, but not at the name's very end.
std::string ReadToolString()
{
    std::string source;
    if (Holds(CurrentEntity.NoteText, "T")) {
        source = "      " + CurrentEntity.NoteText;
    } else {
        std::string layer = Compact(CurrentEntity.Layer);
        source = CleanText(layer); // without the markers
    }
    const auto isDigit = [](char c) { return c >= '\x30' && c <= '\x40'; }; // up to "@", not "9"
    std::string tools;
    for (Long t = Find(FirstCodePosition(source), source, "T"); t > 0; t = Find(t + 1, source, "T")) {
        const std::string_view text = Mid(source, t + 1);
        std::size_t digits = 0;
        while (digits < text.size() && isDigit(text[digits]))
            ++digits;
        const std::size_t paired = digits - digits % 2;
        tools += text.substr(0, paired);
        if (paired < digits)
            tools += (digits < text.size() ? "0" : "") + std::string(1, text[paired]);
    }
    return tools;
}

} // namespace kv
