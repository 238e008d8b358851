// At an inner corner both walls are near. A way begins with the tool beside its first point, so without
// a lead half of the tool can stand in the wall that the contour comes back on:
//
//      |wall                      |wall   P
//    .-|-.                        |     /
//   (  |  )  the tool,            |   / (  )  the tool beside P, the lead's far end
//    '-|-'   its centre on a wall | /
//      S=====> way                S=====> way
//
// A lead on the bisector begins beside its far end, toward the first wall. It stays clear of it where it
// is as long as R (1 + cos h) / sin h, h being half the angle between the walls: R (1 + sqrt 2) = 2.4 R
// in a square corner. The same holds for the way out, toward the last wall.
//
// Beyond its corner a lead may meet any other piece of its contour: it is too long for the room, a quarter
// circle in front of an arc turns through the wall beside it, or a ramp out follows the circle of an arc past
// the arc's end. All along it the tool's centre keeps R away from the pieces as they are drawn, or cuts one.
#include "routes/lead_doubts.h"

#include <algorithm>
#include <cmath>

#include "geometry/path_spans.h"
#include "platform/text.h"
#include "platform/trigonometry.h"
#include "routes/border_leads.h"
#include "routes/contour_seams.h"
#include "routes/pocket_values.h"
#include "routes/route_runs.h"
#include "routes/route_sides.h"
#include "state/drawn_entities.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr double HarmlessCut = 0.01;  // mm, of a lead
constexpr double AngleShare = 5e-7;   // of a radius: DegToRad is a Single
constexpr double SameSpot = 1e-3;     // drawing units
constexpr double StepOfRadius = 0.25; // from look to look along a lead that comes from a wall
constexpr int FewestSteps = 8, MostSteps = 400;

// The line or the circle of an element as a wall, and the tool that shall stay on its own side of it.
struct Wall {
    const RouteElement& Element;
    PlanePoint On;
};

struct Tool {
    double Radius = 0;
    int Side = 0; // 1 left of the way, -1 right
};

double DepthInto(const Wall& wall, const Tool& tool, const PlanePoint& centre)
{
    const RouteElement& element = wall.Element;
    if (element.Shape == ElementShape::Line) {
        const double angle = element.Direction * static_cast<double>(Run.DegToRad);
        const double left = Cosine(angle) * (centre.Y - wall.On.Y) - Sine(angle) * (centre.X - wall.On.X);
        return tool.Radius - tool.Side * left;
    }
    const double fromCentre = Distance(element.Centre, centre);
    const bool isInside = element.Sense == tool.Side;
    return tool.Radius - (isInside ? element.Radius - fromCentre : fromCentre - element.Radius);
}

// The way's direction at the outer end of a lead that runs between it and a point of the contour.
double DirectionAtFarEnd(const LeadPlan& lead, const PlanePoint& point, bool leadsIn)
{
    if (lead.Form == LeadForm::Arc)
        return Bearing(lead.Centre, lead.Far) + (lead.CounterClockwise ? 90 : -90);
    return leadsIn ? Bearing(lead.Far, point) : Bearing(point, lead.Far);
}

PlanePoint Beside(const PlanePoint& point, double direction, const Tool& tool)
{
    return Polar(point, tool.Radius, direction + 90 * tool.Side);
}

double DepthOfLead(const ContourSeam& seam, const Tool& tool, const LeadPlan& lead, bool leadsIn)
{
    if (lead.Form != LeadForm::Line && lead.Form != LeadForm::Arc)
        return 0;
    const double direction = DirectionAtFarEnd(lead, leadsIn ? seam.Start : seam.End, leadsIn);
    const PlanePoint centre = Beside(lead.Far, direction, tool);
    return std::max(DepthInto({seam.First, seam.Start}, tool, centre),
                    DepthInto({seam.Last, seam.End}, tool, centre));
}

double DepthWithoutLead(const ContourSeam& seam, const Tool& tool)
{
    const PlanePoint first = Beside(seam.Start, seam.First.Direction, tool);
    const PlanePoint last = Beside(seam.End, seam.Last.Direction, tool);
    return std::max(DepthInto({seam.Last, seam.End}, tool, first),
                    DepthInto({seam.First, seam.Start}, tool, last));
}

double Harmless()
{
    return HarmlessCut / static_cast<double>(Run.UnitFactor);
}

// --- a lead beside the pieces of its contour

PathSpan ArcSpan(const PlanePoint& from, const PlanePoint& to, const PlanePoint& centre,
                 bool counterClockwise)
{
    return {from, to, true, counterClockwise, centre, Distance(centre, from)};
}

