// The default settings section of the main window: Frame2 with all that a drawing can override, each
// control joined with its field of the settings.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QGridLayout>

#include "window/bindings.h"
#include "window/controls.h"
#include "window/sequence_boxes.h"

namespace kv {

class DefaultSettings {
  public:
    DefaultSettings();

    void Show(); // all fields, and which frames the control system has
    // The readings of the number fields show where Frame2 of that width, in pixels, has room for them.
    void FitReadings(int width);

    QGroupBox *Frame2, *Frame3;
    std::unique_ptr<SequenceBoxes> Sequence;
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

    Bindings Fields;
    std::vector<QLabel*> Readings;
};

} // namespace kv
