// Words and lines that circles and paths of the routes share. Relies on the writers' tool word, side
// and plane; leaves the opening lines and raises the flags of router work.
#include "writers/cnc/route_words.h"

#include "platform/text.h"
#include "writers/cnc/cnc_words.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/number_format.h"
#include "writers/tool_code.h"
#include "writers/writer_memory.h"

namespace kv {

namespace {

// What a layer name brought along in control characters is no part of the word.
std::string CompensationWord(const RouteSegment& record)
{
    std::string word(record.Comp.Padded());
    for (char& c : word) {
        if (static_cast<unsigned char>(c) < ' ')
            c = ' ';
    }
    return word;
}

} // namespace

std::string NamedToolWord(Int group, Int tool)
{
    return "T" + TwoDigits(group) + ToolCode(tool);
}

void OpenRoute(CncProgram& program, const RouteOpening& opening)
{
    const RouteSegment& first = opening.First;
    std::string line = "G88G90";
    line += InOrder({WholeWord("E", first.ExtraSlot), PlainWord("F", first.FeedDown),
                     PlainWord("B", first.FeedRapid), program.OffsetWord, std::string(opening.SideWord),
                     Recall(&WriterMemory::ToolWord, "tool"), SpeedWord(opening.Shape.Speed),
                     CompensationWord(opening.Shape), PlaceWords(opening.At.X, opening.At.Y), "Z",
                     opening.At.Depth, opening.Parameters});
    program.Add(StripBlanks(line));
    RememberWork(&WriterMemory::RouteWritten, TopBit); // on edges too
}

std::string MotionLine(std::string_view code, Single feed, const WorkingPoint& to)
{
    return StripBlanks(std::string(code) + "G90" + PlainWord("F", feed) + PlaceWords(to.X, to.Y) + "Z" +
                       to.Depth);
}

} // namespace kv
