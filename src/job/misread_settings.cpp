// Which numbers of the settings a drawing is converted by, and whether their texts are numbers. Relies on the
// records before they are written; leaves lines in the report.
#include "job/misread_settings.h"

#include "platform/number_texts.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/typed_settings.h"

namespace kv {

namespace {

constexpr Int EvolutionSystem = 2;

bool Always()
{
    return true;
}

bool InMillimetres()
{
    return Run.DrawingInInch == False;
}

bool InInches()
{
    return Run.DrawingInInch != False;
}

bool HasRoutes()
{
    return RouteSegments.Last() > 0 || RouteCircles.Last() > 0;
}

bool LeadsAreSet()
{
    return HasRoutes() && Run.LeadLengthOverride == 0;
}

bool RampsAreSet()
{
    return HasRoutes() && Run.RampHeightOverride == 0;
}

bool OffsetsAreSet()
{
    return Run.OffsetOverrideSet == False;
}

bool HasGrooves()
{
    return GroovePasses.Last() > 0;
}

bool HasBores()
{
    return VBores.Last() > 0;
}

bool MayMakeHbd()
{
    return Run.HbdOff == 0 && Config.HbdAvailable;
}

bool MakesHbd()
{
    return MayMakeHbd() && Config.MakeHBD != 0;
}

bool MakesText()
{
    return Run.CncOff == 0 && Run.ControlType != EvolutionSystem;
}

struct UsedSetting {
    std::string_view Key;
    bool (*IsUsed)();
};
constexpr UsedSetting UsedSettings[] = {
    {"MakeHBD", MayMakeHbd},
    {"HBDGlue", MakesHbd},
    {"HBDDowel", MakesHbd},
    {"HBDVBoreLimit", MakesHbd},
    {"LeadS", HasRoutes},
    {"LeadRampIn", HasRoutes},
    {"LeadRampOut", HasRoutes},
    {"RemoveBorderRoute", HasRoutes},
    {"CornerComp", HasRoutes},
    {"LeadLength", LeadsAreSet},
    {"LeadRampHeight", RampsAreSet},
    {"PrecisionMetric", InMillimetres},
    {"PrecisionInch", InInches},
    {"OffsetX", OffsetsAreSet},
    {"OffsetY", OffsetsAreSet},
    {"OffsetZ", OffsetsAreSet},
    {"SawKerf", HasGrooves},
    {"LineLimit", MakesText},
    {"Optimizer", HasBores},
    {"DRAlternate", MakesText},
    {"RouteTolerance", Always},
    {"Origin", MakesText},
};

void TellMisread(Message number, const TypedSetting& setting)
{
    Tell(number, {{"file", setting.OfCall ? "--set" : ShownPath(IniPath)},
                  {"key", setting.Key},
                  {"written", setting.Text},
                  {"taken", NumberTaken(setting.Taken)}});
}

} // namespace

void TellMisreadSettings()
{
    for (const UsedSetting& used : UsedSettings) {
        const TypedSetting setting = SettingAsTyped(used.Key);
        if (!used.IsUsed())
            continue;
        if (!IsReadToItsEnd(setting.Text))
            TellMisread(Message::FieldPartlyRead, setting);
        else if (Val(setting.Text) != Val(setting.Taken))
            TellMisread(Message::NumberReplaced, setting);
    }
    for (const TypedSetting& tool : PartlyReadTools())
        TellMisread(Message::FieldPartlyRead, tool);
}

} // namespace kv
