// The process report as lines of text: coloured on a terminal, plain elsewhere, gathered for each
// drawing and written at its end. A message box is a row in its place. On a terminal a long drawing
// shows its meters as one line that goes away again.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "state/report.h"

namespace kv {

enum class RowColours { None, Sixteen, Full };

// Sets the hooks of report and dialogs. Colours and progress need terminals: the first for the
// stream that gets the rows, the second for standard error.
void OpenReport(bool rowsOnTerminal, bool progressOnTerminal);
// From now on each row is written when it is shown, and none is gathered.
void WriteRowsAtOnce(std::FILE* stream);
void BeginDrawing(); // starts the clock of the progress line

// The rows since the last call.
std::vector<ReportRow> TakeRows();
// Writes the rows since the last call, with what the drawing left in the buffer of the report.
void WriteRows(std::FILE* stream);
void WriteRows(const std::vector<ReportRow>& rows, std::FILE* stream);
// Behind it nothing of the text waits in a buffer.
void WriteAtOnce(std::string_view text, std::FILE* stream);

std::string RowLine(const ReportRow& row, RowColours colours); // UTF-8, without a line end
std::string ColourName(const ReportRow& row);                  // "black", "red", "green", "blue", "pink"

// Called from the event pump: lets the meters creep, and shows them when the drawing takes long.
void ShowProgress();
// A list of so many drawings begins. One that takes longer than a second shows how far it is in place of the
// meters, on a terminal: "47 of 5,000, 1 failed, about 2:10 left". A single drawing is no list.
void BeginList(std::size_t total);
void CountOfList(std::size_t done, std::size_t failed);
void ShowListProgress(); // while its drawings are converted by others
void EraseProgress();
// "about 2:10 left" by the time that the done ones have taken; empty while fewer than three are done.
std::string TimeLeft(std::size_t done, std::size_t total, double seconds);

} // namespace kv
