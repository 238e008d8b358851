// The programs of a drawing, read back, against what the drawing asks for: what is left standing, what is cut
// away that nobody drew, and what a control could not do.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "machine/steps.h"
#include "machine/tool_table.h"
#include "proof/demands.h"

namespace kv {

enum class FindingKind {
    Left,         // wood that should go
    Cut,          // wood that should stay
    MissingBore,  // asked for, in no program
    OtherBore,    // nobody drew it, or it is another than the one drawn
    NarrowWay,    // the tool does not fit: a control stops there, or goes astray
    OffPanel,     // a route that no way of the drawing asks for, beside all wood
    UnknownTool,  // that no table of the shop has
    ShortTool,    // it works deeper than the shop's table allows
    OtherTool,    // a route with a drill, a groove with a router
    NoFeed,       // routes that name none
    TooDeep,      // below the panel, deeper than anything there is asked for
    InTheAir,     // a route that nowhere comes down to the wood
    Rapid,        // at depth, over wood
    ArcAstray,    // its ends and its centre do not agree
    NotUnderstood // a line of a program
};
std::string FindingName(FindingKind kind); // "left standing"

struct Finding {
    FindingKind Kind = FindingKind::Left;
    Plane On = Plane::Surface;
    PathPoint At;            // mm, panel coordinates
    double Depth = 0;        // mm
    double Millimetres = 0;  // by how much, where it is most
    double Area = 0;         // mm2; 0: it is no area
    Long Drawn = 0;          // the entity; 0: none asks for it
    std::size_t Program = 0; // of those given
    std::size_t Line = 0;    // of the program; 0: none
    std::string What;        // "12 deep instead of 13"
};

// Of another panel's program all is wrong; a million lines of it would take hours.
constexpr std::size_t MostFindings = 1000;

struct Proof {
    std::size_t Bores = 0, Grooves = 0, Contours = 0, Pockets = 0; // that are as asked for
    std::vector<Finding> Findings;
    std::vector<Unproved> Left; // entities that could not be judged
    bool IsWhole = true;        // false: there were so many findings that the rest was not looked at

    bool IsFull() const { return Findings.size() >= MostFindings; }
};

constexpr double UsualTolerance = 0.1; // mm

// At most three decimals, none that are 0.
std::string MillimetreText(double millimetres);

// `tolerance`: mm that may be left, or cut, beyond. `tools`: of the shop; what it leaves out is not judged.
Proof Prove(const Demands& demands, std::vector<MachineSteps> programs, double tolerance,
            const ToolTable& tools = {});

} // namespace kv
