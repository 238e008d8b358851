// What a drawing takes over from the one before it: reported under CarryOver=kept, nothing under clean.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "platform/clock.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"
#include "writers/program_writers.h"

namespace kv::test {
namespace {

class CarryOver : public testing::Test {
  protected:
    static constexpr Int Evolution = 2;
    static constexpr std::string_view Head = "Taken over from an earlier drawing: ";
    static inline const std::string Bore = Circle("VBORE Z12", 110, 70, 4);
    // A bore in the upper edge, drawn as a T.
    static std::string EdgeBore(const std::string& codes)
    {
        return Line("HBORE", 300, 420, 300, 390) + Line("HBORE Z9" + codes, 296, 390, 304, 390);
    }
    Scene Home;

    static std::string Bordered(const std::string& flags, const std::string& more = Bore)
    {
        return Drawing(Rectangle("BORDER" + flags, 10, 20, 600, 400) + more);
    }
    // A panel given by its solid has no BORDER layer, so its drawing says nothing of what the flags set.
    static std::string Panel(const std::string& more = Bore)
    {
        return Drawing(PanelSolid("PANEL", 10, 20, 600, 400, 18) + more);
    }

    CarryOver()
    {
        Clock.TodayMmDdYy = [] { return std::string("07/04/26"); };
        Clock.SecondsSinceMidnight = [] { return 1000.0; };
        Config.ToolSubData.assign(ToolSubstitutionRows, {"0", "0", "0"});
        Home.Write("EvHeader.dat", "A\rB\rC\rD\rE\rOPTI{\rF\rG\rH\rI\rJ\rK\rL\rM\rN\rO\rP\r");
    }

    struct Made {
        std::vector<std::string> Lines;
        std::string Program, Record;
    };
    Made Convert(const std::string& drawing, const std::string& name)
    {
        kv::Run.ControlType = System;
        EXPECT_TRUE(Home.Convert(drawing, name + ".DXF")) << Home.ReportText();
        Made made;
        made.Lines = Home.Lines;
        const auto program = System == Evolution ? Home.Programs / (name + ".CNC")
                                                 : Home.Programs / "SRG" / name.substr(0, 1) / name.substr(1);
        if (std::filesystem::exists(program))
            made.Program = Home.Read(program);
        const std::string index = Home.Read(Home.Programs / "INDICE.PRG");
        for (std::size_t at = 0; at + 82 <= index.size(); at += 82)
            if (Trim(index.substr(at, 12)) == name)
                made.Record = index.substr(at, 82);
        return made;
    }
    static std::string TakenLine(const Made& made)
    {
        std::string line;
        for (const std::string& row : made.Lines)
            if (BeginsWith(row, Head))
                line += (line.empty() ? "" : " | ") + row.substr(Head.size());
        return line;
    }

    // Kept: the second drawing takes over what `line` says, and comes out otherwise than alone. Clean: it
    // comes out as alone, line by line. Alone it says nothing.
    void ExpectTakenOver(const std::string& first, const std::string& second, const std::string& line)
    {
        const Settings settings = Config;
        Restart(settings, "kept");
        const Made alone = Convert(second, "SECOND");
        EXPECT_EQ(TakenLine(alone), "");
        Restart(settings, "kept");
        Convert(first, "FIRST");
        const Made kept = Convert(second, "SECOND");
        EXPECT_EQ(TakenLine(kept), line) << Home.ReportText();
        Restart(settings, "Clean ");
        Convert(first, "FIRST");
        const Made clean = Convert(second, "SECOND");
        EXPECT_EQ(clean.Program, alone.Program);
        EXPECT_EQ(clean.Record, alone.Record);
        EXPECT_EQ(clean.Lines, alone.Lines);
        EXPECT_TRUE(kept.Program != alone.Program || kept.Record != alone.Record ||
                    kept.Lines.size() > alone.Lines.size() + 1)
            << "the line must have a reason";
    }
    void Restart(const Settings& settings, const std::string& carryOver)
    {
        std::filesystem::remove_all(Home.Programs / "SRG");
        std::filesystem::remove(Home.Programs / "SECOND.CNC");
        std::ofstream(Home.Programs / "INDICE.PRG", std::ios::trunc).close();
        kv::Run = RunBlock{};
        ResetWriters();
        Config = settings;
        Config.CarryOver = carryOver;
    }

