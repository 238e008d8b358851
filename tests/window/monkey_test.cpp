// Random clicks, keys and wheels on the real window with its real dialogs: nothing crashes or hangs, and the
// settings stay whole. KORVANTI_MONKEY=200000 makes it longer than in the daily run.
#include <cstdlib>
#include <map>
#include <random>
#include <sstream>

#include <QComboBox>
#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QMenu>
#include <QTimer>
#include <QWheelEvent>

#include "window/window_scene.h"

namespace kv {
namespace {

constexpr int DailyActs = 20'000;
constexpr int LongestRun = 600'000; // ms
constexpr unsigned FirstSeed = 20261123;

int WantedActs()
{
    const char* const wanted = std::getenv("KORVANTI_MONKEY");
    return wanted != nullptr ? std::atoi(wanted) : DailyActs;
}

class MonkeyAtWindow : public WindowTest {
  protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        qputenv("XDG_DATA_HOME", QByteArray::fromStdString((Place.Folder / "data").string()));
        std::filesystem::create_directories(Place.Folder / "data"); // for the trash
        Before = QDir::currentPath();
        QDir::setCurrent(QString::fromStdString(Place.Folder.string()));
        for (const char* const name : {"door.dxf", "left side.dxf", "right side.dxf", "top.dxf"})
            PutDrawing(name);
        std::ofstream(Drawings / "broken.dxf") << "0\nSECTION\n";
        Person.Ask = [](const QString&, const QString&, const QString&) { return std::rand() % 2 == 0; };
        Person.ChooseFolder = [](QWidget*, const QString&, const QString&, const QString&) {
            return QString();
        };
    }
    void TearDown() override
    {
        QDir::setCurrent(Before);
        qunsetenv("XDG_DATA_HOME");
        WindowTest::TearDown();
    }

    int Random(int below) { return static_cast<int>(Chance() % static_cast<unsigned>(std::max(1, below))); }

    // Where a person's hand would be: on the popup, else on the dialog in front, else on a window.
    QWidget* InFront()
    {
        if (QWidget* const popup = QApplication::activePopupWidget())
            return popup;
        if (QWidget* const modal = QApplication::activeModalWidget())
            return modal;
        const QWidgetList windows{Window.get(), Window->Program, Window->Explanation};
        QWidget* const window = windows[Random(3)];
        return window->isVisible() && window->isWindow() ? window : Window.get();
    }

    // Half of the time one that can be used, else whatever lies under a random place.
    QWidget* Under(QWidget* front, QPoint& place)
    {
        std::vector<QWidget*> useful;
        for (QWidget* const child : front->findChildren<QWidget*>())
            if (child->isVisible() && child->isEnabled() && child->focusPolicy() != Qt::NoFocus &&
                child->window() == front)
                useful.push_back(child);
        if (Random(2) == 0 && !useful.empty()) {
            QWidget* const chosen = useful[static_cast<std::size_t>(Random(static_cast<int>(useful.size())))];
            place = chosen->mapTo(front, QPoint(Random(chosen->width()), Random(chosen->height())));
        } else {
            place = QPoint(Random(front->width()), Random(front->height()));
        }
        QWidget* const child = front->childAt(place);
        return child != nullptr ? child : front;
    }

    void Click(QWidget* front)
    {
        QPoint place;
        QWidget* const under = Under(front, place);
        if (under == Window->EX1)
            return; // the end is another test's
        const QPoint at = under->mapFrom(front, place);
        const Qt::MouseButton button = Random(6) == 0 ? Qt::RightButton : Qt::LeftButton;
        if (Random(8) == 0)
            QTest::mouseDClick(under, button, {}, at);
        else
            QTest::mouseClick(under, button, Random(6) == 0 ? Qt::ControlModifier : Qt::NoModifier, at);
    }

    void Type(QWidget* front)
    {
        constexpr Qt::Key keys[] = {
            Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Return,    Qt::Key_Escape, Qt::Key_Space, Qt::Key_Up,
            Qt::Key_Down,   Qt::Key_Left,    Qt::Key_Right,     Qt::Key_Home,   Qt::Key_End,   Qt::Key_PageUp,
            Qt::Key_Delete, Qt::Key_F6,      Qt::Key_F7,        Qt::Key_1,      Qt::Key_7,     Qt::Key_Comma,
            Qt::Key_Period, Qt::Key_Minus,   Qt::Key_Backspace, Qt::Key_A,      Qt::Key_V};
        QWidget* const focus = front->focusWidget() != nullptr ? front->focusWidget() : front;
        if (focus == Window->EX1)
            return;
        if (Random(5) == 0) {
            constexpr Qt::Key commands[] = {Qt::Key_A, Qt::Key_F, Qt::Key_N, Qt::Key_Z, Qt::Key_C, Qt::Key_V};
            QTest::keyClick(focus, commands[Random(6)], Qt::ControlModifier);
        } else {
            QTest::keyClick(focus, keys[Random(static_cast<int>(std::size(keys)))]);
        }
    }

