// Demands and steps worked out by hand, against each other.
#include "proof/proof.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kv {
namespace {

Move MoveOf(const PathPoint& from, const PathPoint& to, double depth)
{
    Move move;
    move.From = from;
    move.To = to;
    move.DepthFrom = move.DepthTo = depth;
    move.Feed = 5000;
    return move;
}

// A rectangle from (100, 100) to (300, 200), counter-clockwise from its lower left corner.
std::vector<Move> Rectangle(double depth)
{
    return {MoveOf({100, 100}, {300, 100}, depth), MoveOf({300, 100}, {300, 200}, depth),
            MoveOf({300, 200}, {100, 200}, depth), MoveOf({100, 200}, {100, 100}, depth)};
}

struct ProofOfPanel : testing::Test {
    Demands Asked;
    MachineSteps Steps;

    ProofOfPanel()
    {
        Asked.Length = Steps.Length = 600;
        Asked.Width = Steps.Width = 400;
        Asked.Thickness = Steps.Thickness = 18;
    }
    void AskForRectangle(int side)
    {
        AskedWay way;
        way.Pieces = Rectangle(0);
        way.Drawn = {7, 7, 7, 7};
        way.IsClosed = true;
        way.Side = side;
        way.Radius = 5;
        way.DepthLeast = way.DepthMost = 10;
        Asked.Ways.push_back(way);
    }
    RouterCut& CutRectangle(int side)
    {
        RouterCut cut;
        cut.Radius = 5;
        cut.Side = side;
        cut.StartDepth = 10;
        cut.Line = 3;
        cut.Moves = Rectangle(10);
        for (std::size_t i = 0; i < cut.Moves.size(); ++i)
            cut.Moves[i].Line = 4 + i;
        cut.Start = cut.Moves.front().From;
        Steps.Cuts.push_back(cut);
        return Steps.Cuts.back();
    }
    Proof ProofNow() const { return Prove(Asked, {Steps}, UsualTolerance); }
    std::vector<Finding> Findings() const { return ProofNow().Findings; }
};

TEST_F(ProofOfPanel, AContourThatIsCutAsDrawnIsProved)
{
    AskForRectangle(-1);
    CutRectangle(-1); // outside, around a part
    const Proof proof = ProofNow();
    EXPECT_TRUE(proof.Findings.empty());
    EXPECT_EQ(proof.Contours, 1u);
}

TEST_F(ProofOfPanel, TheToolOnTheOtherSideCutsIntoThePartAndLeavesTheRest)
{
    AskForRectangle(-1);
    CutRectangle(1);
    const std::vector<Finding> findings = Findings();
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_EQ(findings[0].Kind, FindingKind::Left);
    EXPECT_EQ(findings[0].Drawn, 7);
    EXPECT_EQ(findings[1].Kind, FindingKind::Cut);
    EXPECT_NEAR(findings[1].Millimetres, 10, 1.8); // wider in its corners
}

TEST_F(ProofOfPanel, AMoveOf03MmIsFoundAndOneOf005IsNot)
{
    AskForRectangle(0);
    RouterCut& cut = CutRectangle(0);
    cut.Moves[1].To.Y = cut.Moves[2].From.Y = 200.05;
    cut.Moves[2].To.Y = cut.Moves[3].From.Y = 200.05;
    EXPECT_TRUE(Findings().empty());
    cut.Moves[1].To.Y = cut.Moves[2].From.Y = 200.3;
    cut.Moves[2].To.Y = cut.Moves[3].From.Y = 200.3;
    const std::vector<Finding> findings = Findings();
    ASSERT_EQ(findings.size(), 3u); // the last move is judged by itself, since it might be a lead
    EXPECT_EQ(findings[0].Kind, FindingKind::Left);
    EXPECT_EQ(findings[1].Kind, FindingKind::Cut);
    EXPECT_NEAR(findings[1].Millimetres, 0.3, 0.03);
    EXPECT_EQ(findings[1].Line, 6u);
    EXPECT_EQ(findings[2].Line, 7u);
}

TEST_F(ProofOfPanel, ADepthThatIsAnotherIsFoundWithBoth)
{
    AskForRectangle(0);
    for (Move& move : CutRectangle(0).Moves)
        move.DepthFrom = move.DepthTo = 9.5;
    std::vector<Finding> findings = Findings();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].Kind, FindingKind::Left);
    EXPECT_EQ(findings[0].What, "cut 9.5 deep there");
    for (Move& move : Steps.Cuts[0].Moves)
        move.DepthFrom = move.DepthTo = 10.5;
    findings = Findings();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].Kind, FindingKind::Cut);
    EXPECT_EQ(findings[0].What, "asked for 10 deep there");
}

