// "$": further passes over the same entity, and the renumbering that makes room for them.
#include "drawing/layer_rules.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "drawing/plain_layer_values.h"
#include "drawing/random_layer_names.h"
#include "job/job_driver.h"
#include "support/dxf.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv {
namespace {

using Names = std::vector<std::string>;

struct LayerPasses : ::testing::Test {
    LayerPasses() { test::ResetProcess(); }
    ~LayerPasses() override { test::ResetProcess(); }

    // Layers of all records behind the split; each record's X1 is the number of the name drawn.
    static Names Expanded(const Names& names)
    {
        Entities.Clear();
        for (std::size_t i = 0; i < names.size(); ++i) {
            DxfEntity record;
            record.Layer = names[i];
            record.X1 = static_cast<Single>(i);
            Entities.Append(record);
        }
        ExpandLayerPasses();
        Names layers;
        for (Long i = 1; i <= Entities.Last(); ++i)
            layers.emplace_back(Entities[i].Layer.Trimmed());
        return layers;
    }
    // The one record's name behind the renumbering.
    static std::string Renumbered(const std::string& name) { return Expanded({name}).front(); }
};

TEST_F(LayerPasses, NumbersBecomeTenTimesAndTen)
{
    EXPECT_EQ(Renumbered("ROUTE1"), "ROUTE20");
    EXPECT_EQ(Renumbered("ROUTE5Z18D10"), "ROUTE60Z18D10");
    EXPECT_EQ(Renumbered("EXCAV3Z5"), "EXCAV40Z5");
    EXPECT_EQ(Renumbered("ROUTE999"), "ROUTE10000");
}

TEST_F(LayerPasses, OtherWordsKeepTheirNumbers)
{
    EXPECT_EQ(Renumbered("VBORE1"), "VBORE1");
    EXPECT_EQ(Renumbered("ROTAR1"), "ROTAR1");
    EXPECT_EQ(Renumbered("XROUTE1"), "XROUTE1");
}

TEST_F(LayerPasses, NoNumberNoChange)
{
    EXPECT_EQ(Renumbered("ROUTEZ18"), "ROUTEZ18");
    EXPECT_EQ(Renumbered("ROUTE"), "ROUTE");
    EXPECT_EQ(Renumbered("ROUTE_5"), "ROUTE_5");
}

TEST_F(LayerPasses, OnlyThreeCharactersAreTheNumber)
{
    EXPECT_EQ(Renumbered("ROUTE1234"), "ROUTE12404");
}

TEST_F(LayerPasses, LeadingZerosAreDropped)
{
    EXPECT_EQ(Renumbered("ROUTE012Z5"), "ROUTE130Z5");
    EXPECT_EQ(Renumbered("ROUTE01Z5"), "ROUTE20Z5");
    EXPECT_EQ(Renumbered("ROUTE001Z5"), "ROUTE20Z5");
    EXPECT_EQ(Renumbered("ROUTE00Z5"), "ROUTEZ5");
    EXPECT_EQ(Renumbered("ROUTE00"), "ROUTE");
    EXPECT_EQ(Renumbered("ROUTE0"), "ROUTE");
}

TEST_F(LayerPasses, BlanksGoOnlyWhereZerosWereDropped)
{
    EXPECT_EQ(Renumbered("ROUTE01 Z5 D3"), "ROUTE20Z5D3");
    EXPECT_EQ(Renumbered("ROUTE00 Z5 D3"), "ROUTEZ5D3");
    EXPECT_EQ(Renumbered("ROUTE1 Z5 D3"), "ROUTE20 Z5 D3");
    EXPECT_EQ(Renumbered("ROUTE 12"), "ROUTE 130");
}

TEST_F(LayerPasses, DAndEEndTheNumber)
{
    EXPECT_EQ(Renumbered("ROUTE1D5"), "ROUTE20D5");
    EXPECT_EQ(Renumbered("ROUTE1E5"), "ROUTE20E5");
}

TEST_F(LayerPasses, TheWholeNumberTextIsReplaced)
{
    EXPECT_EQ(Renumbered("ROUTE1.5"), "ROUTE30"); // 1.5 to Int is 2
    EXPECT_EQ(Renumbered("ROUTE2.5"), "ROUTE30"); // halves to even
    EXPECT_EQ(Renumbered("ROUTE.5Z3"), "ROUTE.5Z3");
    EXPECT_EQ(Renumbered("ROUTE-5"), "ROUTE-40");
    EXPECT_EQ(Renumbered("ROUTE+5"), "ROUTE60");
    EXPECT_EQ(Renumbered("ROUTE1..5"), "ROUTE20.5"); // one point alone belongs to a number
}

TEST_F(LayerPasses, ABorderIsAlsoCut)
{
    EXPECT_EQ(Expanded({"BORDER$Z18D10"}), (Names{"BORDER", "ROUTEZ18D10"}));
    EXPECT_EQ(Expanded({"BORDERLL$1Z18"}), (Names{"BORDERLL", "ROUTE20Z18"}));
}

TEST_F(LayerPasses, ABorderCutOnARouteKeepsBothWords)
{
    EXPECT_EQ(Expanded({"BORDER$ROUTE1"}), (Names{"BORDER", "ROUTEROUTE1"}));
}

TEST_F(LayerPasses, ABorderMayBeCutTwice)
{
    // The copy ROUTEZ5$Z9 has no number: it becomes route 1, the further pass route 2.
    EXPECT_EQ(Expanded({"BORDER$Z5$Z9"}), (Names{"BORDER", "ROUTE1Z5", "ROUTE2Z9T0"}));
}

TEST_F(LayerPasses, ARouteWithoutANumberBecomesNumberOne)
{
    EXPECT_EQ(Expanded({"ROUTEZ18T5$Z9"}), (Names{"ROUTE1Z18T5", "ROUTE2Z9T5"}));
}

TEST_F(LayerPasses, ANumberedRouteCountsOn)
{
    EXPECT_EQ(Expanded({"ROUTE1Z18T5$Z9"}), (Names{"ROUTE20Z18T5", "ROUTE21Z9T5"}));
}

TEST_F(LayerPasses, EachDollarOpensAFurtherPass)
{
    EXPECT_EQ(Expanded({"ROUTE1Z5T3$Z10$Z15$Z18"}),
              (Names{"ROUTE20Z5T3", "ROUTE21Z10T3", "ROUTE22Z15T3", "ROUTE23Z18T3"}));
}

TEST_F(LayerPasses, DepthGroupAndToolAreInherited)
{
    // Order of the parts: pass, Z, G, T. The tool is inherited as a number.
    EXPECT_EQ(Expanded({"ROUTE1Z5.5G2T05$D8"}), (Names{"ROUTE20Z5.5G2T05", "ROUTE21D8Z5.5G2T5"}));
}

TEST_F(LayerPasses, DepthAndToolAreAddedEvenWhenZero)
{
    EXPECT_EQ(Expanded({"ROUTE1$D8"}), (Names{"ROUTE20", "ROUTE21D8Z0T0"}));
}

TEST_F(LayerPasses, WhatThePassStatesIsNotInherited)
{
    EXPECT_EQ(Expanded({"ROUTE1Z5T3$Z9T4"}), (Names{"ROUTE20Z5T3", "ROUTE21Z9T4"}));
}

TEST_F(LayerPasses, AGroupOfThePassIsAddedOnceMore)
{
    EXPECT_EQ(Expanded({"VBORE Z5$G2"}), (Names{"VBORE Z5", "VBOREG2Z5G2"}));
}

TEST_F(LayerPasses, CodedDepthsAreInheritedAsNumbers)
{
    EXPECT_EQ(Expanded({"VBOREZD$D8"}), (Names{"VBOREZD", "VBORED8Z100"}));
    EXPECT_EQ(Expanded({"VBOREZA$D8"}), (Names{"VBOREZA", "VBORED8Z97"}));
    EXPECT_EQ(Expanded({"VBOREZ.5$D8"}), (Names{"VBOREZ.5", "VBORED8Z.5"}));
}

TEST_F(LayerPasses, BoresHaveNoNumberAndInheritNoTool)
{
    EXPECT_EQ(Expanded({"VBORE1Z5T3$D8"}), (Names{"VBORE1Z5T3", "VBORED8Z5"}));
    EXPECT_EQ(Expanded({"HBOREZ5T3$D8"}), (Names{"HBOREZ5T3", "HBORED8Z5"}));
}

TEST_F(LayerPasses, GroovesAndDrillingsGetTheirLongWord)
{
    EXPECT_EQ(Expanded({"GROOVEZ5$Z8"}), (Names{"GROOVEZ5", "GROOVEZ8"}));
    EXPECT_EQ(Expanded({"GROOVZ5$Z8"}), (Names{"GROOVZ5", "GROOVEZ8"}));
    EXPECT_EQ(Expanded({"DRILLZ5$Z8"}), (Names{"DRILLZ5", "DRILLINGZ8"}));
    EXPECT_EQ(Expanded({"DRILLINGG2Z5$Z8"}), (Names{"DRILLINGG2Z5", "DRILLINGZ8G2"}));
}

TEST_F(LayerPasses, ARepeatedWordAnUnderscoreAndABlankAreDropped)
{
    EXPECT_EQ(Expanded({"VBOREZ5$VBORE_ Z8"}), (Names{"VBOREZ5", "VBOREZ8"}));
    EXPECT_EQ(Expanded({"VBOREZ5$_Z8"}), (Names{"VBOREZ5", "VBOREZ8"}));
    EXPECT_EQ(Expanded({"VBOREZ5$ Z8"}), (Names{"VBOREZ5", "VBOREZ8"}));
    EXPECT_EQ(Expanded({"VBOREZ5$__Z8"}), (Names{"VBOREZ5", "VBORE_Z8"})); // one alone
    EXPECT_EQ(Expanded({"VBOREZ5$ _Z8"}), (Names{"VBOREZ5", "VBORE_Z8"})); // in this order alone
    EXPECT_EQ(Expanded({"ROUTE1Z5T3$ROUTE9Z8"}), (Names{"ROUTE20Z5T3", "ROUTE219Z8T3"}));
}

TEST_F(LayerPasses, OnlyFiveCharactersOfARepeatedLongWordAreDropped)
{
    EXPECT_EQ(Expanded({"GROOVEZ5$GROOVEZ8"}), (Names{"GROOVEZ5", "GROOVEEZ8"}));
    EXPECT_EQ(Expanded({"DRILLINGZ5$DRILLINGZ8"}), (Names{"DRILLINGZ5", "DRILLINGINGZ8"}));
}

TEST_F(LayerPasses, BlanksAtThePasssEndAreDropped)
{
    EXPECT_EQ(Expanded({"VBOREZ5$D8  $D9"}), (Names{"VBOREZ5", "VBORED8Z5", "VBORED9Z5"}));
}

TEST_F(LayerPasses, EXCAVKeepsItsDollar)
{
    EXPECT_EQ(Expanded({"EXCAV1Z5$Z9"}), (Names{"EXCAV20Z5$Z9"}));
}

TEST_F(LayerPasses, EXECASpelledSoIsNumberedButInheritsNoTool)
{
    EXPECT_EQ(Expanded({"EXECAZ5T3$Z9"}), (Names{"EXECA1Z5T3", "EXECA2Z9"}));
    EXPECT_EQ(Expanded({"EXECA4Z5T3$Z9"}), (Names{"EXECA4Z5T3", "EXECA5Z9"})); // not renumbered
}

TEST_F(LayerPasses, OtherNamesKeepTheirDollarsAndForceNoWalk)
{
    EXPECT_EQ(Expanded({"ROTAR1$Z5$Z9", "PANEL$Z5", "TEXT$$"}),
              (Names{"ROTAR1$Z5$Z9", "PANEL$Z5", "TEXT$$"}));
}

TEST_F(LayerPasses, AnEmptyPassInheritsAll)
{
    EXPECT_EQ(Expanded({"ROUTE1Z5T3G2$"}), (Names{"ROUTE20Z5T3G2", "ROUTE21Z5G2T3"}));
    EXPECT_EQ(Expanded({"VBOREZ5$$D3"}), (Names{"VBOREZ5", "VBOREZ5", "VBORED3Z5"}));
}

TEST_F(LayerPasses, CopiesStandAtTheEndInDrawingOrderWithTheirRecordsFields)
{
    EXPECT_EQ(Expanded({"BORDER$Z1", "VBOREZ5$D8$D9", "ROUTE1$Z7"}),
              (Names{"BORDER", "VBOREZ5", "ROUTE20", "ROUTEZ1", "VBORED8Z5", "ROUTE21Z7T0", "VBORED9Z5"}));
    const std::vector<Single> sources = {0, 1, 2, 0, 1, 2, 1};
    for (Long i = 1; i <= Entities.Last(); ++i)
        EXPECT_EQ(Entities[i].X1, sources[static_cast<std::size_t>(i - 1)]);
}

TEST_F(LayerPasses, LeaveNoNoteAndTheNewCount)
{
    CurrentEntity.NoteText = "OLD";
    Expanded({"VBOREZ5$D8"});
    EXPECT_EQ(CurrentEntity.NoteText, "");
    EXPECT_EQ(kv::Run.EntityCount, 2);
}

TEST_F(LayerPasses, TheFractionOfAPasssDepthIsReadFromTheNameInFront)
{
    // Pass "G2P5" would be "      G2P5"; its group is whole. Depth inherited: 5.5 from the name itself.
    EXPECT_EQ(Expanded({"VBOREZ5.5$G2"}), (Names{"VBOREZ5.5", "VBOREG2Z5.5G2"}));
}

TEST_F(LayerPasses, OfAPolylineCopyTheWholePolyline)
{
    test::Scene scene;
    std::vector<std::string> kinds;
    const test::AtStage stage("layers", [&] {
        for (Long i = 1; i <= Entities.Last(); ++i)
            if (Entities[i].Layer == "ROUTE21Z9T5")
                kinds.emplace_back(Entities[i].Kind.Trimmed());
    });
    scene.Convert(test::Drawing(test::Polyline("route1z18t5$z9", {{0, 0}, {10, 0}, {10, 10}}) +
                                test::Rectangle("BORDER", 0, 0, 600, 400)));
    EXPECT_EQ(kinds, (std::vector<std::string>{"POLYLINE", "VERTEX", "VERTEX", "VERTEX", "SEQEND"}));
}

// A polyline as writers put it that know of no layers for its vertices and its end.
std::string PolylineEndingOn(const std::string& layer, const std::string& layerOfTheRest)
{
    const std::string rest = layerOfTheRest.empty() ? "" : test::Pair(8, layerOfTheRest);
    std::string text = test::Pair(0, "POLYLINE") + test::Pair(8, layer) + test::Pair(66, "1");
    for (const double x : {100.0, 300.0})
        text += test::Pair(0, "VERTEX") + rest + test::Pair(10, x) + test::Pair(20, 200.0);
    return text + test::Pair(0, "SEQEND") + rest;
}

// Else the second pass finds no end: its tool goes on, down in the wood, to the next polyline.
TEST_F(LayerPasses, FindTheEndOfAPolylineWhateverLayerItsEndNames)
{
    const auto program = [](const std::string& layerOfTheRest) {
        test::Scene scene;
        scene.Convert(test::Drawing(test::Rectangle("BORDERZ18", 0, 0, 600, 400) +
                                    PolylineEndingOn("ROUTE1Z9T71$Z18T71", layerOfTheRest) +
                                    PolylineEndingOn("ROUTE2Z9T71$Z18T71", layerOfTheRest) +
                                    PolylineEndingOn("GROOVEZ5T60$Z8", layerOfTheRest)));
        EXPECT_TRUE(scene.HasProgram()) << scene.ReportText();
        return scene.HasProgram() ? scene.Program() : std::vector<std::string>();
    };
    const std::vector<std::string> expected = program("ROUTE1Z9T71$Z18T71");
    EXPECT_EQ(std::count_if(expected.begin(), expected.end(),
                            [](const std::string& line) { return line.starts_with("G88"); }),
              4)
        << "each pass has a start of its own";
    EXPECT_EQ(program("0"), expected);
    EXPECT_EQ(program(""), expected);
}

TEST_F(LayerPasses, AgreeWithThePlainTwinOnRandomDrawings)
{
    test::RandomNames random(test::Seed(90));
    int errors = 0;
    int split = 0;
    for (int i = 0; i < test::Rounds(4000); ++i) {
        Names names;
        for (std::size_t count = 1 + random.Below(5); count > 0; --count)
            names.push_back(random.Layer(true));
        plain::Flags flags;
        std::vector<plain::Record> plain;
        bool plainError = false;
        try {
            plain::Rewrite(names, flags, "", 0);
            for (std::size_t n = 0; n < names.size(); ++n)
                plain.push_back({names[n], static_cast<int>(n)});
            plain::Expand(plain);
        } catch (const plain::Overflow&) {
            plainError = true;
        }
        Names real;
        bool realError = false;
        try {
            real = Expanded(names);
        } catch (const RunError&) {
            realError = true;
        }
        if (plain.empty())
            continue; // a flag of the rewrite was refused; nothing to compare
        ASSERT_EQ(realError, plainError) << names.front() << ", " << test::RoundName(i);
        errors += plainError;
        if (plainError)
            continue;
        ASSERT_EQ(real.size(), plain.size()) << names.front() << ", " << test::RoundName(i);
        for (std::size_t n = 0; n < real.size(); ++n) {
            ASSERT_EQ(real[n], plain[n].Name)
                << "record " << n << " of " << names.front() << ", " << test::RoundName(i);
            ASSERT_EQ(Entities[static_cast<Long>(n + 1)].X1, static_cast<Single>(plain[n].Source))
                << test::RoundName(i);
        }
        split += real.size() > names.size();
    }
    EXPECT_GT(split, 1000);
    EXPECT_LT(errors, test::Rounds(800));
}

} // namespace
} // namespace kv
