// Wiring of the main window: every click, key and tick goes to a rule of the shell, and what the shell
// tells comes back by its hooks. Relies on the control tables for all words. The hooks are plain
// functions, so the one window stands behind a pointer of this file.
#include "window/main_window.h"

#include <chrono>

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDialog>
#include <QMenuBar>
#include <QShortcut>
#include <QUrl>

#include "job/job_driver.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/folder_events.h"
#include "platform/paths.h"
#include "platform/stop_requests.h"
#include "platform/taskbar.h"
#include "shell/autostart.h"
#include "shell/control_tables.h"
#include "shell/conversion_start.h"
#include "shell/file_list.h"
#include "shell/list_count.h"
#include "shell/main_window_rules.h"
#include "shell/recent_folders.h"
#include "shell/start_up.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "toolchain/viewers.h"
#include "window/dialogs.h"
#include "window/event_pump.h"
#include "window/trash.h"

namespace kv {

namespace {

constexpr int FastMeterTick = 25;  // ms
constexpr int FolderLookTick = 20; // ms; a look costs one call of the system
constexpr int MostInFront = 20;    // boxes, dialogs and menus one in front of the other

MainWindow* TheWindow = nullptr;

void AskToAbort()
{
    Run.RunState = 1;
}

// The meters' timer has two speeds; it ticks at the faster one and counts.
void TickMetersInTime()
{
    using std::chrono::steady_clock;
    static steady_clock::time_point last;
    const steady_clock::time_point now = steady_clock::now();
    const int interval = MeterInterval();
    // A tick comes early as often as late.
    if (interval <= 0 || now - last < std::chrono::milliseconds(interval - FastMeterTick / 2))
        return;
    last = now;
    TickMeters();
}

void InstallTips(bool on)
{
    ShowTips(*TheWindow->centralWidget(), "Form1", on);
    ShowDialogTips(on);
}

QString MenuText(std::string_view name)
{
    const ControlRow* const row = FindControl("Form1", name);
    return row != nullptr ? WithAltLetter(row->Caption, row->Mnemonic) : QString();
}

} // namespace

MainWindow::MainWindow()
    : LabDXFPath(ControlMaker{"Form1"}.Label("LabDXFPath")), Folder(new FolderRow(LabDXFPath)),
      List1(new FileListView), List2(new ReportView), Start(ControlMaker{"Form1"}.Button("Start")),
      BtnAbort(ControlMaker{"Form1"}.Button("BtnAbort")), CmdDF(ControlMaker{"Form1"}.Button("CmdDF")),
      EX1(ControlMaker{"Form1"}.Button("EX1")), Program(new ProgramPane),
      Explanation(new ExplanationWindow(this)), FirstSteps(new FirstStepsNotice(List1->viewport())),
      ProgramShown(new QAction(QStringLiteral("&Program"), this)),
      Frame1(ControlMaker{"Form1"}.Frame("Frame1"))
{
    TheWindow = this;
    const QString platform = QGuiApplication::platformName();
    OnScreen = platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
    setObjectName(QStringLiteral("Form1"));
    ForgetMainWindowLayout();
    Arrange(4);
    LayOut();
    MakeMenus();
    WireButtons();
    InstallHooks();
    StartTimers();
    ShowSettings();
    ShowState();
}

MainWindow::~MainWindow()
{
    ForgetDialogs();
    Program->Closed = nullptr;
    Stages.Done = nullptr;
    Events.Pump = nullptr;
    Report = {};
    FileListWindow = {};
    ShellWindow = {};
    Tips = {};
    Dialogs = {};
    TheWindow = nullptr;
}

void MainWindow::InstallHooks()
{
    Report.ShowRow = [](const ReportRow& row) { TheWindow->List2->Add(row); };
    Report.ClearRows = [] { TheWindow->List2->Clear(); };
    Report.MeterMoved = [](Meter meter, int percent) { TheWindow->Status.Move(meter, percent); };
    Events.Pump = [] {
        PumpEvents([] {
            TheWindow->List2->ShowWaiting();
            TheWindow->AbortIfAsked();
        });
    };
    FileListWindow.RowsChanged = [] {
        TheWindow->List1->ShowRows();
        TheWindow->ShowListedFolder();
        TheWindow->ShowFirstSteps();
    };
    FileListWindow.StatesChanged = [] { TheWindow->List1->ShowStates(); };
    FileListWindow.SelectionChanged = [] { TheWindow->List1->ShowSelection(); };
    FileListWindow.ToTrash = PutFileIntoTrash;
    FileListWindow.FromTrash = BringFileFromTrash;
    ShellWindow.Changed = [] { TheWindow->ShowState(); };
    ShellWindow.Focus = [](FocusPlace place) {
        if (place == FocusPlace::Start)
            TheWindow->Start->setFocus();
        else
            TheWindow->List1->setFocus();
    };
    ShellWindow.Failed = [](int firstRow) { return TheWindow->ShowFailedDrawing(firstRow); };
    ShellWindow.OpenGuide = [](const std::string& path) {
        return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(ToHostPath(path))));
    };
    Tips.Install = InstallTips;
    InstallBoxes(*this);
}

