// Polylines on route layers, open and closed, bulged and tapered.
#include "drawing/route_polylines.h"

#include "drawing/route_entities.h"
#include "drawing/route_scene.h"

namespace kv {
namespace {

using namespace test;
using Places = std::vector<KindAndPlace>;
using Rows = std::vector<std::string>;

struct RoutePolylines : RouteScene {};
struct TaperedPolylines : RouteScene {};

const std::string Closed = Pair(70, "1");

std::string Widths(double start, double end)
{
    return Pair(40, start) + Pair(41, end);
}

std::string VertexOf(const std::string& layer, double x, double y, const std::string& more)
{
    return Pair(0, "VERTEX") + Pair(8, layer) + Pair(10, x) + Pair(20, y) + more;
}

TEST_F(RoutePolylines, OpenPolylineHasARecordForEachVertex)
{
    Read(Polyline("ROUTEZ5D10T3R", {{150, 90}, {300, 90}, {300, 200}}));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 150, 90, 5}, {5, 300, 90, 5}, {5, 300, 200, 5}}));
    for (const RouteSegment& record : Segments) {
        EXPECT_EQ(record.Pass, 1);
        EXPECT_EQ(record.Diameter, 10);
        EXPECT_EQ(record.ToolNo, 3);
        EXPECT_EQ(record.Tool, "03");
        EXPECT_EQ(record.Comp, "G42");
        EXPECT_EQ(record.Group, 1);
        EXPECT_EQ(record.Aux1, 0);
        EXPECT_EQ(record.Aux2, 0);
    }
}

TEST_F(RoutePolylines, ClosedPolylineHasOneRecordMoreThanVertices)
{
    Read(Polyline("ROUTEZ5", {{150, 90}, {300, 90}, {300, 200}}, Closed));
    EXPECT_EQ(KindsAndPlaces(Segments),
              (Places{{-5, 150, 90, 5}, {5, 300, 90, 5}, {5, 300, 200, 5}, {5, 150, 90, 5}}));
}

TEST_F(RoutePolylines, ClosingRecordHasAllElseOfTheLastVertex)
{
    Read(NotesFollow() + NoteAt(300, 200, "S12") +
         Polyline("ROUTE1Z5D10T3S18F6000A1B2G2M7L4FD2000FR9000LD5RO2RI3OZ1ES4",
                  {{150, 90, .5}, {300, 90}, {300, 200}}, Closed));
    ASSERT_EQ(Segments.size(), 4U);
    const RouteSegment& got = Segments[3];
    EXPECT_EQ(got.Pass, 1);
    EXPECT_EQ(got.X, 150); // of the first vertex
    EXPECT_EQ(got.Y, 90);
    EXPECT_EQ(got.Aux1, -1);
    EXPECT_EQ(got.Aux2, .5F);
    EXPECT_EQ(got.Z, 5);
    EXPECT_EQ(got.Kind, 5);
    EXPECT_EQ(got.Comp, "G41 R4");
    EXPECT_EQ(got.Dir, 0);
    EXPECT_EQ(got.Speed, 12000); // of the last vertex alone
    const RouteSegment& last = Segments[2];
    EXPECT_EQ(got.Speed, last.Speed);
    EXPECT_NE(got.Speed, Segments[0].Speed);
    EXPECT_EQ(got.Diameter, last.Diameter);
    EXPECT_EQ(got.Group, last.Group);
    EXPECT_EQ(got.ToolNo, 3);
    EXPECT_EQ(got.Tool, "03");
    EXPECT_EQ(got.Feed, last.Feed);
    EXPECT_EQ(got.FeedDown, last.FeedDown);
    EXPECT_EQ(got.FeedRapid, last.FeedRapid);
    EXPECT_EQ(got.LeadIn, last.LeadIn);
    EXPECT_EQ(got.RampOut, last.RampOut);
    EXPECT_EQ(got.RampIn, last.RampIn);
    EXPECT_EQ(got.Sequence, last.Sequence);
    EXPECT_EQ(got.OscZ, last.OscZ);
    EXPECT_EQ(got.MCode, last.MCode);
    EXPECT_EQ(got.ExtraSlot, last.ExtraSlot);
    EXPECT_EQ(got.ParamA, last.ParamA);
    EXPECT_EQ(got.ParamB, last.ParamB);
}

