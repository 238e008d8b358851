// Which lines of a job's programs come from which entities of its drawing.
#pragma once

#include <string>

#include "platform/numbers.h"
#include "scene/origins.h"

namespace kv {

// While the drawing's entities are there: when its programs are written.
void TakeOrigins();
// When it is read: nothing is known.
void ForgetOrigins();
// Once, of the conversion that TakeOrigins was called in.
DrawingOrigins OriginsOfRun();
// UTF-8: "CIRCLE on VBORE_D5, line 340, handle 2A".
std::string EntityText(Long drawn);

} // namespace kv
