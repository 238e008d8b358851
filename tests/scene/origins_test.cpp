// What of the drawing an operation comes from: by its lines, each entity once, long lists cut short.
#include "scene/origins.h"

#include <gtest/gtest.h>

#include "machine/program_reader.h"

namespace kv {
namespace {

Scene TwoBoresAndARoute()
{
    return SceneOf(ReadProgram("G71X600Y400Z20T00N4L1\n"
                               "G81G90G55P5R54=30X100Y300Z20\n"
                               "G81G90G55P5R54=30X200Y300Z2\n"
                               "G88G90G55P5T0171G41R5X300Y100Z5\nG1G90F3000X500Y100Z5\n"
                               "G1G90F3000X500Y200Z5\n"));
}

DrawingOrigins FiveEntities()
{
    DrawingOrigins origins;
    origins.Entities = {{10, "CIRCLE on A", "2A"},
                        {20, "LINE on B", "3B"},
                        {30, "LINE on B", ""},
                        {40, "LINE on C", ""},
                        {50, "ARC on C", ""}};
    return origins;
}

TEST(OriginsTest, AnOperationComesFromAllEntitiesOfItsLines)
{
    Scene scene = TwoBoresAndARoute();
    DrawingOrigins origins = FiveEntities();
    origins.Programs = {{"C:\\CNC\\SRG\\A\\1", {{2, 0}, {4, 1}, {5, 1}, {6, 2}}}};
    NameOrigins(scene, origins, origins.Programs[0]);
    ASSERT_EQ(scene.Items.size(), 3U);
    EXPECT_EQ(scene.Items[0].DrawnLines, std::vector<std::size_t>{10});
    EXPECT_EQ(ItemSentence(scene.Items[0]),
              "Line 2: bore, diameter 30, 20 deep (through); from CIRCLE on A, line 10, handle 2A");
    EXPECT_TRUE(scene.Items[1].DrawnLines.empty());
    EXPECT_EQ(ItemSentence(scene.Items[1]), "Line 3: bore, diameter 30, 2 deep");
    EXPECT_EQ(scene.Items[2].DrawnLines, (std::vector<std::size_t>{20, 30}));
    EXPECT_EQ(scene.Items[2].From, "2 LINE on B, the first at line 20, handle 3B");
}

TEST(OriginsTest, AStopOfManyEntitiesNamesThreeKindsOfThem)
{
    Scene scene = TwoBoresAndARoute();
    DrawingOrigins origins = FiveEntities();
    origins.Programs = {{"P", {{2, 0}, {2, 1}, {2, 2}, {2, 3}, {2, 4}, {2, 0}}}};
    NameOrigins(scene, origins, origins.Programs[0]);
    EXPECT_EQ(scene.Items[0].From,
              "CIRCLE on A, line 10, handle 2A; 2 LINE on B, the first at line 20, handle 3B; "
              "LINE on C, line 40; and others");
    EXPECT_EQ(scene.Items[0].DrawnLines.size(), 5U);
}

TEST(OriginsTest, AProgramIsFoundByItsNameInAnyFolderAndCase)
{
    DrawingOrigins origins;
    origins.Programs = {{"C:\\CNC\\SRG\\A\\BC", {}}, {"C:\\CNC\\SRG\\A\\BD", {}}};
    EXPECT_EQ(OriginsOfProgram(origins, "D:\\other\\bd"), &origins.Programs[1]);
    EXPECT_EQ(OriginsOfProgram(origins, "D:\\other\\be"), nullptr);
}

} // namespace
} // namespace kv
