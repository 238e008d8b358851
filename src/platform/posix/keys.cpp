// Keystrokes on the POSIX host: there is no window of an outside program to type into.
#include "platform/keys.h"

namespace kv {

KeyHooks SystemKeys()
{
    return {};
}

} // namespace kv
