// Horizontal drilling lines: an axis and a cross line in plan make a bore in an edge.
#pragma once

namespace kv {

// Makes HBores out of HBoreLines. Today none is made: the lines are told.
void BuildHorizontalBores();

} // namespace kv
