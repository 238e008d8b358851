// Programs with one wrong cut each, written by hand: what is cut beside the drawing and what is left of it
// is found, with its area and its place. The sound program of the same part shows nothing.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "machine/cnc_reader.h"
#include "machine/evolution_reader.h"
#include "machine/tool_way.h"
#include "proof/hand_ways.h"
#include "support/proof/region.h"

namespace kv::test {
namespace {

using Lines = std::vector<std::string>;
using ways::ArcTo;
using ways::LineTo;

constexpr double Pi = 3.14159265358979323846;
constexpr double Sliver = 0.01; // mm: rounded places and chords
constexpr double Exact = 0.1;   // mm2

struct Deviation {
    std::vector<RegionPiece> Outside, Left;
};

// Beside a part that is cut out: outside of the band is the part, and what lies beyond the tool.
Deviation DeviationOf(const MachineSteps& steps, const Region& asked)
{
    EXPECT_EQ(steps.Unread, Lines());
    const Region swept = SweptFace(steps);
    return {PiecesOf(ReachedBy(Difference(swept, asked), Sliver)),
            PiecesOf(ReachedBy(Difference(asked, swept), Sliver))};
}

void ExpectNone(const Deviation& found)
{
    EXPECT_TRUE(found.Outside.empty());
    EXPECT_TRUE(found.Left.empty());
}

Lines CncWith(const Lines& operations)
{
    Lines lines = {"G71X600Y400Z18T00N9L6", "G150(PART)"};
    lines.insert(lines.end(), operations.begin(), operations.end());
    lines.push_back("M2");
    return lines;
}

// A part of 100 by 60 from (100, 100) on with its lower right corner rounded by 20, cut out by a tool of 3
// that begins in the middle of the lower side and goes counter-clockwise with the tool on its right.
const std::string Begin = "G88G90G55P5T0171G42R3X150Y100Z20";
const std::string Bow = "G38G90X180Y120A0.00Z20";
const Lines Rest = {"G1G90X200Y160Z20", "G1G90X100Y160Z20", "G1G90X100Y100Z20", "G1G90X150Y100Z20"};

Lines PartWith(const std::string& begin, const std::string& bow)
{
    Lines lines = {begin, "G1G90X180Y100Z20", bow};
    lines.insert(lines.end(), Rest.begin(), Rest.end());
    return CncWith(lines);
}

Region Part()
{
    return Inside({ways::Joined({100, 100}, {LineTo(180, 100), ArcTo(200, 120, {180, 120}, 90),
                                             LineTo(200, 160), LineTo(100, 160), LineTo(100, 100)})});
}

Region BandAround(const Region& part)
{
    return Difference(Grown(part, 6), part);
}

TEST(WrongCuts, ASoundPartShowsNothing)
{
    ExpectNone(DeviationOf(ReadCnc(PartWith(Begin, Bow)), BandAround(Part())));
}

TEST(WrongCuts, TheWrongSideCutsIntoThePart)
{
    const std::string left = "G88G90G55P5T0171G41R3X150Y100Z20";
    const Deviation found = DeviationOf(ReadCnc(PartWith(left, Bow)), BandAround(Part()));
    ASSERT_EQ(found.Outside.size(), 1U);
    // A ring of 6 within the part; three corners keep what a tool of 3 leaves.
    const double part = 6000 - (1 - Pi / 4) * 400, core = 88 * 48 - (1 - Pi / 4) * 14 * 14;
    EXPECT_NEAR(found.Outside[0].Area, part - core - 3 * (1 - Pi / 4) * 9, Exact);
    EXPECT_TRUE(Holds(Part(), found.Outside[0].Inside));
    ASSERT_EQ(found.Left.size(), 1U);
    EXPECT_NEAR(found.Left[0].Area, AreaOf(BandAround(Part())), Exact);
}

TEST(WrongCuts, ThreeQuartersInPlaceOfAQuarterTurn)
{
    // The same place at the end, the other way round: over the part and beyond its corner.
    const Deviation found =
        DeviationOf(ReadCnc(PartWith(Begin, "G37G90X180Y120A0.00Z20")), BandAround(Part()));
    ASSERT_FALSE(found.Outside.empty());
    // A ring of three quarters, of radius 14 to 20, with the tool's ends.
    EXPECT_GT(found.Outside[0].Area, 0.75 * Pi * (400 - 196) - 60);
    EXPECT_LT(found.Outside[0].Area, 0.75 * Pi * (400 - 196) + 60);
    EXPECT_LT(Between(found.Outside[0].Inside, {180, 120}), 21);
    EXPECT_GT(Between(found.Outside[0].Inside, {180, 120}), 13);
    ASSERT_FALSE(found.Left.empty()); // the corner's own quarter
    EXPECT_GT(found.Left[0].Inside.X, 180);
    EXPECT_LT(found.Left[0].Inside.Y, 120);
}

TEST(WrongCuts, ABulgeTheLongWayRound)
{
    const Region band = BandAround(Part());
    ExpectNone(DeviationOf(ReadCnc(PartWith(Begin, "G38G90X200Y120U20Z20")), band));
    const Deviation found = DeviationOf(ReadCnc(PartWith(Begin, "G38G90X200Y120U-20Z20")), band);
    ASSERT_FALSE(found.Outside.empty());
    EXPECT_GT(found.Outside[0].Area, 400); // three quarters around (200, 100)
    EXPECT_FALSE(Holds(Part(), found.Outside[0].Inside));
}

TEST(WrongCuts, ATenthOfAMillimetreIntoTheWall)
{
    Lines lines = PartWith(Begin, Bow);
    lines[5] = "G1G90X199.9Y160Z20";
    // The right side, 40 long, leans in by up to 0.1: a wedge.
    const Deviation found = DeviationOf(ReadCnc(lines), BandAround(Part()));
    ASSERT_EQ(found.Outside.size(), 1U);
    EXPECT_NEAR(found.Outside[0].Area, 40 * 0.1 / 2, 0.05);
    EXPECT_NEAR(found.Outside[0].Inside.X, 199.95, 0.05);
    EXPECT_GT(found.Outside[0].Inside.Y, 120);
    EXPECT_LT(found.Outside[0].Inside.Y, 160);
    EXPECT_TRUE(IsWiderThan(found.Outside[0].Itself, 0.05));
    EXPECT_FALSE(IsWiderThan(found.Outside[0].Itself, 0.1));
}

TEST(WrongCuts, ASideThatIsNotCutIsLeft)
{
    Lines lines = PartWith(Begin, Bow);
    lines[6] = "G88G90G55P5T0171G42R3X100Y160Z20"; // up and over the upper side
    const Deviation found = DeviationOf(ReadCnc(lines), BandAround(Part()));
    EXPECT_TRUE(found.Outside.empty());
    ASSERT_FALSE(found.Left.empty());
    // 100 by 6 and the rounds at both ends, without the two half discs where the tool went up and down.
    EXPECT_NEAR(found.Left[0].Area, 600 + 2 * Pi / 4 * 36 - Pi * 9, 15);
    EXPECT_NEAR(found.Left[0].Inside.Y, 163, 3);
}

// A pocket of 40 by 40 from (100, 100) on, cleared by a tool of 5 in rings that each are cut along their
// middle. Its corners keep what the tool's radius leaves.
Lines Ring(double from, double to)
{
    const std::string low = std::to_string(from), high = std::to_string(to);
    return {"G88G90G55P5T0171R5X" + low + "Y" + low + "Z5", "G1G90X" + high + "Y" + low + "Z5",
            "G1G90X" + high + "Y" + high + "Z5", "G1G90X" + low + "Y" + high + "Z5",
            "G1G90X" + low + "Y" + low + "Z5"};
}

Lines PocketOf(const std::vector<std::pair<double, double>>& rings)
{
    Lines lines;
    for (const auto& [from, to] : rings) {
        const Lines ring = Ring(from, to);
        lines.insert(lines.end(), ring.begin(), ring.end());
    }
    return CncWith(lines);
}

TEST(WrongCuts, AnIslandThatIsLeftInAPocket)
{
    const Region pocket = ReachedBy(BoxOf({100, 100}, {140, 140}), 10);
    ExpectNone(DeviationOf(ReadCnc(PocketOf({{105, 135}, {113, 127}, {118, 122}})), pocket));
    // Without the inner rings 20 by 20 stay in the middle.
    const Deviation one = DeviationOf(ReadCnc(PocketOf({{105, 135}})), pocket);
    ASSERT_EQ(one.Left.size(), 1U);
    EXPECT_NEAR(one.Left[0].Area, 400, Exact);
    EXPECT_NEAR(one.Left[0].Inside.X, 120, 10);
    EXPECT_NEAR(one.Left[0].Inside.Y, 120, 10);
    EXPECT_TRUE(one.Outside.empty());
    // A ring that begins just where the outer one ends leaves corners of 5 by 5 less the round of the tool.
    const Deviation corners = DeviationOf(ReadCnc(PocketOf({{105, 135}, {115, 125}})), pocket);
    ASSERT_EQ(corners.Left.size(), 4U);
    for (const RegionPiece& island : corners.Left)
        EXPECT_NEAR(island.Area, (1 - Pi / 4) * 25, Exact);
}

TEST(WrongCuts, ASlotNarrowerThanItsToolIsAFaultAndShowsWhatItCuts)
{
    const MachineSteps steps = ReadCnc(CncWith({"G88G90G55P5T0171G41R6X100Y100Z5", "G1G90X150Y100Z5",
                                                "G1G90X150Y110Z5", "G1G90X100Y110Z5", "G1G90X100Y100Z5"}));
    const std::vector<WayFault> faults = WayFaults(steps);
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].Line, 5U);
    EXPECT_LT(Between(faults[0].At, {150, 100}), 1e-9);
    const Deviation found = DeviationOf(steps, BoxOf({100, 100}, {150, 110}));
    ASSERT_EQ(found.Outside.size(), 2U); // 2 beyond each long side
    EXPECT_GT(found.Outside[1].Area, 50);
}

