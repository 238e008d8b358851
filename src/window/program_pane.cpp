// Whatever lights an operation (slider, picture, text, table) goes through Select, which moves all the
// others.
#include "window/program_pane.h"

#include <algorithm>

#include <QCloseEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSplitter>
#include <QTextBlock>

#include "scene/run_time.h"
#include "scene/sheet_places.h"
#include "state/settings.h"
#include "window/boxes.h"
#include "window/flow_layout.h"
#include "window/picture_file.h"
#include "window/wheel_guard.h"

namespace kv {

namespace {

enum Column { LineColumn, KindColumn, ToolColumn, PlaceColumn, DepthColumn, FeedColumn, Columns };
constexpr int LegendRows = 5;   // in view
constexpr int SentenceRows = 3; // of a narrow pane
constexpr int SpeedsASecond[] = {1, 2, 5, 10, 25};
constexpr int MostSliderSteps = 1 << 30;
constexpr int LongerSideOfImage = 2400; // pixels of a picture that is saved

QString OfUtf8(const std::string& text)
{
    return QString::fromStdString(text);
}

QString KindOf(const SceneItem& item)
{
    SceneGroup kind;
    kind.Shape = item.Shape;
    const QString text = OfUtf8(GroupText(kind));
    return text.left(text.indexOf(QLatin1Char(',')));
}

// By a sign: some desktops' colours leave it open which buttons are on.
void MarkWhenOn(QToolButton& button, const QString& text)
{
    const QString on = QStringLiteral("\u2713 ") + text;
    button.setText(on);
    button.setMinimumWidth(button.sizeHint().width()); // it must not jump
    button.setText(text);
    QObject::connect(&button, &QToolButton::toggled, &button,
                     [&button, on, text](bool isOn) { button.setText(isOn ? on : text); });
}

} // namespace

int OperationsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || Shown == nullptr ? 0 : static_cast<int>(Shown->Items.size());
}

int OperationsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(Columns);
}

QVariant OperationsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || role != Qt::DisplayRole)
        return {};
    const SceneItem& item = Shown->Items[static_cast<std::size_t>(index.row())];
    switch (index.column()) {
    case LineColumn:
        return static_cast<qulonglong>(item.Line);
    case KindColumn:
        return KindOf(item);
    case ToolColumn:
        return OfUtf8(item.Tool);
    case PlaceColumn:
        return OfUtf8(PlaceText(*Shown, item.At, Unit));
    case DepthColumn:
        return OfUtf8(LengthForPeople(item.Depth) + (item.IsThrough ? " (through)" : ""));
    case FeedColumn:
        return item.Feed > 0 ? OfUtf8(LengthForPeople(item.Feed)) : QString();
    default:
        return {};
    }
}

QVariant OperationsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList names = {QStringLiteral("Line"),  QStringLiteral("Kind"),
                                      QStringLiteral("Tool"),  QStringLiteral("Place"),
                                      QStringLiteral("Depth"), QStringLiteral("Feed")};
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? QVariant(names.value(section))
                                                                    : QVariant();
}

void OperationsModel::Show(const Scene* scene, double unit)
{
    beginResetModel();
    Shown = scene;
    Unit = unit;
    endResetModel();
}

ProgramPane::ProgramPane()
    : View(new SceneViewer), Header(new QLabel), State(new QLabel), Sentence(new QLabel), Cursor(new QLabel),
      Time(new QLabel), Speed(new QComboBox), Programs(new QComboBox), Place(new QSlider(Qt::Horizontal)),
      Legend(new QListWidget), Text(new QPlainTextEdit), Table(new QTableView)
{
    setObjectName(QStringLiteral("ProgramPane"));
    setWindowTitle(QStringLiteral("Program"));
    MakeLists();
    LayOut();
    Wire();
    ShowNothing(QStringLiteral("No program has been written yet."));
}

QToolButton* ProgramPane::Button(const QString& text, const QString& spoken, bool isSwitch)
{
    auto* const button = new QToolButton(this);
    button->setText(text);
    button->setAccessibleName(spoken);
    button->setToolTip(spoken);
    button->setCheckable(isSwitch);
    button->setFocusPolicy(Qt::StrongFocus);
    if (isSwitch)
        MarkWhenOn(*button, text);
    return button;
}

