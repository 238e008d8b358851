// Ways along the edges of the diagram: from what a line of equal distance leaves to that line, and from each
// peak of the distance down to where it meets a higher one.
#include "geometry/middle_line.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>
#include <optional>
#include <queue>
#include <utility>

namespace kv {

namespace {

constexpr double NoWay = std::numeric_limits<double>::infinity();

// Between two distances, in grid steps: the shortest known way from each vertex to a line of the higher.
class BandWays {
  public:
    BandWays(const InsetDiagram& diagram, double low, double high);
    // Places that are further than that from the line.
    std::vector<PlanePoint> FurtherThan(double furthest) const;

  private:
    using Edge = InsetDiagram::Edge;
    using Entry = std::pair<double, std::size_t>;

    bool IsBetween(std::size_t vertex) const
    {
        return Diagram.IsInner[vertex] != 0 && Diagram.Clearances[vertex] > Low &&
               Diagram.Clearances[vertex] < High;
    }
    void Offer(std::size_t vertex, double way)
    {
        if (way >= Ways[vertex])
            return;
        Ways[vertex] = way;
        Open.push({way, vertex});
    }
    // Edges upright on a wall are none.
    bool IsMiddle(const Edge& edge) const
    {
        return edge.is_primary() && edge.is_finite() && Diagram.IsWithinRegion(edge);
    }
    void Spread();
    std::optional<PlanePoint> FarMiddle(const Edge& edge, double furthest) const;
    std::optional<PlanePoint> FarBottom(const Edge& edge, double furthest) const;

    const InsetDiagram& Diagram;
    double Low, High;
    std::vector<double> Ways;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> Open;
};

BandWays::BandWays(const InsetDiagram& diagram, double low, double high)
    : Diagram(diagram), Low(low), High(high), Ways(diagram.Clearances.size(), NoWay)
{
    std::vector<Crossing> tops;
    for (const Edge& edge : diagram.Graph.edges()) {
        if (!IsMiddle(edge) || !IsBetween(diagram.NumberOf(*edge.vertex0())))
            continue;
        tops.clear();
        diagram.AddCrossings(edge, high, tops);
        for (const Crossing& top : tops)
            Offer(diagram.NumberOf(*edge.vertex0()),
                  LengthOf(Minus(top.At, InsetDiagram::PlaceOf(*edge.vertex0()))));
    }
    Spread();
}

void BandWays::Spread()
{
    while (!Open.empty()) {
        const auto [way, number] = Open.top();
        Open.pop();
        if (way > Ways[number])
            continue;
        const InsetDiagram::Vertex& vertex = Diagram.Graph.vertices()[number];
        const Edge* edge = vertex.incident_edge();
        do {
            if (IsMiddle(*edge) && IsBetween(Diagram.NumberOf(*edge->vertex1())))
                Offer(Diagram.NumberOf(*edge->vertex1()),
                      way + LengthOf(Minus(InsetDiagram::PlaceOf(*edge->vertex1()),
                                           InsetDiagram::PlaceOf(vertex))));
            edge = edge->rot_next();
        } while (edge != vertex.incident_edge());
    }
}

// A point of an edge that stays above the lower distance, when its furthest place is too far from the lines
// at both ends: where the edge itself passes the higher distance, or on from its vertex.
std::optional<PlanePoint> BandWays::FarMiddle(const Edge& edge, double furthest) const
{
    std::vector<Crossing> tops, bottoms;
    Diagram.AddCrossings(edge, Low, bottoms);
    if (!bottoms.empty())
        return std::nullopt;
    Diagram.AddCrossings(edge, High, tops);
    PlanePoint from, to;
    double ways = 0; // beyond the edge
    const auto goOnFrom = [&](const InsetDiagram::Vertex& vertex, PlanePoint& end) {
        end = InsetDiagram::PlaceOf(vertex);
        ways += Ways[Diagram.NumberOf(vertex)];
    };
    const bool beginsBetween = IsBetween(Diagram.NumberOf(*edge.vertex0()));
    const bool endsBetween = IsBetween(Diagram.NumberOf(*edge.vertex1()));
    if (tops.size() + (beginsBetween ? 1 : 0) + (endsBetween ? 1 : 0) != 2)
        return std::nullopt;
    if (!tops.empty()) {
        from = tops.front().At;
        to = tops.back().At;
    }
    if (beginsBetween)
        goOnFrom(*edge.vertex0(), from);
    if (endsBetween)
        goOnFrom(*edge.vertex1(), to);
    return (ways + LengthOf(Minus(to, from))) / 2 > furthest ? std::optional(from) : std::nullopt;
}

// Where an edge passes the lower distance on its way up.
std::optional<PlanePoint> BandWays::FarBottom(const Edge& edge, double furthest) const
{
    std::vector<Crossing> tops, bottoms;
    Diagram.AddCrossings(edge, Low, bottoms);
    for (const Crossing& bottom : bottoms) {
        if (!bottom.Rises)
            continue;
        const std::size_t end = Diagram.NumberOf(*edge.vertex1());
        double way = NoWay;
        if (IsBetween(end))
            way = Ways[end] + LengthOf(Minus(InsetDiagram::PlaceOf(*edge.vertex1()), bottom.At));
        Diagram.AddCrossings(edge, High, tops);
        for (const Crossing& top : tops)
            way = std::min(way, LengthOf(Minus(top.At, bottom.At)));
        if (way > furthest)
            return bottom.At;
    }
    return std::nullopt;
}

std::vector<PlanePoint> BandWays::FurtherThan(double furthest) const
{
    std::vector<PlanePoint> far;
    const auto add = [&](const PlanePoint& point) { far.push_back(Diagram.Paths.ToPlane(point.X, point.Y)); };
    for (std::size_t i = 0; i < Ways.size(); ++i)
        if (IsBetween(i) && Ways[i] > furthest)
            add(InsetDiagram::PlaceOf(Diagram.Graph.vertices()[i]));
    for (const Edge& edge : Diagram.Graph.edges()) {
        if (!IsMiddle(edge))
            continue;
        if (const std::optional<PlanePoint> middle = FarMiddle(edge, furthest))
            add(*middle);
        if (const std::optional<PlanePoint> bottom = FarBottom(edge, furthest))
            add(*bottom);
    }
    return far;
}

// From the deepest vertex down each belongs to a peak; where two peaks meet, the lower one ends.
class PeakWalk {
  public:
    explicit PeakWalk(const InsetDiagram& diagram) : Diagram(diagram), Peaks(diagram.Clearances.size(), None)
    {
    }
    std::vector<NarrowPlace> NarrowerThan(double clearance, double rise); // grid steps

