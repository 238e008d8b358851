// Rules of the dialogs, without a toolkit: Setup, Tool Substitution, Optimizer Settings.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/numbers.h"
#include "state/settings.h"

namespace kv {

// What of the Setup dialog is on, by the settings as they stand.
struct SetupView {
    std::array<bool, ControlSystems> PathShown{}; // DXFPath(i) and GCodePath(i)
    bool GaapEnabled = true, PfmEnabled = true, BLimEnabled = true;
    bool GraphicShown = true; // GAAP and GAMP
};
SetupView ViewOfSetup();

// Opening, before the dialog shows; OK; Cancel. Timer1 is off in between. OK and Cancel let events run
// and give the focus away, so the dialog is hidden first. Behind Cancel the grid of the HBD tools is to be
// read again (LoadHbdTools); the fields of the cut list keep their edits until the program ends.
void OpenSetup();
// Without tools (null: the table could not be read) their file stays as it is.
void AcceptSetup(const GridCells* hbdTools);
void CancelSetup();
void TellIfNotWhole(); // of dialogs that load again or store

void ClickAutoStart(int radio); // 0 AS0, 1 AS1, 2 AS2
int AutoStartRadio();
void ClickSystem(int system); // FlgDDS
// Evolution has no graphic: its two boxes are cleared.
void ClearGraphicForEvolution();

// A path field was left. `trimmed`: DXFPath alone is trimmed. Gives the text that the field keeps.
std::string LeavePathField(std::string_view text, bool trimmed);
// Asks for each missing folder whether it is to be made. The path with its final backslash.
std::string CheckPath(std::string_view path);
// A chosen folder as the field's text.
std::string BrowsedPath(std::string_view chosen);

// The sort mode of the Evolution: 0 to 4; the last that is on, 0 when none is.
void ClickEvolutionSort(int index);
int EvolutionSort();
// Caption of the selected mode, for LabOpt; empty when none is on.
std::string ShowSelectedEvolutionSort();
bool GenericSortingAvailable();

// Tool substitution: OK writes, Cancel reads again.
void OpenToolSub();
void AcceptToolSub();
void CancelToolSub();
std::string ToolSubCell(int row, int column);
void SetToolSubCell(int row, int column, std::string_view text);

} // namespace kv