TEST_F(ProofOfPanel, SeveralPassesThatReachTheDepthAreAsAsked)
{
    AskForRectangle(0);
    for (Move& move : CutRectangle(0).Moves)
        move.DepthFrom = move.DepthTo = 5;
    CutRectangle(0);
    EXPECT_TRUE(Findings().empty());
}

TEST_F(ProofOfPanel, ACutThatNobodyDrewIsFound)
{
    CutRectangle(0);
    const std::vector<Finding> findings = Findings();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].Kind, FindingKind::Cut);
    EXPECT_EQ(findings[0].Drawn, 0);
}

TEST_F(ProofOfPanel, AWayThatIsInNoProgramIsLeftStanding)
{
    AskForRectangle(1);
    const std::vector<Finding> findings = Findings();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].Kind, FindingKind::Left);
    EXPECT_EQ(findings[0].On, Plane::Surface);
}

TEST_F(ProofOfPanel, ALeadInTheWasteIsAllowedAndOneInThePartIsNot)
{
    AskForRectangle(-1);
    Asked.Ways[0].Lead = 20;
    RouterCut& cut = CutRectangle(-1);
    Move lead = MoveOf({80, 100}, {100, 100}, 10);
    lead.Line = 4;
    cut.Moves.insert(cut.Moves.begin(), lead);
    cut.Start = lead.From;
    EXPECT_TRUE(Findings().empty());
    cut.Moves.front().From = cut.Start = {150, 130};
    const std::vector<Finding> findings = Findings();
    EXPECT_TRUE(std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.Kind == FindingKind::Cut && finding.At.X > 105;
    }));
}

TEST_F(ProofOfPanel, ALeadIntoAnotherPartIsFound)
{
    AskForRectangle(-1);
    Asked.Ways[0].Lead = 60;
    AskedWay neighbour = Asked.Ways[0];
    for (Move& move : neighbour.Pieces) {
        move.From.X -= 220;
        move.To.X -= 220;
    }
    neighbour.Pieces[0] = MoveOf({20, 100}, {80, 100}, 0);
    neighbour.Pieces[1] = MoveOf({80, 100}, {80, 200}, 0);
    neighbour.Pieces[2] = MoveOf({80, 200}, {20, 200}, 0);
    neighbour.Pieces[3] = MoveOf({20, 200}, {20, 100}, 0);
    Asked.Ways.push_back(neighbour);
    RouterCut& cut = CutRectangle(-1);
    const Move lead = MoveOf({60, 120}, {100, 100}, 10);
    cut.Moves.insert(cut.Moves.begin(), lead);
    cut.Start = lead.From;
    RouterCut other = cut;
    other.Moves = neighbour.Pieces;
    for (Move& move : other.Moves)
        move.DepthFrom = move.DepthTo = 10;
    other.Start = other.Moves.front().From;
    Steps.Cuts.push_back(other);
    const std::vector<Finding> findings = Findings();
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings[0].Kind, FindingKind::Cut);
    EXPECT_LT(findings[0].At.X, 80);
}

