// Letters of drawings from elsewhere, and texts of several lines.
#include "import/drawing_letters.h"
#include "import/import_scene.h"
#include "import/multiline_text.h"
#include "platform/nearest_letters.h"

namespace kv::test {
namespace {

struct ImportTexts : ImportScene {
    static std::string Header(std::string_view version, std::string_view page)
    {
        std::string header = Pair(9, "$ACADVER") + Pair(1, version);
        return page.empty() ? header : header + Pair(9, "$DWGCODEPAGE") + Pair(3, page);
    }
};

TEST(NearestLetters, LettersOfOtherScriptsBecomeTheNearest)
{
    EXPECT_EQ(NearestAnsi("\xC5\x81\xC3\xB3\x64\xC5\xBA"), "L\xF3\x64z"); // Lodz as Poles write it
    EXPECT_EQ(NearestAnsi("\xD0\xB4\xD0\xB2\xD0\xB5\xD1\x80\xD1\x8C"), "dver");
    EXPECT_EQ(NearestAnsi("\xCE\xA3\xCE\xB1"), "Sa");
    EXPECT_EQ(NearestAnsi("\xE6\x89\x89"), "_");
    EXPECT_EQ(NearestAnsi("e\xCC\x81"), "e") << "a mark of its own goes";
    EXPECT_EQ(NearestAnsi("\xE2\x82\xAC \xC3\x84"), "\x80 \xC4") << "what the code page has stays";
    EXPECT_EQ(NearestAnsi("a\xFF"), "a_");
}

TEST_F(ImportTexts, Utf8OfANewDrawingIsReadAsItsLetters)
{
    for (const std::string_view mode : {"plain", "told", "full"}) {
        const auto records = Read({.Entities = TextAt("NAME", 0, 0, "T\xC3\xBCr \xC5\x81"),
                                   .Header = Header("AC1027", "ANSI_1252")},
                                  mode);
        ASSERT_EQ(records.size(), 1u);
        EXPECT_EQ(TextOf(records[0]), "T\xFCr L");
        EXPECT_TRUE(Place.Reported("A letter that programs lack is read as the nearest: U+0141 as \"L\""))
            << Place.ReportText();
    }
}

TEST_F(ImportTexts, AnOldDrawingIsReadByItsCodePage)
{
    const auto polish =
        Read({.Entities = TextAt("NAME", 0, 0, "\xA3\xF3"), .Header = Header("AC1015", "ANSI_1250")});
    EXPECT_EQ(TextOf(polish.at(0)), "L\xF3");
    const auto russian = Read(
        {.Entities = TextAt("NAME", 0, 0, "\xE4\xE2\xE5\xF0\xFC"), .Header = Header("AC1015", "ansi_1251")});
    EXPECT_EQ(TextOf(russian.at(0)), "dver");
    const auto dos = Read({.Entities = TextAt("NAME", 0, 0, "T\x81r"), .Header = Header("AC1009", "dos850")});
    EXPECT_EQ(TextOf(dos.at(0)), "T\xFCr");
}

TEST_F(ImportTexts, WesternTextsStayByteForByte)
{
    const auto records =
        Read({.Entities = TextAt("NAME", 0, 0, "T\xFCr \x80"), .Header = Header("AC1015", "ANSI_1252")});
    EXPECT_EQ(TextOf(records.at(0)), "T\xFCr \x80");
    EXPECT_TRUE(Place.Lines.empty()) << Place.ReportText();
    EXPECT_EQ(TextOf(Read({.Entities = TextAt("NAME", 0, 0, "T\xFCr")}).at(0)), "T\xFCr")
        << "no header at all";
}

TEST_F(ImportTexts, ADrawingThatSaysNothingAndIsUtf8IsReadAsThat)
{
    EXPECT_EQ(TextOf(Read({.Entities = TextAt("NAME", 0, 0, "T\xC3\xBCr")}).at(0)), "T\xFCr");
}

TEST_F(ImportTexts, ANewDrawingThatIsNoUtf8IsReadByItsCodePageAndNamed)
{
    const auto records =
        Read({.Entities = TextAt("NAME", 0, 0, "T\xFCr"), .Header = Header("AC1021", "ANSI_1252")});
    EXPECT_EQ(TextOf(records.at(0)), "T\xFCr");
    EXPECT_TRUE(Place.Reported(
        "The drawing's texts are no UTF-8, though its version says so; its code page is taken"))
        << Place.ReportText();
}

TEST_F(ImportTexts, ACodePageThatNobodyKnowsIsNamed)
{
    const auto records =
        Read({.Entities = TextAt("NAME", 0, 0, "T\xFCr"), .Header = Header("AC1015", "ANSI_9999")});
    EXPECT_EQ(TextOf(records.at(0)), "T\xFCr");
    EXPECT_TRUE(
        Place.Reported("The drawing's code page ANSI_9999 is unknown; its texts are read as Windows-1252"))
        << Place.ReportText();
}

TEST_F(ImportTexts, SpelledLettersAreRead)
{
    const auto records =
        Read({.Entities = TextAt("NAME", 0, 0, "T\\U+00FCr \\u+20AC \\U+0141 \\U+D83D\\U+DE00 \\U+12"),
              .Header = Header("AC1015", "ANSI_1252")});
    EXPECT_EQ(TextOf(records.at(0)), "T\xFCr \x80 L _ \\U+12");
}

TEST_F(ImportTexts, ASpelledLineEndMakesNoPair)
{
    const auto records = Read({.Entities = TextAt("NAME", 0, 0, "A\\U+000AB\\U+0000C")});
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(TextOf(records[0]), "A B C");
}

TEST_F(ImportTexts, LettersOfTwoBytesLeaveNoPlainLetterBehind)
{
    // The second bytes of these are the letters A and Z, which a layer's name would read as codes.
    const auto records =
        Read({.Entities = Circle("VBORE_\x83\x41\x83\x5A", 5, 5, 4), .Header = Header("AC1015", "ANSI_932")});
    EXPECT_EQ(records.at(0).Layer.Trimmed(), "VBORE___");
    EXPECT_TRUE(Place.Reported(
        "Layer VBORE___: its name holds letters that programs lack; it is read with the nearest ones"))
        << Place.ReportText();
}

TEST_F(ImportTexts, Utf16WithItsMarkIsRead)
{
    const std::string text =
        WholeDrawing{.Entities = TextAt("NAME", 0, 0, "T@r"), .Header = Header("AC1027", "")}.Text();
    for (const bool big : {false, true}) {
        std::string wide = big ? "\xFE\xFF" : "\xFF\xFE";
        for (const char c : text) {
            const char low = c == '@' ? '\xFC' : c;
            wide += big ? std::string{'\0', low} : std::string{low, '\0'};
        }
        EXPECT_EQ(TextOf(ReadBytes(wide).at(0)), "T\xFCr");
    }
    EXPECT_EQ(
        TextOf(ReadBytes("\xEF\xBB\xBF" + WholeDrawing{.Entities = TextAt("NAME", 0, 0, "T\xC3\xBCr")}.Text())
                   .at(0)),
        "T\xFCr");
}

// An umlaut's byte is the program's own mark for CB; a person's letter must not become one.
TEST_F(ImportTexts, AnUmlautInALayerIsNoCode)
{
    const std::string border = Rectangle("BORDER_Z18", 0, 0, 600, 400);
    for (const std::string_view layer :
         {"VBORE_Z10 \xC4", "VBORE_Z10 \xE4", "VBORE_Z10 \xD6", "VBORE_Z10 \xDC", "VBORE_Z10 \xC5",
          "VBORE_Z\xDF"
          "10"}) {
        ASSERT_TRUE(Place.Convert(Drawing(border + Circle(layer, 100, 100, 4)))) << layer;
        const std::vector<std::string> with = Place.Program();
        const std::string plain = layer == "VBORE_Z\xDF"
                                           "10"
                                      ? "VBORE_Z_10"
                                      : "VBORE_Z10 _";
        ASSERT_TRUE(Place.Convert(Drawing(border + Circle(plain, 100, 100, 4))));
        EXPECT_EQ(with, Place.Program()) << layer;
    }
}

TEST(MultilineText, CodesGoAndLinesStay)
{
    using Lines = std::vector<std::string>;
    EXPECT_EQ(LinesOfMtext("{\\fArial|b0|i0;Left} \\H2.5x;door\\PZ18"), (Lines{"Left door", "Z18"}));
    EXPECT_EQ(LinesOfMtext("\\A1;\\C3;\\W0.8;\\Q15;\\T2;\\pxi-3,l4;Text"), Lines{"Text"});
    EXPECT_EQ(LinesOfMtext("\\LUnder\\l \\OOver\\o \\KStrike\\k"), Lines{"Under Over Strike"});
    EXPECT_EQ(LinesOfMtext("\\S1#2; \\S3^4; a\\~b"), Lines{"1/2 3/4 a b"});
    EXPECT_EQ(LinesOfMtext("a\\\\b \\{c\\}"), Lines{"a\\b {c}"});
    EXPECT_EQ(LinesOfMtext("C:\\Dir"), Lines{"C:\\Dir"});
    EXPECT_EQ(LinesOfMtext("a^Ib^Jc^ d"), (Lines{"a b", "c^d"}));
    EXPECT_EQ(LinesOfMtext("\\P\\Pa\\P\\P"), Lines{"a"});
    EXPECT_TRUE(LinesOfMtext("\\").size() == 1u);
    EXPECT_TRUE(LinesOfMtext("\\fArial").empty());
    EXPECT_TRUE(LinesOfMtext("").empty());
}

TEST_F(ImportTexts, AnMtextBecomesItsLinesOneBelowTheOther)
{
    const std::string mtext = Pair(0, "MTEXT") + Pair(8, "INFO") + Pair(10, 100) + Pair(20, 50) +
                              Pair(40, 3) + Pair(71, 1) + Pair(3, "POST INSTR") +
                              Pair(1, "UCTIONS\\PBORDER ON");
    const auto records = Read({.Entities = mtext});
    ASSERT_EQ(KindsOf(records), "TEXT TEXT");
    EXPECT_EQ(TextOf(records[0]), "POST INSTRUCTIONS");
    EXPECT_EQ(TextOf(records[1]), "BORDER ON");
    EXPECT_NEAR(records[0].Y1, 47, 1e-4);
    EXPECT_NEAR(records[1].Y1, 42, 1e-4);
    EXPECT_EQ(Run.InstructionLayer, "INFO");
}

TEST_F(ImportTexts, ToldLeavesAnMtextWithItsCodes)
{
    const auto records = Read({.Entities = Pair(0, "MTEXT") + Pair(8, "INFO") + Pair(1, "A\\PB")}, "told");
    ASSERT_EQ(KindsOf(records), "MTEXT");
    EXPECT_EQ(TextOf(records[0]), "A\\PB");
    EXPECT_TRUE(
        Place.Reported("Layer INFO: MTEXT is read with its codes; Import=full would make 2 TEXT of it"))
        << Place.ReportText();
}

} // namespace
} // namespace kv::test
