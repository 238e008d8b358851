// Layout and wiring of Setup. A path field is looked after when it is left, but not while a mouse button
// is down: the question that may come would take away the click that left the field.
#include "window/setup_dialog.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QFocusEvent>
#include <QFormLayout>
#include <QTimer>
#include <QVBoxLayout>

#include "platform/paths.h"
#include "shell/control_tables.h"
#include "shell/setup_rules.h"
#include "state/report.h"
#include "state/run.h"
#include "window/boxes.h"
#include "window/dialog_layout.h"
#include "window/number_fields.h"

namespace kv {

namespace {

constexpr int DesignedTools = 20;
constexpr int PathLetters = 52;     // that a path field shows at least
constexpr int MouseButtonWait = 20; // ms

// The box is an old one: no program depends on it.
constexpr const char OriginTip[] =
    "This box has no effect. The corner that a program counts from is named by the "
    "setting LineOrigin, or by LL, UL, UR or LR on the layer BORDER.";

enum UnitModeId { InchMode = 1, MetricMode, AutomaticMode, DrawnMode }; // as section "Configuration" has them
enum CutListUnitId { CutListMetric, CutListInch };

void Fill(QGroupBox* frame, QLayout* content)
{
    frame->setLayout(content);
}

QVBoxLayout* ColumnWith(std::initializer_list<QWidget*> widgets)
{
    auto* const column = new QVBoxLayout;
    for (QWidget* const widget : widgets)
        column->addWidget(widget);
    return column;
}

QFormLayout* Form()
{
    auto* const form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    return form;
}

} // namespace

SetupDialog::SetupDialog(QWidget& parent) : QDialog(&parent)
{
    setObjectName(QStringLiteral("SetUp"));
    setWindowTitle(CaptionOf("SetUp", "SetUp"));
    Tabs = new QTabWidget;
    Tabs->setObjectName(QStringLiteral("SSTab1"));
    AddTab(*Tabs, "SetUp", 0, PathsPage());
    AddTab(*Tabs, "SetUp", 1, AutoActionPage());
    AddTab(*Tabs, "SetUp", 2, PreferencesPage());
    AddTab(*Tabs, "SetUp", 3, CutListPage());
    AddTab(*Tabs, "SetUp", 4, HbdPage());
    auto* const whole = new QVBoxLayout(this);
    whole->addWidget(Tabs);
    whole->addLayout(ButtonRow());
    for (int i = 0; i < ControlSystems; ++i) {
        const auto place = static_cast<std::size_t>(i);
        PathFields.push_back({DxfPath[place], &SourcePath(i), true});
        PathFields.push_back({GCodePath[place], &DestinationPath(i), false});
    }
    for (const PathField& field : PathFields) {
        Bound.Path(field.Edit, *field.Setting);
        field.Edit->installEventFilter(this);
    }
    SetTabOrder();
    ShowTools();
}

QLayout* SetupDialog::PathsPage()
{
    BrowseDxf = Maker.Button("SPB1");
    BrowseGCode = Maker.Button("SPB2");
    QCheckBox* const origin = Maker.Check("FlgMO");
    origin->setToolTip(WrappedTip(QLatin1String(OriginTip)));
    origin->setAccessibleDescription(QLatin1String(OriginTip));
    auto* const page =
        ColumnWith({PathFrame("Frame3", "DXFPath", BrowseDxf, DxfPath),
                    PathFrame("Frame4", "GCodePath", BrowseGCode, GCodePath), SystemFrame(), origin});
    page->addStretch();
    connect(BrowseDxf, &QPushButton::clicked, this, [this] {
        Browse("SPB1", DxfPath[static_cast<std::size_t>(Run.ControlType)], SourcePath(Run.ControlType));
    });
    connect(BrowseGCode, &QPushButton::clicked, this, [this] {
        Browse("SPB2", GCodePath[static_cast<std::size_t>(Run.ControlType)],
               DestinationPath(Run.ControlType));
    });
    return page;
}

QGroupBox* SetupDialog::PathFrame(std::string_view frame, std::string_view field, QPushButton* browse,
                                  std::array<QLineEdit*, ControlSystems>& edits)
{
    auto* const row = new QHBoxLayout;
    for (int i = 0; i < ControlSystems; ++i) {
        QLineEdit* const edit = Maker.Text(Indexed(field, i));
        edit->setMinimumWidth(PathLetters * edit->fontMetrics().averageCharWidth());
        edits[static_cast<std::size_t>(i)] = edit;
        row->addWidget(edit);
    }
    row->addWidget(browse, 0, Qt::AlignRight);
    QGroupBox* const box = Maker.Frame(frame);
    Fill(box, row);
    return box;
}

QGroupBox* SetupDialog::SystemFrame()
{
    SystemBox = Maker.Frame("FlgDDSFrame");
    QSizePolicy kept = SystemBox->sizePolicy();
    kept.setRetainSizeWhenHidden(true); // the dialog is sized before the frame is shown
    SystemBox->setSizePolicy(kept);
    Systems = new QButtonGroup(this);
    auto* const column = new QVBoxLayout;
    for (int i = 0; i < ControlSystems; ++i) {
        QRadioButton* const radio = Maker.Radio(Indexed("FlgDDS", i));
        Systems->addButton(radio, i);
        column->addWidget(radio);
    }
    Fill(SystemBox, column);
    Bound.Add([this] {
        const bool any = Config.Winner90 || Config.Genesis || Config.GenesisEV;
        ShowRadio(*Systems, any ? SelectedSystem() : -1);
    });
    connect(Systems, &QButtonGroup::idToggled, this, [this](int system, bool on) {
        if (!on)
            return;
        ClickSystem(system);
        ShowSettings();
    });
    return SystemBox;
}

QLayout* SetupDialog::AutoActionPage()
{
    QGroupBox* const frame = Maker.Frame("Frame1");
    QRadioButton* const temp = Maker.Radio("AS1");
    QRadioButton* const batch = Maker.Radio("AS2");
    QRadioButton* const off = Maker.Radio("AS0");
    Fill(frame, ColumnWith({temp, batch, off}));
    AutoStarts = new QButtonGroup(this);
    AutoStarts->addButton(off, 0);
    AutoStarts->addButton(temp, 1);
    AutoStarts->addButton(batch, 2);
    Bound.Add([this] { ShowRadio(*AutoStarts, AutoStartRadio()); });
    connect(AutoStarts, &QButtonGroup::idToggled, this, [this](int radio, bool on) {
        if (!on)
            return;
        ClickAutoStart(radio);
        ShowView();
    });

    GraphicAuto = Maker.Check("GAAP");
    GraphicManual = Maker.Check("GAMP");
    PauseBox = Maker.Check("PFM");
    BatchLimit = NumberText("BLim", Config.BatchLimit);
    BatchLimitLabel = Maker.Caption(BatchLimit);
    BatchLimitLabel->setObjectName(QStringLiteral("LblBlim"));
    Bound.Check(GraphicAuto, Config.GraphicAfterAuto);
    Bound.Check(GraphicManual, Config.GraphicAfterMan);
    Bound.Check(PauseBox, Config.PauseForMessages);
    QFormLayout* const limit = Form();
    limit->addRow(BatchLimitLabel, WithReading(BatchLimit));
    auto* const page = ColumnWith({frame, GraphicAuto});
    page->addLayout(limit);
    page->addWidget(GraphicManual);
    page->addWidget(PauseBox);
    page->addStretch();
    return page;
}

QLineEdit* SetupDialog::NumberText(std::string_view name, std::string& setting)
{
    QLineEdit* const edit = Maker.Text(name);
    edit->setAlignment(Qt::AlignRight);
    Bound.Number(edit, ReadingBeside(edit), "SetUp", setting);
    return edit;
}

QLayout* SetupDialog::WithReading(QLineEdit* edit) const
{
    auto* const row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(edit);
    row->addWidget(ReadingOf(edit));
    ReadingOf(edit)->setMinimumWidth(WidthOfReading(*ReadingOf(edit)));
    return row;
}

QLayout* SetupDialog::PreferencesPage()
{
    QGroupBox* const precision = Maker.Frame("Frame6");
    QFormLayout* const decimals = Form();
    for (QLineEdit* const edit :
         {NumberText("PrcM", Config.PrecisionMetric), NumberText("PrcI", Config.PrecisionInch)})
        decimals->addRow(Maker.Caption(edit), WithReading(edit));
    Fill(precision, decimals);
    auto* const frames = new QHBoxLayout;
    frames->addWidget(precision, 1);
    frames->addWidget(UnitModeFrame(), 1);

    QFormLayout* const values = Form();
    for (QLineEdit* const edit :
         {NumberText("GRDly", Config.GraphicDelay), NumberText("SawKerf", Config.SawKerf),
          NumberText("RadLim", Config.RadiusLimit), NumberText("SLim", Config.LineLimit)})
        values->addRow(Maker.Caption(edit), WithReading(edit));
    QWidget* const lineLimit = values->itemAt(3, QFormLayout::LabelRole)->widget();
    lineLimit->setObjectName(QStringLiteral("LineLimLab"));

    QCheckBox* const tips = Maker.Check("Tips");
    QCheckBox* const inchControl = Maker.Check("SLInch");
    Bound.Check(tips, Config.TipsEnable);
    Bound.Check(inchControl, Config.SpeedyInchMode);
    connect(tips, &QCheckBox::clicked, this, [](bool on) { InstallCursorTips(on); });

    auto* const page = new QVBoxLayout;
    page->addLayout(frames);
    page->addLayout(values);
    page->addWidget(tips);
    page->addWidget(inchControl);
    page->addStretch();
    return page;
}

QGroupBox* SetupDialog::UnitModeFrame()
{
    QGroupBox* const frame = Maker.Frame("UModerFrame");
    QRadioButton* const inch = Maker.Radio("IMode");
    QRadioButton* const metric = Maker.Radio("MMode");
    QRadioButton* const automatic = Maker.Radio("AMode");
    QRadioButton* const drawn = Maker.Radio("DMode");
    Fill(frame, ColumnWith({inch, metric, automatic, drawn}));
    UnitModes = new QButtonGroup(this);
    UnitModes->addButton(inch, InchMode);
    UnitModes->addButton(metric, MetricMode);
    UnitModes->addButton(automatic, AutomaticMode);
    UnitModes->addButton(drawn, DrawnMode);
    Bound.Add([this] {
        const int mode = static_cast<int>(std::clamp(Val(Config.UnitMode), 0.0, 4.0));
        if (UnitModes->button(mode) != nullptr) // any other value leaves the choice that is shown
            ShowRadio(*UnitModes, mode);
    });
    connect(UnitModes, &QButtonGroup::idToggled, this, [](int mode, bool on) {
        if (on)
            Config.UnitMode = WholeText(mode);
    });
    return frame;
}

QLayout* SetupDialog::CutListPage()
{
    QGroupBox* const units = Maker.Frame("PTSUnitFrame");
    QRadioButton* const metric = Maker.Radio("PTSMetric");
    QRadioButton* const inch = Maker.Radio("PTSInch");
    Fill(units, ColumnWith({metric, inch}));
    CutListUnits = new QButtonGroup(this);
    CutListUnits->addButton(metric, CutListMetric);
    CutListUnits->addButton(inch, CutListInch);
    Bound.Add([this] { ShowRadio(*CutListUnits, Config.PTSMetric ? CutListMetric : CutListInch); });
    connect(CutListUnits, &QButtonGroup::idToggled, this, [](int unit, bool on) {
        if (on)
            Config.PTSMetric = unit == CutListMetric;
    });

    QGroupBox* const folder = Maker.Frame("Frame2");
    QLineEdit* const path = Maker.Text("PTSPath");
    Bound.Path(path, Config.PTSPath);
    Fill(folder, ColumnWith({path}));

    QGroupBox* const file = Maker.Frame("Frame5");
    QLineEdit* const name = Maker.Text("PTSName");
    Bound.Text(name, Config.PTSName);
    auto* const named = new QFormLayout;
    named->addRow(Maker.Caption(name), name);
    Fill(file, named);

    auto* const page = ColumnWith({units, folder, file});
    page->addStretch();
    return page;
}

QLayout* SetupDialog::HbdPage()
{
    Tools = new GridEditor("SetUp", "HBDSpd", HbdToolColumns(), DesignedTools);
    QGroupBox* const folder = Maker.Frame("Frame7");
    QLineEdit* const path = Maker.Text("HBDPath");
    path->setMinimumWidth(PathLetters * path->fontMetrics().averageCharWidth());
    Bound.Path(path, Config.HBDDestinationPath);
    BrowseHbd = Maker.Button("SPBhbd");
    connect(BrowseHbd, &QPushButton::clicked, this,
            [this, path] { Browse("SPBhbd", path, Config.HBDDestinationPath); });
    auto* const row = new QHBoxLayout;
    row->addWidget(path);
    row->addWidget(BrowseHbd);
    Fill(folder, row);

    QGroupBox* const rule = Maker.Frame("Frame8");
    QLineEdit* const limit = NumberText("HBDVboreLim", Config.HBDVBoreLimit);
    QFormLayout* const limits = Form();
    limits->addRow(Maker.Caption(limit), WithReading(limit));
    Fill(rule, limits);

    auto* const page = new QVBoxLayout;
    page->addWidget(Tools, 1);
    page->addWidget(folder);
    page->addWidget(rule);
    return page;
}

QLayout* SetupDialog::ButtonRow()
{
    QPushButton* const ok = Maker.Button("PrefOK");
    QPushButton* const cancel = Maker.Button("PrefCan");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, [this] { accept(); });
    connect(cancel, &QPushButton::clicked, this, [this] { reject(); });
    auto* const row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    return row;
}

