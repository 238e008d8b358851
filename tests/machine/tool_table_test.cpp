// The sizes of tools that a program does not name: the drill head's and those of the shop's table.
#include "machine/tool_table.h"

#include <gtest/gtest.h>

#include "machine/cnc_reader.h"
#include "machine/evolution_reader.h"
#include "machine/text_lines.h"

namespace kv::test {
namespace {

using Texts = std::vector<std::string>;

// Eight drills of 5 along X from 0, then three of 8 along Y from (300, 64).
std::string SmallHead()
{
    std::string text;
    for (int x = 0; x < 256; x += 32)
        text += "VERTICAL DRILL\t" + std::to_string(x) + "\t0\t0\t5\r\n";
    for (int y = 64; y <= 128; y += 32)
        text += "Through Drill\t300\t" + std::to_string(y) + "\t0\t8\r\n";
    return text + "GROOVE\t560\t0\t0\t120\r\n\r\nVERTICAL DRILL\t9\t9\t0\t9\r\n";
}

MachineSteps Filled(const std::string& lines, const std::string& shop = {})
{
    MachineSteps steps = ReadCnc(LinesOf("G71X600Y400Z19T00N4L1\n" + lines));
    EXPECT_EQ(steps.Unread, Texts{});
    Texts faults;
    FillTools(steps, {ReadHeadTools(SmallHead()), ReadShopTools(shop, faults)});
    EXPECT_EQ(faults, Texts{});
    return steps;
}

std::vector<double> PlacesAlongX(const MachineSteps& steps)
{
    std::vector<double> places;
    for (const Bore& bore : steps.Bores)
        places.push_back(bore.At.X);
    return places;
}

TEST(HeadTools, EndAtTheFirstEmptyLine)
{
    const std::vector<HeadTool> head = ReadHeadTools(SmallHead());
    ASSERT_EQ(head.size(), 13U);
    EXPECT_FALSE(head[0].Drills);
    EXPECT_TRUE(head[1].Drills);
    EXPECT_EQ(head[8].X, 224);
    EXPECT_EQ(head[9].Diameter, 8);
    EXPECT_TRUE(head[11].Drills);
    EXPECT_FALSE(head[12].Drills) << "a saw";
}

TEST(HeadTools, NonsenseIsNoDrill)
{
    for (const std::string text : {"", "\n", "x", "VERTICAL DRILL", "VERTICAL DRILL\t1\t2\t3",
                                   "VERTICAL DRILL\tnan\t1e999\t?\tinf", "\xFF\xFE\x00\t\t\t\t\t\t"})
        for (const HeadTool& tool : ReadHeadTools(text))
            EXPECT_FALSE(tool.Drills && tool.Diameter > 0) << text;
    std::string many;
    for (int line = 0; line < 100000; ++line)
        many += "VERTICAL DRILL\t0\t0\t0\t5\n";
    EXPECT_LE(ReadHeadTools(many).size(), 100U);
}

TEST(ToolNumbers, StandBehindTheGroup)
{
    EXPECT_EQ(ToolNumberOf("0171"), 71);
    EXPECT_EQ(ToolNumberOf("0105"), 5);
    EXPECT_EQ(ToolNumberOf("01a3"), 103);
    EXPECT_EQ(ToolNumberOf("02b0"), 110);
    EXPECT_EQ(ToolNumberOf("0205M66"), 205);
    EXPECT_EQ(ToolNumberOf("0299M66"), 299);
    for (const std::string_view tool :
         {"", "01", "01A3", "01-3", "01|3", "0100000000000000001", "02M66", "025M66", "02a5M66", "02105M66"})
        EXPECT_LT(ToolNumberOf(tool), 0) << tool;
}

TEST(FilledTools, ABoreHasTheDiameterOfItsDrill)
{
    const MachineSteps steps = Filled("G81G90G55P5T0103X100Y50Z12\nG81G90G55P5R54=6X100Y80Z12\n"
                                      "G81G90G55P5T0150X100Y90Z12\n");
    ASSERT_EQ(steps.Bores.size(), 3U);
    EXPECT_EQ(steps.Bores[0].Diameter, 5);
    EXPECT_EQ(steps.Bores[1].Diameter, 6);
    EXPECT_EQ(steps.Bores[2].Diameter, 0) << "no such drill";
}

TEST(FilledTools, ARowIsABoreForEachDrill)
{
    const MachineSteps steps = Filled("G183G90G55P5T010204X100Y50Z12I164\n");
    EXPECT_TRUE(steps.Rows.empty());
    EXPECT_EQ(PlacesAlongX(steps), (std::vector<double>{100, 164}));
    EXPECT_EQ(steps.Bores[0].Diameter, 5);
    EXPECT_EQ(steps.Bores[0].Depth, 12);
    EXPECT_EQ(steps.Bores[1].At.Y, 50);
}

TEST(FilledTools, ARangeHasAllDrillsBetween)
{
    EXPECT_EQ(PlacesAlongX(Filled("G183G90G55P5T0102|05X100Y50Z12I196\n")),
              (std::vector<double>{100, 132, 164, 196}));
}

TEST(FilledTools, ARowMayRunAgainstTheHead)
{
    EXPECT_EQ(PlacesAlongX(Filled("G183G90G55P5T01050403X100Y50Z12I164\n")),
              (std::vector<double>{100, 132, 164}));
}

TEST(FilledTools, ADrillOfAJoinedStopLiesWhereTheHeadHasIt)
{
    // The row along Y is of drills 10 and 11; drill 9 stands 32 below the first.
    const MachineSteps steps = Filled("G184G90G55P5T01101109X100Y200Z12J232\n");
    ASSERT_EQ(steps.Bores.size(), 3U);
    EXPECT_EQ(steps.Bores[0].At.Y, 200);
    EXPECT_EQ(steps.Bores[1].At.Y, 232);
    EXPECT_EQ(steps.Bores[2].At.Y, 168);
    EXPECT_EQ(steps.Bores[2].Diameter, 8);
}

TEST(FilledTools, ARowThatDoesNotFitTheHeadStaysARow)
{
    for (const std::string row :
         {"G183G90G55P5T010204X100Y50Z12I150\n", "G183G90G55P5T010299X100Y50Z12I164\n",
          "G183G90G55P5T01XX02X100Y50Z12I164\n", "G183G90G55P5T0102X100Y50Z12I164\n",
          "G183G90G55P5T0112|02X100Y50Z12I164\n"}) {
        MachineSteps steps = ReadCnc(LinesOf("G71X600Y400Z19T00N4L1\n" + row));
        const std::size_t rows = steps.Rows.size();
        FillTools(steps, {ReadHeadTools(SmallHead()), {}});
        EXPECT_EQ(steps.Rows.size(), rows) << row;
        EXPECT_TRUE(steps.Bores.empty()) << row;
    }
}

TEST(FilledTools, RoutersSawsAndDrillsOfTheShopsTable)
{
    const MachineSteps steps =
        Filled("G88G90G55P5T0171X100Y50Z5\nG1G90X200Y50Z5\nG88G90G55P5T0171G41R5X100Y90Z5\n"
               "G1G90X200Y90Z5\nG85G55P5T0161X10Y50Z8Q500\nG81G90G55P5T0190X9Y9Z5\n",
               "# the shop's tools\n71 router diameter=16 depth=40\r\n\n61 SAW kerf=3.2 # blade\n"
               "90 drill diameter=35\n");
    ASSERT_EQ(steps.Cuts.size(), 2U);
    EXPECT_EQ(steps.Cuts[0].Radius, 8);
    EXPECT_EQ(steps.Cuts[1].Radius, 5) << "the program names it";
    ASSERT_EQ(steps.Saws.size(), 1U);
    EXPECT_EQ(steps.Saws[0].Width, 3.2);
    ASSERT_EQ(steps.Bores.size(), 1U);
    EXPECT_EQ(steps.Bores[0].Diameter, 35);
}

// A row that names more drills than a head has is none of its own, however long the tool's text is.
TEST(FilledTools, ARowOfMoreDrillsThanAHeadHasStaysARow)
{
    std::string tool = "01";
    for (int i = 0; i < 700; ++i)
        tool += "01|99";
    MachineSteps steps = ReadCnc(LinesOf("G71X600Y400Z19T00N4L1\nG183G90G55P5T" + tool + "X100Y50Z12I132\n"));
    FillTools(steps, {ReadHeadTools(SmallHead()), {}});
    EXPECT_EQ(steps.Rows.size(), 1U);
    EXPECT_TRUE(steps.Bores.empty());
}

// Such a program names tools by their number alone: 101 is neither the drill 1 nor the tool 1.
TEST(FilledTools, AnEvolutionsToolsHaveNoGroup)
{
    const auto bore = [](const std::string& tool) {
        return "W#81{ ::WTp WS=1 #1=100 #2=50 #3=-12 #205=" + tool + " }W";
    };
    MachineSteps steps = ReadEvolution(
        {"::UNm DL=600 DH=400 DS=18", "SIDE#1{", bore("9"), bore("90"), bore("101"),
         "W#89{ ::WTs WS=1 #1=10 #2=10 #3=-5 #36=0 #40= #205=71 }W",
         "W#1050{ ::WT2 WS=1 #8510=0 #8511=85 #8512=-8 #8516=61 #8517=568 #8525=0 }W", "}SIDE"});
    EXPECT_EQ(steps.Unread, Texts{});
    Texts faults;
    FillTools(steps, {ReadHeadTools(SmallHead()),
                      ReadShopTools("1 drill diameter=3\n71 router diameter=16\n90 drill diameter=35\n"
                                    "101 drill diameter=10\n61 saw kerf=3.2\n",
                                    faults)});
    ASSERT_EQ(steps.Bores.size(), 3U);
    EXPECT_EQ(steps.Bores[0].Diameter, 8) << "of the head";
    EXPECT_EQ(steps.Bores[1].Diameter, 35);
    EXPECT_EQ(steps.Bores[2].Diameter, 10);
    ASSERT_EQ(steps.Cuts.size(), 1U);
    EXPECT_EQ(steps.Cuts[0].Radius, 8);
    ASSERT_EQ(steps.Saws.size(), 1U);
    EXPECT_EQ(steps.Saws[0].Width, 3.2);
}

TEST(ShopTools, BadLinesAreNamedAndTheGoodOnesHold)
{
    Texts faults;
    const std::map<int, ShopTool> tools =
        ReadShopTools("71 router diameter=16\nx router\n72\n73 laser\n74 saw kerf=0\n75 saw kerf=-1\n"
                      "76 router width=3\n77 router diameter\n71 router diameter=20\n0 router\n1.5 router\n"
                      "99999999999 router\n78 router diameter=1e999\n79 saw\n",
                      faults);
    EXPECT_EQ(tools.size(), 2U);
    EXPECT_EQ(tools.at(71).Diameter, 16);
    EXPECT_EQ(tools.at(79).Kerf, 0);
    EXPECT_EQ(
        faults,
        (Texts{"line 2: \"x\" is no number of a tool", "line 3: a tool is a router, a saw or a drill",
               "line 4: a tool is a router, a saw or a drill",
               "line 5: \"kerf=0\" is none of diameter=, kerf=, depth= with millimetres",
               "line 6: \"kerf=-1\" is none of diameter=, kerf=, depth= with millimetres",
               "line 7: \"width=3\" is none of diameter=, kerf=, depth= with millimetres",
               "line 8: \"diameter\" is none of diameter=, kerf=, depth= with millimetres",
               "line 9: tool 71 is there twice", "line 10: \"0\" is no number of a tool",
               "line 11: \"1.5\" is no number of a tool", "line 12: \"99999999999\" is no number of a tool",
               "line 13: \"diameter=1e999\" is none of diameter=, kerf=, depth= with "
               "millimetres"}));
}

} // namespace
} // namespace kv::test
