// The main window worked with mouse and keys on real drawings: what is clicked happens on the disk and
// in the report.
#include "window/window_scene.h"

#include <chrono>

#include <QClipboard>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QtGui/QDropEvent>

namespace kv {
namespace {

using MainWindowTest = WindowTest;
using Steady = std::chrono::steady_clock;

// Bores in rows, enough that the reading alone lasts some seconds.
std::string ManyBores(int count)
{
    std::string bores;
    for (int i = 0; i < count; ++i)
        bores += test::Circle("VBORE_Z12F3000", 10 + i % 500, 10 + i / 500 % 300, 4);
    return bores;
}

TEST_F(MainWindowTest, SelectedRowsAreConvertedByTheButton)
{
    PutDrawing("door.dxf");
    PutDrawing("side.dxf");
    PutDrawing("top.dxf");
    Open();
    ClickRow("door.dxf");
    ClickRow("top.dxf", Qt::ControlModifier);
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_TRUE(HasProgram("D", "OOR"));
    EXPECT_TRUE(HasProgram("T", "OP"));
    EXPECT_FALSE(HasProgram("S", "IDE"));
    EXPECT_FALSE(AnyRowSelected());
    EXPECT_FALSE(Window->List1->selectionModel()->hasSelection());
    EXPECT_TRUE(Window->List1->hasFocus());
    for (const QProgressBar* const bar : Window->Status.Bars)
        EXPECT_EQ(bar->value(), 0);
}

TEST_F(MainWindowTest, NamesOfAnyScriptAreShownConvertedAndDeleted)
{
    Drawings = Place.Folder / u8"\u0447\u0435\u0440\u0442\u0435\u0436\u0438";
    std::filesystem::create_directories(Drawings);
    PutDrawing("door.dxf");
    std::filesystem::copy_file(Drawings / "door.dxf", Drawings / u8"\u0434\u0432\u0435\u0440\u044C.dxf");
    std::filesystem::rename(Drawings / "door.dxf", Drawings / u8"\u6249.dxf");
    Open();
    Config.SourcePath90 = FromHostPath(Drawings.string() + "/");
    RefreshFileList();
    QApplication::processEvents();
    const FileListModel& model = Window->List1->Model;
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_TRUE(
        Window->LabDXFPath->text().endsWith(QStringLiteral("\u0447\u0435\u0440\u0442\u0435\u0436\u0438/")))
        << Window->LabDXFPath->text().toStdString();
    EXPECT_EQ(model.index(0, 2).data().toString(), QStringLiteral("\u0434\u0432\u0435\u0440\u044C.dxf"));
    EXPECT_EQ(model.index(1, 2).data().toString(), QStringLiteral("\u6249.dxf"));
    QTest::mouseClick(Window->List1->viewport(), Qt::LeftButton, {}, PointOf(0));
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_TRUE(HasProgram("D", "VER"));
    QApplication::processEvents();
    QStringList report;
    for (const ShownRow& row : Window->List2->Model.Rows)
        report.push_back(row.Text);
    EXPECT_TRUE(report.contains(
        QStringLiteral("\u0434\u0432\u0435\u0440\u044C is called dver in programs and lists")))
        << report.join(QLatin1Char('\n')).toStdString();

    AtWindow.Yes = true;
    QTest::mouseClick(Window->List1->viewport(), Qt::LeftButton, {}, PointOf(1));
    QTest::keyClick(Window->List1, Qt::Key_Delete);
    EXPECT_FALSE(std::filesystem::exists(Drawings / u8"\u6249.dxf"));
    EXPECT_TRUE(std::filesystem::exists(Drawings / u8"\u0434\u0432\u0435\u0440\u044C.dxf"));
}

TEST_F(MainWindowTest, TheReportHasItsColoursOnALightScreen)
{
    PutDrawing("door.dxf");
    Open();
    ClickRow("door.dxf");
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    ASSERT_TRUE(Reported("---***---"));
    const ShownRow& last = Window->List2->Model.Rows.back();
    EXPECT_EQ(
        last.Text,
        QStringLiteral("---------------------------------------***------------------------------------"));
    EXPECT_EQ(last.Colour, QColor(255, 0, 100));
    EXPECT_TRUE(last.Centred);
    const QModelIndex index = Window->List2->Model.index(Window->List2->Model.rowCount() - 1);
    EXPECT_EQ(index.data(Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 100));
}

TEST_F(MainWindowTest, TheBannerStandsInTheReportAtFirst)
{
    Open();
    const std::vector<std::string> lines = ReportLines();
    ASSERT_GE(lines.size(), 2U);
    EXPECT_EQ(lines[0], "");
    EXPECT_EQ(lines[1], "Korvanti for Windows  Version " + std::string(ProductVersion));
    EXPECT_EQ(Window->List2->Model.Rows[1].Colour, QColor(155, 0, 0));
}

TEST_F(MainWindowTest, MetersFollowARun)
{
    PutDrawing("door.dxf");
    Open();
    int parsed = -1;
    const test::AtStage look("border", [&] { parsed = Window->Status.Bars[0]->value(); });
    ClickRow("door.dxf");
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_EQ(parsed, 100);
    EXPECT_EQ(Window->Status.Bars[0]->value(), 0);
}

TEST_F(MainWindowTest, TheWindowIsLockedWhileJobsRun)
{
    PutDrawing("door.dxf");
    Open();
    EXPECT_TRUE(Window->BtnAbort->isHidden());
    bool locked = false;
    const test::AtStage look("border", [&] {
        locked = !Window->Start->isEnabled() && !Window->Defaults.Frame2->isEnabled() &&
                 Window->BtnAbort->isVisible() && !Window->LoadDr.isActive() && !Window->Timer1.isActive();
    });
    ClickRow("door.dxf");
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_TRUE(locked);
    EXPECT_TRUE(Window->Start->isEnabled());
    EXPECT_TRUE(Window->Defaults.Frame2->isEnabled());
    EXPECT_TRUE(Window->BtnAbort->isHidden());
    EXPECT_TRUE(Window->LoadDr.isActive());
    EXPECT_TRUE(Window->Timer1.isActive());
}

TEST_F(MainWindowTest, AbortAnswersWithinASecond)
{
    PutDrawing("large.dxf", ManyBores(400000));
    PutDrawing("second.dxf");
    Open();
    ClickRow("large.dxf");
    ClickRow("second.dxf", Qt::ControlModifier);
    Steady::time_point clicked;
    QTimer::singleShot(10, Window.get(), [&] {
        clicked = Steady::now();
        QTest::mouseClick(Window->BtnAbort, Qt::LeftButton);
    });
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    const auto ended = Steady::now();
    ASSERT_NE(clicked, Steady::time_point()) << "the run ended before the click";
    EXPECT_LT(ended - clicked, std::chrono::seconds(1));
    EXPECT_FALSE(HasProgram("L", "ARGE"));
    EXPECT_FALSE(HasProgram("S", "ECOND")) << "an abort ends the list";
    EXPECT_TRUE(Window->Start->isEnabled());
}

TEST_F(MainWindowTest, EscapeAborts)
{
    PutDrawing("large.dxf", ManyBores(400000));
    Open();
    ClickRow("large.dxf");
    QTimer::singleShot(10, Window.get(), [&] { QTest::keyClick(Window.get(), Qt::Key_Escape); });
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_FALSE(HasProgram("L", "ARGE"));
    EXPECT_EQ(kv::Run.RunState, 1);
}

TEST_F(MainWindowTest, EscapeWithoutARunDoesNothing)
{
    Open();
    QTest::keyClick(Window.get(), Qt::Key_Escape);
    EXPECT_NE(kv::Run.RunState, 1);
}

TEST_F(MainWindowTest, ClosingDuringARunAbortsAndClosesBehindIt)
{
    PutDrawing("large.dxf", ManyBores(400000));
    Open();
    bool ended = false, openWhileRunning = false;
    Window->Ended = [&] { ended = true; };
    ClickRow("large.dxf");
    QTimer::singleShot(10, Window.get(), [&] {
        Window->close();
        openWhileRunning = Window->isVisible() && !ended;
    });
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_TRUE(openWhileRunning);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ended; }, 2000));
    EXPECT_FALSE(Window->isVisible());
    EXPECT_FALSE(HasProgram("L", "ARGE"));
}

