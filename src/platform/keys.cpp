// Keystrokes for outside programs, by the front end's hooks.
// Without hooks no key is sent and no window has a title.
#include "platform/keys.h"

namespace kv {

KeyHooks Keys;

void SendKeystrokes(std::string_view keys, bool wait)
{
    if (Keys.Send != nullptr)
        Keys.Send(keys, wait);
}

Long FocusedTitleLength()
{
    return Keys.FocusedTitleLength != nullptr ? Keys.FocusedTitleLength() : 0;
}

} // namespace kv