void ProgramPane::MakeSides(QLayout& row)
{
    for (const Plane side : {Plane::Surface, Plane::Edge1, Plane::Edge2, Plane::Edge3, Plane::Edge4}) {
        const QString number = QString::number(static_cast<int>(side));
        QToolButton* const button = Button(number, QStringLiteral("Show side ") + number, false);
        button->setObjectName(QStringLiteral("Side") + number);
        connect(button, &QToolButton::clicked, this, [this, side] { View->ShowSide(side); });
        row.addWidget(button);
    }
}

void ProgramPane::MakeButtons(QLayout& row)
{
    FitAll = Button(QStringLiteral("Fit"), QStringLiteral("Show all of the panel (F)"), false);
    Order = Button(QStringLiteral("Order"), QStringLiteral("Number the operations in their order"), true);
    Rapids = Button(QStringLiteral("Rapids"), QStringLiteral("Show the ways above the panel"), true);
    Drawing = Button(QStringLiteral("Drawing"), QStringLiteral("Lay the drawing over the program"), true);
    ShowText = Button(QStringLiteral("Text"), QStringLiteral("Show the program's text"), true);
    ShowTable = Button(QStringLiteral("Table"), QStringLiteral("Show the operations as a table"), true);
    Picture = Button(QStringLiteral("Picture..."), QStringLiteral("Save the picture"), false);
    row.addWidget(FitAll);
    MakeSides(row);
    for (QToolButton* const button : {Order, Rapids, Drawing, ShowText, ShowTable, Picture})
        row.addWidget(button);
    Rapids->setChecked(true);
    Drawing->setChecked(true);
}

int ProgramPane::LegendRowHeight() const
{
    const int shown = Legend->sizeHintForRow(0);
    return shown > 0 ? shown : fontMetrics().height() + 4;
}

void ProgramPane::MakeLists()
{
    Legend->setAccessibleName(QStringLiteral("Operations by kind; a mark shows, no mark hides"));
    Text->setReadOnly(true);
    Text->setLineWrapMode(QPlainTextEdit::NoWrap);
    Text->setAccessibleName(QStringLiteral("Text of the program"));
    Text->hide();
    Table->setModel(&Operations);
    Table->setAccessibleName(QStringLiteral("Operations of the program"));
    Table->setSelectionBehavior(QAbstractItemView::SelectRows);
    Table->setSelectionMode(QAbstractItemView::SingleSelection);
    Table->setTabKeyNavigation(false);
    Table->verticalHeader()->hide();
    Table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    Table->horizontalHeader()->setStretchLastSection(true);
    Table->hide();
    Place->setAccessibleName(QStringLiteral("Line of the program"));
    Place->setPageStep(10);
    Programs->setAccessibleName(QStringLiteral("Program of the drawing"));
    Programs->hide();
    for (const int speed : SpeedsASecond)
        Speed->addItem(QString::number(speed) + QStringLiteral(" a second"), speed);
    Speed->setCurrentIndex(2);
    Speed->setAccessibleName(QStringLiteral("Speed of playing"));
    for (QLabel* const label : {Header, State, Sentence, Cursor, Time}) {
        label->setTextFormat(Qt::PlainText);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        label->setMinimumHeight(label->fontMetrics().height());
    }
    Sentence->setWordWrap(true);
    Sentence->setMinimumHeight(SentenceRows * fontMetrics().lineSpacing()); // the picture must not jump
    Sentence->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Cursor->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void ProgramPane::LayOut()
{
    auto* const buttons = new FlowLayout(2);
    MakeButtons(*buttons);
    auto* const sheets = new QSplitter(Qt::Horizontal);
    sheets->setChildrenCollapsible(false);
    for (QWidget* const sheet :
         {static_cast<QWidget*>(View), static_cast<QWidget*>(Text), static_cast<QWidget*>(Table)})
        sheets->addWidget(sheet);
    sheets->setStretchFactor(0, 2);
    sheets->setStretchFactor(1, 1);
    sheets->setStretchFactor(2, 1);
    Play = Button(QStringLiteral("Play"), QStringLiteral("Go through the operations (Space)"), true);
    auto* const steps = new QHBoxLayout;
    steps->addWidget(Place, 1);
    steps->addWidget(Play);
    steps->addWidget(Speed);
    auto* const foot = new QHBoxLayout;
    foot->addWidget(Time, 1);
    foot->addWidget(Cursor, 1);
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(4, 4, 4, 4);
    whole->addWidget(Header);
    whole->addWidget(State);
    whole->addWidget(Programs);
    whole->addLayout(buttons);
    whole->addWidget(sheets, 1);
    whole->addLayout(steps);
    whole->addWidget(Sentence);
    whole->addWidget(Legend);
    whole->addLayout(foot);
}

void ProgramPane::Wire()
{
    for (QWidget* const widget : std::initializer_list<QWidget*>{Speed, Programs, Place})
        GuardFromWheel(widget);
    connect(FitAll, &QToolButton::clicked, this, [this] { View->Fit(); });
    const auto look = [this](QToolButton* button, bool SceneLook::*what) {
        connect(button, &QToolButton::toggled, this, [this, what](bool on) {
            View->Look.*what = on;
            View->update();
        });
    };
    look(Order, &SceneLook::Order);
    look(Rapids, &SceneLook::Rapids);
    look(Drawing, &SceneLook::Drawing);
    connect(ShowText, &QToolButton::toggled, Text, &QWidget::setVisible);
    connect(ShowTable, &QToolButton::toggled, Table, &QWidget::setVisible);
    connect(Programs, &QComboBox::activated, this, [this](int program) {
        if (ProgramChosen)
            ProgramChosen(program);
    });
    connect(Picture, &QToolButton::clicked, this, [this] { AskWhereToSave(); });
    connect(Play, &QToolButton::toggled, this, [this] { TogglePlay(); });
    connect(&Clockwork, &QTimer::timeout, this, [this] { Step(1); });
    connect(Speed, &QComboBox::currentIndexChanged, this,
            [this] { Clockwork.setInterval(1000 / Speed->currentData().toInt()); });
    connect(Place, &QSlider::valueChanged, this, [this](int value) {
        if (!Showing)
            static_cast<void>(SelectLine(static_cast<std::size_t>(value) + 1));
    });
    connect(Legend, &QListWidget::itemChanged, this, [this](QListWidgetItem* row) { TakeLegend(*row); });
    connect(Legend, &QListWidget::currentRowChanged, this,
            [this](int row) { View->LightGroup(row < 0 ? NoItem : static_cast<std::size_t>(row)); });
    connect(Text, &QPlainTextEdit::cursorPositionChanged, this, [this] { TakeTextPlace(); });
    connect(Table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& row) {
                if (!Showing && row.isValid())
                    Select(static_cast<std::size_t>(row.row()));
            });
    View->Clicked = [this](std::size_t item) { Select(item); };
    View->CursorMoved = [this](const PathPoint* at) { ShowCursor(at); };
}

