// The pane of the program in the main window: off at first, F6, where it is, what it shows.
#include "window/window_scene.h"

#include <QMenu>

#include "shell/program_pictures.h"

namespace kv {
namespace {

class MainWindowPaneTest : public WindowTest {
  protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        ForgetNotedPrograms();
        PutDrawing("door.dxf");
        PutDrawing("shelf.dxf");
    }
    void PressF6() const
    {
        QTest::keyClick(Window.get(), Qt::Key_F6);
        QApplication::processEvents();
    }
    void Convert(const std::string& name) const
    {
        ClickRow(name);
        StartConversion();
        QApplication::processEvents();
    }
    void CloseAndForget()
    {
        Window->AskToClose();
        Window.reset();
        Shell = {};
        FileList = {};
    }
};

TEST_F(MainWindowPaneTest, IsOffAtTheFirstStartAndF6Toggles)
{
    Open();
    EXPECT_FALSE(Window->ProgramShown->isChecked());
    EXPECT_TRUE(Window->Program->isHidden());
    PressF6();
    EXPECT_TRUE(Window->ProgramShown->isChecked());
    EXPECT_TRUE(Window->Program->isVisible());
    PressF6();
    EXPECT_TRUE(Window->Program->isHidden());
    EXPECT_EQ(Find<QMenu>("MnuView")->actions().size(), 1);
}

TEST_F(MainWindowPaneTest, IsAsItWasLeftAtTheNextStart)
{
    Open();
    PressF6();
    CloseAndForget();
    Open();
    EXPECT_TRUE(Window->ProgramShown->isChecked());
    EXPECT_TRUE(Window->Program->isVisible());
    PressF6();
    CloseAndForget();
    Open();
    EXPECT_FALSE(Window->ProgramShown->isChecked());
}

TEST_F(MainWindowPaneTest, ANarrowWindowHasItBesideItselfAndAWideOneInItsBand)
{
    Open();
    PressF6();
    EXPECT_TRUE(Window->Program->isWindow());
    const int narrow = Window->minimumSizeHint().width();
    Window->resize(2200, 735);
    QApplication::processEvents();
    EXPECT_FALSE(Window->Program->isWindow());
    EXPECT_TRUE(Window->Program->isVisible());
    EXPECT_EQ(Window->minimumSizeHint().width(), narrow) << "the window can get narrow again";
    Window->resize(1024, 735);
    QApplication::processEvents();
    EXPECT_TRUE(Window->Program->isWindow());
    EXPECT_TRUE(Window->Program->isVisible());
}

TEST_F(MainWindowPaneTest, NothingMovesForIt)
{
    Open({2200, 900});
    std::vector<std::pair<QWidget*, QRect>> places;
    for (const ControlRow& row : ControlRows())
        if (auto* const widget = row.Form == "Form1" ? Find<QWidget>(row.Name) : nullptr;
            widget != nullptr && widget->isVisible())
            places.emplace_back(widget, QRect(widget->mapTo(Window.get(), QPoint()), widget->size()));
    ASSERT_GT(places.size(), 20U);
    PressF6();
    ASSERT_FALSE(Window->Program->isWindow());
    for (const auto& [widget, place] : places)
        EXPECT_EQ(QRect(widget->mapTo(Window.get(), QPoint()), widget->size()), place)
            << widget->objectName().toStdString();
    EXPECT_GT(Window->Program->width(), 500);
    EXPECT_LE(Window->Program->mapTo(Window.get(), QPoint(Window->Program->width(), 0)).x(), Window->width());
}

TEST_F(MainWindowPaneTest, ClosingItsOwnWindowIsTheSameAsF6)
{
    Open();
    PressF6();
    ASSERT_TRUE(Window->Program->isWindow());
    Window->Program->close();
    EXPECT_FALSE(Window->ProgramShown->isChecked());
}

TEST_F(MainWindowPaneTest, TheProgramThatHasJustBeenWrittenIsShown)
{
    Open();
    PressF6();
    EXPECT_FALSE(Window->Program->View->HasPanel());
    Convert("door.dxf");
    ASSERT_TRUE(Window->Program->View->HasPanel()) << Ansi(Window->Program->View->Empty);
    EXPECT_EQ(Window->Program->View->Shown().Length, 600);
    EXPECT_EQ(Window->Program->View->Shown().Items.size(), 1U);
    EXPECT_TRUE(Window->Program->Header->text().startsWith(QStringLiteral("door.dxf")));
    EXPECT_TRUE(Window->Program->State->text().endsWith(QStringLiteral("drawing unchanged")))
        << Ansi(Window->Program->State->text());
    EXPECT_FALSE(Window->Program->View->Shown().Drawn.empty());
}

TEST_F(MainWindowPaneTest, ASelectedDrawingShowsItsProgramOrThatItHasNone)
{
    Open();
    PressF6();
    Convert("door.dxf");
    ASSERT_TRUE(Window->Program->View->HasPanel());
    ClickRow("shelf.dxf");
    EXPECT_FALSE(Window->Program->View->HasPanel());
    EXPECT_TRUE(Window->Program->View->Empty.contains(QStringLiteral("shelf.dxf")));
    ClickRow("door.dxf");
    EXPECT_TRUE(Window->Program->View->HasPanel());
}

// The nested sheet is longer than a portion: each portion is a program of its own, and can be chosen.
TEST_F(MainWindowPaneTest, EachProgramOfADrawingCanBeChosen)
{
    std::filesystem::copy_file(std::string(KORVANTI_SOURCE_DIR) + "/examples/drawings/nested_sheet.dxf",
                               Drawings / "nested_sheet.dxf");
    Open();
    PressF6();
    Convert("nested_sheet.dxf");
    ASSERT_TRUE(Window->Program->View->HasPanel());
    ASSERT_GT(Window->Program->Programs->count(), 1);
    EXPECT_TRUE(Window->Program->Programs->isVisible());
    const std::size_t first = Window->Program->View->Shown().Items.size();
    const QString header = Window->Program->Header->text();
    Q_EMIT Window->Program->Programs->activated(1);
    EXPECT_NE(Window->Program->Header->text(), header);
    EXPECT_NE(Window->Program->View->Shown().Items.size(), first);
    EXPECT_EQ(Window->Program->Programs->currentIndex(), 1);
    Convert("door.dxf");
    EXPECT_FALSE(Window->Program->Programs->isVisible());
}

TEST_F(MainWindowPaneTest, AProgramThatIsSpoiledAfterwardsIsSaidToBe)
{
    Open();
    PressF6();
    Convert("door.dxf");
    ASSERT_TRUE(Window->Program->View->HasPanel());
    const ProgramsOfDrawing* const programs = LastProgramsNoted();
    ASSERT_NE(programs, nullptr);
    for (const std::string& file : programs->Files)
        std::ofstream(ToHostPath(file), std::ios::binary) << "no program\n";
    ClickRow("shelf.dxf");
    ClickRow("door.dxf");
    EXPECT_FALSE(Window->Program->View->HasPanel());
    EXPECT_FALSE(Window->Program->View->Empty.isEmpty());
    EXPECT_TRUE(Window->Program->isVisible());
}

} // namespace
} // namespace kv
