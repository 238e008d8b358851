// The parameter readers: what each makes of a layer's name and of a note, defaults included.
#include "drawing/layer_rules.h"

#include <array>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "support/scene.h"

namespace kv {
namespace {

// The current entity on a layer as drawn, its codes rewritten; with a note, if any.
struct LayerValues : ::testing::Test {
    LayerValues() { test::ResetProcess(); }
    ~LayerValues() override { test::ResetProcess(); }

    static void On(std::string_view layer, std::string_view note = "")
    {
        Entities.Clear();
        DxfEntity record;
        record.Layer = layer;
        Entities.Append(record);
        RewriteLayerCodes();
        CurrentEntity.Layer = Entities[1].Layer.Trimmed();
        CurrentEntity.NoteText = note;
    }
};

Int ErrorOf(const std::function<void()>& read)
{
    try {
        read();
    } catch (const RunError& error) {
        return static_cast<Int>(error.Number);
    }
    return 0;
}

TEST_F(LayerValues, OfACommonRouteName)
{
    On("ROUTE1Z18D10T3S18F6000");
    EXPECT_EQ(ReadDepth(), 18);
    EXPECT_EQ(DepthFromEntity, False);
    EXPECT_EQ(ReadDiameter(), 10);
    EXPECT_EQ(ReadToolNumber(), 3);
    EXPECT_EQ(ReadToolString(), "03");
    EXPECT_EQ(ReadSpeed(), 18000);
    EXPECT_EQ(ReadFeed(), 6000);
    EXPECT_EQ(ReadFeedArc(), 6000); // no FA: the feed
}

TEST_F(LayerValues, AreZeroWithoutTheirCodes)
{
    On("VBORE");
    EXPECT_EQ(ReadDepth(), 0);
    EXPECT_EQ(DepthFromEntity, True);
    EXPECT_EQ(ReadDiameter(), 0);
    EXPECT_EQ(ReadToolNumber(), 0);
    EXPECT_EQ(ReadToolString(), "");
    EXPECT_EQ(ReadSpeed(), 0);
    EXPECT_EQ(ReadFeed(), 0);
    EXPECT_EQ(ReadFeedArc(), 0);
    EXPECT_EQ(ReadFeedDown(), 0);
    EXPECT_EQ(ReadFeedRapid(), 0);
    EXPECT_EQ(ReadParamA(), 0);
    EXPECT_EQ(ReadParamB(), 0);
    EXPECT_EQ(ReadGroup(), 0);
    EXPECT_EQ(ReadExcav(), 0);
    EXPECT_EQ(ReadLeadIn(), 0);
    EXPECT_EQ(ReadRampOut(), 0);
    EXPECT_EQ(ReadRampIn(), 0);
    EXPECT_EQ(ReadPeckDepth(), 0);
    EXPECT_EQ(ReadOscZ(), 0);
    EXPECT_EQ(ReadExtraSlot(), 0);
    EXPECT_EQ(ReadMCode(), 0);
    EXPECT_EQ(ReadComp(), "");
    EXPECT_EQ(ReadBottom(), 0);
    EXPECT_EQ(ReadGrooveSide(), 0);
}

TEST_F(LayerValues, OfTwoLetterCodes)
{
    On("ROUTE FA4500 FD1500.5 FR9000 A1.5 B2P25");
    EXPECT_EQ(ReadFeedArc(), 4500);
    EXPECT_EQ(ReadFeedDown(), 1500.5F);
    EXPECT_EQ(ReadFeedRapid(), 9000);
    EXPECT_EQ(ReadFeed(), 0);
    EXPECT_EQ(ReadParamA(), 1.5F);
    EXPECT_EQ(ReadParamB(), 2.25F);
}

TEST_F(LayerValues, FeedOnArcsPresentWithoutANumberIsZeroNotTheFeed)
{
    On("ROUTE F3000 FA");
    EXPECT_EQ(ReadFeed(), 3000);
    EXPECT_EQ(ReadFeedArc(), 0);
}

TEST_F(LayerValues, ANumberTakesAPointOrP)
{
    On("ROUTEZ18.5");
    EXPECT_EQ(ReadDepth(), 18.5F);
    On("ROUTEZ18P5");
    EXPECT_EQ(ReadDepth(), 18.5F);
    On("ROUTEZP5");
    EXPECT_EQ(ReadDepth(), .5F);
    On("ROUTEZ.5");
    EXPECT_EQ(ReadDepth(), .5F);
}

TEST_F(LayerValues, APointBehindTheNextCodeIsNotThisNumbers)
{
    On("ROUTEZ18T2.5");
    EXPECT_EQ(ReadDepth(), 18);
}

TEST_F(LayerValues, APointWithTheNextCodeRightBehindItIsNoFraction)
{
    On("ROUTEZ18PT25"); // "PT": the T stands at point + 1
    EXPECT_EQ(ReadDepth(), 18);
}

TEST_F(LayerValues, FeedOnArcsExtraSlotAndOscillationDoNotEndAFraction)
{
    // A marker's blank does, though: it is left out here as the leading zeros of a number drop blanks.
    CurrentEntity.Layer = "ROUTEZ18\xEA"
                          "2.5";
    EXPECT_EQ(ReadDepth(), 18.5F);
    CurrentEntity.Layer = "ROUTEZ18\xE9"
                          "2.5"; // peck depth is in the list
    EXPECT_EQ(ReadDepth(), 18);
}

TEST_F(LayerValues, ANegativeNumberTakesItsFloorAndAddsTheFraction)
{
    On("ROUTEZ-5.5");
    EXPECT_EQ(ReadDepth(), -5.5F); // floor -6 and .5
    On("ROUTEZ-5P5");
    EXPECT_EQ(ReadDepth(), -4.5F); // Val of "-5P5" is -5
    On("ROUTEZ-5.25");
    EXPECT_EQ(ReadDepth(), -5.75F); // floor -6 and .25
}

TEST_F(LayerValues, BlanksAndUnderscoresStandFreelyBetweenParameters)
{
    On("ROUTE1_Z 18_ D 10 T 3");
    EXPECT_EQ(ReadDepth(), 18);
    EXPECT_EQ(ReadDiameter(), 10);
    EXPECT_EQ(ReadToolNumber(), 3);
    EXPECT_EQ(ReadToolString(), "3"); // the blanks are gone and the name ends in it
}

TEST_F(LayerValues, DiameterIsHiddenFromTheNumbersInFrontOfIt)
{
    On("DRILLD5Z12P5");
    EXPECT_EQ(ReadDiameter(), 5);
    EXPECT_EQ(ReadDepth(), 12.5F);
    On("ROUTEF6000D10");
    EXPECT_EQ(ReadFeed(), 6000); // not 6000D10
}

TEST_F(LayerValues, OnlyTheFirstDIsHidden)
{
    On("ROUTED5F10D2");
    EXPECT_EQ(ReadFeed(), 1000); // 10D2 reads as 10 x 10^2
}

TEST_F(LayerValues, DepthHidesEveryD)
{
    On("ROUTED5Z10D2");
    EXPECT_EQ(ReadDepth(), 10);
}

TEST_F(LayerValues, AnEIsNotHidden)
{
    On("ROUTEF10E2");
    EXPECT_EQ(ReadFeed(), 1000);
}

TEST_F(LayerValues, DepthZDIs100)
{
    On("ROUTEZD");
    EXPECT_EQ(ReadDepth(), 100);
    EXPECT_EQ(DepthFromEntity, False);
    EXPECT_EQ(ReadDiameter(), 0); // the D of ZD is no diameter
}

TEST_F(LayerValues, DiameterLooksOnBehindZD)
{
    On("ROUTEZD5D8");
    EXPECT_EQ(ReadDiameter(), 8);
    CurrentEntity.Layer = "ROUTE";
    CurrentEntity.NoteText = "zD5D9";
    EXPECT_EQ(ReadDiameter(), 9); // z in either case
}

TEST_F(LayerValues, SymbolicDepthsAreTheirSmallLettersCodes)
{
    On("ROUTEZA");
    EXPECT_EQ(ReadDepth(), 97);
    On("ROUTEZI");
    EXPECT_EQ(ReadDepth(), 105);
    On("ROUTEZG2");
    EXPECT_EQ(ReadDepth(), 103);
}

TEST_F(LayerValues, ZHIsANumberNotASymbol)
{
    On("ROUTEZH");
    EXPECT_EQ(ReadDepth(), 0);
    EXPECT_EQ(DepthFromEntity, False);
    On("ROUTEZJ5");
    EXPECT_EQ(ReadDepth(), 0);
}

TEST_F(LayerValues, ZAtTheEndIsZeroAndNotTheEntitys)
{
    On("ROUTEZ");
    EXPECT_EQ(ReadDepth(), 0);
    EXPECT_EQ(DepthFromEntity, False);
}

TEST_F(LayerValues, DepthByTableIs200AndItsNumber)
{
    On("ROUTEZR5");
    EXPECT_EQ(ReadDepth(), 205);
    On("ROUTEZR5.7");
    EXPECT_EQ(ReadDepth(), 205); // whole number alone
    On("ROUTEZR");
    EXPECT_EQ(ReadDepth(), 200);
}

TEST_F(LayerValues, XPAndYPAreDepths)
{
    On("ROUTEXP7");
    EXPECT_EQ(ReadDepth(), 7);
    On("ROUTEYP8.5");
    EXPECT_EQ(ReadDepth(), 8.5F);
}

TEST_F(LayerValues, SpeedBelow30IsInThousands)
{
    On("ROUTES18");
    EXPECT_EQ(ReadSpeed(), 18000);
    On("ROUTES30");
    EXPECT_EQ(ReadSpeed(), 30);
    On("ROUTES29.5");
    EXPECT_EQ(ReadSpeed(), 29500);
    On("ROUTES29.999");
    EXPECT_EQ(ReadSpeed(), 29999);
    On("ROUTES2.5005"); // 2500.5, half to even
    EXPECT_EQ(ReadSpeed(), 2500);
    On("ROUTES32767");
    EXPECT_EQ(ReadSpeed(), 32767);
}

TEST_F(LayerValues, SpeedBeyondAnIntEndsTheRun)
{
    On("ROUTES40000");
    EXPECT_EQ(ErrorOf([] { ReadSpeed(); }), ErrorOverflow);
    On("ROUTES32768");
    EXPECT_EQ(ErrorOf([] { ReadSpeed(); }), ErrorOverflow);
}

TEST_F(LayerValues, LeadWithoutAValueAsksForTheDefault)
{
    On("ROUTE1LD");
    EXPECT_EQ(ReadLeadIn(), RunDefault);
    On("ROUTE1LD0"); // a written 0 too
    EXPECT_EQ(ReadLeadIn(), RunDefault);
    On("ROUTE1LD25.5");
    EXPECT_EQ(ReadLeadIn(), 25.5F);
    On("ROUTE1LDP5");
    EXPECT_EQ(ReadLeadIn(), .5F);
}

TEST_F(LayerValues, RampsWithoutAValueAskForTheDefaultButAWrittenZeroIsZero)
{
    On("ROUTE1RO");
    EXPECT_EQ(ReadRampOut(), RunDefault);
    EXPECT_EQ(ReadRampIn(), 0);
    On("ROUTE1RO0");
    EXPECT_EQ(ReadRampOut(), 0);
    On("ROUTE1RO 0");
    EXPECT_EQ(ReadRampOut(), 0); // behind blanks
    On("ROUTE1RI");
    EXPECT_EQ(ReadRampIn(), RunDefault);
    On("ROUTE1RI0");
    EXPECT_EQ(ReadRampIn(), 0);
    On("ROUTE1RI_0");
    EXPECT_EQ(ReadRampIn(), RunDefault); // an underscore is no blank
    On("ROUTE1RI3.5RO0.5");
    EXPECT_EQ(ReadRampIn(), 3.5F);
    EXPECT_EQ(ReadRampOut(), .5F);
}

TEST_F(LayerValues, PeckAndOscillationWithoutAValueAreMinusOne)
{
    On("VBORE PD");
    EXPECT_EQ(ReadPeckDepth(), -1);
    On("VBORE PD0");
    EXPECT_EQ(ReadPeckDepth(), -1);
    On("VBORE PD-4");
    EXPECT_EQ(ReadPeckDepth(), 4);
    On("ROUTE OZ");
    EXPECT_EQ(ReadOscZ(), -1);
    On("ROUTE OZ2.5");
    EXPECT_EQ(ReadOscZ(), 2.5F);
}

TEST_F(LayerValues, ExtraSlotIsAWholeNumber)
{
    On("VBORE ES4.7");
    EXPECT_EQ(ReadExtraSlot(), 4);
    On("VBORE EX3");
    EXPECT_EQ(ReadExtraSlot(), 3);
    On("VBORE ES");
    EXPECT_EQ(ReadExtraSlot(), -1);
    On("VBORE ES0");
    EXPECT_EQ(ReadExtraSlot(), -1);
    On("VBORE ES-2.5");
    EXPECT_EQ(ReadExtraSlot(), 3); // floor of -2.5 is -3
}

TEST_F(LayerValues, MCodesBelowTwoAreNone)
{
    On("ROUTE1M1");
    EXPECT_EQ(ReadMCode(), 0);
    On("ROUTE1M2");
    EXPECT_EQ(ReadMCode(), 2);
    On("ROUTE1M1.5");
    EXPECT_EQ(ReadMCode(), 2); // half to even
    On("ROUTE1M-5");
    EXPECT_EQ(ReadMCode(), 0);
}

TEST_F(LayerValues, ExcavationStepsAreNotNegative)
{
    On("EXCAVK3");
    EXPECT_EQ(ReadExcav(), 3);
    On("EXCAVK2.5");
    EXPECT_EQ(ReadExcav(), 2.5F);
    On("EXCAVK-3");
    EXPECT_EQ(ReadExcav(), 0);
}

TEST_F(LayerValues, ToolsInPairsOfDigits)
{
    On("VBORE T1T12");
    EXPECT_EQ(ReadToolNumber(), 1);
    EXPECT_EQ(ReadToolString(), "0112");
    On("VBORE T5Z3");
    EXPECT_EQ(ReadToolString(), "05");
    On("VBORE T010203Z3");
    EXPECT_EQ(ReadToolString(), "010203");
    On("VBORE T123Z3");
    EXPECT_EQ(ReadToolString(), "1203");
    On("VBORE T");
    EXPECT_EQ(ReadToolString(), "");
}

TEST_F(LayerValues, ToolDigitLeftOverAtTheEndOfTheNameGetsNoZero)
{
    On("VBORE Z3T5");
    EXPECT_EQ(ReadToolNumber(), 5);
    EXPECT_EQ(ReadToolString(), "5");
    On("VBORE Z3T12");
    EXPECT_EQ(ReadToolNumber(), 12);
    EXPECT_EQ(ReadToolString(), "12");
    On("VBORE Z3T123");
    EXPECT_EQ(ReadToolNumber(), 123);
    EXPECT_EQ(ReadToolString(), "123");
}

TEST_F(LayerValues, ToolsSkipMarkersAndBlanks)
{
    On("VBORE T1 2LD5"); // the blank and the marker are dropped: T125
    EXPECT_EQ(ReadToolString(), "125");
}

TEST_F(LayerValues, ToolsOfANoteEndAtWhatIsNoDigit)
{
    On("VBORE T7", "T5z9");
    EXPECT_EQ(ReadToolString(), "05");
    On("VBORE T7", "T5");
    EXPECT_EQ(ReadToolString(), "5");
    On("VBORE T7", "T5:T@1");
    EXPECT_EQ(ReadToolString(), "5:@1"); // codes up to that of "@" count as digits
}

TEST_F(LayerValues, ToolAndGroupCountFromTheFifthCharacter)
{
    CurrentEntity.Layer = "ROUTT5G3";
    EXPECT_EQ(ReadToolNumber(), 5);
    EXPECT_EQ(ReadToolString(), ""); // its search starts at the sixth
    CurrentEntity.Layer = "ABCDG3";
    EXPECT_EQ(ReadGroup(), 3);
    CurrentEntity.Layer = "ABCDS3";
    EXPECT_EQ(ReadSpeed(), 0); // no other code does
}

TEST_F(LayerValues, NoCodeBeginsInsideTheLayersOwnWord)
{
    On("DRILLINGG2");
    EXPECT_EQ(ReadGroup(), 2);
    On("DRILLINGZ3");
    EXPECT_EQ(ReadGroup(), 0);
    EXPECT_EQ(ReadDepth(), 3);
    On("GROOVES18");
    EXPECT_EQ(ReadSpeed(), 18000);
    EXPECT_EQ(ReadExtraSlot(), 0);
    On("BORDER");
    EXPECT_EQ(ReadComp(), "");
    On("ROUTEROUTE1Z5");
    EXPECT_EQ(ReadComp(), "");
    EXPECT_EQ(ReadRampOut(), 0);
    EXPECT_EQ(ReadToolNumber(), 0);
    EXPECT_EQ(ReadToolString(), "");
    EXPECT_EQ(ReadDepth(), 5);
}

TEST_F(LayerValues, CompensationWithAndWithoutRadius)
{
    On("ROUTE1R");
    EXPECT_EQ(ReadComp(), "G42");
    On("ROUTE1R4.5");
    EXPECT_EQ(ReadComp(), "G42 R4.5");
    On("ROUTE1L");
    EXPECT_EQ(ReadComp(), "G41");
    On("ROUTE1L4P5");
    EXPECT_EQ(ReadComp(), "G41 R4.5"); // a radius is R on both hands
    On("ROUTE1L.5");
    EXPECT_EQ(ReadComp(), "G41 R.5");
}

TEST_F(LayerValues, LeftCompensationWinsWholeOverRight)
{
    On("ROUTE1R4.5L");
    EXPECT_EQ(ReadComp(), "G41");
    On("ROUTE1L3R4.5");
    EXPECT_EQ(ReadComp(), "G41 R3");
}

TEST_F(LayerValues, ROZIsRightCompensationAndOscillation)
{
    On("ROZ12");
    EXPECT_EQ(CurrentEntity.Layer, "ROZ12"); // in front of position 6 nothing is rewritten
    On("ROUTEROZ12");
    EXPECT_EQ(ReadComp(), "G42");
    EXPECT_EQ(ReadOscZ(), 12);
    EXPECT_EQ(ReadRampOut(), 0);
}

TEST_F(LayerValues, BottomCodesAnywhereInTheLayerTheFirstOfTheOrderWins)
{
    const std::array<const char*, 6> codes = {"BB", "TB", "CB", "SB", "DI", "DG"};
    for (std::size_t i = 0; i < codes.size(); ++i) {
        On("VBORE Z5" + std::string(codes[i]));
        EXPECT_EQ(ReadBottom(), static_cast<Int>(i)) << codes[i];
    }
    On("VBORE DG SB CB");
    EXPECT_EQ(ReadBottom(), 2);
    On("VBORE SB BB");
    EXPECT_EQ(ReadBottom(), 0); // BB is there
}

TEST_F(LayerValues, BottomIsNeverReadFromANote)
{
    On("VBORE", "\xC4");
    EXPECT_EQ(ReadBottom(), 0);
}

TEST_F(LayerValues, GrooveSideLeftWinsOverRight)
{
    On("GROOVE");
    EXPECT_EQ(ReadGrooveSide(), 0);
    On("GROOVER");
    EXPECT_EQ(ReadGrooveSide(), 1);
    On("GROOVELR");
    EXPECT_EQ(ReadGrooveSide(), -1);
    On("GROOVERZ5L");
    EXPECT_EQ(ReadGrooveSide(), -1);
    On("GROOVE", "L");
    EXPECT_EQ(ReadGrooveSide(), 0); // a note has no say
}

TEST_F(LayerValues, OfANoteWhereItHoldsTheCode)
{
    On("VBORE Z12D5T7", "Z8S3");
    EXPECT_EQ(ReadDepth(), 8);
    EXPECT_EQ(ReadSpeed(), 3000);
    EXPECT_EQ(ReadDiameter(), 5); // not in the note
    EXPECT_EQ(ReadToolNumber(), 7);
}

TEST_F(LayerValues, FractionComesFromTheLayerEvenWhenTheCodeStandsInTheNote)
{
    // Note: the number stands at position 8 of "      Z8.25". Layer from position 8 on: "0.5 ..." so .5.
    On("VBORE 10.5 Z3", "Z8.25");
    EXPECT_EQ(ReadDepth(), 8.5F);
    On("VBORE Z3", "Z8.25"); // layer from position 8 on is "3" and blanks: no point
    EXPECT_EQ(ReadDepth(), 8);
}

TEST_F(LayerValues, TwoLetterCodesOfANoteAreNotRewritten)
{
    On("ROUTE1", "FA500");
    EXPECT_EQ(ReadFeedArc(), 0); // no marker; F is followed by "A500"
    EXPECT_EQ(ReadFeed(), 0);
    EXPECT_EQ(ReadParamA(), 500);
}

TEST_F(LayerValues, SmallLettersOfANoteAreNoCodes)
{
    On("ROUTE1Z5", "z8");
    EXPECT_EQ(ReadDepth(), 5);
    On("ROUTE1Z5", "Zb");
    EXPECT_EQ(ReadDepth(), 98); // behind a Z they are symbols
}

TEST_F(LayerValues, AFullLayerWithoutABlankHasNoEndForItsLastFraction)
{
    std::string layer = "ROUTEZ12.5";
    layer.insert(5, 114 - layer.size(), '_');
    ASSERT_EQ(layer.size(), 114U);
    On(layer);
    EXPECT_EQ(ReadDepth(), 12);
    layer.erase(5, 1);
    On(layer); // one blank behind it
    EXPECT_EQ(ReadDepth(), 12.5F);
}

TEST_F(LayerValues, SingleResultsAreRounded)
{
    On("ROUTEZ0.1");
    EXPECT_EQ(ReadDepth(), 0.1F);
    On("ROUTEF123456.789");
    EXPECT_EQ(ReadFeed(), 123456.789F);
}

TEST_F(LayerValues, BeyondASingleOrAnIntEndsTheRun)
{
    On("ROUTEF9E99");
    EXPECT_EQ(ErrorOf([] { ReadFeed(); }), ErrorOverflow);
    On("ROUTET99999");
    EXPECT_EQ(ErrorOf([] { ReadToolNumber(); }), ErrorOverflow);
    On("ROUTEG40000");
    EXPECT_EQ(ErrorOf([] { ReadGroup(); }), ErrorOverflow);
    On("ROUTEM40000");
    EXPECT_EQ(ErrorOf([] { ReadMCode(); }), ErrorOverflow);
    On("ROUTE ES40000");
    EXPECT_EQ(ErrorOf([] { ReadExtraSlot(); }), ErrorOverflow);
}

} // namespace
} // namespace kv
