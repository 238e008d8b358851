// Route layers of a drawing, looked at when the route passes are done. The panel is (100, 50) to
// (700, 450), 18 thick.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "job/job_driver.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv::test {

struct RouteScene : testing::Test {
    RunBlock& Run = kv::Run; // the test class has a Run of its own
    Scene Place;
    std::vector<RouteSegment> Segments; // from 0
    std::vector<RouteCircle> Circles;
    RunBlock Seen;

    void Read(const std::string& entities)
    {
        Stages.StopBeforeWriters = true;
        bool reached = false;
        const AtStage look("routes", [this, &reached] {
            Segments.assign(RouteSegments.begin() + 1, RouteSegments.end());
            Circles.assign(RouteCircles.begin() + 1, RouteCircles.end());
            Seen = Run;
            reached = true;
        });
        Place.Convert(Drawing(Rectangle("BORDERZ18", 100, 50, 600, 400) + entities));
        EXPECT_TRUE(reached) << Place.ReportText();
    }

    // The job's one line behind its name.
    std::string CauseOf(const std::string& entities)
    {
        EXPECT_FALSE(Place.Convert(Drawing(Rectangle("BORDERZ18", 100, 50, 600, 400) + entities)));
        const std::string line = Place.Lines.empty() ? "" : Place.Lines.back();
        const std::size_t behind = line.find("DOOR.DXF: ");
        EXPECT_NE(behind, std::string::npos) << Place.ReportText();
        return behind == std::string::npos ? line : line.substr(behind + 10);
    }

    int Count(const std::string& row) const
    {
        int count = 0;
        for (const std::string& line : Place.Lines)
            count += line == row ? 1 : 0;
        return count;
    }

    // Rows that tell what cannot be cut.
    std::vector<std::string> Uncut() const
    {
        std::vector<std::string> rows;
        for (const std::string& line : Place.Lines)
            if (line.find(" cannot be cut") != std::string::npos && line.rfind("Layer ", 0) == 0)
                rows.push_back(line);
        return rows;
    }
};

struct KindAndPlace {
    int Kind;
    Single X, Y, Z;
    friend bool operator==(const KindAndPlace&, const KindAndPlace&) = default;
    friend void PrintTo(const KindAndPlace& record, std::ostream* out)
    {
        *out << "{" << record.Kind << ", " << record.X << ", " << record.Y << ", " << record.Z << "}";
    }
};

inline std::vector<KindAndPlace> KindsAndPlaces(const std::vector<RouteSegment>& records)
{
    std::vector<KindAndPlace> places;
    for (const RouteSegment& record : records)
        places.push_back({record.Kind, record.X, record.Y, record.Z});
    return places;
}

// An instruction title on layer INFO, so that further texts there are notes at their places.
inline std::string NotesFollow()
{
    return Instructions({});
}

inline std::string NoteAt(double x, double y, const std::string& text)
{
    return TextAt("INFO", x, y, text);
}

inline std::string NormalOf(double x, double y, double z)
{
    return Pair(210, x) + Pair(220, y) + Pair(230, z);
}

} // namespace kv::test
