// The report names layers and kinds of entities as the drawing spells them, whatever the run made of them.
#include <gtest/gtest.h>

#include "support/dxf.h"
#include "support/scene.h"

namespace kv::test {
namespace {

class DrawnLayers : public testing::Test {
  protected:
    Scene Home;

    static std::string Bordered(const std::string& entities)
    {
        return Drawing(Rectangle("BORDERZ18", 0, 0, 600, 400) + entities);
    }
    static std::string Dot(std::string_view layer) { return Line(layer, 100, 100, 100, 100); }
    static std::string LeftOut(const std::string& layer)
    {
        return "Layer " + layer + ": 1 line of length 0 cannot be cut";
    }
    void ExpectTold(const std::string& entities, const std::string& line)
    {
        Home.Convert(Bordered(entities));
        EXPECT_TRUE(Home.Reported(line)) << Home.ReportText();
    }
    void ExpectCause(const std::string& drawing, const std::string& cause)
    {
        EXPECT_FALSE(Home.Convert(drawing));
        EXPECT_TRUE(Home.Reported((Home.Folder / "DOOR.DXF").string() + ": " + cause)) << Home.ReportText();
    }
};

TEST_F(DrawnLayers, ANumberedRouteKeepsItsNumberInTheReport)
{
    ExpectTold(Dot("ROUTE1_Z5"), LeftOut("ROUTE1_Z5"));
    ExpectTold(Dot("ROUTE012Z5"), LeftOut("ROUTE012Z5"));
}

TEST_F(DrawnLayers, CapitalsCommasAndCodesStayAsTheyAreDrawn)
{
    ExpectTold(Dot("  Route1_z5,5ex3 LDi20 "), LeftOut("Route1_z5,5ex3 LDi20"));
}

TEST_F(DrawnLayers, AllPassesOfALayerHaveItsName)
{
    Home.Convert(Bordered(Dot("ROUTE1Z5T71$Z9$Z12")));
    int told = 0;
    for (const std::string& line : Home.Lines)
        told += line == LeftOut("ROUTE1Z5T71$Z9$Z12") ? 1 : 0;
    EXPECT_EQ(told, 3) << Home.ReportText();
    ExpectTold(Circle("Border$Z5", 9, 9, 0), "Layer Border$Z5: 1 circle without a radius cannot be cut");
}

TEST_F(DrawnLayers, PolylinesOfBothFormsHaveTheirLayer)
{
    const std::string told =
        ": 1 polyline with fewer than 2 different points has no length, the tool only plunges at X9 Y9";
    ExpectTold(Polyline("Route1Z5", {{9, 9}, {9, 9}}), "Layer Route1Z5" + told);
    ExpectTold(Lwpolyline("Route1Z5", {{9, 9}, {9, 9}}), "Layer Route1Z5" + told);
}

// Behind the walks over the entities a route knows no more than the number of its pass.
TEST_F(DrawnLayers, PassesOverTheRoutesNameThemToo)
{
    ExpectTold(Line("Excav1_Z5K3T71L", 100, 100, 200, 100) + Line("Excav1_Z5K3T71L", 200, 100, 100, 130),
               "Layer Excav1_Z5K3T71L: the pocket at X100 Y100 is not cleared, its outline is open at X100 "
               "Y130 by 30");
}

// The drawing's own word for it, and never wrong where several layers become one.
TEST_F(DrawnLayers, ARenamedLayerHasTheNameThatItsInstructionSpells)
{
    ExpectTold(Instructions({"LAYER Cut=Route1_z5"}) + Dot("CUT"), LeftOut("Route1_z5"));
    ExpectTold(Instructions({"COLOR 3=Route1_z6"}) + Line("0", 9, 9, 9, 9, Pair(62, "3")),
               LeftOut("Route1_z6"));
}

TEST_F(DrawnLayers, ARefusedValueNamesItsLayer)
{
    ExpectCause(Bordered(Line("Route1Z1e39", 9, 9, 99, 9) + Circle("Vbore_z5t99999999", 9, 9, 4) +
                         Line("Groove_z5t9999999999", 9, 9, 99, 9)),
                "Tool number out of range on layer Groove_z5t9999999999");
    ExpectCause(Bordered(Line("Route1Z5T99999", 9, 9, 99, 9)),
                "Value out of range at \"99999\" on layer Route1Z5T99999");
    ExpectCause(Bordered(Line("Route1T99999$Z5", 9, 9, 99, 9)),
                "Value out of range at \"99999\" on layer Route1T99999$Z5");
    ExpectCause(Drawing(Line("Cut", 9, 9, 99, 9, Pair(62, "99999"))),
                "Color 99999 out of range in line 18 of LINE on layer Cut");
}

TEST_F(DrawnLayers, ADrawingNeverHasTheNamesOfTheOneBefore)
{
    ExpectTold(Dot("Route1_z5"), LeftOut("Route1_z5"));
    ExpectTold(Dot("ROUTE1_Z5"), LeftOut("ROUTE1_Z5"));
    EXPECT_FALSE(Home.Convert("0\nSECTION\n2\nENTITIES\n0\nLINE\n8\nRoute1_z5\n"));
    ExpectTold(Dot("ROUTE1_Z5"), LeftOut("ROUTE1_Z5"));
}

TEST_F(DrawnLayers, AKindThatIsLongerThanTenLettersIsWhole)
{
    const auto entity = [](const char* kind) { return Pair(0, kind) + Pair(8, "ROUTE1_Z5"); };
    ExpectTold(entity("MULTILEADER"), "Layer ROUTE1_Z5: 1 entity of kind MULTILEADER cannot be cut");
    ExpectTold(entity("ACAD_PROXY_ENTITY") + entity("ACAD_PROXY_ENTITY"),
               "Layer ROUTE1_Z5: 2 entities of kind ACAD_PROXY_ENTITY cannot be cut");
    ExpectTold(entity("SPLINE"), "Layer ROUTE1_Z5: 1 entity of kind SPLINE cannot be cut");
}

} // namespace
} // namespace kv::test
