// The window program as a process of its own: its words, its exit status, one instance, the signals.
#include "window/window_scene.h"

#include <QProcess>

namespace kv {
namespace {

class WindowProgramTest : public WindowTest {
  protected:
    // Waits for the end, at most `seconds`.
    int Run(const QStringList& words, int seconds = 20)
    {
        QProcess program;
        Start(program, words);
        EXPECT_TRUE(program.waitForFinished(seconds * 1000));
        Output = program.readAllStandardOutput().toStdString();
        Errors = program.readAllStandardError().toStdString();
        return program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1;
    }
    void Start(QProcess& program, const QStringList& words) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.remove(QStringLiteral("KORVANTI_HOME"));
        program.setProcessEnvironment(environment);
        program.start(QString::fromUtf8(KORVANTI_WINDOW_PROGRAM), words);
        ASSERT_TRUE(program.waitForStarted());
    }
    QStringList Home() const
    {
        return {QStringLiteral("--home"), QString::fromStdString(Place.Folder.string())};
    }
    // Up once the settings' folder knows it: the registration with the editor is a late step of the start.
    bool IsUp() const
    {
        return QTest::qWaitFor([&] { return std::filesystem::exists(Programs / "TPA.INI"); }, 10000);
    }

    std::string Output, Errors;
};

TEST_F(WindowProgramTest, HelpAndVersionNeedNoScreen)
{
    EXPECT_EQ(Run({QStringLiteral("--version")}), 0);
    EXPECT_EQ(Output, "KV90WIN " + VersionAndCommit() + "\n");
    EXPECT_EQ(Run({QStringLiteral("--help")}), 0);
    EXPECT_EQ(Output.substr(0, 15), "Usage: KV90WIN ");
}

TEST_F(WindowProgramTest, WrongUsageIsToldAndEndsWith2)
{
    EXPECT_EQ(Run({QStringLiteral("--bogus")}), 2);
    EXPECT_NE(Errors.find("there is no option --bogus"), std::string::npos);
    EXPECT_EQ(Run({QStringLiteral("--home")}), 2);
    EXPECT_EQ(Run({QStringLiteral("--home"), QStringLiteral("/no/such/folder")}), 2);
}

TEST_F(WindowProgramTest, ADrawingOnTheCommandLineIsConvertedAndTheProgramEnds)
{
    PutDrawing("door.dxf");
    const QString drawing = QString::fromStdString((Drawings / "door.dxf").string());
    const std::string before = Ini();
    EXPECT_EQ(Run(Home() << drawing), 0);
    EXPECT_TRUE(HasProgram("D", "OOR"));
    EXPECT_EQ(Ini(), before) << "it ends without saving the settings";
}

TEST_F(WindowProgramTest, AFailedDrawingEndsWith1)
{
    std::ofstream(Drawings / "bad.dxf") << test::Drawing("");
    const QString drawing = QString::fromStdString((Drawings / "bad.dxf").string());
    EXPECT_EQ(Run(Home() << drawing), 1);
    EXPECT_NE(Errors.find("KV90WIN: bad\nKV90WIN: Part BORDER or BORDER Layer NOT Found!!!\n"),
              std::string::npos)
        << Errors;
}

TEST_F(WindowProgramTest, ADrawingWithSwitchesIsConverted)
{
    PutDrawing("door.dxf");
    const QString drawing = QString::fromStdString((Drawings / "door.dxf").string());
    EXPECT_EQ(Run(Home() << drawing << QStringLiteral("/K")), 0) << Errors;
    EXPECT_TRUE(HasProgram("D", "OOR"));
}

TEST_F(WindowProgramTest, ASecondCopyEndsWithoutTouchingTheSettings)
{
    QProcess first;
    Start(first, Home());
    ASSERT_TRUE(IsUp());
    const std::string before = Ini();
    const auto written = std::filesystem::last_write_time(Place.Folder / "KV90.INI");
    EXPECT_EQ(Run(Home()), 0);
    EXPECT_EQ(Ini(), before);
    EXPECT_EQ(std::filesystem::last_write_time(Place.Folder / "KV90.INI"), written);
    PutDrawing("door.dxf"); // a design program must learn that nobody has converted it
    EXPECT_EQ(Run(Home() << QString::fromStdString((Drawings / "door.dxf").string())), 1);
    EXPECT_NE(Errors.find("door.dxf was not run"), std::string::npos);
    EXPECT_EQ(first.state(), QProcess::Running);
    first.terminate();
    EXPECT_TRUE(first.waitForFinished(10000));
}

TEST_F(WindowProgramTest, TermEndsItLikeTheCloseBox)
{
    PutIni("Winner90=True\r\nLineLimit=150\r\n");
    QProcess program;
    Start(program, Home());
    ASSERT_TRUE(IsUp());
    program.terminate();
    ASSERT_TRUE(program.waitForFinished(10000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_NE(Ini().find("LineLimit=600\r\n"), std::string::npos) << "all settings are saved";
}

TEST_F(WindowProgramTest, ADrawingThatAStopKeepsFromRunningIsNotTakenForConverted)
{
    PutDrawing("door.dxf");
    const std::string drawing = (Drawings / "door.dxf").string();
    QProcess program;
    Start(program, Home() << QString::fromStdString(drawing));
    const std::filesystem::path lock = Place.Folder / ".kv-KORVANTI.lock";
    ASSERT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(lock); }, 10000));
    program.terminate();
    ASSERT_TRUE(program.waitForFinished(10000));
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_FALSE(HasProgram("D", "OOR"));
    const std::string errors = program.readAllStandardError().toStdString();
    EXPECT_NE(errors.find("KV90WIN: " + drawing + " was not run\n"), std::string::npos) << errors;
}

} // namespace
} // namespace kv
