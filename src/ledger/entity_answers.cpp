// Relies on the marks of all stages and on the lines of the programs; asks the rules only about what is in no
// program.
#include "ledger/entity_answers.h"

#include <algorithm>
#include <array>

#include "ledger/block_work.h"
#include "ledger/left_out.h"
#include "ledger/look_works.h"
#include "ledger/stage_marks.h"
#include "state/drawn_entities.h"
#include "state/run.h"
#include "writers/program_lines.h"

namespace kv {

namespace {

constexpr std::array<std::string_view, 7> FateNames = {"machined",      "border",    "read", "left",
                                                       "means nothing", "unreached", "lost"};

const EntityAnswer& AnswerOf(const EntityAnswers& answers, Long drawn)
{
    return answers[static_cast<std::size_t>(drawn)];
}

// What the parts have, such as vertices, their whole has too. Most entities of a large drawing have no mark.
void GatherParts()
{
    std::vector<std::uint16_t>& marks = RunMarks.Of;
    for (std::size_t drawn = 1; drawn < marks.size(); ++drawn)
        if (marks[drawn] != 0)
            marks[static_cast<std::size_t>(WholeOf(static_cast<Long>(drawn)))] |= marks[drawn];
}

void CountLine(EntityAnswers& answers, Long whole, std::size_t program, Long line)
{
    EntityAnswer& answer = answers.Own(whole);
    answer.Fate = EntityFate::Machined;
    if (answer.Lines == 0) {
        if (RunMarks.IsUncleared(whole)) // the outline of a pocket that is cut as a plain route
            answer.Why = Message::PocketNotCleared;
        answer.Program = static_cast<std::uint32_t>(program);
        answer.FirstLine = line;
    }
    ++answer.Lines;
}

// An entity that several records of one line come from counts once for it.
void CountLines(EntityAnswers& answers)
{
    std::vector<Long> wholes;
    for (std::size_t program = 0; program < ProgramTraces.size(); ++program) {
        Long line = 0;
        for (const Long number : ProgramTraces[program].Drawn) {
            ++line;
            if (number == 0)
                continue;
            wholes.clear();
            for (const Long drawn : EntitiesOf(number))
                if (std::find(wholes.begin(), wholes.end(), WholeOf(drawn)) == wholes.end())
                    wholes.push_back(WholeOf(drawn));
            for (const Long whole : wholes)
                CountLine(answers, whole, program, line);
        }
    }
}

void MarkBorder(EntityAnswers& answers)
{
    for (const Long drawn : Run.BorderDrawn)
        if (const Long whole = WholeOf(drawn); AnswerOf(answers, whole).Fate == EntityFate::Unreached)
            answers.Share(whole, EntityFate::Border, Message::None);
}

void MarkTexts(EntityAnswers& answers)
{
    for (const TextRead& text : Run.TextsRead)
        answers.Own(text.Drawn).Fate = EntityFate::Read;
}

struct Judgement {
    EntityFate Fate = EntityFate::Unreached;
    Message Why = Message::None;
};

Judgement LeftBy(Message rule)
{
    return {rule == Message::None ? EntityFate::Lost : EntityFate::Left, rule};
}

// The run ended before the writers: nothing more is known of what had been taken.
bool HasReached(RunStage stage)
{
    return RunMarks.Reached > static_cast<int>(stage);
}

// MTEXT is read for instructions alone.
bool IsUnreadMtext(std::string_view kind, LayerWork work)
{
    return kind == "MTEXT" && work == LayerWork::Text;
}

Judgement JudgeWithoutWork(Long drawn, const LookWork& look, const LeftOutRules& rules)
{
    if (look.Work == LayerWork::Nothing && look.Kind == "INSERT" && WorkInBlock(drawn) != nullptr)
        return LeftBy(Message::BlockHoldsWork);
    if (look.Work == LayerWork::Nothing)
        return {EntityFate::MeansNothing};
    if (look.IsText && !look.Asks)
        return LeftBy(IsUnreadMtext(look.Kind, look.Work) ? Message::MtextNotRead : Message::TextNotMachined);
    if (!look.Asks) // a border that no panel was found from has been left out by no rule
        return HasReached(RunStage::Operations) ? LeftBy(Message::KindNotMachined) : Judgement{};
    return HasReached(RunStage::Routes) ? LeftBy(rules.WhyWithoutWork(drawn)) : Judgement{};
}

Judgement Judge(Long drawn, const LookWork& look, const LeftOutRules& rules)
{
    if (Run.NoCode != 0 && !HasReached(RunStage::Routes) && !look.IsText)
        return LeftBy(Message::CodeTurnedOff);
    if (RunMarks.IsStartMark(drawn))
        return {EntityFate::Read};
    if (!RunMarks.HasRecord(drawn))
        return JudgeWithoutWork(drawn, look, rules);
    const bool isWritten = HasReached(RunStage::Programs) && Run.RunFailed == False;
    return isWritten ? LeftBy(rules.WhyLeftOut(drawn)) : Judgement{};
}

void JudgeTheRest(EntityAnswers& answers)
{
    const LookWorks looks;
    const LeftOutRules rules;
    for (Long drawn = 1; drawn <= DrawnEntities.Last(); ++drawn) {
        if (!AnswersForItself(drawn) || AnswerOf(answers, drawn).Fate != EntityFate::Unreached)
            continue;
        const Judgement judged = Judge(drawn, looks.Of(drawn), rules);
        if (judged.Fate != EntityFate::Unreached)
            answers.Share(drawn, judged.Fate, judged.Why);
    }
}

} // namespace

std::string FateName(EntityFate fate)
{
    return std::string(FateNames[static_cast<std::size_t>(fate)]);
}

bool AnswersForItself(Long drawn)
{
    return WholeOf(drawn) == drawn;
}

bool EntityAnswers::HasAny(EntityFate fate) const
{
    return std::any_of(Answers.begin(), Answers.end(),
                       [&](const EntityAnswer& answer) { return answer.Fate == fate; });
}

EntityAnswer& EntityAnswers::Own(Long drawn)
{
    std::uint32_t& row = Rows[static_cast<std::size_t>(drawn)];
    if (row == 0) {
        row = static_cast<std::uint32_t>(Answers.size());
        Answers.emplace_back();
    }
    return Answers[row];
}

void EntityAnswers::FindShared(EntityFate fate, Message why)
{
    const auto next = static_cast<std::uint32_t>(Answers.size());
    const auto [row, isNew] = Shared.try_emplace({fate, why}, next);
    if (isNew)
        Answers.push_back({why, 0, 0, 0, fate});
    LastShared = row->second;
}

EntityAnswers AnswersOfRun()
{
    EntityAnswers answers(DrawnEntities.Last());
    GatherParts();
    CountLines(answers);
    MarkTexts(answers);
    MarkBorder(answers);
    JudgeTheRest(answers);
    return answers;
}

} // namespace kv