TEST_F(RoutePolylines, ClosedFlagIsTheLowestBit)
{
    Read(Polyline("ROUTEZ5", {{150, 90}, {300, 90}}, Pair(70, "129")) +
         Polyline("ROUTEZ5", {{150, 190}, {300, 190}}, Pair(70, "2")));
    ASSERT_EQ(Segments.size(), 5U);
    EXPECT_EQ(Segments[2].Y, 90);
}

TEST_F(RoutePolylines, LightweightPolylineIsTheSame)
{
    Read(Lwpolyline("ROUTEZ5", {{150, 90, .5}, {300, 90}, {300, 200}}, Closed));
    EXPECT_EQ(KindsAndPlaces(Segments),
              (Places{{-5, 150, 90, 5}, {5, 300, 90, 5}, {5, 300, 200, 5}, {5, 150, 90, 5}}));
    EXPECT_EQ(Segments[0].Aux1, -1);
    EXPECT_EQ(Segments[0].Aux2, .5F);
}

TEST_F(RoutePolylines, BulgedVertexTakesTheFeedOnArcs)
{
    Read(Polyline("ROUTEZ5F6000FA3000", {{150, 90}, {300, 90, -.25}, {300, 200}}));
    ASSERT_EQ(Segments.size(), 3U);
    EXPECT_EQ(Segments[0].Feed, 6000);
    EXPECT_EQ(Segments[1].Feed, 3000);
    EXPECT_EQ(Segments[1].Aux1, -1);
    EXPECT_EQ(Segments[1].Aux2, -.25F);
    EXPECT_EQ(Segments[2].Feed, 6000);
}

// Depths

TEST_F(RoutePolylines, HeaderThicknessIsTheDepthWithoutCode)
{
    Read(Polyline("ROUTE", {{150, 90, 0, 0, 0, -3}, {300, 90}}, Closed + Pair(39, -4)));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 150, 90, 4}, {5, 300, 90, 4}, {5, 150, 90, 4}}));
}

TEST_F(RoutePolylines, HeightOfAVertexIsItsDepthWithItsSign)
{
    Read(Polyline("ROUTE", {{150, 90, 0, 0, 0, -3}, {300, 90, 0, 0, 0, 4}, {300, 200, 0, 0, 0, -6}}));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 150, 90, -3}, {5, 300, 90, 4}, {5, 300, 200, -6}}));
}

TEST_F(RoutePolylines, ClosingRecordHasTheDepthOfTheLastVertex)
{
    Read(Polyline("ROUTE", {{150, 90, 0, 0, 0, -3}, {300, 90}, {300, 200, 0, 0, 0, -6}}, Closed));
    EXPECT_EQ(KindsAndPlaces(Segments),
              (Places{{-5, 150, 90, -3}, {5, 300, 90, 0}, {5, 300, 200, -6}, {5, 150, 90, -6}}));
}

TEST_F(RoutePolylines, WrittenDepthOfZeroTakesNoHeight)
{
    Read(Polyline("ROUTEZ0", {{150, 90, 0, 0, 0, -3}, {300, 90, 0, 0, 0, -3}}));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 150, 90, 0}, {5, 300, 90, 0}}));
}

// Decoding takes elevation and thickness from the vertices of layers that begin with "RO" only.
TEST_F(RoutePolylines, ElevationOfAVertexWinsOverItsHeight)
{
    const std::string layer = "MYROUTE";
    Read(Pair(0, "POLYLINE") + Pair(8, layer) + VertexOf(layer, 150, 90, Pair(38, -5) + Pair(30, -3)) +
         VertexOf(layer, 300, 90, Pair(30, -3)) + Pair(0, "SEQEND"));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 150, 90, 5}, {5, 300, 90, -3}}));
}

// Diameters

TEST_F(RoutePolylines, HeaderWidthIsTheDiameterWithoutCode)
{
    Read(Polyline("ROUTEZ5", {{150, 90}, {300, 90}}, Widths(8, 8)));
    ASSERT_EQ(Segments.size(), 2U);
    EXPECT_EQ(Segments[0].Kind, -5);
    EXPECT_EQ(Segments[0].Diameter, 8);
    EXPECT_EQ(Segments[1].Diameter, 8);
}

TEST_F(RoutePolylines, CodedDiameterWinsOverTheWidth)
{
    Read(Polyline("ROUTEZ5D12", {{150, 90}, {300, 90}}, Widths(8, 8)));
    ASSERT_EQ(Segments.size(), 2U);
    EXPECT_EQ(Segments[1].Diameter, 12);
}

