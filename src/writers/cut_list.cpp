// The row of a part in the saw planning program's .PTS list. Relies on the drawing's cut list values,
// the column table of the settings and the panel; leaves the list with one row more, and no values.
#include "writers/cut_list.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "platform/file_names.h"
#include "platform/needed_files.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/cut_list_text.h"
#include "writers/job_output.h"
#include "writers/number_format.h"
#include "writers/own_files.h"
#include "writers/program_file.h"

namespace kv {

namespace {

constexpr std::string_view Extension = ".PTS";
constexpr double InchInMillimetres = 25.4;
constexpr double MillimetreInInches = 0.03937;

double UnitFactor()
{
    const bool inch = Run.DrawingInInch != 0;
    if (inch == !Config.PTSMetric)
        return 1;
    return inch ? InchInMillimetres : MillimetreInInches;
}

std::string ListPath(const std::string& given)
{
    std::string path = StripBlanks(given);
    ReplaceChar(path, '/', '\\');
    std::string folder = FolderOf(path);
    std::string file = NameForFile(FileNameOf(path)); // again, since the blanks are out now
    if (folder.empty())
        folder = WithBackslash(Config.PTSPath);
    if (file.empty())
        file = Config.PTSName;
    if (given.empty() || !Holds(file, "."))
        file += Extension;
    return folder + file;
}

// Sizes given in the drawing are in the drawing's unit, as the panel's are.
std::string SizeText(const std::string& given, Single panel)
{
    const double size = Val(given.empty() ? PlainText(panel) : given);
    return FormatCoord(ToSingle(size * UnitFactor()));
}

std::string ColumnValue(std::string_view column, const std::string& given)
{
    if (column == "WIDTH" || column == "HEIGHT")
        return SizeText(given, Run.SideHeight[Face]);
    if (column == "LENGTH")
        return SizeText(given, Run.SideWidth[Face]);
    if (!given.empty())
        return given;
    if (column == "POSTLAMINATIONFLAG")
        return "12";
    if (column == "DESCRIPTION" || column == "DESCRIPTION1")
        return Run.PartDescription;
    return given;
}

std::string Row(const PtsTexts& values)
{
    std::string row;
    const std::size_t columns =
        std::min<std::size_t>(static_cast<std::size_t>(Config.PtsFieldCount), HighestPtsField);
    for (std::size_t i = 1; i <= columns; ++i) {
        const std::string& quote = Config.PtsQuotes[i];
        std::string value = ColumnValue(Config.PtsFields[i], values[i]);
        if (value.empty())
            value = quote.empty() ? "0" : " ";
        if (i > 1)
            row += ',';
        row += quote + value + quote;
    }
    return row;
}

std::optional<std::string> ListWithRows(std::optional<std::string> list,
                                        std::span<const FileChange* const> changes)
{
    CutListText text(std::move(list).value_or(""));
    for (const FileChange* const change : changes) {
        if (change->Earlier.empty())
            text.Add(change->Text, change->Metric);
        else
            text.Replace(change->Earlier, change->Text, change->Metric);
    }
    return text.Text();
}

void AddRow(const PtsTexts& values)
{
    const std::string path = ListPath(values[0]);
    if (FolderOf(path).empty())
        throw RunError{ErrorPathNotFound, "No folder is set for the cut list " + path};
    std::string row = Row(values);
    if (!IsRecorded({StepKind::CutList, {}, path, row, {}, Config.PTSMetric}))
        ThrowUnlessOk(path, HandOverRow(path, std::move(row), Config.PTSMetric));
    Tell(Message::CutListEntry, {{"file", ShownPath(path)}});
}

} // namespace

FileOutcome HandOverRow(const std::string& path, std::string row, bool metric)
{
    FileOutcome outcome = MayBeWritten(path);
    if (!outcome.Ok())
        return outcome;
    FileChange change;
    change.Kind = ChangeKind::CutList;
    change.Changed = ListWithRows;
    change.Installation = path;
    change.Path = path;
    change.Text = std::move(row);
    change.Metric = metric;
    return HandOverChange(std::move(change));
}

void WriteCutListEntry()
{
    const PtsTexts values = std::exchange(Run.PtsValues, PtsTexts{});
    const bool off = values[0] == "OFF";
    const bool error = values[0] == "ERROR";
    const bool anyValue = std::any_of(values.begin() + 1, values.end(),
                                      [](const std::string& value) { return !value.empty(); });
    if (!off && !error && anyValue)
        AddRow(values);
    if (error)
        Tell(Message::CutListError);
    if (off)
        Tell(Message::CutListOff);
}

} // namespace kv
