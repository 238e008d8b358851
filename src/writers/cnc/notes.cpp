// Writes a drawing's shop notes into the control's notes file. Relies on Run.CncNotes and the program
// folder; replaces what stands between the CAD markers and keeps the operator's own lines.
#include "writers/cnc/notes.h"

#include <optional>
#include <span>
#include <utility>

#include "platform/needed_files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/run.h"
#include "writers/installation_files.h"
#include "writers/job_output.h"
#include "writers/program_file.h"

namespace kv {

namespace {

// Lines end at CR; the LF behind it is dropped. The last line is what stands behind the last CR, and
// is empty in a file whose last line is ended.
std::vector<std::string> LinesOfText(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t at = 0; at != std::string::npos;) {
        const std::size_t end = text.find('\r', at);
        lines.push_back(text.substr(at, end - at));
        at = end == std::string::npos ? end : end + 1;
        if (at < text.size() && text[at] == '\n')
            ++at;
    }
    // The merge leaves the last line out. An operator's line without a line end must not get lost.
    if (!lines.back().empty())
        lines.emplace_back();
    return lines;
}

std::size_t LastLineHolding(const std::vector<std::string>& lines, std::string_view marker)
{
    for (std::size_t i = lines.size(); i > 0; --i) {
        if (Holds(UpperCase(lines[i - 1]), marker))
            return i - 1;
    }
    return lines.size() - 1;
}

// Of several drawings each finds what the one before it left.
std::optional<std::string> NotesWith(std::optional<std::string> text,
                                     std::span<const FileChange* const> changes)
{
    for (const FileChange* const change : changes) {
        std::vector<std::string> lines = change->Lines; // element 0 is blank
        if (text) {
            lines[0] = "--- Begin CAD Notes ---";
            lines = MergeNotes(LinesOfText(*text), lines);
        }
        text = TextOfLines(lines);
    }
    return text;
}

} // namespace

std::vector<std::string> MergeNotes(const std::vector<std::string>& old,
                                    const std::vector<std::string>& fresh)
{
    const std::size_t lastOld = old.size() - 1;
    const std::size_t lastFresh = fresh.size() - 1;
    const std::size_t begin = LastLineHolding(old, "BEGIN CAD NOTES");
    const std::size_t end = LastLineHolding(old, "END CAD NOTES");
    bool keep = false; // old lines up to the end marker are being replaced
    std::size_t fromOld = 0;
    std::size_t fromFresh = begin < lastOld ? 1 : 0; // the head line is not repeated

    std::vector<std::string> merged;
    for (std::size_t slot = 0; slot <= lastOld + lastFresh; ++slot) {
        const bool more = fromFresh <= lastFresh;
        if (more && fromOld >= end) {
            merged.push_back(fresh[fromFresh++]);
            keep = false;
        } else if (more && fromOld > begin) {
            merged.push_back(fresh[fromFresh++]);
            ++fromOld;
            keep = true;
        } else if (fromOld < lastOld || keep) {
            if (keep)
                fromOld = end;
            keep = false;
            merged.push_back(old[fromOld++]);
        } else {
            break; // nothing fills the slots that are left, and they give no line
        }
    }
    return merged;
}

std::string NotesRoot(std::string_view programFolder)
{
    const Long at = Find(1, UpperCase(programFolder), "SORG");
    return at == 0 ? std::string()
                   : std::string(programFolder.substr(0, static_cast<std::size_t>(at) - 1)) + "NOTE\\";
}

void HandOverNotes(const std::string& folder, const std::string& place)
{
    if (Run.CncNotes.size() < 2)
        return;
    const std::string root = NotesRoot(folder);
    if (root.empty()) {
        Tell(Message::NotesFound);
        Tell(Message::NotesWithoutFolder);
        Tell(Message::NotesNotSaved);
        return;
    }
    const std::string path = root + "NOC\\" + place;
    MakeFoldersOrThrow(root + "SPC\\");
    MakeFoldersOrThrow(FolderOf(path));
    if (!IsRecorded({StepKind::Notes, folder, path, {}, Run.CncNotes}))
        ThrowUnlessOk(path, HandOverNoteLines(folder, path, Run.CncNotes));
}

FileOutcome HandOverNoteLines(const std::string& folder, const std::string& path,
                              std::vector<std::string> lines)
{
    FileChange change;
    change.Kind = ChangeKind::Notes;
    change.Changed = NotesWith;
    change.Installation = folder;
    change.Path = path;
    change.Lines = std::move(lines);
    return HandOverChange(std::move(change));
}

} // namespace kv