TEST_F(RoutePolylines, ThicknessOfTheFirstVertexWinsOverTheHeadersWidth)
{
    const std::string layer = "MYROUTEZ5";
    Read(Pair(0, "POLYLINE") + Pair(8, layer) + Widths(8, 8) + VertexOf(layer, 150, 90, Pair(39, 6)) +
         VertexOf(layer, 300, 90, Pair(39, 7)) + Pair(0, "SEQEND"));
    ASSERT_EQ(Segments.size(), 2U);
    EXPECT_EQ(Segments[0].Diameter, 6);
    EXPECT_EQ(Segments[1].Diameter, 6);
}

TEST_F(RoutePolylines, NegativeWidthIsNoDiameter)
{
    Read(Polyline("ROUTEZ5", {{150, 90}, {300, 90}}, Widths(-8, -8)));
    ASSERT_EQ(Segments.size(), 2U);
    EXPECT_EQ(Segments[0].Diameter, 0);
}

TEST_F(RoutePolylines, WidthsOfOnePolylineAreNotTheNextOnes)
{
    Read(Polyline("ROUTE", {{150, 90}, {300, 90}}, Widths(8, 8) + Pair(39, 4) + Closed) +
         Polyline("ROUTE", {{150, 190}, {300, 190}}));
    ASSERT_EQ(Segments.size(), 5U);
    EXPECT_EQ(Segments[3].Kind, -5);
    EXPECT_EQ(Segments[3].Diameter, 0);
    EXPECT_EQ(Segments[3].Z, 0);
}

// What is read once, and what at each vertex

TEST_F(RoutePolylines, FirstVertexDecidesToolDepthAndCompensation)
{
    Read(NotesFollow() + NoteAt(150, 90, "T4Z7L2D9") + NoteAt(300, 90, "T9Z3RS12D6") +
         Polyline("ROUTEZ5", {{150, 90}, {300, 90}, {300, 200}}));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 150, 90, 7}, {5, 300, 90, 7}, {5, 300, 200, 7}}));
    for (const RouteSegment& record : Segments) {
        EXPECT_EQ(record.ToolNo, 4);
        EXPECT_EQ(record.Comp, "G41 R2");
    }
    EXPECT_EQ(Segments[0].Tool, "04");
    EXPECT_EQ(Segments[2].Tool, "04");
    EXPECT_EQ(Segments[0].Diameter, 9);
    EXPECT_EQ(Segments[1].Diameter, 6); // read at each vertex
    EXPECT_EQ(Segments[2].Diameter, 0);
    EXPECT_EQ(Segments[0].Speed, 0);
    EXPECT_EQ(Segments[1].Speed, 12000);
    EXPECT_EQ(Segments[2].Speed, 0);
}

TEST_F(RoutePolylines, SequenceOfAVertexHoldsFromThereOn)
{
    Read(NotesFollow() + NoteAt(300, 90, "12") + Polyline("ROUTEZ5", {{150, 90}, {300, 90}, {300, 200}}));
    ASSERT_EQ(Segments.size(), 3U);
    EXPECT_EQ(Segments[0].Sequence, 0);
    EXPECT_EQ(Segments[1].Sequence, 12);
    EXPECT_EQ(Segments[2].Sequence, 12);
    EXPECT_EQ(Seen.MaxSequence, 12);
}

TEST_F(RoutePolylines, SequenceOfTheNameReturnsBehindANote)
{
    Read(NotesFollow() + NoteAt(300, 90, "12") + Polyline("ROUTE5Z5", {{150, 90}, {300, 90}, {300, 200}}));
    ASSERT_EQ(Segments.size(), 3U);
    EXPECT_EQ(Segments[0].Sequence, 60);
    EXPECT_EQ(Segments[1].Sequence, 12);
    EXPECT_EQ(Segments[2].Sequence, 60);
}

TEST_F(RoutePolylines, HeaderLooksForNoNote)
{
    Read(NotesFollow() + NoteAt(500, 300, "12") +
         Polyline("ROUTEZ5", {{150, 90}, {300, 90}}, Pair(10, 500) + Pair(20, 300)));
    ASSERT_EQ(Segments.size(), 2U);
    EXPECT_EQ(Segments[0].Sequence, 0);
    EXPECT_EQ(Seen.MaxSequence, 0);
}