void MainWindow::WireButtons()
{
    connect(Start, &QPushButton::pressed, this, [] { PressStart(); });
    connect(Start, &QPushButton::clicked, this, [this] { Process(); });
    connect(BtnAbort, &QPushButton::clicked, this, [] { AskToAbort(); });
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this, [] {
        if (Shell.BtnAbortShown)
            AskToAbort();
    });
    connect(CmdDF, &QPushButton::clicked, this, [this] {
        Arrange(3);
        DoEvents();
        GiveFocus(FocusPlace::List1);
    });
    connect(EX1, &QPushButton::clicked, this, [this] { AskToClose(); });
    for (QPushButton* const button : {Start, BtnAbort, CmdDF, EX1})
        button->setAutoDefault(true); // Enter presses the button that has the focus
    List1->Process = [this] { Process(); };
    List1->Dropped = [](const std::vector<std::string>& paths) { ConvertDroppedDrawings(paths); };
    Defaults.DialogClosed = [this] { ShowSettings(); };
    Defaults.Frame2->installEventFilter(this);
}

void MainWindow::Process()
{
    Defaults.Sequence->Settle();
    StartConversion();
}

void MainWindow::MakeMenus()
{
    QMenu* const help = menuBar()->addMenu(MenuText("MnuHelp"));
    help->setObjectName(QStringLiteral("MnuHelp"));
    const auto item = [this, help](std::string_view name, auto&& act) {
        QAction* const action = help->addAction(MenuText(name));
        action->setObjectName(Shown(name));
        connect(action, &QAction::triggered, this, act);
        return action;
    };
    item("MnuOnLineManual", [] { StartHelp("OLHelp"); })->setShortcut(QKeySequence::HelpContents);
    item("MnuHelpFile", [] { StartHelp("Help"); });
    help->addSeparator();
    item("MnuAbout", [] { ShowAbout(); });
    MakeViewMenu();
    WireFirstSteps();
}

void MainWindow::StartTimers()
{
    LoadDr.setInterval(LoadDrInterval);
    connect(&LoadDr, &QTimer::timeout, this, [this] {
        RefreshFileList();
        ShowFirstSteps();
    });
    Timer1.setInterval(Timer1Interval);
    connect(&Timer1, &QTimer::timeout, this, [this] { Tick(); });
    PBTimer.setInterval(FastMeterTick);
    connect(&PBTimer, &QTimer::timeout, this, [] { TickMetersInTime(); });
    FolderLook.setInterval(FolderLookTick);
    connect(&FolderLook, &QTimer::timeout, this, [this] { LookOutside(); });
    FolderLook.start();
}

void MainWindow::Tick()
{
    ListenToFolders(WatchedFolders());
    AutostartTick();
    EndByItself();
}

// Also a run that has begun since: each begins without an abort.
void MainWindow::AbortIfAsked()
{
    if (!Closing && !StopRequested())
        return;
    AskToAbort();
    RanAtClose = RanAtClose || Shell.RunActive;
}

void MainWindow::LookOutside()
{
    if (!Loaded || Closed)
        return;
    if (StopRequested() && !Shell.Stopped)
        AskToStop();
    else
        LookIntoFolders();
}

// A file that has come is run at once and not at the timer's next tick. During a run changes wait.
void MainWindow::LookIntoFolders()
{
    if (!Timer1.isActive() || Shell.RunActive || !WaitsForTriggers() || !WaitForFolderChange(0))
        return;
    TickAllFolders();
    EndByItself();
}

void MainWindow::EndByItself()
{
    if (!Shell.Ended || Closing || Closed)
        return;
    // The program ends by itself: nothing of the settings is saved.
    Closed = true;
    ResetViewerMode(ControlFolderOf(Config.DestinationPath90));
    if (Ended)
        Ended();
}

void MainWindow::ShowLoaded()
{
    List1->ShowWidths();
    Defaults.Sequence->ShowStored();
    ShowSettings();
    Arrange(4);
    Loaded = true;
    LoadViews();
    ShowFirstSteps();
}

void MainWindow::ShowSettings()
{
    Defaults.Show();
    ShowState();
}

void MainWindow::ShowListedFolder()
{
    const QString folder = ShownAsPath(FileList.LabDXFPath);
    LabDXFPath->setText(folder);
    if (Loaded)
        static_cast<void>(NoteRecentFolder(FileList.LabDXFPath)); // a wish that fails harms nobody
    LabDXFPath->setToolTip(folder);                               // a long one does not fit
}

