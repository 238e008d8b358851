// Records of lines, arcs and polylines become closed ways of vertices and bulges. Relies on linked
// chains; leaves the records as they are.
#include "routes/drawn_outlines.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/text.h"
#include "routes/pocket_values.h"

#include "platform/trigonometry.h"

namespace kv {

namespace {

constexpr Int MarkOpens = -4, MarkSize = 4, FitPointSize = 2, VertexSize = 5;
constexpr double SeenGap = 0.01;           // drawing units; less is what a drawing's digits leave open
constexpr std::size_t MostOpenWays = 1000; // joined by trying all pairs
constexpr double SamePoint = 1e-6;         // drawing units

// The run that is being read.
struct OutlineRun {
    std::size_t First = 0; // record
    ClosedPath Way;        // the last vertex is where it has come to
    std::vector<OutlineGap> Gaps;
    std::optional<PlanePoint> Mark;
    std::optional<std::size_t> Pattern; // record
    bool HasFitPoints = false;
};

void GoTo(ClosedPath& way, const PlanePoint& to, double bulge)
{
    way.back().Bulge = bulge;
    way.push_back({to, 0});
}

// The angles are those of the points themselves; more than a half turn is two spans.
void GoAround(ClosedPath& way, const RouteSegment& start, const RouteSegment& end)
{
    const PlanePoint centre = CentreOf(start);
    const auto angleOf = [&centre](const PlanePoint& point) {
        return AngleOfVector(point.Y - centre.Y, point.X - centre.X);
    };
    const double begin = angleOf(PointOf(start));
    const double sense = end.Dir != 0 ? 1 : -1; // above 0 counter-clockwise
    double sweep = sense * (angleOf(PointOf(end)) - begin);
    if (sweep <= 0)
        sweep += 2 * std::numbers::pi;
    const int spans = sweep > std::numbers::pi ? 2 : 1;
    const double bulge = sense * Tangent(sweep / spans / 4);
    if (spans == 2) {
        const double radius = Distance(centre, PointOf(start));
        const double middle = begin + sense * sweep / 2;
        GoTo(way, {centre.X + radius * Cosine(middle), centre.Y + radius * Sine(middle)}, bulge);
    }
    GoTo(way, PointOf(end), bulge);
}

bool Meets(const PlanePoint& end, const PlanePoint& begin)
{
    return Distance(end, begin) <= OutlineTolerance();
}

// From where the way has come to. A gap that a person would see becomes a line.
void Bridge(ClosedPath& way, const PlanePoint& to, std::vector<OutlineGap>& gaps)
{
    const PlanePoint from = way.back().At;
    if (Distance(from, to) > SeenGap) {
        gaps.push_back({from, to});
        GoTo(way, to, 0);
    } else {
        way.back().At = to;
    }
}

ClosedPath WithoutEqualPoints(const ClosedPath& way)
{
    ClosedPath path;
    for (const PathVertex& vertex : way) {
        if (!path.empty() && Distance(path.back().At, vertex.At) <= SamePoint)
            path.pop_back();
        path.push_back(vertex);
    }
    return path;
}

// A start mark that has become a line leads to the outline and is none of it.
void TakeEntryLine(OutlineRun& run)
{
    if (run.Way.size() < 4 || Meets(run.Way.back().At, run.Way.front().At) ||
        !Meets(run.Way.back().At, run.Way[1].At))
        return;
    run.Mark = run.Way[1].At;
    run.Way.erase(run.Way.begin());
}

bool IsFinite(const ClosedPath& way)
{
    return std::all_of(way.begin(), way.end(), [](const PathVertex& vertex) {
        return std::isfinite(vertex.At.X) && std::isfinite(vertex.At.Y) && std::isfinite(vertex.Bulge);
    });
}

// What closes becomes a path, what does not is told and kept as it is.
void CloseWay(DrawnOutline& outline, ClosedPath way)
{
    const OutlineGap ends{way.back().At, way.front().At};
    outline.Fault = {};
    outline.OpenWay.clear();
    if (!IsFinite(way)) {
        outline.Fault = {Message::PocketPointNoNumber};
        return;
    }
    if (way.size() < 3 || !Meets(ends.From, ends.To)) {
        outline.Fault = {Message::PocketOutlineOpen,
                         {{"end", ShownPlace(ends.From)}, {"gap", ShownGap(ends)}}};
        outline.OpenWay = std::move(way);
        return;
    }
    Bridge(way, ends.To, outline.ClosedGaps);
    way.pop_back();
    outline.Path = WithoutEqualPoints(way);
    if (outline.Path.size() < 2) {
        outline.Path.clear();
        outline.Fault = {Message::PocketEnclosesNothing};
    }
}

ClosedPath ReversedWay(const ClosedPath& way)
{
    ClosedPath reversed;
    for (std::size_t i = way.size(); i-- > 0;)
        reversed.push_back({way[i].At, i > 0 ? -way[i - 1].Bulge : 0});
    return reversed;
}

// Whether the other way went on where this one ends, or ends where it begins.
bool GoesOn(DrawnOutline& outline, const DrawnOutline& other)
{
    ClosedPath way = outline.OpenWay, next = other.OpenWay;
    const auto meets = [&] { return Meets(way.back().At, next.front().At); };
    for (int turn = 0; turn < 4 && !meets(); ++turn) {
        next = ReversedWay(next);
        if (turn == 1)
            way = ReversedWay(way);
    }
    if (!meets())
        return false;
    Bridge(way, next.front().At, outline.ClosedGaps);
    way.pop_back();
    way.insert(way.end(), next.begin(), next.end());
    outline.ClosedGaps.insert(outline.ClosedGaps.end(), other.ClosedGaps.begin(), other.ClosedGaps.end());
    CloseWay(outline, std::move(way));
    return true;
}

DrawnOutline OutlineOf(OutlineRun& run, ChainSpan chain, std::size_t end)
{
    DrawnOutline outline;
    outline.Records = chain.subspan(run.First, end - run.First);
    outline.Pattern = chain[run.Pattern.value_or(run.First)];
    TakeEntryLine(run);
    outline.Mark = run.Mark;
    if (!run.Pattern)
        return outline;
    outline.ClosedGaps = run.Gaps;
    if (run.HasFitPoints)
        outline.Fault = {Message::PocketThroughPoints};
    else
        CloseWay(outline, std::move(run.Way));
    return outline;
}

struct OutlineReader {
    ChainSpan Chain;
    OutlineRun Run{};
    std::vector<DrawnOutline> Outlines{};

