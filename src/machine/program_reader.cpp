// Looks for the family's own words, brings hand-edited lines into the form that the reader of the family
// takes, and hands them on.
#include "machine/program_reader.h"

#include <algorithm>

#include "machine/cnc_reader.h"
#include "machine/evolution_reader.h"
#include "machine/hbd_reader.h"
#include "machine/text_lines.h"

namespace kv {

namespace {

constexpr std::size_t MostUnread = 1000; // lines that are kept
constexpr std::string_view ByteMark = "\xEF\xBB\xBF";

std::string Stripped(const std::string& line)
{
    const std::size_t first = line.find_first_not_of(" \t");
    if (first == std::string::npos)
        return {};
    return line.substr(first, line.find_last_not_of(" \t") - first + 1);
}

bool BeginsWithOneOf(std::string_view line, std::initializer_list<std::string_view> heads)
{
    return std::any_of(heads.begin(), heads.end(),
                       [line](std::string_view head) { return line.starts_with(head); });
}

// The letter of a tool's number stays small: T01a3.
std::string AsCncLine(const std::string& line)
{
    std::string text = Stripped(line);
    if (BeginsWithOneOf(text, {"*", "-", "G150("}))
        return text;
    constexpr std::size_t letterOfTool = 3; // behind the T and the group
    std::size_t sinceTool = letterOfTool + 1;
    for (char& c : text) {
        const bool isSmall = c >= 'a' && c <= 'z';
        if (++sinceTool != letterOfTool && isSmall)
            c = static_cast<char>(c - 'a' + 'A');
        if (c == 'T')
            sinceTool = 0;
    }
    return text;
}

std::vector<std::string> ProgramLinesOf(std::string_view text)
{
    if (text.starts_with(ByteMark))
        text.remove_prefix(ByteMark.size());
    return LinesOf(text);
}

MachineSteps ReadLines(const std::vector<std::string>& lines, ProgramFamily family, const ProgramFacts& facts)
{
    if (family == ProgramFamily::Evolution) {
        EvolutionReading how;
        how.From = facts.From;
        return ReadEvolution(lines, how);
    }
    if (family == ProgramFamily::Hbd) {
        HbdReading how;
        how.Edge = facts.HbdEdge;
        how.From = facts.From;
        return ReadHbd(lines, how);
    }
    CncReading how;
    how.UpperAndLowerExchanged = facts.UpperAndLowerExchanged;
    return ReadCnc(lines, how);
}

} // namespace

ProgramFamily FamilyOf(std::string_view text)
{
    constexpr std::size_t headLines = 400; // an Evolution's sections come before its sides
    const std::vector<std::string> lines = ProgramLinesOf(text.substr(0, 64 * 1024));
    if (lines.empty())
        return ProgramFamily::Unknown;
    if (BeginsWithOneOf(AsCncLine(lines.front()), {"G70", "G71"}))
        return ProgramFamily::Cnc;
    bool hasSize = false;
    for (std::size_t i = 0; i < std::min(lines.size(), headLines); ++i) {
        const std::string line = Stripped(lines[i]);
        hasSize = hasSize || line.starts_with("::UN");
        // The horizontal machine's program names its sides; an Evolution has variables in a section of its
        // own.
        if (hasSize && line == "$=upper")
            return ProgramFamily::Hbd;
        if (hasSize && BeginsWithOneOf(line, {"W#", "VARV{"}))
            return ProgramFamily::Evolution;
    }
    return hasSize ? ProgramFamily::Evolution : ProgramFamily::Unknown;
}

MachineSteps ReadProgram(std::string_view text, const ProgramFacts& facts)
{
    const ProgramFamily family = FamilyOf(text);
    MachineSteps steps;
    if (family == ProgramFamily::Unknown) {
        steps.Unread.push_back("1: no program of a known control");
        steps.UnreadCount = 1;
        return steps;
    }
    std::vector<std::string> lines = ProgramLinesOf(text);
    for (std::string& line : lines)
        line = family == ProgramFamily::Cnc ? AsCncLine(line) : Stripped(line);
    steps = ReadLines(lines, family, facts);
    steps.UnreadCount = steps.Unread.size();
    if (steps.Unread.size() > MostUnread)
        steps.Unread.resize(MostUnread);
    return steps;
}

} // namespace kv
