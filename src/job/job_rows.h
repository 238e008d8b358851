// Which row of a cut list a job of a batch or of a stage has written, until it is known to be done: a job
// that is repeated after an interruption replaces its row.
#pragma once

#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "writers/job_output.h"

namespace kv {

using RowsByJob = std::map<std::string, std::string, std::less<>>; // by identity

std::string JobRowsPath(const std::string& list);
RowsByJob RowsOf(std::string_view text);
std::string JobRowsText(const RowsByJob& rows);
// The change of that file which goes with a change of the list.
FileChange JobRowsChange(const FileChange& list, const std::string& identity);

// The job that runs next, by a name that is the same when it is repeated, such as batch, line and drawing;
// empty: a job of which each run adds its row.
void SetJobIdentity(std::string identity);
const std::string& JobIdentity();
// The jobs are done for good: a later one of that identity adds its row.
void ForgetJobIdentities(std::span<const std::string> identities);
// After an interruption: of all identities that begin with `head` those alone are still to be repeated. One
// whose job was done when the process ended must not give its row to the next job of that name.
void KeepOpenIdentities(std::string_view head, const std::set<std::string>& open);

} // namespace kv
