// The setting Strict: whether a drawing with a doubt in its report is refused.
#pragma once

namespace kv {

bool RefusesDoubts();
// Another word than "yes" and "no" counts as "no"; it is reported, once a drawing.
void TellUnknownStrictness();

} // namespace kv
