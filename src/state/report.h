// The process report and the six meters: the program's only log. A front end sets the hooks; without
// one the report goes nowhere.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/dialogs.h"
#include "state/messages.h"

namespace kv {

// First character of a line: the colour for it and the following lines of the same call.
constexpr char MarkRed = '\x80';   // 155, 0, 0
constexpr char MarkGreen = '\x81'; // 0, 155, 0
constexpr char MarkBlue = '\x82';  // 0, 0, 255
constexpr char MarkPink = '\x83';  // 255, 0, 100

struct ReportRow {
    std::string Text; // trimmed, mark removed, CP1252
    unsigned char Red = 0, Green = 0, Blue = 0;
    bool Centred = false;
    MessageLine Line{}; // what it says; of a frame or a blank line none
};

enum class Meter { Parsing, ReadingInfo, Processing, Sequencing, SynLeads, PgmCode };
constexpr int MeterCount = 6;

struct ReportHooks {
    void (*ShowRow)(const ReportRow& row) = nullptr;
    void (*ClearRows)() = nullptr;
    void (*MeterMoved)(Meter meter, int percent) = nullptr;
    std::size_t MostEqualLines = 3; // of one number on one layer; more are shown as one with their count
};
extern ReportHooks Report;

// 0 clears the shown report, 1 buffers a line, 2 shows the buffer and lets events run, 3 shows the
// text at once and lets events run; any other code is ignored.
// For frames and blank lines; what says something has a number.
void ReportMessage(int code, std::string_view text);
// Buffers a line. Where the buffer is shown, many lines of one number on one layer become one line, with the
// values of the first and the {count} of all.
void Tell(MessageLine line);
void Tell(Message number, MessageValues values = {});
void TellAtOnce(Message number, MessageValues values); // as code 3
// In a message box; the console keeps it as lines of the report.
void TellInABox(Message number, MessageValues values, std::string_view title, BoxIcon icon);
// The text of a message box as lines of the report, buffered; line ends of any kind.
void BufferBoxText(std::string_view text);
// Whether a line of that number was told since the job began; with a layer: about that layer, as the line
// shows it.
bool WasTold(Message number);
bool WasTold(Message number, std::string_view layer);
void ForgetTold();
// The first fault that was told since; empty: none was.
const std::string& FirstFaultTold();
int ReportRowCount(); // rows shown since the last clear

// Doubts that were told since they were last forgotten. A line that stands for several counts as many.
long long DoubtsTold();
void AddDoubts(long long count); // of lines that another process has told
void ForgetDoubts();
long long DoubtsOf(const MessageLine& line); // 0 for notes and faults

void SetMeter(Meter meter, int percent);
int MeterValue(Meter meter);
void ZeroMeters();
// The meters' timer: while its interval is under 100 ms it shows the reader's percent done, else it
// lets meters 1 to 5 creep on by one.
void SetMeterInterval(int milliseconds);
int MeterInterval();
void TickMeters();
extern int (*ReaderPercentDone)(); // set by the reader while it runs

// Lists the failed files of the run; nothing when there are none. `failed` counts from 1.
void ReportFailedFiles(const std::vector<std::string>& failed);

} // namespace kv
