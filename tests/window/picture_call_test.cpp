// Pictures by the window program as a process of its own, as a script asks for them: without a screen.
#include "window/window_scene.h"

#include <QImage>
#include <QProcess>

#include "window/scene_painter.h"

namespace kv {
namespace {

class PictureCallTest : public WindowTest {
  protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        PutDrawing("door.dxf");
    }

    // Without any screen to be found: neither the tests' own platform nor a display.
    int Run(const QStringList& words, const char* const program = KORVANTI_WINDOW_PROGRAM)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* const name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY", "KORVANTI_HOME"})
            environment.remove(QString::fromUtf8(name));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(QString::fromStdString(Drawings.string()));
        process.start(QString::fromUtf8(program),
                      QStringList{QStringLiteral("--home"), QString::fromStdString(Place.Folder.string())}
                          << words);
        EXPECT_TRUE(process.waitForFinished(30000));
        Output = process.readAllStandardOutput().toStdString();
        Errors = process.readAllStandardError().toStdString();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    int Draw(const char* what, const char* file, const QStringList& more = {})
    {
        return Run(QStringList{QStringLiteral("--picture"), QString::fromUtf8(what), QStringLiteral("-o"),
                               QString::fromUtf8(file)}
                   << more);
    }

    std::string Contents(const char* file) const { return Place.Read(Drawings / file); }
    bool IsThere(const char* file) const { return std::filesystem::exists(Drawings / file); }

    std::string Output, Errors;
};

std::size_t PixelsOf(const QImage& image, QRgb colour)
{
    std::size_t count = 0;
    for (int row = 0; row < image.height(); ++row)
        for (int column = 0; column < image.width(); ++column)
            count += image.pixel(column, row) == colour ? 1 : 0;
    return count;
}

TEST_F(PictureCallTest, OfADrawingIsAnImageAndNothingIsPlaced)
{
    const std::string before = Ini();
    EXPECT_EQ(Draw("door.dxf", "door.png"), 0) << Errors;
    EXPECT_EQ(Output, "door.png\n");
    EXPECT_EQ(Errors, "");
    const QImage image(QString::fromStdString((Drawings / "door.png").string()));
    EXPECT_EQ(image.width(), 1920);
    // The sheet is 600 by 400 mm with its edges around: the face fills some two thirds of the image.
    const std::size_t face = PixelsOf(image, ColoursOfScene(false).Face.rgb());
    const std::size_t all =
        static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height());
    EXPECT_GT(face, all / 2);
    EXPECT_LT(face, all);
    EXPECT_FALSE(HasProgram("D", "OOR"));
    EXPECT_EQ(Ini(), before);
}

TEST_F(PictureCallTest, IsAsWideAsAskedFor)
{
    EXPECT_EQ(Draw("door.dxf", "door.PNG", {QStringLiteral("--width=640")}), 0) << Errors;
    EXPECT_EQ(QImage(QString::fromStdString((Drawings / "door.PNG").string())).width(), 640);
}

// One scene, two backs: the window program's is that of the command.
TEST_F(PictureCallTest, AsSvgIsThatOfTheCommand)
{
    EXPECT_EQ(Draw("door.dxf", "window.svg"), 0) << Errors;
    const QStringList draw = {QStringLiteral("draw"), QStringLiteral("door.dxf"), QStringLiteral("-o"),
                              QStringLiteral("command.svg")};
    ASSERT_EQ(Run(draw, KORVANTI_CONSOLE), 0) << Errors;
    EXPECT_NE(Contents("window.svg").find("bore, diameter 8, 12 deep; from CIRCLE on VBORE_Z12F3000"),
              std::string::npos);
    EXPECT_EQ(Contents("window.svg"), Contents("command.svg"));
}

TEST_F(PictureCallTest, OfAProgramIsAPageOfPdf)
{
    std::ofstream(Drawings / "door.cnc") << "G71X600Y400Z18T00N4L1\r\nG81G90G55P5R54=8X100Y50Z12\r\nM2\r\n";
    EXPECT_EQ(Draw("door.cnc", "door.pdf"), 0) << Errors;
    EXPECT_EQ(Contents("door.pdf").substr(0, 6), "%PDF-1");
    EXPECT_NE(Contents("door.pdf").find("/Count 1"), std::string::npos);
}

