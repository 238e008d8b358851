// Where things are and whether a person sees them: mirrored entities, hidden ones, a border below zero, the
// drawing's unit, a file that grows.
#include <cmath>
#include <fstream>

#include "import/import_scene.h"
#include "platform/line_scanner.h"

namespace kv::test {
namespace {

struct ImportPlaces : ImportScene {};

const std::string Down = Pair(210, 0) + Pair(220, 0) + Pair(230, -1);

TEST_F(ImportPlaces, MirroredEntitiesOfEveryKindComeToThePlane)
{
    const auto records =
        Read({.Entities = Circle("VBORE", -100, 50, 4, Down) + Arc("ROUTE1", -100, 50, 10, 0, 90, Down) +
                          Lwpolyline("ROUTE2", {{-10, 0, 0.5}, {-20, 0}}, Down) +
                          Polyline("ROUTE3", {{-10, 0, 0.5}, {-20, 0}}, Down) +
                          TextAt("NAME", -7, 8, "X", Down) + Line("ROUTE4", 1, 2, 3, 4, Down)});
    ASSERT_EQ(KindsOf(records),
              "CIRCLE ARC POLYLINE VERTEX VERTEX SEQEND POLYLINE VERTEX VERTEX SEQEND TEXT LINE");
    EXPECT_NEAR(records[0].X1, 100, 1e-5);
    EXPECT_NEAR(records[1].X1, 100, 1e-5);
    EXPECT_NEAR(records[1].StartAngle, 90, 1e-4);
    EXPECT_NEAR(records[1].EndAngle, 180, 1e-4);
    EXPECT_NEAR(records[3].X1, 10, 1e-5);
    EXPECT_NEAR(records[3].Bulge, -0.5, 1e-6);
    EXPECT_NEAR(records[7].X1, 10, 1e-5);
    EXPECT_NEAR(records[7].Bulge, -0.5, 1e-6);
    EXPECT_NEAR(records[10].X1, 7, 1e-5);
    EXPECT_NEAR(records[11].X1, 1, 1e-5) << "ends of a line are in the drawing's own system";
    for (const DxfEntity& record : records)
        EXPECT_EQ(record.ExtrusionZ, 0);
}

TEST_F(ImportPlaces, AnExtrusionTowardAnEdgeStays)
{
    const std::string edge = Pair(210, 1) + Pair(220, 0) + Pair(230, 0);
    const WholeDrawing drawing{.Entities = Circle("HBORE", 30, 9, 4, edge)};
    const auto records = Read(drawing);
    ASSERT_EQ(KindsOf(records), "CIRCLE");
    EXPECT_EQ(records[0].Side.Trimmed(), "3");
    EXPECT_TRUE(Place.Lines.empty()) << Place.ReportText();
}

TEST_F(ImportPlaces, ABlockTurnedUpBringsItsCirclesToTheEdge)
{
    // An INSERT whose own extrusion is X: its plane stands on the edge, Y of the block along Y of the
    // drawing.
    const auto records =
        Read({.Entities = Insert("0", "B", 30, 9, Pair(210, 1) + Pair(220, 0) + Pair(230, 0)),
              .Blocks = Block("B", Circle("HBORE", 5, 2, 4))});
    ASSERT_EQ(KindsOf(records), "CIRCLE");
    EXPECT_EQ(records[0].Side.Trimmed(), "3");
    EXPECT_NEAR(records[0].X1, 35, 1e-5);
    EXPECT_NEAR(records[0].Y1, 11, 1e-5);
}

TEST_F(ImportPlaces, HiddenEntitiesAreLeftOutAndNamed)
{
    const WholeDrawing drawing{
        .Entities = Circle("VBORE", 1, 0, 4, Pair(67, 1)) + Circle("FROST", 2, 0, 4) +
                    Circle("OFF", 3, 0, 4) + Circle("VBORE", 4, 0, 4, Pair(60, 1)) + Circle("VBORE", 5, 0, 4),
        .Tables = HiddenLayer("Frost", 1, 7) + HiddenLayer("Off", 0, -7) + HiddenLayer("VBORE", 0, 7)};
    const auto records = Read(drawing);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].X1, 5);
    EXPECT_TRUE(Place.Reported("Layer VBORE: CIRCLE in paper space was left out")) << Place.ReportText();
    EXPECT_TRUE(Place.Reported("Layer FROST: CIRCLE on a frozen layer was left out")) << Place.ReportText();
    EXPECT_TRUE(Place.Reported("Layer OFF: CIRCLE on a layer that is off was left out"))
        << Place.ReportText();
    EXPECT_EQ(Read(drawing, "told").size(), 5u);
    EXPECT_TRUE(
        Place.Reported("Layer FROST: CIRCLE on a frozen layer is read; Import=full would leave it out"))
        << Place.ReportText();
}

