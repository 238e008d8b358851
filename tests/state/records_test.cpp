// The fixed texts, the arrays and the layout of the records that all passes share.
#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>
#include <vector>

#include "platform/run_error.h"
#include "state/records.h"

namespace kv {
namespace {

template <std::size_t N> constexpr std::size_t WidthOf(const Text<N>&)
{
    return N;
}

TEST(FixedText, IsBlankAtFirst)
{
    const Text<3> text;
    EXPECT_EQ(text.Padded(), "   ");
    EXPECT_EQ(text.Trimmed(), "");
}

TEST(FixedText, LongerTextIsCutWithoutNotice)
{
    Text<10> kind;
    kind = "ATTRIBUTEDEF";
    EXPECT_EQ(kind.Padded(), "ATTRIBUTED");
}

TEST(FixedText, ShorterTextIsPaddedAndWipesTheOldOne)
{
    Text<10> kind("LWPOLYLINE");
    kind = "ARC";
    EXPECT_EQ(kind.Padded(), "ARC       ");
    EXPECT_EQ(kind.Trimmed(), "ARC");
    kind = "";
    EXPECT_EQ(kind.Padded(), "          ");
}

TEST(FixedText, BlanksInFrontStay)
{
    const Text<5> text(" A");
    EXPECT_EQ(text.Padded(), " A   ");
    EXPECT_EQ(text.Trimmed(), " A");
    EXPECT_FALSE(text == "A");
}

TEST(FixedText, ComparesWithoutBlanksBehind)
{
    const Text<10> kind("LINE");
    EXPECT_TRUE(kind == "LINE");
    EXPECT_TRUE(kind == "LINE   ");
    EXPECT_TRUE(kind == "LINE                 "); // longer than the field
    EXPECT_FALSE(kind == "LINES");
    EXPECT_FALSE(kind == "line");
    EXPECT_TRUE(Text<10>() == "");
    EXPECT_TRUE(Text<10>() == "  ");
    EXPECT_TRUE(kind == Text<10>("LINE  "));
}

TEST(FixedText, ATextLongerThanTheFieldIsNotEqualToItsCut)
{
    const Text<10> kind("ATTRIBUTEDEF");
    EXPECT_FALSE(kind == "ATTRIBUTEDEF");
    EXPECT_TRUE(kind == "ATTRIBUTED");
}

TEST(FixedText, TakesAPartOfItself)
{
    Text<6> text("ABCDEF");
    text = text.Padded().substr(2);
    EXPECT_EQ(text.Padded(), "CDEF  ");
}

TEST(Records, TextsHaveTheirWidths)
{
    EXPECT_EQ(WidthOf(DxfEntity{}.Kind), 10U);
    EXPECT_EQ(WidthOf(DxfEntity{}.Layer), 114U);
    EXPECT_EQ(WidthOf(DxfEntity{}.Side), 1U);
    EXPECT_EQ(WidthOf(DxfEntity{}.Reserved), 3U);
    EXPECT_EQ(WidthOf(VBoreRecord{}.Tool), 30U);
    EXPECT_EQ(WidthOf(RouteSegment{}.Tool), 10U);
    EXPECT_EQ(WidthOf(RouteSegment{}.Comp), 10U);
    EXPECT_EQ(WidthOf(RouteCircle{}.Tool), 12U);
    EXPECT_EQ(WidthOf(RouteCircle{}.Comp), 10U);
    EXPECT_EQ(WidthOf(HBoreLineRecord{}.Tool), 30U);
    EXPECT_EQ(WidthOf(HBoreRecord{}.Tool), 30U);
}

TEST(Records, NumbersHaveTheirWidths)
{
    static_assert(std::is_same_v<decltype(DxfEntity::X1), Single>);
    static_assert(std::is_same_v<decltype(DxfEntity::Color), Int>);
    static_assert(std::is_same_v<decltype(RouteSegment::Pass), Long>);
    static_assert(std::is_same_v<decltype(RouteCircle::Pass), Int>);
    static_assert(std::is_same_v<decltype(GrooveRecord::ToolNumber), Long>);
    static_assert(std::is_same_v<decltype(HBoreRecord::Side), Long>);
    static_assert(std::is_same_v<decltype(VBoreRecord::Pitch), Int>);
    static_assert(std::is_same_v<GroovePass, GrooveRecord>);
    EXPECT_EQ(sizeof(Single), 4U);
    EXPECT_EQ(sizeof(Int), 2U);
    EXPECT_EQ(sizeof(Long), 4U);
}

void ExpectAscending(const std::vector<std::size_t>& offsets)
{
    for (std::size_t i = 1; i < offsets.size(); ++i)
        EXPECT_LT(offsets[i - 1], offsets[i]) << "field " << i;
}

TEST(Records, FieldsStandInTheirDeclaredOrder)
{
    using E = DxfEntity;
    ExpectAscending(
        {offsetof(E, Kind),     offsetof(E, TextIndex),  offsetof(E, Layer),      offsetof(E, X1),
         offsetof(E, Y1),       offsetof(E, X2),         offsetof(E, Y2),         offsetof(E, Z1),
         offsetof(E, Z2),       offsetof(E, Elevation),  offsetof(E, Thickness),  offsetof(E, Radius),
         offsetof(E, EndWidth), offsetof(E, Bulge),      offsetof(E, StartAngle), offsetof(E, EndAngle),
         offsetof(E, Color),    offsetof(E, Flags),      offsetof(E, TextAlign),  offsetof(E, FollowFlag),
         offsetof(E, Side),     offsetof(E, ExtrusionZ), offsetof(E, Reserved)});
    using V = VBoreRecord;
    ExpectAscending({offsetof(V, X), offsetof(V, Y), offsetof(V, Depth), offsetof(V, Diameter),
                     offsetof(V, Group), offsetof(V, Speed), offsetof(V, Feed), offsetof(V, Tool),
                     offsetof(V, PeckDepth), offsetof(V, Pitch), offsetof(V, ExtraSlot),
                     offsetof(V, Bottom)});
    using R = RouteSegment;
    ExpectAscending(
        {offsetof(R, Pass),      offsetof(R, X),       offsetof(R, Y),        offsetof(R, Z),
         offsetof(R, Diameter),  offsetof(R, Group),   offsetof(R, ToolNo),   offsetof(R, Tool),
         offsetof(R, Aux1),      offsetof(R, Aux2),    offsetof(R, Kind),     offsetof(R, Dir),
         offsetof(R, Speed),     offsetof(R, Feed),    offsetof(R, FeedDown), offsetof(R, FeedRapid),
         offsetof(R, LeadIn),    offsetof(R, RampOut), offsetof(R, RampIn),   offsetof(R, Comp),
         offsetof(R, Sequence),  offsetof(R, OscZ),    offsetof(R, MCode),    offsetof(R, Side),
         offsetof(R, ExtraSlot), offsetof(R, ParamA),  offsetof(R, ParamB),   offsetof(R, Flag)});
    using G = GrooveRecord;
    ExpectAscending({offsetof(G, X1), offsetof(G, Y1), offsetof(G, X2), offsetof(G, Y2), offsetof(G, Depth),
                     offsetof(G, Width), offsetof(G, Kerf), offsetof(G, FeedDown), offsetof(G, Feed),
                     offsetof(G, ToolNumber), offsetof(G, GrooveSide)});
    using C = RouteCircle;
    ExpectAscending(
        {offsetof(C, X),        offsetof(C, Y),         offsetof(C, Z),        offsetof(C, Diameter),
         offsetof(C, Group),    offsetof(C, ToolNo),    offsetof(C, Tool),     offsetof(C, Radius),
         offsetof(C, Pass),     offsetof(C, Used),      offsetof(C, Speed),    offsetof(C, Feed),
         offsetof(C, FeedDown), offsetof(C, FeedRapid), offsetof(C, LeadIn),   offsetof(C, RampOut),
         offsetof(C, RampIn),   offsetof(C, Comp),      offsetof(C, Sequence), offsetof(C, MCode),
         offsetof(C, OscZ),     offsetof(C, Side),      offsetof(C, ExtraSlot)});
    using L = HBoreLineRecord;
    ExpectAscending({offsetof(L, X1), offsetof(L, Y1), offsetof(L, X2), offsetof(L, Y2), offsetof(L, Feed),
                     offsetof(L, Depth), offsetof(L, Reserved), offsetof(L, Edge), offsetof(L, Group),
                     offsetof(L, Speed), offsetof(L, Tool), offsetof(L, ExtraSlot), offsetof(L, Bottom)});
    using H = HBoreRecord;
    ExpectAscending({offsetof(H, Side), offsetof(H, Feed), offsetof(H, PosX), offsetof(H, PosY),
                     offsetof(H, Z), offsetof(H, Diameter), offsetof(H, Group), offsetof(H, Speed),
                     offsetof(H, Tool), offsetof(H, ExtraSlot), offsetof(H, Bottom)});
}

TEST(RecordArray, HoldsABlankElementZeroFromTheStart)
{
    RecordArray<VBoreRecord> bores;
    EXPECT_EQ(bores.Last(), 0);
    EXPECT_EQ(bores[0].X, 0);
    EXPECT_EQ(bores[0].Tool.Padded(), std::string(30, ' '));
}

TEST(RecordArray, GrowingKeepsWhatItHolds)
{
    RecordArray<GrooveRecord> grooves;
    for (int i = 1; i <= 1000; ++i)
        Grow(grooves, "grooves").X1 = static_cast<Single>(i);
    EXPECT_EQ(grooves.Last(), 1000);
    EXPECT_EQ(grooves[0].X1, 0);
    for (int i = 1; i <= 1000; ++i)
        ASSERT_EQ(grooves[i].X1, static_cast<Single>(i));
}

TEST(RecordArray, AnElementOfItsOwnCanBeAppended)
{
    RecordArray<VBoreRecord> bores;
    Grow(bores, "bores").X = 7;
    for (int i = 0; i < 100; ++i) // across several moves of the array
        bores.Append(bores[1]);
    EXPECT_EQ(bores.Last(), 101);
    EXPECT_EQ(bores[101].X, 7);
}

TEST(RecordArray, ClearLeavesABlankElementZero)
{
    RecordArray<VBoreRecord> bores;
    bores[0].X = 3;
    Grow(bores, "bores");
    bores.Clear();
    EXPECT_EQ(bores.Last(), 0);
    EXPECT_EQ(bores[0].X, 0);
}

TEST(RecordArray, CutToDropsTheTail)
{
    RecordArray<VBoreRecord> bores;
    for (int i = 1; i <= 5; ++i)
        Grow(bores, "bores").X = static_cast<Single>(i);
    bores.CutTo(2);
    EXPECT_EQ(bores.Last(), 2);
    EXPECT_EQ(bores[2].X, 2);
    EXPECT_EQ(Grow(bores, "bores").X, 0) << "what grows again is blank";
}

TEST(RecordArray, AnIntIndexEndsAt32767)
{
    RecordArray<GrooveRecord> grooves;
    for (int i = 1; i <= 32767; ++i)
        Grow(grooves, "grooves");
    EXPECT_EQ(grooves.Last(), 32767);
    try {
        Grow(grooves, "grooves");
        ADD_FAILURE() << "index 32768 was given";
    } catch (const RunError& error) {
        EXPECT_EQ(error.Number, 6);
        EXPECT_EQ(error.Cause, "More than 32767 grooves");
    }
    EXPECT_EQ(grooves.Last(), 32767);
}

} // namespace
} // namespace kv
