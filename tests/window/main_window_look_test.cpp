// What the main window looks like, held against the tables and the screen: each control with its
// words, nothing cut, nothing over another, readable on dark and light, fluid with long lists.
#include "window/window_scene.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>
#include <QScrollArea>

#include "shell/main_window_rules.h"
#include "shell/measure_fields.h"
#include "window/edge_style.h"
#include "window/icon.h"

namespace kv {
namespace {

using MainWindowLookTest = WindowTest;

QString WithoutAlt(QString text)
{
    return text.remove(QLatin1Char('&'));
}

TEST_F(MainWindowLookTest, EveryControlOfTheTableStandsWithItsNameAndVisibility)
{
    Open();
    int controls = 0;
    for (const ControlRow& row : ControlRows()) {
        if (row.Form != "Form1" || row.Kind == ControlKind::Menu || row.Kind == ControlKind::Window)
            continue;
        ++controls;
        auto* const widget = Find<QWidget>(row.Name);
        ASSERT_NE(widget, nullptr) << row.Name;
        // The two kinds of control systems share a place; this installation is no Evolution.
        const bool evolution = row.Name.substr(0, 5) == "EvOpt";
        EXPECT_EQ(widget->isHidden(), !row.ShownByDesign || evolution) << row.Name;
        const std::string_view spoken = row.Accessible.empty() ? row.Caption : row.Accessible;
        if (!spoken.empty()) {
            const QString name = widget->accessibleName(); // of some their value stands behind it
            EXPECT_EQ(name.section(QStringLiteral(": "), 0, 0), Shown(spoken)) << row.Name;
        }
    }
    EXPECT_GT(controls, 50);
}

TEST_F(MainWindowLookTest, EveryCaptionIsThatOfTheTable)
{
    Open();
    for (const ControlRow& row : ControlRows()) {
        if (row.Form != "Form1")
            continue;
        const QString caption = Shown(row.Caption);
        if (row.Kind == ControlKind::Button || row.Kind == ControlKind::Check) {
            EXPECT_EQ(WithoutAlt(Find<QAbstractButton>(row.Name)->text()), caption) << row.Name;
        }
        if (row.Kind == ControlKind::Frame && row.Name != "StatusFrame") { // its titles stand over the meters
            EXPECT_EQ(Find<QGroupBox>(row.Name)->title(), caption) << row.Name;
        }
        if (row.Kind == ControlKind::Menu && row.Name != "Pop" && row.Name != "MnuHelp") {
            auto* const item = Window->findChild<QAction*>(Shown(row.Name));
            ASSERT_NE(item, nullptr) << row.Name;
            EXPECT_EQ(WithoutAlt(item->text()), caption) << row.Name;
        }
    }
    EXPECT_EQ(Window->windowTitle(), QStringLiteral("Korvanti"));
    EXPECT_EQ(WithoutAlt(Find<QMenu>("MnuHelp")->title()), QStringLiteral("Help"));
    EXPECT_EQ(Window->List2->Model.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(),
              QStringLiteral("Process Report"));
}

TEST_F(MainWindowLookTest, DesignedValuesStandBeforeTheFirstLoad)
{
    Config = Settings{};
    Window = std::make_unique<MainWindow>();
    for (const ControlRow& row : ControlRows()) {
        if (row.Form != "Form1")
            continue;
        if (row.Kind == ControlKind::Check) {
            EXPECT_EQ(Find<QCheckBox>(row.Name)->isChecked(), row.Default == "on") << row.Name;
        }
        if (row.Kind == ControlKind::Meter) {
            EXPECT_EQ(Find<QProgressBar>(row.Name)->value(), 0) << row.Name;
        }
    }
    EXPECT_EQ(Find<QLineEdit>("LLen")->text(), QStringLiteral("25.00"));
    EXPECT_EQ(Find<QLineEdit>("RHt")->text(), QStringLiteral("10.00"));
}

TEST_F(MainWindowLookTest, TheBoxesOfTheSequenceListABlankAndFourLetters)
{
    Open();
    for (int i = 0; i < 4; ++i) {
        auto* const box = Find<QComboBox>(Indexed("Sq", i));
        QString items;
        for (int place = 0; place < box->count(); ++place)
            items += box->itemText(place);
        EXPECT_EQ(items, QStringLiteral(" VHGR"));
    }
}

QString OneLine(QString text)
{
    return text.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

TEST_F(MainWindowLookTest, TipsComeAndGo)
{
    Open();
    int tips = 0;
    for (const bool on : {true, false}) {
        InstallCursorTips(on);
        for (const TipRow& row : CursorTips()) {
            if (row.Form != "Form1")
                continue;
            ++tips;
            const std::string unit = UnitOfField("Form1", row.Name);
            const std::string tip = TipText(row) + (unit.empty() ? "" : "\nUnit: " + unit);
            const QString shown = Find<QWidget>(row.Name)->toolTip();
            EXPECT_EQ(OneLine(shown), on ? OneLine(Shown(tip)) : QString()) << row.Name;
            for (const QString& line : shown.split(QLatin1Char('\n')))
                EXPECT_LE(line.size(), TipLetters) << row.Name;
        }
    }
    EXPECT_EQ(tips, 2 * 18);
}

// Smallest size at which the whole text of a control can be read.
QSize TextSize(const QWidget& widget)
{
    if (const auto* const field = qobject_cast<const QLineEdit*>(&widget))
        return {field->fontMetrics().horizontalAdvance(field->text()), field->fontMetrics().height()};
    if (qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
        qobject_cast<const QComboBox*>(&widget) != nullptr)
        return widget.sizeHint();
    if (const auto* const label = qobject_cast<const QLabel*>(&widget))
        return {label->fontMetrics().horizontalAdvance(WithoutAlt(label->text())),
                label->fontMetrics().height()};
    if (const auto* const frame = qobject_cast<const QGroupBox*>(&widget))
        return {frame->fontMetrics().horizontalAdvance(frame->title()), frame->fontMetrics().height()};
    return {};
}

void ExpectNothingCut(const MainWindow& window)
{
    for (const QWidget* const widget : window.findChildren<QWidget*>()) {
        const QSize text = widget->isVisible() ? TextSize(*widget) : QSize();
        const std::string name = widget->objectName().toStdString();
        EXPECT_LE(text.width(), widget->width()) << name;
        EXPECT_LE(text.height(), widget->height()) << name;
        if (!widget->isVisible() || widget->isWindow())
            continue;
        EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry()) ||
                    qobject_cast<const QAbstractScrollArea*>(widget->parentWidget()) != nullptr ||
                    widget->parentWidget()->objectName() == QLatin1String("qt_scrollarea_viewport"))
            << name;
    }
}

void ExpectNothingOverAnother(const MainWindow& window)
{
    int compared = 0;
    for (const QWidget* const parent : window.findChildren<QWidget*>()) {
        if (!parent->isVisible() || qobject_cast<const QAbstractScrollArea*>(parent) != nullptr)
            continue;
        const QList<QWidget*> children =
            parent->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        for (const QWidget* const a : children) {
            for (const QWidget* const b : children) {
                if (a >= b || !a->isVisible() || !b->isVisible() || a->isWindow() || b->isWindow())
                    continue;
                ++compared;
                EXPECT_FALSE(a->geometry().intersects(b->geometry()))
                    << a->objectName().toStdString() << " and " << b->objectName().toStdString();
            }
        }
    }
    EXPECT_GT(compared, 30);
}

TEST_F(MainWindowLookTest, TheWindowFitsASmallScreenWithTheSettingsOpen)
{
    constexpr int titleBar = 32; // pixels
    for (const char* const system : {"Winner90=True\r\n", "GenesisEV=True\r\nEvOptLR=True\r\n"}) {
        PutIni(system);
        Open();
        ASSERT_TRUE(Window->Defaults.Frame2->isVisible());
        EXPECT_LE(Window->LeastSize().width(), 1024) << system;
        EXPECT_LE(Window->LeastSize().height(), 768 - titleBar) << system;
        EXPECT_EQ(Window->size(), QSize(1024, 735)) << system;
        ExpectNothingCut(*Window);
        ExpectNothingOverAnother(*Window);
        Window.reset();
        Config = Settings{};
    }
}

TEST_F(MainWindowLookTest, TheFirstSizeLeavesNoEmptyBandAndFitsTheScreen)
{
    Open();
    Window->CentreOnScreen();
    QApplication::processEvents();
    const QRect report(Window->List2->mapTo(Window.get(), QPoint()), Window->List2->size());
    EXPECT_LT(Window->width() - report.right(), 30) << "pixels right of the report";
    EXPECT_LE(Window->width(), 1024);
    EXPECT_LE(Window->height(), 768 - 32);
}

TEST_F(MainWindowLookTest, NothingIsCutInLargerFonts)
{
    for (const double factor : {1.5, 2.0}) {
        QFont font = FontBefore;
        font.setPointSizeF(font.pointSizeF() * factor);
        QApplication::setFont(font);
        Open({1024, 735}); // grows to what the words need
        Shell.BtnAbortShown = true;
        ShellChanged();
        QApplication::processEvents();
        ExpectNothingCut(*Window);
        ExpectNothingOverAnother(*Window);
        Window.reset();
        Shell = {};
    }
}

TEST_F(MainWindowLookTest, NoColumnOfTheListIsCutAtItsDesignedWidth)
{
    PutDrawing("door.dxf");
    Open();
    const FileListView& list = *Window->List1;
    EXPECT_TRUE(list.isColumnHidden(0));
    EXPECT_TRUE(list.isColumnHidden(1));
    for (int column = 2; column < FileColumns; ++column)
        EXPECT_LE(list.sizeHintForIndex(list.Model.index(0, column)).width(), list.columnWidth(column))
            << column;
    EXPECT_LE(list.horizontalHeader()->length(), list.viewport()->width());
}

TEST_F(MainWindowLookTest, AStoredWidthOfAColumnIsTaken)
{
    PutIni("Winner90=True\r\nListColumnWidth3=25\r\n");
    Open();
    const int digit = Window->List1->fontMetrics().horizontalAdvance(QLatin1Char('0'));
    EXPECT_EQ(Window->List1->columnWidth(2), 25 * digit);
    EXPECT_EQ(Window->List1->columnWidth(3), 9 * digit);
}

TEST_F(MainWindowLookTest, LongReportLinesWrapAndShortOnesStayLow)
{
    Open();
    ReportMessage(0, "");
    ReportMessage(3, "short");
    ReportMessage(3, std::string(400, 'x')); // a path has no blank to wrap at
    QApplication::processEvents();
    const ReportView& report = *Window->List2;
    const int line = report.fontMetrics().lineSpacing();
    EXPECT_LT(report.rowHeight(0), 2 * line);
    const int width = report.fontMetrics().horizontalAdvance(QString(400, QLatin1Char('x')));
    EXPECT_GE(report.rowHeight(1), width / report.viewport()->width() * line);
    EXPECT_TRUE(report.viewport()->rect().intersects(report.visualRect(report.Model.index(1))));
}

TEST_F(MainWindowLookTest, LinesBreakAtBlanksAndElseAnywhere)
{
    const kv::ReportLines lines(QApplication::font());
    const double x = QFontMetricsF(QApplication::font()).horizontalAdvance(QLatin1Char('x'));
    const auto wrapped = [&](const QString& text, double letters) {
        std::vector<std::string> parts;
        for (const QStringView part : lines.Wrap(text, letters * x + 0.1))
            parts.push_back(part.toString().toStdString());
        return parts;
    };
    using Parts = std::vector<std::string>;
    EXPECT_EQ(wrapped(QString(), 4), Parts{""});
    EXPECT_EQ(wrapped(QStringLiteral("xxxx"), 4), Parts{"xxxx"});
    EXPECT_EQ(wrapped(QStringLiteral("xxxxxxxxx"), 4), (Parts{"xxxx", "xxxx", "x"}));
    EXPECT_EQ(wrapped(QStringLiteral("xx xxx"), 4), (Parts{"xx ", "xxx"}));
    EXPECT_EQ(wrapped(QStringLiteral("xx xxxxxx"), 4), (Parts{"xx ", "xxxx", "xx"}));
    EXPECT_EQ(wrapped(QStringLiteral("xx"), 0), (Parts{"x", "x"})) << "no row is too narrow to end";
}

TEST_F(MainWindowLookTest, WrappingFollowsTheWidth)
{
    Open();
    ReportMessage(0, "");
    ReportMessage(3, std::string(60, 'x'));
    QApplication::processEvents();
    const int high = Window->List2->rowHeight(0);
    Window->List2->setMaximumWidth(200);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Window->List2->rowHeight(0) > high; }, 1000));
    Window->List2->setMaximumWidth(531);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Window->List2->rowHeight(0) == high; }, 1000));
}

