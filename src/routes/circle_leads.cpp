// Six records for each free compensated circle: an arc of a quarter turn to the circle's top, the
// circle, clockwise for both hands, and an arc away from it. The lead arcs lie outside for G41 and
// inside for G42. Relies on circles that no path has taken; leaves them used.
#include "routes/circle_leads.h"

#include <algorithm>

#include "routes/circle_joins.h"

namespace kv {

namespace {

constexpr double Top = 90;
constexpr double LongestSpan = 180;

// One arc: the records of its two ends.
struct LeadArc {
    PlanePoint Centre, From, To;
    double StartAngle = 0, EndAngle = 0;
    bool CounterClockwise = false;
};

// The start record, then the end record.
void AddLeadArc(const RouteSegment& like, const LeadArc& arc, Single z)
{
    RouteSegment record = like;
    record.Z = z;
    record.Kind = -3;
    record.Aux1 = ToSingle(arc.Centre.X);
    record.Aux2 = ToSingle(arc.Centre.Y);
    PlaceAt(record, arc.From);
    AddSegment(record);
    record.Kind = 3;
    record.Aux1 = ToSingle(arc.StartAngle);
    record.Aux2 = ToSingle(arc.EndAngle);
    record.Dir = arc.CounterClockwise ? True : False;
    PlaceAt(record, arc.To);
    AddSegment(record);
}

// The last ramps that a circle had: a later circle without a ramp takes them over.
struct Ramps {
    Single In = 0, Out = 0;
};

void AddCircleWithLeads(const RouteCircle& circle, double lead, const Ramps& ramps)
{
    const RouteSegment like = SegmentOfCircle(circle);
    const bool left = circle.Comp.Trimmed().substr(0, 3) == "G41";
    const double radius = circle.Radius;
    const PlanePoint centre = CentreOf(circle);
    const PlanePoint top = {centre.X, centre.Y + radius};
    const PlanePoint leadCentre = {centre.X, centre.Y + (radius - (left ? -lead : lead))};

    const LeadArc leadIn = {leadCentre, Polar(leadCentre, lead, 180), top, 180, left ? 270.0 : 90.0, left};
    AddLeadArc(like, leadIn, like.Z);
    RouteSegment& start = RouteSegments[RouteSegments.Last() - 1];
    start.Dir = RouteStart;
    if (ramps.In != 0)
        start.Z = ramps.In;
    AddLeadArc(like, {centre, top, top, Top, Top, false}, like.Z);
    if (ramps.Out != 0) {
        const double span = std::min(lead / (2 * radius * static_cast<double>(Run.Pi)) * 360, LongestSpan);
        AddLeadArc(like, {centre, top, Polar(centre, radius, Top - span), Top, Top - span, false}, ramps.Out);
    } else {
        // The start angle is written as 90 for both hands; programs name only the end angle.
        AddLeadArc(like, {leadCentre, top, Polar(leadCentre, lead, 0), Top, 0, left}, like.Z);
    }
}

} // namespace

void BuildCircleLeads(std::vector<ChainEntry>& linked)
{
    if (!LeadsWanted())
        return;
    Ramps ramps;
    for (Long i = 1; i <= RouteCircles.Last(); ++i) {
        RouteCircle& circle = RouteCircles[i];
        if (circle.Used != False || IsPocket(circle) || circle.Comp.Trimmed().empty())
            continue;
        const LeadValues values = LeadValuesOf(circle.LeadIn, circle.RampOut, circle.RampIn);
        if (!(values.Length > 0))
            continue;
        if (values.RampOut != 0)
            ramps.Out = values.RampOut;
        if (values.RampIn != 0)
            ramps.In = values.RampIn;
        ChainEntry entry;
        entry.First = RouteSegments.Last() + 1;
        AddCircleWithLeads(circle, values.Length, ramps);
        entry.Last = RouteSegments.Last();
        entry.PathKind = 3;
        entry.ChainHead = entry.Used = true;
        linked.push_back(entry);
        circle.Used = True;
        circle.Pass = 0;
    }
}

} // namespace kv
