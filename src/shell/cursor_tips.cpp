// The cursor help: one tip for each control that has one. Relies on nothing; the windows set or clear
// them all. The texts are known to the operators and stay as they are spelled, double blanks too;
// "{product}" is the product's name.
#include "shell/control_tables.h"

namespace kv {

namespace {

constexpr TipRow TipRows[] = {
    {"Form1", "Bin",
     "Suplimentary Binary files needed by the Winner90 compiler are created for all selected files after "
     "processing."},
    {"Form1", "Start", "Start conversion process on selected files."},
    {"Form1", "CmdDF", "Hide or expose Default Settings Section."},
    {"Form1", "EX1", "Save all settings and exit program."},
    {"Form1", "StatusFrame", "Process Status Bar"},
    {"Form1", "MetIn", "Change Default Settings values between Inch and Metric."},
    {"Form1", "FlgLL",
     "Turn on Leadin and Leadout Synthesis. Leads will be created for routes that follow rules for Lead "
     "Synthesis"},
    {"Form1", "FlgRI", "Enable Z Ramping down on Leadins."},
    {"Form1", "FlgRO", "Enable Z Ramping up on Leadouts."},
    {"Form1", "LLen", "Set default lead lengths. Used if not specified in drawing."},
    {"Form1", "RHt", "Set default distance above part to begin and end ramping on leads."},
    {"Form1", "FlgRBR",
     "Remove the unwanted route path left on the perimeter of the part by some cabinet design programs."},
    {"Form1", "FlgCC",
     "Move the start point of a closed polyline cutout from the corner of the cutout to the midpoint of the "
     "first line segment."},
    {"Form1", "OSX",
     "Invokes the OFFSET command at the beginning of the program to offset the pattern this distance from "
     "the origin in X."},
    {"Form1", "OSY",
     "Invokes the OFFSET command at the beginning of the program to offset the pattern this distance from "
     "the origin in Y."},
    {"Form1", "OSZ",
     "Invokes the OFFSET command at the beginning of the program to offset the pattern this distance in Z."},
    {"Form1", "SetB", "Enter Setup for selecting various options."},
    {"Form1", "TSetB", "For setting tool number Substitution."},
    {"SetUp", "PrcM",
     "Set the number of decimal places used in program co-ordinate values for programs that are in Metric."},
    {"SetUp", "PrcI",
     "Set the number of decimal places used in program co-ordinate values for programs that are in Inches."},
    {"SetUp", "DXFPath(0)", "Path to DXF files for Winner 90. Also, location of KV.PNX List File."},
    {"SetUp", "DXFPath(1)", "Path to DXF files for Genesis. Also, location of KV.PNX List File."},
    {"SetUp", "DXFPath(2)", "Path to DXF files for Evolution. Also, location of KV.PNX List File."},
    {"SetUp", "GCodePath(0)", "Path that points to INDICE.PRG."},
    {"SetUp", "GCodePath(1)", "Path that to location for Genesis Program files."},
    {"SetUp", "GCodePath(2)", "Path that to location for Evolution Program files."},
    {"SetUp", "HBDPath", "Path that points to location where HBD program files are to be put."},
    {"SetUp", "SPB1", "Brings up path browser"},
    {"SetUp", "SPB2", "Brings up path browser"},
    {"SetUp", "FlgDDS(0)", "Selects system type for gcode output."},
    {"SetUp", "AS1",
     "If this button is selected {product} will automatically start when TEMP.DXF appears in the specified "
     "DXF subdirectory.  The file will be processed and TEMP.DXF will be deleted."},
    {"SetUp", "AS2",
     "If this button is selected {product} will automatically start when the file BATCH.LST appears in the "
     "specified DXF subdirectory.  The DXF files whose names are contained in this file will be processed "
     "and Batch.LST will be deleted."},
    {"SetUp", "AS0", "If this button is selected {product} will not autostart."},
    {"SetUp", "GAAP",
     "This will cause {product} to start the Graphic Editor after the AutoStarted conversion is completed.  "
     "The part will then be displayed in the Graphic Editor."},
    {"SetUp", "GAMP",
     "This will cause {product} to start the Graphic Editor after the Manually Started conversion is "
     "completed.  The part will then be displayed in the Graphic Editor."},
    {"SetUp", "PFM",
     "Checking this box will cause {product} to pause after the conversion to allow the reading of the "
     "process messages before the Graphic Editor displays the part."},
    {"SetUp", "PrefOK", "Saves the changes and closes Setup."},
    {"SetUp", "PrefCan", "Closes Setup without saving changes."},
    {"SetUp", "Tips", "Enables / Disables this Cursor Help."},
    {"SetUp", "SawKerf", "The default saw kerf used if none specified in the drawing."},
    {"SetUp", "SLim",
     "Large drawings are broken up into multiple progams, this sets the max number of lines for each "
     "resulting progam."},
    {"SetUp", "BLim",
     "If there are this number or more DXF files in the Batch.lst file then the part graphics will not be "
     "shown."},
    {"SetUp", "RadLim",
     "Arcs with a radius greater than this will be changed to a straight line. This value is Metric only."},
    {"SetUp", "SLInch", "Set for the Inch version of Masterwood."},
    {"SetUp", "PTSPath",
     "This path defines the default location where the .PTS file is placed. The path can also be determined "
     "from the drawing."},
    {"SetUp", "PTSName", "This is the .PTS filename that will be used if none is specified in the drawing."},
    {"SetUp", "PTSUnitFrame",
     "This sets the units that will be used in the dimension fields of the .PTS file. It must match "
     "Lumiplan."},
};

} // namespace

std::span<const TipRow> CursorTips()
{
    return TipRows;
}

} // namespace kv
