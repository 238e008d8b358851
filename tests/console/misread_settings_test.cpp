// Settings and tables that hold more than a number where a number is wanted: one line for each that the
// drawing is converted by. Relies on the real program and on drawings; leaves nothing behind.
#include "console/spread_list.h"
#include "platform/number_texts.h"
#include "support/dxf.h"

namespace console_test {
namespace {

using nlohmann::json;

class MisreadSettings : public Console {
  protected:
    void PutIni(const std::string& lines) const
    {
        Put(Folder / "home/KV90.INI", "[Configuration]\r\nWinner90=True\r\nDestinationPath90=" +
                                          (Folder / "programs").string() + "/\r\n" + lines);
    }
    Words Texts(Words words = {}) const
    {
        words.insert(words.begin(), {"convert", "door.dxf", "--report", "json"});
        const Ended ended = Run(words);
        EXPECT_EQ(ended.Status, 0) << ended.Output << ended.Errors;
        Words texts;
        const json document = json::parse(ended.Output);
        for (const json& line : document["drawings"][0]["lines"]) {
            const int number = line.value("number", 0);
            if (number != 650 && number != 651 && number != 653)
                continue;
            EXPECT_EQ(line["severity"], "doubt");
            texts.push_back(line["text"]);
        }
        return texts;
    }
    std::string Of(const std::string& key, const std::string& text, const std::string& number) const
    {
        return Shown("home/KV90.INI") + ": " + key + "=" + text + " is no number as a whole, " + number +
               " is taken";
    }
};

TEST_F(MisreadSettings, ACommaIsTold)
{
    PutIni("OffsetX=12,5\r\n");
    EXPECT_EQ(Texts(), Words{Of("OffsetX", "12,5", "12")});
    EXPECT_TRUE(Holds(Contents(Folder / "programs/SRG/D/OOR"), "X12\r\n")) << "as the line says";
}

TEST_F(MisreadSettings, NumbersAndBlanksAreSilent)
{
    for (const std::string value : {"", "   ", "5", " 5 ", "-5.25", "+.5", "5.", "1E1", "1d+1"}) {
        PutIni("OffsetX=" + value + "\r\nRouteTolerance=" + value + "\r\n");
        EXPECT_EQ(Texts(), Words{}) << value;
    }
}

TEST_F(MisreadSettings, WhatAFixUpOrABoxHidesIsToldToo)
{
    PutIni("LineLimit=8oo\r\nMakeHBD=no\r\nOptimizer=x1\r\n");
    Words expected = {Of("MakeHBD", "no", "0"), Of("LineLimit", "8oo", "600"), Of("Optimizer", "x1", "0")};
    Words told = Texts();
    std::sort(expected.begin(), expected.end());
    std::sort(told.begin(), told.end());
    EXPECT_EQ(told, expected);
}

TEST_F(MisreadSettings, FieldsThatThisDrawingDoesNotUseAreSilent)
{
    PutIni("SawKerf=4mm\r\nPrecisionInch=3x\r\nLeadLength=5,5\r\nLeadS=x\r\nHBDVBoreLimit=6,0\r\n"
           "BatchLimit=5x\r\nGraphicDelay=1,5\r\nRadiusLimit=x\r\nSourcePath90=12,5\r\nSequence=1x\r\n");
    EXPECT_EQ(Texts(), Words{});
    Put(Folder / "door.dxf", BoredPanel(kv::test::Line("GROOVE D8Z6", 20, 60, 500, 60) +
                                        kv::test::Line("ROUTE Z5T71", 50, 50, 300, 50)));
    EXPECT_EQ(Texts(),
              (Words{Of("LeadS", "x", "0"), Of("LeadLength", "5,5", "5"), Of("SawKerf", "4mm", "4")}));
}

TEST_F(MisreadSettings, ANumberThatIsReplacedIsTold)
{
    const auto replaced = [this](const std::string& written, const std::string& taken) {
        return Shown("home/KV90.INI") + ": " + written + " cannot be used, " + taken + " is taken";
    };
    PutIni("SawKerf=0\r\nLineLimit=100\r\n");
    EXPECT_EQ(Texts(), Words{replaced("LineLimit=100", "600")}) << "no groove is drawn";
    Put(Folder / "door.dxf", BoredPanel(kv::test::Line("GROOVE D8Z6", 20, 60, 500, 60)));
    EXPECT_EQ(Texts(), (Words{replaced("SawKerf=0", "3"), replaced("LineLimit=100", "600")}));
    EXPECT_EQ(Texts({"--set", "SawKerf=25", "--set", "LineLimit=200"}),
              Words{"--set: SawKerf=25 cannot be used, 20 is taken"});
    PutIni("SawKerf=\r\nLineLimit=\r\nGraphicDelay=0\r\n");
    EXPECT_EQ(Texts(), Words{}) << "nothing was written that is replaced";
    PutIni("SawKerf= 4.0\r\nLineLimit=0600\r\n");
    EXPECT_EQ(Texts(), Words{});
}

TEST_F(MisreadSettings, ToolRowsThatCountAreTold)
{
    PutIni("[ToolSubData]\r\nEnabled3=1\r\nTool3=71a\r\nToolSub3=\r\nTool4=1,2\r\n");
    EXPECT_EQ(Texts(), Words{Of("Tool3", "71a", "71")});
}

TEST_F(MisreadSettings, TheCallIsNamedInPlaceOfTheFile)
{
#if defined(_WIN32)
    const std::string quoted = "'x'"; // these calls pass no double quotes on
#else
    const std::string quoted = "\"x\"";
#endif
    EXPECT_EQ(Texts({"--set", "OffsetZ=%1 " + quoted + "\x1b{key}"}),
              Words{"--set: OffsetZ=%1 " + quoted + "?{key} is no number as a whole, 0 is taken"});
    EXPECT_EQ(Texts({"--set", "SawKerf=9", "--set", "OffsetZ=3"}), Words{});
    PutIni("OffsetX=12,5\r\n");
    EXPECT_EQ(Texts({"--set", "OffsetX=12.5"}), Words{}) << "the file's value is not used";
}

TEST_F(MisreadSettings, EveryDrawingOfAListTellsItOnce)
{
    PutIni("OffsetX=12,5\r\n");
    Put(Folder / "side.dxf", BoredPanel());
    for (const Words& more : {Words{}, Words{"--jobs", "2"}}) {
        Words words = {"convert", "door.dxf", "side.dxf"};
        words.insert(words.end(), more.begin(), more.end());
        const Ended ended = Run(words);
        const std::string line = Of("OffsetX", "12,5", "12") + "\n";
        const std::size_t first = ended.Output.find(line);
        ASSERT_NE(first, std::string::npos) << ended.Output;
        const std::size_t second = ended.Output.find(line, first + 1);
        ASSERT_NE(second, std::string::npos) << ended.Output;
        EXPECT_EQ(ended.Output.find(line, second + 1), std::string::npos);
    }
}

TEST_F(MisreadSettings, TheDrillHeadsTableNamesFileAndLine)
{
    const std::string file = Shown("home/DT.Par");
    const auto table = [&](const std::string& line) {
        Put(Folder / "home/DT.Par", "VERTICAL DRILL\t0\t-48\t0\t8\r\n" + line + "\r\n");
        return Texts({"--set", "Optimizer=1"});
    };
    EXPECT_EQ(table("VERTICAL DRILL\t32\t-48\t0\t8"), Words{});
    EXPECT_EQ(table("VERTICAL DRILL\t32\t\t0\t8"), Words{}) << "a blank field";
    EXPECT_EQ(table("\"VERTICAL DRILL\t32\t-48\t0\t8\","), Words{});
    EXPECT_EQ(table("NOT USED\tx\tx\tx\tx"), Words{});
    EXPECT_EQ(table("VERTICAL DRILL\t32mm\t-48\t0\t8"),
              Words{file + ", line 2: \"32mm\" is no number as a whole, 0 is taken"});
    EXPECT_EQ(table("VERTICAL DRILL\t32,5\t-48\t0\t8"),
              Words{file + ", line 2: \"32,5\" is no number as a whole, 32 is taken"});
    Put(Folder / "home/DT.Par", "VERTICAL DRILL\tx\t-48\t0\t8\r\n");
    EXPECT_EQ(Texts(), Words{}) << "without the optimizer nobody reads it";
}

TEST_F(MisreadSettings, TheHorizontalDrillsTableDoesSoToo)
{
    fs::create_directories(Folder / "hbd");
    Put(Folder / "home/KVHBD.cfg",
        "Horizontal\t8,5\t0\t0\r\nGroove\tx\t0\t0\r\n\t\t\t\r\nVertical\t5\t0\t0\r\n");
    const Words hbd = {"--set", "MakeHBD=1", "--set", "HBDDestinationPath=hbd/"};
    EXPECT_EQ(Texts(hbd),
              Words{Shown("home/KVHBD.cfg") + ", line 1: \"8,5\" is no number as a whole, 8 is taken"});
    EXPECT_EQ(Texts(), Words{});
}

TEST_F(MisreadSettings, TheExampleInstallationIsSilent)
{
    for (const auto& entry : fs::directory_iterator(fs::path(KORVANTI_SOURCE_DIR) / "examples/install"))
        fs::copy_file(entry.path(), Folder / "home" / entry.path().filename(),
                      fs::copy_options::overwrite_existing);
    fs::create_directories(Folder / "hbd");
    const std::string to = (Folder / "programs").string() + "/";
    for (const std::string control : {"cnc90", "genesis", "evolution"})
        EXPECT_EQ(Texts({"--system", control, "--set", "Optimizer=1", "--set", "MakeHBD=1", "--set",
                         "HBDDestinationPath=hbd/", "--set", "DestinationPath90=" + to, "--set",
                         "DestinationPathGen=" + to, "--set", "DestinationPathEV=" + to}),
                  Words{})
            << control;
}

TEST(NumberTexts, AreReadToTheirEndWhereValLeavesNothing)
{
    for (const char* const text :
         {"", " ", "0", "-1", "+1.5", ".5", "5.", " 7 ", "1e5", "1E-5", "1d5", "1D+05"})
        EXPECT_TRUE(kv::IsReadToItsEnd(text)) << text;
    for (const char* const text :
         {"x", "-", ".", "1,5", "1.5.5", "1e", "1e+", "1 2", "5mm", "\t5", "e5", "--1", "1-"})
        EXPECT_FALSE(kv::IsReadToItsEnd(text)) << text;
    EXPECT_EQ(kv::NumberTaken("12,5"), "12");
    EXPECT_EQ(kv::NumberTaken("x"), "0");
    EXPECT_EQ(kv::NumberTaken("1e999"), "a number out of range");
}

} // namespace
} // namespace console_test
