// The one way by which a message reaches the operator, and the meters of a running file. Lines are
// held back in a buffer for one paint, then cut at carriage returns into rows; a mark character in
// front picks the colour. Nothing is written to a file: the report is the program's only log, and
// showing it is also where events run and an abort is noticed.
#include "state/report.h"

#include <algorithm>
#include <array>

#include "platform/events.h"
#include "platform/text.h"

namespace kv {

ReportHooks Report;
int (*ReaderPercentDone)() = nullptr;

namespace {

struct MarkColour {
    char Mark;
    unsigned char Red, Green, Blue;
};
constexpr std::array<MarkColour, 4> MarkColours{{
    {MarkRed, 155, 0, 0},
    {MarkGreen, 0, 155, 0},
    {MarkBlue, 0, 0, 255},
    {MarkPink, 255, 0, 100},
}};

constexpr char RowEnd = '\r';
constexpr int LastPlainCode = 127;
constexpr int ReaderInterval = 100; // ms; a meter timer below this follows the reader

std::string MessageBuffer; // each line ended by a carriage return
int RowCount = 0;
std::array<int, MeterCount> MeterValues{};
int Interval = 0; // ms; 0: the timer is off

void TakeColour(ReportRow& row, char mark)
{
    for (const MarkColour& colour : MarkColours) {
        if (colour.Mark != mark)
            continue;
        row.Red = colour.Red;
        row.Green = colour.Green;
        row.Blue = colour.Blue;
    }
}

// The row carries the colour of the row before it.
void ShowRow(ReportRow& row, std::string_view text)
{
    // Whatever stands above 127 counts as a mark, so a line that begins with an accented letter
    // loses that letter.
    if (!text.empty() && static_cast<unsigned char>(text.front()) > LastPlainCode) {
        TakeColour(row, text.front());
        text.remove_prefix(1);
    }
    row.Centred = BeginsWith(text, " ");
    row.Text = Trim(text);
    ++RowCount;
    if (Report.ShowRow != nullptr)
        Report.ShowRow(row);
}

void ShowReportLines(std::string_view text)
{
    ReportRow row; // black at each call
    std::size_t start = 0;
    std::size_t end = text.find(RowEnd);
    while (end != std::string_view::npos) {
        ShowRow(row, text.substr(start, end - start));
        start = end + 1;
        end = text.find(RowEnd, start);
    }
    ShowRow(row, text.substr(start));
}

void ClearReport()
{
    RowCount = 0; // the buffer stays as it is
    if (Report.ClearRows != nullptr)
        Report.ClearRows();
}

void FlushBuffer()
{
    if (MessageBuffer.empty())
        return;
    const std::string shown = MessageBuffer.substr(0, MessageBuffer.size() - 1);
    ShowReportLines(shown);
    DoEvents();
    MessageBuffer.clear(); // with what the events have added meanwhile
}

} // namespace

void ReportMessage(int code, std::string_view text)
{
    switch (code) {
    case 0:
        ClearReport();
        return;
    case 1:
        MessageBuffer += text;
        MessageBuffer += RowEnd;
        return;
    case 2:
        FlushBuffer();
        return;
    case 3:
        ShowReportLines(text);
        DoEvents();
        return;
    default:
        return;
    }
}

void BufferBoxText(std::string_view text)
{
    std::string lines; // cut at carriage returns alone
    for (const char c : text) {
        if (c != '\n')
            lines += c;
        else if (lines.empty() || lines.back() != RowEnd)
            lines += RowEnd;
    }
    ReportMessage(1, lines);
}

int ReportRowCount()
{
    return RowCount;
}

void SetMeter(Meter meter, int percent)
{
    const int value = std::clamp(percent, 0, 100);
    int& held = MeterValues[static_cast<std::size_t>(meter)];
    if (held == value)
        return;
    held = value;
    if (Report.MeterMoved != nullptr)
        Report.MeterMoved(meter, value);
}

int MeterValue(Meter meter)
{
    return MeterValues[static_cast<std::size_t>(meter)];
}

void ZeroMeters()
{
    for (int i = 0; i < MeterCount; ++i)
        SetMeter(static_cast<Meter>(i), 0);
}

void SetMeterInterval(int milliseconds)
{
    Interval = milliseconds;
}

int MeterInterval()
{
    return Interval;
}

void TickMeters()
{
    if (Interval <= 0)
        return;
    if (Interval < ReaderInterval) {
        if (ReaderPercentDone != nullptr)
            SetMeter(Meter::Parsing, ReaderPercentDone());
        return;
    }
    // A meter that its stage has set goes on alone until the stage sets it to 100.
    for (int i = 1; i < MeterCount; ++i) {
        const Meter meter = static_cast<Meter>(i);
        const int value = MeterValue(meter);
        if (value > 0 && value < 100)
            SetMeter(meter, value + 1);
    }
}

void ReportFailedFiles(const std::vector<std::string>& failed)
{
    if (failed.size() < 2)
        return;
    ReportMessage(1, " *** The Following files failed to process: ***");
    for (std::size_t i = 1; i < failed.size(); ++i)
        ReportMessage(1, failed[i]);
    ReportMessage(2, "");
}

} // namespace kv
