// Notes and sequences on routes, what cannot be cut, and drawings that no route can come from.
#include <cmath>

#include "drawing/layer_rules.h"
#include "drawing/route_entities.h"
#include "drawing/route_scene.h"

namespace kv {
namespace {

using namespace test;
using Places = std::vector<KindAndPlace>;
using Rows = std::vector<std::string>;

struct RouteNotes : RouteScene {};
struct RouteSequences : RouteScene {};
struct RouteBadInput : RouteScene {};

// Notes

TEST_F(RouteNotes, NoteAtEitherEndOfALineGivesItsCodes)
{
    Read(NotesFollow() + NoteAt(150, 90, "Z7S12") + NoteAt(300, 300, "Z8") +
         Line("ROUTEZ5", 150, 90, 300, 200) + Line("ROUTEZ5", 150, 190, 300, 300) +
         Line("ROUTEZ5", 150, 290, 300, 400));
    ASSERT_EQ(Segments.size(), 6U);
    EXPECT_EQ(Segments[0].Z, 7);
    EXPECT_EQ(Segments[1].Z, 7);
    EXPECT_EQ(Segments[1].Speed, 12000);
    EXPECT_EQ(Segments[2].Z, 8);
    EXPECT_EQ(Segments[2].Speed, 0);
    EXPECT_EQ(Segments[4].Z, 5);
}

TEST_F(RouteNotes, CircleTakesTheNoteThatIsInForceWhereverItLies)
{
    // Its radius stands for a width that differs from the end width, so no note is looked for at it.
    Read(NotesFollow() + NoteAt(150, 90, "S12") + NoteAt(300, 300, "S15") +
         Line("ROUTEZ5", 150, 90, 300, 200) + Circle("ROUTEZ5", 300, 300, 40));
    ASSERT_EQ(Circles.size(), 1U);
    EXPECT_EQ(Circles[0].Speed, 12000);
}

TEST_F(RouteNotes, ArcTakesTheNoteThatIsInForceToo)
{
    Read(NotesFollow() + NoteAt(150, 90, "S12") + Line("ROUTEZ5", 150, 90, 300, 200) +
         Arc("ROUTEZ5", 400, 300, 40, 0, 90));
    ASSERT_EQ(Segments.size(), 5U);
    EXPECT_EQ(Segments[2].Kind, -3);
    EXPECT_EQ(Segments[2].Speed, 12000);
    EXPECT_EQ(Segments[3].Speed, 12000);
}

TEST_F(RouteNotes, LineWithoutNoteEndsTheOneInForce)
{
    Read(NotesFollow() + NoteAt(150, 90, "S12") + Line("ROUTEZ5", 150, 90, 300, 200) +
         Line("ROUTEZ5", 400, 90, 500, 90) + Circle("ROUTEZ5", 300, 300, 40));
    ASSERT_EQ(Circles.size(), 1U);
    EXPECT_EQ(Circles[0].Speed, 0);
}

TEST_F(RouteNotes, LineOfALongerLayerNameBringsItsNoteIntoThePass)
{
    Read(NotesFollow() + NoteAt(150, 90, "S12") + Line("ROUTEZ9", 400, 90, 500, 90) +
         Circle("ROUTEZ1", 300, 300, 40) + Line("ROUTEZ18", 150, 90, 300, 200) +
         Circle("ROUTEZ1", 400, 300, 40));
    ASSERT_EQ(Circles.size(), 2U);
    EXPECT_EQ(Circles[0].Speed, 0);
    EXPECT_EQ(Circles[1].Speed, 12000);
}

TEST_F(RouteNotes, LineOfAnotherLayerLeavesTheNoteInForce)
{
    Read(NotesFollow() + NoteAt(150, 90, "S12") + Line("ROUTEZ5", 150, 90, 300, 200) +
         Line("ROUTEZ7", 400, 90, 500, 90) + Circle("ROUTEZ5", 300, 300, 40));
    ASSERT_EQ(Circles.size(), 1U);
    EXPECT_EQ(Circles[0].Speed, 12000);
}

TEST_F(RouteNotes, NoteStaysInForceInTheNextPass)
{
    Read(NotesFollow() + NoteAt(150, 90, "S12") + Circle("ROUTEZ7", 300, 300, 40) +
         Line("ROUTEZ5", 150, 90, 300, 200) + Circle("ROUTEZ5", 400, 300, 40) +
         Circle("ROUTEZ6", 500, 300, 40));
    ASSERT_EQ(Circles.size(), 3U); // passes Z7, Z5, Z6
    EXPECT_EQ(Circles[0].Speed, 0);
    EXPECT_EQ(Circles[1].Speed, 12000);
    EXPECT_EQ(Circles[2].Speed, 12000);
}

TEST_F(RouteNotes, NotePinnedToACoordinateOfTheDrawingIsFoundWithinAHundredth)
{
    Read(NotesFollow() + NoteAt(150.009, 90, "Z7") + NoteAt(150.02, 190, "Z8") +
         Line("ROUTEZ5", 150, 90, 300, 200) + Line("ROUTEZ5", 150, 190, 300, 300));
    ASSERT_EQ(Segments.size(), 4U);
    EXPECT_EQ(Segments[0].Z, 7);
    EXPECT_EQ(Segments[2].Z, 5);
}

TEST_F(RouteNotes, OperationStringStandsInForItsNumber)
{
    Read(Instructions({"OP 4=Z9S15"}) + NoteAt(150, 90, "4") + Line("ROUTEZ5", 150, 90, 300, 200));
    ASSERT_EQ(Segments.size(), 2U);
    EXPECT_EQ(Segments[0].Z, 9);
    EXPECT_EQ(Segments[0].Speed, 15000);
    EXPECT_EQ(Segments[0].Sequence, 0);
}

// Sequences

TEST_F(RouteSequences, NumberOfTheNameIsTheSequence)
{
    Read(Line("ROUTE5Z18D10", 150, 90, 300, 200));
    ASSERT_EQ(Segments.size(), 2U);
    EXPECT_EQ(Segments[0].Sequence, 60); // 10 x 5 + 10
    EXPECT_EQ(Segments[1].Sequence, 60);
    EXPECT_EQ(Seen.MaxSequence, 60);
    EXPECT_EQ(Seen.MinSequence, 0);
}

TEST_F(RouteSequences, NameWithoutNumberHasNone)
{
    Read(Line("ROUTEZ18", 150, 90, 300, 200));
    ASSERT_EQ(Segments.size(), 2U);
    EXPECT_EQ(Segments[0].Sequence, 0);
    EXPECT_EQ(Seen.MaxSequence, 0);
}

TEST_F(RouteSequences, NumberOfANoteReplacesTheNames)
{
    Read(NotesFollow() + NoteAt(150, 90, "3") + NoteAt(150, 190, "-7") +
         Line("ROUTE5Z18", 150, 90, 300, 200) + Line("ROUTE5Z18", 150, 190, 300, 300));
    ASSERT_EQ(Segments.size(), 4U);
    EXPECT_EQ(Segments[0].Sequence, 3);
    EXPECT_EQ(Segments[2].Sequence, -7);
    EXPECT_EQ(Seen.MaxSequence, 3);
    EXPECT_EQ(Seen.MinSequence, -7);
}

TEST_F(RouteSequences, HighestIsThatOfAllLayers)
{
    Read(Line("ROUTE19Z5", 150, 190, 300, 300) + Line("ROUTE1", 150, 90, 300, 200));
    ASSERT_EQ(Segments.size(), 4U);
    EXPECT_EQ(Segments[0].Sequence, 200);
    EXPECT_EQ(Segments[2].Sequence, 20);
    EXPECT_EQ(Seen.MaxSequence, 200);
}

TEST_F(RouteSequences, CircleHasItsSequenceButDoesNotRaiseTheHighest)
{
    Read(Circle("ROUTE5Z18", 300, 200, 40));
    ASSERT_EQ(Circles.size(), 1U);
    EXPECT_EQ(Circles[0].Sequence, 60);
    EXPECT_EQ(Seen.MaxSequence, 0);
}

// What cannot be cut

TEST_F(RouteBadInput, LinesWithoutLengthAreToldOnceForTheirLayer)
{
    Read(Line("ROUTEZ5", 150, 90, 150, 90) + Line("ROUTEZ5", 150, 90, 300, 200) +
         Line("ROUTEZ5", 150, 190, 150, 190) + Line("ROUTEZ6", 300, 90, 300, 90));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-1, 150, 90, 5}, {1, 300, 200, 5}}));
    EXPECT_EQ(Uncut(), (Rows{"Layer ROUTEZ5: 2 lines of length 0 cannot be cut",
                             "Layer ROUTEZ6: 1 line of length 0 cannot be cut"}));
}

