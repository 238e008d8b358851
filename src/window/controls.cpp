// The one place where a row of the control tables becomes a widget.
#include "window/controls.h"

#include "platform/paths.h"
#include "platform/text.h"
#include "shell/control_tables.h"
#include "shell/measure_fields.h"
#include "window/wheel_guard.h"

namespace kv {

namespace {

// A control that no table knows is a fault of this program, and a test finds it by its empty caption.
const ControlRow& RowOf(std::string_view form, std::string_view name)
{
    static const ControlRow unknown{};
    const ControlRow* const row = FindControl(form, name);
    return row != nullptr ? *row : unknown;
}

QString WithMnemonic(const ControlRow& row)
{
    return WithAltLetter(row.Caption, row.Mnemonic);
}

template <class Widget> Widget* Named(Widget* widget, const ControlRow& row, std::string_view name)
{
    widget->setObjectName(Shown(name));
    if (!row.Accessible.empty())
        widget->setAccessibleName(Shown(row.Accessible));
    else if (!row.Caption.empty())
        widget->setAccessibleName(Shown(row.Caption));
    if (!row.ShownByDesign)
        widget->setVisible(false);
    return widget;
}

} // namespace

QString Shown(std::string_view ansi)
{
    const std::string utf8 = Utf8FromAnsi(ansi);
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string Ansi(const QString& shown)
{
    return AnsiFromUtf8(shown.toStdString());
}

QString ShownAsPath(std::string_view path)
{
    return Shown(ShownPath(path));
}

std::string PathTyped(const QString& shown)
{
    const std::string typed = shown.toStdString();
    return Trim(typed).empty() ? std::string() : FromHostPath(typed);
}

QString CaptionOf(std::string_view form, std::string_view name)
{
    return WithMnemonic(RowOf(form, name));
}

QString WithAltLetter(std::string_view caption, std::string_view letter)
{
    QString text = Shown(caption);
    text.replace(QLatin1Char('&'), QLatin1String("&&"));
    const qsizetype place = letter.empty() ? -1 : text.indexOf(Shown(letter));
    if (place >= 0)
        text.insert(place, QLatin1Char('&'));
    return text;
}

QPushButton* ControlMaker::Button(std::string_view name) const
{
    const ControlRow& row = RowOf(Form, name);
    return Named(new QPushButton(WithMnemonic(row)), row, name);
}

QCheckBox* ControlMaker::Check(std::string_view name) const
{
    const ControlRow& row = RowOf(Form, name);
    auto* const check = new QCheckBox(WithMnemonic(row));
    check->setChecked(row.Default == "on");
    return Named(check, row, name);
}

QRadioButton* ControlMaker::Radio(std::string_view name) const
{
    const ControlRow& row = RowOf(Form, name);
    auto* const radio = new QRadioButton(WithMnemonic(row));
    radio->setChecked(row.Default == "on");
    return Named(radio, row, name);
}

QLineEdit* ControlMaker::Text(std::string_view name) const
{
    const ControlRow& row = RowOf(Form, name);
    return Named(new QLineEdit(Shown(row.Default)), row, name);
}

QComboBox* ControlMaker::Combo(std::string_view name) const
{
    auto* const box = new QComboBox;
    GuardFromWheel(box);
    return Named(box, RowOf(Form, name), name);
}

QLabel* ControlMaker::Label(std::string_view name) const
{
    const ControlRow& row = RowOf(Form, name);
    return Named(new QLabel(Shown(row.Caption)), row, name);
}

QGroupBox* ControlMaker::Frame(std::string_view name) const
{
    const ControlRow& row = RowOf(Form, name);
    return Named(new QGroupBox(Shown(row.Caption)), row, name);
}

void ControlMaker::Dress(QWidget* widget, std::string_view name) const
{
    Named(widget, RowOf(Form, name), name);
}

QLabel* ControlMaker::Caption(QWidget* field) const
{
    const ControlRow& row = RowOf(Form, Ansi(field->objectName()));
    auto* const label = new QLabel(WithMnemonic(row));
    label->setBuddy(field);
    if (!row.ShownByDesign)
        label->setVisible(false); // the other way round it would be a window until it has a parent
    return label;
}

std::string Indexed(std::string_view name, int index)
{
    return std::string(name) + "(" + WholeText(index) + ")";
}

QString WrappedTip(QString text)
{
    qsizetype line = 0, blank = -1;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] == QLatin1Char('\n')) {
            line = at + 1;
            blank = -1;
        } else if (text[at] == QLatin1Char(' ')) {
            blank = at;
        }
        if (at - line < TipLetters || blank < line)
            continue;
        text[blank] = QLatin1Char('\n');
        line = blank + 1;
    }
    return text;
}

void ShowTips(QWidget& root, std::string_view form, bool on)
{
    for (const TipRow& row : CursorTips()) {
        if (row.Form != form)
            continue;
        if (auto* const widget = root.findChild<QWidget*>(Shown(row.Name)))
            widget->setToolTip(on ? WrappedTip(Shown(TipText(row))) : QString());
    }
    for (QLineEdit* const field : root.findChildren<QLineEdit*>()) {
        const std::string unit = UnitOfField(form, Ansi(field->objectName()));
        if (unit.empty())
            continue;
        const QString named = QStringLiteral("Unit: ") + Shown(unit);
        const QString tip = field->toolTip();
        field->setToolTip(!on ? QString() : tip.isEmpty() ? named : tip + QLatin1Char('\n') + named);
    }
}

} // namespace kv
