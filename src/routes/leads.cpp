// Gives each route its lead-in and lead-out: closed compensated contours first, then what ends at the
// border. Relies on the routes' order and marks. Leaves the list rebuilt, the leads' records in place.
// Routes do not influence each other, so each is planned from the records as they were.
#include "routes/leads.h"

#include <algorithm>
#include <optional>
#include <set>
#include <span>
#include <string>

#include "routes/border_leads.h"
#include "routes/contour_leads.h"
#include "routes/lead_doubts.h"
#include "routes/route_runs.h"
#include "routes/route_sides.h"
#include "state/report.h"

namespace kv {

namespace {

using Records = std::vector<RouteSegment>;

// A contour's start mark is two records in front of it, of which the second is no point of the way.
bool OpensAStartMark(const RouteSegment& record, const RouteSegment& next)
{
    return record.Kind == -4 && StartsRoute(record) && KindOf(next) == 4 && !StartsRoute(next);
}

// The contour behind a mark becomes the route's start, so that it gets the leads.
Records WithoutStartMarks()
{
    Records kept;
    kept.reserve(static_cast<std::size_t>(RouteSegments.Last()));
    bool opensRoute = false;
    for (Long i = 1; i <= RouteSegments.Last(); ++i) {
        RouteSegment record = RouteSegments[i];
        if (opensRoute)
            record.Dir = RouteStart;
        opensRoute = i < RouteSegments.Last() && OpensAStartMark(record, RouteSegments[i + 1]);
        if (opensRoute)
            ++i;
        else
            kept.push_back(record);
    }
    return kept;
}

Records WithoutDeadRecords(Records records)
{
    const auto isDead = [](const RouteSegment& record) { return record.Kind == 0; };
    if (std::none_of(records.begin(), records.end(), isDead))
        return records;
    Records kept;
    bool opensRoute = false;
    for (RouteSegment record : records) {
        if (opensRoute)
            record.Dir = RouteStart;
        opensRoute = isDead(record) && StartsRoute(record);
        if (!isDead(record))
            kept.push_back(record);
    }
    return kept;
}

struct LedRoute {
    std::span<const RouteSegment> Route;
    Records Turned; // the same with the bulges and angles of its view, where they differ
    LeadValues Values;
    std::optional<RouteLeads> Leads;

    std::span<const RouteSegment> Lying() const { return Turned.empty() ? Route : Turned; }
};

// The records cut at each route's first one; those in front of the first route stand as a piece too.
std::vector<LedRoute> RoutesOf(const Records& records)
{
    std::vector<LedRoute> routes;
    for (std::size_t first = 0, last = 0; first < records.size(); first = last) {
        for (last = first + 1; last < records.size() && !StartsRoute(records[last]);)
            ++last;
        LedRoute& led = routes.emplace_back();
        led.Route = std::span(records).subspan(first, last - first);
        const RouteSegment& start = led.Route.front();
        led.Values = LeadValuesOf(start.LeadIn, start.RampOut, start.RampIn);
        led.Turned = AsInItsView(led.Route);
    }
    return routes;
}

// A route that ends in a start mark is what a pocket leaves behind: it is entered in the waste.
bool TakesLeads(std::span<const RouteSegment> route)
{
    return StartsRoute(route.front()) && route.size() >= 2 && KindOf(route.back()) != 4;
}

// Builds the list anew; no route refers to its old records.
void StoreRoutes(std::vector<LedRoute>& routes)
{
    RouteSegments.CutTo(0);
    Records led; // one route's
    for (LedRoute& route : routes) {
        std::span<const RouteSegment> records = route.Route;
        if (route.Leads) {
            if (HasTurnedBulges(route.Route.front()))
                route.Leads->Out.Bulge = -route.Leads->Out.Bulge; // among records that stay as drawn
            led.clear();
            AppendWithLeads(led, route.Route, *route.Leads);
            records = led;
        }
        for (const RouteSegment& record : records)
            AddSegment(record);
    }
    Run.SegmentCount = ToInt(RouteSegments.Last());
}

// Depth passes repeat a contour at its place: each line once.
void TellLeadDoubts(const std::vector<LedRoute>& routes)
{
    std::set<std::string> told;
    for (const LedRoute& led : routes) {
        if (!TakesLeads(led.Route))
            continue;
        const MessageLine doubt = LeadDoubt(led.Lying(), led.Leads.value_or(RouteLeads()));
        if (!doubt.Empty() && told.insert(TextOf(doubt)).second)
            Tell(doubt);
    }
}

} // namespace

void SynthesizeLeads()
{
    const Records records = WithoutDeadRecords(WithoutStartMarks());
    std::vector<LedRoute> routes = RoutesOf(records);
    if (!LeadsWanted()) {
        TellLeadDoubts(routes);
        return;
    }
    SetMeter(Meter::SynLeads, 10);
    SetMeter(Meter::SynLeads, 60);
    for (LedRoute& led : routes)
        if (TakesLeads(led.Route))
            led.Leads = ContourLeads(led.Lying(), led.Values);
    SetMeter(Meter::SynLeads, 100);
    for (LedRoute& led : routes)
        if (!led.Leads && TakesLeads(led.Route))
            led.Leads = BorderLeads(led.Lying(), led.Values.Length);
    TellLeadDoubts(routes);
    StoreRoutes(routes);
}

} // namespace kv
