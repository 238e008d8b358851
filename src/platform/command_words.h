// The words that the program was called with, in UTF-8 on every host.
#pragma once

#include <string>
#include <vector>

namespace kv {

// Behind the program's own name. `argc` and `argv` are those of main(), for hosts that give them whole.
std::vector<std::string> CommandWords(int argc, const char* const* argv);

} // namespace kv
