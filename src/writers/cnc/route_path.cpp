// The records of the routes, one after the other, as motion lines: points, bulged spans, arcs through
// fit points, arcs by centre and end angle. Relies on chained and mirrored records, a route's first
// record having a negative Dir; leaves the lines, clears start marks and settles tool groups in the
// records.
#include <cmath>

#include "platform/text.h"
#include "routes/route_runs.h"
#include "state/drawn_entities.h"
#include "state/report.h"
#include "writers/cnc/cnc_words.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/cnc/route_words.h"
#include "writers/number_format.h"
#include "writers/program_families.h"
#include "writers/route_starts.h"
#include "writers/writer_memory.h"

namespace kv {

namespace {

constexpr double StraightTurn = 0.005; // degrees; below it three points lie on a line

// A record that names neither tool nor diameter keeps the word of the one in front.
void TakeTool(RouteSegment& record)
{
    SettleRouteGroup(record);
    if (record.ToolNo != 0)
        Remember(&WriterMemory::ToolWord, NamedToolWord(record.Group, record.ToolNo));
    else if (record.Diameter != 0)
        Remember(&WriterMemory::ToolWord, "R54=" + PlainText(record.Diameter));
}

std::string ParameterWords(const RouteSegment& record)
{
    if (record.ParamA == 0 && record.ParamB == 0)
        return {};
    return "C" + FormatCoord(record.ParamA) + "V" + FormatCoord(record.ParamB);
}

// No radius, no line: the two points are the same.
void WriteBulge(CncProgram& program, const RouteSegment& from, const RouteSegment& to)
{
    const double bulge = std::fabs(static_cast<double>(from.Aux2));
    const double half = Distance(PointOf(from), PointOf(to)) / 2;
    const double rise = bulge * half;
    const double radius = (half * half + rise * rise) / (2 * rise);
    if (!(radius > 0))
        return;
    const WorkingPoint end = PointInPlane(to.X, to.Y, to.Z);
    const bool longWay = bulge > 1;
    program.Add(StripBlanks(
        InOrder({from.Aux2 < 0 ? "G37G90" : "G38G90", PlainWord("F", from.Feed), PlaceWords(end.X, end.Y),
                 "U", FormatCoord(ToSingle(longWay ? -radius : radius)), "Z", end.Depth})));
}

// Feed and bulge of a span stand in the record in front.
void WritePoint(CncProgram& program, const RouteSegment& previous, const RouteSegment& record)
{
    if (OpensRoute(record))
        TakeRouteSide(record.Side);
    SetPlaneWords(record.X, record.Y);
    const WorkingPoint at = PointInPlane(record.X, record.Y, record.Z);
    if (record.Kind < 0) {
        if (OpensRoute(record))
            OpenRoute(program, {record, record, PlaneOfRoute().Side, at, ParameterWords(record)});
        return; // inside a route it stands where the one in front ends
    }
    if (previous.Aux2 == 0)
        program.Add(MotionLine("G1", previous.Feed, at));
    else
        WriteBulge(program, previous, record);
}

// On the face the line names centre and end angle, elsewhere the end point in the edge's plane.
void WriteArc(CncProgram& program, const RouteSegment& start, const RouteSegment& end)
{
    if (OpensRoute(start))
        TakeRouteSide(start.Side);
    const Single i = ToSingle(static_cast<double>(start.Aux1) - static_cast<double>(start.X));
    const Single j = ToSingle(static_cast<double>(start.Aux2) - static_cast<double>(start.Y));
    SetPlaneWords(end.X, end.Y, i, j);
    if (OpensRoute(start))
        OpenRoute(program, {start, end, PlaneOfRoute().Side, PointInPlane(start.X, start.Y, start.Z),
                            ParameterWords(start)});

    const bool counterClockwise = end.Dir != 0;
    const std::string feed = PlainWord("F", start.Feed);
    if (SideOfRoute() == Face) {
        program.Add(StripBlanks(
            InOrder({counterClockwise ? "G38G90" : "G37G90", feed, PlaceWords(start.Aux1, start.Aux2), "A",
                     FormatAngle(end.Aux2), "Z", DepthWord(end.Z)})));
        return;
    }
    const PlaneWords& plane = PlaneOfRoute();
    program.Add((counterClockwise ? "G3G90" : "G2G90") + plane.Code + feed + plane.X + plane.Y + plane.Z +
                plane.I + plane.J + plane.K);
}

// Arcs through three points: the anchor, a middle point that waits for the third, the third.
struct FitPoints {
    bool Pending = false;
    RouteSegment Middle;
};

WorkingPoint PointOnFace(const RouteSegment& record)
{
    return {record.X, record.Y, DepthWord(record.Z)};
}

// Direction to the anchor with X and Y exchanged, so it counts clockwise from +Y.
Single DirectionToAnchor(const RouteSegment& from)
{
    const Single x = Recall(&WriterMemory::FitX, "X of an arc's start");
    const Single y = Recall(&WriterMemory::FitY, "Y of an arc's start");
    return ToSingle(Bearing({from.Y, from.X}, {y, x}));
}

std::string FitLine(const RouteSegment& middle, const RouteSegment& end)
{
    // Not brought into one turn: directions either side of +Y differ by nearly 360.
    const double fromMiddle = DirectionToAnchor(middle);
    const double fromEnd = DirectionToAnchor(end);
    const double turn = fromMiddle - fromEnd;
    if (std::fabs(turn) < StraightTurn)
        return MotionLine("G1", end.Feed, PointOnFace(end));
    return StripBlanks((turn > 0 ? "G113" : "G112") + std::string("G90G17") + PlainWord("F", end.Feed) +
                       PlaceWords(end.X, end.Y) + "I" + FormatCoord(middle.X) + "J" + FormatCoord(middle.Y));
}

void TakeFitPoint(CncProgram& program, FitPoints& fit, const RouteSegment& record)
{
    if (!OpensRoute(record) && !fit.Pending) {
        fit.Middle = record;
        fit.Pending = true;
        return;
    }
    if (OpensRoute(record)) // one that waits is dropped
        OpenRoute(program, {record, record, "P5", PointOnFace(record), {}});
    else
        program.Add(FitLine(fit.Middle, record));
    fit.Pending = false;
    Remember(&WriterMemory::FitX, record.X);
    Remember(&WriterMemory::FitY, record.Y);
}

void TellReplacedLine(const ProgramLine& line, const RouteSegment& by)
{
    const std::vector<Long> entities = EntitiesOf(line.Drawn);
    if (entities.empty() || EntitiesOf(by.Drawn) == entities)
        return;
    const std::string layer = DrawnLayerOf(entities.front());
    Tell(Message::LineReplaced, WithPlace({{"layer", layer}, {"words", line.Text}}, line.Drawn));
}

// A point that still waits at the end takes the place of the last line.
void EndFitPoints(CncProgram& program, const FitPoints& fit)
{
    if (!fit.Pending)
        return;
    TellReplacedLine(program.Lines.back(), fit.Middle);
    program.Lines.back() = {MotionLine("G1", fit.Middle.Feed, PointOnFace(fit.Middle)), fit.Middle.Drawn};
}

} // namespace

bool WriteRoutePaths(CncProgram& program)
{
    FitPoints fit;
    StartCheck start;
    for (Long i = 1; i <= RouteSegments.Last(); ++i) {
        if (!MayTakeRecord())
            return false;
        ClearStartMark(i);
        RouteSegment& record = RouteSegments[i];
        TakeTool(record);
        start.Take(record);
        program.Drawn = record.Drawn;
        const Int kind = KindOf(record);
        if (kind == 1 || kind == 5)
            WritePoint(program, RouteSegments[i - 1], record);
        if (kind == 2)
            TakeFitPoint(program, fit, record);
        if (kind == 3 && i < RouteSegments.Last()) {
            program.Drawn = DrawnTogether(record.Drawn, RouteSegments[i + 1].Drawn);
            WriteArc(program, record, RouteSegments[i + 1]);
            ++i; // an arc is two records
        }
    }
    EndFitPoints(program, fit);
    return true;
}

} // namespace kv
