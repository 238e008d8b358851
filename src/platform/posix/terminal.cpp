// Terminal test of the POSIX host. Relies on the process's standard descriptors.
#include "platform/terminal.h"

#include <unistd.h>

namespace kv {

// Streams and terminals of this host carry UTF-8 as it is.
void PrepareStreams() {}
void RestoreStreams() {}

bool IsTerminal(StandardStream stream)
{
    return isatty(stream == StandardStream::Output ? STDOUT_FILENO : STDERR_FILENO) == 1;
}

} // namespace kv
