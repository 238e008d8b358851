// The event pump's hook; the pump itself belongs to the front end.
#include "platform/events.h"

namespace kv {

EventHooks Events;

} // namespace kv
