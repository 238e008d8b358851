// A drawing's records in front of the Genesis Evolution writer, with a template in the program's own
// folder and a program folder.
#pragma once

#include "platform/text.h"
#include "writers/cnc/route_records.h"
#include "writers/evolution/evolution_writer.h"

namespace kv {

class EvolutionScene : public RouteRecords {
  protected:
    void SetUp() override
    {
        RouteRecords::SetUp();
        std::filesystem::create_directories(Folder / "HOME");
        ExeFolder = PathOf("HOME\\");
        Config.DestinationPathEV = PathOf("PROG\\");
        Run.ControlType = 2;
        PutTemplate(PlainTemplate());
    }
    void PutTemplate(const std::string& text) const { Put("HOME/EvHeader.dat", text); }
    static std::string PlainTemplate() { return "HEAD\r\n\r\n::SIDE=\r\n\r\nEND\r\n"; }
    void NextDrawing(const std::string& name)
    {
        NewDrawing(name);
        Run.ControlType = 2;
    }

    // The program of the drawing.
    std::string Written(const std::string& name = "DOOR")
    {
        WriteEvolutionProgram();
        return Get("PROG/" + name + ".CNC");
    }
    // What stands in front of the sides.
    std::string WrittenHead()
    {
        const std::string program = Written();
        return program.substr(0, program.find("SIDE#1{"));
    }
    // The lines of a side, each without its CR LF.
    Texts WrittenSide(int side) { return SideOf(Written(), side); }
    static Texts SideOf(const std::string& program, int side)
    {
        const std::string open = "SIDE#" + std::to_string(side) + "{\r\n";
        std::size_t at = program.find(open);
        const std::size_t end = program.find("}SIDE\r\n", at);
        EXPECT_NE(end, std::string::npos);
        Texts lines;
        for (at += open.size(); at < end;) {
            const std::size_t stop = program.find("\r\n", at);
            lines.push_back(program.substr(at, stop - at));
            at = stop + 2;
        }
        return lines;
    }

    // The template's first lines with the fields that every program fills.
    static std::string FilledHead(const std::string& list)
    {
        return "HEAD\r\n$=DOOR\r" + list + "\r\n::UNm DL=600 DH=400 DS=18\r\r\nEND\r\n";
    }
    static std::string SidesWith(int side, const std::string& lines)
    {
        std::string text;
        for (int n = 1; n <= 6; ++n)
            text += "SIDE#" + std::to_string(n) + "{\r\n" + (n == side ? lines : "") + "}SIDE\r\n";
        return text;
    }
};

} // namespace kv