void ProgramPane::ShowProgram(const PaneContent& content)
{
    Content = content;
    View->Show(content.Picture);
    ShowContent();
}

void ProgramPane::ShowNothing(const QString& why)
{
    Content = {};
    View->Empty = why;
    View->Show({});
    ShowContent();
}

void ProgramPane::ShowContent()
{
    Showing = true;
    Play->setChecked(false);
    const Scene& scene = View->Shown();
    const bool hasPanel = View->HasPanel();
    const QString names = Content.Drawing.isEmpty() || Content.Path.isEmpty()
                              ? Content.Drawing + Content.Path
                              : Content.Drawing + QStringLiteral(" \u2192 ") + Content.Path;
    Header->setText(names);
    Header->setToolTip(names);
    QStringList state;
    if (hasPanel)
        state += OfUtf8("Panel " + LengthForPeople(scene.Length) + " x " + LengthForPeople(scene.Width) +
                        " x " + LengthForPeople(scene.Thickness) + " mm");
    if (!Content.State.isEmpty())
        state += Content.State;
    if (!Content.ToolFault.isEmpty())
        state += Content.ToolFault;
    if (Content.LinesUnread > 0)
        state += QString::number(Content.LinesUnread) +
                 (Content.LinesUnread == 1 ? QStringLiteral(" line is not understood and not drawn")
                                           : QStringLiteral(" lines are not understood and not drawn"));
    State->setText(state.join(QStringLiteral("; ")));
    const bool hasWork = !scene.Items.empty();
    Time->setText(hasWork ? OfUtf8(TimeForPeople(FiguresOf(scene).Seconds) + ", an estimate") : QString());
    Programs->clear();
    for (const QString& name : Content.Programs)
        Programs->addItem(
            name +
            QStringLiteral(", program %1 of %2").arg(Programs->count() + 1).arg(Content.Programs.size()));
    Programs->setCurrentIndex(Content.Program);
    Programs->setVisible(Content.Programs.size() > 1);
    Text->setPlainText(Content.Text);
    Operations.Show(&scene, Content.Unit);
    ShowLegend();
    Place->setRange(0, std::max(0, LinesShown() - 1));
    for (QWidget* const widget : {static_cast<QWidget*>(Place), static_cast<QWidget*>(Play)})
        widget->setEnabled(hasWork);
    Picture->setEnabled(hasPanel);
    Legend->setVisible(hasWork);
    Place->setValue(0);
    ShowCursor(nullptr);
    Showing = false;
    Select(NoItem);
}