TEST_F(MainWindowTest, DeleteAsksAndNoKeepsTheFiles)
{
    PutDrawing("door.dxf");
    Open();
    ClickRow("door.dxf");
    AtWindow.Yes = false;
    QTest::keyClick(Window->List1, Qt::Key_Delete);
    ASSERT_EQ(AtWindow.Questions, std::vector<std::string>{"Do you wish to Delete these files?"});
    EXPECT_TRUE(std::filesystem::exists(Drawings / "door.dxf"));
    EXPECT_FALSE(Window->List1->selectionModel()->hasSelection());
}

TEST_F(MainWindowTest, DeleteAsksAndYesDeletesTheSelectedFiles)
{
    PutDrawing("door.dxf");
    PutDrawing("side.dxf");
    Open();
    ClickRow("door.dxf");
    AtWindow.Yes = true;
    QTest::keyClick(Window->List1, Qt::Key_Delete);
    EXPECT_FALSE(std::filesystem::exists(Drawings / "door.dxf"));
    EXPECT_TRUE(std::filesystem::exists(Drawings / "side.dxf"));
    RefreshFileList();
    EXPECT_EQ(Window->List1->Model.rowCount(), 1);
}

TEST_F(MainWindowTest, DeleteWithoutASelectionSaysSo)
{
    PutDrawing("door.dxf");
    Open();
    QTest::keyClick(Window->List1, Qt::Key_Delete);
    EXPECT_EQ(AtWindow.Told, std::vector<std::string>{"No files selected to Delete."});
    EXPECT_TRUE(AtWindow.Questions.empty());
}

