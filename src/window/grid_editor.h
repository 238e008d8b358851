// A grid of settings that is edited in place: numbers, flags and lists by the column tables of
// settings_grids.h. Relies on their defaults for every cell that nobody gave; leaves the cells as texts.
// Keys: arrows walk, Enter or F2 edits, Space ticks a flag, Delete brings the default back, Ctrl+C and
// Ctrl+V carry cells. Tab leaves the grid, or goes on to the next cell while one is edited.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include <QTableWidget>

#include "state/settings_grids.h"

namespace kv {

class GridEditor : public QTableWidget {
  public:
    GridEditor(std::string_view form, std::string_view name, std::span<const GridColumn> columns, int rows);

    // At least as many rows as designed; rows behind the end of `cells` stand at their defaults.
    void ShowCells(const GridCells& cells);
    // All rows, with the cell that is being edited right now.
    GridCells Cells();

    // Row and column from 0.
    std::string CellText(int row, int column) const;
    void SetCellText(int row, int column, std::string_view text);

    // Widths by headers and contents, as the font is now.
    void FitColumns();
    // All columns, unless they are very wide, and a good many rows.
    QSize sizeHint() const override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void CloseOpenEditor();
    void CopyCells() const;
    void PasteCells();
    void ClearCells();

    std::span<const GridColumn> Columns;
    int DesignedRows;
};

} // namespace kv
