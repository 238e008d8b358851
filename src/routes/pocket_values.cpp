#include "routes/pocket_values.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/text.h"
#include "state/report.h"

namespace kv {

namespace {

constexpr Long CompNumberStart = 6; // "G42 R5": the tool radius
constexpr std::size_t CompCodeLength = 3;
constexpr double LeastTolerance = 0.01; // drawing units

} // namespace

bool MarksPocket(Single oscZ, Long pass)
{
    return oscZ < 0 && Holds(LayerOfPass(pass), "EXCAV");
}

double PocketPitch(Single oscZ, const Text<10>& comp)
{
    const double pitch = std::fabs(static_cast<double>(oscZ)) - 1;
    return pitch != 0 ? pitch : 2 * ToolRadiusOf(comp); // one tool diameter
}

double ToolRadiusOf(const Text<10>& comp)
{
    return Val(Mid(comp.Padded(), CompNumberStart));
}

Text<10> CompOnSide(const Text<10>& comp, PocketSide side)
{
    std::string text = side == PocketSide::Left ? "G41" : "G42";
    text += comp.Padded().substr(CompCodeLength);
    return Text<10>(text);
}

double OutlineTolerance()
{
    return std::max<double>(Run.RouteTolerance, LeastTolerance);
}

void TellOfPocket(Long pass, const PlanePoint& at, MessageLine line)
{
    line.Values.emplace_back("layer", ShownLayerOfPass(pass));
    line.Values.emplace_back("place", "X" + PlainText(ToSingle(at.X)) + " Y" + PlainText(ToSingle(at.Y)));
    Tell(std::move(line));
}

void ReportUncleared(Long pass, const PlanePoint& at, MessageLine reason)
{
    if (reason.Empty())
        reason.Number = Message::PocketNotCleared;
    TellOfPocket(pass, at, std::move(reason));
}

bool HasNoRoom(Long pass, const PlanePoint& at, double pocketWidth, double toolRadius)
{
    if (!(toolRadius > 0) || pocketWidth >= 2 * toolRadius - LeastTolerance)
        return false;
    ReportUncleared(pass, at, {Message::PocketTooNarrow});
    return true;
}

void TellOfNarrowWays(Long pass, const PlanePoint& at, double pocketWidth, double smallestWay,
                      double toolRadius)
{
    const double tool = 2 * toolRadius;
    if (!(tool > 0))
        return;
    if (pocketWidth < tool)
        TellOfPocket(pass, at, {Message::PocketNarrowerThanTool});
    else if (smallestWay < tool) // a control that checks its compensation refuses it
        TellOfPocket(pass, at,
                     // Beside such a way the tool reaches 2 R from its far side.
                     {pocketWidth + smallestWay < 2 * (tool - OutlineTolerance())
                          ? Message::PocketNarrowWaysCut
                          : Message::PocketNarrowWays});
}

} // namespace kv
