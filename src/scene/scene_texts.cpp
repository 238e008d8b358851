// The words for what a scene shows.
#include "scene/scene.h"

#include <cmath>
#include <cstdio>

namespace kv {

namespace {

std::string WorkName(WorkShape shape)
{
    switch (shape) {
    case WorkShape::Bore:
        return "bore";
    case WorkShape::BoreRow:
        return "stop of the drill head";
    case WorkShape::Saw:
        return "saw cut";
    case WorkShape::Route:
        return "route";
    case WorkShape::Plunge:
        return "plunge";
    }
    return "";
}

std::string OnlyText(const std::string& program)
{
    return program.empty() ? "" : "only in " + program + ": ";
}

std::string SideText(int side)
{
    if (side == 0)
        return "";
    return side > 0 ? ", left of the line" : ", right of the line";
}

std::string DepthText(double depth, bool isThrough)
{
    return ", " + LengthForPeople(depth) + " deep" + (isThrough ? " (through)" : "");
}

std::string MeasureText(WorkShape shape, double width)
{
    if (width == 0)
        return "";
    return (shape == WorkShape::Saw ? ", width " : ", diameter ") + LengthForPeople(width);
}

std::string ToolText(const std::string& tool)
{
    return tool.empty() ? "" : ", tool " + tool;
}

std::string CornerText(const Corner& corner)
{
    return std::string(corner.Top ? "upper" : "lower") + (corner.Right ? " right" : " left");
}

} // namespace

std::string LengthForPeople(double millimetres)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.3f", millimetres);
    std::string shown = text;
    while (shown.back() == '0')
        shown.pop_back();
    if (shown.back() == '.')
        shown.pop_back();
    return shown == "-0" ? "0" : shown;
}

std::string UnreadText(std::size_t lines)
{
    return std::to_string(lines) + (lines == 1 ? " line is" : " lines are") + " not understood and not drawn";
}

std::vector<std::string> TitleLines(const Scene& scene, std::size_t linesUnread)
{
    std::vector<std::string> lines = {
        "Panel " + LengthForPeople(scene.Length) + " x " + LengthForPeople(scene.Width) + " x " +
        LengthForPeople(scene.Thickness) + " mm, counted from the " + CornerText(scene.Origin) + " corner"};
    if (linesUnread > 0)
        lines.push_back(UnreadText(linesUnread));
    return lines;
}

std::string GroupText(const SceneGroup& group)
{
    return OnlyText(group.OnlyIn) + WorkName(group.Shape) + ToolText(group.Tool) +
           MeasureText(group.Shape, group.Width) + DepthText(group.Depth, group.IsThrough);
}

std::string ItemSentence(const SceneItem& item)
{
    const std::string lines = item.LastLine > item.Line ? "Lines " + std::to_string(item.Line) + " to " +
                                                              std::to_string(item.LastLine)
                                                        : "Line " + std::to_string(item.Line);
    const std::string edge =
        item.On == Plane::Surface ? "" : " on side " + std::to_string(static_cast<int>(item.On));
    std::string text = OnlyText(item.OnlyIn) + lines + ": " + WorkName(item.Shape) + edge +
                       ToolText(item.Tool) + MeasureText(item.Shape, item.Width) + SideText(item.Side) +
                       DepthText(item.Depth, item.IsThrough);
    if (item.Feed > 0)
        text += ", feed " + LengthForPeople(item.Feed);
    return item.From.empty() ? text : text + "; from " + item.From;
}

} // namespace kv
