// Panels from drawing to program: bores in edge views, bores drawn as a T in plan, and a panel that
// lies in the negative quadrant.
#include <gtest/gtest.h>

#include "support/dxf.h"
#include "support/scene.h"

namespace kv {
namespace {

using namespace test;
using Program = std::vector<std::string>;

TEST(PanelProgram, EdgeViewsGiveBoresOnTheirSides)
{
    // Face (200, 200) to (800, 600), a view on each side; a circle on the face is in no view.
    Scene place;
    const std::string drawing =
        Rectangle("BORDER", 200, 200, 600, 400) + Rectangle("BORDER", 210, 700, 580, 18) +
        Rectangle("BORDER", 205, 100, 590, 18) + Rectangle("BORDER", 100, 215, 18, 370) +
        Rectangle("BORDER", 900, 220, 18, 360) + Circle("HBORE Z30", 310, 709, 4) +
        Circle("HBORE Z30", 400, 400, 4) + Circle("HBORE Z30", 305, 106, 4) +
        Circle("HBORE Z30", 110, 315, 4) + Circle("HBORE Z30T4F1500S6", 912, 320, 4) +
        Circle("VBORE D5Z12", 264, 250, 4);
    ASSERT_TRUE(place.Convert(Drawing(drawing))) << place.ReportText();
    EXPECT_EQ(place.Program(),
              (Program{"G71X600Y400Z18T00N8L5", "G150(KORVANTI DXF IMPORT)", "G81G90G55P5R54=5X64Y50Z12",
                       "G81G90F1500G55P4T0104S6000X30Y100Z12", "G81G90G55P2R54=8X100Y30Z12",
                       "G81G90G55P3R54=8X30Y100Z8", "G81G90G55P1R54=8X100Y30Z9", "M2"}));
}

TEST(PanelProgram, TwoLinesAsATGiveABoreInEachEdge)
{
    // Face (200, 200) to (800, 600). The way in counts from the opposite edge: 570 of 600, 370 of 400.
    Scene place;
    const std::string drawing =
        PanelSolid("PANEL", 200, 200, 600, 400, 18) + Line("HBORE", 300, 600, 300, 570) +
        Line("HBORE Z9T61S6000F1500", 296, 570, 304, 570) + Line("HBORE", 300, 230, 300, 200) +
        Line("HBORE Z9", 304, 230, 296, 230) +
        Polyline("HBORE Z9", {{200, 300}, {230, 300}, {230, 308}}) + // an L in one piece
        Line("HBORE", 800, 300, 770, 300) + Line("MYHBORE", 770, 296, 770, 304, Pair(38, -8.5)) +
        Line("HBORE Z9", 400, 400, 430, 400); // alone in the middle
    ASSERT_TRUE(place.Convert(Drawing(drawing))) << place.ReportText();
    EXPECT_EQ(place.Program(),
              (Program{"G71X600Y400Z18T00N7L4", "G150(KORVANTI DXF IMPORT)", "G81G90G55P4R54=8X30Y100Z8.5",
                       "G81G90G55P2R54=8X100Y30Z9", "G81G90G55P3R54=8X30Y104Z9",
                       "G81G90F1500G55P1T0161S6000X100Y30Z9", "M2"}));
}

TEST(PanelProgram, PanelSolidInTheNegativeQuadrant)
{
    // The first circle's normal takes the sign of its X away; the panel brings it back. The tour starts
    // at the far corner.
    Scene place;
    const std::string drawing =
        PanelSolid("PANEL", -600, -400, 600, 400, 18) +
        Circle("VBORE Z5", -550, -350, 4, Pair(210, "0") + Pair(220, "0") + Pair(230, "1")) +
        Circle("VBORE Z5", -100, -100, 4);
    ASSERT_TRUE(place.Convert(Drawing(drawing))) << place.ReportText();
    EXPECT_EQ(place.Program(), (Program{"G71X600Y400Z18T00N5L2", "G150(KORVANTI DXF IMPORT)",
                                        "G81G90G55P5R54=8X500Y300Z5", "G81G90G55P5R54=8X50Y50Z5", "M2"}));
}

} // namespace
} // namespace kv
