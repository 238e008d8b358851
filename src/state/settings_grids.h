// The two grids that are kept in plain files of their own: the tools of the horizontal drill and the
// generic sorting of the Genesis Evolution. Cells are texts; rows and columns of the operator's
// screen count from 1.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "state/settings.h"

namespace kv {

enum class CellKind {
    Number,
    Flag, // "0" or "1"
    List, // one of the items' texts
};

struct GridColumn {
    std::string_view Header;
    CellKind Kind;
    std::string_view Default;
    std::span<const std::string_view> Items; // of a list
};

constexpr std::string_view HbdToolFile = "KVHBD.cfg";
constexpr std::string_view SortOptionFile = "OptSettings.Dat";
constexpr std::size_t SortOptionRows = 6; // one for each face

std::span<const GridColumn> HbdToolColumns();          // one row for each tool
std::span<const GridColumn> SortOptionColumns();       // SortOptionRows rows
std::span<const GridColumn> ToolSubstitutionColumns(); // ToolSubstitutionRows rows, kept in KV90.INI

constexpr std::size_t HbdToolRows = 20; // of a full table

// As many rows as the file has, each with all columns; no rows without a file, and when it cannot be read.
FileAnswer LoadHbdTools(GridCells& cells);
// Always all rows and columns; what the file does not give stands at its default, and all of it does when
// the file cannot be read.
FileAnswer LoadSortOptions(GridCells& cells);

// The text of a cell, row and column from 1; empty outside the grid.
std::string GridCell(const GridCells& cells, std::size_t row, std::size_t column);
// Place of a list cell's text among the column's items, from 0; 0 for any other text.
int ListItem(const GridColumn& column, std::string_view text);

} // namespace kv
