// Names of folders that are remembered: right after changes of one's own, of others, and in any mix.
#include "platform/posix/folder_names.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include <sys/stat.h>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "support/random_rounds.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

class RememberedNames : public testing::Test {
  protected:
    fs::path Folder =
        fs::temp_directory_path() / ("korvanti-names-" + std::to_string(std::random_device{}()));

    void SetUp() override { fs::create_directories(Folder); }
    void TearDown() override { fs::remove_all(Folder); }

    std::string Host() const { return Folder.string() + "/"; }
    std::string Found(const std::string& name) const
    {
        int fault = 0;
        const std::string found = EntryIgnoringCase(Host(), name, fault);
        EXPECT_EQ(fault, 0);
        return found;
    }
    // By a walk through the folder as it is now.
    std::string FoundPlainly(const std::string& name) const
    {
        std::string found;
        for (const auto& entry : fs::directory_iterator(Folder)) {
            const std::string spelled = entry.path().filename().string();
            if (EqualIgnoringCase(spelled, name) && (found.empty() || spelled < found))
                found = spelled;
        }
        return found;
    }
    void PutByOther(const std::string& name) const { std::ofstream(Folder / name) << name; }
    void PutByOneself(const std::string& name) const
    {
        EXPECT_TRUE(ReplaceFile(FromHostPath((Folder / name).string()), name).Ok());
    }
    // Changes of others show at the latest when what was read is not believed any more.
    static void LetPass() { std::this_thread::sleep_for(std::chrono::milliseconds(60)); }
    void LookTwice() const
    {
        Found("NONE");
        Found("NONE"); // from now on the names are remembered
    }
};

TEST_F(RememberedNames, OwnNewFilesAreFoundAtOnce)
{
    LookTwice();
    for (int i = 0; i < 50; ++i) {
        PutByOneself("Door" + std::to_string(i));
        EXPECT_EQ(Found("DOOR" + std::to_string(i)), "Door" + std::to_string(i));
    }
}

TEST_F(RememberedNames, FilesOfOthersAreFoundAndGoneOnesAreNot)
{
    LookTwice();
    PutByOther("Door");
    LetPass();
    EXPECT_EQ(Found("DOOR"), "Door");
    fs::rename(Folder / "Door", Folder / "dOOr");
    LetPass();
    EXPECT_EQ(Found("DOOR"), "dOOr");
    fs::remove(Folder / "dOOr");
    LetPass();
    EXPECT_EQ(Found("DOOR"), "");
}

TEST_F(RememberedNames, AChangeOfOthersBetweenOwnOnesIsSeen)
{
    LookTwice();
    PutByOneself("ONE");
    PutByOther("Two");
    PutByOneself("THREE");
    LetPass();
    EXPECT_EQ(Found("one"), "ONE");
    EXPECT_EQ(Found("two"), "Two");
    EXPECT_EQ(Found("three"), "THREE");
}

TEST_F(RememberedNames, AFolderThatWasMadeAnewIsReadAnew)
{
    PutByOther("Door");
    LookTwice();
    EXPECT_EQ(Found("DOOR"), "Door");
    fs::remove_all(Folder);
    EXPECT_EQ(Found("DOOR"), "");
    fs::create_directories(Folder);
    PutByOther("Side");
    LetPass();
    EXPECT_EQ(Found("DOOR"), "");
    EXPECT_EQ(Found("SIDE"), "Side");
}

TEST_F(RememberedNames, OfSeveralSpellingsTheFirstInByteOrder)
{
    LookTwice();
    PutByOneself("door");
    PutByOther("DOor");
    LetPass();
    EXPECT_EQ(Found("Door"), "DOor");
    PutByOther("DOOr");
    LetPass();
    EXPECT_EQ(Found("Door"), "DOOr");
}

TEST_F(RememberedNames, AnOldFolderIsBelievedUntilItsTimesChange)
{
    for (int i = 0; i < 100; ++i)
        PutByOther("N" + std::to_string(i));
    std::this_thread::sleep_for(
        std::chrono::milliseconds(2100)); // no change can be in this step of its times
    LookTwice();
    PutByOther("Late"); // without a pause: the times tell
    EXPECT_EQ(Found("LATE"), "Late");
}

TEST_F(RememberedNames, ThreeKindsOfChangesInAnyOrder)
{
    std::mt19937 engine(test::Seed(1));
    const auto whole = [&](int from, int to) { return std::uniform_int_distribution<int>(from, to)(engine); };
    const std::string spellings[] = {"ab", "Ab", "aB", "AB", "cd", "CD"};
    for (int round = 0; round < test::Rounds(12); ++round) {
        for (int i = whole(1, 6); i > 0; --i) {
            const std::string& name = spellings[whole(0, 5)];
            const int change = whole(0, 2);
            if (change == 0)
                PutByOneself(name);
            else if (change == 1)
                PutByOther(name);
            else
                fs::remove(Folder / name);
            if (whole(0, 2) == 0)
                Found(spellings[whole(0, 5)]);
        }
        LetPass();
        for (const std::string& name : spellings)
            ASSERT_EQ(Found(name), FoundPlainly(name)) << name << ", " << test::RoundName(round);
    }
}

} // namespace
} // namespace kv