// As the pages read, down to the buttons. The tabs' heads come first by themselves.
void SetupDialog::SetTabOrder()
{
    constexpr const char* names[] = {
        "DXFPath(0)",   "DXFPath(1)", "DXFPath(2)",  "SPB1",      "GCodePath(0)", "GCodePath(1)",
        "GCodePath(2)", "SPB2",       "FlgDDS(0)",   "FlgDDS(1)", "FlgDDS(2)",    "FlgMO",
        "AS1",          "AS2",        "AS0",         "GAAP",      "BLim",         "GAMP",
        "PFM",          "PrcM",       "PrcI",        "IMode",     "MMode",        "AMode",
        "DMode",        "GRDly",      "SawKerf",     "RadLim",    "SLim",         "Tips",
        "SLInch",       "PTSMetric",  "PTSInch",     "PTSPath",   "PTSName",      "HBDSpd",
        "HBDPath",      "SPBhbd",     "HBDVboreLim", "PrefOK",    "PrefCan"};
    QWidget* before = nullptr;
    for (const char* const name : names) {
        auto* const widget = findChild<QWidget*>(QLatin1String(name));
        if (before != nullptr)
            setTabOrder(before, widget);
        before = widget;
    }
}

// OK and Cancel let events run while the dialog is still on the stack: a press of Setup that comes there
// would switch the autostart off and show nothing.
void SetupDialog::Open()
{
    if (std::exchange(IsOpen, true))
        return;
    OpenSetup();
    ShowSettings();
    Tabs->setCurrentIndex(0);
    // Which fields are in sight has changed; the first time no layout below the scroll areas knows of it.
    for (QWidget* const widget : findChildren<QWidget*>())
        widget->updateGeometry();
    CentreOnScreen(*this);
    exec();
    IsOpen = false;
}

