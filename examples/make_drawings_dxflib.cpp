// Draws the example drawings that come from dxflib (the distribution's libdxflib-dev).
// Build: g++ -std=c++20 make_drawings_dxflib.cpp -ldxflib -o make_drawings_dxflib
// Run:   ./make_drawings_dxflib FOLDER
// The drawings kept beside this file are the ones that the expected programs were worked out for.
#include <dxflib/dl_dxf.h>

#include <memory>
#include <string>
#include <vector>

namespace {

struct Point {
    double X = 0, Y = 0;
};

// One drawing file with its header, tables and an open ENTITIES section.
struct Drawing {
    DL_Dxf Format;
    std::unique_ptr<DL_WriterA> Writer;
    DL_Codes::version Version;

    Drawing(const std::string& path, DL_Codes::version version, const std::vector<std::string>& layers)
        : Version(version)
    {
        Writer.reset(Format.out(path.c_str(), version));
        Format.writeHeader(*Writer);
        Writer->sectionEnd();
        Writer->sectionTables();
        Writer->tableLayers(static_cast<int>(layers.size()) + 1);
        Format.writeLayer(*Writer, DL_LayerData("0", 0), DL_Attributes("", 7, 25, "CONTINUOUS", 1));
        for (const std::string& layer : layers)
            Format.writeLayer(*Writer, DL_LayerData(layer, 0), DL_Attributes("", 7, 25, "CONTINUOUS", 1));
        Writer->tableEnd();
        Writer->sectionEnd();
        Writer->sectionEntities();
    }

    ~Drawing()
    {
        Writer->sectionEnd();
        Writer->dxfEOF();
        Writer->close();
    }

    static DL_Attributes On(const std::string& layer, int color = 256)
    {
        return DL_Attributes(layer, color, -1, "BYLAYER", 1);
    }

    void Circle(const std::string& layer, Point at, double radius)
    {
        Format.writeCircle(*Writer, DL_CircleData(at.X, at.Y, 0, radius), On(layer));
    }

    void Bore(const std::string& layer, Point at, int color = 256)
    {
        Format.writePoint(*Writer, DL_PointData(at.X, at.Y, 0), On(layer, color));
    }

    void Line(const std::string& layer, Point from, Point to)
    {
        Format.writeLine(*Writer, DL_LineData(from.X, from.Y, 0, to.X, to.Y, 0), On(layer));
    }

    void Rectangle(const std::string& layer, Point low, double width, double height)
    {
        const std::vector<Point> corners = {
            low, {low.X + width, low.Y}, {low.X + width, low.Y + height}, {low.X, low.Y + height}};
        Format.writePolyline(*Writer, DL_PolylineData(4, 0, 0, 1), On(layer));
        for (const Point& corner : corners)
            Format.writeVertex(*Writer, DL_VertexData(corner.X, corner.Y));
        Format.writePolylineEnd(*Writer);
    }

