// `korvanti trace`: stages, shape of the document and its numbers.
#include "console/console_run.h"

using namespace console_test;
using nlohmann::json;

namespace {

class TraceCall : public Console {
  protected:
    json Trace(const Words& stages)
    {
        Words words = {"trace", "door.dxf"};
        for (const std::string& stage : stages)
            words.insert(words.end(), {"--after", stage});
        const Ended ended = Run(words);
        EXPECT_EQ(ended.Status, 0) << ended.Errors;
        return json::parse(ended.Output);
    }
};

TEST_F(TraceCall, AllStagesInTheirOrderWhereNoneIsNamed)
{
    const Ended ended = Run({"trace", "door.dxf"});
    EXPECT_EQ(ended.Status, 0);
    const auto document = nlohmann::ordered_json::parse(ended.Output);
    Words names;
    for (const auto& [name, stage] : document.items()) {
        names.push_back(name);
        EXPECT_TRUE(stage["Run"].is_object()) << name;
    }
    EXPECT_EQ(names, (Words{"entities", "layers", "border", "operations", "routes", "chained", "pockets",
                            "tour", "optimized", "leads", "final"}));
}

TEST_F(TraceCall, EachStageShowsItsArrays)
{
    const std::vector<std::pair<std::string, Words>> arrays = {
        {"entities", {"Entities", "EntityTexts"}},
        {"layers", {"Entities"}},
        {"border", {}},
        {"operations", {"VBores", "Grooves", "HBoreLines", "HBores"}},
        {"routes", {"RouteSegments", "RouteCircles"}},
        {"chained", {"RouteSegments", "RouteCircles", "GroovePasses", "HBores"}},
        {"pockets", {"RouteSegments", "RouteCircles"}},
        {"tour", {"VBores"}},
        {"optimized", {"VBores", "HeadPositions"}},
        {"leads", {"RouteSegments", "RouteCircles"}},
        {"final", {"VBores", "RouteSegments", "RouteCircles", "GroovePasses", "HBores", "HeadPositions"}},
    };
    const json document = Trace({});
    for (const auto& [stage, names] : arrays) {
        EXPECT_EQ(document[stage].size(), names.size() + 1) << stage; // and the run block
        for (const std::string& name : names)
            EXPECT_TRUE(document[stage][name].is_array()) << stage << " " << name;
    }
}

TEST_F(TraceCall, OnlyTheNamedStages)
{
    const json document = Trace({"tour", "border"});
    EXPECT_EQ(document.size(), 2U);
    EXPECT_EQ(document["tour"]["VBores"], json::array({{{"X", 100},
                                                        {"Y", 50},
                                                        {"Depth", 12},
                                                        {"Diameter", 8},
                                                        {"Group", 1},
                                                        {"Feed", 3000},
                                                        {"Drawn", json::array({{{"line", 50}}})}}}));
    const json& run = document["border"]["Run"];
    EXPECT_EQ(run["SideWidth"], json({0, 0, 0, 0, 600}));
    EXPECT_EQ(run["SideHeight"], json({0, 0, 0, 0, 400}));
    EXPECT_EQ(run["SidePresent"], json({0, 0, 0, 0, -1}));
    EXPECT_EQ(run["PartThickness"], 18);
    EXPECT_FALSE(run.contains("OriginX"));         // zero
    EXPECT_FALSE(run.contains("PartDescription")); // blank
    EXPECT_EQ(run["LayerTable"], json({"BORDER", "VBORE DRILLING", "GROOVE", "HBORE"}));
}

TEST_F(TraceCall, EachLineOfAProgramNamesWhatItComesFrom)
{
    const json programs = Trace({"programs"})["programs"]["Programs"];
    ASSERT_EQ(programs.size(), 1U);
    const json& lines = programs[0]["Lines"];
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0].count("Drawn"), 0U);
    EXPECT_EQ(lines[2]["Text"].get<std::string>().substr(0, 3), "G81");
    EXPECT_EQ(lines[2]["Drawn"], json::array({{{"line", 50}}}));
    EXPECT_EQ(lines[3], json({{"Text", "M2"}}));
}

