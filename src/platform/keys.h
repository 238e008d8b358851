// Keystrokes into the window that has the focus, for outside programs that know no other way.
#pragma once

#include <string_view>

#include "platform/numbers.h"

namespace kv {

struct KeyHooks {
    void (*Send)(std::string_view keys, bool wait) = nullptr; // wait: until the keys are handled
    Long (*FocusedTitleLength)() = nullptr;
};
extern KeyHooks Keys;

void SendKeystrokes(std::string_view keys, bool wait); // nothing without a front end
Long FocusedTitleLength();                             // 0 without a front end

// The hooks that type into real windows; empty where the host knows no such thing. Notation: "^", "%"
// and "+" hold Ctrl, Alt and Shift for the next key, "{TAB}", "{F4}" and the like name keys, a carriage
// return is Enter, other control characters are Ctrl and their letter.
KeyHooks SystemKeys();

} // namespace kv
