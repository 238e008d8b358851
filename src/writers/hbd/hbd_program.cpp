// Programs of the horizontal drilling and dowel inserting machine: the bores of one edge of the panel
// and the bores of the face that stand near that edge. Relies on mirrored records and the machine's
// tool table; leaves the program and takes the bores that it makes away from the other writers, by
// their Group.
#include <cmath>
#include <initializer_list>
#include <map>
#include <optional>
#include <tuple>

#include "platform/needed_files.h"
#include "platform/number_texts.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/given_names.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings_grids.h"
#include "writers/number_format.h"
#include "writers/output_names.h"
#include "writers/program_families.h"
#include "writers/program_lines.h"
#include "writers/side_program.h"

namespace kv {

namespace {

constexpr std::size_t UpperSide = 1, BackSide = 5; // of the program: the face, and the edge to be drilled
constexpr Long FieldCount = 9, SideField = 3, SizeField = 4;
constexpr std::size_t TypeColumn = 1, DiameterColumn = 2, InserterColumn = 3, GlueColumn = 4;
constexpr double HorizontalReach = 0.001; // between the diameters of a bore and its tool
constexpr Int DowelBottom = 4, GlueBottom = 5;

// Size of the panel as the machine sees it: along the edge, thick, away from it.
struct HbdSizes {
    std::string Length, Thickness, Depth;
};

struct HbdProgram {
    SideTexts Sides;
    GridCells Tools;
    Long Edge = 0;  // the side of the drawing that is drilled
    HbdSizes Sizes; // by the edge; empty where it is none of 1 to 4
    bool AnyBore = false;
};

void AppendWords(HbdProgram& program, std::initializer_list<std::string> words)
{
    for (const std::string& word : words)
        AppendSideText(program.Sides, word);
}

std::string SizeLine(const std::string& length, const std::string& height, const std::string& depth)
{
    return "::LF=" + length + " HF=" + height + " SF=" + depth + "CR";
}

// Row of the first tool of a type whose diameter fits; 0 for none. A hit on the last row counts as none,
// unless the table is full: a shorter one ends with the empty row behind its tools.
template <typename Fits> Long FindTool(const GridCells& tools, std::string_view type, const Fits& fits)
{
    for (std::size_t row = 1; row <= tools.size(); ++row) {
        if (GridCell(tools, row, TypeColumn) != type ||
            !fits(ToSingle(Val(GridCell(tools, row, DiameterColumn)))))
            continue;
        return row < tools.size() || row >= HbdToolRows ? static_cast<Long>(row) : 0;
    }
    return 0;
}

// Rows of other types are not looked at.
void TellPartlyReadTools(const GridCells& tools)
{
    for (std::size_t row = 1; row <= tools.size(); ++row) {
        const std::string type = GridCell(tools, row, TypeColumn),
                          text = GridCell(tools, row, DiameterColumn);
        if ((type == "Horizontal" || type == "Vertical") && !IsReadToItsEnd(text))
            Tell(Message::CellPartlyRead, {{"file", ShownPath(ExeFolder + std::string(HbdToolFile))},
                                           {"row", static_cast<long long>(row)},
                                           {"written", text},
                                           {"taken", NumberTaken(text)}});
    }
}

Long FindHorizontalTool(const GridCells& tools, Single diameter)
{
    return FindTool(tools, "Horizontal", [diameter](Single tool) {
        return std::abs(static_cast<double>(tool) - diameter) < HorizontalReach;
    });
}

Long FindVerticalTool(const GridCells& tools, Single diameter)
{
    return FindTool(tools, "Vertical", [diameter](Single tool) { return tool == diameter; });
}

std::string ToolCell(const HbdProgram& program, Long tool, std::size_t column)
{
    return tool < 1 ? std::string() : GridCell(program.Tools, static_cast<std::size_t>(tool), column);
}

TemplateFields FieldsOfDrawing()
{
    TemplateFields fields = CutFields(std::string(FieldCount - 1, '\r'));
    if (Trim(Run.PartDescription).empty())
        Run.PartDescription = "KORVANTI DXF IMPORT";
    const std::string texts[] = {"TPA\\ALBATROS\\EDICAD\\00.00:1011:0;0",
                                 DescriptionField(),
                                 "\n::SIDE=",
                                 PanelField(Run.SideWidth[Face], Run.SideHeight[Face]),
                                 "\nVAR{",
                                 "\n}VAR",
                                 "\nOPTI{",
                                 "\n}OPTI"};
    Long field = 0;
    for (const std::string& text : texts)
        ReplaceField(fields, ++field, text);
    AppendRVariables(fields);
    return fields;
}

void SettleEdge(HbdProgram& program, Long side)
{
    program.Edge = side;
    if (side < 1 || side > 4)
        return;
    const bool alongX = side < 3;
    program.Sizes.Length = FormatCoord(alongX ? Run.SideWidth[Face] : Run.SideHeight[Face]);
    program.Sizes.Depth = FormatCoord(alongX ? Run.SideHeight[Face] : Run.SideWidth[Face]);
    program.Sizes.Thickness = FormatCoord(Run.PartThickness);
}

void AppendGlueWords(HbdProgram& program, Int bottom)
{
    const bool glue = bottom == GlueBottom || Config.HBDGlue != 0;
    const bool dowel = glue || bottom == DowelBottom || Config.HBDDowel != 0;
    AppendWords(program, {dowel ? "#8501=1" : "#8501=0", glue ? "#8502=1" : "#8502=0"});
}

void WriteEdgeBore(HbdProgram& program, HBoreRecord& bore)
{
    program.Sides.Drawn = bore.Drawn;
    Long tool = ToLong(Val(bore.Tool.Trimmed()));
    if (tool == 0)
        tool = FindHorizontalTool(program.Tools, bore.Diameter);
    if (tool == 0)
        return;
    bore.Group = 0;
    program.AnyBore = true;
    const bool alongY = bore.Side == 3 || bore.Side == 4;
    const Single x = alongY ? bore.PosY : bore.PosX;
    const Single y = alongY ? bore.PosX : bore.PosY;
    AppendWords(program, {"W#1501{ ::WT2CR", "#8020=" + FormatCoord(x),
                          "#8021=" + FormatCoord(ToSingle(static_cast<double>(Run.PartThickness) - bore.Z)),
                          "#8022=" + FormatCoord(-y), "#8015=0", "#1001=1",
                          bore.Diameter == 0 ? std::string() : DiameterWord(bore.Diameter),
                          "#8098=forspina.mcr", "#8117=1", "#8132=1", "#6=1", "#8500=1CR"});
    AppendGlueWords(program, bore.Bottom);
    AppendWords(program, {"#8525=1", "#8526=1", "#8530=" + WholeText(tool),
                          "#8531=" + ToolCell(program, tool, InserterColumn),
                          "#8532=" + ToolCell(program, tool, GlueColumn), "}WCR"});
}

// Only the edge of the first bore is drilled; bores in the others stay with the main writer.
void WriteEdgeBores(HbdProgram& program)
{
    program.Sides.CurrentSide = BackSide;
    AppendSideText(program.Sides, "$=BackCR");
    if (HBores.Last() < 1)
        return;
    SettleEdge(program, HBores[1].Side);
    AppendSideText(program.Sides,
                   SizeLine(program.Sizes.Length, program.Sizes.Thickness, program.Sizes.Depth));
    for (Long i = 1; i <= HBores.Last(); ++i) {
        if (HBores[i].Side == program.Edge)
            WriteEdgeBore(program, HBores[i]);
    }
}

// A bore's distances from the left, the lower, the right and the upper edge.
struct Distances {
    Single Left = 0, Below = 0, Right = 0, Above = 0;
};

Distances DistancesOf(const VBoreRecord& bore)
{
    return {bore.X, bore.Y, ToSingle(static_cast<double>(Run.SideWidth[Face]) - bore.X),
            ToSingle(static_cast<double>(Run.SideHeight[Face]) - bore.Y)};
}

// How the bores of the face are seen from each of the edges 1 to 4.
struct EdgeView {
    Single Distances::*Along;
    Single Distances::*FromEdge;
    Single Distances::*FromFarEdge;
    Single Distances::*Row; // equal in a bore and its mirror image
};
constexpr EdgeView Views[] = {
    {&Distances::Left, &Distances::Below, &Distances::Above, &Distances::Left},
    {&Distances::Right, &Distances::Above, &Distances::Below, &Distances::Left},
    {&Distances::Below, &Distances::Left, &Distances::Right, &Distances::Below},
    {&Distances::Above, &Distances::Right, &Distances::Left, &Distances::Below},
};

const EdgeView* ViewOf(Long edge)
{
    return edge < 1 || edge > 4 ? nullptr : &Views[edge - 1];
}

// Bores by depth, row and distance from the far edge: what a mirror image would have.
using MirrorImages = std::multimap<std::tuple<Single, Single, Single>, Long>;

MirrorImages MirrorImagesFrom(const EdgeView& view)
{
    MirrorImages images;
    for (Long i = 1; i <= VBores.Last(); ++i) {
        const Distances place = DistancesOf(VBores[i]);
        images.insert({{VBores[i].Depth, place.*view.Row, place.*view.FromFarEdge}, i});
    }
    return images;
}

// The machine makes the image when the panel is turned round, by the same program.
void TakeMirrorImagesAway(MirrorImages& images, const VBoreRecord& bore, const EdgeView& view)
{
    const Distances place = DistancesOf(bore);
    const auto [first, last] = images.equal_range({bore.Depth, place.*view.Row, place.*view.FromEdge});
    for (auto image = first; image != last; ++image)
        VBores[image->second].Group = 0;
    images.erase(first, last);
}

// False where no tool drills the bore.
bool WriteFaceBore(HbdProgram& program, VBoreRecord& bore, const EdgeView& view)
{
    program.Sides.Drawn = bore.Drawn;
    Long tool = ToLong(Val(bore.Tool.Padded().substr(0, 2)));
    if (tool == 0)
        tool = FindVerticalTool(program.Tools, bore.Diameter);
    if (tool == 0)
        return false;
    bore.Group = 0;
    program.AnyBore = true;
    const Distances place = DistancesOf(bore);
    AppendWords(program, {"W#82{ ::WTpCR", "#205=" + WholeText(tool), "#1=" + FormatCoord(place.*view.Along),
                          "#2=hf-" + FormatCoord(place.*view.FromEdge), "#3=" + FormatCoord(-bore.Depth),
                          "#8015=0", "#201=1", "#1001=1", "}WCR"});
    return true;
}

// Of several edges within reach the last one wins; a bore that another writer has taken counts too.
Long EdgeNear(const VBoreRecord& bore, Single limit)
{
    const Distances place = DistancesOf(bore);
    Long edge = 0;
    for (Long candidate = 1; candidate <= 4; ++candidate) {
        if (place.*ViewOf(candidate)->FromEdge <= limit)
            edge = candidate;
    }
    return edge;
}

// Without a bore in an edge, the first bore of the face that stands near one says which is drilled.
void FindEdgeByFaceBores(HbdProgram& program, Single limit)
{
    for (Long i = 1; i <= VBores.Last() && program.Edge == 0; ++i)
        SettleEdge(program, EdgeNear(VBores[i], limit));
}

void WriteFaceBores(HbdProgram& program)
{
    const Single limit = ToSingle(Val(Config.HBDVBoreLimit) / Run.UnitFactor);
    FindEdgeByFaceBores(program, limit);
    const HbdSizes& sizes = program.Sizes;
    program.Sides.CurrentSide = UpperSide;
    program.Sides.Drawn = 0;
    AppendWords(program, {"$=upperCR", SizeLine(sizes.Length, sizes.Depth, sizes.Thickness)});
    const EdgeView* const view = ViewOf(program.Edge);
    std::optional<MirrorImages> images; // once a bore belongs to the edge
    for (Long i = 1; i <= VBores.Last() && view != nullptr; ++i) {
        VBoreRecord& bore = VBores[i];
        if (bore.Group <= 0 || !(DistancesOf(bore).*view->FromEdge <= limit))
            continue;
        if (!images)
            images = MirrorImagesFrom(*view);
        if (WriteFaceBore(program, bore, *view))
            TakeMirrorImagesAway(*images, bore, *view);
    }
}

SideHeads HeadsOfOtherSides(const HbdSizes& sizes)
{
    SideHeads heads;
    heads[2] = SizeLine(sizes.Length, sizes.Depth, sizes.Thickness);
    heads[3] = SizeLine(sizes.Length, sizes.Thickness, sizes.Depth);
    heads[4] = heads[6] = SizeLine(sizes.Depth, sizes.Thickness, sizes.Length);
    return heads;
}

void WriteFields(HbdProgram& program, TemplateFields& fields)
{
    if (program.Edge == 3 || program.Edge == 4)
        ReplaceField(fields, SizeField, PanelField(Run.SideHeight[Face], Run.SideWidth[Face]));
    program.Sides.CurrentSide = 0;
    program.Sides.Drawn = 0;
    AppendSideText(program.Sides, "\n");
    AssembleSides(program.Sides, HeadsOfOtherSides(program.Sizes));
    ReplaceField(fields, SideField, SideList(program.Sides));
}

// The machine takes names without a point.
std::string NameForMachine(std::string name)
{
    const std::size_t point = name.find('.');
    if (point != std::string::npos)
        name.erase(point, 1);
    return GivenFileName(name); // "C.ON" has become a device
}

} // namespace

std::string HbdProgramPath(const std::string& name)
{
    return WithBackslash(Trim(Config.HBDDestinationPath)) + NameForMachine(name);
}

void WriteHbdProgram()
{
    SetMeter(Meter::PgmCode, 40);
    TemplateFields fields = FieldsOfDrawing();
    HbdProgram program;
    IsThere(ExeFolder + std::string(HbdToolFile), LoadHbdTools(program.Tools)); // else without tools
    TellPartlyReadTools(program.Tools);
    WriteEdgeBores(program);
    WriteFaceBores(program);
    WriteFields(program, fields);
    const std::string name = FileNameOf(OutputName());
    if (program.AnyBore) {
        const std::string path = HbdProgramPath(name);
        Tell(Message::HbdName, {{"name", FileNameOf(path)}});
        if (PlaceSideProgram(path, fields, program.Sides))
            ProgramTraces.back().BackEdge = program.Edge;
    } else {
        Tell(Message::HbdNotIndicated, {{"name", name}});
    }
    SetMeter(Meter::PgmCode, 100);
}

} // namespace kv