// Tapered

TEST_F(TaperedPolylines, DifferentWidthsOfTheHeaderTaperThePolyline)
{
    Read(Polyline("ROUTEZ5B3", {{150, 90, .5, 0, 0, -3}, {300, 90, .25}}, Widths(6, 2)));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-4, 150, 90, 5}, {5, 300, 90, 5}}));
    EXPECT_EQ(Segments[0].Aux1, 6);
    EXPECT_EQ(Segments[0].Aux2, 2);
    EXPECT_EQ(Segments[0].ParamA, -3);
    EXPECT_EQ(Segments[0].ParamB, 3);
    EXPECT_EQ(Segments[0].Diameter, 6);
    EXPECT_EQ(Segments[1].Aux1, -1);
    EXPECT_EQ(Segments[1].Aux2, .25F);
    EXPECT_EQ(Segments[1].ParamA, 0);
    EXPECT_EQ(Segments[1].ParamB, 3);
}

TEST_F(TaperedPolylines, OfMoreThanTwoVerticesIsAPlainPolyline)
{
    Read(Polyline("ROUTEZ5B3", {{150, 90, .5, 0, 0, -3}, {300, 90, .25}, {300, 190}}, Widths(6, 2)) +
         Polyline("ROUTEZ5", {{150, 250, 0, 7, 1}, {300, 250}, {300, 300}}, Closed));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 150, 90, 5},
                                                {5, 300, 90, 5},
                                                {5, 300, 190, 5},
                                                {-5, 150, 250, 5},
                                                {5, 300, 250, 5},
                                                {5, 300, 300, 5},
                                                {5, 150, 250, 5}}));
    EXPECT_EQ(Segments[0].Aux1, -1);
    EXPECT_EQ(Segments[0].Aux2, .5F); // its bulge
    EXPECT_EQ(Segments[0].ParamA, 0);
    EXPECT_EQ(Segments[0].ParamB, 3);
    EXPECT_EQ(Segments[3].Aux2, 0);
    EXPECT_EQ(Segments[6].Aux2, 0);
}

TEST_F(TaperedPolylines, FirstVertexWithDifferentWidthsBringsItsOwn)
{
    Read(Polyline("ROUTEZ5", {{150, 90, 0, 7, 1}, {300, 90}}, Widths(6, 2)) +
         Polyline("ROUTEZ5", {{150, 190, 0, 9, 3}, {300, 190}}));
    ASSERT_EQ(Segments.size(), 4U);
    EXPECT_EQ(Segments[0].Kind, -4);
    EXPECT_EQ(Segments[0].Aux1, 7);
    EXPECT_EQ(Segments[0].Aux2, 1);
    EXPECT_EQ(Segments[0].Diameter, 6); // of the header
    EXPECT_EQ(Segments[2].Kind, -4);
    EXPECT_EQ(Segments[2].Aux1, 9);
    EXPECT_EQ(Segments[2].Aux2, 3);
}

TEST_F(TaperedPolylines, LaterVertexTapersNothing)
{
    Read(Polyline("ROUTEZ5", {{150, 90}, {300, 90, 0, 7, 1}, {300, 200}}));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 150, 90, 5}, {5, 300, 90, 5}, {5, 300, 200, 5}}));
}

TEST_F(TaperedPolylines, NegativeWidthIsZero)
{
    Read(Polyline("ROUTEZ5", {{150, 90}, {300, 90}}, Widths(-6, 2)) +
         Polyline("ROUTEZ5", {{150, 190, 0, 4, -1}, {300, 190}}));
    ASSERT_EQ(Segments.size(), 4U);
    EXPECT_EQ(Segments[0].Kind, -4);
    EXPECT_EQ(Segments[0].Aux1, 0);
    EXPECT_EQ(Segments[0].Aux2, 2);
    EXPECT_EQ(Segments[2].Aux1, 4);
    EXPECT_EQ(Segments[2].Aux2, 0);
}

