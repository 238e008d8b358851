// The drill optimizer from a drawing and a DT.Par to the lines of a program.
#include "drilling/optimize_drilling.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "drilling/drill_head.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/host.h"
#include "support/scene.h"

namespace kv {
namespace {

using namespace test;
using Texts = std::vector<std::string>;

class OptimizedDrawing : public testing::Test {
  protected:
    void TearDown() override
    {
        DrillParameters.assign(1, {});
        FillDrillHead();
    }

    // Nine drills of 5 mm and three of 8 mm along X in slots 10 to 12, then three of 10 mm along Y in
    // slots 13 to 15.
    void PutHead() const
    {
        std::string text;
        for (int n = 1; n <= 12; ++n)
            text += "VERTICAL DRILL\t" + std::to_string(32 * n) + "\t0\t70\t" + (n < 10 ? "5" : "8") + "\r\n";
        for (int n = 0; n < 3; ++n)
            text += "Vertical drill\t500\t" + std::to_string(32 * n) + "\t70\t10\r\n";
        Home.Write("DT.Par", text);
    }
    // Places on a panel of 600 by 400 whose corner lies at (10, 20).
    static std::string Bore(double x, double y, double diameter = 8, const std::string& layer = "VBORE Z12")
    {
        return Circle(layer, 10 + x, 20 + y, diameter / 2);
    }
    static std::string RowAlongX(double y = 50) { return Bore(100, y) + Bore(132, y) + Bore(164, y); }
    static std::string RowAlongY() { return Bore(100, 50, 10) + Bore(100, 82, 10) + Bore(100, 114, 10); }
    // The lines between the program's name and its end.
    Texts LinesOf(const std::string& entities, const std::string& border = "BORDERLLOP")
    {
        EXPECT_TRUE(Home.Convert(Drawing(Rectangle(border, 10, 20, 600, 400) + entities)))
            << Home.ReportText();
        const Texts lines = Home.Program();
        if (lines.size() < 3)
            return {"no program"};
        return {lines.begin() + 2, lines.end() - 1};
    }

