// What a program is called and where it goes. Relies on the job line's output name, the drawing's own
// name and the settings; leaves nothing.
#include "writers/output_names.h"

#include "platform/file_names.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/given_names.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr Int Indexed = 0; // control system whose programs stand under an index

} // namespace

std::string ProgramNameFor(std::string_view wanted)
{
    const std::string name = GivenFileName(wanted);
    if (Run.ControlType != Indexed || Compact(name).empty())
        return name;
    // Under an index the file is named by what stands behind the first character.
    const std::string whole = Compact(name);
    const std::string file = whole.substr(1);
    const std::string allowed = NameForFile(file);
    if (allowed == file)
        return name;
    ReportNameChange(name, whole[0] + allowed);
    return whole[0] + allowed;
}

std::string SourceBaseName()
{
    const Long at = Find(1, UpperCase(Run.SourceName), ".DXF");
    return at == 0 ? Run.SourceName : Run.SourceName.substr(0, static_cast<std::size_t>(at) - 1);
}

std::string OutputFileName()
{
    return ProgramNameFor(Run.PartName.ends_with('\\') ? SourceBaseName() : FileNameOf(Run.PartName));
}

std::string OutputName()
{
    const std::string file = OutputFileName();
    if (Compact(file).empty())
        throw RunError{ErrorPathNotFound, "the program has no name"};
    return FolderOf(Run.PartName) + file;
}

std::string ProgramFolder(Int controlType)
{
    return WithBackslash(Trim(DestinationPath(controlType)));
}

} // namespace kv
