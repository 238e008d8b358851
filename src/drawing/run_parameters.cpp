// Settings first, then the drawing's instructions over them. Overrides of the drawing are in its own
// unit and taken as they stand; the settings' lengths are in the unit shown on the Inch/Metric switch.
#include "drawing/run_parameters.h"

#include "state/run.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr double MillimetresPerInch = 25.4;

Single InDrawingUnits(const std::string& field)
{
    const double length = Val(field);
    const bool shownInInch = Config.Metric == "Inch"; // a blank switch counts as Metric
    const bool drawnInInch = Run.DrawingInInch != False;
    if (drawnInInch && !shownInInch)
        return ToSingle(length / MillimetresPerInch);
    if (!drawnInInch && shownInInch)
        return ToSingle(length * MillimetresPerInch);
    return ToSingle(length);
}

Int Switched(Int checkBox, Int instruction)
{
    if (instruction == 0)
        return checkBox != 0 ? True : False;
    return instruction > 0 ? True : False;
}

} // namespace

void SettleRunParameters()
{
    Run.LeadLength = InDrawingUnits(Config.LeadLength);
    if (Run.LeadLengthOverride != 0)
        Run.LeadLength = Run.LeadLengthOverride;
    Run.LeadRampHeight = InDrawingUnits(Config.LeadRampHeight);
    if (Run.RampHeightOverride != 0)
        Run.LeadRampHeight = Run.RampHeightOverride;
    Run.LeadsOn = Switched(Config.LeadS, Run.LeadSwitch);
    Run.RampInOn = Switched(Config.LeadRampIn, Run.RampInSwitch);
    Run.RampOutOn = Switched(Config.LeadRampOut, Run.RampOutSwitch);
    Run.RemoveBorder = Switched(Config.RemoveBorderRoute, Run.RemBorderSwitch);
    Run.OffsetX = ToSingle(Val(Config.OffsetX));
    Run.OffsetY = ToSingle(Val(Config.OffsetY));
    Run.OffsetZ = ToSingle(Val(Config.OffsetZ));
    if (Run.OffsetOverrideSet == False)
        return;
    Run.OffsetX = Run.OffsetOverride[0];
    Run.OffsetY = Run.OffsetOverride[1];
    Run.OffsetZ = Run.OffsetOverride[2];
}

} // namespace kv
