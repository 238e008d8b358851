// What a conversion says of the programs beside its own: older ones that are left, those of other drawings
// that are replaced, parts of one that failed; and the outcome "nothing". Relies on the real program.
#include "console/spread_list.h"
#include "support/dxf.h"

namespace console_test {
namespace {

using nlohmann::json;

class LeftPrograms : public Console {
  protected:
    static std::string WithoutWork(const std::string& instructions = {})
    {
        return kv::test::Drawing(kv::test::Polyline("BORDER_Z18", {{0, 0}, {600, 0}, {600, 400}, {0, 400}},
                                                    kv::test::Pair(70, "1")) +
                                 instructions);
    }
    static std::string WithoutCode() { return WithoutWork(kv::test::Instructions({"NOCODE"})); }
    static std::string ManyBores(int count)
    {
        std::string bores;
        for (int i = 0; i < count; ++i)
            bores += kv::test::Circle("VBORE_Z12F3000", 20 + i % 50 * 11, 20 + i / 50 * 11, 4);
        return BoredPanel(bores);
    }
    static std::string Described(const std::string& description)
    {
        return BoredPanel(kv::test::Instructions({"DESCR=" + description}));
    }
    json Drawings(const Words& words, int status = 0) const
    {
        Words call = {"convert", "--report", "json"};
        call.insert(call.end(), words.begin(), words.end());
        const Ended ended = Run(call);
        EXPECT_EQ(ended.Status, status) << ended.Output << ended.Errors;
        return json::parse(ended.Output)["drawings"];
    }
    json Converted(const Words& words = {"door.dxf"}, int status = 0) const
    {
        return Drawings(words, status)[0];
    }
    static std::string LineOf(const json& drawing, int number)
    {
        for (const json& line : drawing["lines"])
            if (line.value("number", 0) == number)
                return line["text"];
        return "";
    }
    // None of the lines about programs beside its own.
    static bool IsSilent(const json& drawing)
    {
        for (const int number : {572, 573, 574, 575, 576, 577})
            if (!LineOf(drawing, number).empty())
                return false;
        return true;
    }
    std::string Program(const std::string& name) const { return Shown("programs/SRG/" + name); }
};

TEST_F(LeftPrograms, ADrawingWithoutProgramIsNothingAndStatusZero)
{
    Put(Folder / "door.dxf", WithoutWork());
    const json drawing = Converted();
    EXPECT_EQ(drawing["outcome"], "nothing");
    EXPECT_EQ(LineOf(drawing, 572), "No program was written");
    EXPECT_EQ(Run({"convert", "door.dxf"}).Errors, "");
}

TEST_F(LeftPrograms, TheOlderOneIsNamedWithItsIndex)
{
    EXPECT_TRUE(IsSilent(Converted()));
    Put(Folder / "door.dxf", WithoutWork());
    const json drawing = Converted();
    EXPECT_EQ(drawing["outcome"], "nothing");
    EXPECT_EQ(LineOf(drawing, 573), "No program was written; left from an earlier conversion: " +
                                        Program("D/OOR") + " (listed in the index)");
    Put(Folder / "programs/INDICE.PRG", "");
    EXPECT_EQ(LineOf(Converted(), 573),
              "No program was written; left from an earlier conversion: " + Program("D/OOR"));
    EXPECT_EQ(Contents(Folder / "programs/SRG/D/OOR"), BoredProgram) << "it stays as it was";
}

TEST_F(LeftPrograms, ADrawingWithoutCodeAsksForNoneButAnOlderOneIsNamed)
{
    Put(Folder / "side.dxf", WithoutCode());
    const json drawing = Converted({"side.dxf"});
    EXPECT_EQ(drawing["outcome"], "nothing");
    EXPECT_TRUE(IsSilent(drawing)) << drawing.dump(1);
    Converted();
    Put(Folder / "door.dxf", WithoutCode());
    EXPECT_TRUE(Holds(LineOf(Converted(), 573), Program("D/OOR")));
    EXPECT_EQ(Run({"convert", "side.dxf", "--strict"}).Status, 0) << "it has no doubt";
    EXPECT_EQ(Run({"convert", "door.dxf", "--strict"}).Status, 1);
}

TEST_F(LeftPrograms, EveryControlNamesItsOwn)
{
    for (const char* const name : {"DT.Par", "EvHeader.dat", "KVHBD.cfg"})
        fs::copy_file(fs::path(KORVANTI_SOURCE_DIR) / "examples/install" / name, Folder / "home" / name);
    const std::string to = (Folder / "programs").string() + "/";
    for (const std::string control : {"genesis", "evolution"}) {
        const Words call = {"door.dxf",
                            "--system",
                            control,
                            "--set",
                            "DestinationPathGen=" + to,
                            "--set",
                            "DestinationPathEV=" + to};
        Put(Folder / "door.dxf", BoredPanel());
        EXPECT_EQ(Converted(call)["outcome"], "converted");
        EXPECT_TRUE(IsSilent(Converted(call))) << control;
        Put(Folder / "door.dxf", WithoutCode());
        const std::string name = control == "genesis" ? "door" : "door.CNC";
        EXPECT_TRUE(Holds(LineOf(Converted(call), 573), Shown("programs/" + name)))
            << control << Converted(call).dump(1);
    }
}

TEST_F(LeftPrograms, PortionsThatAreLeftAreNamed)
{
    const Words limited = {"door.dxf", "--set", "LineLimit=200"};
    Put(Folder / "door.dxf", ManyBores(700));
    EXPECT_TRUE(IsSilent(Converted(limited)));
    ASSERT_TRUE(fs::exists(Folder / "programs/SRG/D/OOR4"));
    ASSERT_FALSE(fs::exists(Folder / "programs/SRG/D/OOR5"));
    EXPECT_TRUE(IsSilent(Converted(limited))) << "a repeated conversion";

    Put(Folder / "door.dxf", ManyBores(300));
    EXPECT_EQ(LineOf(Converted(limited), 574),
              "Left from an earlier conversion, not written by this one: " + Program("D/OOR3") +
                  " (listed in the index), " + Program("D/OOR4") + " (listed in the index)");
    Put(Folder / "door.dxf", BoredPanel());
    const std::string whole = LineOf(Converted(limited), 574);
    for (const char* const name : {"OOR1", "OOR2", "OOR3", "OOR4"})
        EXPECT_TRUE(Holds(whole, Program("D/") + name + " (listed")) << whole;
    Put(Folder / "door.dxf", ManyBores(300));
    EXPECT_TRUE(Holds(LineOf(Converted(limited), 574), Program("D/OOR") + " (listed"))
        << "the whole one of before";
}

TEST_F(LeftPrograms, AnotherDrawingsWholeProgramIsNoPortion)
{
    Put(Folder / "door1.dxf", BoredPanel());
    EXPECT_TRUE(IsSilent(Drawings({"door1.dxf"})[0]));
    EXPECT_TRUE(IsSilent(Converted()));
    fs::remove(Folder / "programs/SRG/D/OOR");
    Put(Folder / "programs/SRG/D/OOR1", "G71 no header of this program\r\n%1\r\n\"\x1b[31m");
    EXPECT_TRUE(IsSilent(Converted()));
    Put(Folder / "programs/SRG/D/OOR1", "");
    EXPECT_TRUE(IsSilent(Converted()));
    fs::remove(Folder / "programs/SRG/D/OOR1");
    fs::create_directories(Folder / "programs/SRG/D/OOR1");
    EXPECT_TRUE(IsSilent(Converted())) << "a folder";
}

TEST_F(LeftPrograms, TwoDrawingsOfOneNameAreToldHoweverTheyAreConverted)
{
    fs::create_directories(Folder / "again");
    Put(Folder / "again/door.dxf", BoredPanel());
    const std::string told = Program("D/OOR") + " is replaced; it was the program of " + Shown("door.dxf");
    for (const Words& more : {Words{}, Words{"--jobs", "2"}}) {
        Words words = {"door.dxf", "again/door.dxf", "door.dxf"};
        words.insert(words.end(), more.begin(), more.end());
        const json drawings = Drawings(words);
        EXPECT_TRUE(IsSilent(drawings[0]));
        EXPECT_EQ(LineOf(drawings[1], 576), told);
        EXPECT_EQ(LineOf(drawings[2], 576),
                  Program("D/OOR") + " is replaced; it was the program of " + Shown("again/door.dxf"));
    }
    Words words = {"door.dxf", "again/door.dxf", "--strict"};
    const json drawings = Drawings(words, 1);
    EXPECT_EQ(drawings[0]["outcome"], "converted");
    EXPECT_EQ(drawings[1]["outcome"], "failed") << "the first one keeps its program";
}

TEST_F(LeftPrograms, TheSameDrawingBySeveralSpellingsIsNotTold)
{
    for (const json& drawing : Drawings({"door.dxf", "./door.dxf", "DOOR", "programs/../door.dxf"}))
        EXPECT_TRUE(IsSilent(drawing)) << drawing.dump(1);
}

TEST_F(LeftPrograms, AStageTellsAtItsTurn)
{
    fs::create_directories(Folder / "again");
    Put(Folder / "again/door.dxf", BoredPanel());
    Put(Folder / "side.dxf", WithoutWork());
    const json staged = Drawings({"door.dxf", "again/door.dxf", "side.dxf", "--stage", "s"});
    EXPECT_EQ(staged[2]["outcome"], "nothing");
    EXPECT_TRUE(IsSilent(staged[1]));
    Put(Folder / "programs/INDICE.PRG", "");
    const Ended placed = Run({"place", "s", "--report", "json"});
    EXPECT_EQ(placed.Status, 0) << placed.Errors;
    const json drawings = json::parse(placed.Output)["drawings"];
    EXPECT_NE(LineOf(drawings[1], 576), "");
    EXPECT_EQ(drawings[2]["outcome"], "nothing");
    EXPECT_EQ(LineOf(drawings[2], 572), "No program was written");
}

TEST_F(LeftPrograms, AnOlderProgramOfAnotherDescriptionIsTold)
{
    Put(Folder / "door.dxf", Described("OAK-100%-%1-{OTHER}"));
    EXPECT_TRUE(IsSilent(Converted()));
    EXPECT_TRUE(IsSilent(Converted())) << "a repeated conversion";
    Put(Folder / "door.dxf", BoredPanel());
    EXPECT_TRUE(IsSilent(Converted())) << "it says nothing of itself";
    EXPECT_TRUE(IsSilent(Converted()));
    Put(Folder / "door.dxf", Described("ASH"));
    EXPECT_TRUE(IsSilent(Converted())) << "the older one says nothing of itself";
    Put(Folder / "door.dxf", Described("OAK-100%-%1-{OTHER}"));
    EXPECT_EQ(LineOf(Converted(), 577), Program("D/OOR") + " is replaced; its description was: ASH");
    Put(Folder / "door.dxf", Described("PINE"));
    EXPECT_EQ(LineOf(Converted(), 577),
              Program("D/OOR") + " is replaced; its description was: OAK-100%-%1-{OTHER}");
}

TEST_F(LeftPrograms, PartsOfAFailedProgramAreNamed)
{
    std::vector<kv::test::Vertex> way;
    for (int i = 0; i < 400; ++i)
        way.push_back({20.0 + i, 100.0 + i % 2 * 5});
    std::string drawing = ManyBores(250);
    drawing.insert(drawing.rfind("0\nENDSEC"), kv::test::Polyline("ROUTE Z5T71", way));
    Put(Folder / "door.dxf", drawing);
    const json shown = Converted({"door.dxf", "--set", "LineLimit=200"}, 1);
    EXPECT_EQ(shown["outcome"], "failed");
    EXPECT_TRUE(LineOf(shown, 575)
                    .starts_with("Parts of the failed program are in the program folder and its index: "
                                 "door1"))
        << shown.dump(1);
    EXPECT_TRUE(fs::exists(Folder / "programs/SRG/D/OOR1"));
}

#if defined(_WIN32)
constexpr int ManyDrawings = 300; // a command line holds 32,767 characters there
#else
constexpr int ManyDrawings = 10000;
#endif

TEST_F(LeftPrograms, TenThousandDrawingsOfOneNameAreTenThousandLines)
{
    const int count = ManyDrawings;
    Words words;
    for (int i = 0; i < count; ++i) {
        const std::string folder = "d" + std::to_string(i);
        fs::create_directories(Folder / folder);
        Put(Folder / folder / "door.dxf", BoredPanel());
        words.push_back(folder + "/door.dxf");
    }
    const json drawings = Drawings(words);
    ASSERT_EQ(drawings.size(), static_cast<std::size_t>(count));
    for (int i = 1; i < count; ++i)
        ASSERT_TRUE(LineOf(drawings[static_cast<std::size_t>(i)], 576)
                        .ends_with(Shown(words[static_cast<std::size_t>(i) - 1])))
            << i;
}

} // namespace
} // namespace console_test
