#include "toolchain/viewers.h"
namespace kv {
Long LaunchProgram(std::string_view)
{
    return 0;
}
Long ShowEvolutionProgram(std::string_view)
{
    return 0;
}
Long ShowProgramGraphic(std::string_view)
{
    return 0;
}
void WaitForExternalProgram(Long) {}
std::string ControlFolderOf(std::string_view)
{
    return {};
}
void ResetViewerMode(std::string_view) {}
void RegisterWithEditor() {}
void ResetViewers() {}
} // namespace kv
