// The order of the drill optimizer's passes. Relies on the bores in tour order and on the head's file;
// leaves HeadPositions in VBores' place.
#include "drilling/optimize_drilling.h"

#include "drilling/drill_head.h"
#include "drilling/head_positions.h"
#include "drilling/hole_chaining.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv {

void OptimizeDrilling()
{
    const bool flipSet = Val(Config.Origin) != 0;
    const bool originFlip = flipSet != (Run.OriginTop != False); // a top origin turns the head over again
    LoadDrillHead();
    FillDrillHead();
    ClassifyHeadRows();
    RemoveDuplicateBores();
    ClearChains();
    FindChains();
    CountChainSizes();
    GatherChains();
    PlanHeadPositions(originFlip);
}

} // namespace kv