TEST_F(ProofOfPanel, WhatLiesBesideThePanelIsNoWood)
{
    AskedWay way;
    way.Pieces = {MoveOf({-50, 200}, {650, 200}, 0)};
    way.Drawn = {3};
    way.Radius = 5;
    way.DepthLeast = way.DepthMost = 10;
    Asked.Ways.push_back(way);
    RouterCut cut;
    cut.Radius = 5;
    cut.Moves = {MoveOf({-20, 200}, {630, 200}, 10)};
    cut.Start = {-20, 200};
    Steps.Cuts.push_back(cut);
    EXPECT_TRUE(Findings().empty());
}

TEST_F(ProofOfPanel, BoresAreJudgedByPlaceDepthAndDiameter)
{
    Asked.Bores = {{Plane::Surface, {100, 100}, 12, 8, 1}};
    Steps.Bores = {{Plane::Surface, {100, 100}, 12, 8, "", 3}};
    EXPECT_EQ(ProofNow().Bores, 1u);
    EXPECT_TRUE(Findings().empty());
    Steps.Bores[0].Diameter = 0; // named by its tool alone
    EXPECT_TRUE(Findings().empty());
    Steps.Bores[0] = {Plane::Surface, {100, 100}, 13, 8, "", 3};
    ASSERT_EQ(Findings().size(), 1u);
    EXPECT_EQ(Findings()[0].What, "diameter 8, 13 deep instead of diameter 8, 12 deep");
    Steps.Bores[0] = {Plane::Surface, {100.3, 100}, 12, 8, "", 3};
    ASSERT_EQ(Findings().size(), 1u);
    EXPECT_EQ(Findings()[0].What, "diameter 8, 12 deep, drilled at X100.3 Y100");
    Steps.Bores[0].At = {150, 100};
    ASSERT_EQ(Findings().size(), 2u);
    EXPECT_EQ(Findings()[0].Kind, FindingKind::MissingBore);
    EXPECT_EQ(Findings()[1].What, "diameter 8, 12 deep, nobody drew it");
    Steps.Bores[0] = {Plane::Edge1, {100, 100}, 12, 8, "", 3};
    EXPECT_EQ(Findings().size(), 2u);
}

TEST_F(ProofOfPanel, ABoreMayBeInARowWhoseDrillsAreNotKnown)
{
    Asked.Bores = {{Plane::Surface, {132, 100}, 12, 5, 1}};
    Steps.Rows = {{{100, 100}, {164, 100}, 12, "010203", 3}};
    EXPECT_TRUE(Findings().empty());
    Steps.Rows[0].Depth = 13;
    EXPECT_EQ(Findings().size(), 1u);
}

TEST_F(ProofOfPanel, ARouterThatOnlyPlungesBores)
{
    Asked.Bores = {{Plane::Surface, {100, 100}, 12, 35, 1}};
    RouterCut cut;
    cut.Radius = 17.5;
    cut.Start = {100, 100};
    cut.StartDepth = 12;
    Steps.Cuts = {cut};
    EXPECT_TRUE(Findings().empty());
    Steps.Cuts[0].Radius = 15;
    EXPECT_EQ(Findings().size(), 1u);
}

TEST_F(ProofOfPanel, AGrooveIsSawnInSeveralPasses)
{
    Asked.Grooves = {{{50, 100}, {550, 100}, 8, 10, 4, 0, 5}};
    Steps.Saws = {{{50, 97}, {550, 97}, 8, 4, 0, "", 3}, {{50, 100}, {550, 100}, 8, 4, 0, "", 4}};
    std::vector<Finding> findings = Findings();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].Kind, FindingKind::Left);
    EXPECT_NEAR(findings[0].Millimetres, 3, 0.01);
    Steps.Saws.push_back({{50, 103}, {550, 103}, 8, 0, 0, "", 5}); // as wide as the groove's kerf
    EXPECT_TRUE(Findings().empty());
    EXPECT_EQ(ProofNow().Grooves, 1u);
    Steps.Saws[2].To.X = 551;
    findings = Findings();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].Kind, FindingKind::Cut);
    EXPECT_EQ(findings[0].Line, 5u);
}