TEST_F(MainWindowLookTest, MarksCanBeReadOnADarkScreen)
{
    const QColor dark(30, 30, 30);
    for (const QColor& mark :
         {QColor(155, 0, 0), QColor(0, 155, 0), QColor(0, 0, 255), QColor(255, 0, 100)}) {
        const QColor shown = ReadableOn(dark, mark);
        EXPECT_GE(Contrast(shown, dark), 4.5) << mark.name().toStdString();
        EXPECT_NEAR(shown.hslHue(), mark.hslHue(), 2) << mark.name().toStdString();
        EXPECT_EQ(ReadableOn(Qt::white, mark), mark);
    }
    EXPECT_NEAR(Contrast(Qt::white, Qt::black), 21, 0.001);
    EXPECT_NEAR(Contrast(QColor(0, 0, 255), Qt::white), 8.59, 0.01);
}

TEST_F(MainWindowLookTest, ADarkPaletteLiftsTheReportAtOnce)
{
    Open();
    QPalette dark = QApplication::palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    Window->List2->setPalette(dark);
    const auto colour = Window->List2->Model.index(1).data(Qt::ForegroundRole).value<QColor>();
    EXPECT_GE(Contrast(colour, QColor(30, 30, 30)), 4.5);
    EXPECT_NE(colour, QColor(155, 0, 0));
}

