// The hand-over file of a CNC90 control. Relies on the control's environment variables, read at each
// program; all bytes that are not named here pass through unchanged.
#include "writers/cnc/navetta.h"

#include <optional>
#include <span>
#include <utility>

#include "platform/needed_files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/installation_files.h"
#include "writers/job_output.h"
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

// The control looks at the last one.
std::optional<std::string> RecordWith(std::optional<std::string> record,
                                      std::span<const FileChange* const> changes)
{
    if (!record)
        return record;
    const FileChange& last = *changes.back();
    if (record->size() < RecordSize)
        record->resize(RecordSize, '\0');
    record->replace(NameAt, NameWidth, Padded(last.Text, NameWidth));
    record->replace(RootAt, RootWidth, Padded(last.Root, RootWidth));
    record->replace(CommandAt, CommandWidth, Padded("NOP.BAT", CommandWidth));
    (*record)[NumberAt] = '\1';
    (*record)[NumberAt + 1] = '\0';
    return record;
}

} // namespace

std::string NavettaFolder()
{
    return WithBackslash(EnvironmentPath("DIRTMP", "C:\\CNC90\\MOD1\\TMP"));
}

void HandOverNavetta(const std::string& folder, std::string_view programName)
{
    if (!Holds(UpperCase(DestinationPath(Run.ControlType)), "CNC90"))
        return;
    if (!IsRecorded({StepKind::HandOver, folder, {}, std::string(programName), {}}))
        HandOverProgramName(folder, programName);
}

void HandOverProgramName(const std::string& folder, std::string_view programName)
{
    FileChange change;
    change.Path = NavettaFolder() + "Navetta.cmd";
    const std::string path = change.Path;
    if (!FileIsThere(path))
        return;
    change.Kind = ChangeKind::HandOver;
    change.Changed = RecordWith;
    change.Installation = folder;
    change.Text = programName;
    change.Root = EnvironmentPath("ROOT", "C:\\CNC90");
    if (change.Root.ends_with('\\'))
        change.Root.pop_back();
    ThrowUnlessOk(path, HandOverChange(std::move(change)));
}

} // namespace kv
