// Where a drawing's entities are in space: points, affine maps, and the plane that an extrusion gives.
#pragma once

namespace kv {

struct SpacePoint {
    double X = 0, Y = 0, Z = 0;
};
SpacePoint operator+(SpacePoint a, SpacePoint b);
SpacePoint operator-(SpacePoint a, SpacePoint b);
SpacePoint operator*(SpacePoint a, double factor);
SpacePoint Cross(SpacePoint a, SpacePoint b);
double Dot(SpacePoint a, SpacePoint b);
double LengthOf(SpacePoint a);
bool IsFinite(SpacePoint a);

// x' = Ax * x + Ay * y + Az * z + Origin.
struct Placement {
    SpacePoint Ax{1, 0, 0}, Ay{0, 1, 0}, Az{0, 0, 1}, Origin{};
    SpacePoint Turned(SpacePoint direction) const; // without the origin
    SpacePoint Placed(SpacePoint point) const { return Turned(point) + Origin; }
};
Placement operator*(const Placement& outer, const Placement& inner); // the inner one first
Placement ShiftedBy(SpacePoint shift);
Placement ScaledBy(SpacePoint factors);
Placement RotatedBy(double degrees); // about Z, counter-clockwise

// The object system of an extrusion, by the rule of the arbitrary axis. A direction of no length is 0, 0, 1.
Placement SystemOf(SpacePoint extrusion);
bool IsUpward(SpacePoint extrusion);   // 0, 0, 1
bool IsDownward(SpacePoint extrusion); // 0, 0, -1

// A plane's own map: where points of one object system come to lie in another, and how it stands in space.
struct PlaneMap {
    Placement Map;             // from the entity's object system into the new one
    SpacePoint Extrusion;      // of the new one; 0, 0, 1 where it lies flat, whichever side is up
    bool IsFlat = true;        // in the drawing's own plane
    bool IsMirrored = false;   // counter-clockwise becomes clockwise
    double Scale = 1;          // of lengths, where IsSimilar; else of the first axis
    bool IsSimilar = true;     // circles stay circles
    bool IsDegenerate = false; // the plane collapses into a line or a point
};
PlaneMap MapPlane(SpacePoint extrusion, const Placement& placement);

} // namespace kv
