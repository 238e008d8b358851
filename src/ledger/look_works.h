// What each look of the drawing's entities asks for: a drawing has many entities and few looks.
#pragma once

#include <string_view>
#include <vector>

#include "ledger/layer_words.h"
#include "platform/numbers.h"

namespace kv {

struct LookWork {
    std::string_view Kind; // as the drawing spells it
    LayerWork Work = LayerWork::Nothing;
    bool Asks = false;   // for work at the machine
    bool IsText = false; // by its kind
};

class LookWorks {
  public:
    LookWorks(); // of the drawing that runs
    const LookWork& Of(Long drawn) const;

  private:
    std::vector<LookWork> Works; // by number of the look
};

} // namespace kv
