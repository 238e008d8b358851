// Controls and settings: the settings hold the value, the control shows it.
#include "window/bindings.h"

#include "shell/measure_fields.h"
#include "window/controls.h"
#include "window/number_fields.h"

namespace kv {

void Bindings::Check(QCheckBox* box, Int& field)
{
    Add([box, &field] { box->setChecked(field != 0); });
    QObject::connect(box, &QCheckBox::toggled, box, [this, &field](bool on) {
        if (!Showing)
            field = on ? 1 : 0;
    });
}

void Bindings::Check(QCheckBox* box, bool& field)
{
    Add([box, &field] { box->setChecked(field); });
    QObject::connect(box, &QCheckBox::toggled, box, [this, &field](bool on) {
        if (!Showing)
            field = on;
    });
}

void Bindings::Text(QLineEdit* text, std::string& field)
{
    Add([text, &field] { text->setText(Shown(field)); });
    QObject::connect(text, &QLineEdit::textEdited, text,
                     [&field](const QString& typed) { field = Ansi(typed); });
}

void Bindings::Number(QLineEdit* text, QLabel* reading, std::string_view form, std::string& field)
{
    const auto show = [text, reading, form, &field] { ShowReading(*text, *reading, form, field); };
    Add([text, show, &field] {
        text->setText(Shown(field));
        show();
    });
    QObject::connect(text, &QLineEdit::textEdited, text, [show, &field](const QString& typed) {
        field = WithDecimalPoint(Ansi(typed), CommaIsDecimal());
        show();
    });
}

void Bindings::Path(QLineEdit* text, std::string& field)
{
    Add([text, &field] { text->setText(ShownAsPath(field)); });
    QObject::connect(text, &QLineEdit::textEdited, text,
                     [&field](const QString& typed) { field = PathTyped(typed); });
}

void Bindings::Add(std::function<void()> show)
{
    Shows.push_back(std::move(show));
}

void Bindings::Show()
{
    Showing = true;
    for (const std::function<void()>& show : Shows)
        show();
    Showing = false;
}

} // namespace kv
