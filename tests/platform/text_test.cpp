// Text in CP1252: case, tokens, cleaners and the converters at the edge.
#include "platform/text.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

using namespace std::string_literals;

TEST(Case, LettersOfTheCodePage)
{
    EXPECT_EQ(UpperCase("route1z5"), "ROUTE1Z5");
    EXPECT_EQ(LowerCase("ROUTE1Z5"), "route1z5");
    EXPECT_EQ(UpperCase("\xE4\xF6\xFC\xE9\xFE"), "\xC4\xD6\xDC\xC9\xDE"); // a-umlaut ... thorn
    EXPECT_EQ(LowerCase("\xC4\xD6\xDC\xC9\xDE"), "\xE4\xF6\xFC\xE9\xFE");
    EXPECT_EQ(UpperCase("\x9A\x9C\x9E\xFF"), "\x8A\x8C\x8E\x9F");
    EXPECT_EQ(LowerCase("\x8A\x8C\x8E\x9F"), "\x9A\x9C\x9E\xFF");
}

TEST(Case, SignsStayAndSharpSHasNoUpper)
{
    EXPECT_EQ(UpperCase("\xDF\xF7\xD7\xB5\xA0\x80"), "\xDF\xF7\xD7\xB5\xA0\x80");
    EXPECT_EQ(LowerCase("\xDF\xF7\xD7\xB5\xA0\x80"), "\xDF\xF7\xD7\xB5\xA0\x80");
    EXPECT_EQ(UpperCase("{|}~@[`"), "{|}~@[`");
    EXPECT_EQ(LowerCase("{|}~@[`"), "{|}~@[`");
}

TEST(Case, EachUpperComesBackAsItsLower)
{
    int pairs = 0;
    for (int code = 0; code < 256; ++code) {
        const char c = static_cast<char>(code);
        if (UpperChar(c) == c)
            continue;
        ++pairs;
        EXPECT_EQ(LowerChar(UpperChar(c)), c) << code;
    }
    EXPECT_EQ(pairs, 26 + 30 + 4); // a to z, the row of accents without the division sign, four others
}

TEST(Case, EqualIgnoringCase)
{
    EXPECT_TRUE(EqualIgnoringCase("ConFiguration", "Configuration"));
    EXPECT_TRUE(EqualIgnoringCase("M\xF6"
                                  "bel",
                                  "M\xD6"
                                  "BEL"));
    EXPECT_FALSE(EqualIgnoringCase("a", "ab"));
    EXPECT_FALSE(EqualIgnoringCase("\xF7", "\xD7"));
    EXPECT_TRUE(EqualIgnoringCase("", ""));
}

TEST(Trim, BlanksOnly)
{
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(TrimLeft("  a "), "a ");
    EXPECT_EQ(TrimRight("  a "), "  a");
    EXPECT_EQ(Trim("\t a\r\n"), "\t a\r\n");
    EXPECT_EQ(Trim("    "), "");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(TrimRight("   "), "");
}

TEST(Mid, CountsFromOneAndIsEmptyBehindTheEnd)
{
    EXPECT_EQ(Mid("ROUTE1", 6), "1");
    EXPECT_EQ(Mid("ROUTE1", 1, 5), "ROUTE");
    EXPECT_EQ(Mid("ROUTE1", 5, 99), "E1");
    EXPECT_EQ(Mid("ROUTE1", 7), "");
    EXPECT_EQ(Mid("ROUTE1", 700), "");
    EXPECT_EQ(Mid("ROUTE1", 0), "");
    EXPECT_EQ(Mid("ROUTE1", -3), "");
    EXPECT_EQ(Mid("", 1), "");
}

