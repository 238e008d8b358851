// Questions and message boxes: hands them to the front end's hooks.
// Without hooks nothing is shown, and a question is answered No, the answer that changes nothing.
#include "platform/dialogs.h"

namespace kv {

DialogHooks Dialogs;

void ShowBox(std::string_view text, std::string_view title, BoxIcon icon)
{
    if (Dialogs.Box != nullptr)
        Dialogs.Box(text, title, icon);
}

bool AskYesNo(std::string_view text, std::string_view title, std::string_view detail)
{
    return Dialogs.Ask != nullptr && Dialogs.Ask(text, title, detail);
}

} // namespace kv
