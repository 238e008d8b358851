// Bores of the face in programs of the horizontal drilling machine: which belong to the edge, their
// tools and words, and the mirror images that are made with them. The panel is 600 by 400 by 18.
#include <cmath>

#include "state/run.h"
#include "writers/hbd/hbd_scene.h"

namespace kv {
namespace {

using GroupsOfBores = std::vector<Int>;

class HbdFaceBores : public HbdScene {
  protected:
    // An edge bore that decides on the edge and is made by tool 1.
    static void Drill(Long edge) { HBores.Append(EdgeBore(edge, 100, 30)); }
};

struct PlaceRow {
    Long Edge;
    Single X, Y;
    std::string Along, FromEdge;
};

TEST_F(HbdFaceBores, AlongAndDistanceFromEachEdge)
{
    const std::vector<PlaceRow> rows = {{1, 100, 50, "#1=100", "#2=hf-50"},
                                        {2, 100, 360, "#1=500", "#2=hf-40"},
                                        {3, 30, 90, "#1=90", "#2=hf-30"},
                                        {4, 580, 90, "#1=310", "#2=hf-20"}};
    for (const PlaceRow& row : rows) {
        for (const bool withEdgeBore : {true, false}) {
            NewDrawing("DOOR");
            if (withEdgeBore)
                Drill(row.Edge);
            AddFaceBore(row.X, row.Y);
            EXPECT_EQ(FaceLines(), (Texts{"W#82{ ::WTp", "#205=4 " + row.Along + " " + row.FromEdge +
                                                             " #3=-12 #8015=0 #201=1 #1001=1 }W"}))
                << row.Edge;
            EXPECT_EQ(Groups(), (GroupsOfBores{0}));
        }
    }
}

TEST_F(HbdFaceBores, UpToTheLimitAndNotBeyond)
{
    Drill(1);
    AddFaceBore(100, 50);
    AddFaceBore(200, 50.001F);
    AddFaceBore(300, -5);
    EXPECT_EQ(FaceLines().size(), 4U);
    EXPECT_EQ(Groups(), (GroupsOfBores{0, 1, 0}));
    NewDrawing("DOOR");
    Drill(4);
    AddFaceBore(550, 100); // 600 - 550
    AddFaceBore(549.75F, 200);
    EXPECT_EQ(FaceLines().size(), 2U);
    EXPECT_EQ(Groups(), (GroupsOfBores{0, 1}));
    NewDrawing("DOOR");
    Drill(2);
    AddFaceBore(100, 350);
    AddFaceBore(200, 349.75F);
    FaceLines();
    EXPECT_EQ(Groups(), (GroupsOfBores{0, 1}));
    NewDrawing("DOOR");
    Drill(3);
    AddFaceBore(50, 100);
    AddFaceBore(50.25F, 200);
    FaceLines();
    EXPECT_EQ(Groups(), (GroupsOfBores{0, 1}));
}

TEST_F(HbdFaceBores, BelongToTheEdgeOfTheEdgeBoresOnly)
{
    Drill(1);
    AddFaceBore(30, 200);  // at the left edge
    AddFaceBore(300, 380); // at the upper edge
    EXPECT_TRUE(FaceLines().empty());
    EXPECT_EQ(Groups(), (GroupsOfBores{1, 1}));
}

TEST_F(HbdFaceBores, TheLimitIsInMillimetres)
{
    Run.DrawingInInch = 1;
    Run.UnitFactor = 25.4F;
    Drill(1);
    AddFaceBore(100, 1.9685F); // 50 / 25.4 is 1.968504
    AddFaceBore(200, 1.9686F);
    FaceLines();
    EXPECT_EQ(Groups(), (GroupsOfBores{0, 1}));
}

TEST_F(HbdFaceBores, TheLimitIsKeptAsASingle)
{
    // 366.7 is kept as 366.7000122, and so is the bore's place.
    Config.HBDVBoreLimit = "366.7";
    Drill(1);
    AddFaceBore(100, 366.7F);
    EXPECT_EQ(FaceLines().size(), 2U);
}

TEST_F(HbdFaceBores, DistancesFromTheFarEdgesAreSingles)
{
    // 400 - 16.7 is 383.2999992 and is kept as 383.2999878, the Single of the limit.
    Config.HBDVBoreLimit = "383.3";
    Run.SideWidth[5] = 400;
    Drill(2);
    AddFaceBore(100, 16.7F);
    EXPECT_EQ(FaceLines().size(), 2U);
    HBores.Clear();
    VBores.Clear();
    Drill(4);
    AddFaceBore(16.7F, 100);
    EXPECT_EQ(FaceLines().size(), 2U);
}

TEST_F(HbdFaceBores, WithoutALimitOnlyTheEdgeItselfBelongs)
{
    Config.HBDVBoreLimit = "";
    Drill(1);
    AddFaceBore(100, 0);
    AddFaceBore(200, 1);
    EXPECT_EQ(FaceLines().size(), 2U);
    EXPECT_EQ(Groups(), (GroupsOfBores{0, 1}));
}

TEST_F(HbdFaceBores, OfTwoEdgesInReachTheLastOneWins)
{
    const std::vector<PlaceRow> rows = {{0, 30, 30, "#1=30", "#2=hf-30"},    // 1 and 3: 3
                                        {0, 580, 20, "#1=380", "#2=hf-20"},  // 1 and 4: 4
                                        {0, 30, 390, "#1=390", "#2=hf-30"},  // 2 and 3: 3
                                        {0, 590, 370, "#1=30", "#2=hf-10"}}; // 2 and 4: 4
    for (const PlaceRow& row : rows) {
        NewDrawing("DOOR");
        AddFaceBore(row.X, row.Y);
        const Texts lines = FaceLines();
        EXPECT_EQ(WordOf(lines, "#1="), row.Along) << row.X;
        EXPECT_EQ(WordOf(lines, "#2="), row.FromEdge) << row.X;
    }
    NewDrawing("DOOR");
    Run.SideHeight[5] = 60; // 1 and 2: 2
    AddFaceBore(300, 25);
    const Texts lines = FaceLines();
    EXPECT_EQ(WordOf(lines, "#1="), "#1=300");
    EXPECT_EQ(WordOf(lines, "#2="), "#2=hf-35");
}

TEST_F(HbdFaceBores, TheFirstBoreNearAnEdgeDecidesForAll)
{
    AddFaceBore(300, 200); // near none
    AddFaceBore(300, 380); // edge 2
    AddFaceBore(30, 200);  // near edge 3, which is not drilled
    AddFaceBore(100, 370);
    EXPECT_EQ(FaceLines().size(), 4U);
    EXPECT_EQ(Groups(), (GroupsOfBores{1, 0, 1, 0}));
}

TEST_F(HbdFaceBores, ABoreThatIsTakenAlreadyDecidesOnTheEdgeButIsNotMade)
{
    AddFaceBore(300, 380);
    VBores[1].Group = 0;
    AddFaceBore(30, 200);
    AddFaceBore(100, 370);
    EXPECT_EQ(FaceLines().size(), 2U);
    EXPECT_EQ(Groups(), (GroupsOfBores{0, 1, 0}));
}

TEST_F(HbdFaceBores, ABoreWithoutAToolDecidesOnTheEdgeAndStays)
{
    AddFaceBore(300, 380, 12, 35);
    AddFaceBore(100, 370);
    AddFaceBore(30, 200);
    EXPECT_EQ(FaceLines().size(), 2U);
    EXPECT_EQ(Groups(), (GroupsOfBores{1, 0, 1}));
}

TEST_F(HbdFaceBores, TheToolIsTheFirstPairOfDigitsElseTheTables)
{
    const std::map<std::string, std::string> expected = {
        {"07", "#205=7"}, {"0712", "#205=7"}, {"1207", "#205=12"}, {"9", "#205=9"},
        {"", "#205=4"},   {"00", "#205=4"},   {"0012", "#205=4"}};
    for (const auto& [tool, word] : expected) {
        NewDrawing("DOOR");
        Drill(1);
        AddFaceBore(100, 20);
        VBores[1].Tool = tool;
        EXPECT_EQ(WordOf(FaceLines(), "#205="), word) << tool;
    }
}

TEST_F(HbdFaceBores, TheTableIsAskedForTheExactDiameter)
{
    const std::map<Single, std::string> expected = {
        {5.0F, "#205=2"}, {8.0F, "#205=4"}, {8.0009F, ""}, {10, ""}};
    for (const auto& [diameter, word] : expected) {
        NewDrawing("DOOR");
        Drill(1);
        AddFaceBore(100, 20, 12, diameter);
        EXPECT_EQ(WordOf(FaceLines(), "#205="), word) << diameter;
        EXPECT_EQ(Groups(), (GroupsOfBores{static_cast<Int>(word.empty() ? 1 : 0)})) << diameter;
    }
    NewDrawing("DOOR");
    Put("KVHBD.cfg", "Horizontal\t8\t0\t0\r\nVertical\t8.1\t0\t0\r\nVertical\t8\t0\t0\r\n");
    Drill(1);
    AddFaceBore(100, 20, 12, 8.1F); // as Singles
    AddFaceBore(200, 20, 12, 8);    // the table's last row
    EXPECT_EQ(WordOf(FaceLines(), "#205="), "#205=2");
    EXPECT_EQ(Groups(), (GroupsOfBores{0, 1}));
}

TEST_F(HbdFaceBores, DepthAndDistanceAreCoordinates)
{
    Drill(1);
    AddFaceBore(100.126F, 0.126F, 12.5F);
    const Texts lines = FaceLines();
    EXPECT_EQ(WordOf(lines, "#1="), "#1=100.13");
    EXPECT_EQ(WordOf(lines, "#2="), "#2=hf-.13");
    EXPECT_EQ(WordOf(lines, "#3="), "#3=-12.5");
    NewDrawing("DOOR");
    Drill(1);
    AddFaceBore(100, -5, 205);
    const Texts odd = FaceLines();
    EXPECT_EQ(WordOf(odd, "#2="), "#2=hf--5"); // the sign comes behind the sign
    EXPECT_EQ(WordOf(odd, "#3="), "#3=-205");  // no reference to a variable
}

struct ImageRow {
    Long Edge;
    Single X, Y, ImageX, ImageY;
};

TEST_F(HbdFaceBores, TheMirrorImageOnTheFarSideIsTakenAwayUnwritten)
{
    const std::vector<ImageRow> rows = {
        {1, 100, 34, 100, 366}, {2, 100, 366, 100, 34}, {3, 34, 100, 566, 100}, {4, 566, 100, 34, 100}};
    for (const ImageRow& row : rows) {
        NewDrawing("DOOR");
        Drill(row.Edge);
        AddFaceBore(row.ImageX, row.ImageY); // before it in the list
        AddFaceBore(row.X, row.Y);
        AddFaceBore(row.ImageX, row.ImageY, 12, 35); // whatever its diameter
        EXPECT_EQ(FaceLines().size(), 2U) << row.Edge;
        EXPECT_EQ(Groups(), (GroupsOfBores{0, 0, 0})) << row.Edge;
    }
}

TEST_F(HbdFaceBores, AnotherDepthPlaceOrDistanceIsNoImage)
{
    const std::vector<ImageRow> rows = {
        {1, 100, 34, 100, 366}, {2, 100, 366, 100, 34}, {3, 34, 100, 566, 100}, {4, 566, 100, 34, 100}};
    for (const ImageRow& row : rows) {
        NewDrawing("DOOR");
        Drill(row.Edge);
        AddFaceBore(row.X, row.Y);
        AddFaceBore(row.ImageX, row.ImageY, 12.001F);
        AddFaceBore(row.ImageX + 0.001F, row.ImageY);
        AddFaceBore(row.ImageX, row.ImageY + 0.001F);
        FaceLines();
        EXPECT_EQ(Groups(), (GroupsOfBores{0, 1, 1, 1})) << row.Edge;
    }
}

TEST_F(HbdFaceBores, TheLastBitOfTheRowDecidesOnAnImage)
{
    const Single beside = std::nextafter(1.0F, 2.0F); // 600 less this is 599 again
    const std::vector<ImageRow> rows = {
        {1, 1, 34, beside, 366}, {2, 1, 366, beside, 34}, {3, 34, 1, 566, beside}, {4, 566, 1, 34, beside}};
    for (const ImageRow& row : rows) {
        NewDrawing("DOOR");
        Drill(row.Edge);
        AddFaceBore(row.X, row.Y);
        AddFaceBore(row.ImageX, row.ImageY);
        FaceLines();
        EXPECT_EQ(Groups(), (GroupsOfBores{0, 1})) << row.Edge;
    }
}

TEST_F(HbdFaceBores, ABoreAcrossThePanelFromAnUnmadeOneStays)
{
    Drill(1);
    AddFaceBore(100, 34, 12, 35); // no tool
    AddFaceBore(100, 366);
    FaceLines();
    EXPECT_EQ(Groups(), (GroupsOfBores{1, 1}));
}

TEST_F(HbdFaceBores, AnImagesDifferenceIsASingle)
{
    // 400 - 33.3 is 366.7000008, kept as the Single 366.7; 400 - 366.7 is 33.2999878, which is another
    // Single than 33.3. So the place of the difference decides which of the two has an image.
    struct Row {
        Long Edge;
        Single First, Second;
        std::size_t Made;
    };
    const std::vector<Row> rows = {
        {1, 366.7F, 33.3F, 1}, {1, 33.3F, 366.7F, 2}, {2, 33.3F, 366.7F, 1}, {2, 366.7F, 33.3F, 2}};
    Config.HBDVBoreLimit = "400";
    for (const Row& row : rows) {
        NewDrawing("DOOR");
        Drill(row.Edge);
        AddFaceBore(100, row.First);
        AddFaceBore(100, row.Second);
        EXPECT_EQ(FaceLines().size(), 2 * row.Made) << row.Edge << ' ' << row.First;
    }
    Run.SideWidth[5] = 400;
    for (const Row& row : rows) {
        const Long edge = row.Edge == 1 ? 3 : 4;
        HBores.Clear();
        VBores.Clear();
        Drill(edge);
        AddFaceBore(row.First, 100);
        AddFaceBore(row.Second, 100);
        EXPECT_EQ(FaceLines().size(), 2 * row.Made) << edge << ' ' << row.First;
    }
}

TEST_F(HbdFaceBores, TwinsOnTheMiddleLineAreMadeOnce)
{
    Config.HBDVBoreLimit = "200";
    Drill(1);
    AddFaceBore(100, 200);
    AddFaceBore(100, 200);
    EXPECT_EQ(FaceLines().size(), 2U);
    EXPECT_EQ(Groups(), (GroupsOfBores{0, 0}));
}

TEST_F(HbdFaceBores, TwinsNearTheEdgeAreMadeTwice)
{
    Drill(1);
    AddFaceBore(100, 34);
    AddFaceBore(100, 34);
    EXPECT_EQ(FaceLines().size(), 4U);
}

TEST_F(HbdFaceBores, AnImageTakenAwayIsNotMadeEvenWhereItBelongs)
{
    Config.HBDVBoreLimit = "400"; // all of the face
    Drill(1);
    AddFaceBore(100, 34);
    AddFaceBore(100, 366);
    EXPECT_EQ(FaceLines().size(), 2U);
}

TEST_F(HbdFaceBores, AreTakenAwayFromTheMainWriterWithTheirImages)
{
    Drill(1);
    AddFaceBore(100, 34);
    AddFaceBore(100, 366);
    AddFaceBore(300, 200);
    Config.MakeHBD = 1;
    Config.HbdAvailable = true;
    RunProgramWriters();
    EXPECT_EQ(Get("PROG/SRG/D/OOR"),
              FileOf({"G71X600Y400Z18T00N4L1", "G150(DOOR)", "G81G90G55P5R54=8X300Y200Z12", "M2"}));
}

TEST_F(HbdFaceBores, AFullDrawingOfImagesTakesNoTime)
{
    Config.HBDVBoreLimit = "400";
    Drill(1);
    for (int i = 0; i < MaxIndex; ++i)
        AddFaceBore(100, i % 2 == 0 ? 34.0F : 366.0F);
    // The first one takes all images away; its 16383 twins are made beside it.
    EXPECT_EQ(FaceLines().size(), 2U * 16384U);
    for (const Int group : Groups())
        ASSERT_EQ(group, 0);
}

} // namespace
} // namespace kv
