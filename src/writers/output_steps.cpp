// Repeats what a drawing gives to an installation through the very functions by which a conversion hands it
// over, so that both come to the same files. Relies on steps that were recorded by them; leaves their
// outputs in the queue.
#include "writers/output_steps.h"

#include <algorithm>
#include <utility>

#include "platform/files.h"
#include "platform/run_error.h"
#include "writers/cut_list.h"
#include "writers/installation_files.h"
#include "writers/job_output.h"

namespace kv {

namespace {

bool RepeatWanted(const OutputStep& step)
{
    const double form = step.Lines.size() == 2 ? Val(step.Lines[0]) : -1;
    if (form < 0 || form >= ProgramForms)
        return false;
    HandOverWanted({static_cast<ProgramForm>(static_cast<int>(form)), step.Folder, step.Text, step.Path,
                    step.Lines[1] == "1"});
    return true;
}

bool RepeatStep(const OutputStep& step)
{
    switch (step.Kind) {
    case StepKind::Comments:
        return CommentsOfProgramAt(step.Folder, step.Path) == step.Lines;
    case StepKind::Index:
        return AskFile(step.Path).Is == Presence::There;
    case StepKind::Folders:
        return MakeFolders(step.Path).Ok();
    case StepKind::Program:
        return HandOverProgram(step.Folder, step.Path, step.Text).Ok();
    case StepKind::Record:
        return HandOverRecordOf(step.Folder, step.Path, step.Text).Ok();
    case StepKind::HandOver:
        HandOverProgramName(step.Folder, step.Text);
        return true;
    case StepKind::Notes:
        return HandOverNoteLines(step.Folder, step.Path, step.Lines).Ok();
    case StepKind::Name:
        HandOverName(step.Text);
        return true;
    case StepKind::CutList:
        return HandOverRow(step.Path, step.Text, step.Metric).Ok();
    case StepKind::Wanted:
        return RepeatWanted(step);
    }
    return false;
}

} // namespace

StepsRecorded::StepsRecorded()
{
    Outputs.Recording = true;
    Outputs.Steps.clear();
}

StepsRecorded::~StepsRecorded()
{
    Outputs.Recording = false;
    Outputs.Steps.clear();
}

bool IsRecorded(OutputStep step)
{
    if (Outputs.Recording)
        Outputs.Steps.push_back(std::move(step));
    return Outputs.Recording;
}

bool RepeatSteps(const std::vector<OutputStep>& steps)
{
    try {
        return std::all_of(steps.begin(), steps.end(), RepeatStep);
    } catch (const RunError&) { // what it says, the conversion will say
        return false;
    }
}

} // namespace kv
