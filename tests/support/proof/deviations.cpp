#include "support/proof/deviations.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace kv::test {

namespace {

constexpr double DepthOpen = 0.01; // mm
constexpr double Hair = 0.001;     // mm of the tool's radius
constexpr double PlaceOpen = 0.01; // mm, of bores and sizes

double DeepestOf(const RouterCut& cut)
{
    double deepest = cut.StartDepth;
    for (const Move& move : cut.Moves)
        deepest = std::max({deepest, move.DepthFrom, move.DepthTo});
    return deepest;
}

std::string ShownNumber(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value);
    return text;
}

bool StartsIn(const RouterCut& cut, const AskedCut& asked)
{
    return cut.On == asked.On && cut.Start.X >= asked.Low.X - 1 && cut.Start.X <= asked.High.X + 1 &&
           cut.Start.Y >= asked.Low.Y - 1 && cut.Start.Y <= asked.High.Y + 1;
}

double SizeOfFrame(const AskedCut& asked)
{
    return (asked.High.X - asked.Low.X) * (asked.High.Y - asked.Low.Y);
}

Region AreaOn(Plane plane, const MachineSteps& steps, const Sweep& how)
{
    const std::map<Plane, Region> areas = SweptAreas(steps, how);
    const auto found = areas.find(plane);
    return found == areas.end() ? Region{} : found->second;
}

// What stays between arcs that are drawn with a tolerance.
Region WithoutCrumbs(const Region& region)
{
    constexpr double Crumb = 0.01; // mm2
    std::vector<Region> large;
    for (const RegionPiece& piece : PiecesOf(region))
        if (piece.Area >= Crumb)
            large.push_back(piece.Itself);
    return large.empty() ? Region{} : Union(large);
}

class Comparison {
  public:
    explicit Comparison(std::vector<Deviation>& found) : Found(found) {}

    void Tell(Fault what, const AskedCut& asked, const std::string& how, const Region& place = {})
    {
        Deviation deviation{what, asked, asked.Name + ": " + ShownFault(what) + " " + how, place};
        for (const Doubt doubt : asked.Doubts)
            deviation.Text += std::string(" (") + ShownDoubt(doubt) + ")";
        Found.push_back(std::move(deviation));
    }
    void TellRegion(Fault what, const AskedCut& asked, const Region& place, const std::string& where = "")
    {
        if (!place.IsEmpty())
            Tell(what, asked, where + Described(place), place);
    }
    void CompareCuts(const AskedCut& asked, const MachineSteps& steps)
    {
        Sweep how;
        how.RadiusIfUnknown = asked.Radius;
        const Region all = AreaOn(asked.On, steps, how);
        TellRegion(Fault::CutOutside, asked, WithoutCrumbs(Difference(all, Grown(asked.May, asked.Open))));
        CompareDepths(asked, steps);
        for (int pass = 1; pass <= asked.Passes; ++pass) {
            const double level = asked.Depth * pass / asked.Passes;
            Sweep deep = how;
            deep.Take = [&](const RouterCut& cut) { return std::fabs(DeepestOf(cut) - level) < DepthOpen; };
            if (!asked.Ramps)
                deep.Depth = level - DepthOpen;
            const bool same = !asked.Ramps && asked.Passes == 1 && AllAt(steps, level);
            const Region swept = same ? all : AreaOn(asked.On, steps, deep);
            const Fault what = asked.Passes > 1 ? Fault::Passes : Fault::Left;
            const std::string where = asked.Passes > 1 ? "at " + ShownNumber(level) + " " : "";
            TellRegion(what, asked, WithoutCrumbs(Difference(asked.Must, Grown(swept, asked.Open))), where);
        }
    }
    void CompareWays(const AskedCut& asked, const MachineSteps& steps)
    {
        MachineSteps loose = steps; // a turn of the tool's own radius is no fault
        for (RouterCut& cut : loose.Cuts)
            cut.Radius = std::max(0.0, cut.Radius - Hair);
        for (const WayFault& fault : WayFaults(loose, asked.Radius)) {
            Tell(Fault::Compensation, asked,
                 fault.Text + " at X" + ShownNumber(fault.At.X) + " Y" + ShownNumber(fault.At.Y) + ", line " +
                     std::to_string(fault.Line));
            return;
        }
    }

