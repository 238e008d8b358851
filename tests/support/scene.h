// A converter in a scratch folder of its own: fresh state, a program folder with an empty index, the
// report kept line by line. Drawings in, files and report out.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kv::test {

// Process state as at program start: run block, arrays, settings (as a load without KV90.INI leaves
// them), writers, hooks.
void ResetProcess();

struct Scene {
    Scene();
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    std::filesystem::path Folder;   // scratch, removed at the end
    std::filesystem::path Programs; // DestinationPath90; holds INDICE.PRG
    std::vector<std::string> Lines; // report rows of the last Convert, as shown
    std::vector<std::string> Boxes; // message box texts of the last Convert

    std::filesystem::path Write(std::string_view name, std::string_view contents) const;
    std::string Read(const std::filesystem::path& file) const; // fails the test when it is not there
    // Converts a drawing's text; returns whether the job went well. The part name is the file's.
    bool Convert(std::string_view drawing, std::string_view name = "DOOR.DXF", std::string_view output = "");
    bool ConvertFile(const std::filesystem::path& drawing); // one that stands already, or not
    // The lines of a program (CR LF cut) by its output name, "" folder: Programs.
    std::vector<std::string> Program(std::string_view name = "DOOR") const;
    bool HasProgram(std::string_view name = "DOOR") const;
    bool Reported(std::string_view line) const; // one row is exactly this
    std::string ReportText() const;             // all rows, one a line, for messages
};

// A file by which processes agree about the files beside it; no part of what a job makes.
inline bool IsAgreement(const std::filesystem::path& file)
{
    return file.filename().string().starts_with(".kv-");
}

// Calls `look` when the stage of a conversion is done, while the guard lives.
struct AtStage {
    AtStage(std::string stage, std::function<void()> look);
    ~AtStage();
    AtStage(const AtStage&) = delete;
    AtStage& operator=(const AtStage&) = delete;
};

} // namespace kv::test
