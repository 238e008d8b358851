// The Voronoi diagram of a region's walls, cut into chords: what inset loops and the middle line are read
// from. A line of equal distance crosses an edge of the diagram where the edge's clearance passes that
// distance.
#pragma once

#include <boost/polygon/voronoi_diagram.hpp>
#include <cmath>
#include <cstdint>
#include <vector>

#include "geometry/closed_paths.h"

namespace kv {

// What a cell belongs to, in grid steps.
struct CellSite {
    bool IsPoint = false;
    std::int32_t Chord = 0; // a point is its beginning
    PlanePoint From, To;
};

struct Crossing {
    std::int32_t Edge = 0; // the half-edge of the lower number
    bool Rises = false;    // along that half-edge
    PlanePoint At;         // grid steps
};

// Coordinates and distances in grid steps.
struct InsetDiagram {
    // Walls and tolerance in drawing units.
    InsetDiagram(const std::vector<ClosedPath>& walls, double tolerance);

    FlatPaths Paths;
    double Tolerance; // of the chords
    using Voronoi = boost::polygon::voronoi_diagram<double>;
    Voronoi Graph;
    std::vector<CellSite> Sites;
    std::vector<double> Clearances; // of the vertices, grid steps
    std::vector<char> IsInner;      // of the vertices: within the region, off its walls

    using Edge = Voronoi::edge_type;
    using Vertex = Voronoi::vertex_type;

    std::int32_t NumberOf(const Edge& edge) const
    {
        return static_cast<std::int32_t>(&edge - Graph.edges().data());
    }
    std::size_t NumberOf(const Vertex& vertex) const
    {
        return static_cast<std::size_t>(&vertex - Graph.vertices().data());
    }
    std::size_t CellOf(const Edge& edge) const
    {
        return static_cast<std::size_t>(edge.cell() - Graph.cells().data());
    }
    static PlanePoint PlaceOf(const Vertex& vertex) { return {vertex.x(), vertex.y()}; }

    // Whether the edge has a part within the region.
    bool IsWithinRegion(const Edge& edge) const;
    // Adds where the edge passes the distance, in the edge's own direction: none, one or two places.
    void AddCrossings(const Edge& edge, double clearance, std::vector<Crossing>& crossings) const;

  private:
    void FindSites();
    void FindVertices();
    bool LiesInside(const Vertex& vertex, bool& isKnown) const;
    double DistanceToSite(const CellSite& site, const PlanePoint& point) const;
    bool IsInnerVertex(const Vertex* vertex) const
    {
        return vertex != nullptr && IsInner[NumberOf(*vertex)] != 0;
    }
    void AddUpright(const Edge& edge, const PlanePoint& foot, double clearance,
                    std::vector<Crossing>& crossings) const;
    void AddDip(const Edge& edge, double clearance, std::vector<Crossing>& crossings) const;
};

// Vectors of the plane.
inline double Cross(const PlanePoint& a, const PlanePoint& b)
{
    return a.X * b.Y - a.Y * b.X;
}
inline PlanePoint Minus(const PlanePoint& a, const PlanePoint& b)
{
    return {a.X - b.X, a.Y - b.Y};
}
inline PlanePoint PointAlong(const PlanePoint& a, const PlanePoint& b, double share)
{
    return {a.X + share * (b.X - a.X), a.Y + share * (b.Y - a.Y)};
}
inline double LengthOf(const PlanePoint& vector)
{
    return std::sqrt(vector.X * vector.X + vector.Y * vector.Y);
}

} // namespace kv
