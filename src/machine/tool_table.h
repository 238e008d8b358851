// The tools of a machine, for programs that name a tool and not its size: the drill head of DT.Par, and a
// table of routers, saws and drills that a shop may keep.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "machine/steps.h"

namespace kv {

struct HeadTool {
    double X = 0, Y = 0, Diameter = 0;   // mm, on the head
    bool Drills = false, IsTool = false; // a router of the head is a tool that does not drill
};

struct ShopTool {
    char Kind = 'R';                            // 'R' router, 'S' saw, 'D' drill
    double Diameter = 0, Kerf = 0, Deepest = 0; // mm; 0: not given
};

struct ToolTable {
    std::vector<HeadTool> Head;   // by the two-digit number of the drill, from 1; 0 is blank
    std::map<int, ShopTool> Shop; // by the tool's number
};

// DT.Par: kind, X, Y, Z and diameter, parted by tabs, up to the first empty line. A line that is otherwise is
// a place without a drill.
std::vector<HeadTool> ReadHeadTools(std::string_view text);

// A line of Tools.cfg is a number, a kind (router, saw, drill) and the words diameter=, kerf=, depth= in mm;
// "#" begins a remark. A line that is otherwise is left out and named in `faults`, as "line 3: ...".
std::map<int, ShopTool> ReadShopTools(std::string_view text, std::vector<std::string>& faults);

// The tool's number behind the group of a program's tool text: 71 of "0171", 103 of "01a3", 205 of
// "0205M66". Below 0: none.
int ToolNumberOf(std::string_view tool);

// The numbers of a program's tool text: the drills of a stop, or the one tool. Empty: it names none, or a row
// of a table that only its machine has.
std::vector<int> ToolNumbersOf(ToolNames names, const std::string& tool);
// Whether the number is a place of the head: a drill or another tool of DT.Par.
bool IsOnHead(const ToolTable& tools, int number);

// Gives bores, routes and saw cuts the sizes that the program leaves open, and makes bores of the rows whose
// drills the head knows. What the table does not know stays as it is.
void FillTools(MachineSteps& steps, const ToolTable& tools);

} // namespace kv
