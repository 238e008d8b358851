// Names of a listing, the same on every host: which of them a pattern counts, and the short names that
// tell long ones apart. The backends of directory.h find the files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/directory.h"

namespace kv {

constexpr Long FilesPerYield = 256; // events run in between, so that a large folder stops no window

bool HasWildcard(std::string_view name);
// Whether the pattern (no folder) counts the name, as directory.h tells it.
bool MatchesPattern(std::string_view name, std::string_view pattern);
// Whether a backslash path can lead to a file of this name (CP1252, a stand-in where it has one).
bool CanBeNamed(std::string_view name);
// Why not, of the host's name (UTF-8).
std::string_view CauseOfUnnamed(std::string_view hostName);

// Sorts the entries by name, keeps `count` of them at most and fills Extension and ShortName from
// LongName. Short names differ within the listing.
void FinishListing(std::vector<DirectoryEntry>& entries, Long count);

} // namespace kv
