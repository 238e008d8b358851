// Where in the drawing the records of a run come from. Each entity of the drawing has a number, and each
// record carries it through every pass; a record of several entities carries a number below 0, which stands
// for all of them.
#pragma once

#include <span>
#include <vector>

#include "platform/numbers.h"
#include "platform/text.h"
#include "state/records.h"

namespace kv {

struct DrawnEntity {
    Long Line = 0;   // of the file, where its kind stands
    Long Owner = 0;  // the polyline of a vertex; 0: none
    Text<16> Handle; // group 5, as written; blank where the drawing gives none
};
extern RecordArray<DrawnEntity> DrawnEntities; // from 1, in the order of the file

// Before a drawing is read.
void ForgetDrawnEntities();
// The entities of both, as one number.
Long DrawnTogether(Long drawn, Long other);
// The entities that a record's number stands for, without 0, each once.
std::vector<Long> EntitiesOf(std::span<const Long> drawn);
std::vector<Long> EntitiesOf(Long drawn);
Long DrawnTogether(std::span<const Long> drawn);

} // namespace kv
