// The host's path of a backslash path, with the fault that kept the lookup from looking: a name that was
// not found in a folder that cannot be read may be there in another spelling.
#pragma once

#include <string>
#include <string_view>

#include <sys/stat.h>

namespace kv {

struct HostPlace {
    std::string Path; // empty: it leads nowhere
    int Error = 0;    // of the system, when a folder on the way could not be looked into
    // What the lookup saw, so that nobody asks the system again.
    bool Plain = false;    // something that is no link, with the status below
    bool New = false;      // nothing of that name in any spelling, in a folder that is there
    struct stat Status {}; // of Plain
};
HostPlace FindHostPlace(std::string_view path);

} // namespace kv
