// Where the pane of the program is, and whose program it shows. It takes the band right of the report, which
// nothing else uses, and a window of its own where that is too narrow: nothing else moves for it.
#include <algorithm>

#include <QDateTime>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenuBar>
#include <QScreen>

#include "job/job_driver.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/user_store.h"
#include "shell/drawing_overlay.h"
#include "shell/file_list.h"
#include "shell/program_pictures.h"
#include "shell/start_up.h"
#include "state/shell_state.h"
#include "window/controls.h"
#include "window/main_window.h"

namespace kv {

namespace {

constexpr std::string_view PaneApplication = "ZLT", PaneSection = "KVFrmProgram";
constexpr int LeastPaneHeight = 400;  // pixels, of a window of its own
constexpr int BandKeepsReport = 1000; // stretch of the report, so that it is as wide as without the pane

QString HostPathShown(const std::string& path)
{
    return QString::fromStdString(ToHostPath(path));
}

// By the files' times: a program that is older than its drawing is not of it any more.
QString StateOf(const QString& drawing, const QString& program)
{
    const QFileInfo written(program), drawn(drawing);
    if (!written.exists())
        return {};
    const QDateTime time = written.lastModified();
    const QString format =
        time.date() == QDate::currentDate() ? QStringLiteral("HH:mm") : QStringLiteral("yyyy-MM-dd HH:mm");
    QString text = QStringLiteral("written ") + time.toString(format);
    if (!drawn.exists())
        return text + QStringLiteral(", drawing is no longer there");
    return text + (drawn.lastModified() > time ? QStringLiteral(", drawing changed since")
                                               : QStringLiteral(", drawing unchanged"));
}

std::string StoredOfPane(std::string_view key)
{
    return GetUserSetting(PaneApplication, PaneSection, key, "");
}

int StoredPixels(std::string_view key)
{
    return QString::fromStdString(StoredOfPane(key)).toInt();
}

} // namespace

void MainWindow::MakeViewMenu()
{
    QMenu* const view = menuBar()->addMenu(QStringLiteral("&View"));
    view->setObjectName(QStringLiteral("MnuView"));
    ProgramShown->setObjectName(QStringLiteral("MnuProgram"));
    ProgramShown->setCheckable(true);
    ProgramShown->setShortcut(QKeySequence(Qt::Key_F6));
    ProgramShown->setShortcutContext(Qt::ApplicationShortcut); // the pane may be a window of its own
    view->addAction(ProgramShown);
    connect(ProgramShown, &QAction::toggled, this, [this] { TakeProgramPane(); });
    Program->setParent(this, Qt::Window);
    Program->hide();
    Program->Closed = [this] {
        if (Program->isWindow() && isVisible())
            ProgramShown->setChecked(false);
    };
    Program->ProgramChosen = [this](int program) {
        if (const ProgramsOfDrawing* const programs = FindProgramsOf(ProgramDrawing))
            ShowProgram(*programs, program);
    };
    connect(List1->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { ShowProgramOfList(); });
}

// Off where nothing is stored.
void MainWindow::LoadProgramPane()
{
    ProgramShown->setChecked(StoredOfPane("Shown") == "1");
    ProgramPaneTouched = false;
}

// Nothing is stored for who has never asked for it.
void MainWindow::StoreProgramPane()
{
    if (!ProgramPaneTouched)
        return;
    std::vector<std::pair<std::string_view, int>> values = {{"Shown", ProgramShown->isChecked() ? 1 : 0}};
    if (Program->isWindow() && Program->testAttribute(Qt::WA_WState_ExplicitShowHide) &&
        Program->width() >= Program->minimumWidth())
        values.insert(values.end(), {{"LeftPixel", Program->x()},
                                     {"TopPixel", Program->y()},
                                     {"WidthPixel", Program->width()},
                                     {"HeightPixel", Program->height()}});
    for (const auto& [key, value] : values)
        if (const FileOutcome outcome =
                SaveUserSetting(PaneApplication, PaneSection, key, std::to_string(value));
            !outcome.Ok()) {
            NoteLeft(UnkeptPositionLine(outcome));
            return;
        }
    ProgramPaneTouched = false;
}

void MainWindow::TakeProgramPane()
{
    ProgramPaneTouched = true;
    const bool isOn = ProgramShown->isChecked();
    Stages.Done = isOn ? KeepDrawnShapes : nullptr;
    if (!isOn && Program->isWindow() && Program->isVisible())
        StoreProgramPane(); // its place
    PlaceProgramPane();
    if (!isOn)
        return;
    ProgramNumber = 0;
    ShowLastProgram();
    if (ProgramNumber == 0)
        ShowProgramOfList();
}

// A stored pane waits for the window that it belongs to.
void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    PlaceProgramPane();
}

