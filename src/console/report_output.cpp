// Rows come by the report's hooks and wait in a list until the drawing is done. The progress line
// stands on standard error and is wiped before anything else is written.
#include "console/report_output.h"

#include <chrono>
#include <cmath>

#include "platform/dialogs.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "shell/list_count.h"

namespace kv {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds ShortJob{500};       // a shorter one shows no progress
constexpr milliseconds ShortList{1000};     // likewise of a list
constexpr milliseconds ProgressStep{100};   // between two looks at the clock's progress line
constexpr unsigned PumpsPerClockLook = 256; // the pump runs once for each few lines of a drawing

struct MarkStyle {
    unsigned char Red, Green, Blue;
    const char* Name;
    const char* Full;
    const char* Sixteen;
};
constexpr MarkStyle MarkStyles[] = {
    {155, 0, 0, "red", "\x1b[38;2;155;0;0m", "\x1b[31m"},
    {0, 155, 0, "green", "\x1b[38;2;0;155;0m", "\x1b[32m"},
    {0, 0, 255, "blue", "\x1b[38;2;0;0;255m", "\x1b[34m"},
    {255, 0, 100, "pink", "\x1b[38;2;255;0;100m", "\x1b[35m"},
};
constexpr const char* PlainStyle = "\x1b[0m";
constexpr const char* WipeLine = "\r\x1b[K";

constexpr const char* MeterTitles[MeterCount] = {"Parsing",    "Reading Info", "Processing",
                                                 "Sequencing", "Syn Leads",    "Pgm Code"};

std::vector<ReportRow> Rows;
std::FILE* RowStream = nullptr; // of the rows that are written at once
RowColours Colours = RowColours::None;

bool ProgressWanted = false;
bool ProgressShown = false;
unsigned Pumps = 0;
Clock::time_point DrawingStart, LastShown, LastTick, ListStart;
ListCount List;              // that runs; no drawings: none does
constexpr int LeastDone = 3; // drawings that a guess at the time needs

const MarkStyle* StyleOf(const ReportRow& row)
{
    for (const MarkStyle& style : MarkStyles) {
        if (style.Red == row.Red && style.Green == row.Green && style.Blue == row.Blue)
            return &style;
    }
    return nullptr;
}

RowColours ColoursOfTerminal()
{
    if (!Environment("NO_COLOR").empty() || Environment("TERM") == "dumb")
        return RowColours::None;
    const std::string depth = Environment("COLORTERM");
    return depth == "truecolor" || depth == "24bit" ? RowColours::Full : RowColours::Sixteen;
}

// A drawing's text must not steer the terminal that shows it.
std::string WithoutControls(std::string text)
{
    constexpr std::string_view unusedInCp1252 = "\x81\x8D\x8F\x90\x9D";
    for (char& c : text) {
        const unsigned char byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F || unusedInCp1252.find(c) != std::string_view::npos)
            c = '?';
    }
    return text;
}

void BoxAsRow(std::string_view text, std::string_view, BoxIcon)
{
    BufferBoxText(text);
}

void DrawMeters()
{
    std::string line = WipeLine;
    for (int i = 0; i < MeterCount; ++i) {
        line += i == 0 ? "" : "  ";
        line += MeterTitles[i];
        line += ' ';
        line += WholeText(MeterValue(static_cast<Meter>(i)));
    }
    WriteAtOnce(line, stderr);
    ProgressShown = true;
}

void DrawList()
{
    const double seconds = std::chrono::duration<double>(Clock::now() - ListStart).count();
    const std::string left =
        TimeLeft(static_cast<std::size_t>(List.Done), static_cast<std::size_t>(List.Total), seconds);
    WriteAtOnce(WipeLine + ListProgressText(List) + (left.empty() ? "" : ", " + left), stderr);
    ProgressShown = true;
}

} // namespace

