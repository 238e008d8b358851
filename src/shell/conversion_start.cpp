#include "shell/conversion_start.h"
namespace kv {
void PressStart() {}
void StartConversion() {}
void ConvertDroppedDrawings(const std::vector<std::string>&) {}
void RestMeters() {}
void PrepareList() {}
} // namespace kv
