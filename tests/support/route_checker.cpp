// The walk over route records: what must hold of them so that their lines are paths that a machine
// can run. With arithmetic of its own, as the walk over lines.
#include <algorithm>
#include <cmath>

#include "machine/path_point.h"
#include "support/program_checker.h"

namespace kv::test {

namespace {

constexpr double Degree = 180 / 3.14159265358979323846;
constexpr double NoLength = 0.001; // drawing units

PathPoint PlaceOf(const RouteSegment& record)
{
    return {record.X, record.Y};
}

PathPoint Centre(const RouteSegment& start)
{
    return {start.Aux1, start.Aux2};
}

PathPoint On(const PathPoint& centre, double radius, double angle)
{
    return {centre.X + radius * std::cos(angle / Degree), centre.Y + radius * std::sin(angle / Degree)};
}

double TurnBetween(double a, double b)
{
    return std::fabs(std::remainder(a - b, 360));
}

bool Opens(const RouteSegment& record)
{
    return record.Dir < 0 && record.Kind < 0;
}

// Start marks of two records taken away, as the writers do.
std::vector<RouteSegment> WithoutMarks(std::vector<RouteSegment> records)
{
    for (std::size_t i = 1; i + 1 < records.size(); ++i) {
        if (records[i].Kind != -4)
            continue;
        records[i].Kind = records[i].Dir = 0;
        records[i + 1].Kind = records[i + 1].Dir = 0;
        if (i + 2 < records.size())
            records[i + 2].Dir = -1;
    }
    return records;
}

bool OnFace(const RouteSegment& record)
{
    return record.Side == 5 || record.Side == 0;
}

struct RouteWalker {
    const std::vector<RouteSegment>& Records;
    RouteCheck Check;
    std::vector<std::string> Faults;
    std::vector<ToolPoint> Path; // Line is the record
    PathPoint Tool;
    bool Open = false;

