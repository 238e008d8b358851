// Programs by panel sides, written by hand, as machine steps: Genesis Evolution and the horizontal machine.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "machine/evolution_reader.h"
#include "machine/hbd_reader.h"

namespace kv::test {
namespace {

using Lines = std::vector<std::string>;

void ExpectPlaceAt(const PathPoint& place, double x, double y)
{
    EXPECT_NEAR(place.X, x, 1e-9);
    EXPECT_NEAR(place.Y, y, 1e-9);
}

// A program of 600 by 400 by 18 with operations on one of its sides.
Lines EvolutionWith(int side, const Lines& operations, const std::string& unit = "m")
{
    Lines lines = {"TPA\\ALBATROS\\EDICAD\\00.00:1011:0;0",
                   "$=DOOR",
                   "",
                   "::SIDE=1;",
                   "::UN" + unit + " DL=600 DH=400 DS=18",
                   "OFFS{",
                   "#0=12.5|12.5",
                   "}OFFS",
                   "VARV{",
                   "#0=w-5|w-5",
                   "}VARV",
                   "VAR{",
                   "#5=7.5|7.5",
                   "#6=a/2|a/2",
                   "}VAR",
                   "OPTI{",
                   "::0",
                   "}OPTI"};
    for (int i = 1; i <= 6; ++i) {
        lines.push_back("SIDE#" + std::to_string(i) + "{");
        if (i == side)
            lines.insert(lines.end(), operations.begin(), operations.end());
        lines.push_back("}SIDE");
    }
    lines.push_back("");
    return lines;
}

const std::string Start = "W#89{ ::WTs WS=1 #1=100 #2=50 #3=-5 #8015=0 #8101=0 #8096=0 #36=3 #40=1 #201=1 "
                          "#203=1 #205=71 #2005=2000 }W";
const std::string Onward = "W#2201{ ::WTl #1=300 #2=60 #3=-6 #8015=0 #2008=5000 }W";
// A quarter to the left around (300, 70).
const std::string Quarter = "W#2113{ ::WTa #8015=0 #3=-6 #31=0 #32=10 #34=1 #8017=10. #8044=0 #2008=5000 }W";

TEST(EvolutionReader, RoutesOnTheFace)
{
    const MachineSteps steps = ReadEvolution(EvolutionWith(1, {Start, Onward, Quarter}));
    EXPECT_EQ(steps.Unread, Lines());
    EXPECT_EQ(steps.Length, 600);
    EXPECT_EQ(steps.Width, 400);
    EXPECT_EQ(steps.Thickness, 18);
    ASSERT_EQ(steps.Cuts.size(), 1U);
    const RouterCut& cut = steps.Cuts[0];
    EXPECT_EQ(cut.On, Plane::Surface);
    EXPECT_EQ(cut.Radius, 3);
    EXPECT_EQ(cut.Side, 1);
    EXPECT_EQ(cut.Tool, "71");
    EXPECT_EQ(cut.Line, 20U);
    ExpectPlaceAt(cut.Start, 100, 50);
    ASSERT_EQ(cut.Moves.size(), 2U);
    EXPECT_EQ(cut.Moves[0].DepthFrom, 5);
    EXPECT_EQ(cut.Moves[0].DepthTo, 6);
    EXPECT_EQ(cut.Moves[0].Line, 21U);
    ExpectPlaceAt(cut.Moves[1].From, 300, 60);
    ExpectPlaceAt(cut.Moves[1].Centre, 300, 70);
    ExpectPlaceAt(cut.Moves[1].To, 310, 70);
    EXPECT_NEAR(cut.Moves[1].Sweep, 90, 1e-9);
}

TEST(EvolutionReader, CentresCountFromTheToolOrFromTheCorner)
{
    const MachineSteps steps = ReadEvolution(EvolutionWith(
        1, {Start, "W#2113{ ::WTa #8015=0 #34=0 #31=a;100 #32=a;70 #3=-5 #8044=180. #2008=5000 }W"}));
    EXPECT_EQ(steps.Unread, Lines());
    const Move& arc = steps.Cuts.at(0).Moves.at(0);
    ExpectPlaceAt(arc.Centre, 100, 70);
    ExpectPlaceAt(arc.To, 80, 70);
    EXPECT_NEAR(arc.Sweep, -90, 1e-9);
}

TEST(EvolutionReader, EachMirroringTurnsSensesAndSides)
{
    const Lines lines = EvolutionWith(1, {Start, Onward, Quarter});
    for (const bool right : {false, true})
        for (const bool top : {false, true}) {
            const MachineSteps steps = ReadEvolution(lines, {{right, top}, true});
            const RouterCut& cut = steps.Cuts.at(0);
            ExpectPlaceAt(cut.Start, right ? 500 : 100, top ? 350 : 50);
            ExpectPlaceAt(cut.Moves.at(1).Centre, 300, top ? 330 : 70);
            ExpectPlaceAt(cut.Moves.at(1).To, right ? 290 : 310, top ? 330 : 70);
            const int sense = right == top ? 1 : -1;
            EXPECT_EQ(cut.Side, sense);
            EXPECT_NEAR(cut.Moves.at(1).Sweep, 90 * sense, 1e-9);
        }
}

TEST(EvolutionReader, EdgesAreMirroredAlongAlone)
{
    const struct {
        int Side;
        Plane On;
        bool ByRight;
    } edges[] = {
        {5, Plane::Edge1, true}, {3, Plane::Edge2, true}, {6, Plane::Edge3, false}, {4, Plane::Edge4, false}};
    for (const auto& edge : edges) {
        const Lines lines = EvolutionWith(edge.Side, {Start, Onward});
        for (const bool right : {false, true})
            for (const bool top : {false, true}) {
                const MachineSteps steps = ReadEvolution(lines, {{right, top}, true});
                const RouterCut& cut = steps.Cuts.at(0);
                const bool mirrored = edge.ByRight ? right : top;
                const double size = edge.ByRight ? 600 : 400;
                EXPECT_EQ(cut.On, edge.On);
                ExpectPlaceAt(cut.Start, mirrored ? size - 100 : 100, 50);
                EXPECT_EQ(cut.Side, mirrored ? -1 : 1);
            }
    }
}

TEST(EvolutionReader, BoresOnFaceAndEdges)
{
    const std::string bore =
        "W#81{ ::WTp WS=1 #1=100 #2=5 #3=-30 #8015=0 #201=1 #203=1 #205=3 #1002=0.5 #2005=1200 }W";
    const std::string pecks = "W#85{ ::WTp WS=1 #1=10 #2=5 #3=-R5 #9520=4 #8015=0 #201=1 #203=1 }W";
    const std::string byRouter =
        "W#89{ ::WTs WS=1 #1=7 #2=5 #3=-30 #8015=0 #8101=0 #8096=0 #201=1 #203=1 #205=101 #1002=8 }W";
    const MachineSteps face = ReadEvolution(EvolutionWith(1, {bore}, "i"));
    EXPECT_EQ(face.Unread, Lines());
    ExpectPlaceAt(face.Bores.at(0).At, 2540, 127);
    EXPECT_NEAR(face.Bores.at(0).Depth, 762, 1e-9);
    EXPECT_EQ(face.Bores.at(0).Diameter, 12.7);
    EXPECT_EQ(face.Bores.at(0).Tool, "3");
    const MachineSteps edge = ReadEvolution(EvolutionWith(3, {bore, byRouter}));
    EXPECT_EQ(edge.Unread, Lines());
    EXPECT_EQ(edge.Bores.at(0).On, Plane::Edge2);
    ExpectPlaceAt(edge.Bores.at(0).At, 100, 13);
    ExpectPlaceAt(edge.Bores.at(1).At, 7, 13);
    ExpectPlaceAt(ReadEvolution(EvolutionWith(3, {bore}), {{}, false}).Bores.at(0).At, 100, 5);
    EXPECT_EQ(ReadEvolution(EvolutionWith(1, {pecks})).Unread.size(), 1U);    // a variable is not negated
    EXPECT_EQ(ReadEvolution(EvolutionWith(1, {byRouter})).Unread.size(), 1U); // on the face it has a side
}

TEST(EvolutionReader, DepthsOfTheProgramsVariables)
{
    const auto bore = [](const std::string& depth) {
        return "W#81{ ::WTp WS=1 #1=100 #2=50 #3=" + depth + " #8015=0 #201=1 #203=1 }W";
    };
    const MachineSteps steps = ReadEvolution(EvolutionWith(1, {bore("R5"), bore("R6"), bore("R7")}));
    EXPECT_EQ(steps.Bores.at(0).Depth, 7.5);
    EXPECT_EQ(steps.Unread.size(), 2U); // one that depends on another, and one that is not there
}

TEST(EvolutionReader, Grooves)
{
    const std::string end = " #8525=0 #8526=0 #8527=0 }W";
    const MachineSteps steps = ReadEvolution(
        EvolutionWith(1, {"W#1050{ ::WT2 WS=1 #8098=lame.tmcr #8509=0 #8510=0 #8511=85 #8512=-8 #8516=60 "
                          "#8517=568 #8525=1 #8523=4000" +
                              end,
                          "W#1051{ ::WT2 WS=1 #8098=lame.tmcr #8509=1 #8510=10 #8511=0 #8512=-8 #8518=400 "
                          "#8525=2" +
                              end}));
    EXPECT_EQ(steps.Unread, Lines());
    ASSERT_EQ(steps.Saws.size(), 2U);
    ExpectPlaceAt(steps.Saws[0].From, 0, 85);
    ExpectPlaceAt(steps.Saws[0].To, 568, 85);
    EXPECT_EQ(steps.Saws[0].Side, 1);
    EXPECT_EQ(steps.Saws[0].Tool, "60");
    EXPECT_EQ(steps.Saws[0].Depth, 8);
    ExpectPlaceAt(steps.Saws[1].To, 10, 400);
    EXPECT_EQ(steps.Saws[1].Side, -1);
}

TEST(EvolutionReader, WhatItDoesNotKnowIsUnreadAndTheRestGoesOn)
{
    const Lines wrong = {
        "W#99{ ::WTp WS=1 #1=100 #2=50 #3=-12 }W",         // another operation
        "W#81{ ::WTp WS=1 #1=1..0 #2=50 #3=-12 }W",        // no number
        "W#81{ ::WTp WS=1 #2=50 #3=-12 }W",                // without a place
        "W#81{ ::WTp WS=1 #1=100 #2=50 }W",                // without a depth
        Onward,                                            // a move that no start precedes
        "W#89{ ::WTs WS=1 #1=1 #2=2 #3=-5 #36=0 #40=1 }W", // a side without a radius
        "W#2113{ ::WTa #8015=0 #3=-6 #31=0 #32=10 #34=1 #8017=11. #8044=0 }W", // two radii
        "HELLO",
    };
    Lines lines = wrong;
    lines.push_back("W#81{ ::WTp WS=1 #1=100 #2=50 #3=-12 #8015=0 #201=1 #203=1 #1002=8 }W");
    const MachineSteps steps = ReadEvolution(EvolutionWith(1, lines));
    EXPECT_EQ(steps.Unread.size(), wrong.size());
    EXPECT_EQ(steps.Bores.size(), 2U); // that without a depth has its place
    EXPECT_EQ(ReadEvolution({"SIDE#1{", Start}).Unread.size(), 1U);
    EXPECT_EQ(ReadEvolution(EvolutionWith(2, {Start})).Unread.size(), 1U); // the underside
}

// One bore of the edge, one of the face, in the panel as the machine has it.
Lines HbdWith(double length, double width)
{
    const std::string l = std::to_string(length), w = std::to_string(width);
    return {"TPA\\ALBATROS\\EDICAD\\00.00:1011:0;0",
            "$=DOOR",
            "",
            "",
            "::SIDE=1;5;",
            "::UNm DL=" + l + " DH=" + w + " DS=18",
            "VAR{",
            "}VAR",
            "OPTI{",
            "}OPTI",
            "SIDE#1{",
            "$=upper",
            "::LF=" + l + " HF=" + w + " SF=18",
            "W#82{ ::WTp",
            "#205=2 #1=100 #2=hf-34 #3=-13 #8015=0 #201=1 #1001=1 }W",
            "}SIDE",
            "SIDE#5{",
            "$=Back",
            "::LF=" + l + " HF=18 SF=" + w,
            "W#1501{ ::WT2",
            "#8020=70 #8021=9.5 #8022=-30 #8015=0 #1001=1 #1002=8 #8098=forspina.mcr #8117=1",
            "#8501=0 #8502=0 #8525=1 #8526=1 #8530=3 #8531=1 #8532=0 }W",
            "}SIDE",
            ""};
}

TEST(HbdReader, EachEdgeIsTheMachinesBack)
{
    const struct {
        Plane Edge;
        PathPoint Face;
    } edges[] = {{Plane::Edge1, {100, 34}},
                 {Plane::Edge2, {500, 366}},
                 {Plane::Edge3, {34, 100}},
                 {Plane::Edge4, {566, 300}}};
    for (const auto& edge : edges) {
        const bool turned = edge.Edge == Plane::Edge3 || edge.Edge == Plane::Edge4;
        const MachineSteps steps = ReadHbd(turned ? HbdWith(400, 600) : HbdWith(600, 400), {edge.Edge, {}});
        EXPECT_EQ(steps.Unread, Lines());
        EXPECT_EQ(steps.Length, 600);
        EXPECT_EQ(steps.Width, 400);
        ASSERT_EQ(steps.Bores.size(), 2U);
        EXPECT_EQ(steps.Bores[0].On, Plane::Surface);
        ExpectPlaceAt(steps.Bores[0].At, edge.Face.X, edge.Face.Y);
        EXPECT_EQ(steps.Bores[0].Depth, 13);
        EXPECT_EQ(steps.Bores[0].Tool, "2");
        EXPECT_EQ(steps.Bores[1].On, edge.Edge);
        ExpectPlaceAt(steps.Bores[1].At, 70, 9.5);
        EXPECT_EQ(steps.Bores[1].Depth, 30);
        EXPECT_EQ(steps.Bores[1].Diameter, 8);
        EXPECT_EQ(steps.Bores[1].Tool, "3");
    }
}

TEST(HbdReader, TheCornerIsUndone)
{
    const MachineSteps steps = ReadHbd(HbdWith(600, 400), {Plane::Edge1, {true, true}});
    ExpectPlaceAt(steps.Bores.at(0).At, 500, 366);
    ExpectPlaceAt(steps.Bores.at(1).At, 530, 9.5);
}

TEST(HbdReader, WhatItDoesNotKnowIsUnread)
{
    Lines lines = HbdWith(600, 400);
    lines[14] = "#205=2 #1=100 #2=34 #3=-13 #8015=0 #201=1 #1001=1 }W"; // from the front
    lines[19] = "W#1502{ ::WT2";
    const MachineSteps steps = ReadHbd(lines);
    ASSERT_EQ(steps.Unread.size(), 2U);
    EXPECT_EQ(steps.Unread[0].substr(0, 9), "14: W#82{");
    EXPECT_EQ(steps.Unread[1].substr(0, 11), "20: W#1502{");
    EXPECT_TRUE(steps.Bores.empty());
}

} // namespace
} // namespace kv::test
