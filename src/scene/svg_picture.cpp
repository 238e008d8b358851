// One element for each item, with its program lines and group in data attributes, so that a page can light
// it. SVG counts Y downward: places are turned over here and nowhere else.
#include "scene/svg_picture.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace kv {

namespace {

constexpr double TextShare = 0.018; // height of the title by the sheet's larger measure
constexpr double LeastText = 6;     // mm
constexpr double UnknownMark = 3;   // mm: radius of the mark of a bore whose diameter is not known
constexpr double LeastArm = 30;     // mm: of the origin's axes
constexpr std::size_t MostOrderTexts = 1500;
constexpr double FullTurn = 359.999; // degrees; one arc of SVG cannot close

// Plain values, since drawing programs know no variables of CSS.
constexpr std::string_view Style = R"(
.sheet{font-family:sans-serif}
.paper{fill:#fbf8f2}.face{fill:#ecd9b6;stroke:#7a6440;stroke-width:1}
.fold{fill:#dcc499;stroke:#7a6440;stroke-width:.7}
.band{fill:none;stroke:#8a5a1c;stroke-linecap:round;stroke-linejoin:round}
.blade{fill:none;stroke:#5b6b2f}.blade-middle{fill:none;stroke:#5b6b2f;stroke-width:.6;stroke-dasharray:6 2 1 2}
.way{fill:none;stroke:#2b2418;stroke-width:.6}.lead{fill:none;stroke:#0b6e99;stroke-width:.9;stroke-dasharray:3 1.5}
.start{fill:none;stroke:#0b6e99;stroke-width:1}.arrow{fill:#2b2418}
.hole{stroke:#3d2a12;stroke-width:.6;fill:#3d2a12}
.unknown{fill:none;stroke:#3d2a12;stroke-width:.6;stroke-dasharray:1.5 1}
.row{fill:none;stroke:#3d2a12;stroke-width:1;stroke-dasharray:5 2}
.rapid{fill:none;stroke:#8c8577;stroke-width:.5;stroke-dasharray:1 2.5}
.drawn{fill:none;stroke:#2e5f9e;stroke-width:.5;stroke-dasharray:4 2}
.left{fill:none;stroke:#d00000;stroke-width:2.5;stroke-dasharray:7 3}
.only-first{fill:none;stroke:#d00000;stroke-width:1.6}
.only-second{fill:none;stroke:#d00000;stroke-width:4.5;stroke-dasharray:3 5}
.origin{fill:none;stroke:#a3201a;stroke-width:1.2}.axis{fill:#a3201a}.title,.small,.number{fill:#2b2418}
@media (prefers-color-scheme:dark){
.paper{fill:#1d1a16}.face{fill:#5d4a2f;stroke:#c9b48c}.fold{fill:#4b3b25;stroke:#c9b48c}
.band{stroke:#e2b469}.blade,.blade-middle{stroke:#b9cf7c}.way{stroke:#f0e8da}.lead,.start{stroke:#66c4ee}
.arrow,.title,.small,.number{fill:#f0e8da}.hole{stroke:#f3e3c4;fill:#f3e3c4}.unknown,.row{stroke:#f3e3c4}
.drawn{stroke:#8db8f0}.left,.only-first,.only-second{stroke:#ff5c5c}
.rapid{stroke:#9b9384}.origin{stroke:#ff8f85}.axis{fill:#ffc2bb}}
)";

std::string Number(double value)
{
    char text[48];
    std::snprintf(text, sizeof text, "%.3f", std::isfinite(value) ? value : 0);
    std::string shown = text;
    shown.erase(shown.find_last_not_of('0') + 1);
    if (shown.back() == '.')
        shown.pop_back();
    return shown == "-0" ? "0" : shown;
}

std::string Attribute(std::string_view name, const std::string& value)
{
    return " " + std::string(name) + "=\"" + value + "\"";
}

class Drawer {
  public:
    Drawer(const Scene& scene, const PictureTitle& title);
    std::string Element(bool withOrder) const;
    std::string BoxOf(const SceneView& view) const;

  private:
    std::string X(double x) const { return Number(x - Panel.Sheet.X); }
    std::string Y(double y) const { return Number(Head + Panel.Sheet.Y + Panel.Sheet.Height - y); }
    std::string At(const PathPoint& p) const { return X(p.X) + " " + Y(p.Y); }
    std::string ArcTo(const PathPoint& to, double radius, double sweep) const;
    std::string PathOf(const std::vector<Move>& way, std::size_t first, std::size_t last) const;
    std::string Path(std::string_view look, const std::string& path, const std::string& more = {}) const;
    std::string Circle(std::string_view look, const PathPoint& at, double radius,
                       const std::string& more = {}) const;
    std::string Text(std::string_view look, const PathPoint& at, double height, std::string_view text,
                     std::string_view anchor = "start") const;
    std::string View(const SceneView& view) const;
    std::string Origin() const;
    std::string Opacity(const SceneItem& item) const;
    std::string Hole(const SceneItem& item) const;
    std::string Blade(const SceneItem& item) const;
    std::string Route(const SceneItem& item) const;
    double MarkSize(const SceneItem& item) const;
    std::string Arrow(const SceneItem& item) const;
    std::string Only(const SceneItem& item) const;
    std::string Item(const SceneItem& item) const;
    std::string DrawnShapes() const;
    std::string Order() const;
    std::string Titles() const;

    const Scene& Panel;
    const PictureTitle& Title;
    double Letter = LeastText; // mm
    double Head = 0;           // mm above the sheet, for the title
};

Drawer::Drawer(const Scene& scene, const PictureTitle& title) : Panel(scene), Title(title)
{
    Letter = std::max(LeastText, TextShare * std::max(scene.Sheet.Width, scene.Sheet.Height));
    Head = Letter * (2.2 + 1.4 * static_cast<double>(title.Lines.size()));
}

std::string Drawer::ArcTo(const PathPoint& to, double radius, double sweep) const
{
    const std::string r = Number(radius);
    return "A" + r + " " + r + " 0 " + (std::fabs(sweep) > 180 ? "1" : "0") + (sweep > 0 ? " 0 " : " 1 ") +
           At(to);
}

std::string Drawer::PathOf(const std::vector<Move>& way, std::size_t first, std::size_t last) const
{
    std::string path;
    for (std::size_t i = first; i < last; ++i) {
        const Move& move = way[i];
        if (path.empty())
            path = "M" + At(move.From);
        const double radius = std::hypot(move.From.X - move.Centre.X, move.From.Y - move.Centre.Y);
        if (!move.IsArc || !(radius > 0)) {
            path += "L" + At(move.To);
        } else if (std::fabs(move.Sweep) < FullTurn) {
            path += ArcTo(move.To, radius, move.Sweep);
        } else {
            const PathPoint opposite{2 * move.Centre.X - move.From.X, 2 * move.Centre.Y - move.From.Y};
            path += ArcTo(opposite, radius, move.Sweep / 2) + ArcTo(move.To, radius, move.Sweep / 2);
        }
    }
    return path;
}

std::string Drawer::Path(std::string_view look, const std::string& path, const std::string& more) const
{
    return path.empty()
               ? ""
               : "<path" + Attribute("class", std::string(look)) + more + Attribute("d", path) + "/>";
}

std::string Drawer::Circle(std::string_view look, const PathPoint& at, double radius,
                           const std::string& more) const
{
    return "<circle" + Attribute("class", std::string(look)) + more + Attribute("cx", X(at.X)) +
           Attribute("cy", Y(at.Y)) + Attribute("r", Number(radius)) + "/>";
}

std::string Drawer::Text(std::string_view look, const PathPoint& at, double height, std::string_view text,
                         std::string_view anchor) const
{
    return "<text" + Attribute("class", std::string(look)) + Attribute("x", X(at.X)) +
           Attribute("y", Y(at.Y)) + Attribute("font-size", Number(height)) +
           Attribute("text-anchor", std::string(anchor)) + ">" + XmlText(text) + "</text>\n";
}

std::string Drawer::View(const SceneView& view) const
{
    const SheetBox& box = view.Box;
    return "<rect" + Attribute("class", view.On == Plane::Surface ? "face" : "fold") +
           Attribute("x", X(box.X)) + Attribute("y", Y(box.Y + box.Height)) +
           Attribute("width", Number(box.Width)) + Attribute("height", Number(box.Height)) + "/>\n";
}

// The corner that the program counts from, with the directions of its X and Y.
std::string Drawer::Origin() const
{
    const PathPoint corner{Panel.Origin.Right ? Panel.Length : 0, Panel.Origin.Top ? Panel.Width : 0};
    const double arm = std::max(LeastArm, 1.6 * Letter); // its letters stand clear of each other
    const double alongX = Panel.Origin.Right ? -arm : arm;
    const double alongY = Panel.Origin.Top ? -arm : arm;
    const PathPoint x{corner.X + alongX, corner.Y}, y{corner.X, corner.Y + alongY};
    return Path("origin", "M" + At(x) + "L" + At(corner) + "L" + At(y)) + Circle("origin", corner, 4) + "\n" +
           Text("axis", {x.X, x.Y + Letter * 0.3}, Letter * 0.8, "X", "middle") +
           Text("axis", {y.X + Letter * 0.3, y.Y}, Letter * 0.8, "Y");
}

// Pale on the surface, full through the panel.
std::string Drawer::Opacity(const SceneItem& item) const
{
    const double share = Panel.Thickness > 0 ? std::clamp(item.Depth / Panel.Thickness, 0.0, 1.0) : 0.5;
    return Number(item.IsThrough ? 1 : 0.15 + 0.55 * share);
}

std::string Drawer::Hole(const SceneItem& item) const
{
    if (!(item.Width > 0))
        return Circle("unknown", item.At, UnknownMark) +
               Path("unknown", "M" + At({item.At.X - UnknownMark, item.At.Y}) + "L" +
                                   At({item.At.X + UnknownMark, item.At.Y}) + "M" +
                                   At({item.At.X, item.At.Y - UnknownMark}) + "L" +
                                   At({item.At.X, item.At.Y + UnknownMark}));
    return Circle("hole", item.At, item.Width / 2, Attribute("fill-opacity", Opacity(item)));
}

std::string Drawer::Blade(const SceneItem& item) const
{
    const std::string path = PathOf(item.Swept, 0, item.Swept.size());
    std::string text;
    if (item.Width > 0)
        text =
            Path("blade", path,
                 Attribute("stroke-width", Number(item.Width)) + Attribute("stroke-opacity", Opacity(item)));
    return text + Path("blade-middle", path);
}

// Of ring and arrow: by the tool, so that small contours stay to be seen.
double Drawer::MarkSize(const SceneItem& item) const
{
    constexpr double unknownTool = 6, leastMark = 1.5; // mm
    const double tool = item.Width > 0 ? item.Width : unknownTool;
    return std::clamp(0.4 * tool, leastMark, std::max(leastMark, 0.35 * Letter));
}

// Where the way begins after its lead, in the direction of its first move.
std::string Drawer::Arrow(const SceneItem& item) const
{
    if (item.Way.size() <= item.LeadIn)
        return "";
    const Move& move = item.Way[item.LeadIn];
    double dx = move.To.X - move.From.X, dy = move.To.Y - move.From.Y;
    if (move.IsArc) {
        const double sense = move.Sweep > 0 ? 1 : -1;
        dx = -sense * (move.From.Y - move.Centre.Y);
        dy = sense * (move.From.X - move.Centre.X);
    }
    const double length = std::hypot(dx, dy);
    if (!(length > 0))
        return "";
    const double size = MarkSize(item);
    dx *= size / length;
    dy *= size / length;
    const PathPoint& at = move.From;
    return Path("arrow", "M" + At({at.X + 2 * dx, at.Y + 2 * dy}) + "L" + At({at.X - dy, at.Y + dx}) + "L" +
                             At({at.X + dy, at.Y - dx}) + "Z");
}

std::string Drawer::Route(const SceneItem& item) const
{
    std::string text;
    if (item.Width > 0)
        text =
            Path("band", PathOf(item.Swept, 0, item.Swept.size()),
                 Attribute("stroke-width", Number(item.Width)) + Attribute("stroke-opacity", Opacity(item)));
    const std::size_t moves = item.Way.size();
    return text + Path("lead", PathOf(item.Way, 0, item.LeadIn)) +
           Path("way", PathOf(item.Way, item.LeadIn, moves - item.LeadOut)) +
           Path("lead", PathOf(item.Way, moves - item.LeadOut, moves)) +
           Circle("start", item.At, MarkSize(item)) + Arrow(item);
}

// Over the work that one of two programs alone has: thin and solid for the first, wide and dashed for the
// second, so that both are seen where they lie on one line.
std::string Drawer::Only(const SceneItem& item) const
{
    if (item.Held == HeldIn::Both)
        return "";
    const std::string_view look = item.Held == HeldIn::First ? "only-first" : "only-second";
    if (item.Way.empty())
        return Circle(look, item.At, item.Width > 0 ? item.Width / 2 : UnknownMark);
    const std::vector<Move>& way = item.Swept.empty() ? item.Way : item.Swept;
    return Path(look, PathOf(way, 0, way.size()));
}

std::string Drawer::Item(const SceneItem& item) const
{
    std::string shape;
    switch (item.Shape) {
    case WorkShape::Bore:
    case WorkShape::Plunge:
        shape = Hole(item);
        break;
    case WorkShape::BoreRow:
        shape = Path("row", PathOf(item.Way, 0, item.Way.size()));
        break;
    case WorkShape::Saw:
        shape = Blade(item);
        break;
    case WorkShape::Route:
        shape = Route(item);
        break;
    }
    // The slider of a page counts the lines of the first program; work of the second is always shown.
    const bool hasLine = item.Held != HeldIn::Second;
    return "<g class=\"item\"" + Attribute("data-line", std::to_string(hasLine ? item.Line : 0)) +
           Attribute("data-last", std::to_string(hasLine ? item.LastLine : 0)) +
           Attribute("data-group", std::to_string(item.Group)) + "><title>" + XmlText(ItemSentence(item)) +
           "</title>" + shape + Only(item) + "</g>\n";
}

// The drawing over the program; what the program lacks is red and stands out by its dashes too.
std::string Drawer::DrawnShapes() const
{
    if (Panel.Drawn.empty())
        return "";
    std::string text = "<g class=\"drawing\">\n";
    for (const DrawnShape& shape : Panel.Drawn) {
        std::string path;
        for (std::size_t i = 0; i < shape.Way.size(); ++i)
            path += PathOf(shape.Way, i, i + 1);
        text += "<g><title>" + XmlText(shape.Text) + "</title>" +
                Path(shape.IsLeft ? "left" : "drawn", path) + "</g>\n";
    }
    return text + "</g>\n";
}

// Of the first ones: more could not be told apart.
std::string Drawer::Order() const
{
    std::string text = "<g class=\"order off\">\n";
    for (std::size_t i = 0; i < std::min(Panel.Items.size(), MostOrderTexts); ++i) {
        const PathPoint& at = Panel.Items[i].At;
        text +=
            Text("number", {at.X + Letter * 0.2, at.Y + Letter * 0.2}, Letter * 0.7, std::to_string(i + 1));
    }
    return text + "</g>\n";
}

std::string Drawer::Titles() const
{
    const double top = Panel.Sheet.Y + Panel.Sheet.Height + Head;
    const double left = Panel.Sheet.X + Letter;
    std::string text = Text("title", {left, top - 1.5 * Letter}, 1.3 * Letter, Title.Name);
    double line = top - 1.5 * Letter;
    for (const std::string& row : Title.Lines)
        text += Text("small", {left, line -= 1.4 * Letter}, Letter, row);
    return text;
}

std::string Drawer::Element(bool withOrder) const
{
    const std::string width = Number(Panel.Sheet.Width), height = Number(Panel.Sheet.Height + Head);
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" class=\"sheet\" viewBox=\"0 0 " + width +
                       " " + height + "\" role=\"img\"><title>" + XmlText(Title.Name) + "</title>\n";
    text += "<rect class=\"paper\" width=\"" + width + "\" height=\"" + height + "\"/>\n" + Titles();
    for (const SceneView& view : Panel.Views)
        text += View(view);
    text += "<g class=\"rapids\">\n";
    for (const SceneRapid& rapid : Panel.Rapids)
        text += Path("rapid", "M" + At(rapid.From) + "L" + At(rapid.To),
                     Attribute("data-line", std::to_string(rapid.Line))) +
                "\n";
    text += "</g>\n";
    // Wide cuts first, so that what is small lies above.
    for (const bool small : {false, true})
        for (const SceneItem& item : Panel.Items)
            if (small == (item.Shape != WorkShape::Route && item.Shape != WorkShape::Saw))
                text += Item(item);
    return text + DrawnShapes() + (withOrder ? Order() : "") + Origin() + "</svg>\n";
}

std::string Drawer::BoxOf(const SceneView& view) const
{
    constexpr double rim = 15; // mm
    const SheetBox& box = view.Box;
    return X(box.X - rim) + " " + Y(box.Y + box.Height + rim) + " " + Number(box.Width + 2 * rim) + " " +
           Number(box.Height + 2 * rim);
}

} // namespace

std::string XmlText(std::string_view utf8)
{
    std::string text;
    for (const char c : utf8) {
        if (c == '&')
            text += "&amp;";
        else if (c == '<')
            text += "&lt;";
        else if (c == '>')
            text += "&gt;";
        else if (c == '"')
            text += "&quot;";
        else
            text += static_cast<unsigned char>(c) < ' ' || c == '\x7F' ? '?' : c;
    }
    return text;
}

std::string PictureStyle()
{
    return std::string(Style);
}

std::string SvgViewOf(const Scene& scene, const PictureTitle& title, const SceneView& view)
{
    return Drawer(scene, title).BoxOf(view);
}

std::string SvgElement(const Scene& scene, const PictureTitle& title, bool withOrder)
{
    return Drawer(scene, title).Element(withOrder);
}

std::string SvgPicture(const Scene& scene, const PictureTitle& title)
{
    std::string element = SvgElement(scene, title);
    const std::size_t body = element.find("\n<rect");
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + element.substr(0, body) + "<style>" +
           PictureStyle() + "</style>" + element.substr(body);
}

} // namespace kv
