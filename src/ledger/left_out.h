// Why an operation of the drawing is in no program: the rule that took it away, as the number of the message
// that tells of it.
#pragma once

#include <vector>

#include "platform/numbers.h"
#include "state/message_numbers.h"

namespace kv {

// The letter of the block that an entity's work stands in: V, H, G or R.
char BlockLetter(Long drawn);

// Two bores of which the optimizer has kept one.
struct TwinBores {
    Single Depth = 0, OtherDepth = 0; // drawing units; the other one is drilled
    bool Found = false;
};
TwinBores TwinsOf(Long drawn);

class LeftOutRules {
  public:
    LeftOutRules(); // looks through the records once
    // Of an entity that has records and no program line. None: no rule is known, it is lost.
    Message WhyLeftOut(Long drawn) const;
    // Of an entity without records on a layer that asks for work.
    Message WhyWithoutWork(Long drawn) const;

  private:
    Message WhyNotAfterOperations(Long drawn) const;
    Message WhyNotWritten(Long drawn) const;
    Message WhyNotInAStop(Long drawn) const;

    using EntitySet = std::vector<bool>; // by whole entity
    EntitySet HalfGrooves;               // with a record that waits for its other half
    EntitySet AskewGrooves;
    EntitySet StopsWithoutTools;
    EntitySet MirrorImages; // bores that the horizontal drilling machine makes when the panel is turned round
};

} // namespace kv
