#include "shell/start_up.h"
namespace kv {
std::string InstallationFolder(std::string_view)
{
    return {};
}
bool BinHidden()
{
    return false;
}
void StartShell() {}
void StopShell() {}
std::string SequenceLetter(int)
{
    return " ";
}
int SequencePlace(char)
{
    return -1;
}
void StoreSequence(const int (&)[4]) {}
void StoreOptimizerBox(bool) {}
void StoreAlternation(bool) {}
WindowPosition LoadWindowPosition(std::string_view, bool)
{
    return {};
}
void SaveWindowPosition(std::string_view, const WindowPosition&) {}
void StartHelp(std::string_view) {}
} // namespace kv
