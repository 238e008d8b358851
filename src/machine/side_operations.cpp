#include "machine/side_operations.h"

#include <algorithm>

#include "machine/reading_limits.h"

namespace kv {

namespace {

constexpr std::size_t LongestOperation = 2 * LongestProgramLine; // bytes, of all its lines
constexpr std::size_t HeadLength = 15;                           // of a line that begins or ends something
constexpr double HighestVariable = 9999;

struct SideWord {
    std::string_view Name, Value; // "#1=100"; a word without a value, as "WTp", is its name alone
};

std::string_view TakenUpTo(std::string_view& rest, std::string_view ends)
{
    const std::string_view taken = rest.substr(0, rest.find_first_of(ends));
    rest.remove_prefix(taken.size());
    return taken;
}

// The next word of a line, which it takes off the rest; empty at the end, and ahead of a brace that closes.
// A value may come after blanks, if it is no word of its own: "#40= #205=71" has none.
SideWord NextSideWord(std::string_view& rest)
{
    rest = WithoutBlanksAround(rest);
    SideWord word{TakenUpTo(rest, " \t=}"), {}};
    const std::string_view after = WithoutBlanksAround(rest);
    if (!after.starts_with('='))
        return word;
    if (word.Name.empty())
        word.Name = after.substr(0, 1); // belongs to nothing
    rest = after.substr(1);
    std::string_view next = WithoutBlanksAround(rest);
    const bool apart = !rest.empty() && IsBlank(rest.front());
    const std::string_view value = TakenUpTo(next, " \t}");
    const bool isWord = value.starts_with('#') || value.starts_with(':') ||
                        value.find('=') != std::string_view::npos ||
                        WithoutBlanksAround(next).starts_with('=');
    if (!apart || !isWord) {
        word.Value = value;
        rest = next;
    }
    return word;
}

constexpr std::string_view SideEnd = "}SIDE";
constexpr std::size_t SideBeginLength = 7; // "SIDE#1{"

// The side that a line begins, 0 for none.
int SideBegun(const std::string& head)
{
    const bool begins = head.size() >= SideBeginLength && head.starts_with("SIDE#") &&
                        IsDecimalDigit(head[5]) && head[6] == '{';
    return begins ? head[5] - '0' : 0;
}

// What follows so many letters of a line, blanks not counted.
std::string_view AfterHead(std::string_view line, std::size_t letters)
{
    for (; letters > 0 && !line.empty(); line.remove_prefix(1))
        letters -= IsBlank(line.front()) ? 0 : 1;
    return WithoutBlanksAround(line);
}

bool BeginsOperation(const std::string& head, std::string_view line)
{
    return head.starts_with("W#") && line.find('{') != std::string_view::npos;
}

struct SideScan {
    SideSections& Sections;
    MachineSteps& Steps;
    const TakeSideOperation& Hand;
    std::string Section = {}; // "VAR{", empty outside of any
    int Side = 0;
    bool HasSize = false, SidesBegun = false, InOperation = false, Ended = false, Full = false;
    SideOperation Current = {};
    std::size_t Length = 0; // of the operation
    std::size_t Number = 0;

    void NotUnderstood(std::string_view line) const { AddUnread(Steps, Number, line); }

