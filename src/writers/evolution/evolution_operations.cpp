// Bores and grooves as lines of a Genesis Evolution program. Relies on mirrored records; a bore whose
// group is 0 is made elsewhere. Leaves the lines in the texts of the sides and, in the writers'
// memory, the flag of written operations, the last diameter and the last feed.
#include <cmath>
#include <utility>

#include "platform/text.h"
#include "writers/evolution/evolution_writer.h"
#include "writers/number_format.h"
#include "writers/program_families.h"
#include "writers/tool_code.h"
#include "writers/writer_memory.h"

namespace kv {

namespace {

constexpr std::size_t DrillDigits = 2;     // of a vertical bore's tool text
constexpr Long FirstRouterTool = 100;      // in an edge
constexpr Int LeftEdge = 3, RightEdge = 4; // their bores are measured along Y first

void WriteVBore(SideTexts& sides, const VBoreRecord& bore)
{
    SelectSide(sides, Face);
    AppendSideText(sides, bore.PeckDepth != 0 ? "W#85{ ::WTp WS=1" : "W#81{ ::WTp WS=1");
    AddCoord(sides, "#1=", bore.X);
    AddCoord(sides, "#2=", bore.Y);
    AppendSideText(sides, SideDepthWord(bore.Depth));
    if (bore.PeckDepth != 0)
        AddWhole(sides, "#9520=", ToLong(static_cast<double>(bore.PeckDepth)));
    AppendSideText(sides, "#8015=0");
    AppendSideText(sides, "#201=1");
    AddWhole(sides, "#203=", bore.Group);
    AddTool(sides, ToLong(Val(bore.Tool.Padded().substr(0, DrillDigits))));
    if (bore.Bottom != 0)
        AddWhole(sides, "#1001=", bore.Bottom);
    AddDiameter(sides, bore.Diameter);
    Remember(&WriterMemory::EvolutionFeed, bore.Feed);
    AddCoordUnlessZero(sides, "#2005=", bore.Feed);
    AddCoordUnlessZero(sides, "#2002=", bore.Speed);
    EndOperation(sides);
}

void AddEdgePlace(SideTexts& sides, const HBoreRecord& bore)
{
    Single along = bore.PosX, across = bore.PosY;
    if (bore.Side == LeftEdge || bore.Side == RightEdge)
        std::swap(along, across);
    AddCoord(sides, "#1=", along);
    AddCoord(sides, "#2=", bore.Z);
    AddCoord(sides, "#3=", -across);
}

void WriteDrilledHBore(SideTexts& sides, const HBoreRecord& bore, Long tool)
{
    AppendSideText(sides, "W#81{ ::WTp WS=1");
    AddEdgePlace(sides, bore);
    AppendSideText(sides, "#8015=0");
    AppendSideText(sides, "#201=1");
    AddWhole(sides, "#203=", bore.Group);
    AddTool(sides, tool);
    if (bore.Bottom != 0)
        AddWhole(sides, "#1001=", bore.Bottom);
    AddDiameter(sides, bore.Diameter);
    AddCoordUnlessZero(sides, "#2005=", bore.Feed);
    AddCoordUnlessZero(sides, "#2002=", bore.Speed);
    EndOperation(sides);
}

// The group of quite another bore: the one whose number follows that of the last vertical bore.
Int GroupBehindVBores()
{
    const Long index = VBores.Last() + 1;
    return index <= HBores.Last() ? HBores[index].Group : Int{0};
}

// The feed is the last vertical bore's, whatever this bore's own is.
void WriteRoutedHBore(SideTexts& sides, const HBoreRecord& bore, Long tool)
{
    AppendSideText(sides, "W#89{ ::WTs WS=1");
    AddEdgePlace(sides, bore);
    AppendSideText(sides, "#8015=0");
    AppendSideText(sides, "#8101=0");
    AppendSideText(sides, "#8096=0");
    AppendSideText(sides, "#201=1");
    AddWhole(sides, "#203=", GroupBehindVBores());
    AddTool(sides, tool);
    AddDiameter(sides, bore.Diameter);
    AddCoordUnlessZero(sides, "#2005=", Recall(&WriterMemory::EvolutionFeed, "feed"));
    AddCoordUnlessZero(sides, "#2002=", bore.Speed);
    EndOperation(sides);
}

void WriteHBore(SideTexts& sides, const HBoreRecord& bore)
{
    SelectSide(sides, bore.Side);
    const Long tool = ToLong(Val(bore.Tool.Padded()));
    if (tool < FirstRouterTool)
        WriteDrilledHBore(sides, bore, tool);
    else
        WriteRoutedHBore(sides, bore, tool);
}

double Extent(Single from, Single to)
{
    return std::fabs(static_cast<double>(to) - static_cast<double>(from));
}

void WriteGroove(SideTexts& sides, const GroovePass& groove)
{
    const bool alongY = Extent(groove.Y1, groove.Y2) > Extent(groove.X1, groove.X2); // a tie runs along X
    SelectSide(sides, Face);
    AppendSideText(sides, alongY ? "W#1051{ ::WT2 WS=1" : "W#1050{ ::WT2 WS=1");
    AppendSideText(sides, "#8098=lame.tmcr");
    AppendSideText(sides, alongY ? "#8509=1" : "#8509=0");
    AddCoord(sides, "#8510=", groove.X1);
    AddCoord(sides, "#8511=", groove.Y1);
    AddCoord(sides, "#8512=", -groove.Depth);
    if (groove.ToolNumber != 0)
        AddWhole(sides, "#8516=", groove.ToolNumber); // never substituted
    if (alongY)
        AddCoord(sides, "#8518=", groove.Y2);
    else
        AddCoord(sides, "#8517=", groove.X2);
    AddWhole(sides, "#8525=", groove.GrooveSide == 1 ? 2 : std::abs(groove.GrooveSide));
    AddCoordUnlessZero(sides, "#8523=", groove.Feed);
    AppendSideText(sides, "#8525=0"); // a second time
    AppendSideText(sides, "#8526=0");
    AppendSideText(sides, "#8527=0");
    EndOperation(sides);
}

} // namespace

void AddCoord(SideTexts& sides, std::string_view name, Single value)
{
    AppendSideText(sides, std::string(name) + FormatCoord(value));
}

void AddCoordUnlessZero(SideTexts& sides, std::string_view name, Single value)
{
    if (value != 0)
        AddCoord(sides, name, value);
}

void AddWhole(SideTexts& sides, std::string_view name, Long value)
{
    AppendSideText(sides, std::string(name) + WholeText(value));
}

void AddTool(SideTexts& sides, Long number)
{
    const std::string code = number != 0 ? ToolCode(number) : "0";
    if (code != "0")
        AppendSideText(sides, "#205=" + code);
}

void AddDiameter(SideTexts& sides, Single diameter)
{
    if (diameter == 0)
        return;
    Remember(&WriterMemory::EvolutionDiameter, diameter);
    AppendSideText(sides, DiameterWord(diameter));
}

void EndOperation(SideTexts& sides)
{
    AppendSideText(sides, "}WCR");
    Remember(&WriterMemory::EvolutionWritten, true);
}

bool WriteEvolutionVBores(EvolutionProgram& program)
{
    for (Long i = 1; i <= VBores.Last(); ++i) {
        if (!TakeEvolutionRecord(program))
            return false;
        if (VBores[i].Group > 0)
            WriteVBore(For(program, VBores[i].Drawn), VBores[i]);
    }
    return true;
}

bool WriteEvolutionHBores(EvolutionProgram& program)
{
    for (Long i = 1; i <= HBores.Last(); ++i) {
        if (!TakeEvolutionRecord(program))
            return false;
        if (HBores[i].Group > 0)
            WriteHBore(For(program, HBores[i].Drawn), HBores[i]);
    }
    return true;
}

bool WriteEvolutionGrooves(EvolutionProgram& program)
{
    for (Long i = 1; i <= GroovePasses.Last(); ++i) {
        if (!MayTakeRecord())
            return false;
        WriteGroove(For(program, GroovePasses[i].Drawn), GroovePasses[i]);
    }
    return true;
}

} // namespace kv
