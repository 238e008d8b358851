// The host's path of a backslash path, with the fault that kept the lookup from looking: a name that was
// not found in a folder that cannot be read may be there in another spelling.
#pragma once

#include <string>
#include <string_view>

namespace kv {

struct HostPlace {
    std::string Path; // empty: it leads nowhere
    int Error = 0;    // of the system, when a folder on the way could not be looked into
};
HostPlace FindHostPlace(std::string_view path);

} // namespace kv
