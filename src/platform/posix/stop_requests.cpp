// Stop requests on the POSIX host: SIGINT, SIGTERM, SIGHUP. A terminal that closes often sends SIGHUP twice,
// once by its shell and once by the system, so a hangup never counts as the second request. A program that
// was started to outlive its terminal keeps SIGHUP ignored.
#include "platform/stop_requests.h"

#include <csignal>

namespace kv {

namespace {

volatile std::sig_atomic_t Requested = 0;

void OnLaterHangup(int) {}

void OnStopRequest(int)
{
    Requested = 1;
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    std::signal(SIGHUP, OnLaterHangup);
}

bool IsIgnored(int signal)
{
    struct sigaction now {};
    return ::sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

} // namespace

void ListenForStopRequests()
{
    std::signal(SIGINT, OnStopRequest);
    std::signal(SIGTERM, OnStopRequest);
    if (!IsIgnored(SIGHUP))
        std::signal(SIGHUP, OnStopRequest);
}

bool StopRequested()
{
    return Requested != 0;
}

} // namespace kv
