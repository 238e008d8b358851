// The walk over a program's lines. Written from the forms of the lines alone, with arithmetic of its
// own, so that it does not share a fault with the writers.
#include "support/program_checker.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>

#include "machine/path_point.h"

namespace kv::test {

namespace {

constexpr double Radian = 3.14159265358979323846 / 180;
constexpr double AngleRounding = 0.0005 * Radian; // an end angle has three decimals
constexpr std::string_view NumberLetters = "FEBSXYZIJKUACVQ";

// "-12.5", ".5", "45."; a lone point is no number.
std::optional<double> NumberOf(const std::string& text)
{
    const std::size_t digits = text.starts_with('-') ? 1 : 0;
    if (text.find_first_not_of("0123456789.", digits) != std::string::npos ||
        text.find_first_of("0123456789", digits) == std::string::npos)
        return std::nullopt;
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size())
        return std::nullopt;
    return value;
}

struct Line {
    std::string Code; // "G88"
    std::vector<std::string> GCodes;
    std::map<char, double> Numbers;
    bool DepthIsCode = false;
    int Side = 0;
    std::vector<std::string> Faults;

    bool Has(char letter) const { return Numbers.contains(letter); }
    bool HasCode(const std::string& code) const
    {
        return std::find(GCodes.begin(), GCodes.end(), code) != GCodes.end();
    }
    double Or(char letter, double other) const { return Has(letter) ? Numbers.at(letter) : other; }
};

bool IsUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}

// Where the word that begins at `from` ends. The character behind "Z=" may be any.
std::size_t EndOfWord(const std::string& text, std::size_t from)
{
    if (text.compare(from, 2, "Z=") == 0)
        return std::min(from + 3, text.size());
    std::size_t end = from + 1;
    while (end < text.size() && !IsUpper(text[end]))
        ++end;
    return end;
}

void TakeWord(Line& line, const std::string& word)
{
    const char letter = word[0];
    const std::string text = word.substr(1);
    if (letter == 'G') {
        line.GCodes.push_back(word);
        return;
    }
    if (letter == 'P')
        line.Side = text.empty() ? 0 : text[0] - '0';
    if (letter == 'Z' && text.starts_with('=')) {
        line.DepthIsCode = true;
        return;
    }
    if (NumberLetters.find(letter) == std::string_view::npos)
        return; // tool, diameter, compensation
    const std::optional<double> value = NumberOf(text);
    if (value)
        line.Numbers[letter] = *value;
    else
        line.Faults.push_back("\"" + word + "\" is no number");
}

Line LineOf(const std::string& text)
{
    Line line;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = EndOfWord(text, at);
        if (IsUpper(text[at]))
            TakeWord(line, text.substr(at, end - at));
        at = end;
    }
    line.Code = line.GCodes.empty() ? "" : line.GCodes[0];
    return line;
}

bool IsDrilling(const std::string& code)
{
    return code == "G81" || code == "G183" || code == "G184" || code == "G85" || code == "G86";
}

bool IsMove(const std::string& code)
{
    return code == "G1" || code == "G2" || code == "G3" || code == "G37" || code == "G38" || code == "G112" ||
           code == "G113";
}

struct Walker {
    ProgramCheck Check;
    std::vector<std::string> Faults;
    std::vector<ToolPoint> Path;

    std::size_t Index = 0;
    bool Open = false;
    int Side = 5;
    double X = 0, Y = 0, Z = 0, Slack = 0;

    void Tell(const std::string& what) { Faults.push_back("line " + std::to_string(Index) + ": " + what); }

    bool AlongX() const { return Side == 1 || Side == 2; }
    bool AlongY() const { return Side == 3 || Side == 4; }
    // The tool's place in the plane in which it works.
    PathPoint InPlane() const
    {
        return AlongX() ? PathPoint{X, Z} : AlongY() ? PathPoint{Y, Z} : PathPoint{X, Y};
    }
    PathPoint Target(const Line& line) const
    {
        const double x = line.Or('X', X);
        const double y = line.Or('Y', Y);
        const double z = line.Or('Z', Z);
        return AlongX() ? PathPoint{x, z} : AlongY() ? PathPoint{y, z} : PathPoint{x, y};
    }
    void Need(const Line& line, const std::string& letters)
    {
        for (const char letter : letters)
            if (!line.Has(letter) && !(letter == 'Z' && line.DepthIsCode))
                Tell(line.Code + " has no " + letter);
    }
    void MoveTo(const Line& line)
    {
        X = line.Or('X', X);
        Y = line.Or('Y', Y);
        Z = line.Or('Z', Z);
        Slack = 0;
    }
    void Keep(bool opens)
    {
        ToolPoint point{Index, opens, X, Y, Slack};
        const auto side = static_cast<std::size_t>(Side);
        if (Side == 1)
            point.Y = static_cast<double>(Run.SideMinY[side]) + Z;
        if (Side == 2)
            point.Y = static_cast<double>(Run.SideMaxY[side]) - Z;
        if (Side == 3)
            point.X = static_cast<double>(Run.SideMaxX[side]) - Z;
        if (Side == 4)
            point.X = static_cast<double>(Run.SideMinX[side]) + Z;
        Path.push_back(point);
    }

