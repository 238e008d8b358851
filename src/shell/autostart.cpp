#include "shell/autostart.h"
namespace kv {
void AutostartTick() {}
void PrepareRun() {}
void FinishJob(std::string_view, std::string_view) {}
} // namespace kv
