#include "shell/file_list.h"
namespace kv {
FileListState FileList;
FileListHooks FileListWindow;
const std::array<std::string_view, FileColumns> FileListHeaders = {"File (Short)", "File (Long)", "File",
                                                                   "Size",         "Date",        "Time"};
void SetFileListCell(int, std::string_view) {}
void RefreshFileList() {}
void SortFileList(int) {}
void ResizeFileColumn(int, double) {}
void LoadFileColumnWidths() {}
void MoveListIndexOn() {}
void ClearSelection() {}
bool AnyRowSelected()
{
    return false;
}
void FinishPopup() {}
} // namespace kv
