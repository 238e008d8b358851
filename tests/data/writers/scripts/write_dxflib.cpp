// By dxflib: blocks, a mirrored hinge, bores as two arcs each, the contour as a polyline with bulges.
#include <dxflib/dl_dxf.h>

#include <cmath>

namespace {

struct Ring {
    const char* Layer;
    double X, Y, R;
};

void Arcs(DL_Dxf& dxf, DL_WriterA& out, const Ring& ring)
{
    const DL_Attributes attributes(ring.Layer, 256, -1, "BYLAYER", 1.0);
    dxf.writeArc(out, DL_ArcData(ring.X, ring.Y, 0, ring.R, 0, 180), attributes);
    dxf.writeArc(out, DL_ArcData(ring.X, ring.Y, 0, ring.R, 180, 360), attributes);
}

} // namespace

int main(int, char** argv)
{
    DL_Dxf dxf;
    DL_WriterA* const out = dxf.out(argv[1], DL_VERSION_2000);
    dxf.writeHeader(*out);
    out->sectionEnd();
    out->sectionTables();
    dxf.writeVPort(*out);
    out->tableLinetypes(1);
    dxf.writeLinetype(*out, DL_LinetypeData("CONTINUOUS", "Solid", 0, 0, 0));
    out->tableEnd();
    const char* const layers[] = {"0", "BORDER_Z18", "GROOVED4Z8", "ROUTE1_Z5_T71", "EXCAV_K8_Z6_D12_T30",
                                  "VBORE_Z13", "VBORE_Z10", "VBORE_Z12"};
    out->tableLayers(8);
    for (const char* const layer : layers)
        dxf.writeLayer(*out, DL_LayerData(layer, 0), DL_Attributes("", 7, 100, "CONTINUOUS", 1.0));
    out->tableEnd();
    dxf.writeStyle(*out, DL_StyleData("Standard", 0, 2.5, 1, 0, 0, 2.5, "txt", ""));
    dxf.writeView(*out);
    dxf.writeUcs(*out);
    out->tableAppid(1);
    dxf.writeAppid(*out, "ACAD");
    out->tableEnd();
    dxf.writeDimStyle(*out, 1, 1, 1, 1, 1);
    dxf.writeBlockRecord(*out);
    dxf.writeBlockRecord(*out, "HINGE");
    out->tableEnd();
    out->sectionEnd();
    out->sectionBlocks();
    for (const char* const name : {"*Model_Space", "*Paper_Space", "*Paper_Space0"}) {
        dxf.writeBlock(*out, DL_BlockData(name, 0, 0, 0, 0));
        dxf.writeEndBlock(*out, name);
    }
    dxf.writeBlock(*out, DL_BlockData("HINGE", 0, 0, 0, 0));
    Arcs(dxf, *out, {"VBORE_Z13", 0, 0, 17.5});
    Arcs(dxf, *out, {"VBORE_Z10", 9.5, 22.5, 4});
    Arcs(dxf, *out, {"VBORE_Z10", 9.5, -22.5, 4});
    dxf.writeEndBlock(*out, "HINGE");
    out->sectionEnd();
    out->sectionEntities();
    const DL_Attributes plain("0", 256, -1, "BYLAYER", 1.0);
    dxf.writeInsert(*out, DL_InsertData("HINGE", 25, 120, 0, 1, 1, 1, 0, 1, 1, 0, 0), plain);
    dxf.writeInsert(*out, DL_InsertData("HINGE", 575, 280, 0, -1, 1, 1, 0, 1, 1, 0, 0), plain);
    const double bores[6][2] = {{50, 50}, {50, 350}, {550, 50}, {550, 350}, {300, 50}, {300, 350}};
    for (const auto& at : bores)
        Arcs(dxf, *out, {"VBORE_Z12", at[0], at[1], 2.5});
    const double corner[5][2] = {{0, 0}, {600, 0}, {600, 400}, {0, 400}, {0, 0}};
    for (int i = 0; i < 4; ++i)
        dxf.writeLine(*out, DL_LineData(corner[i][0], corner[i][1], 0, corner[i + 1][0], corner[i + 1][1], 0),
                      DL_Attributes("BORDER_Z18", 256, -1, "BYLAYER", 1.0));
    dxf.writeLine(*out, DL_LineData(100, 380, 0, 500, 380, 0), DL_Attributes("GROOVED4Z8", 256, -1, "BYLAYER", 1.0));
    dxf.writeCircle(*out, DL_CircleData(450, 120, 0, 30), DL_Attributes("EXCAV_K8_Z6_D12_T30", 256, -1, "BYLAYER", 1.0));
    const double b = std::tan(std::acos(-1.0) / 8);
    const double slot[8][3] = {{220, 180, 0}, {380, 180, b}, {400, 200, 0}, {400, 240, b},
                               {380, 260, 0}, {220, 260, b}, {200, 240, 0}, {200, 200, b}};
    dxf.writePolyline(*out, DL_PolylineData(8, 0, 0, 1), DL_Attributes("ROUTE1_Z5_T71", 256, -1, "BYLAYER", 1.0));
    for (const auto& v : slot)
        dxf.writeVertex(*out, DL_VertexData(v[0], v[1], 0, v[2]));
    dxf.writePolylineEnd(*out);
    out->sectionEnd();
    dxf.writeObjects(*out);
    dxf.writeObjectsEnd(*out);
    out->dxfEOF();
    out->close();
    delete out;
}
