// The Tool Substitution dialog without its toolkit. Relies on the rows in the settings, which programs
// are written by while the dialog is open; leaves them stored by OK, read again by Cancel.
#include "shell/setup_rules.h"

namespace kv {

namespace {

// In the order of the grid's columns.
std::string ToolSubstitution::*const Columns[] = {&ToolSubstitution::Enabled, &ToolSubstitution::Tool,
                                                  &ToolSubstitution::ToolSub};

// Null outside the grid.
std::string* CellAt(int row, int column)
{
    const bool inRows = row >= 1 && row <= static_cast<int>(Config.ToolSubData.size());
    if (!inRows || column < 1 || column > static_cast<int>(std::size(Columns)))
        return nullptr;
    return &(Config.ToolSubData[static_cast<std::size_t>(row - 1)].*Columns[column - 1]);
}

} // namespace

void OpenToolSub()
{
    LoadToolSubstitutions();
}

void AcceptToolSub()
{
    SaveToolSubstitutions();
    TellIfNotWhole();
}

// At once and not at the next opening: a cancelled edit must reach no program.
void CancelToolSub()
{
    LoadToolSubstitutions();
}

std::string ToolSubCell(int row, int column)
{
    const std::string* const cell = CellAt(row, column);
    return cell == nullptr ? std::string() : *cell;
}

void SetToolSubCell(int row, int column, std::string_view text)
{
    if (std::string* const cell = CellAt(row, column))
        *cell = text;
}

} // namespace kv
