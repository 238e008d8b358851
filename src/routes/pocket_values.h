// What the pockets of all forms share: the mark that makes an outline a pocket, its pitch, the side
// of the tool, and the report line of a pocket that cannot be cleared.
#pragma once

#include <string_view>

#include "state/run.h"

namespace kv {

enum class PocketSide { Left, Right }; // G41, G42

// OscZ of an EXCAV layer is below zero: minus the pitch less one.
inline bool MarksPocket(Single oscZ)
{
    return oscZ < 0;
}
// Drawing units between two ways of the tool; 0 or below where neither the layer nor the tool tells it.
double PocketPitch(Single oscZ, const Text<10>& comp);
// The compensation with its code exchanged; what stands behind the code stays.
Text<10> CompOnSide(const Text<10>& comp, PocketSide side);
// Whether the layer of a route pass is one for pockets.
bool IsExcavation(Long pass);
// Report lines that name the layer of a pocket: what became of it, and that it stays as it was drawn.
void TellOfPocket(Long pass, std::string_view what);
void ReportUncleared(Long pass);

} // namespace kv
