// Names and places of GENESIS programs. Relies on the settings and the program's own folder; a
// GENESIS program has no index, no hand-over file and no notes.
#include "writers/cnc/genesis_names.h"

#include "platform/paths.h"
#include "platform/text.h"
#include "state/settings.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/installation_files.h"
#include "writers/output_names.h"
#include "writers/program_file.h"
#include "writers/program_writers.h"

namespace kv {

namespace {

constexpr std::size_t ShortName = 8;

} // namespace

bool IsGenesisInstallation()
{
    return Holds(UpperCase(ExeFolder), "GENESIS");
}

std::string GenesisFileName(std::string_view output, std::string_view name)
{
    // The test looks at the whole output name, folder included, and never at a portion's count.
    if (output.size() <= ShortName || Holds(output, "."))
        return FileNameOf(name).substr(0, ProgramNameWidth);
    std::string file(Trim(UpperCase(Padded(FileNameOf(name), ProgramNameWidth))));
    if (file.size() > ShortName)
        file.insert(ShortName, ".");
    return file.substr(0, ProgramNameWidth);
}

std::string GenesisPlace(const std::string& programFolder, std::string_view output, std::string_view name)
{
    return programFolder + GenesisFileName(output, name);
}

bool PlaceGenesisProgram(const ProgramPart& part)
{
    const std::string file = GenesisFileName(part.Output, part.Name);
    // A name with a folder is used as it stands: all portions go to the same file.
    const std::string path = Holds(part.Output, "\\") ? part.Output : ProgramFolder(Run.ControlType) + file;
    if (!HandOverReported(FolderOf(path), path, part.Contents))
        return false;
    NoteWrittenProgram(file, path);
    NoteLines(path, part.Lines, part.Contents);
    return true;
}

} // namespace kv
