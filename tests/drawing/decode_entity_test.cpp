// One record into the current entity: scale, views, sequences and notes.
#include "drawing/layer_rules.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "drawing/plain_layer_values.h"
#include "drawing/random_layer_names.h"
#include "state/report.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv {
namespace {

struct DecodedRecord : ::testing::Test {
    DecodedRecord()
    {
        test::ResetProcess();
        ResetRun();
    }
    ~DecodedRecord() override { test::ResetProcess(); }

    static DxfEntity Record(std::string_view kind, std::string_view layer)
    {
        DxfEntity record;
        record.Kind = kind;
        record.Layer = layer;
        return record;
    }
    static void Decode(const DxfEntity& record)
    {
        Entities.Clear();
        Entities.Append(record);
        Long index = 1;
        DecodeEntity(index);
        EXPECT_EQ(index, 2);
    }
    static void AddNote(Single x, Single y, std::string_view text)
    {
        if (kv::Run.NoteText.empty()) {
            kv::Run.NoteX = {0};
            kv::Run.NoteY = {0};
            kv::Run.NoteText = {""};
        }
        kv::Run.NoteX.push_back(x);
        kv::Run.NoteY.push_back(y);
        kv::Run.NoteText.emplace_back(text);
        ++kv::Run.NoteCount;
    }
    static Int SequenceOf(std::string_view layer)
    {
        Decode(Record("LINE", layer));
        return CurrentEntity.Sequence;
    }
};

using Views = DecodedRecord;
using Sequences = DecodedRecord;
using PinnedNotes = DecodedRecord;

TEST_F(DecodedRecord, IsScaledWhereTheScaleCounts)
{
    DxfEntity record = Record("LINE", "ROUTE1");
    record.X1 = 1.5F;
    record.Y1 = -2;
    record.X2 = 3;
    record.Y2 = -4;
    record.Z1 = 5;
    record.Z2 = 6;
    record.Elevation = -7;
    record.Thickness = -8;
    record.Radius = 9;
    record.EndWidth = 10;
    record.Bulge = .5F;
    record.StartAngle = 30;
    record.EndAngle = 60;
    record.Color = 7;
    record.Flags = 1;
    record.TextAlign = 2;
    record.FollowFlag = 1;
    record.ExtrusionZ = -1;
    kv::Run.DrawingScale = 2;
    Decode(record);
    EXPECT_EQ(CurrentEntity.Kind, "LINE");
    EXPECT_EQ(CurrentEntity.Layer, "ROUTE1");
    EXPECT_EQ(CurrentEntity.Text, "");
    EXPECT_EQ(CurrentEntity.X1, 3);
    EXPECT_EQ(CurrentEntity.Y1, -4);
    EXPECT_EQ(CurrentEntity.X2, 6);
    EXPECT_EQ(CurrentEntity.Y2, -8);
    EXPECT_EQ(CurrentEntity.Z1, 5);
    EXPECT_EQ(CurrentEntity.Z2, 6);
    EXPECT_EQ(CurrentEntity.Elevation, -7);
    EXPECT_EQ(CurrentEntity.Thickness, 16);
    EXPECT_EQ(CurrentEntity.SideThickness, 16);
    EXPECT_EQ(CurrentEntity.Radius, 18);
    EXPECT_EQ(CurrentEntity.StartWidth, 18);
    EXPECT_EQ(CurrentEntity.EndWidth, 10); // as stored
    EXPECT_EQ(CurrentEntity.Bulge, .5F);
    EXPECT_EQ(CurrentEntity.StartAngle, 30);
    EXPECT_EQ(CurrentEntity.EndAngle, 60);
    EXPECT_EQ(CurrentEntity.Color, 7);
    EXPECT_EQ(CurrentEntity.Flags, 1);
    EXPECT_EQ(CurrentEntity.TextAlign, 2);
    EXPECT_EQ(CurrentEntity.FollowFlag, 1);
    EXPECT_EQ(CurrentEntity.ExtrusionZ, -1);
    EXPECT_EQ(CurrentEntity.Side, 5);
}

TEST_F(DecodedRecord, CarriesItsText)
{
    EntityTexts = {"", "first", "Second text"};
    DxfEntity record = Record("TEXT", "CNCNOT");
    record.TextIndex = 2;
    Decode(record);
    EXPECT_EQ(CurrentEntity.Text, "Second text");
}

TEST_F(Views, BringEachSideToPanelValues)
{
    const struct {
        const char* Side;
        Single X1, Y1, X2, Y2, Elevation;
        Int Result;
    } rows[] = {
        {"1", 11, 15, 13, 14, 12, 1},      {"2", 11, 15, 13, 14, 12, 2},
        {"3", 15, 11, 13, 14, 12, 3},      {"4", 15, 11, 13, 14, 12, 4},
        {"5", 11, -12, 13, 14, 15, 5},     {"", -11, -12, -13, -14, -17, 5},
        {"6", -11, -12, -13, -14, -17, 5}, {"0", -11, -12, -13, -14, -17, 5},
    };
    for (const auto& row : rows) {
        DxfEntity record = Record("LINE", "VBORE");
        record.X1 = -11;
        record.Y1 = -12;
        record.X2 = -13;
        record.Y2 = -14;
        record.Z1 = -15;
        record.Z2 = -16;
        record.Elevation = -17;
        record.Side = row.Side;
        Decode(record);
        EXPECT_EQ(CurrentEntity.X1, row.X1) << row.Side;
        EXPECT_EQ(CurrentEntity.Y1, row.Y1) << row.Side;
        EXPECT_EQ(CurrentEntity.X2, row.X2) << row.Side;
        EXPECT_EQ(CurrentEntity.Y2, row.Y2) << row.Side;
        EXPECT_EQ(CurrentEntity.Elevation, row.Elevation) << row.Side;
        EXPECT_EQ(CurrentEntity.Side, row.Result) << row.Side;
        EXPECT_EQ(CurrentEntity.Z1, -15);
        EXPECT_EQ(CurrentEntity.Z2, -16);
    }
}

TEST_F(Views, TakeZUnscaled)
{
    DxfEntity record = Record("LINE", "VBORE");
    record.X1 = -11;
    record.Y1 = -12;
    record.Z1 = -15;
    record.Side = "1";
    kv::Run.DrawingScale = 10;
    Decode(record);
    EXPECT_EQ(CurrentEntity.X1, 110);
    EXPECT_EQ(CurrentEntity.Y1, 15);
    EXPECT_EQ(CurrentEntity.Elevation, 120);
}

TEST_F(DecodedRecord, RouteVerticesOfTheFaceHaveNeitherThicknessNorElevation)
{
    DxfEntity record = Record("VERTEX", "ROUTE1");
    record.Thickness = 8;
    record.Elevation = 3;
    Decode(record);
    EXPECT_EQ(CurrentEntity.Thickness, 0);
    EXPECT_EQ(CurrentEntity.Elevation, 0);
    EXPECT_EQ(CurrentEntity.SideThickness, 8);
    record.Side = "5";
    record.Z1 = -4;
    Decode(record);
    EXPECT_EQ(CurrentEntity.Elevation, 0); // not the 4 of the view
    record.Layer = "ROTAR";
    Decode(record);
    EXPECT_EQ(CurrentEntity.Thickness, 0);
}

TEST_F(DecodedRecord, OtherVerticesKeepThicknessAndElevation)
{
    DxfEntity record = Record("VERTEX", "EXCAV1");
    record.Thickness = 8;
    record.Elevation = 3;
    Decode(record);
    EXPECT_EQ(CurrentEntity.Thickness, 8);
    EXPECT_EQ(CurrentEntity.Elevation, 3);
    record.Layer = "ROUTE1";
    record.Side = "2";
    record.Y1 = -9;
    Decode(record);
    EXPECT_EQ(CurrentEntity.Thickness, 8);
    EXPECT_EQ(CurrentEntity.Elevation, 9);
    record.Side = "";
    record.Kind = "POLYLINE";
    Decode(record);
    EXPECT_EQ(CurrentEntity.Thickness, 8);
    EXPECT_EQ(CurrentEntity.Elevation, 3);
}

TEST_F(Sequences, OfARenumberedRoute)
{
    Entities.Clear();
    Entities.Append(Record("LINE", "ROUTE5Z18D10"));
    RewriteLayerCodes();
    ExpandLayerPasses();
    Long index = 1;
    DecodeEntity(index);
    EXPECT_EQ(CurrentEntity.Layer, "ROUTE60Z18D10");
    EXPECT_EQ(CurrentEntity.Sequence, 60);
}

TEST_F(Sequences, NoneWithoutANumber)
{
    EXPECT_EQ(SequenceOf("ROUTEZ18"), 0);
    EXPECT_EQ(SequenceOf("ROUTE"), 0);
    EXPECT_EQ(SequenceOf("ROUTE_"), 0);
}

TEST_F(Sequences, OfTheWordsThatMayHaveOne)
{
    EXPECT_EQ(SequenceOf("ROUTE7Z5"), 7);
    EXPECT_EQ(SequenceOf("VBORE7Z5"), 7);
    EXPECT_EQ(SequenceOf("HBORE7Z5"), 7);
    EXPECT_EQ(SequenceOf("GROOV7Z5"), 7);
    EXPECT_EQ(SequenceOf("DRILL7Z5"), 7);
    EXPECT_EQ(SequenceOf("EXCAV7Z5"), 0);
    EXPECT_EQ(SequenceOf("ROTAR7Z5"), 0);
    EXPECT_EQ(SequenceOf("BORDER7"), 0);
}

TEST_F(Sequences, NoneBehindTheLongWordsLastLetters)
{
    EXPECT_EQ(SequenceOf("GROOVE7"), 0);
    EXPECT_EQ(SequenceOf("DRILLING7"), 0);
}

TEST_F(Sequences, AreRoundedHalfToEven)
{
    EXPECT_EQ(SequenceOf("ROUTE2.5"), 2);
    EXPECT_EQ(SequenceOf("ROUTE3.5"), 4);
    EXPECT_EQ(SequenceOf("ROUTE0.4"), 0);
}

TEST_F(Sequences, DAndEEndTheNumber)
{
    EXPECT_EQ(SequenceOf("ROUTE1D3"), 1);
    EXPECT_EQ(SequenceOf("ROUTE1E3"), 1);
    EXPECT_EQ(SequenceOf("ROUTED5"), 0);
}

TEST_F(Sequences, NoneAbove10000)
{
    EXPECT_EQ(SequenceOf("ROUTE10000"), 10000);
    EXPECT_EQ(SequenceOf("ROUTE10001"), 0);
    EXPECT_EQ(SequenceOf("ROUTE99999999999"), 0); // beyond a Long
    EXPECT_EQ(SequenceOf("ROUTE-99999999999"), 0);
    EXPECT_EQ(SequenceOf("ROUTE 1500"), 1500); // blanks are passed over by the number itself
}

TEST_F(Sequences, LooseNumbersNoneAbove1000)
{
    EXPECT_EQ(SequenceOf("ROUTE_12"), 12);
    EXPECT_EQ(SequenceOf("ROUTE_ _ 12Z5"), 12);
    EXPECT_EQ(SequenceOf("ROUTE_1000"), 1000);
    EXPECT_EQ(SequenceOf("ROUTE_1001"), 0);
    EXPECT_EQ(SequenceOf("ROUTE_-99999999999"), 0);
}

TEST_F(Sequences, MayBeNegative)
{
    EXPECT_EQ(SequenceOf("ROUTE-40"), -40);
}

TEST_F(Sequences, BelowAnIntEndTheRun)
{
    EXPECT_THROW(SequenceOf("ROUTE-40000"), RunError);
}

TEST_F(Sequences, AgreeWithThePlainTwinOnRandomNames)
{
    test::RandomNames random(test::Seed(7));
    int told = 0;
    for (int i = 0; i < test::Rounds(20000); ++i) {
        const std::string name = random.Layer();
        int plain = 0;
        try {
            plain = plain::Sequence(name);
        } catch (const plain::Overflow&) {
            continue;
        }
        ASSERT_EQ(SequenceOf(name), plain) << name << ", " << test::RoundName(i);
        told += plain != 0;
    }
    EXPECT_GT(told, 2000);
}

TEST_F(Sequences, WidenTheRangeOnLayersOfTheCurrentRow)
{
    kv::Run.LayerTable.emplace_back("ROUTE20");
    kv::Run.RoutePass = 4;
    Decode(Record("LINE", "ROUTE20"));
    EXPECT_EQ(kv::Run.MaxSequence, 20);
    EXPECT_EQ(kv::Run.MinSequence, 0);
    Decode(Record("LINE", "ROUTE30")); // not of the row
    EXPECT_EQ(kv::Run.MaxSequence, 20);
    kv::Run.LayerTable[4] = "ROUTE-40";
    Decode(Record("LINE", "ROUTE-40Z5")); // begins with the row
    EXPECT_EQ(kv::Run.MinSequence, -40);
    EXPECT_EQ(kv::Run.MaxSequence, 20);
}

TEST_F(Sequences, MinimumOutlivesTheDrawing)
{
    kv::Run.MinSequence = -40;
    kv::Run.MaxSequence = 20;
    ResetRun();
    EXPECT_EQ(kv::Run.MinSequence, -40);
    EXPECT_EQ(kv::Run.MaxSequence, 0);
}

// A line on the layer of the running route pass, from (10, 20) to (30, 40).
struct NotesOfARoute : DecodedRecord {
    NotesOfARoute()
    {
        kv::Run.LayerTable.emplace_back("ROUTE20");
        kv::Run.RoutePass = 4;
        CurrentEntity.SearchNotes = True;
        Line = Record("LINE", "ROUTE20");
        Line.X1 = 10;
        Line.Y1 = 20;
        Line.X2 = 30;
        Line.Y2 = 40;
    }
    DxfEntity Line;
};

TEST_F(NotesOfARoute, AtEitherEndAreFound)
{
    AddNote(10, 20, "Z5");
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "Z5");
    EXPECT_EQ(CurrentEntity.SearchNotes, False);
    kv::Run.NoteX[1] = 30;
    kv::Run.NoteY[1] = 40;
    CurrentEntity.SearchNotes = True;
    CurrentEntity.NoteText.clear();
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "Z5");
}

