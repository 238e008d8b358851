// Reads what the drawing's reader reads, by the same group codes.
#include "import/pair_reader.h"

#include "drawing/group_codes.h"

namespace kv {

bool PairReader::TakeLine(std::string_view& line)
{
    if (At >= Text.size())
        return false;
    const std::size_t feed = Text.find('\n', At);
    const std::size_t end = feed == std::string_view::npos ? Text.size() : feed;
    line = Text.substr(At, end - At);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    At = feed == std::string_view::npos ? Text.size() : feed + 1;
    ++Line;
    return true;
}

bool PairReader::Next()
{
    PairStart = At;
    PairLine = Line + 1;
    std::string_view code;
    if (!TakeLine(code))
        return false;
    PairCode = GroupCode(code);
    if (PairCode == NoNumber)
        PairCode = UnusualGroupCode(code);
    return PairCode != NoNumber && TakeLine(PairValue);
}

} // namespace kv
