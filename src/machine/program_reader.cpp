// Looks for the family's own words and hands the text on to its reader.
#include "machine/program_reader.h"

#include "machine/block_words.h"
#include "machine/cnc_reader.h"
#include "machine/evolution_reader.h"
#include "machine/hbd_reader.h"
#include "machine/side_operations.h"
#include "machine/text_lines.h"

namespace kv {

namespace {

// Header and name are the first lines that are neither empty nor comments. One that looks like a header is
// enough; where it was spoilt by hand, the name after it says what was meant. The same code begins programs
// of other makes.
bool IsCncProgram(std::string_view text)
{
    LineWalk lines(text);
    for (bool spoilt = false; lines.Next();) {
        const std::string_view line = WithoutBlanksAround(lines.Line().substr(0, LongestProgramLine));
        if (line.empty() || line.front() == '*' || line.front() == '-')
            continue;
        if (spoilt)
            return IsCncName(line);
        const int code = WordsOfBlock(line).Code;
        if (LooksLikeCncHeader(line) || (code != 70 && code != 71))
            return LooksLikeCncHeader(line);
        spoilt = true;
    }
    return false;
}

} // namespace

ProgramFamily FamilyOf(std::string_view text)
{
    if (IsCncProgram(text))
        return ProgramFamily::Cnc;
    switch (SideFormOf(text)) {
    case SideForm::Evolution:
        return ProgramFamily::Evolution;
    case SideForm::Hbd:
        return ProgramFamily::Hbd;
    case SideForm::None:
        break;
    }
    return ProgramFamily::Unknown;
}

MachineSteps ReadProgram(std::string_view text, const ProgramFacts& facts)
{
    switch (FamilyOf(text)) {
    case ProgramFamily::Cnc:
        return ReadCncText(text, {facts.UpperAndLowerExchanged, {}});
    case ProgramFamily::Evolution:
        return ReadEvolutionText(text, {facts.From, true});
    case ProgramFamily::Hbd:
        return ReadHbdText(text, {facts.HbdEdge, facts.From});
    case ProgramFamily::Unknown:
        break;
    }
    MachineSteps steps;
    steps.Unread.push_back("1: no program of a known control");
    steps.UnreadCount = 1;
    return steps;
}

} // namespace kv
