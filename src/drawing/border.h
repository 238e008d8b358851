// Finds the panel: a SOLID on a PANEL layer, or the outline on BORDER layers with up to four edge
// views around it. Settles origin, thickness, units and tolerance.
#pragma once

namespace kv {

// Collects the route layers, the border points and the PANEL solid. False when the run must end.
bool FindPanel();
// Face and edge views out of the border points, unless a solid gave the panel. False as above.
bool AnalyseBorder();
void SettleOriginAndUnits();

} // namespace kv
