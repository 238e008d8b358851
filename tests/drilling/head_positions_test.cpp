// The head's stops: ends, their order and the drills that come down.
#include "drilling/head_positions.h"

#include "drilling/head_scene.h"

namespace kv {
namespace {

using Drills = std::vector<std::string>;

class HeadStops : public test::HeadScene {
  protected:
    // A chain of `size` bores from (x, y) on, `pitch` apart, along X (1) or Y (-1); 0: a lone bore.
    static void Chain(int direction, int size, Int pitch, Single x, Single y, Single diameter = 8,
                      std::string_view tool = "")
    {
        const Long mark = direction * (VBores.Last() + 1);
        for (int i = 0; i < size; ++i) {
            const auto step = static_cast<Single>(i * pitch);
            VBoreRecord& bore =
                Bore(direction > 0 ? x + step : x, direction < 0 ? y + step : y, diameter, tool);
            bore.Group = static_cast<Int>(mark);
            bore.Speed = static_cast<Int>(size);
            bore.Pitch = pitch;
        }
    }
    static void Lone(Single x, Single y, Single diameter = 8, std::string_view tool = "")
    {
        Chain(0, 1, 0, x, y, diameter, tool);
    }
    static Drills Chosen(bool originFlip = false)
    {
        PlanHeadPositions(originFlip);
        Drills chosen;
        for (Long i = 1; i <= HeadPositions.Last(); ++i)
            chosen.emplace_back(HeadPositions[i].Tool.Trimmed());
        return chosen;
    }
    static void ExpectEnds(Long stop, Single x, Single y, Single endX, Single endY)
    {
        EXPECT_EQ(HeadPositions[stop].X, x);
        EXPECT_EQ(HeadPositions[stop].Y, y);
        EXPECT_EQ(HeadPositions[stop].EndX, endX);
        EXPECT_EQ(HeadPositions[stop].EndY, endY);
    }
    // Nine drills of 5 mm, then five of 8 mm in slots 10 to 14, along X.
    static std::vector<test::Drill> FivesThenEights()
    {
        return RowX({5, 5, 5, 5, 5, 5, 5, 5, 5, 8, 8, 8, 8, 8});
    }
    // Nine drills of 5 mm along X, then drills of 8 mm along Y from slot 10 on.
    static std::vector<test::Drill> FivesThenRowY(const std::vector<Single>& places)
    {
        return AndRowY(RowX({5, 5, 5, 5, 5, 5, 5, 5, 5}), places);
    }
};

// Stops

TEST_F(HeadStops, AChainIsOneStopWithTheWordsOfItsSmallestBore)
{
    PutHead(FivesThenEights());
    Chain(1, 3, 32, 100, 50);
    std::swap(VBores[1].X, VBores[2].X); // the smallest stands second
    VBores[2].Depth = 17;
    VBores[2].ExtraSlot = 3;
    VBores[2].Bottom = 5;
    VBores[2].Feed = 1500;
    EXPECT_EQ(Chosen().size(), 1U);
    ExpectEnds(1, 100, 50, 164, 50);
    const HeadPosition& stop = HeadPositions[1];
    EXPECT_EQ(stop.Depth, 17);
    EXPECT_EQ(stop.Diameter, 8);
    EXPECT_EQ(stop.ChainSize, 3);
    EXPECT_EQ(stop.Pitch, 32);
    EXPECT_EQ(stop.Direction, 1);
    EXPECT_EQ(stop.ExtraSlot, 3);
    EXPECT_EQ(stop.Side, 5);
    EXPECT_EQ(stop.Feed, 0);
    EXPECT_EQ(VBores.Last(), 0);
}

TEST_F(HeadStops, OfEqualCoordinatesTheFirstCounts)
{
    Chain(1, 2, 32, 100, 50);
    VBores[2].X = 100;
    VBores[2].Y = 60;
    Chosen();
    ExpectEnds(1, 100, 50, 100, 50);
}

TEST_F(HeadStops, ALargestCoordinateOfZeroTakesTheBoreOfTheStopBefore)
{
    Lone(30, 0); // no stop before: the blank element 0
    Lone(40, 70);
    Lone(50, 0);
    Lone(60, -5);
    Chosen();
    ExpectEnds(1, 30, 0, 0, 0);
    ExpectEnds(2, 40, 70, 40, 70);
    ExpectEnds(3, 50, 0, 40, 70);
    ExpectEnds(4, 60, -5, 40, 70);
}

TEST_F(HeadStops, EachRunBeginsWithTheBlankElement)
{
    Lone(40, 70);
    Chosen();
    HeadPositions.Clear();
    Lone(30, 0);
    Chosen();
    ExpectEnds(1, 30, 0, 0, 0);
}

TEST_F(HeadStops, ASmallestCoordinateFrom99999OnTakesTheBoreOfTheStopBefore)
{
    Lone(10, 20);
    Lone(30, 99999);
    Chosen();
    ExpectEnds(2, 10, 20, 30, 99999);
}

TEST_F(HeadStops, BoresOfSizeZeroArePassedOver)
{
    Lone(10, 20);
    Lone(30, 40);
    VBores[1].Speed = 0;
    EXPECT_EQ(Chosen().size(), 1U);
    ExpectEnds(1, 30, 40, 30, 40);
}

TEST_F(HeadStops, ARightOriginMirrorsBehindTheSearchForTheEnds)
{
    kv::Run.OriginRight = True;
    Chain(1, 3, 32, 100, 50);
    Chosen();
    ExpectEnds(1, 900, 50, 836, 50); // X is greater than EndX
}

TEST_F(HeadStops, ATopOriginMirrorsY)
{
    kv::Run.OriginTop = True;
    Chain(-1, 3, 32, 100, 50);
    Chosen();
    ExpectEnds(1, 100, 550, 100, 486);
}

// Order of the ends

TEST_F(HeadStops, TheSecondOfTwoRowsAlongXBeginsAtItsNearerEnd)
{
    Chain(1, 3, 32, 100, 50);
    Chain(1, 3, 32, 100, 150);
    Chain(1, 3, 32, 100, 250); // begins where the turned row before it ends
    Chosen();
    ExpectEnds(1, 100, 50, 164, 50);
    ExpectEnds(2, 164, 150, 100, 150);
    ExpectEnds(3, 100, 250, 164, 250);
}

TEST_F(HeadStops, EquallyFarEndsStay)
{
    Chain(1, 2, 64, 36, 50);
    Chain(1, 2, 64, 68, 150); // 100 is in the midst of it
    Chosen();
    ExpectEnds(2, 68, 150, 132, 150);
}

TEST_F(HeadStops, RowsAlongYAndLoneBoresAreNotTurned)
{
    Chain(-1, 3, 32, 100, 50);
    Chain(-1, 3, 32, 150, 50);
    Lone(164, 50);
    Chain(1, 3, 32, 100, 50);
    Chosen();
    ExpectEnds(2, 150, 50, 150, 114);
    ExpectEnds(4, 100, 50, 164, 50); // behind a lone bore
}

// Drills

TEST_F(HeadStops, ALoneBoreWithoutADrillOfItsDiameter)
{
    PutHead(RowX({5, 5}));
    Lone(100, 50);
    EXPECT_EQ(Chosen(), Drills{"00"});
    EXPECT_EQ(HeadPositions[1].Direction, 0);
}

TEST_F(HeadStops, ALoneBoreGetsTheFirstDrillOfItsDiameterInAnyRow)
{
    PutHead(FivesThenRowY({0, 32}));
    Lone(100, 50);
    Lone(200, 50, 5.1F);
    EXPECT_EQ(Chosen(), (Drills{"10", "01"}));
}

TEST_F(HeadStops, ALoneBoreGetsNoDrillThatStandsInNoRow)
{
    PutHead({{32, 0, 8, 3}, {64, 0, 8, ThroughDrill}});
    Lone(100, 50);
    EXPECT_EQ(Chosen(), Drills{"02"});
}

TEST_F(HeadStops, Slot27ServesWhateverItsKind)
{
    std::vector<Single> fives(26, 5);
    std::vector<test::Drill> head = RowX(fives);
    head.push_back({5000, 0, 8, 5}); // a router
    head.push_back({6000, 0, 10});
    PutHead(head);
    Lone(100, 50, 8);
    Lone(200, 50, 10); // slot 28 drills no rows
    EXPECT_EQ(Chosen(), (Drills{"27", "00"}));
}

TEST_F(HeadStops, AChainOfThreeAtPitch64TakesEverySecondDrill)
{
    PutHead(FivesThenEights());
    Chain(1, 3, 64, 100, 50);
    EXPECT_EQ(Chosen(), Drills{"101214"});
}

TEST_F(HeadStops, AChainOfThreeAtPitch32IsInRangeForm)
{
    PutHead(FivesThenEights());
    Chain(1, 3, 32, 100, 50);
    EXPECT_EQ(Chosen(), Drills{"10|12"});
}

TEST_F(HeadStops, AChainOfTwoHasNoRangeForm)
{
    PutHead(FivesThenEights());
    Chain(1, 2, 32, 100, 50);
    EXPECT_EQ(Chosen(), Drills{"1011"});
}

TEST_F(HeadStops, ALongChainGetsTheDrillsThatTheHeadHas)
{
    PutHead(FivesThenEights());
    Chain(1, 9, 32, 100, 50);
    EXPECT_EQ(Chosen(), Drills{"10|14"});
    ExpectEnds(1, 100, 50, 356, 50); // the far end stays
    EXPECT_EQ(HeadPositions[1].ChainSize, 9);
}

TEST_F(HeadStops, ADrillAloneInItsRowStartsTheWalkOver)
{
    PutHead(RowX({8, 5, 5, 5, 8, 8}));
    Chain(1, 2, 32, 100, 50);
    EXPECT_EQ(Chosen(), Drills{"0506"});
}

TEST_F(HeadStops, AWalkThatStartsOverTakesTheVeryNextDrill)
{
    // At slot 3 drill 1 turns out to be alone; from slot 2 on it is 2 and 4.
    PutHead(RowX({8, 8, 5, 8}));
    Chain(1, 2, 64, 100, 50);
    EXPECT_EQ(Chosen(), Drills{"0204"});
}

TEST_F(HeadStops, TheLastDrillThatStartsOverAloneGivesNoDrill)
{
    PutHead(RowX({5, 8, 5}));
    Chain(1, 2, 32, 100, 50);
    EXPECT_EQ(Chosen(), Drills{"00"});
}

TEST_F(HeadStops, AFittingDrillReplacesAMakeshift)
{
    // Slots 1 and 2 along Y serve for want of better ones until 3 and 4 along X are met.
    PutHead({{32, 0}, {32, 32}, {64, 0}, {96, 0}});
    Chain(1, 2, 32, 100, 50);
    EXPECT_EQ(Chosen(), Drills{"0304"});
}

TEST_F(HeadStops, AMakeshiftServesARowWithoutDrillsInItsDirection)
{
    PutHead(RowX({5, 8, 8}));
    Chain(-1, 2, 32, 100, 50);
    EXPECT_EQ(Chosen(), Drills{"02"});
}

TEST_F(HeadStops, LastCarriesOverFromTheStopBefore)
{
    // The first stop ends with drill 12. At 13 the second one's makeshift is dropped, though it has taken
    // no drill itself.
    PutHead(RowX({5, 5, 5, 5, 5, 8, 8, 8, 8, 8, 8, 8}));
    Chain(1, 7, 32, 100, 50);
    Chain(-1, 2, 32, 500, 50, 5);
    EXPECT_EQ(Chosen(), (Drills{"06|12", "00"}));
    HeadPositions.Clear();
    Chain(-1, 2, 32, 500, 50, 5);
    EXPECT_EQ(Chosen(), Drills{"01"});
}

TEST_F(HeadStops, PrevCarriesOverFromTheStopBefore)
{
    // At 4 the second stop sees no gap behind drill 12, so the count of slots from 1 on decides.
    PutHead(RowX({10, 10, 10, 5, 5, 5, 5, 5, 8, 8, 8, 8}));
    Chain(1, 4, 32, 100, 50);
    Chain(1, 2, 64, 100, 150, 5);
    EXPECT_EQ(Chosen(), (Drills{"09|12", "0507"}));
    HeadPositions.Clear();
    Chain(1, 2, 64, 100, 150, 5);
    EXPECT_EQ(Chosen(), Drills{"0406"});
}

TEST_F(HeadStops, NamedDrillsLeavePrevAndLastAlone)
{
    PutHead(RowX({10, 10, 10, 5, 5, 5, 5, 5, 8, 8, 8, 8}));
    Chain(1, 4, 32, 100, 50, 0, "0912");
    Chain(1, 2, 64, 100, 150, 5);
    EXPECT_EQ(Chosen(), (Drills{"09|12", "0406"}));
}

TEST_F(HeadStops, NamedDrillsAreTakenWhateverTheHeadIs)
{
    PutHead({});
    Chain(1, 3, 64, 100, 50, 0, "0307");
    Chain(1, 3, 64, 100, 150, 0, "0703"); // the lower number first
    Chain(1, 2, 32, 100, 250, 0, "95|99");
    Chain(1, 5, 32, 100, 350, 0, "0507"); // fewer than the chain
    EXPECT_EQ(Chosen(), (Drills{"030507", "030507", "9596", "05|07"}));
}

TEST_F(HeadStops, ALoneBoreTakesTheLowestOfItsNamedDrills)
{
    Lone(1, 1, 0, "0307");
    Lone(2, 1, 0, "T5");
    Lone(3, 1, 0, "217"); // 21 and 17
    Lone(4, 1, 0, "00");
    EXPECT_EQ(Chosen(), (Drills{"03", "05", "17", "00"}));
}

TEST_F(HeadStops, AToolWithoutDigitsWalksTheHead)
{
    PutHead(RowX({0.1F, 8}));
    Lone(1, 1, 0, "R");
    EXPECT_EQ(Chosen(), Drills{"00"}); // a diameter of 0 has no makeshift
}

TEST_F(HeadStops, InchDiametersAreMatchedInMillimetres)
{
    PutHead(RowX({5, 8}));
    kv::Run.UnitFactor = 25.4F;
    Lone(1, 1, 0.315F);
    EXPECT_EQ(Chosen(), Drills{"02"});
}

TEST_F(HeadStops, ALongListIsCutAt40Characters)
{
    PutHead(RowX(std::vector<Single>(26, 8)));
    Chain(1, 26, 32, 100, 50);
    VBores[1].Y = 50.0625F; // above its end: the list runs backwards and has no range form
    EXPECT_EQ(Chosen(), Drills{"2625242322212019181716151413121110090807"});
}

// Direction of the list and the flip

TEST_F(HeadStops, ARowThatRunsDownNamesItsDrillsFromTheOtherEnd)
{
    kv::Run.OriginTop = True;
    PutHead(FivesThenRowY({0, 32, 64}));
    Chain(-1, 3, 32, 100, 50);
    EXPECT_EQ(Chosen(false), Drills{"121110"});
    ExpectEnds(1, 100, 550, 100, 486);
}

TEST_F(HeadStops, TheHeadsOriginFlipNamesARowThatRunsUpFromTheOtherEnd)
{
    PutHead(FivesThenRowY({0, 32, 64}));
    Chain(-1, 3, 32, 100, 50);
    EXPECT_EQ(Chosen(true), Drills{"121110"});
    ExpectEnds(1, 100, 50, 100, 114);
}

TEST_F(HeadStops, AFlippedRowLiesLowerByItsLengthWithItsDrillsReversed)
{
    kv::Run.OriginTop = True;
    PutHead(FivesThenRowY({0, 32, 64, 96, 128}));
    Chain(-1, 3, 64, 100, 50); // mirrored: from 550 down to 422
    EXPECT_EQ(Chosen(true), Drills{"141210"});
    ExpectEnds(1, 100, 422, 100, 550);
}

TEST_F(HeadStops, AFlipMovesByMillimetresInAnInchDrawingToo)
{
    kv::Run.OriginTop = True;
    kv::Run.UnitFactor = 25.4F;
    PutHead(FivesThenRowY({0, 32}));
    Chain(-1, 2, 32, 4, 50, 0.315F);
    VBores[2].Y = 51.25F;
    EXPECT_EQ(Chosen(true), Drills{"1110"});
    ExpectEnds(1, 4, 518, 4, 580.75F); // 550 - 32, 548.75 + 32
}

TEST_F(HeadStops, RowsAlongXAreNotFlipped)
{
    kv::Run.OriginTop = True;
    PutHead(FivesThenEights());
    Chain(1, 3, 32, 100, 50);
    EXPECT_EQ(Chosen(true), Drills{"10|12"});
    ExpectEnds(1, 100, 550, 164, 550);
}

// Riding along

TEST_F(HeadStops, ALoneBoreRidesWithARowWhereADrillStandsOverIt)
{
    PutHead(FivesThenRowY({0, 32, 64, 128}));
    Lone(200, 228); // 128 above the row's start
    Chain(-1, 2, 32, 200, 100);
    EXPECT_EQ(Chosen(), (Drills{"", "101113"}));
}

TEST_F(HeadStops, AnAbortEndsTheSearchForRides)
{
    PutHead(FivesThenRowY({0, 32, 64, 128}));
    Lone(200, 228);
    Chain(-1, 2, 32, 200, 100);
    kv::Run.RunState = 1;
    EXPECT_EQ(Chosen(), (Drills{"10", "1011"})); // as chosen, without the rider
    kv::Run.RunState = 0;
}

TEST_F(HeadStops, ARangeFormRidesAsItStands)
{
    PutHead(FivesThenRowY({0, 32, 64, 128}));
    Chain(-1, 3, 32, 200, 100);
    Lone(200, 228);
    EXPECT_EQ(Chosen(), (Drills{"10|1213", ""}));
}

TEST_F(HeadStops, OnlyALoneBoreOfTheSameXAndDiameterRides)
{
    PutHead(FivesThenRowY({0, 32, 64, 128}));
    Chain(-1, 2, 32, 200, 100);
    Lone(200.0625F, 228);
    Lone(200, 228, 8.0625F);
    Lone(200, 227);
    EXPECT_EQ(Chosen(), (Drills{"1011", "10", "10", "10"}));
}

TEST_F(HeadStops, NoBoreRidesWithARowAlongX)
{
    PutHead(FivesThenEights());
    Chain(1, 2, 32, 200, 100);
    Lone(200, 100); // drill 10 stands over it
    EXPECT_EQ(Chosen(), (Drills{"1011", "10"}));
}

TEST_F(HeadStops, TheHeadShiftsByOneDrillToTakeALoneBoreAlong)
{
    // 96 above the row's start: from drill 10 at 0 there is none, from drill 11 at 32 it is drill 13 at 128.
    PutHead(FivesThenRowY({0, 32, 64, 128}));
    Chain(-1, 2, 32, 200, 100);
    Lone(200, 196);
    EXPECT_EQ(Chosen(), (Drills{"111213", ""}));
}

TEST_F(HeadStops, TheRangeFormShiftsAsTextAndSoTakesNobodyAlong)
{
    // Drill 5 would stand over the bore from drill 2; "01|03" has no such shift, although its pieces "01",
    // "|0" and "3" would name drills.
    PutHead(AndRowY({}, {0, 32, 64, 96, 160}));
    Chain(-1, 3, 32, 200, 100);
    Lone(200, 228);
    EXPECT_EQ(Chosen(), (Drills{"01|03", "01"}));
}

TEST_F(HeadStops, AShiftToADrillOfAnotherDiameterOrKindGivesUp)
{
    std::vector<test::Drill> head = FivesThenRowY({0, 32, 64, 128});
    head[11].Diameter = 8.125F;
    PutHead(head);
    Chain(-1, 2, 32, 200, 100);
    Lone(200, 196);
    EXPECT_EQ(Chosen(), (Drills{"1011", "10"}));
    head[11].Diameter = 8;
    head[11].Kind = ThroughDrill;
    PutHead(head);
    HeadPositions.Clear();
    Chain(-1, 2, 32, 200, 100);
    Lone(200, 196);
    EXPECT_EQ(Chosen(), (Drills{"1011", "10"}));
}

TEST_F(HeadStops, AShiftPastSlot99GivesUp)
{
    PutHead({});
    Chain(-1, 2, 32, 200, 100, 0, "4041"); // blank slots are alike up to the last
    Lone(200, 500, 0, "42");
    EXPECT_EQ(Chosen(), (Drills{"4041", "42"}));
}

TEST_F(HeadStops, ShiftsReachSlot99)
{
    std::vector<test::Drill> head(99);
    for (std::size_t n = 1; n <= 99; ++n)
        head[n - 1] = {static_cast<Single>(32 * n), static_cast<Single>(n == 1 ? 232 : n == 98 ? 32 : 0)};
    PutHead(head);
    Chain(-1, 2, 32, 200, 100, 0, "9798");
    Lone(200, 300, 0, "50"); // 200 above: from drill 97 at 0 there is none, from 98 at 32 it is drill 1
    EXPECT_EQ(Chosen(), (Drills{"989901", ""}));
}

TEST_F(HeadStops, ALoneBoreThatRidesAlreadyMayRideAgain)
{
    PutHead(FivesThenRowY({0, 32, 64, 128}));
    Chain(-1, 2, 32, 200, 100);
    Chain(-1, 2, 32, 200, 164);
    Lone(200, 228);
    EXPECT_EQ(Chosen(), (Drills{"101113", "101112", ""}));
}

TEST_F(HeadStops, ARowMayTakeSeveralBoresAlong)
{
    PutHead(FivesThenRowY({0, 32, 64, 128}));
    Chain(-1, 2, 32, 200, 100);
    Lone(200, 164);
    Lone(200, 228);
    EXPECT_EQ(Chosen(), (Drills{"10111213", "", ""}));
}

} // namespace
} // namespace kv
