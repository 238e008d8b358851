// The list of drawings in the source folder: its rows, what the last listing said, its order, its
// selection and what can be done with it. A window shows the rows; everything works without one.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "platform/directory.h"
#include "shell/drawing_states.h"

namespace kv {

constexpr int FileColumns = 6;        // 1 short name, 2 long name, 3 one of both, 4 size, 5 date, 6 time
constexpr int StateColumn = 7;        // of the windows alone: what has become of the drawing
constexpr double ShortNameWidth = 11; // characters; column 3 shows long names only when wider
constexpr double WidestColumn = 255;  // characters

struct FileRow {
    std::array<std::string, FileColumns> Cells; // CP1252; column c is element c - 1
    bool Selected = false;
    bool Hidden = false; // left out by the window's filter; never selected
    std::string Stamp;   // of the file when it was listed; empty in a row without a file
    DrawingState State;
};

struct TrashedFile {
    std::string Path, Place; // the latter in the trash, as the system names it
};

enum class ShownNames { None, LongNames, ShortNames };

struct FileListState {
    std::vector<FileRow> Rows;  // one for each counted file; rows at the end may be empty
    std::size_t FilledRows = 0; // written by SetFileListCell since the list was emptied
    std::string LabDXFPath;     // folder of the listed files
    std::vector<DirectoryEntry> Listing;
    Long FileCount = 0;
    int SortedColumn = 0; // by the last header click; 0 none
    int SortOrder = 1;    // 1 ascending, 2 descending
    ShownNames Shown = ShownNames::None;
    std::array<double, FileColumns> Widths{8, 20, 16, 9, 12, 10}; // characters, element c - 1
    int Current = -1;                                             // row with the list index, -1 none
    bool DeleteAsked = false;                                     // by the popup's "Delete"
    unsigned long StatesNoted = 0;                                // when the rows' states were found
    std::string StatesDay;
    std::vector<std::vector<TrashedFile>> Trashed; // of this start, one list for each deletion
};
extern FileListState FileList;

// Titles of the columns.
extern const std::array<std::string_view, FileColumns> FileListHeaders;

struct FileListHooks {
    void (*RowsChanged)() = nullptr; // rows, order or texts: show all of them anew
    void (*SelectionChanged)() = nullptr;
    void (*StatesChanged)() = nullptr;
    // A file into the trash of the system, and back. The place is where it lies there, in the host's form;
    // empty where it does not say. Null: there is no trash, and deleted files are gone.
    FileOutcome (*ToTrash)(const std::string& path, std::string& place) = nullptr;
    FileOutcome (*FromTrash)(const std::string& place, const std::string& path) = nullptr;
};
extern FileListHooks FileListWindow;

// Code 0 empties the list; 1 adds a row and writes its column 1; 2 to 6 write that column of the last row.
void SetFileListCell(int code, std::string_view text);
// The tick that keeps the list current.
void RefreshFileList();
// A click on the header of `column`.
void SortFileList(int column);
// A column's width was changed by hand (characters): settles what column 3 shows and stores the width.
void ResizeFileColumn(int column, double width);
// Stored widths of columns 3 to 6; a zero or missing one leaves the designed width.
void LoadFileColumnWidths();
// The states of the rows anew, when any was noted or a day has begun.
void RefreshStates();
// Of the rows of one drawing alone.
void RefreshStateOf(std::string_view drawing);
// Selects the drawings that were never converted or have changed since, and no other.
void SelectNewAndChanged();
// The key Space: the list index moves one on, and stays on the last row.
void MoveListIndexOn();
void ClearSelection();
bool AnyRowSelected();
// The popup has closed: asks and deletes the selected files when DeleteAsked is set.
void FinishPopup();
// Brings the drawings of the last deletion back that are not back yet; nothing before the program's start.
void UndoDelete();
bool MayUndoDelete();

} // namespace kv
