#include "support/proof/picture.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace kv::test {

namespace {

constexpr double Margin = 30; // mm
constexpr double EdgeGap = 20;

std::string Coordinate(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.3f ", value);
    return text;
}

// A plane's places on the sheet, which counts downward.
struct Sheet {
    double Top = 0, Height = 0;

    std::string At(const PathPoint& point) const
    {
        return Coordinate(point.X + Margin) + Coordinate(Top + Height - point.Y);
    }
};

std::string RegionPath(const Region& region, const Sheet& sheet, const std::string& look)
{
    if (region.IsEmpty())
        return "";
    std::string path;
    for (const Ring& ring : region.Rings) {
        char step = 'M';
        for (const GridPoint& point : ring) {
            path +=
                step + sheet.At({static_cast<double>(point.X) * 1e-5, static_cast<double>(point.Y) * 1e-5});
            step = 'L';
        }
        path += "Z ";
    }
    return "<path fill-rule=\"evenodd\" " + look + " d=\"" + path + "\"/>\n";
}

std::string WayPath(const std::vector<Move>& pieces, const Sheet& sheet, const std::string& look)
{
    std::string path;
    for (const Move& piece : pieces) {
        char step = 'M';
        for (const PathPoint& point : PointsAlong(piece)) {
            path += step + sheet.At(point);
            step = 'L';
        }
    }
    return "<path fill=\"none\" " + look + " d=\"" + path + "\"/>\n";
}

MachineSteps OnPlane(const MachineSteps& steps, Plane plane)
{
    MachineSteps some;
    for (const RouterCut& cut : steps.Cuts)
        if (cut.On == plane)
            some.Cuts.push_back(cut);
    return some;
}

std::string ToolPaths(const std::vector<AskedCut>& asked, const MachineSteps& steps, Plane plane,
                      const Sheet& sheet)
{
    std::string text, thin;
    const std::vector<MachineSteps> cuts = CutsByFeature(asked, OnPlane(steps, plane));
    for (std::size_t i = 0; i < cuts.size(); ++i) {
        Sweep how;
        how.RadiusIfUnknown = i < asked.size() ? asked[i].Radius : 1;
        for (const auto& [on, area] : SweptAreas(cuts[i], how))
            text += RegionPath(area, sheet, "fill=\"#e6d3b0\"");
        for (const RouterCut& cut : cuts[i].Cuts)
            thin += WayPath(WayOf(cut, how.RadiusIfUnknown).Pieces, sheet,
                            "stroke=\"#a07020\" stroke-width=\"0.2\"");
    }
    return text + thin;
}

std::string DrawnWays(const DrawnPanel& panel, Plane plane, const Sheet& sheet)
{
    const std::string look = "stroke=\"black\" stroke-width=\"0.3\"";
    std::string text;
    for (const DrawnWay& way : panel.Ways)
        if (way.On == plane)
            text += WayPath(way.Pieces, sheet, look);
    if (plane == Plane::Surface)
        for (const DrawnPocket& pocket : panel.Pockets)
            text += WayPath(pocket.Outline, sheet, look);
    return text;
}

std::string PlaneOf(const DrawnPanel& panel, const std::vector<AskedCut>& asked, const MachineSteps& steps,
                    Plane plane, const Sheet& sheet)
{
    const bool along = plane == Plane::Edge1 || plane == Plane::Edge2;
    const double length = plane == Plane::Surface || along ? panel.Length : panel.Width;
    std::string text = RegionPath(BoxOf({0, 0}, {length, sheet.Height}), sheet,
                                  "fill=\"#f8f8f4\" stroke=\"#888\" stroke-width=\"0.4\"");
    text += ToolPaths(asked, steps, plane, sheet) + DrawnWays(panel, plane, sheet);
    for (const Deviation& deviation : DeviationsOf(asked, panel, steps))
        if (deviation.Feature.On == plane)
            text += RegionPath(deviation.Place, sheet,
                               deviation.What == Fault::CutOutside ? "fill=\"red\"" : "fill=\"blue\"");
    return text;
}

} // namespace

std::optional<std::string> PictureFolder()
{
    const char* const folder = std::getenv("KORVANTI_PICTURES");
    return folder != nullptr && *folder != '\0' ? std::optional<std::string>(folder) : std::nullopt;
}

std::string PictureOf(const DrawnPanel& panel, const std::vector<AskedCut>& asked, const MachineSteps& steps)
{
    std::string planes;
    double top = Margin;
    for (const Plane plane : {Plane::Surface, Plane::Edge1, Plane::Edge2, Plane::Edge3, Plane::Edge4}) {
        if (plane != Plane::Surface && OnPlane(steps, plane).Cuts.empty())
            continue;
        const Sheet sheet{top, plane == Plane::Surface ? panel.Width : panel.Thickness};
        planes += PlaneOf(panel, asked, steps, plane, sheet);
        top += sheet.Height + EdgeGap;
    }
    const double width = std::max(panel.Length, panel.Width) + 2 * Margin;
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + Coordinate(width) + Coordinate(top) +
           "\">\n" + planes + "</svg>\n";
}

void KeepPicture(const std::string& name, const DrawnPanel& panel, const std::vector<AskedCut>& asked,
                 const MachineSteps& steps)
{
    const std::optional<std::string> folder = PictureFolder();
    if (!folder)
        return;
    std::ofstream(*folder + "/" + name + ".svg") << PictureOf(panel, asked, steps);
}

} // namespace kv::test
