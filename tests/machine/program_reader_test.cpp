// Programs of any family by their text alone, as the disk or a person's editor gives them.
#include "machine/program_reader.h"

#include <gtest/gtest.h>

#include <random>

namespace kv::test {
namespace {

using Texts = std::vector<std::string>;

const std::string Cnc = "G71X600Y400Z18T00N6L3\r\nG150(DOOR)\r\nG81G90G55P5R54=8X100Y50Z12\r\n"
                        "G88G90F2000G55P5T01a3S18000G41R6X10Y20Z5\r\nG1G90F5000X110Y20Z5\r\nM2\r\n";
const std::string Evolution = "::UNm DL=600 DH=400 DS=18\nVARV{\n}VARV\nSIDE#1{\n"
                              "W#81{ ::WTp WS=1 #1=100 #2=50 #3=-12 #1002=8 }W\n}SIDE\n";
const std::string Hbd = "::UNm DL=600 DH=400 DS=18\nVAR{\n}VAR\nSIDE#1{\n$=upper\n}SIDE\nSIDE#5{\n$=Back\n"
                        "W#1501{ ::WT2\n#8020=50 #8021=9 #8022=-30 #1002=8 #8530=1 }W\n}SIDE\n";

void ExpectTheCncProgram(const MachineSteps& steps)
{
    EXPECT_EQ(steps.Unread, Texts{});
    EXPECT_EQ(steps.Length, 600);
    ASSERT_EQ(steps.Bores.size(), 1U);
    EXPECT_EQ(steps.Bores[0].At.X, 100);
    EXPECT_EQ(steps.Bores[0].Diameter, 8);
    EXPECT_EQ(steps.Bores[0].Line, 3U);
    ASSERT_EQ(steps.Cuts.size(), 1U);
    EXPECT_EQ(steps.Cuts[0].Tool, "01a3");
    EXPECT_EQ(steps.Cuts[0].Side, 1);
    ASSERT_EQ(steps.Cuts[0].Moves.size(), 1U);
    EXPECT_EQ(steps.Cuts[0].Moves[0].Feed, 5000);
    EXPECT_EQ(steps.Cuts[0].Moves[0].To.X, 110);
}

TEST(ReadPrograms, KnowTheirFamilies)
{
    EXPECT_EQ(FamilyOf(Cnc), ProgramFamily::Cnc);
    EXPECT_EQ(FamilyOf(Evolution), ProgramFamily::Evolution);
    EXPECT_EQ(FamilyOf(Hbd), ProgramFamily::Hbd);
    ExpectTheCncProgram(ReadProgram(Cnc));
    ASSERT_EQ(ReadProgram(Evolution).Bores.size(), 1U);
    EXPECT_EQ(ReadProgram(Evolution).Bores[0].Depth, 12);
    ProgramFacts facts;
    facts.HbdEdge = Plane::Edge2;
    const MachineSteps drilled = ReadProgram(Hbd, facts);
    EXPECT_EQ(drilled.Unread, Texts{});
    ASSERT_EQ(drilled.Bores.size(), 1U);
    EXPECT_EQ(drilled.Bores[0].On, Plane::Edge2);
}

TEST(ReadPrograms, ThatAPersonHasEdited)
{
    std::string small = Cnc;
    for (char& c : small)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    ExpectTheCncProgram(ReadProgram(small));
    ExpectTheCncProgram(ReadProgram("\xEF\xBB\xBF" + Cnc));
    std::string blanks = "  " + Cnc;
    blanks.replace(blanks.find("\nG88"), 4, "\n\t G88");
    blanks.replace(blanks.find("Z5\r"), 3, "Z5. \t\r");
    ExpectTheCncProgram(ReadProgram(blanks));
    std::string ends = Cnc;
    std::erase(ends, '\r');
    ends.resize(ends.size() - 3); // M2 and the last line's end
    ExpectTheCncProgram(ReadProgram(ends));
}

TEST(ReadPrograms, AnUnknownLineIsNamedAndTheRestIsRead)
{
    std::string odd = Cnc;
    odd.insert(odd.find("G88"), "G4F2\r\n");
    const MachineSteps steps = ReadProgram(odd);
    EXPECT_EQ(steps.Unread, Texts{"4: G4F2"});
    EXPECT_EQ(steps.UnreadCount, 1U);
    EXPECT_EQ(steps.Bores.size(), 1U);
    EXPECT_EQ(steps.Cuts.size(), 1U);
}

TEST(ReadPrograms, OfOtherMakersAreNone)
{
    for (const std::string& text :
         {std::string(), std::string("\n"), std::string("%\nO0001\nG90 G54\nG0 X0 Y0\nM30\n"),
          std::string("IN;SP1;PU0,0;PD100,0;"), std::string("0\nSECTION\n2\nENTITIES\n"),
          std::string(5000, '\0'), std::string("\x89PNG\r\n\x1A\n"),
          std::string("<?xml version=\"1.0\"?><a/>")}) {
        const MachineSteps steps = ReadProgram(text);
        EXPECT_EQ(FamilyOf(text), ProgramFamily::Unknown) << text;
        EXPECT_EQ(steps.UnreadCount, 1U) << text;
        EXPECT_TRUE(steps.Bores.empty() && steps.Cuts.empty()) << text;
    }
}

TEST(ReadPrograms, ThatAreCutOffAreReadAsFarAsTheyGo)
{
    for (const std::string* const whole : {&Cnc, &Evolution, &Hbd})
        for (std::size_t length = 0; length < whole->size(); ++length)
            ReadProgram(whole->substr(0, length));
    EXPECT_EQ(ReadProgram(Cnc.substr(0, Cnc.find("G88"))).Bores.size(), 1U);
}

TEST(ReadPrograms, NumbersBeyondReasonAreNotUnderstood)
{
    for (const std::string& number :
         Texts{"--5", "1.2.3", std::string(400, '9'), "0x10", "1,5", "", ".", "1-2"}) {
        std::string odd = Cnc;
        odd.replace(odd.find("X100"), 4, "X" + number);
        EXPECT_GE(ReadProgram(odd).UnreadCount, 1U) << number;
    }
}

const std::string CncStart = "G71X600Y400Z18T00N6L3\nG150(DOOR)\n";

void ExpectTheBore(const MachineSteps& steps, double x, double y, double depth)
{
    EXPECT_EQ(steps.Unread, Texts{});
    ASSERT_EQ(steps.Bores.size(), 1U);
    EXPECT_EQ(steps.Bores[0].At.X, x);
    EXPECT_EQ(steps.Bores[0].At.Y, y);
    EXPECT_EQ(steps.Bores[0].Depth, depth);
}

TEST(ReadPrograms, PowersOfTenAreNoNumbers)
{
    for (const std::string place : {"X1e300Y50", "X1E300Y50", "X1.5e2Y50", "X1Y50E2", "X1e2 Y50"}) {
        const std::string line = "G81G90G55P5R54=8" + place + "Z12";
        const MachineSteps steps = ReadProgram(CncStart + line + "\n");
        EXPECT_EQ(steps.Unread, Texts{"3: " + line});
        EXPECT_TRUE(steps.Bores.empty()) << place;
    }
    ExpectTheBore(ReadProgram(CncStart + "G81G90E2F3000G55P5R54=8X1Y50Z12\n"), 1, 50, 12);
    ExpectTheBore(ReadProgram(CncStart + "G81 G90 G55 P5 R54=8 X1 Y50 Z12 E2\n"), 1, 50, 12);
}

TEST(ReadPrograms, PlacesThatNoMachineReachesAreNotUnderstood)
{
    for (const std::string& x :
         {std::string(40, '9'), std::string(300, '9'), std::string("10000001"), std::string("-10000001")}) {
        EXPECT_TRUE(ReadProgram(CncStart + "G81G90G55P5R54=8X" + x + "Y50Z12\n").Bores.empty()) << x;
        EXPECT_TRUE(ReadProgram(CncStart + "G183G90G55P5T010102X1Y50Z12I" + x + "\n").Rows.empty()) << x;
        std::string sides = Evolution;
        sides.replace(sides.find("#1=100"), 6, "#1=" + x);
        EXPECT_TRUE(ReadProgram(sides).Bores.empty()) << x;
        EXPECT_EQ(ReadProgram(sides).UnreadCount, 1U) << x;
    }
    ExpectTheBore(ReadProgram(CncStart + "G81G90G55P5R54=8X1." + std::string(40, '0') + "Y50Z12\n"), 1, 50,
                  12);
}

// The centre of an arc that is all but straight is far away, as programs have it.
TEST(ReadPrograms, CentresMayBeFarAway)
{
    const MachineSteps steps =
        ReadProgram(CncStart + "G88G90G55P5T0171X100Y50Z5\nG38G90X200Y50U20000000Z5\n");
    EXPECT_EQ(steps.Unread, Texts{});
    ASSERT_EQ(steps.Cuts.size(), 1U);
    ASSERT_EQ(steps.Cuts[0].Moves.size(), 1U);
    EXPECT_NEAR(steps.Cuts[0].Moves[0].Centre.X, 150, 1e-3);
    EXPECT_NEAR(steps.Cuts[0].Moves[0].Centre.Y, 20000050, 1e-3);
    EXPECT_EQ(
        ReadProgram(CncStart + "G88G90G55P5T0171X100Y50Z5\nG38G90X200Y50U" + std::string(40, '9') + "Z5\n")
            .UnreadCount,
        1U);
}

// The end of such an arc is as far away as its centre, as its angle has three decimals.
TEST(ReadPrograms, AnArcThatEndsBeyondAllPlacesIsNotUnderstood)
{
    const auto arc = [](const std::string& centre) {
        return ReadProgram("::UNm DL=600 DH=400 DS=18\nSIDE#1{\nW#89{ #1=0 #2=0 #3=-5 #36=3 #40=1 }W\n"
                           "W#2113{ #3=-5 #31=0 #32=" +
                           centre + " #34=1 #8044=0 }W\n}SIDE\n");
    };
    EXPECT_EQ(arc("1000000").Unread, Texts{});
    EXPECT_EQ(arc("1000000").Cuts.at(0).Moves.at(0).To.X, 1000000);
    EXPECT_EQ(arc("100000000000000").UnreadCount, 1U);
    EXPECT_TRUE(arc("100000000000000").Cuts.at(0).Moves.empty());
}

TEST(ReadPrograms, TheLetterOfAToolMayBeACapital)
{
    for (const std::string line : {"G81G90G55P5T01a5X1Y50Z12", "G81G90G55P5T01A5X1Y50Z12",
                                   "g81g90g55p5t01a5x1y50z12", "G81 G90 G55 P5 T 01A5 X1 Y50 Z12"}) {
        const MachineSteps steps = ReadProgram(CncStart + line + "\n");
        ExpectTheBore(steps, 1, 50, 12);
        EXPECT_EQ(steps.Bores.at(0).Tool, "01a5") << line;
    }
    // The flags of a header and a side after a tool without a number are words of their own.
    EXPECT_EQ(ReadProgram("G71X600Y400Z18T12F8N6L3\n" + CncStart.substr(CncStart.find("G150"))).Unread,
              Texts{});
    const MachineSteps side = ReadProgram(CncStart + "g88g90g55p5t01g41r5x1y2z3\n");
    EXPECT_EQ(side.Unread, Texts{});
    ASSERT_EQ(side.Cuts.size(), 1U);
    EXPECT_EQ(side.Cuts[0].Side, 1);
}

TEST(ReadPrograms, ToolsBeyond200HaveTheirWord)
{
    const MachineSteps steps = ReadProgram(CncStart + "G88G90G55P5T0205M66X1Y2Z3\n");
    EXPECT_EQ(steps.Unread, Texts{});
    ASSERT_EQ(steps.Cuts.size(), 1U);
    EXPECT_EQ(steps.Cuts[0].Tool, "0205M66");
}

TEST(ReadPrograms, BlanksSignsAndZerosThatChangeNothing)
{
    for (const std::string line :
         {"G81 G90 G55 P5 R54=8 X100 Y50 Z12", "G81\tG90\tG55P5 R 54 = 8 X 100 Y 50 Z 12",
          "G81G90G55P5R54=8X+100Y+50Z+12", "G081G90G055P05R54=08X0100Y050Z012",
          "  G81G90G55P5R54=8X100.Y50.0Z12.000\t", "G90G81G55P5R54=8X100Y50Z12"})
        ExpectTheBore(ReadProgram(CncStart + line + "\n"), 100, 50, 12);
    const MachineSteps moves =
        ReadProgram(CncStart + "G88G90G55P5T0171X10Y20Z5\nG01 G90 X110 Y20 Z5\nG03G90G17X110Y40I0J10\nM02\n");
    EXPECT_EQ(moves.Unread, Texts{});
    ASSERT_EQ(moves.Cuts.at(0).Moves.size(), 2U);
    EXPECT_EQ(moves.Cuts[0].Moves[1].Centre.Y, 30);
}

TEST(ReadPrograms, ABlankWithinANumberMayBeALetterThatIsMissing)
{
    for (const std::string line :
         {"G81G90G55P5R54=8X100 50Z12", "G8 1G90G55P5R54=8X100Y50Z12", "G81G90G55P5R54=8X1 00Y50Z12",
          "G81G90G55P5T01 03X100Y50Z12", "G81G90G55P5R54=8X- 100Y50Z12"}) {
        const MachineSteps steps = ReadProgram(CncStart + line + "\n");
        EXPECT_EQ(steps.Unread, Texts{"3: " + line});
        EXPECT_TRUE(steps.Bores.empty());
    }
}

TEST(ReadPrograms, CodesThatChangeTheMeaningOfALineAreNotPassedOver)
{
    for (const std::string word :
         {"G91", "G20", "G1", "M30", "M2", "G41G42", "G55", "T0102", "R54=5", "Z=a"}) {
        const std::string line = "G81G90G55P5R54=8T0101X100Y50Z12" + word;
        EXPECT_EQ(ReadProgram(CncStart + line + "\n").Unread, Texts{"3: " + line});
    }
}

// Their places would be joined to the end of the route before.
TEST(ReadPrograms, MovesAfterAStartThatIsNotUnderstoodBelongToNoRoute)
{
    const MachineSteps steps = ReadProgram(CncStart + "G88G90G55P5T0171X10Y20Z5\nG1G90X110Y20Z5\n"
                                                      "G88G90G55P5T0171X1,5Y20Z5\nG1G90X300Y300Z5\n");
    EXPECT_EQ(steps.Unread, (Texts{"5: G88G90G55P5T0171X1,5Y20Z5", "6: G1G90X300Y300Z5"}));
    ASSERT_EQ(steps.Cuts.size(), 1U);
    EXPECT_EQ(steps.Cuts[0].Moves.size(), 1U);
    std::string sides = "::UNm DL=600 DH=400 DS=18\nSIDE#1{\n"
                        "W#89{ #1=10 #2=20 #3=-5 #36=3 #40=1 }W\nW#2201{ #1=110 #2=20 #3=-5 }W\n"
                        "W#89{ #1=1,5 #2=20 #3=-5 #36=3 #40=1 }W\nW#2201{ #1=300 #2=300 #3=-5 }W\n}SIDE\n";
    for (const std::string start : {"#1=1,5 #2=20 #3=-5 #36=3 #40=1 }W", "#1=1 #2=20 #3=-5 #36=3 #40=1"}) {
        sides.replace(sides.rfind("W#89{ ") + 6, sides.rfind("\nW#2201") - sides.rfind("W#89{ ") - 6, start);
        const MachineSteps steps2 = ReadProgram(sides);
        EXPECT_EQ(steps2.UnreadCount, 2U) << start;
        ASSERT_EQ(steps2.Cuts.size(), 1U);
        EXPECT_EQ(steps2.Cuts[0].Moves.size(), 1U);
    }
}

TEST(ReadPrograms, LinesMayEndAsOnAnySystem)
{
    for (const std::string end : {"\n", "\r\n", "\r", "\r\r\n"})
        for (const std::string* const whole : {&Cnc, &Evolution, &Hbd}) {
            std::string text;
            for (const char c : *whole)
                text += c == '\r' ? "" : c == '\n' ? end : std::string(1, c);
            const MachineSteps steps = ReadProgram(text);
            EXPECT_EQ(FamilyOf(text), FamilyOf(*whole));
            EXPECT_EQ(steps.Unread, Texts{});
            ASSERT_EQ(steps.Bores.size(), 1U);
            EXPECT_EQ(steps.Bores[0].Line, ReadProgram(*whole).Bores.at(0).Line);
        }
    ExpectTheBore(ReadProgram("G71X600Y400Z18T00N6L3\r\rG81G90G55P5R54=8X1Y50Z12\r"), 1, 50, 12);
}

TEST(ReadPrograms, CommentsAndEmptyLinesMayStandAheadOfTheHeader)
{
    for (const std::string ahead : {"\n", "\r\n \t\r\n", "* by hand\n", "- by hand\n\n* G71\n", "\r"}) {
        EXPECT_EQ(FamilyOf(ahead + Cnc), ProgramFamily::Cnc);
        const MachineSteps steps = ReadProgram(ahead + Cnc);
        EXPECT_EQ(steps.Unread, Texts{}) << ahead;
        EXPECT_EQ(steps.Length, 600);
        ASSERT_EQ(steps.Cuts.size(), 1U);
        EXPECT_EQ(ReadProgram(ahead + Evolution).Bores.size(), 1U);
    }
    EXPECT_EQ(ReadProgram("G71X600Y400Z18T00N6L3\n* oak only\n\ng150 (Door)\nM2\n").Unread, Texts{});
    // A name is a line of its own place alone.
    EXPECT_EQ(ReadProgram(CncStart + "G150(DOOR)\n").Unread, Texts{"3: G150(DOOR)"});
}

TEST(ReadPrograms, SmallLettersAndBlanksOfProgramsBySides)
{
    const std::string texts[] = {
        "tpa\n$=Door\n::unm dl = 600 dh= 400 ds =18\nvar {\n#5 = 12 | 12\n} var\nside #1 {\n"
        "w#81 { ::wtp #1 = 100 #2= 50\t#3 =r5 #1002=8 } w\n} side\n",
        "::UNm DL=600 DH=400 DS=18\nSIDE#1{\nW#81{\n#1\t=\t100\n\n#2=50 #3= -12. #1002=8}W\n}SIDE\n",
        "::UNm DL=600 DH=400 DS=18\nSIDE#1{\nW#81{ #1=+100 #2=050 #3=-12 #1002=8 }\n}SIDE\n"};
    for (const std::string& text : texts) {
        EXPECT_EQ(FamilyOf(text), ProgramFamily::Evolution);
        ExpectTheBore(ReadProgram(text), 100, 50, 12);
        EXPECT_EQ(ReadProgram(text).Bores.at(0).Diameter, 8);
        EXPECT_EQ(ReadProgram(text).Width, 400);
    }
    // A word without a value stays without, whatever follows it.
    const MachineSteps cut = ReadProgram("::UNm DL=600 DH=400 DS=18\nSIDE#1{\n"
                                         "W#89{ #1=10 #2=20 #3=-5 #36=3 #40= #205=71 }W\n"
                                         "w#2113{ #3= -5 #31= A;10 #32=a; 40 #34=1 #8044=0 }w\n}SIDE\n");
    ASSERT_EQ(cut.Cuts.size(), 1U);
    EXPECT_EQ(cut.Cuts[0].Side, 0);
    EXPECT_EQ(cut.Cuts[0].Tool, "71");
    EXPECT_EQ(cut.UnreadCount, 1U) << "\"a; 40\" is two words";
    EXPECT_EQ(ReadProgram("::UNi DL=60 DH=40 DS=.75\nSIDE#1{\n}SIDE\n").Length, 1524);
    EXPECT_EQ(ReadProgram("::uni dl=60 dh=40 ds=.75\nside#1{\n}side\n").Length, 1524);
}

TEST(ReadPrograms, OperationsOfOneLineAreAllRead)
{
    const std::string bore = "W#81{ #1=100 #2=50 #3=-12 }W ";
    const MachineSteps steps =
        ReadProgram("::UNm DL=600 DH=400 DS=18\nSIDE#1{\n" + bore + bore + bore + "}SIDE\n");
    EXPECT_EQ(steps.Unread, Texts{});
    EXPECT_EQ(steps.Bores.size(), 3U);
}

TEST(ReadPrograms, SidesOfOneLineAreKeptApart)
{
    const std::string size = "::UNm DL=600 DH=400 DS=18\n", bore = "W#81{ #1=100 #2=5 #3=-12 }W";
    const MachineSteps steps = ReadProgram(size + "SIDE#1{ " + bore + " }SIDE SIDE#3{\n" + bore +
                                           "\n} SIDE side #4 {" + bore + "}SIDE\n");
    EXPECT_EQ(steps.Unread, Texts{});
    ASSERT_EQ(steps.Bores.size(), 3U);
    EXPECT_EQ(steps.Bores[0].On, Plane::Surface);
    EXPECT_EQ(steps.Bores[1].On, Plane::Edge2);
    EXPECT_EQ(steps.Bores[2].On, Plane::Edge4);
    // A side that is not closed ends where the next one begins.
    const MachineSteps open = ReadProgram(size + "SIDE#1{\nSIDE#3{\n" + bore + "\n}SIDE\n");
    EXPECT_EQ(open.Unread, Texts{});
    EXPECT_EQ(open.Bores.at(0).On, Plane::Edge2);
}

TEST(ReadPrograms, AnOperationThatIsNotClosedEndsWhereTheNextOneBegins)
{
    const std::string start = "::UNm DL=600 DH=400 DS=18\nSIDE#1{\n", bore = "W#81{ #1=100 #2=50 #3=-12";
    const MachineSteps steps = ReadProgram(start + bore + "\n" + bore + " }W\n" + bore + "\n}SIDE\n");
    EXPECT_EQ(steps.Bores.size(), 1U);
    EXPECT_EQ(steps.Unread, (Texts{"3: W#81{  #1=100 #2=50 #3=-12", "5: W#81{  #1=100 #2=50 #3=-12"}));
    EXPECT_EQ(ReadProgram(start + bore + " }SIDE\n").UnreadCount, 1U);
}

TEST(ReadPrograms, OperationsOnNoSideAreNotPassedOver)
{
    const std::string bore = "W#81{ #1=100 #2=50 #3=-12 }W\n", size = "::UNm DL=600 DH=400 DS=18\n";
    EXPECT_EQ(ReadProgram(size + bore + "SIDE#1{\n}SIDE\n").Unread, Texts{"2: W#81{ #1=100 #2=50 #3=-12 }W"});
    EXPECT_EQ(ReadProgram(size + "SIDE#1{\n}SIDE\n" + bore).UnreadCount, 1U);
    EXPECT_EQ(ReadProgram(size + "SIDE#x{\n" + bore + "SIDE#1{\n}SIDE\n").UnreadCount, 2U);
    EXPECT_EQ(ReadProgram(size + "OPTI{\n::0\nSIDE#1{\n" + bore + "}SIDE\n").Bores.size(), 1U)
        << "a section that nobody closed";
    EXPECT_EQ(ReadProgram("::UNm DL=600 DH=400 DS=18\nSIDE#1{\nW#81{ #1=1 #2=2 #3=-3 #1002=8,5 }W\n}SIDE\n")
                  .UnreadCount,
              1U)
        << "a diameter that is no number";
}

TEST(ReadPrograms, PortionsOfOnePanelAreReadAsOne)
{
    const std::string first = "G81G90G55P5R54=8X100Y50Z12\nG88G90G55P5T0171X10Y20Z5\n",
                      second = "G81G90G55P5R54=8X200Y60Z7\n";
    for (const std::string end : {"M2\n", ""})
        for (const std::string& header : {CncStart, std::string("g71 x600 y400 z18.0\n")}) {
            const MachineSteps steps = ReadProgram(CncStart + first + end + header + second + "M2\n");
            EXPECT_EQ(steps.Unread, Texts{});
            EXPECT_EQ(steps.Length, 600);
            ASSERT_EQ(steps.Bores.size(), 2U);
            EXPECT_EQ(steps.Bores[1].At.X, 200);
            EXPECT_EQ(steps.Bores[1].Depth, 7);
        }
    // A route ends with its portion.
    EXPECT_EQ(ReadProgram(CncStart + first + CncStart + "G1G90X9Y9Z5\n").Unread, Texts{"7: G1G90X9Y9Z5"});
}

TEST(ReadPrograms, AFurtherPanelIsNamedAndNotDrawnOnTheFirst)
{
    const std::string bore = "G81G90G55P5R54=8X100Y50Z12\n";
    for (const std::string end : {"M2\n", ""}) {
        const MachineSteps steps =
            ReadProgram(CncStart + bore + end + "G71X500Y400Z18T00N6L3\nG150(OTHER)\n" + bore + "M2\n");
        EXPECT_EQ(steps.Bores.size(), 1U);
        EXPECT_EQ(steps.Length, 600);
        ASSERT_EQ(steps.Unread.size(), 3U);
        EXPECT_EQ(steps.Unread[0].substr(3), "G71X500Y400Z18T00N6L3");
    }
    EXPECT_EQ(ReadProgram(CncStart + bore + "G71X500Y400Z18\n" + bore + CncStart + bore).Bores.size(), 2U)
        << "the first panel goes on";
    // The code alone is no panel: a drawing may hold it as machine code.
    EXPECT_EQ(ReadProgram(CncStart + "G71\n" + bore).Bores.size(), 1U);
    const MachineSteps sides = ReadProgram(Evolution + Evolution);
    EXPECT_EQ(sides.Bores.size(), 1U);
    EXPECT_EQ(sides.UnreadCount, 6U);
    EXPECT_EQ(sides.Unread.at(0), "7: ::UNm DL=600 DH=400 DS=18");
}

TEST(ReadPrograms, TheCodeOfAUnitIsNoHeaderByItself)
{
    for (const std::string text :
         {"G71\nG0X1Y2Z3\nG1Z-3F500\nM30\n", "G71 G90 G17\nG0 X0 Y0 Z5\n", "G71G0X1Y2Z3\nM30\n",
          "G71X1Y2\nG1X3\n", "G710X1Y2Z3\n", "N10 G71\nN20 G0 X600 Y400 Z18\n", "G70\n", "G71"}) {
        EXPECT_EQ(FamilyOf(text), ProgramFamily::Unknown) << text;
        EXPECT_EQ(ReadProgram(text).Unread, Texts{"1: no program of a known control"});
    }
    // A header that was spoilt by hand is one by the name after it, or by its words.
    EXPECT_EQ(FamilyOf("G71X6oo\nG150(A)\n"), ProgramFamily::Cnc);
    EXPECT_EQ(ReadProgram("G71X6oo\nG150(A)\nM2\n").Unread, Texts{"1: G71X6oo"});
    EXPECT_EQ(ReadProgram("G71X600,5Y400Z18\nM2\n").Unread, Texts{"1: G71X600,5Y400Z18"});
    EXPECT_EQ(ReadProgram("G71X600,5Y400Z18\nM2\n").Width, 400);
    EXPECT_EQ(FamilyOf("g070 x30 y20 z.75\n"), ProgramFamily::Cnc);
}

TEST(ReadPrograms, TheHorizontalMachineIsKnownByItsSidesInAnyLetters)
{
    for (const std::string name : {"$=upper", "$=Upper", "$=UPPER", "$ = upper", "::LF=600 HF=400 SF=18"}) {
        std::string text = Hbd;
        text.replace(text.find("$=upper"), 7, name);
        EXPECT_EQ(FamilyOf(text), ProgramFamily::Hbd) << name;
        EXPECT_EQ(ReadProgram(text).Bores.size(), 1U);
        EXPECT_EQ(ReadProgram(text).Unread, Texts{});
    }
    const std::string head = "$=upper\n";
    EXPECT_EQ(FamilyOf(head + Evolution), ProgramFamily::Evolution) << "a panel may have such a name";
    std::string face = Hbd;
    face.replace(face.find("$=upper\n"), 8, "$=Upper\nW#82{\n#205=2 #1=100 #2=HF-34 #3=-13 }W\n");
    ASSERT_EQ(ReadProgram(face).Bores.size(), 2U);
    EXPECT_EQ(ReadProgram(face).Bores[0].At.Y, 34);
    EXPECT_EQ(ReadProgram(face).Bores[0].Depth, 13);
}

TEST(ReadPrograms, LongLinesAreNotUnderstood)
{
    const std::string blanks(4100, ' ');
    const MachineSteps steps = ReadProgram(CncStart + "G81G90G55P5R54=8X100" + blanks + "Y50Z12\n* " +
                                           blanks + "*\n" + "G81G90G55P5R54=8X1Y50Z12\n");
    EXPECT_EQ(steps.UnreadCount, 1U);
    EXPECT_EQ(steps.Bores.size(), 1U);
    EXPECT_LT(steps.Unread.at(0).size(), 4200U);
    const MachineSteps header =
        ReadProgram("G71X600Y400Z18" + blanks + "N6\nG150(A)\nG81G90G55P5R54=8X1Y2Z3\n");
    EXPECT_EQ(header.UnreadCount, 1U) << "the lines after it are no header";
    EXPECT_EQ(header.Bores.size(), 1U);
    const std::string bore = "W#81{ #1=100 #2=50 #3=-12 }W";
    const MachineSteps sides = ReadProgram("::UNm DL=600 DH=400 DS=18\nSIDE#1{\n" + bore + blanks + bore +
                                           "\n" + bore + "\n}SIDE\n");
    EXPECT_EQ(sides.UnreadCount, 1U);
    EXPECT_EQ(sides.Bores.size(), 1U);
    // Neither is an operation of many lines.
    std::string open = "::UNm DL=600 DH=400 DS=18\nSIDE#1{\nW#81{\n";
    for (int i = 0; i < 5000; ++i)
        open += "#1=5\n";
    const MachineSteps many = ReadProgram(open + "#2=5 #3=-1 }W\n" + bore + "\n}SIDE\n");
    EXPECT_GT(many.UnreadCount, 1000U);
    EXPECT_EQ(many.Unread.size(), 1000U);
    EXPECT_EQ(many.Bores.size(), 1U);
}

TEST(ReadPrograms, AMillionStepsAreReadAndTheRestIsNamed)
{
    const auto text = [](const std::string& head, const std::string& line, std::size_t count) {
        std::string all = head;
        for (std::size_t i = 0; i < count; ++i)
            all += line;
        return all;
    };
    const std::string bore = "G81G90G55P5R54=8X100Y50Z12\n", last = "M2\n";
    EXPECT_EQ(ReadProgram(text(CncStart, bore, 1000000) + last).Unread, Texts{});
    const MachineSteps bores = ReadProgram(text(CncStart + "G4F2\n", bore, 1000002) + last);
    EXPECT_EQ(bores.Bores.size(), 1000000U);
    const std::string rest = "1000004: the program has more than 1000000 steps, the rest is not read";
    EXPECT_EQ(bores.Unread, (Texts{rest, "3: G4F2"}));
    EXPECT_EQ(bores.UnreadCount, 2U);
    const MachineSteps moves =
        ReadProgram(text(CncStart + "G88G90G55P5T0171X1Y2Z3\n", "G1G90X3Y2Z3\n", 1000000) + last);
    ASSERT_EQ(moves.Cuts.size(), 1U);
    EXPECT_EQ(moves.Cuts[0].Moves.size(), 999999U);
    EXPECT_EQ(moves.UnreadCount, 1U);
    const MachineSteps sides =
        ReadProgram(text("::UNm DL=600 DH=400 DS=18\nSIDE#1{\n", "W#81{#1=1 #2=2 #3=-3}W\n", 1000001));
    EXPECT_EQ(sides.Bores.size(), 1000000U);
    EXPECT_EQ(sides.Unread, Texts{"1000003: the program has more than 1000000 steps, the rest is not read"});
}

TEST(ReadPrograms, UnknownLinesAreCountedAndKeptToALimit)
{
    std::string text = "G71X600Y400Z18T00N6L3\n";
    for (int line = 0; line < 5000; ++line)
        text += "G4F2\n";
    const MachineSteps steps = ReadProgram(text);
    EXPECT_EQ(steps.UnreadCount, 5000U);
    EXPECT_EQ(steps.Unread.size(), 1000U);
}

TEST(ReadPrograms, WithChangedBytesNeverFail)
{
    std::mt19937 random(7);
    for (int round = 0; round < 6000; ++round) {
        std::string text = round % 3 == 0 ? Cnc : round % 3 == 1 ? Evolution : Hbd;
        for (int change = 0; change < 1 + round % 4; ++change) {
            const std::size_t at = random() % text.size();
            if (random() % 3 == 0)
                text.erase(at, 1 + random() % 5);
            else
                text[at] = static_cast<char>(random() % 256);
            if (text.empty())
                break;
        }
        const MachineSteps steps = ReadProgram(text);
        EXPECT_LE(steps.Bores.size(), 2U);
    }
}

} // namespace
} // namespace kv::test
