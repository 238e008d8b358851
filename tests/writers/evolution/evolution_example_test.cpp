// One bore and one route, from drawing to Genesis Evolution program, byte for byte, with the template of
// the example installation; and what drawings bring that no record shows.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "state/run.h"
#include "state/settings.h"
#include "support/bad_input.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv::test {
namespace {

const std::string ExamplePanel =
    Rectangle("BORDERZ18EV", 0, 0, 600, 400) + TextAt("BORDERZ18EV", 0, 0, "DESC DOOR");
const std::string ExampleBore = Circle("VBOREZ12F3000", 100, 50, 4);
const std::string ExampleRoute = Line("ROUTE1Z5T71S18FD2000F5000L5", 10, 10, 300, 10);
const std::string SideOne =
    "SIDE#1{\r\n"
    "W#81{ ::WTp WS=1 #1=100 #2=50 #3=-12 #8015=0 #201=1 #203=1 #1002=8 #2005=3000 }W\r\n"
    "W#89{ ::WTs WS=1 #1=10 #2=10 #3=-5 #8015=0 #8101=0 #8096=0 #36=5 #40=1 #201=1 #203=1 #205=71 #1002=8 "
    "#2005=2000 #2002=18000 }W\r\n"
    "W#2201{ ::WTl #1=300 #2=10 #3=-5 #8015=0 #2008=5000 }W\r\n"
    "}SIDE\r\n";
const std::string EmptySides = "SIDE#2{\r\n}SIDE\r\nSIDE#3{\r\n}SIDE\r\nSIDE#4{\r\n}SIDE\r\n"
                               "SIDE#5{\r\n}SIDE\r\nSIDE#6{\r\n}SIDE\r\n";

std::string Repeated(int count, const std::string& row)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += row;
    return text;
}

std::string ShippedTemplate()
{
    std::ifstream file(fs::path(KORVANTI_SOURCE_DIR) / "examples" / "install" / "EvHeader.dat",
                       std::ios::binary);
    EXPECT_TRUE(file.good());
    return {std::istreambuf_iterator<char>(file), {}};
}

// Rows of the shipped template behind its fourth field.
struct ShippedRows {
    std::string Offsets = Rows({"#0=0.0|0", "#1=0.0|0", "#2=0.0|0"});
    std::string Letters = Rows({"#0=0|0", "#1=0|0", "#2=0|0", "#3=0|0", "#4=0|0", "#5=0|0", "#6=0|0"});
    std::string Variables;
    std::string Sorting = "::0\r\n" + Repeated(6, "::0;0;0;0;0;0;\r\n") + Repeated(6, "::0;0;0;0;0;0;0;\r\n");

    static std::string Rows(std::initializer_list<std::string> rows)
    {
        std::string text;
        for (const std::string& row : rows)
            text += row + "\r\n";
        return text;
    }
    std::string Text() const
    {
        std::string farLetters;
        for (int n = 7; n <= 21; ++n)
            farLetters += "#" + std::to_string(n) + "=0|0\r\n";
        return "OFFS{\r\n" + Offsets + "}OFFS\r\nVARV{\r\n" + Letters + farLetters + "}VARV\r\nVAR{\r\n" +
               Variables + "}VAR\r\nOPTI{\r\n" + Sorting + "}OPTI\r\n";
    }
};

const std::string FirstField = "TPA\\ALBATROS\\EDICAD\\00.00:1011:0;0\r\n";

class EvolutionExample : public testing::Test {
  protected:
    Scene Place;

    void SetUp() override
    {
        Clock.SecondsSinceMidnight = [] { return 1000.0; };
        Place.Write("EvHeader.dat", ShippedTemplate());
    }
    std::string Converted(const std::string& entities, const std::string& name = "DOOR")
    {
        EXPECT_TRUE(Place.Convert(Drawing(entities), name + ".DXF")) << Place.ReportText();
        return Place.Read(Place.Programs / (name + ".CNC"));
    }
};

TEST_F(EvolutionExample, TheShippedTemplateHoldsAllRows)
{
    EXPECT_EQ(ShippedTemplate(), FirstField + "$=\r\n::SIDE=\r\n\r\n" + ShippedRows().Text());
}

TEST_F(EvolutionExample, ABoreAndARouteByteForByte)
{
    EXPECT_EQ(Converted(ExamplePanel + ExampleBore + ExampleRoute),
              FirstField + "$=DOOR\r\n::SIDE=1;\r\n::UNm DL=600 DH=400 DS=18\r\r\n" + ShippedRows().Text() +
                  SideOne + EmptySides + "\r\n");
    EXPECT_EQ(Place.Lines,
              (std::vector<std::string>{
                  "DOOR", "DOOR", "Descr: DOOR", "Genesis Evolution", "Processed in 0 Sec.",
                  "---------------------------------------***------------------------------------"}));
}