TEST(Find, PositionsCountFromOne)
{
    EXPECT_EQ(Find(1, "DRILLING", "LL"), 4);
    EXPECT_EQ(Find(5, "DRILLING", "L"), 5);
    EXPECT_EQ(Find(6, "DRILLING", "L"), 0);
    EXPECT_EQ(Find(99, "DRILLING", "L"), 0);
    EXPECT_EQ(Find(1, "DRILLING", ""), 0);
    EXPECT_EQ(FindAnyOf(1, "a,b;c", ";,"), 2);
    EXPECT_EQ(FindAnyOf(3, "a,b;c", ";,"), 4);
    EXPECT_EQ(FindAnyOf(5, "a,b;c", ";,"), 0);
    EXPECT_EQ(FindLast("a\\b\\c", '\\'), 4);
    EXPECT_EQ(FindLast("abc", '\\'), 0);
    EXPECT_EQ(InCount("a=b=c", '='), 2);
}

TEST(Find, HoldsAndBeginsWith)
{
    EXPECT_TRUE(Holds("0EXCAV", "EXC"));
    EXPECT_FALSE(Holds("EXC", "EXCA"));
    EXPECT_FALSE(Holds("EXC", "")); // an empty part is nowhere
    EXPECT_TRUE(BeginsWith("ROUTE1", "ROUTE"));
    EXPECT_FALSE(BeginsWith("ROUT", "ROUTE"));
}

TEST(ParseString, MovesBehindTheDelimiter)
{
    const std::string_view text = "12,5;7";
    Long position = 1;
    EXPECT_EQ(ParseString(position, text, ",;"), "12");
    EXPECT_EQ(position, 4);
    EXPECT_EQ(ParseString(position, text, ",;"), "5");
    EXPECT_EQ(position, 6);
    EXPECT_EQ(ParseString(position, text, ",;"), "7");
    EXPECT_EQ(position, 0);
    EXPECT_EQ(ParseString(position, text, ",;"), "");
    EXPECT_EQ(position, 0);
}

TEST(ParseString, ADelimiterAtTheEndLeavesOneEmptyToken)
{
    Long position = 1;
    EXPECT_EQ(ParseString(position, "VAR=", "="), "VAR");
    EXPECT_EQ(position, 5);
    EXPECT_EQ(ParseString(position, "VAR=", "="), "");
    EXPECT_EQ(position, 0);
}

TEST(ParseString, StartsAtItsPosition)
{
    Long position = 9;
    EXPECT_EQ(ParseString(position, "RAMPOUT 12 3", " "), "12");
    EXPECT_EQ(position, 12);
}

TEST(ParseString, WithNulCutsABufferAtItsEnd)
{
    Long position = 1;
    EXPECT_EQ(ParseString(position, "abc\0xyz"s, std::string_view("\0", 1)), "abc");
    EXPECT_EQ(position, 5);
}

TEST(ParseString, EmptyTextAndPositionsOutsideGiveNothing)
{
    for (const Long start : {-1, 0, 1, 5}) {
        Long position = start;
        EXPECT_EQ(ParseString(position, "", ","), "");
        EXPECT_EQ(position, 0);
    }
    Long position = 7;
    EXPECT_EQ(ParseString(position, "abc", ","), "");
    EXPECT_EQ(position, 0);
}

TEST(NextToken, PassesOverRunsOfBlanksAndEqualSigns)
{
    const std::string_view text = "VAR  R1 == 25";
    Long position = 1;
    EXPECT_EQ(NextToken(position, text), "VAR");
    EXPECT_EQ(NextToken(position, text), "R1");
    EXPECT_EQ(NextToken(position, text), "25");
    EXPECT_EQ(position, 0);
    EXPECT_EQ(NextToken(position, text), "");
}

TEST(NextToken, BlanksAtTheEndGiveAnEmptyTokenAndPositionZero)
{
    Long position = 1;
    EXPECT_EQ(NextToken(position, "FLAG  "), "FLAG");
    EXPECT_EQ(position, 6);
    EXPECT_EQ(NextToken(position, "FLAG  "), "");
    EXPECT_EQ(position, 0);
}

TEST(Compact, DropsBlanksAndNulBytesEverywhere)
{
    EXPECT_EQ(Compact(" a\0 b c \0"s), "abc");
    EXPECT_EQ(StripBlanks(" a\0 b\tc "s), "ab\tc");
}