TEST_F(MainWindowLookTest, FiftyThousandFilesCostOnlyWhatIsOnTheScreen)
{
    Open();
    Shell.LoadDr = false;
    ShellChanged();
    FileList.Rows.resize(50000);
    for (std::size_t i = 0; i < FileList.Rows.size(); ++i)
        FileList.Rows[i].Cells = {"A", "A.DXF", "A.DXF", std::to_string(i), "01/02/2026", "01:02:03"};
    const long before = Window->List1->Model.AskedTexts();
    FileListWindow.RowsChanged();
    QApplication::processEvents();
    Window->List1->scrollToBottom();
    QApplication::processEvents();
    Window->List1->selectAll();
    QApplication::processEvents();
    // Four columns of some 25 rows, painted a few times.
    EXPECT_LT(Window->List1->Model.AskedTexts() - before, 3000);
    EXPECT_EQ(Window->List1->Model.rowCount(), 50000);
    EXPECT_TRUE(FileList.Rows.front().Selected);
    EXPECT_TRUE(FileList.Rows.back().Selected);
    ClearSelection();
    EXPECT_FALSE(Window->List1->selectionModel()->hasSelection());
}

TEST_F(MainWindowLookTest, TheListOutlivesRowsThatGoWhileItShows)
{
    PutDrawing("a.dxf");
    PutDrawing("b.dxf");
    Open();
    FileList.Rows.clear(); // a rebuild that has let events run before it told of the new rows
    Window->List1->viewport()->repaint();
    Window->List1->selectAll();
    EXPECT_TRUE(Window->List1->Model.index(1, 2).data().toString().isEmpty());
}