  private:
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    std::size_t PeakOf(std::size_t vertex)
    {
        while (Peaks[vertex] != vertex)
            vertex = Peaks[vertex] = Peaks[Peaks[vertex]];
        return vertex;
    }
    NarrowPlace PlaceAt(std::size_t vertex) const
    {
        const InsetDiagram::Vertex& at = Diagram.Graph.vertices()[vertex];
        return {Diagram.Paths.ToPlane(at.x(), at.y()), Diagram.Clearances[vertex] / Diagram.Paths.Scale};
    }
    // The vertex lies where the two meet.
    void Meet(std::size_t vertex, std::size_t next, double clearance, double rise)
    {
        const std::size_t one = PeakOf(vertex), other = PeakOf(next);
        if (one == other)
            return;
        const bool oneIsLower = Diagram.Clearances[one] < Diagram.Clearances[other];
        const std::size_t lower = oneIsLower ? one : other;
        const double saddle = Diagram.Clearances[vertex], top = Diagram.Clearances[lower];
        if (saddle < clearance && top - saddle > rise)
            Places.push_back(PlaceAt(top < clearance ? lower : vertex));
        Peaks[lower] = oneIsLower ? other : one;
    }

    const InsetDiagram& Diagram;
    std::vector<std::size_t> Peaks;
    std::vector<NarrowPlace> Places;
};

std::vector<NarrowPlace> PeakWalk::NarrowerThan(double clearance, double rise)
{
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < Peaks.size(); ++i)
        if (Diagram.IsInner[i] != 0)
            order.push_back(i);
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return Diagram.Clearances[a] > Diagram.Clearances[b]; });
    for (const std::size_t number : order) {
        Peaks[number] = number;
        const InsetDiagram::Vertex& vertex = Diagram.Graph.vertices()[number];
        const InsetDiagram::Edge* edge = vertex.incident_edge();
        do {
            const std::size_t next = edge->vertex1() == nullptr ? None : Diagram.NumberOf(*edge->vertex1());
            if (next != None && Peaks[next] != None)
                Meet(number, next, clearance, rise);
            edge = edge->rot_next();
        } while (edge != vertex.incident_edge());
    }
    return Places;
}

} // namespace

std::vector<PlanePoint> MiddleFarFromLoops(const InsetDiagram& diagram, double low, double high, double reach)
{
    const double scale = diagram.Paths.Scale;
    return BandWays(diagram, low * scale, high * scale).FurtherThan(reach * scale);
}

std::vector<NarrowPlace> NarrowPlacesOf(const InsetDiagram& diagram, double clearance, double rise)
{
    const double scale = diagram.Paths.Scale;
    return PeakWalk(diagram).NarrowerThan(clearance * scale, rise * scale);
}

} // namespace kv
