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
    // With the program that looks at drawings: this one is none.
    void OpenWithPane()
    {
        Open();
        Window->Looker.Program = QStringLiteral(KORVANTI_WINDOW_PROGRAM);
        if (!Window->ProgramShown->isChecked())
            PressF6();
    }
    const Scene& PaneScene() const { return Window->Program->View->Shown(); }
    bool PaneShows(const char* state) const
    {
        return QTest::qWaitFor([&] { return Window->Program->State->text().contains(QLatin1String(state)); },
                               30000);
    }
    bool EmptySays(const char* text) const
    {
        return Window->Program->View->Empty.contains(QLatin1String(text));
    }
    void EditPrograms(const std::string& what, const std::string& by) const
    {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Programs / "SRG"))
            if (entry.is_regular_file()) {
                std::string text = Place.Read(entry.path());
                const std::size_t at = text.find(what);
                ASSERT_NE(at, std::string::npos) << text;
                std::ofstream(entry.path(), std::ios::binary) << text.replace(at, what.size(), by);
            }
    }
    int ReportRowWith(const std::string& part) const
    {
        const std::vector<std::string> lines = ReportLines();
        for (std::size_t row = 0; row < lines.size(); ++row)
            if (lines[row].find(part) != std::string::npos)
                return static_cast<int>(row);
        ADD_FAILURE() << "no line with " << part;
        return 0;
    }
    void ClickReport(const std::string& part) const
    {
        const QModelIndex row = Window->List2->Model.index(ReportRowWith(part));
        Window->List2->scrollTo(row);
        QTest::mouseClick(Window->List2->viewport(), Qt::LeftButton, {},
                          Window->List2->visualRect(row).center());
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

TEST_F(MainWindowPaneTest, AWindowOf1500PixelsHasItInItsBand)
{
    Open({1500, 900});
    PressF6();
    EXPECT_FALSE(Window->Program->isWindow());
    for (const QToolButton* const button : Window->Program->findChildren<QToolButton*>())
        EXPECT_TRUE(
            Window->Program->rect().contains(QRect(button->mapTo(Window->Program, QPoint()), button->size())))
            << Ansi(button->text());
    Window->resize(1400, 900);
    QApplication::processEvents();
    EXPECT_TRUE(Window->Program->isWindow());
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

// A drawing that no program is of is looked at in a process of its own, and shown by itself.
TEST_F(MainWindowPaneTest, ASelectedDrawingWithoutAProgramIsShownItself)
{
    PutDrawing("shelf.dxf", test::Circle("VBOR_D5_Z9", 300, 200, 2.5));
    OpenWithPane();
    Convert("door.dxf");
    ASSERT_TRUE(PaneScene().Items.size() == 1);
    ClickRow("shelf.dxf");
    EXPECT_FALSE(Window->Program->View->HasPanel());
    EXPECT_TRUE(Window->Program->View->Empty.startsWith(QStringLiteral("shelf.dxf")));
    ASSERT_TRUE(PaneShows("the drawing; it has no program yet")) << Ansi(Window->Program->View->Empty);
    EXPECT_EQ(PaneScene().Length, 600);
    EXPECT_EQ(PaneScene().Thickness, 18);
    EXPECT_TRUE(PaneScene().Items.empty());
    ASSERT_EQ(PaneScene().Drawn.size(), 3U) << "border, bore, and the circle of a misspelt layer";
    EXPECT_TRUE(PaneScene().Drawn[2].IsLeft);
    EXPECT_EQ(PaneScene().Drawn[2].Text.substr(0, 20), "CIRCLE on VBOR_D5_Z9");
    EXPECT_FALSE(HasProgram("S", "HELF")) << "a look places nothing";
    ClickRow("door.dxf");
    EXPECT_EQ(PaneScene().Items.size(), 1U);
}

// A later start knows nothing of this conversion but what lies on the disk.
TEST_F(MainWindowPaneTest, AProgramOfAnEarlierTimeIsFoundAgain)
{
    OpenWithPane();
    Convert("door.dxf");
    ASSERT_EQ(PaneScene().Items.size(), 1U);
    CloseAndForget();
    ForgetNotedPrograms();
    OpenWithPane();
    ClickRow("door.dxf");
    ASSERT_TRUE(PaneShows("drawing unchanged")) << Ansi(Window->Program->View->Empty);
    EXPECT_EQ(PaneScene().Items.size(), 1U);
    Window->Program->Select(0);
    EXPECT_NE(
        Window->Program->Sentence->text().indexOf(QStringLiteral("; from CIRCLE on VBORE_Z12F3000, line ")),
        -1)
        << Ansi(Window->Program->Sentence->text());
    EditPrograms("Z12", "Z9");
    ClickRow("shelf.dxf");
    ClickRow("door.dxf");
    ASSERT_TRUE(PaneShows("not what the drawing gives now")) << Ansi(Window->Program->State->text());
    EXPECT_EQ(PaneScene().Items.at(0).Depth, 9) << "what lies on the disk is shown";
    Window->Program->Select(0);
    EXPECT_EQ(Window->Program->Sentence->text().indexOf(QStringLiteral("; from")), -1)
        << "the lines of an edited program are nobody's";
}

TEST_F(MainWindowPaneTest, ADrawingThatCannotBeConvertedIsSaidToBe)
{
    std::ofstream(Drawings / "bad.dxf", std::ios::binary)
        << test::Drawing(test::Circle("VBORE_Z12F3000", 100, 50, 4));
    OpenWithPane();
    ClickRow("bad.dxf");
    ASSERT_TRUE(QTest::qWaitFor([&] { return EmptySays("cannot be shown"); }, 30000));
    EXPECT_TRUE(EmptySays("Layer NOT Found")) << Ansi(Window->Program->View->Empty);
}

TEST_F(MainWindowPaneTest, ALookThatCannotStartLeavesThePaneAlive)
{
    OpenWithPane();
    Window->Looker.Program = QStringLiteral("/nowhere/KV90WIN");
    ClickRow("shelf.dxf");
    ASSERT_TRUE(QTest::qWaitFor([&] { return EmptySays("cannot be shown"); }, 30000));
    Window->Looker.Program = QStringLiteral("/bin/true"); // answers nothing
    ClickRow("door.dxf");
    ASSERT_TRUE(QTest::qWaitFor([&] { return EmptySays("could not be looked at"); }, 30000));
    Convert("door.dxf");
    EXPECT_EQ(PaneScene().Items.size(), 1U);
}

TEST_F(MainWindowPaneTest, AnOperationNamesItsEntityAndLightsIt)
{
    OpenWithPane();
    Convert("door.dxf");
    Window->Program->Select(0);
    const QString sentence = Window->Program->Sentence->text();
    EXPECT_NE(sentence.indexOf(QStringLiteral("; from CIRCLE on VBORE_Z12F3000, line ")), -1)
        << Ansi(sentence);
    ASSERT_EQ(PaneScene().Items[0].DrawnLines.size(), 1U);
    EXPECT_EQ(Window->Program->View->Look.LitDrawn, PaneScene().Items[0].DrawnLines);
    Window->Program->Select(NoItem);
    EXPECT_TRUE(Window->Program->View->Look.LitDrawn.empty());
}

// A bore of no depth is made and doubted; a misspelt layer is left: both lines lead to their places.
TEST_F(MainWindowPaneTest, ALineOfTheReportShowsItsOperationOrItsEntity)
{
    using namespace test;
    PutDrawing("doubt.dxf", Circle("VBORE_D5_Z31", 300, 200, 2.5) + Circle("VBOR_D5_Z9", 400, 200, 2.5));
    OpenWithPane();
    Convert("doubt.dxf");
    ClickRow("shelf.dxf");
    ASSERT_TRUE(PaneShows("it has no program yet"));
    ClickReport("beyond the panel");
    EXPECT_TRUE(Window->Program->Header->text().startsWith(QStringLiteral("doubt.dxf")));
    ASSERT_NE(Window->Program->Selected(), NoItem);
    EXPECT_EQ(PaneScene().Items[Window->Program->Selected()].At.X, 300);
    ClickReport("the layer means nothing");
    EXPECT_EQ(Window->Program->Selected(), NoItem);
    ASSERT_EQ(Window->Program->View->Look.LitDrawn.size(), 1U);
    EXPECT_TRUE(Window->Program->Sentence->text().startsWith(QStringLiteral("CIRCLE on VBOR_D5_Z9, line ")))
        << Ansi(Window->Program->Sentence->text());
    ClickRow("shelf.dxf"); // which is not there yet
    ClickReport("beyond the panel");
    EXPECT_TRUE(Window->Program->Header->text().startsWith(QStringLiteral("doubt.dxf")));
    EXPECT_NE(Window->Program->Selected(), NoItem);
    Window->Program->Select(NoItem);
    Window->List2->setCurrentIndex(Window->List2->Model.index(ReportRowWith("beyond the panel")));
    QTest::keyClick(Window->List2, Qt::Key_Return);
    EXPECT_NE(Window->Program->Selected(), NoItem);
}

// A notch of 3 mm for a tool of 16: what the check finds is marked, and its line leads there.
TEST_F(MainWindowPaneTest, WhatTheCheckFindsIsMarkedInThePicture)
{
    PutDrawing("notch.dxf",
               test::Polyline("ROUTE2_Z18_T71_L8_F3000",
                              {{100, 100}, {300, 100}, {300, 200}, {297, 200}, {297, 104}, {100, 104}},
                              test::Pair(70, "1")));
    OpenWithPane();
    Config.Check = "yes";
    Convert("notch.dxf");
    std::size_t marks = 0;
    for (const DrawnShape& shape : PaneScene().Drawn)
        if (shape.Text.starts_with("check: ")) {
            ++marks;
            EXPECT_TRUE(shape.IsLeft);
            EXPECT_EQ(shape.Way.size(), 2U);
        }
    EXPECT_GT(marks, 0U) << ReportLines().size();
    ClickReport("the tool does not fit");
    EXPECT_NE(Window->Program->Selected(), NoItem);
}

TEST_F(MainWindowPaneTest, AFaultyTableOfToolsIsNamed)
{
    Place.Write("Tools.cfg", "12 chisel\r\n");
    OpenWithPane();
    Convert("door.dxf");
    EXPECT_EQ(PaneScene().Items.size(), 1U);
    EXPECT_NE(Window->Program->State->text().indexOf(QStringLiteral("Tools.cfg, line 1")), -1)
        << Ansi(Window->Program->State->text());
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
