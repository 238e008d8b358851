// Places under a pointer: the folding the other way round, and their words.
#include "scene/sheet_places.h"

#include <gtest/gtest.h>

#include "machine/program_reader.h"

namespace kv::test {
namespace {

// A bore of each plane is found where the program has it.
TEST(SheetPlaces, EachSideGivesBackThePlacesOfItsBores)
{
    const MachineSteps steps =
        ReadProgram("G71X600Y400Z20T00N4L1\nG81G90G55P1R54=8X100Y30Z4\nG81G90G55P2R54=8X100Y30Z4\n"
                    "G81G90G55P3R54=8X30Y150Z4\nG81G90G55P4R54=8X30Y150Z4\nG81G90G55P5R54=8X30Y150Z4\n");
    const Scene scene = SceneOf(steps);
    ASSERT_EQ(scene.Items.size(), 5U);
    for (std::size_t i = 0; i < scene.Items.size(); ++i) {
        const std::optional<PlaceOnSide> place = PlaceOnSideOf(scene, scene.Items[i].At);
        ASSERT_TRUE(place) << i;
        EXPECT_EQ(place->On, steps.Bores[i].On);
        EXPECT_NEAR(place->Along, steps.Bores[i].At.X, 1e-9) << i;
        EXPECT_NEAR(place->Across, steps.Bores[i].At.Y, 1e-9) << i;
    }
}

TEST(SheetPlaces, BesideAllSidesThereIsNone)
{
    const Scene scene = SceneOf(ReadProgram("G71X600Y400Z20T00N4L1\nM2\n"));
    EXPECT_FALSE(PlaceOnSideOf(scene, {-10, 200}));
    EXPECT_EQ(PlaceText(scene, {-10, 200}, 1), "");
    EXPECT_EQ(PlaceText(Scene{}, {0, 0}, 1), "");
}

TEST(SheetPlaces, WordsCountFromTheProgramsCornerInItsUnit)
{
    Scene scene = SceneOf(ReadProgram("G71X600Y400Z20T00N4L1\nM2\n"));
    EXPECT_EQ(PlaceText(scene, {100, 50.04}, 1), "X 100, Y 50 mm");
    EXPECT_EQ(PlaceText(scene, {254, 127}, 25.4), "X 10, Y 5 in");
    scene.Origin.Right = scene.Origin.Top = true;
    EXPECT_EQ(PlaceText(scene, {100, 50}, 1), "X 500, Y 350 mm");
    EXPECT_EQ(PlaceText(scene, {100, -29}, 1), "side 2: 500 mm along, 4 mm below the face");
    EXPECT_EQ(PlaceText(scene, {-29, 100}, 1), "side 3: 300 mm along, 4 mm below the face");
}

} // namespace
} // namespace kv::test