    void TakeStart(const Line& line)
    {
        Need(line, "XYZ");
        Side = line.Side;
        if (Side < 1 || Side > 5)
            Tell("a route on no side of the panel");
        Open = true;
        MoveTo(line);
        Keep(true);
    }
    // Centre and end angle: the end point is the control's to find.
    void TakeAngleArc(const Line& line)
    {
        Need(line, "XYZA");
        const PathPoint centre{line.Or('X', 0), line.Or('Y', 0)};
        const double radius = Between({X, Y}, centre);
        if (radius < Check.Tolerance)
            Tell("an arc around the place where the tool stands");
        const double angle = line.Or('A', 0) * Radian;
        X = centre.X + radius * std::cos(angle);
        Y = centre.Y + radius * std::sin(angle);
        Z = line.Or('Z', Z);
        Slack += radius * AngleRounding;
    }
    void TakeBulge(const Line& line)
    {
        Need(line, "XYZU");
        const double chord = Between(InPlane(), Target(line));
        if (chord <= 0)
            Tell("a bulge without length");
        if (chord > 2 * std::fabs(line.Or('U', 0)) + Check.Tolerance + Slack)
            Tell("a bulge whose chord is longer than its diameter");
        MoveTo(line);
    }
    void TakeCentreArc(const Line& line)
    {
        const std::string plane = AlongX() ? "G18" : AlongY() ? "G19" : "G17";
        if (!line.HasCode(plane))
            Tell("an arc that is not in plane " + plane);
        Need(line, AlongX() ? "XIK" : AlongY() ? "YJK" : "XYIJ");
        const PathPoint start = InPlane();
        const PathPoint end = Target(line);
        const PathPoint offset{line.Or(AlongY() ? 'J' : 'I', 0),
                               line.Or(AlongX() || AlongY() ? 'K' : 'J', 0)};
        const PathPoint centre{start.X + offset.X, start.Y + offset.Y};
        if (Between(start, centre) < Check.Tolerance)
            Tell("an arc around the place where the tool stands");
        if (std::fabs(Between(start, centre) - Between(end, centre)) > Check.Tolerance + Slack)
            Tell("an arc that ends beside its circle");
        MoveTo(line);
    }
    void TakeFitArc(const Line& line)
    {
        Need(line, "XYIJ");
        const PathPoint start{X, Y};
        const PathPoint middle{line.Or('I', 0), line.Or('J', 0)};
        const PathPoint end{line.Or('X', 0), line.Or('Y', 0)};
        const double area =
            (middle.X - start.X) * (end.Y - start.Y) - (middle.Y - start.Y) * (end.X - start.X);
        if (area == 0)
            Tell("no circle through three points");
        MoveTo(line);
    }
    void TakeMove(const Line& line)
    {
        if (!Open)
            Tell("a move outside of any route");
        if (line.Code == "G1") {
            Need(line, "XYZ");
            MoveTo(line);
        } else if (line.Code == "G2" || line.Code == "G3") {
            TakeCentreArc(line);
        } else if (line.Code == "G112" || line.Code == "G113") {
            TakeFitArc(line);
        } else if (line.Has('A')) {
            TakeAngleArc(line);
        } else {
            TakeBulge(line);
        }
        Keep(false);
    }
    void Take(const std::string& text)
    {
        const Line line = LineOf(text);
        const bool start = line.Code == "G88";
        const bool move = IsMove(line.Code) && line.HasCode("G90"); // others are the drawing's own texts
        const bool header = Index == 0;
        if (!start && !move && !header && !IsDrilling(line.Code))
            return;
        for (const std::string& fault : line.Faults)
            Tell(fault);
        if (IsDrilling(line.Code)) {
            Need(line, "XYZ");
            Open = false;
        }
        if (start)
            TakeStart(line);
        if (move)
            TakeMove(line);
    }
};

Walker Walked(const std::vector<std::string>& lines, const ProgramCheck& check)
{
    Walker walker;
    walker.Check = check;
    for (walker.Index = 0; walker.Index < lines.size(); ++walker.Index)
        if (walker.Index != 1) // the name line holds any text
            walker.Take(lines[walker.Index]);
    return walker;
}

} // namespace

std::vector<std::string> ProgramFaults(const std::vector<std::string>& lines, const ProgramCheck& check)
{
    return Walked(lines, check).Faults;
}

std::vector<ToolPoint> ToolPath(const std::vector<std::string>& lines)
{
    return Walked(lines, {}).Path;
}

} // namespace kv::test
