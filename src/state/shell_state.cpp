// The state of the shell and the ways by which a window hears of it.
#include "state/shell_state.h"

#include "platform/text.h"
#include "state/report.h"

namespace kv {

ShellState Shell;
ShellHooks ShellWindow;

void ShellChanged()
{
    if (ShellWindow.Changed != nullptr)
        ShellWindow.Changed();
}

void NoteLeft(std::string_view line)
{
    if (!line.empty() && line.front() == MarkRed)
        line.remove_prefix(1);
    Shell.LeftUndone.emplace_back(line);
}

void GiveFocus(FocusPlace place)
{
    if (ShellWindow.Focus != nullptr)
        ShellWindow.Focus(place);
}

bool HasSwitch(std::string_view name)
{
    return Holds(UpperCase(Shell.CommandLine), name);
}

} // namespace kv
