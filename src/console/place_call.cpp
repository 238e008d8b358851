// `korvanti place`: stages into the installation, in the order of the list. All stages are looked at before
// the first drawing is placed; where one of them does not fit, none is.
#include "console/calls.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "console/abort.h"
#include "console/drawing_run.h"
#include "console/list_report.h"
#include "console/report_output.h"
#include "job/placing.h"
#include "job/stage_folder.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/settings.h"
#include "writers/job_output.h"

namespace kv {

namespace {

struct GivenStage {
    std::string Typed, Folder;
    long long Number = 0, Drawings = 0;
    long long Placed = 0; // by an earlier call
};

void TellStage(const std::string& typed, const std::string& cause) // UTF-8
{
    EraseProgress();
    WriteAtOnce("korvanti: " + typed + ": " + cause + "\n", stderr);
}

// Of its drawings, the same when the placing is repeated.
std::string IdentitiesOf(const StageManifest& manifest)
{
    const ContentsMark mark = MarkOf(StageManifestText(manifest));
    return "stage " + std::to_string(mark.Size) + " " + std::to_string(mark.Sum) + " ";
}

// What an earlier call that was killed did not come to.
void ClearUp(const GivenStage& stage, const StageManifest& manifest)
{
    int swept = 0;
    (void)SweepAsides(stage.Folder, swept);
    if (stage.Placed >= stage.Drawings)
        KeepOpenIdentities(IdentitiesOf(manifest), {});
}

// Empty when the stage may be placed.
std::string LookAt(GivenStage& stage, const std::vector<SettingText>& marks)
{
    StageReader reader;
    std::string cause = reader.Open(stage.Folder);
    if (!cause.empty())
        return cause;
    const StageManifest& manifest = reader.Manifest();
    stage.Number = manifest.Number;
    stage.Drawings = manifest.Drawings;
    if (manifest.Version != VersionAndCommit())
        return "was made by version " + manifest.Version + " of the program; this one is " +
               VersionAndCommit();
    const std::string different = DifferentMarks(manifest.Marks, marks);
    if (!different.empty())
        return "was made with other settings than this installation has: " + different;
    StageProgress progress;
    const FileOutcome outcome = ReadStageProgress(stage.Folder, progress);
    if (!outcome.Ok())
        return outcome.Cause;
    stage.Placed = progress.Placed;
    ClearUp(stage, manifest);
    if (stage.Placed >= stage.Drawings && stage.Drawings > 0)
        return "was placed already (" + progress.When + ")";
    if (stage.Placed > 0)
        TellStage(stage.Typed, WholeText(stage.Placed) + " of " + WholeText(stage.Drawings) +
                                   " drawings were placed by an earlier call; the others follow");
    return {};
}

bool TellNumbers(const std::vector<GivenStage>& stages, bool allowGaps)
{
    bool well = true;
    for (std::size_t i = 1; i < stages.size(); ++i) {
        const GivenStage &before = stages[i - 1], &stage = stages[i];
        std::string cause;
        if (stage.Number == before.Number)
            cause = "has number " + WholeText(stage.Number) + " in the list, as " + before.Typed + " has";
        else if (stage.Number != before.Number + 1 && !allowGaps)
            cause = "has number " + WholeText(stage.Number) + " in the list, and the one before it is " +
                    WholeText(before.Number) + "; --allow-gaps places them nevertheless";
        if (cause.empty())
            continue;
        well = false;
        TellStage(stage.Typed, cause);
    }
    return well;
}

// In the order of the list. Nothing when one of them cannot be placed, which is told.
std::optional<std::vector<GivenStage>> LookAtStages(const CommandLine& line)
{
    const std::vector<SettingText> marks = InstallationMarks();
    std::vector<GivenStage> stages;
    bool well = true;
    for (const std::string& typed : line.Stages) {
        GivenStage stage;
        stage.Typed = typed;
        stage.Folder = WithBackslash(FromHostPath(typed));
        const std::string cause = LookAt(stage, marks);
        if (!cause.empty()) {
            well = false;
            TellStage(typed, Utf8FromAnsi(cause));
        }
        stages.push_back(std::move(stage));
    }
    if (!well)
        return std::nullopt;
    std::stable_sort(stages.begin(), stages.end(),
                     [](const GivenStage& a, const GivenStage& b) { return a.Number < b.Number; });
    if (!TellNumbers(stages, line.AllowGaps))
        return std::nullopt;
    return stages;
}

// Notes in the stages what has reached its place, whenever nothing waits for it.
class PlacedNotes {
  public:
    explicit PlacedNotes(ListReport& report) : Shown(&report) {}
    // The identity is that of the drawing that was placed last.
    void Add(const GivenStage& stage, long long placed, std::string identity)
    {
        if (Pending.empty() || Pending.back().Folder != stage.Folder) {
            Pending.push_back({stage.Folder, placed});
            Typed.push_back(stage.Typed);
            Identities.emplace_back();
        }
        Pending.back().Placed = placed;
        Identities.back().push_back(std::move(identity));
        if (Outputs.Waiting.empty())
            Write();
    }
    void Write()
    {
        const std::vector<FileOutcome> outcomes = WriteStageProgress(Pending);
        for (std::size_t i = 0; i < outcomes.size(); ++i) {
            if (outcomes[i].Ok()) {
                ForgetJobIdentities(Identities[i]);
                continue;
            }
            Shown->Fail(); // the next call repeats them, and their rows of the cut list are replaced
            TellStage(Typed[i],
                      "was placed, which cannot be noted in it: " + Utf8FromAnsi(outcomes[i].Cause));
        }
        Pending.clear();
        Typed.clear();
        Identities.clear();
    }