  private:
    static bool AllAt(const MachineSteps& steps, double level)
    {
        return std::all_of(steps.Cuts.begin(), steps.Cuts.end(), [level](const RouterCut& cut) {
            return std::all_of(cut.Moves.begin(), cut.Moves.end(), [level](const Move& move) {
                return std::fabs(move.DepthFrom - level) < DepthOpen &&
                       std::fabs(move.DepthTo - level) < DepthOpen;
            });
        });
    }
    void CompareDepths(const AskedCut& asked, const MachineSteps& steps)
    {
        for (const RouterCut& cut : steps.Cuts) {
            const double share = DeepestOf(cut) / asked.Depth * asked.Passes;
            const double pass = std::clamp(std::round(share), 1.0, static_cast<double>(asked.Passes));
            if (std::fabs(DeepestOf(cut) - asked.Depth * pass / asked.Passes) > DepthOpen)
                Tell(Fault::Depth, asked,
                     ShownNumber(DeepestOf(cut)) + " instead of " + ShownNumber(asked.Depth) + ", line " +
                         std::to_string(cut.Line));
        }
    }

    std::vector<Deviation>& Found;
};

bool IsSame(const Bore& a, const Bore& b)
{
    return a.On == b.On && Between(a.At, b.At) < PlaceOpen && std::fabs(a.Depth - b.Depth) < PlaceOpen &&
           (b.Diameter == 0 || std::fabs(a.Diameter - b.Diameter) < PlaceOpen);
}

std::string Shown(const Bore& bore)
{
    return "plane " + std::to_string(static_cast<int>(bore.On)) + " X" + ShownNumber(bore.At.X) + " Y" +
           ShownNumber(bore.At.Y) + ", " + ShownNumber(bore.Depth) + " deep, " + ShownNumber(bore.Diameter) +
           " wide";
}

void CompareBores(const DrawnPanel& panel, const MachineSteps& steps, Comparison& comparison)
{
    std::vector<Bore> made = steps.Bores;
    AskedCut asked;
    asked.Name = "Bores";
    for (const Bore& bore : panel.Bores) {
        const auto found =
            std::find_if(made.begin(), made.end(), [&](const Bore& other) { return IsSame(bore, other); });
        if (found == made.end())
            comparison.Tell(Fault::Bore, asked, "missing: " + Shown(bore));
        else
            made.erase(found);
    }
    for (const Bore& bore : made)
        comparison.Tell(Fault::Bore, asked, "not asked for: " + Shown(bore));
}

bool IsRest(const Deviation& deviation)
{
    return deviation.What == Fault::Left || deviation.What == Fault::Passes;
}

// Nothing of it is left at the wall.
bool IsIsland(const Deviation& deviation)
{
    const AskedCut& asked = deviation.Feature;
    return IsRest(deviation) && Difference(deviation.Place, Shrunk(asked.May, asked.Radius)).IsEmpty();
}

bool Explains(Doubt doubt, const Deviation& deviation)
{
    const bool compensation = deviation.What == Fault::Compensation;
    switch (doubt) {
    case Doubt::WideStep:
        return IsIsland(deviation);
    case Doubt::ShortSideAtMark:
        return compensation || IsRest(deviation);
    case Doubt::PieceOutOfReach:
    case Doubt::LeadTooShort:
    case Doubt::LeadOnShortPiece:
    case Doubt::LeadTooLong:
    case Doubt::LeadBesideWall:
    case Doubt::LeadIntoWall:
    case Doubt::RampPastPiece:
        return compensation || IsRest(deviation) || deviation.What == Fault::CutOutside;
    default:
        return false;
    }
}

