// The program's one working window, Form1.
#pragma once

#include <functional>

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

#include "window/default_settings.h"
#include "window/drawing_looker.h"
#include "window/explanation_window.h"
#include "window/file_list_view.h"
#include "window/first_steps_notice.h"
#include "window/folder_row.h"
#include "window/meters.h"
#include "window/program_pane.h"
#include "window/report_view.h"

namespace kv {

// The whole life of the window program; gives its exit status.
int RunWindow(int argc, char** argv);

// While it lives, the hooks of the report, the list, the shell, the tips and the events are its own.
class MainWindow : public QMainWindow {
  public:
    MainWindow();
    ~MainWindow() override;

    // Behind StartShell: all that the settings say of the window.
    void ShowLoaded();
    void ShowSettings();
    void ShowState(); // of Shell
    // Two steps of the program's life, in twips of the screen.
    void CentreOnScreen();
    void RestorePosition();  // and the size, where one was kept
    QSize LeastSize() const; // at which nothing scrolls
    void ComeToFront();
    // Like the close box; during a run the run is aborted first.
    void AskToClose();
    // The same by a signal or the end of the session, when perhaps nobody is there: open dialogs are
    // cancelled and no box is shown.
    void AskToStop();
    // The session may end without another word: all that can be stored is stored. What runs is ended.
    void SessionEnds();

    // The window is gone, or the program ends by itself: what the program does then.
    std::function<void()> Ended;
    // The drawing of the command line failed: its lines of the report.
    std::function<void(const QStringList&)> DrawingFailed;
    bool OnScreen; // where somebody can see it: the report of that drawing is left to be read

    QLabel* LabDXFPath;
    FolderRow* Folder; // LabDXFPath with what stands beside it
    FileListView* List1;
    ReportView* List2;
    Meters Status;
    QPushButton *Start, *BtnAbort, *CmdDF, *EX1;
    DefaultSettings Defaults;
    ProgramPane* Program;
    DrawingLooker Looker;
    ExplanationWindow* Explanation;
    FirstStepsNotice* FirstSteps;
    QAction* ProgramShown;
    QAction *StateShown = nullptr, *FilterShown = nullptr, *FoldersShown = nullptr;
    QTimer LoadDr, Timer1, PBTimer, FolderLook;

  protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void LayOut();
    void WireButtons();
    void MakeMenus();
    void Process();
    void CancelDialogs();
    void StartTimers();
    void MakeViewMenu();
    void AddProgramView(QMenu& view);
    void TakeFilter(bool on);
    void ExplainListed();
    void WireFirstSteps();
    void ShowFirstSteps();
    std::string ListedDrawing() const; // that the list index is on; empty: none
    void LoadViews();
    void RestoreSize();
    void StoreSize();
    void StoreViews();
    void LoadProgramPane();
    void StoreProgramPane();
    void TakeProgramPane();
    void PlaceProgramPane();
    void PutProgramBeside();
    void PutProgramInWindow();
    int RoomForProgram() const;
    int LeastPaneWidth() const;
    void ShowLastProgram();
    void ShowProgramOfList();
    void ShowProgram(const struct ProgramsOfDrawing& programs, int number = 0);
    void ShowNoProgram(const QString& why);
    void ShowLook(const std::string& drawing, const DrawingLook& look);
    void ShowPlaceOfReport(const RowPlace& place);
    void InstallHooks();
    void Arrange(int code);
    void ShowListedFolder();
    void Tick();
    void AbortIfAsked();
    void LookOutside();
    void LookIntoFolders();
    void EndByItself();
    void StoreAll();
    void TellLeftUndone();
    bool ShowFailedDrawing(int firstRow);
    int RoomForStates(const struct MainWindowLayout& layout) const;
    int Pixels(double twips) const;
    int Twips(int pixels) const;

    QGroupBox* Frame1;
    QHBoxLayout* Grids = nullptr;
    QWidget* Inside = nullptr;       // all that scrolls together
    QSize FirstSize;                 // as it was opened
    bool WasMaximised = false;       // likewise
    std::string ProgramDrawing;      // whose program is shown
    std::size_t ProgramNumber = 0;   // of its conversion
    std::size_t LastShown = 0;       // the conversion whose end showed a program
    ProgramsFound EarlierPrograms;   // of the drawing that was looked at last
    bool ProgramPaneTouched = false; // what is stored of it is no longer so
    bool ViewsTouched = false;       // likewise
    bool Loaded = false;             // the settings are; before, nothing is stored
    bool CloseBehindRun = false;
    bool RanAtClose = false; // the run that was ended may have left something
    bool Closing = false;    // behind a run, or at once
    bool Closed = false;
};

} // namespace kv