// Works the popup while it is open.
void InPopup(QMenu* menu, Qt::Key key)
{
    QTimer::singleShot(0, menu, [menu, key] { QTest::keyClick(menu, key); });
}

TEST_F(MainWindowTest, ThePopupProcessesAndDeletes)
{
    PutDrawing("door.dxf");
    Open();
    ClickRow("door.dxf");
    const QPoint place = PointOf(0);
    InPopup(Window->List1->Pop, Qt::Key_P);
    QContextMenuEvent right(QContextMenuEvent::Mouse, place, Window->List1->viewport()->mapToGlobal(place));
    QApplication::sendEvent(Window->List1->viewport(), &right);
    QApplication::processEvents();
    EXPECT_TRUE(HasProgram("D", "OOR"));

    ClickRow("door.dxf");
    AtWindow.Yes = true;
    InPopup(Window->List1->Pop, Qt::Key_D);
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, place,
                            Window->List1->viewport()->mapToGlobal(place));
    QApplication::sendEvent(Window->List1->viewport(), &byKey);
    EXPECT_FALSE(std::filesystem::exists(Drawings / "door.dxf"));
}

TEST_F(MainWindowTest, ThePopupLeftWithoutAChoiceDoesNothing)
{
    PutDrawing("door.dxf");
    Open();
    ClickRow("door.dxf");
    InPopup(Window->List1->Pop, Qt::Key_Escape);
    QContextMenuEvent right(QContextMenuEvent::Mouse, PointOf(0), Window->mapToGlobal(QPoint(20, 20)));
    QApplication::sendEvent(Window->List1->viewport(), &right);
    QApplication::processEvents();
    EXPECT_TRUE(AtWindow.Questions.empty());
    EXPECT_FALSE(HasProgram("D", "OOR"));
    EXPECT_TRUE(AnyRowSelected());
}

TEST_F(MainWindowTest, ADoubleClickProcesses)
{
    PutDrawing("door.dxf");
    Open();
    ClickRow("door.dxf");
    QTest::mouseDClick(Window->List1->viewport(), Qt::LeftButton, {}, PointOf(0));
    QApplication::processEvents();
    EXPECT_TRUE(HasProgram("D", "OOR"));
}

