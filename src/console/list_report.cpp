// The report of a list. The drawings of a list are placed some at a time; one whose files cannot be placed
// then has failed, and what was shown of it is put right.
#include "console/list_report.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "console/calls.h"
#include "console/report_output.h"
#include "job/placing.h"
#include "platform/paths.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv {

namespace {

using Json = nlohmann::ordered_json;

std::vector<UnplacedJob> Unplaced; // since the last look

// The arguments stand beside the rest, by their names.
Json ShownLine(const ReportRow& row)
{
    Json line;
    const MessagePage* const page = FindPage(static_cast<long long>(row.Line.Number));
    if (page != nullptr) {
        line["number"] = static_cast<int>(page->Number);
        line["severity"] = SeverityName(page->Severity);
    }
    line["text"] = Utf8FromAnsi(row.Text);
    line["colour"] = ColourName(row);
    for (const MessageValue& value : row.Line.Values) {
        if (value.IsWhole)
            line[value.Name] = std::stoll(value.Text);
        else
            line[value.Name] = Utf8FromAnsi(value.Text);
    }
    return line;
}

Json ShownDrawing(const DoneDrawing& done)
{
    Json shown;
    shown["drawing"] = done.Drawing;
    shown["outcome"] = done.Outcome;
    shown["lines"] = ShownReportLines(done.Rows);
    shown["files"] = done.Files;
    shown["operations"] = {{"bores", done.Counts.Bores},
                           {"grooves", done.Counts.Grooves},
                           {"horizontalBores", done.Counts.HorizontalBores},
                           {"routes", done.Counts.Routes},
                           {"headPositions", done.Counts.HeadPositions}};
    shown["seconds"] = done.Seconds;
    return shown;
}

// File names may hold bytes that are no UTF-8.
void PrintDocument(const Json& document)
{
    const std::string text = document.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void KeepUnplaced(const UnplacedJob& job)
{
    Unplaced.push_back(job);
}

void TellWaitAtOnce(const std::string& line)
{
    EraseProgress();
    WriteAtOnce("korvanti: " + Utf8FromAnsi(line) + "\n", stderr);
}

} // namespace

Json ShownReportLines(const std::vector<ReportRow>& rows)
{
    Json lines = Json::array();
    for (const ReportRow& row : rows)
        lines.push_back(ShownLine(row));
    return lines;
}

ListReport::ListReport(bool json, std::size_t drawings) : AsJson(json), First(JobNumber() + 1)
{
    BeginList(drawings);
    OpenReport(!json && IsTerminal(StandardStream::Output), IsTerminal(StandardStream::Error));
    Placing = {KeepUnplaced, TellWaitAtOnce};
}

void ListReport::FailDrawing()
{
    Fail();
    ++Failed;
}

void ListReport::ShowUnplaced()
{
    for (const UnplacedJob& job : Unplaced) {
        const auto place = static_cast<std::size_t>(job.Number - First);
        FailDrawing();
        TellFailure(Names[place], "failed");
        const ReportRow row = {TextOf(job.Line), 155, 0, 0, false, job.Line};
        if (!AsJson) {
            WriteAtOnce(RowLine(row, RowColours::None) + "\n", stdout);
            continue;
        }
        Json& shown = Drawings[place];
        shown["outcome"] = "failed";
        shown["files"] = Json::array();
        shown["lines"].push_back(ShownLine(row));
    }
    Unplaced.clear();
}

void ListReport::Show(const DoneDrawing& done)
{
    Names.push_back(done.Drawing);
    if (AsJson)
        Drawings.push_back(ShownDrawing(done));
    else
        WriteRows(done.Rows, stdout);
    if (HasFailed(done.Outcome)) {
        FailDrawing();
        TellFailure(done.Drawing, done.Outcome);
    }
    ShowUnplaced();
    CountOfList(Names.size(), Failed);
}

void ListReport::ShowStop(std::size_t left)
{
    NotBegun = left;
    Status = std::max(Status, TellUnconverted(left));
}

int ListReport::Finish()
{
    ShowUnplaced();
    BeginList(0);
    EraseProgress();
    if (AsJson) {
        Json document = {{"version", ProductVersion}, {"drawings", std::move(Drawings)}};
        if (NotBegun > 0)
            document["notBegun"] = NotBegun;
        PrintDocument(document);
        return Status;
    }
    std::vector<std::string> failed;
    for (const std::string& path : Run.FailedDrawings)
        failed.push_back(ShownPath(path));
    ReportFailedFiles(failed);
    WriteRows(TakeRows(), stdout);
    return Status;
}

} // namespace kv
