// Draws the pictures of the operator's guide: the real windows, with real drawings in a real folder, on
// a screen that is not there. Dates and times are fixed, so that the same windows give the same
// pictures. Called as window_pictures EXAMPLES FOLDER; with a third word, "panes" or "dark-panes", it draws
// the programs of all examples for all controls instead, as the Program pane shows them. The shop that the
// pictures show is made anew below the folder for temporary files.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTimer>

#include "job/job_driver.h"
#include "platform/clock.h"
#include "platform/paths.h"
#include "shell/conversion_start.h"
#include "shell/file_list.h"
#include "shell/setup_rules.h"
#include "shell/start_up.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "window/about_dialog.h"
#include "window/dialogs.h"
#include "window/edge_style.h"
#include "window/main_window.h"
#include "window/opt_set_dialog.h"
#include "window/setup_dialog.h"
#include "window/tool_sub_dialog.h"

namespace {

using namespace kv;
namespace fs = std::filesystem;

constexpr double Noon = 12 * 3600; // seconds since midnight
constexpr double StepOfClock = 0.01;
constexpr int MoreLines = 96; // pixels that the list is higher than it must be

fs::path Shop, Target;

// A clock that goes on by a hundredth of a second each time it is asked.
double AskedClock()
{
    static double now = Noon;
    return now += StepOfClock;
}

void MakeShop(const fs::path& examples)
{
    Shop = fs::temp_directory_path() / "shop";
    fs::remove_all(Shop);
    fs::create_directories(Shop);
    fs::copy(examples / "install", Shop / "korvanti");
    fs::copy(examples / "drawings", Shop / "drawings");
    fs::create_directories(Shop / "programs");
    std::ofstream(Shop / "programs" / "INDICE.PRG").flush();
    std::ofstream(Shop / "drawings" / "scrap.dxf") << "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n";
    using namespace std::chrono;
    const sys_days saved = 2026y / September / 14;
    fs::file_time_type time = file_clock::from_sys(sys_seconds(saved) + 9h + 20min);
    for (const fs::directory_entry& drawing : fs::directory_iterator(Shop / "drawings"))
        fs::last_write_time(drawing, time += 61s);
}

void UseSystem(int system)
{
    Config.Winner90 = system == 0;
    Config.Genesis = system == 1;
    Config.GenesisEV = system == 2;
    for (int i = 0; i < ControlSystems; ++i) {
        SourcePath(i) = FromHostPath((Shop / "drawings").string() + "/");
        DestinationPath(i) = FromHostPath((Shop / "programs").string() + "/");
    }
    Config.PTSPath = SourcePath(0);
    Config.HBDDestinationPath = DestinationPath(0);
    Config.TipsEnable = 1;
    Config.EvOptOff = true;
}

void Settle()
{
    for (int i = 0; i < 5; ++i)
        QApplication::processEvents();
}

void Save(QWidget& widget, const std::string& name)
{
    Settle();
    const fs::path path = Target / (name + ".png");
    if (!widget.grab().save(QString::fromStdString(path.string())))
        std::fprintf(stderr, "%s cannot be written\n", path.c_str());
}

// A window as at program start, with the settings of the shop. Jobs and ticks do not come by themselves.
struct ShownWindow {
    explicit ShownWindow(int system)
    {
        SetExeFolder(FromHostPath((Shop / "korvanti").string() + "/"));
        Shell = ShellState{};
        FileList = FileListState{};
        LoadAllSettings();
        UseSystem(system);
        ExchangeSettings(true);
        StartShell();
        Window.ShowLoaded();
        Window.LoadDr.stop();
        Window.Timer1.stop();
        Window.resize(Window.LeastSize() + QSize(0, MoreLines));
        Window.show();
        RefreshFileList();
        Settle();
    }
    MainWindow Window;
};

void Select(const std::vector<std::string_view>& names)
{
    for (FileRow& row : FileList.Rows)
        row.Selected = false;
    for (FileRow& row : FileList.Rows)
        for (const std::string_view name : names)
            row.Selected = row.Selected || row.Cells[1] == name;
    FileListWindow.SelectionChanged();
}

QWidget* Running = nullptr;

void SaveAtLeads(std::string_view stage)
{
    if (stage == "leads" && Running != nullptr)
        Save(*Running, "window_running");
}

void DrawMainWindows()
{
    {
        ShownWindow shown(0);
        Select({"routed_door.dxf"});
        Save(shown.Window, "window_idle");
        Running = &shown.Window;
        Stages.Done = SaveAtLeads;
        StartConversion();
        Stages.Done = nullptr;
        Select({"side.dxf", "door.dxf", "bottom.dxf"});
        StartConversion();
        Save(shown.Window, "window_good");
        Select({"door.dxf", "scrap.dxf"});
        StartConversion();
        Save(shown.Window, "window_failed");
    }
    {
        ShownWindow shown(1);
        Select({"door.dxf"});
        StartConversion();
        Save(shown.Window, "window_genesis");
    }
    {
        ShownWindow shown(2);
        Select({"countertop.dxf"});
        StartConversion();
        Save(shown.Window, "window_evolution");
    }
}

// Opens a modal dialog and acts on it as soon as it stands.
template <class Dialog> void WhileOpen(Dialog& dialog, const std::function<void()>& act)
{
    QTimer::singleShot(0, &dialog, [&dialog, &act] {
        Settle();
        act();
        dialog.reject();
    });
    dialog.Open();
}

void SaveSetupTabs(SetupDialog& setup)
{
    auto* const tabs = setup.findChild<QTabWidget*>();
    int tab = 0;
    for (const char* const name :
         {"setup_paths", "setup_auto", "setup_preferences", "setup_pts", "setup_hbd"}) {
        tabs->setCurrentIndex(tab++);
        Save(setup, name);
    }
}

void DrawDialogs()
{
    ShownWindow shown(0);
    Config.AutoStartBatch = true;
    SetupDialog setup(shown.Window);
    WhileOpen(setup, [&setup] { SaveSetupTabs(setup); });
    Config.ToolSubData.at(0) = {"1", "99", "71"};
    SaveToolSubstitutions();
    ToolSubDialog tools(&shown.Window);
    WhileOpen(tools, [&tools] { Save(tools, "tool_sub"); });
    ClickEvolutionSort(3);
    OptSetDialog sorting(shown.Window);
    WhileOpen(sorting, [&sorting] {
        Save(sorting, "opt_settings");
        sorting.findChild<QTabWidget*>()->setCurrentIndex(1);
        Save(sorting, "opt_sorting");
    });
    AboutDialog about(&shown.Window, nullptr);
    WhileOpen(about, [&about] { Save(about, "about"); });
}

// A desktop's dark colours; the windows have none of their own.
QPalette DarkPalette()
{
    const QColor base(30, 30, 30), window(45, 45, 45), text(230, 230, 230), faint(130, 130, 130);
    QPalette dark(window);
    dark.setColor(QPalette::Base, base);
    dark.setColor(QPalette::AlternateBase, window);
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        dark.setColor(role, text);
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        dark.setColor(QPalette::Disabled, role, faint);
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    return dark;
}

// Written at one time, so that the line above the picture is always the same.
void StampPrograms()
{
    using namespace std::chrono;
    const fs::file_time_type time = file_clock::from_sys(sys_seconds(sys_days(2026y / September / 15)) + 10h);
    for (const fs::directory_entry& file : fs::recursive_directory_iterator(Shop / "programs"))
        if (file.is_regular_file())
            fs::last_write_time(file, time);
}

// The pane of the program that has just been written, on and off so that it is read anew.
void ShowPane(MainWindow& window)
{
    StampPrograms();
    window.ProgramShown->setChecked(false);
    window.ProgramShown->setChecked(true);
    Settle();
}

void DrawProgramPane(const std::string& name)
{
    ShownWindow shown(0);
    shown.Window.resize(1500, 900);
    shown.Window.ProgramShown->setChecked(true);
    Select({"routed_door.dxf"});
    StartConversion();
    ShowPane(shown.Window);
    shown.Window.Program->Select(4);
    Save(shown.Window, name);
}

void DrawPanesOf(int system)
{
    ShownWindow shown(system);
    shown.Window.ProgramShown->setChecked(true);
    Config.MakeHBD = 1;
    std::vector<std::string> names;
    for (const FileRow& row : FileList.Rows)
        names.push_back(row.Cells[1]);
    for (const std::string& name : names) {
        Select({name});
        StartConversion();
        ShowPane(shown.Window);
        ProgramPane& pane = *shown.Window.Program;
        pane.resize(900, 700);
        for (int program = 0; program < std::max(1, pane.Programs->count()); ++program) {
            if (program > 0)
                pane.ProgramChosen(program);
            Save(pane, "pane_" + std::to_string(system) + "_" + name + "_" + std::to_string(program));
        }
    }
}

void DrawDark()
{
    QApplication::setPalette(DarkPalette());
    ShownWindow shown(0);
    Select({"door.dxf", "scrap.dxf"});
    StartConversion();
    Save(shown.Window, "window_dark");
    SetupDialog setup(shown.Window);
    WhileOpen(setup, [&setup] { Save(setup, "setup_dark"); });
}

void DrawPanes(bool isDark)
{
    if (isDark)
        QApplication::setPalette(DarkPalette());
    for (int system = 0; system < ControlSystems; ++system)
        DrawPanesOf(system);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const std::string what = argc == 4 ? argv[3] : "";
    if (argc != 3 && what != "panes" && what != "dark-panes") {
        std::fputs("window_pictures EXAMPLES FOLDER [panes|dark-panes]\n", stderr);
        return 2;
    }
    auto* const style = new EdgeStyle;
    style->setBaseStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setStyle(style);
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    Clock.SecondsSinceMidnight = AskedClock;
    Clock.Pause = [](double) {};
    Target = argv[2];
    MakeShop(argv[1]);
    if (argc == 4) {
        DrawPanes(what == "dark-panes");
    } else {
        DrawMainWindows();
        DrawProgramPane("window_program");
        DrawDialogs();
        DrawDark();
    }
    fs::remove_all(Shop);
    return 0;
}
