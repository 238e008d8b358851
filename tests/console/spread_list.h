// A list of drawings and an installation with all that a drawing can find there: an index, programs of
// earlier runs with comments of an operator, notes, a hand-over file, a cut list. Converted in one process,
// in several and by way of stages it must become the same.
#pragma once

#include "console/console_run.h"

#include <algorithm>
#include <map>
#include <regex>

#include "support/leaving_drawings.h"
#include "support/random_drawings.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace console_test {

// All that a call leaves, without what differs from run to run: times, and files by which processes agree.
struct CallResult {
    int Status = -1;
    std::string Output, Errors;
    std::map<std::string, std::string> Files; // by their names below the scratch folder
};

class SpreadList : public Console {
  protected:
    static constexpr std::size_t HandOverSize = 372; // bytes

    void SetUp() override
    {
        Console::SetUp();
        for (const char* const name : {"DT.Par", "EvHeader.dat", "KVHBD.cfg"})
            fs::copy_file(fs::path(KORVANTI_SOURCE_DIR) / "examples/install" / name, Folder / "home" / name);
        Put(Folder / "home/KV90.INI", Settings());
        ResetInstallation();
    }

    std::string Settings() const
    {
        const std::string here = Folder.string();
        return "[Configuration]\r\nWinner90=True\r\nLineLimit=200\r\nMakeHBD=1\r\nHBDVBoreLimit=50\r\n"
               "DestinationPath90=" +
               here + "/CNC90/SORG/\r\nDestinationPathGen=" + here + "/gen/\r\nDestinationPathEV=" + here +
               "/ev/\r\nHBDDestinationPath=" + here + "/hbd/\r\n[PTSDATA]\r\nPath=" + here +
               "/lists/\r\nName=LIST\r\nField1=NAME\r\nField2=~DESCRIPTION\r\n";
    }
    static inline const Words Places = {"CNC90/SORG", "CNC90/tmp", "gen", "ev", "hbd", "lists"};
    void ResetInstallation() const
    {
        for (const char* const name : {"CNC90", "gen", "ev", "hbd", "lists"})
            fs::remove_all(Folder / name);
        for (const std::string& name : Places)
            fs::create_directories(Folder / name);
        Put(Folder / "CNC90/SORG/INDICE.PRG", "");
        Put(Folder / "CNC90/tmp/Navetta.cmd", std::string(HandOverSize, '.'));
        fs::create_directories(Folder / "CNC90/SORG/SRG/Q");
        for (int i = 0; i < 300; i += 7) // the operator's own comments in programs that are made again
            Put(Folder / "CNC90/SORG/SRG/Q" / Digits(i),
                "G71X1Y1Z1T00N4L1\r\nG150(OLD)\r\n* KEEP " + std::to_string(i) + "\r\nM2\r\n");
    }