TEST_F(MainWindowLookTest, RowsOfALongReportAreAddedTogether)
{
    Open();
    ReportMessage(0, "");
    int insertions = 0;
    QObject::connect(&Window->List2->Model, &QAbstractItemModel::rowsInserted, Window.get(),
                     [&insertions] { ++insertions; });
    for (int i = 0; i < 100000; ++i)
        ReportMessage(1, "line");
    ReportMessage(2, "");
    QApplication::processEvents();
    EXPECT_EQ(Window->List2->Model.rowCount(), 100000);
    EXPECT_LT(insertions, 100);
    EXPECT_TRUE(Window->List2->viewport()->rect().intersects(
        Window->List2->visualRect(Window->List2->Model.index(99999))));
}

TEST_F(MainWindowLookTest, TabReachesEveryControl)
{
    Open();
    std::set<std::string> wanted, reached;
    for (const ControlRow& row : ControlRows()) {
        auto* const widget = row.Form == "Form1" ? Find<QWidget>(row.Name) : nullptr;
        if (widget != nullptr && widget->isVisible() && widget->isEnabled() &&
            (widget->focusPolicy() & Qt::TabFocus) != 0)
            wanted.insert(std::string(row.Name));
    }
    EXPECT_GT(wanted.size(), 25U);
    Window->List1->setFocus();
    for (std::size_t step = 0; step <= wanted.size() + 5; ++step) {
        reached.insert(QApplication::focusWidget()->objectName().toStdString());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (const std::string& name : wanted)
        EXPECT_TRUE(reached.count(name) == 1) << name;
}

TEST_F(MainWindowLookTest, TabGoesInTheOrderOfReading)
{
    PutDrawing("door.dxf");
    Open();
    const std::vector<std::string> order = {
        "List1", "List2", "Start", "CmdDF", "EX1",    "MakeHBD", "HBDGlue", "HBDDowel", "Bin",   "FlgLL",
        "FlgRI", "FlgRO", "LLen",  "RHt",   "OSX",    "OSY",     "OSZ",     "Opt",      "Sq(0)", "Sq(1)",
        "Sq(2)", "Sq(3)", "DRAlt", "FlgCC", "FlgRBR", "MetIn",   "TSetB",   "SetB"};
    Window->List1->setFocus();
    for (const std::string& name : order) {
        EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), name);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
}

