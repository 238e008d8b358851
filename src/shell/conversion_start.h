// The manual way into the conversion: the selected rows of the file list, or drawings that were
// dropped on it.
#pragma once

#include <string>
#include <vector>

namespace kv {

// `Start` is pressed, then released. Nothing happens while jobs run.
void PressStart();
void StartConversion();
// The same for drawings by their full paths.
void ConvertDroppedDrawings(const std::vector<std::string>& paths);

// Meters to 0, their timer off: after each file.
void RestMeters();
// Before the first job of a list: report, program list, failed files, switches of the window.
void PrepareList();

} // namespace kv
