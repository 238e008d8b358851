// Looks at the panel beside what the drawing says of itself. Needs origin, unit and sources of the panel;
// changes nothing.
#include "drawing/panel_doubts.h"

#include <cmath>
#include <map>
#include <string>
#include <utility>

#include "drawing/border.h"
#include "drawing/doubt_lines.h"
#include "drawing/drawing_facts.h"
#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/report.h"
#include "state/run.h"

namespace kv {

namespace {

// What the numbers of $INSUNITS mean.
struct UnitRow {
    int Number;
    std::string_view Name;
    double Millimetres;
};
constexpr UnitRow UnitRows[] = {
    {1, "inch", 25.4},
    {2, "feet", 304.8},
    {3, "miles", 1609344},
    {4, "mm", 1},
    {5, "cm", 10},
    {6, "m", 1000},
    {7, "km", 1e6},
    {8, "microinches", 25.4e-6},
    {9, "mils", 25.4e-3},
    {10, "yards", 914.4},
    {11, "angstroms", 1e-7},
    {12, "nanometres", 1e-6},
    {13, "microns", 1e-3},
    {14, "dm", 100},
    {15, "decametres", 1e4},
    {16, "hectometres", 1e5},
    {17, "gigametres", 1e12},
    {21, "US survey feet", 304.8006},
    {22, "US survey inches", 25.40005},
};

const UnitRow* RowOfUnits(int number)
{
    for (const UnitRow& row : UnitRows)
        if (row.Number == number)
            return &row;
    return nullptr;
}

void TellBelowZero(const PanelSources& sources)
{
    if (Run.PanelFound != 0 || sources.BelowZero == 0 || !sources.CornerMissed)
        return;
    Tell(Message::BorderBelowZero, WithPlace({{"layer", LayerAsDrawn(sources.BelowZero)},
                                              {"place", PlaceText(sources.LowestX, sources.LowestY)}},
                                             sources.BelowZero));
}

// The drawing's SCALE may be what brings its unit to the one that the run takes.
void TellUnits(const PanelSources& sources)
{
    constexpr double sameUnit = 0.001; // parts
    const UnitRow* const drawn = RowOfUnits(DrawnUnits());
    if (drawn == nullptr || sources.First == 0)
        return;
    const double taken = static_cast<double>(Run.UnitFactor);
    const double scaled = drawn->Millimetres * static_cast<double>(Run.DrawingScale);
    if (std::fabs(scaled - taken) <= sameUnit * taken)
        return;
    const std::string size = PlainText(Run.SideWidth[Face]) + " x " + PlainText(Run.SideHeight[Face]);
    Tell(Message::UnitsContradict, WithPlace({{"layer", LayerAsDrawn(sources.First)},
                                              {"size", size},
                                              {"taken", Run.DrawingInInch != False ? "inch" : "mm"},
                                              {"unit", drawn->Name}},
                                             sources.First));
}

void TellThickness(const PanelSources& sources)
{
    if (Run.PartThickness != 0 || sources.First == 0)
        return;
    Tell(Message::PanelWithoutThickness, WithPlace({{"layer", LayerAsDrawn(sources.First)}}, sources.First));
}

Message LineOfSight(Sight sight)
{
    if (sight == Sight::PaperSpace)
        return Message::PanelFromPaperSpace;
    return sight == Sight::FrozenLayer ? Message::PanelFromFrozenLayer : Message::PanelFromLayerOff;
}

struct HiddenEntities {
    Long First = 0, Count = 0;
    Long Last = 0; // whose vertices may follow
};

void TellHidden(const PanelSources& sources)
{
    if (!sources.HiddenChangedIt)
        return;
    std::map<std::pair<Sight, std::string>, HiddenEntities> groups;
    for (const Long drawn : sources.Hidden) {
        const Long owner = DrawnEntities[drawn].Owner;
        const Long whole = owner != 0 ? owner : drawn;
        HiddenEntities& group = groups[{SightOf(drawn), LayerAsDrawn(whole)}];
        if (group.First == 0)
            group.First = whole;
        group.Count += group.Last != whole ? 1 : 0;
        group.Last = whole;
    }
    for (const auto& [key, group] : groups)
        Tell(LineOfSight(key.first),
             WithPlace({{"layer", key.second}, {"count", static_cast<long long>(group.Count)}}, group.First));
}

} // namespace

void TellPanelDoubts()
{
    const PanelSources& sources = SourcesOfPanel();
    TellBelowZero(sources);
    TellUnits(sources);
    TellThickness(sources);
    TellHidden(sources);
}

} // namespace kv