TEST_F(NotesOfARoute, MustStandAtOneEndWithBothCoordinates)
{
    AddNote(10, 40, "Z5");
    AddNote(30, 20, "Z6");
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "");
}

TEST_F(NotesOfARoute, MustStandNearerThanAHundredth)
{
    AddNote(10.009F, 20.009F, "Z5");
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "Z5");
    kv::Run.NoteX[1] = 10.011F;
    CurrentEntity.SearchNotes = True;
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "");
    Line.X1 = 0; // the distance is the Single .01, a little below .01 in double
    kv::Run.NoteX[1] = .01F;
    CurrentEntity.SearchNotes = True;
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "Z5");
}

TEST_F(NotesOfARoute, TheLastMatchWins)
{
    AddNote(10, 20, "Z5");
    AddNote(30, 40, "Z6");
    AddNote(99, 99, "Z7");
    AddNote(10, 20, "");
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "Z6");
}

TEST_F(NotesOfARoute, ThatMatchNothingClearTheNoteInForce)
{
    AddNote(99, 99, "Z7");
    CurrentEntity.NoteText = "OLD";
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "");
    EXPECT_EQ(CurrentEntity.SearchNotes, False);
    EXPECT_EQ(CurrentEntity.Sequence, 20); // the name's
}

TEST_F(NotesOfARoute, GiveTheSequenceEvenZero)
{
    AddNote(10, 20, "7Z5");
    Decode(Line);
    EXPECT_EQ(CurrentEntity.Sequence, 7);
    kv::Run.NoteText[1] = "Z5";
    CurrentEntity.SearchNotes = True;
    Decode(Line);
    EXPECT_EQ(CurrentEntity.Sequence, 0); // the name's 20 is gone
    EXPECT_EQ(kv::Run.MaxSequence, 7);
}

