// Widgets made from the tables of the controls: name, caption with its Alt key, designed value,
// accessible name. A widget's object name is its control's name.
#pragma once

#include <string>
#include <string_view>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QString>

namespace kv {

// CP1252 of the program to what a person sees, and back; a character that CP1252 lacks becomes "?".
QString Shown(std::string_view ansi);
std::string Ansi(const QString& shown);
// A path of the program as people see it, and what they typed as the program's; neither is completed.
QString ShownAsPath(std::string_view path);
std::string PathTyped(const QString& shown);

// The caption of a control as a widget takes it: with "&" before its Alt letter.
QString CaptionOf(std::string_view form, std::string_view name);

// Makes the controls of one form.
struct ControlMaker {
    std::string_view Form;

    QPushButton* Button(std::string_view name) const;
    QCheckBox* Check(std::string_view name) const;
    QRadioButton* Radio(std::string_view name) const;
    QLineEdit* Text(std::string_view name) const;
    QComboBox* Combo(std::string_view name) const;
    QLabel* Label(std::string_view name) const;
    QGroupBox* Frame(std::string_view name) const;
    // Any other widget: its name, accessible name and visibility.
    void Dress(QWidget* widget, std::string_view name) const;
    // The label that stands beside a text or combo, with the Alt key that leads to it.
    QLabel* Caption(QWidget* field) const;
};

// A caption as a widget takes it: an ampersand of its own is doubled, the Alt letter gets one.
QString WithAltLetter(std::string_view caption, std::string_view letter);

// Name with its index: "DXFPath(1)".
std::string Indexed(std::string_view name, int index);

// Sets or clears the tips of the controls of one form that stand below `root`.
// In lines of at most 60 letters, where it has blanks; no letter is added or lost.
constexpr int TipLetters = 60;
QString WrappedTip(QString text);
void ShowTips(QWidget& root, std::string_view form, bool on);

} // namespace kv
