// Arcs in the edges whose depth a program of the CNC family cannot name: it stays as it is, and the report
// says so with layer and place.
#pragma once

namespace kv {

// Relies on the records as the leads have left them, in the places of their views.
void TellEdgeArcDoubts();

} // namespace kv
