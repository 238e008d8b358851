// Mirrors the records to the corner of the panel where the machine's origin lies. Relies on the
// origin flags and the face's size; leaves the coordinates that the writers print. Head positions
// are built in mirrored coordinates already and stay.
#include "routes/route_runs.h"
#include "state/run.h"
#include "writers/program_writers.h"

namespace kv {

namespace {

constexpr Int Evolution = 2; // control system

void Mirror(Single& coordinate, Single extent)
{
    coordinate = ToSingle(static_cast<double>(extent) - static_cast<double>(coordinate));
}

// Turns round what turns with the record: arcs, bulges and the side of the tool.
void TurnSense(RouteSegment& segment)
{
    constexpr Int bulged = 5, arcEnd = 3;
    if (segment.Kind == arcEnd)
        segment.Dir = static_cast<Int>(~segment.Dir);
    if (KindOf(segment) == bulged)
        segment.Aux2 = 0 - segment.Aux2; // a straight stays 0
    segment.Comp = OtherSideOf(segment.Comp);
}

// All edges of this control are read along X. Its arcs name no angles of their own: what a mirror does
// to the way round must be done here.
void MirrorEvolutionSegment(RouteSegment& segment, bool right, bool top)
{
    const bool onFace = segment.Side == Face || segment.Side == 0;
    const bool hasCentre = segment.Kind == -3;
    const bool endwise = segment.Side == 3 || segment.Side == 4; // along the panel's height
    if (endwise ? top : right) {
        const Single extent = endwise ? Run.SideHeight[Face] : Run.SideWidth[Face];
        Mirror(segment.X, extent);
        if (hasCentre)
            Mirror(segment.Aux1, extent);
        TurnSense(segment);
    }
    if (top && onFace) {
        Mirror(segment.Y, Run.SideHeight[Face]);
        if (hasCentre)
            Mirror(segment.Aux2, Run.SideHeight[Face]);
        TurnSense(segment);
    }
}

void MirrorSegment(RouteSegment& segment, bool right, bool top)
{
    const bool onFace = segment.Side == 5 || segment.Side == 0;
    const bool hasCentre = segment.Kind == -3;
    if (right && (onFace || segment.Side == 1 || segment.Side == 2)) {
        Mirror(segment.X, Run.SideWidth[Face]);
        if (hasCentre)
            Mirror(segment.Aux1, Run.SideWidth[Face]);
    }
    if (top && (onFace || segment.Side == 3 || segment.Side == 4)) {
        Mirror(segment.Y, Run.SideHeight[Face]);
        if (hasCentre)
            Mirror(segment.Aux2, Run.SideHeight[Face]);
    }
}

template <typename Record> void MirrorPlace(Record& record, bool right, bool top)
{
    if (right)
        Mirror(record.X, Run.SideWidth[Face]);
    if (top)
        Mirror(record.Y, Run.SideHeight[Face]);
}

void MirrorGroove(GroovePass& groove, bool right, bool top)
{
    if (right) {
        Mirror(groove.X1, Run.SideWidth[Face]);
        Mirror(groove.X2, Run.SideWidth[Face]);
    }
    if (top) {
        Mirror(groove.Y1, Run.SideHeight[Face]);
        Mirror(groove.Y2, Run.SideHeight[Face]);
    }
}

void MirrorHBore(HBoreRecord& bore, bool right, bool top)
{
    if (right && (bore.Side == 1 || bore.Side == 2))
        Mirror(bore.PosX, Run.SideWidth[Face]);
    if (top && (bore.Side == 3 || bore.Side == 4))
        Mirror(bore.PosY, Run.SideHeight[Face]);
}

} // namespace

void ApplyMachineOrigin()
{
    const bool right = Run.OriginRight != 0;
    const bool top = Run.OriginTop != 0;
    const auto mirror = Run.ControlType == Evolution ? MirrorEvolutionSegment : MirrorSegment;
    for (Long i = 1; i <= RouteSegments.Last(); ++i)
        mirror(RouteSegments[i], right, top);
    for (Long i = 1; i <= VBores.Last(); ++i)
        MirrorPlace(VBores[i], right, top);
    for (Long i = 1; i <= RouteCircles.Last(); ++i)
        MirrorPlace(RouteCircles[i], right, top);
    for (Long i = 1; i <= GroovePasses.Last(); ++i)
        MirrorGroove(GroovePasses[i], right, top);
    for (Long i = 1; i <= HBores.Last(); ++i)
        MirrorHBore(HBores[i], right, top);
}

} // namespace kv
