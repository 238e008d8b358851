// Where the pane of the program is, and whose program it shows. It takes the band right of the report, which
// nothing else uses, and a window of its own where that is too narrow: nothing else moves for it.
#include <algorithm>

#include <QDateTime>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QScreen>

#include "job/job_driver.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "shell/drawing_overlay.h"
#include "shell/file_list.h"
#include "shell/program_pictures.h"
#include "shell/start_up.h"
#include "state/shell_state.h"
#include "window/controls.h"
#include "window/main_window.h"
#include "window/view_store.h"

namespace kv {

namespace {

constexpr std::string_view PaneSection = "KVFrmProgram";
constexpr int LeastPaneLetters = 72;  // a sentence in two lines, the buttons in two rows
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

int StoredPixels(std::string_view key)
{
    return StoredPixelsOfView(PaneSection, key);
}

bool HoldsEntity(const Scene& scene, std::size_t drawnLine)
{
    return std::ranges::any_of(scene.Items, [&](const SceneItem& item) {
        return std::ranges::find(item.DrawnLines, drawnLine) != item.DrawnLines.end();
    });
}

// Of the program that has the place; the first one where none has.
int NumberOfPlace(const std::vector<ProgramPicture>& pictures, const RowPlace& place)
{
    const auto picture = std::ranges::find_if(pictures, [&](const ProgramPicture& each) {
        return place.ProgramLine > 0 ? ShownPath(each.Path) == place.Program
                                     : HoldsEntity(each.Content.Picture, place.DrawnLine);
    });
    return picture == pictures.end() ? 0 : static_cast<int>(picture - pictures.begin());
}

} // namespace

void MainWindow::AddProgramView(QMenu& view)
{
    ProgramShown->setObjectName(QStringLiteral("MnuProgram"));
    ProgramShown->setCheckable(true);
    ProgramShown->setShortcut(QKeySequence(Qt::Key_F6));
    ProgramShown->setShortcutContext(Qt::ApplicationShortcut); // the pane may be a window of its own
    view.addAction(ProgramShown);
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
        else if (EarlierPrograms.Programs.Drawing == ProgramDrawing)
            ShowProgram(EarlierPrograms.Programs, program);
    };
    connect(List1->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { ShowProgramOfList(); });
    Looker.Done = [this](const std::string& drawing, const DrawingLook& look) { ShowLook(drawing, look); };
    List2->PlaceChosen = [this](const RowPlace& place) { ShowPlaceOfReport(place); };
}

// Off where nothing is stored.
void MainWindow::LoadProgramPane()
{
    ProgramShown->setChecked(StoredOfView(PaneSection, "Shown") == "1");
    ProgramPaneTouched = false;
}

// Nothing is stored for who has never asked for it.
void MainWindow::StoreProgramPane()
{
    if (!ProgramPaneTouched)
        return;
    std::vector<std::pair<std::string, std::string>> values = {
        {"Shown", ProgramShown->isChecked() ? "1" : "0"}};
    if (Program->isWindow() && Program->testAttribute(Qt::WA_WState_ExplicitShowHide) &&
        Program->width() >= Program->minimumWidth())
        values.insert(values.end(), {{"LeftPixel", std::to_string(Program->x())},
                                     {"TopPixel", std::to_string(Program->y())},
                                     {"WidthPixel", std::to_string(Program->width())},
                                     {"HeightPixel", std::to_string(Program->height())}});
    if (const FileOutcome outcome = StoreOfView(PaneSection, values); !outcome.Ok())
        NoteLeft(UnkeptPositionLine(outcome));
    else
        ProgramPaneTouched = false;
}

void MainWindow::TakeProgramPane()
{
    ProgramPaneTouched = true;
    const bool isOn = ProgramShown->isChecked();
    Stages.Done = isOn ? KeepDrawnShapes : nullptr;
    if (!isOn && Program->isWindow() && Program->isVisible())
        StoreProgramPane(); // its place
    Looker.Forget();
    PlaceProgramPane();
    if (!isOn)
        return;
    LastShown = 0;
    ShowLastProgram();
    if (LastShown == 0)
        ShowProgramOfList();
}

