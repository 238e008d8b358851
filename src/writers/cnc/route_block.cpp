// Routes as lines of the program: circles that no path took, the drawing's second G-code texts, the
// paths, the third ones. Relies on chained and mirrored records; leaves the lines, the groups of
// tools outside the router's magazine and, in the writers' memory, flags, tool word and plane.
#include "platform/text.h"
#include "routes/route_runs.h"
#include "state/report.h"
#include "writers/cnc/cnc_words.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/cnc/route_words.h"
#include "writers/number_format.h"
#include "writers/program_families.h"
#include "writers/writer_memory.h"

namespace kv {

namespace {

void WriteTexts(CncProgram& program, const std::vector<std::string>& texts)
{
    program.Drawn = 0;
    for (std::size_t i = 1; i < texts.size(); ++i)
        program.Add(texts[i]);
}

// One full turn from the circle's lowest point. A circle without tool and diameter has the word too.
void WriteCircle(CncProgram& program, RouteCircle& circle)
{
    program.Drawn = circle.Drawn;
    SettleRouteGroup(circle);
    Remember(&WriterMemory::ToolWord, circle.ToolNo != 0 ? NamedToolWord(circle.Group, circle.ToolNo)
                                                         : "R54=" + PlainText(circle.Diameter));
    const Single x = circle.X;
    const Single y = ToSingle(static_cast<double>(circle.Y) - static_cast<double>(circle.Radius));
    TakeRouteSide(circle.Side);
    SetPlaneWords(x, y, 0, circle.Radius);

    RouteSegment start = SegmentOfCircle(circle);
    start.FeedRapid = 0; // a circle has no B word
    const PlaneWords& plane = PlaneOfRoute();
    OpenRoute(program, {start, start, plane.Side, PointInPlane(x, y, circle.Z), {}});

    if (Writers.RouteSide == Face)
        program.Add("G2G90G17" + PlaceWords(x, y) + "I0J" + FormatCoord(circle.Radius));
    else
        program.Add("G2G90" + plane.Code + PlainWord("F", circle.Feed) + plane.X + plane.Y + plane.I +
                    plane.J + plane.K);
}

} // namespace

bool WriteRouteBlock(CncProgram& program)
{
    for (Long i = 1; i <= RouteCircles.Last(); ++i) {
        if (!MayTakeRecord())
            return false;
        if (RouteCircles[i].Pass > 0)
            WriteCircle(program, RouteCircles[i]);
    }
    SetMeter(Meter::PgmCode, 75);
    WriteTexts(program, Run.GCode2);
    if (!WriteRoutePaths(program))
        return false;
    WriteTexts(program, Run.GCode3);
    return true;
}

} // namespace kv