    static std::string Digits(int number) { return std::to_string(1000 + number).substr(1); }
    static std::string Note(const std::string& layer, const std::string& text)
    {
        return kv::test::TextAt(layer, 0, 0, text);
    }
    // With a line of its own in the head of its program.
    static std::string RoutedPanel(const std::string& line)
    {
        return BoredPanel(Note("GCODE1", line) + kv::test::Line("ROUTE Z5T71", 50, 50, 300, 50));
    }
    static std::string WithMore(std::string drawing, const std::string& entities)
    {
        return drawing.insert(drawing.rfind("0\nENDSEC"), entities);
    }
    // Some are no drawings, some write the program of another one, some leave it comments.
    static std::string DrawingOf(int number)
    {
        const unsigned seed = kv::test::Seed(6200) + static_cast<unsigned>(number);
        std::string text =
            number % 3 == 0 ? kv::test::RandomDrawing(seed) : kv::test::LeavingDrawing(seed).Drawn();
        if (number % 29 == 11)
            return "no drawing";
        if (number % 5 == 1)
            text = WithMore(text, Note("CNCNOTES", "HOLD " + std::to_string(number)));
        if (number % 13 == 4)
            text = WithMore(text, Note("GCODE1", "* BY DRAWING " + std::to_string(number)));
        if (number % 3 == 2)
            text = WithMore(text, Note("INFO", "POST INSTRUCTIONS") +
                                      Note("INFO", "PTS NAME=N" + std::to_string(number)));
        return text;
    }
    // By a name in UTF-8, whatever the host's own code is.
    fs::path At(const std::string& name) const
    {
        return Folder / fs::path(std::u8string(name.begin(), name.end()));
    }
    // The second folder's drawings write programs of the first one's.
    Words MakeDrawings(int count) const
    {
        Words names;
        fs::create_directories(At("more \xC3\xBC"));
        for (int i = 0; i < count; ++i) {
            const bool again = i % 11 == 5;
            const std::string name =
                again ? "more \xC3\xBC/Q" + Digits(i - 1) + ".dxf" : "Q" + Digits(i) + ".dxf";
            Put(At(name), DrawingOf(i));
            names.push_back(name);
        }
        names.push_back("missing.dxf");
        return names;
    }
    static Words Shuffled(Words names, unsigned seed)
    {
        std::shuffle(names.begin(), names.end(), std::mt19937(kv::test::Seed(seed)));
        return names;
    }

    static std::string WithoutTimes(const std::string& text)
    {
        static const std::regex processed("Processed in [^ ]* Sec"), seconds("\"seconds\": \"?[-+.0-9e]*\"?");
        return std::regex_replace(std::regex_replace(text, processed, "Processed"), seconds, "seconds");
    }
    std::map<std::string, std::string> InstalledFiles() const
    {
        std::map<std::string, std::string> files;
        for (const char* const top : {"CNC90", "gen", "ev", "hbd", "lists"}) {
            if (!fs::exists(Folder / top))
                continue;
            for (const auto& entry : fs::recursive_directory_iterator(Folder / top)) {
                const std::string name = fs::relative(entry.path(), Folder).generic_string();
                if (entry.is_directory())
                    files[name] = "a folder";
                else if (!entry.path().filename().string().ends_with(".lock"))
                    files[name] = Contents(entry.path());
            }
        }
        return files;
    }
    CallResult Result(const Ended& ended) const
    {
        return {ended.Status, WithoutTimes(ended.Output), ended.Errors, InstalledFiles()};
    }
    Words Environment() const
    {
        fs::create_directories(Folder / "temporary");
        return {"DIRTMP=" + (Folder / "CNC90/tmp").string(), "TMPDIR=" + (Folder / "temporary").string(),
                "ASAN_OPTIONS=detect_leaks=0", "TMP=" + (Folder / "temporary").string()};
    }
    static Words Joined(Words words, const Words& more)
    {
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }
    // In a fresh installation.
    CallResult Convert(const Words& names, const Words& options) const
    {
        ResetInstallation();
        return Result(Run(Joined(Joined({"convert"}, options), names), Environment()));
    }
    CallResult ConvertAlone(const Words& names, const Words& options) const
    {
        return Convert(names, Joined(options, {"--set", "CarryOver=clean"}));
    }
    static void ExpectSame(const CallResult& made, const CallResult& plain, const std::string& how)
    {
        EXPECT_EQ(made.Status, plain.Status) << how;
        EXPECT_EQ(made.Errors, plain.Errors) << how;
        ASSERT_EQ(made.Output, plain.Output) << how;
        for (const auto& [name, contents] : plain.Files) {
            ASSERT_TRUE(made.Files.contains(name)) << how << ": " << name << " is missing";
            ASSERT_EQ(made.Files.at(name), contents) << how << ": " << name;
        }
        EXPECT_EQ(made.Files.size(), plain.Files.size()) << how << ": files that should not be there";
    }
    // Nothing of the processes is left.
    void ExpectTidy() const { EXPECT_TRUE(fs::is_empty(Folder / "temporary")); }
};

} // namespace console_test
