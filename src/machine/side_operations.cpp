#include "machine/side_operations.h"

#include <algorithm>
#include <sstream>

#include "machine/text_lines.h"

namespace kv {

namespace {

bool BeginsWith(const std::string& text, const std::string& head)
{
    return text.rfind(head, 0) == 0;
}

// "#1=100" under "#1"; a word without a value, as "WTp", under itself.
void TakeSideWord(SideOperation& operation, const std::string& word)
{
    const std::size_t equals = std::min(word.find('='), word.size());
    operation.Words.emplace(word.substr(0, equals), word.substr(std::min(equals + 1, word.size())));
}

struct SectionReader {
    SideSections Sections;
    std::string Section; // "VAR{", empty outside of any
    int Side = 0;
    bool SidesBegun = false, InOperation = false;
    std::size_t Number = 0;

    void NotUnderstood(const std::string& line) { Sections.Unread.push_back(UnreadLine(Number, line)); }

    // "::UNm DL=600 DH=400 DS=18"
    void TakeSize(const std::string& line)
    {
        SideOperation sizes;
        std::istringstream text(line);
        for (std::string word; text >> word;)
            TakeSideWord(sizes, word);
        Sections.Unit = BeginsWith(line, "::UNi") ? 25.4 : 1;
        Sections.Length = sizes.NumberOr("DL", 0) * Sections.Unit;
        Sections.Width = sizes.NumberOr("DH", 0) * Sections.Unit;
        Sections.Thickness = sizes.NumberOr("DS", 0) * Sections.Unit;
        if (!sizes.NumberOf("DL") || !sizes.NumberOf("DH") || !sizes.NumberOf("DS"))
            NotUnderstood(line);
    }
    // "#5=7.5|7.5": the text of the variable and what it comes to.
    void TakeVariable(const std::string& line)
    {
        const std::size_t equals = line.find('='), bar = line.find('|');
        if (line[0] != '#' || equals == std::string::npos || bar == std::string::npos)
            return NotUnderstood(line);
        const std::optional<double> number = PlainNumber(line.substr(1, equals - 1));
        const std::optional<double> value = PlainNumber(line.substr(bar + 1));
        if (!number)
            NotUnderstood(line);
        else if (value) // one of other variables has no value here; an operation that uses it is unread
            Sections.Variables[static_cast<int>(*number)] = *value;
    }
    void TakeOperationText(const std::string& line)
    {
        SideOperation& operation = Sections.Operations.back();
        operation.Text += (operation.Text.empty() ? "" : " ") + line;
        std::istringstream text(line);
        for (std::string word; text >> word;) {
            if (word == "}W")
                InOperation = false;
            else
                TakeSideWord(operation, word);
        }
    }
    void TakeInSide(const std::string& line)
    {
        const std::size_t brace = line.find('{');
        if (InOperation) {
            TakeOperationText(line);
        } else if (line == "}SIDE") {
            Side = 0;
        } else if (BeginsWith(line, "W#") && brace != std::string::npos) {
            SideOperation operation;
            operation.Side = Side;
            operation.Code = line.substr(0, brace);
            operation.Line = Number;
            Sections.Operations.push_back(operation);
            InOperation = true;
            TakeOperationText(line.substr(brace + 1));
        } else if (!BeginsWith(line, "$=") && !BeginsWith(line, "::LF=")) {
            NotUnderstood(line);
        }
    }
    void TakeAhead(const std::string& line)
    {
        if (!Section.empty()) {
            if (line == "}" + Section.substr(0, Section.size() - 1))
                Section.clear();
            else if (Section == "VAR{")
                TakeVariable(line);
        } else if (BeginsWith(line, "::UN")) {
            TakeSize(line);
        } else if (!line.empty() && line.back() == '{') {
            Section = line;
        }
    }
    void Take(const std::string& line)
    {
        ++Number;
        if (Section.empty() && Side == 0 && BeginsWith(line, "SIDE#") && line.size() == 7 && line[6] == '{') {
            SidesBegun = true;
            Side = line[5] - '0';
        } else if (Side != 0) {
            TakeInSide(line);
        } else if (!SidesBegun) {
            TakeAhead(line);
        } else if (!line.empty()) {
            NotUnderstood(line);
        }
    }
};

} // namespace

std::optional<double> SideOperation::NumberOf(const std::string& word) const
{
    const auto found = Words.find(word);
    return found == Words.end() ? std::nullopt : PlainNumber(found->second);
}

double SideOperation::NumberOr(const std::string& word, double other) const
{
    return NumberOf(word).value_or(other);
}

SideSections SectionsOf(const std::vector<std::string>& lines)
{
    SectionReader reader;
    for (const std::string& line : lines)
        reader.Take(line);
    if (reader.Side != 0 || reader.InOperation || !reader.SidesBegun)
        reader.NotUnderstood("the program ends too early");
    return reader.Sections;
}

} // namespace kv
