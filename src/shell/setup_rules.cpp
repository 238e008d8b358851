#include "shell/setup_rules.h"
namespace kv {
SetupView ViewOfSetup()
{
    return {};
}
void OpenSetup() {}
void AcceptSetup(const GridCells&) {}
void CancelSetup() {}
void ClickAutoStart(int) {}
int AutoStartRadio()
{
    return 0;
}
void ClickSystem(int) {}
void ClearGraphicForEvolution() {}
std::string LeavePathField(std::string_view text, bool)
{
    return std::string(text);
}
std::string CheckPath(std::string_view path)
{
    return std::string(path);
}
std::string BrowsedPath(std::string_view chosen)
{
    return std::string(chosen);
}
void ClickEvolutionSort(int) {}
int EvolutionSort()
{
    return 0;
}
std::string ShowSelectedEvolutionSort()
{
    return {};
}
bool GenericSortingAvailable()
{
    return false;
}
void OpenToolSub() {}
void AcceptToolSub() {}
void CancelToolSub() {}
std::string ToolSubCell(int, int)
{
    return {};
}
void SetToolSubCell(int, int, std::string_view) {}
} // namespace kv
