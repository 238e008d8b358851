// A drawing in front of the writer of the horizontal drilling machine: a tool table, a folder for its
// programs, and the words of a program by side.
#pragma once

#include "platform/text.h"
#include "writers/program_scene.h"

namespace kv {

class HbdScene : public ProgramScene {
  protected:
    void SetUp() override
    {
        ProgramScene::SetUp();
        std::filesystem::create_directories(Folder / "HBD");
        Config.HBDDestinationPath = PathOf("HBD\\");
        Config.HBDVBoreLimit = "50";
        ExeFolder = PathOf("");
        Put("KVHBD.cfg", "Horizontal\t8\t1\t0\r\nVertical\t5\t0\t0\r\nHorizontal\t10\t0\t1\r\n"
                         "Vertical\t8\t0\t0\r\nGroove\t4\t0\t0\r\n");
    }

    static HBoreRecord EdgeBore(Long side, Single x, Single y, Single z = 9, Single diameter = 8)
    {
        HBoreRecord bore;
        bore.Side = side;
        bore.PosX = x;
        bore.PosY = y;
        bore.Z = z;
        bore.Diameter = diameter;
        bore.Group = 1;
        return bore;
    }
    static void AddFaceBore(Single x, Single y, Single depth = 12, Single diameter = 8)
    {
        VBores.Append(Bore(x, y, depth, diameter));
    }

    std::string Written(const std::string& name = "DOOR")
    {
        WriteHbdProgram();
        return Get("HBD/" + name);
    }
    // Lines of a side of the program, between its brackets.
    static Texts SideOf(const std::string& program, int side)
    {
        const std::string head = "\nSIDE#" + std::to_string(side) + "{\r\n";
        std::size_t at = program.find(head);
        EXPECT_NE(at, std::string::npos) << program;
        if (at == std::string::npos)
            return {};
        at += head.size();
        const std::size_t end = program.find("}SIDE\r\n", at);
        Texts lines;
        while (at < end) {
            const std::size_t next = program.find("\r\n", at);
            lines.push_back(program.substr(at, next - at));
            at = next + 2;
        }
        return lines;
    }
    // The lines that one bore of the edge has, by side 5 of the program; bores count from 0.
    Texts EdgeLines(std::size_t bore = 0)
    {
        const Texts all = SideOf(Written(), 5);
        Texts lines;
        for (std::size_t i = 2 + 3 * bore; i < std::min(all.size(), 5 + 3 * bore); ++i)
            lines.push_back(all[i]);
        return lines;
    }
    // The lines of the face's bores, without heading and size.
    Texts FaceLines()
    {
        WriteHbdProgram();
        if (!Stands("HBD/DOOR"))
            return {};
        const Texts all = SideOf(Get("HBD/DOOR"), 1);
        return {all.begin() + 2, all.end()};
    }
    // The part of a line from a word on up to the next blank.
    static std::string WordOf(const Texts& lines, const std::string& name)
    {
        for (const std::string& line : lines) {
            const std::string padded = " " + line;
            const std::size_t at = padded.find(" " + name);
            if (at != std::string::npos)
                return padded.substr(at + 1, padded.find(' ', at + 1) - at - 1);
        }
        return {};
    }
    // Groups of the face's bores, in the order of the drawing.
    static std::vector<Int> Groups()
    {
        std::vector<Int> groups;
        for (Long i = 1; i <= VBores.Last(); ++i)
            groups.push_back(VBores[i].Group);
        return groups;
    }
};

} // namespace kv