TEST_F(NotesOfARoute, NumbersStandForOperationStrings)
{
    kv::Run.OpStrings = {"", "", "Z8T3", ""};
    AddNote(10, 20, "2");
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "Z8T3");
    EXPECT_EQ(CurrentEntity.Sequence, 0); // of the operation string
    kv::Run.NoteText[1] = "3";            // empty string: the note's own text
    CurrentEntity.SearchNotes = True;
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "3");
    EXPECT_EQ(CurrentEntity.Sequence, 3);
    kv::Run.NoteText[1] = "4"; // beyond the highest
    CurrentEntity.SearchNotes = True;
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "4");
    kv::Run.OpStrings[0] = "NEVER";
    kv::Run.NoteText[1] = "0Z5";
    CurrentEntity.SearchNotes = True;
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "0Z5");
}

TEST_F(NotesOfARoute, BeyondAnIntEndTheRun)
{
    AddNote(10, 20, "99999");
    EXPECT_THROW(Decode(Line), RunError);
}

TEST_F(NotesOfARoute, StayInForceUntilTheNextLookup)
{
    AddNote(10, 20, "Z5");
    Decode(Line);
    Line.X1 = 99; // no search asked
    Line.X2 = 99;
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "Z5");
    CurrentEntity.SearchNotes = True;
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "");
}

