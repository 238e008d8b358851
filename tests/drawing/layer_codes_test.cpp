// The rewrite of two-letter codes and the flags of BORDER layers.
#include "drawing/layer_rules.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "drawing/plain_layer_values.h"
#include "drawing/random_layer_names.h"
#include "job/job_driver.h"
#include "platform/text.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv {
namespace {

struct LayerCodes : ::testing::Test {
    LayerCodes() { test::ResetProcess(); }
    ~LayerCodes() override { test::ResetProcess(); }

    static std::vector<std::string> RewrittenAll(const std::vector<std::string>& names)
    {
        Entities.Clear();
        for (const std::string& name : names) {
            DxfEntity record;
            record.Layer = name;
            Entities.Append(record);
        }
        RewriteLayerCodes();
        std::vector<std::string> layers;
        for (Long i = 1; i <= Entities.Last(); ++i)
            layers.emplace_back(Entities[i].Layer.Trimmed());
        return layers;
    }
    static std::string Rewritten(const std::string& name) { return RewrittenAll({name}).front(); }
};

using BorderFlags = LayerCodes;

TEST_F(LayerCodes, AreShownToPeopleAsTheyWereWritten)
{
    for (const std::string name : {"ROUTE1Z18LD20RIROZ6", "ROUTE_FA5FD2FR9OZ3", "VBOREPD4ESZR5",
                                   "EXCAV_K4_Z8", "DRILLTBSBCBBBDG", "DRILLINGDI", "BORDERZ18"})
        EXPECT_EQ(ShownLayer(Rewritten(name)), name);
    EXPECT_EQ(ShownLayer(Rewritten("VBOREEX3")), "VBOREES3") << "both mean the extra slot";
    EXPECT_EQ(ShownLayer(Rewritten("VBOREXP12")), "VBORE Z12") << "the rewritten name says no more";
    EXPECT_EQ(ShownLayer("ROUTE1   "), "ROUTE1");
    EXPECT_EQ(ShownLayer(""), "");
}

TEST_F(LayerCodes, BecomeABlankAndAMarker)
{
    const std::vector<std::string> pairs[] = {
        {"FA", " \xFC"}, {"FD", " \xE6"}, {"FR", " \xE7"}, {"LD", " \xE4"}, {"RO", " \xE5"},
        {"RI", " \xE8"}, {"PD", " \xE9"}, {"ES", " \xEB"}, {"EX", " \xEB"}, {"OZ", " \xEA"},
        {"XP", " Z"},    {"YP", " Z"},    {"ZR", "Z\xDF"}, {"BB", " \xEE"}, {"TB", " \xEC"},
        {"CB", " \xC4"}, {"SB", " \xC5"}, {"DI", " \xD6"}, {"DG", " \xDC"}};
    for (const auto& pair : pairs)
        EXPECT_EQ(Rewritten("VBORE1" + pair[0] + "5"), "VBORE1" + pair[1] + "5") << pair[0];
}

TEST_F(LayerCodes, CountFromPositionSix)
{
    EXPECT_EQ(Rewritten("ROUTE"), "ROUTE");
    EXPECT_EQ(Rewritten("ROTAR"), "ROTAR");
    EXPECT_EQ(Rewritten("EXCAV"), "EXCAV");
    EXPECT_EQ(Rewritten("ABCDFA5"), "ABCDFA5"); // from 5 on
    EXPECT_EQ(Rewritten("ABCDEFA5"), "ABCDE \xFC"
                                     "5"); // from 6 on
}

TEST_F(LayerCodes, AreRewrittenAtEachOccurrence)
{
    EXPECT_EQ(Rewritten("ROUTEFD5FD6FD7"), "ROUTE \xE6"
                                           "5 \xE6"
                                           "6 \xE6"
                                           "7");
}

TEST_F(LayerCodes, DIAgainLooksForDOSoASecondDIStays)
{
    EXPECT_EQ(Rewritten("VBOREDI5DI6"), "VBORE \xD6"
                                        "5DI6");
}

TEST_F(LayerCodes, ASecondDIIsRewrittenWhenAnotherCodeForcesAWalk)
{
    EXPECT_EQ(Rewritten("VBOREDI5DI6FA1FA2"), "VBORE \xD6"
                                              "5 \xD6"
                                              "6 \xFC"
                                              "1 \xFC"
                                              "2");
    EXPECT_EQ(Rewritten("VBOREDI5DI6DO"), "VBORE \xD6"
                                          "5 \xD6"
                                          "6DO"); // the DO does
}

TEST_F(LayerCodes, AWalkThatOneNameForcesGoesOverAllNames)
{
    const auto names = RewrittenAll({"VBOREDI5DI6", "ROUTEFA1FA2"});
    EXPECT_EQ(names[0], "VBORE \xD6"
                        "5 \xD6"
                        "6");
    EXPECT_EQ(names[1], "ROUTE \xFC"
                        "1 \xFC"
                        "2");
}

TEST_F(LayerCodes, ROZKeepsItsRAndGetsTheOscillationMarker)
{
    EXPECT_EQ(Rewritten("ROUTEROZ12"), "ROUTER \xEA"
                                       "12");
}

TEST_F(LayerCodes, ROBehindAnROZStays)
{
    EXPECT_EQ(Rewritten("ROUTE1ROZ3RO5"), "ROUTE1R \xEA"
                                          "3RO5");
}

TEST_F(LayerCodes, ROBehindAnROZIsTakenWhenAnotherCodeForcesAWalk)
{
    // The OZ is gone by the second walk, so the first RO is the plain one.
    EXPECT_EQ(Rewritten("ROUTE1ROZ3RO5FA1FA2"), "ROUTE1R \xEA"
                                                "3 \xE5"
                                                "5 \xFC"
                                                "1 \xFC"
                                                "2");
}

TEST_F(LayerCodes, ROInFrontOfAnROZIsRewritten)
{
    EXPECT_EQ(Rewritten("ROUTE1RO3ROZ5"), "ROUTE1 \xE5"
                                          "3R \xEA"
                                          "5");
}

TEST_F(LayerCodes, ASecondROUTEIsAWordAndNoRampOut)
{
    EXPECT_EQ(Rewritten("BORDER$ROUTE1"), "BORDER$ROUTE1");
    EXPECT_EQ(Rewritten("ROUTEROUTE1RO5"), "ROUTEROUTE1 \xE5"
                                           "5"); // its codes start behind both words
}

TEST_F(LayerCodes, LeaveTheLayersOwnWordAlone)
{
    EXPECT_EQ(Rewritten("BORDERRO5"), "BORDER \xE5"
                                      "5");
    EXPECT_EQ(Rewritten("GROOVESB"), "GROOVE \xC5"); // not ES at the word's last letter
    EXPECT_EQ(Rewritten("GROOVEX5"), "GROOVEX5");    // no EX across the word's end
    EXPECT_EQ(Rewritten("DRILLINGDG"), "DRILLING \xDC");
    EXPECT_EQ(Rewritten("DRILLINGFD5"), "DRILLING \xE6"
                                        "5");
}

TEST_F(LayerCodes, XPBeforeAnRBecomesADepthByTable)
{
    EXPECT_EQ(Rewritten("ROUTEXPR5"), "ROUTE Z\xDF"
                                      "5");
}

TEST_F(LayerCodes, EarlierCodesOfTheTableTakeSharedLetters)
{
    EXPECT_EQ(Rewritten("ROUTE1LDI5"), "ROUTE1 \xE4I5"); // LD before DI
    EXPECT_EQ(Rewritten("ROUTE1FDG"), "ROUTE1 \xE6G");   // FD before DG
    EXPECT_EQ(Rewritten("ROUTE1ESB"), "ROUTE1 \xEB"
                                      "B"); // ES before SB
}

TEST_F(LayerCodes, LeadCodeIsTold)
{
    Rewritten("ROUTE1LD5");
    EXPECT_EQ(kv::Run.AnyLeadCode, True);
    Rewritten("ROUTE1L5");
    EXPECT_EQ(kv::Run.AnyLeadCode, False);
}

TEST_F(BorderFlags, OriginCornerOfTheLayer)
{
    const struct {
        const char* Name;
        Int Right, Top;
    } corners[] = {{"BORDERLL", False, False},   {"BORDERUL", False, True},   {"BORDERUR", True, True},
                   {"BORDERLR", True, False},    {"BORDERUR LL", True, True}, // LL is tested first
                   {"BORDERLR UR", True, False}, {"BORDERUR_UL", True, True}};
    for (const auto& corner : corners) {
        Rewritten(corner.Name);
        EXPECT_EQ(kv::Run.OriginRight, corner.Right) << corner.Name;
        EXPECT_EQ(kv::Run.OriginTop, corner.Top) << corner.Name;
    }
}

TEST_F(BorderFlags, DefaultOriginIsTheSetting)
{
    Config.LineOrigin = "UR";
    Rewritten("ROUTE1");
    EXPECT_EQ(kv::Run.OriginRight, True);
    EXPECT_EQ(kv::Run.OriginTop, True);
    Rewritten("BORDERLL"); // the layer over the setting
    EXPECT_EQ(kv::Run.OriginRight, False);
    EXPECT_EQ(kv::Run.OriginTop, False);
    Config.LineOrigin = "XX";
    Rewritten("BORDER");
    EXPECT_EQ(kv::Run.OriginRight, False);
    EXPECT_EQ(kv::Run.OriginTop, False);
}

TEST_F(BorderFlags, TheLastBorderRecordDecides)
{
    Config.LineOrigin = "LR";
    RewrittenAll({"BORDERUL OP OL GE OF5", "BORDER", "ROUTE1UR"});
    EXPECT_EQ(kv::Run.OriginRight, True); // the setting again
    EXPECT_EQ(kv::Run.OriginTop, False);
    EXPECT_EQ(kv::Run.OptimizeFlag, False);
    EXPECT_EQ(kv::Run.OptimizeSide, 0);
    EXPECT_EQ(kv::Run.Outfit, 0);
    EXPECT_EQ(kv::Run.ControlType, 1); // what a border does not say of the control stays
}

TEST_F(BorderFlags, OriginIsNotReadFromOtherLayers)
{
    RewrittenAll({"BORDER", "ROUTE1UR"});
    EXPECT_EQ(kv::Run.OriginRight, False);
    EXPECT_EQ(kv::Run.OriginTop, False);
}

TEST_F(BorderFlags, NoCode)
{
    RewrittenAll({"BORDERNO", "BORDER"});
    EXPECT_EQ(kv::Run.NoCode, True); // a later border does not take it back
}

TEST_F(BorderFlags, SideOfTheOptimizerLastOfTheOrderWins)
{
    const struct {
        const char* Name;
        Int Side;
    } sides[] = {{"BORDEROL", 1},    {"BORDEROR", 2},    {"BORDERGS", 3}, {"BORDERSS", 4},
                 {"BORDERSS GS", 4}, {"BORDEROR OL", 2}, {"BORDER", 0}};
    for (const auto& side : sides) {
        Rewritten(side.Name);
        EXPECT_EQ(kv::Run.OptimizeSide, side.Side) << side.Name;
    }
}

TEST_F(BorderFlags, OutfitOverItsInstruction)
{
    kv::Run.OutfitDefault = 7;
    Rewritten("BORDER");
    EXPECT_EQ(kv::Run.Outfit, 7);
    Rewritten("BORDEROF12");
    EXPECT_EQ(kv::Run.Outfit, 12);
    Rewritten("BORDEROF 3OP");
    EXPECT_EQ(kv::Run.Outfit, 3);
    EXPECT_EQ(kv::Run.OptimizeFlag, True);
    Rewritten("BORDEROF");
    EXPECT_EQ(kv::Run.Outfit, 0);
    Rewritten("BORDEROF2.5"); // half to even
    EXPECT_EQ(kv::Run.Outfit, 2);
}

TEST_F(BorderFlags, OutfitWithoutABorderRecordStays)
{
    kv::Run.Outfit = 4;
    kv::Run.OutfitDefault = 7;
    Rewritten("ROUTE1OF9");
    EXPECT_EQ(kv::Run.Outfit, 4);
}

TEST_F(BorderFlags, OptimizeOnlyWithOP)
{
    kv::Run.OptimizeFlag = True;
    Rewritten("BORDER");
    EXPECT_EQ(kv::Run.OptimizeFlag, False);
    Rewritten("BORDEROP");
    EXPECT_EQ(kv::Run.OptimizeFlag, True);
}

TEST_F(BorderFlags, SequenceOfFourLettersBlankPadded)
{
    Rewritten("BORDERSQVGHR5");
    EXPECT_EQ(kv::Run.SequenceName, "VGHR");
    Rewritten("BORDERSQVH");
    EXPECT_EQ(kv::Run.SequenceName, "VH  ");
    Rewritten("BORDER"); // says nothing: stays
    EXPECT_EQ(kv::Run.SequenceName, "VH  ");
}

TEST_F(BorderFlags, SequenceIsReadBehindTheRewriteAndUpperCased)
{
    Rewritten("BORDERSQVROG"); // RO is a blank and a marker by now, the marker in upper case
    EXPECT_EQ(kv::Run.SequenceName, "V \xC5"
                                    "G");
}

TEST_F(BorderFlags, ControlLastOfTheOrderWins)
{
    const struct {
        const char* Name;
        Int Control;
    } controls[] = {
        {"BORDER_90", 0}, {"BORDERGE", 1}, {"BORDEREV", 2}, {"BORDEREV GE _90", 2}, {"BORDERGE_90", 1}};
    for (const auto& control : controls) {
        kv::Run.ControlType = control.Control == 0 ? 2 : 0;
        Rewritten(control.Name);
        EXPECT_EQ(kv::Run.ControlType, control.Control) << control.Name;
    }
    kv::Run.ControlType = 2;
    Rewritten("BORDER");
    EXPECT_EQ(kv::Run.ControlType, 2);
}

TEST_F(BorderFlags, NeedTheNameToBeginWithTheWord)
{
    Rewritten("MYBORDERNOGE");
    EXPECT_EQ(kv::Run.NoCode, False);
    EXPECT_EQ(kv::Run.ControlType, 0);
}

TEST_F(BorderFlags, AreNotReadAcrossTheWordsEnd)
{
    Rewritten("BORDERLR"); // "RL" across the end is nothing; "LR" stands behind it
    EXPECT_EQ(kv::Run.OriginRight, True);
    Rewritten("BORDERS"); // no GS, no SS
    EXPECT_EQ(kv::Run.OptimizeSide, 0);
}

TEST_F(BorderFlags, ReachARunThroughADrawing)
{
    test::Scene scene;
    Int right = 0;
    Int control = -5;
    std::string sequence;
    const test::AtStage stage("layers", [&] {
        right = kv::Run.OriginRight;
        control = kv::Run.ControlType;
        sequence = kv::Run.SequenceName;
    });
    scene.Convert(test::Drawing(test::Rectangle("borderlr_sqrg_ge", 0, 0, 600, 400)));
    EXPECT_EQ(right, True);
    EXPECT_EQ(control, 1);
    EXPECT_EQ(sequence, "RG_G"); // four characters, whatever they are
}

std::string FlagsText(const plain::Flags& flags)
{
    return std::to_string(flags.LeadCode) + std::to_string(flags.OriginRight) +
           std::to_string(flags.OriginTop) + std::to_string(flags.NoCode) + std::to_string(flags.Optimize) +
           " side " + std::to_string(flags.OptimizeSide) + " control " + std::to_string(flags.ControlType) +
           " outfit " + std::to_string(flags.Outfit) + " sequence [" + flags.SequenceName + "]";
}

plain::Flags RunFlags()
{
    plain::Flags flags;
    flags.LeadCode = kv::Run.AnyLeadCode != 0;
    flags.OriginRight = kv::Run.OriginRight != 0;
    flags.OriginTop = kv::Run.OriginTop != 0;
    flags.NoCode = kv::Run.NoCode != 0;
    flags.Optimize = kv::Run.OptimizeFlag != 0;
    flags.OptimizeSide = kv::Run.OptimizeSide;
    flags.ControlType = kv::Run.ControlType;
    flags.Outfit = kv::Run.Outfit;
    flags.SequenceName = kv::Run.SequenceName;
    return flags;
}

TEST_F(LayerCodes, AgreeWithThePlainTwinOnRandomDrawings)
{
    test::RandomNames random(test::Seed(4711));
    const std::vector<std::string> corners = {"", "LL", "UL", "UR", "LR", "X"};
    int errors = 0;
    int changed = 0;
    for (int i = 0; i < test::Rounds(4000); ++i) {
        std::vector<std::string> names;
        for (std::size_t count = 1 + random.Below(6); count > 0; --count)
            names.push_back(random.Below(4) == 0 ? random.Border() : random.Layer(true));
        const std::vector<std::string> drawn = names;
        kv::Run = RunBlock{};
        kv::Run.OutfitDefault = static_cast<Long>(random.Below(3));
        Config.LineOrigin = corners[random.Below(corners.size())];
        plain::Flags flags;
        bool plainError = false;
        try {
            plain::Rewrite(names, flags, Config.LineOrigin, kv::Run.OutfitDefault);
        } catch (const plain::Overflow&) {
            plainError = true;
        }
        std::vector<std::string> real;
        bool realError = false;
        try {
            real = RewrittenAll(drawn);
        } catch (const RunError&) {
            realError = true;
        }
        ASSERT_EQ(realError, plainError) << drawn.front() << ", " << test::RoundName(i);
        errors += plainError;
        if (plainError)
            continue;
        ASSERT_EQ(real, names) << test::RoundName(i);
        ASSERT_EQ(FlagsText(RunFlags()), FlagsText(flags)) << drawn.back() << ", " << test::RoundName(i);
        changed += names != drawn;
    }
    EXPECT_GT(changed, 2000);
    EXPECT_LT(errors, test::Rounds(400));
}

} // namespace
} // namespace kv
