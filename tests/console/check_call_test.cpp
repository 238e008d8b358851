// `korvanti check` and `convert --check`: programs that are read back and held against their drawings.
#include "console/console_run.h"

namespace {

using namespace console_test;

struct CheckCall : Console {
    bool HasNoProgram() const { return !fs::exists(Folder / "programs/SRG"); }
    // The program of the door with a word of it replaced.
    void PutEdited(const std::string& word, const std::string& by)
    {
        ASSERT_EQ(Run({"convert", "door.dxf"}).Status, 0);
        std::string text = Contents(Folder / "programs/SRG/D/OOR");
        const std::size_t at = text.find(word);
        ASSERT_NE(at, std::string::npos) << text;
        text.replace(at, word.size(), by);
        Put(Folder / "edited.prg", text);
    }
};

TEST_F(CheckCall, ASoundProgramIsProvedAndNothingIsWritten)
{
    const Ended ended = Run({"check", "door.dxf", "--strict"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    EXPECT_TRUE(Holds(ended.Output, "door.dxf")) << ended.Output;
    EXPECT_TRUE(Holds(ended.Output, "Proved: 1 bores, 0 grooves, 0 contours, 0 pockets; nothing else is cut"))
        << ended.Output;
    EXPECT_TRUE(HasNoProgram());
}

TEST_F(CheckCall, AnEditedProgramIsHeldAgainstTheDrawing)
{
    PutEdited("Z12", "Z13");
    const Ended ended = Run({"check", "door.dxf", "--program", "edited.prg"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    EXPECT_TRUE(Holds(ended.Output, "edited.prg, line 3: bore at X100 Y50 on the face: diameter 8, 13 deep "
                                    "instead of diameter 8, 12 deep"))
        << ended.Output;
    EXPECT_FALSE(Holds(ended.Output, "Proved:")) << ended.Output;
    EXPECT_EQ(Run({"check", "door.dxf", "--program", "edited.prg", "--strict"}).Status, 1);
}

TEST_F(CheckCall, AProgramIsJudgedInItselfToo)
{
    Put(Folder / "home/Tools.cfg", "71 router diameter=10 depth=20\r\n");
    PutEdited("X100Y50Z12", "X100Y50Z12\r\nG88G90G55P5T0172R54=10X100Y500Z8\r\nG1G90X300Y500Z8\r\n"
                            "G88G90G55P5T0171X100Y200Z22\r\nG1G90F3000X300Y200Z22");
    const Ended ended = Run({"check", "door.dxf", "--program", "edited.prg"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    for (const char* const line :
         {"edited.prg, line 5: the tool works beside the panel at X300 Y500 on the face\n",
          "edited.prg, line 4: the tool 0172 is in no table\n",
          "edited.prg, line 4: the route names no feed\n",
          "edited.prg, line 6: 22 deep with the tool 0171, whose largest depth is 20\n"})
        EXPECT_TRUE(Holds(ended.Output, line)) << line << ended.Output;
    const Ended json = Run({"check", "door.dxf", "--program", "edited.prg", "--report", "json"});
    for (const char* const name : {"off the panel", "unknown tool", "short tool", "no feed"})
        EXPECT_TRUE(Holds(json.Output, "\"finding\": \"" + std::string(name) + "\"")) << json.Output;
}

TEST_F(CheckCall, MovesThatNoControlCouldDoAreNamed)
{
    PutEdited("X100Y50Z12", "X100Y50Z12\r\nG88G90G55P5T0171R54=10X100Y200Z8\r\n"
                            "G3G90G17F3000X200Y210I50J0\r\nG0G90X300Y300Z8\r\n"
                            "G88G90G55P5T0171R54=10X100Y300Z-4\r\nG1G90F3000X300Y300Z-4");
    const Ended ended = Run({"check", "door.dxf", "--program", "edited.prg"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    for (const char* const line :
         {"edited.prg, line 5: the arc to X200 Y210 on the face and its centre disagree by 0.99 mm\n",
          "edited.prg, line 6: a rapid to X300 Y300 on the face through the wood, 8 deep\n",
          "edited.prg, line 7: the route from X100 Y300 on the face stays above the wood\n"})
        EXPECT_TRUE(Holds(ended.Output, line)) << line << ended.Output;
    EXPECT_FALSE(Holds(ended.Output, "not understood")) << ended.Output;
    const Ended json = Run({"check", "door.dxf", "--program", "edited.prg", "--report", "json"});
    for (const char* const name : {"arc astray", "rapid at depth", "in the air"})
        EXPECT_TRUE(Holds(json.Output, "\"finding\": \"" + std::string(name) + "\"")) << json.Output;
}

TEST_F(CheckCall, TheToleranceIsChosen)
{
    PutEdited("X100", "X100.3");
    EXPECT_EQ(Run({"check", "door.dxf", "--program", "edited.prg", "--strict"}).Status, 1);
    EXPECT_EQ(Run({"check", "door.dxf", "--program", "edited.prg", "--strict", "--tolerance", "0.5"}).Status,
              0);
    EXPECT_EQ(Run({"check", "door.dxf", "--tolerance", "0"}).Status, 2);
}

TEST_F(CheckCall, TheDocumentHasEachFindingWithItsPlace)
{
    PutEdited("X100Y50Z12", "X100Y50Z12\r\nG81G90G55P5R54=5X200Y60Z9\r\nG4F2");
    const Ended ended = Run({"check", "door.dxf", "--program", "edited.prg", "--report", "json"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    for (const char* const text :
         {"\"checked\": true", "\"finding\": \"other bore\"", "\"x\": 200.0", "\"y\": 60.0", "\"depth\": 9.0",
          "\"line\": 4", "\"what\": \"diameter 5, 9 deep, nobody drew it\"",
          "\"finding\": \"line not understood\"", "\"bores\": 1", "\"notProved\": []"})
        EXPECT_TRUE(Holds(ended.Output, text)) << text << "\n" << ended.Output;
}

TEST_F(CheckCall, ConvertWithCheckReportsAndWritesTheProgram)
{
    const Ended ended = Run({"convert", "door.dxf", "--check"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    EXPECT_TRUE(Holds(ended.Output, "Proved: 1 bores")) << ended.Output;
    EXPECT_FALSE(HasNoProgram());
    EXPECT_FALSE(Holds(Run({"convert", "door.dxf"}).Output, "Proved")) << "it is asked for";
    EXPECT_TRUE(Holds(Run({"convert", "door.dxf", "--set", "Check=Yes"}).Output, "Proved"));
    EXPECT_TRUE(Holds(Run({"convert", "door.dxf", "--set", "Check=maybe"}).Output, "is neither yes nor no"));
}

TEST_F(CheckCall, TheProcessesOfAListCheckToo)
{
    Put(Folder / "second.dxf", Contents(Folder / "door.dxf"));
    const Ended ended = Run({"convert", "door.dxf", "second.dxf", "--check", "--jobs", "2"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    const std::size_t first = ended.Output.find("Proved: 1 bores");
    ASSERT_NE(first, std::string::npos) << ended.Output;
    EXPECT_NE(ended.Output.find("Proved: 1 bores", first + 1), std::string::npos) << ended.Output;
}

TEST_F(CheckCall, EachControlIsChecked)
{
    for (const std::string system : {"cnc90", "genesis", "evolution"}) {
        const Ended ended = Run({"check", "door.dxf", "--strict", "--system", system, "--set",
                                 "DestinationPathGen=" + (Folder / "programs").string(), "--set",
                                 "DestinationPathEV=" + (Folder / "programs").string()});
        EXPECT_TRUE(Holds(ended.Output, "Proved: 1 bores") || ended.Status == 1) << system << ended.Output;
    }
}

TEST_F(CheckCall, ADepthThatTheMachineKnowsIsNotProved)
{
    Put(Folder / "code.dxf", BoredPanel("0\nCIRCLE\n8\nVBORE_ZA_D8\n10\n300\n20\n200\n40\n4\n"));
    const Ended ended = Run({"check", "code.dxf"});
    EXPECT_TRUE(
        Holds(ended.Output, "Layer VBORE_ZA_D8: CIRCLE is not proved: its depth is a code of the machine"))
        << ended.Output;
}

TEST_F(CheckCall, BadInputIsOneLineEach)
{
    Ended ended = Run({"check", "missing.dxf"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Output, "NOT FOUND")) << ended.Output;
    ended = Run({"check", "door.dxf", "--program", "missing.prg"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: missing.prg: ")) << ended.Errors;
    Put(Folder / "noise.prg", std::string("\x00\xff\x80 not a program\n", 18));
    ended = Run({"check", "door.dxf", "--program", "noise.prg"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    EXPECT_TRUE(Holds(ended.Output, "no program of a known control: not understood")) << ended.Output;
    EXPECT_TRUE(Holds(ended.Output, "is in no program")) << ended.Output;
    EXPECT_EQ(Run({"check", "door.dxf", "door.dxf", "--program", "noise.prg"}).Status, 2);
    EXPECT_EQ(Run({"check"}).Status, 2);
}

} // namespace
