#include "routes/contour_leads.h"

#include <algorithm>

#include "platform/trigonometry.h"
#include "routes/border_leads.h"
#include "routes/contour_seams.h"

namespace kv {

namespace {

constexpr double FlattestRadius = 10000; // drawing units; the end of a ramp is 0.004 off there
constexpr double ShortArcTurn = 20;      // degrees, of a ramp along an arc whose whole rim is no lead long

// What the leads of one contour are made from.
struct Seam : ContourSeam {
    double Length = 0; // of the lead
    double Capped = 0; // the same, no longer than the first segment
    double Bisector = 0;
};

Seam WithLength(const ContourSeam& contour, double length, const RouteSegment& next)
{
    Seam seam{contour};
    seam.Length = length;
    const double in = seam.First.Direction, out = seam.Last.Direction;
    seam.Bisector = in + seam.Side * AngleBetween(in, NormalizeAngle(out + 180)) / 2;
    double reach = Distance(seam.Start, PointOf(next));
    if (seam.First.Shape == ElementShape::Arc && reach < Run.RouteTolerance)
        reach = seam.First.Radius; // a full circle ends where it starts
    seam.Capped = std::min(reach, length);
    return seam;
}

// An element that leaves a quarter arc no room; one that turns away from the tool's side always does.
bool IsShort(const RouteElement& element, const Seam& seam)
{
    return element.Radius < seam.Length &&
           !(element.Shape != ElementShape::Line && element.Sense == -seam.Side);
}

LeadPlan RampAlongArc(const Seam& seam)
{
    const RouteElement& arc = seam.First;
    const double rim = 2 * static_cast<double>(Run.Pi) * arc.Radius;
    const double turn = rim > seam.Length ? seam.Length / rim * 360 : ShortArcTurn;
    const double end = arc.StartAngle + arc.Sense * turn;
    return ArcLead(Polar(arc.Centre, arc.Radius, end), arc.Centre, arc.StartAngle, end, arc.Sense > 0);
}

// Angles are a little off, since DegToRad is a Single: a nearly straight span has its centre too far
// away to find the way back from there, so its ramp ends by the chord.
PlanePoint EndAlongBulge(const Seam& seam, double turn)
{
    const RouteElement& bulge = seam.First;
    const double pi = Run.Pi;
    if (bulge.Radius <= FlattestRadius)
        return Polar(bulge.Centre, bulge.Radius, bulge.StartAngle + bulge.Sense * turn * 180 / pi);
    const double halfTurn = turn / 2 * 180 / pi;
    return Polar(seam.Start, 2 * bulge.Radius * Sine(turn / 2), bulge.Direction + bulge.Sense * halfTurn);
}

LeadPlan RampAlongBulge(const Seam& seam)
{
    const RouteElement& bulge = seam.First;
    const double turn = std::min(seam.Length, bulge.ArcLength) / bulge.Radius; // radians
    LeadPlan lead;
    lead.Form = LeadForm::Bulge;
    lead.Bulge = bulge.Sense * Tangent(turn / 4);
    lead.Far = EndAlongBulge(seam, turn);
    return lead;
}

// The tool overruns the start of the cut. An arc of radius 0 has no rim to run along.
LeadPlan RampedLeadOut(const Seam& seam)
{
    if (seam.First.Shape == ElementShape::Arc && seam.First.Radius > 0)
        return RampAlongArc(seam);
    if (seam.First.Shape == ElementShape::Bulge)
        return RampAlongBulge(seam);
    return StraightLead(Polar(seam.End, seam.Capped, seam.First.Direction));
}

LeadPlan PlainLeadOut(const Seam& seam)
{
    if (!seam.Closed)
        return StraightLead(Polar(seam.End, seam.Length, seam.Bisector));
    const double normal = seam.Last.Direction + 90 * seam.Side;
    if (IsShort(seam.Last, seam))
        return StraightLead(Polar(seam.End, seam.Capped, normal));
    const PlanePoint centre = Polar(seam.End, seam.Length, normal);
    const double from = normal + 180, to = from + 90 * seam.Side;
    return ArcLead(Polar(centre, seam.Length, to), centre, from, to, seam.Side > 0);
}

LeadPlan PlainLeadIn(const Seam& seam)
{
    if (seam.Closed && IsShort(seam.First, seam)) // on the lead-out's bearing
        return StraightLead(Polar(seam.Start, seam.Capped, seam.Last.Direction + 90 * seam.Side));
    if (!seam.Closed && (seam.First.Shape != ElementShape::Arc || IsShort(seam.First, seam)))
        return StraightLead(Polar(seam.Start, seam.Length, seam.Bisector));
    const double normal = seam.First.Direction + 90 * seam.Side;
    const PlanePoint centre = Polar(seam.Start, seam.Length, normal);
    const double to = normal + 180, from = to - 90 * seam.Side;
    return ArcLead(Polar(centre, seam.Length, from), centre, from, to, seam.Side > 0);
}

} // namespace

std::optional<RouteLeads> ContourLeads(std::span<const RouteSegment> route, const LeadValues& values)
{
    const std::optional<ContourSeam> contour = SeamOf(route);
    if (values.Length == 0 || !contour)
        return std::nullopt;
    const SideLimits limits = LimitsOf(route.front().Side);
    if (NearsALimit(contour->Start, limits) || NearsALimit(contour->End, limits))
        return std::nullopt;
    const Seam seam = WithLength(*contour, values.Length, route[1]);
    RouteLeads leads;
    leads.Out = values.RampOut != 0 ? RampedLeadOut(seam) : PlainLeadOut(seam);
    leads.Out.Ramp = values.RampOut;
    leads.In = PlainLeadIn(seam);
    leads.In.Ramp = values.RampIn;
    return leads;
}

} // namespace kv
