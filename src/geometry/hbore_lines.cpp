// Lines on HBORE layers make no bore yet; the operator must see that in the report.
#include "geometry/hbore_lines.h"

#include "conversion/run.h"
#include "shell/report.h"

namespace kv {

void BuildHorizontalBores()
{
    if (HBoreLines.Last() > 0)
        ReportMessage(1, "Horizontal drilling lines are not machined by this version: " +
                             WholeText(HBoreLines.Last()));
}

} // namespace kv
