// `convert --strict`, `place --strict` and the setting: a drawing with a doubt in its report leaves nothing,
// the others go on. Relies on the real program; leaves nothing behind.
#include "console/spread_list.h"
#include "support/dxf.h"

namespace console_test {
namespace {

using nlohmann::json;

class Strict : public SpreadList {
  protected:
    // Without the horizontal drill, whose program would leave nothing for the other one.
    void SetUp() override
    {
        SpreadList::SetUp();
        std::string settings = Settings();
        settings.replace(settings.find("MakeHBD=1"), 9, "MakeHBD=0");
        Put(Folder / "home/KV90.INI", settings);
    }
    // Each line without length is a doubt.
    static std::string Doubtful(int doubts = 1)
    {
        std::string more;
        for (int i = 0; i < doubts; ++i)
            more += kv::test::Line("ROUTE" + Digits(i) + "Z5T71", 50, 50, 50, 50);
        return BoredPanel(more);
    }
    static json Numbers(const json& drawing)
    {
        json numbers = json::array();
        for (const json& line : drawing["lines"])
            if (line.contains("number"))
                numbers.push_back(line["number"]);
        return numbers;
    }
    static const json& LineOf(const json& drawing, int number)
    {
        for (const json& line : drawing["lines"])
            if (line.value("number", 0) == number)
                return line;
        ADD_FAILURE() << "no line " << number << " in " << drawing.dump(1);
        static const json none;
        return none;
    }
    // A folder is made for a program before it is known whether it may stay.
    static CallResult WithoutFolders(CallResult result)
    {
        std::erase_if(result.Files, [](const auto& file) { return file.second == "a folder"; });
        return result;
    }
    Ended Convert(const Words& words) const { return Run(Joined({"convert"}, words), Environment()); }
};

TEST_F(Strict, ADoubtFailsTheDrawingAndNothingOfItIsWritten)
{
    const std::string cutList = Note("INFO", "POST INSTRUCTIONS") + Note("INFO", "PTS NAME=N1");
    Put(Folder / "door.dxf", WithMore(Doubtful(), cutList + Note("CNCNOTES", "HOLD")));
    const CallResult before = WithoutFolders(Result({}));
    const Ended ended = Convert({"door.dxf", "--strict"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_EQ(ended.Errors, "korvanti: door.dxf: failed\n");
    EXPECT_TRUE(Holds(ended.Output, Shown("door.dxf") +
                                        ": 1 doubt; nothing was written, since doubtful drawings "
                                        "are refused (--strict)\n"))
        << ended.Output;
    EXPECT_TRUE(Holds(ended.Output, "*** The Following files failed to process: ***\n" + Shown("door.dxf")));
    EXPECT_EQ(WithoutFolders(Result({})).Files, before.Files);

    EXPECT_EQ(Convert({"door.dxf"}).Status, 0);
    EXPECT_NE(WithoutFolders(Result({})).Files, before.Files) << "without it all of that is written";
}

TEST_F(Strict, ACleanDrawingIsWhatItIsWithoutIt)
{
    const Ended plain = Convert({"door.dxf"});
    const std::map<std::string, std::string> files = InstalledFiles();
    ResetInstallation();
    const Ended strict = Convert({"door.dxf", "--strict"});
    EXPECT_EQ(strict.Status, 0);
    EXPECT_EQ(WithoutTimes(strict.Output), WithoutTimes(plain.Output));
    EXPECT_EQ(InstalledFiles(), files);
}

TEST_F(Strict, EveryDoubtIsCountedAndTheDocumentSaysFailed)
{
    Put(Folder / "door.dxf", Doubtful(7));
    const json shown =
        json::parse(Convert({"door.dxf", "--strict", "--report", "json"}).Output)["drawings"][0];
    EXPECT_EQ(shown["outcome"], "failed");
    EXPECT_EQ(shown["files"], json::array());
    const json& refused = LineOf(shown, 570);
    EXPECT_EQ(refused["severity"], "fault");
    EXPECT_EQ(refused["count"], 7) << shown.dump(1);
    EXPECT_TRUE(Holds(refused["text"], ": 7 doubts; nothing was written"));
}

TEST_F(Strict, TheListGoesOnHoweverItIsSpread)
{
    Put(Folder / "side.dxf", Doubtful(2));
    Put(Folder / "top.dxf", BoredPanel());
    const Words names = {"door.dxf", "side.dxf", "top.dxf"};
    const CallResult plain = WithoutFolders(ConvertAlone(names, {"--strict"}));
    EXPECT_EQ(plain.Status, 1);
    EXPECT_TRUE(plain.Files.contains("CNC90/SORG/SRG/D/OOR"));
    EXPECT_FALSE(plain.Files.contains("CNC90/SORG/SRG/S/IDE"));
    EXPECT_TRUE(plain.Files.contains("CNC90/SORG/SRG/T/OP"));
    EXPECT_EQ(plain.Files.at("CNC90/SORG/INDICE.PRG").size(), 2 * 82U);
    ExpectSame(WithoutFolders(SpreadList::Convert(names, {"--strict", "--jobs", "2"})), plain, "2");
}

TEST_F(Strict, AStageIsRefusedWhenItIsMadeOrWhenItIsPlaced)
{
    Put(Folder / "side.dxf", Doubtful(5));
    EXPECT_EQ(Convert({"door.dxf", "side.dxf", "--stage", "made", "--strict"}).Status, 1);
    EXPECT_EQ(Convert({"door.dxf", "side.dxf", "--stage", "plain"}).Status, 0);
    const auto place = [&](const Words& words) {
        ResetInstallation();
        return Run(Joined({"place", "--report", "json"}, words), Environment());
    };
    for (const Words& words : {Words{"made"}, Words{"plain", "--strict"}}) {
        const Ended ended = place(words);
        EXPECT_EQ(ended.Status, 1) << ended.Errors;
        const json drawings = json::parse(ended.Output)["drawings"];
        EXPECT_EQ(drawings[0]["outcome"], "converted");
        EXPECT_EQ(drawings[1]["outcome"], "failed");
        EXPECT_EQ(LineOf(drawings[1], 570)["count"], 5);
        EXPECT_TRUE(fs::exists(Folder / "CNC90/SORG/SRG/D/OOR"));
        EXPECT_FALSE(fs::exists(Folder / "CNC90/SORG/SRG/S/IDE"));
    }
}

TEST_F(Strict, TheSettingAsksForItInEitherCaseAndAnUnknownWordIsReported)
{
    Put(Folder / "door.dxf", Doubtful());
    for (const std::string word : {"yes", " YES "}) {
        EXPECT_EQ(Convert({"door.dxf", "--set", "Strict=" + word}).Status, 1) << word;
        EXPECT_FALSE(fs::exists(Folder / "CNC90/SORG/SRG/D/OOR"));
    }
    for (const std::string word : {"no", "NO", ""}) {
        const Ended ended = Convert({"door.dxf", "--set", "Strict=" + word});
        EXPECT_EQ(ended.Status, 0) << word;
        EXPECT_FALSE(Holds(ended.Output, "Setting Strict")) << ended.Output;
    }
#if defined(_WIN32)
    const std::string quoted = "'on'"; // these calls pass no double quotes on
#else
    const std::string quoted = "\"on\"";
#endif
    const Ended ended = Convert({"door.dxf", "--set", "Strict=%1 " + quoted + "\x1b"});
    EXPECT_EQ(ended.Status, 0);
    EXPECT_TRUE(
        Holds(ended.Output, "Setting Strict: \"%1 " + quoted + "?\" is neither yes nor no, no is taken"))
        << ended.Output;
    EXPECT_EQ(Convert({"door.dxf", "--set", "Strict=no", "--strict"}).Status, 1) << "the call wins";
}

TEST_F(Strict, AJobThatFailedOtherwiseHasNoSecondFault)
{
    const json drawings =
        json::parse(Convert({"gone.dxf", "--strict", "--report", "json"}).Output)["drawings"];
    EXPECT_EQ(Numbers(drawings[0]), json({101}));
}

TEST_F(Strict, TenThousandDoubtsAreOneFault)
{
    std::string lines;
    for (int i = 0; i < 10000; ++i)
        lines += kv::test::Line("HBORE", 100, 420, 100, 390);
    Put(Folder / "door.dxf", BoredPanel(lines));
    const json drawings =
        json::parse(Convert({"door.dxf", "--strict", "--report", "json"}).Output)["drawings"];
    EXPECT_EQ(drawings[0]["outcome"], "failed");
    EXPECT_GT(LineOf(drawings[0], 570)["count"], 0);
}

TEST_F(Strict, TraceShowsADoubtfulDrawingAllTheSame)
{
    Put(Folder / "home/KV90.INI", "[Configuration]\r\nWinner90=True\r\nStrict=yes\r\n");
    Put(Folder / "door.dxf", Doubtful());
    EXPECT_EQ(Run({"trace", "door.dxf", "--after", "final"}, Environment()).Status, 0);
}

} // namespace
} // namespace console_test
