// All example drawings by one call of the real program for each control, in a copy of the example
// installation; every file that comes out is compared whole, and no other file may come out. The programs
// in tests/data/examples were worked out from the rules: NAME.expected for CNC90 and GENESIS,
// NAME.evolution and NAME.hbd for the other machines, NAME.remaining for a control whose panels have gone
// through the horizontal machine.
#include "console/console_run.h"
#include "support/index_row.h"
#include "support/source_files.h"

#include <ctime>
#include <map>

using namespace console_test;

using kv::test::SourceFolder;

namespace {

struct Example {
    const char* Name;
    const char* Place90;      // below the program folder
    const char* PlaceGenesis; // a longer name than 8 and 3 characters is cut
    const char* Program;      // the name that the part has where nothing is cut
    bool HasHbd;
};

// What a control's writer leaves to the next drawing shows in the programs, so the order counts:
// panel_solid, which has no border layer, would keep the outfit of drawer_front and the boring head of
// system_rows.
const std::vector<Example> AllExamples = {
    {"panel_solid", "SRG/P/ANEL_SOL.ID", "PANEL_SO.LID", "panel_solid", false},
    {"system_rows", "SRG/S/YSTEM_RO.WS", "SYSTEM_R.OWS", "system_rows", false},
    {"t_lines", "SRG/T/_LINES", "t_lines", "t_lines", true},
    {"door", "SRG/D/OOR", "door", "door", true},
    {"side", "SRG/S/IDE", "side", "side", true},
    {"bottom", "SRG/B/OTTOM", "bottom", "bottom", true},
    {"bottom_views", "SRG/B/OTTOM_VI.EWS", "BOTTOM_V.IEW", "bottom_views", true},
    {"drawer_front", "SRG/D/F597", "DF597", "DF597", false},
    {"inch", "SRG/I/NCH", "inch", "inch", false},
    {"routed_door", "SRG/R/OUTED_DO.OR", "ROUTED_D.OOR", "routed_door", true},
    {"countertop", "SRG/C/OUNTERTO.P", "COUNTERT.OP", "countertop", true},
    {"nested_sheet", "SRG/N/ESTED_SH.EET", "NESTED_S.HEE", "nested_sheet", false},
    {"edge_views", "SRG/E/DGE_VIEW.S", "EDGE_VIE.WS", "edge_views", false},
};

using Tree = std::map<std::string, std::string>; // contents by path below a folder

Tree FilesBelow(const fs::path& folder)
{
    Tree files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file() && entry.path().extension() != ".lock")
            files[fs::relative(entry.path(), folder).generic_string()] = Contents(entry.path());
    }
    return files;
}

void ExpectFiles(const Tree& files, const Tree& expected)
{
    Words names, expectedNames;
    for (const auto& file : files)
        names.push_back(file.first);
    for (const auto& file : expected)
        expectedNames.push_back(file.first);
    EXPECT_EQ(names, expectedNames);
    for (const auto& [name, contents] : expected) {
        const auto found = files.find(name);
        if (found != files.end()) {
            EXPECT_EQ(found->second, contents) << name;
        }
    }
}

std::string Expected(const std::string& name, const std::string& family)
{
    const std::string contents = Contents(SourceFolder / "tests/data/examples" / (name + "." + family));
    EXPECT_NE(contents, "") << name << " " << family;
    return contents;
}

std::string Today()
{
    const std::time_t now = std::time(nullptr);
    char text[9];
    std::strftime(text, sizeof text, "%m/%d/%y", std::localtime(&now));
    return text;
}

const std::string Notes = "\r\nCHECK THE GRAIN DIRECTION\r\nHANDLE BORES FROM THE FRONT\r\n";
const std::string CutList = "2.00, 1,M\r\n"
                            "\"DF597\",176,597,2,\"OAK 19\",\"DRAWER FRONT WALNUT 597X176\",12\r\n";

constexpr int AllSides = 0x1F;
constexpr int NoRightEdge = 0x17; // the horizontal machine has bored the edges on the right

// Sides gather from the third drawing of the call on, grooves from the first; only horizontal bores are
// asked for anew.
std::string ExpectedIndex(const std::string& date, int sides)
{
    const char* const plain = "KORVANTI DXF IMPORT";
    std::string bytes;
    for (const index_row::Row& row : {
             index_row::Row{"BOTTOM", plain, 0, 'M', 568, 500, 19, sides, 'N'},
             index_row::Row{"BOTTOM_VIEWS", plain, 0, 'M', 568, 500, 19, sides, 'N'},
             index_row::Row{"COUNTERTOP", plain, 0, 'M', 2400, 600, 38, sides, 's'},
             index_row::Row{"DF597", "DRAWER FRONT WALNUT 597X1", 8, 'M', 597, 176, 19, sides, 's'},
             index_row::Row{"DOOR", plain, 0, 'M', 596, 716, 19, sides, 's'},
             index_row::Row{"EDGE_VIEWS", plain, 0, 'M', 600, 400, 22, sides, 's'},
             index_row::Row{"INCH", plain, 0, 'I', 30, 20, 0.75F, sides, 's'},
             index_row::Row{"NESTED_SHEET", plain, 0, 'M', 2500, 1250, 18, sides, 's'},
             index_row::Row{"PANEL_SOLID", plain, 0, 'M', 800, 400, 16, 0x10, 's'},
             index_row::Row{"ROUTED_DOOR", plain, 0, 'M', 596, 716, 19, sides, 's'},
             index_row::Row{"SIDE", "SIDE LEFT OAK", 0, 'M', 720, 560, 19, sides, 's'},
             index_row::Row{"SYSTEM_ROWS", plain, 0, 'M', 1184, 560, 19, 0x10, 's'},
             index_row::Row{"T_LINES", plain, 0, 'M', 600, 400, 18, sides, 'N'},
         })
        bytes += index_row::Bytes(row, date);
    return bytes;
}

