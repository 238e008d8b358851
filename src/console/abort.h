// Ctrl-C is the abort button of the console: the first one ends the drawing and the list at the
// next place where the run looks, a second one ends the program at once.
#pragma once

namespace kv {

// Sets the signal handler and the event pump.
void InstallAbort();
// The same for the unattended mode: the first one also ends its loop, and a termination request counts
// like Ctrl-C.
void InstallWatchAbort();
bool AbortAsked();

} // namespace kv
