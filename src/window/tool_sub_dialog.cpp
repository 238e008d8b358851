// The grid is read at each opening, so that the edits of a cancelled dialog are gone.
#include "window/tool_sub_dialog.h"

#include <QVBoxLayout>

#include "shell/setup_rules.h"
#include "window/controls.h"
#include "window/dialog_layout.h"

namespace kv {

ToolSubDialog::ToolSubDialog(QWidget* parent) : QDialog(parent)
{
    const ControlMaker maker{"ToolSub"};
    setObjectName(QStringLiteral("ToolSub"));
    setWindowTitle(CaptionOf("ToolSub", "ToolSub"));
    Table = new GridEditor("ToolSub", "ToolSubTbl", ToolSubstitutionColumns(), ToolSubstitutionRows);
    QPushButton* const ok = maker.Button("BtnOK");
    QPushButton* const cancel = maker.Button("btnCan");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, [this] { accept(); });
    connect(cancel, &QPushButton::clicked, this, [this] { reject(); });
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* const whole = new QVBoxLayout(this);
    whole->addWidget(Table);
    whole->addLayout(buttons);
    ChainTabOrder({Table, ok, cancel});
}

void ToolSubDialog::Open()
{
    OpenToolSub();
    GridCells cells(ToolSubstitutionRows);
    for (int row = 1; row <= ToolSubstitutionRows; ++row) {
        for (int column = 1; column <= Table->columnCount(); ++column)
            cells[static_cast<std::size_t>(row - 1)].push_back(ToolSubCell(row, column));
    }
    Table->ShowCells(cells);
    Table->setFocus();
    CentreOnScreen(*this);
    exec();
}

void ToolSubDialog::accept()
{
    const GridCells cells = Table->Cells();
    QDialog::accept();
    for (int row = 1; row <= ToolSubstitutionRows; ++row) {
        for (int column = 1; column <= Table->columnCount(); ++column)
            SetToolSubCell(row, column,
                           GridCell(cells, static_cast<std::size_t>(row), static_cast<std::size_t>(column)));
    }
    AcceptToolSub();
}

void ToolSubDialog::reject()
{
    QDialog::reject();
    CancelToolSub();
}

} // namespace kv