    Scene Home;
};

TEST_F(OptimizedDrawing, ARowAlongXIsOneLine)
{
    PutHead();
    EXPECT_EQ(LinesOf(RowAlongX()), Texts{"G183G90G55P5T0110|12X100Y50Z12I164"});
}

TEST_F(OptimizedDrawing, ARowAlongYIsOneLineBehindAnEmptyOne)
{
    PutHead();
    EXPECT_EQ(LinesOf(RowAlongY()), (Texts{"", "G184G90G55P5T0113|15X100Y50Z12J114"}));
}

TEST_F(OptimizedDrawing, ALoneBoreIsASingleDrillingWithItsDrill)
{
    PutHead();
    EXPECT_EQ(LinesOf(Bore(100, 50)), Texts{"G81G90G55P5T0110X100Y50Z12"});
    EXPECT_EQ(LinesOf(Bore(100, 50, 7)), Texts{"G81G90G55P5T0100X100Y50Z12"}); // no drill of 7 mm
}

TEST_F(OptimizedDrawing, RunsByTheSettingOrByTheFlag)
{
    PutHead();
    EXPECT_EQ(LinesOf(Bore(100, 50), "BORDERLL"), Texts{"G81G90G55P5R54=8X100Y50Z12"});
    Config.Optimizer = "1";
    EXPECT_EQ(LinesOf(Bore(100, 50), "BORDERLL"), Texts{"G81G90G55P5T0110X100Y50Z12"});
    Config.Optimizer = "0";
    EXPECT_EQ(LinesOf(Bore(100, 50)), Texts{"G81G90G55P5T0110X100Y50Z12"});
}

TEST_F(OptimizedDrawing, StopsTakeThePlaceOfTheBores)
{
    PutHead();
    Long bores = -1, stops = -1;
    const AtStage look("optimized", [&] {
        bores = VBores.Last();
        stops = HeadPositions.Last();
    });
    LinesOf(RowAlongX() + Bore(300, 200));
    EXPECT_EQ(bores, 0);
    EXPECT_EQ(stops, 2);
}

TEST_F(OptimizedDrawing, TwiceDrawnBoresAreDrilledOnce)
{
    PutHead();
    EXPECT_EQ(LinesOf(RowAlongX() + RowAlongX()), Texts{"G183G90G55P5T0110|12X100Y50Z12I164"});
}

TEST_F(OptimizedDrawing, BoresOfOnePlaceAndToolButTwoDiametersStayTwo)
{
    PutHead();
    EXPECT_EQ(LinesOf(Bore(100, 50, 8, "VBORE Z12 T03") + Bore(100, 50, 5, "VBORE Z12 T03")),
              Texts(2, "G81G90G55P5T0103X100Y50Z12"));
}

TEST_F(OptimizedDrawing, TheSecondRowBeginsWhereTheFirstOneEnds)
{
    PutHead();
    EXPECT_EQ(LinesOf(RowAlongX(50) + RowAlongX(350)),
              (Texts{"G183G90G55P5T0110|12X100Y350Z12I164", "G183G90G55P5T0110|12X164Y50Z12I100"}));
}

TEST_F(OptimizedDrawing, StopsPrintTheSpeedOfAnEarlierLineAndLoseTheirOwn)
{
    PutHead();
    EXPECT_EQ(LinesOf(Bore(100, 50, 8, "VBORE Z12 S4000")), Texts{"G81G90G55P5T0110X100Y50Z12"});
    EXPECT_EQ(LinesOf(Bore(100, 50, 8, "VBORE Z12 S6000"), "BORDERLL"),
              Texts{"G81G90G55P5R54=8S6000X100Y50Z12"});
    EXPECT_EQ(LinesOf(Bore(100, 50, 8, "VBORE Z12 S4000")), Texts{"G81G90G55P5T0110S6000X100Y50Z12"});
}

TEST_F(OptimizedDrawing, HeadOriginFlipIsTheSettingTurnedOverByATopOrigin)
{
    PutHead();
    Config.Origin = "0";
    EXPECT_EQ(LinesOf(RowAlongY()).back(), "G184G90G55P5T0113|15X100Y50Z12J114");
    // 350 to 286 from above; flipped it begins 64 lower and its drills come from the other end.
    EXPECT_EQ(LinesOf(RowAlongY(), "BORDERULOP").back(), "G184G90G54P5T01151413X100Y286Z12J350");
    Config.Origin = "1"; // turns the work offsets over too
    EXPECT_EQ(LinesOf(RowAlongY()).back(), "G184G90G54P5T01151413X100Y50Z12J114");
    EXPECT_EQ(LinesOf(RowAlongY(), "BORDERULOP").back(), "G184G90G55P5T01151413X100Y350Z12J286");
}

TEST_F(OptimizedDrawing, ARightOriginMirrorsTheRow)
{
    PutHead();
    const Texts lines = LinesOf(RowAlongX(), "BORDEROP_LR");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].substr(lines[0].find('X')), "X500Y50Z12I436");
}

TEST_F(OptimizedDrawing, AnInchDrawingIsChainedByMillimetres)
{
    PutHead();
    // 20 by 10 inches; bores of 8.001 mm, 32.004 mm apart.
    const std::string drawing =
        Drawing(Rectangle("BORDERLLOP", 1, 1, 20, 10) + Circle("VBORE Z.5", 3, 3, .1575) +
                Circle("VBORE Z.5", 4.26, 3, .1575));
    ASSERT_TRUE(Home.Convert(drawing)) << Home.ReportText();
    EXPECT_EQ(Home.Program()[2], "G183G90G55P5T011011X2Y2Z.5I3.26");
}

// Heads that cannot be used. Nothing is told; every bore is a stop of its own.

