// Where in the drawing the records of a run come from. Each entity of the drawing has a number, and each
// record carries it through every pass; a record of several entities carries a number below 0, which stands
// for all of them.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/numbers.h"
#include "state/messages.h"
#include "state/records.h"

namespace kv {

struct DrawnEntity {
    Long Line = 0;   // of the file, where its kind stands
    Long Owner = 0;  // the polyline of a vertex; 0: none
    Text<16> Handle; // group 5, as written; blank where the drawing gives none
    Long Kind = 0;   // numbers of names, as the drawing spells them
    Long Layer = 0;
    // An entity whose layer asks for several operations stands in the list once for each of them.
    Long CopyOf = 0; // the one as drawn; 0: this one is
    Long State = 0;  // number of its layer's name as the passes know it
    Long Named = 0;  // that of the name by which an instruction renames its layer, else of the layer's own
};
extern RecordArray<DrawnEntity> DrawnEntities; // from 1, in the order of the file

// Before a drawing is read.
void ForgetDrawnEntities();
// Kinds and layers of all, from Entities as they were read.
void NameDrawnEntities();
// The layers of all, from Entities as the layer rules have rewritten them; notes which layer as drawn each
// comes from.
void NameLayerStates();
// The entity whose part it is, a vertex's polyline say, in the same operation.
Long WholeOf(Long drawn);
// The whole entity as it is drawn.
Long DrawnAs(Long drawn);
// Numbers for records that are copied for a further operation, one after the other in their order.
class DrawnCopies {
  public:
    Long Of(Long drawn);

  private:
    Long Last = 0, CopyOfLast = 0;
    Long Whole = 0, CopyOfWhole = 0; // the polyline whose vertices follow
};
// Layer and kind as the drawing spells them.
std::string DrawnLayerOf(Long drawn);
std::string DrawnKindOf(Long drawn);
// A message's values with the "line" and "handle" of the first entity that the number stands for.
MessageValues WithPlace(MessageValues values, Long drawn);
// The entities of both, as one number.
Long DrawnTogether(Long drawn, Long other);
// The entities that a record's number stands for, without 0, each once.
std::vector<Long> EntitiesOf(std::span<const Long> drawn);
std::vector<Long> EntitiesOf(Long drawn);
Long DrawnTogether(std::span<const Long> drawn);

} // namespace kv