TEST(ReplaceChar, EveryOccurrence)
{
    std::string text = "1,5,7";
    ReplaceChar(text, ',', '.');
    EXPECT_EQ(text, "1.5.7");
}

TEST(CleanText, DropsWhatNoProgramNameMayHold)
{
    std::string text = "a*b(c)d<e>f=g?h;i{j|k}l~m\x7F\xE4";
    EXPECT_EQ(CleanText(text), "abcdefghijklm");
    EXPECT_EQ(text, "");
}

TEST(CleanText, KeepsTheTwoRangesToTheirLastCode)
{
    std::string all;
    for (int code = 1; code < 256; ++code)
        all += static_cast<char>(code);
    EXPECT_EQ(CleanText(all), "+,-./0123456789:@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz");
    std::string inner = "  a  b ";
    EXPECT_EQ(CleanText(inner), "a  b");
    std::string trimmedLast = " *a* "; // trimmed behind the cleaning
    EXPECT_EQ(CleanText(trimmedLast), "a");
}

TEST(PadNumber, LastFourCharacters)
{
    EXPECT_EQ(PadNumber("7"), "0007");
    EXPECT_EQ(PadNumber("12345"), "2345");
    EXPECT_EQ(PadNumber("1234"), "1234");
    EXPECT_EQ(PadNumber(""), "000"); // three characters are all there are
}

TEST(Padded, CutsOrFills)
{
    EXPECT_EQ(Padded("ab", 4), "ab  ");
    EXPECT_EQ(Padded("abcdef", 4), "abcd");
    EXPECT_EQ(Padded("", 0), "");
}

TEST(Edge, Utf8OfTheCodePage)
{
    EXPECT_EQ(AnsiFromUtf8("M\xC3\xB6"
                           "bel"),
              "M\xF6"
              "bel");
    EXPECT_EQ(AnsiFromUtf8("\xE2\x82\xAC \xC5\xA0 \xE2\x84\xA2"),
              "\x80 \x8A \x99"); // euro, S-caron, trade mark
    EXPECT_EQ(Utf8FromAnsi("\x80 \x8A \xFF"), "\xE2\x82\xAC \xC5\xA0 \xC3\xBF");
    EXPECT_EQ(Utf8FromAnsi("\x81"), "\xC2\x81"); // a free byte keeps its number
}

TEST(Edge, EveryByteComesBack)
{
    for (int code = 0; code < 256; ++code) {
        const std::string one(1, static_cast<char>(code));
        EXPECT_EQ(AnsiFromUtf8(Utf8FromAnsi(one)), one) << code;
    }
}

TEST(Edge, WhatTheCodePageLacksIsAQuestionMark)
{
    EXPECT_EQ(AnsiFromUtf8("\xD0\x94x"), "?x");         // a Cyrillic letter
    EXPECT_EQ(AnsiFromUtf8("\xF0\x9F\x94\xA7x"), "?x"); // four bytes
    EXPECT_EQ(AnsiFromUtf8("\xC2\x80"), "?");           // U+0080 is not the euro's byte
}

TEST(Edge, BrokenUtf8IsAQuestionMarkForEachByte)
{
    EXPECT_EQ(AnsiFromUtf8("a\xFF"
                           "b"),
              "a?b");
    EXPECT_EQ(AnsiFromUtf8("\xC3"), "?");                // cut
    EXPECT_EQ(AnsiFromUtf8("\xE2\x82"), "??");           // cut
    EXPECT_EQ(AnsiFromUtf8("\xC0\xAF"), "??");           // a longer form of "/"
    EXPECT_EQ(AnsiFromUtf8("\xE0\x80\xAF"), "???");      // and longer
    EXPECT_EQ(AnsiFromUtf8("\xF0\x80\x80\xAF"), "????"); // and longer still
    EXPECT_EQ(AnsiFromUtf8("\xED\xA0\x80"), "???");      // half of a pair
    EXPECT_EQ(AnsiFromUtf8("\xF4\x90\x80\x80"), "????"); // behind the last character
}

} // namespace
} // namespace kv
