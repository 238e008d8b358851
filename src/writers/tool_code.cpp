// The forms of tool numbers. Relies on the substitution table; leaves the substitution flag in the
// writers' memory.
#include "writers/tool_code.h"

#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/number_format.h"
#include "writers/writer_memory.h"

namespace kv {

namespace {

Long Substituted(Long number)
{
    for (const ToolSubstitution& row : Config.ToolSubData) {
        if (Val(row.Enabled) == 0 || Val(row.Tool) != number)
            continue;
        Remember(&WriterMemory::ToolSubstituted, true);
        return ToLong(Val(row.ToolSub)); // not looked up again
    }
    return number;
}

} // namespace

std::string ToolCode(Long number)
{
    const Long tool = Substituted(number);
    if (Run.ControlType == 2)
        return WholeText(tool);
    if (tool > 200)
        return TwoDigits(tool - 200) + "M66";
    if (tool > 99)
        return {static_cast<char>('a' + tool / 10 % 10), static_cast<char>('0' + tool % 10)};
    return WholeText(tool);
}

} // namespace kv
