// The closed outlines of a chain, as ways of lines and arcs: what a pocket of any shape is cleared from.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "geometry/closed_paths.h"
#include "routes/pocket_list.h"
#include "state/messages.h"

namespace kv {

struct OutlineGap {
    PlanePoint From, To;
};

// What a run of records, each beginning where the one in front ends, was drawn as.
struct DrawnOutline {
    ChainSpan Records;                  // a start mark in front of it included
    ClosedPath Path;                    // empty where Fault is set
    ClosedPath OpenWay;                 // of one that is open; its last vertex ends it
    std::optional<PlanePoint> Mark;     // where a start mark points
    std::vector<OutlineGap> ClosedGaps; // within the tolerance, but more than what digits leave open
    MessageLine Fault;                  // why it cannot be cleared
    RouteSegment Pattern;               // its first record that is no mark
    bool IsMarkAlone() const { return Path.empty() && Fault.Empty(); }
};

// The runs of a chain, in its order.
std::vector<DrawnOutline> OutlinesOf(ChainSpan chain);
// Open ways whose ends meet become one outline, in the first of them; `joined` gets the numbers of the
// others with that of the first. Nothing is linked behind a polyline, so an outline may come in pieces.
void JoinOpenWays(const std::vector<DrawnOutline*>& outlines,
                  std::vector<std::pair<std::size_t, std::size_t>>& joined);
// The outline of a circle of the circle list.
ClosedPath PathOfCircle(const RouteCircle& circle);

// "X100 Y60.5", as reports name places.
std::string ShownPlace(const PlanePoint& point);
// Its length in drawing units, in thousandths.
std::string ShownGap(const OutlineGap& gap);

} // namespace kv
