// Routes for the tests of leads: a panel of 600 x 400 with leads of 20 on, builders for lines, arcs and
// polylines, and a comparison record by record with values worked out by hand.
#pragma once

#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "routes/leads.h"
#include "routes/route_elements.h"
#include "state/run.h"

namespace kv::lead_test {

using Route = std::vector<RouteSegment>;

inline void LayPanel()
{
    ResetRun();
    Run.SideMinX[5] = Run.SideMinY[5] = 0;
    Run.SideMaxX[5] = 600;
    Run.SideMaxY[5] = 400;
    Run.LeadsOn = True;
    Run.LeadLength = 20;
}

inline RouteSegment Record(int kind, double x, double y, double aux1 = 0, double aux2 = 0, int dir = 0)
{
    RouteSegment record;
    record.Kind = static_cast<Int>(kind);
    record.Dir = static_cast<Int>(dir);
    record.X = static_cast<Single>(x);
    record.Y = static_cast<Single>(y);
    record.Aux1 = static_cast<Single>(aux1);
    record.Aux2 = static_cast<Single>(aux2);
    record.Z = 12;
    record.Side = 5;
    record.Tool = "101";
    record.Pass = 3;
    return record;
}

// A pair of records for each step, as LINEs leave them.
inline Route Lines(const std::vector<PlanePoint>& points)
{
    Route route;
    for (std::size_t i = 1; i < points.size(); ++i) {
        route.push_back(Record(-1, points[i - 1].X, points[i - 1].Y));
        route.push_back(Record(1, points[i].X, points[i].Y));
    }
    return route;
}

inline PlanePoint OnCircle(const PlanePoint& centre, double radius, double degrees)
{
    const double radians = degrees * 3.14159265358979323846 / 180;
    return {centre.X + radius * std::cos(radians), centre.Y + radius * std::sin(radians)};
}

inline Route Arc(const PlanePoint& centre, double radius, double from, double to, bool counterClockwise)
{
    const PlanePoint p = OnCircle(centre, radius, from), q = OnCircle(centre, radius, to);
    return {Record(-3, p.X, p.Y, centre.X, centre.Y),
            Record(3, q.X, q.Y, from, to, counterClockwise ? -1 : 0)};
}

struct Vertex {
    double X = 0, Y = 0, Bulge = 0;
};

inline Route Polyline(const std::vector<Vertex>& vertices)
{
    Route route;
    for (const Vertex& v : vertices)
        route.push_back(Record(route.empty() ? -5 : 5, v.X, v.Y, v.Bulge != 0 ? -1 : 0, v.Bulge));
    return route;
}

// Elements one behind the other as one route, with its compensation on every record.
inline Route Join(const std::vector<Route>& elements, std::string_view comp = "")
{
    Route route;
    for (const Route& element : elements)
        route.insert(route.end(), element.begin(), element.end());
    for (RouteSegment& record : route)
        record.Comp = comp;
    route.front().Dir = -8;
    return route;
}

inline Route Square(std::string_view comp, bool clockwise = false)
{
    if (clockwise)
        return Join({Lines({{100, 100}, {100, 200}, {200, 200}, {200, 100}, {100, 100}})}, comp);
    return Join({Lines({{100, 100}, {200, 100}, {200, 200}, {100, 200}, {100, 100}})}, comp);
}

// The list behind the pass.
inline Route WithLeads(const Route& records)
{
    RouteSegments.Clear();
    for (const RouteSegment& record : records)
        RouteSegments.Append(record);
    SynthesizeLeads();
    return {RouteSegments.begin() + 1, RouteSegments.end()};
}

// The records behind the route that went in, and in front of it.
inline Route Head(const Route& led, std::size_t count)
{
    return {led.begin(), led.begin() + static_cast<long>(count)};
}
inline Route Tail(const Route& led, std::size_t count)
{
    return {led.end() - static_cast<long>(count), led.end()};
}

inline bool SameRecord(const RouteSegment& a, const RouteSegment& b)
{
    const auto fields = [](const RouteSegment& r) {
        return std::vector<double>{double(r.Pass),
                                   r.X,
                                   r.Y,
                                   r.Z,
                                   r.Diameter,
                                   double(r.Group),
                                   double(r.ToolNo),
                                   r.Aux1,
                                   r.Aux2,
                                   double(r.Kind),
                                   double(r.Dir),
                                   double(r.Speed),
                                   r.Feed,
                                   r.FeedDown,
                                   r.FeedRapid,
                                   r.LeadIn,
                                   r.RampOut,
                                   r.RampIn,
                                   double(r.Sequence),
                                   r.OscZ,
                                   double(r.MCode),
                                   double(r.Side),
                                   double(r.ExtraSlot),
                                   r.ParamA,
                                   r.ParamB,
                                   double(r.Flag)};
    };
    return fields(a) == fields(b) && a.Tool == b.Tool && a.Comp == b.Comp;
}

inline std::string TextOf(const RouteSegment& r)
{
    return std::to_string(r.Kind) + " (" + std::to_string(r.X) + "," + std::to_string(r.Y) + ") Z" +
           std::to_string(r.Z) + " aux " + std::to_string(r.Aux1) + " " + std::to_string(r.Aux2) + " dir " +
           std::to_string(r.Dir) + "\n";
}

inline std::string TextOf(const Route& route)
{
    std::string text;
    for (const RouteSegment& r : route)
        text += TextOf(r);
    return text;
}

// Places, angles and bulges to 0.001; an angle of 360 is one of 0.
inline void ExpectRecords(const Route& got, const Route& want)
{
    ASSERT_EQ(got.size(), want.size()) << TextOf(got);
    for (std::size_t i = 0; i < got.size(); ++i) {
        const RouteSegment &g = got[i], &w = want[i];
        const auto differs = [&](double a, double b) {
            return g.Kind == 3 && w.Kind == 3 ? std::fabs(std::remainder(a - b, 360)) : std::fabs(a - b);
        };
        EXPECT_TRUE(g.Kind == w.Kind && g.Dir == w.Dir && g.Z == w.Z && std::fabs(g.X - w.X) < 0.001 &&
                    std::fabs(g.Y - w.Y) < 0.001 && differs(g.Aux1, w.Aux1) < 0.001 &&
                    differs(g.Aux2, w.Aux2) < 0.001)
            << "record " << i + 1 << " is " << TextOf(g) << "instead of " << TextOf(w);
    }
}

inline void ExpectSame(const Route& got, const Route& want)
{
    ASSERT_EQ(got.size(), want.size()) << TextOf(got);
    for (std::size_t i = 0; i < got.size(); ++i)
        EXPECT_TRUE(SameRecord(got[i], want[i]))
            << "record " << i + 1 << " is " << TextOf(got[i]) << "instead of " << TextOf(want[i]);
}

inline RouteSegment AtDepth(RouteSegment record, double z)
{
    record.Z = static_cast<Single>(z);
    return record;
}

} // namespace kv::lead_test
