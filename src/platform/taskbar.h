// The program's button on the task list of the desktop, where the system shows progress on it.
#pragma once

#include <cstdint>

namespace kv {

// `window`: the window's own number of the system. A total of 0 takes the progress away; with failures it is
// red. A system without such a button does nothing, and so does one that refuses: it is an ornament.
void ShowTaskbarProgress(std::uintptr_t window, long long done, long long total, bool failures);

} // namespace kv
