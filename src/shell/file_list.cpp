// The file list: read anew whenever the source folder says something else than at the last tick, sorted,
// and cleared of the files that the operator deletes. Relies on the current system's source path and the
// listings of the platform. The refresh yields while it compares, so whatever it holds from before a yield
// is checked behind it.
#include "shell/file_list.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "shell/list_count.h"
#include "state/report.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "writers/left_programs.h"
#include "writers/number_format.h"

namespace kv {

FileListState FileList;
FileListHooks FileListWindow;
const std::array<std::string_view, FileColumns> FileListHeaders = {"File (Short)", "File (Long)", "File",
                                                                   "Size",         "Date",        "Time"};

namespace {

constexpr int ShortColumn = 1, LongColumn = 2, NameColumn = 3, SizeColumn = 4, DateColumn = 5, TimeColumn = 6;
constexpr int Ascending = 1, Descending = 2;
constexpr std::string_view DeleteTitle = "Delete Selected Files";

bool Refreshing = false; // the tick comes again while one yields

struct RefreshEnd {
    ~RefreshEnd() { Refreshing = false; }
};

std::string& Cell(FileRow& row, int column)
{
    return row.Cells[static_cast<std::size_t>(column - 1)];
}

const std::string& Cell(const FileRow& row, int column)
{
    return row.Cells[static_cast<std::size_t>(column - 1)];
}

double& WidthOf(int column)
{
    return FileList.Widths[static_cast<std::size_t>(column - 1)];
}

void TellRows()
{
    if (FileListWindow.RowsChanged != nullptr)
        FileListWindow.RowsChanged();
}

void TellSelection()
{
    if (FileListWindow.SelectionChanged != nullptr)
        FileListWindow.SelectionChanged();
}

void TellStates()
{
    if (FileListWindow.StatesChanged != nullptr)
        FileListWindow.StatesChanged();
}

// Empty when no source folder is set.
std::string SourceFolder()
{
    return WithBackslash(Trim(CurrentSourcePath()));
}

void WriteCell(int code, std::string_view text)
{
    if (code == 0) {
        FileList.Rows.clear();
        FileList.FilledRows = 0;
        FileList.Current = -1;
    }
    if (code == ShortColumn)
        FileList.Rows.resize(std::max(FileList.Rows.size(), ++FileList.FilledRows));
    if (code >= 1 && code <= FileColumns && FileList.FilledRows > 0)
        Cell(FileList.Rows[FileList.FilledRows - 1], code) = text;
}

ShownNames NamesForWidth()
{
    return WidthOf(NameColumn) > ShortNameWidth ? ShownNames::LongNames : ShownNames::ShortNames;
}

void AddRow(const std::string& folder, const DirectoryEntry& entry)
{
    WriteCell(ShortColumn, entry.ShortName);
    WriteCell(LongColumn, entry.LongName);
    WriteCell(NameColumn, FileList.Shown == ShownNames::LongNames ? entry.LongName : entry.ShortName);
    WriteCell(SizeColumn, WholeText(entry.Size));
    WriteCell(DateColumn, TwoDigits(entry.Month) + "/" + TwoDigits(entry.Day) + "/" + WholeText(entry.Year));
    WriteCell(TimeColumn,
              TwoDigits(entry.Hour) + ":" + TwoDigits(entry.Minute) + ":" + TwoDigits(entry.Second));
    FileRow& row = FileList.Rows[FileList.FilledRows - 1];
    row.Stamp = StampOfDrawing(entry);
    row.State = StateOfDrawing(folder + entry.LongName, row.Stamp);
}

// What a row is sorted by: texts without case, sizes by their value and dates in the order of time, as a
// person expects of these columns.
struct SortKey {
    bool Empty = false; // a row without a file; these stay at the end in either order
    double Value = 0;
    std::string Text;
};

double DateValue(std::string_view text)
{
    Long at = 1;
    const double month = Val(ParseString(at, text, "/"));
    const double day = Val(ParseString(at, text, "/"));
    const double year = Val(ParseString(at, text, "/"));
    return (year * 100 + month) * 100 + day;
}

SortKey KeyOf(const FileRow& row, int column)
{
    SortKey key;
    key.Empty = row.Cells == FileRow().Cells;
    if (column == StateColumn) {
        key.Value = static_cast<double>(row.State.Is);
        key.Text = row.State.Text;
        return key;
    }
    const std::string& text = Cell(row, column);
    if (column == SizeColumn)
        key.Value = Val(text);
    else if (column == DateColumn)
        key.Value = DateValue(text);
    else
        key.Text = UpperCase(text);
    return key;
}

bool ComesBefore(const SortKey& a, const SortKey& b, int order)
{
    if (a.Empty || b.Empty)
        return b.Empty && !a.Empty;
    const SortKey& low = order == Descending ? b : a;
    const SortKey& high = order == Descending ? a : b;
    return low.Value != high.Value ? low.Value < high.Value : low.Text < high.Text;
}

// Rows that are equal keep their order; the selection and the list index go with their rows.
void SortRows(int column, int order)
{
    std::vector<SortKey> keys;
    keys.reserve(FileList.Rows.size());
    for (const FileRow& row : FileList.Rows)
        keys.push_back(KeyOf(row, column));
    std::vector<std::size_t> places(keys.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::stable_sort(places.begin(), places.end(), [&keys, order](std::size_t a, std::size_t b) {
        return ComesBefore(keys[a], keys[b], order);
    });
    std::vector<FileRow> sorted;
    sorted.reserve(places.size());
    int current = -1;
    for (const std::size_t place : places) {
        if (static_cast<int>(place) == FileList.Current)
            current = static_cast<int>(sorted.size());
        sorted.push_back(std::move(FileList.Rows[place]));
    }
    FileList.Rows = std::move(sorted);
    FileList.Current = current;
}

bool IsSelected(const FileRow& row)
{
    return row.Selected;
}

bool HoldsDrawing(const DirectoryEntry& entry)
{
    return UpperCase(entry.Extension) == "DXF";
}

// The sort order that the operator chose stays noted, but the new rows stand by name.
void RebuildFileList(const std::string& folder, std::vector<DirectoryEntry>& entries)
{
    const bool selectionLost = AnyRowSelected() || FileList.Current >= 0;
    WriteCell(0, {});
    FileList.Rows.resize(entries.size()); // what is no drawing after all leaves an empty row
    FileList.Shown = NamesForWidth();
    for (const DirectoryEntry& entry : entries) {
        if (HoldsDrawing(entry))
            AddRow(folder, entry);
    }
    SortRows(NameColumn, Ascending);
    FileList.LabDXFPath = folder;
    FileList.FileCount = static_cast<Long>(entries.size());
    FileList.Listing = std::move(entries);
    TellRows();
    if (selectionLost)
        TellSelection();
}

void EmptyFileList()
{
    if (FileList.FileCount == 0)
        return;
    const bool selectionLost = AnyRowSelected() || FileList.Current >= 0;
    WriteCell(0, {});
    FileList.LabDXFPath.clear();
    FileList.Listing.clear();
    FileList.FileCount = 0;
    TellRows();
    if (selectionLost)
        TellSelection();
}

// What was said last of a folder that cannot be listed; said once, until it can be or says something else.
std::string ListingFault;

void TellListingFault(const std::string& folder, const FileAnswer& answer)
{
    MessageLine line;
    if (answer.Is == Presence::CannotTell)
        line = {Message::FolderNotListed, {{"folder", ShownPath(folder)}, {"cause", answer.Why.Cause}}};
    const std::string fault = TextOf(line);
    if (fault != ListingFault && !fault.empty())
        TellAtOnce(line.Number, std::move(line.Values));
    ListingFault = fault;
}

// Likewise of drawings that cannot be listed, in a folder that can.
std::string UnlistedFault;

void TellUnlisted(const std::string& folder)
{
    std::vector<UnlistedFile> files;
    if (ReadUnlisted(folder + "*.DXF", files).Is != Presence::There)
        return;
    MessageLine line;
    if (!files.empty())
        line = {Message::DrawingsNotListed,
                {{"folder", ShownPath(folder)},
                 {"count", static_cast<long long>(files.size())},
                 {"name", files.front().Name},
                 {"cause", files.front().Cause}}};
    const std::string fault = TextOf(line);
    if (fault != UnlistedFault && !fault.empty())
        TellAtOnce(line.Number, std::move(line.Values));
    UnlistedFault = fault;
}

// False when the folder cannot be listed, which is told. A folder that is not there holds nothing.
bool ReadListing(const std::string& folder, std::vector<DirectoryEntry>& entries)
{
    const std::string pattern = folder + "*.DXF";
    Long count = 0;
    FileAnswer answer = FCount(pattern, count);
    if (answer.Is == Presence::There && count > 0)
        answer = ReadFileX(pattern, count, entries);
    TellListingFault(folder, answer);
    if (answer.Is == Presence::There)
        TellUnlisted(folder);
    return answer.Is != Presence::CannotTell;
}

// Lets events run behind each equal entry; they may change the stored listing.
bool EqualsStoredListing(const std::vector<DirectoryEntry>& entries)
{
    if (entries.size() != static_cast<std::size_t>(FileList.FileCount))
        return false;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (i >= FileList.Listing.size() || entries[i] != FileList.Listing[i])
            return false;
        DoEvents();
    }
    return true;
}

std::string KeyOfWidth(int column)
{
    return "ListColumnWidth" + WholeText(column);
}

void ShowNames(ShownNames names)
{
    if (FileList.Shown == names)
        return;
    FileList.Shown = names;
    const int from = names == ShownNames::LongNames ? LongColumn : ShortColumn;
    for (FileRow& row : FileList.Rows)
        Cell(row, NameColumn) = Cell(row, from);
    TellRows();
}

// Paths of the selected files in the current system's folder, even when the list was read from another.
std::vector<std::string> SelectedPaths()
{
    std::vector<std::string> paths;
    const std::string folder = SourceFolder();
    for (const FileRow& row : FileList.Rows) {
        const std::string_view name = Trim(Cell(row, LongColumn));
        if (row.Selected && !name.empty())
            paths.push_back(folder + std::string(name));
    }
    return paths;
}

// Why nothing of that name can be deleted; empty when it is there.
std::string CauseOfNone(const std::string& path)
{
    if (FolderOf(path).empty())
        return "no source folder is set"; // else it would be taken for a file of the current folder
    const FileAnswer answer = AskFile(path);
    if (answer.Is == Presence::NotThere)
        return "there is no such file";
    return answer.Is == Presence::CannotTell ? answer.Why.Cause : std::string();
}

void TellNotDeleted(const std::string& path, const std::string& cause)
{
    TellAtOnce(Message::DrawingNotDeleted, {{"file", ShownPath(path)}, {"cause", cause}});
}

void DeleteForGood(const std::vector<std::string>& paths)
{
    for (const std::string& path : paths)
        if (const FileOutcome outcome = DeleteFile(path); !outcome.Ok())
            TellNotDeleted(path, outcome.Cause);
}

// The ones that the trash has not taken.
std::vector<std::string> PutIntoTrash(const std::vector<std::string>& paths)
{
    std::vector<TrashedFile> trashed;
    std::vector<std::string> refused;
    for (const std::string& path : paths) {
        TrashedFile file{path, {}};
        if (!FileListWindow.ToTrash(path, file.Place).Ok())
            refused.push_back(path);
        else if (!file.Place.empty())
            trashed.push_back(std::move(file));
    }
    if (!trashed.empty())
        FileList.Trashed.push_back(std::move(trashed));
    return refused;
}

// "3 drawings: A.DXF, B.DXF, C.DXF"
std::string DetailOfDeletion(const std::vector<std::string>& paths)
{
    std::vector<std::string> names;
    for (const std::string& path : paths)
        names.push_back(ShownPath(FileNameOf(path)));
    const std::string count = paths.size() == 1 ? "1 drawing" : WithCommas(std::ssize(paths)) + " drawings";
    return count + ": " + FewOf(names);
}

// A share or a stick may have no trash.
void DeletePaths(const std::vector<std::string>& paths)
{
    std::vector<std::string> there;
    for (const std::string& path : paths) {
        if (const std::string cause = CauseOfNone(path); cause.empty())
            there.push_back(path);
        else
            TellNotDeleted(path, cause);
    }
    if (FileListWindow.ToTrash == nullptr) {
        DeleteForGood(there);
        return;
    }
    const std::vector<std::string> refused = PutIntoTrash(there);
    if (!refused.empty() &&
        AskYesNo("The trash does not take these files.\r\nDo you wish to Delete them for good?", DeleteTitle,
                 DetailOfDeletion(refused)))
        DeleteForGood(refused);
}

void AskAndDelete()
{
    if (!AnyRowSelected()) {
        TellInABox(Message::NothingToDelete, {}, DeleteTitle, BoxIcon::Information);
        return;
    }
    // Taken before the question: a refresh behind it may take the selection, the answer is for these.
    const std::vector<std::string> paths = SelectedPaths();
    if (AskYesNo("Do you wish to Delete these files?", DeleteTitle, DetailOfDeletion(paths)))
        DeletePaths(paths);
}

} // namespace

void SetFileListCell(int code, std::string_view text)
{
    WriteCell(code, text);
    TellRows();
}

void RefreshFileList()
{
    if (Refreshing)
        return;
    Refreshing = true;
    const RefreshEnd end;
    const std::string folder = SourceFolder();
    std::vector<DirectoryEntry> entries;
    if (!folder.empty() && !ReadListing(folder, entries))
        return;            // the list stays as it was
    if (entries.empty()) { // also when they went between the two
        EmptyFileList();
        return;
    }
    // A folder that lists the same as the one before it is not told apart from it; the caption stays.
    RefreshStates();
    const bool equal = EqualsStoredListing(entries);
    if (!equal && folder == SourceFolder()) // if not, the next tick reads the other folder
        RebuildFileList(folder, entries);
}

void SortFileList(int column)
{
    if (column < 1 || column > StateColumn)
        return;
    const bool again = column == FileList.SortedColumn && FileList.SortOrder == Ascending;
    FileList.SortedColumn = column;
    FileList.SortOrder = again ? Descending : Ascending;
    SortRows(column, FileList.SortOrder);
    TellRows();
}

void ResizeFileColumn(int column, double width)
{
    if (column < 1 || column > FileColumns || !std::isfinite(width))
        return;
    WidthOf(column) = std::clamp(width, 0.0, WidestColumn);
    if (column == NameColumn)
        ShowNames(NamesForWidth());
    const std::string printed = PlainText(ToSingle(WidthOf(column)));
    if (column >= NameColumn)
        Config.ListColumnWidth[static_cast<std::size_t>(column - NameColumn)] = printed;
    PutConfigValue(KeyOfWidth(column), printed);
}

void LoadFileColumnWidths()
{
    for (int column = NameColumn; column <= FileColumns; ++column) {
        const double width = Val(Config.ListColumnWidth[static_cast<std::size_t>(column - NameColumn)]);
        if (width > 0)
            WidthOf(column) = std::min(width, WidestColumn);
    }
}

void MoveListIndexOn()
{
    const auto count = static_cast<int>(FileList.Rows.size());
    int next = FileList.Current + 1;
    while (next < count && FileList.Rows[static_cast<std::size_t>(next)].Hidden)
        ++next;
    if (next >= count)
        return;
    FileList.Current = next;
    TellSelection();
}

void RefreshStates()
{
    const std::string today = TodayMmDdYy(); // a time of today is of another day tomorrow
    if (FileList.StatesNoted == StatesNoted() && FileList.StatesDay == today)
        return;
    FileList.StatesNoted = StatesNoted();
    FileList.StatesDay = today;
    for (FileRow& row : FileList.Rows)
        if (!row.Stamp.empty())
            row.State = StateOfDrawing(FileList.LabDXFPath + Cell(row, LongColumn), row.Stamp);
    TellStates();
}

void RefreshStateOf(std::string_view drawing)
{
    const std::string name = FileNameOf(drawing);
    if (!EqualIgnoringCase(FolderOf(drawing), FileList.LabDXFPath))
        return;
    for (FileRow& row : FileList.Rows)
        if (!row.Stamp.empty() && EqualIgnoringCase(Cell(row, LongColumn), name))
            row.State = StateOfDrawing(drawing, row.Stamp);
    TellStates();
}

void SelectNewAndChanged()
{
    RefreshStates();
    for (FileRow& row : FileList.Rows)
        row.Selected = !row.Hidden && !row.Stamp.empty() &&
                       (row.State.Is == DrawingIs::New || row.State.Is == DrawingIs::Changed);
    TellSelection();
}

void ClearSelection()
{
    if (!AnyRowSelected())
        return;
    for (FileRow& row : FileList.Rows)
        row.Selected = false;
    TellSelection();
}

bool AnyRowSelected()
{
    return std::any_of(FileList.Rows.begin(), FileList.Rows.end(), IsSelected);
}

void FinishPopup()
{
    if (!FileList.DeleteAsked)
        return;
    AskAndDelete();
    ClearSelection();
    DoEvents();
    GiveFocus(FocusPlace::List1);
    FileList.DeleteAsked = false;
}

bool MayUndoDelete()
{
    return !FileList.Trashed.empty() && FileListWindow.FromTrash != nullptr;
}

void UndoDelete()
{
    if (!MayUndoDelete())
        return;
    const std::vector<TrashedFile> files = std::move(FileList.Trashed.back());
    FileList.Trashed.pop_back(); // a report lets events run, which may delete again
    std::vector<TrashedFile> left;
    for (const TrashedFile& file : files) {
        const FileOutcome outcome = FileListWindow.FromTrash(file.Place, file.Path);
        if (outcome.Ok())
            continue;
        TellAtOnce(Message::DrawingNotRestored, {{"file", ShownPath(file.Path)}, {"cause", outcome.Cause}});
        left.push_back(file);
    }
    if (!left.empty())
        FileList.Trashed.push_back(std::move(left));
    RefreshFileList();
}

} // namespace kv