void SetupDialog::showEvent(QShowEvent* event)
{
    SystemBox->setVisible(true); // hidden by design until here
    ShowView();
    QDialog::showEvent(event);
}

void SetupDialog::ShowSettings()
{
    Bound.Show();
    ShowView();
}

void SetupDialog::ShowView()
{
    const SetupView view = ViewOfSetup();
    for (std::size_t i = 0; i < ControlSystems; ++i) {
        DxfPath[i]->setVisible(view.PathShown[i]);
        GCodePath[i]->setVisible(view.PathShown[i]);
    }
    GraphicAuto->setEnabled(view.GaapEnabled);
    PauseBox->setEnabled(view.PfmEnabled);
    BatchLimit->setEnabled(view.BLimEnabled);
    BatchLimitLabel->setEnabled(view.BLimEnabled);
    GraphicAuto->setVisible(view.GraphicShown);
    GraphicManual->setVisible(view.GraphicShown);
}

void SetupDialog::Browse(std::string_view button, QLineEdit* edit, std::string& setting)
{
    SettlePaths();
    const ControlRow* const words = FindControl("SetUp", std::string(button) + ".Browser");
    const QString chosen =
        Person.ChooseFolder(this, Shown(words->Caption), Shown(words->Default), edit->text());
    if (chosen.isEmpty())
        return; // cancelled
    setting = BrowsedPath(PathTyped(chosen));
    edit->setText(ShownAsPath(setting));
}