TEST_F(ProofOfPanel, APocketMayKeepTheCornersThatItsToolCannotReachAndNothingElse)
{
    AskedPocket pocket;
    pocket.Outline = Rectangle(0);
    pocket.Drawn = {9, 9, 9, 9};
    pocket.Radius = 5;
    pocket.Depth = 6;
    Asked.Pockets = {pocket};
    RouterCut cut;
    cut.Radius = 5;
    cut.Start = {105, 105};
    PathPoint last = cut.Start;
    for (double y = 105; y <= 195; y += 9) {
        const PathPoint from{y == 105 || static_cast<int>(y - 105) % 18 == 0 ? 105.0 : 295.0, y};
        const PathPoint to{from.X == 105 ? 295.0 : 105.0, y};
        cut.Moves.push_back(MoveOf(last, from, 6));
        cut.Moves.push_back(MoveOf(from, to, 6));
        last = to;
    }
    cut.Moves.push_back(MoveOf(last, {105, 195}, 6));
    cut.Moves.push_back(MoveOf({105, 195}, {105, 105}, 6)); // along the walls at both ends
    cut.Moves.push_back(MoveOf({105, 105}, {295, 105}, 6));
    cut.Moves.push_back(MoveOf({295, 105}, {295, 195}, 6));
    Steps.Cuts = {cut};
    EXPECT_TRUE(Findings().empty());
    EXPECT_EQ(ProofNow().Pockets, 1u);
    Steps.Cuts[0].Moves.back().To.X = 295.4; // into the wall
    std::vector<Finding> findings = Findings();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].Kind, FindingKind::Cut);
    Steps.Cuts[0].Moves.erase(Steps.Cuts[0].Moves.end() - 3, Steps.Cuts[0].Moves.end());
    findings = Findings();
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings[0].Kind, FindingKind::Left);
    EXPECT_EQ(findings[0].Drawn, 9);
}

TEST_F(ProofOfPanel, EntitiesDrawnInBothDirectionsMayHaveTheToolOnEitherSide)
{
    AskForRectangle(-1);
    Asked.Ways[0].IsSideOpen = true;
    RouterCut& cut = CutRectangle(1);
    cut.Start = cut.Moves.front().From = {200, 100}; // not in a corner, whose walls are near
    cut.Moves.push_back(MoveOf({100, 100}, {200, 100}, 10));
    EXPECT_TRUE(Findings().empty());
    Steps.Cuts[0].Side = 0;
    EXPECT_FALSE(Findings().empty());
}

TEST_F(ProofOfPanel, AToolThatNobodyMeasuresIsProvedByItsWayAlone)
{
    AskForRectangle(0);
    Asked.Ways[0].Radius = 0;
    CutRectangle(0).Radius = 0;
    EXPECT_TRUE(Findings().empty());
    Asked.Ways[0].Side = 1;
    EXPECT_EQ(ProofNow().Left.size(), 1u);
}

TEST_F(ProofOfPanel, TheProgramOfAnotherPanelIsNotLookedAtToItsEnd)
{
    for (int i = 0; i < 50000; ++i) {
        Steps.Bores.push_back({Plane::Surface, {i * 0.01, 50}, 12, 8, "", 3});
        CutRectangle(0).Radius = 3;
    }
    const Proof proof = ProofNow();
    EXPECT_FALSE(proof.IsWhole);
    EXPECT_EQ(proof.Findings.size(), MostFindings);
}

TEST_F(ProofOfPanel, LinesThatWereNotUnderstoodAreNamed)
{
    Steps.Unread = {"11: G4F2"};
    const std::vector<Finding> findings = Findings();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].Kind, FindingKind::NotUnderstood);
    EXPECT_EQ(findings[0].Line, 11u);
}

} // namespace
} // namespace kv
