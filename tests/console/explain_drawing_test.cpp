// `korvanti explain DRAWING`: as text, as JSON, as a page; nothing is written but the page.
#include "console/console_run.h"

namespace {

using namespace console_test;
using nlohmann::json;

std::string Circle(const std::string& layer, const std::string& more = {})
{
    return "0\nCIRCLE\n8\n" + layer + "\n" + more + "10\n300\n20\n200\n40\n4\n";
}

std::string Text(const std::string& layer, const std::string& text)
{
    return "0\nTEXT\n8\n" + layer + "\n10\n5\n20\n5\n1\n" + text + "\n";
}

class ExplainDrawing : public Console {
  protected:
    std::string Explain(const std::string& entities, const Words& more = {})
    {
        Put(Folder / "door.dxf", BoredPanel(entities));
        Words words = {"explain", "door.dxf"};
        words.insert(words.end(), more.begin(), more.end());
        const Ended ended = Run(words);
        EXPECT_EQ(ended.Status, 0) << ended.Errors;
        return WithoutReturns(ended.Output);
    }
    static std::string WithoutReturns(std::string text) // of a stream of Windows
    {
        std::erase(text, '\r');
        return text;
    }
    bool NothingIsWritten() const { return !fs::exists(Folder / "programs/SRG"); }
};

TEST_F(ExplainDrawing, SaysPanelLayersProgramsAndSum)
{
    const std::string text = Explain({});
    const fs::path program = fs::path(Shown("programs")) / "SRG" / "D" / "OOR";
    EXPECT_EQ(text,
              "door.dxf\n"
              "Panel 600 x 400 x 18 mm at (0, 0), from 1 POLYLINE on BORDER_Z18; taken for mm\n"
              "Layers\n"
              "  BORDER_Z18: the panel's border\n"
              "    Z thickness of the panel: 18\n"
              "    1 POLYLINE: the panel's border\n"
              "  VBORE_Z12F3000: vertical bores\n"
              "    Z depth: 12; D diameter: as drawn (from the drawing); T tool: by the diameter (default); "
              "G group: 1 (default); F feed: 3000\n"
              "    1 CIRCLE: machined\n"
              "Programs (none is written by this call)\n"
              "  " +
                  program.string() +
                  ": 4 lines from 1 entity\n"
                  "1 of 1 entity on machined layers became work.\n");
    EXPECT_TRUE(NothingIsWritten());
}

TEST_F(ExplainDrawing, NamesWhatWasLeftOutAndWhy)
{
    const std::string text =
        Explain(Circle("VBOR_D35") + Circle("VBOR_D35") + "0\nELLIPSE\n5\n2F\n8\nVBORE_D8\n10\n50\n20\n50\n");
    EXPECT_TRUE(Holds(text, "  VBOR_D35: means nothing; VBORE?\n")) << text;
    EXPECT_TRUE(Holds(text, "    2 CIRCLE: nothing\n")) << text;
    EXPECT_TRUE(Holds(text, "    1 ELLIPSE: left out, message 811: The layer asks for work")) << text;
    EXPECT_TRUE(Holds(text, ", handle 2F\n")) << text;
    EXPECT_TRUE(Holds(text, "Doubts and faults\n")) << text;
    EXPECT_TRUE(Holds(text, "  830 Layer VBOR_D35: 2 entities are not machined")) << text;
    EXPECT_TRUE(Holds(text, "1 of 2 entities on machined layers became work.\n")) << text;
}

TEST_F(ExplainDrawing, DoubtsHaveTheirPlaceAndCure)
{
    const std::string text = Explain("0\nLINE\n5\n2F\n8\nROUTE1_Z5_T71\n10\n50\n20\n50\n11\n50\n21\n50\n"
                                     "0\nLINE\n8\nROUTE2_Z5_T71\n10\n60\n20\n60\n11\n60\n21\n60\n");
    EXPECT_TRUE(Holds(text,
                      "  207 Layer ROUTE1_Z5_T71: 1 line of length 0 cannot be cut (line 60, handle 2F)\n"
                      "      Cure: Delete the line, or draw what it was meant to be.\n"
                      "  207 Layer ROUTE2_Z5_T71: 1 line of length 0 cannot be cut (line 74)\n"))
        << text;
}

TEST_F(ExplainDrawing, AnUnclearedPocketIsNotTheWorkThatItsLayerAsksFor)
{
    const std::string text = Explain(kv::test::Rectangle("EXCAV_Z5_T71_R6_K8", 100, 100, 80, 60));
    EXPECT_TRUE(Holds(text, "    4 LINE: machined as a route, the pocket is not cleared\n")) << text;
    EXPECT_TRUE(Holds(text, "  426 Layer EXCAV_Z5_T71_R6_K8: the pocket at X")) << text;
    EXPECT_TRUE(Holds(text, "1 of 5 entities on machined layers became work.\n")) << text;
}

TEST_F(ExplainDrawing, ShowsEachOperationOfALayerAndRenamedLayers)
{
    const std::string text =
        Explain(Text("INFO", "POST INSTRUCTIONS") + Text("INFO", "LAYER HOLES=VBORE_Z5") + Circle("Holes") +
                "0\nLINE\n8\nROUTE3_Z5T71$Z10\n10\n50\n20\n300\n11\n200\n21\n300\n");
    EXPECT_TRUE(Holds(text, "  Holes: renamed VBORE_Z5 by an instruction, vertical bores\n")) << text;
    EXPECT_TRUE(Holds(text, "  ROUTE3_Z5T71$Z10: operation 1: routes\n")) << text;
    EXPECT_TRUE(
        Holds(text, "  ROUTE3_Z5T71$Z10: operation 2: routes\n    number place in the order: 3; Z depth: 10; "
                    "T tool: 71"))
        << text;
    EXPECT_TRUE(Holds(text, "read as LAYER: LAYER HOLES=VBORE_Z5\n")) << text;
    EXPECT_TRUE(Holds(text, "  T71: 1 entity\n")) << text;
    EXPECT_FALSE(Holds(text, "ROUTE40")) << text;
}

TEST_F(ExplainDrawing, EachDrillOfAToolTextIsATool)
{
    const std::string text =
        Explain(Circle("VBORE_Z5T0103") + Circle("VBORE_Z5T102") + Circle("VBORE_Z5T03"));
    EXPECT_TRUE(Holds(text, "Tools\n  T01: 1 entity\n  T03: 2 entities\n  T10")) << text;
}

TEST_F(ExplainDrawing, AsJson)
{
    const json document = json::parse(Explain(Circle("VBOR_D35", "5\n3A\n"), {"--report", "json"}));
    const json& drawing = document["drawings"][0];
    EXPECT_EQ(drawing["drawing"], "door.dxf");
    EXPECT_EQ(drawing["outcome"], "converted");
    EXPECT_EQ(drawing["panel"]["length"], 600);
    EXPECT_EQ(drawing["panel"]["thickness"], 18);
    EXPECT_EQ(drawing["panel"]["unit"], "mm");
    const json& layers = drawing["layers"];
    ASSERT_EQ(layers.size(), 3U);
    EXPECT_EQ(layers[1]["layer"], "VBORE_Z12F3000");
    EXPECT_EQ(layers[1]["operations"][0]["work"], "vertical bores");
    EXPECT_EQ(layers[1]["operations"][0]["values"][0],
              (json{{"letter", "Z"}, {"meaning", "depth"}, {"value", "12"}, {"from", "name"}}));
    EXPECT_EQ(layers[1]["operations"][0]["entities"][0]["answer"], "machined");
    EXPECT_EQ(layers[2]["nearest"], "VBORE");
    EXPECT_EQ(layers[2]["operations"][0]["entities"][0]["handle"], "3A");
    EXPECT_EQ(drawing["sum"], (json{{"asking", 1}, {"worked", 1}}));
    bool isNumbered = false;
    for (const json& line : drawing["lines"])
        isNumbered = isNumbered || line.value("number", 0) == 830;
    EXPECT_TRUE(isNumbered);
    EXPECT_TRUE(NothingIsWritten());
}

TEST_F(ExplainDrawing, AsAPageThatNeedsNothingFromElsewhere)
{
    EXPECT_EQ(Explain(Circle("VBOR<script>&\"1"), {"--html", "page.html"}), "");
    const std::string page = Contents(Folder / "page.html");
    EXPECT_TRUE(Holds(page, "Panel 600 x 400 x 18 mm")) << page;
    EXPECT_TRUE(Holds(page, "VBOR&lt;script&gt;&amp;&quot;1")) << page;
    for (const char* const word : {"<script", "http", "src=", "@import", "url("})
        EXPECT_FALSE(Holds(page, word)) << word;
    EXPECT_TRUE(NothingIsWritten());
}

TEST_F(ExplainDrawing, APageThatCannotBeWrittenIsReported)
{
    const Ended ended = Run({"explain", "door.dxf", "--html", "nowhere/page.html"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: nowhere/page.html: ")) << ended.Errors;
}

TEST_F(ExplainDrawing, WithoutAProgramFolderTheDrawingIsExplainedAllTheSame)
{
    const std::string text = Explain({}, {"--set", "DestinationPath90="});
    EXPECT_TRUE(Holds(text, "1 of 1 entity on machined layers became work.\n")) << text;
    EXPECT_FALSE(fs::exists(Folder / "SRG"));
}

TEST_F(ExplainDrawing, ADrawingThatFailsIsExplainedAsFarAsItCame)
{
    Put(Folder / "loose.dxf", "0\nSECTION\n2\nENTITIES\n" + Circle("VBORE_Z5") + "0\nENDSEC\n0\nEOF\n");
    const Ended ended = Run({"explain", "loose.dxf", "door.dxf"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: loose.dxf: failed")) << ended.Errors;
    const std::string text = WithoutReturns(ended.Output);
    EXPECT_TRUE(Holds(text, "No panel was found.")) << text;
    EXPECT_TRUE(Holds(text, "    1 CIRCLE: the conversion ended before it\n")) << text;
    EXPECT_TRUE(Holds(text, "The conversion ended before the programs were written.\n\ndoor.dxf")) << text;
    EXPECT_TRUE(Holds(text, "1 of 1 entity")) << text;
}

TEST_F(ExplainDrawing, EntitiesOfABorderThatIsNoneAreNotSaidToBeOfAWrongKind)
{
    Put(Folder / "open.dxf",
        "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\nBORDER_Z19\n10\n0\n20\n0\n11\n600\n21\n0\n" +
            Circle("VBORE_Z5") + "0\nENDSEC\n0\nEOF\n");
    const Ended ended = Run({"explain", "open.dxf"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Output, "    1 LINE: the conversion ended before it")) << ended.Output;
    EXPECT_FALSE(Holds(ended.Output, "message 811")) << ended.Output;
}

TEST_F(ExplainDrawing, ADrawingThatIsNotThereFails)
{
    const Ended ended = Run({"explain", "nowhere.dxf"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Output, "NOT FOUND")) << ended.Output;
}

TEST_F(ExplainDrawing, ThirtyThousandLayersThatMeanNothingAreCounted)
{
    std::string entities;
    for (int i = 0; i < 30000; ++i)
        entities += Circle("L" + std::to_string(i));
    const std::string text = Explain(entities);
    EXPECT_TRUE(Holds(text, "  29980 further layers mean nothing\n"));
    EXPECT_LT(text.size(), 4000U);
}

TEST_F(ExplainDrawing, EntitiesMayShareAHandleOrHaveNone)
{
    const std::string text =
        Explain(Circle("GROOVE_Z1", "5\nAA\n") + Circle("GROOVE_Z1", "5\nAA\n") + Circle("GROOVE_Z2"));
    EXPECT_TRUE(Holds(text, "    2 CIRCLE: left out")) << text;
    EXPECT_TRUE(Holds(text, ", handle AA\n")) << text;
}

TEST_F(ExplainDrawing, NothingInANameSteersTheTerminal)
{
    const std::string text = Explain(Circle("VBOR%1$s\x1b[31m'\\{layer}") + Text("NAME", "%n\x1b]0;x\x07"));
    EXPECT_TRUE(Holds(text, "VBOR%1$s?[31m'\\{layer}: means nothing; VBORE?")) << text;
    EXPECT_EQ(text.find('\x1b'), std::string::npos);
    EXPECT_EQ(text.find('\x07'), std::string::npos);
}

TEST_F(ExplainDrawing, WrongUsage)
{
    for (const Words& words :
         {Words{"explain", "door.dxf", "--list"}, Words{"explain", "door.dxf", "--report", "x"},
          Words{"explain", "door.dxf", "--set", "x"}}) {
        const Ended ended = Run(words);
        EXPECT_EQ(ended.Status, 2);
        EXPECT_TRUE(Holds(ended.Errors, "korvanti explain --help")) << ended.Errors;
    }
}

} // namespace
