// Drawings with routes and their whole programs: a panel of 600 x 400 x 18 mm whose lower left corner is
// the drawing's origin, tool 71, depth 5, three decimals. A test states the lines between the name line
// and the end; header and end follow from their number.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/clock.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/program_checker.h"
#include "support/scene.h"

namespace kv::test {

using ProgramText = std::vector<std::string>;

inline const std::string Panel = Rectangle("BORDERZ18", 0, 0, 600, 400);
inline const std::string Closed = Pair(70, "1");
// Widths that differ make a polyline a start mark, or its first two points one: an arrow, wide where it
// begins.
inline const std::string Arrow = Pair(40, 2.0);
inline const std::string Start = "G88G90G55P5T0171"; // of a route on the face with tool 71

// What the rules themselves bring about: no move leads over a gap between linked lines, nor from one
// loop of a rectangular pocket to the next; half turns of a round pocket end by centre and angle.
inline constexpr RouteCheck AcrossGaps{.Joined = false};
inline constexpr RouteCheck LoopByLoop{.Joined = false};
inline constexpr RouteCheck HalfTurns{.EndsAtPoints = false};

// The lines around the operations. The header counts all lines and, behind L, the operations' alone.
inline ProgramText Around(const ProgramText& operations, const std::string& size = "G71X600Y400Z18T00")
{
    const std::size_t count = operations.size();
    ProgramText program = {size + "N" + std::to_string(count + 3) + "L" + std::to_string(count),
                           "G150(KORVANTI DXF IMPORT)"};
    program.insert(program.end(), operations.begin(), operations.end());
    program.emplace_back("M2");
    return program;
}

class RouteProgram : public testing::Test {
  protected:
    RunBlock& Run = kv::Run; // the test class has a Run of its own
    Scene Home;

    void SetUp() override
    {
        Clock.TodayMmDdYy = [] { return std::string("07/04/26"); };
        Clock.SecondsSinceMidnight = [] { return 1000.0; };
        Config.PrecisionMetric = "3";
    }
    // The drawing's entities beside the panel give these operations, and a machine could run them.
    void Expect(const std::string& entities, const ProgramText& operations, const RouteCheck& check = {})
    {
        ExpectOf(Panel + entities, operations, check);
    }
    void ExpectOf(const std::string& entities, const ProgramText& operations, const RouteCheck& check = {})
    {
        std::vector<RouteSegment> records;
        bool hasCircles = false; // they have no records
        const AtStage look("final", [&] {
            records = CurrentRoutes();
            for (Long i = 1; i <= RouteCircles.Last(); ++i)
                hasCircles = hasCircles || RouteCircles[i].Pass > 0;
        });
        ASSERT_TRUE(Home.Convert(Drawing(entities))) << Home.ReportText();
        ASSERT_TRUE(Home.HasProgram()) << Home.ReportText();
        EXPECT_EQ(Home.Program(), Around(operations)) << Home.ReportText();
        const std::vector<std::string> none;
        EXPECT_EQ(ProgramFaults(Home.Program()), none);
        EXPECT_EQ(RouteFaults(records, check), none);
        if (!hasCircles) {
            EXPECT_EQ(PathFaults(Home.Program(), records, check), none);
        }
    }
};

} // namespace kv::test
