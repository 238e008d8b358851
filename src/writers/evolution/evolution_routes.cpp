// Routes as lines of a Genesis Evolution program: start, straight spans, bulged spans by radius and
// centre offset, arcs by centre and end angle. Relies on chained and mirrored records, a route's first
// record having a negative Dir; leaves the lines and clears start marks in the records.
#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include "platform/text.h"
#include "platform/trigonometry.h"
#include "routes/route_runs.h"
#include "state/drawn_entities.h"
#include "writers/evolution/evolution_writer.h"
#include "writers/number_format.h"
#include "writers/route_starts.h"
#include "writers/writer_memory.h"

namespace kv {

namespace {

constexpr Int AboveSide = 1, LeftSide = 3; // drawn as seen from inside: arcs turn the other way

// The number behind the first R: "G41 R5".
Single CompensationRadius(std::string_view compensation)
{
    const Long at = Find(1, compensation, "R");
    return at == 0 ? 0.0F : ToSingle(Val(Mid(compensation, at + 1)));
}

std::string_view CompensationSide(std::string_view compensation)
{
    if (Holds(compensation, "G41"))
        return "1";
    return Holds(compensation, "G42") ? "2" : "";
}

// The diameter is the last bore's: a route carries none.
void WriteStart(SideTexts& sides, const RouteSegment& record)
{
    const std::string_view compensation = record.Comp.Padded();
    AppendSideText(sides, "W#89{ ::WTs WS=1");
    if (record.ToolNo == 0)
        AppendSideText(sides, " WB=1"); // behind two blanks
    AddCoord(sides, "#1=", record.X);
    AddCoord(sides, "#2=", record.Y);
    AppendSideText(sides, SideDepthWord(record.Z));
    AppendSideText(sides, "#8015=0");
    AppendSideText(sides, "#8101=0");
    AppendSideText(sides, "#8096=0");
    AddCoord(sides, "#36=", CompensationRadius(compensation));
    AppendSideText(sides, "#40=" + std::string(CompensationSide(compensation)));
    AddCoordUnlessZero(sides, "#9504=", record.FeedRapid);
    AppendSideText(sides, "#201=1");
    AddWhole(sides, "#203=", record.Group);
    AddTool(sides, record.ToolNo);
    AddDiameter(sides, Recall(&WriterMemory::EvolutionDiameter, "diameter"));
    AddCoordUnlessZero(sides, "#2005=", record.FeedDown);
    AddCoordUnlessZero(sides, "#2002=", record.Speed);
    EndOperation(sides);
}

void WriteLine(SideTexts& sides, const RouteSegment& from, const RouteSegment& to)
{
    AppendSideText(sides, "W#2201{ ::WTl");
    AddCoord(sides, "#1=", to.X);
    AddCoord(sides, "#2=", to.Y);
    AppendSideText(sides, SideDepthWord(to.Z));
    AppendSideText(sides, "#8015=0");
    AddCoordUnlessZero(sides, "#2008=", from.Feed);
    EndOperation(sides);
}

// To three decimals first, then to those of the setting. Rounded between -180 and 180, so that a hair
// below the X axis is 0 and not 360.
Single EndAngle(const PlanePoint& centre, const PlanePoint& point)
{
    constexpr double halfTurn = 180, fullTurn = 360;
    const double angle = Bearing(centre, point);
    const double rounded = Val(FormatAngle(ToSingle(angle > halfTurn ? angle - fullTurn : angle)));
    return ToSingle(rounded < 0 ? rounded + fullTurn : rounded);
}

// No radius, no line: the two points are the same.
void WriteBulge(SideTexts& sides, const RouteSegment& from, const RouteSegment& to)
{
    const double bulge = std::fabs(static_cast<double>(from.Aux2));
    const Single angle = ToSingle(4 * ArcTangent(bulge) * 180 / static_cast<double>(Run.Pi)); // degrees
    const double half = Distance(PointOf(from), PointOf(to)) / 2;
    const double radius = half / Sine(static_cast<double>(angle) / 2 * static_cast<double>(Run.DegToRad));
    if (!(radius > 0) || RoundedToFiveDecimals(2 * half) == 0)
        return;
    bool clockwise = from.Aux2 < 0;
    if (to.Side == AboveSide || to.Side == LeftSide)
        clockwise = !clockwise;
    const double longWay = bulge > 1 ? -radius : radius;
    const PlanePoint centre = ArcCentre(PointOf(to), PointOf(from), clockwise ? -longWay : longWay);
    AppendSideText(sides, "W#2113{ ::WTa");
    AppendSideText(sides, "#8015=0");
    AppendSideText(sides, SideDepthWord(to.Z));
    AddCoord(sides, "#31=", ToSingle(centre.X - static_cast<double>(from.X)));
    AddCoord(sides, "#32=", ToSingle(centre.Y - static_cast<double>(from.Y)));
    AppendSideText(sides, clockwise ? "#34=0" : "#34=1");
    AppendSideText(sides, "#8017=" + FormatAngle(ToSingle(radius)));
    AddCoord(sides, "#8044=", EndAngle(centre, PointOf(to)));
    AddCoordUnlessZero(sides, "#2008=", from.Feed);
    EndOperation(sides);
}

// Feed and bulge of a span stand in the record in front.
void WritePoint(SideTexts& sides, const RouteSegment& previous, const RouteSegment& record)
{
    if (OpensRoute(record))
        SelectSide(sides, record.Side);
    if (record.Kind < 0) {
        if (OpensRoute(record))
            WriteStart(sides, record);
        return; // inside a route it stands where the one in front ends
    }
    if (previous.Aux2 == 0)
        WriteLine(sides, previous, record);
    else
        WriteBulge(sides, previous, record);
}

void WriteArc(SideTexts& sides, const RouteSegment& start, const RouteSegment& end)
{
    if (OpensRoute(start)) {
        SelectSide(sides, start.Side);
        WriteStart(sides, start);
    }
    AppendSideText(sides, "W#2113{ ::WTa");
    AppendSideText(sides, "#8015=0");
    AppendSideText(sides, end.Dir != 0 ? "#34=1" : "#34=0");
    AddCoord(sides, "#31=a;", start.Aux1);
    AddCoord(sides, "#32=a;", start.Aux2);
    AppendSideText(sides, SideDepthWord(end.Z));
    AppendSideText(sides, "#8044=" + FormatAngle(ToSingle(Bearing(CentreOf(start), PointOf(end)))));
    AddCoordUnlessZero(sides, "#2008=", start.Feed);
    EndOperation(sides);
}

} // namespace

double RoundedToFiveDecimals(double value)
{
    constexpr std::size_t decimals = 5;
    constexpr double wholeSteps = 1e5; // of the last decimal
    constexpr double coarse = 1e10;    // from here on a double has no such decimals to spare
    constexpr int exactDecimals = 40;  // enough to tell a tie from its neighbours
    if (!(value < coarse))
        return value;
    std::array<char, 64> buffer{};
    const std::to_chars_result written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                                       std::chars_format::fixed, exactDecimals);
    std::string digits(buffer.data(), written.ptr);
    const std::size_t point = digits.find('.');
    digits.erase(point, 1);
    const bool up = digits[point + decimals] >= '5';
    long long steps = 0;
    std::from_chars(digits.data(), digits.data() + point + decimals, steps);
    return static_cast<double>(steps + (up ? 1 : 0)) / wholeSteps;
}