    void Wheel(QWidget* front)
    {
        QPoint place;
        QWidget* const under = Under(front, place);
        const QPointF at = under->mapFrom(front, place);
        QWheelEvent event(at, under->mapToGlobal(at), {}, {0, Random(2) == 0 ? 120 : -120}, Qt::NoButton,
                          Random(5) == 0 ? Qt::ControlModifier : Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(under, &event);
    }

    void Act()
    {
        QWidget* const front = InFront();
        if (auto* const chooser = qobject_cast<QFileDialog*>(front)) {
            chooser->reject(); // files of the machine are none of its business
            return;
        }
        ++Acts;
        ++Fronts[front->objectName()];
        const int what = WheelsAlone ? 9 : Random(10);
        if (what < 5)
            Click(front);
        else if (what < 8)
            Type(front);
        else
            Wheel(front);
    }

    // From the event loop, so that dialogs that wait for an answer get their share.
    void Run(int acts, unsigned seed)
    {
        Chance.seed(seed);
        Acts = 0;
        Wanted = acts;
        Beat();
        QTimer::singleShot(LongestRun, &Loop, &QEventLoop::quit);
        Loop.exec();
        EXPECT_GE(Acts, acts);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        Wanted = 0;
        // A menu that came up under a press has taken its release.
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton})
            QTest::mouseRelease(Window->windowHandle(), button);
    }
    // Each time anew and before the act: a timer does not come within what it has brought about itself.
    void Beat()
    {
        if (Wanted == 0)
            return;
        QTimer::singleShot(0, Window.get(), [this] { Beat(); });
        if (Acts < Wanted)
            Act();
        else if (QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr)
            Leave();
        else if (!Shell.RunActive)
            Loop.quit();
    }
    static void Leave()
    {
        if (QWidget* const popup = QApplication::activePopupWidget())
            popup->close();
        else if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
            dialog->reject();
    }

    // Of section "Configuration".
    std::map<std::string, int> Keys() const
    {
        std::map<std::string, int> keys;
        std::istringstream lines(Ini());
        for (std::string line; std::getline(lines, line);) {
            const std::size_t sign = line.find('=');
            EXPECT_TRUE(sign != std::string::npos || line.starts_with('[') ||
                        line.find_first_not_of("\r ") == std::string::npos)
                << line;
            if (sign != std::string::npos)
                ++keys[line.substr(0, sign)];
        }
        return keys;
    }

    std::mt19937 Chance;
    QString Before;
    QEventLoop Loop;
    std::map<QString, int> Fronts; // how often each window, dialog and menu was in front
    int Acts = 0, Wanted = 0;
    bool WheelsAlone = false;
};

TEST_F(MonkeyAtWindow, WheelsAloneChangeNoSetting)
{
    Open();
    Window->StateShown->setChecked(true);
    StopShell();
    const std::string before = Ini();
    WheelsAlone = true;
    Run(WantedActs() / 2, FirstSeed);
    StopShell();
    EXPECT_EQ(Ini(), before);
}

TEST_F(MonkeyAtWindow, AnythingLeavesTheSettingsWhole)
{
    Open();
    StopShell();
    const std::map<std::string, int> before = Keys();
    const unsigned long noted = StatesNoted();
    Run(WantedActs(), FirstSeed + 1);
    for (const char* const form : {"Form1", "SetUp", "ToolSub"}) // it did get about
        EXPECT_GT(Fronts[QLatin1String(form)], 0) << form;
    EXPECT_GT(StatesNoted(), noted) << "nothing was converted";
    Window->AskToClose();
    const std::map<std::string, int> after = Keys();
    for (const auto& [key, count] : before) {
        EXPECT_EQ(count, 1) << key;
        EXPECT_EQ(after.count(key), 1U) << key;
    }
    for (const auto& [key, count] : after)
        EXPECT_EQ(count, 1) << key;
    LoadAllSettings();
    EXPECT_TRUE(SettingsFault.Ok()) << SettingsFault.Cause;
    for (const char letter : Config.Sequence)
        EXPECT_NE(std::string_view(" VHGR").find(letter), std::string_view::npos) << Config.Sequence;
}

} // namespace
} // namespace kv
