// `korvanti draw`: pictures of programs and of drawings; nothing but the pictures is written.
#include "console/console_run.h"

namespace {

using namespace console_test;

struct DrawCall : Console {
    bool HasProgram() const { return fs::exists(Folder / "programs/SRG"); }
};

TEST_F(DrawCall, ADrawingIsConvertedInMemoryAndDrawn)
{
    const Ended ended = Run({"draw", "door.dxf", "-o", "door.svg"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    EXPECT_TRUE(Holds(ended.Output, "door.svg")) << ended.Output;
    const std::string svg = Contents(Folder / "door.svg");
    EXPECT_TRUE(Holds(svg, "Panel 600 x 400 x 18 mm, counted from the lower left corner")) << svg;
    EXPECT_TRUE(Holds(
        svg, "<title>Line 3: bore, diameter 8, 12 deep; from CIRCLE on VBORE_Z12F3000, line 50</title>"))
        << svg;
    EXPECT_FALSE(HasProgram());
}

TEST_F(DrawCall, TheDrawingLiesOverItsProgramAndWhatIsLeftOutIsMarked)
{
    Put(Folder / "door.dxf",
        BoredPanel("0\nELLIPSE\n5\n2F\n8\nVBORE_D8\n10\n50\n20\n50\n"
                   "0\nARC\n8\nVBORE_D35_Z13\n10\n300\n20\n200\n40\n17.5\n50\n0\n51\n180\n"
                   "0\nLINE\n8\nNOTES\n10\n300\n20\n200\n11\n400\n21\n200\n"
                   "0\nTEXT\n8\nNOTES\n10\n5\n20\n5\n1\nhello\n"));
    EXPECT_EQ(Run({"draw", "door.dxf", "-o", "door.svg"}).Status, 0);
    const std::string svg = Contents(Folder / "door.svg");
    EXPECT_TRUE(Holds(svg,
                      "<title>ELLIPSE on VBORE_D8, line 60, handle 2F: not machined as its layer asks</title>"
                      "<path class=\"left\""))
        << svg;
    EXPECT_TRUE(Holds(svg, "<title>ARC on VBORE_D35_Z13, line 70: not machined as its layer asks</title>"))
        << svg;
    EXPECT_TRUE(Holds(svg, "<title>CIRCLE on VBORE_Z12F3000, line 50</title><path class=\"drawn\"")) << svg;
    EXPECT_TRUE(Holds(svg, "<title>LINE on NOTES, line ")) << svg;
    EXPECT_FALSE(Holds(svg, "<title>TEXT on NOTES")) << svg;
}

TEST_F(DrawCall, EntitiesLieWhereTheirWorkLies)
{
    // The panel's corner is at (1000, 2000), all is drawn at half its size.
    Put(Folder / "half.dxf",
        "0\nSECTION\n2\nENTITIES\n0\nTEXT\n8\nINFO\n10\n0\n20\n9\n1\nPOST INSTRUCTIONS\n"
        "0\nTEXT\n8\nINFO\n10\n0\n20\n0\n1\nSCALE=2\n"
        "0\nPOLYLINE\n8\nBORDER_Z18\n66\n1\n70\n1\n"
        "0\nVERTEX\n8\nBORDER_Z18\n10\n500\n20\n1000\n0\nVERTEX\n8\nBORDER_Z18\n10\n800\n20\n1000\n"
        "0\nVERTEX\n8\nBORDER_Z18\n10\n800\n20\n1200\n0\nVERTEX\n8\nBORDER_Z18\n10\n500\n20\n1200\n"
        "0\nSEQEND\n8\nBORDER_Z18\n0\nPOINT\n8\nVBORE_D10_Z12\n10\n550\n20\n1050\n"
        "0\nCIRCLE\n8\nVBORE_Z12\n10\n600\n20\n1100\n40\n5\n0\nENDSEC\n0\nEOF\n");
    const Ended ended = Run({"draw", "half.dxf", "-o", "half.svg"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    const std::string svg = Contents(Folder / "half.svg");
    ASSERT_TRUE(Holds(svg, "Panel 600 x 400 x ")) << svg;
    // The circle's way begins at its right-hand point, the bore is a circle around its middle.
    const std::size_t way =
        svg.find("M", svg.find("class=\"drawn\"", svg.find("<title>CIRCLE on VBORE_Z12")));
    const std::size_t bore = svg.find("cx=\"", svg.find("diameter 20"));
    ASSERT_NE(bore, std::string::npos) << svg;
    EXPECT_NEAR(std::stod(svg.substr(way + 1)) - std::stod(svg.substr(bore + 4)), 10, 0.01) << svg;
}

// Its program does not name the edge: the bores lie where the drawing has them all the same.
TEST_F(DrawCall, TheHorizontalMachineIsDrawnAtTheEdgeThatItDrills)
{
    const fs::path examples = fs::path(KORVANTI_SOURCE_DIR) / "examples";
    for (const char* const table : {"KVHBD.cfg", "DT.Par", "EvHeader.dat"})
        fs::copy_file(examples / "install" / table, Folder / "home" / table);
    for (const auto& [name, edge] : {std::pair("bottom", "side 4"), std::pair("t_lines", "side 4")}) {
        fs::copy_file(examples / "drawings" / (std::string(name) + ".dxf"),
                      Folder / (std::string(name) + ".dxf"));
        const Ended ended = Run({"draw", std::string(name) + ".dxf", "-o", "edge.svg", "--set", "MakeHBD=1",
                                 "--set", "HBDDestinationPath=" + (Folder / "hbd").string() + "/"});
        EXPECT_EQ(ended.Status, 0) << ended.Errors;
        const std::string svg = Contents(Folder / "edge.svg");
        EXPECT_TRUE(Holds(svg, std::string("bore on ") + edge)) << name;
        EXPECT_FALSE(Holds(svg, "bore on side 1")) << name;
        EXPECT_TRUE(Holds(svg, "; from ")) << name;
    }
}

TEST_F(DrawCall, AProgramIsReadBack)
{
    ASSERT_EQ(Run({"convert", "door.dxf"}).Status, 0);
    const Ended ended = Run({"draw", "programs/SRG/D/OOR", "-o", "door.html"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    const std::string page = Contents(Folder / "door.html");
    EXPECT_TRUE(Holds(page, "<title>Line 3: bore, diameter 8, 12 deep</title>"));
    EXPECT_TRUE(Holds(page, "<span>G81G90F3000G55P5R54=8X100Y50Z12</span>"));
    EXPECT_FALSE(Holds(page, "<g class=\"drawing\">")) << "no drawing is known";
}

TEST_F(DrawCall, EachControlIsDrawn)
{
    for (const std::string system : {"cnc90", "genesis", "evolution"}) {
        const Ended ended =
            Run({"draw", "door.dxf", "-o", system + ".svg", "--system", system, "--set",
                 "DestinationPath90=", "--set", "DestinationPathGen=", "--set", "DestinationPathEV="});
        if (system == "evolution") { // which wants a template in the program's folder
            EXPECT_EQ(ended.Status, 1) << ended.Output;
            continue;
        }
        EXPECT_EQ(ended.Status, 0) << system << ended.Errors;
        EXPECT_TRUE(Holds(Contents(Folder / (system + ".svg")),
                          "bore, diameter 8, 12 deep; from CIRCLE on VBORE_Z12F3000, line 50</title>"))
            << system;
    }
}

TEST_F(DrawCall, DiametersComeFromTheTablesOfTheInstallation)
{
    Put(Folder / "A", "G71X600Y400Z18T00N4L1\r\nG81G90G55P5T0101X100Y50Z12\r\n"
                      "G88G90G55P5T0171X10Y10Z5\r\nG1G90X100Y10Z5\r\nM2\r\n");
    EXPECT_EQ(Run({"draw", "A", "-o", "a.svg"}).Status, 0);
    EXPECT_TRUE(Holds(Contents(Folder / "a.svg"), "bore, tool 0101, 12 deep"));
    Put(Folder / "home/DT.Par", "VERTICAL DRILL\t0\t0\t0\t5\r\n");
    Put(Folder / "home/Tools.cfg", "71 router diameter=16\r\n");
    EXPECT_EQ(Run({"draw", "A", "-o", "a.svg"}).Status, 0);
    EXPECT_TRUE(Holds(Contents(Folder / "a.svg"), "bore, tool 0101, diameter 5, 12 deep"));
    EXPECT_TRUE(Holds(Contents(Folder / "a.svg"), "route, tool 0171, diameter 16, 5 deep"));
    Put(Folder / "home/Tools.cfg", "71 router diameter=16\r\nlaser\r\n");
    const Ended ended = Run({"draw", "A", "-o", "a.svg"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: Tools.cfg, line 2: \"laser\" is no number of a tool"))
        << ended.Errors;
    EXPECT_TRUE(Holds(Contents(Folder / "a.svg"), "diameter 16")) << "the good line holds";
}

TEST_F(DrawCall, ALineThatIsNotUnderstoodIsNamedAndTheRestIsDrawn)
{
    Put(Folder / "A", "G71X600Y400Z18T00N4L1\r\nG4F2\x1B[31m\r\nG81G90G55P5R54=8X100Y50Z12\r\nM2\r\n");
    const Ended ended = Run({"draw", "A", "-o", "a.svg"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: A: line 2: G4F2?[31")) << ended.Errors;
    const std::string svg = Contents(Folder / "a.svg");
    EXPECT_TRUE(Holds(svg, "1 line is not understood and not drawn")) << svg;
    EXPECT_TRUE(Holds(svg, "bore, diameter 8, 12 deep"));
}

TEST_F(DrawCall, SeveralPicturesAreNumberedOrOnePage)
{
    Put(Folder / "shelf.dxf", BoredPanel());
    EXPECT_EQ(Run({"draw", "door.dxf", "shelf.dxf", "-o", "all.svg"}).Status, 0);
    EXPECT_TRUE(Holds(Contents(Folder / "all.svg"), "door.dxf"));
    EXPECT_TRUE(Holds(Contents(Folder / "all-2.svg"), "shelf.dxf"));
    EXPECT_EQ(Run({"draw", "door.dxf", "shelf.dxf", "-o", "all.HTML"}).Status, 0);
    const std::string page = Contents(Folder / "all.HTML");
    EXPECT_TRUE(Holds(page, "door.dxf") && Holds(page, "shelf.dxf"));
}

TEST_F(DrawCall, WhatCannotBeDrawnIsNamedAndTheRestIsDrawn)
{
    Put(Folder / "iso", "%\nO0001\nG90 G54\n");
    const Ended ended = Run({"draw", "nowhere", "nowhere.dxf", "iso", "door.dxf", "-o", "a.html"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: nowhere: ")) << ended.Errors;
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: nowhere.dxf: failed")) << ended.Errors;
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: iso: line 1: no program of a known control")) << ended.Errors;
    EXPECT_TRUE(Holds(Contents(Folder / "a.html"), "bore, diameter 8, 12 deep"));
}

TEST_F(DrawCall, APictureThatCannotBeWrittenIsNamed)
{
    const Ended ended = Run({"draw", "door.dxf", "-o", "nowhere/a.svg"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: nowhere/a.svg: ")) << ended.Errors;
}

const char* const FirstOfTwo = "G71X600Y400Z18T00N4L1\r\nG81G90F3000G55P5R54=8X100Y50Z12\r\n"
                               "G81G90F3000G55P5R54=8X200Y50Z12\r\nM2\r\n";
const char* const SecondOfTwo = "G71X600Y400Z18T00N4L1\r\nG81G90F2000G55P5R54=8X200Y50Z12\r\n"
                                "G88G90G55P5T0171G41R5X10Y10Z5\r\nG1G90F5000X300Y10Z5\r\nM2\r\n";

TEST_F(DrawCall, TwoProgramsLieOverEachOther)
{
    Put(Folder / "A.cnc", FirstOfTwo);
    Put(Folder / "B.cnc", SecondOfTwo);
    const Ended ended = Run({"draw", "A.cnc", "B.cnc", "--over", "-o", "both.svg"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    EXPECT_TRUE(Holds(ended.Output, "only in A.cnc: 1 bore")) << ended.Output;
    EXPECT_TRUE(Holds(ended.Output, "only in B.cnc: 1 route")) << ended.Output;
    const std::string svg = Contents(Folder / "both.svg");
    EXPECT_TRUE(Holds(svg, "<title>only in A.cnc: Line 2: bore, diameter 8, 12 deep</title>")) << svg;
    EXPECT_TRUE(Holds(svg, "<title>Line 3: bore, diameter 8, 12 deep</title>")) << svg;
    EXPECT_TRUE(Holds(svg, "<title>only in B.cnc: Lines 3 to 4: route, tool 0171")) << svg;
    EXPECT_TRUE(Holds(svg, "red, dashed: only in B.cnc: 1 route")) << svg;
    EXPECT_FALSE(fs::exists(Folder / "both-2.svg"));
    EXPECT_EQ(Run({"draw", "A.cnc", "B.cnc", "--over", "-o", "both.html"}).Status, 0);
    EXPECT_TRUE(Holds(Contents(Folder / "both.html"), "only in B.cnc: route, tool 0171"));
}

TEST_F(DrawCall, AProgramOverItsDrawingIsTheSameUntilItIsEdited)
{
    ASSERT_EQ(Run({"convert", "door.dxf"}).Status, 0);
    Ended ended = Run({"draw", "programs/SRG/D/OOR", "door.dxf", "--over", "-o", "both.svg"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    EXPECT_TRUE(Holds(ended.Output, "only in programs/SRG/D/OOR: nothing")) << ended.Output;
    EXPECT_TRUE(Holds(ended.Output, "only in door.dxf: OOR: nothing")) << ended.Output;
    std::string edited = Contents(Folder / "programs/SRG/D/OOR");
    edited.replace(edited.find("Z12"), 3, "Z13");
    Put(Folder / "edited", edited);
    ended = Run({"draw", "edited", "door.dxf", "--over", "-o", "both.svg"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    EXPECT_TRUE(Holds(ended.Output, "only in edited: 1 bore")) << ended.Output;
}

TEST_F(DrawCall, WhatCannotLieOverEachOtherIsSaid)
{
    Put(Folder / "A.cnc", FirstOfTwo);
    Put(Folder / "C.cnc", "G71X601Y400Z18T00N4L1\r\nM2\r\n");
    Ended ended = Run({"draw", "A.cnc", "C.cnc", "--over", "-o", "both.svg"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Errors,
                      "korvanti: the programs are of different panels: A.cnc: 600 x 400 x 18 mm, "
                      "C.cnc: 601 x 400 x 18 mm"))
        << ended.Errors;
    EXPECT_FALSE(fs::exists(Folder / "both.svg"));
    ended = Run({"draw", "A.cnc", "nowhere", "--over", "-o", "both.svg"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: nowhere: ")) << ended.Errors;
    EXPECT_FALSE(fs::exists(Folder / "both.svg"));
    ended = Run({"draw", "A.cnc", "--over", "-o", "both.svg"});
    EXPECT_EQ(ended.Status, 2);
    EXPECT_TRUE(Holds(ended.Errors, "--over takes two programs or drawings, not 1")) << ended.Errors;
}

TEST_F(DrawCall, WrongUsage)
{
    EXPECT_EQ(Run({"draw"}).Status, 2);
    EXPECT_EQ(Run({"draw", "door.dxf"}).Status, 2);
    const Ended ended = Run({"draw", "door.dxf", "-o", "door.png"});
    EXPECT_EQ(ended.Status, 2);
    EXPECT_TRUE(Holds(ended.Errors, "-o of draw is FILE.svg or FILE.html, not \"door.png\"")) << ended.Errors;
    EXPECT_EQ(Run({"draw", "door.dxf", "-o", "a.svg", "--edge", "5"}).Status, 2);
    EXPECT_EQ(Run({"draw", "door.dxf", "-o", "a.svg", "--origin", "XX"}).Status, 2);
    EXPECT_TRUE(Holds(Run({"draw", "--help"}).Output, "Tools.cfg"));
}

} // namespace
