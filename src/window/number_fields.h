// What a person sees of a number that is typed: beside each field what it is read as.
#pragma once

#include <string_view>

class QLabel;
class QLineEdit;

namespace kv {

// A label for the reading of a field; a layout may leave it no width.
QLabel* ReadingBeside(QLineEdit* field);
int WidthOfReading(const QLabel& reading); // that no number is wider than, in pixels
QLabel* ReadingOf(const QLineEdit* field); // the label that was made for it; null: none
// "= 12 mm"; where text is left behind the number, the label is red and has a sign, and so is the field. A
// screen reader has it with the field.
void ShowReading(QLineEdit& field, QLabel& reading, std::string_view form, std::string_view text);

// Whether the decimal sign of the person's system is a comma.
bool CommaIsDecimal();

} // namespace kv
