// Grooves wider than the saw become parallel passes, one groove after the other in drawing order.
// Runs first behind the reading of the drawing; leaves GroovePasses.
#include "drilling/groove_passes.h"

#include <cmath>

#include "state/drawn_entities.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr double PairReach = 0.01; // drawing units between the ends of a pair of lines

// The second line of a pair (Width below 0) brings the first one its far end.
void JoinPairs()
{
    for (Long a = 1; a <= Grooves.Last(); ++a) {
        GrooveRecord& second = Grooves[a];
        if (second.Width >= 0)
            continue;
        for (Long b = 1; b <= Grooves.Last(); ++b) {
            GrooveRecord& first = Grooves[b];
            if (first.Width < 0 || !(std::abs(static_cast<double>(first.X2) - second.X2) < PairReach) ||
                !(std::abs(static_cast<double>(first.Y2) - second.Y2) < PairReach))
                continue;
            std::swap(first.X1, second.X2);
            std::swap(first.Y1, second.Y2);
            first.Drawn = DrawnTogether(first.Drawn, second.Drawn);
        }
    }
}

// A pass with the groove's values; the kerf is not copied.
GroovePass PassOf(const GrooveRecord& groove)
{
    GroovePass pass = groove;
    pass.Kerf = 0;
    return pass;
}

// Across is the coordinate in which the passes lie side by side: both ends of it, by member.
struct Across {
    Single GrooveRecord::*First;
    Single GrooveRecord::*Second;
};
constexpr Across AcrossX{&GrooveRecord::X1, &GrooveRecord::X2};
constexpr Across AcrossY{&GrooveRecord::Y1, &GrooveRecord::Y2};

void AddPass(const GrooveRecord& groove, const Across& across, double position)
{
    GroovePass pass = PassOf(groove);
    pass.*across.First = pass.*across.Second = ToSingle(position);
    Grow(GroovePasses, "groove passes", pass);
}

void AddPasses(const GrooveRecord& groove, const Across& across)
{
    const double middle = groove.*across.First;
    const double width = groove.Width;
    const double kerf = groove.Kerf;
    if (width <= kerf) {
        AddPass(groove, across, middle);
        return;
    }
    const double end = middle + width / 2 - kerf / 2;
    double position = middle - width / 2 + kerf / 2;
    const Single gaps = ToSingle((end - position) / kerf);
    const double whole = std::floor(gaps);
    const double count = whole == gaps ? whole + 1 : whole + 2;
    // Divided by the count and not by one less: even up to the one before last.
    const double step = kerf - (count * kerf - width) / count;
    for (double pass = 1; pass <= count; ++pass) {
        AddPass(groove, across, position);
        position = pass + 1 >= count ? end : position + step;
    }
}

} // namespace

void ExpandGrooves()
{
    JoinPairs();
    for (Long i = 1; i <= Grooves.Last(); ++i) {
        const GrooveRecord& groove = Grooves[i];
        if (groove.Width == 0)
            Grow(GroovePasses, "groove passes", groove);
        else if (groove.Width > 0 && groove.X1 == groove.X2)
            AddPasses(groove, AcrossX);
        else if (groove.Width > 0 && groove.Y1 == groove.Y2)
            AddPasses(groove, AcrossY);
    }
}

} // namespace kv
