// The one way by which a message reaches the operator, and the meters of a running file. Lines are
// held back in a buffer for one paint, then cut at carriage returns into rows; a mark character in
// front picks the colour. Nothing is written to a file: the report is the program's only log, and
// showing it is also where events run and an abort is noticed.
#include "state/report.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <map>
#include <optional>
#include <set>
#include <utility>

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

struct BufferedLine {
    MessageLine Line;
    std::string Text; // with its mark; a carriage return begins a second row
};
std::vector<BufferedLine> MessageBuffer;
std::map<Message, std::set<std::string, std::less<>>> ToldLayers; // of the job; empty: a line without a layer
long long Doubts = 0;
std::string FirstFault; // of the job
MessageLine LineOfBox;  // of the box that is shown at the moment
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

// Each row is `row` with its own text; what one row colours goes on to the next.
void ShowReportLines(ReportRow& row, std::string_view text)
{
    std::size_t start = 0;
    std::size_t end = text.find(RowEnd);
    while (end != std::string_view::npos) {
        ShowRow(row, text.substr(start, end - start));
        start = end + 1;
        end = text.find(RowEnd, start);
    }
    ShowRow(row, text.substr(start));
}

void ShowAtOnce(MessageLine line, std::string_view text)
{
    ReportRow row; // black at each call
    row.Line = std::move(line);
    ShowReportLines(row, text);
    DoEvents();
}

BufferedLine LineToShow(MessageLine line)
{
    const MessageValue* const layer = FindValue(line, "layer");
    ToldLayers[line.Number].insert(layer == nullptr ? std::string() : layer->Text);
    assert(MissingValues(line).empty()); // a text of the table has a place that this call does not fill
    const MessagePage* const page = FindPage(static_cast<long long>(line.Number));
    std::string text;
    if (page != nullptr && page->Mark != '\0')
        text += page->Mark;
    text += TextOf(line);
    return {std::move(line), std::move(text)};
}

BufferedLine CountedAsTold(MessageLine line)
{
    Doubts += DoubtsOf(line);
    const MessagePage* const page = FindPage(static_cast<long long>(line.Number));
    if (FirstFault.empty() && page != nullptr && page->Severity == MessageSeverity::Fault)
        FirstFault = Trim(TextOf(line));
    return LineToShow(std::move(line));
}

// Number and layer; nothing of a line that stands alone: without a layer, or with a count of its own.
using EqualLines = std::pair<Message, std::string>;
std::optional<EqualLines> EqualLinesOf(const MessageLine& line)
{
    const MessageValue* const layer = FindValue(line, "layer");
    if (layer == nullptr || FindValue(line, "count") != nullptr)
        return std::nullopt;
    return EqualLines{line.Number, layer->Text};
}

// A drawing with hundreds of equal doubts would push all else out of sight.
std::vector<BufferedLine> CountedLines(const std::vector<BufferedLine>& lines)
{
    std::map<EqualLines, std::size_t> counts;
    for (const BufferedLine& line : lines)
        if (const std::optional<EqualLines> equal = EqualLinesOf(line.Line))
            ++counts[*equal];
    std::vector<BufferedLine> shown;
    for (const BufferedLine& line : lines) {
        const std::optional<EqualLines> equal = EqualLinesOf(line.Line);
        if (!equal || counts[*equal] <= Report.MostEqualLines) {
            if (!equal || counts[*equal] > 0)
                shown.push_back(line);
            continue;
        }
        MessageLine first = line.Line;
        first.Values.emplace_back("count", static_cast<long long>(std::exchange(counts[*equal], 0)));
        shown.push_back(LineToShow(std::move(first)));
    }
    return shown;
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
    ReportRow row; // black at each call
    for (BufferedLine& line : CountedLines(MessageBuffer)) {
        row.Line = std::move(line.Line);
        ShowReportLines(row, line.Text);
    }
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
        MessageBuffer.push_back({{}, std::string(text)});
        return;
    case 2:
        FlushBuffer();
        return;
    case 3:
        ShowAtOnce({}, text);
        return;
    default:
        return;
    }
}

bool WasTold(Message number)
{
    return ToldLayers.contains(number);
}

bool WasTold(Message number, std::string_view layer)
{
    const auto told = ToldLayers.find(number);
    return told != ToldLayers.end() && told->second.contains(layer);
}

void ForgetTold()
{
    ToldLayers.clear();
    FirstFault.clear();
}

const std::string& FirstFaultTold()
{
    return FirstFault;
}

void Tell(MessageLine line)
{
    if (!line.Empty())
        MessageBuffer.push_back(CountedAsTold(std::move(line)));
}

void Tell(Message number, MessageValues values)
{
    Tell(MessageLine{number, std::move(values)});
}

void TellAtOnce(Message number, MessageValues values)
{
    BufferedLine line = CountedAsTold({number, std::move(values)});
    ShowAtOnce(std::move(line.Line), line.Text);
}

void TellInABox(Message number, MessageValues values, std::string_view title, BoxIcon icon)
{
    const BufferedLine line = CountedAsTold({number, std::move(values)});
    MessageLine outer = std::exchange(LineOfBox, line.Line);
    ShowBox(line.Text, title, icon);
    LineOfBox = std::move(outer); // events run while a box is shown, and may show another
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
    MessageBuffer.push_back({LineOfBox, lines});
}

int ReportRowCount()
{
    return RowCount;
}

long long DoubtsTold()
{
    return Doubts;
}

void AddDoubts(long long count)
{
    Doubts += count;
}

void ForgetDoubts()
{
    Doubts = 0;
}

long long DoubtsOf(const MessageLine& line)
{
    const MessagePage* const page = FindPage(static_cast<long long>(line.Number));
    if (page == nullptr || page->Severity != MessageSeverity::Doubt)
        return 0;
    const MessageValue* const count = FindValue(line, "count");
    return count == nullptr || !count->IsWhole ? 1 : std::max(1LL, std::stoll(count->Text));
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
    Tell(Message::FailedFiles);
    for (std::size_t i = 1; i < failed.size(); ++i)
        Tell(Message::FailedFile, {{"drawing", failed[i]}});
    ReportMessage(2, "");
}

} // namespace kv
