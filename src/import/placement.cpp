// The rule of the arbitrary axis is that of the DXF reference: X of an object system is perpendicular to the
// drawing's Y, or to its Z where the extrusion is within 1/64 of Z.
#include "import/placement.h"

#include <cmath>
#include <numbers>

namespace kv {

namespace {

constexpr double NearAxis = 1e-9; // of a unit vector's parts; writers print twelve digits and more

SpacePoint UnitOf(SpacePoint a)
{
    const double length = LengthOf(a);
    return length > 0 ? a * (1 / length) : SpacePoint{0, 0, 1};
}

// The inverse of a map whose axes are unit vectors at right angles.
Placement UnturnedBy(const Placement& system)
{
    Placement back;
    back.Ax = {system.Ax.X, system.Ay.X, system.Az.X};
    back.Ay = {system.Ax.Y, system.Ay.Y, system.Az.Y};
    back.Az = {system.Ax.Z, system.Ay.Z, system.Az.Z};
    return back;
}

} // namespace

SpacePoint operator+(SpacePoint a, SpacePoint b)
{
    return {a.X + b.X, a.Y + b.Y, a.Z + b.Z};
}

SpacePoint operator-(SpacePoint a, SpacePoint b)
{
    return {a.X - b.X, a.Y - b.Y, a.Z - b.Z};
}

SpacePoint operator*(SpacePoint a, double factor)
{
    return {a.X * factor, a.Y * factor, a.Z * factor};
}

SpacePoint Cross(SpacePoint a, SpacePoint b)
{
    return {a.Y * b.Z - a.Z * b.Y, a.Z * b.X - a.X * b.Z, a.X * b.Y - a.Y * b.X};
}

double Dot(SpacePoint a, SpacePoint b)
{
    return a.X * b.X + a.Y * b.Y + a.Z * b.Z;
}

double LengthOf(SpacePoint a)
{
    return std::sqrt(Dot(a, a));
}

bool IsFinite(SpacePoint a)
{
    return std::isfinite(a.X) && std::isfinite(a.Y) && std::isfinite(a.Z);
}

SpacePoint Placement::Turned(SpacePoint direction) const
{
    return Ax * direction.X + Ay * direction.Y + Az * direction.Z;
}

Placement operator*(const Placement& outer, const Placement& inner)
{
    return {outer.Turned(inner.Ax), outer.Turned(inner.Ay), outer.Turned(inner.Az),
            outer.Placed(inner.Origin)};
}

Placement ShiftedBy(SpacePoint shift)
{
    Placement placement;
    placement.Origin = shift;
    return placement;
}

Placement ScaledBy(SpacePoint factors)
{
    return {{factors.X, 0, 0}, {0, factors.Y, 0}, {0, 0, factors.Z}, {}};
}

// Right angles are exact, so that a block turned by 90 degrees has its bores where they were meant.
Placement RotatedBy(double degrees)
{
    const double turn = std::fmod(degrees, 360);
    double sine = std::sin(turn * std::numbers::pi / 180);
    double cosine = std::cos(turn * std::numbers::pi / 180);
    if (std::fmod(turn, 90) == 0) {
        sine = std::round(sine);
        cosine = std::round(cosine);
    }
    return {{cosine, sine, 0}, {-sine, cosine, 0}, {0, 0, 1}, {}};
}

Placement SystemOf(SpacePoint extrusion)
{
    constexpr double nearZ = 1.0 / 64;
    const SpacePoint axis = UnitOf(extrusion);
    const bool isNearZ = std::abs(axis.X) < nearZ && std::abs(axis.Y) < nearZ;
    const SpacePoint first = UnitOf(Cross(isNearZ ? SpacePoint{0, 1, 0} : SpacePoint{0, 0, 1}, axis));
    return {first, UnitOf(Cross(axis, first)), axis, {}};
}

bool IsUpward(SpacePoint extrusion)
{
    return std::abs(extrusion.X) < NearAxis && std::abs(extrusion.Y) < NearAxis && extrusion.Z >= 0;
}

bool IsDownward(SpacePoint extrusion)
{
    return std::abs(extrusion.X) < NearAxis && std::abs(extrusion.Y) < NearAxis && extrusion.Z < 0;
}

PlaneMap MapPlane(SpacePoint extrusion, const Placement& placement)
{
    constexpr double sameLength = 1e-9; // parts
    PlaneMap map;
    const Placement placed = placement * SystemOf(extrusion);
    const SpacePoint across = Cross(placed.Ax, placed.Ay);
    const double first = LengthOf(placed.Ax), second = LengthOf(placed.Ay);
    map.IsDegenerate = !(LengthOf(across) > sameLength * first * second) || !IsFinite(placed.Origin);
    if (map.IsDegenerate)
        return map;
    const SpacePoint upward = UnitOf(across);
    map.IsFlat = IsUpward(upward) || IsDownward(upward);
    map.IsMirrored = map.IsFlat && upward.Z < 0;
    map.Extrusion = map.IsFlat ? SpacePoint{0, 0, 1} : upward;
    map.Map = map.IsFlat ? placed : UnturnedBy(SystemOf(upward)) * placed;
    map.Scale = first;
    map.IsSimilar = std::abs(first - second) <= sameLength * first &&
                    std::abs(Dot(placed.Ax, placed.Ay)) <= sameLength * first * second;
    return map;
}

} // namespace kv
