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

EntityAnswer& AnswerOf(EntityAnswers& answers, Long drawn)
{
    return answers[static_cast<std::size_t>(drawn)];
}

// What the parts have, such as vertices, their whole has too.
void GatherParts()
{
    RunMarks.Of.resize(static_cast<std::size_t>(DrawnEntities.Last()) + 1);
    for (Long drawn = 1; drawn <= DrawnEntities.Last(); ++drawn)
        if (const Long whole = WholeOf(drawn); whole != drawn)
            RunMarks.Of[static_cast<std::size_t>(whole)] |= RunMarks.Of[static_cast<std::size_t>(drawn)];
}

void CountLine(EntityAnswer& answer, std::size_t program, Long line)
{
    answer.Fate = EntityFate::Machined;
    if (answer.Lines == 0) {
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
                CountLine(AnswerOf(answers, whole), program, line);
        }
    }
}

void MarkBorder(EntityAnswers& answers)
{
    for (const Long drawn : Run.BorderDrawn) {
        EntityAnswer& answer = AnswerOf(answers, WholeOf(drawn));
        if (answer.Fate == EntityFate::Unreached)
            answer.Fate = EntityFate::Border;
    }
}

void MarkTexts(EntityAnswers& answers)
{
    for (const TextRead& text : Run.TextsRead)
        AnswerOf(answers, text.Drawn).Fate = EntityFate::Read;
}

// Outlines of pockets that are cut as plain routes.
void NoteUncleared(EntityAnswers& answers)
{
    for (Long drawn = 1; drawn <= DrawnEntities.Last(); ++drawn)
        if (EntityAnswer& answer = AnswerOf(answers, drawn);
            answer.Fate == EntityFate::Machined && RunMarks.IsUncleared(drawn))
            answer.Why = Message::PocketNotCleared;
}

void LeaveBy(EntityAnswer& answer, Message rule)
{
    answer.Fate = rule == Message::None ? EntityFate::Lost : EntityFate::Left;
    answer.Why = rule;
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

void JudgeWithoutWork(EntityAnswer& answer, Long drawn, const LookWork& look, const LeftOutRules& rules)
{
    if (look.Work == LayerWork::Nothing && look.Kind == "INSERT" && WorkInBlock(drawn) != nullptr)
        LeaveBy(answer, Message::BlockHoldsWork);
    else if (look.Work == LayerWork::Nothing)
        answer.Fate = EntityFate::MeansNothing;
    else if (look.IsText && !look.Asks)
        LeaveBy(answer,
                IsUnreadMtext(look.Kind, look.Work) ? Message::MtextNotRead : Message::TextNotMachined);
    else if (!look.Asks) { // a border that no panel was found from has been left out by no rule
        if (HasReached(RunStage::Operations))
            LeaveBy(answer, Message::KindNotMachined);
    } else if (HasReached(RunStage::Routes))
        LeaveBy(answer, rules.WhyWithoutWork(drawn));
}

void Judge(EntityAnswer& answer, Long drawn, const LookWork& look, const LeftOutRules& rules)
{
    if (answer.Fate != EntityFate::Unreached)
        return;
    if (Run.NoCode != 0 && !HasReached(RunStage::Routes) && !look.IsText)
        LeaveBy(answer, Message::CodeTurnedOff);
    else if (RunMarks.IsStartMark(drawn))
        answer.Fate = EntityFate::Read;
    else if (!RunMarks.HasRecord(drawn))
        JudgeWithoutWork(answer, drawn, look, rules);
    else if (HasReached(RunStage::Programs) && Run.RunFailed == False)
        LeaveBy(answer, rules.WhyLeftOut(drawn));
}

} // namespace

std::string FateName(EntityFate fate)
{
    return std::string(FateNames[static_cast<std::size_t>(fate)]);
}

bool AnswersForItself(Long drawn)
{
    return DrawnEntities[drawn].Owner == 0;
}

EntityAnswers AnswersOfRun()
{
    EntityAnswers answers(static_cast<std::size_t>(DrawnEntities.Last()) + 1);
    GatherParts();
    CountLines(answers);
    NoteUncleared(answers);
    MarkBorder(answers);
    MarkTexts(answers);
    const LookWorks looks;
    const LeftOutRules rules;
    for (Long drawn = 1; drawn <= DrawnEntities.Last(); ++drawn)
        if (AnswersForItself(drawn))
            Judge(AnswerOf(answers, drawn), drawn, looks.Of(drawn), rules);
    return answers;
}

} // namespace kv