// A stored pane waits for the window that it belongs to.
void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    PlaceProgramPane();
}

// By the font, as all of the window.
int MainWindow::LeastPaneWidth() const
{
    return std::max(Program->layout()->minimumSize().width(),
                    LeastPaneLetters * Program->fontMetrics().averageCharWidth());
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
    const int wanted = LeastPaneWidth();
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
    const QSize least(LeastPaneWidth(), LeastPaneHeight);
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
        last->Number == LastShown)
        return;
    LastShown = last->Number;
    Looker.Forget();
    ShowProgram(*last);
}

void MainWindow::ShowProgramOfList()
{
    const std::string drawing = ListedDrawing();
    if (!Loaded || !ProgramShown->isChecked() || Shell.RunActive || drawing.empty())
        return;
    Looker.Forget();
    if (const ProgramsOfDrawing* const programs = FindProgramsOf(drawing)) {
        ShowProgram(*programs);
        return;
    }
    ShowNoProgram(ShownAsPath(FileNameOf(drawing)) + QStringLiteral(" is being read."));
    Looker.Look(drawing);
}

void MainWindow::ShowNoProgram(const QString& why)
{
    ProgramDrawing.clear();
    Program->ShowNothing(why);
}

// A program of an earlier time is shown as it lies on the disk; where there is none, the drawing.
void MainWindow::ShowLook(const std::string& drawing, const DrawingLook& look)
{
    const QString name = ShownAsPath(FileNameOf(drawing));
    if (Shell.RunActive) {
        ShowNoProgram(name + QStringLiteral(" is not shown while drawings are converted."));
        return;
    }
    if (!look.Fault.empty()) {
        ShowNoProgram(name + QStringLiteral(" cannot be shown: ") + kv::Shown(look.Fault));
        return;
    }
    EarlierPrograms = FindPrograms(drawing, look);
    if (!EarlierPrograms.Programs.Files.empty()) {
        ShowProgram(EarlierPrograms.Programs);
        return;
    }
    PaneContent content;
    content.Drawing = name;
    content.State = QStringLiteral("the drawing; it has no program yet");
    content.Picture = SceneOfDrawing(look);
    ProgramDrawing.clear();
    Program->ShowProgram(content);
}

// The line's entity, or its line of a program, in whichever program of the drawing it is.
void MainWindow::ShowPlaceOfReport(const RowPlace& place)
{
    const ProgramsOfDrawing* const programs = FindProgramsOf(place.Drawing);
    if (!ProgramShown->isChecked() || Shell.RunActive || programs == nullptr)
        return;
    Looker.Forget();
    const int number = NumberOfPlace(PicturesOfFiles(*programs), place);
    if (ProgramDrawing != programs->Drawing || ProgramNumber != programs->Number ||
        Program->Programs->currentIndex() != number)
        ShowProgram(*programs, number);
    if (place.ProgramLine == 0 || !Program->SelectLine(place.ProgramLine))
        static_cast<void>(Program->SelectEntity(place.DrawnLine));
}

// Of one conversion; what was looked at is of none.
void MainWindow::ShowProgram(const ProgramsOfDrawing& programs, int number)
{
    ProgramNumber = programs.Number;
    ProgramDrawing = programs.Drawing;
    const std::vector<ProgramPicture> pictures = PicturesOfFiles(programs);
    const int shown = std::clamp(number, 0, static_cast<int>(pictures.size()) - 1);
    const ProgramPicture& picture = pictures[static_cast<std::size_t>(shown)];
    if (!picture.Fault.empty()) {
        ShowNoProgram(kv::Shown(picture.Fault));
        return;
    }
    PaneContent content;
    content.Drawing = ShownAsPath(FileNameOf(programs.Drawing));
    content.Path = ShownAsPath(picture.Path);
    content.State = StateOf(HostPathShown(programs.Drawing), HostPathShown(picture.Path));
    if (programs.Number == 0 && !EarlierPrograms.AreAsNow)
        content.State += QStringLiteral("; not what the drawing gives now");
    content.ToolFault = kv::Shown(picture.ToolFault);
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
