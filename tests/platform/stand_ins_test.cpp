// Names that CP1252 does not hold: their stand-ins, the real names in paths and texts, what programs call
// them; files of such names in real folders. The numbers were worked out by another program.
#include "platform/stand_ins.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <random>
#include <unordered_map>

#include "platform/directory.h"
#include "platform/files.h"
#include "platform/listing_folder.h"
#include "platform/nearest_letters.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "support/answers.h"

namespace kv {
namespace {

const std::string Door = "дверь.dxf", DoorInside = "dver~A6C12588.dxf";
const std::string Leaf = "扉.dxf", LeafInside = "_~B0D9ADBB.dxf";

TEST(StandIns, AreTheNearestLettersAndANumberOfTheStem)
{
    EXPECT_EQ(NameFromUtf8(Door), DoorInside);
    EXPECT_EQ(NameFromUtf8("дверь.PTS"), "dver~A6C12588.PTS"); // under one stem whatever the extension
    EXPECT_EQ(NameFromUtf8("дверь"), "dver~A6C12588");
    EXPECT_EQ(NameFromUtf8(Leaf), LeafInside);
    EXPECT_EQ(NameFromUtf8("Łukasz"), "Lukasz~ABA331E7");
}

TEST(StandIns, NamesOfTheCodePageAreThemselves)
{
    for (const char* const name : {"door.dxf", "DOOR~1.DXF", "a~1234567.dxf", "~", "", "."})
        EXPECT_EQ(NameFromUtf8(name), name);
    EXPECT_EQ(NameFromUtf8("Türe €.dxf"), "T\xFCre \x80.dxf");
    EXPECT_EQ(PathFromUtf8("C:\\dxf\\T\xC3\xBCre.dxf"), "C:\\dxf\\T\xFCre.dxf");
}

TEST(StandIns, TheRealNamesComeBackInPathsAndTexts)
{
    const std::string path = PathFromUtf8("D:\\Łukasz\\дверь\\扉.dxf");
    EXPECT_EQ(path, "D:\\Lukasz~ABA331E7\\dver~A6C12588\\" + LeafInside);
    EXPECT_EQ(Utf8FromAnsi(path), "D:\\Łukasz\\дверь\\扉.dxf");
    EXPECT_EQ(HostFromAnsi(path), "D:\\Łukasz\\дверь\\扉.dxf");
    EXPECT_EQ(Utf8FromAnsi("T\xFCr: " + DoorInside + " and (" + LeafInside + ")"),
              "Tür: дверь.dxf and (扉.dxf)");
    EXPECT_EQ(Utf8FromAnsi(UpperCase("x\\" + DoorInside)), "X\\дверь.DXF"); // batches are upper-cased
    EXPECT_EQ(Utf8FromAnsi(".kv-" + DoorInside + ".lock"), ".kv-дверь.dxf.lock");
}

TEST(StandIns, WhatNobodyMetStaysAsItIs)
{
    for (const std::string text :
         {"dver~00000000.dxf", "over~A6C12588.dxf", "~A6C12588", "dver~A6C1258", "dver~"}) {
        NameFromUtf8(Door);
        EXPECT_EQ(Utf8FromAnsi(text), text);
        EXPECT_EQ(NameForMachines(text), text);
    }
    EXPECT_TRUE(IsUnknownStandIn("dver~00000000.dxf"));
    EXPECT_FALSE(IsUnknownStandIn(DoorInside));
    EXPECT_FALSE(IsUnknownStandIn("dver~0.dxf"));
}

TEST(StandIns, MachinesGetTheNearestLettersOrTheNumber)
{
    EXPECT_EQ(NameForMachines(NameFromUtf8("дверь")), "dver");
    EXPECT_EQ(NameForMachines(UpperCase(NameFromUtf8("дверь"))), "DVER");
    EXPECT_EQ(NameForMachines(NameFromUtf8("扉")), "B0D9ADBB");
    EXPECT_EQ(NameForMachines(NameFromUtf8("扉-12")), "_-12");
    EXPECT_EQ(NameForMachines(NameFromUtf8("Łoś.v2.dxf")), "Los.v2.dxf");
    EXPECT_EQ(NameForMachines("T\xFCr"), "T\xFCr");
    const std::string longest = "Жёлтая дверь с двумя петлями и замком";
    EXPECT_EQ(NameFromUtf8(longest).size(), 24U + 9U);
    EXPECT_EQ(NameForMachines(NameFromUtf8(longest)), NearestAnsi(longest));
}

TEST(StandIns, NamesThatLookLikeOneHaveOneThemselves)
{
    EXPECT_EQ(NameFromUtf8(DoorInside), "dver_A6C12588~275E2A40.dxf");
    EXPECT_EQ(Utf8FromAnsi(NameFromUtf8(DoorInside)), DoorInside);
    EXPECT_EQ(NameForMachines(NameFromUtf8(DoorInside)), DoorInside);
}

TEST(StandIns, WhatHasAMeaningInPathsAndListsIsNotAmongTheLetters)
{
    const std::string name = "д／：？＊~^.%.日本"; // wide forms, whose nearest letters are the plain ones
    const std::string inside = NameFromUtf8(name);
    EXPECT_EQ(inside.find_first_of("\\/:*?\"<>|^%.,;"), std::string::npos) << inside;
    EXPECT_EQ(Utf8FromAnsi(inside), name);
    EXPECT_EQ(Utf8FromAnsi(NameFromUtf8("план.чертёж")), "план.чертёж"); // a foreign extension
    EXPECT_EQ(NameFromUtf8("д?.dxf").find('~'), std::string::npos);      // a path has no place for it
}

TEST(StandIns, BytesThatAreNoTextComeBackForTheHostAlone)
{
    const std::string name = "T\xFCr.dxf"; // CP1252 on a disk of UTF-8
    const std::string inside = NameFromUtf8(name);
    EXPECT_EQ(inside, "T_r~1F08260D.dxf");
    EXPECT_EQ(HostFromAnsi(inside), name);
    EXPECT_EQ(Utf8FromAnsi(inside), "T\xEF\xBF\xBDr.dxf");
}

// Two stems of ideographs, equal in letters and number: among 500,000 some are.
std::pair<std::string, std::string> TwoOfOneStandIn()
{
    std::unordered_map<std::uint32_t, std::string> seen;
    std::mt19937 random(1);
    for (int i = 0; i < 500000; ++i) {
        std::string stem;
        for (int letter = 0; letter < 4; ++letter)
            AddUtf8(stem, static_cast<char32_t>(0x4E00 + random() % 0x5000));
        std::uint32_t number = 2166136261U;
        for (const char c : stem)
            number = (number ^ static_cast<unsigned char>(c)) * 16777619U;
        const auto [known, isNew] = seen.try_emplace(number, stem);
        if (!isNew && known->second != stem)
            return {known->second, stem};
    }
    return {};
}

class ForeignNames : public ListingFolder {
  protected:
    std::filesystem::path Host(const std::string& utf8) const
    {
        return Folder / std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
    }
    void PutForeign(const std::string& utf8, const std::string& contents = "x") const
    {
        std::filesystem::create_directories(Host(utf8).parent_path());
        std::ofstream(Host(utf8), std::ios::binary) << contents;
    }
};

TEST_F(ForeignNames, FilesAreListedReadReplacedRenamedAndDeleted)
{
    PutForeign("Łukasz/" + Door, "one");
    PutForeign("Łukasz/" + Leaf, "two");
    EXPECT_EQ(Count("*.dxf"), 0);
    std::vector<std::string> folders;
    EXPECT_EQ(ReadFolders(PathOf(""), folders).Is, Presence::There);
    ASSERT_EQ(folders, (Texts{"Lukasz~ABA331E7"}));
    const std::string inside = folders[0] + "\\";
    EXPECT_EQ(LongNames(inside + "*.dxf"), (Texts{LeafInside, DoorInside}));

    const std::string path = PathOf("") + inside + DoorInside;
    std::string contents;
    EXPECT_TRUE(ReadWholeFile(path, contents).Ok());
    EXPECT_EQ(contents, "one");
    EXPECT_TRUE(ReplaceFile(path, "three").Ok());
    EXPECT_TRUE(ReadWholeFile(path, contents).Ok());
    EXPECT_EQ(contents, "three");
    EXPECT_EQ(std::filesystem::file_size(Host("Łukasz/" + Door)), 5U);
    EXPECT_TRUE(RenameFile(path, PathOf("") + inside + NameFromUtf8("ключ.dxf")).Ok());
    EXPECT_TRUE(std::filesystem::exists(Host("Łukasz/ключ.dxf")));
    EXPECT_TRUE(DeleteFile(PathOf("") + inside + LeafInside).Ok());
    EXPECT_FALSE(std::filesystem::exists(Host("Łukasz/" + Leaf)));
    EXPECT_TRUE(MakeFolders(PathOf("") + PathFromUtf8("новая\\папка\\")).Ok());
    EXPECT_TRUE(std::filesystem::is_directory(Host("новая/папка")));
}

// As BATCH.LST, the settings and workers name files that another process has met.
TEST_F(ForeignNames, StandInsThatAnotherProcessMadeAreFound)
{
    PutForeign("каталог/полка.dxf", "shelf");
    const std::string unmet = PathOf("") + "katalog~846BC242\\polka~75C58D8D.dxf";
    ASSERT_TRUE(IsUnknownStandIn("polka~75C58D8D.dxf"));
    std::string contents;
    EXPECT_TRUE(ReadWholeFile(unmet, contents).Ok());
    EXPECT_EQ(contents, "shelf");
    EXPECT_EQ(FileNameOf(Utf8FromAnsi(unmet)), "полка.dxf");

    PutForeign("ящик.dxf", "box");
    ASSERT_TRUE(IsUnknownStandIn("YASHCHIK~DB9BB9B9"));
    EXPECT_FALSE(test::FileStands(PathOf("") + "YASHCHIK~DB9BB9B9.PTS")); // nothing of it but the drawing
    EXPECT_TRUE(ReplaceFile(PathOf("") + "YASHCHIK~DB9BB9B9.PTS", "x").Ok());
    EXPECT_TRUE(std::filesystem::exists(Host("ящик.PTS")));
}

TEST_F(ForeignNames, AFileThatIsCalledLikeAStandInIsItself)
{
    PutForeign(Door, "real");
    PutForeign(DoorInside, "like it");
    std::map<std::string, std::string> found;
    for (const std::string& name : LongNames("*.dxf"))
        EXPECT_TRUE(ReadWholeFile(PathOf("") + name, found[Utf8FromAnsi(name)]).Ok());
    EXPECT_EQ(found, (std::map<std::string, std::string>{{Door, "real"}, {DoorInside, "like it"}}));
}

TEST_F(ForeignNames, OfTwoWithOneStandInTheSecondIsReported)
{
    const auto [first, second] = TwoOfOneStandIn();
    ASSERT_FALSE(first.empty());
    ASSERT_NE(first, second);
    PutForeign(first + ".dxf", first);
    EXPECT_EQ(Count("*.dxf"), 1);
    PutForeign(second + ".dxf", second);
    EXPECT_EQ(Count("*.dxf"), 1);
    std::vector<UnlistedFile> left;
    EXPECT_EQ(ReadUnlisted(PathOf("") + "*.DXF", left).Is, Presence::There);
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left[0].Cause, "its name cannot be told from that of another file");
    std::string contents;
    EXPECT_TRUE(ReadWholeFile(PathOf("") + LongNames("*.dxf").at(0), contents).Ok());
    EXPECT_EQ(contents, first);
}

TEST_F(ForeignNames, AFileThatWasRenamedMeanwhileIsMissingUnderItsOldName)
{
    PutForeign("ключ.dxf");
    const std::string path = PathOf("") + NameFromUtf8("ключ.dxf");
    EXPECT_TRUE(test::FileStands(path));
    std::filesystem::rename(Host("ключ.dxf"), Host(Door));
    EXPECT_FALSE(test::FileStands(path));
    EXPECT_TRUE(test::FileStands(PathOf("") + DoorInside));
}

TEST_F(ForeignNames, ThousandsAreListedAndRead)
{
    for (int i = 0; i < 3000; ++i)
        PutForeign("дверь " + std::to_string(i) + ".dxf", std::to_string(i));
    const Texts names = LongNames("*.dxf");
    ASSERT_EQ(names.size(), 3000U);
    for (const std::string& name : names) {
        std::string contents;
        ASSERT_TRUE(ReadWholeFile(PathOf("") + name, contents).Ok());
        ASSERT_EQ(Utf8FromAnsi(name), "дверь " + contents + ".dxf");
    }
}

} // namespace
} // namespace kv
