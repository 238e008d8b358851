// `korvanti convert`: names of the output, program folder, settings, report in text and JSON, exit
// status. Relies on the real program; leaves nothing behind.
#include "console/console_run.h"
#include "support/dxf.h"

using namespace console_test;
using nlohmann::json;

namespace {

class ConvertCall : public Console {};

const Words BoredCall = {"convert", "door.dxf"};

TEST_F(ConvertCall, WritesTheProgramIntoTheFolderOfTheSettings)
{
    const Ended ended = Run(BoredCall);
    EXPECT_EQ(ended.Status, 0) << ended.Output << ended.Errors;
    EXPECT_EQ(ended.Errors, "");
    EXPECT_EQ(Contents(Folder / "programs/SRG/D/OOR"), BoredProgram);
    EXPECT_EQ(Contents(Folder / "programs/INDICE.PRG").size(), 82U);
}

TEST_F(ConvertCall, ABareWordGetsTheExtension)
{
    fs::rename(Folder / "door.dxf", Folder / "door.DXF");
    EXPECT_EQ(Run({"convert", "door"}).Status, 0);
    EXPECT_EQ(Contents(Folder / "programs/SRG/D/OOR"), BoredProgram);
}

TEST_F(ConvertCall, AnOutputNameGoesToTheFolderOfTheSettings)
{
    EXPECT_EQ(Run({"convert", "door.dxf", "-o", "FRONT"}).Status, 0);
    EXPECT_EQ(Contents(Folder / "programs/SRG/F/RONT"), BoredProgram);
}

TEST_F(ConvertCall, AnOutputPathNamesFolderAndProgram)
{
    fs::create_directory(Folder / "out");
    Put(Folder / "out/INDICE.PRG", "");
    EXPECT_EQ(Run({"convert", "door.dxf", "-o", "out/FRONT"}).Status, 0);
    EXPECT_EQ(Contents(Folder / "out/SRG/F/RONT"), BoredProgram);
    EXPECT_FALSE(fs::exists(Folder / "programs/SRG"));
}

TEST_F(ConvertCall, AnOutputFolderKeepsTheDrawingsName)
{
    fs::create_directory(Folder / "out");
    Put(Folder / "out/INDICE.PRG", "");
    for (const char* const spelled : {"out/", "out\\", "out", "./out"}) {
        fs::remove_all(Folder / "out/SRG");
        const Ended ended = Run({"convert", "door.dxf", "-o", spelled});
        EXPECT_EQ(ended.Status, 0) << spelled << ended.Output;
        EXPECT_EQ(Contents(Folder / "out/SRG/D/OOR"), BoredProgram) << spelled;
    }
}

TEST_F(ConvertCall, SeveralDrawingsGoIntoOneFolder)
{
    fs::create_directory(Folder / "out");
    Put(Folder / "out/INDICE.PRG", "");
    Put(Folder / "side.dxf", BoredPanel());
    EXPECT_EQ(Run({"convert", "door.dxf", "side.dxf", "-o", "out/"}).Status, 0);
    EXPECT_EQ(Contents(Folder / "out/SRG/D/OOR"), BoredProgram);
    EXPECT_EQ(Contents(Folder / "out/SRG/S/IDE"), BoredProgram);
}

TEST_F(ConvertCall, SeveralDrawingsWithOneNameAreWrongUsage)
{
    const Ended ended = Run({"convert", "door.dxf", "side.dxf", "-o", "FRONT"});
    EXPECT_EQ(ended.Status, 2);
    EXPECT_TRUE(Holds(ended.Errors, "-o must name a folder")) << ended.Errors;
    EXPECT_FALSE(fs::exists(Folder / "programs/SRG"));
}

TEST_F(ConvertCall, ADrawingThatBeginsWithADashStandsBehindTwo)
{
    fs::rename(Folder / "door.dxf", Folder / "-door.dxf");
    EXPECT_EQ(Run({"convert", "--", "-door.dxf"}).Status, 0);
    EXPECT_EQ(Contents(Folder / "programs/SRG/-/DOOR"), BoredProgram);

    const Ended refused = Run({"convert", "-door.dxf"});
    EXPECT_EQ(refused.Status, 2);
    EXPECT_TRUE(Holds(refused.Errors, "behind --")) << refused.Errors;
}

TEST_F(ConvertCall, OneFailureOfSeveralIsNamedAndTheOthersAreConverted)
{
    const Ended ended = Run({"convert", "missing.dxf", "door.dxf"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_EQ(ended.Errors, "korvanti: missing.dxf: failed\n");
    EXPECT_EQ(Contents(Folder / "programs/SRG/D/OOR"), BoredProgram);
    EXPECT_TRUE(Holds(ended.Output, "missing.dxf  NOT FOUND\n")) << ended.Output;
    const std::string list = "*** The Following files failed to process: ***\n" + Shown("missing.dxf") + "\n";
    ASSERT_GE(ended.Output.size(), list.size());
    EXPECT_EQ(ended.Output.substr(ended.Output.size() - list.size()), list);
}

TEST_F(ConvertCall, AProgramThatTheIndexCannotNameIsNoConvertedDrawing)
{
    Put(Folder / "programs/INDICE.PRG", std::string(83, 'x'));
    const Ended ended = Run({"convert", "door.dxf", "--report", "json"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_EQ(ended.Errors, "korvanti: door.dxf: failed\n");
    EXPECT_EQ(json::parse(ended.Output)["drawings"][0]["outcome"], "failed");
    EXPECT_EQ(Contents(Folder / "programs/SRG/D/OOR"), BoredProgram) << "it is written all the same";
}

TEST_F(ConvertCall, ADrawingWithoutEntitiesIsListedByItsPath)
{
    Put(Folder / "empty.dxf", "0\nEOF\n");
    const std::string list = "*** The Following files failed to process: ***\n" + Shown("empty.dxf") + "\n" +
                             Shown("gone.dxf") + "\n";
    for (const Words& more : {Words{}, Words{"--jobs", "2"}}) {
        Words words = {"convert", "empty.dxf", "gone.dxf"};
        words.insert(words.end(), more.begin(), more.end());
        const Ended ended = Run(words);
        EXPECT_EQ(ended.Status, 1);
        EXPECT_TRUE(ended.Output.ends_with(list)) << ended.Output;
    }
}

TEST_F(ConvertCall, AMessageBoxIsARowInItsPlace)
{
    fs::remove(Folder / "programs/INDICE.PRG");
    const Ended ended = Run(BoredCall);
    EXPECT_EQ(ended.Status, 1);
    const std::size_t box = ended.Output.find("CNC90/Winner90 Index File ");
    const std::size_t failed = ended.Output.find("Import Failed");
    EXPECT_NE(box, std::string::npos) << ended.Output;
    EXPECT_NE(failed, std::string::npos) << ended.Output;
    EXPECT_LT(box, failed);
}

TEST_F(ConvertCall, ASettingOfTheCallStaysOutOfTheFile)
{
    const std::string before = Contents(Folder / "home/KV90.INI");
    fs::create_directory(Folder / "other");
    Put(Folder / "other/INDICE.PRG", "");
    EXPECT_EQ(Run({"convert", "door.dxf", "--set", "DestinationPath90=other/", "--set", "OffsetX=5"}).Status,
              0);
    EXPECT_TRUE(Holds(Contents(Folder / "other/SRG/D/OOR"), "G92G54P5X5\r\n"));
    EXPECT_EQ(Contents(Folder / "home/KV90.INI"), before);
}

TEST_F(ConvertCall, AnUnknownSettingIsWrongUsage)
{
    for (const char* const words : {"Colour=1", "Colour", "=1"}) {
        const Ended ended = Run({"convert", "door.dxf", "--set", words});
        EXPECT_EQ(ended.Status, 2) << words;
        EXPECT_TRUE(Holds(ended.Errors, "korvanti convert --help")) << ended.Errors;
        EXPECT_FALSE(fs::exists(Folder / "programs/SRG"));
    }
}

TEST_F(ConvertCall, TheSystemOfTheCallWinsOverTheSettings)
{
    const Ended ended = Run({"trace", "door.dxf", "--after", "final"});
    EXPECT_FALSE(json::parse(ended.Output)["final"]["Run"].contains("ControlType"));
    Put(Folder / "home/KV90.INI", "[Configuration]\r\nGenesisEV=True\r\n");
    EXPECT_EQ(
        json::parse(Run({"trace", "door.dxf", "--after", "final"}).Output)["final"]["Run"]["ControlType"], 2);
    EXPECT_EQ(Run({"convert", "door.dxf", "--system", "winner"}).Status, 2);
    const fs::path output = Folder / "programs/";
    EXPECT_EQ(Run({"convert", "door.dxf", "--system", "cnc90", "-o", output.string()}).Status, 0);
    EXPECT_EQ(Contents(Folder / "programs/SRG/D/OOR"), BoredProgram);
}

TEST_F(ConvertCall, TheProgramFolderComesFromTheCallElseFromTheEnvironment)
{
    const Words call = {KORVANTI_CONSOLE, "convert", "door.dxf"};
    EXPECT_EQ(RunCall(call, {"KORVANTI_HOME=home"}).Status, 0);
    EXPECT_EQ(Contents(Folder / "programs/SRG/D/OOR"), BoredProgram);

    // Neither named: the person's configuration.
    fs::create_directories(Folder / "config");
    fs::rename(Folder / "home", Folder / "config/korvanti");
    fs::remove_all(Folder / "programs/SRG");
    EXPECT_EQ(RunCall(call, {std::string(ConfigVariable) + "=" + (Folder / "config").string()}).Status, 0);
    EXPECT_EQ(Contents(Folder / "programs/SRG/D/OOR"), BoredProgram);

    const Ended ended = RunCall({KORVANTI_CONSOLE, "--home", "nowhere", "convert", "door.dxf"});
    EXPECT_EQ(ended.Status, 2);
    EXPECT_TRUE(Holds(ended.Errors, "--home")) << ended.Errors;
}

TEST_F(ConvertCall, ReportAsJson)
{
    const Ended ended = Run({"convert", "door.dxf", "missing.dxf", "--report", "json"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_EQ(ended.Errors, "korvanti: missing.dxf: failed\n");
    const json document = json::parse(ended.Output);
    EXPECT_TRUE(document["version"].is_string());
    ASSERT_EQ(document["drawings"].size(), 2U);

    const json& door = document["drawings"][0];
    EXPECT_EQ(door["drawing"], "door.dxf");
    EXPECT_EQ(door["outcome"], "converted");
    EXPECT_EQ(
        door["operations"],
        json({{"bores", 1}, {"grooves", 0}, {"horizontalBores", 0}, {"routes", 0}, {"headPositions", 0}}));
    EXPECT_GE(door["seconds"].get<double>(), 0);
    const std::string program = Shown("programs/SRG/D/OOR");
    EXPECT_NE(std::find(door["files"].begin(), door["files"].end(), program), door["files"].end())
        << door["files"];
    const json pink = {
        {"text", "---------------------------------------***------------------------------------"},
        {"colour", "pink"}};
    EXPECT_EQ(door["lines"].back(), pink);

    const json& missing = document["drawings"][1];
    EXPECT_EQ(missing["outcome"], "failed");
    EXPECT_EQ(missing["files"], json::array());
    EXPECT_EQ(missing["lines"], json({{{"number", 101},
                                       {"severity", "fault"},
                                       {"text", Shown("missing.dxf") + "  NOT FOUND"},
                                       {"colour", "black"},
                                       {"drawing", Shown("missing.dxf")}}}));
}

// Circles that are smaller than the tool.
std::string SmallPockets(int count)
{
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += "0\nCIRCLE\n8\nEXCAV_K8_Z6_R5\n10\n" + std::to_string(20 * i) + "\n20\n200\n40\n2\n";
    return text;
}

// The line of the drawing's file, which is then left out of the report's line.
long TakenLine(json& line)
{
    const long number = line.value("line", 0L);
    line.erase("line");
    return number;
}

TEST_F(ConvertCall, EqualDoubtsOfALayerAreCountedFromTheFourthOn)
{
    Put(Folder / "three.dxf", BoredPanel(SmallPockets(3)));
    Put(Folder / "many.dxf", BoredPanel(SmallPockets(12)));
    const json drawings =
        json::parse(Run({"convert", "three.dxf", "many.dxf", "--report", "json"}).Output)["drawings"];
    std::vector<std::vector<json>> doubts(2);
    for (std::size_t i = 0; i < 2; ++i)
        for (const json& line : drawings[i]["lines"])
            if (line.value("severity", "") == "doubt")
                doubts[i].push_back(line);
    // The pockets name no tool either; that is told where they are chained, before they are cleared.
    const auto isOfTool = [](const json& line) { return line["number"] == 350; };
    for (std::vector<json>& lines : doubts)
        EXPECT_EQ(std::erase_if(lines, isOfTool), &lines == &doubts[0] ? 3U : 1U);
    ASSERT_EQ(doubts[0].size(), 3U);
    ASSERT_EQ(doubts[1].size(), 1U);
    // The first lines of the third pocket of one drawing and of the first of the other.
    const auto third = TakenLine(doubts[0][2]), first = TakenLine(doubts[1][0]);
    EXPECT_GT(first, 0);
    EXPECT_GT(third, first);
    EXPECT_EQ(doubts[0][2],
              json({{"number", 421},
                    {"severity", "doubt"},
                    {"text", "Layer EXCAV_K8_Z6_R5: the pocket at X60 Y200 is not cleared, it is "
                             "narrower than its tool"},
                    {"colour", "black"},
                    {"layer", "EXCAV_K8_Z6_R5"},
                    {"place", "X60 Y200"}}));
    EXPECT_EQ(doubts[1][0],
              json({{"number", 421},
                    {"severity", "doubt"},
                    {"text", "Layer EXCAV_K8_Z6_R5: 12 pockets are not cleared, they are narrower "
                             "than their tool, the first at X20 Y200"},
                    {"colour", "black"},
                    {"layer", "EXCAV_K8_Z6_R5"},
                    {"place", "X20 Y200"},
                    {"count", 12}}));
}

TEST_F(ConvertCall, TextsOfADrawingAreShownAsText)
{
    const std::string text = "%1 %n {count} {description} \"x\" \x1b[31m $(x) \\n";
    Put(Folder / "texts.dxf", BoredPanel("0\nTEXT\n8\nDESCR\n10\n0\n20\n0\n1\n" + text + "\n"));
    const Ended told = Run({"convert", "texts.dxf"});
    EXPECT_TRUE(Holds(told.Output, "Descr: %1 %n {count} {description} \"x\" ?[31m $(x) \\n\n"))
        << told.Output;
    EXPECT_FALSE(Holds(told.Output, "\x1b"));
    const json lines =
        json::parse(Run({"convert", "texts.dxf", "--report", "json"}).Output)["drawings"][0]["lines"];
    const auto described = std::find_if(lines.begin(), lines.end(),
                                        [](const json& line) { return line.value("number", 0) == 109; });
    ASSERT_NE(described, lines.end());
    EXPECT_EQ((*described)["description"], text);
    EXPECT_EQ((*described)["severity"], "note");
}

// The cut list's folder is looked for when the drawings of a list are placed.
TEST_F(ConvertCall, ADrawingOfAListThatCannotBePlacedHasFailed)
{
    std::ofstream(Folder / "home/KV90.INI", std::ios::binary | std::ios::app)
        << "[PTSDATA]\r\nPath=" << (Folder / "nowhere").string() << "/\r\nName=LIST\r\nField1=NAME\r\n";
    Put(Folder / "row.dxf", BoredPanel("0\nTEXT\n8\nI\n10\n0\n20\n0\n1\nPOST INSTRUCTIONS\n"
                                       "0\nTEXT\n8\nI\n10\n0\n20\n0\n1\nPTS NAME=ROW\n"));
    const Ended ended = Run({"convert", "row.dxf", "door.dxf", "--report", "json"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_EQ(ended.Errors, "korvanti: row.dxf: failed\n");
    const json drawings = json::parse(ended.Output)["drawings"];
    EXPECT_EQ(drawings[0]["outcome"], "failed");
    EXPECT_EQ(drawings[0]["files"], json::array());
    const std::string cause = drawings[0]["lines"].back()["text"].get<std::string>();
    EXPECT_TRUE(Holds(cause, Shown("row.dxf") + ": ")) << cause;
    EXPECT_TRUE(Holds(cause, "LIST.PTS: ")) << cause;
    EXPECT_EQ(drawings[1]["outcome"], "converted");
    EXPECT_EQ(drawings[1]["files"].size(), 2U);
    EXPECT_FALSE(fs::exists(Folder / "programs/SRG/R/OW"));
    EXPECT_EQ(Contents(Folder / "programs/SRG/D/OOR"), BoredProgram);

    const Ended asText = Run({"convert", "row.dxf", "door.dxf"});
    EXPECT_EQ(asText.Status, 1);
    EXPECT_TRUE(Holds(asText.Output, cause + "\n")) << asText.Output;
}

// The line runs on counter-clockwise into the circle, which is no route of its own.
TEST_F(ConvertCall, JsonCountsRoutesNotTheirArcs)
{
    Put(Folder / "route.dxf", kv::test::Drawing(kv::test::Rectangle("BORDER Z18", 10, 20, 600, 400) +
                                                kv::test::Line("ROUTE T71 Z5", 100, 100, 200, 100) +
                                                kv::test::Circle("ROUTE T71 Z5", 200, 150, 50) +
                                                kv::test::Line("ROUTE T71 Z5", 100, 300, 200, 300)));
    const Ended ended = Run({"convert", "route.dxf", "--report", "json"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    EXPECT_NE(Contents(Folder / "programs/SRG/R/OUTE").find("\nG38G90X190Y130A"), std::string::npos)
        << Contents(Folder / "programs/SRG/R/OUTE");
    EXPECT_EQ(json::parse(ended.Output)["drawings"][0]["operations"]["routes"], 2);
}

// A hole and a pocket that begin in their corners, and a pocket that is open: all are cut.
TEST_F(ConvertCall, DoubtsAreLinesOfTheReportAndNoFailure)
{
    namespace drawn = kv::test;
    const std::string pocket = "EXCAVZ5K8T71R3";
    const std::string mark = drawn::Pair(40, 2.0);
    Put(Folder / "doubts.dxf",
        BoredPanel(drawn::Rectangle("ROUTEZ5T71L6", 50, 250, 100, 100) +
                   drawn::Rectangle("ROUTEZ5T71L6LD10", 200, 250, 100, 100) +
                   drawn::Rectangle(pocket, 300, 100, 100, 60) +
                   drawn::Polyline(pocket, {{299, 100}, {300, 100}}, mark) +
                   drawn::Line(pocket, 450, 100, 550, 100) + drawn::Line(pocket, 550, 100, 550, 160) +
                   drawn::Line(pocket, 550, 160.5, 450, 100) +
                   drawn::Polyline(pocket, {{449, 100}, {450, 100}}, mark)));
    const std::vector<std::string> doubts = {
        "Layer ROUTEZ5T71L6: the contour at X50 Y250 begins in an inner corner without a lead and cuts into "
        "its wall",
        "Layer ROUTEZ5T71L6LD10: the lead at X200 Y250 cuts into the walls of its corner",
        "Layer EXCAVZ5K8T71R3: the pocket at X299 Y100 begins in a sharp corner and cuts into its wall",
        "Layer EXCAVZ5K8T71R3: the pocket at X299 Y100 leaves wood between its ways",
        "Layer EXCAVZ5K8T71R3: the pocket at X449 Y100 is not cleared, its outline is open at X550 Y160 by "
        ".5"};
    const Ended ended = Run({"convert", "doubts.dxf"});
    EXPECT_EQ(ended.Status, 0);
    EXPECT_EQ(ended.Errors, "");
    for (const std::string& doubt : doubts)
        EXPECT_TRUE(Holds(ended.Output, doubt + "\n")) << doubt << "\n" << ended.Output;
    const json report = json::parse(Run({"convert", "doubts.dxf", "--report", "json"}).Output)["drawings"][0];
    EXPECT_EQ(report["outcome"], "converted");
    for (const std::string& doubt : doubts)
        EXPECT_EQ(std::count_if(report["lines"].begin(), report["lines"].end(),
                                [&](const json& line) { return line["text"] == doubt; }),
                  1)
            << doubt;
}

TEST_F(ConvertCall, ReportLinesAreUnicode)
{
    const std::string umlaut = "\xFC"; // CP1252
    Put(Folder / "door.dxf", BoredPanel("0\nTEXT\n8\nDESCR\n10\n0\n20\n0\n1\nT" + umlaut + "r\n"));
    EXPECT_TRUE(Holds(Run(BoredCall).Output, "Descr: T\xC3\xBCr\n"));
}

TEST_F(ConvertCall, NoColoursWhereNobodyWatches)
{
    EXPECT_FALSE(Holds(Run(BoredCall, {"TERM=xterm", "COLORTERM=truecolor"}).Output, "\x1b"));
}

} // namespace
