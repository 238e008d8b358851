// Fields, variables and file of the programs that are ordered by panel sides. Relies on the run block;
// keeps nothing.
#include "writers/side_program.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/run.h"
#include "writers/job_output.h"
#include "writers/number_format.h"
#include "writers/program_lines.h"

namespace kv {

namespace {

constexpr double FirstVariableDepth = 200;

} // namespace

std::string DescriptionField()
{
    return "\n$=" + Run.PartDescription;
}

std::string PanelField(Single width, Single height)
{
    return "\n::UN" + std::string(Run.DrawingInInch != 0 ? "i" : "m") + " DL=" + FormatCoord(width) +
           " DH=" + FormatCoord(height) + " DS=" + FormatCoord(Run.PartThickness) + "\r";
}

void AppendRVariables(TemplateFields& fields)
{
    const Long row = Run.HasVars != 0 ? FieldHolding(fields, "VAR{") : 0;
    if (row == 0)
        return;
    std::string text(FieldText(fields, row));
    for (std::size_t i = 1; i < Run.VarNames.size(); ++i) {
        const std::string& name = Run.VarNames[i];
        const std::string& value = Run.VarValues[i];
        if (!BeginsWith(name, "R"))
            continue;
        const Long number = ToLong(Val(name.substr(1)));
        text += "\r\n#" + WholeText(number) + "=" + value + "|" + value;
    }
    ReplaceField(fields, row, std::move(text));
}

std::string SideDepthWord(Single depth)
{
    if (depth < FirstVariableDepth)
        return "#3=" + FormatCoord(-depth);
    return "#3=R" + FormatCoord(ToSingle(static_cast<double>(depth) - FirstVariableDepth));
}

std::string DiameterWord(Single diameter)
{
    std::string text = PlainText(diameter);
    const std::size_t point = text.find('.');
    if (point == 0 || (point == 1 && text[0] == '-'))
        text.insert(point, "0");
    return "#1002=" + text;
}

bool PlaceSideProgram(const std::string& path, const TemplateFields& fields, const SideTexts& sides)
{
    const std::string head = JoinedFields(fields);
    const FileOutcome outcome = HandOverProgram(FolderOf(path), path, head + sides.SideText[0] + "\r\n");
    if (outcome.Ok()) {
        std::vector<Long> drawn(static_cast<std::size_t>(std::count(head.begin(), head.end(), '\n')), 0);
        drawn.insert(drawn.end(), sides.DrawnOfLine[0].begin(), sides.DrawnOfLine[0].end());
        NoteLines(path, std::move(drawn));
        return true;
    }
    Tell(Message::SideProgramNotPlaced, {{"file", ShownPath(path)}});
    Tell(Message::SideProgramCause, {{"file", ShownPath(path)}, {"cause", outcome.Cause}});
    Run.RunFailed = True;
    return false;
}

} // namespace kv
