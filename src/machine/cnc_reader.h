// Reads a CNC90, WINNER90 or GENESIS program as its control does, from the forms of its lines alone.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "machine/steps.h"

namespace kv {

struct CncReading {
    // The control is set up with upper and lower exchanged (the setting Origin is not 0): G54 is its lower
    // left corner then.
    bool UpperAndLowerExchanged = false;
    // Depths that the control knows by letter ("Z=a"), in the program's unit. One that is not here is
    // read as 0, and its line goes to Unread.
    std::map<char, double> Depths;
};

// Lines are counted from 1, the header is the first one that is neither empty nor a comment. The header of a
// further portion of the same panel goes on with it; that of another panel ends what is read. Places count
// from the corner that G54 to G57 name; senses of arcs, end angles, G41 and G42 are those seen from above,
// and from outside in front of an edge. Comments, the description, offsets of the whole panel (G92) and the
// end are passed over. A line of another form goes to Unread, as "7: G4F2"; a text of the drawing that stands
// in the program as machine code is one of these.
MachineSteps ReadCnc(const std::vector<std::string>& lines, const CncReading& how = {});
MachineSteps ReadCncText(std::string_view text, const CncReading& how = {});

} // namespace kv
