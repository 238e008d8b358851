// The four boxes of the order of operation classes. Each change is stored at once; when the boxes are left
// with an order that lacks a class which it had before, the person is asked whether that is meant.
#pragma once

#include <array>
#include <string>

#include <QObject>

class QComboBox;
class QHBoxLayout;
class QWidget;

namespace kv {

class SequenceBoxes : public QObject {
  public:
    explicit SequenceBoxes(QHBoxLayout& row);

    // Once the settings are loaded: a letter that is none leaves its box.
    void ShowStored();
    // Asks what is to be asked now, before something is done by the order.
    void Settle();

  private:
    std::array<int, 4> Places() const;
    void Store();
    bool Holds(const QWidget* widget) const;
    void FocusMoved(const QWidget* from, const QWidget* to);
    void SettleSoon();

    std::array<QComboBox*, 4> Boxes{};
    std::array<int, 4> Entered{}; // the places when the boxes were entered
    std::string EnteredSequence;
    bool Open = false; // entered, and not asked about since
};

} // namespace kv
