// What a program is called and where it goes. Relies on the job line's output name, the drawing's own
// name and the settings; leaves nothing.
#include "writers/output_names.h"

#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/settings.h"

namespace kv {

std::string SourceBaseName()
{
    const Long at = Find(1, UpperCase(Run.SourceName), ".DXF");
    return at == 0 ? Run.SourceName : Run.SourceName.substr(0, static_cast<std::size_t>(at) - 1);
}

std::string OutputName()
{
    const std::string name = Run.PartName.ends_with('\\') ? Run.PartName + SourceBaseName() : Run.PartName;
    if (Compact(FileNameOf(name)).empty())
        throw RunError{ErrorPathNotFound, "the program has no name"};
    return name;
}

std::string ProgramFolder(Int controlType)
{
    return WithBackslash(Trim(DestinationPath(controlType)));
}

} // namespace kv
