// The table of messages and the texts that are made of it: each page is whole, values are shown as text,
// and the file of the documentation is the table's.
#include "state/messages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "support/source_files.h"

namespace kv {
namespace {

// The names between braces; "!" for braces that do not belong together or hold something else.
std::vector<std::string> PlacesOf(std::string_view text)
{
    std::vector<std::string> places;
    while (true) {
        const std::size_t brace = text.find_first_of("{}");
        if (brace == std::string_view::npos)
            return places;
        const std::size_t close = text.find('}', brace);
        const bool isPair = text[brace] == '{' && close != std::string_view::npos;
        const std::string_view name = isPair ? text.substr(brace + 1, close - brace - 1) : std::string_view();
        const bool isName =
            !name.empty() && std::ranges::all_of(name, [](char c) { return c >= 'a' && c <= 'z'; });
        places.emplace_back(isName ? name : "!");
        if (!isPair)
            return places;
        text.remove_prefix(close + 1);
    }
}

bool HasPlace(std::string_view text, std::string_view name)
{
    const std::vector<std::string> places = PlacesOf(text);
    return std::ranges::find(places, name) != places.end();
}

TEST(Messages, NumbersRiseAndNoneIsTwice)
{
    int last = 0;
    for (const MessagePage& page : MessagePages()) {
        EXPECT_GT(static_cast<int>(page.Number), last);
        last = static_cast<int>(page.Number);
    }
    EXPECT_GT(last, 100);
}

TEST(Messages, EachPageHasTextCauseCureAndRoom)
{
    for (const MessagePage& page : MessagePages()) {
        const int number = static_cast<int>(page.Number);
        EXPECT_FALSE(page.Text.empty()) << number;
        EXPECT_TRUE(page.Cause.ends_with('.')) << number;
        EXPECT_TRUE(page.Cure.ends_with('.')) << number;
        EXPECT_FALSE(RoomOfMessages(page.Number).empty()) << number;
        EXPECT_EQ(FindPage(number), &page);
    }
}

// "line" and "handle" are of the entity, and the others have their places in a line of the JSON report.
TEST(Messages, PlacesAreNamesThatTheJsonReportHasFree)
{
    const std::set<std::string> taken = {"!", "number", "severity", "text", "colour", "line", "handle"};
    for (const MessagePage& page : MessagePages())
        for (const std::string_view text : {page.Text, page.Many})
            for (const std::string& name : PlacesOf(text))
                EXPECT_FALSE(taken.contains(name)) << static_cast<int>(page.Number) << ": " << name;
}

// Else more than three of them on a layer would be shown as the first one with its count alone.
TEST(Messages, PagesWithALayerHaveATextForMany)
{
    int pages = 0;
    for (const MessagePage& page : MessagePages()) {
        if (!HasPlace(page.Text, "layer"))
            continue;
        ++pages;
        EXPECT_TRUE(HasPlace(page.Many, "layer")) << static_cast<int>(page.Number);
        EXPECT_TRUE(HasPlace(page.Many, "count")) << static_cast<int>(page.Number);
    }
    EXPECT_GT(pages, 30);
}

TEST(Messages, TextForManyWantsNoMoreThanTheTextOfOneAndTheCount)
{
    for (const MessagePage& page : MessagePages())
        for (const std::string& name : PlacesOf(page.Many))
            EXPECT_TRUE(name == "count" || HasPlace(page.Text, name))
                << static_cast<int>(page.Number) << ": " << name;
}

TEST(Messages, ValuesTakeTheirPlaces)
{
    EXPECT_EQ(TextOf({Message::PocketTooNarrow, {{"place", "X1 Y2"}, {"layer", "EXCAV"}}}),
              "Layer EXCAV: the pocket at X1 Y2 is not cleared, it is narrower than its tool");
    EXPECT_EQ(TextOf({Message::LinesWithoutLength, {{"layer", "ROUTE"}, {"count", 1}}}),
              "Layer ROUTE: 1 line of length 0 cannot be cut");
    EXPECT_EQ(TextOf({Message::LinesWithoutLength, {{"layer", "ROUTE"}, {"count", 2}}}),
              "Layer ROUTE: 2 lines of length 0 cannot be cut");
}

TEST(Messages, ValuesAreShownAsTextWhateverTheyHold)
{
    for (const char* const text : {"%1 %s %n", "{cause}", "{", "}{", "{drawing}{count}", "\"quoted\" 'text'",
                                   "\\r\\n", "$(cause)", "{}", "{0}"})
        EXPECT_EQ(TextOf({Message::DrawingRefused, {{"drawing", text}, {"cause", text}}}),
                  std::string(text) + ": " + text);
    EXPECT_EQ(TextOf({Message::DrawingRefused, {{"drawing", "{cause}"}, {"cause", "{drawing}"}}}),
              "{cause}: {drawing}");
}

TEST(Messages, ControlCharactersOfAValueSteerNothing)
{
    EXPECT_EQ(TextOf({Message::PartDescription, {{"description", "a\x1b[31mb\rc\nd\te\b"}}}),
              "Descr: a?[31mb?c?d?e?");
}

TEST(Messages, WhatALineDoesNotGiveIsNamed)
{
    EXPECT_EQ(MissingValues({Message::DrawingRefused, {{"cause", "x"}}}),
              std::vector<std::string>{"drawing"});
    EXPECT_TRUE(MissingValues({Message::DrawingRefused, {{"cause", "x"}, {"drawing", "y"}}}).empty());
    EXPECT_TRUE(MissingValues({Message::UserAborted}).empty());
    EXPECT_FALSE(MissingValues({static_cast<Message>(999)}).empty());
    EXPECT_EQ(MissingValues({Message::PocketOutlineOpen, {{"layer", "A"}, {"place", "B"}, {"count", 5}}}),
              (std::vector<std::string>{"end", "gap"}));
}

TEST(Messages, FurtherValuesDoNoHarm)
{
    EXPECT_EQ(TextOf({Message::CutListFieldUnknown, {{"field", "X"}, {"line", 12}, {"handle", "1F"}}}),
              "PTS Error: X");
}

TEST(Messages, UnknownNumbersHaveNoPage)
{
    for (const long long number : {-1LL, 0LL, 1LL, 100LL, 999LL, 4294967296LL + 101})
        EXPECT_EQ(FindPage(number), nullptr) << number;
    EXPECT_EQ(TextOf({}), "");
}

TEST(Messages, PageShowsNumberSeverityTextsCauseAndCure)
{
    const MessagePage* const page = FindPage(421);
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(
        PageText(*page),
        "421 doubt (Routes, pockets and leads)\n\n"
        "  Layer {layer}: the pocket at {place} is not cleared, it is narrower than its tool\n"
        "  Layer {layer}: {count} pockets are not cleared, they are narrower than their tool, the first at "
        "{place}\n\n"
        "Cause: The tool does not fit into the pocket. Nothing of it is cut.\n"
        "Cure: Take a smaller tool.\n");
}

TEST(Messages, FileOfTheDocumentationIsTheTables)
{
    const std::string file = test::FileBytes(test::SourceFolder / "docs" / "messages.md");
    EXPECT_EQ(file, MessagesGuide()) << "make it anew: korvanti explain --list >docs/messages.md";
}

} // namespace
} // namespace kv
