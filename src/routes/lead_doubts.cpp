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
#include "routes/lead_doubts.h"

#include <algorithm>
#include <cmath>

#include "platform/text.h"
#include "platform/trigonometry.h"
#include "routes/contour_seams.h"
#include "routes/pocket_values.h"
#include "routes/route_runs.h"
#include "routes/route_sides.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr double HarmlessCut = 0.01; // mm, of a lead

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

// A place that was moved into its view and back is off in the last bits.
std::string PlaceText(double drawn)
{
    return PlainText(ToSingle(std::round(drawn * 10000) / 10000));
}

std::string Line(const RouteSegment& start, const char* subject, const char* doubt)
{
    const PlanePoint at = DrawnPlace(start);
    return "Layer " + ShownLayerOfPass(start.Pass) + ": the " + subject + " at X" + PlaceText(at.X) + " Y" +
           PlaceText(at.Y) + " " + doubt;
}

} // namespace

std::string LeadDoubt(const std::vector<RouteSegment>& route, const RouteLeads& leads)
{
    const RouteSegment& start = route.front();
    const std::optional<ContourSeam> seam = SeamOf(route);
    const double radius = ToolRadiusOf(start.Comp);
    if (!seam || seam->Closed || !(radius > 0))
        return {};
    const Tool tool{radius, seam->Side};
    if (leads.In.Form == LeadForm::None) {
        // Many short steps round a curve are no corner: what they lose lies within the tolerance.
        const bool cuts = DepthWithoutLead(*seam, tool) > Run.RouteTolerance;
        return cuts
                   ? Line(start, "contour", "begins in an inner corner without a lead and cuts into its wall")
                   : std::string();
    }
    double depth = DepthOfLead(*seam, tool, leads.In, true);
    if (leads.Out.Ramp == 0) // a ramp out follows the contour, which the tool leaves whole
        depth = std::max(depth, DepthOfLead(*seam, tool, leads.Out, false));
    const bool cuts = depth > HarmlessCut / static_cast<double>(Run.UnitFactor);
    return cuts ? Line(start, "lead", "cuts into the walls of its corner") : std::string();
}

} // namespace kv