TEST_F(MainWindowLookTest, AltLettersInSightAreGivenOnce)
{
    Open();
    std::set<QString> given;
    for (const QAbstractButton* const button : Window->findChildren<QAbstractButton*>()) {
        const QString key = button->isVisible() ? button->shortcut().toString() : QString();
        EXPECT_TRUE(key.isEmpty() || given.insert(key).second) << key.toStdString();
    }
    EXPECT_GT(given.size(), 15U);
}

TEST_F(MainWindowLookTest, TheHooksAreFreeBehindTheWindow)
{
    Open();
    Window.reset();
    EXPECT_EQ(Events.Pump, nullptr);
    EXPECT_EQ(Report.ShowRow, nullptr);
    EXPECT_EQ(FileListWindow.RowsChanged, nullptr);
    EXPECT_EQ(ShellWindow.Changed, nullptr);
    EXPECT_EQ(Tips.Install, nullptr);
    EXPECT_EQ(Dialogs.Ask, nullptr);
    ShellChanged();
    ReportMessage(3, "nobody listens");
}

TEST_F(MainWindowLookTest, SmallScreensAtLargeScalesHaveRoomForIt)
{
    constexpr QSize screens[] = {{1280 * 2 / 3, 800 * 2 / 3}, {1920 / 2, 1080 / 2}}; // at 150 and 200 %
    constexpr int bars = 72;                                                         // title and task list
    PutDrawing("door.dxf");
    Open();
    for (const QSize& screen : screens) {
        EXPECT_LE(Window->minimumWidth(), screen.width());
        EXPECT_LE(Window->minimumHeight(), screen.height() - bars);
        Window->resize(screen.width(), screen.height() - bars);
        QApplication::processEvents();
        EXPECT_EQ(Window->size(), QSize(screen.width(), screen.height() - bars));
        ExpectNothingCut(*Window);
        Find<QPushButton>("SetB")->setFocus(); // Tab brings what it reaches into sight
        auto* const area = Find<QScrollArea>("WholeArea");
        area->ensureWidgetVisible(Find<QPushButton>("SetB"));
        QApplication::processEvents();
        EXPECT_FALSE(Find<QPushButton>("SetB")->visibleRegion().isEmpty());
    }
}

TEST_F(MainWindowLookTest, SizeAndMaximisedStateAreKept)
{
    Open();
    Window->RestorePosition();
    Window->resize(1100, 700);
    Window->AskToClose();
    Window.reset();
    Shell = {};
    Open();
    Window->RestorePosition();
    EXPECT_EQ(Window->size(), QSize(1100, 700).boundedTo(Window->screen()->availableSize()));
    EXPECT_FALSE(Window->isMaximized());
    Window->showMaximized();
    QApplication::processEvents();
    Window->AskToClose();
    Window.reset();
    Shell = {};
    Open();
    Window->RestorePosition();
    EXPECT_TRUE(Window->isMaximized());
    Window->showNormal();
}

