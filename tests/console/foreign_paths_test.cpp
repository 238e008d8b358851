// The real program with names that CP1252 does not hold: drawings, folders, the installation, several
// processes. The report shows the real names; programs have the nearest letters.
#include "console/watch_run.h"

using namespace console_test;
using nlohmann::json;

namespace {

const char* const DoorInside = "dver~A6C12588"; // as another process has written it into a file

class ForeignPaths : public Console {
  protected:
    void SetUp() override
    {
        Console::SetUp();
        for (const char* const name : {"дверь.dxf", "扉.dxf", "Łoś.dxf"})
            Put(Folder / name, BoredPanel());
    }
    // Files and folders under it whose names hold "~".
    static Words StandInsOnTheDisk(const fs::path& folder)
    {
        Words names;
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (Holds(entry.path().filename().string(), "~"))
                names.push_back(entry.path().string());
        }
        return names;
    }
};

TEST_F(ForeignPaths, DrawingsAreConvertedAndNamedByTheNearestLetters)
{
    const Ended ended = Run({"convert", "дверь.dxf", "扉.dxf", "Łoś.dxf"});
    EXPECT_EQ(ended.Status, 0) << ended.Output << ended.Errors;
    EXPECT_EQ(Contents(Folder / "programs/SRG/D/VER"), BoredProgram);
    EXPECT_EQ(Contents(Folder / "programs/SRG/B/0D9ADBB"), BoredProgram);
    EXPECT_EQ(Contents(Folder / "programs/SRG/L/OS"), BoredProgram);
    EXPECT_TRUE(Holds(ended.Output, "дверь\nдверь is called dver in programs and lists\n"))
        << ended.Output;
    EXPECT_TRUE(Holds(ended.Output, "扉 is called B0D9ADBB in programs and lists\n")) << ended.Output;
    EXPECT_FALSE(Holds(ended.Output, "~")) << ended.Output;
    EXPECT_EQ(StandInsOnTheDisk(Folder), Words{});
}

TEST_F(ForeignPaths, AnInstallationAndFoldersOfSuchNamesServe)
{
    const fs::path home = Folder / "Łukasz/установка", programs = Folder / "Łukasz/программы";
    fs::create_directories(programs);
    Put(programs / "INDICE.PRG", "");
    fs::create_directories(home);
    // Settings are CP1252: a folder that Setup stored is named by stand-ins.
    Put(home / "KV90.INI", "[Configuration]\r\nWinner90=True\r\nDestinationPath90=" + Folder.string() +
                               "/Lukasz~ABA331E7/programmy~C13718DF/\r\n");
    const Ended ended = RunCall({KORVANTI_CONSOLE, "--home", home.string(), "convert", "дверь.dxf"});
    EXPECT_EQ(ended.Status, 0) << ended.Output << ended.Errors;
    EXPECT_EQ(Contents(programs / "SRG/D/VER"), BoredProgram);
    EXPECT_EQ(StandInsOnTheDisk(Folder), Words{});

    const Ended byVariable =
        RunCall({KORVANTI_CONSOLE, "convert", "扉.dxf"}, {"KORVANTI_HOME=" + home.string()});
    EXPECT_EQ(byVariable.Status, 0) << byVariable.Output << byVariable.Errors;
    EXPECT_EQ(Contents(programs / "SRG/B/0D9ADBB"), BoredProgram);
}

