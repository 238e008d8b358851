// The parts of file access that both hosts share: reading a file at once and replacing one file.
// Relies on the backend's reading in pieces and its staged writing.
#include "platform/files.h"

#include <algorithm>
#include <limits>

#include "platform/numbers.h"
#include "platform/run_error.h"

namespace kv {

namespace {

// From where the handle stands; less when the file was cut meanwhile.
FileOutcome ReadAndClose(int handle, std::string& contents, std::uint64_t length)
{
    FileOutcome outcome;
    contents.resize(static_cast<std::size_t>(length));
    std::size_t filled = 0, got = 1;
    while (outcome.Ok() && got > 0 && filled < contents.size()) {
        outcome = ReadSome(handle, contents.data() + filled, contents.size() - filled, got);
        filled += got;
    }
    CloseReading(handle);
    contents.resize(outcome.Ok() ? filled : 0);
    return outcome;
}

} // namespace

FileOutcome ReadFileHead(std::string_view path, std::string& contents, std::size_t length)
{
    contents.clear();
    int handle = -1;
    std::uint64_t size = 0;
    const FileOutcome outcome = OpenForReading(path, handle, size);
    return outcome.Ok() ? ReadAndClose(handle, contents, std::min<std::uint64_t>(size, length)) : outcome;
}

FileOutcome ReadFileTail(std::string_view path, std::string& contents, std::size_t length)
{
    contents.clear();
    int handle = -1;
    std::uint64_t size = 0;
    const FileOutcome outcome = OpenForReading(path, handle, size);
    if (!outcome.Ok())
        return outcome;
    const std::uint64_t wanted = std::min<std::uint64_t>(size, length);
    const FileOutcome skipped = SkipTo(handle, size - wanted);
    if (!skipped.Ok()) {
        CloseReading(handle);
        return skipped;
    }
    return ReadAndClose(handle, contents, wanted);
}

FileOutcome ReadWholeFile(std::string_view path, std::string& contents, std::uint64_t limit)
{
    // One byte more than allowed tells a file that is too long.
    constexpr std::uint64_t Most = std::numeric_limits<std::size_t>::max() - 1;
    const std::size_t length = static_cast<std::size_t>(std::min(limit, Most)) + 1;
    const FileOutcome outcome = ReadFileHead(path, contents, length);
    if (outcome.Ok() && contents.size() > limit) {
        contents = {};
        return {ErrorFileAccess, "is longer than " + WholeText(static_cast<long long>(limit)) + " bytes"};
    }
    return outcome;
}

FileAnswer AnswerOf(const FileOutcome& failed)
{
    if (failed.Missing)
        return {Presence::NotThere, {}};
    return {Presence::CannotTell, failed};
}

FileAnswer ReadIfThere(std::string_view path, std::string& contents, std::uint64_t limit)
{
    const FileOutcome outcome = ReadWholeFile(path, contents, limit);
    return outcome.Ok() ? FileAnswer{Presence::There, {}} : AnswerOf(outcome);
}

} // namespace kv
