// What is left to do of a batch, kept beside it: a killed process or a power cut loses no line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "state/messages.h"

namespace kv {

constexpr std::string_view BatchRunFile = "BATCH.RUN";
constexpr std::string_view BatchOldFile = "BATCH.OLD";

// Lines of BATCH.LST in `folder` (with its backslash), as they stood in the file. They are on the disk then.
FileOutcome KeepBatchLines(std::string_view folder, const std::vector<std::string>& lines);
FileOutcome DropBatchLines(std::string_view folder);

// A BATCH.RUN that stands goes to BATCH.OLD, after the lines that one already holds; what BATCH.OLD holds
// already is not added again, and a BATCH.RUN without a job just goes. Gives the line about how many lines
// are kept where, with the cause where that is still BATCH.RUN; empty when there was no job.
struct BatchAsideMessages {
    Message Kept, Left;
};
constexpr BatchAsideMessages UnfinishedBatch = {Message::UnfinishedBatchKept, Message::UnfinishedBatchLeft};
constexpr BatchAsideMessages StaleBatch = {Message::StaleBatchKept, Message::StaleBatchLeft};
MessageLine SetUnfinishedBatchAside(std::string_view folder,
                                    const BatchAsideMessages& messages = UnfinishedBatch);
// At program start: a BATCH.RUN of an earlier process becomes BATCH.OLD and is reported; so is a BATCH.OLD
// that stands already.
void TellUnfinishedBatch(std::string_view folder);

} // namespace kv