// The program for a Genesis Evolution of the part above, drawn with the corner at the upper right.
Lines EvolutionPart(const std::string& side, const std::string& sense, const std::string& end)
{
    return {"T",
            "$=PART",
            "::SIDE=1;",
            "::UNm DL=600 DH=400 DS=18",
            "SIDE#1{",
            "W#89{ ::WTs WS=1 #1=450 #2=300 #3=-20 #36=3 #40=" + side + " #205=71 }W",
            "W#2201{ ::WTl #1=420 #2=300 #3=-20 }W",
            "W#2113{ ::WTa #3=-20 #31=a;420 #32=a;280 #34=" + sense + " #8044=" + end + " }W",
            "W#2201{ ::WTl #1=400 #2=240 #3=-20 }W",
            "W#2201{ ::WTl #1=500 #2=240 #3=-20 }W",
            "W#2201{ ::WTl #1=500 #2=300 #3=-20 }W",
            "W#2201{ ::WTl #1=450 #2=300 #3=-20 }W",
            "}SIDE"};
}

TEST(WrongCuts, TheSamePartOnAnEvolutionThatCountsFromAnotherCorner)
{
    const Region band = BandAround(Part());
    const EvolutionReading upperRight{{true, true}, true};
    ExpectNone(DeviationOf(ReadEvolution(EvolutionPart("2", "1", "180."), upperRight), band));
    const Deviation side = DeviationOf(ReadEvolution(EvolutionPart("1", "1", "180."), upperRight), band);
    ASSERT_EQ(side.Outside.size(), 1U);
    EXPECT_TRUE(Holds(Part(), side.Outside[0].Inside));
    const Deviation sense = DeviationOf(ReadEvolution(EvolutionPart("2", "0", "180."), upperRight), band);
    EXPECT_FALSE(sense.Outside.empty());
    const Deviation corner =
        DeviationOf(ReadEvolution(EvolutionPart("2", "1", "180."), {{true, false}, true}), band);
    EXPECT_FALSE(corner.Outside.empty());
    EXPECT_FALSE(corner.Left.empty());
}

} // namespace
} // namespace kv::test
