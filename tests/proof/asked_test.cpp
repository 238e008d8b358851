// What a drawing asks for, by hand; programs that do something else are found; and the five pockets and a
// part on each control, which are drawn as pictures where KORVANTI_PICTURES names a folder.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "proof/shop.h"
#include "support/dxf.h"
#include "support/proof/drawn_routes.h"
#include "support/proof/picture.h"

namespace kv::test {
namespace {

constexpr double UnitDisc = 3.14159265358979323846; // the area of a disc of radius 1
constexpr double CornerRest = 1 - UnitDisc / 4;     // what a tool of radius 1 leaves in a sharp corner

const std::string Board = Rectangle("BORDERZ18", 0, 0, 300, 200);
const std::string Closed = Pair(70, "1");

// 100 to 200 by 60 to 140, counter-clockwise, its seam in the middle of the lower side.
std::string SquareOn(const std::string& layer)
{
    return Polyline(layer, {{150, 60}, {200, 60}, {200, 140}, {100, 140}, {100, 60}}, Closed);
}

AskedCut OnlyOneIn(const std::string& entities)
{
    const std::vector<AskedCut> asked = AskedCuts(PanelDrawnIn(Drawing(Board + entities), UnnamedRadius));
    EXPECT_EQ(asked.size(), 1U);
    return asked.at(0);
}

TEST(Asked, AToolOutsideCutsABandThatIsRoundAtTheCorners)
{
    const AskedCut asked = OnlyOneIn(SquareOn("ROUTEZ5T71R3"));
    const double band = 2 * (100 + 80) * 6 + UnitDisc * 36;
    EXPECT_NEAR(AreaOf(asked.May), band, 0.1);
    EXPECT_NEAR(AreaOf(asked.Must), band, 0.1);
    EXPECT_FALSE(Holds(asked.May, {101, 61}));
    EXPECT_TRUE(Holds(asked.May, {99, 59}));
    EXPECT_EQ(asked.Depth, 5);
}

TEST(Asked, AToolInsideLeavesWhatItsRadiusCannotReach)
{
    const AskedCut asked = OnlyOneIn(SquareOn("ROUTEZ5T71L3"));
    const double band = 100 * 80 - 88 * 68;
    EXPECT_NEAR(AreaOf(asked.May), band, 0.1);
    EXPECT_NEAR(AreaOf(asked.Must), band - 4 * CornerRest * 9, 0.1);
    EXPECT_TRUE(asked.Doubts.empty());
}

TEST(Asked, APolylineThatBeginsInAnInnerCornerMayCutHalfADiscTwice)
{
    const AskedCut asked =
        OnlyOneIn(Polyline("ROUTEZ5T71L3", {{100, 60}, {200, 60}, {200, 140}, {100, 140}}, Closed));
    EXPECT_NEAR(AreaOf(asked.May), 100 * 80 - 88 * 68 + UnitDisc * 9, 0.1);
    EXPECT_TRUE(asked.Has(Doubt::BeginsInInnerCorner));
}

TEST(Asked, AnOpenChainIsCutOnItsSideWithRoundEnds)
{
    const std::string chain = Line("ROUTEZ5T71L3", 50, 50, 150, 50) + Line("ROUTEZ5T71L3", 150, 50, 150, 150);
    const AskedCut asked = OnlyOneIn(chain);
    // To the left lies the inner corner.
    EXPECT_NEAR(AreaOf(asked.May), 6 * (100 + 94) + UnitDisc * 9, 0.3);
    EXPECT_NEAR(AreaOf(asked.Must), AreaOf(asked.May) - CornerRest * 9, 0.5);
    EXPECT_TRUE(Holds(asked.May, {100, 53}));
    EXPECT_FALSE(Holds(asked.May, {100, 49}));
    const AskedCut outer =
        OnlyOneIn(Line("ROUTEZ5T71R3", 50, 50, 150, 50) + Line("ROUTEZ5T71R3", 150, 50, 150, 150));
    EXPECT_NEAR(AreaOf(outer.May), 6 * 200 + UnitDisc * 9 + UnitDisc * 9, 0.3);
}

TEST(Asked, APocketIsAskedForWholeButForItsCorners)
{
    const AskedCut asked = OnlyOneIn(Rectangle("EXCAVZ5K4T71R3", 100, 60, 100, 80) +
                                     Polyline("EXCAVZ5K4T71R3", {{99, 60}, {100, 60}}, Pair(40, 2.0)));
    EXPECT_NEAR(AreaOf(asked.Must), 100 * 80 - 4 * CornerRest * 9, 0.1);
    EXPECT_NEAR(AreaOf(asked.May), 100 * 80 + UnitDisc * 9,
                0.1); // half a disc at the mark, along either wall
}

// --- programs that do something else

class OtherPrograms : public testing::Test {
  protected:
    const std::string Drawn = Drawing(Board + SquareOn("ROUTEZ5T71R3") + Line("HBORE", 0, 100, 30, 100) +
                                      Line("HBOREZ8", 30, 96, 30, 104));
    DrawnPanel Panel = PanelDrawnIn(Drawn, UnnamedRadius);

