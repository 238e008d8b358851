// `korvanti prepare`: what an import makes of a drawing, as a drawing. Read back plainly it must give the
// program of Import=full; handles are each there once; and nothing is written where nothing can be.
#include <map>
#include <set>
#include <sstream>

#include "console/console_run.h"

namespace {

using namespace console_test;

struct PrepareCall : Console {
    static std::string Door()
    {
        const std::string hinge =
            "0\nBLOCK\n8\n0\n2\nHINGE\n10\n0\n20\n0\n0\nCIRCLE\n5\n1F\n8\nVBORE_Z12\n10\n0\n20\n0\n40\n17.5\n"
            "0\nCIRCLE\n5\n20\n8\n0\n10\n9.5\n20\n22.5\n40\n4\n0\nENDBLK\n";
        return "0\nSECTION\n2\nHEADER\n9\n$INSUNITS\n70\n4\n0\nENDSEC\n0\nSECTION\n2\nBLOCKS\n" + hinge +
               "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n"
               "0\nLWPOLYLINE\n5\n2A\n8\nBORDER_Z18\n90\n4\n70\n1\n10\n-300\n20\n-200\n10\n300\n20\n-"
               "200\n10\n300\n20\n200\n10\n-300\n20\n200\n"
               "0\nINSERT\n5\n3B\n8\nVBORE_Z10\n2\nHINGE\n10\n-200\n20\n-100\n"
               "0\nINSERT\n5\n3C\n8\nVBORE_Z10\n2\nHINGE\n10\n200\n20\n-100\n41\n-1\n"
               "0\nELLIPSE\n5\n3D\n8\nROUTE1_Z5T71\n10\n0\n20\n0\n11\n60\n21\n0\n40\n0.5\n41\n0\n42\n6."
               "283185307179586\n"
               "0\nDIMENSION\n5\n3E\n8\nDIM\n10\n0\n20\n0\n"
               "0\nTEXT\n5\n3F\n8\nDESCR\n10\n0\n20\n0\n40\n5\n1\nOAK DOOR\n0\nENDSEC\n0\nEOF\n";
    }
    std::string ProgramOf(const std::string& drawing, const std::string& mode)
    {
        const Ended ended = Run({"convert", drawing, "-o", "DOOR", "--import", mode});
        EXPECT_EQ(ended.Status, 0) << ended.Output << ended.Errors;
        for (const auto& entry : fs::recursive_directory_iterator(Folder / "programs"))
            if (entry.is_regular_file() && Bytes(entry.path()).starts_with("G71X"))
                return Bytes(entry.path());
        return {};
    }
    static std::string Bytes(const fs::path& file)
    {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
};

TEST_F(PrepareCall, TheCleanDrawingGivesTheProgramOfImportFull)
{
    Put(Folder / "door.dxf", Door());
    const Ended ended = Run({"prepare", "door.dxf", "-o", "clean.dxf"});
    EXPECT_EQ(ended.Status, 0) << ended.Errors;
    EXPECT_NE(ended.Output.find("Layer VBORE_Z10: 2 INSERT of HINGE were opened, the first: 2 CIRCLE"),
              std::string::npos)
        << ended.Output;
    EXPECT_NE(ended.Output.find("The drawing was moved by X300 Y200"), std::string::npos) << ended.Output;
    EXPECT_NE(ended.Output.find("1 entity is not in the clean drawing"), std::string::npos) << ended.Output;
    const std::string full = ProgramOf("door.dxf", "full");
    EXPECT_NE(full.find("G81"), std::string::npos) << full;
    EXPECT_EQ(ProgramOf("clean.dxf", "plain"), full);
}

TEST_F(PrepareCall, HandlesStayAndEachIsThereOnce)
{
    Put(Folder / "door.dxf", Door());
    ASSERT_EQ(Run({"prepare", "door.dxf", "-o", "clean.dxf"}).Status, 0);
    std::istringstream lines(Bytes(Folder / "clean.dxf"));
    std::string code, value, section;
    std::map<std::string, int> handles;
    std::set<std::string> kinds;
    while (std::getline(lines, code) && std::getline(lines, value)) {
        if (code == "2")
            section = value;
        if (section == "ENTITIES" && code == "5")
            ++handles[value];
        if (section == "ENTITIES" && code == "0")
            kinds.insert(value);
    }
    for (const auto& [handle, count] : handles)
        EXPECT_EQ(count, 1) << handle;
    for (const char* const kept : {"2A", "3B", "3C", "3D", "3F"})
        EXPECT_TRUE(handles.contains(kept)) << kept;
    EXPECT_EQ(handles.size(), 7U); // two further ones, of the second entities of the blocks
    EXPECT_EQ(kinds,
              (std::set<std::string>{"CIRCLE", "ENDSEC", "EOF", "POLYLINE", "SEQEND", "TEXT", "VERTEX"}));
}

TEST_F(PrepareCall, ADrawingThatCannotBeReadLeavesTheOldFile)
{
    Put(Folder / "clean.dxf", "old");
    Put(Folder / "bad.dxf", std::string("AutoCAD Binary DXF\r\n\x1a\0\0\0SEC", 27));
    Ended ended = Run({"prepare", "bad.dxf", "-o", "clean.dxf"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_NE(
        ended.Errors.find(
            "korvanti: bad.dxf: Binary DXF: the file is cut at byte 24; nothing was written to clean.dxf"),
        std::string::npos)
        << ended.Errors;
    ended = Run({"prepare", "none.dxf", "-o", "clean.dxf"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_EQ(Bytes(Folder / "clean.dxf"), "old");
    Put(Folder / "empty.dxf", "0\nEOF\n");
    ended = Run({"prepare", "empty.dxf", "-o", "clean.dxf"});
    EXPECT_EQ(ended.Status, 1);
    EXPECT_NE(ended.Errors.find("the drawing has no section ENTITIES"), std::string::npos) << ended.Errors;
    EXPECT_EQ(Bytes(Folder / "clean.dxf"), "old");
}

TEST_F(PrepareCall, TheDrawingItselfIsNotWrittenOver)
{
    Put(Folder / "door.dxf", Door());
    EXPECT_EQ(Run({"prepare", "door.dxf", "-o", "door.dxf"}).Status, 2);
    EXPECT_EQ(Bytes(Folder / "door.dxf"), Door());
}

TEST_F(PrepareCall, AnotherWordOfImportIsWrongUsage)
{
    Put(Folder / "door.dxf", Door());
    EXPECT_EQ(Run({"convert", "door.dxf", "--import", "all"}).Status, 2);
}

} // namespace
