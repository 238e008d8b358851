// The hand-over file of a CNC90 control. Relies on the control's environment variables, read at each
// program; all bytes that are not named here pass through unchanged.
#include "writers/cnc/navetta.h"

#include "platform/needed_files.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/program_file.h"

namespace kv {

namespace {

// The record, offsets from 0.
constexpr std::size_t RecordSize = 372;
constexpr std::size_t NameAt = 40, NameWidth = 12;
constexpr std::size_t RootAt = 158, RootWidth = 40;
constexpr std::size_t CommandAt = 198, CommandWidth = 12;
constexpr std::size_t NumberAt = 280; // 16 bits, lowest byte first

std::string EnvironmentPath(const char* name, const char* missing)
{
    std::string path = Environment(name);
    if (path.empty())
        path = missing;
    ReplaceChar(path, '/', '\\');
    return path;
}

} // namespace

std::string StageNavetta(std::string_view programName, StagedFile& staged)
{
    if (!Holds(UpperCase(DestinationPath(Run.ControlType)), "CNC90"))
        return {};
    const std::string path = WithBackslash(EnvironmentPath("DIRTMP", "C:\\CNC90\\MOD1\\TMP")) + "Navetta.cmd";
    std::string record;
    if (!ReadFileOfJob(path, record))
        return {};

    std::string root = EnvironmentPath("ROOT", "C:\\CNC90");
    if (root.ends_with('\\'))
        root.pop_back();
    if (record.size() < RecordSize)
        record.resize(RecordSize, '\0');
    record.replace(NameAt, NameWidth, Padded(programName, NameWidth));
    record.replace(RootAt, RootWidth, Padded(root, RootWidth));
    record.replace(CommandAt, CommandWidth, Padded("NOP.BAT", CommandWidth));
    record[NumberAt] = '\1';
    record[NumberAt + 1] = '\0';
    StageOrThrow(path, record, staged);
    return path;
}

} // namespace kv
