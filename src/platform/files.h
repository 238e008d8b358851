// File access by backslash path. Durable files are written whole beside their place and moved over the
// old one, so that no reader ever sees half a file. FlushFiles brings what was moved to the disk: once
// for a list of drawings and not twice for each, since a disk flushes some hundred times a second at
// best.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

struct FileOutcome {
    int Number = 0;    // 0, or one of the numbers of run_error.h
    std::string Cause; // the system's words, for a person; CP1252
    bool Ok() const { return Number == 0; }
};

bool FileExists(std::string_view path);        // a file that is no folder, readable or not
bool FolderExists(std::string_view path);      // trailing backslash or not
std::uint64_t FileSize(std::string_view path); // bytes, 0 when it is not there

// Tells a file that was rewritten or replaced from the one that was looked at; all 0 when none is there.
struct FileStamp {
    std::uint64_t Size = 0; // bytes
    std::int64_t Time = 0;  // of the last writing, in the finest unit of the host
    std::uint64_t Identity = 0;
    bool operator==(const FileStamp&) const = default;
};
FileStamp StampOf(std::string_view path);

// Reads a file whole. Refuses more than `limit` bytes (ErrorFileAccess).
FileOutcome ReadWholeFile(std::string_view path, std::string& contents,
                          std::uint64_t limit = std::uint64_t{1} << 31);
// The first `length` bytes, or fewer.
FileOutcome ReadFileHead(std::string_view path, std::string& contents, std::size_t length);
// The last `length` bytes, or fewer.
FileOutcome ReadFileTail(std::string_view path, std::string& contents, std::size_t length);
// Reading in pieces: a handle of 0 or more, the file's size in bytes; a folder is ErrorFileAccess.
FileOutcome OpenForReading(std::string_view path, int& handle, std::uint64_t& size);
FileOutcome ReadSome(int handle, char* into, std::size_t length, std::size_t& got); // got 0: end
void SkipTo(int handle, std::uint64_t at);                                          // bytes from the start
void CloseReading(int handle);
// Replaces or makes a file, whole or not at all. Keeps the access rights of an old file.
FileOutcome ReplaceFile(std::string_view path, std::string_view contents);

// The same in two steps, for files that must change together: all are staged (written aside), then all
// are moved. A staged file that is not moved disappears with DropStaged.
struct StagedFile {
    std::string Place; // host path of the file to replace
    std::string Aside; // host path of the written copy; empty when nothing is staged
};
FileOutcome StageFile(std::string_view path, std::string_view contents, StagedFile& staged);
FileOutcome MoveStaged(StagedFile& staged);
void DropStaged(StagedFile& staged);
// Waits until all files moved since the last call are on the disk. Front ends call it at the end of a
// job or a list, and at least every two seconds in between.
FileOutcome FlushFiles();

// Host paths of the files that were replaced or made, in order; null: nobody asks.
extern std::vector<std::string>* WrittenFiles;

// Opens the file for writing and asks whether another program holds a lock on it; changes nothing.
FileOutcome CheckWritable(std::string_view path);

FileOutcome MakeFolder(std::string_view path);  // one folder; an existing one is no error
FileOutcome MakeFolders(std::string_view path); // with all missing folders above it
FileOutcome DeleteFile(std::string_view path);  // one that is not there is no error
// Gives a file another name in its folder, in one step; a file of that name gives way.
FileOutcome RenameFile(std::string_view path, std::string_view newPath);

} // namespace kv