    void EndRun(std::size_t end)
    {
        if (end > Run.First)
            Outlines.push_back(OutlineOf(Run, Chain, end));
        Run = {};
        Run.First = end;
    }
    void Open(std::size_t k)
    {
        const PlanePoint at = PointOf(Chain[k]);
        if (!Run.Way.empty() && Meets(Run.Way.back().At, at))
            return Bridge(Run.Way, at, Run.Gaps);
        if (!Run.Way.empty())
            EndRun(k);
        Run.Pattern = k;
        Run.Way = {{at, 0}};
    }
    void Go(std::size_t k)
    {
        const RouteSegment& record = Chain[k];
        if (record.Kind < 0 || Run.Way.empty())
            return Open(k);
        const RouteSegment& previous = Chain[k - 1];
        if (record.Kind == ArcEnds && previous.Kind == ArcOpens)
            return GoAround(Run.Way, previous, record);
        GoTo(Run.Way, PointOf(record),
             KindOf(record) == VertexSize && KindOf(previous) == VertexSize ? previous.Aux2 : 0);
    }
    void Take(std::size_t k)
    {
        const RouteSegment& record = Chain[k];
        const Int size = KindOf(record);
        if (record.Kind == MarkOpens && !Run.Way.empty())
            EndRun(k);
        if (size == MarkSize)
            Run.Mark = PointOf(record); // the second record's place is the later one
        Run.HasFitPoints = Run.HasFitPoints || size == FitPointSize;
        if (size != 0 && size != MarkSize)
            Go(k);
    }
};

} // namespace

std::vector<DrawnOutline> OutlinesOf(ChainSpan chain)
{
    OutlineReader reader{chain};
    for (std::size_t k = 0; k < chain.size(); ++k)
        reader.Take(k);
    reader.EndRun(chain.size());
    return std::move(reader.Outlines);
}

void JoinOpenWays(const std::vector<DrawnOutline*>& outlines,
                  std::vector<std::pair<std::size_t, std::size_t>>& joined)
{
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < outlines.size(); ++i)
        if (!outlines[i]->OpenWay.empty())
            open.push_back(i);
    if (open.size() > MostOpenWays)
        return;
    std::vector<char> isUsed(outlines.size(), 0);
    for (std::size_t at = 0; at < open.size(); ++at) {
        const std::size_t first = open[at];
        for (std::size_t k = at + 1; k < open.size() && isUsed[first] == 0; ++k) {
            if (outlines[first]->OpenWay.empty())
                break;
            if (isUsed[open[k]] != 0 || !GoesOn(*outlines[first], *outlines[open[k]]))
                continue;
            isUsed[open[k]] = 1;
            joined.push_back({open[k], first});
            k = at; // the way has a new end
        }
    }
}

ClosedPath PathOfCircle(const RouteCircle& circle)
{
    const double x = circle.X, y = circle.Y, radius = circle.Radius;
    return {{{x - radius, y}, 1}, {{x + radius, y}, 1}};
}

std::string ShownPlace(const PlanePoint& point)
{
    return "X" + PlainText(ToSingle(point.X)) + " Y" + PlainText(ToSingle(point.Y));
}

std::string ShownGap(const OutlineGap& gap)
{
    return PlainText(ToSingle(std::round(Distance(gap.From, gap.To) * 1000) / 1000));
}

} // namespace kv
