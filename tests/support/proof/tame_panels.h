// Random panels as a careful designer draws them: a model, and its drawing. A seed is a panel.
#pragma once

#include <string>
#include <vector>

#include "support/proof/asked.h"

namespace kv::test {

enum class Control { Cnc90 = 0, Genesis = 1, Evolution = 2 };

struct TamePanel {
    DrawnPanel Model;
    std::vector<AskedCut> Asked;
    std::string Drawing; // the whole DXF text
    Control For = Control::Cnc90;
    Corner Origin;              // as the border's layer says
    bool SeamInMidLine = false; // the setting CornerComp
};

TamePanel TamePanelOf(unsigned seed);

} // namespace kv::test
