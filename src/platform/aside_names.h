// Names of the copies that are written beside the files they will replace: ".kv-PROCESS-MACHINE-N.tmp".
// They say whose they are, so that what a process left behind can be told from what another one is about
// to move, also in a folder that machines share.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// So begin the names of all files that programs agree on among themselves: copies, locks, journals. They are
// spelled in one way alone.
constexpr std::string_view OwnNameHead = ".kv-";

std::string AsideName(unsigned counter); // of this process

enum class AsideOwner {
    None,      // the name is not one of these: the file is somebody's own
    Runs,      // this process, or another one of this machine
    Ended,     // a process of this machine; also one of an earlier version, which named no machine
    Elsewhere, // a process of another machine; nobody can ask for it from here
};
AsideOwner OwnerOfAside(std::string_view name);

// A copy lives for seconds. One of another machine is nobody's any more after a day.
constexpr long long LongestAsideSeconds = 24 * 60 * 60;

} // namespace kv
