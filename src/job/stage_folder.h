// A folder of converted drawings on their way to an installation: `manifest`, `part-1`, `part-2` and so on,
// and, once it has been placed, `placed`. It is whole or not there: it is written aside, brought to the disk
// and moved.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "job/converted_job.h"
#include "platform/files.h"
#include "state/settings.h"

namespace kv {

// What the programs of this installation depend on beside the drawings: settings, and the files beside
// them by size and sum.
std::vector<SettingText> InstallationMarks();
// For people: which marks differ. Empty: none.
std::string DifferentMarks(const std::vector<SettingText>& theirs, const std::vector<SettingText>& ours);

struct StageManifest {
    std::string Version;  // of the program that made it
    long long Number = 1; // its place in the list
    long long Drawings = 0;
    std::vector<SettingText> Marks;
    std::vector<ContentsMark> Parts;
};
std::string StageManifestText(const StageManifest& manifest);
// Why it is none stands in `cause`.
std::optional<StageManifest> StageManifestOf(std::string_view text, std::string& cause);

// Writes a stage. Nothing of it stays when Finish has not been called, or has failed.
class StageWriter {
  public:
    StageWriter() = default;
    ~StageWriter();
    StageWriter(const StageWriter&) = delete;
    StageWriter& operator=(const StageWriter&) = delete;

    // Refuses a path where something is.
    FileOutcome Begin(const std::string& folder);
    FileOutcome Add(const ConvertedJob& job);
    FileOutcome Finish(long long number);

  private:
    FileOutcome WritePart();

    std::string Place, Aside; // backslash paths; the second with its backslash, empty when there is none
    StageManifest Manifest;
    std::string Part; // what is not yet written
};

// Reads a stage, part after part.
class StageReader {
  public:
    // What is wrong with it, for people; empty when all is well. Reads the manifest alone.
    std::string Open(const std::string& folder);
    const StageManifest& Manifest() const { return Read; }
    const std::string& Folder() const { return Place; }
    // The next drawing; nothing at the end and when a part is not as it was written, which `cause` says.
    std::optional<ConvertedJob> Next(std::string& cause);

  private:
    bool ReadPart(std::string& cause);

    std::string Place; // with its backslash
    StageManifest Read;
    std::size_t PartsRead = 0;
    std::string Part;
    std::size_t At = 0; // in the part
};

// How many drawings of a stage have been placed already.
struct StageProgress {
    long long Placed = 0;
    std::string When; // for people
};
FileOutcome ReadStageProgress(const std::string& folder, StageProgress& progress);
// Of many stages at the price of few.
struct StagePlaced {
    std::string Folder;
    long long Placed = 0;
};
std::vector<FileOutcome> WriteStageProgress(const std::vector<StagePlaced>& stages);

} // namespace kv
