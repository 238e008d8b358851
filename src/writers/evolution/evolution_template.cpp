// Fills the fields of the Genesis Evolution's template. Relies on rows that the template names by
// their marks; a row that is not there leaves the template as it is. Leaves the part's description
// settled in the run block.
#include <algorithm>

#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/needed_files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/carry_over.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/settings_grids.h"
#include "writers/evolution/evolution_writer.h"
#include "writers/program_families.h"
#include "writers/program_writers.h"

namespace kv {

namespace {

constexpr Long DescriptionPlace = 2, PanelPlace = 4; // fields
constexpr Long LastSideListPlace = 9;

// Rows of variables: A to G or V0 to V6 are 1 to 7.
constexpr char BeforeA = '@';
constexpr Long LetterV = 0x16;
constexpr Long FirstRowTooFar = 8;

// What a list item of the grid's "Workings" is called in the program, by its place in the list.
constexpr std::string_view WorkingCodes[] = {"0;", "81;", "89;", "91;", "95;", "50;"};
constexpr std::size_t FaceColumns = 6;        // 1 to 6
constexpr std::size_t LastWorkingColumn = 11; // 7 to 11
constexpr std::size_t UnifyColumn = 12, DirectionColumn = 13;

std::string OffsetRow(Long number, Single value)
{
    const std::string text = value == 0 ? "0.0|0" : PlainText(value) + "|" + PlainText(value);
    return "\n#" + WholeText(number) + "=" + text;
}

void FillOffsets(TemplateFields& fields)
{
    const Single offsets[] = {Run.OffsetX, Run.OffsetY, Run.OffsetZ};
    if (std::ranges::all_of(offsets, [](Single offset) { return offset == 0; }))
        return;
    const Long row = FieldHolding(fields, "OFFS{");
    if (row == 0)
        return;
    for (Long i = 0; i < 3; ++i)
        ReplaceField(fields, row + 1 + i, OffsetRow(i, offsets[i]));
}

// A letter's own row, or the one of the number behind a V. No bounds below: V-1 means the row "VARV{"
// itself. Letter V's own number lets V21 through.
Long RowOfVariable(const std::string& name)
{
    const Long letter = static_cast<unsigned char>(name[0]) - BeforeA;
    if (letter != LetterV)
        return letter;
    constexpr double farthest = 1e6; // no template has as many rows
    return ToLong(std::clamp(Val(name.substr(1)) + 1, -farthest, farthest));
}

void FillVariables(TemplateFields& fields)
{
    const Long row = Run.HasVars != 0 ? FieldHolding(fields, "VARV{") : 0;
    if (row == 0 || row == fields.Count)
        return;
    for (std::size_t i = 1; i < Run.VarNames.size(); ++i) {
        if (Run.VarNames[i].empty())
            continue;
        const Long index = RowOfVariable(Run.VarNames[i]);
        const std::string& value = Run.VarValues[i];
        if (index < FirstRowTooFar || index == LetterV)
            ReplaceField(fields, row + index, "\n#" + WholeText(index - 1) + "=" + value + "|" + value);
    }
}

// The drawing's own mode, else that of the radio buttons, of which the last one that is on counts.
Int SortMode()
{
    if (Run.OptimizeSide != Run.Alone.OptimizeSide)
        NoteTakenOver("sorting", WholeText(Run.OptimizeSide));
    if (Run.OptimizeSide != 0)
        return Run.OptimizeSide;
    const bool radios[] = {Config.EvOptOff, Config.EvOptLR, Config.EvOptRL, Config.EvOptGS, Config.EvOptSS};
    Int mode = 0;
    for (Int i = 0; i < 5; ++i) {
        if (radios[i])
            mode = i;
    }
    return mode;
}

void FillSorting(TemplateFields& fields)
{
    const Int mode = SortMode();
    if (mode == 0)
        return;
    const Long row = FieldHolding(fields, "OPTI{");
    if (row == 0 || row == fields.Count)
        return;
    Long place = row;
    for (const std::string& text : BuildOptimizerRows(mode))
        ReplaceField(fields, ++place, "\n" + text);
}

std::string FaceRow(const GridCells& grid, std::size_t n)
{
    std::string text = "::";
    for (std::size_t column = 1; column <= FaceColumns; ++column)
        text += GridCell(grid, n, column) + ";";
    return text;
}

std::string WorkingRow(const GridCells& grid, std::size_t n)
{
    const std::span<const GridColumn> columns = SortOptionColumns();
    const auto itemOf = [&](std::size_t column) {
        return ListItem(columns[column - 1], GridCell(grid, n, column));
    };
    std::string text = "::";
    for (std::size_t column = FaceColumns + 1; column <= LastWorkingColumn; ++column)
        text += WorkingCodes[itemOf(column)];
    // The value of a list is the place of its item.
    return text + GridCell(grid, n, UnifyColumn) + ";" + WholeText(itemOf(DirectionColumn)) + ";";
}

} // namespace

std::vector<std::string> BuildOptimizerRows(Int sorting)
{
    GridCells grid;
    IsThere(ExeFolder + std::string(SortOptionFile), LoadSortOptions(grid)); // else all as designed
    std::vector<std::string> rows = {"::" + WholeText(sorting)};
    for (std::size_t n = 1; n <= SortOptionRows; ++n)
        rows.push_back(FaceRow(grid, n));
    for (std::size_t n = 1; n <= SortOptionRows; ++n)
        rows.push_back(WorkingRow(grid, n));
    return rows;
}

bool LoadEvolutionTemplate(TemplateFields& fields)
{
    const std::string path = ExeFolder + std::string(EvolutionTemplateName);
    std::string text;
    const FileAnswer answer = ReadIfThere(path, text, LargestTemplate);
    switch (answer.Is) {
    case Presence::There:
        fields = CutFields(std::move(text));
        return true;
    case Presence::NotThere:
        TellInABox(Message::EvolutionTemplateMissing, {}, "Alert!", BoxIcon::Error);
        break;
    case Presence::CannotTell:
        Tell(Message::EvolutionTemplateUnread, {{"file", ShownPath(path)}, {"cause", answer.Why.Cause}});
        break;
    }
    FailDrawing();
    return false;
}

void FillEvolutionTemplate(TemplateFields& fields)
{
    if (Trim(Run.PartDescription).empty())
        Run.PartDescription = "KORVANTI " + std::string(ProductVersion);
    PutField(fields, DescriptionPlace, DescriptionField());
    PutField(fields, PanelPlace, PanelField(Run.SideWidth[Face], Run.SideHeight[Face]));
    FillOffsets(fields);
    FillVariables(fields);
    AppendRVariables(fields);
    FillSorting(fields);
}

void FillSideList(TemplateFields& fields, const std::string& list)
{
    for (Long n = 1; n <= LastSideListPlace; ++n) {
        if (Holds(UpperCase(FieldText(fields, n)), "::SIDE=")) {
            ReplaceField(fields, n, list);
            return;
        }
    }
}

} // namespace kv
