// Drawings that cannot be used. Each ends in one report line that names the file and the cause, and in a
// failed job; the next drawing of the same process gives the program that a fresh process gives.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include <sys/resource.h>
#include <sys/stat.h>

#include "support/bad_input.h"

namespace kv::test {
namespace {

// The drawing itself.

using Lines = std::vector<std::string>;
const Lines NoThickness = {"Layer BORDER: the panel has no thickness"};

TEST_F(BadInput, NoSuchFile)
{
    EXPECT_FALSE(Process("BAD.DXF"));
    EXPECT_EQ(Home.Lines, std::vector<std::string>{Place() + "  NOT FOUND"});
    ExpectListed();
    ExpectFit();
}

TEST_F(BadInput, AFolder)
{
    fs::create_directory(Home.Folder / "BAD.DXF");
    EXPECT_FALSE(Process("BAD.DXF"));
    EXPECT_EQ(Home.Lines, std::vector<std::string>{Place() + ": Is a folder, no drawing"});
    ExpectListed();
    ExpectFit();
}

TEST_F(BadInput, APipeDoesNotBlockTheRun)
{
    ASSERT_EQ(::mkfifo(Place().c_str(), 0600), 0);
    EXPECT_FALSE(Process("BAD.DXF"));
    ExpectOneLine("is no regular file");
    ExpectFit();
}

TEST_F(BadInput, NoRightToRead)
{
    ASSERT_EQ(::chmod(Home.Write("BAD.DXF", GoodDrawing).c_str(), 0), 0);
    fs::permissions(Home.Folder, fs::perms(0755));
    const int status = InChild([&] {
        GiveUpRights();
        EXPECT_FALSE(Process("BAD.DXF"));
        ExpectOneLine("Permission denied");
        return true;
    });
    EXPECT_EQ(status, 0);
}

TEST_F(BadInput, AnEmptyFile)
{
    EXPECT_FALSE(Home.Convert("", "BAD.DXF"));
    EXPECT_EQ(Home.Boxes, std::vector<std::string>{"ENTITIES Section not found in  " + Place() + "    "});
    EXPECT_EQ(Home.Lines, (std::vector<std::string>{"BAD", "Part BORDER or BORDER Layer NOT Found!!!",
                                                    "CONVERSION PROCESS ABORTED."}));
    EXPECT_EQ(Run.FailedFiles, (std::vector<std::string>{"", "~"}));
    ExpectFit();
}

TEST_F(BadInput, NoEntities)
{
    EXPECT_FALSE(Home.Convert("0\nSECTION\n2\nHEADER\n0\nENDSEC\n0\nEOF\n", "BAD.DXF"));
    EXPECT_EQ(Home.Boxes, std::vector<std::string>{"ENTITIES Section not found in  " + Place() + "    "});
    EXPECT_EQ(Run.FailedFiles, (std::vector<std::string>{"", "~"}));
    ExpectFit();
}

TEST_F(BadInput, NoEndsec)
{
    ExpectRefused(SectionHead + Rectangle("BORDER", 10, 20, 600, 400), "The ENTITIES section has no ENDSEC");
}

TEST_F(BadInput, CutInTheMiddleOfAPair)
{
    ExpectRefused(SectionHead + Line("BORDER", 0, 0, 5, 5) + "10\n",
                  "Cut in the middle of a pair behind line 17");
}

TEST_F(BadInput, CutInTheMiddleOfANumber)
{
    ExpectRefused(SectionHead + Line("BORDER", 0, 0, 5, 5) + "10\n12", "The ENTITIES section has no ENDSEC");
}

TEST_F(BadInput, EveryCutOfADrawingIsRefused)
{
    const std::size_t end = GoodDrawing.find("0\nENDSEC");
    for (std::size_t length = SectionHead.size(); length <= end; length += 7) {
        EXPECT_FALSE(Home.Convert(GoodDrawing.substr(0, length), "BAD.DXF")) << length;
        ASSERT_EQ(Home.Lines.size(), 2U) << length << Home.ReportText();
        EXPECT_TRUE(Home.Lines[1].starts_with(Place() + ": ")) << Home.ReportText();
    }
    EXPECT_FALSE(fs::exists(Home.Programs / "SRG"));
}

// The binary form: sentinel, then a code of one byte and a text that ends in a NUL byte.
std::string BinaryPair(char code, std::string_view text)
{
    return std::string(1, code) + std::string(text) + '\0';
}

TEST_F(BadInput, ABinaryDrawingThatIsCut)
{
    std::string bytes("AutoCAD Binary DXF\r\n\x1a\0", 22);
    bytes += BinaryPair('\0', "SECTION") + BinaryPair('\2', "ENTITIES") + BinaryPair('\0', "LINE") +
             BinaryPair('\10', "BORDER");
    bytes += std::string("\12\0\0\0\0\0\0\x24", 8); // group 10, a double that lacks a byte
    ExpectRefused(bytes, "Binary DXF: the file is cut at byte 56");
}

TEST_F(BadInput, ABinaryDrawingWithoutAnEnd)
{
    std::string bytes("AutoCAD Binary DXF\r\n\x1a\0", 22);
    bytes += BinaryPair('\0', "SECTION") + BinaryPair('\2', "ENTITIES");
    for (int i = 0; i < 1000; ++i)
        bytes += BinaryPair('\0', "LINE") + std::string("\12\n\n\n\n\n\n\n\n", 9);
    ExpectRefused(bytes, "The ENTITIES section has no ENDSEC");
}

std::string WithBareReturns(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', '\r');
    return text;
}

TEST_F(BadInput, BareCarriageReturns)
{
    ExpectRefused(WithBareReturns(GoodDrawing), "The lines end in bare carriage returns; no line feed found");
}

TEST_F(BadInput, BareCarriageReturnsInABigFile)
{
    std::string entities;
    while (entities.size() < 310 * 1024)
        entities += Circle("VBORE Z12", 110, 70, 4);
    ExpectRefused(WithBareReturns(Drawing(entities)),
                  "The lines end in bare carriage returns; no line feed found");
}

TEST_F(BadInput, NulBytesInAValue)
{
    const std::string nul(1, '\0');
    ExpectRefused(SectionHead + "0\nCIRCLE\n8\nVB" + nul + "ORE\n0\nENDSEC\n", "NUL byte in line 8");
    Run.FailedFiles.clear();
    ExpectRefused(SectionHead + "0\nCIRCLE\n10\n1" + nul + "2\n0\nENDSEC\n", "NUL byte in line 8");
    Run.FailedFiles.clear();
    ExpectRefused(SectionHead + "0\nCIR" + nul + "CLE\n0\nENDSEC\n", "NUL byte in line 6");
}

TEST_F(BadInput, AFileOfNulBytesHasNoSection)
{
    EXPECT_FALSE(Home.Convert(std::string(100000, '\0'), "BAD.DXF"));
    EXPECT_EQ(Home.Boxes.size(), 1U);
    ExpectFit();
}

TEST_F(BadInput, AGroupCodeThatIsNoNumber)
{
    ExpectRefused(SectionHead + "0\nLINE\n8\nBORDER\nten\n5\n0\nENDSEC\n",
                  "Group code \"ten\" in line 9 is no number");
}

TEST_F(BadInput, ALineTooMany)
{
    ExpectRefused(SectionHead + "0\nLINE\n8\nBORDER\n\n10\n5\n0\nENDSEC\n",
                  "Group code \"\" in line 9 is no number");
}

TEST_F(BadInput, ColorBeyondInt)
{
    ExpectRefused(SectionHead + "0\nLINE\n8\nBORDER\n62\n40000\n0\nENDSEC\n",
                  "Color 40000 out of range in line 10 of LINE on layer BORDER");
}

TEST_F(BadInput, FlagsBeyondInt)
{
    ExpectRefused(SectionHead + "0\nPOLYLINE\n8\nGROOVE\n70\n-32769\n0\nENDSEC\n",
                  "Flags -32769 out of range in line 10 of POLYLINE on layer GROOVE");
}

TEST_F(BadInput, TextsBeyondInt)
{
    std::string entities;
    for (int i = 0; i < 32768; ++i)
        entities += "0\nTEXT\n1\nT\n";
    ExpectRefused(Drawing(entities), "More than 32767 texts");
}

TEST_F(BadInput, ANumberBeyondACoordinate)
{
    ExpectRefused(SectionHead + "0\nLINE\n8\nBORDER\n10\n1e999\n0\nENDSEC\n",
                  "Number 1e999 out of range in line 10 of LINE on layer BORDER");
}

// A line of 100 MB: neither the file nor the line is ever held whole.
void WriteHugeLine(const fs::path& place, bool inHeader)
{
    std::ofstream file(place, std::ios::binary);
    if (!inHeader)
        file << SectionHead << "0\nTEXT\n1\n";
    const std::string piece(1 << 20, 'x');
    for (int i = 0; i < 100; ++i)
        file << piece;
    file << "\n0\nENDSEC\n";
}

TEST_F(BadInput, ALineOf100MegabytesInBoundedMemory)
{
    for (const bool inHeader : {false, true}) {
        WriteHugeLine(Home.Folder / "BAD.DXF", inHeader);
        const std::string line = inHeader ? "1" : "8";
        const int status = InChild([&] {
            rusage before{}, after{};
            ::getrusage(RUSAGE_SELF, &before);
            EXPECT_FALSE(Process("BAD.DXF"));
            ::getrusage(RUSAGE_SELF, &after);
            ExpectOneLine("line " + line + " is longer than 262144 bytes");
            EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 16 * 1024); // KB
            return true;
        });
        EXPECT_EQ(status, 0) << (inHeader ? "in front of the section" : "in the section");
    }
    EXPECT_FALSE(Process("BAD.DXF"));
    ExpectListed();
    ExpectFit();
}

// Operations.

TEST_F(BadInput, MoreThan32767Bores)
{
    std::string entities = Rectangle("BORDER", 10, 20, 600, 400);
    for (int i = 0; i < 32768; ++i)
        entities += "0\nPOINT\n8\nVBORE D5\n10\n50\n20\n60\n";
    ExpectRefused(Drawing(entities), "More than 32767 vertical bores", NoThickness);
}

TEST_F(BadInput, APolylineWithoutSeqend)
{
    for (const std::string layer : {"BORDER", "GROOVE", "HBORE"}) {
        Run.FailedFiles.clear();
        const std::string polyline = Pair(0, "POLYLINE") + Pair(8, layer) + Pair(0, "VERTEX") +
                                     Pair(8, layer) + Pair(10, 1.0) + Pair(20, 2.0) + Pair(0, "VERTEX") +
                                     Pair(10, 9.0) + Pair(20, 8.0);
        ExpectRefused(Drawing(Rectangle("BORDER", 10, 20, 600, 400) + polyline),
                      "Polyline without SEQEND on layer " + layer, layer == "BORDER" ? Lines{} : NoThickness);
    }
}

TEST_F(BadInput, APolylineThatTheNextEntityInterrupts)
{
    for (const std::string layer : {"BORDER", "GROOVE", "HBORE"}) {
        Run.FailedFiles.clear();
        const std::string polyline = Pair(0, "POLYLINE") + Pair(8, layer) + Pair(0, "VERTEX") +
                                     Pair(10, 1.0) + Pair(20, 2.0) + Pair(0, "POINT") + Pair(8, "X");
        ExpectRefused(Drawing(Rectangle("BORDER", 10, 20, 600, 400) + polyline),
                      "Polyline without SEQEND on layer " + layer, layer == "BORDER" ? Lines{} : NoThickness);
    }
}

TEST_F(BadInput, ALayerNameThatDrivesASpeedOutOfRange)
{
    EXPECT_FALSE(Home.Convert(
        Drawing(Rectangle("BORDER", 10, 20, 600, 400) + Circle("VBORE S40000", 110, 70, 4)), "BAD.DXF"));
    ASSERT_EQ(Home.Lines.size(), 3U) << Home.ReportText();
    EXPECT_EQ(Home.Lines[1], NoThickness[0]);
    EXPECT_TRUE(Home.Lines[2].starts_with(Place() + ": ")) << Home.Lines[2];
    EXPECT_TRUE(Holds(Home.Lines[2], "40000")) << Home.Lines[2];
    EXPECT_TRUE(Holds(Home.Lines[2], "VBORE S40000")) << Home.Lines[2];
    ExpectListed();
    ExpectFit();
}

TEST_F(BadInput, AnInstructionThatDrivesANumberOutOfRange)
{
    for (const std::string line : {"FLAG=40", "OUTFIT=3E9", "PTS 51=X", "OP -1=X", "OP 70000=X"}) {
        Run.FailedFiles.clear();
        Run.InstructionLayer.clear();
        EXPECT_FALSE(
            Home.Convert(Drawing(Instructions({line}) + Rectangle("BORDER", 10, 20, 600, 400)), "BAD.DXF"))
            << line;
        ASSERT_EQ(Home.Lines.size(), 2U) << Home.ReportText();
        EXPECT_TRUE(Home.Lines[1].starts_with(Place() + ": ")) << Home.Lines[1];
        ExpectListed();
    }
    ExpectFit();
}

} // namespace
} // namespace kv::test