TEST_F(MainWindowTest, EnterInTheListProcesses)
{
    PutDrawing("door.dxf");
    Open();
    ClickRow("door.dxf");
    QTest::keyClick(Window->List1, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_TRUE(HasProgram("D", "OOR"));
}

TEST_F(MainWindowTest, TheStartButtonWorksByItsAltKey)
{
    PutDrawing("door.dxf");
    Open();
    ClickRow("door.dxf");
    QTest::keyClick(Window.get(), Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return HasProgram("D", "OOR"); }, 3000));
}

TEST_F(MainWindowTest, SpaceMovesTheListIndexOnAndStaysOnTheLastRow)
{
    PutDrawing("a.dxf");
    PutDrawing("b.dxf");
    Open();
    ClickRow("a.dxf");
    EXPECT_EQ(Window->List1->currentIndex().row(), 0);
    QTest::keyClick(Window->List1, Qt::Key_Space);
    EXPECT_EQ(Window->List1->currentIndex().row(), 1);
    QTest::keyClick(Window->List1, Qt::Key_Space);
    EXPECT_EQ(Window->List1->currentIndex().row(), 1);
}

TEST_F(MainWindowTest, DroppedDrawingsAreConvertedFromWhereTheyStand)
{
    Open();
    PutDrawing("door.dxf");
    std::filesystem::create_directories(Place.Folder / "elsewhere");
    std::filesystem::rename(Drawings / "door.dxf", Place.Folder / "elsewhere" / "door.DXF");
    Place.Write("letter.txt", "no drawing");
    QMimeData mime;
    mime.setUrls(
        {QUrl::fromLocalFile(QString::fromStdString((Place.Folder / "letter.txt").string())),
         QUrl::fromLocalFile(QString::fromStdString((Place.Folder / "elsewhere" / "door.DXF").string()))});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Window->List1->viewport(), &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Window->List1->viewport(), &drop);
    QApplication::processEvents();
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_TRUE(HasProgram("D", "OOR"));
    EXPECT_FALSE(Reported("letter"));
}

TEST_F(MainWindowTest, OtherFilesThanDrawingsAreNotTaken)
{
    Open();
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(QStringLiteral("/letter.txt"))});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Window->List1->viewport(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(MainWindowTest, AHeaderClickSortsAndASecondOneTurnsTheOrder)
{
    PutDrawing("a.dxf", "");
    PutDrawing("b.dxf", ManyBores(20));
    PutDrawing("c.dxf", ManyBores(5));
    Open();
    QHeaderView* const header = Window->List1->horizontalHeader();
    const QPoint size(header->sectionViewportPosition(3) + header->sectionSize(3) / 2, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, size);
    EXPECT_EQ(Text(0, 3) + Text(1, 3) + Text(2, 3), "a.dxfc.dxfb.dxf");
    EXPECT_EQ(header->sortIndicatorSection(), 3);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, size);
    EXPECT_EQ(Text(0, 3) + Text(1, 3) + Text(2, 3), "b.dxfc.dxfa.dxf");
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::DescendingOrder);
}

// Drags the right edge of column "File" to a width in characters.
void DragFileColumn(FileListView& list, int characters)
{
    QHeaderView* const header = list.horizontalHeader();
    const int start = header->sectionViewportPosition(2) + header->sectionSize(2) - 1;
    const int end = header->sectionViewportPosition(2) +
                    characters * list.fontMetrics().horizontalAdvance(QLatin1Char('0')) - 1;
    const int high = header->height() / 2;
    QTest::mousePress(header->viewport(), Qt::LeftButton, {}, QPoint(start, high));
    QTest::mouseMove(header->viewport(), QPoint((start + end) / 2, high));
    QTest::mouseMove(header->viewport(), QPoint(end, high));
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, QPoint(end, high));
}