// "ROUTE4Z5" and what the converter makes of its number, "ROUTE50Z5", without it.
std::string WithoutNumber(std::string layer)
{
    const std::string word = "ROUTE";
    if (layer.starts_with(word))
        layer.erase(word.size(), layer.find_first_not_of("0123456789", word.size()) - word.size());
    return layer;
}

bool IsOfALead(Doubt doubt)
{
    return doubt == Doubt::LeadTooShort || doubt == Doubt::LeadOnShortPiece || doubt == Doubt::LeadTooLong ||
           doubt == Doubt::LeadBesideWall || doubt == Doubt::LeadIntoWall || doubt == Doubt::RampPastPiece;
}

// "Layer ROUTEZ5: the lead at X100 Y100 cuts into its contour"
bool TellsOfLead(const std::vector<std::string>& report, const std::string& layer)
{
    return std::any_of(report.begin(), report.end(), [&](const std::string& line) {
        return IsLineOf(layer, "the lead at", line) && line.find(" cuts into ") != std::string::npos;
    });
}

// "Layer EXCAVZ5: the pocket at X100 Y100 has ways that are narrower than its tool"
bool TellsOf(const std::string& what, const std::vector<std::string>& report, const std::string& layer)
{
    return std::any_of(report.begin(), report.end(), [&](const std::string& line) {
        return IsLineOf(layer, "the pocket at", line) && line.find(what) != std::string::npos;
    });
}

} // namespace

bool IsLineOf(const std::string& layer, const std::string& subject, const std::string& line)
{
    const std::string word = "Layer ";
    const std::size_t end = line.find(": ");
    return line.starts_with(word) && end != std::string::npos &&
           WithoutNumber(line.substr(word.size(), end - word.size())) == WithoutNumber(layer) &&
           line.compare(end + 2, subject.size(), subject) == 0;
}

Doubt ReasonOf(const Deviation& deviation)
{
    for (const Doubt doubt : deviation.Feature.Doubts)
        if (Explains(doubt, deviation))
            return doubt;
    return Doubt::None;
}

bool IsTold(const Deviation& deviation, const std::vector<std::string>& report, const MachineSteps& cuts)
{
    const AskedCut& asked = deviation.Feature;
    if (asked.Has(Doubt::PocketNarrowerThanTool)) // and the report says that it is left out
        return IsRest(deviation) &&
               TellsOf("is not cleared, it is narrower than its tool", report, asked.Name);
    if (!TellsOf("narrower than its tool", report, asked.Name))
        return false;
    if (deviation.What == Fault::Compensation)
        return true;
    if (asked.Has(Doubt::PocketLoopsTurnedOver))
        return IsRest(deviation) || deviation.What == Fault::CutOutside;
    return deviation.What == Fault::CutOutside &&
           (asked.Has(Doubt::ShortSideAtMark) || CutOutside(asked, UntilNarrowWays(cuts)).IsEmpty());
}

bool IsSilent(const Deviation& deviation, const std::vector<std::string>& report)
{
    const Doubt reason = ReasonOf(deviation);
    const std::string& name = deviation.Feature.Name;
    if (deviation.What == Fault::CutOutside)
        return IsOfALead(reason) && !TellsOfLead(report, name);
    const bool ofAStep = reason == Doubt::WideStep || reason == Doubt::ShortSideAtMark;
    return ofAStep && IsRest(deviation) && !TellsOf("leaves wood", report, name) &&
           !TellsOf("leaves islands", report, name);
}

const char* ShownFault(Fault fault)
{
    switch (fault) {
    case Fault::Unread:
        return "not read";
    case Fault::CutOutside:
        return "cut outside";
    case Fault::Left:
        return "left";
    case Fault::Depth:
        return "depth";
    case Fault::Passes:
        return "left by a pass";
    case Fault::Compensation:
        return "compensation";
    case Fault::Bore:
        return "bore";
    default:
        return "size";
    }
}

