// The state of the shell and the ways by which a window hears of it.
#include "state/shell_state.h"

#include "platform/text.h"

namespace kv {

ShellState Shell;
ShellHooks ShellWindow;

void ShellChanged()
{
    if (ShellWindow.Changed != nullptr)
        ShellWindow.Changed();
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
