// The word that a name nearly spells, and the words that ask for work.
#include "ledger/layer_words.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

TEST(NearestWord, OneSlipOfThePenIsNear)
{
    EXPECT_EQ(NearestWord("VBOR_D35"), "VBORE");   // a letter missing
    EXPECT_EQ(NearestWord("VVBORE_D35"), "VBORE"); // one too many
    EXPECT_EQ(NearestWord("VBORW_D35"), "VBORE");  // another one
    EXPECT_EQ(NearestWord("VBROE_D35"), "VBORE");  // two exchanged
    EXPECT_EQ(NearestWord("vbroeZ12D5"), "VBORE");
    EXPECT_EQ(NearestWord("VBORZ12D5"), "VBORE");
    EXPECT_EQ(NearestWord("BODER_Z19"), "BORDER");
    EXPECT_EQ(NearestWord("BODERLL Z19"), "BORDER");
    EXPECT_EQ(NearestWord("GROVE Z8"), "GROOVE");
    EXPECT_EQ(NearestWord("GROOV"), "GROOVE");
    EXPECT_EQ(NearestWord("ECXAV_Z5"), "EXCAV");
    EXPECT_EQ(NearestWord("RUOTE1"), "ROUTE");
    EXPECT_EQ(NearestWord("DRILING"), "DRILLING");
    EXPECT_EQ(NearestWord("NAMES"), "NAME");
    EXPECT_EQ(NearestWord("V-BORE_D5"), "VBORE");
}

TEST(NearestWord, OtherWordsAreNotNear)
{
    for (const char* const name :
         {"",       "0",     "DEFPOINTS", "TEXT",     "DIMENSIONS", "HATCH", "NAMEPLATE", "DOOR",
          "SIDE",   "BOARD", "BORDEAUX",  "VIEWPORT", "A",          "VB",    "NOTES",     "FRAME",
          "LAYER1", "WOOD",  "PANTONE",   "ROOT",     "RUT",        "EXTRA", "HOLE"})
        EXPECT_EQ(NearestWord(name), "") << name;
}

TEST(LayerWork, IsTheOneThatTheKindCanHave)
{
    EXPECT_EQ(WorkOfLayer("VBORE_D5", "CIRCLE"), LayerWork::Drilling);
    EXPECT_EQ(WorkOfLayer("RILLI", "POINT"), LayerWork::Drilling); // a piece of "DRILLING"
    EXPECT_EQ(WorkOfLayer("HBORE_Z9", "LINE"), LayerWork::EdgeBore);
    EXPECT_EQ(WorkOfLayer("MY GROOVE", "LINE"), LayerWork::Groove);
    EXPECT_EQ(WorkOfLayer("XROUTE", "ARC"), LayerWork::Route);
    EXPECT_EQ(WorkOfLayer("EXCAV_Z5", "LINE"), LayerWork::Pocket);
    EXPECT_EQ(WorkOfLayer("BORDER_ROUTE", "SOLID"), LayerWork::Route);
    EXPECT_EQ(WorkOfLayer("BORDER_Z19", "LINE"), LayerWork::Border);
    EXPECT_EQ(WorkOfLayer("NAME", "TEXT"), LayerWork::Text);
    EXPECT_EQ(WorkOfLayer("0", "LINE"), LayerWork::Nothing);
}

} // namespace
} // namespace kv
