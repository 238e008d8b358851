// No entity of a random drawing is lost: each that asks for work is in a program, or a rule has left it out.
#include <gtest/gtest.h>

#include <string>

#include "ledger/entity_answers.h"
#include "proof/shop.h"
#include "state/drawn_entities.h"
#include "state/settings.h"
#include "support/leaving_drawings.h"
#include "support/random_drawings.h"
#include "support/random_rounds.h"
#include "support/source_files.h"

namespace kv::test {
namespace {

class NothingIsLost : public testing::TestWithParam<Control> {};

INSTANTIATE_TEST_SUITE_P(AllControls, NothingIsLost,
                         testing::Values(Control::Cnc90, Control::Genesis, Control::Evolution),
                         [](const auto& named) { return std::string(ShownControl(named.param)); });

void SetTheShop(unsigned round)
{
    Config.Optimizer = round % 3 == 0 ? "1" : "0";
    Config.DRAlternate = round % 4 == 1 ? "1" : "0";
    Config.Pockets = round % 2 == 0 ? "any" : "";
    Config.Sequence = round % 7 == 2 ? "RHVV" : "VGHR";
    Config.EvRoute = round % 11 != 3;
    Config.RemoveBorderRoute = round % 5 == 4 ? 1 : 0;
    Config.LeadS = round % 2 == 1 ? 1 : 0;
}

TEST_P(NothingIsLost, OfRandomDrawings)
{
    Shop shop(GetParam());
    shop.AddHorizontalMachine();
    Config.HBDVBoreLimit = "60";
    shop.Home.Write("DT.Par", FileBytes(SourceFolder / "examples" / "install" / "DT.Par"));
    long machined = 0, left = 0;
    const AtStage look("programs", [&] {
        const EntityAnswers answers = AnswersOfRun();
        for (Long drawn = 1; drawn <= DrawnEntities.Last(); ++drawn) {
            machined += answers[static_cast<std::size_t>(drawn)].Fate == EntityFate::Machined ? 1 : 0;
            left += answers[static_cast<std::size_t>(drawn)].Fate == EntityFate::Left ? 1 : 0;
        }
    });
    const unsigned seed = Seed(9100);
    for (int round = 0; round < Rounds(400); ++round) {
        const unsigned own = seed + static_cast<unsigned>(round);
        kv::Run.ControlType = static_cast<Int>(GetParam());
        SetTheShop(own);
        shop.Home.Convert(round % 5 == 0 ? LeavingDrawing(own).Drawn() : RandomDrawing(own));
        ASSERT_EQ(shop.Home.ReportText().find("no rule leaves it out"), std::string::npos)
            << "seed " << own << "\n"
            << shop.Home.ReportText();
    }
    EXPECT_GT(machined, 10 * Rounds(400));
    EXPECT_GT(left, Rounds(400) / 4);
}

} // namespace
} // namespace kv::test
