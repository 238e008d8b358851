// Names of files and folders that CP1252 does not hold. Inside the program such a name is its stand-in: the
// nearest letters of its stem, "~", a number of its stem as eight hexadecimal digits, and its extension. So
// "дверь.dxf" is "dver~" "1A2B3C4D.dxf" in every process, and lists, settings and workers find the same file.
// What this process has met is remembered: Utf8FromAnsi and HostFromAnsi put the real names back, in paths
// and in texts. A file made beside a drawing, under its stem, has the drawing's real stem. Names that look
// like stand-ins have one too, so that no two files are taken for each other.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// One name without its folder: itself in CP1252, or its stand-in. It holds "?", which no path leads to, when
// the name itself does or when another name that was met has the same stand-in.
std::string NameFromUtf8(std::string_view name);
// The same for each part of a path between slashes or backslashes, which stay.
std::string PathFromUtf8(std::string_view path);

// Whether the text may hold a stand-in, known to this process or not. Cheap.
bool MayHoldStandIn(std::string_view ansi);
// Whether the name is a stand-in by its form that this process has not met: its folder has to be read.
bool IsUnknownStandIn(std::string_view name);
// A name or text in which each known stand-in is what programs and lists for machines call it: the nearest
// letters of the whole name, or the digits where it has no letters that are near.
std::string NameForMachines(std::string_view ansi);

// The text as UTF-8 with the real names in place of known stand-ins. `host`: byte for byte as the host spells
// them, for its calls; otherwise a byte that is no UTF-8 is U+FFFD.
std::string WithRealNames(std::string_view ansi, bool host);

} // namespace kv
