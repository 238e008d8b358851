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
    const DrawnUnit* const drawn = UnitOfDrawing();
    if (drawn == nullptr || sources.First == 0)
        return;
    const double taken = static_cast<double>(Run.UnitFactor);
    const double scaled = drawn->Millimetres * static_cast<double>(Run.DrawingScale);
    if (std::fabs(scaled - taken) <= sameUnit * taken)
        return;
    const std::string size = ShownNumber(Run.SideWidth[Face]) + " x " + ShownNumber(Run.SideHeight[Face]);
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

} // namespace

void TellHiddenOfPanel()
{
    const PanelSources& sources = SourcesOfPanel();
    if (!sources.HiddenChangedIt)
        return;
    std::map<std::pair<Sight, std::string>, HiddenEntities> groups;
    for (const Long drawn : sources.Hidden) {
        const Long whole = WholeOf(drawn);
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

void TellPanelDoubts()
{
    const PanelSources& sources = SourcesOfPanel();
    TellBelowZero(sources);
    TellUnits(sources);
    TellThickness(sources);
    TellHiddenOfPanel();
}

} // namespace kv
