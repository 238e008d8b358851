// The words of a POSIX call come as people typed them, in the host's UTF-8.
#include "platform/command_words.h"

namespace kv {

std::vector<std::string> CommandWords(int argc, const char* const* argv)
{
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

} // namespace kv
