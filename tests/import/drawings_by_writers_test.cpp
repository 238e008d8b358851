// One door as ten other programs write it: with Import=full each gives the program of the plain drawing. The
// programs are read back, and compared by what they do: bores, saw cuts, and where the router goes.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numbers>

#include "import/import_scene.h"
#include "machine/program_reader.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

const fs::path Writers = fs::path(KORVANTI_SOURCE_DIR) / "tests" / "data" / "writers";
constexpr double Same = 0.01; // mm

struct RouterPoint {
    double X = 0, Y = 0, Depth = 0;
};

// Closely along all ways of the router.
std::vector<RouterPoint> PointsOfRouter(const MachineSteps& steps)
{
    std::vector<RouterPoint> points;
    for (const RouterCut& cut : steps.Cuts) {
        points.push_back({cut.Start.X, cut.Start.Y, cut.StartDepth});
        for (const Move& move : cut.Moves) {
            for (int i = 0; i <= 64; ++i) {
                const double part = i / 64.0, depth = move.DepthFrom + (move.DepthTo - move.DepthFrom) * part;
                if (!move.IsArc) {
                    points.push_back({move.From.X + (move.To.X - move.From.X) * part,
                                      move.From.Y + (move.To.Y - move.From.Y) * part, depth});
                    continue;
                }
                const double turn = std::atan2(move.From.Y - move.Centre.Y, move.From.X - move.Centre.X) +
                                    move.Sweep * part * std::numbers::pi / 180;
                const double radius = std::hypot(move.From.X - move.Centre.X, move.From.Y - move.Centre.Y);
                points.push_back({move.Centre.X + radius * std::cos(turn),
                                  move.Centre.Y + radius * std::sin(turn), depth});
            }
        }
    }
    return points;
}

// How far the first router's places are from the second's ways, at most; between two of its points a way is
// nearly straight.
double Farthest(const std::vector<RouterPoint>& from, const std::vector<RouterPoint>& to)
{
    double farthest = 0;
    for (const RouterPoint& p : from) {
        double nearest = 1e9;
        for (std::size_t i = 0; i + 1 < to.size(); ++i) {
            const RouterPoint &a = to[i], &b = to[i + 1];
            const double dx = b.X - a.X, dy = b.Y - a.Y, square = dx * dx + dy * dy;
            if (square > 200 * 200) // from one cut to the next
                continue;
            const double s =
                square > 0 ? std::clamp(((p.X - a.X) * dx + (p.Y - a.Y) * dy) / square, 0.0, 1.0) : 0;
            const double beside = std::hypot(a.X + s * dx - p.X, a.Y + s * dy - p.Y);
            nearest =
                std::min(nearest, std::max(beside, std::abs(p.Depth - (a.Depth + (b.Depth - a.Depth) * s))));
        }
        farthest = std::max(farthest, nearest);
    }
    return farthest;
}

bool HasBore(const MachineSteps& steps, const Bore& bore)
{
    return std::any_of(steps.Bores.begin(), steps.Bores.end(), [&](const Bore& other) {
        return std::hypot(other.At.X - bore.At.X, other.At.Y - bore.At.Y) <= Same &&
               std::abs(other.Depth - bore.Depth) <= Same && std::abs(other.Diameter - bore.Diameter) <= Same;
    });
}

