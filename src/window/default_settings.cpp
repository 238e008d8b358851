// Columns of frames, in the order in which they are read and tabbed. Frames of the Genesis Evolution
// and of the other control systems share a column, since only one kind shows.
#include "window/default_settings.h"

#include <memory>

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "shell/control_tables.h"
#include "shell/main_window_rules.h"
#include "shell/setup_rules.h"
#include "shell/start_up.h"
#include "state/settings.h"
#include "window/dialogs.h"
#include "window/number_fields.h"

namespace kv {

namespace {

constexpr ControlMaker Make{"Form1"};
constexpr int FieldCharacters = 8; // of a measure

QVBoxLayout* Column(QGroupBox* frame)
{
    auto* const column = new QVBoxLayout(frame);
    column->setContentsMargins(8, 4, 8, 6);
    column->setSpacing(4);
    return column;
}

// The line of a frame without a caption stands where those of its neighbours do.
QVBoxLayout* ColumnOf(std::initializer_list<QWidget*> widgets)
{
    auto* const column = new QVBoxLayout;
    column->setSpacing(6);
    const auto* const first = qobject_cast<const QGroupBox*>(*widgets.begin());
    if (first != nullptr && first->title().isEmpty())
        column->addSpacing(first->fontMetrics().height());
    for (QWidget* const widget : widgets)
        column->addWidget(widget);
    column->addStretch();
    return column;
}

} // namespace

DefaultSettings::DefaultSettings() : Frame2(Make.Frame("Frame2")), Frame3(nullptr)
{
    auto* const columns = new QHBoxLayout(Frame2);
    columns->setContentsMargins(8, 8, 8, 8);
    columns->setSpacing(8);
    QCheckBox* const bin = Bound("Bin", Config.MakeBinaries);
    QGroupBox* const hbd = MakeHbdFrame();
    columns->addLayout(ColumnOf({hbd, bin, MakeProfileFrame()}));
    columns->addLayout(ColumnOf({MakeLeadFrame()}));
    QGroupBox* const offset = MakeOffsetFrame();
    columns->addLayout(ColumnOf({offset}));
    QGroupBox* const optimizer = MakeOptimizerFrame();
    QGroupBox* const operations = MakeOperationFrame();
    QGroupBox* const sort = MakeSortFrame();
    QCheckBox* const alternate = Make.Check("DRAlt");
    QObject::connect(alternate, &QCheckBox::clicked, alternate, [](bool on) { StoreAlternation(on); });
    QCheckBox* const corner = Bound("FlgCC", Config.CornerComp);
    QCheckBox* const border = Bound("FlgRBR", Config.RemoveBorderRoute);
    columns->addLayout(ColumnOf({optimizer, operations, sort, alternate, corner, border}));
    columns->addStretch();
    Frame3 = MakeButtons();
    columns->addLayout(ColumnOf({Frame3}));

    Fields.Add([alternate] { alternate->setChecked(Config.DRAlternate == "1"); });
    Fields.Add([bin] { bin->setHidden(BinHidden()); });
    Fields.Add([hbd] {
        hbd->setEnabled(Config.HbdAvailable);
        for (QCheckBox* const box : hbd->findChildren<QCheckBox*>())
            box->setEnabled(Config.HbdAvailable);
    });
    Fields.Add([optimizer, operations, sort, alternate] {
        const bool evolution = EvolutionFramesShown();
        optimizer->setHidden(evolution);
        alternate->setHidden(evolution);
        operations->setHidden(!evolution);
        sort->setHidden(!evolution);
    });
    Fields.Show();
}

void DefaultSettings::Show()
{
    Fields.Show();
}

void DefaultSettings::FitReadings(int width)
{
    constexpr int columns = 2; // of frames with number fields
    const int least = Frame2->minimumSizeHint().width();
    const bool fit = width >= least + columns * WidthOfReading(*Readings.front());
    for (QLabel* const reading : Readings)
        reading->setVisible(fit);
}

QCheckBox* DefaultSettings::Bound(std::string_view name, Int& field)
{
    QCheckBox* const box = Make.Check(name);
    Fields.Check(box, field);
    return box;
}

QCheckBox* DefaultSettings::Bound(std::string_view name, bool& field)
{
    QCheckBox* const box = Make.Check(name);
    Fields.Check(box, field);
    return box;
}

void DefaultSettings::AddField(QGridLayout* grid, int row, std::string_view name, std::string& field)
{
    QLineEdit* const text = Make.Text(name);
    text->setMinimumWidth(text->fontMetrics().horizontalAdvance(QLatin1Char('0')) * FieldCharacters);
    grid->addWidget(Make.Caption(text), row, 0);
    QLabel* const reading = ReadingBeside(text);
    reading->hide(); // until FitReadings
    Readings.push_back(reading);
    auto* const beside = new QHBoxLayout;
    beside->setSpacing(0);
    beside->addWidget(text);
    beside->addWidget(reading);
    grid->addLayout(beside, row, 1);
    Fields.Number(text, reading, "Form1", field);
}

QGroupBox* DefaultSettings::MakeHbdFrame()
{
    QGroupBox* const frame = Make.Frame("HBDFrame");
    QCheckBox* const glue = Make.Check("HBDGlue");
    QCheckBox* const dowel = Make.Check("HBDDowel");
    QVBoxLayout* const column = Column(frame);
    column->addWidget(Bound("MakeHBD", Config.MakeHBD));
    column->addWidget(glue);
    column->addWidget(dowel);
    // Not bound as the others: each click clears the other box.
    QObject::connect(glue, &QCheckBox::clicked, glue, [this](bool on) {
        ClickHbdGlue(on);
        Show();
    });
    QObject::connect(dowel, &QCheckBox::clicked, dowel, [this](bool on) {
        ClickHbdDowel(on);
        Show();
    });
    Fields.Add([glue, dowel] {
        glue->setChecked(Config.HBDGlue != 0);
        dowel->setChecked(Config.HBDDowel != 0);
    });
    return frame;
}

// Hidden by design; its list lives until the program ends and no setting depends on it.
QGroupBox* DefaultSettings::MakeProfileFrame()
{
    QGroupBox* const frame = Make.Frame("Frame4");
    auto* const row = new QHBoxLayout(frame);
    QPushButton* const add = Make.Button("SupAdd");
    QComboBox* const profiles = Make.Combo("SUProfile");
    profiles->addItem(QStringLiteral("Default"));
    profiles->setEditable(true);
    row->addWidget(profiles);
    row->addWidget(add);
    QObject::connect(add, &QPushButton::clicked, profiles,
                     [profiles] { profiles->addItem(profiles->currentText()); });
    return frame;
}

QGroupBox* DefaultSettings::MakeLeadFrame()
{
    QGroupBox* const frame = Make.Frame("SynFrame");
    QVBoxLayout* const column = Column(frame);
    column->addWidget(Bound("FlgLL", Config.LeadS));
    auto* const ramps = new QHBoxLayout;
    ramps->addWidget(Bound("FlgRI", Config.LeadRampIn));
    ramps->addWidget(Bound("FlgRO", Config.LeadRampOut));
    ramps->addStretch();
    column->addLayout(ramps);
    auto* const grid = new QGridLayout;
    AddField(grid, 0, "LLen", Config.LeadLength);
    AddField(grid, 1, "RHt", Config.LeadRampHeight);
    column->addLayout(grid);
    return frame;
}

QGroupBox* DefaultSettings::MakeOffsetFrame()
{
    QGroupBox* const frame = Make.Frame("Frame5");
    auto* const grid = new QGridLayout(frame);
    grid->setContentsMargins(8, 4, 8, 6);
    AddField(grid, 0, "OSX", Config.OffsetX);
    AddField(grid, 1, "OSY", Config.OffsetY);
    AddField(grid, 2, "OSZ", Config.OffsetZ);
    return frame;
}

QGroupBox* DefaultSettings::MakeOptimizerFrame()
{
    QGroupBox* const frame = Make.Frame("FrameOpt");
    QVBoxLayout* const column = Column(frame);
    QCheckBox* const on = Make.Check("Opt");
    QObject::connect(on, &QCheckBox::clicked, on, [](bool box) { StoreOptimizerBox(box); });
    Fields.Add([on] { on->setChecked(Config.OptimizerBox); });
    column->addWidget(on);
    auto* const row = new QHBoxLayout;
    row->setSpacing(4);
    Sequence = std::make_unique<SequenceBoxes>(*row);
    row->addStretch();
    column->addLayout(row);
    column->addWidget(Make.Check("MirFlg"));
    return frame;
}

QGroupBox* DefaultSettings::MakeOperationFrame()
{
    QGroupBox* const frame = Make.Frame("EvOptSelFr");
    auto* const grid = new QGridLayout(frame);
    grid->setContentsMargins(8, 4, 8, 6);
    grid->setVerticalSpacing(4);
    grid->addWidget(Bound("EvVBore", Config.EvVBore), 0, 0);
    grid->addWidget(Bound("EvHBore", Config.EvHBore), 0, 1);
    grid->addWidget(Bound("EvGroove", Config.EvGroove), 1, 0);
    grid->addWidget(Bound("EvRoute", Config.EvRoute), 1, 1);
    return frame;
}

QGroupBox* DefaultSettings::MakeSortFrame()
{
    QGroupBox* const frame = Make.Frame("EvOptFr");
    auto* const row = new QHBoxLayout(frame);
    row->setContentsMargins(8, 4, 8, 6);
    QPushButton* const open = Make.Button("BtnOpt");
    QLabel* const mode = Make.Label("LabOpt");
    row->addWidget(open);
    row->addWidget(mode, 1);
    QObject::connect(open, &QPushButton::clicked, open, [this] {
        ShowOptSet();
        DialogClosed();
    });
    const QString name = mode->accessibleName();
    Fields.Add([mode, name] {
        mode->setText(Shown(ShowSelectedEvolutionSort()));
        mode->setAccessibleName(mode->text().isEmpty() ? name : name + QStringLiteral(": ") + mode->text());
    });
    return frame;
}

QGroupBox* DefaultSettings::MakeButtons()
{
    QGroupBox* const frame = Make.Frame("Frame3");
    QPushButton* const unit = Make.Button("MetIn");
    QPushButton* const tools = Make.Button("TSetB");
    QPushButton* const setup = Make.Button("SetB");
    QVBoxLayout* const column = Column(frame);
    for (QPushButton* const button : {unit, tools, setup})
        column->addWidget(button);
    QObject::connect(unit, &QPushButton::clicked, unit, [this] {
        SwitchUnits();
        Show();
        InstallCursorTips(Config.TipsEnable != 0); // which name the unit
    });
    QObject::connect(tools, &QPushButton::clicked, tools, [this] {
        ShowToolSub();
        DialogClosed();
    });
    QObject::connect(setup, &QPushButton::clicked, setup, [this] {
        ShowSetup();
        DialogClosed();
    });
    const ControlRow* const row = FindControl("Form1", "MetIn");
    const QString name = unit->accessibleName();
    Fields.Add([unit, row, name] {
        // A fresh installation has no unit yet. Blank counts as metric, and the switch has to start there.
        if (Config.Metric.empty() && row != nullptr)
            Config.Metric = row->Caption;
        unit->setText(WithAltLetter(Config.Metric, row != nullptr ? row->Mnemonic : std::string_view()));
        unit->setAccessibleName(name + QStringLiteral(": ") + Shown(Config.Metric));
    });
    return frame;
}

} // namespace kv