bool SetupDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::FocusOut || !isVisible())
        return QDialog::eventFilter(watched, event);
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    // Another program, a menu, the question itself: the field is not left.
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
        return QDialog::eventFilter(watched, event);
    LeftFields.push_back(static_cast<QLineEdit*>(watched));
    SettleSoon();
    return QDialog::eventFilter(watched, event);
}

void SetupDialog::SettleSoon()
{
    const bool pressed = QApplication::mouseButtons() != Qt::NoButton;
    QTimer::singleShot(pressed ? MouseButtonWait : 0, this, [this] {
        if (QApplication::mouseButtons() != Qt::NoButton)
            SettleSoon();
        else
            SettlePaths();
    });
}

void SetupDialog::SettlePaths()
{
    while (!LeftFields.empty()) {
        const QLineEdit* const left = LeftFields.front();
        LeftFields.erase(LeftFields.begin()); // its question lets events in
        LeaveField(*std::ranges::find(PathFields, left, &PathField::Edit));
    }
}

void SetupDialog::LeaveField(const PathField& field)
{
    std::string text = *field.Setting;
    if (field.Trimmed && field.Edit->isModified())
        text = PathTyped(field.Edit->text().trimmed());
    std::string left = LeavePathField(text, field.Trimmed);
    if (!isVisible()) // its question let the dialog be cancelled
        return;
    *field.Setting = std::move(left);
    field.Edit->setText(ShownAsPath(*field.Setting));
}

// A table that cannot be read is shown empty and must not be stored so.
void SetupDialog::ShowTools()
{
    GridCells tools;
    const FileAnswer answer = LoadHbdTools(tools);
    ToolsRead = answer.Is != Presence::CannotTell;
    if (!ToolsRead)
        TellAtOnce(Message::TableLeft,
                   {{"file", ShownPath(ExeFolder + std::string(HbdToolFile))}, {"cause", answer.Why.Cause}});
    Tools->ShowCells(tools);
}

// By Enter the focus stays in its field, which is left all the same.
void SetupDialog::accept()
{
    auto* const focus = qobject_cast<QLineEdit*>(focusWidget());
    if (focus != nullptr && std::ranges::find(PathFields, focus, &PathField::Edit) != PathFields.end())
        LeftFields.push_back(focus);
    SettlePaths();
    if (!isVisible()) // a question let the dialog be cancelled
        return;
    const GridCells tools = Tools->Cells();
    QDialog::accept();
    AcceptSetup(ToolsRead ? &tools : nullptr);
}

// Also by Escape and the close box.
void SetupDialog::reject()
{
    SettlePaths();
    QDialog::reject();
    CancelSetup();
    ShowTools();
    ShowSettings();
}

} // namespace kv
