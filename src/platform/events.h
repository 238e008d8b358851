// The event pump: called at the points where a run can be aborted or a window must breathe.
#pragma once

namespace kv {

struct EventHooks {
    void (*Pump)() = nullptr;
};
extern EventHooks Events;

inline void DoEvents()
{
    if (Events.Pump != nullptr)
        Events.Pump();
}

} // namespace kv