PlanePoint ArcCentre(const PlanePoint& first, const PlanePoint& second, double r)
{
    const double c = RoundedToFiveDecimals(Distance(first, second));
    const double t = std::sqrt(std::fabs(r * r - c / 2 * (c / 2)));
    const double a = t * (first.Y - second.Y) / c;
    const double b = t * (second.X - first.X) / c;
    const PlanePoint middle = {(first.X + second.X) / 2, (first.Y + second.Y) / 2};
    if (r > 0)
        return {middle.X - a, middle.Y - b};
    return {middle.X + a, middle.Y + b};
}

bool WriteEvolutionRoutes(EvolutionProgram& program)
{
    StartCheck start;
    for (Long i = 1; i <= RouteSegments.Last(); ++i) {
        if (!TakeEvolutionRecord(program))
            return false;
        ClearStartMark(i);
        const RouteSegment& record = RouteSegments[i];
        start.Take(record);
        const Int kind = KindOf(record);
        if (kind == 1 || kind == 2 || kind == 5)
            WritePoint(For(program, record.Drawn), RouteSegments[i - 1], record);
        if (kind != 3 || i == RouteSegments.Last())
            continue;
        ++i; // an arc is two records
        if (!TakeEvolutionRecord(program))
            return false;
        WriteArc(For(program, DrawnTogether(record.Drawn, RouteSegments[i].Drawn)), record, RouteSegments[i]);
    }
    return true;
}

} // namespace kv
