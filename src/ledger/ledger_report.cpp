// Groups the entities by the rule that left them out, their layer and their kind, in the order of the
// drawing.
#include "ledger/ledger_report.h"

#include <map>
#include <tuple>
#include <utility>

#include "drawing/layer_rules.h"
#include "ledger/block_work.h"
#include "ledger/layer_words.h"
#include "ledger/left_out.h"
#include "ledger/look_works.h"
#include "ledger/stage_marks.h"
#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/drawn_names.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr std::size_t LayerLetters = 114; // that are read
constexpr std::size_t MostLayers = 20;    // lines of one rule; the further layers share one

// What is reported here; the rest is reported by its pass, or is no doubt.
bool IsOwnRule(Message rule)
{
    return rule >= Message::KindNotMachined && rule <= Message::DoubleBoreOfOtherDepth;
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
        const EntityLook& entity = LookOf(drawn);
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

void AddBlock(MessageValues& values, Long insert)
{
    values.emplace_back("block", BlockOfInsert(DrawnAs(insert)));
    const BlockPart* const work = WorkInBlock(insert);
    values.emplace_back("kind", work == nullptr ? std::string() : work->Kind);
    values.emplace_back("inner", work == nullptr ? std::string() : work->Layer);
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
        values.emplace_back("letter", std::string(1, BlockLetter(group.First)));
        values.emplace_back("sequence", Trim(RunMarks.Sequence));
        break;
    case Message::ClassSwitchedOff:
        values.emplace_back("setting", SwitchedOffSetting(group.First));
        break;
    case Message::BlockHoldsWork:
        AddBlock(values, group.First);
        break;
    case Message::DoubleBoreOfOtherDepth:
        values.emplace_back("depth", PlainText(TwinsOf(group.First).Depth));
        values.emplace_back("other", PlainText(TwinsOf(group.First).OtherDepth));
        break;
    case Message::LayerNameCut:
        values.emplace_back("length", static_cast<long long>(group.Layer.size()));
        values.emplace_back("rest", group.Layer.substr(LayerLetters));
        break;
    default:
        break;
    }
    return WithPlace(std::move(values), group.First);
}

// What is said of a layer whatever its entities become. By number, since a drawing has many entities and few
// layers.
class LayerDoubts {
  public:
    bool IsNearWord(Long layer) { return Of(layer).IsNear; }
    bool IsCut(Long layer) { return Of(layer).IsCut; }

  private:
    struct Doubts {
        bool IsNear = false, IsCut = false;
    };
    const Doubts& Of(Long layer)
    {
        if (layer == Last && LastDoubts != nullptr)
            return *LastDoubts;
        const auto [known, isNew] = Known.try_emplace(layer);
        if (isNew) {
            const std::string_view name = NameOfNumber(layer);
            known->second = {!NearestWord(name).empty(), name.size() > LayerLetters};
        }
        Last = layer;
        LastDoubts = &known->second;
        return known->second;
    }

    std::map<Long, Doubts> Known;
    Long Last = 0;
    const Doubts* LastDoubts = nullptr;
};

bool IsReportedHere(const EntityAnswer& answer, Long drawn, const LookWork& look)
{
    if (answer.Why == Message::MtextNotRead || answer.Why == Message::BlockHoldsWork)
        return CopyOf(drawn) == 0;
    return answer.Fate == EntityFate::Left && IsOwnRule(answer.Why) && look.Asks;
}

LeftGroups GroupsOf(const EntityAnswers& answers)
{
    LeftGroups groups;
    LayerDoubts layers;
    const LookWorks looks;
    for (Long drawn = 1; drawn <= DrawnEntities.Last(); ++drawn) {
        const EntityAnswer& answer = answers[static_cast<std::size_t>(drawn)];
        if (!AnswersForItself(drawn))
            continue;
        const LookWork& look = looks.Of(drawn);
        const Long layer = LookOf(drawn).Layer;
        const bool isCopy = CopyOf(drawn) != 0;
        if (!isCopy && answer.Fate != EntityFate::MeansNothing && layers.IsCut(layer))
            groups.Add(Message::LayerNameCut, drawn);
        if (answer.Fate == EntityFate::MeansNothing && !isCopy && !look.IsText && layers.IsNearWord(layer))
            groups.Add(Message::LayerNearWord, drawn);
        else if (IsReportedHere(answer, drawn, look))
            groups.Add(answer.Why, drawn);
    }
    return groups;
}

void RefuseLost(const EntityAnswers& answers)
{
    if (!answers.HasAny(EntityFate::Lost))
        return;
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
    std::erase_if(near.Groups, [](const LeftGroup& group) {
        return group.Rule != Message::LayerNearWord && group.Rule != Message::BlockHoldsWork &&
               group.Rule != Message::LayerNameCut;
    });
    ReportGroups(near);
}

} // namespace kv
