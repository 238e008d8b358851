// Relies on the marks of the stages, on the messages that passes told about the entity's layer, and, for the
// last stage, on what the writers had before them: each rule is looked up in the settings once more.
#include "ledger/left_out.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string>

#include "drawing/layer_rules.h"
#include "ledger/layer_words.h"
#include "ledger/stage_marks.h"
#include "state/drawn_entities.h"
#include "state/drawn_names.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr Int Evolution = 2; // control system

// As messages name it.
std::string ReportedLayer(Long drawn)
{
    return ShownLayer(NameOfNumber(LookOf(drawn).State));
}

// The first of the messages that was told about the entity's layer.
Message ToldAbout(Long drawn, std::initializer_list<Message> messages)
{
    const std::string layer = ReportedLayer(drawn);
    for (const Message message : messages)
        if (WasTold(message, layer))
            return message;
    return Message::None;
}

Message WhyNoRoute(Long drawn)
{
    return ToldAbout(drawn, {Message::RouteToolBelowZero, Message::RouteSequenceOutOfRange,
                             Message::PolylinesWithoutLength});
}

Message WhyNoPocket(Long drawn)
{
    return ToldAbout(drawn,
                     {Message::PocketNotCleared, Message::PocketWithoutMark, Message::PocketOutlineOpen,
                      Message::PocketMeetsMark, Message::PocketPointNoNumber, Message::PocketEnclosesNothing,
                      Message::PocketThroughPoints, Message::PocketInnerOpen, Message::PocketCrossesItself,
                      Message::PocketCrossesAnother, Message::PocketToolUnknown, Message::PocketPitchUnknown,
                      Message::PocketTooNarrow, Message::PocketWaysTooMany, Message::PocketWithoutSoundWay,
                      Message::PocketNoCircle, Message::PocketNoRectangle, Message::PocketNarrowerThanTool});
}

void AddTo(std::vector<bool>& set, Long number)
{
    for (const Long drawn : EntitiesOf(number))
        set[static_cast<std::size_t>(WholeOf(drawn))] = true;
}

bool IsIn(const std::vector<bool>& set, Long drawn)
{
    return set[static_cast<std::size_t>(drawn)];
}

bool IsSwitchedOff(Long drawn)
{
    if (RunMarks.Has(drawn, WorkKind::Bore))
        return !Config.EvVBore;
    if (RunMarks.Has(drawn, WorkKind::EdgeBore))
        return !Config.EvHBore;
    if (RunMarks.Has(drawn, WorkKind::Groove))
        return !Config.EvGroove;
    return !Config.EvRoute;
}

Message WhyNotInEvolution(Long drawn)
{
    if (IsSwitchedOff(drawn))
        return Message::ClassSwitchedOff;
    return RunMarks.Has(drawn, WorkKind::Circle) ? Message::CircleNotWritten : Message::None;
}

bool IsDrilled(Long drawn)
{
    return RunMarks.Has(drawn, WorkKind::Bore) || RunMarks.Has(drawn, WorkKind::EdgeBore);
}

Message WhyNotInCncProgram(Long drawn)
{
    if (RunMarks.Sequence.find(BlockLetter(drawn)) == std::string::npos)
        return Message::BlockNotInSequence;
    for (const Message cut : {Message::PortionReplaced, Message::ProgramCut})
        if (WasTold(cut))
            return cut;
    if (WasTold(Message::LineReplaced, ReportedLayer(drawn)))
        return Message::LineReplaced;
    const bool alternates = Val(Config.DRAlternate) != 0 || Run.DrAlt != 0;
    return alternates && IsDrilled(drawn) ? Message::DroppedByAlternation : Message::None;
}

bool IsNear(Single a, Single b)
{
    constexpr double near = 0.2; // drawing units, inches too
    return std::fabs(static_cast<double>(a) - b) < near;
}

} // namespace

char BlockLetter(Long drawn)
{
    if (RunMarks.Has(drawn, WorkKind::Bore))
        return 'V';
    if (RunMarks.Has(drawn, WorkKind::EdgeBore))
        return 'H';
    return RunMarks.Has(drawn, WorkKind::Groove) ? 'G' : 'R';
}

