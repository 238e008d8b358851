// One look at each record. A closed polyline is looked at for roundness only where its layer wants round
// things.
#include "import/import_need.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "drawing/drawing_facts.h"
#include "import/drawn_circles.h"
#include "platform/text.h"
#include "state/run.h"

namespace kv {

namespace {

bool IsForeignKind(const DxfEntity& entity)
{
    static constexpr std::string_view kinds[] = {"INSERT", "SPLINE", "ELLIPSE", "MTEXT"};
    for (const std::string_view kind : kinds)
        if (entity.Kind == kind)
            return true;
    return false;
}

struct CornerOfRing {
    double X = 0, Y = 0;
};

// Of a closed polyline: whether its corners are about as far from the middle of its box.
bool LooksRound(Long head)
{
    constexpr double sameDistance = 0.1; // parts; what is round differs by far less
    double low[2] = {1e30, 1e30}, high[2] = {-1e30, -1e30};
    std::vector<CornerOfRing> corners;
    for (Long i = head + 1; i <= Entities.Last() && Entities[i].Kind == "VERTEX"; ++i) {
        const CornerOfRing corner{static_cast<double>(Entities[i].X1), static_cast<double>(Entities[i].Y1)};
        corners.push_back(corner);
        low[0] = std::min(low[0], corner.X), high[0] = std::max(high[0], corner.X);
        low[1] = std::min(low[1], corner.Y), high[1] = std::max(high[1], corner.Y);
    }
    if (corners.size() < 2)
        return false;
    if (corners.size() < 4) // arcs: their corners alone say little
        return true;
    const double x = (low[0] + high[0]) / 2, y = (low[1] + high[1]) / 2, radius = (high[0] - low[0]) / 2;
    return std::all_of(corners.begin(), corners.end(), [&](const CornerOfRing& corner) {
        return std::abs(std::hypot(corner.X - x, corner.Y - y) - radius) <= sameDistance * radius;
    });
}

// Names repeat from record to record.
class LayerLook {
  public:
    // A bore may be drawn as anything; a pocket as loose pieces, or like a route as a polyline.
    bool MayBeRound(Long i)
    {
        const DxfEntity& entity = Entities[i];
        Look(entity);
        if (entity.Kind == "POLYLINE")
            return IsBore || (IsPocket && (entity.Flags & 1) == 0) ||
                   ((IsPocket || IsRoute) && LooksRound(i));
        return (IsBore && entity.Kind == "ARC") || ((IsBore || IsPocket) && entity.Kind == "LINE");
    }
    bool IsBorder(const DxfEntity& entity)
    {
        Look(entity);
        return HasBorder;
    }

  private:
    void Look(const DxfEntity& entity)
    {
        if (entity.Layer == Last)
            return;
        Last = entity.Layer;
        const std::string name(Last.Trimmed());
        IsBore = Holds(name, "VBORE") || Holds(name, "DRILL");
        IsPocket = Holds(name, "EXCAV");
        IsRoute = WantsRoundWays(name);
        HasBorder = Holds(name, "BORDER");
    }
    Text<114> Last;
    bool IsBore = false, IsPocket = false, IsRoute = false, HasBorder = false;
};

bool ReachesBelowZero(const DxfEntity& entity)
{
    const bool hasSecond = entity.Kind == "LINE";
    return entity.X1 < 0 || entity.Y1 < 0 || (hasSecond && (entity.X2 < 0 || entity.Y2 < 0));
}

} // namespace

bool AsksForImport()
{
    LayerLook layers;
    const bool hides = HidesEntities();
    for (Long i = 1; i <= Entities.Last(); ++i) {
        const DxfEntity& entity = Entities[i];
        if (IsForeignKind(entity) || entity.ExtrusionZ == -1)
            return true;
        if (hides && SightOf(entity.Drawn) != Sight::Shown)
            return true;
        if (layers.MayBeRound(i))
            return true;
        if (ReachesBelowZero(entity) && layers.IsBorder(entity))
            return true;
    }
    return false;
}

} // namespace kv
