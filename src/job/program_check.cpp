// Reads the programs' texts as a control would, with the tools of the installation, and turns the findings
// into lines of the report.
#include "job/program_check.h"

#include "job/installation_tools.h"
#include "machine/program_reader.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/job_output.h"
#include "writers/program_lines.h"

namespace kv {

JobProof ProofOfJob;
ProgramInstead CheckInstead;
double CheckTolerance = UsualTolerance;

namespace {

constexpr std::size_t MostLines = 100; // of the report
Demands DemandsOfJob;

// Which edge the horizontal machine has at its back stands in no program: whoever lays the panel down knows
// it from the drawing. Of a wrong one all bores would be found beside their places.
Plane EdgeAtHorizontalMachine()
{
    for (const ProgramTrace& trace : ProgramTraces)
        if (trace.BackEdge >= 1 && trace.BackEdge <= 4)
            return static_cast<Plane>(trace.BackEdge);
    return Plane::Edge4;
}

void TakeProgram(std::vector<MachineSteps>& programs, const std::string& path, const std::string& text,
                 const ToolTable& tools)
{
    ProgramFacts facts;
    facts.HbdEdge = EdgeAtHorizontalMachine();
    facts.From = {Run.OriginRight != 0, Run.OriginTop != 0};
    facts.UpperAndLowerExchanged = Val(Config.Origin) != 0;
    programs.push_back(ReadProgram(text, facts));
    FillTools(programs.back(), tools);
    ProofOfJob.Programs.push_back(path);
}

std::string SideText(Plane on)
{
    return on == Plane::Surface ? "the face" : "edge " + std::to_string(static_cast<int>(on));
}

Message MessageOf(FindingKind kind)
{
    switch (kind) {
    case FindingKind::Left:
        return Message::WoodLeftStanding;
    case FindingKind::Cut:
        return Message::WoodCutAway;
    case FindingKind::MissingBore:
        return Message::BoreMissing;
    case FindingKind::OtherBore:
        return Message::BoreOther;
    case FindingKind::NarrowWay:
        return Message::WayNarrowForTool;
    case FindingKind::OffPanel:
        return Message::RouteBesidePanel;
    case FindingKind::UnknownTool:
        return Message::ToolInNoTable;
    case FindingKind::ShortTool:
        return Message::ToolTooShort;
    case FindingKind::OtherTool:
        return Message::ToolOfOtherKind;
    case FindingKind::NoFeed:
        return Message::RouteWithoutFeed;
    case FindingKind::TooDeep:
        return Message::CutBelowPanel;
    case FindingKind::InTheAir:
        return Message::RouteInTheAir;
    case FindingKind::Rapid:
        return Message::RapidInWood;
    case FindingKind::ArcAstray:
        return Message::ArcEndsDisagree;
    case FindingKind::NotUnderstood:
        break;
    }
    return Message::ProgramLineUnread;
}

std::string RoundedPlace(double value)
{
    return MillimetreText(
        static_cast<double>(static_cast<long long>(value * 100 + (value < 0 ? -0.5 : 0.5))) / 100);
}

void TellFinding(const Finding& finding)
{
    const bool isArea = finding.Kind == FindingKind::Left || finding.Kind == FindingKind::Cut;
    const std::string what = isArea && !finding.What.empty() ? "; " + finding.What : finding.What;
    const std::string path =
        finding.Program < ProofOfJob.Programs.size() ? ProofOfJob.Programs[finding.Program] : std::string();
    MessageValues values = {{"layer", finding.Drawn != 0 ? DrawnLayerOf(finding.Drawn) : ""},
                            {"program", ShownPath(path)},
                            {"at", static_cast<long long>(finding.Line)},
                            {"width", RoundedPlace(finding.Millimetres)},
                            {"x", RoundedPlace(finding.At.X)},
                            {"y", RoundedPlace(finding.At.Y)},
                            {"side", SideText(finding.On)},
                            {"depth", MillimetreText(finding.Depth)},
                            {"what", what}};
    if (finding.Drawn != 0)
        values = WithPlace(std::move(values), finding.Drawn);
    Tell(MessageOf(finding.Kind), std::move(values));
}

void TellProof(const Proof& proof)
{
    for (std::size_t i = 0; i < std::min(MostLines, proof.Findings.size()); ++i)
        TellFinding(proof.Findings[i]);
    if (proof.Findings.size() > MostLines)
        Tell(Message::FurtherFindings,
             {{"count", static_cast<long long>(proof.Findings.size() - MostLines)}});
    if (!proof.IsWhole)
        Tell(Message::CheckStopped, {{"count", static_cast<long long>(proof.Findings.size())}});
    for (std::size_t i = 0; i < std::min(MostLines, proof.Left.size()); ++i)
        Tell(Message::EntityNotProved, WithPlace({{"layer", DrawnLayerOf(proof.Left[i].Drawn)},
                                                  {"kind", DrawnKindOf(proof.Left[i].Drawn)},
                                                  {"what", proof.Left[i].Why}},
                                                 proof.Left[i].Drawn));
    if (proof.Findings.empty())
        Tell(Message::ProgramsProved, {{"bores", static_cast<long long>(proof.Bores)},
                                       {"grooves", static_cast<long long>(proof.Grooves)},
                                       {"contours", static_cast<long long>(proof.Contours)},
                                       {"pockets", static_cast<long long>(proof.Pockets)}});
}

void KeepEntity(Long drawn)
{
    if (drawn != 0)
        ProofOfJob.Entities[drawn] = {DrawnLayerOf(drawn), DrawnKindOf(drawn), HandleOf(drawn),
                                      DrawnEntities[drawn].Line};
}

void KeepEntities(const Proof& proof)
{
    for (const Finding& finding : proof.Findings)
        KeepEntity(finding.Drawn);
    for (const Unproved& left : proof.Left)
        KeepEntity(left.Drawn);
}

} // namespace

bool ChecksPrograms()
{
    return EqualIgnoringCase(Trim(Config.Check), "yes");
}

void TellUnknownCheck()
{
    const std::string_view word = Trim(Config.Check);
    if (!word.empty() && !ChecksPrograms() && !EqualIgnoringCase(word, "no"))
        Tell(Message::CheckUnknown, {{"word", word}});
}

void StartCheck()
{
    ProofOfJob = {};
    DemandsOfJob = {};
    Outputs.Texts.clear();
    Outputs.KeepsTexts = ChecksPrograms();
    TellUnknownCheck();
}

void WorkOutDemands()
{
    if (ChecksPrograms())
        DemandsOfJob = DemandsOfRun();
}

void CheckPrograms()
{
    if (!ChecksPrograms() || Run.RunFailed != False)
        return;
    const InstallationTools known = ToolsOfInstallation();
    ProofOfJob.ToolFaults = known.Faults;
    const ToolTable& tools = known.Tools;
    std::vector<MachineSteps> programs;
    if (!CheckInstead.Path.empty())
        TakeProgram(programs, CheckInstead.Path, CheckInstead.Text, tools);
    else
        for (const ProgramTextKept& program : Outputs.Texts)
            TakeProgram(programs, program.Path, program.Text, tools);
    if (programs.empty()) {
        Tell(Message::NothingProved,
             {{"cause", "the drawing gives no program of a control that is read back"}});
        return;
    }
    ProofOfJob.Found = Prove(DemandsOfJob, std::move(programs), CheckTolerance, tools);
    ProofOfJob.IsDone = true;
    KeepEntities(ProofOfJob.Found);
    TellProof(ProofOfJob.Found);
    Outputs.Texts.clear();
}

} // namespace kv
