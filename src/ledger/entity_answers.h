// The ledger of a drawing: what became of each of its entities. It is worked out at the end of a run, from
// the records and the program lines alone, so that a pass that forgets something is found.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/numbers.h"
#include "state/message_numbers.h"

namespace kv {

enum class EntityFate : unsigned char {
    Machined,     // lines of a program come from it
    Border,       // the panel was taken from it
    Read,         // a text that set something, or a mark that says where a route begins
    Left,         // by a rule, which has the number of a message
    MeansNothing, // its layer has no word of the language
    Unreached,    // the conversion ended before
    Lost          // no rule explains it: a fault of this program
};
std::string FateName(EntityFate fate); // "machined"

struct EntityAnswer {
    Message Why = Message::None; // of Left, and of Machined where the work is not what the layer asks for
    std::uint32_t Program = 0;   // of ProgramTraces, of the first line
    Long FirstLine = 0;          // in that file, from 1
    Long Lines = 0;              // in all programs
    EntityFate Fate = EntityFate::Unreached;
};

// By number of the entity, as it stands on each layer state; parts, such as vertices, have no answer of their
// own. Valid until the next drawing. Entities that came to nothing have few different answers and may be a
// million: they share one answer each time, and an entity takes 4 bytes.
class EntityAnswers {
  public:
    explicit EntityAnswers(Long last) : Rows(static_cast<std::size_t>(last) + 1), Answers(1) {}
    const EntityAnswer& operator[](std::size_t drawn) const { return Answers[Rows[drawn]]; }
    bool HasAny(EntityFate fate) const;

    // To be filled in for this entity alone; valid until the next call.
    EntityAnswer& Own(Long drawn);
    // For an entity that has no answer yet.
    void Share(Long drawn, EntityFate fate, Message why)
    {
        const EntityAnswer& last = Answers[LastShared]; // neighbours mostly have one answer
        if (LastShared == 0 || last.Fate != fate || last.Why != why)
            FindShared(fate, why);
        Rows[static_cast<std::size_t>(drawn)] = LastShared;
    }

  private:
    void FindShared(EntityFate fate, Message why);

    std::vector<std::uint32_t> Rows; // by entity: its answer; 0: none yet
    std::vector<EntityAnswer> Answers;
    std::map<std::pair<EntityFate, Message>, std::uint32_t> Shared;
    std::uint32_t LastShared = 0;
};
EntityAnswers AnswersOfRun();
// Whether the number has an answer of its own.
bool AnswersForItself(Long drawn);

} // namespace kv
