// The window program with what a test cannot reach from outside: at its end it prints the report that stands
// in its window, it presses the button of a box that waits for a hand, and on SIGUSR1 it does what a hand or
// the session does to a window, by the word in KORVANTI_TEST_ACT:
//   close    the window's close box
//   logoff   the session asks everybody to store, and 100 ms later to end
//   commit   the session asks everybody to store, and no more is heard of it
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QSessionManager>
#include <QTimer>
#include <QWindow>

#include "window/main_window.h"

namespace {

constexpr int LookTick = 5;       // ms
constexpr int QuestionTime = 100; // ms from the session's question to its end

volatile std::sig_atomic_t Asked = 0;

void OnAsked(int)
{
    Asked = 1;
}

kv::MainWindow* TheWindow()
{
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (auto* const window = dynamic_cast<kv::MainWindow*>(widget))
            return window;
    }
    return nullptr;
}

void PrintReport()
{
    if (const kv::MainWindow* const window = TheWindow()) {
        window->List2->ShowWaiting();
        std::printf("%s\n", window->List2->ReportText().toUtf8().constData());
    }
    std::fflush(stdout);
}

void PressBox()
{
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr || box->buttons().isEmpty())
        return;
    std::printf("box: %s\n", box->text().toUtf8().constData());
    box->buttons().first()->click();
}

void Act(const std::string& act)
{
    if (act == "close") {
        TheWindow()->windowHandle()->close();
        return;
    }
    Q_EMIT qGuiApp->commitDataRequest(*qGuiApp->findChild<QSessionManager*>());
    if (act == "logoff")
        QTimer::singleShot(QuestionTime, qApp, [] { QCoreApplication::quit(); });
}

void Look()
{
    PressBox();
    const kv::MainWindow* const window = TheWindow();
    if (Asked == 0 || window == nullptr || window->windowHandle() == nullptr || !window->isVisible())
        return;
    Asked = 0;
    const char* const act = std::getenv("KORVANTI_TEST_ACT");
    Act(act != nullptr ? act : "close");
}

void Watch()
{
    auto* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, qApp, Look);
    timer->start(LookTick);
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, qApp, PrintReport);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(Watch)

int main(int argc, char** argv)
{
    std::signal(SIGUSR1, OnAsked);
    return kv::RunWindow(argc, argv);
}
