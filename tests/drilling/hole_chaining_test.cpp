// Duplicates, chains and their sizes, by hand where a rule can be seen.
#include "drilling/hole_chaining.h"

#include "drilling/head_scene.h"

namespace kv {
namespace {

using Ints = std::vector<Int>;

class HoleChaining : public test::HeadScene {
  protected:
    static Ints Marks()
    {
        Ints marks;
        for (Long i = 1; i <= VBores.Last(); ++i)
            marks.push_back(VBores[i].Group);
        return marks;
    }
    static Ints Sizes()
    {
        CountChainSizes();
        Ints sizes;
        for (Long i = 1; i <= VBores.Last(); ++i)
            sizes.push_back(VBores[i].Speed);
        return sizes;
    }
    static Ints Pitches()
    {
        Ints pitches;
        for (Long i = 1; i <= VBores.Last(); ++i)
            pitches.push_back(VBores[i].Pitch);
        return pitches;
    }
    static Ints ChainsFound()
    {
        ClearChains();
        FindChains();
        return Marks();
    }
    // Five drills of 8 mm along X, four along Y.
    static void PutHeadOfEights() { PutHead(AndRowY(RowX({8, 8, 8, 8, 8}), {0, 32, 64, 96})); }
};

// Duplicates

TEST_F(HoleChaining, TheFirstOfDuplicatesStaysWhateverTheirDepths)
{
    Bore(100, 100).Depth = 12;
    Bore(300, 100);
    Bore(100.125F, 99.875F).Depth = 5;
    Bore(100, 100).Depth = 3;
    RemoveDuplicateBores();
    ASSERT_EQ(VBores.Last(), 2);
    EXPECT_EQ(VBores[1].Depth, 12);
    EXPECT_EQ(VBores[2].X, 300);
}

TEST_F(HoleChaining, DuplicatesStandLessThan02ApartInXAndYAndDiameter)
{
    Bore(0, 0);
    Bore(0.2F, 0);
    Bore(0, -0.2F);
    Bore(0, 0, 8.25F);
    Bore(0, 0, 8.125F);  // a duplicate
    Bore(0.19F, -0.19F); // one too
    RemoveDuplicateBores();
    ASSERT_EQ(VBores.Last(), 4);
    EXPECT_EQ(VBores[4].Diameter, 8.25F);
}

TEST_F(HoleChaining, ADuplicateTakesNoFurtherBoreWithIt)
{
    Bore(0, 0);
    Bore(0.15F, 0);
    Bore(0.3F, 0); // near the second alone
    RemoveDuplicateBores();
    ASSERT_EQ(VBores.Last(), 2);
    EXPECT_EQ(VBores[2].X, 0.3F);
}

TEST_F(HoleChaining, DuplicatesAreToldInDrawingUnitsAlsoInInches)
{
    kv::Run.UnitFactor = 25.4F;
    Bore(1, 1, 0.25F);
    Bore(1.15F, 1, 0.25F); // nearly 4 mm away
    RemoveDuplicateBores();
    EXPECT_EQ(VBores.Last(), 1);
}

TEST_F(HoleChaining, DuplicatesAreTakenOutBeforeDiametersOfNamedTools)
{
    // The drawing's diameters count: these are two bores.
    Bore(100, 100, 8, "0305");
    Bore(100, 100, 5, "0305");
    RemoveDuplicateBores();
    ClearChains();
    ASSERT_EQ(VBores.Last(), 2);
    EXPECT_EQ(VBores[1].Diameter, 0);
    EXPECT_EQ(VBores[2].Diameter, 0);
}

// Clearing

TEST_F(HoleChaining, NulBytesOfAToolBecomeBlanks)
{
    Bore(1, 1, 8,
         std::string("\0"
                     "01\0\0",
                     5));
    Bore(2, 2, 8, std::string("\0\0", 2)).Group = 3;
    VBores[2].Speed = 4000;
    ClearChains();
    EXPECT_EQ(VBores[1].Tool, " 01");
    EXPECT_EQ(VBores[1].Diameter, 0);
    EXPECT_EQ(VBores[2].Tool, "");
    EXPECT_EQ(VBores[2].Diameter, 8); // names no tool
    EXPECT_EQ(VBores[2].Group, 0);
    EXPECT_EQ(VBores[2].Speed, 0);
}

// Chains

TEST_F(HoleChaining, ALoneBoreIsInNoChain)
{
    PutHeadOfEights();
    Bore(100, 50);
    EXPECT_EQ(ChainsFound(), Ints{0});
    EXPECT_EQ(Sizes(), Ints{1});
}

TEST_F(HoleChaining, TwoBores322ApartAreAChain)
{
    PutHeadOfEights();
    Bore(100, 50);
    Bore(132.2F, 50);
    EXPECT_EQ(ChainsFound(), (Ints{1, 1}));
    EXPECT_EQ(Pitches(), (Ints{32, 32}));
    EXPECT_EQ(Sizes(), (Ints{2, 2}));
}

TEST_F(HoleChaining, TwoBores323ApartAreNone)
{
    PutHeadOfEights();
    Bore(100, 50);
    Bore(132.3F, 50); // as a Single 32.300003 away
    EXPECT_EQ(ChainsFound(), (Ints{0, 0}));
    EXPECT_EQ(Pitches(), (Ints{0, 0}));
}

TEST_F(HoleChaining, TheDistanceToleranceIsTheSingle03)
{
    // As a Single 0.3 is 0.3000000119.
    PutHeadOfEights();
    Bore(-0.0001953175F, 50);
    Bore(32.2998046875F, 50); // 32.3000000050 away
    EXPECT_EQ(ChainsFound(), (Ints{1, 1}));
    VBores[1].X = -0.000195325F; // 32.3000000125 away
    EXPECT_EQ(ChainsFound(), (Ints{0, 0}));
}

TEST_F(HoleChaining, AChainAboveEachOtherRunsAlongY)
{
    PutHeadOfEights();
    Bore(100, 50);
    Bore(100, 82);
    Bore(100, 114);
    EXPECT_EQ(ChainsFound(), (Ints{-1, -1, -1}));
    EXPECT_EQ(Sizes(), (Ints{3, 3, 3}));
}

TEST_F(HoleChaining, PitchesUpTo128)
{
    for (const Int pitch : Ints{32, 64, 96, 128}) {
        VBores.Clear();
        PutHeadOfEights();
        Bore(100, 50);
        Bore(static_cast<Single>(100 + pitch), 50);
        EXPECT_EQ(ChainsFound(), (Ints{1, 1})) << pitch;
        EXPECT_EQ(Pitches(), (Ints{pitch, pitch}));
    }
}

TEST_F(HoleChaining, TwoBores160ApartAreNoChain)
{
    PutHead(RowX({8, 8, 8, 8, 8, 8, 8, 8}));
    Bore(100, 50);
    Bore(260, 50);
    EXPECT_EQ(ChainsFound(), (Ints{0, 0}));
}

TEST_F(HoleChaining, AcrossThePanelThereIsNoChain)
{
    PutHeadOfEights();
    Bore(100, 50);
    Bore(100 + 22.627F, 50 + 22.627F); // 32 apart on the diagonal
    EXPECT_EQ(ChainsFound(), (Ints{0, 0}));
}

TEST_F(HoleChaining, ASlantOfLessThan01IsStillARow)
{
    PutHeadOfEights();
    Bore(100, 50);
    Bore(132, 50.0625F);
    EXPECT_EQ(ChainsFound(), (Ints{1, 1}));
    VBores.Clear();
    Bore(100, 50);
    Bore(132, 50.125F);
    EXPECT_EQ(ChainsFound(), (Ints{0, 0}));
}

TEST_F(HoleChaining, ASlantFrom005OnTurnsARowAlongYIntoOneAlongX)
{
    PutHeadOfEights();
    Bore(100, 50);
    Bore(100.0625F, 82);
    EXPECT_EQ(ChainsFound(), (Ints{1, 1}));
    VBores.Clear();
    Bore(100, 50);
    Bore(100.03125F, 82);
    EXPECT_EQ(ChainsFound(), (Ints{-1, -1}));
}

TEST_F(HoleChaining, DiametersMustBeEqualThoughTheHeadHasATolerance)
{
    PutHeadOfEights();
    Bore(100, 50, 8);
    Bore(132, 50, 8.001F);
    EXPECT_EQ(ChainsFound(), (Ints{0, 0}));
    VBores.Clear();
    Bore(100, 50, 8.19F);
    Bore(132, 50, 8.19F);
    EXPECT_EQ(ChainsFound(), (Ints{1, 1}));
    VBores.Clear();
    Bore(100, 50, 8.21F);
    Bore(132, 50, 8.21F);
    EXPECT_EQ(ChainsFound(), (Ints{0, 0}));
}

TEST_F(HoleChaining, ABoreThatNamesItsToolChainsOnlyOnAHeadOfDrillsBelow02)
{
    PutHeadOfEights();
    Bore(100, 50, 8, "0305");
    Bore(132, 50, 8, "0305");
    EXPECT_EQ(ChainsFound(), (Ints{0, 0}));
    PutHead(RowX({0.1F, 0.1F}));
    EXPECT_EQ(ChainsFound(), (Ints{1, 1}));
    EXPECT_EQ(Sizes(), (Ints{2, 2}));
    VBores[2].Tool = "0306";
    EXPECT_EQ(ChainsFound(), (Ints{0, 0}));
}

TEST_F(HoleChaining, OneNamedDrillIsASizeOfOneInAnyChain)
{
    PutHead(RowX({0.1F, 0.1F}));
    Bore(100, 50, 8, "0 7");
    Bore(132, 50, 8, "0 7");
    EXPECT_EQ(ChainsFound(), (Ints{1, 1}));
    EXPECT_EQ(Sizes(), (Ints{1, 1}));
    for (Long i = 1; i <= 2; ++i)
        VBores[i].Tool = "0 71";
    EXPECT_EQ(Sizes(), (Ints{2, 2}));
}

TEST_F(HoleChaining, WithoutADrillPairInARowOfTheDirectionThereIsNoChain)
{
    PutHead(AndRowY(RowX({8, 5, 5}), {0, 32})); // one drill of 8 mm along X, two along Y
    Bore(100, 50);
    Bore(132, 50);
    EXPECT_EQ(ChainsFound(), (Ints{0, 0}));
    VBores[2].X = 100;
    VBores[2].Y = 82;
    EXPECT_EQ(ChainsFound(), (Ints{-1, -1}));
}

TEST_F(HoleChaining, BothDrillsOfAPairStandInRowsOfTheDirection)
{
    PutHead({{32, 0}, {32, 32}, {64, 0}}); // the third alone stands along X
    Bore(100, 50);
    Bore(132, 50);
    EXPECT_EQ(ChainsFound(), (Ints{0, 0}));
}

TEST_F(HoleChaining, TheSmallestPitchComesBeforeTheFirstInTheList)
{
    PutHeadOfEights();
    Bore(100, 50);
    Bore(164, 50);
    Bore(132, 50);
    EXPECT_EQ(ChainsFound(), (Ints{1, 1, 1}));
    EXPECT_EQ(Pitches(), (Ints{32, 32, 32}));
}

TEST_F(HoleChaining, TheFirstPartnerInTheListWins)
{
    PutHeadOfEights();
    Bore(100, 50);
    Bore(68, 50);
    Bore(132, 50);
    EXPECT_EQ(ChainsFound(), (Ints{1, 1, 0}));
}

TEST_F(HoleChaining, TheFarSideOfTheSeedIsNotCollected)
{
    // Bores at 0, 32 and 64, listed 32, 0, 64: the chain grows from 0 on.
    PutHeadOfEights();
    Bore(32, 50);
    Bore(0, 50);
    Bore(64, 50);
    Bore(500, 300); // so that the bore at 64 looks for a partner itself: only later bores can be one
    EXPECT_EQ(ChainsFound(), (Ints{1, 1, 0, 0}));
    EXPECT_EQ(Sizes(), (Ints{2, 2, 1, 1}));
}

TEST_F(HoleChaining, WithoutADrillPairAtThePitchNoLargerPitchIsTried)
{
    PutHead(RowX({8, 5, 5, 8})); // a pair 96 apart
    Bore(100, 50);
    Bore(164, 50);
    Bore(196, 50);
    EXPECT_EQ(ChainsFound(), (Ints{0, 0, 0}));
    VBores[2].X = 500;
    EXPECT_EQ(ChainsFound(), (Ints{1, 0, 1}));
    EXPECT_EQ(Pitches(), (Ints{96, 0, 96}));
}

TEST_F(HoleChaining, APartnerMayBelongToAnotherChainWhichThenLosesIt)
{
    PutHeadOfEights();
    Bore(100, 100);
    Bore(132, 68);
    Bore(132, 100); // first in a row with 1, then below 2
    EXPECT_EQ(ChainsFound(), (Ints{1, -2, -2}));
    EXPECT_EQ(Sizes(), (Ints{1, 2, 2}));
}

TEST_F(HoleChaining, GrowthLeavesTheBoresOfOtherChains)
{
    PutHeadOfEights();
    Bore(200, 100);
    Bore(200, 132); // a chain along Y with 1
    Bore(136, 132);
    Bore(168, 132); // 2 would be next in the row of 3 and 4
    EXPECT_EQ(ChainsFound(), (Ints{-1, -1, 3, 3}));
}

TEST_F(HoleChaining, GrowthTakesEarlierBoresThatFoundNoChain)
{
    PutHead(RowX({8, 8, 8})); // no row along Y
    Bore(100, 100);           // its partner is 2, above it
    Bore(100, 132);
    Bore(164, 100);
    Bore(132, 100);
    EXPECT_EQ(ChainsFound(), (Ints{3, 0, 3, 3}));
}

TEST_F(HoleChaining, GrowthGoesOnUntilAWholeScanFindsNothing)
{
    PutHeadOfEights();
    Bore(0, 50);
    Bore(32, 50);
    Bore(160, 50);
    Bore(128, 50);
    Bore(96, 50);
    Bore(64, 50); // the end moves to 64, 96, 128 and 160 in four scans
    EXPECT_EQ(ChainsFound(), (Ints{1, 1, 1, 1, 1, 1}));
    EXPECT_EQ(Sizes(), (Ints{6, 6, 6, 6, 6, 6}));
}

TEST_F(HoleChaining, GrowthScansOnFromTheBoreThatJoinedLast)
{
    // From 32 the scan passes 96 and takes 64, then 96.25 behind it; 96 is on no pitch from there. As a
    // seed of its own it takes 64 away.
    PutHeadOfEights();
    Bore(0, 50);
    Bore(32, 50);
    Bore(96, 50);
    Bore(64, 50);
    Bore(96.25F, 50);
    EXPECT_EQ(ChainsFound(), (Ints{1, 1, 3, 3, 1}));
}

TEST_F(HoleChaining, GrowthKeepsItsDirection)
{
    PutHeadOfEights();
    Bore(100, 50);
    Bore(132, 50);
    Bore(132, 82); // above the end
    EXPECT_EQ(ChainsFound(), (Ints{1, 1, 0}));
}

TEST_F(HoleChaining, AChainMayBeLongerThanTheHead)
{
    PutHead(RowX({8, 8}));
    for (int i = 0; i < 40; ++i)
        Bore(static_cast<Single>(32 * i), 50);
    ChainsFound();
    EXPECT_EQ(Sizes(), Ints(40, 40));
}

TEST_F(HoleChaining, InchDrawingsAreChainedInMillimetres)
{
    PutHeadOfEights();
    kv::Run.UnitFactor = 25.4F;
    Bore(4, 2, 0.315F); // 8.001 mm
    Bore(5.26F, 2, 0.315F);
    EXPECT_EQ(ChainsFound(), (Ints{1, 1}));
    EXPECT_EQ(Pitches(), (Ints{32, 32}));
}

TEST_F(HoleChaining, SizesCountTheWholeList)
{
    for (int i = 0; i < 5; ++i)
        Bore(static_cast<Single>(i), 0);
    VBores[1].Group = 1;
    VBores[3].Group = 1;
    VBores[2].Group = -2;
    VBores[4].Group = -2;
    VBores[5].Group = -2;
    EXPECT_EQ(Sizes(), (Ints{2, 3, 2, 3, 3}));
}

} // namespace
} // namespace kv
