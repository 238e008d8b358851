// The life of the window program: the words it was called with, the installation, one instance, the
// start-up in its order, and the end. What a shell asks for in words is answered without a screen, and so is
// the call for a picture.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include <QApplication>
#include <QMessageBox>

#include "platform/command_words.h"
#include "platform/files.h"
#include "platform/instance.h"
#include "platform/keys.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/stand_ins.h"
#include "platform/stop_requests.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "shell/autostart.h"
#include "shell/start_up.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "window/dialogs.h"
#include "window/edge_style.h"
#include "window/icon.h"
#include "window/main_window.h"
#include "window/picture_call.h"

namespace kv {

namespace {

constexpr std::chrono::seconds NobodyThere{60};
constexpr int ExitDone = 0, ExitSomeFailed = 1, ExitUsage = 2;

constexpr char HelpText[] =
    "Usage: KV90WIN [--home DIR] [DRAWING] [/S] [/K] [/V]\n"
    "       KV90WIN [--home DIR] --picture PROGRAM|DRAWING.dxf -o FILE.png|FILE.pdf|FILE.svg [--width N]\n"
    "\n"
    "Opens the operator's window on the installation. With a drawing it is converted and the program ends;\n"
    "when it fails, its report goes to standard error, and the window stays open with it.\n"
    "\n"
    "  --home DIR      folder of the installation (KV90.INI); else KORVANTI_HOME names it\n"
    "  /S              run BATCH.LST of the source folder, whatever Setup says\n"
    "  /K              end after a batch\n"
    "  /V              show the graphic after an automatic job and after the drawing\n"
    "  --picture WHAT  no window: write the picture of a program, or of the programs that a drawing gives\n"
    "  -o FILE         where to; of further programs FILE-2 and so on\n"
    "  --width N       of a PNG, in pixels; 1920 when not given\n"
    "  --help          this text\n"
    "  --version       version and commit of the source\n";

struct Call {
    std::string Home;
    std::vector<std::string> Words; // as typed
    std::string Fault;              // of the usage
    bool Help = false, Version = false, Look = false, WantsPicture = false;
    std::string PictureOf, Output, Width; // of the picture
};

// Where a word's value goes; null: it has none.
std::string* ValueOf(Call& call, const std::string& word)
{
    if (word == "--home")
        return &call.Home;
    if (word == "--picture")
        return &call.PictureOf;
    if (word == "-o")
        return &call.Output;
    return word == "--width" ? &call.Width : nullptr;
}

Call ReadCall(const std::vector<std::string>& words)
{
    Call call;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        const std::size_t sign = BeginsWith(word, "--") ? word.find('=') : std::string::npos;
        std::string* const value = ValueOf(call, word.substr(0, sign));
        call.WantsPicture |= value != nullptr && value != &call.Home;
        if (word == "--help")
            call.Help = true;
        else if (word == "--version")
            call.Version = true;
        else if (word == "--look") // of a window that is open
            call.Look = true;
        else if (value != nullptr && sign != std::string::npos)
            *value = word.substr(sign + 1);
        else if (value != nullptr && i + 1 < words.size())
            *value = words[++i];
        else if (value != nullptr)
            call.Fault = word + (word == "--home" ? " needs a folder" : " needs a value");
        else if (BeginsWith(word, "--"))
            call.Fault = "there is no option " + word;
        else
            call.Words.push_back(word);
    }
    return call;
}

// Empty: the words of a picture fit together.
std::string FaultOfPicture(const Call& call)
{
    if (call.PictureOf.empty())
        return "-o and --width belong to --picture";
    if (!IsPictureFile(call.Output))
        return "--picture needs -o FILE.png, FILE.pdf or FILE.svg";
    if (!call.Words.empty())
        return "--picture takes no word like " + call.Words.front();
    bool isNumber = true;
    const int width =
        call.Width.empty() ? WidthOfPicture : QString::fromStdString(call.Width).toInt(&isNumber);
    if (!isNumber || width < LeastWidth || width > MostWidth)
        return "--width is " + std::to_string(LeastWidth) + " to " + std::to_string(MostWidth) +
               " pixels, not " + call.Width;
    return {};
}

// What the toolkit has not taken for itself.
std::vector<std::string> WordsLeft()
{
    std::vector<std::string> words;
    const QStringList left = QCoreApplication::arguments();
    for (qsizetype i = 1; i < left.size(); ++i)
        words.push_back(left[i].toStdString());
    return words;
}

// To the caller's stream. A desktop has none: there a box says it, for a minute, as nobody may sit there.
void Tell(const std::string& text, StandardStream stream)
{
    if (ReachesCaller(stream)) {
        PrepareStreams();
        std::fputs(text.c_str(), stream == StandardStream::Output ? stdout : stderr);
        RestoreStreams();
        return;
    }
    QMessageBox box(QMessageBox::NoIcon, Shown(ProductName), QString::fromStdString(text));
    QTimer::singleShot(NobodyThere, &box, &QDialog::accept);
    box.exec();
}

int TellUsage(const std::string& fault)
{
    Tell("KV90WIN: " + fault + "\nTry KV90WIN --help\n", StandardStream::Error);
    return ExitUsage;
}

// Without a screen, unless the answer can be given on one alone.
int TellAboutItself(const Call& asked, int& argc, char** argv)
{
    const std::string version = "KV90WIN " + VersionAndCommit() + "\n";
    std::optional<QApplication> application;
    if (!ReachesCaller(StandardStream::Output))
        application.emplace(argc, argv);
    Tell(asked.Help ? HelpText : version, StandardStream::Output);
    return ExitDone;
}

// To the caller alone: no box, since no window opens.
void TellLines(const std::vector<std::string>& lines, const std::string& ahead, StandardStream stream)
{
    std::string text;
    for (const std::string& line : lines)
        text += ahead + line + "\n";
    if (!text.empty() && ReachesCaller(stream))
        Tell(text, stream);
}

// A script reads standard error: what the toolkit misses of a desktop is no line of it.
void KeepToolkitQuiet()
{
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtCriticalMsg || type == QtFatalMsg)
            TellLines({text.toStdString()}, "KV90WIN: ", StandardStream::Error);
    });
}

