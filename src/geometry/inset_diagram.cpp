// Builds the diagram and finds where its edges have a distance from the walls. Relies on walls that do not
// meet.
#include "geometry/inset_diagram.h"

#include <algorithm>
#include <boost/polygon/voronoi_builder.hpp>
#include <cmath>

namespace kv {

namespace {

PlanePoint PlaneOf(const WholePoint& point)
{
    return {static_cast<double>(point.X), static_cast<double>(point.Y)};
}

// Between a chord and its own end the edge stands upright on the chord.
bool JoinsOwnEnd(const CellSite& a, const CellSite& b)
{
    if (a.IsPoint == b.IsPoint)
        return false;
    const CellSite& point = a.IsPoint ? a : b;
    const CellSite& chord = a.IsPoint ? b : a;
    const auto meets = [&point](const PlanePoint& end) {
        return end.X == point.From.X && end.Y == point.From.Y;
    };
    return meets(chord.From) || meets(chord.To);
}

// Between a point and a chord or another point the clearance falls to the foot between them and rises
// again on both sides.
struct EdgeDip {
    PlanePoint Foot, Axis; // unit length
    PlanePoint Up;         // from the foot to the point, for a chord; 0 between points
    double Height = 0;     // of the point above the foot
    double Least = 0;      // clearance

