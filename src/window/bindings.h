// Joins controls with the settings behind them: a change by hand goes to the field at once, and Show
// brings all fields to their controls again (after a load, a unit switch, a cancelled dialog).
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

#include "platform/numbers.h"

namespace kv {

class Bindings {
  public:
    void Check(QCheckBox* box, Int& field); // 0 or 1
    void Check(QCheckBox* box, bool& field);
    void Text(QLineEdit* text, std::string& field);
    // A number field of that form, which its object's name tells. `reading` shows what it is read as.
    void Number(QLineEdit* text, QLabel* reading, std::string_view form, std::string& field);
    // A path: shown in the host's form, kept in the program's as soon as the field is left.
    void Path(QLineEdit* text, std::string& field);
    // Any other control: how it shows its field.
    void Add(std::function<void()> show);
    void Show();

  private:
    std::vector<std::function<void()>> Shows;
    bool Showing = false; // changes by Show are nobody's click
};

} // namespace kv
