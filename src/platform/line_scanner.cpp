#include "platform/line_scanner.h"

#include <algorithm>
#include <utility>

#include "platform/numbers.h"
#include "platform/run_error.h"

namespace kv {

namespace {
constexpr std::size_t BufferSize = 4 * LongestLine;
} // namespace

void LineScanner::Open(std::string_view path)
{
    Close();
    Outcome = OpenForReading(path, Handle, Total);
    if (Outcome.Ok())
        Buffer.resize(static_cast<std::size_t>(std::clamp<std::uint64_t>(Total, 1, BufferSize)));
}

void LineScanner::OpenText(std::string text)
{
    Close();
    Buffer = std::move(text);
    End = Buffer.size();
    Taken = Total = End;
}

std::string_view LineScanner::OpenAt(std::string_view path, std::string_view word)
{
    Open(path);
    return LineWith(word);
}

std::string_view LineScanner::AgainAt(std::string_view word)
{
    At = 0;
    LineNumber = 0;
    AtEnd = CutLine = false;
    if (Handle >= 0) {
        End = 0;
        Taken = 0;
        Outcome = SkipTo(Handle, 0);
    }
    return LineWith(word);
}

std::string_view LineScanner::LineWith(std::string_view word)
{
    while (!AtEnd && Outcome.Ok()) {
        const std::string_view line = NextLine();
        if (line.find(word) != std::string_view::npos)
            return line;
    }
    return {};
}

void LineScanner::Close()
{
    if (Handle >= 0)
        CloseReading(Handle);
    Handle = -1;
    At = End = 0;
    Taken = Total = 0;
    LineNumber = 0;
    AtEnd = CutLine = false;
    Outcome = {};
    Buffer = {};
}

int LineScanner::PercentDone() const
{
    if (Total == 0)
        return 100;
    const std::uint64_t done = Taken - (End - At);
    return static_cast<int>(std::min<std::uint64_t>(100, done * 100 / Total));
}

// Moves what is left of the buffer to its front and reads on behind it. False when nothing came.
bool LineScanner::Fill()
{
    if (Handle < 0)
        return false;
    if (At > 0) {
        std::memmove(Buffer.data(), Buffer.data() + At, End - At);
        End -= At;
        At = 0;
    }
    if (End == Buffer.size())
        Buffer.resize(std::min(Buffer.size() * 2, BufferSize));
    std::size_t got = 0;
    std::size_t most = Buffer.size() - End;
    if (Total > 0) // what is no plain file does not say its size
        most = static_cast<std::size_t>(std::min<std::uint64_t>(Total - std::min(Taken, Total), most));
    if (most == 0)
        return false;
    Outcome = ReadSome(Handle, Buffer.data() + End, most, got);
    End += got;
    Taken += got;
    return Outcome.Ok() && got > 0;
}

std::string_view LineScanner::NextLineAcrossBuffers()
{
    std::size_t searched = End - At;
    for (;;) {
        if (searched > LongestLine) {
            Outcome = {ErrorFileAccess, "line " + WholeText(static_cast<long long>(LineNumber) + 1) +
                                            " is longer than " + WholeText(LongestLine) + " bytes"};
            return {};
        }
        if (!Fill())
            break;
        if (std::memchr(Buffer.data() + searched, '\n', End - searched) != nullptr)
            return NextLine();
        searched = End;
    }
    if (!Outcome.Ok())
        return {};
    if (At == End) {
        AtEnd = true;
        return {};
    }
    const std::string_view rest(Buffer.data() + At, End - At);
    At = End;
    ++LineNumber;
    CutLine = true;
    return rest;
}

} // namespace kv
