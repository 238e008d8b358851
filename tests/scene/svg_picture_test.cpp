// The picture as a text that a browser takes: well-formed, safe whatever a program holds, an element for each
// piece of work; and the page with it.
#include "scene/svg_picture.h"

#include <gtest/gtest.h>

#include "machine/program_reader.h"
#include "scene/picture_page.h"

namespace kv::test {
namespace {

const std::string Program = "G71X600Y400Z20T00N4L1\nG81G90G55P5R54=8X100Y50Z20\nG81G90G55P5T0103X100Y80Z12\n"
                            "G85G55P5T0161X10Y50Z8Q500\nG88G90G55P5T0171G41R5X80Y80Z8\nG1G90X100Y100Z8\n"
                            "G38G90X100Y100A180.Z8\nG183G90G55P5T0102X10Y10Z5I42\n"
                            "G81G90G55P1R54=8X100Y30Z4\nM2\n";

Scene SceneOfProgram(const std::string& text)
{
    return SceneOf(ReadProgram(text));
}

std::size_t CountOf(const std::string& text, std::string_view word)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + word.size()))
        ++count;
    return count;
}

// Tags that open and close in order, attributes in quotes; enough of XML for what is written here.
std::string XmlFault(const std::string& xml)
{
    std::vector<std::string> open;
    for (std::size_t at = xml.find('<'); at != std::string::npos; at = xml.find('<', at + 1)) {
        const std::size_t end = xml.find('>', at);
        if (end == std::string::npos)
            return "a tag without an end";
        const std::string tag = xml.substr(at + 1, end - at - 1);
        if (tag.find('<') != std::string::npos)
            return "a tag in a tag: " + tag;
        if (CountOf(tag, "\"") % 2 != 0)
            return "an open quote: " + tag;
        if (tag[0] == '?' || tag.back() == '/')
            continue;
        const std::string name = tag.substr(tag[0] == '/' ? 1 : 0, tag.find(' '));
        if (tag[0] != '/') {
            open.push_back(name);
        } else if (open.empty() || open.back() != name) {
            return "a stray end: " + name;
        } else {
            open.pop_back();
        }
    }
    return open.empty() ? "" : "left open: " + open.back();
}