// Each program of a drawing has its own picture.
TEST_F(PictureCallTest, OfADrawingWithPortionsAreNumbered)
{
    PutIni("Winner90=True\r\nMakeHBD=1\r\nHBDDestinationPath=" + Programs.string() + "/\r\n");
    const std::filesystem::path examples = std::filesystem::path(KORVANTI_SOURCE_DIR) / "examples";
    std::filesystem::copy_file(examples / "install/KVHBD.cfg", Place.Folder / "KVHBD.cfg");
    std::filesystem::copy_file(examples / "drawings/bottom.dxf", Drawings / "bottom.dxf");
    EXPECT_EQ(Draw("bottom.dxf", "bottom.svg"), 0) << Errors;
    EXPECT_EQ(Output, "bottom.svg\nbottom-2.svg\n");
    EXPECT_NE(Contents("bottom.svg").find("on side 4"), std::string::npos);
    EXPECT_EQ(Contents("bottom-2.svg").find("on side 4"), std::string::npos);
}

TEST_F(PictureCallTest, FailuresNameFileAndCauseInOneLine)
{
    std::ofstream(Drawings / "none.cnc") << "hello\n";
    std::ofstream(Drawings / "bad.dxf") << test::Drawing("");
    struct {
        const char *What, *File, *Named, *Cause;
    } const failures[] = {
        {"missing.cnc", "a.png", "missing.cnc: ", "No such file"},
        {"missing.dxf", "a.png", "missing.dxf: ", "NOT FOUND"},
        {"none.cnc", "a.png", "none.cnc: ", "is no program of a known machine"},
        {"bad.dxf", "a.png", "bad.dxf: ", "Part BORDER or BORDER Layer NOT Found"},
        {"door.dxf", "nowhere/a.png", "nowhere/a.png: ", "No such file or directory"},
    };
    for (const auto& failure : failures) {
        EXPECT_EQ(Draw(failure.What, failure.File), 1) << failure.What;
        EXPECT_EQ(Output, "");
        EXPECT_EQ(Errors.rfind("KV90WIN: ", 0), 0U) << Errors;
        EXPECT_EQ(Errors.find('\n'), Errors.size() - 1) << Errors;
        EXPECT_NE(Errors.find(failure.Named), std::string::npos) << Errors;
        EXPECT_NE(Errors.find(failure.Cause), std::string::npos) << Errors;
    }
    EXPECT_FALSE(IsThere("a.png"));
}

TEST_F(PictureCallTest, LinesThatAreNotUnderstoodAreToldAndTheRestIsDrawn)
{
    std::ofstream(Drawings / "door.cnc")
        << "G71X600Y400Z18T00N4L1\r\nG81G90G55P5R54=8X100Y50Z12\r\nQQQ\r\nM2\r\n";
    EXPECT_EQ(Draw("door.cnc", "door.svg"), 1);
    EXPECT_EQ(Errors, "KV90WIN: door.cnc: 1 line is not understood and not drawn\n");
    EXPECT_EQ(Output, "door.svg\n");
    EXPECT_NE(Contents("door.svg").find("bore, diameter 8, 12 deep"), std::string::npos);
}

TEST_F(PictureCallTest, WrongWordsEndWith2)
{
    const auto words = [](const char* line) { return QString::fromUtf8(line).split(QLatin1Char(' ')); };
    for (const char* const line :
         {"--picture", "--picture door.dxf", "--picture door.dxf -o", "--picture door.dxf -o door.bmp",
          "--picture door.dxf -o .png", "--picture door.dxf -o a.png /S", "-o a.png",
          "--picture door.dxf -o a.png --width 0", "--picture door.dxf -o a.png --width wide"}) {
        EXPECT_EQ(Run(words(line)), 2) << line;
        EXPECT_NE(Errors.find("Try KV90WIN --help"), std::string::npos) << line;
    }
    EXPECT_FALSE(IsThere("a.png"));
}

// A window that is open keeps the installation for itself; a picture takes nothing from it.
TEST_F(PictureCallTest, IsDrawnBesideAnOpenWindow)
{
    Open();
    EXPECT_EQ(Draw("door.dxf", "door.png"), 0) << Errors;
    EXPECT_TRUE(IsThere("door.png"));
}

} // namespace
} // namespace kv
