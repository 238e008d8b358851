// The pairs of lines of a drawing that is in memory.
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/numbers.h"

namespace kv {

// Lines are those of LineScanner: LF ends one, a CR before it is dropped.
class PairReader {
  public:
    explicit PairReader(std::string_view text, std::size_t at = 0, Long line = 0)
        : Text(text), At(at), Line(line)
    {
    }
    // False at the end of the text, in the middle of a pair, and where a group code is none.
    bool Next();
    int Code() const { return PairCode; }
    std::string_view Value() const { return PairValue; } // as it stands, with its blanks
    std::size_t Start() const { return PairStart; }      // of the code's line
    std::size_t End() const { return At; }               // behind the value's line
    Long LineOfCode() const { return PairLine; }         // from 1
    Long LinesTaken() const { return Line; }

  private:
    bool TakeLine(std::string_view& line);

    std::string_view Text;
    std::size_t At = 0, PairStart = 0;
    Long Line = 0, PairLine = 0;
    int PairCode = 0;
    std::string_view PairValue;
};

} // namespace kv