TEST_F(NotesOfARoute, AreNotLookedUpOnOtherLayers)
{
    AddNote(10, 20, "Z5");
    Line.Layer = "ROUTE30";
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "");
    EXPECT_EQ(CurrentEntity.SearchNotes, True); // no lookup ran
}

TEST_F(NotesOfARoute, AreLookedUpOnLayersThatBeginWithTheRow)
{
    AddNote(10, 20, "Z5");
    Line.Layer = "ROUTE201";
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "Z5");
}

TEST_F(NotesOfARoute, AreNotLookedUpWhereTheWidthsDiffer)
{
    AddNote(10, 20, "Z5");
    Line.Radius = 3;
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "");
    EXPECT_EQ(CurrentEntity.SearchNotes, True);
    EXPECT_EQ(kv::Run.MaxSequence, 0);
    Line.EndWidth = 3;
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "Z5");
    Line.EndWidth = 6; // the start width is scaled, the end width is not
    kv::Run.DrawingScale = 2;
    kv::Run.NoteX[1] = 20;
    kv::Run.NoteY[1] = 40;
    CurrentEntity.SearchNotes = True;
    CurrentEntity.NoteText.clear();
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "Z5");
}

TEST_F(NotesOfARoute, WithoutAnyNoteNoLookupRuns)
{
    CurrentEntity.NoteText = "OLD";
    Decode(Line);
    EXPECT_EQ(CurrentEntity.NoteText, "OLD");
    EXPECT_EQ(CurrentEntity.SearchNotes, True);
}

