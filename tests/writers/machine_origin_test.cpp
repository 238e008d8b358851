// The mirror of the records to the machine's corner.
#include <array>

#include "writers/program_scene.h"

namespace kv {
namespace {

class MachineOrigin : public ProgramScene {
  protected:
    static RouteSegment Segment(Int side, Int kind)
    {
        RouteSegment segment;
        segment.Side = side;
        segment.Kind = kind;
        segment.X = 10;
        segment.Y = 20;
        segment.Aux1 = 30;
        segment.Aux2 = 40;
        return segment;
    }
    static void ExpectSegment(Long index, Single x, Single y, Single aux1, Single aux2)
    {
        const RouteSegment& segment = RouteSegments[index];
        EXPECT_EQ(segment.X, x) << index;
        EXPECT_EQ(segment.Y, y) << index;
        EXPECT_EQ(segment.Aux1, aux1) << index;
        EXPECT_EQ(segment.Aux2, aux2) << index;
    }
    void Mirror(Int right, Int top)
    {
        Run.OriginRight = right;
        Run.OriginTop = top;
        ApplyMachineOrigin();
    }
};

TEST_F(MachineOrigin, SegmentsMirrorByTheirSide)
{
    for (const Int side : std::array<Int, 6>{5, 0, 1, 2, 3, 4})
        RouteSegments.Append(Segment(side, 1));
    Mirror(True, True);
    ExpectSegment(1, 590, 380, 30, 40);
    ExpectSegment(2, 590, 380, 30, 40);
    ExpectSegment(3, 590, 20, 30, 40);
    ExpectSegment(4, 590, 20, 30, 40);
    ExpectSegment(5, 10, 380, 30, 40);
    ExpectSegment(6, 10, 380, 30, 40);
    EXPECT_EQ(RouteSegments[0].X, 0); // the blank element stays blank
}

TEST_F(MachineOrigin, CentresOfArcStartsMirrorWithThem)
{
    for (const Int side : std::array<Int, 3>{5, 1, 4})
        RouteSegments.Append(Segment(side, -3));
    RouteSegments.Append(Segment(5, 3)); // angles, not a centre
    Mirror(True, True);
    ExpectSegment(1, 590, 380, 570, 360);
    ExpectSegment(2, 590, 20, 570, 40);
    ExpectSegment(3, 10, 380, 30, 360);
    ExpectSegment(4, 590, 380, 30, 40);
}

TEST_F(MachineOrigin, OfAnEvolutionEveryMirrorTurnsTheRecordsOfItsSide)
{
    struct Corner {
        Int Right, Top;
        std::array<int, 6> Mirrors; // of the sides 0 to 5
    };
    for (const Corner& corner :
         {Corner{True, False, {1, 1, 1, 0, 0, 1}}, Corner{False, True, {1, 0, 0, 1, 1, 1}},
          Corner{True, True, {2, 1, 1, 1, 1, 2}}, Corner{False, False, {0, 0, 0, 0, 0, 0}}}) {
        for (const Int side : std::array<Int, 6>{0, 1, 2, 3, 4, 5}) {
            RouteSegments.Clear();
            for (const Int kind : std::array<Int, 6>{-5, 5, -3, 3, -1, 1})
                RouteSegments.Append(Segment(side, kind)).Comp = "G41 R5";
            Run.ControlType = 2;
            Mirror(corner.Right, corner.Top);
            const bool turned = corner.Mirrors[static_cast<std::size_t>(side)] == 1;
            for (Long i = 1; i <= 6; ++i)
                EXPECT_EQ(RouteSegments[i].Comp, turned ? "G42 R5" : "G41 R5") << side << " " << i;
            EXPECT_EQ(RouteSegments[1].Aux2, turned ? -40 : 40) << side;
            EXPECT_EQ(RouteSegments[2].Aux2, turned ? -40 : 40) << side;
            EXPECT_EQ(RouteSegments[4].Dir, turned ? True : False) << side;
            EXPECT_EQ(RouteSegments[4].Aux2, 40) << side; // an angle
            EXPECT_EQ(RouteSegments[3].Dir, 0) << side;
            EXPECT_EQ(RouteSegments[5].Dir, 0) << side;
        }
    }
}

TEST_F(MachineOrigin, AnEvolutionsSideEdgesMirrorAlongTheEdge)
{
    Run.ControlType = 2;
    for (const Int side : std::array<Int, 3>{3, 4, 1})
        RouteSegments.Append(Segment(side, -3));
    Mirror(True, True);
    ExpectSegment(1, 390, 20, 370, 40); // X along the edge, 400 long
    ExpectSegment(2, 390, 20, 370, 40);
    ExpectSegment(3, 590, 20, 570, 40);
}

TEST_F(MachineOrigin, OtherControlsKeepSensesAndHands)
{
    for (const Int control : std::array<Int, 2>{0, 1}) {
        RouteSegments.Clear();
        for (const Int kind : std::array<Int, 2>{-5, 3})
            RouteSegments.Append(Segment(5, kind)).Comp = "G41 R5";
        Run.ControlType = control;
        Mirror(True, False);
        ExpectSegment(1, 590, 20, 30, 40);
        EXPECT_EQ(RouteSegments[2].Dir, 0);
        EXPECT_EQ(RouteSegments[1].Comp, "G41 R5");
        Mirror(False, True);
        EXPECT_EQ(RouteSegments[2].Dir, 0);
        EXPECT_EQ(RouteSegments[1].Comp, "G41 R5");
    }
}

TEST_F(MachineOrigin, BoresCirclesAndGroovesMirrorWhole)
{
    AddBore();
    AddGroove();
    RouteCircle circle;
    circle.X = 200;
    circle.Y = 300;
    RouteCircles.Append(circle);
    Mirror(True, False);
    EXPECT_EQ(VBores[1].X, 500);
    EXPECT_EQ(VBores[1].Y, 50);
    EXPECT_EQ(RouteCircles[1].X, 400);
    EXPECT_EQ(GroovePasses[1].X1, 590);
    EXPECT_EQ(GroovePasses[1].X2, 10);
    EXPECT_EQ(GroovePasses[1].Y1, 20);
    Mirror(False, True);
    EXPECT_EQ(VBores[1].X, 500);
    EXPECT_EQ(VBores[1].Y, 350);
    EXPECT_EQ(RouteCircles[1].Y, 100);
    EXPECT_EQ(GroovePasses[1].Y1, 380);
    EXPECT_EQ(GroovePasses[1].Y2, 380);
}

TEST_F(MachineOrigin, HorizontalBoresMirrorAlongTheirEdge)
{
    for (const Long side : {1, 2, 3, 4})
        AddHBore(side);
    Mirror(True, True);
    for (const Long side : {1, 2}) {
        EXPECT_EQ(HBores[side].PosX, 550);
        EXPECT_EQ(HBores[side].PosY, 9);
    }
    for (const Long side : {3, 4}) {
        EXPECT_EQ(HBores[side].PosX, 50);
        EXPECT_EQ(HBores[side].PosY, 391);
    }
}

TEST_F(MachineOrigin, AtTheLowerLeftNothingMoves)
{
    AddBore();
    HeadPosition stop;
    stop.X = 10;
    HeadPositions.Append(stop);
    Mirror(False, False);
    EXPECT_EQ(VBores[1].X, 100);
    Mirror(True, True);
    EXPECT_EQ(HeadPositions[1].X, 10); // head positions are built mirrored
}

} // namespace
} // namespace kv
