// What asks a program to end from outside: Ctrl-C, a termination request, a terminal or console window that
// closes, the end of the session. The first one is a wish, which the program obeys at its next look; one more
// ends it at once, in the system's own way.
#pragma once

namespace kv {

// From now on the first request does no more than StopRequested says.
void ListenForStopRequests();
bool StopRequested();

} // namespace kv
