// The words of a program line. Relies on the number formats; leaves the last speed and the last tool
// word in the writers' memory.
#include "writers/cnc/cnc_words.h"

#include "platform/run_error.h"
#include "platform/text.h"
#include "state/settings.h"
#include "writers/number_format.h"
#include "writers/writer_memory.h"

namespace kv {

namespace {

constexpr Single FirstDepthCode = 90;

} // namespace

std::string InOrder(std::initializer_list<std::string> words)
{
    std::string line;
    for (const std::string& word : words)
        line += word;
    return line;
}

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
    return InOrder({"X", FormatCoord(x), "Y", FormatCoord(y)});
}

std::string SpeedWord(Int speed)
{
    if (speed <= 0)
        return {};
    Remember(&WriterMemory::LastSpeed, speed);
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

std::string BoreToolWord(std::string_view tool, Int group, Single diameter)
{
    if (Val(tool) != 0)
        Remember(&WriterMemory::ToolWord, "T" + TwoDigits(group) + std::string(tool));
    else
        Remember(&WriterMemory::ToolWord, "R54=" + FormatCoord(diameter));
    return Writers.ToolWord;
}

} // namespace kv
