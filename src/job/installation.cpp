// The journal of an installation and what it is for. It is on the disk before the first file is moved and
// goes when the last move is; so whoever finds one, with the lock in hand, finds moves that an ended
// process has left. A file whose contents are others than the journal says is not one of them. Relies on
// the lock being held; leaves no copy that a journal named.
#include "job/installation.h"

#include <algorithm>
#include <charconv>

#include "platform/aside_names.h"
#include "platform/file_lock.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "writers/installation_files.h"

namespace kv {

namespace {

constexpr std::string_view FirstLine = "moves 1 ";
constexpr std::string_view Slashes = "/\\";

std::string NumberText(std::uint64_t value)
{
    return std::to_string(value);
}

// Cuts a number and the character behind it off the text.
std::optional<std::uint64_t> TakeNumber(std::string_view& text, char end)
{
    std::uint64_t value = 0;
    const std::from_chars_result read = std::from_chars(text.data(), text.data() + text.size(), value);
    const auto length = static_cast<std::size_t>(read.ptr - text.data());
    if (read.ec != std::errc() || length >= text.size() || text[length] != end)
        return std::nullopt;
    text.remove_prefix(length + 1);
    return value;
}

std::optional<std::string> TakeText(std::string_view& text, std::uint64_t length)
{
    if (length >= text.size() || text[static_cast<std::size_t>(length)] != '\n')
        return std::nullopt;
    std::string taken(text.substr(0, static_cast<std::size_t>(length)));
    text.remove_prefix(static_cast<std::size_t>(length) + 1);
    return taken;
}

std::string_view HostFolderOf(std::string_view path)
{
    return path.substr(0, path.find_last_of(Slashes) + 1); // none: npos + 1 is 0
}

std::string FromFolder(std::string_view path, std::string_view folder)
{
    return std::string(!folder.empty() && BeginsWith(path, folder) ? path.substr(folder.size()) : path);
}

bool IsFull(std::string_view path)
{
    return Slashes.find(path.front()) != std::string_view::npos || (path.size() > 1 && path[1] == ':');
}

std::string FullPath(const std::string& path, std::string_view folder)
{
    return path.empty() || IsFull(path) ? path : std::string(folder) + path;
}

// Whatever the journal says, nothing is moved but a file aside over one of its own folder.
bool IsMoveAside(const PlannedMove& move)
{
    const std::string_view folder = HostFolderOf(move.File.Aside);
    const std::string_view name = std::string_view(move.File.Aside).substr(folder.size());
    return OwnerOfAside(name) != AsideOwner::None && HostFolderOf(move.File.Place) == folder &&
           move.File.Place.size() > folder.size();
}

std::optional<PlannedMove> TakeMove(std::string_view& text, std::string_view folder)
{
    PlannedMove move;
    const auto size = TakeNumber(text, ' ');
    const auto sum = size ? TakeNumber(text, ' ') : std::nullopt;
    const auto asideLength = sum ? TakeNumber(text, ' ') : std::nullopt;
    const auto placeLength = asideLength ? TakeNumber(text, '\n') : std::nullopt;
    const auto aside = placeLength ? TakeText(text, *asideLength) : std::nullopt;
    const auto place = aside ? TakeText(text, *placeLength) : std::nullopt;
    if (!place)
        return std::nullopt;
    move.Mark = {*size, *sum};
    move.File.Aside = FullPath(*aside, folder);
    move.File.Place = FullPath(*place, folder);
    return IsMoveAside(move) ? std::optional(move) : std::nullopt;
}

std::string HostFolderOfAnchor(const std::string& anchor)
{
    return std::string(HostFolderOf(ToHostPath(anchor)));
}

enum class MoveIs {
    Done,
    Failed,
    Lost, // neither the copy is there nor what it should have become
};

struct FinishedMove {
    MoveIs Is = MoveIs::Done;
    FileOutcome Why; // of Failed
};

FinishedMove FailedMove(const std::string& place, const FileOutcome& outcome)
{
    return {MoveIs::Failed, {outcome.Number, ShownPath(place) + ": " + outcome.Cause}};
}

// Whether the file holds what the journal says.
FileAnswer AskContents(const std::string& path, const ContentsMark& mark)
{
    std::string contents;
    const FileAnswer answer = ReadIfThere(path, contents);
    return answer.Is == Presence::There && MarkOf(contents) != mark ? FileAnswer{Presence::NotThere, {}}
                                                                    : answer;
}

FinishedMove FinishMove(PlannedMove& move)
{
    const std::string aside = FromHostPath(move.File.Aside), place = FromHostPath(move.File.Place);
    const FileAnswer copy = AskContents(aside, move.Mark);
    if (copy.Is == Presence::CannotTell)
        return FailedMove(aside, copy.Why);
    if (copy.Is == Presence::There) {
        const FileOutcome outcome = MoveOrKeepStaged(move.File);
        if (outcome.Ok())
            return {};
        if (AskFile(aside).Is != Presence::NotThere)
            return FailedMove(place, outcome);
        // Somebody with the lock of another installation of the set was quicker.
    }
    const FileAnswer moved = AskContents(place, move.Mark);
    if (moved.Is == Presence::CannotTell)
        return FailedMove(place, moved.Why);
    return {moved.Is == Presence::There ? MoveIs::Done : MoveIs::Lost, {}};
}

// A later drawing of the set has a program of the same name, and its move is looked at by itself.
bool IsReplacedLater(const std::vector<PlannedMove>& moves, std::size_t at)
{
    return std::any_of(moves.begin() + static_cast<std::ptrdiff_t>(at) + 1, moves.end(),
                       [&](const PlannedMove& later) { return later.File.Place == moves[at].File.Place; });
}

// An index is moved when the programs before it are on the disk, so each folder is flushed before the next.
FileOutcome FinishAll(std::vector<PlannedMove>& moves)
{
    std::string folder;
    for (std::size_t i = 0; i < moves.size(); ++i) {
        const std::string next(HostFolderOf(moves[i].File.Place)); // the move clears it
        FileOutcome flushed = next == folder ? FileOutcome{} : FlushFiles();
        if (!flushed.Ok())
            return flushed;
        const bool replaced = IsReplacedLater(moves, i);
        FinishedMove finished = FinishMove(moves[i]);
        if (finished.Is == MoveIs::Failed)
            return finished.Why;
        if (finished.Is == MoveIs::Lost && !replaced)
            break;
        folder = next;
    }
    return FlushFiles();
}

// Copies of moves that are not made any more.
void DropCopies(std::vector<PlannedMove>& moves)
{
    for (PlannedMove& move : moves) {
        const std::string_view aside = move.File.Aside;
        if (OwnerOfAside(aside.substr(HostFolderOf(aside).size())) == AsideOwner::Ended)
            DropStaged(move.File);
    }
}

} // namespace

std::string AnchorOf(const std::string& installation)
{
    return installation.ends_with('\\') ? IndexPathIn(installation) : installation;
}

std::string JournalOf(const std::string& anchor)
{
    return FolderOf(anchor) + ".kv-" + FileNameOf(anchor) + ".moves";
}

std::string JournalText(std::span<const PlannedMove> moves, std::string_view folder)
{
    std::string text = std::string(FirstLine) + NumberText(moves.size()) + "\n";
    for (const PlannedMove& move : moves) {
        const std::string aside = FromFolder(move.File.Aside, folder);
        const std::string place = FromFolder(move.File.Place, folder);
        text += NumberText(move.Mark.Size) + " " + NumberText(move.Mark.Sum) + " " +
                NumberText(aside.size()) + " " + NumberText(place.size()) + "\n" + aside + "\n" + place +
                "\n";
    }
    return text + NumberText(MarkOf(text).Sum) + "\n";
}

std::optional<std::vector<PlannedMove>> MovesOfJournal(std::string_view text, std::string_view folder)
{
    const std::size_t last = text.size() < 2 ? std::string_view::npos : text.rfind('\n', text.size() - 2);
    if (last == std::string_view::npos || !BeginsWith(text, FirstLine))
        return std::nullopt;
    std::string_view ending = text.substr(last + 1);
    if (TakeNumber(ending, '\n') != MarkOf(text.substr(0, last + 1)).Sum)
        return std::nullopt;
    text.remove_prefix(FirstLine.size());
    const std::optional<std::uint64_t> count = TakeNumber(text, '\n');
    std::vector<PlannedMove> moves;
    while (count && moves.size() < *count) {
        const std::optional<PlannedMove> move = TakeMove(text, folder);
        if (!move)
            return std::nullopt;
        moves.push_back(*move);
    }
    return moves;
}

FileOutcome WriteJournal(const std::string& anchor, std::span<const PlannedMove> moves)
{
    return ReplaceFile(JournalOf(anchor), JournalText(moves, HostFolderOfAnchor(anchor)));
}

FileOutcome DropJournal(const std::string& anchor)
{
    return DeleteFile(JournalOf(anchor));
}

FileOutcome FinishMoves(const std::string& anchor)
{
    std::string text;
    const FileAnswer answer = ReadIfThere(JournalOf(anchor), text);
    if (answer.Is == Presence::NotThere)
        return {};
    if (answer.Is == Presence::CannotTell)
        return {answer.Why.Number, ShownPath(JournalOf(anchor)) + ": " + answer.Why.Cause};
    std::optional<std::vector<PlannedMove>> moves = MovesOfJournal(text, HostFolderOfAnchor(anchor));
    if (moves) {
        FileOutcome outcome = FinishAll(*moves);
        if (!outcome.Ok())
            return outcome;
        DropCopies(*moves);
    }
    return DropJournal(anchor); // one that is not whole was never begun
}

FileOutcome FinishIfLeft(const std::string& installation)
{
    const std::string anchor = AnchorOf(installation);
    if (AskFile(JournalOf(anchor)).Is == Presence::NotThere)
        return {};
    FileLock lock;
    if (lock.TryLock(anchor).Is != LockState::Taken)
        return {}; // who holds it is alive; what cannot be locked is told when files are to be moved
    return FinishMoves(anchor);
}

} // namespace kv
