// The default settings section of the main window: Frame2 with all that a drawing can override, each
// control joined with its field of the settings.
#pragma once

#include <array>

#include <QGridLayout>

#include "window/bindings.h"
#include "window/controls.h"

namespace kv {

class DefaultSettings {
  public:
    DefaultSettings();

    void Show(); // all fields, and which frames the control system has
    // The boxes of the sequence, once the settings are loaded: a letter that is none leaves its box.
    void ShowSequence();

    QGroupBox *Frame2, *Frame3;
    // The dialogs come back when they are closed; the window shows what has changed.
    std::function<void()> DialogClosed;

  private:
    QGroupBox* MakeHbdFrame();
    QGroupBox* MakeProfileFrame();
    QGroupBox* MakeLeadFrame();
    QGroupBox* MakeOffsetFrame();
    QGroupBox* MakeOptimizerFrame();
    QGroupBox* MakeOperationFrame();
    QGroupBox* MakeSortFrame();
    QGroupBox* MakeButtons();
    QCheckBox* Bound(std::string_view name, Int& field);
    QCheckBox* Bound(std::string_view name, bool& field);
    void AddField(QGridLayout* grid, int row, std::string_view name, std::string& field);
    void StoreBoxes();

    Bindings Fields;
    std::array<QComboBox*, 4> Sq{};
};

} // namespace kv
