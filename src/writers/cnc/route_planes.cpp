// Puts routes of an edge view into the plane of that edge: what is drawn as the distance from the
// view's inner limit becomes the depth word, and the depth goes where that coordinate stood. Relies
// on the views' limits; leaves the plane's words in the writers' memory.
#include "writers/cnc/route_planes.h"

#include "writers/cnc/cnc_words.h"
#include "writers/number_format.h"
#include "writers/writer_memory.h"

namespace kv {

namespace {

// One axis of the drawing lies along the edge, the other becomes the depth.
struct EdgePlane {
    std::string_view Code;
    bool AlongX;  // the edge
    bool FromMax; // the depth is measured from the view's greater limit
};
constexpr EdgePlane EdgePlanes[] = {
    {"G18", true, false},  // 1, above the face
    {"G18", true, true},   // 2, below
    {"G19", false, true},  // 3, left
    {"G19", false, false}, // 4, right
};

// The edge's plane of a side 1 to 4; null on the face and where nothing is known of edges.
const EdgePlane* EdgePlaneOf(Int side)
{
    if (Run.PanelFound != 0 || side < 1 || side >= Face)
        return nullptr;
    return &EdgePlanes[side - 1];
}

Single DepthInPlane(const EdgePlane& plane, Single across)
{
    const auto side = static_cast<std::size_t>(SideOfRoute());
    const SideSingles& limits = plane.AlongX ? (plane.FromMax ? Run.SideMaxY : Run.SideMinY)
                                             : (plane.FromMax ? Run.SideMaxX : Run.SideMinX);
    const double depth = static_cast<double>(across) - static_cast<double>(limits[side]);
    return ToSingle(plane.FromMax ? -depth : depth);
}

std::string CoordWord(char letter, Single value)
{
    return letter + FormatCoord(value);
}

} // namespace

Int SideOfRoute()
{
    return Recall(&WriterMemory::RouteSide, "side of routes");
}

const PlaneWords& PlaneOfRoute()
{
    return Recall(&WriterMemory::Plane, "plane of routes");
}

void TakeRouteSide(Int side)
{
    Remember(&WriterMemory::RouteSide, side == 0 ? Face : side);
}

void SetPlaneWords(Single x, Single y, Single i, Single j)
{
    if (Run.PanelFound != 0)
        return;
    PlaneWords words;
    words.Side = "P" + WholeText(SideOfRoute());
    if (const EdgePlane* const plane = EdgePlaneOf(SideOfRoute())) {
        words.Code = plane->Code;
        const Single centreDepth = plane->AlongX ? j : i;
        if (plane->AlongX) {
            words.X = CoordWord('X', x);
            words.I = CoordWord('I', i);
        } else {
            words.Y = CoordWord('Y', y);
            words.J = CoordWord('J', j);
        }
        words.Z = CoordWord('Z', DepthInPlane(*plane, plane->AlongX ? y : x));
        words.K = CoordWord('K', plane->FromMax ? -centreDepth : centreDepth);
    }
    Remember(&WriterMemory::Plane, words);
}

WorkingPoint PointInPlane(Single x, Single y, Single z)
{
    const EdgePlane* const plane = EdgePlaneOf(SideOfRoute());
    if (plane == nullptr)
        return {x, y, DepthWord(z)};
    // A depth code has lost its meaning here: it is the number that stands for it.
    const std::string depth = FormatCoord(DepthInPlane(*plane, plane->AlongX ? y : x));
    return plane->AlongX ? WorkingPoint{x, z, depth} : WorkingPoint{z, y, depth};
}

} // namespace kv
