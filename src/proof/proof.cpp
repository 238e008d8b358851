#include "proof/proof.h"

#include <cstdio>
#include <cstdlib>
#include <set>
#include <utility>

#include "proof/bore_proof.h"
#include "proof/groove_proof.h"
#include "proof/program_rules.h"
#include "proof/way_proof.h"
#include "proof/wood_plan.h"

namespace kv {

namespace {

void TellNarrowWays(Proof& proof, const WoodPlan& plan)
{
    for (const MadeCut& cut : plan.MadeCuts) {
        if (cut.NarrowText.empty() || proof.IsFull())
            continue;
        Finding finding;
        finding.Kind = FindingKind::NarrowWay;
        finding.On = cut.Cut->On;
        finding.At = cut.NarrowAt;
        finding.Program = cut.Program;
        finding.Line = cut.NarrowLine;
        finding.What = cut.NarrowText;
        finding.Drawn = cut.OwnWay != NoWay ? plan.Asked.Ways[cut.OwnWay].Drawn.front() : 0;
        proof.Findings.push_back(std::move(finding));
    }
}

// A line of which a finding says what is wrong with it is not told again.
std::set<std::pair<std::size_t, std::size_t>> LinesExplained(const Proof& proof)
{
    std::set<std::pair<std::size_t, std::size_t>> lines;
    for (const Finding& finding : proof.Findings)
        if (finding.Kind == FindingKind::ArcAstray || finding.Kind == FindingKind::Rapid)
            lines.emplace(finding.Program, finding.Line);
    return lines;
}

void TellUnreadLines(Proof& proof, const std::vector<MachineSteps>& programs)
{
    const std::set<std::pair<std::size_t, std::size_t>> explained = LinesExplained(proof);
    for (std::size_t program = 0; program < programs.size(); ++program)
        for (const std::string& text : programs[program].Unread) {
            Finding finding;
            finding.Kind = FindingKind::NotUnderstood;
            finding.Program = program;
            finding.Line = std::strtoul(text.c_str(), nullptr, 10); // "7: G4F2"
            if (explained.count({program, finding.Line}) > 0)
                continue;
            finding.What = text;
            proof.Findings.push_back(std::move(finding));
        }
}

} // namespace

std::string FindingName(FindingKind kind)
{
    switch (kind) {
    case FindingKind::Left:
        return "left standing";
    case FindingKind::Cut:
        return "cut away";
    case FindingKind::MissingBore:
        return "missing bore";
    case FindingKind::OtherBore:
        return "other bore";
    case FindingKind::NarrowWay:
        return "narrow way";
    case FindingKind::OffPanel:
        return "off the panel";
    case FindingKind::UnknownTool:
        return "unknown tool";
    case FindingKind::ShortTool:
        return "short tool";
    case FindingKind::OtherTool:
        return "other tool";
    case FindingKind::NoFeed:
        return "no feed";
    case FindingKind::TooDeep:
        return "too deep";
    case FindingKind::InTheAir:
        return "in the air";
    case FindingKind::Rapid:
        return "rapid at depth";
    case FindingKind::ArcAstray:
        return "arc astray";
    case FindingKind::NotUnderstood:
        return "line not understood";
    }
    return {};
}

std::string MillimetreText(double millimetres)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.3f", millimetres);
    std::string shown = text;
    shown.erase(shown.find_last_not_of('0') + 1);
    if (shown.back() == '.')
        shown.pop_back();
    return shown == "-0" ? "0" : shown;
}

Proof Prove(const Demands& demands, std::vector<MachineSteps> programs, double tolerance,
            const ToolTable& tools)
{
    Proof proof;
    proof.Left = demands.Left;
    ProveBores(proof, demands, programs, tolerance);
    ProveGrooves(proof, demands, programs, tolerance);
    const WoodPlan plan = PlanOf(demands, programs, tolerance);
    ProveNothingLeft(proof, plan);
    ProveNothingElseCut(proof, plan);
    TellNarrowWays(proof, plan);
    ProveRules(proof, plan, programs, tools);
    TellUnreadLines(proof, programs); // of which there are not many
    proof.IsWhole = !proof.IsFull();
    return proof;
}

} // namespace kv
