// One drawing given as bytes, from reader to writers, in a scratch installation of its own. Shared by
// the fuzz target and by the test that replays the corpus. Relies on the example installation; leaves
// the process as a program start does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

#include "job/job_driver.h"
#include "platform/paths.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/program_writers.h"

namespace kv::fuzz {

// On the memory file system where there is one: each input writes a handful of files.
inline std::filesystem::path ScratchRoot()
{
    std::error_code refused;
    const std::filesystem::path memory = "/dev/shm";
    return std::filesystem::is_directory(memory, refused) ? memory : std::filesystem::temp_directory_path();
}

inline void PutFile(const std::filesystem::path& path, std::string_view bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

// Drill head, template and tools of the example installation: without them the optimizer and two of the
// writers give up before they have begun.
struct InstallationFile {
    const char* Name;
    std::string Bytes;
};
inline const std::vector<InstallationFile>& InstallationFiles()
{
    static const std::vector<InstallationFile> files = [] {
        std::vector<InstallationFile> read = {{"DT.Par", {}}, {"EvHeader.dat", {}}, {"KVHBD.cfg", {}}};
        for (InstallationFile& file : read) {
            const std::filesystem::path install =
                std::filesystem::path(KORVANTI_SOURCE_DIR) / "examples" / "install";
            std::ifstream stream(install / file.Name, std::ios::binary);
            file.Bytes = {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        }
        return read;
    }();
    return files;
}

inline void FreshInstallation(const std::filesystem::path& home)
{
    std::filesystem::remove_all(home);
    std::filesystem::create_directories(home / "SORG");
    PutFile(home / "SORG" / "INDICE.PRG", "");
    for (const InstallationFile& file : InstallationFiles())
        PutFile(home / file.Name, file.Bytes);
}

// Settings that let as much run as there is; the small line limit makes portions common.
inline Settings SettingsFor(const std::filesystem::path& home, int system)
{
    Settings settings;
    settings.Winner90 = system == 0;
    settings.Genesis = system == 1;
    settings.GenesisEV = system == 2;
    settings.DestinationPath90 = settings.DestinationPathGen = settings.DestinationPathEV =
        settings.HBDDestinationPath = FromHostPath((home / "SORG").string() + "/");
    settings.MakeHBD = 1;
    settings.HbdAvailable = true;
    settings.HBDVBoreLimit = "50";
    settings.LeadS = settings.LeadRampIn = settings.LeadRampOut = 1;
    settings.CornerComp = settings.RemoveBorderRoute = 1;
    settings.PrecisionMetric = "2";
    settings.PrecisionInch = "3";
    settings.SawKerf = "4";
    settings.LineLimit = "200";
    settings.Optimizer = "1";
    settings.OptimizerBox = true;
    settings.DRAlternate = "1";
    settings.Sequence = "VGHR";
    settings.PtsFields[1] = "NAME";
    settings.PtsQuotes[1] = "\"";
    settings.PtsFields[2] = "WIDTH";
    settings.PtsFields[3] = "LENGTH";
    settings.PtsFieldCount = 3;
    settings.PTSPath = FromHostPath(home.string() + "/");
    settings.PTSName = "CUTLIST";
    return settings;
}

inline void AsAtProgramStart()
{
    ReleaseRunArrays();
    Run = {};
    ResetWriters();
}

// Of the setting Import.
inline const char* ImportWord(std::size_t number)
{
    constexpr const char* words[] = {"full", "told", "plain"};
    return words[number % 3];
}

// Converts the drawing for one machine control. What it names stands in `home`: a drawing names no folder.
inline void ConvertBytes(std::string_view drawing, const std::filesystem::path& home, int system,
                         const char* import = "full")
{
    FreshInstallation(home);
    PutFile(home / "INPUT.DXF", drawing);
    SetExeFolder(FromHostPath(home.string()));
    Config = SettingsFor(home, system);
    Config.Import = import;
    AsAtProgramStart();
    Run.ControlType = static_cast<Int>(system);
    std::string jobLine = FromHostPath((home / "INPUT.DXF").string());
    ProcessDrawingFile(jobLine);
    ReportMessage(2, ""); // as each front end; lines that nobody shows would gather
    AsAtProgramStart();
}

} // namespace kv::fuzz