    void Words(const std::string& layer, Point at, const std::string& words, int color = 256)
    {
        Format.writeText(*Writer,
                         DL_TextData(at.X, at.Y, 0, at.X, at.Y, 0, 8, 1, 0, 0, 0, words, "STANDARD", 0),
                         On(layer, color));
    }
};

// A bottom whose edge views stand around its face; the bores are drawn in the views.
void BottomViews(const std::string& folder)
{
    Drawing drawing(folder + "/bottom_views.dxf", DL_Codes::AC1015,
                    {"BORDER", "HBORE_Z30_S4", "HBORE_Z34_D5_T12", "VBORE_D5_Z12"});
    drawing.Rectangle("BORDER", {100, 100}, 568, 500); // the face
    drawing.Rectangle("BORDER", {100, 640}, 568, 19);  // the edge above it
    drawing.Rectangle("BORDER", {100, 41}, 568, 19);   // below
    drawing.Rectangle("BORDER", {41, 100}, 19, 500);   // left
    drawing.Rectangle("BORDER", {708, 100}, 19, 500);  // right
    for (const double y : {450.0, 250.0, 50.0})
        drawing.Circle("HBORE_Z30_S4", {717.5, 100 + y}, 4);
    for (const double x : {64.0, 504.0})
        drawing.Circle("HBORE_Z34_D5_T12", {100 + x, 48}, 2.5);
    for (const double y : {50.0, 250.0, 450.0})
        drawing.Circle("HBORE_Z30_S4", {50.5, 100 + y}, 4);
    for (const double x : {64.0, 504.0})
        drawing.Circle("HBORE_Z34_D5_T12", {100 + x, 649.5}, 2.5);
    for (const double x : {64.0, 504.0})
        drawing.Bore("VBORE_D5_Z12", {100 + x, 350});
}

// A drawer front with texts for the shop, literal G-code and post instructions.
void DrawerFront(const std::string& folder)
{
    Drawing drawing(folder + "/drawer_front.dxf", DL_Codes::AC1009,
                    {"BORDER_Z19_UR_OF12", "HOLES5", "FITTINGS", "INSTR", "NAME", "DESCR", "CNCNOT", "GCODE1",
                     "GCODE2", "GCODE3"});
    drawing.Rectangle("BORDER_Z19_UR_OF12", {200, 100}, 597, 176);
    for (const double x : {234.5, 362.5})
        drawing.Circle("HOLES5", {200 + x, 188}, 2.5);
    for (const double x : {32.0, 565.0}) {
        for (const double y : {40.0, 136.0})
            drawing.Bore("FITTINGS", {200 + x, 100 + y}, 3);
    }
    const std::vector<std::string> instructions = {
        "POST INSTRUCTIONS", "LAYER HOLES5=VBORE_D5_Z22",
        "VAR A=600",         "FLAG=3",
        "OFFSET 12,5",       "PTS NAME=DF597",
        "PTS QTY=2",         "PTS MATERIAL=OAK 19",
    };
    double y = 90;
    for (const std::string& line : instructions)
        drawing.Words("INSTR", {200, y -= 10}, line);
    drawing.Words("INSTR", {200, y -= 10}, "COLOR 3=VBORE_D10_Z12_FD2000", 7);
    drawing.Words("NAME", {820, 100}, "DF597");
    drawing.Words("DESCR", {820, 110}, "DRAWER FRONT WALNUT 597X176");
    drawing.Words("CNCNOT", {820, 120}, "CHECK THE GRAIN DIRECTION");
    drawing.Words("CNCNOT", {820, 130}, "HANDLE BORES FROM THE FRONT");
    drawing.Words("GCODE1", {820, 140}, "M77 DUST ON");
    drawing.Words("GCODE2", {820, 150}, "G4F2");
    drawing.Words("GCODE3", {820, 160}, "M78 DUST OFF");
}

// A shelf whose panel is one solid.
void PanelSolid(const std::string& folder)
{
    Drawing drawing(
        folder + "/panel_solid.dxf", DL_Codes::AC1015,
        {"PANEL", "VBORE_Z12P5", "VBORE_D3_Z16_PD4_FD1200_T71", "GROOVE_D4_Z8", "GROOVE_D4_Z8L_T63"});
    // Corners of a solid run in a Z: upper left, upper right, lower left, lower right.
    drawing.Format.writeSolid(*drawing.Writer,
                              DL_SolidData(100, 450, 0, 900, 450, 0, 100, 50, 0, 900, 50, 0, 16),
                              Drawing::On("PANEL"));
    for (const double x : {34.0, 766.0}) {
        for (const double y : {60.0, 340.0})
            drawing.Circle("VBORE_Z12P5", {100 + x, 50 + y}, 7.5);
    }
    for (const double x : {200.0, 400.0, 600.0})
        drawing.Bore("VBORE_D3_Z16_PD4_FD1200_T71", {100 + x, 250});
    drawing.Line("GROOVE_D4_Z8", {900, 440}, {100, 440});
    drawing.Line("GROOVE_D4_Z8L_T63", {110, 50}, {110, 450});
}

} // namespace

int main(int count, char** words)
{
    const std::string folder = count > 1 ? words[1] : "drawings";
    BottomViews(folder);
    DrawerFront(folder);
    PanelSolid(folder);
    return 0;
}