TEST_F(MainWindowTest, AFileColumnOf11CharactersOrLessShowsShortNames)
{
    PutDrawing("kitchen door.dxf");
    Open();
    EXPECT_EQ(Text(0, 3), "kitchen door.dxf");
    DragFileColumn(*Window->List1, 11);
    EXPECT_EQ(Text(0, 3), Text(0, 1));
    EXPECT_NE(Text(0, 1), Text(0, 2));
    EXPECT_NE(Ini().find("ListColumnWidth3=11\r\n"), std::string::npos) << Ini();
    DragFileColumn(*Window->List1, 12);
    EXPECT_EQ(Text(0, 3), "kitchen door.dxf");
    EXPECT_NE(Ini().find("ListColumnWidth3=12\r\n"), std::string::npos) << Ini();
}

TEST_F(MainWindowTest, TheSwitchOfUnitsShowsItsFigures)
{
    Open();
    auto* const unit = Find<QPushButton>("MetIn");
    auto* const length = Find<QLineEdit>("LLen");
    EXPECT_EQ(unit->text(), QStringLiteral("Metri&c"));
    EXPECT_EQ(length->text(), QStringLiteral("25.00"));
    QTest::mouseClick(unit, Qt::LeftButton);
    EXPECT_EQ(unit->text(), QStringLiteral("In&ch"));
    EXPECT_EQ(length->text(), QStringLiteral(" .98"));
    QTest::mouseClick(unit, Qt::LeftButton);
    EXPECT_EQ(length->text(), QStringLiteral(" 24.89"));
}