TEST_F(TaperedPolylines, DefaultedDepthIsMarkedEvenWhereNothingGivesOne)
{
    Read(Polyline("ROUTEB3", {{150, 90, 0, 0, 0, -3}, {300, 90}}, Widths(6, 2) + Pair(39, 4)) +
         Polyline("ROUTEB3", {{150, 190, 0, 0, 0, -3}, {300, 190}}, Widths(6, 2)));
    ASSERT_EQ(Segments.size(), 4U);
    EXPECT_EQ(Segments[0].Z, 4);
    EXPECT_EQ(Segments[0].ParamA, -3);
    EXPECT_EQ(Segments[0].ParamB, 1);
    EXPECT_EQ(Segments[1].ParamB, 3);
    EXPECT_EQ(Segments[2].Z, -3);
    EXPECT_EQ(Segments[2].ParamB, 1);
}

TEST_F(TaperedPolylines, ClosingRecordRepeatsTheWidths)
{
    Read(Polyline("ROUTEZ5", {{150, 90}, {300, 90}}, Widths(6, 2) + Closed));
    ASSERT_EQ(Segments.size(), 3U);
    EXPECT_EQ(Segments[2].Kind, 5);
    EXPECT_EQ(Segments[2].Aux1, 6);
    EXPECT_EQ(Segments[2].Aux2, 2);
    EXPECT_EQ(Segments[2].ParamA, 0);
}

TEST_F(TaperedPolylines, VerticesOfATaperedPolylineLookForNoNote)
{
    Read(NotesFollow() + NoteAt(150, 90, "S12") + NoteAt(300, 90, "S12") +
         Polyline("ROUTEZ5", {{150, 90}, {300, 90}}, Widths(6, 2)));
    ASSERT_EQ(Segments.size(), 2U);
    EXPECT_EQ(Segments[0].Speed, 0);
    EXPECT_EQ(Segments[1].Speed, 0);
}

TEST_F(TaperedPolylines, LookupThatATaperedFirstVertexLeavesOpenIsMadeAtTheSecond)
{
    Read(NotesFollow() + NoteAt(150, 90, "S11") + NoteAt(300, 90, "S12") + NoteAt(300, 200, "S13") +
         Polyline("ROUTEZ5", {{150, 90, 0, 6, 2}, {300, 90}, {300, 200}}));
    ASSERT_EQ(Segments.size(), 3U);
    EXPECT_EQ(Segments[0].Speed, 0);
    EXPECT_EQ(Segments[1].Speed, 12000);
    EXPECT_EQ(Segments[2].Speed, 12000); // still in force
}

TEST_F(TaperedPolylines, ScaleTapersAnEvenWidth)
{
    // The start width is multiplied by the scale, the end width is not.
    Read(Instructions({"SCALE=2"}) + Polyline("ROUTEZ5", {{100, 50}, {200, 50}}, Widths(4, 4)));
    ASSERT_EQ(Segments.size(), 2U);
    EXPECT_EQ(Segments[0].Kind, -4);
    EXPECT_EQ(Segments[0].Aux1, 8);
    EXPECT_EQ(Segments[0].Aux2, 4);
}

// What belongs to a polyline

TEST_F(RoutePolylines, PolylineInASideViewIsNoRoute)
{
    Read(Polyline("ROUTEZ5", {{150, 90}, {300, 90}}, NormalOf(0, 1, 0)));
    EXPECT_TRUE(Segments.empty());
    EXPECT_EQ(Uncut(), (Rows{"Layer ROUTEZ5: 1 entity drawn in the plane of an edge cannot be cut"}));
}

TEST_F(RoutePolylines, VerticesStandForThemselvesOnlyBehindATakenHeader)
{
    Read(Polyline("ROUTEZ5", {{150, 90}, {300, 90}}) + Polyline("ROUTEZ6", {{150, 190}, {300, 190}}));
    ASSERT_EQ(Segments.size(), 4U);
    EXPECT_EQ(Segments[1].Y, 90);
    EXPECT_EQ(Segments[1].Pass, 1);
    EXPECT_EQ(Segments[2].Y, 190);
    EXPECT_EQ(Segments[2].Pass, 2);
}

TEST_F(RoutePolylines, OtherRecordsBetweenTheVerticesAreSteppedOver)
{
    const std::string layer = "ROUTEZ5";
    Read(Pair(0, "POLYLINE") + Pair(8, layer) + VertexOf(layer, 150, 90, "") + Line(layer, 400, 90, 500, 90) +
         VertexOf(layer, 300, 90, "") + Pair(0, "SEQEND") + Line(layer, 400, 190, 500, 190));
    EXPECT_EQ(KindsAndPlaces(Segments),
              (Places{{-5, 150, 90, 5}, {5, 300, 90, 5}, {-1, 400, 190, 5}, {1, 500, 190, 5}}));
}

