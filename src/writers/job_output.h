// What a drawing gives to the disk. The writers work it out in their order and hand it over here; nothing
// is in its place before all of it is brought there together, at the drawing's end or, in a list, with the
// drawings around it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "writers/output_steps.h"

namespace kv {

// Contents as a journal knows them again.
struct ContentsMark {
    std::uint64_t Size = 0; // bytes
    std::uint64_t Sum = 0;
    bool operator==(const ContentsMark&) const = default;
};
ContentsMark MarkOf(std::string_view contents);

// A program, written aside already: a full disk or a refused folder is reported within its drawing.
struct ProgramOutput {
    std::string Installation; // the program folder
    std::string Path;
    std::string Head;         // its first bytes, for the drawing that replaces it
    std::string ReplacedHead; // of the program that it replaces; empty: none
    StagedFile Staged;
    ContentsMark Mark;
};

// A file that is read, changed and replaced. What it becomes is settled when nobody else can change it.
enum class ChangeKind {
    Notes,
    Index,
    HandOver,
    CutList,
    JobRows
}; // in the order in which they reach the disk
struct FileChange;
// The file's text with the changes, all of them of one file and in their order. `old` is empty where there
// is no file. Nothing: the file is left as it is.
using ChangedText = std::optional<std::string>(std::optional<std::string> old,
                                               std::span<const FileChange* const> changes);
struct FileChange {
    ChangeKind Kind = ChangeKind::Index;
    ChangedText* Changed = nullptr;
    std::string Installation; // the program folder; of a cut list, the list
    std::string Path;
    std::string Text;               // the index record, the hand-over's program name, the list's row
    std::string Root;               // of the hand-over; the identity of the job whose row it is
    std::vector<std::string> Lines; // of the notes, from 1
    std::string Earlier;            // the list's row that the same job wrote before; empty: none
    bool Metric = true;             // of the list
    StagedFile Staged;              // what the file becomes when nobody has changed it meanwhile
    ContentsMark Mark;
};

// Where a drawing's program is, made or not.
enum class ProgramForm { Lone, Indexed, Genesis }; // the last two can be cut into portions
constexpr int ProgramForms = 3;
struct WantedProgram {
    ProgramForm Form = ProgramForm::Lone;
    std::string Folder; // of programs that can have portions
    std::string Name, Path;
    bool WithoutCode = false; // by the drawing's own wish
};

struct JobOutput {
    std::string Drawing;
    long Number = 0; // of the job in this process
    std::vector<ProgramOutput> Programs;
    std::vector<FileChange> Changes;
    std::vector<WantedProgram> Wanted;
    std::vector<std::string> Made;  // entries of ProgramList
    std::vector<std::string> Files; // host paths, in the order of the hand-over
    std::uint64_t Bytes = 0;        // written aside
    bool Empty() const { return Programs.empty() && Changes.empty(); }
};

struct ProgramTextKept {
    std::string Path, Text;
};

struct OutputQueue {
    JobOutput Current;                                               // the drawing that runs
    std::vector<JobOutput> Waiting;                                  // drawings of a list, in order
    bool Together = false;                                           // a list runs
    FileOutcome (*Enter)(const std::string& installation) = nullptr; // before anything is written aside
    bool Recording = false;                                          // steps are kept instead of being done
    std::vector<OutputStep> Steps;                                   // of the drawing that runs
    bool KeepsTexts = false;                                         // of programs, to be read back
    std::vector<ProgramTextKept> Texts;                              // of the drawing that runs
};
extern OutputQueue Outputs;

// Writes a program aside. It replaces a program that waits for the same place.
FileOutcome HandOverProgram(const std::string& installation, const std::string& path,
                            std::string_view contents);
// The file must be fit to be replaced; the first change of a file is tried at once.
FileOutcome HandOverChange(FileChange change);
void HandOverWanted(WantedProgram wanted);
// A name for ProgramList.
void HandOverName(std::string name);

// Drops what the drawing has handed over since the mark.
struct OutputMark {
    std::size_t Programs = 0, Changes = 0, Made = 0, Files = 0, Steps = 0;
};
OutputMark MarkOutput();
void DropOutputSince(const OutputMark& mark);
void DropOutput(JobOutput& output);

constexpr std::size_t HeadBytesOfPrograms = 1000;
// The first bytes of a program as the drawing finds it: of one that waits for the place, else the file's.
FileAnswer HeadOfProgram(const std::string& path, std::string& head);
// After what waited has been placed or dropped.
void ForgetWaitingPrograms();

} // namespace kv
