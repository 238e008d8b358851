// The reader knows each pair of kind and layer, and what it met; only where these do not tell are the records
// walked. A closed polyline is looked at for roundness only where its layer wants round
// things.
#include "import/import_need.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "drawing/drawing_facts.h"
#include "import/drawn_circles.h"
#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/drawn_names.h"
#include "state/run.h"

namespace kv {

namespace {

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

// What the layers and kinds of a drawing ask for, each pair of them looked at once.
struct Need {
    bool IsSure = false;    // a look is enough
    bool RoundOnes = false; // closed polylines are to be looked at
    bool Borders = false;   // and borders, where a coordinate is below zero
};

bool IsForeignKind(std::string_view kind)
{
    return kind == "INSERT" || kind == "SPLINE" || kind == "ELLIPSE" || kind == "MTEXT";
}

// A bore may be drawn as anything; a pocket as loose lines, or like a route as a polyline.
void TakeLook(const EntityLook& look, Need& need)
{
    const std::string kind = UpperCase(NameOfNumber(look.Kind)), layer = UpperCase(NameOfNumber(look.Layer));
    const bool isPolyline = Holds(kind, "POLYLINE");
    const bool isBore = Holds(layer, "VBORE") || Holds(layer, "DRILL"), isPocket = Holds(layer, "EXCAV");
    const bool isPiece = isPolyline || kind == "LINE" || kind == "ARC";
    need.IsSure = need.IsSure || IsForeignKind(kind) || IsHiddenLayer(layer) || (isBore && isPiece) ||
                  (isPocket && kind == "LINE");
    need.RoundOnes = need.RoundOnes || (isPolyline && (isPocket || WantsRoundWays(layer)));
    need.Borders = need.Borders || Holds(layer, "BORDER");
}

bool ReachesBelowZero(const DxfEntity& entity)
{
    const bool hasSecond = entity.Kind == "LINE";
    return entity.X1 < 0 || entity.Y1 < 0 || (hasSecond && (entity.X2 < 0 || entity.Y2 < 0));
}

bool MayBeRound(Long i)
{
    const DxfEntity& entity = Entities[i];
    if (entity.Kind != "POLYLINE")
        return false;
    const std::string_view layer = entity.Layer.Trimmed();
    const bool isPocket = Holds(layer, "EXCAV");
    return (isPocket && (entity.Flags & 1) == 0) || ((isPocket || WantsRoundWays(layer)) && LooksRound(i));
}

} // namespace

bool AsksForImport()
{
    Need need;
    for (Long i = 0; i <= LastLook() && !need.IsSure; ++i)
        TakeLook(LookOfNumber(i), need);
    if (need.IsSure || MetMirrored() || MetPaperSpace())
        return true;
    need.Borders = need.Borders && MetNegative();
    if (!need.RoundOnes && !need.Borders)
        return false;
    for (Long i = 1; i <= Entities.Last(); ++i)
        if ((need.Borders && ReachesBelowZero(Entities[i]) && Holds(Entities[i].Layer.Trimmed(), "BORDER")) ||
            (need.RoundOnes && MayBeRound(i)))
            return true;
    return false;
}

} // namespace kv
