// Tool Substitution: which tool of the drawings is replaced by which. Relies on setup_rules.h; leaves
// the rows in KV90.INI (OK) or as they stand there (Cancel).
#pragma once

#include <QDialog>

#include "window/grid_editor.h"

namespace kv {

class ToolSubDialog : public QDialog {
  public:
    explicit ToolSubDialog(QWidget* parent);

    void Open();
    void accept() override;
    void reject() override;

  private:
    GridEditor* Table;
};

} // namespace kv
