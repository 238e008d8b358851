// Whole drawings whose bores go to the horizontal drilling machine: lines in plan, circles in the
// edges, and input that no machine can take.
#include <gtest/gtest.h>

#include "platform/paths.h"
#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv {
namespace {

using namespace test;
using Rows = std::vector<std::string>;

class HbdDrawings : public testing::Test {
  protected:
    void SetUp() override
    {
        std::filesystem::create_directories(Home.Folder / "hbd");
        Config.HBDDestinationPath = FromHostPath((Home.Folder / "hbd").string() + "/");
        Config.HBDVBoreLimit = "50";
        Config.MakeHBD = 1;
        SetHbdAvailable(true);
        Home.Write("KVHBD.cfg", "Horizontal\t8\t1\t0\r\nVertical\t5\t0\t0\r\nGroove\t4\t0\t0\r\n");
    }
    std::string Hbd(const std::string& name = "DOOR") const { return Home.Read(Home.Folder / "hbd" / name); }
    bool HasHbd(const std::string& name = "DOOR") const
    {
        return std::filesystem::exists(Home.Folder / "hbd" / name);
    }

    const std::string Panel = PanelSolid("PANEL", 200, 200, 600, 400, 18);
    const std::string LeftTees = Line("HBORE", 200, 300, 230, 300) + Line("HBORE Z9", 230, 296, 230, 304) +
                                 Line("HBORE", 200, 500, 230, 500) + Line("HBORE Z9DG", 230, 496, 230, 504);
    Scene Home;
};

TEST_F(HbdDrawings, TeesAtTheLeftEdgeWithTheBoresOfTheFaceBesideThem)
{
    // Seen from the left edge the panel is 400 long and 600 deep. The bore of the face at the right edge
    // is the image of the one at the left.
    const std::string drawing = Panel + LeftTees + Circle("VBORE D5Z13", 234, 300, 2.5) +
                                Circle("VBORE D5Z13", 766, 300, 2.5) + Circle("VBORE D8Z10", 400, 400, 4);
    ASSERT_TRUE(Home.Convert(Drawing(drawing))) << Home.ReportText();
    EXPECT_EQ(
        Hbd(),
        "TPA\\ALBATROS\\EDICAD\\00.00:1011:0;0\r\n$=KORVANTI DXF IMPORT\r\n\n::SIDE=1;5;\r"
        "\n::UNm DL=400 DH=600 DS=18\r\r\nVAR{\r\n}VAR\r\nOPTI{\r\n}OPTI\r\n"
        "SIDE#1{\r\n$=upper\r\n::LF=400 HF=600 SF=18\r\nW#82{ ::WTp\r\n"
        "#205=2 #1=100 #2=hf-34 #3=-13 #8015=0 #201=1 #1001=1 }W\r\n}SIDE\r\n"
        "SIDE#2{\r\n::LF=400 HF=600 SF=18\r\n}SIDE\r\n"
        "SIDE#3{\r\n::LF=400 HF=18 SF=600\r\n}SIDE\r\n"
        "SIDE#4{\r\n::LF=600 HF=18 SF=400\r\n}SIDE\r\n"
        "SIDE#5{\r\n$=Back\r\n::LF=400 HF=18 SF=600\r\n"
        "W#1501{ ::WT2\r\n#8020=100 #8021=9 #8022=-30 #8015=0 #1001=1 #1002=8 #8098=forspina.mcr #8117=1 "
        "#8132=1 #6=1 #8500=1\r\n#8501=0 #8502=0 #8525=1 #8526=1 #8530=1 #8531=1 #8532=0 }W\r\n"
        "W#1501{ ::WT2\r\n#8020=300 #8021=9 #8022=-30 #8015=0 #1001=1 #1002=8 #8098=forspina.mcr #8117=1 "
        "#8132=1 #6=1 #8500=1\r\n#8501=1 #8502=1 #8525=1 #8526=1 #8530=1 #8531=1 #8532=0 }W\r\n}SIDE\r\n"
        "SIDE#6{\r\n::LF=600 HF=18 SF=400\r\n}SIDE\r\n\r\n");
    EXPECT_EQ(Home.Program(), (Rows{"G71X600Y400Z18T00N4L1", "G150(KORVANTI DXF IMPORT)",
                                    "G81G90G55P5R54=8X200Y200Z10", "M2"}));
    EXPECT_TRUE(Home.Reported("Part name adapted to \"DOOR\" for HBD."));
}

TEST_F(HbdDrawings, WithTheBoxOffAllBoresStayInTheProgram)
{
    Config.MakeHBD = 0;
    ASSERT_TRUE(Home.Convert(Drawing(Panel + LeftTees))) << Home.ReportText();
    EXPECT_EQ(Home.Program(), (Rows{"G71X600Y400Z18T00N5L2", "G150(KORVANTI DXF IMPORT)",
                                    "G81G90G55P3R54=8X30Y100Z9", "G81G90G55P3R54=8X30Y300Z9", "M2"}));
    EXPECT_FALSE(HasHbd());
}

TEST_F(HbdDrawings, TheRightEdgeIsDrilledWhereSeveralHaveBores)
{
    const std::string drawing =
        Panel + LeftTees + Line("HBORE", 800, 300, 770, 300) + Line("HBORE Z9", 770, 296, 770, 304);
    ASSERT_TRUE(Home.Convert(Drawing(drawing))) << Home.ReportText();
    EXPECT_TRUE(Holds(Hbd(), "#8020=100 #8021=9 #8022=-30 "));
    EXPECT_FALSE(Holds(Hbd(), "#8020=300 "));
    EXPECT_EQ(Home.Program(), (Rows{"G71X600Y400Z18T00N5L2", "G150(KORVANTI DXF IMPORT)",
                                    "G81G90G55P3R54=8X30Y100Z9", "G81G90G55P3R54=8X30Y300Z9", "M2"}));
}

TEST_F(HbdDrawings, AllBoresToTheMachineLeaveNoProgram)
{
    ASSERT_TRUE(Home.Convert(Drawing(Panel + LeftTees))) << Home.ReportText();
    EXPECT_TRUE(HasHbd());
    EXPECT_FALSE(Home.HasProgram());
    EXPECT_TRUE(Home.Reported("No Selected Operations found for PTP")) << Home.ReportText();
}

TEST_F(HbdDrawings, ADrawingWithoutSuchBoresIsNotIndicated)
{
    ASSERT_TRUE(Home.Convert(Drawing(Panel + Circle("VBORE D5Z13", 400, 400, 2.5)))) << Home.ReportText();
    EXPECT_TRUE(Home.Reported("HBD not indicated for \"DOOR\"")) << Home.ReportText();
    EXPECT_FALSE(HasHbd());
    EXPECT_EQ(Home.Program().size(), 4U);
}

TEST_F(HbdDrawings, AFolderThatIsNotThereFailsTheDrawing)
{
    Config.HBDDestinationPath = FromHostPath((Home.Folder / "gone").string() + "/");
    EXPECT_FALSE(Home.Convert(Drawing(Panel + LeftTees)));
    EXPECT_TRUE(Home.Reported("Destination Path not Ready  " + ShownPath(Config.HBDDestinationPath + "DOOR")))
        << Home.ReportText();
    // The process is fit for the next drawing.
    Config.HBDDestinationPath = FromHostPath((Home.Folder / "hbd").string() + "/");
    EXPECT_TRUE(Home.Convert(Drawing(Panel + LeftTees)));
    EXPECT_TRUE(HasHbd());
}

TEST_F(HbdDrawings, AToolNumberThatNoMachineHasFailsTheJobWithOneLine)
{
    const std::string tool = "T010203040506";
    EXPECT_FALSE(Home.Convert(
        Drawing(Panel + Line("HBORE", 200, 300, 230, 300) + Line("HBORE Z9" + tool, 230, 296, 230, 304))));
    EXPECT_FALSE(HasHbd());
    ASSERT_EQ(Home.Lines.size(), 2U) << Home.ReportText();
    EXPECT_TRUE(Holds(Home.Lines[1], "DOOR.DXF: the number 10203040506 does not fit")) << Home.Lines[1];
    EXPECT_EQ(kv::Run.FailedFiles.size(), 2U);
    EXPECT_TRUE(Home.Convert(Drawing(Panel + LeftTees)));
}

TEST_F(HbdDrawings, MirroredToTheMachinesCornerTheBoresKeepTheirEdge)
{
    // The corner at the upper right: Y of a bore in the left edge counts from above, so the first one is
    // at 300; the bore of the face that is 34 from the right edge of the drawing is at X34 of the program.
    const std::string drawing =
        Rectangle("BORDER UR", 200, 200, 600, 400) + LeftTees + Circle("VBORE D5Z13", 766, 300, 2.5);
    ASSERT_TRUE(Home.Convert(Drawing(drawing))) << Home.ReportText();
    EXPECT_LT(Hbd().find("#8020=300 "), Hbd().find("#8020=100 ")) << Hbd();
    EXPECT_TRUE(Holds(Hbd(), "#1=300 #2=hf-34 ")) << Hbd();
}

TEST_F(HbdDrawings, FaceBoresOfTheUpperEdgeAreThoseAtY0)
{
    // From the upper left corner these stand at the upper edge; from the lower left one across the panel.
    const std::string tee = Line("HBORE", 300, 600, 300, 570) + Line("HBORE Z9", 296, 570, 304, 570);
    const std::string above = Circle("VBORE D5Z13", 500, 570, 2.5),
                      below = Circle("VBORE D5Z13", 500, 240, 2.5);
    ASSERT_TRUE(Home.Convert(Drawing(Rectangle("BORDER UL", 200, 200, 600, 400) + tee + above + below)));
    EXPECT_TRUE(Holds(Hbd(), "#1=300 #2=hf-30 "));
    EXPECT_FALSE(Holds(Hbd(), "#2=hf-40 "));
    ASSERT_TRUE(Home.Convert(Drawing(Rectangle("BORDER LL", 200, 200, 600, 400) + tee + above + below)));
    EXPECT_TRUE(Holds(Hbd(), "#1=300 #2=hf-40 "));
    EXPECT_FALSE(Holds(Hbd(), "#2=hf-30 "));
}

} // namespace
} // namespace kv
