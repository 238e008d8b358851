// File access by backslash path. Durable files are written whole beside their place, brought to the disk
// and moved over the old one, so that no reader ever sees half a file, and none is left half by a power
// cut. FlushFiles brings the moves to the disk: once for a list of drawings and not twice for each, since
// a disk flushes some hundred times a second at best.
//
// A question about a file has three answers. What cannot be told (no right, a fault of the disk, a share
// that is off) is never taken for "not there": whoever asks looks at all three.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

struct [[nodiscard]] FileOutcome {
    int Number = 0;       // 0, or one of the numbers of run_error.h
    std::string Cause;    // the system's words, for a person; CP1252
    bool Missing = false; // it failed since nothing of that name is there, which is known
    bool Ok() const { return Number == 0; }
};

enum class Presence { There, NotThere, CannotTell };

struct [[nodiscard]] FileAnswer {
    Presence Is = Presence::CannotTell;
    FileOutcome Why; // of CannotTell; Ok for the other two
};

FileAnswer AskFile(std::string_view path);   // a file that is no folder, readable or not
FileAnswer AskFolder(std::string_view path); // trailing backslash or not

// Tells a file that was rewritten or replaced from the one that was looked at; all 0 when none is there.
struct FileStamp {
    std::uint64_t Size = 0; // bytes
    std::int64_t Time = 0;  // of the last writing, in the finest unit of the host
    std::uint64_t Identity = 0;
    bool operator==(const FileStamp&) const = default;
};
FileAnswer AskStamp(std::string_view path, FileStamp& stamp); // of a file or a folder

constexpr std::uint64_t LongestWholeFile = std::uint64_t{1} << 31; // bytes

// Reads a file whole. Refuses more than `limit` bytes (ErrorFileAccess).
FileOutcome ReadWholeFile(std::string_view path, std::string& contents,
                          std::uint64_t limit = LongestWholeFile);
// The same for a file that may be missing: its contents, or that it is not there, or why it cannot be
// read though it is there or may be. A folder of that name cannot be read.
FileAnswer ReadIfThere(std::string_view path, std::string& contents, std::uint64_t limit = LongestWholeFile);
// The first `length` bytes, or fewer.
FileOutcome ReadFileHead(std::string_view path, std::string& contents, std::size_t length);
// The last `length` bytes, or fewer.
FileOutcome ReadFileTail(std::string_view path, std::string& contents, std::size_t length);
// Reading in pieces: a handle of 0 or more, the file's size in bytes; a folder is ErrorFileAccess.
FileOutcome OpenForReading(std::string_view path, int& handle, std::uint64_t& size);
// A quick look without a search for other spellings. False means nothing.
bool OpenAsSpelled(std::string_view path, int& handle);
FileOutcome ReadSome(int handle, char* into, std::size_t length, std::size_t& got); // got 0: end
FileOutcome SkipTo(int handle, std::uint64_t at);                                   // bytes from the start
void CloseReading(int handle);
// What a failed call says of the file: that it is not there, or that it cannot be told.
FileAnswer AnswerOf(const FileOutcome& failed);

// Replaces or makes a file, whole or not at all, and brings it to the disk. Keeps the access rights of an
// old file. When the last step alone fails, the folder's, the new file is there and said to be in doubt.
FileOutcome ReplaceFile(std::string_view path, std::string_view contents);

// The same in steps, for files that must change together: all are staged (written aside), all are
// flushed, then all are moved. A staged file that is not moved disappears with DropStaged.
struct StagedFile {
    std::string Place;    // host path of the file to replace
    std::string Aside;    // host path of the written copy; empty when nothing is staged
    bool Flushed = false; // the copy is on the disk
};
FileOutcome StageFile(std::string_view path, std::string_view contents, StagedFile& staged);
// Brings the copy to the disk. When it cannot, the file stays staged.
FileOutcome FlushStaged(StagedFile& staged);
// The same for many at the price of few: one outcome for each, in their order.
[[nodiscard]] std::vector<FileOutcome> FlushStaged(std::span<StagedFile* const> files);
// Nothing is moved that is not on the disk: a copy that was not flushed is flushed first. What cannot be
// moved is dropped.
FileOutcome MoveStaged(StagedFile& staged);
FileOutcome MoveOrKeepStaged(StagedFile& staged); // what cannot be moved stays staged
void DropStaged(StagedFile& staged);
// A copy could not be dropped and stays. Whoever keeps account of copies sets it back.
extern bool CopyStays;
// Brings the name of the copy to the disk; its contents are FlushStaged's.
FileOutcome FlushNameOfStaged(const StagedFile& staged);
// Waits until all moves and renames since the last call are on the disk. Front ends call it at the end of
// a job or a list, and at least every two seconds in between.
FileOutcome FlushFiles();

// The copies that programs left in the folder which have ended on this machine without moving or dropping
// them, by their paths. A folder that is not there has none.
FileOutcome ListLeftAsides(std::string_view folder, std::vector<std::string>& paths);
// Deletes those; no other file. `swept` counts them.
FileOutcome SweepAsides(std::string_view folder, int& swept);

// Host paths of the files that were replaced or made, in order; null: nobody asks.
extern std::vector<std::string>* WrittenFiles;
// The steps to the disk in order, "flush PATH", "move PATH" and "flush folder PATH" with host paths; null:
// nobody asks. A host that writes its moves through has no steps for folders.
extern std::vector<std::string>* DiskSteps;

// Opens the file for writing and asks whether another program holds a lock on it; changes nothing.
FileOutcome CheckWritable(std::string_view path);

FileOutcome MakeFolder(std::string_view path);  // one folder; an existing one is no error
FileOutcome MakeFolders(std::string_view path); // with all missing folders above it
FileOutcome DeleteFile(std::string_view path);  // one that is not there is no error
// Gives a file another name in its folder, in one step; a file of that name gives way.
FileOutcome RenameFile(std::string_view path, std::string_view newPath);

} // namespace kv