    Int System = 0;
};

TEST_F(CarryOver, TheOutfit)
{
    ExpectTakenOver(Bordered("OF7"), Panel(), "outfit 7");
}

TEST_F(CarryOver, TheOutfitOfItsOwnFlagIsNotTakenOver)
{
    Convert(Bordered("OF7"), "FIRST");
    EXPECT_EQ(TakenLine(Convert(Bordered("OF7"), "SECOND")), "");
    EXPECT_EQ(TakenLine(Convert(Bordered(""), "THIRD")), "");
}

TEST_F(CarryOver, TheSequence)
{
    kv::Run.CncOff = False;
    const std::string both = Bore + Line("ROUTE Z5T71", 50, 50, 300, 50);
    // Its writer did not run, so the sequence was not used up.
    const Settings settings = Config;
    for (const std::string carryOver : {"kept", "clean"}) {
        Restart(settings, carryOver);
        kv::Run.CncOff = True;
        Convert(Bordered("SQRHGV", both), "FIRST");
        kv::Run.CncOff = False;
        const Made second = Convert(Panel(both), "SECOND");
        EXPECT_EQ(TakenLine(second), carryOver == "kept" ? "sequence RHGV" : "");
        EXPECT_EQ(second.Program.find("G88") < second.Program.find("G81"), carryOver == "kept");
    }
}

TEST_F(CarryOver, TheInstructionLayerWhoseTextsAreObeyed)
{
    const std::string title =
        Drawing(Instructions({"DESCR=ASH"}, "INFO") + Rectangle("BORDER", 10, 20, 600, 400) + Bore);
    const std::string noTitle =
        Drawing(Rectangle("BORDER", 10, 20, 600, 400) + TextAt("INFO", 0, 0, "DESCR=OAK") + Bore);
    ExpectTakenOver(title, noTitle, "instruction layer INFO");
}

TEST_F(CarryOver, AnInstructionLayerWithoutTextsIsNotTakenOver)
{
    Convert(Drawing(Instructions({"FLAG=1"}, "INFO") + Rectangle("BORDER", 10, 20, 600, 400) + Bore),
            "FIRST");
    EXPECT_EQ(TakenLine(Convert(Bordered(""), "SECOND")), "");
}

TEST_F(CarryOver, TheLastToolOfARouteThatNamesNone)
{
    ExpectTakenOver(Bordered("", Line("ROUTE Z5T71", 50, 50, 300, 50)),
                    Bordered("", Line("ROUTE Z5", 50, 50, 300, 50)), "tool T0171");
}

TEST_F(CarryOver, TheFlagsOfWrittenWorkOfADrawingWithoutAny)
{
    ExpectTakenOver(Bordered(""), Bordered("", ""),
                    "output flags drilling, sides in the index 16, kind of work in the index S");
}

TEST_F(CarryOver, TheSidesAndTheKindOfWorkInTheIndex)
{
    ExpectTakenOver(Bordered("", Bore + Line("GROOVE D8Z6T18", 20, 60, 500, 60)), Bordered(""),
                    "kind of work in the index s");
    ExpectTakenOver(Bordered("", EdgeBore("T61")), Bordered(""), "sides in the index 17");
}

TEST_F(CarryOver, TheNoticeOfASubstitutedTool)
{
    Config.ToolSubData[0] = {"1", "71", "72"};
    ExpectTakenOver(Bordered("", Line("ROUTE Z5T71", 50, 50, 300, 50)),
                    Bordered("", Line("ROUTE Z5T73", 50, 50, 300, 50)), "tool substitution on");
}

TEST_F(CarryOver, TheDiameterAndTheFeedOfTheEvolution)
{
    System = Evolution;
    const std::string route = Line("ROUTE Z5T71", 50, 50, 300, 50);
    ExpectTakenOver(Bordered("", Circle("VBORE Z12D8", 110, 70, 4)), Bordered("", route), "diameter 8");
    ExpectTakenOver(Bordered("", Circle("VBORE Z12F500", 110, 70, 4)), Bordered("", EdgeBore("T161")),
                    "feed 500");
    ExpectTakenOver(Bordered(""), Bordered("", ""), "output flag on");
}

TEST_F(CarryOver, TheSortingOfTheEvolution)
{
    System = Evolution;
    ExpectTakenOver(Bordered("OL"), Panel(), "sorting 1");
}

TEST_F(CarryOver, AFieldOfTheCutListThatAnEarlierDrawingGaveByItsNumber)
{
    Config.PTSPath = FromHostPath(Home.Folder.string() + "/");
    Config.PTSName = "LIST";
    const auto with = [](const std::string& line) {
        return Drawing(Instructions({line}) + Rectangle("BORDER", 10, 20, 600, 400) + Bore);
    };
    const Settings settings = Config;
    for (const std::string carryOver : {"kept", "clean"}) {
        Restart(settings, carryOver);
        const Made first = Convert(with("PTS 7=OAK"), "FIRST");
        EXPECT_EQ(TakenLine(first), "");
        const bool kept = carryOver == "kept";
        const Made second = Convert(with("PTS FIELD7=ASH"), "SECOND");
        EXPECT_EQ(TakenLine(second), kept ? "cut list field FIELD7" : "");
        EXPECT_EQ(std::count(second.Lines.begin(), second.Lines.end(), "PTS Error: FIELD7"), kept ? 0 : 1);
        EXPECT_EQ(TakenLine(Convert(with("PTS 7=ELM"), "THIRD")), "") << "by its number, as the first did";
    }
}

TEST_F(CarryOver, ThePlaneOfRoutesForAPanelFromASolid)
{
    // Views of the edges around the face; the route lies in the one on the left.
    const std::string views =
        Rectangle("BORDER", 200, 200, 600, 400) + Rectangle("BORDER", 100, 200, 18, 400);
    ExpectTakenOver(Drawing(views + Line("ROUTE Z5T71", 105, 250, 105, 400)),
                    Panel(Line("ROUTE Z5T71", 50, 50, 300, 50)), "plane of routes P3 G19");
}

TEST_F(CarryOver, AnotherWordIsReportedAndTakenAsKept)
{
    Config.CarryOver = "some";
    Convert(Bordered("OF7"), "FIRST");
    EXPECT_EQ(TakenLine(Convert(Panel(), "SECOND")), "outfit 7");
    EXPECT_TRUE(Home.Reported("Setting CarryOver: \"some\" is neither kept nor clean, kept is taken"));
}

TEST_F(CarryOver, CommandsOfABatchAreNotADrawings)
{
    Config.CarryOver = "clean";
    kv::Run.CncOff = True;
    EXPECT_EQ(Convert(Bordered(""), "FIRST").Program, "");
    EXPECT_EQ(kv::Run.CncOff, True);
}

TEST_F(CarryOver, ADrawingThatFailsByWhatItTookOverSaysSo)
{
    Convert(Drawing(Instructions({"FLAG=1"}, "INFO") + Rectangle("BORDER", 10, 20, 600, 400) + Bore),
            "FIRST");
    EXPECT_FALSE(
        Home.Convert(Drawing(TextAt("INFO", 0, 0, "OP -1=X") + Rectangle("BORDER", 10, 20, 600, 400) + Bore),
                     "SECOND.DXF"));
    EXPECT_TRUE(Home.Reported(std::string(Head) + "instruction layer INFO")) << Home.ReportText();
}

TEST_F(CarryOver, ADrawingThatIsNotConvertedSaysNothing)
{
    Convert(Bordered("OF7"), "FIRST");
    kv::Run.ControlType = 0;
    EXPECT_FALSE(Home.Convert(Drawing(Bore), "SECOND.DXF"));
    for (const std::string& row : Home.Lines)
        EXPECT_FALSE(BeginsWith(row, Head)) << row;
}

} // namespace
} // namespace kv::test
