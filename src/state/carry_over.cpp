// The notes of one drawing about what it took over. Relies on the run block, which ResetRun clears of
// the notes; leaves the line in the report.
#include "state/carry_over.h"

#include <algorithm>
#include <string>

#include "platform/text.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv {

bool StartsClean()
{
    const std::string_view word = Trim(Config.CarryOver);
    if (EqualIgnoringCase(word, "clean"))
        return true;
    if (!word.empty() && !EqualIgnoringCase(word, "kept"))
        Tell(Message::CarryOverUnknown, {{"word", word}});
    return false;
}

void NoteTakenOver(std::string_view what, std::string_view value)
{
    const auto isNamed = [&](const TakenOverValue& noted) { return noted.What == what; };
    if (std::none_of(Run.TakenOver.begin(), Run.TakenOver.end(), isNamed))
        Run.TakenOver.push_back({std::string(what), std::string(value)});
}

void ReportTakenOver()
{
    std::string line;
    for (const TakenOverValue& noted : Run.TakenOver)
        line += (line.empty() ? "" : ", ") + noted.What + " " + noted.Value;
    if (line.empty())
        return;
    Tell(Message::TakenOver, {{"values", line}});
    Run.TakenOver.clear();
}

void ForgetFieldsNamedByDrawings()
{
    for (std::size_t slot = 0; slot < Config.PtsFields.size(); ++slot)
        if (Config.PtsNamedByDrawing[slot])
            Config.PtsFields[slot].clear();
    Config.PtsNamedByDrawing.fill(false);
}

} // namespace kv
