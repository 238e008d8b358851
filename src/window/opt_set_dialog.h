// Optimizer Settings: how a Genesis Evolution program sorts its operations. Relies on setup_rules.h;
// leaves the choice in Config at each click and, by OK, the sorting grid in its file.
#pragma once

#include <QButtonGroup>
#include <QDialog>
#include <QTabWidget>

#include "window/bindings.h"
#include "window/grid_editor.h"

namespace kv {

class OptSetDialog : public QDialog {
  public:
    explicit OptSetDialog(QWidget& parent);

    void Open();
    void accept() override;

  private:
    void ShowSortMode();
    void ShowSorting();

    QTabWidget* Tabs;
    QButtonGroup* Modes;
    GridEditor* Sorting;
    bool SortingRead = false; // else what the grid shows is not the file's
};

} // namespace kv
