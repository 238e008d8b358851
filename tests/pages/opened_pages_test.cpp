// The pages as a browser shows them, on a telephone, a tablet and a wide screen, in light and dark: nothing
// fails, nothing is asked for from elsewhere, all is in sight and can be read. Those of programs are used as
// a person does, by slider, clicks, legend, buttons and keys; what is lit and shown is read from the styles
// that the browser works out, not from the classes that the page sets.
#include "pages/browser.h"

namespace {

using namespace page_test;
using Indices = std::vector<std::size_t>;

Indices ItemsOn(const Json& use, int line)
{
    Indices items;
    for (std::size_t i = 0; i < use["items"].size(); ++i)
        if (use["items"][i]["line"] <= line && line <= use["items"][i]["last"])
            items.push_back(i);
    return items;
}

Indices ItemsUpTo(const Json& use, int line)
{
    Indices items;
    for (std::size_t i = 0; i < use["items"].size(); ++i)
        if (use["items"][i]["line"] <= line)
            items.push_back(i);
    return items;
}

// The line's work, and the line itself, are lit; what comes later is not shown.
void ExpectLine(const Json& use, const Json& state, int line)
{
    const Indices lit = ItemsOn(use, line);
    EXPECT_EQ(state["value"], line);
    EXPECT_EQ(state["lit"].get<Indices>(), lit) << line;
    EXPECT_EQ(state["shown"].get<Indices>(), ItemsUpTo(use, line)) << line;
    EXPECT_EQ(state["programLines"], Json::array({line}));
    EXPECT_TRUE(state["lineIsInSight"]) << line;
    EXPECT_EQ(state["rapidsShown"], state["rapidsBefore"]) << line;
    if (lit.empty()) {
        EXPECT_EQ(state["says"], "Line " + std::to_string(line));
    }
}

void ExpectSlider(const Json& use)
{
    ASSERT_GT(use["slides"].size(), 2u);
    std::size_t withWork = 0;
    for (const Json& slide : use["slides"]) {
        const int line = slide["line"];
        ExpectLine(use, slide, line);
        const Indices lit = ItemsOn(use, line);
        withWork += lit.empty() ? 0 : 1;
        if (!lit.empty()) {
            EXPECT_EQ(slide["says"], use["items"][lit.back()]["says"]);
        }
    }
    EXPECT_GT(withWork, 0u);
}

// A click lights what lies on top there, which is mostly the work that was aimed at, and its line. Where the
// pointer misses a thin line by less than a pixel, the nearest is lit.
void ExpectClicks(const Json& use)
{
    ASSERT_GT(use["clicks"].size(), 0u);
    std::size_t direct = 0;
    for (const Json& click : use["clicks"]) {
        const int top = click["top"];
        if (top < 0) {
            EXPECT_FALSE(click["lit"].empty()) << click["item"];
            continue;
        }
        const Json& item = use["items"][static_cast<std::size_t>(top)];
        if (item["last"] == 0) { // of the second program: it is lit where all is shown
            EXPECT_EQ(click["lit"], Json::array({top}));
            EXPECT_EQ(click["shown"].size(), use["items"].size());
        } else {
            ExpectLine(use, click, item["last"]);
        }
        EXPECT_EQ(click["says"], item["says"]);
        direct += click["item"] == top ? 1 : 0;
    }
    EXPECT_GT(direct, 0u);
}

// Fingers are wider than bores.
void ExpectClicksBesides(const Json& use)
{
    for (const Json& click : use["besides"]) {
        const int top = click["top"];
        const Json lit = click["lit"];
        EXPECT_FALSE(lit.empty());
        if (top >= 0) {
            EXPECT_EQ(click["says"], use["items"][static_cast<std::size_t>(top)]["says"]);
        }
    }
    for (const Json& click : use["textClicks"])
        ExpectLine(use, click, click["line"]);
}

// A row for each operation, whose button leads to its line.
void ExpectRows(const Json& use)
{
    EXPECT_EQ(use["rows"], use["items"].size());
    ASSERT_FALSE(use["rowClicks"].empty());
    for (const Json& click : use["rowClicks"])
        ExpectLine(use, click, click["line"]);
}

void ExpectLegend(const Json& use)
{
    std::size_t counted = 0;
    for (const Json& row : use["legend"]) {
        EXPECT_EQ(row["count"], row["members"].size()) << row["text"];
        EXPECT_EQ(row["before"], Json::array());
        EXPECT_EQ(row["hidden"], row["members"]) << row["text"];
        EXPECT_EQ(row["pressed"], "false");
        EXPECT_GE(row["contrast"], 4.5);
        EXPECT_EQ(row["after"], Json::array());
        EXPECT_EQ(row["pressedAfter"], "true");
        counted += row["count"].get<std::size_t>();
    }
    EXPECT_EQ(counted, use["items"].size());
}

void ExpectButtons(const Json& use)
{
    for (const Json& toggle : use["toggles"]) {
        if (toggle["isThere"]) {
            const bool isOff = toggle["name"] == "order"; // at first
            EXPECT_EQ(toggle["hidden"], Json::array({isOff, !isOff, isOff})) << toggle;
        } else {
            EXPECT_FALSE(toggle["hasShapes"]) << toggle;
        }
    }
    ASSERT_GE(use["sides"].size(), 2u);
    EXPECT_EQ(use["sides"][0]["name"], "Fit");
    EXPECT_TRUE(use["sides"][0]["isWhole"]);
    for (std::size_t i = 1; i < use["sides"].size(); ++i) {
        const Json& side = use["sides"][i];
        const int number = std::stoi(side["name"].get<std::string>().substr(5));
        // The views lie in the picture as the face and then edges 1 to 4.
        const std::size_t view = number == 5 ? 0 : static_cast<std::size_t>(number);
        EXPECT_GT(side["fills"][view], 0.5) << side;
        EXPECT_FALSE(side["isWhole"]);
    }
}

void ExpectKeys(const Json& keys, bool isFirst)
{
    const int from = keys["from"];
    const auto is = [](bool taken, int line) { return Json::array({taken, line}); };
    EXPECT_EQ(keys["right"], is(true, from + 1));
    EXPECT_EQ(keys["left"], is(true, from));
    EXPECT_EQ(keys["back"], is(false, from)) << "Alt and Left belong to the browser";
    EXPECT_EQ(keys["other"], is(false, from));
    EXPECT_EQ(keys["inSlider"], is(false, from));
    EXPECT_EQ(keys["before"], is(true, 1));
    EXPECT_EQ(keys["beyond"][0], true);
    if (isFirst) {
        EXPECT_EQ(keys["fromBody"], is(true, from + 1)) << "nothing has the focus when a page opens";
    }
}

void ExpectPlay(const Json& play, int last)
{
    EXPECT_EQ(play["pressed"], "true");
    EXPECT_EQ(play["after"], 4); // begun at 2, a line in 200 ms
    EXPECT_EQ(play["stopped"], "false");
    EXPECT_EQ(play["still"], 4);
    EXPECT_EQ(play["atEnd"], Json::array({last, "false"}));
    EXPECT_EQ(play["again"], 1);
}

void ExpectUse(const Json& use, bool isFirst)
{
    EXPECT_GT(use["items"].size(), 0u);
    EXPECT_EQ(use["max"], use["lines"].size());
    EXPECT_TRUE(use["faceIsInside"]);
    EXPECT_GT(use["face"][0], 150);
    EXPECT_GT(use["face"][1], 60);
    EXPECT_EQ(use["help"], "Left and Right go through the lines, Space plays them.");
    ExpectSlider(use);
    ExpectClicks(use);
    ExpectClicksBesides(use);
    ExpectRows(use);
    ExpectLegend(use);
    ExpectButtons(use);
    ExpectKeys(use["keys"], isFirst);
    ExpectPlay(use["play"], use["max"]);
}

// Requests need a name in the page; that of SVG itself is no address to ask.
void ExpectNoAddress(const std::string& page)
{
    const std::string svg = "http://www.w3.org/2000/svg";
    for (std::size_t at = page.find("http"); at != std::string::npos; at = page.find("http", at + 4))
        EXPECT_EQ(page.compare(at, svg.size(), svg), 0) << page.substr(at, 60);
    for (const char* const word : {"src=", "href=", "url(", "@import", "fetch(", "XMLHttpRequest"})
        EXPECT_EQ(page.find(word), std::string::npos) << word;
}

void ExpectGoodLooks(const Json& look, const Looks& looks)
{
    EXPECT_EQ(look["width"], looks.Width);
    EXPECT_LE(look["scrollWidth"], looks.Width);
    EXPECT_EQ(look["dark"], looks.Dark);
    EXPECT_GT(look["texts"], 5);
    for (const char* const fault : {"weak", "tooWide", "cut", "smallText", "small", "overlapping", "broken"})
        EXPECT_EQ(look[fault], Json::array()) << fault;
}

void ExpectGoodPage(const Json& found, const Looks& looks, std::size_t programs)
{
    const testing::ScopedTrace trace(__FILE__, __LINE__,
                                     std::to_string(looks.Width) + (looks.Dark ? " dark" : " light"));
    ASSERT_TRUE(found.is_object());
    EXPECT_EQ(found["errors"], Json::array());
    EXPECT_EQ(found["asked"], Json::array());
    ASSERT_TRUE(found.contains("after")) << "the page was not used to the end";
    ExpectGoodLooks(found["look"], looks);
    ExpectGoodLooks(found["after"], looks);
    ASSERT_EQ(found["uses"].size(), programs);
    for (std::size_t i = 0; i < programs; ++i)
        ExpectUse(found["uses"][i], i == 0);
}

struct OpenedPages : Pages {
    void ExpectGood(const std::string& page, std::size_t programs)
    {
        ExpectNoAddress(page);
        for (const Looks& looks :
             {Looks{375, false}, {375, true}, {1024, false}, {1920, false}, {1920, true}})
            ExpectGoodPage(Opened(page, looks), looks, programs);
    }
};

TEST_F(OpenedPages, OfARoutedDoor)
{
    ExpectGood(Drawn("routed_door.dxf"), 1);
}

TEST_F(OpenedPages, OfManyKindsOfBores)
{
    ExpectGood(Drawn("system_rows.dxf"), 1);
}

TEST_F(OpenedPages, OfASheetInTwoPortions)
{
    ExpectGood(Drawn("nested_sheet.dxf"), 2);
}

TEST_F(OpenedPages, OfTheHorizontalMachineAndItsPanel)
{
    const std::string page = Drawn("bottom.dxf", {"--set", "MakeHBD=1", "--set",
                                                  "HBDDestinationPath=" + (Folder / "hbd").string() + "/"});
    EXPECT_TRUE(Holds(page, "Side 4"));
    ExpectGood(page, 2);
}

TEST_F(OpenedPages, OfThreeControls)
{
    ExpectGood(PageOf({"compare", Example("door.dxf"), "-o", "compared.html"}), 3);
}

TEST_F(OpenedPages, OfTwoProgramsOverEachOther)
{
    const std::string head = "G71X600Y400Z18T00N4L1\r\n", bore = "G81G90G55P5R54=8X",
                      end = "Y50Z12\r\nM2\r\n";
    Put(Folder / "A.cnc", head + "G88G90G55P5T0171G41R5X80Y80Z8\r\nG1G90X300Y100Z8\r\n" + bore + "100" + end);
    Put(Folder / "B.cnc", head + bore + "140" + end);
    const std::string page = PageOf({"draw", "A.cnc", "B.cnc", "--over", "-o", "over.html"});
    EXPECT_TRUE(Holds(page, "only in B.cnc: "));
    ExpectGood(page, 1);
}

TEST_F(OpenedPages, OfAnExplanation)
{
    ExpectGood(PageOf({"explain", Example("nested_sheet.dxf"), Example("routed_door.dxf"), "--html",
                       "explained.html"}),
               0);
}

// What the other tests rely on: each fault is found.
TEST_F(OpenedPages, FaultsOfAPageAreFound)
{
    const Json found = Opened(
        "<!DOCTYPE html><html><head><style>.red{background:#fff;color:#eee}</style></head><body>"
        "<img src=\"http://localhost:1/a.png\"><div style=\"width:500px\">wide</div>"
        "<p class=\"red\">pale</p><p style=\"font-size:5px\">tiny</p>"
        "<p style=\"width:2em;overflow:hidden;white-space:nowrap\">more than there is room for</p>"
        "<p style=\"width:1em;overflow-wrap:anywhere\">broken</p>"
        "<button style=\"position:absolute;left:0;top:200px\">one</button>"
        "<button style=\"position:absolute;left:5px;top:205px;width:10px;height:10px;padding:0\">x</button>"
        "<script>nothing.at.all();</script></body></html>",
        {375, false});
    ASSERT_TRUE(found.contains("after")) << found;
    EXPECT_TRUE(Holds(found["errors"].dump(), "nothing is not defined")) << found["errors"];
    EXPECT_TRUE(Holds(found["asked"].dump(), "localhost:1")) << found["asked"];
    const Json& look = found["look"];
    EXPECT_GT(look["scrollWidth"], 375);
    for (const auto& [fault, what] : {std::pair("weak", "P pale"),
                                      {"tooWide", "DIV wide"},
                                      {"cut", "P more than"},
                                      {"smallText", "P tiny"},
                                      {"small", "BUTTON x"},
                                      {"overlapping", "BUTTON one / BUTTON x"},
                                      {"broken", "broken"}})
        EXPECT_TRUE(Holds(look[fault].dump(), what)) << fault << ": " << look[fault];
}

} // namespace