TEST_F(MainWindowTest, DfHidesAndShowsTheDefaultSettings)
{
    Open();
    EXPECT_TRUE(Window->Defaults.Frame2->isVisible());
    const int before = Window->List1->height();
    QTest::mouseClick(Window->CmdDF, Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_FALSE(Window->Defaults.Frame2->isVisible());
    EXPECT_EQ(Config.FormState, -1);
    EXPECT_GT(Window->List1->height(), before);
    EXPECT_TRUE(Window->List1->hasFocus());
    QTest::mouseClick(Window->CmdDF, Qt::LeftButton);
    EXPECT_TRUE(Window->Defaults.Frame2->isVisible());
    EXPECT_EQ(Config.FormState, 0);
}

TEST_F(MainWindowTest, GluingAndDowelInsertionClearEachOther)
{
    Open();
    auto* const glue = Find<QCheckBox>("HBDGlue");
    auto* const dowel = Find<QCheckBox>("HBDDowel");
    QTest::mouseClick(glue, Qt::LeftButton, {}, QPoint(8, glue->height() / 2));
    EXPECT_TRUE(glue->isChecked());
    QTest::mouseClick(dowel, Qt::LeftButton, {}, QPoint(8, dowel->height() / 2));
    EXPECT_FALSE(glue->isChecked());
    EXPECT_TRUE(dowel->isChecked());
    EXPECT_EQ(Config.HBDGlue, 0);
    EXPECT_EQ(Config.HBDDowel, 1);
}

TEST_F(MainWindowTest, EveryBoxAndFieldIsItsKey)
{
    Open();
    const std::vector<std::pair<const char*, Int*>> boxes = {
        {"MakeHBD", &Config.MakeHBD},   {"FlgLL", &Config.LeadS},      {"FlgRI", &Config.LeadRampIn},
        {"FlgRO", &Config.LeadRampOut}, {"FlgCC", &Config.CornerComp}, {"FlgRBR", &Config.RemoveBorderRoute},
        {"Bin", &Config.MakeBinaries}};
    for (const auto& [name, field] : boxes) {
        Find<QCheckBox>(name)->click();
        EXPECT_EQ(*field, 1) << name;
    }
    const std::vector<std::pair<const char*, std::string*>> texts = {{"LLen", &Config.LeadLength},
                                                                     {"RHt", &Config.LeadRampHeight},
                                                                     {"OSX", &Config.OffsetX},
                                                                     {"OSY", &Config.OffsetY},
                                                                     {"OSZ", &Config.OffsetZ}};
    for (const auto& [name, field] : texts) {
        auto* const text = Find<QLineEdit>(name);
        text->selectAll();
        QTest::keyClicks(text, QStringLiteral("7.5"));
        EXPECT_EQ(*field, "7.5") << name;
    }
}

TEST_F(MainWindowTest, TheSequenceIsStoredWhenABoxChanges)
{
    Open();
    auto* const first = Find<QComboBox>("Sq(0)");
    EXPECT_EQ(first->currentText(), QStringLiteral("V"));
    first->setFocus();
    QTest::keyClick(first, Qt::Key_R);
    EXPECT_EQ(Config.Sequence, "RHGR");
    EXPECT_NE(Ini().find("Sequence=RHGR\r\n"), std::string::npos);
}

TEST_F(MainWindowTest, TheOptimizerAndAlternationBoxesAreStoredAtOnce)
{
    Open();
    Find<QCheckBox>("Opt")->click();
    Find<QCheckBox>("DRAlt")->click();
    EXPECT_NE(Ini().find("Optimizer=1\r\n"), std::string::npos);
    EXPECT_NE(Ini().find("DRAlternate=1\r\n"), std::string::npos);
}

TEST_F(MainWindowTest, AMouseReleaseOnTheFrameSavesAllSettings)
{
    Open();
    Find<QCheckBox>("FlgLL")->click();
    EXPECT_EQ(Ini().find("LeadS= 1"), std::string::npos);
    QTest::mouseClick(Window->Defaults.Frame2, Qt::LeftButton, {}, QPoint(2, 2));
    EXPECT_NE(Ini().find("LeadS= 1\r\n"), std::string::npos);
}

TEST_F(MainWindowTest, TheEvolutionHasItsOwnFrames)
{
    PutIni("GenesisEV=True\r\nEvOptLR=True\r\n");
    Open();
    EXPECT_TRUE(Find<QGroupBox>("EvOptFr")->isVisible());
    EXPECT_TRUE(Find<QGroupBox>("EvOptSelFr")->isVisible());
    EXPECT_TRUE(Find<QGroupBox>("FrameOpt")->isHidden());
    EXPECT_TRUE(Find<QCheckBox>("DRAlt")->isHidden());
    EXPECT_EQ(Find<QLabel>("LabOpt")->text(), QStringLiteral("Increasing Fret Sorting in X"));
}

TEST_F(MainWindowTest, TheReportIsCopiedWhole)
{
    Open();
    ReportMessage(0, "");
    ReportMessage(3, "one\r two\rthree");
    QApplication::processEvents();
    QTest::keyClick(Window->List2, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("one\ntwo\nthree\n"));
    Window->List2->selectRow(1);
    QTest::keyClick(Window->List2, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("two\n"));
}

TEST_F(MainWindowTest, TheReportIsSavedAsUtf8)
{
    Open();
    ReportMessage(0, "");
    ReportMessage(3, "T\xFCr");
    QApplication::processEvents();
    EXPECT_TRUE(Window->List2->SaveTo(QString::fromStdString((Place.Folder / "report.txt").string())));
    EXPECT_EQ(Place.Read(Place.Folder / "report.txt"), "T\xC3\xBCr\n");
    EXPECT_FALSE(Window->List2->SaveTo(QString::fromStdString((Place.Folder / "none/report.txt").string())));
}

TEST_F(MainWindowTest, ExitSavesThePositionAndAllSettings)
{
    Open();
    bool ended = false;
    Window->Ended = [&] { ended = true; };
    Find<QCheckBox>("FlgLL")->click();
    Window->move(40, 60);
    QApplication::processEvents();
    QTest::mouseClick(Window->EX1, Qt::LeftButton);
    EXPECT_TRUE(ended);
    EXPECT_NE(Ini().find("LeadS= 1\r\n"), std::string::npos);
    const WindowPosition stored = LoadWindowPosition(MainPositionSection, true);
    EXPECT_EQ(stored.Left, 40 * TwipsPerPixel);
    EXPECT_EQ(stored.Top, 60 * TwipsPerPixel);
}

TEST_F(MainWindowTest, AFolderThatIsGoneEmptiesTheListAndItsCaption)
{
    PutDrawing("door.dxf");
    Open();
    EXPECT_EQ(Window->LabDXFPath->text().toStdString(), Drawings.string() + "/");
    std::filesystem::remove_all(Drawings);
    RefreshFileList();
    EXPECT_EQ(Window->List1->Model.rowCount(), 0);
    EXPECT_TRUE(Window->LabDXFPath->text().isEmpty());
}

TEST_F(MainWindowTest, ADrawingSavedAgainLosesTheSelection)
{
    PutDrawing("door.dxf");
    Open();
    ClickRow("door.dxf");
    const auto file = Drawings / "door.dxf";
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) - std::chrono::hours(1));
    EXPECT_TRUE(QTest::qWaitFor([] { return !AnyRowSelected(); }, 2500)) << "the timer refreshes the list";
    EXPECT_FALSE(Window->List1->selectionModel()->hasSelection());
}

