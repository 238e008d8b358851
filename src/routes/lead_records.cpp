#include "routes/lead_records.h"

#include "routes/route_elements.h"
#include "routes/route_runs.h"

namespace kv {

namespace {

RouteSegment CopyAs(const RouteSegment& record, Int kind, Int dir, double aux1, double aux2)
{
    RouteSegment copy = record;
    copy.Kind = kind;
    copy.Dir = dir;
    copy.Aux1 = ToSingle(aux1);
    copy.Aux2 = ToSingle(aux2);
    return copy;
}

RouteSegment EndOfLeadArc(const RouteSegment& record, const LeadPlan& lead)
{
    return CopyAs(record, 3, lead.CounterClockwise ? True : False, Turn360(lead.StartAngle),
                  Turn360(lead.EndAngle));
}

// The lead's outer end lies at its own depth when the lead is a ramp.
void PlaceFarEnd(RouteSegment& record, const LeadPlan& lead)
{
    PlaceAt(record, lead.Far);
    if (lead.Ramp != 0)
        record.Z = lead.Ramp;
}

void AppendLeadIn(std::vector<RouteSegment>& records, RouteSegment& start, const LeadPlan& lead)
{
    if (lead.Form == LeadForm::None)
        return;
    const bool arc = lead.Form == LeadForm::Arc;
    RouteSegment head = arc ? CopyAs(start, -3, RouteStart, lead.Centre.X, lead.Centre.Y)
                            : CopyAs(start, -1, RouteStart, 0, 0);
    PlaceFarEnd(head, lead);
    records.push_back(head);
    start.Dir = 0;
    if (arc)
        records.push_back(EndOfLeadArc(start, lead));
    else if (start.Kind == -3)
        records.push_back(CopyAs(start, 1, 0, 0, 0)); // the arc still needs a record of its own to start from
    else
        start.Kind = KindOf(start);
}

// A line may not follow an arc's end record directly: the writers would read its end angle as a bulge.
void AppendLineOut(std::vector<RouteSegment>& records, const LeadPlan& lead, bool bulgedEnd)
{
    const RouteSegment end = records.back();
    if (end.Kind == 3) {
        records.push_back(CopyAs(end, -1, 0, 0, 0));
    } else {
        records.back().Aux2 = 0;
        if (KindOf(end) == 5)
            records.back().Aux1 = 0;
    }
    records.push_back(CopyAs(end, bulgedEnd && end.Kind == 5 ? 5 : 1, 0, 0, 0));
    PlaceFarEnd(records.back(), lead);
}

void AppendArcOut(std::vector<RouteSegment>& records, const LeadPlan& lead)
{
    const RouteSegment end = records.back();
    records.push_back(CopyAs(end, -3, 0, lead.Centre.X, lead.Centre.Y));
    records.push_back(EndOfLeadArc(end, lead));
    PlaceFarEnd(records.back(), lead);
}

void AppendBulgeOut(std::vector<RouteSegment>& records, const LeadPlan& lead)
{
    const RouteSegment end = records.back();
    if (end.Kind == 3)
        records.push_back(CopyAs(end, -5, 0, 0, 0));
    records.back().Aux1 = True;
    records.back().Aux2 = ToSingle(lead.Bulge);
    records.push_back(CopyAs(end, 5, 0, 0, 0));
    PlaceFarEnd(records.back(), lead);
}

} // namespace

LeadPlan StraightLead(const PlanePoint& far)
{
    LeadPlan lead;
    lead.Form = LeadForm::Line;
    lead.Far = far;
    return lead;
}

LeadPlan ArcLead(const PlanePoint& far, const PlanePoint& centre, double startAngle, double endAngle,
                 bool counterClockwise)
{
    LeadPlan lead;
    lead.Form = LeadForm::Arc;
    lead.Far = far;
    lead.Centre = centre;
    lead.StartAngle = startAngle;
    lead.EndAngle = endAngle;
    lead.CounterClockwise = counterClockwise;
    return lead;
}

void AppendWithLeads(std::vector<RouteSegment>& records, std::span<const RouteSegment> route,
                     const RouteLeads& leads)
{
    const bool bulgedEnd = LastElement(route[route.size() - 2], route.back()).Shape == ElementShape::Bulge;
    RouteSegment start = route.front();
    AppendLeadIn(records, start, leads.In);
    records.push_back(start);
    records.insert(records.end(), route.begin() + 1, route.end());
    if (leads.Out.Form == LeadForm::Line)
        AppendLineOut(records, leads.Out, bulgedEnd);
    if (leads.Out.Form == LeadForm::Arc)
        AppendArcOut(records, leads.Out);
    if (leads.Out.Form == LeadForm::Bulge)
        AppendBulgeOut(records, leads.Out);
}

} // namespace kv