// Pixels right of the report at its widest.
int MainWindow::RoomForProgram() const
{
    const QRect report = List2->geometry();
    return Frame1->width() - report.left() - List2->maximumWidth() - 2 * Grids->spacing();
}

void MainWindow::PlaceProgramPane()
{
    if (Grids == nullptr || !Loaded)
        return;
    if (!ProgramShown->isChecked()) {
        Program->hide();
        return;
    }
    // Its own least size does not count while it is in the band: the window must get narrower again.
    const int wanted = Program->layout()->minimumSize().width();
    if (RoomForProgram() >= wanted)
        PutProgramBeside();
    else
        PutProgramInWindow();
}

void MainWindow::PutProgramBeside()
{
    if (!Program->isWindow())
        return Program->show();
    Program->setMinimumSize(1, 1);
    Program->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    Grids->insertWidget(Grids->indexOf(List2) + 1, Program, 1); // takes it as a child
    Grids->setStretchFactor(List2, BandKeepsReport);
    Program->setWindowFlags(Qt::Widget);
    Program->show();
}

void MainWindow::PutProgramInWindow()
{
    if (Program->isWindow() && Program->isVisible())
        return;
    if (!Program->isWindow()) {
        Grids->removeWidget(Program);
        Grids->setStretchFactor(List2, 1);
        Program->setParent(this, Qt::Window);
    }
    const QSize least(Program->layout()->minimumSize().width(), LeastPaneHeight);
    Program->setMinimumSize(least);
    const QRect stored(StoredPixels("LeftPixel"), StoredPixels("TopPixel"), StoredPixels("WidthPixel"),
                       StoredPixels("HeightPixel"));
    // A screen that is gone keeps no window.
    if (stored.width() > 0 && QGuiApplication::screenAt(stored.topLeft() + QPoint(20, 20)) != nullptr) {
        Program->resize(stored.size().expandedTo(least));
        Program->move(stored.topLeft());
    }
    if (isVisible())
        Program->show();
}

// After a run; during one its files may not be in their places.
void MainWindow::ShowLastProgram()
{
    const ProgramsOfDrawing* const last = LastProgramsNoted();
    if (!Loaded || !ProgramShown->isChecked() || Shell.RunActive || last == nullptr ||
        last->Number == ProgramNumber)
        return;
    ShowProgram(*last);
}

void MainWindow::ShowProgramOfList()
{
    const int row = List1->currentIndex().row();
    if (!Loaded || !ProgramShown->isChecked() || Shell.RunActive || row < 0 ||
        row >= static_cast<int>(FileList.Rows.size()))
        return;
    const std::string name(Trim(FileList.Rows[static_cast<std::size_t>(row)].Cells[1]));
    if (name.empty())
        return;
    const std::string drawing = WithBackslash(FileList.LabDXFPath) + name;
    if (const ProgramsOfDrawing* const programs = FindProgramsOf(drawing))
        ShowProgram(*programs);
    else
        Program->ShowNothing(kv::Shown(name) +
                             QStringLiteral(" has not been converted since the window was opened. Convert it "
                                            "to see its program."));
}

void MainWindow::ShowProgram(const ProgramsOfDrawing& programs, int number)
{
    ProgramNumber = programs.Number;
    ProgramDrawing = programs.Drawing;
    const std::vector<ProgramPicture> pictures = PicturesOfFiles(programs);
    const int shown = std::clamp(number, 0, static_cast<int>(pictures.size()) - 1);
    const ProgramPicture& picture = pictures[static_cast<std::size_t>(shown)];
    if (!picture.Fault.empty()) {
        Program->ShowNothing(kv::Shown(picture.Fault));
        return;
    }
    PaneContent content;
    content.Drawing = ShownAsPath(FileNameOf(programs.Drawing));
    content.Path = ShownAsPath(picture.Path);
    content.State = StateOf(HostPathShown(programs.Drawing), HostPathShown(picture.Path));
    content.Picture = picture.Content.Picture;
    for (const ProgramPicture& each : pictures)
        content.Programs += ShownAsPath(FileNameOf(each.Path));
    content.Program = shown;
    content.Text = QString::fromStdString(picture.Content.Text);
    content.Unit = picture.Unit;
    content.LinesUnread = picture.LinesUnread;
    Program->ShowProgram(content);
}

} // namespace kv
