// `korvanti explain`: the page of a message, all pages, and wrong calls.
#include "console/console_run.h"

namespace {

using namespace console_test;

class ExplainCall : public Console {
  protected:
    // Without an installation: the pages are the program's own.
    Ended Explain(const Words& words) const
    {
        Words call = {KORVANTI_CONSOLE, "--home", (Folder / "nowhere").string(), "explain"};
        call.insert(call.end(), words.begin(), words.end());
        return RunCall(call);
    }
};

TEST_F(ExplainCall, PrintsThePageOfAMessage)
{
    const Ended ended = Explain({"421"});
    EXPECT_EQ(ended.Status, 0);
    EXPECT_EQ(ended.Errors, "");
    EXPECT_TRUE(Holds(ended.Output, "421 doubt")) << ended.Output;
    EXPECT_TRUE(Holds(ended.Output, "is not cleared, it is narrower than its tool")) << ended.Output;
    EXPECT_TRUE(Holds(ended.Output, "Cause: The tool does not fit into the pocket.")) << ended.Output;
    EXPECT_TRUE(Holds(ended.Output, "Cure: Take a smaller tool.")) << ended.Output;
}

TEST_F(ExplainCall, ListIsTheFileOfTheDocumentation)
{
    std::string listed = Explain({"--list"}).Output;
    std::erase(listed, '\r'); // of a stream of Windows
    EXPECT_EQ(listed, Contents(fs::path(KORVANTI_SOURCE_DIR) / "docs" / "messages.md"));
}

TEST_F(ExplainCall, UnknownNumberIsWrongUsage)
{
    for (const char* const number : {"999", "0", "100", "99999999999999999999", "4294967717"}) {
        const Ended ended = Explain({number});
        EXPECT_EQ(ended.Status, 2) << number;
        EXPECT_EQ(ended.Output, "") << number;
        EXPECT_TRUE(Holds(ended.Errors, "korvanti: there is no message \"" + std::string(number) + "\""))
            << ended.Errors;
        EXPECT_TRUE(Holds(ended.Errors, "korvanti explain --help")) << ended.Errors;
    }
}

TEST_F(ExplainCall, OneNumberOrTheListIsWanted)
{
    for (const Words& words : {Words{}, Words{"421", "--list"}}) {
        const Ended ended = Explain(words);
        EXPECT_EQ(ended.Status, 2);
        EXPECT_EQ(ended.Output, "");
        EXPECT_TRUE(Holds(ended.Errors, "korvanti explain --help")) << ended.Errors;
    }
}

} // namespace
