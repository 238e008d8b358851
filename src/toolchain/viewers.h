// The control's viewers and editors: which program shows a part, what stands in its TPA.INI, and the
// wait until it has ended.
#pragma once

#include <string>
#include <string_view>

#include "platform/numbers.h"
#include "platform/processes.h"

namespace kv {

// Starts a program and waits GraphicDelay seconds. 0, and a box, when it cannot start.
Long LaunchProgram(const ProgramCall& command);
// Handle of the editor of a Genesis Evolution program, 0 when none starts. `path` names the program
// for a viewer of the settings alone.
Long ShowEvolutionProgram(std::string_view path);
// The same for the viewer of the other controls.
Long ShowProgramGraphic(std::string_view path);
// Hides the main window until the process has ended.
void WaitForExternalProgram(Long handle);

// The folder of the control in a program path: up to and including "WINNER90" and the character behind
// it; with "CNC90" alone the first eight characters. A path without either has none: no file of a control
// is to appear there.
std::string ControlFolderOf(std::string_view programPath);
// "Exec" = 0: the control's viewer opens as by hand again.
void ResetViewerMode(std::string_view controlFolder);
// Enters this program as the editor's converter.
void RegisterWithEditor();

// As at program start.
void ResetViewers();

} // namespace kv
