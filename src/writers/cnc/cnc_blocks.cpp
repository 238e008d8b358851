// Vertical bores, grooves and horizontal bores as lines of the program. Relies on mirrored records;
// leaves the lines and, in the writers' memory, the output flags, the side mask and the last speed.
// Nearly every line loses its blanks, also those inside a tool's text.
#include <cmath>

#include "platform/text.h"
#include "state/report.h"
#include "writers/cnc/cnc_words.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/number_format.h"
#include "writers/program_families.h"
#include "writers/tool_code.h"
#include "writers/writer_memory.h"

namespace kv {

namespace {

constexpr double HighestDrill = 63;            // numbers above name router tools
constexpr std::size_t DrillChainTextWidth = 4; // a tool text of two digit pairs names drills
constexpr Long SawAlongX = 60, SawAlongY = 61;

void RaiseTopDrilling()
{
    RememberWork(&WriterMemory::TopDrillingWritten, TopBit);
}

void WriteHeadPosition(CncProgram& program, const HeadPosition& stop)
{
    program.Drawn = stop.Drawn;
    const bool alongX = stop.Direction > 0 && stop.ChainSize != 1;
    const bool alongY = stop.Direction <= 0 && stop.ChainSize >= 2;
    std::string line = alongX ? "G183G90" : alongY ? "G184G90" : "G81G90";
    line += InOrder({WholeWord("E", stop.ExtraSlot), PlainWord("F", stop.Feed), program.OffsetWord, "P5T01",
                     std::string(stop.Tool.Trimmed()), SpeedWord(Recall(&WriterMemory::LastSpeed, "speed")),
                     PlaceWords(stop.X, stop.Y), "Z", DepthWord(stop.Depth)});
    if (alongX)
        line += "I" + FormatCoord(stop.EndX);
    if (alongY) {
        line += "J" + FormatCoord(stop.EndY);
        program.Add({}); // a G184 takes two slots and the first stays empty
    }
    program.Add(StripBlanks(line));
    RaiseTopDrilling();
}

void WriteVBore(CncProgram& program, const VBoreRecord& bore)
{
    program.Drawn = bore.Drawn;
    const std::string_view tool = bore.Tool.Padded();
    const bool router = Val(tool) > HighestDrill && Trim(tool).size() < DrillChainTextWidth;
    std::string line = router ? "G88G90" : "G81G90";
    line += InOrder({WholeWord("E", bore.ExtraSlot), PlainWord("F", bore.Feed), program.OffsetWord, "P5",
                     BoreToolWord(tool, bore.Group, bore.Diameter), SpeedWord(bore.Speed),
                     PlaceWords(bore.X, bore.Y), "Z", DepthWord(bore.Depth)});
    program.Add(StripBlanks(line));
    RaiseTopDrilling();
}

double Extent(Single from, Single to)
{
    return std::fabs(static_cast<double>(to) - static_cast<double>(from));
}

// A tool in letter form ("a5" for 105) has the value 0 too and is replaced by the saw.
std::string SawToolCode(Long number, Long saw)
{
    const std::string code = ToolCode(number);
    return Val(code) == 0 ? ToolCode(saw) : code;
}

void WriteGroove(CncProgram& program, const GroovePass& groove)
{
    program.Drawn = groove.Drawn;
    const bool alongY = Extent(groove.Y1, groove.Y2) > Extent(groove.X1, groove.X2); // a tie runs along X
    std::string line = alongY ? "G86" : "G85";
    line += PlainWord("F", groove.Feed) + program.OffsetWord + "P5T01" +
            SawToolCode(groove.ToolNumber, alongY ? SawAlongY : SawAlongX);
    if (groove.GrooveSide != 0)
        line += groove.GrooveSide < 0 ? "G41" : "G42";
    line += PlaceWords(groove.X1, groove.Y1) + "Z";

    std::string depth = DepthWord(groove.Depth);
    if (IsDepthCode(groove.Depth))
        depth += ' '; // stays in the line, which is stripped only up to its "Z"
    program.Add(StripBlanks(line) + depth + "Q" + FormatCoord(alongY ? groove.Y2 : groove.X2));
    RememberWork(&WriterMemory::GrooveWritten, TopBit);
}

void WriteHBore(CncProgram& program, const HBoreRecord& bore)
{
    program.Drawn = bore.Drawn;
    std::string line = "G81G90";
    line += InOrder({WholeWord("E", bore.ExtraSlot), PlainWord("F", bore.Feed), program.OffsetWord, "P",
                     WholeText(bore.Side), BoreToolWord(bore.Tool.Padded(), bore.Group, bore.Diameter),
                     SpeedWord(bore.Speed), PlaceWords(bore.PosX, bore.PosY), "Z", DepthWord(bore.Z)});
    program.Add(StripBlanks(line));
    RememberSides(ToInt(std::exp2(static_cast<double>(bore.Side) - 1)));
    program.HorizontalWritten = true;
}

} // namespace

bool WriteVerticalBlock(CncProgram& program)
{
    for (Long i = 1; i <= HeadPositions.Last(); ++i) {
        if (!MayTakeRecord())
            return false;
        if (!HeadPositions[i].Tool.Trimmed().empty())
            WriteHeadPosition(program, HeadPositions[i]);
    }
    for (Long i = 1; i <= VBores.Last(); ++i) {
        if (!MayTakeRecord())
            return false;
        if (VBores[i].Group > 0)
            WriteVBore(program, VBores[i]);
    }
    SetMeter(Meter::PgmCode, 50);
    return true;
}

bool WriteGrooveBlock(CncProgram& program)
{
    for (Long i = 1; i <= GroovePasses.Last(); ++i) {
        if (!MayTakeRecord())
            return false;
        WriteGroove(program, GroovePasses[i]);
    }
    return true;
}

bool WriteHorizontalBlock(CncProgram& program)
{
    for (Long i = 1; i <= HBores.Last(); ++i) {
        if (!MayTakeRecord())
            return false;
        if (HBores[i].Group > 0)
            WriteHBore(program, HBores[i]);
    }
    return true;
}

} // namespace kv
