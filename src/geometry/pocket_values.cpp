#include "geometry/pocket_values.h"

#include <cmath>

#include "platform/text.h"
#include "shell/report.h"

namespace kv {

namespace {

constexpr Long CompNumberStart = 6; // "G42 R5": the tool radius
constexpr std::size_t CompCodeLength = 3;
constexpr Long FirstRouteRow = 4; // of the layer table: the row of pass 1

} // namespace

double PocketPitch(Single oscZ, const Text<10>& comp)
{
    const double pitch = std::fabs(static_cast<double>(oscZ)) - 1;
    if (pitch != 0)
        return pitch;
    return 2 * Val(Mid(comp.Padded(), CompNumberStart)); // one tool diameter
}

Text<10> CompOnSide(const Text<10>& comp, PocketSide side)
{
    std::string text = side == PocketSide::Left ? "G41" : "G42";
    text += comp.Padded().substr(CompCodeLength);
    return Text<10>(text);
}

void ReportUncleared(Long pass)
{
    const std::size_t row = static_cast<std::size_t>(pass) + FirstRouteRow - 1;
    const bool isRow = pass > 0 && row < Run.LayerTable.size();
    const std::string layer = isRow ? std::string(Trim(Run.LayerTable[row])) : "";
    ReportMessage(1, "Layer " + layer + ": the pocket is not cleared");
}

} // namespace kv
