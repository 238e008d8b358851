// Random drawings through the import: points of nested blocks against matrices multiplied out here; ordinary
// drawings, that none of the settings may touch; and what `prepare` writes, read plainly, against
// Import=full.
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "import/import_scene.h"
#include "support/random_drawings.h"
#include "support/random_rounds.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

// Column-wise 2D affine map: x' = a x + c y + e, y' = b x + d y + f.
struct Affine {
    double A = 1, B = 0, C = 0, D = 1, E = 0, F = 0;
};
Affine Times(const Affine& m, const Affine& n)
{
    return {m.A * n.A + m.C * n.B, m.B * n.A + m.D * n.B,       m.A * n.C + m.C * n.D,
            m.B * n.C + m.D * n.D, m.A * n.E + m.C * n.F + m.E, m.B * n.E + m.D * n.F + m.F};
}

struct RandomInsert {
    double X = 0, Y = 0, ScaleX = 1, ScaleY = 1, Turn = 0, BaseX = 0, BaseY = 0;
    bool IsDown = false;
    Affine Map() const
    {
        const double turn = Turn * std::acos(-1.0) / 180;
        const Affine down = IsDown ? Affine{-1, 0, 0, 1, 0, 0} : Affine{};
        return Times(down,
                     Times({1, 0, 0, 1, X, Y},
                           Times({std::cos(turn), std::sin(turn), -std::sin(turn), std::cos(turn), 0, 0},
                                 Times({ScaleX, 0, 0, ScaleY, 0, 0}, {1, 0, 0, 1, -BaseX, -BaseY}))));
    }
    std::string Pairs(const std::string& block) const
    {
        std::string more = Pair(41, ScaleX) + Pair(42, ScaleY) + Pair(50, Turn);
        if (IsDown)
            more += Pair(210, 0) + Pair(220, 0) + Pair(230, -1);
        return Insert("0", block, X, Y, more);
    }
};

struct ImportRandom : ImportScene {
    std::mt19937 Random{11};
    double Between(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(Random);
    }
    RandomInsert AnInsert(bool similar)
    {
        RandomInsert insert;
        insert.X = Between(-100, 900);
        insert.Y = Between(-100, 900);
        insert.ScaleX = Between(0.3, 3) * (Random() % 2 == 0 ? 1 : -1);
        insert.ScaleY = similar ? std::abs(insert.ScaleX) * (Random() % 2 == 0 ? 1 : -1) : Between(0.3, 3);
        insert.Turn = Random() % 2 == 0 ? 90.0 * static_cast<double>(Random() % 4) : Between(-360, 360);
        insert.BaseX = Between(-50, 50);
        insert.BaseY = Between(-50, 50);
        insert.IsDown = Random() % 4 == 0;
        return insert;
    }
};

TEST_F(ImportRandom, NestedBlocksStandWhereTheirMatricesBringThem)
{
    const int rounds = Rounds(300);
    for (int round = 0; round < rounds; ++round) {
        const bool similar = round % 2 == 0;
        std::array<RandomInsert, 3> inserts = {AnInsert(similar), AnInsert(similar), AnInsert(similar)};
        const double x1 = Between(-50, 50), y1 = Between(-50, 50), x2 = Between(-50, 50),
                     y2 = Between(-50, 50);
        std::string blocks = Block("B2",
                                   Line("ROUTE1", x1, y1, x2, y2) + Point("VBORE", x2, y2) +
                                       Lwpolyline("ROUTE2", {{x1, y1}, {x2, y2}, {x1, y2}}),
                                   inserts[2].BaseX, inserts[2].BaseY);
        blocks += Block("B1", inserts[2].Pairs("B2"), inserts[1].BaseX, inserts[1].BaseY);
        blocks += Block("B0", inserts[1].Pairs("B1"), inserts[0].BaseX, inserts[0].BaseY);
        const auto records = Read({.Entities = inserts[0].Pairs("B0"), .Blocks = blocks});
        ASSERT_EQ(KindsOf(records), "LINE POINT POLYLINE VERTEX VERTEX VERTEX SEQEND") << round;
        const Affine all = Times(inserts[0].Map(), Times(inserts[1].Map(), inserts[2].Map()));
        const auto expect = [&](double x, double y, double px, double py) {
            EXPECT_NEAR(px, all.A * x + all.C * y + all.E, 2e-3) << round;
            EXPECT_NEAR(py, all.B * x + all.D * y + all.F, 2e-3) << round;
        };
        expect(x1, y1, records[0].X1, records[0].Y1);
        expect(x2, y2, records[0].X2, records[0].Y2);
        expect(x2, y2, records[1].X1, records[1].Y1);
        expect(x1, y1, records[3].X1, records[3].Y1);
        expect(x1, y2, records[5].X1, records[5].Y1);
    }
}

// Ends and middle of an arc, wherever nested blocks bring it.
TEST_F(ImportRandom, ArcsOfNestedBlocksRunThroughTheSamePoints)
{
    const double degree = std::acos(-1.0) / 180;
    const int rounds = Rounds(300);
    for (int round = 0; round < rounds; ++round) {
        const std::array<RandomInsert, 2> inserts = {AnInsert(true), AnInsert(true)};
        const double start = Between(0, 360), swept = Between(10, 350), radius = Between(5, 50);
        const auto records =
            Read({.Entities = inserts[0].Pairs("B0"),
                  .Blocks = Block("B1", Arc("ROUTE1", 7, -3, radius, start, std::fmod(start + swept, 360)),
                                  inserts[1].BaseX, inserts[1].BaseY) +
                            Block("B0", inserts[1].Pairs("B1"), inserts[0].BaseX, inserts[0].BaseY)});
        ASSERT_EQ(KindsOf(records), "ARC");
        const Affine all = Times(inserts[0].Map(), inserts[1].Map());
        const DxfEntity& arc = records[0];
        double span = std::fmod(static_cast<double>(arc.EndAngle) - arc.StartAngle + 720, 360);
        EXPECT_NEAR(span, swept, 1e-2);
        const bool mirrored = all.A * all.D - all.B * all.C < 0;
        for (const double part : {0.0, 0.5, 1.0}) {
            const double drawn = (start + swept * part) * degree;
            const double x = 7 + radius * std::cos(drawn), y = -3 + radius * std::sin(drawn);
            const double at = (arc.StartAngle + span * (mirrored ? 1 - part : part)) * degree;
            EXPECT_NEAR(arc.X1 + arc.Radius * std::cos(at), all.A * x + all.C * y + all.E, 1e-2) << round;
            EXPECT_NEAR(arc.Y1 + arc.Radius * std::sin(at), all.B * x + all.D * y + all.F, 1e-2) << round;
        }
    }
}

TEST_F(ImportRandom, ExamplesAreTouchedByNoneOfTheSettings)
{
    int compared = 0;
    for (const auto& entry :
         fs::directory_iterator(fs::path(KORVANTI_SOURCE_DIR) / "examples" / "drawings")) {
        std::ifstream stream(entry.path(), std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        Config.Import = "plain";
        Place.Convert(text);
        const auto programs = TakePrograms(Place);
        for (const std::string_view mode : {"told", "full"}) {
            Config.Import = mode;
            Place.Convert(text);
            EXPECT_EQ(TakePrograms(Place), programs) << entry.path();
            ++compared;
        }
    }
    EXPECT_GE(compared, 24);
}

} // namespace
} // namespace kv::test
