#include "support/proof/beside_outline.h"

#include "machine/cnc_reader.h"

namespace kv::test {

namespace {

constexpr double WidthOfSlivers = 0.01; // mm: rounded places and chords in place of arcs

} // namespace

DrawnArea AreaBeside(const std::vector<std::string>& program, const Region& outline)
{
    const MachineSteps steps = ReadCnc(program);
    const Region swept = SweptFace(steps);
    const Region outside = ReachedBy(Difference(swept, outline), WidthOfSlivers);
    const Region left = ReachedBy(Difference(outline, swept), WidthOfSlivers);
    DrawnArea area{AreaOf(outside), AreaOf(left), Described(outside), Described(left), ""};
    for (const std::string& line : steps.Unread)
        area.Fault += line + "\n";
    return area;
}

} // namespace kv::test
