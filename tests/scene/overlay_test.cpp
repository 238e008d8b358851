// Two programs over each other: which work they share, by its place and measures.
#include "scene/overlay.h"

#include <gtest/gtest.h>

#include "machine/program_reader.h"
#include "scene/svg_picture.h"

namespace kv::test {
namespace {

constexpr const char* OverlayHeader = "G71X600Y400Z18T00N4L1\n";
const std::string BoreLine = "G81G90F3000G55P5R54=8X100Y50Z12\n";

NamedSteps Named(const std::string& name, const std::string& lines, const std::string& header = OverlayHeader)
{
    return {name, ReadProgram(header + lines)};
}

Scene OverlayOfLines(const std::string& first, const std::string& second)
{
    return OverlayOf(Named("A", first), Named("B", second));
}

void ExpectDifferent(const std::string& other)
{
    const Scene overlay = OverlayOfLines(BoreLine, other);
    EXPECT_EQ(WorksOnlyIn(overlay, HeldIn::First), "1 bore") << other;
    EXPECT_EQ(WorksOnlyIn(overlay, HeldIn::Second), "1 bore") << other;
    EXPECT_EQ(overlay.Items.size(), 2U) << other;
}

void ExpectAlike(const std::string& first, const std::string& second)
{
    const Scene overlay = OverlayOfLines(first, second);
    EXPECT_EQ(WorksOnlyIn(overlay, HeldIn::First), "nothing") << second;
    EXPECT_EQ(WorksOnlyIn(overlay, HeldIn::Second), "nothing") << second;
}

TEST(Overlays, ABoreDiffersByPlacePlaneDepthAndDiameter)
{
    ExpectDifferent("G81G90F3000G55P5R54=8X100.02Y50Z12\n");
    ExpectDifferent("G81G90F3000G55P5R54=8X100Y49.98Z12\n");
    ExpectDifferent("G81G90F3000G55P5R54=8X100Y50Z12.02\n");
    ExpectDifferent("G81G90F3000G55P5R54=8.5X100Y50Z12\n");
    ExpectDifferent("G81G90F3000G55P1R54=8X100Y12Z4\n");
}

TEST(Overlays, WithinAHundredthBoresAreTheSameAlsoAcrossASquare)
{
    ExpectAlike(BoreLine, "G81G90F3000G55P5R54=8X100.009Y49.992Z12\n");
    ExpectAlike("G81G90F3000G55P5R54=8X99.995Y50.001Z12\n", "G81G90F3000G55P5R54=8X100.004Y49.995Z12.005\n");
}

TEST(Overlays, OrderFeedAndToolNumberCountForNothing)
{
    const std::string route = "G88G90G55P5T0171G41R5X10Y10Z5\nG1G90F5000X300Y10Z5\n";
    const std::string sameRoute = "G88G90G55P5T0172G41R5X10Y10Z5\nG1G90F3000X300Y10Z5\n";
    ExpectAlike(BoreLine + route, sameRoute + "G81G90F1000G55P5R54=8X100Y50Z12\n");
}

TEST(Overlays, ARouteDiffersBySideRadiusAndEachOfItsMoves)
{
    const std::string start = "G88G90G55P5T0171G41R5X10Y10Z5\n", line = "G1G90X300Y10Z5\n";
    for (const std::string& other :
         {"G88G90G55P5T0171G42R5X10Y10Z5\n" + line, "G88G90G55P5T0171G41R6X10Y10Z5\n" + line,
          start + "G1G90X300Y11Z5\n", start + "G1G90X300Y10Z6\n", start + line + "G1G90X300Y50Z5\n",
          start + "G2G90G17X300Y10I145J0\n"}) {
        const Scene overlay = OverlayOfLines(start + line, other);
        EXPECT_EQ(WorksOnlyIn(overlay, HeldIn::First), "1 route") << other;
        EXPECT_EQ(WorksOnlyIn(overlay, HeldIn::Second), "1 route") << other;
    }
}

TEST(Overlays, ABoreThatIsDrilledTwiceWantsTwoPartners)
{
    const Scene overlay = OverlayOfLines(BoreLine + BoreLine, BoreLine);
    EXPECT_EQ(WorksOnlyIn(overlay, HeldIn::First), "1 bore");
    EXPECT_EQ(WorksOnlyIn(overlay, HeldIn::Second), "nothing");
}

TEST(Overlays, WorksNameTheirProgramAndTheirOwnGroup)
{
    const Scene overlay = OverlayOfLines(BoreLine, "M5\n" + BoreLine + "G81G90F3000G55P5R54=8X300Y50Z12\n");
    ASSERT_EQ(overlay.Items.size(), 2U);
    EXPECT_EQ(ItemSentence(overlay.Items[0]), "Line 2: bore, diameter 8, 12 deep");
    EXPECT_EQ(ItemSentence(overlay.Items[1]), "only in B: Line 4: bore, diameter 8, 12 deep");
    ASSERT_EQ(overlay.Groups.size(), 2U);
    EXPECT_EQ(GroupText(overlay.Groups[1]), "only in B: bore, diameter 8, 12 deep");
    EXPECT_EQ(overlay.Groups[1].Count, 1U);
    EXPECT_EQ(overlay.Views[0].Items, 2U);
}

// A contour around the panel folds the edges farther out in one of the programs.
TEST(Overlays, EdgesLieAlikeHoweverFarOneProgramReaches)
{
    const std::string edge = "G81G90G55P1R54=8X100Y30Z4\n";
    const std::string around = "G88G90G55P5T0171R10X-80Y-80Z5\nG1G90X680Y-80Z5\n";
    const Scene overlay = OverlayOfLines(edge, edge + around);
    EXPECT_EQ(WorksOnlyIn(overlay, HeldIn::First), "nothing");
    EXPECT_EQ(WorksOnlyIn(overlay, HeldIn::Second), "1 route");
    EXPECT_LE(overlay.Sheet.X, -80);
    EXPECT_GE(overlay.Sheet.X + overlay.Sheet.Width, 680);
}

TEST(Overlays, PanelsAreComparedByTheirSizes)
{
    const auto isSame = [](const std::string& header) {
        return AreOfOnePanel(Named("A", "").Steps, Named("B", "", header).Steps);
    };
    EXPECT_TRUE(isSame("G71X600Y400Z18T00N4L1\n"));
    EXPECT_FALSE(isSame("G71X601Y400Z18T00N4L1\n"));
    EXPECT_FALSE(isSame("G71X600Y401Z18T00N4L1\n"));
    EXPECT_FALSE(isSame("G71X600Y400Z19T00N4L1\n"));
}

TEST(Overlays, ThePictureHasSolidAndDashedOutlinesAndOnlyWhereProgramsDiffer)
{
    const std::string other = "G81G90F3000G55P5R54=8X300Y50Z12\n";
    const std::string svg =
        SvgElement(OverlayOfLines(BoreLine + other, other + "G81G90G55P5R54=8X9Y9Z5\n"), {});
    const auto countOf = [&svg](const std::string& part) {
        std::size_t count = 0;
        for (std::size_t at = svg.find(part); at != std::string::npos; at = svg.find(part, at + 1))
            ++count;
        return count;
    };
    EXPECT_EQ(countOf("<circle class=\"only-first\""), 1U);
    EXPECT_EQ(countOf("<circle class=\"only-second\""), 1U);
    EXPECT_EQ(countOf("class=\"hole\""), 3U);
    EXPECT_NE(PictureStyle().find(".only-second{fill:none;stroke:#d00000;stroke-width:4.5;stroke-dasharray"),
              std::string::npos);
    EXPECT_EQ(countOf("data-line=\"0\""), 1U) << "the second program's lines are not those of the slider";
}

} // namespace
} // namespace kv::test
