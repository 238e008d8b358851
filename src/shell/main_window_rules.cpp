#include "shell/main_window_rules.h"
namespace kv {
MainWindowLayout ArrangeMainWindow(int, const MainWindowSizes&)
{
    return {};
}
void SwitchUnits() {}
void ClickHbdGlue(bool) {}
void ClickHbdDowel(bool) {}
bool EvolutionFramesShown()
{
    return false;
}
} // namespace kv