TwinBores TwinsOf(Long drawn)
{
    const std::vector<BorePlace>& bores = RunMarks.Bores;
    const auto own =
        std::find_if(bores.begin(), bores.end(), [&](const BorePlace& bore) { return bore.Drawn == drawn; });
    if (own == bores.end())
        return {};
    const auto other = std::find_if(bores.begin(), bores.end(), [&](const BorePlace& bore) {
        return IsNear(bore.X, own->X) && IsNear(bore.Y, own->Y) && IsNear(bore.Diameter, own->Diameter) &&
               RunMarks.Has(bore.Drawn, RunStage::Optimized);
    });
    return other == bores.end() ? TwinBores{} : TwinBores{own->Depth, other->Depth, true};
}

LeftOutRules::LeftOutRules()
{
    const auto entities = static_cast<std::size_t>(DrawnEntities.Last()) + 1;
    for (EntitySet* const set : {&HalfGrooves, &AskewGrooves, &StopsWithoutTools, &MirrorImages})
        set->resize(entities);
    for (const GrooveRecord& groove : Grooves)
        AddTo(groove.Width < 0 ? HalfGrooves : AskewGrooves, groove.Drawn);
    for (const HeadPosition& stop : HeadPositions)
        if (stop.Tool.Trimmed().empty())
            AddTo(StopsWithoutTools, stop.Drawn);
    for (const VBoreRecord& bore : VBores)
        if (bore.Group == 0)
            AddTo(MirrorImages, bore.Drawn);
}

Message LeftOutRules::WhyNotAfterOperations(Long drawn) const
{
    const EntityLook& look = LookOf(drawn);
    const std::string_view kind = NameOfNumber(look.Kind);
    switch (WorkOfLayer(NameOfNumber(look.State), kind)) {
    case LayerWork::EdgeBore:
        if (kind == "CIRCLE")
            return Message::EdgeBoreInNoView;
        return WasTold(Message::EdgeLinesWithoutBore) ? Message::EdgeLinesWithoutBore : Message::None;
    case LayerWork::Groove:
        if (IsIn(HalfGrooves, drawn))
            return Message::GrooveHalf;
        return IsIn(AskewGrooves, drawn) ? Message::GrooveAskew : Message::None;
    default:
        return Message::None;
    }
}

Message LeftOutRules::WhyNotWritten(Long drawn) const
{
    if (Run.CncOff != 0)
        return Message::ProgramsSwitchedOff;
    if (RunMarks.Has(drawn, WorkKind::Bore) && IsIn(MirrorImages, drawn))
        return Message::MirrorImage;
    return Run.ControlType == Evolution ? WhyNotInEvolution(drawn) : WhyNotInCncProgram(drawn);
}

Message LeftOutRules::WhyNotInAStop(Long drawn) const
{
    if (IsIn(StopsWithoutTools, drawn))
        return Message::StopWithoutDrill;
    const TwinBores twins = TwinsOf(drawn);
    if (!twins.Found)
        return Message::None;
    return twins.Depth == twins.OtherDepth ? Message::DoubleBore : Message::DoubleBoreOfOtherDepth;
}

Message LeftOutRules::WhyLeftOut(Long drawn) const
{
    switch (RunMarks.LastStage(drawn)) {
    case RunStage::Operations:
        return WhyNotAfterOperations(drawn);
    case RunStage::Routes:
    case RunStage::Chained:
        if (const Message told = WhyNoRoute(drawn); told != Message::None)
            return told;
        return WhyNoPocket(drawn);
    case RunStage::Tour:
        return WhyNotInAStop(drawn);
    case RunStage::Final:
        return WhyNotWritten(drawn);
    case RunStage::Pockets:
    case RunStage::Optimized:
    case RunStage::Leads:
    case RunStage::Programs:
        break;
    }
    return Message::None;
}

Message LeftOutRules::WhyWithoutWork(Long drawn) const
{
    const std::string_view kind = NameOfNumber(LookOf(drawn).Kind);
    if (IsTextKind(kind))
        return Message::TextNotMachined;
    const LayerWork work = WorkOfLayer(NameOfNumber(LookOf(drawn).State), kind);
    if (work == LayerWork::Route || work == LayerWork::Pocket) {
        const Message told = ToldAbout(
            drawn, {Message::EntitiesInEdgePlane, Message::LinesWithoutLength, Message::ArcsWithoutLength,
                    Message::CirclesWithoutRadius, Message::PolylinesWithoutLength,
                    Message::EntitiesOfUnknownKind, Message::NoIslandOfUnknownKind});
        if (told != Message::None || Run.RemoveBorder == False)
            return told;
        return kind == "POLYLINE" ? Message::RouteOnOutlineRemoved : Message::None;
    }
    return TakesKind(work, kind) ? Message::EntityWithoutPoints : Message::KindNotMachined;
}

} // namespace kv
