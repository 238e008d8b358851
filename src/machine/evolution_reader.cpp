#include "machine/evolution_reader.h"

#include <cmath>
#include <initializer_list>
#include <optional>
#include <utility>

#include "machine/arcs.h"
#include "machine/reading_limits.h"
#include "machine/side_operations.h"
#include "machine/text_lines.h"

namespace kv {

namespace {

// Sides of the program; it has nothing on its side 2, the panel's underside.
std::optional<Plane> PlaneOf(int side)
{
    switch (side) {
    case 1:
        return Plane::Surface;
    case 5:
        return Plane::Edge1;
    case 3:
        return Plane::Edge2;
    case 6:
        return Plane::Edge3;
    case 4:
        return Plane::Edge4;
    default:
        return std::nullopt;
    }
}

bool AllNumbers(const SideOperation& operation, std::initializer_list<const char*> words)
{
    for (const char* const word : words)
        if (!operation.NumberOf(word))
            return false;
    return true;
}

struct EvolutionProgram {
    EvolutionReading How;
    SideSections Sections;
    MachineSteps Steps;
    std::size_t Moves = 0;
    bool Open = false;
    Plane On = Plane::Surface;
    PathPoint At; // as in the program, in millimetres

    bool OnFace() const { return On == Plane::Surface; }
    bool MirrorsU() const { return On == Plane::Edge3 || On == Plane::Edge4 ? How.From.Top : How.From.Right; }
    bool MirrorsV() const { return OnFace() && How.From.Top; }
    PathPoint Panel(const PathPoint& place) const
    {
        const double size = On == Plane::Edge3 || On == Plane::Edge4 ? Steps.Width : Steps.Length;
        return {MirrorsU() ? size - place.X : place.X, MirrorsV() ? Steps.Width - place.Y : place.Y};
    }
    int Sense() const { return MirrorsU() == MirrorsV() ? 1 : -1; }

    // "#3=-12", or "#3=R5" for the variable that the program gives.
    std::optional<double> DepthOf(const SideOperation& operation) const
    {
        const std::string_view* const text = operation.ValueOf("#3");
        if (text == nullptr || text->empty())
            return std::nullopt;
        if (CapitalOf(text->front()) != 'R') {
            const std::optional<double> value = PlainNumber(*text);
            return value ? std::optional<double>(0 - *value * Sections.Unit) : std::nullopt;
        }
        const std::optional<double> number = PlainNumber(text->substr(1));
        const auto known =
            number ? Sections.Variables.find(static_cast<int>(*number)) : Sections.Variables.end();
        return known == Sections.Variables.end() ? std::nullopt
                                                 : std::optional<double>(known->second * Sections.Unit);
    }
    PathPoint PlaceOf(const SideOperation& operation) const
    {
        return {operation.NumberOr("#1", 0) * Sections.Unit, operation.NumberOr("#2", 0) * Sections.Unit};
    }

