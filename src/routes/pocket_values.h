// What the pockets of all forms share: the mark that makes an outline a pocket, its pitch, the side
// of the tool, and the report lines that name a pocket by its layer and place.
#pragma once

#include "routes/route_runs.h"
#include "state/messages.h"

namespace kv {

enum class PocketSide { Left, Right }; // G41, G42

constexpr std::size_t MarkLength = 2;     // records of a start mark
constexpr Int ArcOpens = -3, ArcEnds = 3; // Kind of the two records of an arc

// Whether OscZ of a record or circle of a route pass marks a pocket: below zero (minus the pitch less
// one) and on an EXCAV layer. An oscillation without a number is below zero too, and is none.
bool MarksPocket(Single oscZ, Long pass);
// Drawing units between two ways of the tool; 0 or below where neither the layer nor the tool tells it.
double PocketPitch(Single oscZ, const Text<10>& comp);
// The radius behind the compensation; 0 without one.
double ToolRadiusOf(const Text<10>& comp);
// The compensation with its code exchanged; what stands behind the code stays.
Text<10> CompOnSide(const Text<10>& comp, PocketSide side);
// Drawing units within which an outline's points count as one, or as lying on a line.
double OutlineTolerance();

// A pocket as the report names it.
struct PocketSpot {
    Long Pass = 0;
    PlanePoint At;  // a point of it
    Long Drawn = 0; // the entities that it comes from
};
PocketSpot PocketAt(const RouteSegment& record);
PocketSpot PocketAt(const RouteCircle& circle); // its centre

// Adds layer, place and the entity's place in the file to a report line about a pocket.
void TellOfPocket(const PocketSpot& spot, MessageLine line);
// That it stays as it was drawn; the line about the reason may be empty.
void ReportUncleared(const PocketSpot& spot, MessageLine reason = {});
// Whether the pocket has no room for its tool, by more than a hundredth of a drawing unit: then it is
// reported, and nothing of it may be cut. A radius of 0 is not known.
bool HasNoRoom(const PocketSpot& spot, double pocketWidth, double toolRadius);
// Tells where the tool does not fit: into the pocket, or into the smallest way inside it, and whether it
// cuts beyond the pocket's wall there. Widths in drawing units, of a way that runs inside out below 0; a
// radius of 0 is not known.
void TellOfNarrowWays(const PocketSpot& spot, double pocketWidth, double smallestWay, double toolRadius);

} // namespace kv
