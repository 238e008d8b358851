// The words of a program line and the forms of tool numbers. Relies on the number formats and the
// substitution table; leaves the last speed, the last tool word and the substitution flag in the
// writers' memory.
#include "writers/cnc_words.h"

#include "platform/run_error.h"
#include "platform/text.h"
#include "shell/settings.h"
#include "writers/cnc_writer.h"
#include "writers/number_format.h"

namespace kv {

namespace {

constexpr Single FirstDepthCode = 90;

Long Substituted(Long number)
{
    for (const ToolSubstitution& row : Config.ToolSubData) {
        if (Val(row.Enabled) == 0 || Val(row.Tool) != number)
            continue;
        Writers.ToolSubstituted = true;
        return ToLong(Val(row.ToolSub)); // not looked up again
    }
    return number;
}

} // namespace

std::string WholeWord(std::string_view letter, Long value)
{
    return value == 0 ? std::string() : std::string(letter) + WholeText(value);
}

std::string PlainWord(std::string_view letter, Single value)
{
    return value == 0 ? std::string() : std::string(letter) + PlainText(value);
}

std::string PlaceWords(Single x, Single y)
{
    return "X" + FormatCoord(x) + "Y" + FormatCoord(y);
}

std::string SpeedWord(Int speed)
{
    if (speed <= 0)
        return {};
    Writers.LastSpeed = speed;
    return "S" + WholeText(speed);
}

bool IsDepthCode(Single depth)
{
    return depth >= FirstDepthCode;
}

std::string DepthWord(Single depth)
{
    if (!IsDepthCode(depth))
        return FormatCoord(depth);
    const Long code = ToLong(static_cast<double>(depth));
    if (code > 255)
        throw RunError{ErrorInvalidCall, "The depth code " + WholeText(code) + " is above 255"};
    return {'=', static_cast<char>(code)};
}

std::string TwoDigits(Long number)
{
    const std::string text = "0" + WholeText(number);
    return text.substr(text.size() - 2);
}

std::string BoreToolWord(std::string_view tool, Int group, Single diameter)
{
    if (Val(tool) != 0)
        Writers.ToolWord = "T" + TwoDigits(group) + std::string(tool);
    else
        Writers.ToolWord = "R54=" + FormatCoord(diameter);
    return Writers.ToolWord;
}

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
