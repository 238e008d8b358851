// Where in the drawing the records of a run come from. Each entity of the drawing has a number, and each
// record carries it through every pass; a record of several entities carries a number below 0, which stands
// for all of them.
#pragma once

#include <compare>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/numbers.h"
#include "state/messages.h"
#include "state/records.h"

namespace kv {

// Kept small, since a drawing may have a million entities that mean nothing. The polylines of vertices stand
// apart, since most entities have none: see WholeOf.
struct DrawnEntity {
    Long Line = 0;  // of the file, where its kind stands
    Long Look = 0;  // number of its kind and layer
    Text<8> Handle; // see HandleOf
};
extern RecordArray<DrawnEntity> DrawnEntities; // from 1, in the order of the file

// What many entities share: numbers of names, as the drawing spells them.
struct EntityLook {
    Long Kind = 0;
    Long Layer = 0;
    Long State = 0; // of its layer's name as the passes know it
    Long Named = 0; // of the name by which an instruction renames its layer, else of the layer's own
    auto operator<=>(const EntityLook&) const = default;
};
const EntityLook& LookOf(Long drawn);
Long LastLook(); // looks are numbered from 0, which has no names
const EntityLook& LookOfNumber(Long number);
// Group 5, as written, up to 16 characters; empty where the drawing gives none.
std::string HandleOf(Long drawn);
// Of the entity that was read last.
void TakeHandle(std::string_view handle);
// An entity whose layer asks for several operations stands in the list once for each of them. The one as
// drawn; 0: this one is.
Long CopyOf(Long drawn);

// Before a drawing is read.
void ForgetDrawnEntities();
// An entity's kind and layer as read. `named`: the layer of its last part, which may be another one.
void NameDrawn(Long drawn, Long kind, Long layer, Long named);
// The name by which an instruction renames the layer of a record's entity.
void RenameDrawn(Long drawn, Long named);
// The layers of all, from Entities as the layer rules have rewritten them; notes which layer as drawn each
// comes from.
void NameLayerStates();
// The kind of a record, uncut.
std::string_view UncutKind(const DxfEntity& entity);
// The polyline of a vertex or SEQEND, which is read behind it; 0: none.
void NoteOwner(Long drawn, Long owner);
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