// A whole circle is two arcs: one whose ends meet has no length.
void TakeArcPieces(const RouteSegment& start, const RouteSegment& end, const auto& take)
{
    const PlanePoint from = PointOf(start), to = PointOf(end), centre = CentreOf(start);
    const bool counterClockwise = end.Dir != 0;
    if (Distance(from, to) > SameSpot) {
        take(ArcSpan(from, to, centre, counterClockwise));
        return;
    }
    const PlanePoint across{2 * centre.X - from.X, 2 * centre.Y - from.Y};
    take(ArcSpan(from, across, centre, counterClockwise));
    take(ArcSpan(across, from, centre, counterClockwise));
}

// The pieces of a route as they are drawn. Points that a curve is laid through have none between them.
void TakePieces(std::span<const RouteSegment> route, const auto& take)
{
    constexpr Int fitPoint = 2, bulged = 5;
    for (std::size_t i = 1; i < route.size(); ++i) {
        const RouteSegment& from = route[i - 1];
        const RouteSegment& to = route[i];
        if (to.Kind < 0 || KindOf(to) == fitPoint)
            continue;
        if (from.Kind == ArcOpens && to.Kind == ArcEnds)
            TakeArcPieces(from, to, take);
        else if (KindOf(from) == bulged && Distance(PointOf(from), PointOf(to)) > 0)
            take(SpanBetween({PointOf(from), from.Aux2}, PointOf(to)));
        else
            take(SpanBetween({PointOf(from), 0}, PointOf(to)));
    }
}

// The tool's centre along a lead, 0 at the contour and 1 at the far end.
struct ToolBesideLead {
    bool IsArc = false;
    PlanePoint From, To;             // of a straight one
    PlanePoint Centre;               // of an arc
    double Radius = 0;               // of the centre's way; below 0 where the tool does not fit into the arc
    double StartAngle = 0, Turn = 0; // from the contour outward

    double Length() const
    {
        const double arc = std::fabs(Radius * Turn) * static_cast<double>(Run.DegToRad);
        return IsArc ? arc : Distance(From, To);
    }
    PlanePoint At(double share) const
    {
        if (IsArc)
            return Polar(Centre, Radius, StartAngle + share * Turn);
        return {From.X + share * (To.X - From.X), From.Y + share * (To.Y - From.Y)};
    }
};

ToolBesideLead BesideArc(const PlanePoint& centre, double radius, bool counterClockwise, const Tool& tool)
{
    ToolBesideLead beside;
    beside.IsArc = true;
    beside.Centre = centre;
    beside.Radius = radius - tool.Radius * tool.Side * (counterClockwise ? 1 : -1);
    return beside;
}

ToolBesideLead BesideLead(const ContourSeam& seam, const Tool& tool, const LeadPlan& lead, bool leadsIn)
{
    if (lead.Form == LeadForm::Arc) {
        ToolBesideLead beside =
            BesideArc(lead.Centre, Distance(lead.Centre, lead.Far), lead.CounterClockwise, tool);
        const double turn = lead.CounterClockwise ? Turn360(lead.EndAngle - lead.StartAngle)
                                                  : -Turn360(lead.StartAngle - lead.EndAngle);
        beside.StartAngle = leadsIn ? lead.EndAngle : lead.StartAngle;
        beside.Turn = leadsIn ? -turn : turn;
        return beside;
    }
    if (lead.Form == LeadForm::Bulge) { // the way out along the first piece
        ToolBesideLead beside = BesideArc(seam.First.Centre, seam.First.Radius, lead.Bulge > 0, tool);
        beside.StartAngle = seam.First.StartAngle;
        beside.Turn = 4 * ArcTangent(lead.Bulge) / static_cast<double>(Run.DegToRad);
        return beside;
    }
    const PlanePoint& at = leadsIn ? seam.Start : seam.End;
    const double direction = leadsIn ? Bearing(lead.Far, at) : Bearing(at, lead.Far);
    ToolBesideLead beside;
    beside.From = Beside(at, direction, tool);
    beside.To = Beside(lead.Far, direction, tool);
    return beside;
}

// Where the tool, coming from the wall that the lead meets at its corner, is clear of it; 1 where it never
// is.
double ShareClearOf(const Wall& wall, const Tool& tool, const ToolBesideLead& lead)
{
    const int steps = static_cast<int>(
        std::clamp<double>(lead.Length() / (StepOfRadius * tool.Radius), FewestSteps, MostSteps));
    const auto clear = [&](double share) { return DepthInto(wall, tool, lead.At(share)) <= Harmless() / 2; };
    if (clear(0))
        return 0;
    int step = 1;
    while (step <= steps && !clear(static_cast<double>(step) / steps))
        ++step;
    if (step > steps)
        return 1;
    double low = static_cast<double>(step - 1) / steps, high = static_cast<double>(step) / steps;
    for (int i = 0; i < 40; ++i)
        (clear((low + high) / 2) ? high : low) = (low + high) / 2;
    return high;
}

