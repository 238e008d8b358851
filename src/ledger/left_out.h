// Why an operation of the drawing is in no program: the rule that took it away, as the number of the message
// that tells of it.
#pragma once

#include "platform/numbers.h"
#include "state/message_numbers.h"

namespace kv {

// Of an entity that has records and no program line. None: no rule is known, it is lost.
Message WhyLeftOut(Long drawn);
// Of an entity without records on a layer that asks for work.
Message WhyWithoutWork(Long drawn);

} // namespace kv