Region CutOutside(const AskedCut& asked, const MachineSteps& cuts)
{
    Sweep how;
    how.RadiusIfUnknown = asked.Radius;
    return Difference(AreaOn(asked.On, cuts, how), Grown(asked.May, asked.Open));
}

Region LeftInside(const AskedCut& asked, const MachineSteps& cuts)
{
    Sweep how;
    how.RadiusIfUnknown = asked.Radius;
    return Difference(asked.Must, Grown(AreaOn(asked.On, cuts, how), asked.Open));
}

MachineSteps UntilNarrowWays(const MachineSteps& steps)
{
    MachineSteps stopped = steps;
    for (RouterCut& cut : stopped.Cuts) {
        std::size_t line = static_cast<std::size_t>(-1);
        for (const WayFault& fault : WayOf(cut).Faults)
            line = std::min(line, fault.Line);
        // The move before is shortened or lengthened by the one that cannot be made.
        while (!cut.Moves.empty() && cut.Moves.back().Line + 1 >= line)
            cut.Moves.pop_back();
    }
    return stopped;
}

std::vector<MachineSteps> CutsByFeature(const std::vector<AskedCut>& asked, const MachineSteps& steps)
{
    std::vector<MachineSteps> cuts(asked.size() + 1);
    for (const RouterCut& cut : steps.Cuts) {
        std::size_t feature = asked.size();
        for (std::size_t i = 0; i < asked.size(); ++i)
            if (StartsIn(cut, asked[i]) &&
                (feature == asked.size() || SizeOfFrame(asked[i]) < SizeOfFrame(asked[feature])))
                feature = i;
        cuts[feature].Cuts.push_back(cut);
    }
    return cuts;
}

MachineSteps CutsOf(const AskedCut& feature, const std::vector<AskedCut>& asked, const MachineSteps& steps)
{
    const std::vector<MachineSteps> cuts = CutsByFeature(asked, steps);
    std::size_t i = 0;
    while (i < asked.size() && (asked[i].Name != feature.Name || asked[i].Low.X != feature.Low.X ||
                                asked[i].Low.Y != feature.Low.Y))
        ++i;
    return cuts[i];
}

bool AsksForNothing(const std::vector<AskedCut>& asked, const DrawnPanel& panel)
{
    return panel.Ways.empty() && panel.Bores.empty() &&
           std::all_of(asked.begin(), asked.end(),
                       [](const AskedCut& cut) { return cut.Has(Doubt::PocketNarrowerThanTool); });
}

std::vector<Deviation> DeviationsOf(const std::vector<AskedCut>& asked, const DrawnPanel& panel,
                                    const MachineSteps& steps)
{
    std::vector<Deviation> found;
    Comparison comparison(found);
    AskedCut program;
    program.Name = "Program";
    for (const std::string& line : steps.Unread)
        comparison.Tell(Fault::Unread, program, line);
    if (std::fabs(steps.Length - panel.Length) > PlaceOpen ||
        std::fabs(steps.Width - panel.Width) > PlaceOpen ||
        std::fabs(steps.Thickness - panel.Thickness) > PlaceOpen)
        comparison.Tell(Fault::Size, program,
                        ShownNumber(steps.Length) + " x " + ShownNumber(steps.Width) + " x " +
                            ShownNumber(steps.Thickness));
    const std::vector<MachineSteps> cuts = CutsByFeature(asked, steps);
    for (std::size_t i = 0; i < asked.size(); ++i) {
        comparison.CompareCuts(asked[i], cuts[i]);
        comparison.CompareWays(asked[i], cuts[i]);
    }
    for (const RouterCut& cut : cuts.back().Cuts)
        comparison.Tell(Fault::CutOutside, program,
                        "where nothing is drawn, plane " + std::to_string(static_cast<int>(cut.On)) + " X" +
                            ShownNumber(cut.Start.X) + " Y" + ShownNumber(cut.Start.Y) + ", line " +
                            std::to_string(cut.Line));
    CompareBores(panel, steps, comparison);
    return found;
}

} // namespace kv::test
