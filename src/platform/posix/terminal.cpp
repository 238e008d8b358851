// Terminal test of the POSIX host. Relies on the process's standard descriptors.
#include "platform/terminal.h"

#include <fcntl.h>
#include <unistd.h>

namespace kv {

namespace {

int DescriptorOf(StandardStream stream)
{
    return stream == StandardStream::Output ? STDOUT_FILENO : STDERR_FILENO;
}

} // namespace

// Streams and terminals of this host carry UTF-8 as it is.
void PrepareStreams() {}
void RestoreStreams() {}

bool ReachesCaller(StandardStream stream)
{
    return fcntl(DescriptorOf(stream), F_GETFD) != -1;
}

bool IsTerminal(StandardStream stream)
{
    return isatty(DescriptorOf(stream)) == 1;
}

} // namespace kv