TEST_F(OptimizedDrawing, WithoutAHeadEachBoreIsAStopWithoutDrill)
{
    const Texts lone = {"G81G90G55P5T0100X164Y50Z12", "G81G90G55P5T0100X132Y50Z12",
                        "G81G90G55P5T0100X100Y50Z12"};
    EXPECT_EQ(LinesOf(RowAlongX()), lone);
    const Texts report(Home.Lines.begin(), Home.Lines.end());
    for (const std::string& line : report)
        EXPECT_EQ(line.find("DT.Par"), std::string::npos) << line;

    Home.Write("DT.Par", std::string("\x7f"
                                     "ELF\0\1\n\xff\xfe\0\0",
                                     11));
    EXPECT_EQ(LinesOf(RowAlongX()), lone) << "no text";
    Home.Write("DT.Par", "VERTICAL DRILL\tone\ttwo\tthree\tfour\r\n");
    EXPECT_EQ(LinesOf(RowAlongX()), lone) << "words";
}

TEST_F(OptimizedDrawing, ABoreThatNoDrillFitsIsDoubtedWithItsPlace)
{
    PutHead();
    EXPECT_EQ(LinesOf(Bore(100, 50, 12, "VBORE Z12 D12")), Texts{"G81G90G55P5T0100X100Y50Z12"});
    EXPECT_NE(Home.ReportText().find(
                  "the bore at X110 Y70 has the tool 00, no drill of the head is 12 mm wide"),
              std::string::npos)
        << Home.ReportText();
    EXPECT_EQ(LinesOf(Bore(100, 50, 8, "VBORE Z12")), Texts{"G81G90G55P5T0110X100Y50Z12"});
    EXPECT_EQ(Home.ReportText().find("tool 00"), std::string::npos) << Home.ReportText();
}

TEST_F(OptimizedDrawing, AHeadThatCannotBeReadFailsTheDrawing)
{
    const std::filesystem::path place = Home.Folder / "DT.Par";
    const std::string drawing = test::Drawing(test::Rectangle("BORDERZ18", 10, 20, 600, 400) + Bore(100, 50));
    Config.Optimizer = "1";
    std::filesystem::create_directory(place);
    EXPECT_FALSE(Home.Convert(drawing));
    EXPECT_NE(Home.ReportText().find("DT.Par: is a folder"), std::string::npos) << Home.ReportText();
    std::filesystem::remove(place);
    if (test::MakePipe(place)) {
        EXPECT_FALSE(Home.Convert(drawing));
        EXPECT_NE(Home.ReportText().find("DT.Par: is no regular file"), std::string::npos)
            << Home.ReportText();
    }
    EXPECT_FALSE(Home.HasProgram());
}

TEST_F(OptimizedDrawing, AHeadThatComesLaterIsUsedByTheNextDrawing)
{
    EXPECT_EQ(LinesOf(Bore(100, 50)), Texts{"G81G90G55P5T0100X100Y50Z12"});
    PutHead();
    EXPECT_EQ(LinesOf(Bore(100, 50)), Texts{"G81G90G55P5T0110X100Y50Z12"});
    std::filesystem::remove(Home.Folder / "DT.Par");
    EXPECT_EQ(LinesOf(Bore(100, 50)), Texts{"G81G90G55P5T0100X100Y50Z12"});
}

// The example installation's head.

TEST_F(OptimizedDrawing, TheExampleHeadHasRowsOfBothDirectionsAndEveryTool)
{
    std::filesystem::copy_file(std::filesystem::path(KORVANTI_SOURCE_DIR) / "examples/install/DT.Par",
                               Home.Folder / "DT.Par");
    for (const std::string& row : {RowAlongX(), RowAlongY()}) {
        std::string fives = row;
        for (std::size_t at = 0; (at = fives.find("VBORE Z12", at)) != std::string::npos; ++at)
            fives.replace(at, 9, "VBORE D5 Z12");
        const std::string line = LinesOf(fives).back();
        EXPECT_EQ(line.substr(0, 6), row == RowAlongX() ? "G183G9" : "G184G9") << line;
        EXPECT_EQ(line.find("T0100"), std::string::npos) << line;
    }
    int kinds[6] = {};
    for (std::size_t n = 1; n < DrillParameters.size(); ++n)
        ++kinds[DrillParameters[n].Kind];
    for (int kind = 1; kind <= 5; ++kind)
        EXPECT_GE(kinds[kind], 1) << kind;
}

} // namespace
} // namespace kv