    void Tell(std::size_t record, const std::string& what)
    {
        Faults.push_back("record " + std::to_string(record) + ": " + what);
    }
    bool Near(const PathPoint& a, const PathPoint& b) const { return Between(a, b) <= Check.Tolerance; }
    void GoTo(std::size_t record, bool opens, const PathPoint& place)
    {
        Tool = place;
        Path.push_back({record, opens, place.X, place.Y, 0});
    }
    void LookAtNumbers(std::size_t i)
    {
        const RouteSegment& r = Records[i];
        for (const Single value :
             {r.X, r.Y, r.Z, r.Diameter, r.Aux1, r.Aux2, r.Feed, r.FeedDown, r.FeedRapid, r.ParamA, r.ParamB})
            if (!std::isfinite(value))
                return Tell(i, "a value that is no number");
    }
    // A circle that goes on behind itself starts at its new entry, not where the tool stands.
    bool GoesOnAround(std::size_t i) const
    {
        return Records[i - 1].Kind == 3 && i >= 2 && Near(Centre(Records[i - 2]), Centre(Records[i])) &&
               std::fabs(Between(Tool, Centre(Records[i])) -
                         Between(PlaceOf(Records[i]), Centre(Records[i]))) <= Check.Tolerance;
    }
    void LookAtLength(std::size_t i, double radius)
    {
        const RouteSegment& end = Records[i + 1];
        if (radius < Check.Tolerance)
            return Tell(i, "an arc of no radius");
        // 360 and 0 too: an arc drawn all the way round.
        const bool fullCircle = std::remainder(end.Aux1 - end.Aux2, 360.0F) == 0;
        double sweep = std::fmod(static_cast<double>(end.Aux2) - static_cast<double>(end.Aux1), 360);
        if (end.Dir == 0)
            sweep = -sweep;
        if (sweep < 0)
            sweep += 360;
        if (!fullCircle && sweep / Degree * radius < NoLength)
            Tell(i, "an arc of no length");
        if (!fullCircle && sweep < 180 && Between(Tool, PlaceOf(end)) < NoLength)
            Tell(i, "an arc of no length");
    }
    void TakeArc(std::size_t i)
    {
        const RouteSegment& start = Records[i];
        const RouteSegment& end = Records[i + 1];
        if (Check.Joined && !Opens(start) && !Near(Tool, PlaceOf(start)) && !GoesOnAround(i))
            Tell(i, "an arc that does not start where the tool stands");
        const double radius = Between(PlaceOf(start), Centre(start));
        LookAtLength(i, radius);
        const double endRadius = Between(PlaceOf(end), Centre(start));
        const PathPoint byAngle = On(Centre(start), radius, end.Aux2);
        const bool angle = OnFace(start) && Check.AnglesHold;
        if (Check.EndsAtPoints && std::fabs(endRadius - radius) > Check.Tolerance)
            Tell(i + 1, "an arc that ends beside its circle");
        else if (Check.EndsAtPoints && angle && !Near(byAngle, PlaceOf(end)))
            Tell(i + 1, "an arc whose end angle points elsewhere");
        // The control knows the place where the tool stands, not that of the record.
        const PathPoint reached = On(Centre(start), Between(Tool, Centre(start)), end.Aux2);
        GoTo(i + 1, false, angle ? reached : PlaceOf(end));
    }
    void TakePoint(std::size_t i)
    {
        const RouteSegment& record = Records[i];
        const RouteSegment& before = Records[i - 1];
        if (record.Kind < 0) {
            if (!Opens(record) && Check.Joined && !Near(Tool, PlaceOf(record)))
                Tell(i, "a line that does not start where the tool stands");
            return;
        }
        if (before.Kind == 3 && before.Aux2 != 0)
            Tell(i, "a line that takes an arc's end angle as its bulge");
        const bool noLine = before.Aux2 != 0 && Between(PlaceOf(before), PlaceOf(record)) == 0;
        if (!noLine)
            GoTo(i, false, PlaceOf(record));
    }
    void Walk()
    {
        for (std::size_t i = 1; i < Records.size(); ++i) {
            const RouteSegment& record = Records[i];
            const int kind = std::abs(record.Kind);
            LookAtNumbers(i);
            if (kind == 0 || kind == 4)
                continue;
            if (kind == 2 || kind > 5) {
                Tell(i, "a record of a kind that is not walked");
                continue;
            }
            if (Opens(record)) {
                Open = true;
                GoTo(i, true, PlaceOf(record));
            }
            if (!Open)
                Tell(i, "a record outside of any route");
            if (kind == 3) {
                if (record.Kind > 0 || i + 1 == Records.size() || Records[i + 1].Kind != 3) {
                    Tell(i, "half an arc");
                    continue;
                }
                TakeArc(i);
                ++i;
                LookAtNumbers(i);
            } else {
                TakePoint(i);
            }
        }
    }
};

std::vector<ToolPoint> WithoutLonePoints(const std::vector<ToolPoint>& path)
{
    std::vector<ToolPoint> kept;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const bool goesOn = i + 1 < path.size() && !path[i + 1].Opens;
        if (!path[i].Opens || goesOn)
            kept.push_back(path[i]);
    }
    return kept;
}

// A move of a route: where it is, the way's direction at both of its ends.
struct Element {
    std::size_t Record = 0;
    bool IsArc = false;
    PathPoint From, To;
    double Starts = 0, Ends = 0;
};

Element ArcElement(const RouteSegment& start, const RouteSegment& end)
{
    const double quarter = end.Dir != 0 ? 90 : -90;
    Element element{0, true, PlaceOf(start), PlaceOf(end), 0, 0};
    element.Starts = DirectionTo(Centre(start), element.From) + quarter;
    element.Ends = DirectionTo(Centre(start), element.To) + quarter;
    return element;
}

Element SpanElement(const RouteSegment& from, const RouteSegment& to)
{
    const double half = 2 * std::atan(static_cast<double>(from.Aux2)) * Degree;
    const double chord = DirectionTo(PlaceOf(from), PlaceOf(to));
    return {0, from.Aux2 != 0, PlaceOf(from), PlaceOf(to), chord - half, chord + half};
}

std::vector<Element> ElementsOf(const std::vector<RouteSegment>& records, std::size_t first, std::size_t end)
{
    std::vector<Element> elements;
    for (std::size_t i = first + 1; i < end; ++i) {
        const RouteSegment& from = records[i - 1];
        const RouteSegment& to = records[i];
        if (to.Kind <= 0 || to.Kind == 4)
            continue;
        Element element = to.Kind == 3 ? ArcElement(from, to) : SpanElement(from, to);
        element.Record = i;
        if (element.IsArc || Between(element.From, element.To) > NoLength)
            elements.push_back(element);
    }
    return elements;
}

int ToolSideOf(const RouteSegment& record)
{
    const std::string_view comp = record.Comp.Trimmed().substr(0, 3);
    return comp == "G41" ? 1 : comp == "G42" ? -1 : 0;
}

bool LiesOn(int side, const PathPoint& joint, double direction, const PathPoint& far)
{
    const PathPoint way = On({0, 0}, 1, direction);
    return side * (way.X * (far.Y - joint.Y) - way.Y * (far.X - joint.X)) > 0;
}

struct Lead {
    const Element& Arc;
    double AtArc, AtRoute; // directions where they meet
    PathPoint Joint, Far;
};

void LookAtLead(std::vector<std::string>& faults, const Lead& lead, int side, const LeadCheck& check)
{
    if (!lead.Arc.IsArc)
        return;
    const std::string place = "record " + std::to_string(lead.Arc.Record) + ": ";
    if (TurnBetween(lead.AtArc, lead.AtRoute) > check.Angle)
        faults.push_back(place + "a lead that meets its route in a corner");
    if (check.OnToolSide && side != 0 && !LiesOn(side, lead.Joint, lead.AtRoute, lead.Far))
        faults.push_back(place + "a lead on the finished side");
}

void LookAtLeads(std::vector<std::string>& faults, const std::vector<Element>& elements, int side,
                 const LeadCheck& check)
{
    if (elements.size() < 2)
        return;
    const Element& first = elements.front();
    const Element& last = elements.back();
    if (check.In)
        LookAtLead(faults, {first, first.Ends, elements[1].Starts, first.To, first.From}, side, check);
    if (check.Out)
        LookAtLead(faults, {last, last.Starts, elements[elements.size() - 2].Ends, last.From, last.To}, side,
                   check);
}

bool SameCentre(const RouteSegment& a, const RouteSegment& b)
{
    return a.Kind == -3 && b.Kind == -3 && a.Aux1 == b.Aux1 && a.Aux2 == b.Aux2;
}

} // namespace