void ProgramPane::ShowLegend()
{
    Legend->clear();
    for (const SceneGroup& group : View->Shown().Groups) {
        auto* const row =
            new QListWidgetItem(OfUtf8(std::to_string(group.Count) + " x " + GroupText(group)), Legend);
        row->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        row->setCheckState(Qt::Checked);
    }
    const int rows = std::clamp(Legend->count(), 1, LegendRows);
    Legend->setFixedHeight(rows * LegendRowHeight() + 2 * Legend->frameWidth());
}

void ProgramPane::TakeLegend(const QListWidgetItem& row)
{
    if (!Showing)
        View->HideGroup(static_cast<std::size_t>(Legend->row(&row)), row.checkState() != Qt::Checked);
}

// Without the empty one behind the last line end.
int ProgramPane::LinesShown() const
{
    const QTextDocument& text = *Text->document();
    return text.blockCount() - (text.lastBlock().length() <= 1 ? 1 : 0);
}

void ProgramPane::Select(std::size_t item)
{
    const std::vector<SceneItem>& items = View->Shown().Items;
    if (item < items.size() && items[item].Line > 0) {
        ShowPlace(items[item].Line, item);
        return;
    }
    ShowPlace(0, item < items.size() ? item : NoItem);
}

void ProgramPane::ShowPlace(std::size_t line, std::size_t item)
{
    Showing = true;
    Line = line;
    View->Light(item, line);
    if (line > 0)
        Place->setValue(static_cast<int>(std::min<std::size_t>(line - 1, MostSliderSteps)));
    Table->setCurrentIndex(item != NoItem ? Operations.index(static_cast<int>(item), 0) : QModelIndex());
    ShowSentence();
    LightLines();
    Showing = false;
}

// "Line 65 of 62 to 74: route, ...", or the operation's own sentence at its first line.
void ProgramPane::ShowSentence()
{
    const std::size_t item = Selected();
    if (item == NoItem) {
        Sentence->setText(Line > 0 ? QStringLiteral("Line %1").arg(Line) : QString());
        return;
    }
    const SceneItem& work = View->Shown().Items[item];
    QString sentence = OfUtf8(ItemSentence(work));
    if (Line > work.Line && work.LastLine > work.Line)
        sentence.replace(QStringLiteral("Lines "), QStringLiteral("Line %1 of ").arg(Line));
    Sentence->setText(sentence);
}

// Also where the text is not shown: it may be, later.
void ProgramPane::LightLines()
{
    QList<QTextEdit::ExtraSelection> lit;
    const auto light = [&](std::size_t first, std::size_t last, const QColor& ground, const QColor& letters) {
        QTextEdit::ExtraSelection lines;
        lines.cursor = QTextCursor(Text->document()->findBlockByNumber(static_cast<int>(first) - 1));
        if (const QTextBlock end = Text->document()->findBlockByNumber(static_cast<int>(last) - 1);
            end.isValid())
            lines.cursor.setPosition(end.position() + end.length() - 1, QTextCursor::KeepAnchor);
        lines.format.setBackground(ground);
        lines.format.setForeground(letters);
        lit.push_back(lines);
    };
    if (const std::size_t item = Selected(); item != NoItem) {
        const SceneItem& work = View->Shown().Items[item];
        light(work.Line, std::max(work.Line, work.LastLine), palette().color(QPalette::AlternateBase),
              palette().color(QPalette::Text));
    }
    if (Line > 0) {
        light(Line, Line, palette().color(QPalette::Highlight), palette().color(QPalette::HighlightedText));
        if (Text->textCursor().blockNumber() + 1 != static_cast<int>(Line))
            Text->setTextCursor(QTextCursor(Text->document()->findBlockByNumber(static_cast<int>(Line) - 1)));
    }
    Text->setExtraSelections(lit);
}