TEST_F(ImportPlaces, HiddenLayersWithinBlocksAreLeftOutToo)
{
    const std::string block =
        Block("B", Circle("FROST", 0, 0, 4) + Circle("VBORE", 1, 0, 4) + Circle("0", 2, 0, 4));
    const std::string tables =
        HiddenLayer("FROST", 1, 7) + HiddenLayer("OFF", 0, -7) + HiddenLayer("COLD", 1, 7);
    auto records = Read({.Entities = Insert("0", "B", 10, 0), .Blocks = block, .Tables = tables});
    EXPECT_EQ(LayersOf(records), "VBORE 0");
    records = Read({.Entities = Insert("OFF", "B", 10, 0), .Blocks = block, .Tables = tables});
    EXPECT_EQ(LayersOf(records), "VBORE") << "a layer that is off hides what takes it over";
    records = Read({.Entities = Insert("COLD", "B", 10, 0), .Blocks = block, .Tables = tables});
    EXPECT_TRUE(records.empty()) << "a frozen INSERT is gone with all that it holds";
}

TEST_F(ImportPlaces, ABorderBelowZeroIsMovedWithAllThatIsDrawn)
{
    const WholeDrawing drawing{
        .Entities = Rectangle("BORDER_Z18", -300, -200, 600, 400) + Circle("VBORE_Z10", -250, -150, 4) +
                    Arc("ROUTE1_Z5T71", 0, 0, 20, 0, 90) + TextAt("NOTE", -300, 0, "X") +
                    Lwpolyline("ROUTE2_Z5T71", {{0, 0}, {9, 9}})};
    ASSERT_TRUE(Place.Convert(drawing.Text()));
    Config.Import = "full";
    ASSERT_TRUE(Place.Convert(drawing.Text())) << Place.ReportText();
    EXPECT_TRUE(Place.Reported("The drawing was moved by X300 Y200, since its border reaches below zero"));
    const std::vector<std::string> moved = Place.Program();
    const WholeDrawing plain{.Entities =
                                 Rectangle("BORDER_Z18", 0, 0, 600, 400) + Circle("VBORE_Z10", 50, 50, 4) +
                                 Arc("ROUTE1_Z5T71", 300, 200, 20, 0, 90) + TextAt("NOTE", 0, 200, "X") +
                                 Lwpolyline("ROUTE2_Z5T71", {{300, 200}, {309, 209}})};
    Config.Import = "plain";
    ASSERT_TRUE(Place.Convert(plain.Text()));
    EXPECT_EQ(moved, Place.Program());
}

TEST_F(ImportPlaces, UnitModeFourIsTheDrawingsUnit)
{
    const auto unitOf = [&](int units, double width) {
        Config.UnitMode = "4";
        const std::string header = units == 0 ? std::string() : Pair(9, "$INSUNITS") + Pair(70, units);
        EXPECT_TRUE(Place.Convert(WholeDrawing{.Entities = Rectangle("BORDER_Z18", 0, 0, width, 50) +
                                                           Circle("VBORE_Z10", 20, 20, 4),
                                               .Header = header}
                                      .Text()));
        return Run.DrawingInInch;
    };
    EXPECT_EQ(unitOf(4, 150), False) << "small, and yet millimetres";
    EXPECT_EQ(unitOf(1, 600), True) << "large, and yet inches";
    EXPECT_EQ(unitOf(0, 150), True) << "the size decides where the drawing says nothing";
    EXPECT_EQ(unitOf(5, 600), False) << "or another unit";
}

TEST_F(ImportPlaces, AFileThatGrowsEndsWhereItEnded)
{
    const std::filesystem::path file = Place.Write("GROWS.TXT", std::string(3'000'000, 'a') + "\nb\n");
    LineScanner scanner;
    scanner.Open(FromHostPath(file.string()));
    scanner.NextLine(); // refused for its length; the file is open
    LineScanner lines;
    const std::filesystem::path growing = Place.Write("GROWS2.TXT", "a\nb\n");
    lines.Open(FromHostPath(growing.string()));
    std::ofstream(growing, std::ios::app) << "c\nd\n";
    EXPECT_EQ(lines.NextLine(), "a");
    EXPECT_EQ(lines.NextLine(), "b");
    EXPECT_EQ(lines.NextLine(), "");
    EXPECT_TRUE(lines.AtEnd);
}

// Each of them has fifty times the bytes of the file's in memory.
TEST_F(ImportPlaces, MillionsOfRecordsOfNothingTakeAFewSlots)
{
    std::string nothing;
    for (int i = 0; i < 100'000; ++i)
        nothing += "0\nA\n";
    for (const std::string_view mode : {"plain", "told", "full"}) {
        const auto records =
            Read({.Entities = Circle("VBORE", 1, 2, 4) + nothing + Circle("VBORE", 3, 4, 5)}, mode);
        ASSERT_EQ(records.size(), 1002u);
        EXPECT_EQ(records.back().X1, 3);
        EXPECT_EQ(DrawnEntities.Last(), 100'002);
        EXPECT_EQ(DrawnKindOf(100'001), "A");
    }
}

} // namespace
} // namespace kv::test
