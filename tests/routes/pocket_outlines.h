// Outlines of pockets as the chained routes hold them: a start mark of two records, then a pair of
// records for each line and each rounded corner.
#pragma once

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "geometry/angles.h"
#include "routes/pockets.h"
#include "routes/segment_rows.h"
#include "support/scene.h"

namespace kv::rows {

struct Corners {
    double MinX = 0, MinY = 0, MaxX = 0, MaxY = 0;
};

inline void MarkPocket(std::vector<RouteSegment>& records, double oscZ, std::string_view comp, int pass = 1)
{
    for (RouteSegment& record : records) {
        record.OscZ = ToSingle(oscZ);
        record.Comp = comp;
        record.Pass = pass;
    }
}

// Four lines counter-clockwise from the lower left corner; the mark leads along the lower side.
inline std::vector<RouteSegment> SquareOutline(const Corners& box, double oscZ, std::string_view comp)
{
    std::vector<RouteSegment> records = {
        Step(-4, box.MinX, box.MinY, -8), Step(4, box.MinX + 1, box.MinY), Step(-1, box.MinX, box.MinY),
        Step(1, box.MaxX, box.MinY),      Step(-1, box.MaxX, box.MinY),    Step(1, box.MaxX, box.MaxY),
        Step(-1, box.MaxX, box.MaxY),     Step(1, box.MinX, box.MaxY),     Step(-1, box.MinX, box.MaxY),
        Step(1, box.MinX, box.MinY),
    };
    MarkPocket(records, oscZ, comp);
    return records;
}

// Clockwise from the lower end of the left side, corners of radius r as arcs; 18 records.
inline std::vector<RouteSegment> RoundedOutline(const Corners& box, double r, double oscZ,
                                                std::string_view comp)
{
    const double left = box.MinX + r, right = box.MaxX - r, low = box.MinY + r, high = box.MaxY - r;
    std::vector<RouteSegment> records = {
        Step(-4, box.MinX, low, -8),
        Step(4, box.MinX, low + 1),
        Step(-1, box.MinX, low),
        Step(1, box.MinX, high),
        ArcStep(-3, box.MinX, high, left, high),
        ArcStep(3, left, box.MaxY, 180, 90),
        Step(-1, left, box.MaxY),
        Step(1, right, box.MaxY),
        ArcStep(-3, right, box.MaxY, right, high),
        ArcStep(3, box.MaxX, high, 90, 0),
        Step(-1, box.MaxX, high),
        Step(1, box.MaxX, low),
        ArcStep(-3, box.MaxX, low, right, low),
        ArcStep(3, right, box.MinY, 0, 270),
        Step(-1, right, box.MinY),
        Step(1, left, box.MinY),
        ArcStep(-3, left, box.MinY, left, low),
        ArcStep(3, box.MinX, low, 270, 180),
    };
    MarkPocket(records, oscZ, comp);
    return records;
}

// Two half circles round a centre, from the bearing `begin` (degrees) on.
inline std::vector<RouteSegment> HalfCircles(const PlanePoint& centre, double radius, double begin,
                                             bool isCounterClockwise)
{
    const double other = begin >= 180 ? begin - 180 : begin + 180;
    const PlanePoint first = Polar(centre, radius, begin);
    const PlanePoint second = Polar(centre, radius, other);
    const int dir = isCounterClockwise ? -1 : 0;
    return {
        ArcStep(-3, first.X, first.Y, centre.X, centre.Y, -8),
        ArcStep(3, second.X, second.Y, begin, other, dir),
        ArcStep(-3, second.X, second.Y, centre.X, centre.Y),
        ArcStep(3, first.X, first.Y, other, begin, dir),
    };
}

// Clockwise; from the top, or from the bottom where the radius is below 0.
inline std::vector<RouteSegment> CircleOutline(double x, double y, double radius, double oscZ,
                                               std::string_view comp)
{
    std::vector<RouteSegment> records = HalfCircles({x, y}, std::abs(radius), radius > 0 ? 90 : 270, false);
    MarkPocket(records, oscZ, comp);
    return records;
}

inline std::vector<RouteSegment> Together(std::vector<RouteSegment> a, const std::vector<RouteSegment>& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// Passes 1 and 2 of a run, the report kept.
class PocketTest : public testing::Test {
  protected:
    void SetUp() override
    {
        test::ResetProcess();
        ResetRun();
        kv::Run.LayerTable = {"BORDER", "VBORE DRILLING", "GROOVE", "HBORE", "EXCAV20Z5   ", "EXCAV30"};
    }
    void TearDown() override { test::ResetProcess(); }

    std::vector<RouteSegment> Excavate(const std::vector<RouteSegment>& records,
                                       const std::vector<RouteCircle>& circles = {})
    {
        Hand(records);
        RouteCircles.Clear();
        for (const RouteCircle& circle : circles)
            RouteCircles.Append(circle);
        const ReportLines report;
        ExcavatePockets();
        Lines = ReportLines::Shown();
        EXPECT_EQ(kv::Run.SegmentCount, RouteSegments.Last());
        return All();
    }
    std::vector<std::string> Lines;
};

// The lines about a pocket of pass 1, by a point of it.
inline std::string Told(std::string_view place, std::string_view what)
{
    return "Layer EXCAV20Z5: the pocket at " + std::string(place) + " " + std::string(what);
}
inline std::string NotCleared(std::string_view place)
{
    return Told(place, "is not cleared");
}
inline std::string WithoutMark(std::string_view place)
{
    return Told(place, "is not cleared, no start mark meets its outline");
}
inline std::string NoRectangle(std::string_view place)
{
    return Told(place, "is not cleared, its outline is no rectangle");
}
inline std::string Open(std::string_view place, std::string_view end, std::string_view by)
{
    return Told(place,
                "is not cleared, its outline is open at " + std::string(end) + " by " + std::string(by));
}
inline std::string SharpStart(std::string_view place)
{
    return Told(place, "begins in a sharp corner and cuts into its wall");
}
inline std::string Islands(std::string_view place)
{
    return Told(place, "leaves islands at its sharp corners");
}
inline std::string NarrowWays(std::string_view place)
{
    return Told(place, "has ways that are narrower than its tool");
}

} // namespace kv::rows
