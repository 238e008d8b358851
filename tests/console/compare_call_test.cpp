// `korvanti compare`: what each control would make of a drawing; nothing but a page is written.
#include "console/console_run.h"

namespace {

using namespace console_test;

struct CompareCall : Console {
    void SetUp() override
    {
        Console::SetUp();
        fs::copy_file(fs::path(KORVANTI_SOURCE_DIR) / "examples/install/EvHeader.dat",
                      Folder / "home/EvHeader.dat");
    }
    std::vector<std::string> LinesOf(const std::string& text) const
    {
        std::vector<std::string> lines(1);
        for (const char c : text) {
            if (c == '\n')
                lines.emplace_back();
            else if (c != '\r')
                lines.back() += c;
        }
        return lines;
    }
    // Counted before and after: no file of the installation or beside the drawing is touched.
    std::size_t Files() const
    {
        std::size_t files = 0;
        for (const auto& entry : fs::recursive_directory_iterator(Folder))
            files += entry.is_regular_file() && entry.path().filename() != "stdout" &&
                             entry.path().filename() != "stderr"
                         ? 1
                         : 0;
        return files;
    }
};

// Two bores 300 mm apart: 2.5 + 0.6 + 2.5 s.
std::string TwoBores()
{
    return BoredPanel("0\nCIRCLE\n8\nVBORE_Z12F3000\n10\n400\n20\n50\n40\n4\n");
}

TEST_F(CompareCall, EachControlHasItsRow)
{
    Put(Folder / "door.dxf", TwoBores());
    const std::size_t before = Files();
    const Ended ended = Run({"compare", "door.dxf"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    const std::vector<std::string> lines = LinesOf(ended.Output);
    ASSERT_GE(lines.size(), 6U) << ended.Output;
    EXPECT_EQ(lines[0], "door.dxf");
    EXPECT_EQ(lines[1],
              "Control            Programs  Lines  Bores  Stops  Saw cuts  Routes  Path m        Time"
              "  Doubts  Faults");
    EXPECT_EQ(lines[2],
              "CNC90                     1      5      2      2         0       0   0.000  about 0:06"
              "       0       0");
    EXPECT_TRUE(lines[3].starts_with("GENESIS                   1      5      2 ")) << lines[3];
    EXPECT_TRUE(lines[4].starts_with("Genesis Evolution         1 ")) << lines[4];
    EXPECT_TRUE(Holds(lines[5], "The time is an estimate")) << lines[5];
    EXPECT_EQ(Files(), before) << "nothing is placed";
}

TEST_F(CompareCall, JsonHasTheFiguresOfThePrograms)
{
    Put(Folder / "door.dxf", TwoBores());
    const Ended ended = Run({"compare", "door.dxf", "--report", "json", "-o", "all.html"});
    ASSERT_EQ(ended.Status, 0) << ended.Errors;
    const auto document = nlohmann::json::parse(ended.Output); // the page's name is not in it
    ASSERT_EQ(document["controls"].size(), 3U);
    const std::vector<std::string> controls = {"cnc90", "genesis", "evolution"};
    for (std::size_t i = 0; i < controls.size(); ++i) {
        const auto& row = document["controls"][i];
        EXPECT_EQ(row["control"], controls[i]);
        EXPECT_EQ(row["programs"], 1) << row;
        EXPECT_EQ(row["bores"], 2) << row;
        EXPECT_NEAR(row["estimatedSeconds"].get<double>(), 5.6, 1e-6) << row;
    }
    EXPECT_TRUE(fs::exists(Folder / "all.html"));
}

TEST_F(CompareCall, ThePageHasTheTableAndEachPicture)
{
    const Ended ended = Run({"compare", "door", "-o", "all.html"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    EXPECT_TRUE(Holds(ended.Output, "all.html"));
    const std::string page = Contents(Folder / "all.html");
    EXPECT_TRUE(Holds(page, "<tr><td>GENESIS</td><td>1</td>")) << page.substr(0, 3000);
    std::size_t pictures = 0, found = page.find("<svg ");
    for (; found != std::string::npos; found = page.find("<svg ", found + 1))
        ++pictures;
    EXPECT_EQ(pictures, 3U);
    EXPECT_TRUE(Holds(page, "The time is an estimate"));
    EXPECT_TRUE(Holds(page, "<title>Genesis Evolution: "));
    for (const std::string loaded : {"src=", "href=", "@import", "url("})
        EXPECT_FALSE(Holds(page, loaded)) << loaded << ": the page needs nothing from elsewhere";
}

TEST_F(CompareCall, WhatOneControlAloneSaysIsNamed)
{
    std::string drawing = TwoBores(); // whose border asks for the drill optimizer
    for (std::size_t at = drawing.find("BORDER_Z18"); at != std::string::npos;
         at = drawing.find("BORDER_Z18", at + 1))
        drawing.replace(at, 10, "BORDER_OP_Z18");
    Put(Folder / "door.dxf", drawing);
    const Ended ended = Run({"compare", "door.dxf", "--report", "json"});
    const auto document = nlohmann::json::parse(ended.Output);
    const std::string line =
        "The drill optimizer is not used for Genesis Evolution; every bore is drilled singly";
    EXPECT_EQ(document["controls"][2]["onlyHere"], nlohmann::json::array({line})) << ended.Output;
    EXPECT_EQ(document["controls"][2]["doubts"], 1) << ended.Output;
    EXPECT_FALSE(Holds(document["controls"][0].dump() + document["controls"][1].dump(), line))
        << ended.Output;
    EXPECT_TRUE(Holds(Run({"compare", "door.dxf"}).Output, "Genesis Evolution: only here: " + line));
}

TEST_F(CompareCall, AControlThatFailsHasItsReasonAndTheOthersGoOn)
{
    fs::remove(Folder / "home/EvHeader.dat");
    const Ended ended = Run({"compare", "door.dxf", "-o", "all.html"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Output, "Genesis Evolution: no program: EvHeader.dat file not found"))
        << ended.Output;
    EXPECT_TRUE(Holds(ended.Output, "GENESIS                   1 ")) << ended.Output;
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: door.dxf: Genesis Evolution: EvHeader.dat file not found"))
        << ended.Errors;
    EXPECT_TRUE(Holds(Contents(Folder / "all.html"), "no program: EvHeader.dat"));
}

TEST_F(CompareCall, ASettingHoldsForAllControls)
{
    const Ended ended = Run({"compare", "door.dxf", "--set", "Strict=yes", "--report", "json"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    EXPECT_EQ(Run({"compare", "door.dxf", "--set", "NoSuchSetting=1"}).Status, 2);
}

TEST_F(CompareCall, WhatIsNoDrawingIsNamedForEachControl)
{
    Put(Folder / "photo.dxf", std::string("\xFF\xD8\0\x10JFIF", 8));
    for (const std::string name : {"nowhere.dxf", "photo.dxf"}) {
        const Ended ended = Run({"compare", name});
        EXPECT_EQ(ended.Status, 1) << name;
        for (const std::string control : {"CNC90", "GENESIS", "Genesis Evolution"})
            EXPECT_TRUE(Holds(ended.Errors, "korvanti: " + name + ": " + control + ": ")) << ended.Errors;
        EXPECT_TRUE(Holds(ended.Output, "CNC90: no program: ")) << ended.Output;
    }
}

TEST_F(CompareCall, APageThatCannotBeWrittenIsNamed)
{
    const Ended ended = Run({"compare", "door.dxf", "-o", "nowhere/all.html"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: nowhere/all.html: ")) << ended.Errors;
}

TEST_F(CompareCall, WrongUsageOfCompare)
{
    EXPECT_EQ(Run({"compare"}).Status, 2);
    EXPECT_EQ(Run({"compare", "door.dxf", "door.dxf"}).Status, 2);
    const Ended ended = Run({"compare", "door.dxf", "-o", "door.svg"});
    EXPECT_EQ(ended.Status, 2);
    EXPECT_TRUE(Holds(ended.Errors, "-o of compare is FILE.html, not ")) << ended.Errors;
    EXPECT_TRUE(Holds(Run({"compare", "--help"}).Output, "estimate"));
}

} // namespace
