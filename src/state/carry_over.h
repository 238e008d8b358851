// What an earlier drawing left and the one that runs took over. A value that outlives its drawing is
// kept twice: as it is, and as it would be had this drawing been the first of the process. Where a
// pass uses one and the two differ, the value was taken over.
#pragma once

#include <string_view>

namespace kv {

// Whether the settings ask that every drawing starts as in a fresh process. Another word than "kept" or
// "clean" is reported.
bool StartsClean();
// Keeps for the report that a value of an earlier drawing went into this one; each name counts once.
void NoteTakenOver(std::string_view what, std::string_view value);
// One line for all that was noted; none for a drawing that took nothing over.
void ReportTakenOver();
// Forgets the names that drawings gave to columns of the cut list.
void ForgetFieldsNamedByDrawings();

} // namespace kv
