// Columns and file form of the settings grids. A file is text: one line a row, cells separated by
// tabs, in the order of the columns, without headers. Relies on the program's folder; leaves grids
// whose rows are as wide as their column table, whatever the file held.
#include "state/settings_grids.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr std::string_view ToolTypes[] = {"Horizontal", "Vertical", "Groove"};
constexpr GridColumn HbdTools[] = {
    {"Tool Type", CellKind::List, "", ToolTypes}, // an empty row is no tool
    {"Diameter", CellKind::Number, "", {}},
    {"Inserter", CellKind::Flag, "0", {}},
    {"Glue", CellKind::Flag, "0", {}},
};

// The control's own spelling of the third one is kept, since files hold the texts.
constexpr std::string_view Workings[] = {"-", "Holes", "Millings", "Angle Milllings", "Blades", "Insertions"};
constexpr std::string_view Directions[] = {"X -->", "X <--"};
constexpr GridColumn SortOptions[] = {
    {"Face", CellKind::Number, "0", {}},
    {"Face", CellKind::Number, "0", {}},
    {"Face", CellKind::Number, "0", {}},
    {"Face", CellKind::Number, "0", {}},
    {"Face", CellKind::Number, "0", {}},
    {"Face", CellKind::Number, "0", {}},
    {"Workings", CellKind::List, "-", Workings},
    {"Workings", CellKind::List, "-", Workings},
    {"Workings", CellKind::List, "-", Workings},
    {"Workings", CellKind::List, "-", Workings},
    {"Workings", CellKind::List, "-", Workings},
    {"Unify Tool Changes", CellKind::Flag, "0", {}},
    {"Sorting", CellKind::List, "X -->", Directions},
};

constexpr GridColumn ToolSubstitutions[] = {
    {"Enable", CellKind::Flag, "0", {}},
    {"Tool", CellKind::Number, "0", {}},
    {"Substitute", CellKind::Number, "0", {}},
};

std::vector<std::string> SplitAt(std::string_view text, char separator)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    std::size_t end = text.find(separator);
    while (end != std::string_view::npos) {
        parts.emplace_back(text.substr(start, end - start));
        start = end + 1;
        end = text.find(separator, start);
    }
    parts.emplace_back(text.substr(start));
    return parts;
}

// A blank cell, one behind the row's end and a text that the list does not have take the default.
void FillRow(std::vector<std::string>& row, std::span<const GridColumn> columns)
{
    row.resize(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const GridColumn& column = columns[i];
        const bool listed = std::ranges::find(column.Items, std::string_view(row[i])) != column.Items.end();
        if (Trim(row[i]).empty() || (column.Kind == CellKind::List && !listed))
            row[i] = column.Default;
    }
}

} // namespace

std::span<const GridColumn> HbdToolColumns()
{
    return HbdTools;
}

std::span<const GridColumn> SortOptionColumns()
{
    return SortOptions;
}

std::span<const GridColumn> ToolSubstitutionColumns()
{
    return ToolSubstitutions;
}

FileAnswer LoadGrid(std::string_view fileName, GridCells& cells)
{
    cells.clear();
    std::string contents;
    const FileAnswer answer = ReadIfThere(ExeFolder + std::string(fileName), contents);
    if (contents.empty())
        return answer;
    if (contents.back() == '\n')
        contents.pop_back(); // it ends the last row, it does not begin one
    for (std::string& line : SplitAt(contents, '\n')) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        cells.push_back(SplitAt(line, '\t'));
    }
    return answer;
}

FileOutcome SaveGrid(std::string_view fileName, const GridCells& cells)
{
    std::string contents;
    for (const std::vector<std::string>& row : cells) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            std::string cell = row[i];
            for (const char structural : {'\t', '\r', '\n'})
                ReplaceChar(cell, structural, ' ');
            contents += (i > 0 ? "\t" : "") + cell;
        }
        contents += "\r\n";
    }
    return ReplaceFile(ExeFolder + std::string(fileName), contents);
}

FileAnswer LoadHbdTools(GridCells& cells)
{
    const FileAnswer answer = LoadGrid(HbdToolFile, cells);
    for (std::vector<std::string>& row : cells)
        FillRow(row, HbdTools);
    return answer;
}

FileAnswer LoadSortOptions(GridCells& cells)
{
    const FileAnswer answer = LoadGrid(SortOptionFile, cells);
    cells.resize(SortOptionRows);
    for (std::vector<std::string>& row : cells)
        FillRow(row, SortOptions);
    return answer;
}

std::string GridCell(const GridCells& cells, std::size_t row, std::size_t column)
{
    if (row < 1 || row > cells.size() || column < 1 || column > cells[row - 1].size())
        return {};
    return cells[row - 1][column - 1];
}

int ListItem(const GridColumn& column, std::string_view text)
{
    const auto place = std::ranges::find(column.Items, text);
    return place == column.Items.end() ? 0 : static_cast<int>(place - column.Items.begin());
}

} // namespace kv
