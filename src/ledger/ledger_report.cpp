// Groups the entities by the rule that left them out, their layer and their kind, in the order of the
// drawing.
#include "ledger/ledger_report.h"

#include <map>
#include <tuple>
#include <utility>

#include "drawing/layer_rules.h"
#include "ledger/layer_words.h"
#include "ledger/stage_marks.h"
#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/drawn_names.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr std::size_t MostLayers = 20; // lines of one rule; the further layers share one

// What is reported here; the rest is reported by its pass, or is no doubt.
bool IsOwnRule(Message rule)
{
    return rule >= Message::KindNotMachined && rule <= Message::RouteOnOutlineRemoved;
}

struct LeftGroup {
    Message Rule = Message::None;
    std::string Layer, Kind; // as drawn
    Long State = 0;
    Long Count = 0;
    Long First = 0; // entity
};

// Of some rules each kind has its own line.
bool SplitsKinds(Message rule)
{
    return rule == Message::KindNotMachined || rule == Message::EntityWithoutPoints;
}

class LeftGroups {
  public:
    void Add(Message rule, Long drawn)
    {
        const DrawnEntity& entity = DrawnEntities[drawn];
        const Long kind = SplitsKinds(rule) ? entity.Kind : 0;
        const auto [place, isNew] = Places.try_emplace({rule, entity.Layer, kind}, Groups.size());
        if (isNew)
            Groups.push_back({rule, ShownName(entity.Layer), ShownName(kind), entity.State, 0, drawn});
        ++Groups[place->second].Count;
    }
    std::vector<LeftGroup> Groups;

  private:
    static std::string ShownName(Long number)
    {
        std::string shown(NameOfNumber(number));
        for (char& c : shown)
            if (static_cast<unsigned char>(c) < ' ')
                c = '?';
        return shown;
    }
    std::map<std::tuple<Message, Long, Long>, std::size_t> Places;
};

std::string SwitchedOffSetting(Long drawn)
{
    if (RunMarks.Has(drawn, WorkKind::Bore))
        return "EvVBore";
    if (RunMarks.Has(drawn, WorkKind::EdgeBore))
        return "EvHBore";
    return RunMarks.Has(drawn, WorkKind::Groove) ? "EvGroove" : "EvRoute";
}

std::string BlockOf(Long drawn)
{
    if (RunMarks.Has(drawn, WorkKind::Bore))
        return "V";
    if (RunMarks.Has(drawn, WorkKind::EdgeBore))
        return "H";
    return RunMarks.Has(drawn, WorkKind::Groove) ? "G" : "R";
}

MessageValues ValuesOf(const LeftGroup& group)
{
    MessageValues values = {{"layer", group.Layer}, {"count", group.Count}};
    switch (group.Rule) {
    case Message::KindNotMachined:
    case Message::EntityWithoutPoints:
        values.emplace_back("kind", group.Kind);
        values.emplace_back("kinds", KindsOf(WorkOfLayer(NameOfNumber(group.State), group.Kind)));
        break;
    case Message::LayerNearWord:
        values.emplace_back("word", NearestWord(group.Layer));
        break;
    case Message::BlockNotInSequence:
        values.emplace_back("letter", BlockOf(group.First));
        values.emplace_back("sequence", Trim(RunMarks.Sequence));
        break;
    case Message::ClassSwitchedOff:
        values.emplace_back("setting", SwitchedOffSetting(group.First));
        break;
    default:
        break;
    }
    return WithPlace(std::move(values), group.First);
}

// Names of layers by number, since a drawing has many entities and few layers.
class NearWords {
  public:
    bool IsNear(Long layer)
    {
        const auto known = Near.find(layer);
        if (known != Near.end())
            return known->second;
        return Near[layer] = !NearestWord(NameOfNumber(layer)).empty();
    }

  private:
    std::map<Long, bool> Near;
};

LeftGroups GroupsOf(const EntityAnswers& answers)
{
    LeftGroups groups;
    NearWords near;
    for (Long drawn = 1; drawn <= DrawnEntities.Last(); ++drawn) {
        const EntityAnswer& answer = answers[static_cast<std::size_t>(drawn)];
        if (!AnswersForItself(drawn))
            continue;
        const DrawnEntity& entity = DrawnEntities[drawn];
        const bool isCopy = entity.CopyOf != 0;
        if (answer.Fate == EntityFate::MeansNothing && !isCopy && !IsTextKind(NameOfNumber(entity.Kind)) &&
            near.IsNear(entity.Layer))
            groups.Add(Message::LayerNearWord, drawn);
        else if (answer.Why == Message::MtextNotRead && !isCopy)
            groups.Add(answer.Why, drawn);
        else if (answer.Fate == EntityFate::Left && IsOwnRule(answer.Why) &&
                 (AsksForWork(WorkOfLayer(NameOfNumber(entity.State), NameOfNumber(entity.Kind)))))
            groups.Add(answer.Why, drawn);
    }
    return groups;
}

void RefuseLost(const EntityAnswers& answers)
{
    for (Long drawn = 1; drawn <= DrawnEntities.Last(); ++drawn) {
        if (answers[static_cast<std::size_t>(drawn)].Fate != EntityFate::Lost)
            continue;
        throw RunError{ErrorInvalidCall,
                       DrawnKindOf(drawn) + " in line " +
                           WholeText(static_cast<long long>(DrawnEntities[drawn].Line)) + " on layer " +
                           DrawnLayerOf(drawn) +
                           " is in no program, and no rule leaves it out; this is a fault of "
                           "Korvanti"};
    }
}

void ReportGroups(const LeftGroups& left)
{
    std::map<Message, std::size_t> lines;
    std::map<Message, Long> further;
    for (const LeftGroup& group : left.Groups) {
        if (++lines[group.Rule] <= MostLayers)
            Tell(group.Rule, ValuesOf(group));
        else
            ++further[group.Rule];
    }
    for (const auto& [rule, count] : further)
        Tell(Message::FurtherLayers, {{"count", count}, {"message", static_cast<long long>(rule)}});
}

} // namespace

void ReportLeftOut(const EntityAnswers& answers)
{
    RefuseLost(answers);
    ReportGroups(GroupsOf(answers));
}

void ReportNearWords(const EntityAnswers& answers)
{
    LeftGroups near = GroupsOf(answers);
    std::erase_if(near.Groups, [](const LeftGroup& group) { return group.Rule != Message::LayerNearWord; });
    ReportGroups(near);
}

} // namespace kv