    double PlaceOf(const PlanePoint& point) const
    {
        const PlanePoint off = Minus(point, Foot);
        return off.X * Axis.X + off.Y * Axis.Y;
    }
    bool IsParabola() const { return Least < Height; }
    // How far to both sides of the foot the clearance has a value.
    double AsideAt(double clearance) const
    {
        const double square =
            IsParabola() ? Height * (2 * clearance - Height) : clearance * clearance - Height * Height;
        return std::sqrt(std::max(0.0, square));
    }
    PlanePoint PointAt(double place, double clearance) const
    {
        const double rise = IsParabola() ? clearance / Height : 0;
        return {Foot.X + place * Axis.X + rise * Up.X, Foot.Y + place * Axis.Y + rise * Up.Y};
    }
};

EdgeDip DipBetween(const CellSite& point, const CellSite& other)
{
    EdgeDip dip;
    if (other.IsPoint) {
        const PlanePoint between = Minus(other.From, point.From);
        const double length = LengthOf(between);
        dip.Foot = PointAlong(point.From, other.From, 0.5);
        dip.Axis = {-between.Y / length, between.X / length};
        dip.Height = dip.Least = length / 2;
        return dip;
    }
    const PlanePoint along = Minus(other.To, other.From);
    const double length = LengthOf(along);
    const PlanePoint off = Minus(point.From, other.From);
    dip.Axis = {along.X / length, along.Y / length};
    const double share = off.X * dip.Axis.X + off.Y * dip.Axis.Y;
    dip.Foot = {other.From.X + share * dip.Axis.X, other.From.Y + share * dip.Axis.Y};
    dip.Up = Minus(point.From, dip.Foot);
    dip.Height = std::fabs(Cross(dip.Axis, off));
    dip.Least = dip.Height / 2;
    return dip;
}

} // namespace

InsetDiagram::InsetDiagram(const std::vector<ClosedPath>& walls, double tolerance)
    : Paths(walls, tolerance), Tolerance(tolerance)
{
    boost::polygon::default_voronoi_builder builder;
    for (const FlatChord& chord : Paths.Chords)
        builder.insert_segment(static_cast<int>(chord.From.X), static_cast<int>(chord.From.Y),
                               static_cast<int>(chord.To.X), static_cast<int>(chord.To.Y));
    builder.construct(&Graph);
    FindSites();
    FindVertices();
}

void InsetDiagram::FindSites()
{
    Sites.reserve(Graph.cells().size());
    for (const Voronoi::cell_type& cell : Graph.cells()) {
        const auto chord = static_cast<std::int32_t>(cell.source_index());
        const FlatChord& source = Paths.Chords[cell.source_index()];
        CellSite site{cell.contains_point(), chord, PlaneOf(source.From), PlaneOf(source.To)};
        if (site.IsPoint && cell.source_category() == boost::polygon::SOURCE_CATEGORY_SEGMENT_END_POINT) {
            site.Chord = source.Next;
            site.From = site.To;
        }
        Sites.push_back(site);
    }
}

double InsetDiagram::DistanceToSite(const CellSite& site, const PlanePoint& point) const
{
    const PlanePoint off = Minus(point, site.From);
    if (site.IsPoint)
        return LengthOf(off);
    const PlanePoint along = Minus(site.To, site.From);
    return std::fabs(Cross(along, off)) / LengthOf(along);
}

// By a chord that it is nearest to: the region lies on the left.
bool InsetDiagram::LiesInside(const Vertex& vertex, bool& isKnown) const
{
    const Edge* edge = vertex.incident_edge();
    do {
        const CellSite& site = Sites[CellOf(*edge)];
        if (!site.IsPoint) {
            isKnown = true;
            return Cross(Minus(site.To, site.From), Minus(PlaceOf(vertex), site.From)) > 0;
        }
        edge = edge->rot_next();
    } while (edge != vertex.incident_edge());
    isKnown = false;
    return false;
}

// A vertex that only points of the walls are nearest to lies where its neighbours lie.
void InsetDiagram::FindVertices()
{
    constexpr double onWall = 0.5; // grid steps
    const std::size_t count = Graph.vertices().size();
    Clearances.resize(count);
    IsInner.assign(count, 0);
    std::vector<char> isKnown(count, 0);
    std::vector<std::size_t> reached;
    for (const Vertex& vertex : Graph.vertices()) {
        const std::size_t number = NumberOf(vertex);
        Clearances[number] = DistanceToSite(Sites[CellOf(*vertex.incident_edge())], PlaceOf(vertex));
        bool known = Clearances[number] <= onWall;
        if (!known)
            IsInner[number] = LiesInside(vertex, known) ? 1 : 0;
        isKnown[number] = known ? 1 : 0;
        if (known && Clearances[number] > onWall)
            reached.push_back(number);
    }
    while (!reached.empty()) {
        const Vertex& vertex = Graph.vertices()[reached.back()];
        const char isInner = IsInner[reached.back()];
        reached.pop_back();
        const Edge* edge = vertex.incident_edge();
        do {
            if (edge->vertex1() != nullptr && isKnown[NumberOf(*edge->vertex1())] == 0) {
                const std::size_t next = NumberOf(*edge->vertex1());
                isKnown[next] = 1;
                IsInner[next] = isInner;
                reached.push_back(next);
            }
            edge = edge->rot_next();
        } while (edge != vertex.incident_edge());
    }
}

bool InsetDiagram::IsWithinRegion(const Edge& edge) const
{
    return IsInnerVertex(edge.vertex0()) || IsInnerVertex(edge.vertex1());
}

void InsetDiagram::AddCrossings(const Edge& edge, double clearance, std::vector<Crossing>& crossings) const
{
    const CellSite& a = Sites[CellOf(edge)];
    const CellSite& b = Sites[CellOf(*edge.twin())];
    if (JoinsOwnEnd(a, b)) {
        AddUpright(edge, (a.IsPoint ? a : b).From, clearance, crossings);
        return;
    }
    const double first = Clearances[NumberOf(*edge.vertex0())];
    const double second = Clearances[NumberOf(*edge.vertex1())];
    if (first < clearance && second < clearance)
        return;
    if (a.IsPoint || b.IsPoint) {
        AddDip(edge, clearance, crossings);
        return;
    }
    if ((first < clearance) == (second < clearance))
        return;
    const double share = (clearance - first) / (second - first);
    crossings.push_back({NumberOf(edge), first < clearance,
                         PointAlong(PlaceOf(*edge.vertex0()), PlaceOf(*edge.vertex1()), share)});
}

// An edge upright on the wall. It ends on the wall's point or, where the wall runs straight on, goes
// through it and out of the region.
void InsetDiagram::AddUpright(const Edge& edge, const PlanePoint& foot, double clearance,
                              std::vector<Crossing>& crossings) const
{
    for (const Vertex* vertex : {edge.vertex0(), edge.vertex1()}) {
        if (!IsInnerVertex(vertex) || Clearances[NumberOf(*vertex)] < clearance)
            continue;
        const Vertex* const other = vertex == edge.vertex0() ? edge.vertex1() : edge.vertex0();
        if (IsInnerVertex(other) && Clearances[NumberOf(*other)] >= clearance)
            continue; // all of it is further
        crossings.push_back({NumberOf(edge), vertex == edge.vertex1(),
                             PointAlong(foot, PlaceOf(*vertex), clearance / Clearances[NumberOf(*vertex)])});
    }
}

// Places are measured along the chord, or across the line between the points.
void InsetDiagram::AddDip(const Edge& edge, double clearance, std::vector<Crossing>& crossings) const
{
    const CellSite& a = Sites[CellOf(edge)];
    const CellSite& b = Sites[CellOf(*edge.twin())];
    const EdgeDip dip = a.IsPoint ? DipBetween(a, b) : DipBetween(b, a);
    const double begin = dip.PlaceOf(InsetDiagram::PlaceOf(*edge.vertex0()));
    const double end = dip.PlaceOf(InsetDiagram::PlaceOf(*edge.vertex1()));
    const bool firstIsBelow = Clearances[NumberOf(*edge.vertex0())] < clearance;
    const bool secondIsBelow = Clearances[NumberOf(*edge.vertex1())] < clearance;
    const double aside = (end >= begin ? 1 : -1) * dip.AsideAt(clearance);
    const auto add = [&](bool rises) {
        // Rounding could put the place past a vertex.
        const double place = std::clamp(rises ? aside : -aside, std::min(begin, end), std::max(begin, end));
        crossings.push_back({NumberOf(edge), rises, dip.PointAt(place, clearance)});
    };
    if (firstIsBelow != secondIsBelow) {
        add(firstIsBelow);
    } else if (!firstIsBelow && begin * end < 0 && dip.Least < clearance) {
        add(false);
        add(true);
    }
}

} // namespace kv