std::string StartedLine;

TEST_F(MainWindowTest, TheHelpMenuStartsItsCommandLines)
{
    Open();
    Config.Help = "viewer help.txt";
    Config.OLHelp = "browser manual";
    Processes.Start = [](const ProgramCall& command) {
        StartedLine = CommandText(command);
        return Long{1};
    };
    Window->findChild<QAction*>(QStringLiteral("MnuHelpFile"))->trigger();
    EXPECT_EQ(StartedLine, "viewer help.txt");
    Window->findChild<QAction*>(QStringLiteral("MnuOnLineManual"))->trigger();
    EXPECT_EQ(StartedLine, "browser manual");
    StartedLine.clear();
    QTest::keyClick(Window.get(), Qt::Key_F1);
    EXPECT_EQ(StartedLine, "browser manual");
}

TEST_F(MainWindowTest, ATemporaryDrawingRunsByTheTimer)
{
    PutIni("Winner90=True\r\nAutoStartTemp=True\r\n");
    Open();
    QTest::qWait(1300); // the stale triggers of the start are gone by now
    PutDrawing("Temp.DXF");
    EXPECT_TRUE(QTest::qWaitFor([&] { return HasProgram("T", "EMP"); }, 6000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !std::filesystem::exists(Drawings / "Temp.DXF"); }, 3000));
    EXPECT_TRUE(QTest::qWaitFor([] { return !Shell.RunActive; }, 3000));
    EXPECT_TRUE(Window->isVisible());
}

TEST_F(MainWindowTest, AFailedDrawingOfTheCommandLineStaysToBeReadWhereThereIsAScreen)
{
    for (const bool onScreen : {true, false}) {
        TearDown();
        SetUp();
        Open();
        bool ended = false;
        QStringList rows;
        Window->Ended = [&] { ended = true; };
        Window->DrawingFailed = [&](const QStringList& lines) { rows = lines; };
        Window->OnScreen = onScreen;
        ReportMessage(0, ""); // the counter of the rows outlives the windows of other tests
        Shell.CommandLine = "no such drawing";
        EXPECT_TRUE(QTest::qWaitFor([&] { return Shell.CommandLine.empty() && !Shell.RunActive; }, 5000));
        EXPECT_EQ(QTest::qWaitFor([&] { return ended; }, 700), !onScreen);
        EXPECT_EQ(Window->isVisible(), true);
        ASSERT_EQ(rows.size(), 1);
        EXPECT_TRUE(rows[0].endsWith(QLatin1String("NOT FOUND"))) << rows[0].toStdString();
        EXPECT_TRUE(Reported("NOT FOUND"));
        EXPECT_EQ(Shell.FailedJobs, 1);
        EXPECT_TRUE(Window->Start->isEnabled());
    }
}

TEST_F(MainWindowTest, TheEndByItselfSavesNoSettings)
{
    Open();
    bool ended = false;
    Window->Ended = [&] { ended = true; };
    const std::string before = Ini();
    Config.LeadS = 1;
    Shell.CommandLine = "no such drawing";
    EXPECT_TRUE(QTest::qWaitFor([&] { return ended; }, 5000));
    EXPECT_EQ(Ini(), before);
    EXPECT_EQ(Shell.FailedJobs, 1);
}

} // namespace
} // namespace kv
