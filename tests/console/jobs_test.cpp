// `korvanti convert --jobs`: several processes leave what one leaves, byte for byte, and report it in order.
#include "console/spread_list.h"

namespace console_test {
namespace {

class Jobs : public SpreadList {};

TEST_F(Jobs, LeaveAndReportWhatOneProcessDoes)
{
    const Words names = Shuffled(MakeDrawings(kv::test::Rounds(300)), 6300);
    const CallResult plain = ConvertAlone(names, {});
    ASSERT_EQ(plain.Status, 1) << "some are no drawings";
    ASSERT_GT(plain.Files.size(), names.size() / 2);
    ASSERT_TRUE(Holds(plain.Output, "PORTION2"));
    ASSERT_TRUE(Holds(plain.Output, "Entry to PTS"));
    ASSERT_TRUE(plain.Files.contains("CNC90/NOTE/NOC/Q"));
    ASSERT_NE(plain.Files.at("CNC90/tmp/Navetta.cmd"), std::string(HandOverSize, '.'));
    for (const std::string jobs : {"2", "7"})
        ExpectSame(Convert(names, {"--jobs", jobs}), plain, jobs);
    ExpectTidy();
}

TEST_F(Jobs, OfOtherControlsDoSoToo)
{
    const Words names = MakeDrawings(kv::test::Rounds(60));
    for (const std::string control : {"genesis", "evolution"}) {
        const CallResult plain = ConvertAlone(names, {"--system", control});
        ASSERT_GT(plain.Files.size(), names.size() / 3) << control;
        ExpectSame(Convert(names, {"--system", control, "--jobs", "3"}), plain, control);
    }
}

TEST_F(Jobs, OneIsThisProcessAlone)
{
    const Words names = MakeDrawings(kv::test::Rounds(30));
    ExpectSame(Convert(names, {"--jobs", "1"}), ConvertAlone(names, {}), "1");
    ExpectSame(Convert(names, {"--jobs", "3"}), ConvertAlone(names, {}), "3");
}

TEST_F(Jobs, GiveTheSameDocument)
{
    const Words names = Shuffled(MakeDrawings(kv::test::Rounds(60)), 6310);
    const CallResult plain = ConvertAlone(names, {"--report", "json"});
    const CallResult jobs = Convert(names, {"--report", "json", "--jobs", "3"});
    ExpectSame(jobs, plain, "json");
    EXPECT_TRUE(Holds(plain.Output, "\"horizontalBores\": 1"));
}

// Whose comments a program has depends on the drawings before it; those are converted at their turn.
TEST_F(Jobs, AProgramTakesTheCommentsOfTheOneBeforeIt)
{
    fs::create_directories(Folder / "again");
    Put(Folder / "again/door.dxf", RoutedPanel(""));
    Put(Folder / "door.dxf", RoutedPanel("* BY THE FIRST"));
    const Words names = {"door.dxf", "again/door.dxf"};
    const CallResult plain = ConvertAlone(names, {});
    ASSERT_TRUE(Holds(plain.Files.at("CNC90/SORG/SRG/D/OOR"), "* BY THE FIRST")) << plain.Output;
    ExpectSame(Convert(names, {"--jobs", "2"}), plain, "2");
}

TEST_F(Jobs, AnInstallationThatIsNotReadyIsReportedAsByOne)
{
    const Words names = MakeDrawings(20);
    const auto without = [&](const std::string& missing, const Words& options) {
        ResetInstallation();
        fs::remove_all(Folder / missing);
        return Result(Run(Joined(Joined({"convert"}, options), names), Environment()));
    };
    for (const std::string missing : {"CNC90/SORG/INDICE.PRG", "hbd", "lists"}) {
        fs::create_directories(Folder / "lists");
        fs::create_directories(Folder / "hbd");
        const auto files = [&](const Words& options) {
            const CallResult result = without(missing, options);
            fs::create_directories(Folder / missing);
            return result;
        };
        const CallResult plain = files({"--set", "CarryOver=clean"});
        ASSERT_EQ(plain.Status, 1);
        ExpectSame(files({"--jobs", "2"}), plain, missing);
    }
}

TEST_F(Jobs, WantDrawingsThatStartClean)
{
    for (const Words& options : {Words{"--jobs", "2"}, Words{"--stage", "s"}}) {
        const Ended ended =
            Run(Joined({"convert", "door.dxf", "door.dxf", "--set", "CarryOver=kept"}, options));
        EXPECT_EQ(ended.Status, 2);
        EXPECT_TRUE(Holds(ended.Errors, "CarryOver=kept cannot be had with them")) << ended.Errors;
        EXPECT_TRUE(fs::is_empty(Folder / "CNC90/tmp") || !fs::exists(Folder / "CNC90/SORG/SRG/D"));
        EXPECT_FALSE(fs::exists(Folder / "s"));
    }
    EXPECT_EQ(Run({"convert", "door.dxf", "door.dxf", "--set", "CarryOver=Clean", "--jobs", "2"}).Status, 0);
}

TEST_F(Jobs, AreAtLeastOne)
{
    for (const char* const jobs : {"0", "-1", "two", "257", ""})
        EXPECT_EQ(Run({"convert", "door.dxf", "--jobs", jobs}).Status, 2) << jobs;
    EXPECT_EQ(Run({"convert", "door.dxf", "--number", "2"}).Status, 2) << "there is no stage";
}

} // namespace
} // namespace console_test
