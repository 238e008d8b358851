// A drawing names files and never folders. Relies on the run block, which knows whether a change was
// reported already; leaves the report.
#include "state/given_names.h"

#include "platform/file_names.h"
#include "platform/paths.h"
#include "state/report.h"
#include "state/run.h"

namespace kv {

std::string NameWithoutFolder(std::string_view word, std::string_view text)
{
    const std::string_view folder = FolderPartOf(text);
    if (!folder.empty())
        Tell(Message::FolderLeftOut, {{"word", word}, {"folder", folder}});
    return std::string(text.substr(folder.size()));
}

std::string PartNameBy(std::string_view text)
{
    const std::string name = NameWithoutFolder("NAME", text);
    if (name.empty() && !text.empty())
        return Run.PartName;
    return FolderOf(Run.PartName) + GivenFileName(name);
}

std::string GivenFileName(std::string_view name)
{
    std::string made = NameForFile(name);
    if (made != name)
        ReportNameChange(name, made);
    return made;
}

void ReportNameChange(std::string_view name, std::string_view made)
{
    if (Run.FileNameChanged)
        return;
    Run.FileNameChanged = true;
    Tell(Message::NameMadeForFile, {{"name", name}, {"made", made}});
}

} // namespace kv