void MainWindow::ShowState()
{
    const auto run = [](QTimer& timer, bool on) {
        if (on != timer.isActive())
            on ? timer.start() : timer.stop();
    };
    run(LoadDr, Shell.LoadDr);
    run(Timer1, Shell.Timer1);
    run(PBTimer, Shell.RunActive);
    Start->setEnabled(Shell.StartEnabled);
    Defaults.Frame2->setEnabled(Shell.Frame2Enabled);
    BtnAbort->setVisible(Shell.BtnAbortShown);
    if (const QString title = Shown(TitleOfRun()); title != windowTitle()) {
        setWindowTitle(title);
        if (OnScreen && isVisible())
            ShowTaskbarProgress(winId(), RunningList.Done, RunningList.Total, RunningList.Failed > 0);
    }
    Folder->Recent->setEnabled(!Shell.RunActive);
    FirstSteps->setEnabled(!Shell.RunActive);
    // Hidden only after it has been seen: it is made long before it is shown.
    if (!Shell.Form1Shown && isVisible())
        hide();
    else if (Shell.Form1Shown && testAttribute(Qt::WA_WState_ExplicitShowHide) && isHidden() && !Closed)
        show();
    ShowLastProgram();
    if (!CloseBehindRun || Shell.RunActive)
        return;
    CloseBehindRun = false;
    QTimer::singleShot(0, this, [this] { close(); });
}

bool MainWindow::eventFilter(QObject* object, QEvent* event)
{
    if (object == Defaults.Frame2 && event->type() == QEvent::MouseButtonRelease)
        ExchangeSettings(true);
    return QMainWindow::eventFilter(object, event);
}

void MainWindow::AskToClose()
{
    close();
}

// A box or dialog in front belongs to nobody now: it is cancelled, so that the settings are the stored ones.
void MainWindow::AskToStop()
{
    Shell.Stopped = Shell.Ended = true;
    Closing = true;
    CancelDialogs();
    close();
}

void MainWindow::CancelDialogs()
{
    for (int i = 0; i < MostInFront; ++i) {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (QWidget* const popup = QApplication::activePopupWidget())
            popup->close();
        else if (dialog != nullptr)
            dialog->reject();
    }
}

void MainWindow::SessionEnds()
{
    if (!Loaded || Closed)
        return;
    if (Shell.RunActive) {
        AskToStop();
        return;
    }
    const auto* const setup = findChild<QDialog*>(QStringLiteral("SetUp"));
    if (setup == nullptr || !setup->isVisible()) // else they were stored when it was opened
        StoreAll();
}

void MainWindow::StoreAll()
{
    const QPoint place = isMaximized() ? normalGeometry().topLeft() : pos();
    const FileOutcome kept =
        SaveWindowPosition(MainPositionSection, {place.y() * TwipsPerPixel, place.x() * TwipsPerPixel});
    if (!kept.Ok())
        NoteLeft(UnkeptPositionLine(kept));
    StoreViews();
    StopShell();
}

// The report goes with the window.
void MainWindow::TellLeftUndone()
{
    std::string text;
    for (const std::string& line : Shell.LeftUndone)
        text += (text.empty() ? "" : "\r\n") + line;
    if (!text.empty() && !Shell.Stopped)
        ShowBox(text, ProductName, BoxIcon::Warning);
}

// Else the window would be gone before anybody has read why.
bool MainWindow::ShowFailedDrawing(int firstRow)
{
    List2->ShowWaiting();
    QStringList rows;
    for (int row = firstRow; row < List2->Model.rowCount(); ++row)
        rows += List2->Model.Rows[static_cast<std::size_t>(row)].Text;
    if (DrawingFailed)
        DrawingFailed(rows);
    return OnScreen;
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (Closed)
        return;
    if (!Loaded) {
        event->ignore(); // what is designed into the settings would be stored
        return;
    }
    Shell.Ended = true; // nothing new begins
    if (Shell.RunActive) {
        // The run is on the stack below: it ends first.
        AskToAbort();
        Closing = CloseBehindRun = RanAtClose = true;
        event->ignore();
        return;
    }
    if (!RanAtClose)
        Shell.LeftUndone.clear(); // of a run that was seen to end
    if (CommandLineWaits())
        NoteLeft(ShownPath(Shell.CommandLine) + " was not run");
    Closing = Closed = true;
    CancelDialogs(); // what was typed and not confirmed is no setting
    LoadDr.stop();
    Timer1.stop();
    FolderLook.stop();
    StoreAll();
    if (Program->isWindow())
        Program->hide();
    Explanation->close();
    TellLeftUndone();
    if (Ended)
        Ended();
}

} // namespace kv
