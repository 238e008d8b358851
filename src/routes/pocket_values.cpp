#include "routes/pocket_values.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/text.h"
#include "state/drawn_entities.h"
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

PocketSpot PocketAt(const RouteSegment& record)
{
    return {record.Pass, PointOf(record), record.Drawn};
}

PocketSpot PocketAt(const RouteCircle& circle)
{
    return {circle.Pass, {circle.X, circle.Y}, circle.Drawn};
}

void TellOfPocket(const PocketSpot& spot, MessageLine line)
{
    line.Values.emplace_back("layer", ShownLayerOfPass(spot.Pass));
    line.Values.emplace_back("place",
                             "X" + PlainText(ToSingle(spot.At.X)) + " Y" + PlainText(ToSingle(spot.At.Y)));
    line.Values = WithPlace(std::move(line.Values), spot.Drawn);
    Tell(std::move(line));
}

void ReportUncleared(const PocketSpot& spot, MessageLine reason)
{
    if (reason.Empty())
        reason.Number = Message::PocketNotCleared;
    TellOfPocket(spot, std::move(reason));
}

bool HasNoRoom(const PocketSpot& spot, double pocketWidth, double toolRadius)
{
    if (!(toolRadius > 0) || pocketWidth >= 2 * toolRadius - LeastTolerance)
        return false;
    ReportUncleared(spot, {Message::PocketTooNarrow});
    return true;
}

void TellOfNarrowWays(const PocketSpot& spot, double pocketWidth, double smallestWay, double toolRadius)
{
    const double tool = 2 * toolRadius;
    if (!(tool > 0))
        return;
    if (pocketWidth < tool)
        TellOfPocket(spot, {Message::PocketNarrowerThanTool});
    else if (smallestWay < tool) // a control that checks its compensation refuses it
        TellOfPocket(spot,
                     // Beside such a way the tool reaches 2 R from its far side.
                     {pocketWidth + smallestWay < 2 * (tool - OutlineTolerance())
                          ? Message::PocketNarrowWaysCut
                          : Message::PocketNarrowWays});
}

} // namespace kv