TEST_F(RouteBadInput, LineThatOnlyGoesDownIsAMove)
{
    Read(Line("ROUTE", 150, 90, 150, 90, Pair(30, -3) + Pair(31, -9)));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-1, 150, 90, 3}, {1, 150, 90, 9}}));
    EXPECT_TRUE(Uncut().empty());
}

TEST_F(RouteBadInput, ArcsAndCirclesWithoutRadiusAreLeftOut)
{
    Read(Arc("ROUTEZ5", 300, 200, 0, 0, 90) + Arc("ROUTEZ5", 300, 200, -4, 0, 90) +
         Arc("ROUTEZ5", 300, 200, 0, 0, 360) + Circle("ROUTEZ5", 300, 200, 0) +
         Circle("ROUTEZ5", 300, 200, -3));
    EXPECT_TRUE(Segments.empty());
    EXPECT_TRUE(Circles.empty());
    EXPECT_EQ(Uncut(), (Rows{"Layer ROUTEZ5: 3 arcs of length 0 cannot be cut",
                             "Layer ROUTEZ5: 2 circles without a radius cannot be cut"}));
}

TEST_F(RouteBadInput, RadiusBelowTheResolutionOfASingleIsNone)
{
    Read(Arc("ROUTEZ5", 300, 200, 1e-7, 0, 0) + Circle("ROUTEZ5", 300, 200, 1e-7));
    EXPECT_TRUE(Segments.empty());
    EXPECT_TRUE(Circles.empty());
    EXPECT_EQ(Uncut().size(), 2U);
}

