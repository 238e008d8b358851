// Looks at each stop once; changes nothing.
#include "drilling/stop_doubts.h"

#include <string_view>

#include "drawing/doubt_lines.h"
#include "platform/text.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr std::string_view NoDrill = "00";

} // namespace

void TellStopDoubts()
{
    for (Long i = 1; i <= HeadPositions.Last(); ++i) {
        const HeadPosition& stop = HeadPositions[i];
        if (Trim(stop.Tool.Padded()) != NoDrill)
            continue;
        const DoubtedWork work{stop.Drawn, "bore", static_cast<double>(stop.X) + Run.OriginX,
                               static_cast<double>(stop.Y) + Run.OriginY};
        TellDoubt(Message::BoreOfNoDrill, work, {{"diameter", LengthText(Millimetres(stop.Diameter))}});
    }
}

} // namespace kv