TEST_F(PinnedNotes, OutsideTheRoutePassesAreThoseOfBorderLayers)
{
    AddNote(10, 20, "Z5");
    CurrentEntity.SearchNotes = True;
    DxfEntity record = Record("LINE", "VBORE");
    record.X1 = 10;
    record.Y1 = 20;
    Decode(record);
    EXPECT_EQ(CurrentEntity.NoteText, "");
    record.Layer = "BORDERLL";
    Decode(record);
    EXPECT_EQ(CurrentEntity.NoteText, "Z5");
}

TEST_F(PinnedNotes, AreComparedWithTheViewsCoordinates)
{
    AddNote(10, 15, "Z5");
    CurrentEntity.SearchNotes = True;
    DxfEntity record = Record("LINE", "BORDER");
    record.X1 = -10;
    record.Y1 = 99;
    record.Z1 = -15;
    record.Side = "1";
    Decode(record);
    EXPECT_EQ(CurrentEntity.NoteText, "Z5");
}

TEST_F(DecodedRecord, MovesTheMeterOnEachTenthIndexAndNeverBack)
{
    Entities.Clear();
    for (int i = 0; i < 60; ++i)
        Entities.Append(Record("LINE", "VBORE"));
    Long index = 8;
    DecodeEntity(index);
    EXPECT_EQ(MeterValue(Meter::Processing), 0);
    DecodeEntity(index); // index 10 of 60: 5 of 30
    EXPECT_EQ(MeterValue(Meter::Processing), 5);
    index = 59;
    DecodeEntity(index);
    EXPECT_EQ(MeterValue(Meter::Processing), 30);
    index = 19;
    DecodeEntity(index);
    EXPECT_EQ(MeterValue(Meter::Processing), 30);
}

} // namespace
} // namespace kv
