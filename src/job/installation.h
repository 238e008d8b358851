// A program folder or a cut list as one process at a time may change it: by which file it is locked, and
// the journal of the moves that are under way, from which they are finished when the process ends in
// between.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "writers/job_output.h"

namespace kv {

struct PlannedMove {
    StagedFile File;
    ContentsMark Mark;
};

// The file that stands for an installation: the index's place in a program folder, or the cut list.
std::string AnchorOf(const std::string& installation);
std::string JournalOf(const std::string& anchor);

// What an ended process has left half moved; a drawing may read it. Takes the lock where it is free.
FileOutcome FinishIfLeft(const std::string& installation);

// All of these want the lock of the anchor.
FileOutcome WriteJournal(const std::string& anchor, std::span<const PlannedMove> moves);
FileOutcome DropJournal(const std::string& anchor);
// Does what is left of the moves of a process that has ended. A failure leaves the journal and the copies.
// Where a copy is lost before it was moved, what comes after it is not moved either.
FileOutcome FinishMoves(const std::string& anchor);

// A journal's text. Places in or below `folder`, a host path, are named from there, since a shared folder
// has other names on other machines.
std::string JournalText(std::span<const PlannedMove> moves, std::string_view folder);
// Nothing, when it is not whole or names what is no move of this program.
std::optional<std::vector<PlannedMove>> MovesOfJournal(std::string_view text, std::string_view folder);

} // namespace kv
