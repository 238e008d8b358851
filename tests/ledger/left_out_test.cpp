// What no program holds is reported by the rule that took it away, with its layer, count, file line and
// handle; what a pass reports by itself is not reported twice.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "job/job_driver.h"
#include "platform/paths.h"
#include "proof/shop.h"
#include "state/report.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/source_files.h"

namespace kv::test {
namespace {

std::string Entity(const std::string& kind, const std::string& layer, const std::string& more = "")
{
    return Pair(0, kind) + Pair(8, layer) + more;
}

const std::string Panel = Rectangle("BORDERLL Z19", 0, 0, 600, 400);
const std::string Bore = Circle("VBORE Z12", 100, 100, 2.5);

// Every test has one bore that is made, so that there is a program.
class LeftOut : public testing::TestWithParam<Control> {
  protected:
    Shop At{GetParam()};

    void Convert(const std::string& entities, const std::string& panel = Panel)
    {
        EXPECT_TRUE(At.Home.Convert(Drawing(panel + Bore + entities))) << At.Home.ReportText();
    }
    void ExpectTold(const std::string& line) const
    {
        EXPECT_TRUE(At.Home.Reported(line)) << line << "\n" << At.Home.ReportText();
    }
    void ExpectSilent() const
    {
        EXPECT_EQ(At.Home.ReportText().find("Layer "), std::string::npos) << At.Home.ReportText();
    }
};

using LeftOutOfAll = LeftOut;
INSTANTIATE_TEST_SUITE_P(AllControls, LeftOutOfAll,
                         testing::Values(Control::Cnc90, Control::Genesis, Control::Evolution),
                         [](const auto& named) { return std::string(ShownControl(named.param)); });

TEST_P(LeftOutOfAll, NothingIsSaidOfACleanDrawing)
{
    Convert(Line("ROUTEZ5T71", 50, 50, 200, 50) + TextAt("NAME", 5, 5, "DOOR") + Line("0", 0, 0, 10, 10) +
            Line("GROOVE Z8", 50, 300, 550, 300));
    ExpectSilent();
}

TEST_P(LeftOutOfAll, KindsThatALayerDoesNotTake)
{
    Convert(Arc("VBORE_D35", 300, 200, 17.5, 0, 180) + Arc("VBORE_D35", 300, 200, 17.5, 180, 0) +
            Entity("INSERT", "VBORE_Z10", Pair(2, "HINGE")) + Circle("GROOVE_Z8", 300, 300, 4));
    ExpectTold("Layer VBORE_D35: 2 entities of kind ARC are not machined, the layer takes CIRCLE and POINT");
    ExpectTold("Layer VBORE_Z10: 1 entity of kind INSERT is not machined, the layer takes CIRCLE and POINT");
    ExpectTold("Layer GROOVE_Z8: 1 entity of kind CIRCLE is not machined, the layer takes LINE and POLYLINE");
}

TEST_P(LeftOutOfAll, NamesThatNearlySpellAWord)
{
    Convert(Circle("Vbor_D35", 300, 200, 5) + Circle("Vbor_D35", 350, 200, 5) + Line("BOARD", 0, 0, 9, 9));
    ExpectTold("Layer Vbor_D35: 2 entities are not machined, the layer means nothing; VBORE?");
    EXPECT_EQ(At.Home.ReportText().find("BOARD"), std::string::npos);
}

TEST_P(LeftOutOfAll, GroovesWithAWidthThatRunAskew)
{
    Convert(Line("GROOVE_D8Z6", 100, 50, 500, 60) + Line("GROOVE_Z6", 100, 150, 500, 160));
    ExpectTold(
        "Layer GROOVE_D8Z6: 1 groove is not sawn, it has a width and runs neither along X nor along Y");
    EXPECT_EQ(At.Home.ReportText().find("GROOVE_Z6:"), std::string::npos);
}

TEST_P(LeftOutOfAll, CirclesInNoViewOfAnEdge)
{
    Convert(Circle("HBORE_Z20", 300, 900, 4));
    ExpectTold("Layer HBORE_Z20: 1 circle is not drilled, it lies in no view of an edge");
}

TEST_P(LeftOutOfAll, WhatAPassReportsIsReportedOnce)
{
    Convert(Line("ROUTEZ5T71", 50, 50, 50, 50) + Entity("SPLINE", "ROUTEZ5T71") +
            Line("HBORE_Z9", 0, 100, 30, 100));
    const std::string report = At.Home.ReportText();
    EXPECT_NE(report.find("1 line of length 0"), std::string::npos) << report;
    EXPECT_NE(report.find("SPLINE"), std::string::npos) << report;
    EXPECT_EQ(report.find("is not machined"), std::string::npos) << report;
}

TEST_P(LeftOutOfAll, ARouteThatBelongsToTheOutlineAndIsRemoved)
{
    Config.RemoveBorderRoute = 1;
    Convert(Polyline("ROUTEZ19T71", {{0, 0}, {600, 0}, {600, 400}, {0, 400}, {0, 0}}));
    ExpectTold("Layer ROUTEZ19T71: 1 polyline is not routed, it runs along the panel's outline");
}

TEST_P(LeftOutOfAll, EachOperationOfALayerOfSeveralAnswersForItself)
{
    Convert(Line("GROOVE_D8Z6$D8Z9", 100, 50, 500, 60));
    ExpectTold(
        "Layer GROOVE_D8Z6$D8Z9: 2 grooves are not sawn, they have a width and run neither along X nor "
        "along Y");
}

TEST_P(LeftOutOfAll, LineAndHandleOfTheFirstAreAmongTheValues)
{
    std::vector<MessageLine> lines;
    static std::vector<MessageLine>* kept;
    kept = &lines;
    const auto before = Report.ShowRow;
    Report.ShowRow = [](const ReportRow& row) { kept->push_back(row.Line); };
    const std::string drawing =
        Drawing(Panel + Entity("ELLIPSE", "VBORE_D5", Pair(5, "2F")) + Bore + Entity("ELLIPSE", "VBORE_D5"));
    At.Home.Write("HANDLE.DXF", drawing);
    std::string job = FromHostPath((At.Home.Folder / "HANDLE.DXF").string());
    ProcessDrawingFile(job);
    ReportMessage(2, "");
    Report.ShowRow = before;
    for (const MessageLine& line : lines) {
        if (line.Number != Message::KindNotMachined)
            continue;
        EXPECT_EQ(FindValue(line, "handle")->Text, "2F");
        EXPECT_EQ(FindValue(line, "count")->Text, "2");
        const std::vector<std::string> file = LinesOf(drawing);
        EXPECT_EQ(file.at(std::stoul(FindValue(line, "line")->Text) - 1), "ELLIPSE");
        return;
    }
    ADD_FAILURE() << "not reported";
}

TEST_P(LeftOutOfAll, AThousandLayersShareALineAfterTheTwentieth)
{
    std::string entities;
    for (int i = 0; i < 1000; ++i)
        entities += Circle("VBOR_" + std::to_string(i), 300, 200, 5);
    Convert(entities);
    ExpectTold("Layer VBOR_19: 1 entity is not machined, the layer means nothing; VBORE?");
    ExpectTold("980 further layers like those of message 830");
}

TEST_P(LeftOutOfAll, NamesAreShownAsTextWhateverTheyHold)
{
    Convert(Circle("VBOR%1\x1b[31m\"'\\{layer}", 300, 200, 5));
    ExpectTold("Layer VBOR%1?[31m\"'\\{layer}: 1 entity is not machined, the layer means nothing; VBORE?");
}

using LeftOutOfCnc = LeftOut;
INSTANTIATE_TEST_SUITE_P(CncControls, LeftOutOfCnc, testing::Values(Control::Cnc90, Control::Genesis),
                         [](const auto& named) { return std::string(ShownControl(named.param)); });

TEST_P(LeftOutOfCnc, OperationsWithoutABlockInTheSequence)
{
    Config.Sequence = "VVHR";
    Convert(Line("GROOVE_Z6", 100, 150, 500, 150) + Line("GROOVE_Z6", 100, 250, 500, 250));
    ExpectTold("Layer GROOVE_Z6: 2 operations are in no program, the sequence VVHR has no G");
}

TEST_P(LeftOutOfCnc, SequenceOfTheDrawing)
{
    Convert(Line("ROUTEZ5T71", 50, 50, 200, 50), Rectangle("BORDERLL Z19SQVGHH", 0, 0, 600, 400));
    ExpectTold("Layer ROUTEZ5T71: 1 operation is in no program, the sequence VGHH has no R");
}

TEST_P(LeftOutOfCnc, BoresThatTheAlternationDrops)
{
    Config.DRAlternate = "1";
    std::string entities;
    for (int i = 0; i < 3; ++i) // four bores among three changes of the tool: one each
        entities += Circle("VBORE Z12", 200 + 32 * i, 100, 2.5);
    for (int i = 0; i < 4; ++i)
        entities += Line("ROUTEZ5T7" + std::to_string(i + 1), 50, 150 + 20 * i, 200, 150 + 20 * i);
    Convert(entities);
    ExpectTold(
        "Layer VBORE Z12: 1 bore is in no program, the alternation of drilling and routing has dropped it");
}

TEST_P(LeftOutOfCnc, TheEndOfAProgramThatIsTooLong)
{
    Config.LineLimit = "40000";
    std::string lines;
    for (int i = 0; i < 16000; ++i)
        lines += Line("ROUTEZ5T71", 10 + 0.5 * (i % 1000), 10 + 2 * (i / 1000), 10 + 0.5 * (i % 1000),
                      11 + 2 * (i / 1000));
    Convert(lines);
    EXPECT_NE(At.Home.ReportText().find("lines are left out, the program is too long"), std::string::npos)
        << At.Home.ReportText();
}

TEST(LeftOutByPortions, ThatReplaceEachOther)
{
    Shop shop(Control::Genesis);
    Config.LineLimit = "10";
    std::string lines;
    for (int i = 0; i < 8; ++i)
        lines += Line("ROUTEZ5T71", 50, 50 + 20 * i, 200, 50 + 20 * i);
    const std::string folder = FromHostPath(shop.Home.Programs.string() + "/");
    EXPECT_TRUE(shop.Home.Convert(Drawing(Panel + lines), "DOOR.DXF", folder)) << shop.Home.ReportText();
    EXPECT_NE(
        shop.Home.ReportText().find("portions of the program replace each other, and only the last one is "
                                    "there"),
        std::string::npos)
        << shop.Home.ReportText();
}

using LeftOutOfEvolution = LeftOut;
INSTANTIATE_TEST_SUITE_P(Evolution, LeftOutOfEvolution, testing::Values(Control::Evolution));

TEST_P(LeftOutOfEvolution, CirclesThatStandAlone)
{
    Convert(Circle("EXCAVZ5T71", 300, 200, 50)); // without a pitch it is no pocket
    ExpectTold("Layer EXCAVZ5T71: 1 circle is not routed, a Genesis Evolution program takes none that stands "
               "alone");
}

TEST_P(LeftOutOfEvolution, ClassesThatAreSwitchedOff)
{
    Config.EvGroove = false;
    Convert(Line("GROOVE_Z6", 100, 150, 500, 150));
    ExpectTold("Layer GROOVE_Z6: 1 operation is in no program, EvGroove is switched off");
}

TEST(LeftOutByOptimizer, DoubleBoresAndBoresWithoutADrill)
{
    Shop shop(Control::Cnc90);
    Config.Optimizer = "1";
    shop.Home.Write("DT.Par", FileBytes(SourceFolder / "examples" / "install" / "DT.Par"));
    EXPECT_TRUE(shop.Home.Convert(Drawing(Panel + Bore + Bore + Circle("VBORE Z12D29", 300, 200, 14.5))));
    EXPECT_TRUE(shop.Home.Reported("Layer VBORE Z12: 1 bore is drilled once only, it was drawn twice"))
        << shop.Home.ReportText();
}

TEST(LeftOutByOptimizer, ADoubleBoreOfAnotherDepthIsADoubt)
{
    Shop shop(Control::Cnc90);
    Config.Optimizer = "1";
    shop.Home.Write("DT.Par", FileBytes(SourceFolder / "examples" / "install" / "DT.Par"));
    EXPECT_TRUE(shop.Home.Convert(Drawing(Panel + Bore + Circle("VBORE Z19", 100.1, 100, 2.5))));
    const bool first =
        shop.Home.Reported("Layer VBORE Z19: 1 bore of 19 is not drilled, at its place is one of 12");
    const bool second =
        shop.Home.Reported("Layer VBORE Z12: 1 bore of 12 is not drilled, at its place is one of 19");
    EXPECT_NE(first, second) << shop.Home.ReportText();
}

// Blocks

std::string Block(const std::string& name, const std::string& entities)
{
    return Pair(0, "BLOCK") + Pair(8, "0") + Pair(2, name) + entities + Pair(0, "ENDBLK") + Pair(8, "0");
}
std::string Insert(const std::string& name, const std::string& layer = "0")
{
    return Entity("INSERT", layer, Pair(2, name) + Pair(10, "100") + Pair(20, "100"));
}

std::string BlocksOf(const std::string& blocks)
{
    return Pair(0, "SECTION") + Pair(2, "BLOCKS") + blocks + Pair(0, "ENDSEC");
}

struct LeftOutOfBlocks : LeftOut {
    void ConvertWithBlocks(const std::string& blocks, const std::string& entities)
    {
        Config.Import = "plain"; // lines of the ledger alone
        EXPECT_TRUE(At.Home.Convert(BlocksOf(blocks) + Drawing(Panel + Bore + entities)))
            << At.Home.ReportText();
    }
};
INSTANTIATE_TEST_SUITE_P(AllControls, LeftOutOfBlocks, testing::Values(Control::Cnc90, Control::Evolution),
                         [](const auto& named) { return std::string(ShownControl(named.param)); });

TEST_P(LeftOutOfBlocks, WorkInABlockIsTold)
{
    ConvertWithBlocks(Block("Hinge", Line("0", 0, 0, 9, 9) + Circle("VBORE_D35", 0, 0, 17.5)),
                      Insert("HINGE") + Insert("hinge"));
    ExpectTold("Layer 0: 2 INSERTs are left out, the first block, HINGE, holds a CIRCLE on VBORE_D35");
}

TEST_P(LeftOutOfBlocks, WorkInABlockOfABlockIsTold)
{
    ConvertWithBlocks(Block("PIN", Line("GROOVE", 0, 0, 9, 0)) + Block("SET", Insert("PIN")), Insert("SET"));
    ExpectTold("Layer 0: 1 INSERT is left out, its block SET holds a LINE on GROOVE");
}

TEST_P(LeftOutOfBlocks, BlocksWithoutWorkAreSilent)
{
    ConvertWithBlocks(
        Block("FRAME", Line("0", 0, 0, 9, 0) + TextAt("VBORE", 1, 1, "A") + Entity("ELLIPSE", "VBORE")) +
            Block("LOOP", Insert("LOOP")),
        Insert("FRAME") + Insert("LOOP") + Insert("MISSING") + Entity("INSERT", "0"));
    ExpectSilent();
}

TEST_P(LeftOutOfBlocks, DamagedBlocksAreSilent)
{
    for (const std::string& blocks : {Pair(0, "BLOCK"), Pair(0, "BLOCK") + Pair(2, "A") + Pair(0, "CIRCLE"),
                                      Pair(2, "A") + Pair(8, "VBORE"), std::string("0\nBLOCK\nx\ny\n"),
                                      Block(std::string(5000, 'B'), Circle("VBORE", 0, 0, 1)),
                                      Block("A", Block("B", Circle("VBORE", 0, 0, 1)))}) {
        ConvertWithBlocks(blocks, Insert("A"));
        ExpectSilent();
    }
}

TEST(BlocksOfADrawing, ABorderInABlockIsToldWhereNoBorderIsFound)
{
    Shop shop(Control::Cnc90);
    EXPECT_FALSE(shop.Home.Convert(BlocksOf(Block("PART", Rectangle("BORDER", 0, 0, 600, 400))) +
                                   Drawing(Insert("PART"))));
    EXPECT_TRUE(shop.Home.Reported("Layer 0: 1 INSERT is left out, its block PART holds a LINE on BORDER"))
        << shop.Home.ReportText();
}

// Names of layers

TEST_P(LeftOutOfAll, ALayerWhoseNameIsCutIsTold)
{
    const std::string head = "VBORE_D5_Z12_" + std::string(101, 'A');
    Convert(Circle(head, 200, 200, 2.5));
    ExpectSilent();
    Convert(Circle(head + "_G2", 200, 200, 2.5) + Line(std::string(120, 'N'), 0, 0, 9, 9));
    ExpectTold("Layer " + head + "_G2: its name has 117 letters, and \"_G2\" is not read");
    EXPECT_EQ(At.Home.ReportText().find("NNN"), std::string::npos) << "a layer that means nothing";
}

TEST(LeftOutByMachine, MirrorImagesOfTheHorizontalMachine)
{
    Shop shop(Control::Cnc90);
    shop.AddHorizontalMachine();
    Config.HBDVBoreLimit = "60";
    shop.Home.Write("KVHBD.cfg", "Horizontal\t8\t1\t0\r\nVertical\t5\t1\t0\r\n\t\t\t\r\n");
    EXPECT_TRUE(
        shop.Home.Convert(Drawing(Panel + Circle("VBORE Z12", 300, 30, 2.5) +
                                  Circle("VBORE Z12", 300, 370, 2.5) + Line("ROUTEZ5T71", 50, 50, 200, 50))));
    EXPECT_TRUE(shop.Home.Reported(
        "Layer VBORE Z12: 1 bore is in no program, it is drilled when the panel is turned round"))
        << shop.Home.ReportText();
}

} // namespace
} // namespace kv::test