int DrawPicture(const Call& call)
{
    PictureCall picture{call.PictureOf, call.Output};
    if (!call.Width.empty())
        picture.Width = QString::fromStdString(call.Width).toInt();
    const PictureFiles files = DrawPictureFiles(picture);
    TellLines(files.Written, {}, StandardStream::Output);
    TellLines(files.Faults, "KV90WIN: ", StandardStream::Error);
    return files.Faults.empty() ? ExitDone : ExitSomeFailed;
}

// A second window brings the first one to the front. Whoever else holds the installation is named. A design
// program that calls this one must not take its drawing for converted.
int HandOver(const Call& call, const InstanceAnswer& instance)
{
    if (instance.SameHere)
        AskToFront(ExeFolder);
    if (instance.SameHere && call.Words.empty())
        return ExitDone;
    const auto drawing = std::ranges::find_if_not(call.Words, IsSwitchWord);
    const std::string what = call.Words.empty()            ? ""
                             : drawing == call.Words.end() ? call.Words.front() + " was not run: "
                                                           : *drawing + " was not run: ";
    const std::string who = instance.SameHere
                                ? "a window of this installation is open"
                                : "this installation is in use by " + Utf8FromAnsi(instance.Holder);
    Tell("KV90WIN: " + what + who + "\n", StandardStream::Error);
    return ExitSomeFailed;
}

// A lone drawing may stand anywhere; all other words go on as they were typed.
std::string CommandLineOf(const std::vector<std::string>& words)
{
    const bool lone = std::ranges::count_if(words, IsSwitchWord) + 1 == std::ssize(words);
    std::string line;
    for (const std::string& word : words) {
        const std::string path = lone && !IsSwitchWord(word) ? FromHostPath(word) : std::string();
        // The job says what else is wrong with it.
        const bool there = !path.empty() && AskFile(path).Is != Presence::NotThere;
        line += (line.empty() ? "" : " ") + (there ? path : PathFromUtf8(word));
    }
    return line;
}

