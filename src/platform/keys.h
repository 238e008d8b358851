// Keystrokes into the window that has the focus, for outside programs that know no other way.
#pragma once

#include <string_view>

#include "platform/numbers.h"

namespace kv {

struct KeyHooks {
    void (*Send)(std::string_view keys) = nullptr;
    Long (*FocusedTitleLength)() = nullptr;
};
extern KeyHooks Keys;

void SendKeystrokes(std::string_view keys); // nothing without a front end
Long FocusedTitleLength();                  // 0 without a front end

} // namespace kv