TEST_F(ForeignPaths, FailuresNameTheRealFile)
{
    Put(Folder / "дверь.dxf", "0\nEOF\n");
    const Ended ended = Run({"convert", "дверь.dxf", "нет.dxf"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_EQ(ended.Errors, "korvanti: дверь.dxf: failed\nkorvanti: нет.dxf: failed\n");
    EXPECT_TRUE(Holds(ended.Output, Shown("нет.dxf") + "  NOT FOUND\n")) << ended.Output;
    EXPECT_TRUE(Holds(ended.Output, Shown("дверь.dxf") + "\n")) << ended.Output;
}

TEST_F(ForeignPaths, OneNearestNameForTwoDrawingsIsReportedAsReplaced)
{
    Put(Folder / "двёрь.dxf", BoredPanel());
    const Ended ended = Run({"convert", "дверь.dxf", "двёрь.dxf"});
    EXPECT_TRUE(Holds(ended.Output, "VER is replaced; it was the program of " + Shown("дверь.dxf")))
        << ended.Output;
}

TEST_F(ForeignPaths, WorkersShowTheSameReport)
{
    Words call = {"convert", "--jobs", "2"};
    Words one = {"convert", "--jobs", "1"};
    for (int i = 0; i < 8; ++i) {
        const std::string name = "дверь " + std::to_string(i) + ".dxf";
        Put(Folder / name, BoredPanel());
        call.push_back(name);
        one.push_back(name);
    }
    const auto untimed = [](std::string text) {
        for (std::size_t at = 0; (at = text.find("Processed in ", at)) != std::string::npos;)
            text.erase(at, text.find('\n', at) - at);
        return text;
    };
    const Ended many = Run(call);
    const Ended alone = Run(one);
    EXPECT_EQ(many.Status, 0) << many.Output << many.Errors;
    EXPECT_TRUE(Holds(many.Output, "дверь 7 is called dver 7 in programs and lists\n")) << many.Output;
    EXPECT_FALSE(Holds(many.Output, "~")) << many.Output;
    EXPECT_TRUE(Holds(untimed(alone.Output), "дверь 7 is called")) << alone.Output;
    EXPECT_EQ(StandInsOnTheDisk(Folder), Words{});
}

TEST_F(ForeignPaths, TheReportAsJsonHasTheRealNames)
{
    const Ended ended = Run({"convert", "дверь.dxf", "--report", "json"});
    EXPECT_EQ(ended.Status, 0) << ended.Output << ended.Errors;
    EXPECT_TRUE(Holds(ended.Output, "дверь")) << ended.Output;
    EXPECT_FALSE(Holds(ended.Output, "~")) << ended.Output;
}

TEST_F(ForeignPaths, AStageOfSuchNamesIsMadeAndPlaced)
{
    const Ended made = Run({"convert", "--stage", "стадия", "дверь.dxf", "扉.dxf"});
    EXPECT_EQ(made.Status, 0) << made.Output << made.Errors;
    EXPECT_TRUE(fs::is_directory(Folder / "стадия"));
    const Ended placed = Run({"place", "стадия"});
    EXPECT_EQ(placed.Status, 0) << placed.Output << placed.Errors;
    EXPECT_EQ(Contents(Folder / "programs/SRG/D/VER"), BoredProgram);
    EXPECT_TRUE(Holds(placed.Output, "дверь is called dver")) << placed.Output;
    EXPECT_FALSE(Holds(placed.Output, "~")) << placed.Output;
}

TEST_F(ForeignPaths, EveryCallTakesThem)
{
    EXPECT_EQ(Run({"convert", "дверь.dxf", "-o", "вывод"}).Status, 0);
    EXPECT_EQ(Contents(Folder / "programs/SRG/V/YVOD"), BoredProgram);
    EXPECT_EQ(Run({"explain", "дверь.dxf", "--html", "объяснение.html"}).Status, 0);
    EXPECT_TRUE(Holds(Contents(Folder / "объяснение.html"), "дверь"));
    EXPECT_EQ(Run({"draw", "дверь.dxf", "-o", "рисунок.svg"}).Status, 0);
    EXPECT_TRUE(Holds(Contents(Folder / "рисунок.svg"), "дверь"));
    EXPECT_EQ(Run({"check", "дверь.dxf"}).Status, 0);
    const std::string compared = Run({"compare", "door.dxf"}).Output;
    EXPECT_EQ(Run({"compare", "дверь.dxf"}).Output, "дверь" + compared.substr(std::string("door").size()));
    EXPECT_EQ(Run({"trace", "дверь.dxf"}).Status, 0);
    EXPECT_EQ(Run({"prepare", "дверь.dxf", "-o", "чисто.dxf"}).Status, 0);
    EXPECT_TRUE(fs::exists(Folder / "чисто.dxf"));
    EXPECT_EQ(StandInsOnTheDisk(Folder), Words{});
}

TEST_F(ForeignPaths, CutListsAndOtherControlsHaveTheNearestLetters)
{
    Put(Folder / "home/KV90.INI", "[Configuration]\r\nGenesis=True\r\nDestinationPathGen=" +
                                      (Folder / "programs").string() + "/\r\n[PTS]\r\nPTSEnable=True\r\n");
    const Ended ended = Run({"convert", "дверь.dxf", "扉.dxf"});
    EXPECT_EQ(ended.Status, 0) << ended.Output << ended.Errors;
    EXPECT_EQ(StandInsOnTheDisk(Folder), Words{});
    bool named = false;
    for (const auto& entry : fs::recursive_directory_iterator(Folder / "programs")) {
        if (!entry.is_regular_file())
            continue;
        named = named || Holds(entry.path().filename().string(), "dver");
        EXPECT_FALSE(Holds(Contents(entry.path()), "~A6C12588")) << entry.path();
    }
    EXPECT_TRUE(named) << ended.Output;
}

class ForeignWatch : public Watch {};

TEST_F(ForeignWatch, AWatchedFolderOfSuchANameRunsItsBatches)
{
    const fs::path source = Folder / "исходники";
    fs::create_directories(source);
    Put(source / "дверь.dxf", BoredPanel());
    std::string keys = "[Configuration]\r\nWinner90=True\r\nAutoStartBatch=True\r\n";
    for (const char* const key : {"SourcePath90", "SourcePathGen", "SourcePathEV"})
        keys += std::string(key) + "=" + Folder.string() + "/ishodniki~638DF0A6/\r\n";
    Put(Folder / "home/KV90.INI", keys + "DestinationPath90=" + (Folder / "programs").string() +
                                      "/\r\nEditorPath=C:\\CNC90\\\r\n[System]\r\nViewer=\r\n");
    Put(source / "BATCH.LST", std::string(DoorInside) + ".dxf\r\nдверь.dxf^FRONT\r\n");
    const Ended ended = Run({"watch", "/s", "/k"});
    EXPECT_EQ(ended.Status, 0) << ended.Output << ended.Errors;
    EXPECT_EQ(Contents(source / "PROC.LST"), "DVER\r\nFRONT\r\n");
    EXPECT_EQ(Contents(Folder / "programs/SRG/D/VER"), BoredProgram);
    EXPECT_EQ(Contents(Folder / "programs/SRG/F/RONT"), BoredProgram);
    EXPECT_FALSE(fs::exists(source / "BATCH.LST"));
}

} // namespace