struct DrawingsByWriters : ImportScene {
    std::string ConvertedText(const std::string& name, std::string_view mode)
    {
        std::ifstream stream(Writers / name, std::ios::binary);
        const std::string drawing{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        EXPECT_FALSE(drawing.empty()) << name;
        Config.Import = mode;
        Config.PrecisionMetric = "4";
        Config.SawKerf = "4";
        Config.CarryOver = "clean";
        Config.LineLimit = "5000";
        Place.Convert(drawing);
        std::string text;
        for (const auto& [program, contents] : TakePrograms(Place))
            text += contents;
        return text;
    }
    MachineSteps StepsOf(const std::string& name, std::string_view mode)
    {
        return ReadProgram(ConvertedText(name, mode));
    }
};

TEST_F(DrawingsByWriters, EachGivesTheProgramOfThePlainDrawing)
{
    const MachineSteps plain = StepsOf("plain.dxf", "plain");
    ASSERT_EQ(plain.Bores.size(), 12u);
    ASSERT_FALSE(plain.Saws.empty());
    ASSERT_GE(plain.Cuts.size(), 2u) << "the contour and the pocket";
    const std::vector<RouterPoint> way = PointsOfRouter(plain);
    for (const char* const name :
         {"ezdxf_r2010.dxf", "ezdxf_binary.dxf", "ezdxf_r12.dxf", "dxflib.dxf", "gdal.dxf", "openscad.dxf",
          "pstoedit.dxf", "inkscape.dxf", "dxf_writer.dxf", "tarikjabiri.dxf", "makerjs.dxf"}) {
        const MachineSteps steps = StepsOf(name, "full");
        EXPECT_EQ(steps.UnreadCount, plain.UnreadCount) << name;
        EXPECT_NEAR(steps.Length, 600, Same) << name;
        EXPECT_NEAR(steps.Width, 400, Same) << name;
        EXPECT_NEAR(steps.Thickness, 18, Same) << name;
        EXPECT_EQ(steps.Bores.size(), plain.Bores.size()) << name;
        for (const Bore& bore : plain.Bores)
            EXPECT_TRUE(HasBore(steps, bore))
                << name << ": " << bore.At.X << ' ' << bore.At.Y << ' ' << bore.Diameter;
        ASSERT_EQ(steps.Saws.size(), plain.Saws.size()) << name;
        for (std::size_t i = 0; i < plain.Saws.size(); ++i) {
            const SawCut &saw = steps.Saws[i], &wanted = plain.Saws[i];
            EXPECT_NEAR(saw.From.X + saw.To.X, wanted.From.X + wanted.To.X, 2 * Same) << name; // either way
            EXPECT_NEAR(saw.From.Y, wanted.From.Y, Same) << name;
            EXPECT_NEAR(saw.Depth, wanted.Depth, Same) << name;
        }
        const std::vector<RouterPoint> other = PointsOfRouter(steps);
        // A spline or a polygon of its writer may be off by as much again.
        EXPECT_LE(Farthest(way, other), 2 * Same) << name;
        EXPECT_LE(Farthest(other, way), 2 * Same) << name;
    }
}

TEST_F(DrawingsByWriters, ToldNamesEachThingThatWasLeft)
{
    const auto told = [&](const std::string& name, const std::vector<std::string>& lines) {
        ConvertedText(name, "told");
        for (const std::string& line : lines)
            EXPECT_TRUE(Place.Reported(line)) << name << '\n' << line << '\n' << Place.ReportText();
    };
    told("ezdxf_r2010.dxf",
         {"Layer 0: 2 INSERT of HINGE are not opened; Import=full would make 3 CIRCLE of the first",
          "Layer EXCAV_K8_Z6_D12_T30: ELLIPSE that is a circle is left as it is; Import=full would make it "
          "one of diameter 60",
          "Layer VBORE_OLD: CIRCLE on a frozen layer is read; Import=full would leave it out",
          "Layer VBORE_Z12: CIRCLE in paper space is read; Import=full would leave it out",
          "Layer NOTES: MTEXT is read with its codes; Import=full would make 2 TEXT of it"});
    told("dxflib.dxf",
         {"Layer 0: 2 INSERT of HINGE are not opened; Import=full would make 6 ARC of the first",
          "Layer VBORE_Z12: 6 ring of ARC that are circles are left as they are; Import=full would make them "
          "circles, "
          "the first of diameter 5"});
    told("gdal.dxf", {"Layer VBORE_Z13: 2 LWPOLYLINE that are circles are left as they are; Import=full "
                      "would make them circles, "
                      "the first of diameter 35",
                      "Layer BORDER_Z18: the panel of 600 x 400 is taken for mm; $INSUNITS says inch"});
    told("dxf_writer.dxf", {"Layer VBORE_Z10: 4 ELLIPSE that are circles are left as they are; Import=full "
                            "would make them circles, the "
                            "first of diameter 8"});
    told("tarikjabiri.dxf",
         {"Layer 0: 2 INSERT of HINGE are not opened; Import=full would make 3 CIRCLE of the first"});
    told("inkscape.dxf", {"Layer VBORE_Z12: 36 SPLINE are left as they are; Import=full would fit the first "
                          "by 1 lines and arcs"});
    ConvertedText("makerjs.dxf", "told");
    EXPECT_FALSE(Place.ReportText().find("Import=full") != std::string::npos) << Place.ReportText();
}

} // namespace
} // namespace kv::test