// The report's lines from that row on.
void TellFailedDrawing(const QStringList& rows)
{
    if (!ReachesCaller(StandardStream::Error))
        return;
    PrepareStreams();
    for (const QString& row : rows)
        std::fputs(("KV90WIN: " + row.toStdString() + "\n").c_str(), stderr);
    std::fflush(stderr);
    RestoreStreams();
}

// A window that a signal or the session has ended cannot show its report to anybody.
void TellLeftOutside()
{
    if (!Shell.Stopped || Shell.LeftUndone.empty() || !ReachesCaller(StandardStream::Error))
        return;
    PrepareStreams();
    for (const std::string& line : Shell.LeftUndone)
        std::fputs(("KV90WIN: " + Utf8FromAnsi(line) + "\n").c_str(), stderr);
    std::fflush(stderr);
    RestoreStreams();
}

// Asked before the session ends, and for a copy of its state in between. Some systems end the process as soon
// as this comes back.
void ListenToSession(QApplication& application, MainWindow& window)
{
#if QT_CONFIG(sessionmanager)
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &window,
                     [&window] { window.SessionEnds(); });
#else
    static_cast<void>(application);
    static_cast<void>(window);
#endif
}

MainWindow* Starting = nullptr;

void StartUp(MainWindow& window)
{
    window.CentreOnScreen();
    Starting = &window;
    ShowAboutAtStart([] { Starting->setWindowTitle(Shown(ProductName)); });
    LoadDialogs(window);
    StartShell();
    window.ShowLoaded();
    window.CentreOnScreen(); // the settings have said which frames there are
    window.RestorePosition();
    window.show();
}

int RunOnScreen(QApplication& application)
{
    Processes = SystemProcesses();
    Keys = SystemKeys();
    const bool driven = !Shell.CommandLine.empty();
    MainWindow window;
    window.Ended = [] { QCoreApplication::quit(); };
    window.DrawingFailed = TellFailedDrawing;
    QTimer outside;
    QObject::connect(&outside, &QTimer::timeout, &window, [&window] {
        if (AskedToFront())
            window.ComeToFront();
    });
    outside.start(Timer1Interval);
    ListenToSession(application, window);
    StartUp(window);
    QCoreApplication::exec();
    TellLeftOutside();
    const bool undone = Shell.FailedJobs > 0 || Shell.JobsLeft > 0 || CommandLineWaits();
    return driven && undone ? ExitSomeFailed : ExitDone;
}

} // namespace

int RunWindow(int argc, char** argv)
{
    const Call asked = ReadCall(CommandWords(argc, argv));
    if (asked.Look)
        return AnswerLook();
    if (asked.Help || asked.Version)
        return TellAboutItself(asked, argc, argv);
    if (asked.WantsPicture) {
        KeepToolkitQuiet();
        qputenv("QT_QPA_PLATFORM", "offscreen;windows"); // the latter where there is no other
    }
    QApplication application(argc, argv); // takes the words that are the toolkit's own
    QApplication::setStyle(new EdgeStyle);
    QApplication::setWindowIcon(ProgramIcon());
    QApplication::setQuitOnLastWindowClosed(false); // the window hides while a viewer runs
    const Call call = ReadCall(WordsLeft());
    if (!call.Fault.empty())
        return TellUsage(call.Fault);
    if (const std::string fault = call.WantsPicture ? FaultOfPicture(call) : ""; !fault.empty())
        return TellUsage(fault);
    const std::string folder = InstallationFolder(call.Home);
    if (folder.empty())
        return TellUsage("the folder named by --home or KORVANTI_HOME is not there");
    SetExeFolder(folder);
    if (call.WantsPicture)
        return DrawPicture(call);
    ListenForStopRequests(); // one that comes during the start is obeyed when the settings are loaded
    const InstanceAnswer instance = BecomeOnlyInstance(ExeFolder);
    if (!instance.Only)
        return HandOver(call, instance);
    Shell.CommandLine = CommandLineOf(call.Words);
    return RunOnScreen(application);
}

} // namespace kv