    void SetUp() override { Panel.Bores = {{Plane::Edge3, {100, 10}, 30, 8, "", 0}}; }
    std::vector<Deviation> Found(const std::function<void(MachineSteps&)>& change)
    {
        Shop shop(Control::Cnc90);
        MachineSteps steps = shop.StepsOf(Drawn);
        change(steps);
        return DeviationsOf(AskedCuts(Panel), Panel, steps);
    }
    void ExpectFound(const std::function<void(MachineSteps&)>& change, Fault what, double area)
    {
        double found = 0;
        bool any = false;
        for (const Deviation& deviation : Found(change)) {
            any = any || deviation.What == what;
            found += deviation.What == what ? AreaOf(deviation.Place) : 0;
        }
        EXPECT_TRUE(any) << ShownFault(what);
        EXPECT_NEAR(found, area, 1.5) << ShownFault(what);
    }
};

TEST_F(OtherPrograms, TheProgramItselfHasNoDeviation)
{
    EXPECT_TRUE(Found([](MachineSteps&) {}).empty());
}

TEST_F(OtherPrograms, TheOtherSideIsFound)
{
    const auto otherSide = [](MachineSteps& steps) { steps.Cuts.at(0).Side = 1; };
    // All but the tolerance inside; all of the band outside.
    ExpectFound(otherSide, Fault::CutOutside, 99.9 * 79.9 - 88 * 68 - 4 * CornerRest * 9);
    ExpectFound(otherSide, Fault::Left, 2 * (100 + 80) * 5.95 + UnitDisc * 36);
}

TEST_F(OtherPrograms, ATenthTooFarIsFound)
{
    const auto wider = [](MachineSteps& steps) { steps.Cuts.at(0).Radius = 3.1; };
    ExpectFound(wider, Fault::CutOutside, 2 * (100 + 80) * 0.15 + UnitDisc * (6.2 * 6.2 - 6.05 * 6.05));
    const auto shifted = [](MachineSteps& steps) {
        for (Move& move : steps.Cuts.at(0).Moves) {
            move.From.X += 0.1;
            move.To.X += 0.1;
        }
    };
    ExpectFound(shifted, Fault::CutOutside, 2 * 80 * 0.05);
    ExpectFound(shifted, Fault::Left, 2 * 80 * 0.05);
}

TEST_F(OtherPrograms, AMissingMoveIsFound)
{
    const auto shorter = [](MachineSteps& steps) { steps.Cuts.at(0).Moves.pop_back(); };
    ExpectFound(shorter, Fault::Left, 50 * 6);
    ExpectFound([](MachineSteps& steps) { steps.Cuts.clear(); }, Fault::Left,
                2 * (100 + 80) * 6 + UnitDisc * 36);
}

TEST_F(OtherPrograms, AnotherDepthIsFound)
{
    const auto deeper = [](MachineSteps& steps) {
        for (Move& move : steps.Cuts.at(0).Moves)
            move.DepthFrom = move.DepthTo = 5.1;
    };
    ExpectFound(deeper, Fault::Depth, 0);
    Panel.Ways.at(0).Passes = 2;
    ExpectFound([](MachineSteps&) {}, Fault::Passes, 2 * (100 + 80) * 6 + UnitDisc * 36);
}

TEST_F(OtherPrograms, ABoreElsewhereIsFound)
{
    ExpectFound([](MachineSteps& steps) { steps.Bores.at(0).At.X += 0.02; }, Fault::Bore, 0);
    ExpectFound([](MachineSteps& steps) { steps.Bores.at(0).Depth += 0.02; }, Fault::Bore, 0);
    ExpectFound([](MachineSteps& steps) { steps.Bores.clear(); }, Fault::Bore, 0);
    ExpectFound([](MachineSteps& steps) { steps.Bores.push_back(steps.Bores.at(0)); }, Fault::Bore, 0);
}

TEST_F(OtherPrograms, ACutWhereNothingIsDrawnIsFound)
{
    const auto twice = [](MachineSteps& steps) {
        steps.Cuts.push_back(steps.Cuts.at(0));
        steps.Cuts.back().Start = {10, 10};
    };
    ExpectFound(twice, Fault::CutOutside, 0);
}

// --- pictures

std::string RoundedPocket(const std::string& layer, double r)
{
    return Line(layer, 60 + r, 50, 240 - r, 50) + Arc(layer, 240 - r, 50 + r, r, 270, 0) +
           Line(layer, 240, 50 + r, 240, 150 - r) + Arc(layer, 240 - r, 150 - r, r, 0, 90) +
           Line(layer, 240 - r, 150, 60 + r, 150) + Arc(layer, 60 + r, 150 - r, r, 90, 180) +
           Line(layer, 60, 150 - r, 60, 50 + r) + Arc(layer, 60 + r, 50 + r, r, 180, 270) +
           Polyline(layer, {{55 + r, 50}, {60 + r, 50}}, Pair(40, 2.0));
}

class Pictures : public testing::TestWithParam<Control> {
  protected:
    void ExpectAsDrawn(const std::string& name, const std::string& entities)
    {
        const std::string drawing = Drawing(Board + entities);
        const DrawnPanel panel = PanelDrawnIn(drawing, UnnamedRadius);
        const std::vector<AskedCut> asked = AskedCuts(panel);
        Shop shop(GetParam());
        const MachineSteps steps = shop.StepsOf(drawing);
        KeepPicture(name + "_" + ShownControl(GetParam()), panel, asked, steps);
        EXPECT_FALSE(asked.empty());
        for (const Deviation& deviation : WrongIn(asked, panel, steps, shop.Home.Lines))
            ADD_FAILURE() << name << ": " << deviation.Text;
    }
};

TEST_P(Pictures, FivePockets)
{
    const std::string layer = "EXCAVZ5K4T71R4";
    ExpectAsDrawn("pocket_rectangle",
                  Rectangle(layer, 60, 50, 180, 100) + Polyline(layer, {{55, 50}, {60, 50}}, Pair(40, 2.0)));
    ExpectAsDrawn("pocket_rounded_5", RoundedPocket(layer, 5));
    ExpectAsDrawn("pocket_rounded_28", RoundedPocket(layer, 28));
    ExpectAsDrawn("pocket_half_circles",
                  Arc(layer, 150, 100, 45, 45, 225) + Arc(layer, 150, 100, 45, 225, 45));
    ExpectAsDrawn("pocket_circle", Circle(layer, 150, 100, 45));
}

TEST_P(Pictures, ARoutedPart)
{
    ExpectAsDrawn("part",
                  Polyline("ROUTEZ18.2T71R5LD12",
                           {{150, 40}, {220, 40, 0.5}, {220, 110}, {180, 160}, {80, 160, 0.3}, {80, 40}},
                           Closed) +
                      Circle("ROUTE1Z18.2T72R3LD8", 150, 100, 25));
}

INSTANTIATE_TEST_SUITE_P(All, Pictures, testing::Values(Control::Cnc90, Control::Genesis, Control::Evolution),
                         [](const auto& control) { return std::string(ShownControl(control.param)); });

// --- what cannot be cut as drawn is told by name

class ToldByName : public testing::TestWithParam<Control> {
  protected:
    // The only feature, with no doubt of the drawing for a reason: the tool stays in the contour, or out of
    // it. What it does beside that has its line in the report; where it does nothing there is no line.
    void ExpectTold(const std::string& name, const std::string& entities, bool inside,
                    const std::string& told, bool expected = true)
    {
        SCOPED_TRACE(name);
        const std::string drawing = Drawing(Board + entities);
        const DrawnPanel panel = PanelDrawnIn(drawing, UnnamedRadius);
        std::vector<AskedCut> asked = AskedCuts(panel);
        ASSERT_EQ(asked.size(), 1U);
        const bool pocket = !panel.Pockets.empty();
        const Region contour = Inside({pocket ? panel.Pockets.at(0).Outline : panel.Ways.at(0).Pieces});
        asked[0].May = inside ? contour : Difference(BoxOf({-100, -100}, {400, 300}), contour);
        if (pocket)
            asked[0].Must = ReachedBy(contour, 2 * asked[0].Radius);
        Shop shop(GetParam());
        const MachineSteps steps = shop.StepsOf(drawing);
        KeepPicture(name + "_" + ShownControl(GetParam()), panel, asked, steps);
        std::string found;
        for (const Deviation& deviation : DeviationsOf(asked, panel, steps))
            if (deviation.What != Fault::Compensation)
                found += deviation.Text + "\n";
        EXPECT_EQ(!found.empty(), expected) << found;
        EXPECT_EQ(shop.Home.Reported(told), expected) << shop.Home.ReportText();
    }
    // The lower left corner at 60, 50; 180 long. Its mark is in the lower left, where the short side ends.
    static std::string Stadium(const std::string& layer, double r, double side)
    {
        const double high = 50 + 2 * r + side;
        return Line(layer, 60 + r, 50, 240 - r, 50) + Arc(layer, 240 - r, 50 + r, r, 270, 0) +
               Line(layer, 240, 50 + r, 240, high - r) + Arc(layer, 240 - r, high - r, r, 0, 90) +
               Line(layer, 240 - r, high, 60 + r, high) + Arc(layer, 60 + r, high - r, r, 90, 180) +
               Line(layer, 60, high - r, 60, 50 + r) + Arc(layer, 60 + r, 50 + r, r, 180, 270) +
               Polyline(layer, {{55 + r, 50}, {60 + r, 50}}, Pair(40, 2.0));
    }
};

// The lead is a quarter circle where the first piece is an arc, and begins in the other wall.
TEST_P(ToldByName, ALeadInAnInnerCornerBeforeAnArcCutsTheWall)
{
    const std::string layer = "ROUTEZ5T71L3LD12";
    ExpectTold("lead_before_arc",
               Arc(layer, 100, 60, 20, 0, 90) + Line(layer, 120, 60, 200, 60) +
                   Line(layer, 200, 60, 200, 140) + Line(layer, 200, 140, 100, 140) +
                   Line(layer, 100, 140, 100, 80),
               true, "Layer " + layer + ": the lead at X100 Y80 cuts into the walls of its corner");
}

// The rising lead out goes on round the arc's circle.
TEST_P(ToldByName, ARampOnAShortArcCutsThePart)
{
    for (const double r : {5.0, 20.0}) {
        const std::string layer = "ROUTEZ18T71L3LD15RO4";
        ExpectTold("ramp_on_arc_" + Number(r),
                   Arc(layer, 100 + r, 60 + r, r, 180, 270) + Line(layer, 100, 60 + r, 100, 140) +
                       Line(layer, 100, 140, 200, 140) + Line(layer, 200, 140, 200, 60) +
                       Line(layer, 200, 60, 100 + r, 60),
                   false,
                   "Layer " + layer + ": the lead at X" + Number(100 + r) + " Y60 cuts into its contour",
                   r == 5);
    }
}

// Its inner loops are narrower than the tool, which stands beside them beyond the wall.
TEST_P(ToldByName, APocketOfThreeRadiiIsCutOutside)
{
    const auto pocket = [](const std::string& layer, double high) {
        return Rectangle(layer, 60, 50, 180, high) + Polyline(layer, {{55, 50}, {60, 50}}, Pair(40, 2.0));
    };
    const std::string layer = "EXCAVZ5K3.2T71R4";
    ExpectTold("narrow_pocket", pocket(layer, 12), true,
               "Layer " + layer +
                   ": the pocket at X55 Y50 has ways that are narrower than its tool and cut outside of it");
}

// The step to the next loop begins before the wall's end: a ridge stays on the wall.
TEST_P(ToldByName, ARoundedPocketWithAShortSideKeepsARidge)
{
    const std::string layer = "EXCAVZ5K6T71R5";
    for (const double side : {3.0, 6.0, 30.0})
        ExpectTold("short_side_" + Number(side), Stadium(layer, 20, side), true,
                   "Layer " + layer + ": the pocket at X75 Y50 leaves wood where its turns begin", side < 10);
}

// Where a loop goes over into the next one.
TEST_P(ToldByName, AStepOf1Point6RadiiMayLeaveAnIsland)
{
    for (const double step : {6.0, 8.0}) {
        const std::string layer = "EXCAVZ5K" + Number(step) + "T71R5";
        ExpectTold("wide_step_" + Number(step), Stadium(layer, 12.4, step == 6 ? 30 : 6), true,
                   "Layer " + layer + ": the pocket at X67.4 Y50 leaves wood where its turns begin",
                   step > 6);
    }
}

INSTANTIATE_TEST_SUITE_P(All, ToldByName,
                         testing::Values(Control::Cnc90, Control::Genesis, Control::Evolution),
                         [](const auto& control) { return std::string(ShownControl(control.param)); });

} // namespace
} // namespace kv::test
