// Bores and grooves as lines of a Genesis Evolution program.
#include "writers/evolution/evolution_scene.h"

namespace kv {
namespace {

class EvolutionOperations : public EvolutionScene {
  protected:
    static VBoreRecord& OneBore()
    {
        VBores.Clear();
        VBoreRecord bore;
        bore.X = 100;
        bore.Y = 50;
        bore.Depth = 12;
        bore.Group = 3;
        return VBores.Append(bore);
    }
    static HBoreRecord& OneHBore(Long side, std::string_view tool = "")
    {
        HBores.Clear();
        HBoreRecord bore;
        bore.Side = side;
        bore.PosX = 50;
        bore.PosY = 9;
        bore.Z = 30;
        bore.Group = 4;
        bore.Tool = tool;
        return HBores.Append(bore);
    }
    static GroovePass& OneGroove(PlanePoint from, PlanePoint to)
    {
        GroovePasses.Clear();
        GroovePass groove;
        groove.X1 = ToSingle(from.X);
        groove.Y1 = ToSingle(from.Y);
        groove.X2 = ToSingle(to.X);
        groove.Y2 = ToSingle(to.Y);
        groove.Depth = 8;
        return GroovePasses.Append(groove);
    }
    // The only line of the program's sides.
    std::string Line(int side = 1)
    {
        const Texts lines = WrittenSide(side);
        EXPECT_EQ(lines.size(), 1U);
        return lines.empty() ? std::string() : lines[0];
    }
    static void Substitute(const std::string& tool, const std::string& by)
    {
        Config.ToolSubData.push_back({"1", tool, by});
    }
};

TEST_F(EvolutionOperations, ABoreWithoutItsOptionalWords)
{
    OneBore();
    EXPECT_EQ(Line(), "W#81{ ::WTp WS=1 #1=100 #2=50 #3=-12 #8015=0 #201=1 #203=3 }W");
}

TEST_F(EvolutionOperations, ABoreWithAllItsWords)
{
    VBoreRecord& bore = OneBore();
    bore.PeckDepth = 5;
    bore.Tool = "0712";
    bore.Bottom = 2;
    bore.Diameter = .5F;
    bore.Feed = 3000.5F;
    bore.Speed = 6000;
    EXPECT_EQ(Line(), "W#85{ ::WTp WS=1 #1=100 #2=50 #3=-12 #9520=5 #8015=0 #201=1 #203=3 #205=7 #1001=2 "
                      "#1002=0.5 #2005=3000.5 #2002=6000 }W");
}

TEST_F(EvolutionOperations, EachOptionalWordOfABoreStandsAlone)
{
    const std::string front = "W#81{ ::WTp WS=1 #1=100 #2=50 #3=-12 #8015=0 #201=1 #203=3 ";
    OneBore().Tool = "99";
    EXPECT_EQ(Line(), front + "#205=99 }W");
    OneBore().Bottom = 5;
    EXPECT_EQ(Line(), front + "#1001=5 }W");
    OneBore().Diameter = 35;
    EXPECT_EQ(Line(), front + "#1002=35 }W");
    OneBore().Feed = .004F; // rounds to nothing, but is not nothing
    EXPECT_EQ(Line(), front + "#2005=0 }W");
    OneBore().Speed = 4500;
    EXPECT_EQ(Line(), front + "#2002=4500 }W");
    OneBore().PeckDepth = 2.5F; // halves to even
    EXPECT_EQ(Line(), "W#85{ ::WTp WS=1 #1=100 #2=50 #3=-12 #9520=2 #8015=0 #201=1 #203=3 }W");
}

TEST_F(EvolutionOperations, CoordinatesTakeTheDrawingsDecimals)
{
    VBoreRecord& bore = OneBore();
    bore.X = 10.126F;
    bore.Y = -.5F;
    bore.Depth = .25F;
    bore.Diameter = 8.128F; // plain
    EXPECT_EQ(Line(), "W#81{ ::WTp WS=1 #1=10.13 #2=-.5 #3=-.25 #8015=0 #201=1 #203=3 #1002=8.128 }W");
}

TEST_F(EvolutionOperations, ADepthOfTwoHundredAndMoreNamesAVariable)
{
    const std::pair<Single, std::string> depths[] = {
        {205, "#3=R5"}, {200, "#3=R0"}, {199.99F, "#3=-199.99"}, {212, "#3=R12"}, {200.5F, "#3=R.5"},
        {0, "#3=0"},    {-3, "#3=3"},   {97, "#3=-97"},
    };
    for (const auto& [depth, word] : depths) {
        OneBore().Depth = depth;
        EXPECT_EQ(Line(), "W#81{ ::WTp WS=1 #1=100 #2=50 " + word + " #8015=0 #201=1 #203=3 }W");
    }
}

TEST_F(EvolutionOperations, ABoresToolIsItsFirstTwoCharacters)
{
    OneBore().Tool = "1213";
    EXPECT_NE(Line().find("#205=12 "), std::string::npos);
    OneBore().Tool = "00";
    EXPECT_EQ(Line().find("#205"), std::string::npos);
    OneBore().Tool = "7";
    EXPECT_NE(Line().find("#205=7 "), std::string::npos);
}

TEST_F(EvolutionOperations, ToolsAreSubstitutedAndPlain)
{
    Substitute("12", "205");
    Substitute("13", "0");
    OneBore().Tool = "12";
    EXPECT_NE(Line().find("#205=205 "), std::string::npos);
    OneBore().Tool = "13";
    EXPECT_EQ(Line().find("#205"), std::string::npos);
}

TEST_F(EvolutionOperations, ABoreInAnEdgeStandsOnItsSide)
{
    const int sides[] = {5, 3, 6, 4};
    for (Long side = 1; side <= 4; ++side) {
        OneHBore(side);
        const std::string place = side <= 2 ? "#1=50 #2=30 #3=-9" : "#1=9 #2=30 #3=-50";
        EXPECT_EQ(Line(sides[side - 1]), "W#81{ ::WTp WS=1 " + place + " #8015=0 #201=1 #203=4 }W") << side;
    }
}

TEST_F(EvolutionOperations, ABoreInAnEdgeWithAllItsWords)
{
    HBoreRecord& bore = OneHBore(2, "99");
    bore.Bottom = 4;
    bore.Diameter = .5F;
    bore.Feed = 1500;
    bore.Speed = 4000;
    EXPECT_EQ(Line(3), "W#81{ ::WTp WS=1 #1=50 #2=30 #3=-9 #8015=0 #201=1 #203=4 #205=99 #1001=4 "
                       "#1002=0.5 #2005=1500 #2002=4000 }W");
}

TEST_F(EvolutionOperations, EachOptionalWordOfABoreInAnEdgeStandsAlone)
{
    const std::string front = "W#81{ ::WTp WS=1 #1=50 #2=30 #3=-9 #8015=0 #201=1 #203=4 ";
    OneHBore(2, "7");
    EXPECT_EQ(Line(3), front + "#205=7 }W");
    OneHBore(2).Bottom = 1;
    EXPECT_EQ(Line(3), front + "#1001=1 }W");
    OneHBore(2).Diameter = 8;
    EXPECT_EQ(Line(3), front + "#1002=8 }W");
    OneHBore(2).Feed = 1500;
    EXPECT_EQ(Line(3), front + "#2005=1500 }W");
    OneHBore(2).Speed = 4000;
    EXPECT_EQ(Line(3), front + "#2002=4000 }W");
}

// A depth code of a bore in an edge is a length like any other.
TEST_F(EvolutionOperations, TheDepthOfABoreInAnEdgeIsNeverAVariable)
{
    OneHBore(1).Z = 205;
    EXPECT_EQ(Line(5), "W#81{ ::WTp WS=1 #1=50 #2=205 #3=-9 #8015=0 #201=1 #203=4 }W");
}

TEST_F(EvolutionOperations, FromToolOneHundredABoreInAnEdgeIsRouted)
{
    HBoreRecord& bore = OneHBore(3, "100");
    bore.Bottom = 4; // not named
    bore.Diameter = 12;
    bore.Speed = 18000;
    EXPECT_EQ(Line(6), "W#89{ ::WTs WS=1 #1=9 #2=30 #3=-50 #8015=0 #8101=0 #8096=0 #201=1 #203=4 #205=100 "
                       "#1002=12 #2002=18000 }W");
}

TEST_F(EvolutionOperations, TheFormOfABoreInAnEdgeGoesByTheNumberBeforeSubstitution)
{
    Substitute("7", "150");
    Substitute("150", "0");
    OneHBore(1, "7");
    EXPECT_EQ(Line(5), "W#81{ ::WTp WS=1 #1=50 #2=30 #3=-9 #8015=0 #201=1 #203=4 #205=150 }W");
    OneHBore(1, "150");
    EXPECT_EQ(Line(5), "W#89{ ::WTs WS=1 #1=50 #2=30 #3=-9 #8015=0 #8101=0 #8096=0 #201=1 #203=4 }W");
}

// The number behind that of the last vertical bore picks the edge bore that gives the group.
TEST_F(EvolutionOperations, ARoutedEdgeBoreNamesTheGroupOfTheBoreBehindTheVerticalOnes)
{
    for (Int group = 1; group <= 3; ++group) {
        AddHBore(1);
        HBores[group].Group = group;
        HBores[group].Tool = "150";
        HBores[group].Diameter = 0;
    }
    const auto groups = [this] {
        std::string found;
        for (const std::string& line : WrittenSide(5))
            found += line.substr(line.find("#203=") + 5, 1);
        return found;
    };
    EXPECT_EQ(groups(), "111");
    AddBore();
    EXPECT_EQ(groups(), "222");
    AddBore();
    EXPECT_EQ(groups(), "333");
    AddBore();
    EXPECT_EQ(groups(), "000") << "there is no fourth";
    Config.EvVBore = false;
    EXPECT_EQ(groups(), "000");
}

TEST_F(EvolutionOperations, ARoutedEdgeBoreNamesTheFeedOfTheLastVerticalBore)
{
    AddBore();
    VBores[1].Feed = 1000;
    AddBore();
    VBores[2].Feed = 2000;
    AddBore();
    VBores[3].Feed = 3000;
    VBores[3].Group = 0; // made elsewhere
    OneHBore(1, "150").Feed = 7777;
    EXPECT_EQ(Line(5), "W#89{ ::WTs WS=1 #1=50 #2=30 #3=-9 #8015=0 #8101=0 #8096=0 #201=1 #203=0 #205=150 "
                       "#2005=2000 }W");
    NextDrawing("DOOR"); // a drawing without vertical bores keeps the feed
    OneHBore(1, "150");
    EXPECT_NE(Line(5).find("#2005=2000 "), std::string::npos);
    OneBore(); // one without a feed takes it away
    EXPECT_EQ(Line(5).find("#2005"), std::string::npos);
}

TEST_F(EvolutionOperations, AGrooveAlongX)
{
    OneGroove({10, 20}, {590.5, 20});
    EXPECT_EQ(Line(), "W#1050{ ::WT2 WS=1 #8098=lame.tmcr #8509=0 #8510=10 #8511=20 #8512=-8 #8517=590.5 "
                      "#8525=0 #8525=0 #8526=0 #8527=0 }W");
}

TEST_F(EvolutionOperations, AGrooveAlongYWithAllItsWords)
{
    GroovePass& groove = OneGroove({10, 390}, {15, 20});
    groove.ToolNumber = 60;
    groove.GrooveSide = 1;
    groove.Feed = 4000;
    EXPECT_EQ(Line(), "W#1051{ ::WT2 WS=1 #8098=lame.tmcr #8509=1 #8510=10 #8511=390 #8512=-8 #8516=60 "
                      "#8518=20 #8525=2 #8523=4000 #8525=0 #8526=0 #8527=0 }W");
}

TEST_F(EvolutionOperations, AGrooveOfEqualExtentsRunsAlongX)
{
    OneGroove({0, 100}, {100, 0});
    EXPECT_EQ(Line().substr(0, 7), "W#1050{");
    OneGroove({0, 100.5}, {100, 0});
    EXPECT_EQ(Line().substr(0, 7), "W#1051{");
}

TEST_F(EvolutionOperations, TheSideOfAGrooveIsACode)
{
    const std::pair<Int, std::string> sides[] = {{1, "2"}, {-1, "1"}, {0, "0"}, {2, "2"}, {-2, "2"}};
    for (const auto& [side, code] : sides) {
        OneGroove({10, 20}, {590, 20}).GrooveSide = side;
        EXPECT_NE(Line().find("#8517=590 #8525=" + code + " #8525=0 "), std::string::npos) << side;
    }
}

TEST_F(EvolutionOperations, TheToolOfAGrooveIsNeverSubstituted)
{
    Substitute("60", "7");
    OneGroove({10, 20}, {590, 20}).ToolNumber = 60;
    EXPECT_NE(Line().find("#8516=60 "), std::string::npos);
    OneGroove({10, 20}, {590, 20}).ToolNumber = 123456789; // whole, whatever its size
    EXPECT_NE(Line().find("#8516=123456789 "), std::string::npos);
}

TEST_F(EvolutionOperations, TheDepthOfAGrooveIsNeverAVariable)
{
    OneGroove({10, 20}, {590, 20}).Depth = 205;
    EXPECT_NE(Line().find("#8512=-205 "), std::string::npos);
}

TEST_F(EvolutionOperations, AGrooveLiesOnTheFaceBehindBoresInEdges)
{
    OneHBore(2);
    OneGroove({10, 20}, {590, 20});
    EXPECT_EQ(WrittenSide(1).size(), 1U);
    EXPECT_EQ(WrittenSide(3).size(), 1U);
}

} // namespace
} // namespace kv
