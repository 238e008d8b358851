#include "machine/hbd_reader.h"

#include <optional>
#include <utility>

#include "machine/reading_limits.h"
#include "machine/side_operations.h"
#include "machine/text_lines.h"

namespace kv {

namespace {

constexpr int FaceSide = 1, BackSide = 5;

struct HbdProgram {
    HbdReading How;
    SideSections Sections;
    MachineSteps Steps;

    bool Turned() const { return How.Edge == Plane::Edge3 || How.Edge == Plane::Edge4; }
    // From places as the program counts them to those of the panel.
    PathPoint Panel(const PathPoint& place) const
    {
        return {How.From.Right ? Steps.Length - place.X : place.X,
                How.From.Top ? Steps.Width - place.Y : place.Y};
    }
    // Along the edge, away from it.
    PathPoint FacePlace(double along, double away) const
    {
        switch (How.Edge) {
        case Plane::Edge2:
            return Panel({Steps.Length - along, Steps.Width - away});
        case Plane::Edge3:
            return Panel({away, along});
        case Plane::Edge4:
            return Panel({Steps.Length - away, Steps.Width - along});
        default:
            return Panel({along, away});
        }
    }
    PathPoint EdgePlace(double along, double height) const
    {
        const PathPoint place = Panel({along, along});
        return {Turned() ? place.Y : place.X, height};
    }

    bool TakeFaceBore(const SideOperation& operation)
    {
        const std::string_view* const away = operation.ValueOf("#2");
        if (away == nullptr || !SameLetters(away->substr(0, 3), "hf-"))
            return false;
        const std::optional<double> distance = PlainNumber(away->substr(3));
        const std::optional<double> along = operation.NumberOf("#1"), depth = operation.NumberOf("#3");
        if (!distance || !along || !depth || !operation.NumberOf("#205"))
            return false;
        const double unit = Sections.Unit;
        Steps.Bores.push_back({Plane::Surface, FacePlace(*along * unit, *distance * unit), 0 - *depth * unit,
                               0, operation.TextOf("#205"), operation.Line});
        return true;
    }
    bool TakeEdgeBore(const SideOperation& operation)
    {
        const std::optional<double> along = operation.NumberOf("#8020"), height = operation.NumberOf("#8021");
        const std::optional<double> depth = operation.NumberOf("#8022"), tool = operation.NumberOf("#8530");
        if (!along || !height || !depth || !tool || !operation.AreNumbers({"#1002"}))
            return false;
        const double unit = Sections.Unit;
        Steps.Bores.push_back({How.Edge, EdgePlace(*along * unit, *height * unit), 0 - *depth * unit,
                               operation.NumberOr("#1002", 0) * unit, operation.TextOf("#8530"),
                               operation.Line});
        return true;
    }
    // The machine counts along its back: of a panel that is turned the sizes change places.
    void TakeSizes()
    {
        Steps.Length = Turned() ? Sections.Width : Sections.Length;
        Steps.Width = Turned() ? Sections.Length : Sections.Width;
        Steps.Thickness = Sections.Thickness;
    }
    bool TakeKnown(const SideOperation& operation)
    {
        if (operation.Code == "W#82" && operation.Side == FaceSide)
            return TakeFaceBore(operation);
        return operation.Code == "W#1501" && operation.Side == BackSide && TakeEdgeBore(operation);
    }
    SideTaken Take(const SideOperation& operation)
    {
        if (AreAllStepsTaken(Steps, 0))
            return SideTaken::Full;
        TakeSizes();
        return operation.IsClosed && TakeKnown(operation) ? SideTaken::Yes : SideTaken::NotUnderstood;
    }
};

MachineSteps HbdStepsOf(LineWalk lines, const HbdReading& how)
{
    HbdProgram program;
    program.How = how;
    program.Steps.From = how.From;
    program.Steps.Tools = ToolNames::OfTheMachine;
    ReadSides(lines, program.Sections, program.Steps,
              [&program](const SideOperation& operation) { return program.Take(operation); });
    program.TakeSizes();
    return std::move(program.Steps);
}

} // namespace

MachineSteps ReadHbd(const std::vector<std::string>& lines, const HbdReading& how)
{
    return HbdStepsOf(LineWalk(lines), how);
}

MachineSteps ReadHbdText(std::string_view text, const HbdReading& how)
{
    return HbdStepsOf(LineWalk(text), how);
}

} // namespace kv
