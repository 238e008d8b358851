// Which word of the setting Strict refuses doubtful drawings; reads the settings, leaves at most a line in
// the report.
#include "state/strict_setting.h"

#include "platform/text.h"
#include "state/report.h"
#include "state/settings.h"

namespace kv {

bool RefusesDoubts()
{
    return EqualIgnoringCase(Trim(Config.Strict), "yes");
}

void TellUnknownStrictness()
{
    const std::string_view word = Trim(Config.Strict);
    if (!word.empty() && !RefusesDoubts() && !EqualIgnoringCase(word, "no"))
        Tell(Message::StrictUnknown, {{"word", word}});
}

} // namespace kv
