// The View menu: states, filter and recent folders; what a list shows while it runs. All is off at first, as
// it was left at the next start, and what is not seen is neither selected nor converted.
#include "state/report.h"
#include "window/window_scene.h"

#include <QMenu>

namespace kv {
namespace {

class MainWindowViewsTest : public WindowTest {
  protected:
    void PressKey(Qt::Key key, Qt::KeyboardModifiers keys = Qt::ControlModifier) const
    {
        QTest::keyClick(Window.get(), key, keys);
        QApplication::processEvents();
    }
    void TypeFilter(const char* words) const
    {
        Window->FilterShown->setChecked(true);
        QTest::keyClicks(Window->Folder->Filter, QLatin1String(words));
        QApplication::processEvents();
    }
    std::vector<std::string> Listed() const
    {
        std::vector<std::string> names;
        for (int row = 0; row < Window->List1->Model.rowCount(); ++row)
            names.push_back(Text(row, 3));
        return names;
    }
    std::string StateOf(const std::string& name) const
    {
        return Window->List1->Model.index(RowOf(name), StateColumn - 1).data().toString().toStdString();
    }
    void CloseAndForget()
    {
        Window->AskToClose();
        Window.reset();
        FileList = {};
        Shell = {};
        ResetAutostart();
    }
    void SelectAll() const
    {
        Window->List1->setFocus();
        Window->List1->selectAll();
    }
    using Names = std::vector<std::string>;
};

TEST_F(MainWindowViewsTest, NothingOfThemIsThereAtTheFirstStart)
{
    PutDrawing("door.dxf");
    Open();
    EXPECT_TRUE(Window->Folder->Filter->isHidden());
    EXPECT_TRUE(Window->Folder->Recent->isHidden());
    EXPECT_TRUE(Window->List1->isColumnHidden(StateColumn - 1));
    for (const QAction* const action : Find<QMenu>("MnuView")->actions())
        EXPECT_FALSE(action->isChecked()) << action->text().toStdString();
}

TEST_F(MainWindowViewsTest, AreAsTheyWereLeftAtTheNextStart)
{
    Open();
    Window->StateShown->setChecked(true);
    Window->FoldersShown->setChecked(true);
    CloseAndForget();
    Open();
    EXPECT_TRUE(Window->StateShown->isChecked());
    EXPECT_FALSE(Window->List1->isColumnHidden(StateColumn - 1));
    EXPECT_TRUE(Window->Folder->Recent->isVisible());
    EXPECT_TRUE(Window->Folder->Filter->isHidden());
}

TEST_F(MainWindowViewsTest, TheStateStandsRightOfTheNameWithItsSign)
{
    PutDrawing("a.dxf");
    PutDrawing("b.dxf");
    std::ofstream(Drawings / "c.dxf") << test::Drawing(test::Circle("VBORE_Z12F3000", 100, 50, 4));
    Open();
    Window->StateShown->setChecked(true);
    EXPECT_EQ(Window->List1->horizontalHeader()->visualIndex(StateColumn - 1), 3);
    EXPECT_EQ(StateOf("a.dxf"), "");
    ClickRow("a.dxf");
    ClickRow("c.dxf", Qt::ControlModifier);
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_TRUE(StateOf("a.dxf").starts_with("\xE2\x9C\x93 written ")) << StateOf("a.dxf");
    EXPECT_EQ(StateOf("b.dxf"), "");
    EXPECT_EQ(StateOf("c.dxf"), "\xE2\x9C\x97 failed: Part BORDER or BORDER Layer NOT Found!!!");
}

TEST_F(MainWindowViewsTest, TheStateTakesTheEmptyBandOfAWideWindowAndMovesNothingInANarrowOne)
{
    PutDrawing("a.dxf");
    Open({1900, 900});
    const int list = Window->List1->width(), report = Window->List2->width();
    Window->StateShown->setChecked(true);
    QApplication::processEvents();
    EXPECT_EQ(Window->List1->width(), list + Window->List1->WidthOfStates());
    EXPECT_EQ(Window->List2->width(), report);
    Window->resize(1024, 735);
    QApplication::processEvents();
    const int narrow = Window->List1->width();
    Window->StateShown->setChecked(false);
    QApplication::processEvents();
    EXPECT_EQ(Window->List1->width(), narrow);
}

TEST_F(MainWindowViewsTest, CtrlNSelectsNewAndChanged)
{
    for (const char* const name : {"a.dxf", "b.dxf", "c.dxf"})
        PutDrawing(name);
    Open();
    ClickRow("a.dxf");
    ClickRow("b.dxf", Qt::ControlModifier);
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    PutDrawing("b.dxf", test::Circle("VBORE_Z12F3000", 200, 50, 4));
    RefreshFileList();
    ClickRow("a.dxf");
    PressKey(Qt::Key_N);
    Names selected;
    for (const QModelIndex& row : Window->List1->selectionModel()->selectedRows())
        selected.push_back(Text(row.row(), 3));
    std::ranges::sort(selected);
    EXPECT_EQ(selected, (Names{"b.dxf", "c.dxf"}));
}

TEST_F(MainWindowViewsTest, CtrlFFiltersAndEscapeListsAllAgain)
{
    for (const char* const name : {"door left.dxf", "door right.dxf", "side.dxf"})
        PutDrawing(name);
    Open();
    PressKey(Qt::Key_F);
    EXPECT_TRUE(Window->Folder->Filter->hasFocus());
    QTest::keyClicks(Window->Folder->Filter, QStringLiteral("OO le"));
    EXPECT_EQ(Listed(), (Names{"door left.dxf"}));
    QTest::keyClick(Window->Folder->Filter, Qt::Key_Escape);
    EXPECT_EQ(Listed().size(), 3U);
    EXPECT_TRUE(Window->Folder->Filter->isHidden());
    EXPECT_TRUE(Window->List1->hasFocus());
}

TEST_F(MainWindowViewsTest, WhatAFilterHidesIsNotConvertedThoughItWasSelected)
{
    PutDrawing("door.dxf");
    PutDrawing("side.dxf");
    Open();
    SelectAll();
    TypeFilter("side");
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_FALSE(HasProgram("D", "OOR"));
    EXPECT_TRUE(HasProgram("S", "IDE"));
    Window->FilterShown->setChecked(false); // and it stays so when it comes back
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_FALSE(HasProgram("D", "OOR"));
}

TEST_F(MainWindowViewsTest, SelectingAllOfAFilterSelectsNoOthers)
{
    for (const char* const name : {"door.dxf", "side.dxf", "top.dxf"})
        PutDrawing(name);
    Open();
    TypeFilter("o"); // door, top
    SelectAll();
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_TRUE(HasProgram("D", "OOR"));
    EXPECT_FALSE(HasProgram("S", "IDE"));
    EXPECT_TRUE(HasProgram("T", "OP"));
}

TEST_F(MainWindowViewsTest, ADrawingThatComesIsListedWhenTheFilterHasIt)
{
    PutDrawing("door.dxf");
    Open();
    TypeFilter("oo");
    PutDrawing("side.dxf");
    PutDrawing("wood.dxf");
    RefreshFileList();
    EXPECT_EQ(Listed(), (Names{"door.dxf", "wood.dxf"}));
}

TEST_F(MainWindowViewsTest, SpaceGoesOverHiddenRows)
{
    for (const char* const name : {"a1.dxf", "b.dxf", "a2.dxf"})
        PutDrawing(name);
    Open();
    TypeFilter("a");
    ClickRow("a1.dxf");
    QTest::keyClick(Window->List1, Qt::Key_Space);
    EXPECT_EQ(Text(Window->List1->currentIndex().row(), 3), "a2.dxf");
}

TEST_F(MainWindowViewsTest, FiftyThousandDrawingsAreFilteredWhileTheyAreTyped)
{
    Open();
    FileList.Rows.resize(50000);
    for (std::size_t i = 0; i < FileList.Rows.size(); ++i)
        FileList.Rows[i].Cells[1] = FileList.Rows[i].Cells[2] = "part" + std::to_string(i) + ".dxf";
    Window->List1->ShowRows();
    TypeFilter("4999");
    EXPECT_EQ(Listed().size(), 15U); // 4999, x4999 and 4999x
    TypeFilter("9");
    EXPECT_EQ(Listed(), (Names{"part49999.dxf"}));
}

// Rows come and go below the view while a filter is typed.
TEST_F(MainWindowViewsTest, AFilterIsTypedWhileTheFolderIsListed)
{
    for (int i = 0; i < 300; ++i)
        std::ofstream(Drawings / ("part" + std::to_string(i) + ".dxf")) << "x";
    Open();
    Window->FilterShown->setChecked(true);
    Clock.Pause = nullptr;
    int typed = 0;
    static std::function<void()> type;
    const QString words = QStringLiteral("part29");
    type = [this, &typed, &words] {
        if (typed < words.size())
            QTest::keyClick(Window->Folder->Filter, words[typed++].toLatin1());
    };
    void (*const pump)() = Events.Pump;
    for (int round = 0; round < 6; ++round) {
        std::filesystem::remove(Drawings / ("part" + std::to_string(round) + ".dxf"));
        static void (*before)();
        before = pump;
        Events.Pump = [] {
            before();
            type();
        };
        RefreshFileList();
        Events.Pump = pump;
    }
    EXPECT_EQ(typed, words.size());
    EXPECT_EQ(Window->Folder->Filter->text(), words);
    RefreshFileList();
    EXPECT_EQ(Listed().size(), 11U); // part29 and part290 to part299
}

TEST_F(MainWindowViewsTest, RecentFoldersChangeTheSourcePath)
{
    PutDrawing("door.dxf");
    const std::filesystem::path other = Place.Folder / "other";
    std::filesystem::create_directories(other);
    Open();
    SourcePath(0) = FromHostPath(other.string() + "/");
    std::filesystem::copy_file(Drawings / "door.dxf", other / "top.dxf");
    RefreshFileList();
    Window->FoldersShown->setChecked(true);
    auto* const menu = Find<QMenu>("RecentMenu");
    Q_EMIT menu->aboutToShow();
    ASSERT_EQ(menu->actions().size(), 2);
    EXPECT_EQ(menu->actions()[1]->text().toStdString(), Drawings.string() + "/");
    menu->actions()[1]->trigger();
    RefreshFileList();
    EXPECT_EQ(Listed(), (Names{"door.dxf"}));
    EXPECT_NE(Ini().find("SourcePath90=" + FromHostPath(Drawings.string())), std::string::npos) << Ini();
}

TEST_F(MainWindowViewsTest, NamesHaveATipWithTheWholeName)
{
    PutDrawing("a rather long name of a drawing that no column has room for.dxf");
    Open();
    EXPECT_EQ(Window->List1->Model.index(0, 2).data(Qt::ToolTipRole).toString().toStdString(),
              "a rather long name of a drawing that no column has room for.dxf");
}

TEST_F(MainWindowViewsTest, TheNamesTakeTheRoomThatIsLeft)
{
    PutDrawing("door.dxf");
    Open();
    EXPECT_EQ(Window->List1->horizontalHeader()->length(), Window->List1->viewport()->width());
}

TEST_F(MainWindowViewsTest, TheTitleSaysHowFarAListIs)
{
    PutDrawing("a.dxf");
    PutDrawing("b.dxf");
    Open();
    SelectAll();
    QStringList titles;
    QObject::connect(Window.get(), &QWidget::windowTitleChanged, Window.get(),
                     [&titles](const QString& title) { titles += title; });
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_EQ(titles.join(QLatin1Char('|')).toStdString(),
              "Korvanti - 0 of 2|Korvanti - 1 of 2|Korvanti - 2 of 2|Korvanti");
    EXPECT_EQ(ReportLines().back(), "2 written, 0 failed, 0 not begun");
}

// Who started a list may have left; the box says the same to whoever comes back.
TEST_F(MainWindowViewsTest, AListGoesOnWhileItsBoxesWait)
{
    Person.Tell = TellInBox; // the real one
    std::filesystem::remove(Programs / "INDICE.PRG");
    PutDrawing("a.dxf");
    PutDrawing("b.dxf");
    Open();
    SelectAll();
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(ReportLines().back(), "0 written, 2 failed, 0 not begun");
    EXPECT_TRUE(Reported("INDICE.PRG"));
}

TEST_F(MainWindowViewsTest, TheBoxOfASingleDrawingIsAlsoInTheReport)
{
    std::filesystem::remove(Programs / "INDICE.PRG");
    PutDrawing("a.dxf");
    Open();
    ClickRow("a.dxf");
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    ASSERT_EQ(AtWindow.Told.size(), 1U);
    EXPECT_TRUE(Reported(AtWindow.Told[0].substr(0, 20))) << AtWindow.Told[0];
}

TEST_F(MainWindowViewsTest, DeletedDrawingsGoToTheTrashAndComeBack)
{
    std::filesystem::create_directories(Place.Folder / "data");
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString((Place.Folder / "data").string()));
    PutDrawing("a.dxf");
    PutDrawing("b.dxf");
    Open();
    AtWindow.Yes = true;
    ClickRow("a.dxf");
    QTest::keyClick(Window->List1, Qt::Key_Delete);
    EXPECT_FALSE(std::filesystem::exists(Drawings / "a.dxf"));
    EXPECT_TRUE(std::filesystem::exists(Drawings / "b.dxf"));
    Window->List1->setFocus();
    QTest::keyClick(Window->List1, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(std::filesystem::exists(Drawings / "a.dxf"));
    qunsetenv("XDG_DATA_HOME");
}

TEST_F(MainWindowViewsTest, F7ExplainsTheDrawingOfTheListIndex)
{
    PutDrawing("a.dxf");
    Open();
    Window->Explanation->Looker.Program = QStringLiteral(KORVANTI_WINDOW_PROGRAM);
    ClickRow("a.dxf");
    QTest::keyClick(Window->List1, Qt::Key_F7);
    EXPECT_TRUE(Window->Explanation->isVisible());
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return Window->Explanation->toPlainText().contains(QStringLiteral("Layers")); }, 20000));
    const std::string text = Window->Explanation->toPlainText().toStdString();
    EXPECT_NE(text.find("VBORE_Z12F3000"), std::string::npos) << text;
    EXPECT_NE(text.find("Panel 600 x 400 x 18 mm"), std::string::npos) << text;
    EXPECT_FALSE(HasProgram("A", ""));
    QTest::keyClick(Window->Explanation, Qt::Key_Escape);
    EXPECT_FALSE(Window->Explanation->isVisible());
}

