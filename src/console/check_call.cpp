// `korvanti check`: the programs of drawings, converted in memory, read back and held against the drawings.
#include <cstdio>

#include <nlohmann/json.hpp>

#include "console/abort.h"
#include "console/calls.h"
#include "console/report_output.h"
#include "job/program_check.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "state/settings.h"
#include "writers/output_steps.h"

namespace kv {

namespace {

using CheckJson = nlohmann::ordered_json;

constexpr int FirstCheckMessage = 900, LastCheckMessage = 999;

bool IsOfCheck(const ReportRow& row)
{
    const int number = static_cast<int>(row.Line.Number);
    return number >= FirstCheckMessage && number <= LastCheckMessage;
}

void AddEntity(CheckJson& object, Long drawn)
{
    if (drawn == 0)
        return;
    const CheckedEntity& entity = ProofOfJob.Entities.at(drawn);
    object["layer"] = Utf8FromAnsi(entity.Layer);
    object["kind"] = Utf8FromAnsi(entity.Kind);
    object["drawingLine"] = entity.Line;
    if (!entity.Handle.empty())
        object["handle"] = Utf8FromAnsi(entity.Handle);
}

CheckJson JsonOfFinding(const Finding& finding)
{
    const bool isLine = finding.Kind == FindingKind::NotUnderstood;
    CheckJson object{{"finding", FindingName(finding.Kind)}};
    if (!isLine) {
        object["side"] = static_cast<int>(finding.On);
        object["x"] = finding.At.X;
        object["y"] = finding.At.Y;
        object["depth"] = finding.Depth;
        object["millimetres"] = finding.Millimetres;
    }
    if (finding.Area > 0)
        object["area"] = finding.Area;
    AddEntity(object, finding.Drawn);
    if (finding.Line > 0) {
        object["program"] = Utf8FromAnsi(ShownPath(ProofOfJob.Programs.at(finding.Program)));
        object["line"] = finding.Line;
    }
    if (!finding.What.empty())
        object["what"] = Utf8FromAnsi(finding.What);
    return object;
}

CheckJson JsonOfProof(const std::string& drawing, const std::string& outcome)
{
    CheckJson object{{"drawing", drawing}, {"outcome", outcome}, {"checked", ProofOfJob.IsDone}};
    if (!ProofOfJob.IsDone)
        return object;
    const Proof& proof = ProofOfJob.Found;
    object["proved"] = {{"bores", proof.Bores},
                        {"grooves", proof.Grooves},
                        {"contours", proof.Contours},
                        {"pockets", proof.Pockets}};
    object["whole"] = proof.IsWhole;
    object["findings"] = CheckJson::array();
    for (const Finding& finding : proof.Findings)
        object["findings"].push_back(JsonOfFinding(finding));
    object["notProved"] = CheckJson::array();
    for (const Unproved& left : proof.Left) {
        CheckJson entity;
        AddEntity(entity, left.Drawn);
        entity["why"] = left.Why;
        object["notProved"].push_back(std::move(entity));
    }
    return object;
}

// Of a drawing that failed all lines say why; else those of the check.
void PrintLines(const std::string& drawing, bool hasFailed)
{
    std::string text = drawing + "\n";
    for (const ReportRow& row : TakeRows())
        if (hasFailed || IsOfCheck(row))
            text += "  " + Utf8FromAnsi(TextOf(row.Line)) + "\n";
    WriteAtOnce(text, stdout);
}

bool TakeProgramInstead(const CommandLine& line)
{
    if (line.Program.empty())
        return true;
    CheckInstead.Path = FromHostPath(line.Program);
    const FileOutcome outcome = ReadWholeFile(CheckInstead.Path, CheckInstead.Text);
    if (!outcome.Ok())
        WriteAtOnce("korvanti: " + line.Program + ": " + Utf8FromAnsi(outcome.Cause) + "\n", stderr);
    return outcome.Ok();
}

} // namespace

int CheckDrawings(const CommandLine& line)
{
    OpenReport(false, IsTerminal(StandardStream::Error));
    if (!TakeProgramInstead(line))
        return ExitSomeFailed;
    CheckTolerance = line.Tolerance;
    int status = ExitConverted;
    CheckJson all = CheckJson::array();
    for (const std::string& drawing : line.Drawings) {
        const StepsRecorded recorded; // the programs reach no disk
        const std::string outcome = RunJob(drawing, OutputInMemory(drawing, line), line.System);
        EraseProgress();
        if (HasFailed(outcome)) {
            TellFailure(drawing, outcome);
            status = ExitSomeFailed;
        }
        if (line.ReportJson)
            all.push_back(JsonOfProof(drawing, outcome));
        else
            PrintLines(drawing, HasFailed(outcome));
        TakeRows();
        if (line.Strict && !ProofOfJob.Found.Findings.empty())
            status = ExitSomeFailed;
        if (AbortAsked()) {
            status = ExitSomeFailed;
            break;
        }
    }
    if (line.ReportJson)
        WriteAtOnce(all.dump(1) + "\n", stdout);
    return status;
}

} // namespace kv
