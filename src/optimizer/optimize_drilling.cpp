// The bores are written one by one in tour order; HeadPositions stays empty.
#include "optimizer/optimize_drilling.h"

#include "shell/report.h"

namespace kv {

void OptimizeDrilling()
{
    ReportMessage(1, "The drill optimizer is not in this version: bores are written one by one.");
}

} // namespace kv