std::vector<std::string> UnforcedFaults(const std::vector<RouteSegment>& records, const RouteCheck& check)
{
    std::vector<std::string> faults;
    for (const std::string& fault : RouteFaults(records, check)) {
        const auto record = static_cast<std::size_t>(std::stoul(fault.substr(7))); // "record 12: ..."
        const bool goesOn = record > 2 && SameCentre(records[record - 2], records[record]);
        if (!goesOn || !fault.ends_with("an arc of no length"))
            faults.push_back(fault);
    }
    return faults;
}

std::vector<RouteSegment> CurrentRoutes()
{
    return {RouteSegments.begin(), RouteSegments.end()};
}

std::vector<std::string> RouteFaults(const std::vector<RouteSegment>& records, const RouteCheck& check)
{
    const std::vector<RouteSegment> walked = WithoutMarks(records);
    RouteWalker walker{walked, check, {}, {}, {}, false};
    walker.Walk();
    return walker.Faults;
}

std::vector<std::string> PathFaults(const std::vector<std::string>& lines,
                                    const std::vector<RouteSegment>& records, const RouteCheck& check)
{
    const std::vector<RouteSegment> marked = WithoutMarks(records);
    RouteWalker walker{marked, check, {}, {}, {}, false};
    walker.Walk();
    const std::vector<ToolPoint> wanted = WithoutLonePoints(walker.Path);
    const std::vector<ToolPoint> walked = WithoutLonePoints(ToolPath(lines));
    std::vector<std::string> faults;
    for (std::size_t i = 0; i < std::min(wanted.size(), walked.size()); ++i) {
        const std::string place =
            "line " + std::to_string(walked[i].Line) + ", record " + std::to_string(wanted[i].Line) + ": ";
        const double apart = Between({walked[i].X, walked[i].Y}, {wanted[i].X, wanted[i].Y});
        if (walked[i].Opens != wanted[i].Opens)
            faults.push_back(place + "a route opens on one side alone");
        else if (!(apart <= check.Tolerance + walked[i].Slack))
            faults.push_back(place + "the tool goes elsewhere");
    }
    if (wanted.size() != walked.size())
        faults.push_back(std::to_string(walked.size()) + " places for " + std::to_string(wanted.size()) +
                         " records");
    return faults;
}

std::vector<std::string> LeadFaults(const std::vector<RouteSegment>& records, const LeadCheck& check)
{
    std::vector<std::string> faults;
    const std::vector<RouteSegment> walked = WithoutMarks(records);
    for (std::size_t first = 1; first < walked.size();) {
        std::size_t end = first + 1;
        while (end < walked.size() && !Opens(walked[end]))
            ++end;
        if (Opens(walked[first]))
            LookAtLeads(faults, ElementsOf(walked, first, end), ToolSideOf(walked[first]), check);
        first = end;
    }
    return faults;
}

} // namespace kv::test
