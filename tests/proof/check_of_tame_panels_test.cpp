// The check of the product on random panels, beside the checker of the tests: two that share nothing but the
// reading of programs and the way of a tool beside a contour. KORVANTI_RANDOM asks for more of them.
#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <string>

#include "job/program_check.h"
#include "proof/shop.h"
#include "support/random_rounds.h"

namespace kv {
namespace {

// What the one sees and the other measures at its edge is not held against it.
constexpr double SurelyWide = 0.25; // mm

bool IsWideAreaDeviation(const test::Deviation& deviation)
{
    const bool isArea = deviation.What == test::Fault::CutOutside || deviation.What == test::Fault::Left;
    return isArea && test::IsWiderThan(deviation.Place, SurelyWide);
}

// Begins the contour in an inner corner? There a lead leaves wood at both walls, and without one the tool
// cuts into them. Elsewhere the report names the lead.
bool IsAtSeam(const Finding& finding, const test::DrawnPanel& panel, const std::string& report)
{
    const bool isTold = report.find(": the lead at ") != std::string::npos;
    for (const test::DrawnWay& way : panel.Ways)
        for (const test::Seam& seam : way.Seams)
            if (way.On == finding.On && (isTold || seam.Turn() * way.Side > 0) &&
                Between(finding.At, seam.At()) < 2 * way.Lead + 6 * way.Radius)
                return true;
    return false;
}

bool IsInPocketOrItsLoops(const Finding& finding, const test::DrawnPanel& panel)
{
    for (const test::DrawnPocket& pocket : panel.Pockets)
        for (const Move& piece : pocket.Outline)
            if (Between(piece.From, finding.At) < 400)
                return true;
    return false;
}

TEST(CheckOfTamePanels, SeesWhatTheOtherCheckerSeesAndNothingWithoutAReason)
{
    std::map<std::string, int> counts;
    for (int round = 1; round <= test::Rounds(60); ++round) {
        const test::TamePanel panel = test::TamePanelOf(test::Seed(static_cast<unsigned>(round)));
        test::Shop shop(panel.For);
        Config.CornerComp = panel.SeamInMidLine ? 1 : 0;
        Config.Check = "yes";
        const MachineSteps steps = shop.StepsOf(panel);
        if (!ProofOfJob.IsDone) {
            ++counts["without a program"];
            continue;
        }
        ++counts["panels"];
        int wide = 0;
        for (const test::Deviation& deviation : test::DeviationsOf(panel.Asked, panel.Model, steps))
            wide += IsWideAreaDeviation(deviation) ? 1 : 0;
        counts["wide deviations"] += wide;
        const std::vector<Finding>& findings = ProofOfJob.Found.Findings;
        EXPECT_TRUE(wide == 0 || !findings.empty())
            << "panel " << test::RoundName(round) << ": nothing was found";
        const bool isClean = test::DeviationsOf(panel.Asked, panel.Model, steps).empty();
        for (const Finding& finding : findings) {
            ++counts[FindingName(finding.Kind)];
            EXPECT_TRUE(!isClean || finding.Kind == FindingKind::NarrowWay ||
                        IsAtSeam(finding, panel.Model, shop.Home.ReportText()) ||
                        IsInPocketOrItsLoops(finding, panel.Model))
                << "panel " << test::RoundName(round) << " " << test::ShownControl(panel.For) << ": "
                << FindingName(finding.Kind) << " " << finding.Millimetres << " mm at X" << finding.At.X
                << " Y" << finding.At.Y << " " << finding.What;
        }
        counts["proved"] += findings.empty() ? 1 : 0;
    }
    for (const auto& [what, count] : counts)
        RecordProperty(what, count);
    for (const auto& [what, count] : counts)
        std::cout << what << " " << count << "\n";
    EXPECT_GT(counts["proved"], counts["panels"] / 4);
    EXPECT_GT(counts["wide deviations"], 0);
}

} // namespace
} // namespace kv
