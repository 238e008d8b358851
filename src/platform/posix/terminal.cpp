// Terminal test of the POSIX host. Relies on the process's standard descriptors.
#include "platform/terminal.h"

#include <unistd.h>

namespace kv {

bool IsTerminal(StandardStream stream)
{
    return isatty(stream == StandardStream::Output ? STDOUT_FILENO : STDERR_FILENO) == 1;
}

} // namespace kv
