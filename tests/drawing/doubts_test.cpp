// Drawings whose panel, depths, places or tools may not be what their designer wants: each such fault is one
// line of the report, and without one there is none.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/text.h"
#include "state/messages.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv {
namespace {

using namespace test;
using Texts = std::vector<std::string>;

class Doubts : public testing::Test {
  protected:
    Scene Place;

    // The lines about layers, in their order, without those of pockets that no tool clears well.
    Texts LinesOf(const std::string& drawing)
    {
        Config.Import = "plain"; // lines of the passes alone
        EXPECT_TRUE(Place.Convert(drawing)) << Place.ReportText();
        Texts lines;
        for (const std::string& line : Place.Lines)
            if (BeginsWith(line, "Layer ") && !Holds(line, "narrower than its tool"))
                lines.push_back(line);
        return lines;
    }
    Texts LinesOfWork(const std::string& work)
    {
        return LinesOf(Drawing(Rectangle("BORDER Z18", 10, 20, 600, 400) + work));
    }
};

std::string Section(std::string_view name, const std::string& pairs)
{
    return Pair(0, "SECTION") + Pair(2, name) + pairs + Pair(0, "ENDSEC");
}

std::string Units(int number)
{
    return Section("HEADER", Pair(9, "$ACADVER") + Pair(1, "AC1015") + Pair(9, "$INSUNITS") +
                                 Pair(70, std::to_string(number)));
}

std::string LayerRecord(std::string_view name, int flags, int color)
{
    return Pair(0, "LAYER") + Pair(2, name) + Pair(70, std::to_string(flags)) +
           Pair(62, std::to_string(color));
}

std::string LayerTable(const std::string& records)
{
    return Section("TABLES",
                   Pair(0, "TABLE") + Pair(2, "LAYER") + Pair(70, "1") + records + Pair(0, "ENDTAB"));
}

const std::string Bore = Circle("VBORE Z12", 110, 70, 4);

// The panel

TEST_F(Doubts, ACleanDrawingHasNone)
{
    EXPECT_EQ(
        LinesOf(Units(4) + LayerTable(LayerRecord("BORDER Z18", 0, 7)) +
                Drawing(Rectangle("BORDER Z18", 10, 20, 600, 400) + Bore +
                        Line("ROUTE1Z5T71", 100, 100, 300, 100) + Line("GROOVE Z8T61", 10, 50, 610, 50))),
        Texts{});
}

TEST_F(Doubts, BorderBelowZero)
{
    EXPECT_EQ(
        LinesOf(Drawing(Rectangle("BORDER Z18", -10, -20.5, 600, 400))),
        Texts{"Layer BORDER Z18: the border reaches below zero, to X-10 Y-20.5; the panel is not the one "
              "drawn"});
    EXPECT_EQ(kv::Run.SideMinX[5], 0);
    // Views of the edges may: the face is found.
    EXPECT_EQ(LinesOf(Drawing(Rectangle("BORDER Z18", 0, 0, 600, 400) +
                              Rectangle("BORDER Z18", 0, -100, 600, 18) + Bore)),
              Texts{});
}

TEST_F(Doubts, UnitThatTheHeaderContradicts)
{
    const std::string small = Drawing(Rectangle("BORDER Z18", 10, 20, 150, 90));
    const std::string large = Drawing(Rectangle("BORDER Z18", 10, 20, 600, 400));
    const auto line = [](std::string_view rest) {
        return Texts{"Layer BORDER Z18: the panel of " + std::string(rest)};
    };
    EXPECT_EQ(LinesOf(Units(4) + small), line("150 x 90 is taken for inch; $INSUNITS says mm"));
    EXPECT_EQ(LinesOf(Units(1) + small), Texts{});
    EXPECT_EQ(LinesOf(Units(0) + small), Texts{});
    EXPECT_EQ(LinesOf(Units(1) + large), line("600 x 400 is taken for mm; $INSUNITS says inch"));
    EXPECT_EQ(LinesOf(Units(5) + large), line("600 x 400 is taken for mm; $INSUNITS says cm"));
    EXPECT_EQ(LinesOf(Units(4) + large), Texts{});
    EXPECT_EQ(LinesOf(Units(999) + large), Texts{});
    EXPECT_EQ(LinesOf(Units(-4) + large), Texts{});
    Config.UnitMode = "1";
    EXPECT_EQ(LinesOf(Units(4) + large), line("600 x 400 is taken for inch; $INSUNITS says mm"));
    Config.UnitMode = "2";
    EXPECT_EQ(LinesOf(Units(4) + small), Texts{});
    EXPECT_EQ(LinesOf(large), Texts{}) << "nothing is left of the drawing before";
}

TEST_F(Doubts, DamagedHeadersChangeNothing)
{
    const std::string large = Drawing(Rectangle("BORDER Z18", 10, 20, 600, 400) + Bore);
    const std::string head = "0\nSECTION\n2\nHEADER\n";
    const std::string table = "0\nSECTION\n2\nTABLES\n0\nLAYER\n2\n";
    for (const std::string& damaged :
         {head + "9\n$INSUNITS\n", head + "9\n$INSUNITS\n70\n", head + "9\n$INSUNITS\n70\n1e300\n0\nENDSEC\n",
          head + "x\n9\n$INSUNITS\n70\n1\n0\nENDSEC\n", table,
          table + std::string(5000, 'L') + "\n70\n1\n0\nENDTAB\n",
          table + "BORDER Z18\n70\n-1\n62\n\n0\nENDSEC\n", std::string("9\n$INSUNITS\n70\n1\n")})
        EXPECT_EQ(LinesOf(damaged + large), Texts{}) << damaged.substr(0, 60);
}

TEST_F(Doubts, PanelWithoutThickness)
{
    EXPECT_EQ(LinesOf(Drawing(Rectangle("BORDER", 10, 20, 600, 400) + Circle("VBORE Z50", 110, 70, 4))),
              Texts{"Layer BORDER: the panel has no thickness"});
    EXPECT_EQ(LinesOf(Drawing(PanelSolid("PANEL", 10, 20, 600, 400, 0) + Bore)),
              Texts{"Layer PANEL: the panel has no thickness"});
}

// Routes

TEST_F(Doubts, AContourThatIsNearlyClosed)
{
    const auto contour = [](double gap, const std::string& layer) {
        return Drawing(Rectangle("BORDER Z18", 10, 20, 600, 400) + Line(layer, 100, 100, 300, 100) +
                       Line(layer, 300, 100, 300, 300) + Line(layer, 300, 300, 100, 300) +
                       Line(layer, 100, 300, 100, 100 + gap));
    };
    const std::string layer = "ROUTE1Z8T71R6LD20";
    EXPECT_EQ(LinesOf(contour(1.5, layer)),
              Texts{"Layer " + layer +
                    ": the contour at X100 Y100 is open by 1.5 mm, to X100 Y101.5, and is "
                    "cut as an open route"});
    EXPECT_EQ(LinesOf(contour(0, layer)), Texts{});
    EXPECT_EQ(LinesOf(contour(.09, layer)), Texts{}) << "within the tolerance";
    EXPECT_EQ(LinesOf(contour(12.5, layer)), Texts{}) << "wood stays beside a tool of 12 mm";
    EXPECT_EQ(LinesOf(contour(1.5, "ROUTE1Z8T71D12")), Texts{}) << "no side";
}

TEST_F(Doubts, AShortRouteIsNoContour)
{
    const std::string panel = Rectangle("BORDER Z18", 10, 20, 600, 400);
    EXPECT_EQ(LinesOf(Drawing(panel + Line("ROUTE1Z8T71R6", 100, 100, 108, 100))), Texts{});
    EXPECT_EQ(LinesOf(Drawing(panel + Arc("ROUTE1Z8T71R6", 100, 100, 7, 0, 270))), Texts{});
}

TEST_F(Doubts, EntitiesDrawnTwice)
{
    const std::string panel = Rectangle("BORDER Z18", 10, 20, 600, 400);
    const std::string layer = "ROUTE1Z8T71";
    const auto told = [&](const std::string& what) {
        return Texts{"Layer " + layer + ": the " + what + " is drawn twice and is cut twice"};
    };
    const std::string line = Line(layer, 100, 100, 300, 100);
    EXPECT_EQ(LinesOf(Drawing(panel + line + line)), told("LINE at X100 Y100"));
    EXPECT_EQ(LinesOf(Drawing(panel + line + Line(layer, 300, 100, 100, 100))), told("LINE at X300 Y100"));
    const std::string arc = Arc(layer, 100, 100, 50, 0, 90);
    EXPECT_EQ(LinesOf(Drawing(panel + arc + arc)), told("ARC at X100 Y100"));
    const std::string circle = Circle(layer, 200, 200, 50);
    EXPECT_EQ(LinesOf(Drawing(panel + circle + circle)), told("CIRCLE at X200 Y200"));
    const std::string way = Polyline(layer, {{100, 100}, {300, 100}, {300, 200}});
    EXPECT_EQ(LinesOf(Drawing(panel + way + way)), told("POLYLINE at X100 Y100"));
    const std::string light = Lwpolyline(layer, {{100, 100}, {300, 100}, {300, 200}});
    EXPECT_EQ(LinesOf(Drawing(panel + light + light)), told("POLYLINE at X100 Y100"));
    const std::string groove = Line("GROOVE Z8", 100, 300, 300, 300);
    EXPECT_EQ(LinesOf(Drawing(panel + groove + groove)),
              Texts{"Layer GROOVE Z8: the LINE at X100 Y300 is drawn twice and is cut twice"});
}

TEST_F(Doubts, NearlyTheSameIsNotDrawnTwice)
{
    const std::string panel = Rectangle("BORDER Z18", 10, 20, 600, 400);
    const std::string line = Line("ROUTE1Z8T71", 100, 100, 300, 100);
    for (const std::string& other :
         {Line("ROUTE1Z8T71", 100, 100, 301, 100), Line("ROUTE2Z9T71", 100, 100, 300, 100),
          Line("NOTES", 100, 100, 300, 100), Polyline("ROUTE1Z8T71", {{100, 100}, {300, 100}})})
        EXPECT_EQ(LinesOf(Drawing(panel + line + other)), Texts{}) << other;
    EXPECT_EQ(LinesOf(Drawing(panel + Line("ROUTE1Z8T71$Z9T71", 100, 100, 300, 100))), Texts{})
        << "two operations of one line";
    EXPECT_EQ(LinesOf(Drawing(panel + Line("NOTES", 0, 0, 9, 9) + Line("NOTES", 0, 0, 9, 9))), Texts{});
    EXPECT_EQ(LinesOf(Drawing(panel + Arc("ROUTE1Z8T71", 100, 100, 50, 0, 90) +
                              Arc("ROUTE1Z8T71", 100, 100, 50, 90, 180))),
              Texts{});
}

TEST_F(Doubts, HiddenEntitiesThatChangedThePanel)
{
    const std::string shown = Rectangle("BORDER Z18", 100, 100, 600, 400);
    const std::string below = Rectangle("BORDER_B Z18", 100, 20, 600, 18);
    const std::string table = LayerTable(LayerRecord("Border_b z18", 1, 7));
    EXPECT_EQ(LinesOf(table + Drawing(shown + below)),
              Texts{"Layer BORDER_B Z18: 4 entities of the frozen layer were taken for the panel"});
    EXPECT_EQ(LinesOf(LayerTable(LayerRecord("BORDER_B Z18", 64, -7)) + Drawing(shown + below)),
              Texts{"Layer BORDER_B Z18: 4 entities of the switched-off layer were taken for the panel"});
    EXPECT_EQ(LinesOf(LayerTable(LayerRecord("BORDER_B Z18", 64, 7)) + Drawing(shown + below)), Texts{});
    // The same outline a second time gives nothing new.
    EXPECT_EQ(LinesOf(table + Drawing(shown + Rectangle("BORDER_B Z18", 100, 100, 600, 400))), Texts{});
    // Of another thickness it does: the last one counts.
    EXPECT_EQ(LinesOf(LayerTable(LayerRecord("BORDER Z30", 1, 7)) +
                      Drawing(shown + Rectangle("BORDER Z30", 100, 100, 600, 400)))
                  .size(),
              1U);
    // A layer that gives no panel may be hidden.
    EXPECT_EQ(LinesOf(LayerTable(LayerRecord("VBORE Z12", 1, 7)) +
                      Drawing(shown + Circle("VBORE Z12", 200, 200, 4))),
              Texts{});
}

TEST_F(Doubts, PaperSpaceThatChangedThePanel)
{
    const std::string sheet = Pair(67, "1");
    EXPECT_EQ(LinesOf(Drawing(Polyline("BORDER Z18", {{10, 20}, {610, 20}, {610, 420}, {10, 420}}, sheet))),
              Texts{"Layer BORDER Z18: 1 entity in paper space was taken for the panel"});
    EXPECT_EQ(LinesOf(Drawing(Lwpolyline("BORDER Z18", {{10, 20}, {610, 20}, {610, 420}, {10, 420}}, sheet))),
              Texts{"Layer BORDER Z18: 1 entity in paper space was taken for the panel"});
    EXPECT_EQ(
        LinesOf(Drawing(Polyline("BORDER Z18", {{10, 20}, {610, 20}, {610, 420}, {10, 420}}, Pair(67, "0")))),
        Texts{});
    EXPECT_EQ(
        LinesOf(Drawing(Rectangle("BORDER Z18", 10, 20, 600, 400) + Circle("VBORE Z12", 110, 70, 4, sheet))),
        Texts{});
}

TEST_F(Doubts, HiddenPanelSolid)
{
    const std::string table = LayerTable(LayerRecord("PANEL OLD", 1, 7));
    const std::string old = PanelSolid("PANEL OLD", 10, 20, 500, 300, 18);
    const std::string shown = PanelSolid("PANEL", 10, 20, 600, 400, 18);
    EXPECT_EQ(LinesOf(table + Drawing(shown + old)),
              Texts{"Layer PANEL OLD: 1 entity of the frozen layer was taken for the panel"});
    EXPECT_EQ(LinesOf(table + Drawing(old + shown)), Texts{});
}

// Depths

TEST_F(Doubts, DepthOfNothing)
{
    EXPECT_EQ(LinesOfWork(Circle("VBORE", 110, 70, 4)),
              Texts{"Layer VBORE: the bore at X110 Y70 has a depth of 0"});
    EXPECT_EQ(LinesOfWork(Line("GROOVE T61", 10, 50, 610, 50)),
              Texts{"Layer GROOVE T61: the groove at X10 Y50 has a depth of 0"});
    EXPECT_EQ(LinesOfWork(Line("ROUTE1T71", 100, 100, 300, 100)),
              Texts{"Layer ROUTE1T71: the route at X100 Y100 has a depth of 0"});
    EXPECT_EQ(LinesOfWork(Circle("EXCAVT71R5K4", 200, 200, 40)),
              Texts{"Layer EXCAVT71R5K4: the pocket at X200 Y200 has a depth of 0"});
    // A line that falls from the surface has a depth.
    EXPECT_EQ(LinesOfWork(Line("ROUTE1T71", 100, 100, 300, 100, Pair(31, -5.0))), Texts{});
}

std::vector<MessageLine> ShownLines;

// The section's head is four lines; the circle has six pairs.
TEST_F(Doubts, NameFileLineAndHandle)
{
    ShownLines.clear();
    Report.ShowRow = [](const ReportRow& row) { ShownLines.push_back(row.Line); };
    EXPECT_TRUE(Place.Convert(
        Drawing(Circle("VBORE", 110, 70, 4, Pair(5, "2A")) + Rectangle("BORDER", 10, 20, 600, 400))));
    const auto valueOf = [](Message number, std::string_view name) {
        for (const MessageLine& line : ShownLines)
            if (line.Number == number && FindValue(line, name) != nullptr)
                return FindValue(line, name)->Text;
        return std::string("none");
    };
    EXPECT_EQ(valueOf(Message::DepthOfNothing, "line"), "6"); // its pair begins on line 5
    EXPECT_EQ(valueOf(Message::DepthOfNothing, "handle"), "2A");
    EXPECT_EQ(valueOf(Message::DepthOfNothing, "layer"), "VBORE");
    EXPECT_EQ(valueOf(Message::PanelWithoutThickness, "line"), "18"); // six pairs on
    EXPECT_EQ(valueOf(Message::PanelWithoutThickness, "handle"), "none");
}

TEST_F(Doubts, EqualDoubtsAreCounted)
{
    std::string bores;
    for (int i = 0; i < 30'000; ++i)
        bores += Circle("VBORE %1\"{count}\\", 110 + i % 400, 70 + i % 300, 4);
    const Texts lines = LinesOfWork(bores);
    EXPECT_EQ(lines,
              Texts{"Layer VBORE %1\"{count}\\: 30000 operations have a depth of 0, the first at X110 Y70"});
}

TEST_F(Doubts, AMillionBorderLinesAreOneLine)
{
    std::string lines = Rectangle("BORDER Z18", 10, 20, 600, 400);
    const std::string one = Line("BORDER_H Z18", 10, 20, 610, 20) + Line("BORDER_H Z18", 10, 420, 610, 420);
    const std::string other = Rectangle("BORDER_H Z18", 10, 600, 600, 18);
    lines.reserve(one.size() * 500'000);
    for (int i = 0; i < 499'998; ++i)
        lines += one;
    EXPECT_EQ(LinesOf(LayerTable(LayerRecord("BORDER_H Z18", 1, 7)) + Drawing(lines + other)),
              Texts{"Layer BORDER_H Z18: 1000000 entities of the frozen layer were taken for the panel"});
}

TEST_F(Doubts, DepthsThatAreCodes)
{
    EXPECT_EQ(LinesOfWork(Circle("VBORE ZD", 110, 70, 4)),
              Texts{"Layer VBORE ZD: the depth of the bore at X110 Y70 is the code \"=d\" to the control"});
    EXPECT_EQ(
        LinesOfWork(Circle("VBORE Z90", 110, 70, 4)),
        Texts{"Layer VBORE Z90: the depth 90 of the bore at X110 Y70 is the code \"=Z\" to the control"});
    EXPECT_EQ(LinesOfWork(Circle("VBORE Z12", 110, 70, 4)), Texts{});
    EXPECT_EQ(
        LinesOfWork(Line("ROUTE1ZAT71", 100, 100, 300, 100)),
        Texts{"Layer ROUTE1ZAT71: the depth of the route at X100 Y100 is the code \"=a\" to the control"});
}

TEST_F(Doubts, DepthsThatAreVariablesOrLengthsToGenesisEvolution)
{
    Place.Write("EvHeader.dat", "A\rB\rC\rD\rE\rOPTI{\rF\rG\rH\rI\rJ\rK\rL\rM\rN\rO\rP\r");
    kv::Run.ControlType = 2;
    EXPECT_EQ(LinesOfWork(Circle("VBORE ZR5", 110, 70, 4)),
              Texts{"Layer VBORE ZR5: the depth of the bore at X110 Y70 is that of the variable R5"});
    kv::Run.ControlType = 2;
    EXPECT_EQ(LinesOfWork(Circle("VBORE Z100", 110, 70, 4)),
              (Texts{"Layer VBORE Z100: the bore at X110 Y70 is 100 deep",
                     "Layer VBORE Z100: the bore at X110 Y70 goes 82 mm beyond the panel of 18 mm"}));
    kv::Run.ControlType = 0;
}

TEST_F(Doubts, DepthsThroughAndBeyondThePanel)
{
    EXPECT_EQ(LinesOfWork(Circle("VBORE Z18", 110, 70, 4)), Texts{});
    EXPECT_EQ(LinesOfWork(Circle("VBORE Z20", 110, 70, 4)),
              Texts{"Layer VBORE Z20: the bore at X110 Y70 goes 2 mm through the panel of 18 mm"});
    EXPECT_EQ(LinesOfWork(Circle("VBORE Z23", 110, 70, 4)),
              Texts{"Layer VBORE Z23: the bore at X110 Y70 goes 5 mm through the panel of 18 mm"});
    EXPECT_EQ(LinesOfWork(Line("ROUTE1Z23P5T71", 100, 100, 300, 100)),
              Texts{"Layer ROUTE1Z23P5T71: the route at X100 Y100 goes 5.5 mm beyond the panel of 18 mm"});
    EXPECT_EQ(FindPage(static_cast<long long>(Message::DepthThroughPanel))->Severity, MessageSeverity::Note);
    EXPECT_EQ(FindPage(static_cast<long long>(Message::DepthBeyondPanel))->Severity, MessageSeverity::Doubt);
}

TEST_F(Doubts, InchDrawingsAreHeldAgainstMillimetres)
{
    // .75 thick: .9 is 3.81 mm through, 1 is 6.35 mm beyond.
    const std::string border = Rectangle("BORDER Z0P75", 10, 20, 24, 16);
    EXPECT_EQ(LinesOf(Drawing(border + Circle("VBORE Z0P9", 15, 25, .25))),
              Texts{"Layer VBORE Z0P9: the bore at X15 Y25 goes 3.81 mm through the panel of 19.05 mm"});
    EXPECT_EQ(LinesOf(Drawing(border + Circle("VBORE Z1", 15, 25, .25))),
              Texts{"Layer VBORE Z1: the bore at X15 Y25 goes 6.35 mm beyond the panel of 19.05 mm"});
}

TEST_F(Doubts, ValuesAtTheLimitsEndNoJob)
{
    const std::string border = Rectangle("BORDER Z0P75", 10, 20, 24, 16); // inch: millimetres would not fit
    const std::string far = "300000000000000000000000000000000000000";
    const std::string groove = "Layer GROOVE Z1T61: the groove at X-" + far + " Y" + far;
    EXPECT_EQ(
        LinesOf(Drawing(border + Line("GROOVE Z1T61", -3e38, 3e38, -3e38, 3e38))),
        (Texts{groove + " goes 6.35 mm beyond the panel of 19.05 mm", groove + " is wholly off the panel"}));
    EXPECT_EQ(LinesOf(Drawing(border + Point("VBORE Z0P5", 3e38, -3e38))),
              Texts{"Layer VBORE Z0P5: the bore at X" + far + " Y-" + far + " is off the panel"});
    // The writer's own cause stays the one that is told.
    Place.Convert(Drawing(border + Circle("VBORE", 15, 25, .25, Pair(39, 3e38))));
    EXPECT_TRUE(Holds(Place.ReportText(), " does not fit into 32 bits")) << Place.ReportText();
}

// Places

TEST_F(Doubts, OperationsOffThePanel)
{
    EXPECT_EQ(LinesOfWork(Circle("VBORE Z12", 10, 20, 4)), Texts{}) << "on the corner";
    EXPECT_EQ(LinesOfWork(Circle("VBORE Z12", 9.5, 70, 4)),
              Texts{"Layer VBORE Z12: the bore at X9.5 Y70 is off the panel"});
    EXPECT_EQ(LinesOfWork(Line("GROOVE Z8T61", 10, 500, 610, 500)),
              Texts{"Layer GROOVE Z8T61: the groove at X10 Y500 is wholly off the panel"});
    EXPECT_EQ(LinesOfWork(Line("GROOVE Z8T61", 10, 500, 610, 300)), Texts{}) << "it runs in from outside";
    EXPECT_EQ(LinesOfWork(Line("ROUTE1Z8T71", 700, 100, 700, 300)),
              Texts{"Layer ROUTE1Z8T71: the route at X700 Y100 is wholly off the panel"});
    EXPECT_EQ(LinesOfWork(Line("ROUTE1Z8T71", 0, 220, 700, 220)), Texts{}) << "it crosses the panel";
    EXPECT_EQ(LinesOfWork(Circle("ROUTE1Z8T71", 700, 100, 40)),
              Texts{"Layer ROUTE1Z8T71: the route at X700 Y140 is wholly off the panel"});
    EXPECT_EQ(LinesOfWork(Rectangle("ROUTE1Z18T71", 2, 12, 616, 416)), Texts{}) << "round the panel";
}

TEST_F(Doubts, RoutesInAViewAreOnThePanel)
{
    const std::string panel =
        Rectangle("BORDER Z18", 100, 100, 600, 400) + Rectangle("BORDER Z18", 100, 20, 600, 18);
    EXPECT_EQ(LinesOf(Drawing(panel + Line("ROUTE1Z30T71", 200, 29, 300, 29))), Texts{});
}

// An axis and a line across its inner end; the first of the two names the layer.
TEST_F(Doubts, BoresInEdges)
{
    const auto bore = [](const std::string& codes, double x = 300) {
        return Line("HBORE " + codes, x - 4, 390, x + 4, 390) + Line("HBORE", x, 420, x, 390);
    };
    EXPECT_EQ(LinesOfWork(bore("Z9")), Texts{});
    EXPECT_EQ(LinesOfWork(bore("T1")),
              Texts{"Layer HBORE T1: the bore in edge 1 at X290 Y30 has a height of 0 mm, "
                    "not within the panel's 18 mm"});
    EXPECT_EQ(LinesOfWork(bore("Z20")),
              Texts{"Layer HBORE Z20: the bore in edge 1 at X290 Y30 has a height of 20 "
                    "mm, not within the panel's 18 mm"});
    EXPECT_EQ(LinesOfWork(bore("Z9", 650)),
              Texts{"Layer HBORE Z9: the bore in edge 1 is 640 mm along an edge of 600 mm"});
    EXPECT_EQ(LinesOfWork(bore("Z97")),
              Texts{"Layer HBORE Z97: the depth 97 of the bore in edge 1 at X290 Y30 is "
                    "the code \"=a\" to the control"});
    EXPECT_EQ(LinesOfWork(Line("HBORE Z9", 296, 120, 304, 120) + Line("HBORE", 300, 420, 300, 120)),
              Texts{"Layer HBORE Z9: the bore in edge 1 at X290 Y300 is 300 deep"});
}

TEST_F(Doubts, BoresInViewsOfEdges)
{
    const std::string panel =
        Rectangle("BORDER Z18", 100, 100, 600, 400) + Rectangle("BORDER Z18", 100, 20, 600, 18);
    EXPECT_EQ(LinesOf(Drawing(panel + Circle("HBORE", 200, 29, 4))),
              Texts{"Layer HBORE: the bore in edge 2 at X100 Y0 has a depth of 0"});
    EXPECT_EQ(LinesOf(Drawing(panel + Circle("HBORE Z30", 200, 29, 4))), Texts{});
    // The margin round a view is more than the view: a quarter of its way to the face.
    EXPECT_EQ(
        LinesOf(Drawing(panel + Circle("HBORE Z30", 200, 45, 4))),
        Texts{"Layer HBORE Z30: the bore in edge 2 at X100 Y30 has a height of -7 mm, not within the panel's "
              "18 mm"});
}

TEST_F(Doubts, TablesThatAreCutAreReadAsFarAsTheyGo)
{
    EXPECT_EQ(LinesOf("0\nSECTION\n2\nTABLES\n0\nLAYER\n2\nBORDER Z18\n70\n1\n" +
                      Drawing(Rectangle("BORDER Z18", 10, 20, 600, 400))),
              Texts{"Layer BORDER Z18: 4 entities of the frozen layer were taken for the panel"});
}

// Tools

TEST_F(Doubts, RouteWithoutTool)
{
    EXPECT_EQ(LinesOfWork(Line("ROUTE1Z8", 100, 100, 300, 100)),
              Texts{"Layer ROUTE1Z8: the route at X100 Y100 has neither tool nor diameter and takes over "
                    "those of the "
                    "work before it"});
    EXPECT_EQ(LinesOfWork(Line("ROUTE1Z8D12", 100, 100, 300, 100)), Texts{});
    EXPECT_EQ(LinesOfWork(Line("ROUTE1Z8", 100, 100, 300, 100, Pair(39, 12.0))), Texts{});
    EXPECT_EQ(LinesOfWork(Circle("EXCAVZ8R5K4", 200, 200, 40)),
              Texts{"Layer EXCAVZ8R5K4: the pocket at X200 Y200 has neither tool nor diameter and takes over "
                    "those of "
                    "the work before it"});
}

} // namespace
} // namespace kv
