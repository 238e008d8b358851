#include "routes/pocket_values.h"

#include <cmath>

#include "platform/text.h"
#include "routes/route_runs.h"
#include "state/report.h"

namespace kv {

namespace {

constexpr Long CompNumberStart = 6; // "G42 R5": the tool radius
constexpr std::size_t CompCodeLength = 3;

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

bool IsExcavation(Long pass)
{
    return Holds(ShownLayerOfPass(pass), "EXCAV");
}

void TellOfPocket(Long pass, std::string_view what)
{
    ReportMessage(1, "Layer " + ShownLayerOfPass(pass) + ": " + std::string(what));
}

void ReportUncleared(Long pass)
{
    TellOfPocket(pass, "the pocket is not cleared");
}

} // namespace kv
