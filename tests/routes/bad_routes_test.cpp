// Routes that cannot be cut, or hardly: what has no length, numbers out of bounds, too many records,
// pockets that are none, crowds at one place. No crash, no hang, no word that is no number; the next
// drawing gives its program as if nothing had been before.
#include <chrono>
#include <cmath>

#include "routes/route_program.h"
#include "support/program_checker.h"

namespace kv::test {
namespace {

class BadRoutes : public RouteProgram {
  protected:
    const std::string Route = "ROUTEZ5T71";
    const std::string Good = Line(Route, 500, 300, 550, 300); // cut in all of these drawings
    const ProgramText GoodLines = {Start + "X500Y300Z5", "G1G90X550Y300Z5"};

    bool Told(const std::string& line) const { return Home.Reported(line); }
    // The bad entities beside good ones: only the good are cut, and one line tells of the others.
    void ExpectLeftOut(const std::string& bad, const std::string& told)
    {
        Expect(bad + Good, GoodLines);
        EXPECT_TRUE(Told(told)) << Home.ReportText();
        Expect(Good + bad, GoodLines);
        EXPECT_TRUE(Told(told)) << Home.ReportText();
        ExpectFit();
    }
    void ExpectRefused(const std::string& bad, const std::string& cause)
    {
        Run.FailedFiles.clear();
        EXPECT_FALSE(Home.Convert(Drawing(Panel + Good + bad), "BAD.DXF"));
        EXPECT_TRUE(Told((Home.Folder / "BAD.DXF").string() + ": " + cause)) << Home.ReportText();
        EXPECT_EQ(Run.FailedFiles.size(), 2U);
        EXPECT_FALSE(Home.HasProgram("BAD"));
        ExpectFit();
    }
    // Whatever the lines are, they are words of numbers.
    ProgramText ExpectNumbers(const std::string& entities)
    {
        EXPECT_TRUE(Home.Convert(Drawing(Panel + entities), "BAD.DXF")) << Home.ReportText();
        const ProgramText program = Home.HasProgram("BAD") ? Home.Program("BAD") : ProgramText();
        EXPECT_EQ(program.empty(), Told("No Selected Operations found for PTP")) << Home.ReportText();
        for (const std::string& fault : ProgramFaults(program))
            EXPECT_EQ(fault.find("is no number"), std::string::npos) << fault;
        for (const std::string& line : program)
            EXPECT_TRUE(line.find("nan") == std::string::npos && line.find("inf") == std::string::npos)
                << line;
        ExpectFit();
        return program;
    }
    // A drawing with a line, a circle with leads, a bulge and passes, in a process that has done anything.
    void ExpectFit()
    {
        EXPECT_EQ(RouteSegments.Last(), 0);
        EXPECT_EQ(RouteCircles.Last(), 0);
        const std::string limit = Config.LineLimit;
        Config.LineLimit = "800";
        ASSERT_TRUE(Home.Convert(Drawing(Panel + Good + Circle("ROUTEZ5T71L5LD20", 300, 200, 50) +
                                         Polyline("ROUTEZ10M2T71", {{100, 100, 1}, {200, 100}})),
                                 "NEXT.DXF"))
            << Home.ReportText();
        Config.LineLimit = limit;
        EXPECT_EQ(Home.Program("NEXT"),
                  Around({Start + "X500Y300Z5", "G1G90X550Y300Z5", Start + "G41R5X280Y270Z5",
                          "G38G90X300Y270A270.Z5", "G37G90X300Y200A90.Z5", "G38G90X300Y270A0.00Z5",
                          Start + "X100Y100Z5", "G38G90X200Y100U50Z5", Start + "X100Y100Z10",
                          "G38G90X200Y100U50Z10"}));
    }
};

TEST_F(BadRoutes, LinesOfLengthZero)
{
    ExpectLeftOut(Line(Route, 100, 100, 100, 100), "Layer ROUTEZ5T71: 1 line of length 0 cannot be cut");
    ExpectLeftOut(Line(Route, 100, 100, 100, 100) + Line(Route, 0, 0, 0, 0),
                  "Layer ROUTEZ5T71: 2 lines of length 0 cannot be cut");
}

TEST_F(BadRoutes, ArcsOfRadiusZero)
{
    ExpectLeftOut(Arc(Route, 100, 100, 0, 0, 90), "Layer ROUTEZ5T71: 1 arc of length 0 cannot be cut");
    ExpectLeftOut(Arc(Route, 100, 100, -5, 0, 90), "Layer ROUTEZ5T71: 1 arc of length 0 cannot be cut");
}

TEST_F(BadRoutes, AnArcTooShortForTheNumbersOfTheDrawing)
{
    // Both ends at one place would be a full circle to the control.
    ExpectLeftOut(Arc(Route, 100, 100, 1, 45, 45.0001), "Layer ROUTEZ5T71: 1 arc of length 0 cannot be cut");
}

TEST_F(BadRoutes, AnArcThatEndsWhereItBeginsIsACircle)
{
    Expect(Arc(Route, 100, 100, 50, 90, 90), {Start + "X100Y150Z5", "G37G90X100Y100A90.Z5"});
    Expect(Arc(Route, 100, 100, 50, 0, 360), {Start + "X150Y100Z5", "G37G90X100Y100A0.00Z5"});
}

TEST_F(BadRoutes, CirclesOfRadiusZero)
{
    ExpectLeftOut(Circle(Route, 100, 100, 0), "Layer ROUTEZ5T71: 1 circle without a radius cannot be cut");
    ExpectLeftOut(Circle("EXCAVZ5K4T71", 100, 100, 0),
                  "Layer EXCAVZ5K4T71: 1 circle without a radius cannot be cut");
}

const std::string Plunges =
    "Layer ROUTEZ5T71: 1 polyline with fewer than 2 different points has no length, the "
    "tool only plunges at X100 Y100";

// As told, not as meant: a lone vertex in front of other paths still begins a route.
TEST_F(BadRoutes, APolylineOfOneVertexIsAStartWithoutMoves)
{
    const std::string told = "Layer ROUTEZ5T71: 1 polyline with fewer than 2 different points cannot be cut";
    const ProgramText plunged = {Start + "X500Y300Z5", "G1G90X550Y300Z5", Start + "X100Y100Z5"};
    Expect(Polyline(Route, {{100, 100}}) + Good, plunged);
    EXPECT_TRUE(Told(Plunges) && !Told(told)) << Home.ReportText();
    // Only the records of the next layer show that it is not the last one.
    Expect(Polyline(Route, {{100, 100}}) + Line("ROUTEZ5T71G1", 500, 300, 550, 300), plunged);
    EXPECT_TRUE(Told(Plunges) && !Told(told)) << Home.ReportText();
    // At the list's end it is no path.
    Expect(Good + Polyline(Route, {{100, 100}}), GoodLines);
    EXPECT_TRUE(Told(told) && !Told(Plunges)) << Home.ReportText();
    ExpectLeftOut(Polyline(Route, {}), told);
}

TEST_F(BadRoutes, APolylineWhosePointsAreAllTheSameIsToldAsThePlungeThatItIs)
{
    const std::vector<Vertex> three = {{100, 100}, {100, 100}, {100, 100}};
    const std::string stay = "G1G90X100Y100Z5";
    for (const std::string& closed : {Pair(70, "0"), Pair(70, "1")}) {
        ProgramText plunged = {Start + "X500Y300Z5", "G1G90X550Y300Z5", Start + "X100Y100Z5", stay, stay};
        if (closed == Pair(70, "1"))
            plunged.push_back(stay);
        Expect(Good + Polyline(Route, three, closed), plunged);
        EXPECT_TRUE(Told(Plunges)) << Home.ReportText();
        EXPECT_EQ(Home.ReportText().find("cannot be cut"), std::string::npos) << Home.ReportText();
    }
    // As an arc of no length: no line for it, but the start is there.
    Expect(Good + Polyline(Route, {{100, 100, 1}, {100, 100, 1}, {100, 100}}),
           {Start + "X500Y300Z5", "G1G90X550Y300Z5", Start + "X100Y100Z5"});
    EXPECT_TRUE(Told(Plunges)) << Home.ReportText();
}

TEST_F(BadRoutes, CoincidentVertices)
{
    EXPECT_EQ(ExpectNumbers(Polyline(Route, {{100, 100}, {100, 100}, {200, 100, 1}, {200, 100}, {300, 100}})),
              Around({Start + "X100Y100Z5", "G1G90X100Y100Z5", "G1G90X200Y100Z5", "G1G90X300Y100Z5"}));
}

std::string LineWith(int code, const std::string& value)
{
    std::string line = Line("ROUTEZ5T71", 100, 100, 200, 100);
    const std::string group = "\n" + std::to_string(code) + "\n";
    const std::size_t at = line.find(group) + group.size();
    return line.replace(at, line.find('\n', at) - at, value);
}

TEST_F(BadRoutes, WordsForNumbersAreZero)
{
    for (const char* const word : {"nan", "NaN", "inf", "-inf", "infinity", "", "x", "1e-50", "-1e-46"})
        EXPECT_EQ(ExpectNumbers(LineWith(10, word)), Around({Start + "X0Y100Z5", "G1G90X200Y100Z5"})) << word;
}

TEST_F(BadRoutes, NumbersBeyondASingleAreRefused)
{
    for (const char* const word : {"1e39", "-1e39", "1e400", "9e9999999"}) {
        EXPECT_FALSE(Home.Convert(Drawing(Panel + LineWith(10, word)), "BAD.DXF")) << word;
        ASSERT_EQ(Home.Lines.size(), 2U) << Home.ReportText();
        EXPECT_TRUE(Home.Lines[1].starts_with((Home.Folder / "BAD.DXF").string() + ": ")) << Home.Lines[1];
        EXPECT_NE(Home.Lines[1].find(word), std::string::npos) << Home.Lines[1];
        ExpectFit();
    }
}

TEST_F(BadRoutes, PlacesThatOverflowNameTheirLayer)
{
    ExpectRefused(Arc(Route, 3e38, 3e38, 3e38, 10, 100), "Coordinate out of range on layer ROUTEZ5T71");
    ExpectRefused(Circle(Route, 3e38, 3e38, 3e38), "Coordinate out of range on layer ROUTEZ5T71");
    EXPECT_FALSE(Home.Convert(
        Drawing(Instructions({"SCALE=1E10"}) + Panel + Line(Route, 1e30, 100, 200, 100)), "BAD.DXF"));
    EXPECT_TRUE(Told((Home.Folder / "BAD.DXF").string() + ": Coordinate out of range on layer ROUTEZ5T71"))
        << Home.ReportText();
    ExpectFit();
}

TEST_F(BadRoutes, HugePlacesAreCutLast)
{
    // Whatever its distance a chain is taken up; what is near goes first.
    for (const double huge : {1e10, 1e20, 1e38}) {
        const ProgramText program = ExpectNumbers(Line(Route, huge, huge, -huge, huge) + Good);
        ASSERT_EQ(program.size(), Around(GoodLines).size() + 2) << huge;
        EXPECT_EQ(program[2], GoodLines[0]) << huge;
        EXPECT_EQ(program[3], GoodLines[1]) << huge;
    }
}

// A part of 4 by 3 inches, drawn further out than their product.
TEST_F(BadRoutes, RoutesFarFromASmallPanelAreCut)
{
    EXPECT_TRUE(
        Home.Convert(Drawing(Rectangle("BORDER Z18", 50, 50, 4, 3) + Line("ROUTEZ5T71", 51, 51, 53, 51) +
                             Line("ROUTEZ6T71", 51, 52.5, 53, 52.5))));
    const ProgramText operations = {Start + "X1Y1Z5", "G1G90X3Y1Z5", Start + "X1Y2.5Z6", "G1G90X3Y2.5Z6"};
    EXPECT_EQ(Home.Program(), Around(operations, "G70X4Y3Z18T00")) << Home.ReportText();
    EXPECT_EQ(Home.ReportText().find("not cut"), std::string::npos) << Home.ReportText();
}

TEST_F(BadRoutes, HugeAnglesAndBulges)
{
    ExpectNumbers(Arc(Route, 100, 100, 50, 1e30, -1e30));
    ExpectNumbers(Arc(Route, 100, 100, 50, -3e38, 3e38));
    ExpectNumbers(Polyline(Route, {{100, 100, 1e-30}, {200, 100, 1e6}, {300, 100, -1e-6}, {400, 100}}));
}

TEST_F(BadRoutes, ABulgeWhoseRadiusOverflowsFailsTheProgram)
{
    for (const double bulge : {1e38, 1e-38}) { // all but a point, all but a line
        EXPECT_FALSE(
            Home.Convert(Drawing(Panel + Polyline(Route, {{100, 100, bulge}, {200, 100}})), "BAD.DXF"));
        EXPECT_TRUE(Told("Unable to Process file. 6")) << Home.ReportText();
        EXPECT_FALSE(Home.HasProgram("BAD"));
        ExpectFit();
    }
}

TEST_F(BadRoutes, LayersWithHugeNumbers)
{
    const auto line = [](const std::string& layer) { return Line(layer, 100, 100, 200, 100); };
    ExpectRefused(line("ROUTEZ5F1E39T71"), "Value out of range at \"1E39T71\" on layer ROUTEZ5F1E39T71");
    EXPECT_FALSE(Home.Convert(Drawing(Panel + line("ROUTEZ1000T71")), "BAD.DXF"));
    EXPECT_TRUE(Told("Unable to Process file. 5")) << Home.ReportText();
    ExpectFit();
    ExpectNumbers(line("ROUTEZ5T71F1E38"));
    ExpectNumbers(line("ROUTEZ30OZ1E30T71"));
    ExpectNumbers(line("ROUTEZ.00000001T71"));
    ExpectNumbers(Rectangle("ROUTEZ5T71L5LD1E38", 100, 100, 100, 100));
    ExpectNumbers(Rectangle("ROUTEZ5T71L5LD.0000001RI.0000001RO.0000001", 100, 100, 100, 100));
}

// `count` lines that touch nothing.
std::string Hatch(int count)
{
    std::string lines;
    for (int i = 0; i < count; ++i)
        lines += Line("ROUTEZ5T71", 10 + 0.5 * (i % 1000), 10 + 2 * (i / 1000), 10 + 0.5 * (i % 1000),
                      11 + 2 * (i / 1000));
    return lines;
}

TEST_F(BadRoutes, AsManySegmentsAsThereMayBe)
{
    // 16,382 lines and a polyline of three vertices are 32,767 records.
    Config.LineLimit = "40000";
    EXPECT_TRUE(Home.Convert(
        Drawing(Panel + Hatch(16382) + Polyline(Route, {{100, 300}, {200, 300}, {200, 350}})), "BAD.DXF"))
        << Home.ReportText();
    EXPECT_TRUE(Told("CONVERSION COMPLETED.  32770 Lines")) << Home.ReportText();
    ExpectFit();
}

TEST_F(BadRoutes, OneSegmentMoreIsRefused)
{
    ExpectRefused(Hatch(16382) + Line(Route, 100, 300, 200, 300),
                  "More than 32767 route segments, layer ROUTEZ5T71");
}

TEST_F(BadRoutes, SegmentsThatPassesAddAreCountedToo)
{
    // Two passes of 16,384 records are 32,768.
    std::string layer = Hatch(8192);
    for (std::size_t at = 0; (at = layer.find("ROUTEZ5T71", at)) != std::string::npos; at += 12)
        layer.replace(at, 10, "ROUTEZ5M2T71");
    ExpectRefused(layer, "More than 32767 route segments");
    ExpectRefused(Line("ROUTEZ5M32000T71", 100, 100, 200, 100), "More than 32767 route segments");
}

std::string Pocket(const std::string& layer, const std::string& outline)
{
    return outline + Polyline(layer, {{99, 100}, {100, 100}}, Arrow);
}

TEST_F(BadRoutes, APocketThatCrossesItself)
{
    const std::string layer = "EXCAVZ5K4T71R2";
    const ProgramText program =
        ExpectNumbers(Pocket(layer, Line(layer, 100, 100, 200, 160) + Line(layer, 200, 160, 200, 100) +
                                        Line(layer, 200, 100, 100, 160) + Line(layer, 100, 160, 100, 100)));
    EXPECT_LT(program.size(), 200U);
}

TEST_F(BadRoutes, PocketsThatAreNoRectangles)
{
    const std::string layer = "EXCAVZ5K4T71R2";
    std::string rays;
    for (int i = 1; i < 40; ++i)
        rays += Line(layer, 100 + i, 100 + i % 7, 101 + i, 100 + (i + 1) % 7);
    ExpectNumbers(Pocket(layer, Line(layer, 100, 100, 101, 101) + rays));
    // A flat one has no box.
    ExpectNumbers(Pocket(layer, Line(layer, 100, 100, 200, 100) + Line(layer, 200, 100, 300, 100) +
                                    Line(layer, 300, 100, 100, 100)));
}

TEST_F(BadRoutes, APocketSmallerThanThePitch)
{
    // 2 by 2 with loops 4 apart: its middle is reached in the first loop. One pitch from the middle is
    // outside of the outline, so the first point stays on the wall.
    const std::string layer = "EXCAVZ5K4T71R.9";
    EXPECT_EQ(ExpectNumbers(Pocket(layer, Rectangle(layer, 100, 100, 2, 2))),
              Around({Start + "G42R.9X100Y100Z5", "G1G90X100Y102Z5", "G1G90X102Y102Z5", "G1G90X102Y100Z5",
                      "G1G90X100Y100Z5"}));
}

TEST_F(BadRoutes, APitchThatWouldFillTheList)
{
    const std::string layer = "EXCAVZ5K.001T71R2";
    EXPECT_FALSE(
        Home.Convert(Drawing(Panel + Pocket(layer, Rectangle(layer, 100, 100, 100, 60))), "BAD.DXF"));
    EXPECT_TRUE(Told((Home.Folder / "BAD.DXF").string() + ": More than 32767 route segments"))
        << Home.ReportText();
    ExpectFit();
    ExpectRefused(Circle(layer, 100, 100, 50), "More than 32767 route segments");
}

TEST_F(BadRoutes, ALeadLongerThanItsWholeContour)
{
    const ProgramText program = ExpectNumbers(Rectangle("ROUTEZ5T71L5LD500", 100, 100, 2, 2));
    ASSERT_EQ(program.size(), 10U);
    // 500 on the bisector of the corner (100, 100).
    EXPECT_EQ(program[2], Start + "G41R5X453.553Y453.553Z5");
    EXPECT_EQ(program[8], "G1G90X453.553Y453.553Z5");
}

double SecondsFor(Scene& scene, const std::string& entities)
{
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(scene.Convert(Drawing(Panel + entities), "BAD.DXF")) << scene.ReportText();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

std::string Times(int count, const std::string& entity)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += entity;
    return text;
}

constexpr double Patience = 60; // seconds, for a sanitized build on a busy machine

TEST_F(BadRoutes, ThousandsOfIdenticalLinesAreOneChain)
{
    Config.LineLimit = "40000";
    EXPECT_LT(SecondsFor(Home, Times(2000, Line(Route, 100, 100, 200, 100))), Patience);
    // To and fro.
    const ProgramText program = Home.Program("BAD");
    ASSERT_EQ(program.size(), 2004U);
    EXPECT_EQ(program[2], Start + "X100Y100Z5");
    for (std::size_t i = 3; i < 2003; ++i)
        ASSERT_EQ(program[i], i % 2 == 1 ? "G1G90X200Y100Z5" : "G1G90X100Y100Z5") << i;
    ExpectFit();
}

TEST_F(BadRoutes, MoreIdenticalLinesThanThereMayBeAreRefusedAtOnce)
{
    const auto begin = std::chrono::steady_clock::now();
    ExpectRefused(Times(32000, Line(Route, 100, 100, 200, 100)),
                  "More than 32767 route segments, layer ROUTEZ5T71");
    EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count(), Patience);
}

TEST_F(BadRoutes, AStarOfFiveThousandRays)
{
    // Two rays a chain: in along one, out along the straightest of those left.
    Config.LineLimit = "40000";
    std::string star;
    for (int i = 0; i < 5000; ++i) {
        const double angle = i * 2 * 3.14159265358979 / 5000;
        star += Line(Route, 300, 200, 300 + 150 * std::cos(angle), 200 + 150 * std::sin(angle));
    }
    EXPECT_LT(SecondsFor(Home, star), Patience);
    int starts = 0;
    for (const std::string& line : Home.Program("BAD"))
        starts += line.starts_with("G88");
    EXPECT_EQ(starts, 2500);
    ExpectFit();
}

TEST_F(BadRoutes, ACrowdOfCirclesOnACrowdOfLines)
{
    Config.LineLimit = "40000";
    EXPECT_LT(SecondsFor(Home, Times(1000, Circle(Route, 300, 200, 50)) +
                                   Times(1000, Line(Route, 100, 200, 250, 200))),
              Patience);
    ExpectFit();
}

} // namespace
} // namespace kv::test
