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