// The operation whose lines hold the text's cursor.
void ProgramPane::TakeTextPlace()
{
    if (Showing)
        return;
    static_cast<void>(SelectLine(static_cast<std::size_t>(Text->textCursor().blockNumber()) + 1));
}

std::size_t ProgramPane::ItemOfLine(std::size_t line) const
{
    const std::vector<SceneItem>& items = View->Shown().Items;
    const auto after =
        std::upper_bound(items.begin(), items.end(), line,
                         [](std::size_t wanted, const SceneItem& item) { return wanted < item.Line; });
    if (after == items.begin() || std::max(std::prev(after)->Line, std::prev(after)->LastLine) < line)
        return NoItem;
    return static_cast<std::size_t>(std::prev(after) - items.begin());
}

bool ProgramPane::SelectLine(std::size_t line)
{
    const std::size_t item = ItemOfLine(line);
    ShowPlace(line, item);
    return item != NoItem;
}

bool ProgramPane::SelectEntity(std::size_t drawnLine)
{
    const std::vector<SceneItem>& items = View->Shown().Items;
    const auto item = std::ranges::find_if(items, [&](const SceneItem& each) {
        return std::ranges::find(each.DrawnLines, drawnLine) != each.DrawnLines.end();
    });
    if (item != items.end()) {
        Select(static_cast<std::size_t>(item - items.begin()));
        return true;
    }
    const std::vector<DrawnShape>& drawn = View->Shown().Drawn;
    const auto shape = std::ranges::find(drawn, drawnLine, &DrawnShape::Line);
    if (shape == drawn.end())
        return false;
    Select(NoItem);
    View->LightDrawn({drawnLine});
    Sentence->setText(OfUtf8(shape->Text));
    return true;
}

void ProgramPane::ShowCursor(const PathPoint* at)
{
    Cursor->setText(at == nullptr ? QString() : OfUtf8(PlaceText(View->Shown(), *at, Content.Unit)));
}

void ProgramPane::TogglePlay()
{
    const bool runs = Play->isChecked();
    Play->setText(runs ? QStringLiteral("Pause") : QStringLiteral("Play"));
    if (!runs) {
        Clockwork.stop();
        return;
    }
    if (Line == 0 || Place->value() == Place->maximum())
        static_cast<void>(SelectLine(1));
    Clockwork.start(1000 / Speed->currentData().toInt());
}

// The first step lights the first operation.
void ProgramPane::Step(int by)
{
    if (View->Shown().Items.empty())
        return;
    if (Line == 0) {
        Select(by > 0 ? 0 : View->Shown().Items.size() - 1);
        return;
    }
    const int at = Place->value() + by;
    if (at > Place->maximum()) {
        Play->setChecked(false);
        return;
    }
    static_cast<void>(SelectLine(static_cast<std::size_t>(std::max(0, at)) + 1));
}

void ProgramPane::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    if (Closed)
        Closed();
}

void ProgramPane::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (key == Qt::Key_Left || key == Qt::Key_Right)
        Step(key == Qt::Key_Right ? 1 : -1);
    else if (key == Qt::Key_Space && Play->isEnabled())
        Play->toggle();
    else if (key == Qt::Key_F && event->modifiers() == Qt::NoModifier)
        View->Fit();
    else if (key >= Qt::Key_1 && key <= Qt::Key_5)
        View->ShowSide(static_cast<Plane>(key - Qt::Key_0));
    else
        QWidget::keyPressEvent(event);
}

bool ProgramPane::SavePicture(const QString& file) const
{
    if (!View->HasPanel())
        return false;
    const Scene& scene = View->Shown();
    return WritePicture(file,
                        {scene,
                         {Header->text(), State->text()},
                         [this](QPainter& painter, const QRectF& area) { View->PaintWhole(painter, area); },
                         ImageSizeByLongerSide(scene.Sheet, LongerSideOfImage)})
        .isEmpty();
}

void ProgramPane::AskWhereToSave()
{
    const QString file =
        QFileDialog::getSaveFileName(this, QStringLiteral("Save Picture"), QStringLiteral("program.png"),
                                     QStringLiteral("Picture (*.png);;PDF (*.pdf);;SVG (*.svg)"));
    if (!file.isEmpty() && !SavePicture(file))
        Person.Tell(file + QStringLiteral(" could not be written."), windowTitle(), BoxIcon::Error);
}

} // namespace kv
