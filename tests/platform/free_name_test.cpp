// A rename that never replaces: of two that want a name, or a file, one gets it.
#include "platform/free_name.h"

#include "platform/run_error.h"
#include "platform/scratch_folder.h"

namespace kv {
namespace {

class FreeName : public ScratchFolder {};

TEST_F(FreeName, AFreeOneIsTaken)
{
    PutFile("a", "text");
    EXPECT_TRUE(RenameToFree(PathOf("a"), PathOf("b")).Ok());
    EXPECT_EQ(FileText("b"), "text");
    EXPECT_EQ(Names(), (std::vector<std::string>{"b"}));
}

TEST_F(FreeName, ATakenOneStays)
{
    PutFile("a", "new");
    PutFile("b", "old");
    const FileOutcome outcome = RenameToFree(PathOf("a"), PathOf("b"));
    EXPECT_EQ(outcome.Number, ErrorFileExists);
    EXPECT_NE(outcome.Cause, "");
    EXPECT_EQ(FileText("a"), "new");
    EXPECT_EQ(FileText("b"), "old");
}

TEST_F(FreeName, AnotherSpellingOfATakenOneIsTaken)
{
    PutFile("a", "new");
    PutFile("TEMP.OLD", "old");
    EXPECT_EQ(RenameToFree(PathOf("a"), PathOf("Temp.old")).Number, ErrorFileExists);
    EXPECT_EQ(FileText("TEMP.OLD"), "old");
}

TEST_F(FreeName, AFileThatIsNotThereIsNotFound)
{
    EXPECT_EQ(RenameToFree(PathOf("a"), PathOf("b")).Number, ErrorFileNotFound);
}

} // namespace
} // namespace kv
