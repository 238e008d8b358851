// The lines of the report about entities that came to nothing.
#pragma once

#include "ledger/entity_answers.h"

namespace kv {

// One line for each rule and layer, for what no pass has reported. An entity that is lost is a RunError:
// nothing of the drawing is written then.
void ReportLeftOut(const EntityAnswers& answers);
// Layers that nearly spell a word, for a run that ends before anything is machined: a border may be among
// them.
void ReportNearWords(const EntityAnswers& answers);

} // namespace kv
