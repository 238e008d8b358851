// Shop notes of a drawing, kept for the control beside its programs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

// Hands over the notes of the drawing; nothing where there are none or no place for them. `folder` is the
// program folder, `place` the program's place by its first letter.
void HandOverNotes(const std::string& folder, const std::string& place);

// Puts new notes into the operator's lines. Both begin at element 0; `fresh[0]` is the head line. The
// last element of `old` is what stands behind the last line end.
std::vector<std::string> MergeNotes(const std::vector<std::string>& old,
                                    const std::vector<std::string>& fresh);

} // namespace kv