TEST_F(RoutePolylines, EndOfTheDrawingEndsAPolylineWithoutClosingIt)
{
    const std::string layer = "ROUTEZ5";
    Read(Pair(0, "POLYLINE") + Pair(8, layer) + Closed + VertexOf(layer, 150, 90, "") +
         VertexOf(layer, 300, 90, "") + Line(layer, 400, 90, 500, 90));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 150, 90, 5}, {5, 300, 90, 5}}));
}

TEST_F(RoutePolylines, ExcavationPolylineIsToldAndStored)
{
    Read(Polyline("EXCAVZ5K3", {{150, 90}, {300, 90}}) + Polyline("EXCAVZ5K3", {{150, 190}, {300, 190}}) +
         Line("EXCAVZ5K3", 150, 290, 300, 290));
    EXPECT_EQ(Count("Explode Polylines for Excavation."), 2);
    ASSERT_EQ(Segments.size(), 6U);
    EXPECT_EQ(Segments[0].Kind, -5);
    EXPECT_EQ(Segments[0].OscZ, -4);
}

TEST_F(RoutePolylines, ExcavationPolylineNeedsNoExplosionWhereAnyShapeIsCleared)
{
    Config.Pockets = "any";
    Read(Polyline("EXCAVZ5K3", {{150, 90}, {300, 90}}));
    EXPECT_EQ(Count("Explode Polylines for Excavation."), 0);
    EXPECT_EQ(Segments.size(), 2U);
}

// Straight onto the arrays: a drawing's reader gives all vertices their header's layer.
TEST_F(RoutePolylines, LayerAndSequenceOfTheHeaderHoldForVerticesOnAnotherLayer)
{
    Entities.Clear();
    const char* const records[][2] = {
        {"POLYLINE", "ROUTE60Z5"}, {"VERTEX", "OTHERZ9"}, {"VERTEX", "OTHERZ9"}, {"SEQEND", "OTHERZ9"}};
    for (const auto& [kind, layer] : records) {
        DxfEntity& entity = Entities.Append({});
        entity.Kind = kind;
        entity.Layer = layer;
        entity.X1 = static_cast<Single>(Entities.Last());
    }
    ResetRun();
    Run.LayerTable.emplace_back("ROUTE60Z5");
    ReadRoutePasses();
    Segments.assign(RouteSegments.begin() + 1, RouteSegments.end());
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 2, 0, 5}, {5, 3, 0, 5}}));
    EXPECT_EQ(Segments[0].Sequence, 60);
    EXPECT_EQ(Segments[1].Sequence, 60);
}

// What cannot be cut

TEST_F(RoutePolylines, PolylineThatStaysAtOnePointIsTold)
{
    Read(Polyline("ROUTEZ5", {{150, 90}}, Closed) + Polyline("ROUTEZ5", {}, Closed) +
         Polyline("ROUTEZ5", {{300, 90}, {300, 90}}) +
         Polyline("ROUTEZ5", {{400, 90}, {400, 90}, {400, 91}}));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-5, 150, 90, 5},
                                                {5, 150, 90, 5},
                                                {-5, 300, 90, 5},
                                                {5, 300, 90, 5},
                                                {-5, 400, 90, 5},
                                                {5, 400, 90, 5},
                                                {5, 400, 91, 5}}))
        << "it is stored as it stands; without vertices nothing closes it";
    EXPECT_EQ(Uncut(), (Rows{"Layer ROUTEZ5: 1 polyline with fewer than 2 different points cannot be cut"}));
    EXPECT_EQ(
        Count("Layer ROUTEZ5: 2 polylines with fewer than 2 different points have no length, the tool only "
              "plunges, the first time at X150 Y90"),
        1);
}

TEST_F(RoutePolylines, OneVertexMoreThan32767SegmentsNamesTheLayer)
{
    std::vector<Vertex> vertices;
    for (int i = 0; i <= MaxIndex; ++i)
        vertices.push_back({100 + i / 100.0, 60.0 + i % 2});
    EXPECT_EQ(CauseOf(Polyline("ROUTEZ5", vertices)), "More than 32767 route segments, layer ROUTEZ5");
}

} // namespace
} // namespace kv
