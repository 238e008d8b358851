#include "routes/route_runs.h"

#include "drawing/layer_rules.h"

namespace kv {

namespace {

Single RampDepth(Single written, Int defaultOn)
{
    const Single depth = -written;
    if ((depth == 0 && defaultOn != False) || depth == -RunDefault)
        return -Run.LeadRampHeight;
    return depth;
}

} // namespace

Long LastOfRoute(Long first)
{
    Long last = first;
    while (last < RouteSegments.Last() && !StartsRoute(RouteSegments[last + 1]))
        ++last;
    return last;
}

RouteSegment& AddSegment(const RouteSegment& record)
{
    return Grow(RouteSegments, "route segments", record);
}

void AddTo(std::vector<RouteSegment>& records, const RouteSegment& record)
{
    if (records.size() >= MaxIndex)
        throw RunError{ErrorOverflow, "More than " + WholeText(MaxIndex) + " route segments"};
    records.push_back(record);
}

void StoreSegments(const std::vector<RouteSegment>& records)
{
    RouteSegments.CutTo(0); // keeps the memory: several passes build the list anew
    for (const RouteSegment& record : records)
        AddSegment(record);
    Run.SegmentCount = ToInt(RouteSegments.Last());
}

RouteSegment SegmentOfCircle(const RouteCircle& circle)
{
    RouteSegment record;
    record.Drawn = circle.Drawn;
    record.Pass = circle.Pass;
    record.X = circle.X;
    record.Y = circle.Y;
    record.Z = circle.Z;
    record.Diameter = circle.Diameter;
    record.Group = circle.Group;
    record.ToolNo = circle.ToolNo;
    record.Tool = circle.Tool.Trimmed();
    record.Speed = circle.Speed;
    record.Feed = circle.Feed;
    record.FeedDown = circle.FeedDown;
    record.FeedRapid = circle.FeedRapid;
    record.LeadIn = circle.LeadIn;
    record.RampOut = circle.RampOut;
    record.RampIn = circle.RampIn;
    record.Comp = circle.Comp;
    record.Sequence = circle.Sequence;
    record.MCode = circle.MCode;
    record.OscZ = circle.OscZ;
    record.Side = circle.Side;
    record.ExtraSlot = circle.ExtraSlot;
    return record;
}

Text<10> OtherSideOf(const Text<10>& comp)
{
    constexpr std::size_t codeLength = 3;
    const std::string_view whole = comp.Padded();
    const std::string_view code = whole.substr(0, codeLength);
    if (code != "G41" && code != "G42")
        return comp;
    return Text<10>(std::string(code == "G41" ? "G42" : "G41") + std::string(whole.substr(codeLength)));
}

std::string_view LayerOfPass(Long pass)
{
    constexpr Long firstRouteRow = 4; // of the layer table: the row of pass 1
    const std::size_t row = static_cast<std::size_t>(pass + firstRouteRow - 1);
    return pass > 0 && row < Run.LayerTable.size() ? std::string_view(Run.LayerTable[row])
                                                   : std::string_view();
}

std::string ShownLayerOfPass(Long pass)
{
    return ShownLayer(LayerOfPass(pass));
}

LeadValues LeadValuesOf(Single leadIn, Single rampOut, Single rampIn)
{
    LeadValues values;
    values.Length = leadIn;
    if ((leadIn == 0 && Run.LeadsOn != False) || leadIn == RunDefault)
        values.Length = Run.LeadLength;
    values.RampOut = RampDepth(rampOut, Run.RampOutOn);
    values.RampIn = RampDepth(rampIn, Run.RampInOn);
    return values;
}

bool LeadsWanted()
{
    return (Run.LeadLength != 0 && Run.LeadsOn != False) || Run.AnyLeadCode != False;
}

} // namespace kv
