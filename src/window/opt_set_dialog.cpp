// The grid is read once, when the dialog is made: what a cancelled edit leaves on the screen stays there
// until the program starts again. The choice needs no OK, it is kept with the other settings.
#include "window/opt_set_dialog.h"

#include <QVBoxLayout>

#include "platform/paths.h"
#include "shell/setup_rules.h"
#include "shell/start_up.h"
#include "state/report.h"
#include "state/settings.h"
#include "window/controls.h"
#include "window/dialog_layout.h"

namespace kv {

namespace {

constexpr int SortModes = 5;
constexpr int SortingTab = 1;
constexpr int DialogWidth = 12500; // twips

} // namespace

OptSetDialog::OptSetDialog(QWidget& parent) : QDialog(&parent)
{
    const ControlMaker maker{"OptSet"};
    setObjectName(QStringLiteral("OptSet"));
    setWindowTitle(CaptionOf("OptSet", "OptSet"));
    Tabs = new QTabWidget;
    Tabs->setObjectName(QStringLiteral("SSOptTab"));
    Modes = new QButtonGroup(this);
    auto* const choices = new QVBoxLayout;
    for (int mode = 0; mode < SortModes; ++mode) {
        QRadioButton* const radio = maker.Radio(Indexed("EVOpt", mode));
        Modes->addButton(radio, mode);
        choices->addWidget(radio);
    }
    choices->addStretch();
    Sorting = new GridEditor("OptSet", "GSortOpt", SortOptionColumns(), static_cast<int>(SortOptionRows));
    ShowSorting();
    auto* const sorting = new QVBoxLayout;
    sorting->addWidget(Sorting);
    AddTab(*Tabs, "OptSet", 0, choices);
    AddTab(*Tabs, "OptSet", SortingTab, sorting);
    Tabs->setCurrentIndex(0);

    QPushButton* const ok = maker.Button("BtnOK");
    QPushButton* const cancel = maker.Button("btnCan");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, [this] { accept(); });
    connect(cancel, &QPushButton::clicked, this, [this] { reject(); });
    connect(Modes, &QButtonGroup::idToggled, this, [this](int mode, bool on) {
        if (!on)
            return;
        ClickEvolutionSort(mode);
        ShowSortMode();
    });
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* const whole = new QVBoxLayout(this);
    whole->addWidget(Tabs);
    whole->addLayout(buttons);
    ChainTabOrder({Modes->button(0), Modes->button(1), Modes->button(2), Modes->button(3), Modes->button(4),
                   Sorting, ok, cancel});
}

// A new installation has no mode on, though the sort value is that of the first one.
void OptSetDialog::ShowSortMode()
{
    ShowRadio(*Modes, ShowSelectedEvolutionSort().empty() ? -1 : EvolutionSort());
    Tabs->setTabVisible(SortingTab, GenericSortingAvailable());
}

// A grid that cannot be read is shown as designed and must not be stored so.
void OptSetDialog::ShowSorting()
{
    GridCells cells;
    const FileAnswer answer = LoadSortOptions(cells);
    SortingRead = answer.Is != Presence::CannotTell;
    if (!SortingRead)
        TellAtOnce(Message::TableLeft, {{"file", ShownPath(ExeFolder + std::string(SortOptionFile))},
                                        {"cause", answer.Why.Cause}});
    Sorting->ShowCells(cells);
}

void OptSetDialog::Open()
{
    ShowSortMode();
    QAbstractButton* const selected = Modes->checkedButton();
    (selected != nullptr ? selected : Modes->button(0))->setFocus();
    CentreOnScreen(*this, QSize(DialogWidth / TwipsPerPixel, 0));
    exec();
}

void OptSetDialog::accept()
{
    const GridCells cells = Sorting->Cells();
    QDialog::accept();
    const FileOutcome outcome = SortingRead ? SaveGrid(SortOptionFile, cells) : FileOutcome{};
    if (outcome.Ok())
        return;
    const std::string file = ShownPath(ExeFolder + std::string(SortOptionFile));
    TellAtOnce(Message::TableNotSaved, {{"file", file}, {"cause", outcome.Cause}});
}

} // namespace kv
