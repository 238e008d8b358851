// The moves of a set in the order in which they must reach the disk: programs, notes, index, hand-over, cut
// list. Relies on copies that are flushed and on the locks; leaves all in its place, or a journal of it.
#include "job/placing_set.h"

#include "job/installation.h"
#include "writers/installation_files.h"

namespace kv {

namespace {

std::vector<PlannedMove> MovesOf(const JobSet& set)
{
    std::vector<PlannedMove> moves;
    const auto take = [&](const StagedFile& staged, const ContentsMark& mark) {
        if (!staged.Aside.empty())
            moves.push_back({staged, mark});
    };
    for (const JobOutput& job : set.Jobs) {
        for (const ProgramOutput& program : job.Programs)
            take(program.Staged, program.Mark);
    }
    for (const SetFile& file : set.Files)
        take(file.Staged, file.Mark);
    return moves;
}

// Each installation has the moves of all, so that whoever comes to one of them first finishes the set. One
// move is whole by itself.
bool WriteJournals(JobSet& set)
{
    const std::vector<PlannedMove> moves = MovesOf(set);
    if (moves.size() < 2)
        return true;
    for (const std::string& anchor : set.Anchors) {
        const FileOutcome outcome = WriteJournal(anchor, moves);
        if (!outcome.Ok()) {
            FailAll(set, AboutFile(JournalOf(anchor), outcome));
            return false;
        }
    }
    return true;
}

bool MovePrograms(JobSet& set)
{
    bool all = true;
    for (std::size_t job = 0; job < set.Jobs.size(); ++job) {
        for (ProgramOutput& program : set.Jobs[job].Programs) {
            const FileOutcome outcome = MoveStaged(program.Staged);
            if (outcome.Ok())
                continue;
            all = false;
            FailOne(set, job, AboutFile(program.Path, outcome));
        }
    }
    return all;
}

// Of the kinds from `first` to `last`.
void MoveFiles(JobSet& set, ChangeKind first, ChangeKind last)
{
    for (SetFile& file : set.Files) {
        if (file.Kind < first || file.Kind > last)
            continue;
        const FileOutcome outcome = MoveStaged(file.Staged);
        if (outcome.Ok())
            continue;
        if (file.Kind == ChangeKind::Index)
            WarnOfIndex(file.Path);
        FailJobsOf(set, file, AboutFile(file.Path, outcome));
    }
}

bool FlushMoves(JobSet& set)
{
    const FileOutcome outcome = FlushFiles();
    if (!outcome.Ok())
        FailAll(set, "Not on the disk: " + outcome.Cause);
    return outcome.Ok();
}

} // namespace

// Whatever an index names is on the disk before it is: a disk may keep a later move and forget an earlier
// one.
void MoveSet(JobSet& set)
{
    if (!WriteJournals(set))
        return;
    if (!MovePrograms(set)) { // no record of a program that did not get there
        if (!FlushMoves(set))
            return;
        SettleAndFlush(set);
        if (!WriteJournals(set))
            return;
    }
    MoveFiles(set, ChangeKind::Notes, ChangeKind::Notes);
    if (!FlushMoves(set))
        return;
    MoveFiles(set, ChangeKind::Index, ChangeKind::JobRows);
    (void)FlushMoves(set);
}

} // namespace kv
