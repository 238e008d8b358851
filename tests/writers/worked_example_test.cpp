// One bore and one route, from drawing to program, byte for byte, and what the checker says of it.
#include <gtest/gtest.h>

#include "support/dxf.h"
#include "support/program_checker.h"
#include "support/scene.h"

namespace kv {
namespace {

using namespace test;
using Program = std::vector<std::string>;

const std::string WorkedPanel =
    Rectangle("BORDERZ18", 0, 0, 600, 400) + TextAt("BORDERZ18", 0, 0, "DESC DOOR");
const std::string WorkedBore = Circle("VBOREZ12F3000", 100, 50, 4);
const std::string WorkedRoute = Line("ROUTE1Z5T71S18FD2000F5000L5", 10, 10, 300, 10);

TEST(WorkedExample, ABoreAndARouteByteForByte)
{
    Scene place;
    std::vector<RouteSegment> records;
    const AtStage look("final", [&] { records = CurrentRoutes(); });
    ASSERT_TRUE(place.Convert(Drawing(WorkedPanel + WorkedBore + WorkedRoute))) << place.ReportText();
    EXPECT_EQ(place.Read(place.Programs / "SRG" / "D" / "OOR"), "G71X600Y400Z18T00N6L3\r\n"
                                                                "G150(DOOR)\r\n"
                                                                "G81G90F3000G55P5R54=8X100Y50Z12\r\n"
                                                                "G88G90F2000G55P5T0171S18000G41R5X10Y10Z5\r\n"
                                                                "G1G90F5000X300Y10Z5\r\n"
                                                                "M2\r\n");
    const Program lines = place.Program();
    EXPECT_EQ(ProgramFaults(lines), Program());
    EXPECT_EQ(RouteFaults(records), Program());
    EXPECT_EQ(PathFaults(lines, records), Program());
}

TEST(WorkedExample, ASecondDrawingOfTheProcessIsTheSame)
{
    Scene place;
    const std::string drawing = Drawing(WorkedPanel + WorkedBore + WorkedRoute);
    ASSERT_TRUE(place.Convert(drawing, "FIRST.DXF")) << place.ReportText();
    ASSERT_TRUE(place.Convert(drawing, "SECOND.DXF")) << place.ReportText();
    EXPECT_EQ(place.Program("FIRST"), place.Program("SECOND"));
    EXPECT_EQ(place.Program("FIRST").size(), 6U);
}

} // namespace
} // namespace kv
