// Small passes over whole routes: direction and seam of closed polylines, oscillation in Z, cuts in
// several depths.
#pragma once

namespace kv {

// Turns a closed polyline behind its start mark around, so that it leaves where the mark leads.
void ReverseClosedPolylines();
// Closed polylines start in the middle of their first straight, where corner compensation is on.
void ReseamClosedPolylines();
// Moves the cutter up and down along routes that go through the panel.
void OscillateZ();
// Cuts a route with an M code in that many passes, at even depth steps.
void SplitDepthPasses();

} // namespace kv
