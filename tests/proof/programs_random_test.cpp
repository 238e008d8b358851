// Random drawings with routes on the face and in edge views, from random corners: the programs for both
// controls are read to the last line, and make the router do the same.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "machine/cnc_reader.h"
#include "machine/evolution_reader.h"
#include "machine/text_lines.h"
#include "routes/random_routes.h"
#include "support/random_rounds.h"
#include "support/same_steps.h"
#include "support/scene.h"

namespace kv::test {
namespace {

const char* const RandomCorners[] = {"LL", "LR", "UL", "UR"};

std::string WithoutWord(std::string text, const std::string& word)
{
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word))
        text.erase(at, word.size());
    return text;
}

// As it is where no arc in an edge is given a depth: each keeps that of the move before it.
MachineSteps WithLevelArcs(MachineSteps steps)
{
    for (RouterCut& cut : steps.Cuts) {
        double depth = cut.StartDepth;
        for (Move& move : cut.Moves) {
            move.DepthFrom = depth;
            depth = move.IsArc && cut.On != Plane::Surface ? depth : move.DepthTo;
            move.DepthTo = depth;
        }
    }
    return steps;
}

std::string Differences(const MachineSteps& a, const MachineSteps& b)
{
    return StepsMissing(a, b) + StepsMissing(b, a);
}

struct RandomPrograms {
    bool PlainRoutes = false; // without leads, ramps and oscillation
    bool FaceAlone = false;

    mutable bool TellsOfLevelArcs = false; // the report of the last one

    // The cuts of one tame drawing. An instruction may move bores to the tool changes, where some are lost.
    MachineSteps CutsOf(unsigned seed, const std::string& corner, Int control) const
    {
        Scene home;
        home.Write("EvHeader.dat", "HEAD\r\n\r\n::SIDE=\r\n\r\nEND\r\n");
        RandomRouteDrawing random(Seed(seed), true);
        std::string drawing = random.Drawn();
        random.Settle();
        if (PlainRoutes) {
            Config.LeadS = 0;
            for (const char* const word : {"OZ2", "LD12", "LD", "RI4", "RO3", "LEAD=ON 15", "LEAD=7"})
                drawing = WithoutWord(drawing, word);
        }
        Config.PrecisionMetric = "5";
        Config.LineOrigin = corner;
        Config.LineLimit = "5000";
        Run.ControlType = control;
        EXPECT_TRUE(home.Convert(drawing)) << home.ReportText();
        TellsOfLevelArcs = std::any_of(home.Lines.begin(), home.Lines.end(), [](const std::string& line) {
            return line.find("keeps the depth of the move before it") != std::string::npos;
        });
        MachineSteps steps = control == 0 ? ReadCnc(home.Program())
                                          : ReadEvolution(LinesOf(home.Read(home.Programs / "DOOR.CNC")),
                                                          {{corner[1] == 'R', corner[0] == 'U'}, true});
        steps.Bores.clear();
        if (FaceAlone)
            std::erase_if(steps.Cuts, [](const RouterCut& cut) { return cut.On != Plane::Surface; });
        return steps;
    }
    void ExpectSameCuts() const
    {
        std::size_t cuts = 0, onEdges = 0, level = 0;
        for (int round = 1; round <= Rounds(150); ++round) {
            SCOPED_TRACE(RoundName(round));
            const auto seed = static_cast<unsigned>(round);
            const MachineSteps plain = CutsOf(seed, "LL", 0);
            const MachineSteps cnc = CutsOf(seed, RandomCorners[seed % 4], 0);
            const bool told = TellsOfLevelArcs && !FaceAlone;
            const MachineSteps evolution = CutsOf(seed, RandomCorners[seed / 4 % 4], 2);
            EXPECT_EQ(plain.Unread, std::vector<std::string>());
            EXPECT_EQ(cnc.Unread, std::vector<std::string>());
            EXPECT_EQ(evolution.Unread, std::vector<std::string>());
            EXPECT_EQ(Differences(plain, cnc), "");
            EXPECT_FALSE(TellsOfLevelArcs); // the program names the depth of each arc
            // An arc in an edge that rises or falls is level with a CNC90, which its report says, and else
            // none.
            EXPECT_EQ(Differences(plain, evolution).empty(), !told) << Differences(plain, evolution);
            EXPECT_EQ(Differences(WithLevelArcs(plain), WithLevelArcs(evolution)), "");
            level += told ? 1U : 0U;
            for (const RouterCut& cut : plain.Cuts)
                onEdges += cut.On == Plane::Surface ? 0U : 1U;
            cuts += plain.Cuts.size();
        }
        EXPECT_GT(cuts, 400U);
        EXPECT_EQ(onEdges > 40, !FaceAlone);
        EXPECT_EQ(level > 0, !FaceAlone && !PlainRoutes);
    }
};

TEST(ProgramsRandom, BothControlsCutTheSameOnTheFaceFromEveryCorner)
{
    RandomPrograms{false, true}.ExpectSameCuts();
}

TEST(ProgramsRandom, BothControlsCutTheSamePlainRoutesOnAllPlanesFromEveryCorner)
{
    RandomPrograms{true, false}.ExpectSameCuts();
}

TEST(ProgramsRandom, BothControlsCutTheSameOnAllPlanesFromEveryCornerButForLevelArcs)
{
    RandomPrograms{false, false}.ExpectSameCuts();
}

// A contour in the view above that ends with a bulge.
TEST(ProgramsRandom, LeadsAtABulgeInTheViewAboveAreThoseOfACnc)
{
    const std::string border = "BORDERZ18";
    const std::string drawing =
        Drawing(Rectangle(border, 60, 60, 600, 400) + Rectangle(border, 60, 480, 600, 18) +
                Polyline("ROUTEZ5T71L2LD3", {{200, 485}, {230, 485}, {230, 493, 1.5}, {200, 485}}));
    MachineSteps steps[2];
    for (const Int control : {Int(0), Int(2)}) {
        Scene home;
        home.Write("EvHeader.dat", "HEAD\r\n\r\n::SIDE=\r\n\r\nEND\r\n");
        Config.PrecisionMetric = "5";
        kv::Run.ControlType = control;
        ASSERT_TRUE(home.Convert(drawing)) << home.ReportText();
        steps[control / 2] = control == 0 ? ReadCnc(home.Program())
                                          : ReadEvolution(LinesOf(home.Read(home.Programs / "DOOR.CNC")));
    }
    EXPECT_EQ(StepsMissing(steps[0], steps[1]), "");
}

} // namespace
} // namespace kv::test
