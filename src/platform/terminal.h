// The standard streams. Whether a person watches one: colours and progress lines are for terminals alone.
#pragma once

namespace kv {

enum class StandardStream { Output, Error };

// Before the first word is written: the streams carry the program's bytes unchanged, which are UTF-8 with
// LF line ends on every host, and a console window shows them so. RestoreStreams puts the window back.
void PrepareStreams();
void RestoreStreams();

// For a program that is made without a console: takes that of the program that called it. False when the
// stream leads nowhere even so.
bool ReachesCaller(StandardStream stream);

// A window that people watch and that obeys the signs for colours.
bool IsTerminal(StandardStream stream);

} // namespace kv
