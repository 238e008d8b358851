#include "geometry/inset_field.h"

#include <algorithm>

#include "geometry/inset_diagram.h"
#include "geometry/inset_loops.h"
#include "geometry/middle_line.h"

namespace kv {

InsetField::InsetField(const std::vector<ClosedPath>& walls, double tolerance)
    : Data(std::make_unique<InsetDiagram>(walls, tolerance))
{
}

InsetField::~InsetField() = default;

double InsetField::Deepest() const
{
    double deepest = 0;
    for (std::size_t i = 0; i < Data->Clearances.size(); ++i)
        if (Data->IsInner[i] != 0)
            deepest = std::max(deepest, Data->Clearances[i]);
    return deepest / Data->Paths.Scale;
}

std::vector<InsetLoop> InsetField::LoopsAt(double clearance) const
{
    return LoopsOf(*Data, clearance);
}

std::vector<PlanePoint> InsetField::FarFromLoops(double low, double high, double reach) const
{
    return MiddleFarFromLoops(*Data, low, high, reach);
}

std::vector<NarrowPlace> InsetField::NarrowerThan(double clearance, double rise) const
{
    return NarrowPlacesOf(*Data, clearance, rise);
}

} // namespace kv
