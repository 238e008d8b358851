// What a person sees when another process keeps the installation, when the settings cannot be read, and when
// the window is ended in the middle of something.
#include "dialog_driver.h"
#include "window_scene.h"

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QSessionManager>

#include "platform/file_lock.h"
#include "platform/user_store.h"

namespace kv {
namespace {

constexpr int LongestGap = 1000; // ms between two looks at the events, on a machine that is busy

// Another process with the lock of a file, until it is ended.
class Holder {
  public:
    explicit Holder(const std::filesystem::path& file)
    {
        int ready[2] = {};
        EXPECT_EQ(::pipe(ready), 0);
        Child = ::fork();
        if (Child == 0) {
            FileLock lock;
            const bool taken = lock.TryLock(file.string()).Is == LockState::Taken;
            const char byte = taken ? '1' : '0';
            const bool told = ::write(ready[1], &byte, 1) == 1;
            while (taken && told)
                ::pause();
            ::_exit(1);
        }
        char byte = 0;
        EXPECT_EQ(::read(ready[0], &byte, 1), 1);
        EXPECT_EQ(byte, '1') << "the lock is not free";
        ::close(ready[0]);
        ::close(ready[1]);
    }
    ~Holder() { LetGo(); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    void LetGo()
    {
        if (Child <= 0)
            return;
        ::kill(Child, SIGKILL);
        ::waitpid(Child, nullptr, 0);
        Child = 0;
    }

  private:
    pid_t Child = 0;
};

class WindowInTrouble : public WindowTest {
  protected:
    void StartOf(const std::string& drawing)
    {
        ClickRow(drawing);
        QTest::mouseClick(Window->Start, Qt::LeftButton);
    }
    std::string WaitLine() const { return (Programs / "INDICE.PRG").string() + " is in use by "; }
    std::string IniPlace() const { return (Place.Folder / "KV90.INI").string(); }
    // A folder in its place cannot be read.
    void MakeIniUnreadable() const
    {
        std::filesystem::remove(IniPlace());
        std::filesystem::create_directory(IniPlace());
        std::ofstream(IniPlace() + "/kept") << "as it was";
    }
};

TEST_F(WindowInTrouble, ALongWaitNamesItsHolderAndTheWindowStaysAlive)
{
    PutDrawing("door.dxf");
    Open();
    Clock.Pause = nullptr; // real time
    Holder other(Programs / "INDICE.PRG");
    QElapsedTimer sinceLook;
    qint64 longest = 0;
    bool abortable = false, told = false;
    QTimer looks;
    QObject::connect(&looks, &QTimer::timeout, Window.get(), [&] {
        longest = std::max(longest, sinceLook.restart());
        abortable = Window->BtnAbort->isVisible() && Window->BtnAbort->isEnabled();
        told = told || Reported(WaitLine() + "korvanti_window_tests, process ");
        if (told)
            other.LetGo();
    });
    sinceLook.start();
    looks.start(20);
    QElapsedTimer run;
    run.start();
    StartOf("door.dxf");
    EXPECT_TRUE(told);
    EXPECT_TRUE(abortable);
    EXPECT_GE(run.elapsed(), 10000);
    EXPECT_LE(longest, LongestGap);
    std::printf("longest time between two looks at the events: %lld ms\n", static_cast<long long>(longest));
    EXPECT_TRUE(HasProgram("D", "OOR")) << "the drawing is done when the holder lets go";
    EXPECT_TRUE(Reported("CONVERSION COMPLETED."));
}

TEST_F(WindowInTrouble, AWaitEndsByTheAbortButton)
{
    PutDrawing("door.dxf");
    Open();
    Clock.Pause = nullptr;
    const Holder other(Programs / "INDICE.PRG");
    QTimer::singleShot(700, Window.get(), [&] { QTest::mouseClick(Window->BtnAbort, Qt::LeftButton); });
    QElapsedTimer run;
    run.start();
    StartOf("door.dxf");
    EXPECT_LT(run.elapsed(), 5000);
    EXPECT_FALSE(HasProgram("D", "OOR"));
    EXPECT_TRUE(Reported("aborted while it was in use by korvanti_window_tests, process "));
    EXPECT_TRUE(Window->Start->isEnabled());
}

TEST_F(WindowInTrouble, SettingsThatCannotBeReadAreToldAndNeverStored)
{
    PutDrawing("door.dxf");
    MakeIniUnreadable();
    Open();
    EXPECT_TRUE(Reported("Nothing is converted and no setting is kept: " + IniPlace() + ": is a folder"))
        << testing::PrintToString(ReportLines());
    Window->Defaults.Sequence->ShowStored();
    InDialog(ShowSetup, [](QDialog& dialog) { Click(dialog, "PrefOK"); });
    InDialog(ShowSetup, [](QDialog& dialog) { Click(dialog, "PrefCan"); });
    InDialog(ShowToolSub, [](QDialog& dialog) { Click(dialog, "BtnOK"); });
    EXPECT_TRUE(Reported("No setting is kept: " + IniPlace() + ": is a folder"));
    bool ended = false;
    Window->Ended = [&] { ended = true; };
    Window->close();
    EXPECT_TRUE(ended);
    EXPECT_EQ(Place.Read(std::filesystem::path(IniPlace()) / "kept"), "as it was");
    std::filesystem::remove_all(IniPlace());
    Shell = {};
    PutIni("Winner90=True\r\nLineLimit=700\r\n");
    Open();
    EXPECT_EQ(Config.LineLimit, "700");
}

TEST_F(WindowInTrouble, SettingsThatCannotBeStoredAtTheEndAreToldInABox)
{
    Open();
    std::filesystem::remove(IniPlace());
    MakeIniUnreadable();
    Window->close();
    ASSERT_EQ(AtWindow.Told.size(), 1U);
    EXPECT_EQ(AtWindow.Told[0], "No setting is kept: " + IniPlace() + ": is a folder");
}

TEST_F(WindowInTrouble, APositionThatCannotBeStoredAtTheEndIsToldInABox)
{
    Open();
    const std::string store = UserStoreName();
    std::filesystem::remove(store);
    std::filesystem::create_directories(store + "/in the way");
    Window->close();
    std::filesystem::remove_all(store);
    ASSERT_EQ(AtWindow.Told.size(), 1U);
    EXPECT_EQ(AtWindow.Told[0], "The window's position is not kept: " + store + ": is a folder");
}

TEST_F(WindowInTrouble, WhatACloseLeavesUndoneIsToldInABox)
{
    for (const char* const name : {"a.dxf", "b.dxf", "c.dxf"})
        PutDrawing(name);
    PutIni("Winner90=True\r\nAutoStartBatch=True\r\n");
    Open();
    Window->Timer1.stop();
    for (int warmUp = 0; warmUp < 3; ++warmUp)
        AutostartTick();
    std::ofstream(Drawings / "BATCH.LST") << "a.dxf\r\nb.dxf\r\nc.dxf\r\n";
    const test::AtStage look("final", [&] {
        if (kv::Run.PartName.ends_with("B"))
            Window->close();
    });
    AutostartTick();
    bool ended = false;
    Window->Ended = [&] { ended = true; };
    EXPECT_TRUE(QTest::qWaitFor([&] { return ended; }, 2000));
    ASSERT_EQ(AtWindow.Told.size(), 1U);
    EXPECT_TRUE(AtWindow.Told[0].starts_with("Unfinished batch: ")) << AtWindow.Told[0];
    EXPECT_TRUE(AtWindow.Told[0].ends_with(" lines kept in " + (Drawings / "BATCH.OLD").string()))
        << AtWindow.Told[0];
}

MainWindow* TheWindowOfTest = nullptr;

TEST_F(WindowInTrouble, AStopCancelsAnOpenDialogAndStoresTheRest)
{
    PutIni("Winner90=True\r\nLineLimit=700\r\n");
    Open();
    bool ended = false;
    Window->Ended = [&] { ended = true; };
    InDialog(ShowSetup, [this](QDialog& dialog) {
        auto& tabs = Get<QTabWidget>(dialog, "SSTab1");
        tabs.setCurrentIndex(2);
        Type(dialog, "SLim", "900");
        EXPECT_EQ(Config.LineLimit, "900");
        Window->AskToStop();
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(ended);
    EXPECT_NE(Ini().find("LineLimit=700\r\n"), std::string::npos) << Ini();
    EXPECT_TRUE(AtWindow.Told.empty());
}

// The half-typed path of a Setup that nobody confirmed.
TEST_F(WindowInTrouble, AStopStoresNoHalfTypedPath)
{
    for (const bool hadPath : {true, false}) {
        PutIni("Winner90=True\r\n");
        if (!hadPath)
            Place.Write("KV90.INI", "[Configuration]\r\nWinner90=True\r\n");
        for (const int way :
             {0, 1, 2}) { // a signal, the window closed below the dialog, a signal at the question
            Open();
            const std::string before = Config.SourcePath90;
            AtWindow = {};
            InDialog(ShowSetup, [&](QDialog& dialog) {
                Type(dialog, "DXFPath(0)", Drawings.string() + "/not there/ye");
                if (way == 2)
                    Person.Ask = [](const QString&, const QString&, const QString&) {
                        TheWindowOfTest->AskToStop();
                        return false;
                    };
                TheWindowOfTest = Window.get();
                if (way == 0)
                    Window->AskToStop();
                else if (way == 1)
                    Window->close();
                else
                    Get<QTabWidget>(dialog, "SSTab1").setFocus();
                QTest::qWait(100);
                if (dialog.isVisible())
                    dialog.reject();
            });
            EXPECT_EQ(Ini().find("not there"), std::string::npos) << way << Ini();
            EXPECT_EQ(Config.SourcePath90, before) << way;
            Person.Ask = [](const QString&, const QString&, const QString&) { return false; };
            Window.reset();
            Shell = {};
        }
    }
}

TEST_F(WindowInTrouble, ASessionThatEndsFindsTheSettingsStoredAndTheWindowOpen)
{
    Open();
    Config.LeadS = 1;
    Window->SessionEnds();
    EXPECT_NE(Ini().find("LeadS= 1\r\n"), std::string::npos);
    EXPECT_TRUE(Window->isVisible()) << "another program may call the session's end off";
    InDialog(ShowSetup, [this](QDialog& dialog) {
        Get<QTabWidget>(dialog, "SSTab1").setCurrentIndex(2);
        Type(dialog, "SLim", "900");
        Window->SessionEnds();
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(Ini().find("LineLimit=900\r\n"), std::string::npos) << "not accepted yet";
        Click(dialog, "PrefCan");
    });
}

TEST_F(WindowInTrouble, AWindowThatIsNotLoadedStoresNothing)
{
    PutIni("Winner90=True\r\nLineLimit=700\r\n");
    const std::string before = Ini();
    Window = std::make_unique<MainWindow>();
    Window->SessionEnds();
    Window->close();
    EXPECT_EQ(Ini(), before);
}

} // namespace
} // namespace kv