// The way of the tool's centre from the share onward.
PathSpan SpanFrom(double share, const ToolBesideLead& lead)
{
    return {lead.At(share), lead.At(1), lead.IsArc, lead.Turn > 0, lead.Centre, std::fabs(lead.Radius)};
}

struct Box {
    double MinX, MaxX, MinY, MaxY;
};

Box BoxOfSpan(const PathSpan& span)
{
    if (span.IsArc)
        return {span.Centre.X - span.Radius, span.Centre.X + span.Radius, span.Centre.Y - span.Radius,
                span.Centre.Y + span.Radius};
    return {std::min(span.From.X, span.To.X), std::max(span.From.X, span.To.X),
            std::min(span.From.Y, span.To.Y), std::max(span.From.Y, span.To.Y)};
}

bool AreApart(const Box& a, const Box& b, double distance)
{
    return a.MinX - b.MaxX >= distance || b.MinX - a.MaxX >= distance || a.MinY - b.MaxY >= distance ||
           b.MinY - a.MaxY >= distance;
}

// How far the tool reaches over the nearest of the route's pieces; below 0 it stays off.
double DepthAlong(const ToolBesideLead& lead, const ContourSeam& seam, bool leadsIn, const Tool& tool,
                  std::span<const RouteSegment> route)
{
    const Wall wall = leadsIn ? Wall{seam.First, seam.Start} : Wall{seam.Last, seam.End};
    const PathSpan way = SpanFrom(seam.Closed ? 0 : ShareClearOf(wall, tool, lead), lead);
    const Box box = BoxOfSpan(way);
    double nearest = tool.Radius + HarmlessCut;
    TakePieces(route, [&](const PathSpan& piece) {
        if (!AreApart(box, BoxOfSpan(piece), nearest))
            nearest = std::min(nearest, DistanceBetween(way, piece));
    });
    return tool.Radius - nearest;
}

// A contour that ends beside its start is off by the distance, and a way along a wide circle by its angles.
double HarmlessAlong(const ContourSeam& seam, const ToolBesideLead& lead)
{
    return Harmless() + Distance(seam.Start, seam.End) +
           (lead.IsArc ? AngleShare * std::fabs(lead.Radius) : 0);
}

bool CutsContour(std::span<const RouteSegment> route, const ContourSeam& seam, const Tool& tool,
                 const RouteLeads& leads)
{
    if (NearsALimit(seam.Start, LimitsOf(route.front().Side)))
        return false; // it leads out of the panel
    const auto cuts = [&](const LeadPlan& lead, bool leadsIn) {
        if (lead.Form == LeadForm::None)
            return false;
        const ToolBesideLead beside = BesideLead(seam, tool, lead, leadsIn);
        return DepthAlong(beside, seam, leadsIn, tool, route) > HarmlessAlong(seam, beside);
    };
    return cuts(leads.In, true) || cuts(leads.Out, false);
}

// A place that was moved into its view and back is off in the last bits.
std::string PlaceText(double drawn)
{
    return PlainText(ToSingle(std::round(drawn * 10000) / 10000));
}

MessageLine DoubtAbout(const RouteSegment& start, Message number)
{
    const PlanePoint at = DrawnPlace(start);
    return {number, WithPlace({{"layer", ShownLayerOfPass(start.Pass)},
                               {"place", "X" + PlaceText(at.X) + " Y" + PlaceText(at.Y)}},
                              start.Drawn)};
}

} // namespace

MessageLine LeadDoubt(std::span<const RouteSegment> route, const RouteLeads& leads)
{
    const RouteSegment& start = route.front();
    const std::optional<ContourSeam> seam = SeamOf(route);
    const double radius = ToolRadiusOf(start.Comp);
    if (!seam || !(radius > 0))
        return {};
    const Tool tool{radius, seam->Side};
    if (!seam->Closed && leads.In.Form == LeadForm::None) {
        // Many short steps round a curve are no corner: what they lose lies within the tolerance.
        const bool cuts = DepthWithoutLead(*seam, tool) > Run.RouteTolerance;
        return cuts ? DoubtAbout(start, Message::ContourInCorner) : MessageLine();
    }
    double depth = seam->Closed ? 0 : DepthOfLead(*seam, tool, leads.In, true);
    if (!seam->Closed && leads.Out.Ramp == 0) // a ramp out follows the contour, which the tool leaves whole
        depth = std::max(depth, DepthOfLead(*seam, tool, leads.Out, false));
    if (depth > Harmless())
        return DoubtAbout(start, Message::LeadCutsWalls);
    return CutsContour(route, *seam, tool, leads) ? DoubtAbout(start, Message::LeadCutsContour)
                                                  : MessageLine();
}

} // namespace kv
