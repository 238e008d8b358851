// Route records filled in by hand, in front of block R: tool 71 of group 1, speed 18000, feeds 2000
// down and 5000 along (4000 on arcs), depth 5, compensation "G41 R5", on the face.
#pragma once

#include "geometry/angles.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/program_scene.h"

namespace kv {

class RouteRecords : public ProgramScene {
  protected:
    static RouteSegment& AddStart(Single x, Single y, Int kind = -1)
    {
        RouteSegment& record = AddPoint(x, y, kind);
        record.Dir = -8;
        return record;
    }
    static RouteSegment& AddPoint(Single x, Single y, Int kind = 1)
    {
        RouteSegment record;
        record.Pass = 1;
        record.X = x;
        record.Y = y;
        record.Z = 5;
        record.Group = 1;
        record.ToolNo = 71;
        record.Kind = kind;
        record.Speed = 18000;
        record.Feed = 5000;
        record.FeedDown = 2000;
        record.Comp = "G41 R5";
        record.Side = 5;
        return RouteSegments.Append(record);
    }
    // Both records; gives the second.
    static RouteSegment& AddArc(PlanePoint start, PlanePoint centre, PlanePoint end, Single startAngle,
                                Single endAngle, Int dir)
    {
        RouteSegment& first = AddPoint(ToSingle(start.X), ToSingle(start.Y), -3);
        first.Aux1 = ToSingle(centre.X);
        first.Aux2 = ToSingle(centre.Y);
        first.Feed = 4000;
        RouteSegment& second = AddPoint(ToSingle(end.X), ToSingle(end.Y), 3);
        second.Aux1 = startAngle;
        second.Aux2 = endAngle;
        second.Dir = dir;
        return second;
    }
    static RouteCircle& AddCircle(Single x, Single y, Single radius)
    {
        RouteCircle circle;
        circle.X = x;
        circle.Y = y;
        circle.Z = 5;
        circle.Group = 1;
        circle.ToolNo = 71;
        circle.Radius = radius;
        circle.Pass = 1;
        circle.Speed = 18000;
        circle.Feed = 5000;
        circle.FeedDown = 2000;
        circle.Comp = "G41";
        circle.Side = 5;
        return RouteCircles.Append(circle);
    }
    static Texts LinesOfRoutes()
    {
        CncProgram program;
        program.OffsetWord = "G55";
        EXPECT_TRUE(WriteRouteBlock(program));
        return TextsOf(program.Lines);
    }
    // What stands between the plane and the speed or the next word.
    static std::string ToolWordOf(const std::string& line)
    {
        const std::size_t from = line.find("P5") + 2;
        return line.substr(from, line.find_first_of("SG", from) - from);
    }
};

} // namespace kv
