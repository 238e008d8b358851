// The View menu: what it shows in the folder's row and in the list. All of it is off at first.
#include <QMenuBar>
#include <QScreen>

#include "platform/paths.h"
#include "platform/text.h"
#include "shell/control_tables.h"
#include "shell/file_list.h"
#include "shell/first_steps.h"
#include "shell/recent_folders.h"
#include "shell/start_up.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "window/boxes.h"
#include "window/controls.h"
#include "window/main_window.h"
#include "window/view_store.h"

namespace kv {

namespace {

constexpr std::string_view ViewsSection = "KVFrmViews";

QAction* Switch(QMenu& menu, const char* name, const char* text, const QKeySequence& key)
{
    QAction* const action = menu.addAction(QLatin1String(text));
    action->setObjectName(QLatin1String(name));
    action->setCheckable(true);
    action->setShortcut(key);
    return action;
}

} // namespace

void MainWindow::MakeViewMenu()
{
    QMenu* const view = menuBar()->addMenu(QStringLiteral("&View"));
    view->setObjectName(QStringLiteral("MnuView"));
    StateShown = Switch(*view, "MnuState", "&State", {});
    FilterShown = Switch(*view, "MnuFilter", "&Filter", QKeySequence(Qt::CTRL | Qt::Key_F));
    FoldersShown = Switch(*view, "MnuFolders", "&Recent Folders", {});
    AddProgramView(*view);
    view->addSeparator();
    QAction* const fresh = view->addAction(QStringLiteral("Select &New and Changed"));
    fresh->setObjectName(QStringLiteral("MnuSelectNew"));
    fresh->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_N));
    connect(fresh, &QAction::triggered, this, [] {
        if (!Shell.RunActive)
            SelectNewAndChanged();
    });
    connect(List1->Explain, &QAction::triggered, this, [this] { ExplainListed(); });
    connect(StateShown, &QAction::toggled, this, [this](bool on) {
        ViewsTouched = true;
        List1->ShowStateColumn(on);
        Arrange(4);
    });
    connect(FilterShown, &QAction::toggled, this, [this](bool on) { TakeFilter(on); });
    connect(FoldersShown, &QAction::toggled, this, [this](bool on) {
        ViewsTouched = true;
        Folder->Recent->setVisible(on);
    });
    connect(Folder->Filter, &QLineEdit::textChanged, this, [this](const QString& words) {
        List1->SetFilter(words);
        ShowFirstSteps();
    });
    Folder->FilterLeft = [this] { FilterShown->setChecked(false); };
    Folder->Folders = RecentFolders;
    Folder->FolderChosen = [](const std::string& folder) { ChangeSourceFolder(folder); };
}

// A field that cannot be seen filters nothing.
void MainWindow::TakeFilter(bool on)
{
    ViewsTouched = true;
    Folder->Filter->setVisible(on);
    if (on)
        Folder->Filter->setFocus();
    else {
        Folder->Filter->clear();
        List1->setFocus();
    }
}

void MainWindow::ExplainListed()
{
    if (const std::string drawing = ListedDrawing(); !drawing.empty())
        Explanation->Explain(drawing);
}

std::string MainWindow::ListedDrawing() const
{
    const int row = List1->SelectedRow();
    if (row < 0 || row >= static_cast<int>(FileList.Rows.size()))
        return {};
    const std::string name(Trim(FileList.Rows[static_cast<std::size_t>(row)].Cells[1]));
    return name.empty() ? name : WithBackslash(FileList.LabDXFPath) + name;
}

void MainWindow::WireFirstSteps()
{
    const auto choose = [this](const char* browser, const std::string& now, void (*take)(std::string_view)) {
        const ControlRow* const words = FindControl("SetUp", browser);
        const QString chosen =
            Person.ChooseFolder(this, Shown(words->Caption), Shown(words->Default), ShownAsPath(now));
        if (!chosen.isEmpty())
            take(PathTyped(chosen));
        RefreshFileList();
    };
    FirstSteps->ChooseDrawings = [choose] {
        choose("SPB1.Browser", SourcePath(SelectedSystem()), ChangeSourceFolder);
    };
    FirstSteps->ChooseControl = [choose] {
        choose("SPB2.Browser", DestinationPath(SelectedSystem()), ChangeProgramFolder);
    };
    QWidget* before = List1;
    for (QWidget* const button : FirstSteps->Buttons()) {
        setTabOrder(before, button);
        before = button;
    }
    setTabOrder(before, List2);
    FirstSteps->MakeIndex = MakeIndexFile;
    FirstSteps->SetOrder = [this] {
        UseUsualOrder();
        Defaults.Sequence->ShowStored();
    };
    FirstSteps->CopyExamples = CopyExampleDrawings;
}

void MainWindow::ShowFirstSteps()
{
    if (!Loaded || List1->Model.rowCount() > 0)
        FirstSteps->hide();
    else if (FileList.Rows.empty())
        FirstSteps->ShowSteps();
    else
        FirstSteps->ShowNothingFound();
}

void MainWindow::LoadViews()
{
    StateShown->setChecked(StoredOfView(ViewsSection, "State") == "1");
    FilterShown->setChecked(StoredOfView(ViewsSection, "Filter") == "1");
    FoldersShown->setChecked(StoredOfView(ViewsSection, "Folders") == "1");
    ViewsTouched = false;
    List1->setFocus(); // a filter that was left on does not take the first keys
    LoadProgramPane();
}

// A size that a screen of today has no room for is cut to it.
void MainWindow::RestoreSize()
{
    const QSize stored(StoredPixelsOfView(ViewsSection, "WidthPixel"),
                       StoredPixelsOfView(ViewsSection, "HeightPixel"));
    if (stored.width() >= minimumWidth() && stored.height() >= minimumHeight())
        resize(stored.boundedTo(screen()->availableSize()));
    FirstSize = size();
    WasMaximised = StoredOfView(ViewsSection, "Maximised") == "1";
    if (WasMaximised)
        setWindowState(windowState() | Qt::WindowMaximized);
}

// Of a window that somebody has made larger, smaller or as large as the screen.
void MainWindow::StoreSize()
{
    const QSize now = isMaximized() ? normalGeometry().size() : size();
    if (FirstSize.isEmpty() || (now == FirstSize && isMaximized() == WasMaximised))
        return;
    const FileOutcome outcome = StoreOfView(ViewsSection, {{"WidthPixel", std::to_string(now.width())},
                                                           {"HeightPixel", std::to_string(now.height())},
                                                           {"Maximised", isMaximized() ? "1" : "0"}});
    if (!outcome.Ok())
        NoteLeft(UnkeptPositionLine(outcome));
}

void MainWindow::StoreViews()
{
    StoreProgramPane();
    StoreSize();
    if (!ViewsTouched)
        return;
    const auto word = [](const QAction* action) { return std::string(action->isChecked() ? "1" : "0"); };
    const FileOutcome outcome = StoreOfView(
        ViewsSection,
        {{"State", word(StateShown)}, {"Filter", word(FilterShown)}, {"Folders", word(FoldersShown)}});
    if (!outcome.Ok())
        NoteLeft(UnkeptPositionLine(outcome));
    ViewsTouched = false;
}

} // namespace kv
