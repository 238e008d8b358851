// How the bores of each chain come together, move by move.
#include "drilling/hole_chaining.h"

#include "drilling/head_scene.h"

namespace kv {
namespace {

// A bore by a letter for its chain ("." for none) and its number.
class ChainGathering : public test::HeadScene {
  protected:
    // The chain of the n-th letter has n for its mark.
    static std::string Gathered(const std::string& chains)
    {
        VBores.Clear();
        for (const char chain : chains)
            Bore(static_cast<Single>(VBores.Last() + 1), 0).Group =
                static_cast<Int>(chain == '.' ? 0 : chain - 'a' + 1);
        CountChainSizes();
        GatherChains();
        std::string order;
        for (Long i = 1; i <= VBores.Last(); ++i)
            order += static_cast<char>('0' + static_cast<int>(VBores[i].X));
        return order;
    }
};

TEST_F(ChainGathering, WholeChainsStay)
{
    EXPECT_EQ(Gathered("aaabb."), "123456");
    EXPECT_EQ(Gathered("..."), "123");
    EXPECT_EQ(Gathered("."), "1");
}

TEST_F(ChainGathering, MembersBehindALoneBoreComeToStandBeforeTheFirst)
{
    // At the lone bore 2, 3 and 4 are put in before 1.
    EXPECT_EQ(Gathered("a.aa"), "3412");
}

TEST_F(ChainGathering, AChainOfEqualSizeGivesWay)
{
    // 3 before 1; the bore that then stands at place 2 is 1 itself, with size 2: complete.
    EXPECT_EQ(Gathered("abab"), "3124");
}

TEST_F(ChainGathering, ALargerChainKeepsItsPlace)
{
    // From 1: bore 2 goes behind 4 and counts as seen, 3 moves up and is not looked at; 4 is counted; 2
    // and 5 are put in before 1. List 2 5 1 3 4; then each chain whole at its first place.
    EXPECT_EQ(Gathered("abbab"), "25314");
}

TEST_F(ChainGathering, LoneBoresAreCopiedAcrossInTheirOrder)
{
    // At the lone bore 2 the bore 3 is put in before 1, which then stands at place 2: complete.
    EXPECT_EQ(Gathered("a.a.."), "31245");
}

TEST_F(ChainGathering, TheGatheringMayGoOnAmongItsOwnMembers)
{
    // At 2 the bores 3, 4 and 5 are put in before 1; place 2 then holds 4, of size 4: complete. The walk
    // goes on with place 3, where 5 counts two members and puts nothing elsewhere.
    EXPECT_EQ(Gathered("a.aaa.bb"), "34512678");
}

TEST_F(ChainGathering, RecordsMoveWhole)
{
    Bore(1, 10).Group = 1;
    Bore(2, 20, 5, "0102").ExtraSlot = 7;
    Bore(3, 30).Group = 1;
    CountChainSizes();
    GatherChains();
    ASSERT_EQ(VBores.Last(), 3);
    EXPECT_EQ(VBores[3].X, 2);
    EXPECT_EQ(VBores[3].Tool, "0102");
    EXPECT_EQ(VBores[3].ExtraSlot, 7);
    EXPECT_EQ(VBores[3].Diameter, 5);
    EXPECT_EQ(VBores[0].X, 0);
}

} // namespace
} // namespace kv