  private:
    ListReport* Shown;
    std::vector<StagePlaced> Pending;
    std::vector<std::string> Typed;
    std::vector<std::vector<std::string>> Identities; // of drawings, by stage
};

std::size_t DrawingsOf(const std::vector<GivenStage>& stages)
{
    std::size_t count = 0;
    for (const GivenStage& stage : stages)
        count += static_cast<std::size_t>(stage.Drawings - stage.Placed);
    return count;
}

// False: the run is aborted. `left` counts the drawings of the list that are not placed.
bool PlaceStage(const GivenStage& stage, ListReport& report, PlacedNotes& notes, std::size_t& left)
{
    StageReader reader;
    std::string cause = reader.Open(stage.Folder);
    const std::string identities = IdentitiesOf(reader.Manifest());
    for (long long placed = 0; cause.empty() && placed < stage.Drawings; ++placed) {
        const std::optional<ConvertedJob> job = reader.Next(cause);
        if (!job)
            break;
        if (placed < stage.Placed)
            continue;
        if (AbortAsked())
            return false;
        SetJobIdentity(identities + WholeText(placed));
        const std::optional<DoneDrawing> done = PlaceHere(*job);
        report.Show(done ? *done : ConvertAtItsTurn(*job));
        --left;
        notes.Add(stage, placed + 1, JobIdentity());
        SetJobIdentity({});
    }
    if (cause.empty())
        return true;
    TellStage(stage.Typed, Utf8FromAnsi(cause) + "; its other drawings are not placed");
    report.Fail();
    return true;
}

} // namespace

int PlaceStages(const CommandLine& line)
{
    Config.CarryOver = "clean";
    CountOperationsOfDrawings();
    const std::optional<std::vector<GivenStage>> stages = LookAtStages(line);
    if (!stages) {
        WriteAtOnce("korvanti: nothing was placed\n", stderr);
        return ExitSomeFailed;
    }
    ListReport report(line.ReportJson, DrawingsOf(*stages));
    RecoverInstallations();
    std::optional<JobsTogether> together(std::in_place);
    PlacedNotes notes(report);
    std::size_t left = DrawingsOf(*stages);
    for (const GivenStage& stage : *stages) {
        if (PlaceStage(stage, report, notes, left))
            continue;
        report.ShowStop(left);
        break;
    }
    together.reset();
    notes.Write();
    return report.Finish();
}

} // namespace kv
