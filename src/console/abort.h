// Ctrl-C is the abort button of the console, and so are a termination request and a terminal that closes: the
// first one ends the drawing and the list at the next place where the run looks, a second one ends the
// program at once.
#pragma once

namespace kv {

// Listens for what asks from outside and sets the event pump.
void InstallAbort();
// The same for the unattended mode: the first one also ends its loop.
void InstallWatchAbort();
bool AbortAsked();

} // namespace kv
