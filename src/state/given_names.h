// Names that a drawing or a job gives to files: what they may be is settled here, once for all texts.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// A text of the drawing as a name: a folder in front of it is left out, and reported. `word` is what
// the drawing calls the text.
std::string NameWithoutFolder(std::string_view word, std::string_view text);
// The part name that a text of the drawing gives. The folder stays the job's; a text that is nothing but
// a folder leaves the name as it is.
std::string PartNameBy(std::string_view text);
// A name as a file may have it; a change is reported, once a drawing.
std::string GivenFileName(std::string_view name);
void ReportNameChange(std::string_view name, std::string_view made);

} // namespace kv