TEST_F(TraceCall, EntitiesStandFromElementOneOn)
{
    const json entities = Trace({"entities"})["entities"]["Entities"];
    ASSERT_GE(entities.size(), 8U);
    EXPECT_EQ(entities[0], json::object()); // the reader's first entity is element 2
    EXPECT_EQ(entities[1]["Kind"], "POLYLINE");
    EXPECT_EQ(entities[7]["Kind"], "CIRCLE");
    EXPECT_EQ(entities[7]["Layer"], "VBORE_Z12F3000");
    EXPECT_EQ(entities[7]["Radius"], 4);
}

TEST_F(TraceCall, ASingleIsTheShortestNumberThatReadsBack)
{
    Put(Folder / "door.dxf", BoredPanel("0\nPOINT\n8\nVBORE_Z12.7\n10\n0.1\n20\n16."
                                        "6666666\n0\nPOINT\n8\nVBORE_Z.1\n10\n33.5\n20\n300\n"));
    const Ended ended = Run({"trace", "door.dxf", "--after", "operations"});
    for (const char* const number :
         {"\"X\": 0.1,", "\"Y\": 16.666666,", "\"Depth\": 12.7,", "\"X\": 33.5,", "\"Y\": 300,"})
        EXPECT_TRUE(Holds(ended.Output, number)) << number << ended.Output;
}

TEST_F(TraceCall, BytesAbove127AreCharactersOfTheSameNumber)
{
    // The mark of FD is 0xE6; 0x80 is the euro sign of CP1252, but stays 0x80 here.
    Put(Folder / "door.dxf",
        BoredPanel("0\nPOINT\n8\nVBORE_FD9\n10\n9\n20\n9\n0\nTEXT\n8\nX\n10\n9\n20\n9\n1\n\x80\n"));
    const json document = Trace({"layers", "entities"});
    EXPECT_EQ(document["layers"]["Entities"][8]["Layer"], "VBORE_ \xC3\xA6"
                                                          "9");
    EXPECT_EQ(document["entities"]["EntityTexts"], json({"\xC2\x80"}));
}

TEST_F(TraceCall, SeveralDrawingsGiveAnArrayInOrder)
{
    Put(Folder / "wide.dxf", BoredPanel("0\nPOINT\n8\nVBORE_Z5\n10\n9\n20\n9\n"));
    const Ended ended = Run({"trace", "door.dxf", "missing.dxf", "wide.dxf", "--after", "operations"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: missing.dxf: failed\n")) << ended.Errors;
    const json document = json::parse(ended.Output);
    ASSERT_EQ(document.size(), 3U);
    EXPECT_EQ(document[0]["operations"]["VBores"].size(), 1U);
    EXPECT_EQ(document[1], json::object());
    EXPECT_EQ(document[2]["operations"]["VBores"].size(), 2U);
}

TEST_F(TraceCall, WritesNoFileAndReportsOnStandardError)
{
    const Ended ended = Run({"trace", "door.dxf"});
    EXPECT_EQ(Contents(Folder / "programs/INDICE.PRG"), "");
    EXPECT_FALSE(fs::exists(Folder / "programs/SRG"));
    EXPECT_EQ(ended.Errors.substr(0, 5), "door\n");
}

TEST_F(TraceCall, AnUnknownStageIsWrongUsageAndTheStagesAreTold)
{
    const Ended ended = Run({"trace", "door.dxf", "--after", "finale"});
    EXPECT_EQ(ended.Status, 2);
    EXPECT_EQ(ended.Output, "");
    EXPECT_TRUE(Holds(ended.Errors, "finale"));
    EXPECT_TRUE(Holds(ended.Errors,
                      "entities layers border operations routes chained pockets tour optimized leads "
                      "final"));
}

} // namespace