TEST_F(MainWindowViewsTest, ADrawingWithoutAPanelIsExplainedToo)
{
    std::ofstream(Drawings / "a.dxf") << test::Drawing(test::Circle("VBORE_Z12F3000", 100, 50, 4));
    Open();
    Window->Explanation->Looker.Program = QStringLiteral(KORVANTI_WINDOW_PROGRAM);
    ClickRow("a.dxf");
    QTest::keyClick(Window->List1, Qt::Key_F7);
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return Window->Explanation->toPlainText().contains(QStringLiteral("NOT Found!!!")); },
        20000))
        << Window->Explanation->toPlainText().toStdString();
}

TEST_F(MainWindowViewsTest, AnEmptyListSaysWhatToDo)
{
    std::filesystem::remove_all(Programs);
    Open();
    EXPECT_TRUE(Window->FirstSteps->isVisible());
    EXPECT_TRUE(Find<QLabel>("FirstStepsWords")
                    ->text()
                    .contains(QStringLiteral("There is no DXF drawing in this folder.")));
    EXPECT_TRUE(Find<QPushButton>("FirstDrawings")->isVisible());
    EXPECT_TRUE(Find<QPushButton>("FirstControl")->isVisible());
    EXPECT_FALSE(Find<QPushButton>("FirstIndex")->isVisible());
    static QString chosen;
    std::filesystem::create_directories(Place.Folder / "control");
    chosen = QString::fromStdString((Place.Folder / "control").string());
    Person.ChooseFolder = [](QWidget*, const QString&, const QString&, const QString&) { return chosen; };
    QTest::mouseClick(Find<QPushButton>("FirstControl"), Qt::LeftButton);
    EXPECT_FALSE(Find<QPushButton>("FirstControl")->isVisible());
    EXPECT_TRUE(Find<QPushButton>("FirstIndex")->isVisible());
    QTest::mouseClick(Find<QPushButton>("FirstIndex"), Qt::LeftButton);
    EXPECT_TRUE(std::filesystem::exists(Place.Folder / "control" / "INDICE.PRG"));
    EXPECT_FALSE(Find<QPushButton>("FirstIndex")->isVisible());
    ASSERT_TRUE(Find<QPushButton>("FirstExamples")->isVisible());
    QTest::mouseClick(Find<QPushButton>("FirstExamples"), Qt::LeftButton);
    EXPECT_FALSE(Window->FirstSteps->isVisible());
    ClickRow("door.dxf");
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_TRUE(std::filesystem::exists(Place.Folder / "control" / "SRG" / "D" / "OOR"))
        << ReportLines().back();
}

TEST_F(MainWindowViewsTest, AFilterThatLeavesNothingSaysSo)
{
    PutDrawing("a.dxf");
    Open();
    EXPECT_FALSE(Window->FirstSteps->isVisible());
    TypeFilter("q");
    EXPECT_TRUE(Window->FirstSteps->isVisible());
    EXPECT_EQ(Find<QLabel>("FirstStepsWords")->text().toStdString(), "No name holds these words.");
    EXPECT_FALSE(Find<QPushButton>("FirstDrawings")->isVisible());
    Window->FilterShown->setChecked(false);
    EXPECT_FALSE(Window->FirstSteps->isVisible());
}

TEST_F(MainWindowViewsTest, F1OpensTheShippedGuideWhereTheSettingsNameNone)
{
    Open();
    static std::vector<std::string> opened;
    opened.clear();
    ShellWindow.OpenGuide = [](const std::string& path) {
        opened.push_back(path);
        return true;
    };
    Find<QAction>("MnuOnLineManual")->trigger();
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_TRUE(std::filesystem::exists(ToHostPath(opened[0]))) << opened[0];
    EXPECT_TRUE(AtWindow.Told.empty());
}

} // namespace
} // namespace kv
