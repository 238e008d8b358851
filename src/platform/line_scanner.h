// Walks a text file line by line with one buffer, whatever the file's size. Lines end at LF; one CR
// before it is dropped; a bare CR ends no line. Behind the end of the file lines are empty. A file that grows
// meanwhile ends where it ended when it was opened.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace kv {

// A longer line is no drawing's; it ends the scan with an outcome.
constexpr std::size_t LongestLine = 256 * 1024; // bytes

struct LineScanner {
    // Stands before the first line. A file that cannot be read leaves the reason in Outcome.
    void Open(std::string_view path);
    // Stands on the first line that holds `word` and gives it; empty when none does. A file that
    // cannot be read leaves the reason in Outcome.
    std::string_view OpenAt(std::string_view path, std::string_view word);
    // The same over a text that is in memory.
    void OpenText(std::string text);
    // From the first line on once more: stands on the first one that holds `word` and gives it.
    std::string_view AgainAt(std::string_view word);
    // The next line; valid until the next call.
    std::string_view NextLine()
    {
        const char* const start = Buffer.data() + At;
        const void* const feed = End > At ? std::memchr(start, '\n', End - At) : nullptr;
        if (feed == nullptr)
            return NextLineAcrossBuffers();
        std::size_t length = static_cast<std::size_t>(static_cast<const char*>(feed) - start);
        if (length > LongestLine)
            return NextLineAcrossBuffers(); // refuses it
        At += length + 1;
        ++LineNumber;
        if (length > 0 && start[length - 1] == '\r')
            --length;
        return {start, length};
    }
    // The next line where it is nothing but a short whole number with blanks around it, in one step.
    // False, and nothing taken, for any other line and near the end of the buffer.
    bool NextWholeNumber(int& number)
    {
        constexpr std::size_t longest = 32; // bytes of such a line, its end included
        if (End < At + longest)
            return false;
        const char* at = Buffer.data() + At;
        const char* const last = at + 20;
        while (*at == ' ' && at < last)
            ++at;
        const char* const first = at;
        int digits = 0;
        while (*at >= '0' && *at <= '9' && at - first < 6)
            digits = digits * 10 + (*at++ - '0');
        if (at == first || (at - first > 1 && *first == '0'))
            return false;
        while (*at == ' ' && at < last)
            ++at;
        if (*at == '\r')
            ++at;
        if (*at != '\n')
            return false;
        At = static_cast<std::size_t>(at - Buffer.data()) + 1;
        ++LineNumber;
        number = digits;
        return true;
    }
    void Close();
    int PercentDone() const; // 0 to 100

    FileOutcome Outcome;          // why the scan ended early, else Ok
    bool AtEnd = false;           // a line was asked for behind the last one
    bool CutLine = false;         // the last line given had no LF behind it
    std::uint64_t LineNumber = 0; // of the line given last, from 1

    LineScanner() = default;
    ~LineScanner() { Close(); }
    LineScanner(const LineScanner&) = delete;
    LineScanner& operator=(const LineScanner&) = delete;

  private:
    std::string_view LineWith(std::string_view word);
    std::string_view NextLineAcrossBuffers();
    bool Fill();

    int Handle = -1;
    std::string Buffer;
    std::size_t At = 0, End = 0;
    std::uint64_t Taken = 0, Total = 0;
};

} // namespace kv