class AllExampleDrawings : public Console {
  protected:
    void SetUp() override
    {
        Console::SetUp();
        fs::copy(SourceFolder / "examples/install", Folder / "shop");
        for (const char* const name : {"cnc/SORG", "genesis", "evolution", "hbd", "lists"})
            fs::create_directories(Folder / name);
        Put(Folder / "cnc/SORG/INDICE.PRG", "");
    }

    // One call with all drawings. The installation itself must stay as it was.
    void ConvertAll(const std::string& system, const Words& settings = {})
    {
        Words call = {KORVANTI_CONSOLE, "--home", (Folder / "shop").string(), "convert", "--system", system};
        const std::pair<const char*, const char*> folders[] = {{"DestinationPath90", "cnc/SORG/"},
                                                               {"DestinationPathGen", "genesis/"},
                                                               {"DestinationPathEV", "evolution/"},
                                                               {"HBDDestinationPath", "hbd/"},
                                                               {"PTSDATA.Path", "lists/"}};
        for (const auto& [key, folder] : folders)
            call.insert(call.end(), {"--set", std::string(key) + "=" + (Folder / folder).string()});
        for (const std::string& setting : settings)
            call.insert(call.end(), {"--set", setting});
        for (const Example& example : AllExamples)
            call.push_back(
                (SourceFolder / "examples/drawings" / (std::string(example.Name) + ".dxf")).string());
        const Tree before = FilesBelow(Folder / "shop");
        const Ended ended = RunCall(call);
        EXPECT_EQ(ended.Status, 0) << ended.Output;
        EXPECT_EQ(ended.Errors, "");
        ExpectFiles(FilesBelow(Folder / "shop"), before);
        ExpectFiles(FilesBelow(Folder / "lists"), {{"CUTLIST.PTS", CutList}});
    }

    // The programs of a CNC90 with its index and notes; dayBefore is the day when the call began.
    void ExpectCnc(const std::string& dayBefore, int sides, bool afterHbd)
    {
        const Tree files = FilesBelow(Folder / "cnc");
        const auto index = files.find("SORG/INDICE.PRG");
        ASSERT_NE(index, files.end());
        ASSERT_GE(index->second.size(), 46U);
        const std::string day = index->second.substr(38, 8);
        EXPECT_TRUE(day == dayBefore || day == Today()) << day;

        Tree expected = {{"SORG/INDICE.PRG", ExpectedIndex(day, sides)}, {"NOTE/NOC/D/F597", Notes}};
        for (const Example& example : AllExamples) {
            const bool taken = afterHbd && example.HasHbd;
            expected[std::string("SORG/") + example.Place90] =
                Expected(example.Name, taken ? "remaining" : "expected");
        }
        ExpectFiles(files, expected);
    }

    std::string Version() const
    {
        const std::string told =
            RunCall({KORVANTI_CONSOLE, "--version"}).Output; // "korvanti 1.2.3 (6080af0)"
        return told.substr(9, told.find_first_of(" \n", 9) - 9);
    }
};

TEST_F(AllExampleDrawings, ForTheCnc90)
{
    const std::string day = Today();
    ConvertAll("cnc90");
    ExpectCnc(day, AllSides, false);
    for (const char* const other : {"genesis", "evolution", "hbd"})
        ExpectFiles(FilesBelow(Folder / other), {});
}

// The same text under other names; no index, and no notes.
TEST_F(AllExampleDrawings, ForTheGenesis)
{
    ConvertAll("genesis");
    Tree expected;
    for (const Example& example : AllExamples)
        expected[example.PlaceGenesis] = Expected(example.Name, "expected");
    ExpectFiles(FilesBelow(Folder / "genesis"), expected);
    ExpectFiles(FilesBelow(Folder / "cnc"), {{"SORG/INDICE.PRG", ""}});
}

// A part without a description names the converter and its version in its place.
TEST_F(AllExampleDrawings, ForTheGenesisEvolution)
{
    ConvertAll("evolution");
    const std::string version = Version();
    const std::string place = "@VERSION@";
    Tree expected;
    for (const Example& example : AllExamples) {
        std::string program = Expected(example.Name, "evolution");
        const std::size_t at = program.find(place);
        if (at != std::string::npos)
            program.replace(at, place.size(), version);
        expected[std::string(example.Program) + ".CNC"] = program;
    }
    ExpectFiles(FilesBelow(Folder / "evolution"), expected);
    ExpectFiles(FilesBelow(Folder / "cnc"), {{"SORG/INDICE.PRG", ""}});
}

// What the horizontal machine bores is in no program of the control.
TEST_F(AllExampleDrawings, ForTheHorizontalMachineAndACnc90)
{
    const std::string day = Today();
    ConvertAll("cnc90", {"MakeHBD=1"});
    Tree expected;
    for (const Example& example : AllExamples) {
        if (example.HasHbd)
            expected[example.Program] = Expected(example.Name, "hbd");
    }
    ExpectFiles(FilesBelow(Folder / "hbd"), expected);
    ExpectCnc(day, NoRightEdge, true);
}

} // namespace
