// Readings of number fields. A label belongs to its field by its object's name.
#include "window/number_fields.h"

#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QVariant>

#include "shell/measure_fields.h"
#include "window/controls.h"
#include "window/report_model.h"

namespace kv {

namespace {

constexpr int Distance = 6; // pixels from the field
constexpr const char* ReadingProperty = "reading";
constexpr QColor LeftText(0xB0, 0x00, 0x20);

// No window is wider for it.
class Reading : public QLabel {
  public:
    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }
};

} // namespace

QLabel* ReadingBeside(QLineEdit* field)
{
    QLabel* const label = new Reading;
    label->setContentsMargins(Distance, 0, 0, 0);
    label->setObjectName(field->objectName() + QStringLiteral(".reading"));
    field->setProperty(ReadingProperty, QVariant::fromValue(static_cast<QObject*>(label)));
    return label;
}

int WidthOfReading(const QLabel& reading)
{
    return Distance + reading.fontMetrics().horizontalAdvance(QStringLiteral("= 00000.00 mm !"));
}

QLabel* ReadingOf(const QLineEdit* field)
{
    return qobject_cast<QLabel*>(field->property(ReadingProperty).value<QObject*>());
}

void ShowReading(QLineEdit& field, QLabel& reading, std::string_view form, std::string_view text)
{
    const FieldReading read = ReadField(form, Ansi(field.objectName()), text);
    const QString shown = Shown(read.Text);
    reading.setText(read.IsWhole ? shown : shown + QStringLiteral(" !"));
    QPalette palette;
    if (!read.IsWhole) {
        palette.setColor(QPalette::WindowText, ReadableOn(palette.color(QPalette::Window), LeftText));
        palette.setColor(QPalette::Text, ReadableOn(palette.color(QPalette::Base), LeftText));
    }
    reading.setPalette(palette);
    field.setPalette(palette);
    field.setAccessibleDescription(read.IsWhole ? shown
                                                : shown + QStringLiteral(", not all of it is a number"));
}

bool CommaIsDecimal()
{
    return QLocale().decimalPoint() == QLatin1String(",");
}

} // namespace kv
