// The Setup dialog: paths and control system, automatic start, preferences, cut list file, tools of the
// horizontal drill. Relies on the rules of setup_rules.h and the settings in Config, which an edit
// reaches at once; leaves them saved (OK) or loaded again (Cancel).
#pragma once

#include <array>
#include <vector>

#include <QButtonGroup>
#include <QDialog>
#include <QTabWidget>

#include "state/settings.h"
#include "window/bindings.h"
#include "window/controls.h"
#include "window/grid_editor.h"

namespace kv {

class SetupDialog : public QDialog {
  public:
    explicit SetupDialog(QWidget& parent);

    void Open(); // modal; comes back when it is closed
    void accept() override;
    void reject() override;

  protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // A path that is completed and looked for when its field is left.
    struct PathField {
        QLineEdit* Edit;
        std::string* Setting;
        bool Trimmed;
    };

    QLayout* PathsPage();
    QLayout* AutoActionPage();
    QLayout* PreferencesPage();
    QLayout* CutListPage();
    QLayout* HbdPage();
    QLayout* ButtonRow();
    QGroupBox* PathFrame(std::string_view frame, std::string_view field, QPushButton* browse,
                         std::array<QLineEdit*, ControlSystems>& edits);
    QGroupBox* SystemFrame();
    QGroupBox* UnitModeFrame();
    QLineEdit* NumberText(std::string_view name, std::string& setting);
    QLayout* WithReading(QLineEdit* edit) const;
    void SetTabOrder();

    void ShowSettings(); // all controls but the grid
    void ShowTools();    // the grid
    void ShowView();     // what is enabled and in sight
    void Browse(std::string_view button, QLineEdit* edit, std::string& setting);
    void SettleSoon();
    void SettlePaths();
    void LeaveField(const PathField& field);

    ControlMaker Maker{"SetUp"};
    Bindings Bound;
    QTabWidget* Tabs = nullptr;
    std::array<QLineEdit*, ControlSystems> DxfPath{}, GCodePath{};
    QPushButton *BrowseDxf = nullptr, *BrowseGCode = nullptr, *BrowseHbd = nullptr;
    QGroupBox* SystemBox = nullptr;
    QButtonGroup* Systems = nullptr;
    QButtonGroup* AutoStarts = nullptr;
    QButtonGroup* UnitModes = nullptr;
    QButtonGroup* CutListUnits = nullptr;
    QCheckBox *GraphicAuto = nullptr, *GraphicManual = nullptr, *PauseBox = nullptr;
    QLineEdit* BatchLimit = nullptr;
    QLabel* BatchLimitLabel = nullptr;
    GridEditor* Tools = nullptr;
    bool IsOpen = false;
    bool ToolsRead = false; // else what the grid shows is not the file's
    std::vector<PathField> PathFields;
    std::vector<QLineEdit*> LeftFields; // left, not yet looked after
};

} // namespace kv
