// Relies on tools being named by their numbers; a program that names rows of its machine's table is not
// judged.
#include "proof/tool_rules.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <utility>

namespace kv {

namespace {

struct ToolUse {
    Plane On = Plane::Surface;
    PathPoint At;
    double Depth = 0;
    std::size_t Line = 0;
    std::string Tool;
    char Kind = 'R';      // as in Tools.cfg
    bool Travels = false; // on a way, or along a groove: a drill cannot
};

double DepthOf(const RouterCut& cut)
{
    double depth = cut.StartDepth;
    for (const Move& move : cut.Moves)
        depth = std::max({depth, move.DepthFrom, move.DepthTo});
    return depth;
}

std::vector<ToolUse> UsesOf(const MachineSteps& steps)
{
    std::vector<ToolUse> uses;
    for (const Bore& bore : steps.Bores)
        uses.push_back({bore.On, bore.At, bore.Depth, bore.Line, bore.Tool, 'D', false});
    for (const BoreRow& row : steps.Rows)
        uses.push_back({Plane::Surface, row.From, row.Depth, row.Line, row.Tool, 'D', false});
    for (const SawCut& saw : steps.Saws)
        uses.push_back({Plane::Surface, saw.From, saw.Depth, saw.Line, saw.Tool, 'S', true});
    for (const RouterCut& cut : steps.Cuts)
        uses.push_back({cut.On, cut.Start, DepthOf(cut), cut.Line, cut.Tool, 'R', !cut.Moves.empty()});
    std::stable_sort(uses.begin(), uses.end(),
                     [](const ToolUse& a, const ToolUse& b) { return a.Line < b.Line; });
    return uses;
}

// The head's drills are numbers of the first group; of the second, number 5 is a router.
bool IsOfFirstGroup(ToolNames names, const std::string& tool, int number)
{
    constexpr int highestOfSecondGroup = 20; // of routers from 1 on
    return names == ToolNames::WithGroup ? tool.starts_with("01") : number > highestOfSecondGroup;
}

std::string NameOfKind(char kind)
{
    return kind == 'D' ? "a drill" : kind == 'S' ? "a saw" : "a router";
}

std::string NameOfUse(const ToolUse& use)
{
    return use.Kind == 'D' || !use.Travels ? "a bore" : use.Kind == 'S' ? "a groove" : "a route";
}

class ToolRules {
  public:
    ToolRules(Proof& proof, const ToolTable& tools, double tolerance)
        : All(proof), Tools(tools), Tolerance(tolerance)
    {
        for (const auto& [number, tool] : tools.Shop)
            Kinds.insert(tool.Kind);
    }

    void Judge(const MachineSteps& steps, std::size_t program)
    {
        std::set<int> told, toldKinds; // each tool once
        for (const ToolUse& use : UsesOf(steps))
            for (const int number : ToolNumbersOf(steps.Tools, use.Tool)) {
                if (All.IsFull())
                    return;
                JudgeDepth(use, number, program);
                if (!IsKnown(use, number) && told.insert(number).second)
                    Tell(FindingKind::UnknownTool, use, program, use.Tool);
                if (const char kind = KindOf(number, steps.Tools);
                    IsOfFirstGroup(steps.Tools, use.Tool, number) && !Suits(use, kind) &&
                    toldKinds.insert(number).second)
                    Tell(FindingKind::OtherTool, use, program,
                         NameOfUse(use) + " with the tool " + use.Tool + ", which is " + NameOfKind(kind));
            }
    }

  private:
    // Without a table of that kind of tool nobody can say.
    bool IsKnown(const ToolUse& use, int number) const
    {
        if (IsOnHead(Tools, number) || Tools.Shop.count(number) > 0)
            return true;
        const bool isDrillOfHead =
            use.Kind == 'D' && Tools.Head.size() > 1 && static_cast<std::size_t>(number) < Tools.Head.size();
        return !isDrillOfHead && Kinds.count(use.Kind) == 0;
    }
    // As in Tools.cfg; 0: no table says it.
    char KindOf(int number, ToolNames names) const
    {
        if (const auto tool = Tools.Shop.find(number); tool != Tools.Shop.end())
            return tool->second.Kind;
        const bool isOfHead = names == ToolNames::WithGroup && IsOnHead(Tools, number);
        return isOfHead && Tools.Head[static_cast<std::size_t>(number)].Drills ? 'D' : '\0';
    }
    // A router may bore, and a router of the head is called so in no table.
    static bool Suits(const ToolUse& use, char kind)
    {
        return kind == '\0' || (use.Travels ? kind == use.Kind : kind != 'S');
    }
    void JudgeDepth(const ToolUse& use, int number, std::size_t program)
    {
        const auto tool = Tools.Shop.find(number);
        if (tool == Tools.Shop.end() || !(tool->second.Deepest > 0) ||
            use.Depth <= tool->second.Deepest + Tolerance)
            return;
        Tell(FindingKind::ShortTool, use, program,
             use.Tool + ", whose largest depth is " + MillimetreText(tool->second.Deepest));
    }
    void Tell(FindingKind kind, const ToolUse& use, std::size_t program, std::string what)
    {
        Finding finding;
        finding.Kind = kind;
        finding.On = use.On;
        finding.At = use.At;
        finding.Depth = use.Depth;
        finding.Program = program;
        finding.Line = use.Line;
        finding.What = std::move(what);
        All.Findings.push_back(std::move(finding));
    }

    Proof& All;
    const ToolTable& Tools;
    double Tolerance;
    std::set<char> Kinds; // that Tools.cfg has
};

} // namespace

void ProveTools(Proof& proof, const std::vector<MachineSteps>& programs, const ToolTable& tools,
                double tolerance)
{
    ToolRules rules(proof, tools, tolerance);
    for (std::size_t program = 0; program < programs.size(); ++program)
        rules.Judge(programs[program], program);
}

} // namespace kv
