// Runs the real program in a scratch folder with an installation and drawings, as a script would. A test
// looks at the exit status and the streams.
#pragma once

#include <cstdint>
#include <random>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "console/run_call.h"

namespace console_test {

inline void Put(const fs::path& path, const std::string& contents)
{
    std::ofstream(path, std::ios::binary) << contents;
}

// A panel 600 by 400 by 18 with a bore of 8 mm at X100 Y50, 12 deep.
inline std::string BoredPanel(const std::string& extra = {})
{
    std::string text = "0\nSECTION\n2\nENTITIES\n0\nPOLYLINE\n8\nBORDER_Z18\n66\n1\n70\n1\n";
    for (const char* const corner :
         {"10\n0\n20\n0\n", "10\n600\n20\n0\n", "10\n600\n20\n400\n", "10\n0\n20\n400\n"})
        text += std::string("0\nVERTEX\n8\nBORDER_Z18\n") + corner;
    text += "0\nSEQEND\n8\nBORDER_Z18\n0\nCIRCLE\n8\nVBORE_Z12F3000\n10\n100\n20\n50\n40\n4\n";
    return text + extra + "0\nENDSEC\n0\nEOF\n";
}

// N counts all lines, L those behind the name line without the end.
inline const char* const BoredProgram = "G71X600Y400Z18T00N4L1\r\n"
                                        "G150(KORVANTI DXF IMPORT)\r\n"
                                        "G81G90F3000G55P5R54=8X100Y50Z12\r\n"
                                        "M2\r\n";

class Console : public testing::Test {
  protected:
    void SetUp() override
    {
        Folder = fs::temp_directory_path() / ("korvanti-console-" + std::to_string(std::random_device{}()));
        fs::remove_all(Folder);
        fs::create_directories(Folder / "home");
        fs::create_directories(Folder / "programs");
        Put(Folder / "home/KV90.INI", "[Configuration]\r\nWinner90=True\r\nDestinationPath90=" +
                                          (Folder / "programs").string() + "/\r\n");
        Put(Folder / "programs/INDICE.PRG", "");
        Put(Folder / "door.dxf", BoredPanel());
    }
    void TearDown() override { fs::remove_all(Folder); }

    Words Call(const Words& words) const
    {
        Words call = {KORVANTI_CONSOLE, "--home", (Folder / "home").string()};
        call.insert(call.end(), words.begin(), words.end());
        return call;
    }

    // The whole call as typed, the program's name included.
    Ended RunCall(const Words& call, const Words& environment = {}) const
    {
        const fs::path output = Folder / "stdout", errors = Folder / "stderr";
        Ended ended;
        ended.Status = RunIn(Folder, call, environment, output, errors);
        ended.Output = Contents(output);
        ended.Errors = Contents(errors);
        return ended;
    }

    Ended Run(const Words& words, const Words& environment = {}) const
    {
        return RunCall(Call(words), environment);
    }

    // As the program shows it on this host.
    std::string Shown(const std::string& name) const { return (Folder / name).make_preferred().string(); }

    static bool Holds(const std::string& text, const std::string& part)
    {
        return text.find(part) != std::string::npos;
    }

    fs::path Folder;
};

} // namespace console_test