TEST_F(RouteBadInput, TinyArcWhoseEndsCoincideIsNotCutAsAFullCircle)
{
    // 1e-6 degrees at radius 50 are 9e-7, 1e-5 degrees 9e-6: below what a Single resolves at 200.
    Read(Arc("ROUTEZ5", 300, 200, 50, 0, 1e-6) + Arc("ROUTEZ5", 300, 200, 50, 90, 89.99999));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-3, 300, 250, 5}, {3, 300, 250, 5}, {0, 0, 0, 0}}))
        << "the second one is all but a full circle";
    EXPECT_EQ(Uncut(), (Rows{"Layer ROUTEZ5: 1 arc of length 0 cannot be cut"}));
}

TEST_F(RouteBadInput, KindsThatNoRouteComesFromAreToldByLayer)
{
    const auto entity = [](const std::string& kind, const std::string& layer) {
        return Pair(0, kind) + Pair(8, layer) + Pair(10, 100.0) + Pair(20, 100.0);
    };
    Read(entity("SPLINE", "ROUTEZ5") + entity("ELLIPSE", "ROUTEZ5") + entity("SPLINE", "ROUTEZ5") +
         entity("SPLINE", "OTHER") + entity("SPLINE", "ROUTEZ6") + TextAt("ROUTEZ5", 50, 50, "NOTE") +
         Line("ROUTEZ5", 150, 90, 300, 200));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-1, 150, 90, 5}, {1, 300, 200, 5}}));
    EXPECT_EQ(Uncut(), (Rows{"Layer ROUTEZ5: 1 entity of kind ELLIPSE cannot be cut",
                             "Layer ROUTEZ5: 2 entities of kind SPLINE cannot be cut",
                             "Layer ROUTEZ6: 1 entity of kind SPLINE cannot be cut"}));
}

TEST_F(RouteBadInput, KindsThatAreNoIslandOfAPocketOfAnyShapeAreToldWithTheirPlace)
{
    const auto entity = [](const std::string& kind, const std::string& layer, double x) {
        return Pair(0, kind) + Pair(8, layer) + Pair(10, x) + Pair(20, 90.5);
    };
    const std::string entities = entity("ELLIPSE", "EXCAVZ5K3", 120) + entity("ELLIPSE", "EXCAVZ5K3", 160) +
                                 entity("SPLINE", "ROUTEZ5", 100);
    Config.Pockets = "any";
    Read(entities);
    EXPECT_EQ(Uncut(),
              (Rows{"Layer EXCAVZ5K3: 2 entities of kind ELLIPSE cannot be cut, no island is left at "
                    "X120 Y90.5",
                    "Layer ROUTEZ5: 1 entity of kind SPLINE cannot be cut"}));
    Config.Pockets = "told";
    Read(entities);
    EXPECT_EQ(Uncut(), (Rows{"Layer EXCAVZ5K3: 2 entities of kind ELLIPSE cannot be cut",
                             "Layer ROUTEZ5: 1 entity of kind SPLINE cannot be cut"}));
}