TEST_F(EvolutionExample, OffsetsVariablesAndSortingOfADrawing)
{
    ShippedRows rows;
    rows.Offsets = ShippedRows::Rows({"#0=10|10", "#1=0.0|0", "#2=0.0|0"});
    rows.Letters =
        ShippedRows::Rows({"#0=w-5|w-5", "#1=0|0", "#2=0|0", "#3=7|7", "#4=0|0", "#5=0|0", "#6=0|0"});
    rows.Variables = "#12=a/2|a/2\r\n";
    rows.Sorting = "::4\r\n" + Repeated(6, "::0;0;0;0;0;0;\r\n") + Repeated(6, "::0;0;0;0;0;0;0;\r\n");
    const std::string panel =
        Rectangle("BORDERZ18EVSS", 0, 0, 600, 400) + TextAt("BORDERZ18EVSS", 0, 0, "DESC DOOR");
    const std::string program =
        Converted(Instructions({"VAR A=W-5", "VAR V3=7", "VAR R12=A/2", "VAR Q=1", "OFFSET 10"}) + panel +
                  ExampleBore + ExampleRoute);
    EXPECT_EQ(program.substr(0, program.find("SIDE#1{")),
              FirstField + "$=DOOR\r\n::SIDE=1;\r\n::UNm DL=600 DH=400 DS=18\r\r\n" + rows.Text());
}

TEST_F(EvolutionExample, ASecondDrawingOfTheProcessIsTheSame)
{
    const std::string drawing = ExamplePanel + ExampleBore + ExampleRoute;
    EXPECT_EQ(Converted(drawing, "FIRST"), Converted(drawing, "SECOND"));
}

TEST_F(EvolutionExample, AVariableDepthOfALayer)
{
    const std::string program = Converted(ExamplePanel + Circle("VBOREZ205", 100, 50, 4));
    EXPECT_NE(program.find("#1=100 #2=50 #3=R5 #8015=0"), std::string::npos);
}

TEST_F(EvolutionExample, NoTemplateFailsTheJobAndTheNextOneRuns)
{
    fs::remove(Place.Folder / "EvHeader.dat");
    EXPECT_FALSE(Place.Convert(Drawing(ExamplePanel + ExampleBore), "DOOR.DXF"));
    EXPECT_EQ(Place.Boxes, std::vector<std::string>{"EvHeader.dat file not found"});
    EXPECT_EQ(kv::Run.FailedFiles.size(), 2U);
    EXPECT_FALSE(fs::exists(Place.Programs / "DOOR.CNC"));
    Place.Write("EvHeader.dat", ShippedTemplate());
    EXPECT_NE(Converted(ExamplePanel + ExampleBore).find("W#81{"), std::string::npos);
}

TEST_F(EvolutionExample, AFolderThatRefusesLeavesTheOldProgram)
{
    const std::string old = Converted(ExamplePanel + ExampleBore);
    const auto refused = [&] {
        GiveUpRights();
        const bool converted = Place.Convert(Drawing(ExamplePanel + ExampleBore + ExampleRoute), "DOOR.DXF");
        const std::string told = "Destination Path not Ready  " + (Place.Programs / "DOOR.CNC").string();
        return !converted && Place.Reported(told);
    };
    fs::permissions(Place.Folder, fs::perms::all);
    fs::permissions(Place.Programs, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read |
                                        fs::perms::others_exec);
    EXPECT_EQ(InChild(refused), 0);
    fs::permissions(Place.Programs, fs::perms::all);
    EXPECT_EQ(Place.Read(Place.Programs / "DOOR.CNC"), old);
}

TEST_F(EvolutionExample, ATemplateThatCannotBeReadIsToldInOneLine)
{
    const auto unread = [&] {
        GiveUpRights();
        const bool converted = Place.Convert(Drawing(ExamplePanel + ExampleBore), "DOOR.DXF");
        int named = 0;
        for (const std::string& line : Place.Lines)
            named += line.starts_with((Place.Folder / "EvHeader.dat").string() + ": ") ? 1 : 0;
        return !converted && named == 1 && Place.Boxes.empty();
    };
    fs::permissions(Place.Folder, fs::perms::all);
    fs::permissions(Place.Folder / "EvHeader.dat", fs::perms::none);
    EXPECT_EQ(InChild(unread), 0);
}

TEST_F(EvolutionExample, NamesWithPointsBlanksAndForeignLetters)
{
    const std::string drawing = Drawing(ExamplePanel + ExampleBore);
    for (const std::string& name :
         std::vector<std::string>{"PANEL 1.LEFT.2", "T\xFCR", "LONG" + std::string(190, 'X')}) {
        ASSERT_TRUE(Place.Convert(drawing, "DOOR.DXF", name)) << Place.ReportText();
    }
    EXPECT_TRUE(fs::exists(Place.Programs / "PANEL 1.LEFT.2.CNC"));
    EXPECT_TRUE(fs::exists(Place.Programs / "T\xC3\xBCR.CNC"));
    EXPECT_TRUE(fs::exists(Place.Programs / ("LONG" + std::string(190, 'X') + ".CNC")));
}

} // namespace
} // namespace kv::test