    // "::UNm DL=600 DH=400 DS=18"
    void TakeSize(std::string_view line, const std::string& head)
    {
        SideOperation sizes;
        for (std::string_view rest = line; !rest.empty() && rest.front() != '}';) {
            const SideWord word = NextSideWord(rest);
            sizes.Words.emplace_back(word.Name, word.Value);
        }
        const bool first = !HasSize, inches = head.starts_with("::UNI");
        HasSize = true;
        Sections.Unit = inches ? 25.4 : 1;
        Sections.Length = sizes.NumberOr("DL", 0) * Sections.Unit;
        Sections.Width = sizes.NumberOr("DH", 0) * Sections.Unit;
        Sections.Thickness = sizes.NumberOr("DS", 0) * Sections.Unit;
        const bool sized = sizes.NumberOf("DL") && sizes.NumberOf("DH") && sizes.NumberOf("DS");
        if (!sized || !first || (!inches && !head.starts_with("::UNM")))
            NotUnderstood(line);
    }
    // "#5=7.5|7.5": the text of the variable and what it comes to.
    void TakeVariable(std::string_view line)
    {
        const std::size_t equals = line.find('='), bar = line.find('|');
        if (line.empty())
            return;
        if (line[0] != '#' || equals == std::string_view::npos || bar == std::string_view::npos)
            return NotUnderstood(line);
        const std::optional<double> number = PlainNumber(WithoutBlanksAround(line.substr(1, equals - 1)));
        const std::optional<double> value = PlainNumber(WithoutBlanksAround(line.substr(bar + 1)));
        if (!number || *number < 0 || *number > HighestVariable)
            NotUnderstood(line);
        else if (value) // one of other variables has no value here; an operation that uses it is unread
            Sections.Variables[static_cast<int>(*number)] = *value;
    }
    void CloseOperation(bool whole)
    {
        InOperation = false;
        Current.IsClosed = whole;
        const SideTaken taken = Hand(Current);
        Full = taken == SideTaken::Full;
        if (taken != SideTaken::NotUnderstood)
            return;
        std::string text = Current.Code + "{";
        for (const std::string_view part : Current.Texts)
            text.append(" ").append(part);
        AddUnread(Steps, Current.Line, text);
    }
    // What follows the end of the operation in its line.
    std::string_view TakeOperationText(std::string_view line)
    {
        Length += line.size();
        std::string_view rest = line;
        while (!rest.empty() && rest.front() != '}') {
            const SideWord word = NextSideWord(rest);
            if (!word.Name.empty())
                Current.Words.emplace_back(word.Name, word.Value);
            rest = WithoutBlanksAround(rest);
        }
        const bool whole = !rest.empty() && HeadOfLine(rest, SideEnd.size()) != SideEnd;
        if (whole) { // "}W", "} W"
            rest = WithoutBlanksAround(rest.substr(1));
            rest.remove_prefix(HeadOfLine(rest, 1) == "W" ? 1 : 0);
        }
        Current.Texts.push_back(line.substr(0, line.size() - rest.size()));
        if (whole || !rest.empty() || Length > LongestOperation)
            CloseOperation(whole && Length <= LongestOperation);
        return WithoutBlanksAround(rest);
    }
    // Hands back what follows in the line.
    std::string_view BeginOperation(std::string_view line)
    {
        const std::size_t brace = line.find('{');
        Current.Words.clear();
        Current.Texts.clear();
        Current.Side = Side;
        Current.Code = HeadOfLine(line.substr(0, brace), HeadLength);
        Current.Line = Number;
        Length = 0;
        InOperation = true;
        return TakeOperationText(line.substr(brace + 1));
    }
    // Hands back what follows in the line.
    std::string_view TakeInSide(std::string_view line, const std::string& head)
    {
        const bool begins = BeginsOperation(head, line), ends = head.starts_with(SideEnd);
        if (InOperation && (begins || ends))
            CloseOperation(false);
        if (InOperation)
            return TakeOperationText(line);
        if (begins)
            return BeginOperation(line);
        if (ends) {
            Side = 0;
            return AfterHead(line, SideEnd.size());
        }
        if (!line.empty() && !head.starts_with("$=") && !head.starts_with("::LF="))
            NotUnderstood(line);
        return {};
    }
    // Hands back what follows in the line.
    std::string_view BeginSide(std::string_view line, const std::string& head)
    {
        if (InOperation)
            CloseOperation(false);
        Section.clear(); // one that nobody closed
        SidesBegun = true;
        Side = SideBegun(head);
        return AfterHead(line, SideBeginLength);
    }
    void TakeAhead(std::string_view line, const std::string& head)
    {
        if (head.starts_with("W#") || head.starts_with("SIDE#")) {
            NotUnderstood(line); // on no side
        } else if (!Section.empty()) {
            if (HeadOfLine(line, line.size()) == "}" + Section.substr(0, Section.size() - 1))
                Section.clear();
            else if (Section == "VAR{")
                TakeVariable(line);
        } else if (head.starts_with("::UN")) {
            TakeSize(line, head);
        } else if (!line.empty() && line.back() == '{') {
            Section = HeadOfLine(line, line.size());
        }
    }
    // Hands back what follows in the line.
    std::string_view TakePart(std::string_view line)
    {
        const std::string head = HeadOfLine(line, HeadLength);
        Ended = Ended || (SidesBegun && head.starts_with("::UN"));
        if (Ended) {
            if (InOperation)
                CloseOperation(false);
            if (!line.empty())
                NotUnderstood(line);
            return {};
        }
        if (SideBegun(head) != 0)
            return BeginSide(line, head);
        if (Side != 0)
            return TakeInSide(line, head);
        if (!SidesBegun)
            TakeAhead(line, head);
        else if (!line.empty())
            NotUnderstood(line);
        return {};
    }
    void Take(std::string_view line)
    {
        do
            line = TakePart(line);
        while (!line.empty() && !Full);
    }
    void TakeLongLine(std::string_view line)
    {
        if (InOperation)
            CloseOperation(false);
        NotUnderstood(line);
    }
    void End()
    {
        if (InOperation)
            CloseOperation(false);
        if (Side != 0 || !SidesBegun)
            NotUnderstood("the program ends too early");
    }
};

} // namespace

const std::string_view* SideOperation::ValueOf(std::string_view word) const
{
    for (const auto& [name, value] : Words)
        if (SameLetters(name, word))
            return &value;
    return nullptr;
}

std::string SideOperation::TextOf(std::string_view word) const
{
    const std::string_view* const value = ValueOf(word);
    return value == nullptr ? std::string() : std::string(*value);
}

std::optional<double> SideOperation::NumberOf(std::string_view word) const
{
    const std::string_view* const value = ValueOf(word);
    return value == nullptr ? std::nullopt : PlainNumber(*value);
}

double SideOperation::NumberOr(std::string_view word, double other) const
{
    return NumberOf(word).value_or(other);
}

bool SideOperation::AreNumbers(std::initializer_list<std::string_view> words) const
{
    return std::all_of(words.begin(), words.end(),
                       [this](std::string_view word) { return !Has(word) || NumberOf(word); });
}

void ReadSides(LineWalk lines, SideSections& sections, MachineSteps& steps, const TakeSideOperation& take)
{
    SideScan scan{sections, steps, take};
    while (!scan.Full && lines.Next()) {
        scan.Number = lines.Number();
        if (lines.Line().size() > LongestProgramLine)
            scan.TakeLongLine(lines.Line());
        else
            scan.Take(WithoutBlanksAround(lines.Line()));
    }
    if (scan.Full)
        AddRestUnread(steps, scan.Current.Line);
    else
        scan.End();
}

SideForm SideFormOf(std::string_view text)
{
    const auto any = [](std::initializer_list<std::string_view> beginnings, const std::string& head) {
        return std::any_of(beginnings.begin(), beginnings.end(),
                           [&head](std::string_view beginning) { return head.starts_with(beginning); });
    };
    bool hasSize = false, inSides = false;
    LineWalk lines(text);
    while (lines.Next()) {
        const std::string head = HeadOfLine(lines.Line().substr(0, LongestProgramLine), HeadLength);
        hasSize = hasSize || head.starts_with("::UN");
        inSides = inSides || SideBegun(head) != 0;
        if (!hasSize)
            continue;
        // The horizontal machine's program names its sides and their sizes; an Evolution has variables in a
        // section of its own.
        if (inSides && (any({"::LF=", "W#82{", "W#1501{"}, head) || head == "$=UPPER" || head == "$=BACK"))
            return SideForm::Hbd;
        if (head.starts_with("VARV{") || (inSides && head.starts_with("W#")))
            return SideForm::Evolution;
    }
    return hasSize ? SideForm::Evolution : SideForm::None;
}

} // namespace kv