TEST_F(RouteBadInput, EntitiesInThePlaneOfAnEdgeAreTold)
{
    const std::string toTheBack = Pair(210, 0.0) + Pair(220, 1.0) + Pair(230, 0.0);
    Read(Line("ROUTEZ5", 150, 5, 300, 5, toTheBack) + Circle("ROUTEZ5", 150, 5, 4, toTheBack));
    EXPECT_EQ(Uncut(), (Rows{"Layer ROUTEZ5: 2 entities drawn in the plane of an edge cannot be cut"}));
}

TEST_F(RouteBadInput, ValuesThatAreNoNumbersReadAsZero)
{
    Read(Line("ROUTEZ5", 150, 90, 300, 200, Pair(30, "NAN") + Pair(39, "INF")));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-1, 150, 90, 5}, {1, 300, 200, 5}}));
}

TEST_F(RouteBadInput, ScaleThatMakesACoordinateTooLargeNamesTheLayer)
{
    EXPECT_EQ(CauseOf(Instructions({"SCALE=3"}) + Line("ROUTEZ5", 150, 90, 3e38, 200)),
              "Coordinate out of range on layer ROUTEZ5");
    EXPECT_EQ(CauseOf(Instructions({"SCALE=3"}) + Circle("ROUTEZ5", 150, 90, 3e38)),
              "Coordinate out of range on layer ROUTEZ5");
    EXPECT_EQ(CauseOf(Instructions({"SCALE=3"}) + Polyline("ROUTEZ5", {{150, 90}, {-3e38, 90}})),
              "Coordinate out of range on layer ROUTEZ5");
}

TEST_F(RouteBadInput, ArcWhoseEndLiesBeyondASingleNamesTheLayer)
{
    EXPECT_EQ(CauseOf(Arc("ROUTEZ5", 3e38, 200, 2e38, 0, 90)), "Coordinate out of range on layer ROUTEZ5");
}

TEST_F(RouteBadInput, CircleWhoseTopLiesBeyondASingleNamesTheLayer)
{
    EXPECT_EQ(CauseOf(Circle("ROUTEZ5", 0, 3e38, 2e38)), "Coordinate out of range on layer ROUTEZ5");
}

TEST_F(RouteBadInput, HugeNumberInALayerNameNamesTheLayer)
{
    const std::string cause = CauseOf(Line("ROUTEZ" + std::string(60, '9'), 150, 90, 300, 200));
    EXPECT_NE(cause.find("on layer ROUTEZ999"), std::string::npos) << cause;
}

// Straight onto the arrays: one more line than the records have room for.
class RouteLimit : public testing::Test {
  protected:
    RunBlock& Run = kv::Run;
    Scene Place;

    void AddLines(const std::string& layer, int count)
    {
        for (int i = 0; i < count; ++i) {
            DxfEntity& line = Entities.Append({});
            line.Kind = "LINE";
            line.Layer = layer;
            line.X1 = static_cast<Single>(i);
            line.X2 = line.X1 + 1;
        }
    }

    std::string CauseOfPasses()
    {
        try {
            ReadRoutePasses();
        } catch (const RunError& error) {
            return error.Cause;
        }
        return "";
    }
};

TEST_F(RouteLimit, OneSegmentMoreThan32767NamesTheLayer)
{
    Entities.Clear();
    AddLines("ROUTEZ5", 16383);
    ResetRun();
    Run.LayerTable.insert(Run.LayerTable.end(), {"ROUTEZ5", "ROUTEZ6"});
    EXPECT_EQ(CauseOfPasses(), "");
    EXPECT_EQ(RouteSegments.Last(), 32766);
    AddLines("ROUTEZ6", 1);
    ResetRun();
    Run.LayerTable.insert(Run.LayerTable.end(), {"ROUTEZ5", "ROUTEZ6"});
    EXPECT_EQ(CauseOfPasses(), "More than 32767 route segments, layer ROUTEZ6");
    ResetRun();
    EXPECT_EQ(Run.RoutePass, 0);
}

} // namespace
} // namespace kv