TEST_F(MainWindowLookTest, ASizeOfAScreenThatIsGoneIsCutToThisOne)
{
    for (const char* const stored :
         {"WidthPixel=5000\r\nHeightPixel=4000\r\n", "WidthPixel=wide\r\nHeightPixel=-3\r\n",
          "WidthPixel=99999999999\r\nHeightPixel=1\r\n", "Maximised=yes\r\n"}) {
        Open();
        Window->RestorePosition();
        const QSize first = Window->size();
        Window->AskToClose();
        Window.reset();
        Shell = {};
        Place.Write("config/korvanti/user.ini", std::string("[ZLT\\KVFrmViews]\r\n") + stored);
        Open();
        Window->RestorePosition();
        const QSize screen = Window->screen()->availableSize();
        EXPECT_LE(Window->width(), std::max(screen.width(), first.width())) << stored;
        EXPECT_LE(Window->height(), std::max(screen.height(), first.height())) << stored;
        EXPECT_GE(Window->width(), Window->minimumWidth()) << stored;
        EXPECT_FALSE(Window->isMaximized()) << stored;
        Window->AskToClose();
        Window.reset();
        Shell = {};
        std::filesystem::remove_all(Place.Folder / "config");
    }
}

TEST_F(MainWindowLookTest, TipsWrapAtBlanksAndLoseNothing)
{
    const QString text = QStringLiteral(
        "One  word after another, and so on until the line has more than sixty letters, twice.");
    const QString wrapped = WrappedTip(text);
    EXPECT_EQ(OneLine(wrapped), text);
    EXPECT_EQ(wrapped.count(QLatin1Char('\n')), 1);
    const QString whole(200, QLatin1Char('x'));
    EXPECT_EQ(WrappedTip(whole), whole);
    EXPECT_EQ(WrappedTip(QStringLiteral("short\nUnit: mm")), QStringLiteral("short\nUnit: mm"));
}

TEST_F(MainWindowLookTest, ScreenReadersHearTheUnitAndTheOrder)
{
    PutIni("Winner90=True\r\nSequence=VHGR\r\n");
    Open();
    EXPECT_EQ(Find<QPushButton>("MetIn")->accessibleName().toStdString(),
              "Unit of the default settings: Metric");
    QTest::mouseClick(Find<QPushButton>("MetIn"), Qt::LeftButton);
    EXPECT_EQ(Find<QPushButton>("MetIn")->accessibleName().toStdString(),
              "Unit of the default settings: Inch");
    EXPECT_EQ(Find<QComboBox>("Sq(0)")->accessibleName().toStdString(),
              "First operation class: V, vertical bores");
    EXPECT_EQ(Find<QComboBox>("Sq(3)")->accessibleName().toStdString(), "Fourth operation class: R, routes");
    EXPECT_EQ(Find<QComboBox>("Sq(1)")->itemData(3, Qt::AccessibleTextRole).toString().toStdString(),
              "G, grooves");
}

TEST_F(MainWindowLookTest, TheSelectedSortModeIsHeard)
{
    PutIni("GenesisEV=True\r\nEvOptLR=True\r\n");
    Open();
    EXPECT_EQ(Find<QLabel>("LabOpt")->accessibleName().toStdString(),
              "Selected sort mode: Increasing Fret Sorting in X");
}

TEST_F(MainWindowLookTest, EdgesOfBoxesCanBeSeenInTheDark)
{
    EXPECT_FALSE(EdgeOn(QPalette(Qt::white)).isValid());
    for (const QColor window : {QColor(0, 0, 0), QColor(0x20, 0x20, 0x20), QColor(0x35, 0x35, 0x40)}) {
        const QPalette palette(window);
        const QColor edge = EdgeOn(palette);
        ASSERT_TRUE(edge.isValid()) << window.name().toStdString();
        EXPECT_GE(Contrast(edge, palette.color(QPalette::Window)), 3);
        EXPECT_GE(Contrast(edge, palette.color(QPalette::Base)), 3);
        QCheckBox box;
        box.setPalette(palette);
        auto* const style = new EdgeStyle;
        style->setParent(&box);
        box.setStyle(style);
        box.resize(40, 40);
        const QImage picture = box.grab().toImage();
        bool found = false;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                found |= picture.pixelColor(x, y).rgb() == edge.rgb();
        EXPECT_TRUE(found) << window.name().toStdString();
    }
}

TEST_F(MainWindowLookTest, TheIconIsAPicture)
{
    EXPECT_FALSE(ProgramIcon().pixmap(64, 64).toImage().allGray());
}

} // namespace
} // namespace kv
