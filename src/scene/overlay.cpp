// Works are found by the millimetre square of their place, so that panels of many bores take no longer for
// each of them.
#include "scene/overlay.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

namespace kv {

namespace {

constexpr double AlikeWithin = 0.01 + 1e-6; // mm: places of programs have three decimals
constexpr double HalfTurn = 180;            // degrees: one and the same arc, or the rest of its circle
constexpr double FarthestPlace = 1e9;       // mm, beyond which squares are not counted

bool AreAlike(double a, double b)
{
    return std::fabs(a - b) <= AlikeWithin;
}

bool AreAlike(const PathPoint& a, const PathPoint& b)
{
    return AreAlike(a.X, b.X) && AreAlike(a.Y, b.Y);
}

bool AreAlike(const Move& a, const Move& b)
{
    if (!AreAlike(a.From, b.From) || !AreAlike(a.To, b.To) || a.IsArc != b.IsArc ||
        !AreAlike(a.DepthFrom, b.DepthFrom) || !AreAlike(a.DepthTo, b.DepthTo))
        return false;
    return !a.IsArc || (AreAlike(a.Centre, b.Centre) && std::fabs(a.Sweep - b.Sweep) < HalfTurn);
}

bool AreAlike(const SceneItem& a, const SceneItem& b)
{
    return a.Shape == b.Shape && a.On == b.On && a.Side == b.Side && AreAlike(a.At, b.At) &&
           AreAlike(a.Depth, b.Depth) && AreAlike(a.Width, b.Width) &&
           std::equal(a.Way.begin(), a.Way.end(), b.Way.begin(), b.Way.end(),
                      [](const Move& one, const Move& other) { return AreAlike(one, other); });
}

using Square = std::pair<long long, long long>;

long long SquareOf(double place)
{
    const double bounded = std::isfinite(place) ? std::clamp(place, -FarthestPlace, FarthestPlace) : 0;
    return static_cast<long long>(std::floor(bounded));
}

// The works of one program that have no partner yet.
class Unmatched {
  public:
    explicit Unmatched(const std::vector<SceneItem>& items) : Items(items)
    {
        for (std::size_t i = 0; i < items.size(); ++i)
            Places[{SquareOf(items[i].At.X), SquareOf(items[i].At.Y)}].push_back(i);
    }
    // Takes the partner away, so that two works at one place want two.
    bool Take(const SceneItem& item)
    {
        for (long long x = SquareOf(item.At.X - AlikeWithin); x <= SquareOf(item.At.X + AlikeWithin); ++x)
            for (long long y = SquareOf(item.At.Y - AlikeWithin); y <= SquareOf(item.At.Y + AlikeWithin); ++y)
                if (TakeFrom({x, y}, item))
                    return true;
        return false;
    }
    std::vector<std::size_t> Left() const // in the order of the program
    {
        std::vector<std::size_t> left;
        for (const auto& [square, indices] : Places)
            left.insert(left.end(), indices.begin(), indices.end());
        std::sort(left.begin(), left.end());
        return left;
    }

  private:
    bool TakeFrom(const Square& square, const SceneItem& item)
    {
        const auto place = Places.find(square);
        if (place == Places.end())
            return false;
        std::vector<std::size_t>& indices = place->second;
        const auto partner = std::find_if(indices.begin(), indices.end(),
                                          [&](std::size_t i) { return AreAlike(Items[i], item); });
        if (partner == indices.end())
            return false;
        indices.erase(partner);
        return true;
    }

    const std::vector<SceneItem>& Items;
    std::map<Square, std::vector<std::size_t>> Places;
};

std::string CountedWorks(std::size_t count, std::string_view one, std::string_view many)
{
    return std::to_string(count) + " " + std::string(count == 1 ? one : many);
}

} // namespace

bool AreOfOnePanel(const MachineSteps& a, const MachineSteps& b)
{
    return AreAlike(a.Length, b.Length) && AreAlike(a.Width, b.Width) && AreAlike(a.Thickness, b.Thickness);
}

Scene OverlayOf(const NamedSteps& first, const NamedSteps& second)
{
    // Both with one gap, so that edges lie alike.
    const double gap = std::max(SceneOf(first.Steps).EdgeGap, SceneOf(second.Steps).EdgeGap);
    Scene overlay = SceneOf(first.Steps, gap);
    const Scene other = SceneOf(second.Steps, gap);
    Unmatched unmatched(other.Items);
    for (SceneItem& item : overlay.Items)
        if (!unmatched.Take(item)) {
            item.Held = HeldIn::First;
            item.OnlyIn = first.Name;
        }
    for (const std::size_t index : unmatched.Left()) {
        SceneItem item = other.Items[index];
        item.Held = HeldIn::Second;
        item.OnlyIn = second.Name;
        overlay.Items.push_back(std::move(item));
    }
    for (SceneView& view : overlay.Views)
        view.Items = static_cast<std::size_t>(
            std::count_if(overlay.Items.begin(), overlay.Items.end(),
                          [&](const SceneItem& item) { return item.On == view.On; }));
    overlay.Sheet = BoxAround(overlay.Sheet, other.Sheet);
    overlay.Rapids.clear();
    GroupItems(overlay);
    return overlay;
}

std::string WorksOnlyIn(const Scene& overlay, HeldIn held)
{
    struct KindNames {
        WorkShape Shape;
        std::string_view One, Many;
    };
    constexpr std::array<KindNames, 5> kinds = {
        {{WorkShape::Bore, "bore", "bores"},
         {WorkShape::BoreRow, "stop of the drill head", "stops of the drill head"},
         {WorkShape::Saw, "saw cut", "saw cuts"},
         {WorkShape::Route, "route", "routes"},
         {WorkShape::Plunge, "plunge", "plunges"}}};
    std::string text;
    for (const KindNames& kind : kinds) {
        const auto count = static_cast<std::size_t>(
            std::count_if(overlay.Items.begin(), overlay.Items.end(), [&](const SceneItem& item) {
                return item.Held == held && item.Shape == kind.Shape;
            }));
        if (count > 0)
            text += (text.empty() ? "" : ", ") + CountedWorks(count, kind.One, kind.Many);
    }
    return text.empty() ? "nothing" : text;
}

} // namespace kv
