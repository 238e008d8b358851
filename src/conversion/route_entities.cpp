// The route passes. RouteSegments and RouteCircles stay empty for now, so a drawing's routes are not
// machined; the operator must see that in the report, layer by layer.
#include "conversion/route_entities.h"

#include "conversion/run.h"
#include "shell/report.h"

namespace kv {

namespace {
constexpr std::size_t FirstRouteRow = 4; // of the layer table
} // namespace

void ReadRoutePasses()
{
    for (std::size_t row = FirstRouteRow; row < Run.LayerTable.size(); ++row)
        ReportMessage(1, "Routes are not machined by this version: layer " + Run.LayerTable[row]);
}

} // namespace kv