    bool TakeBore(const SideOperation& operation);
    bool TakeStart(const SideOperation& operation);
    bool TakeGroove(const SideOperation& operation, bool alongX);
    bool TakeLine(const SideOperation& operation);
    bool TakeArc(const SideOperation& operation);
    void AddMove(const SideOperation& operation, Move move, double depth);
    bool TakeKnown(const SideOperation& operation);
    SideTaken Take(const SideOperation& operation);
    void TakeSizes()
    {
        Steps.Length = Sections.Length;
        Steps.Width = Sections.Width;
        Steps.Thickness = Sections.Thickness;
    }
};

bool EvolutionProgram::TakeBore(const SideOperation& operation)
{
    const std::optional<double> depth = DepthOf(operation);
    if (!AllNumbers(operation, {"#1", "#2"}) || !operation.AreNumbers({"#1002"}))
        return false;
    Bore bore;
    bore.On = On;
    bore.At = Panel(PlaceOf(operation));
    if (!OnFace() && How.EdgeBoresFromTheFace)
        bore.At.Y = Steps.Thickness - bore.At.Y;
    bore.Depth = depth.value_or(0);
    bore.Diameter = operation.NumberOr("#1002", 0) * Sections.Unit;
    bore.Tool = operation.TextOf("#205");
    bore.Line = operation.Line;
    Steps.Bores.push_back(bore);
    return depth.has_value();
}

bool EvolutionProgram::TakeStart(const SideOperation& operation)
{
    if (!operation.Has("#36")) // a bore in an edge by a router's tool
        return !OnFace() && TakeBore(operation);
    const std::optional<double> depth = DepthOf(operation);
    if (!AllNumbers(operation, {"#1", "#2", "#36"}) || !operation.Has("#40"))
        return false;
    const std::string side = operation.TextOf("#40");
    At = PlaceOf(operation);
    RouterCut cut;
    cut.On = On;
    cut.Radius = operation.NumberOr("#36", 0) * Sections.Unit;
    cut.Side = (side == "1" ? 1 : side == "2" ? -1 : 0) * Sense();
    cut.Start = Panel(At);
    cut.StartDepth = depth.value_or(0);
    cut.Tool = operation.TextOf("#205");
    cut.Line = operation.Line;
    Steps.Cuts.push_back(cut);
    Open = true;
    return depth && (side.empty() || (cut.Side != 0 && cut.Radius > 0));
}

// The move is still as in the program.
void EvolutionProgram::AddMove(const SideOperation& operation, Move move, double depth)
{
    RouterCut& cut = Steps.Cuts.back();
    At = move.To;
    move.From = Panel(move.From);
    move.To = Panel(move.To);
    move.Centre = Panel(move.Centre);
    move.Sweep *= Sense();
    move.DepthFrom = cut.Moves.empty() ? cut.StartDepth : cut.Moves.back().DepthTo;
    move.DepthTo = depth;
    move.Feed = operation.NumberOr("#2008", 0);
    move.Line = operation.Line;
    cut.Moves.push_back(move);
    ++Moves;
}

bool EvolutionProgram::TakeLine(const SideOperation& operation)
{
    const std::optional<double> depth = DepthOf(operation);
    if (!Open || !AllNumbers(operation, {"#1", "#2"}))
        return false;
    Move move;
    move.From = At;
    move.To = PlaceOf(operation);
    AddMove(operation, move, depth.value_or(0));
    return depth.has_value();
}

// "#31=5" counts from where the tool is, "#31=a;5" from the corner.
std::optional<double> CentreWord(const SideOperation& operation, const char* word, double at, double unit)
{
    const std::string_view* const text = operation.ValueOf(word);
    if (text == nullptr)
        return std::nullopt;
    const bool fromCorner = text->starts_with("a;") || text->starts_with("A;");
    const std::optional<double> value = PlainNumber(text->substr(fromCorner ? 2 : 0), LargestRadius);
    return value ? std::optional<double>(*value * unit + (fromCorner ? 0 : at)) : std::nullopt;
}

bool EvolutionProgram::TakeArc(const SideOperation& operation)
{
    const std::optional<double> depth = DepthOf(operation);
    const std::optional<double> x = CentreWord(operation, "#31", At.X, Sections.Unit);
    const std::optional<double> y = CentreWord(operation, "#32", At.Y, Sections.Unit);
    const double left = operation.NumberOr("#34", -1);
    const std::string_view* const radiusText = operation.ValueOf("#8017");
    const std::optional<double> stated = PlainNumber(radiusText ? *radiusText : "0", LargestRadius);
    if (!Open || !x || !y || !stated || !operation.NumberOf("#8044") || (left != 0 && left != 1))
        return false;
    Move move;
    move.From = At;
    TurnToAngle(move, {*x, *y}, operation.NumberOr("#8044", 0), left == 1);
    const double radius = Between(move.Centre, move.From);
    if (!(std::hypot(move.To.X, move.To.Y) <= LargestPlace)) // its angle is too coarse for such a radius
        return false;
    AddMove(operation, move, depth.value_or(0));
    // Where the radius is there too it is the same to seven digits; below 0 for the long way round.
    const double told = radiusText ? std::fabs(*stated) * Sections.Unit : radius;
    const double gap = std::fabs(told - radius);
    const bool agrees = gap < 0.02 + radius * 1e-6;
    Steps.Cuts.back().Moves.back().ArcGap = agrees ? 0 : gap;
    return depth && radius > 0 && agrees;
}

bool EvolutionProgram::TakeGroove(const SideOperation& operation, bool alongX)
{
    const char* const end = alongX ? "#8517" : "#8518";
    if (!OnFace() || !AllNumbers(operation, {"#8510", "#8511", "#8512", "#8525", end}))
        return false;
    const auto value = [&](const char* word) { return operation.NumberOr(word, 0) * Sections.Unit; };
    const PathPoint from{value("#8510"), value("#8511")};
    const double side = operation.NumberOr("#8525", 0);
    SawCut saw;
    saw.From = Panel(from);
    saw.To = Panel(alongX ? PathPoint{value(end), from.Y} : PathPoint{from.X, value(end)});
    saw.Depth = 0 - value("#8512");
    saw.Side = (side == 1 ? 1 : side == 2 ? -1 : 0) * Sense();
    saw.Tool = operation.TextOf("#8516");
    saw.Line = operation.Line;
    Steps.Saws.push_back(saw);
    return true;
}

bool EvolutionProgram::TakeKnown(const SideOperation& operation)
{
    const std::optional<Plane> plane = PlaneOf(operation.Side);
    const std::string& code = operation.Code;
    const bool move = code == "W#2201" || code == "W#2113";
    Open = Open && move && plane == On;
    if (!plane || !operation.IsClosed)
        return false;
    On = *plane;
    if (move)
        return code == "W#2201" ? TakeLine(operation) : TakeArc(operation);
    if (code == "W#81" || code == "W#85")
        return TakeBore(operation);
    if (code == "W#89")
        return TakeStart(operation);
    return (code == "W#1050" || code == "W#1051") && TakeGroove(operation, code == "W#1050");
}

SideTaken EvolutionProgram::Take(const SideOperation& operation)
{
    if (AreAllStepsTaken(Steps, Moves))
        return SideTaken::Full;
    TakeSizes();
    return TakeKnown(operation) ? SideTaken::Yes : SideTaken::NotUnderstood;
}

MachineSteps EvolutionStepsOf(LineWalk lines, const EvolutionReading& how)
{
    EvolutionProgram program;
    program.How = how;
    program.Steps.From = how.From;
    program.Steps.Tools = ToolNames::NumberAlone;
    ReadSides(lines, program.Sections, program.Steps,
              [&program](const SideOperation& operation) { return program.Take(operation); });
    program.TakeSizes();
    return std::move(program.Steps);
}

} // namespace

MachineSteps ReadEvolution(const std::vector<std::string>& lines, const EvolutionReading& how)
{
    return EvolutionStepsOf(LineWalk(lines), how);
}

MachineSteps ReadEvolutionText(std::string_view text, const EvolutionReading& how)
{
    return EvolutionStepsOf(LineWalk(text), how);
}

} // namespace kv
