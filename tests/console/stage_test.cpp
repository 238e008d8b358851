// Stages: drawings that are converted here and placed there, in the order of their list.
#include "console/spread_list.h"

namespace console_test {
namespace {

class Stages : public SpreadList {
  protected:
    // The list in pieces, each into a stage of its own; gives the stages in the order of the list.
    Words MakeStages(const Words& names, std::size_t pieces,
                     const std::string& folder = "stages \xC3\xBC") const
    {
        Words stages;
        const std::size_t each = (names.size() + pieces - 1) / pieces;
        for (std::size_t first = 0; first < names.size(); first += each) {
            const std::string stage = folder + "/" + std::to_string(stages.size() + 1);
            const std::size_t end = std::min(first + each, names.size());
            Words call = {"convert", "--stage", stage, "--number", std::to_string(stages.size() + 1)};
            call.insert(call.end(), names.begin() + static_cast<std::ptrdiff_t>(first),
                        names.begin() + static_cast<std::ptrdiff_t>(end));
            const Ended ended = Run(call, Environment());
            EXPECT_NE(ended.Status, 2) << ended.Errors;
            EXPECT_TRUE(fs::exists(At(stage) / "manifest")) << ended.Errors;
            stages.push_back(stage);
        }
        return stages;
    }
    CallResult Place(const Words& stages, const Words& options = {}) const
    {
        return Result(Run(Joined(Joined({"place"}, options), stages), Environment()));
    }
    void ExpectRefused(const Words& stages, const std::string& cause) const
    {
        const std::map<std::string, std::string> before = InstalledFiles();
        const CallResult placed = Place(stages);
        EXPECT_EQ(placed.Status, 1);
        EXPECT_TRUE(Holds(placed.Errors, cause)) << placed.Errors;
        EXPECT_TRUE(Holds(placed.Errors, "korvanti: nothing was placed\n")) << placed.Errors;
        EXPECT_EQ(placed.Output, "");
        EXPECT_EQ(InstalledFiles(), before);
    }
    Words Two() const
    {
        fs::create_directories(Folder / "again");
        Put(Folder / "again/side.dxf", BoredPanel());
        return {"door.dxf", "again/side.dxf"};
    }
};

TEST_F(Stages, PlacedInOneCallAreWhatOneConversionLeaves)
{
    const Words names = Shuffled(MakeDrawings(kv::test::Rounds(90)), 6320);
    CallResult plain = ConvertAlone(names, {});
    ResetInstallation();
    const std::map<std::string, std::string> untouched = InstalledFiles();
    Words stages = MakeStages(names, 3);
    EXPECT_EQ(InstalledFiles(), untouched) << "a stage changes nothing in the installation";
    std::reverse(stages.begin(), stages.end());
    ExpectSame(Place(stages), plain, "one call");
}

// A drawing of an earlier call that gave a program of the same name is not known any more.
nlohmann::json WithoutOtherDrawings(nlohmann::json drawings)
{
    for (nlohmann::json& drawing : drawings) {
        nlohmann::json lines = nlohmann::json::array();
        for (const nlohmann::json& line : drawing["lines"])
            if (line.value("number", 0) != 576 && line.value("number", 0) != 577)
                lines.push_back(line);
        drawing["lines"] = lines;
    }
    return drawings;
}

TEST_F(Stages, PlacedOneAfterTheOtherAreTheSame)
{
    const Words names = MakeDrawings(kv::test::Rounds(60));
    const CallResult plain = ConvertAlone(names, {"--report", "json"});
    ResetInstallation();
    nlohmann::json together = nlohmann::json::array();
    std::map<std::string, std::string> files;
    for (const std::string& stage : MakeStages(names, 3)) {
        const CallResult placed = Place({stage}, {"--report", "json"});
        const std::string text =
            std::regex_replace(placed.Output, std::regex("seconds\n"), "\"seconds\": 0\n");
        const nlohmann::json document = nlohmann::json::parse(text);
        for (const nlohmann::json& drawing : document["drawings"])
            together.push_back(drawing);
        files = placed.Files;
    }
    EXPECT_EQ(files, plain.Files);
    const std::string text = std::regex_replace(plain.Output, std::regex("seconds\n"), "\"seconds\": 0\n");
    EXPECT_EQ(WithoutOtherDrawings(together), WithoutOtherDrawings(nlohmann::json::parse(text)["drawings"]));
}

TEST_F(Stages, OfSeveralProcessesAreTheSame)
{
    const Words names = MakeDrawings(kv::test::Rounds(60));
    const CallResult plain = ConvertAlone(names, {});
    ResetInstallation();
    const Ended made = Run(Joined({"convert", "--jobs", "3", "--stage", "s"}, names), Environment());
    EXPECT_EQ(made.Status, 1) << made.Errors;
    ExpectTidy();
    ExpectSame(Place({"s"}), plain, "jobs");
}

// The folders of programs need not be there where the stage is made.
TEST_F(Stages, AreMadeWithoutTheInstallation)
{
    const Words names = MakeDrawings(kv::test::Rounds(30));
    const CallResult plain = ConvertAlone(names, {});
    for (const char* const name : {"CNC90", "gen", "ev", "hbd", "lists"})
        fs::remove_all(Folder / name);
    const Words stages = MakeStages(names, 2);
    EXPECT_FALSE(fs::exists(Folder / "CNC90"));
    ResetInstallation();
    ExpectSame(Place(stages), plain, "elsewhere");
}

TEST_F(Stages, ADrawingThatMustBeConvertedAnewIsReadAgain)
{
    fs::create_directories(Folder / "again");
    Put(Folder / "again/door.dxf", RoutedPanel(""));
    Put(Folder / "door.dxf", RoutedPanel("* BY THE FIRST"));
    const Words names = {"door.dxf", "again/door.dxf"};
    const CallResult plain = ConvertAlone(names, {});
    for (const std::string how : {"there", "changed", "gone"}) {
        ResetInstallation();
        const Words stages = MakeStages(names, 2, how);
        if (how == "changed")
            Put(Folder / "again/door.dxf", RoutedPanel("* ANOTHER"));
        if (how == "gone")
            fs::remove(Folder / "again/door.dxf");
        const CallResult placed = Place(stages);
        if (how == "there") {
            ExpectSame(placed, plain, how);
            continue;
        }
        EXPECT_EQ(placed.Status, 1) << how;
        EXPECT_TRUE(Holds(placed.Output, "must be converted anew")) << placed.Output;
        EXPECT_TRUE(Holds(placed.Output, how == "gone" ? "it is not there" : "it was changed after that"));
        EXPECT_TRUE(Holds(placed.Errors, "korvanti: again/door.dxf: failed\n")) << placed.Errors;
        Put(Folder / "again/door.dxf", RoutedPanel(""));
    }
}

TEST_F(Stages, PlacedTwiceAreRefused)
{
    ResetInstallation();
    const Words stages = MakeStages(Two(), 2);
    EXPECT_EQ(Place({stages[0]}).Status, 0);
    ExpectRefused(stages, stages[0] + ": was placed already (");
    EXPECT_EQ(Place({stages[1]}).Status, 0) << "the other one still is to be placed";
}

TEST_F(Stages, WithGapsOrTheSameNumberAreRefused)
{
    const Words names = MakeDrawings(4);
    const Words stages = MakeStages(names, 5);
    ResetInstallation();
    ExpectRefused({stages[0], stages[2]},
                  stages[2] + ": has number 3 in the list, and the one before it is 1; --allow-gaps");
    ExpectRefused({stages[0], stages[0]}, ": has number 1 in the list, as " + stages[0] + " has");
    const CallResult placed = Place({stages[2], stages[0]}, {"--allow-gaps"});
    EXPECT_LT(placed.Output.find("Q000"), placed.Output.find("Q002")) << placed.Output;
    EXPECT_TRUE(fs::exists(At(stages[0]) / "placed"));
    EXPECT_TRUE(fs::exists(At(stages[2]) / "placed"));
    EXPECT_FALSE(fs::exists(At(stages[1]) / "placed"));
}

TEST_F(Stages, OfOtherSettingsAreRefused)
{
    ResetInstallation();
    EXPECT_EQ(
        Run({"convert", "door.dxf", "--stage", "s", "--set", "SawKerf=7", "--set", "LeadLength=9"}).Status,
        0);
    ExpectRefused({"s"}, "s: was made with other settings than this installation has: LeadLength, SawKerf\n");
    Put(Folder / "home/DT.Par", "other drills");
    EXPECT_EQ(Place({"s"}, {"--set", "SawKerf=7", "--set", "LeadLength=9"}).Status, 1);
    fs::copy_file(fs::path(KORVANTI_SOURCE_DIR) / "examples/install/DT.Par", Folder / "home/DT.Par",
                  fs::copy_options::overwrite_existing);
    EXPECT_EQ(Place({"s"}, {"--set", "SawKerf=7", "--set", "LeadLength=9"}).Status, 0);
}

TEST_F(Stages, ThatAreNotWholeAreRefused)
{
    ResetInstallation();
    ExpectRefused({"nowhere"}, "nowhere: is not there\n");
    fs::create_directory(Folder / "empty");
    ExpectRefused({"empty"}, "empty: is no stage: it has no manifest\n");
    EXPECT_EQ(Run({"convert", "door.dxf", "--stage", "s"}).Status, 0);
    const std::string manifest = Contents(Folder / "s/manifest"), part = Contents(Folder / "s/part-1");
    for (std::size_t length = 20; length < manifest.size(); length += manifest.size() / 9) {
        Put(Folder / "s/manifest", manifest.substr(0, length));
        ExpectRefused({"s"}, "s: is half a stage: its manifest is cut off or was changed\n");
    }
    std::string changed = manifest;
    changed[changed.size() / 2] ^= 1;
    Put(Folder / "s/manifest", changed);
    ExpectRefused({"s"}, "s: is half a stage: its manifest is cut off or was changed\n");
    Put(Folder / "s/manifest", "another file");
    ExpectRefused({"s"}, "s: is no stage: its manifest is another file\n");
    Put(Folder / "s/manifest", "korvanti stage 2\nx");
    ExpectRefused({"s"}, "s: was made by another version of the program, whose stages have another form\n");
    Put(Folder / "s/manifest", manifest);
    Put(Folder / "s/part-1", part.substr(1));
    ExpectRefused({"s"}, "s: is half a stage: part 1 of 1 has another size\n");
    fs::remove(Folder / "s/part-1");
    ExpectRefused({"s"}, "s: is half a stage: part 1 of 1 is missing\n");
    changed = part;
    changed[changed.size() / 2] ^= 1;
    Put(Folder / "s/part-1", changed);
    const CallResult placed = Place({"s"});
    EXPECT_EQ(placed.Status, 1);
    EXPECT_TRUE(Holds(placed.Errors, "s: part 1 was changed after it was written")) << placed.Errors;
    Put(Folder / "s/part-1", part);
    EXPECT_EQ(Place({"s"}).Status, 0);
}

TEST_F(Stages, AreMadeWholeOrNotAtAll)
{
    Put(Folder / "file", "a file");
    fs::create_directory(Folder / "folder");
    for (const std::string taken : {"file", "folder", "file/s"}) {
        const Ended ended = Run({"convert", "door.dxf", "--stage", taken});
        EXPECT_EQ(ended.Status, 1) << taken;
        EXPECT_TRUE(Holds(ended.Errors, "; no stage was made\n")) << ended.Errors;
    }
    EXPECT_EQ(Contents(Folder / "file"), "a file");
    EXPECT_TRUE(fs::is_empty(Folder / "folder"));
}

TEST_F(Stages, AreNamedByFoldersAlone)
{
    EXPECT_EQ(Run({"place"}).Status, 2);
    EXPECT_EQ(Run({"place", "s", "--stage", "t"}).Status, 2);
    EXPECT_EQ(Run({"place", "s", "--set", "NoSuchKey=1"}).Status, 2);
    EXPECT_EQ(Run({"convert", "door.dxf", "--stage", "s", "--number", "-1"}).Status, 2);
    EXPECT_TRUE(Holds(Run({"place", "--help"}).Output, "--allow-gaps"));
    EXPECT_FALSE(Holds(Run({"--help"}).Output, "work ")) << "it is not for people";
}

} // namespace
} // namespace console_test