TEST(SvgPictures, AreWellFormedAndHaveAnElementForEachPieceOfWork)
{
    const Scene scene = SceneOfProgram(Program);
    const std::string svg = SvgPicture(scene, {"DOOR", {"Panel"}});
    EXPECT_EQ(XmlFault(svg), "");
    EXPECT_EQ(CountOf(svg, "<g class=\"item\""), scene.Items.size());
    EXPECT_EQ(CountOf(svg, "class=\"fold\""), 4U);
    EXPECT_EQ(CountOf(svg, "class=\"face\""), 1U);
    EXPECT_TRUE(svg.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg "));
}

TEST(SvgPictures, CountYDownward)
{
    const std::string svg = SvgElement(SceneOfProgram("G71X600Y400Z20T00N4L1\nG81G90G55P5R54=8X100Y50Z20\n"
                                                      "G81G90G55P5R54=8X100Y350Z20\n"),
                                       {"", {}});
    const auto heightOf = [&svg](std::size_t nth) {
        std::size_t at = 0;
        for (std::size_t i = 0; i <= nth; ++i)
            at = svg.find("class=\"hole\"", at) + 1;
        at = svg.find("cy=\"", at) + 4;
        return std::stod(svg.substr(at));
    };
    EXPECT_NEAR(heightOf(0) - heightOf(1), 300, 0.001);
}

TEST(SvgPictures, ThroughBoresAreFullAndBlindOnesPale)
{
    const std::string svg = SvgElement(SceneOfProgram("G71X600Y400Z20T00N4L1\nG81G90G55P5R54=8X100Y50Z20\n"
                                                      "G81G90G55P5R54=8X100Y350Z10\n"),
                                       {"", {}});
    EXPECT_NE(svg.find("fill-opacity=\"1\""), std::string::npos);
    EXPECT_NE(svg.find("fill-opacity=\"0.425\""), std::string::npos);
}

TEST(SvgPictures, AFullCircleIsTwoArcs)
{
    const std::string svg = SvgElement(
        SceneOfProgram("G71X600Y400Z20T00N4L1\nG88G90G55P5T0171X110Y100Z8\nG38G90X100Y100A0.00Z8\n"),
        {"", {}});
    const std::size_t way = svg.find("class=\"way\"");
    ASSERT_NE(way, std::string::npos);
    EXPECT_EQ(CountOf(svg.substr(way, svg.find("/>", way) - way), "A10 10 0"), 2U);
}

TEST(SvgPictures, TextsOfAProgramAreTextOnly)
{
    const std::string svg = SvgPicture(SceneOfProgram(Program), {"<script>&\"'\x01</title>", {"a<b"}});
    EXPECT_EQ(XmlFault(svg), "");
    EXPECT_EQ(svg.find("<script"), std::string::npos);
    EXPECT_NE(svg.find("&lt;script&gt;&amp;&quot;'?"), std::string::npos);
    EXPECT_EQ(svg.find('\x01'), std::string::npos);
}

TEST(SvgPictures, OfOddProgramsHaveOnlyNumbers)
{
    for (const std::string& text :
         {std::string(), std::string("G71X0Y0Z0T00N4L1\nG81G90G55P5R54=0X0Y0Z0\n"),
          std::string("G71X1Y1Z1T00N4L1\nG88G90G55P5T0171G41R5X0Y0Z1\nG38G90X0Y0A90.Z1\nG1G90X0Y0Z1\n"),
          std::string("G71X99999999Y99999999Z9T00N4L1\nG81G90G55P5R54=8X-99999999Y99999999Z20\n")}) {
        const std::string svg = SvgPicture(SceneOfProgram(text), {"odd", {}});
        EXPECT_EQ(XmlFault(svg), "") << text;
        EXPECT_EQ(svg.find("nan"), std::string::npos) << text;
        EXPECT_EQ(svg.find("inf"), std::string::npos) << text;
    }
}

TEST(PicturePages, NeedNothingFromElsewhere)
{
    const std::string page = PicturePage(
        {{{"DOOR", {"Panel"}}, SceneOfProgram(Program), Program}, {{"SHELF", {}}, SceneOfProgram(""), ""}});
    EXPECT_EQ(CountOf(page, "<article"), 2U);
    EXPECT_EQ(CountOf(page, "<span>G"), 9U) << "each line of the program";
    EXPECT_EQ(CountOf(page, "data-light="), SceneOfProgram(Program).Groups.size());
    std::string plain = page;
    while (plain.find("http://www.w3.org/2000/svg") != std::string::npos)
        plain.erase(plain.find("http://www.w3.org/2000/svg"), 26);
    for (const char* const word : {"http", "src=", "@import", "url(", "fetch"})
        EXPECT_EQ(plain.find(word), std::string::npos) << word;
    const std::string body = page.substr(page.find("<body>"), page.find("<script>") - page.find("<body>"));
    std::string parts = body.substr(6);
    for (const char* const loose : {" data-rapids", " data-play"}) // attributes without a value
        while (parts.find(loose) != std::string::npos)
            parts.erase(parts.find(loose), std::string(loose).size());
    while (parts.find("<input") != std::string::npos) // closes itself in HTML
        parts.erase(parts.find("<input"), parts.find('>', parts.find("<input")) - parts.find("<input") + 1);
    EXPECT_EQ(XmlFault(parts), "");
}

TEST(PicturePages, TextsOfAProgramAreTextOnly)
{
    const std::string page =
        PicturePage({{{"a", {}}, SceneOfProgram(Program), "G71</pre><script>alert(1)</script>\r\n"}});
    EXPECT_EQ(CountOf(page, "<script>"), 1U);
    EXPECT_NE(page.find("&lt;/pre&gt;&lt;script&gt;alert(1)"), std::string::npos);
}

} // namespace
} // namespace kv::test