void OpenReport(bool rowsOnTerminal, bool progressOnTerminal)
{
    Colours = rowsOnTerminal ? ColoursOfTerminal() : RowColours::None;
    ProgressWanted = progressOnTerminal && Environment("TERM") != "dumb";
    Report.ShowRow = [](const ReportRow& row) { Rows.push_back(row); };
    Dialogs.Box = BoxAsRow;
}

void WriteRowsAtOnce(std::FILE* stream)
{
    RowStream = stream;
    Report.ShowRow = [](const ReportRow& row) { WriteAtOnce(RowLine(row, Colours) + '\n', RowStream); };
}

void BeginDrawing()
{
    DrawingStart = LastTick = Clock::now();
    if (List.Total == 0)
        LastShown = DrawingStart;
}

std::vector<ReportRow> TakeRows()
{
    ReportMessage(2, "");
    std::vector<ReportRow> taken;
    taken.swap(Rows);
    return taken;
}

void WriteRows(std::FILE* stream)
{
    WriteRows(TakeRows(), stream);
}

void WriteRows(const std::vector<ReportRow>& rows, std::FILE* stream)
{
    std::string text;
    for (const ReportRow& row : rows) {
        text += RowLine(row, Colours);
        text += '\n';
    }
    const bool again = ProgressShown && List.Total > 0;
    EraseProgress();
    WriteAtOnce(text, stream);
    if (again)
        DrawList();
}

void WriteAtOnce(std::string_view text, std::FILE* stream)
{
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}

std::string RowLine(const ReportRow& row, RowColours colours)
{
    const MarkStyle* const style = colours == RowColours::None ? nullptr : StyleOf(row);
    const std::string text = Utf8FromAnsi(WithoutControls(row.Text));
    if (style == nullptr || text.empty())
        return text;
    return (colours == RowColours::Full ? style->Full : style->Sixteen) + text + PlainStyle;
}

std::string ColourName(const ReportRow& row)
{
    const MarkStyle* const style = StyleOf(row);
    return style == nullptr ? "black" : style->Name;
}

void ShowProgress()
{
    if (!ProgressWanted || ++Pumps % PumpsPerClockLook != 0)
        return;
    const Clock::time_point now = Clock::now();
    if (MeterInterval() > 0 && now - LastTick >= milliseconds(MeterInterval())) {
        LastTick = now;
        TickMeters();
    }
    if (List.Total > 0) {
        ShowListProgress();
        return;
    }
    if (now - DrawingStart < ShortJob || now - LastShown < ProgressStep)
        return;
    LastShown = now;
    DrawMeters();
}

void BeginList(std::size_t total)
{
    List = {};
    List.Total = total > 1 ? static_cast<long long>(total) : 0;
    ListStart = Clock::now();
}

void CountOfList(std::size_t done, std::size_t failed)
{
    List.Done = static_cast<long long>(done);
    List.Failed = static_cast<long long>(failed);
    ShowListProgress();
}

void ShowListProgress()
{
    const Clock::time_point now = Clock::now();
    if (!ProgressWanted || List.Total == 0 || now - ListStart < ShortList || now - LastShown < ProgressStep)
        return;
    LastShown = now;
    DrawList();
}

std::string TimeLeft(std::size_t done, std::size_t total, double seconds)
{
    if (done < LeastDone || done > total)
        return {};
    constexpr long long perMinute = 60, minutesPerHour = 60;
    const auto left = std::llround(seconds / static_cast<double>(done) * static_cast<double>(total - done));
    const auto twoDigits = [](long long number) { return (number < 10 ? "0" : "") + std::to_string(number); };
    const long long minutes = left / perMinute;
    const std::string clock = minutes < minutesPerHour ? std::to_string(minutes)
                                                       : std::to_string(minutes / minutesPerHour) + ":" +
                                                             twoDigits(minutes % minutesPerHour);
    return "about " + clock + ":" + twoDigits(left % perMinute) + " left";
}

void EraseProgress()
{
    if (!ProgressShown)
        return;
    ProgressShown = false;
    WriteAtOnce(WipeLine, stderr);
}

} // namespace kv
