// Gathers what the run has left, while its records stand. Relies on the answers of the ledger.
#include "ledger/explanation.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "drawing/drawing_facts.h"
#include "drilling/drill_head.h"
#include "ledger/look_works.h"
#include "ledger/stage_marks.h"
#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/drawn_names.h"
#include "state/run.h"
#include "writers/program_lines.h"

namespace kv {

namespace {

std::string Shown(Long name)
{
    std::string shown(NameOfNumber(name));
    for (char& c : shown)
        if (static_cast<unsigned char>(c) < ' ')
            c = '?';
    return shown;
}

// Counts entities of one layer state by kind and answer, in the order of the drawing.
class KindCounts {
  public:
    void Add(Long drawn, const EntityAnswer& answer)
    {
        const Long kind = LookOf(drawn).Kind;
        const auto [place, isNew] = Places.try_emplace({kind, answer.Fate, answer.Why}, Kinds.size());
        if (isNew)
            Kinds.push_back(
                {Shown(kind), 0, answer.Fate, answer.Why, DrawnEntities[drawn].Line, HandleOf(drawn)});
        ++Kinds[place->second].Count;
    }
    std::vector<ExplainedKind> Kinds;

  private:
    std::map<std::tuple<Long, EntityFate, Message>, std::size_t> Places;
};

// The states of one layer as drawn, and the work that its entities ask for.
struct StateCounts {
    Long State = 0, Named = 0; // names
    KindCounts Kinds;
};
struct LayerCounts {
    Long Layer = 0;
    std::vector<StateCounts> States;
};

std::vector<LayerCounts> CountLayers(const EntityAnswers& answers)
{
    std::vector<LayerCounts> layers;
    std::map<Long, std::size_t> layerPlaces;
    std::map<std::pair<Long, Long>, std::size_t> statePlaces;
    for (Long drawn = 1; drawn <= DrawnEntities.Last(); ++drawn) {
        const EntityLook& entity = LookOf(drawn);
        if (!AnswersForItself(drawn) || NameOfNumber(entity.Kind) == "SEQEND")
            continue;
        const auto [layer, isNewLayer] = layerPlaces.try_emplace(entity.Layer, layers.size());
        if (isNewLayer)
            layers.push_back({entity.Layer, {}});
        std::vector<StateCounts>& states = layers[layer->second].States;
        const auto [state, isNewState] = statePlaces.try_emplace({entity.Layer, entity.State}, states.size());
        if (isNewState)
            states.push_back({entity.State, entity.Named, {}});
        states[state->second].Kinds.Add(drawn, answers[static_cast<std::size_t>(drawn)]);
    }
    return layers;
}

// By the first kind that the layer takes.
LayerWork WorkOfState(std::string_view state, const std::vector<ExplainedKind>& kinds)
{
    for (const ExplainedKind& kind : kinds)
        if (const LayerWork work = WorkOfLayer(state, kind.Kind); TakesKind(work, kind.Kind))
            return work;
    return kinds.empty() ? LayerWork::Nothing : WorkOfLayer(state, kinds.front().Kind);
}

// The number of a route layer, by which routes are ordered; the passes rewrite it.
void AddSequence(ExplainedState& state, std::string_view name)
{
    constexpr Long place = 6;         // behind the five letters of the word
    constexpr std::size_t digits = 3; // at most
    if (state.Work != LayerWork::Route && state.Work != LayerWork::Pocket)
        return;
    const double number = Val(Mid(name, place, digits));
    if (number != 0)
        state.Values.insert(state.Values.begin(),
                            {"number", "place in the order", PlainText(static_cast<Single>(number)), "name"});
}

ExplainedLayer ExplainedFrom(const LayerCounts& counted)
{
    ExplainedLayer layer;
    layer.Name = Shown(counted.Layer);
    bool meansNothing = true;
    for (const StateCounts& state : counted.States) {
        const std::string_view name = NameOfNumber(state.State);
        ExplainedState explained;
        explained.Kinds = state.Kinds.Kinds;
        if (state.Named != 0 && state.Named != counted.Layer)
            explained.Renamed = Shown(state.Named);
        explained.Work = WorkOfState(name, explained.Kinds);
        explained.Values = ValuesOfLayer(name, explained.Work);
        AddSequence(explained, explained.Renamed.empty() ? layer.Name : explained.Renamed);
        meansNothing = meansNothing && explained.Work == LayerWork::Nothing;
        layer.States.push_back(std::move(explained));
    }
    if (meansNothing)
        layer.Nearest = NearestWord(layer.Name);
    return layer;
}

ExplainedPanel PanelOfRun()
{
    ExplainedPanel panel;
    panel.IsKnown = Run.SideWidth[Face] > 0 && Run.SideHeight[Face] > 0;
    panel.Length = Run.SideWidth[Face];
    panel.Width = Run.SideHeight[Face];
    panel.Thickness = Run.PartThickness;
    panel.X = Run.SideMinX[Face];
    panel.Y = Run.SideMinY[Face];
    panel.IsInch = Run.DrawingInInch != False;
    if (const DrawnUnit* const unit = UnitOfDrawing(); unit != nullptr)
        panel.DrawnUnit = unit->Name;
    KindCounts kinds;
    std::set<Long> seen;
    for (const Long drawn : Run.BorderDrawn)
        if (const Long whole = WholeOf(drawn); seen.insert(whole).second)
            kinds.Add(whole, {.Fate = EntityFate::Border});
    panel.From = kinds.Kinds;
    if (!seen.empty())
        panel.BorderLayer = Shown(LookOf(*seen.begin()).Layer);
    return panel;
}

std::vector<ExplainedText> TextsOfRun()
{
    std::vector<ExplainedText> texts;
    for (const TextRead& text : Run.TextsRead)
        texts.push_back({text.Line, text.As, DrawnEntities[text.Drawn].Line});
    return texts;
}

// Entities as drawn by tool: a pocket's many records are one operation.
class ToolUsers {
  public:
    void Add(std::string_view tool, Long drawn)
    {
        if (Trim(tool).empty())
            return;
        std::set<Long>& users = Users[std::string(Trim(tool))];
        for (const Long entity : EntitiesOf(drawn))
            users.insert(DrawnAs(entity));
    }
    std::map<std::string, std::set<Long>> Users;
};

// A text of four digits and more names several drills by two digits each, in groups; a shorter one is one
// tool.
void AddDrills(ToolUsers& tools, std::string_view text, Long drawn)
{
    constexpr std::size_t longestTool = 3, digitsOfDrill = 2;
    std::string digits(Trim(text));
    std::erase_if(digits, [](char c) { return c < '0' || c > '9'; });
    if (digits.size() <= longestTool) {
        if (Val(digits) != 0)
            tools.Add(digits, drawn);
        return;
    }
    for (std::size_t at = 0; at < digits.size(); at += digitsOfDrill)
        tools.Add(digits.substr(at, digitsOfDrill), drawn);
}

void FindToolUsers(ToolUsers& tools)
{
    for (const VBoreRecord& bore : VBores)
        if (bore.Group > 0)
            AddDrills(tools, bore.Tool.Trimmed(), bore.Drawn);
    for (const HeadPosition& stop : HeadPositions)
        AddDrills(tools, stop.Tool.Trimmed(), stop.Drawn);
    for (const HBoreRecord& bore : HBores)
        if (bore.Group > 0)
            AddDrills(tools, bore.Tool.Trimmed(), bore.Drawn);
    for (const RouteSegment& record : RouteSegments)
        if (record.ToolNo > 0)
            tools.Add(WholeText(record.ToolNo), record.Drawn);
    for (const RouteCircle& circle : RouteCircles)
        if (circle.Pass > 0 && circle.ToolNo > 0)
            tools.Add(WholeText(circle.ToolNo), circle.Drawn);
}

// A head's file that cannot be read has no drills; the conversion reports it where it matters.
void LoadHead()
{
    try {
        LoadDrillHead();
    } catch (const RunError&) {
        DrillParameters.assign(1, {});
    }
}

void ExplainTools(Explanation& explanation)
{
    LoadHead();
    const auto last = static_cast<Long>(DrillParameters.size()) - 1;
    explanation.HasHead = last > 0;
    ToolUsers tools;
    FindToolUsers(tools);
    for (const auto& [tool, users] : tools.Users) {
        const double number = Val(tool);
        const bool isDrill =
            number >= 1 && number <= last && DrillParameters[static_cast<std::size_t>(number)].Diameter > 0;
        explanation.Tools.push_back({tool, static_cast<Long>(users.size()), isDrill});
    }
}

void ExplainPrograms(Explanation& explanation, const EntityAnswers& answers)
{
    for (const ProgramTrace& trace : ProgramTraces)
        explanation.Programs.push_back({trace.Path, static_cast<Long>(trace.Drawn.size()), 0});
    for (Long drawn = 1; drawn <= DrawnEntities.Last(); ++drawn)
        if (const EntityAnswer& answer = answers[static_cast<std::size_t>(drawn)];
            answer.Fate == EntityFate::Machined)
            ++explanation.Programs[answer.Program].Entities;
}

// Whole entities as drawn; one that became work by any of its operations counts.
void CountWork(Explanation& explanation, const EntityAnswers& answers)
{
    const LookWorks looks;
    std::set<Long> asking, worked;
    for (Long drawn = 1; drawn <= DrawnEntities.Last(); ++drawn) {
        const LookWork& look = looks.Of(drawn);
        if (!look.Asks || !AnswersForItself(drawn) || look.Kind == "SEQEND" || look.IsText)
            continue;
        const EntityAnswer& answer = answers[static_cast<std::size_t>(drawn)];
        asking.insert(DrawnAs(drawn));
        if ((answer.Fate == EntityFate::Machined && answer.Why == Message::None) ||
            answer.Fate == EntityFate::Read)
            worked.insert(DrawnAs(drawn));
    }
    explanation.Asking = static_cast<Long>(asking.size());
    explanation.Worked = static_cast<Long>(worked.size());
}

} // namespace

Explanation ExplanationOfRun()
{
    Explanation explanation;
    const EntityAnswers answers = AnswersOfRun();
    explanation.IsWhole = RunMarks.Reached > static_cast<int>(RunStage::Programs);
    explanation.Panel = PanelOfRun();
    for (const LayerCounts& layer : CountLayers(answers))
        explanation.Layers.push_back(ExplainedFrom(layer));
    explanation.Texts = TextsOfRun();
    ExplainTools(explanation);
    ExplainPrograms(explanation, answers);
    CountWork(explanation, answers);
    return explanation;
}

} // namespace kv
