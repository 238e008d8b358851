// The rare forms of group codes.
#include "drawing/group_codes.h"

#include <string>

#include "platform/text.h"

namespace kv {

int UnusualGroupCode(std::string_view line)
{
    const std::string code = Compact(line);
    const int plain = GroupCode(code);
    if (plain != NoNumber)
        return plain;
    const bool isSigned = code.size() > 1 && (code[0] == '-' || code[0] == '+');
    if (isSigned && code.find_first_not_of("0123456789", 1) == std::string::npos)
        return OtherGroup;
    return NoNumber;
}

} // namespace kv
