// Splines and ellipses as lines and tangent arcs: how far the way is from curves that are worked out here by
// other formulas (Bernstein's for splines, points and focal distances for ellipses), how its pieces meet, and
// curves that are none.
#include <array>
#include <cmath>
#include <numbers>

#include "import/drawn_curves.h"
#include "import/import_scene.h"

namespace kv::test {
namespace {

struct FlatPoint {
    double X = 0, Y = 0;
};

FlatPoint Bezier(const std::array<FlatPoint, 4>& p, double t)
{
    const double u = 1 - t;
    const double b[] = {u * u * u, 3 * u * u * t, 3 * u * t * t, t * t * t};
    FlatPoint at;
    for (std::size_t i = 0; i < 4; ++i) {
        at.X += b[i] * p[i].X;
        at.Y += b[i] * p[i].Y;
    }
    return at;
}

std::string BezierSpline(std::string_view layer, const std::array<FlatPoint, 4>& p)
{
    std::string spline =
        Pair(0, "SPLINE") + Pair(8, layer) + Pair(70, 8) + Pair(71, 3) + Pair(72, 8) + Pair(73, 4);
    for (int i = 0; i < 8; ++i)
        spline += Pair(40, i < 4 ? 0 : 1);
    for (const FlatPoint& point : p)
        spline += Pair(10, point.X) + Pair(20, point.Y) + Pair(30, 0);
    return spline;
}

// Points along the polyline that the records hold, closely.
std::vector<FlatPoint> PointsOfWay(const std::vector<DxfEntity>& records)
{
    std::vector<FlatPoint> points;
    std::vector<DxfEntity> vertices;
    for (const DxfEntity& record : records)
        if (record.Kind == "VERTEX")
            vertices.push_back(record);
    const bool closed = (records.at(0).Flags & 1) != 0;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        if (i + 1 == vertices.size() && !closed)
            break;
        const DxfEntity &a = vertices[i], &b = vertices[(i + 1) % vertices.size()];
        const double bulge = a.Bulge, dx = b.X1 - a.X1, dy = b.Y1 - a.Y1;
        for (int k = 0; k <= 16; ++k) {
            const double s = k / 16.0;
            if (bulge == 0) {
                points.push_back({a.X1 + dx * s, a.Y1 + dy * s});
                continue;
            }
            const double sweep = 4 * std::atan(bulge), half = (1 - bulge * bulge) / (4 * bulge);
            const double cx = (a.X1 + b.X1) / 2.0 - dy * half, cy = (a.Y1 + b.Y1) / 2.0 + dx * half;
            const double start = std::atan2(a.Y1 - cy, a.X1 - cx), radius = std::hypot(a.X1 - cx, a.Y1 - cy);
            points.push_back(
                {cx + radius * std::cos(start + sweep * s), cy + radius * std::sin(start + sweep * s)});
        }
    }
    return points;
}

double FarthestFrom(const std::vector<FlatPoint>& wanted, const std::vector<FlatPoint>& way)
{
    double farthest = 0;
    for (const FlatPoint& point : wanted) {
        double nearest = 1e30;
        for (std::size_t i = 0; i + 1 < way.size(); ++i) {
            const double dx = way[i + 1].X - way[i].X, dy = way[i + 1].Y - way[i].Y;
            const double square = dx * dx + dy * dy;
            const double s =
                square > 0
                    ? std::clamp(((point.X - way[i].X) * dx + (point.Y - way[i].Y) * dy) / square, 0.0, 1.0)
                    : 0;
            nearest = std::min(nearest, std::hypot(way[i].X + s * dx - point.X, way[i].Y + s * dy - point.Y));
        }
        farthest = std::max(farthest, nearest);
    }
    return farthest;
}

// The greatest turn between the end of a piece and the beginning of the next, in degrees; open ways.
double SharpestCorner(const std::vector<DxfEntity>& records)
{
    std::vector<DxfEntity> v;
    for (const DxfEntity& record : records)
        if (record.Kind == "VERTEX")
            v.push_back(record);
    double sharpest = 0;
    for (std::size_t i = 1; i + 1 < v.size(); ++i) {
        const double in =
            std::atan2(v[i].Y1 - v[i - 1].Y1, v[i].X1 - v[i - 1].X1) + 2 * std::atan(v[i - 1].Bulge);
        const double out =
            std::atan2(v[i + 1].Y1 - v[i].Y1, v[i + 1].X1 - v[i].X1) - 2 * std::atan(v[i].Bulge);
        sharpest = std::max(sharpest, std::abs(std::remainder(out - in, 2 * std::numbers::pi)));
    }
    return sharpest * 180 / std::numbers::pi;
}

struct ImportCurves : ImportScene {};

constexpr double Allowed = 0.0105; // the tolerance, and what a Single rounds away

TEST_F(ImportCurves, ASplineIsFollowedWithinTheToleranceWithoutCorners)
{
    const std::array<FlatPoint, 4> p = {{{100, 200}, {150, 300}, {250, 100}, {300, 200}}};
    const auto records = Read({.Entities = BezierSpline("ROUTE1", p)});
    std::vector<FlatPoint> curve;
    for (int i = 0; i <= 1000; ++i)
        curve.push_back(Bezier(p, i / 1000.0));
    const std::vector<FlatPoint> way = PointsOfWay(records);
    EXPECT_LT(FarthestFrom(curve, way), Allowed);
    EXPECT_LT(FarthestFrom(way, curve), Allowed);
    EXPECT_LT(SharpestCorner(records), 0.05);
    EXPECT_NEAR(way.back().X, 300, 1e-4);
    EXPECT_LT(records.size(), 50u) << "a curve of 250 mm needs no more pieces";
}

TEST_F(ImportCurves, TheToleranceIsTheSettings)
{
    const std::array<FlatPoint, 4> p = {{{100, 200}, {150, 300}, {250, 100}, {300, 200}}};
    Config.ImportTolerance = "0.5";
    const auto coarse = Read({.Entities = BezierSpline("ROUTE1", p)});
    Config.ImportTolerance = "0.001";
    const auto fine = Read({.Entities = BezierSpline("ROUTE1", p)});
    EXPECT_LT(coarse.size() * 3, fine.size());
    std::vector<FlatPoint> curve;
    for (int i = 0; i <= 1000; ++i)
        curve.push_back(Bezier(p, i / 1000.0));
    EXPECT_LT(FarthestFrom(curve, PointsOfWay(fine)), 0.0012);
}

TEST_F(ImportCurves, AnEllipseIsFollowedWithinTheTolerance)
{
    const auto records = Read({.Entities = Pair(0, "ELLIPSE") + Pair(8, "ROUTE1") + Pair(10, 400) +
                                           Pair(20, 250) + Pair(11, 60) + Pair(21, 0) + Pair(40, 0.5) +
                                           Pair(41, 0) + Pair(42, 2 * std::numbers::pi)});
    EXPECT_EQ(records.at(0).Flags, 1);
    const double focus = std::sqrt(60.0 * 60 - 30 * 30);
    for (const FlatPoint& point : PointsOfWay(records)) {
        const double sum = std::hypot(point.X - 400 - focus, point.Y - 250) +
                           std::hypot(point.X - 400 + focus, point.Y - 250);
        EXPECT_NEAR(sum, 120, 0.02) << point.X << ' ' << point.Y; // both distances together
    }
}

TEST_F(ImportCurves, AnEllipticArcGoesCounterClockwiseBetweenItsParameters)
{
    const auto records =
        Read({.Entities = Pair(0, "ELLIPSE") + Pair(8, "ROUTE1") + Pair(10, 0) + Pair(20, 0) + Pair(11, 0) +
                          Pair(21, 60) + Pair(40, 0.5) + Pair(41, 0) + Pair(42, std::numbers::pi / 2)});
    const std::vector<FlatPoint> way = PointsOfWay(records);
    EXPECT_NEAR(way.front().Y, 60, 1e-4);
    EXPECT_NEAR(way.back().X, -30, 1e-4);
    EXPECT_EQ(records.at(0).Flags, 0);
}

TEST_F(ImportCurves, AnEllipseOfRatioOneOnABoreLayerIsACircle)
{
    const auto records = Read({.Entities = Pair(0, "ELLIPSE") + Pair(8, "VBORE_Z12") + Pair(10, 40) +
                                           Pair(20, 25) + Pair(11, 17.5) + Pair(21, 0) + Pair(40, 1) +
                                           Pair(41, 0) + Pair(42, 2 * std::numbers::pi)});
    ASSERT_EQ(KindsOf(records), "CIRCLE");
    EXPECT_FLOAT_EQ(records[0].Radius, 17.5F);
    EXPECT_NEAR(records[0].X1, 40, 1e-4);
}

TEST_F(ImportCurves, ARationalCircleOfNinePointsOnABoreLayerIsACircle)
{
    std::string spline = Pair(0, "SPLINE") + Pair(8, "DRILL_Z12") + Pair(70, 4 + 8 + 1) + Pair(71, 2);
    for (const double knot : {0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4})
        spline += Pair(40, knot);
    const double x[] = {1, 1, 0, -1, -1, -1, 0, 1, 1}, y[] = {0, 1, 1, 1, 0, -1, -1, -1, 0};
    for (int i = 0; i < 9; ++i)
        spline += Pair(41, i % 2 == 0 ? 1 : std::sqrt(0.5));
    for (int i = 0; i < 9; ++i)
        spline += Pair(10, 200 + 4 * x[i]) + Pair(20, 100 + 4 * y[i]) + Pair(30, 0);
    const auto records = Read({.Entities = spline});
    ASSERT_EQ(KindsOf(records), "CIRCLE");
    EXPECT_FLOAT_EQ(records[0].Radius, 4.0F);
    EXPECT_NEAR(records[0].X1, 200, 1e-4);
    EXPECT_NEAR(records[0].Y1, 100, 1e-4);
}

TEST_F(ImportCurves, ASplineByFitPointsGoesThroughThem)
{
    std::string spline = Pair(0, "SPLINE") + Pair(8, "ROUTE1") + Pair(70, 8) + Pair(71, 3) + Pair(74, 4);
    const std::vector<FlatPoint> fits = {{0, 0}, {50, 30}, {100, -10}, {160, 20}};
    for (const FlatPoint& fit : fits)
        spline += Pair(11, fit.X) + Pair(21, fit.Y) + Pair(31, 0);
    const auto records = Read({.Entities = spline});
    EXPECT_LT(FarthestFrom(fits, PointsOfWay(records)), Allowed);
    EXPECT_LT(SharpestCorner(records), 0.05);
}

TEST_F(ImportCurves, ASplineOfLinesStaysThoseLines)
{
    std::string spline = Pair(0, "SPLINE") + Pair(8, "ROUTE1") + Pair(70, 8) + Pair(71, 1);
    for (const double knot : {0, 0, 1, 2, 2})
        spline += Pair(40, knot);
    for (const FlatPoint& point : {FlatPoint{0, 0}, FlatPoint{50, 0}, FlatPoint{50, 40}})
        spline += Pair(10, point.X) + Pair(20, point.Y) + Pair(30, 0);
    const auto records = Read({.Entities = spline});
    ASSERT_EQ(KindsOf(records), "POLYLINE VERTEX VERTEX VERTEX SEQEND");
    EXPECT_EQ(records[2].X1, 50);
    EXPECT_EQ(records[1].Bulge, 0);
}

// Curves that are none.

std::string BadSpline(const std::vector<double>& knots, const std::vector<double>& weights)
{
    std::string spline = Pair(0, "SPLINE") + Pair(8, "ROUTE1") + Pair(70, 8) + Pair(71, 3);
    for (const double knot : knots)
        spline += Pair(40, knot);
    for (const double weight : weights)
        spline += Pair(41, weight);
    for (int i = 0; i < 4; ++i)
        spline += Pair(10, i * 10) + Pair(20, i * i) + Pair(30, 0);
    return spline;
}

TEST_F(ImportCurves, SplinesThatAreNoneAreNamedAndLeft)
{
    const std::vector<double> knots = {0, 0, 0, 0, 1, 1, 1, 1};
    const std::pair<std::string, std::string> cases[] = {
        {BadSpline(knots, {1, 0, 0, 1}), "a weight is not above 0"},
        {BadSpline({0, 0, 0, 1, 1, 1}, {}), "its knots and control points do not go together"},
        {BadSpline({0, 0, 0, 0, 0, 0, 0, 0}, {}), "its knots do not rise"},
        {BadSpline({0, 0, 0, 3, 1, 1, 1, 1}, {}), "its knots do not rise"},
        {BadSpline(knots, {1, 1}), "its weights and control points do not go together"},
        {Pair(0, "SPLINE") + Pair(8, "ROUTE1") + Pair(71, 3), "it has no points"},
    };
    for (const auto& [entities, cause] : cases) {
        EXPECT_EQ(KindsOf(Read({.Entities = entities})), "SPLINE") << cause;
        EXPECT_TRUE(Place.Reported("Layer ROUTE1: SPLINE is left as it is: " + cause)) << Place.ReportText();
    }
}

TEST_F(ImportCurves, ASplineOutOfThePlaneIsNamedAndLeft)
{
    std::string spline = BadSpline({0, 0, 0, 0, 1, 1, 1, 1}, {});
    spline.replace(spline.rfind("30\n0"), 4, "30\n9");
    EXPECT_EQ(KindsOf(Read({.Entities = spline})), "SPLINE");
    EXPECT_TRUE(Place.Reported("Layer ROUTE1: SPLINE is left as it is: it does not lie level"))
        << Place.ReportText();
}

TEST_F(ImportCurves, AnEllipseOfRatioZeroIsNamedAndLeft)
{
    EXPECT_EQ(KindsOf(Read({.Entities = Pair(0, "ELLIPSE") + Pair(8, "ROUTE1") + Pair(10, 4) + Pair(20, 2) +
                                        Pair(11, 6) + Pair(21, 0) + Pair(40, 0)})),
              "ELLIPSE");
    EXPECT_TRUE(Place.Reported("Layer ROUTE1: ELLIPSE is left as it is: its axes have no length"))
        << Place.ReportText();
}

TEST_F(ImportCurves, AMillionKnotsAreNamedAndLeft)
{
    constexpr int count = 1'000'000;
    std::string spline = Pair(0, "SPLINE") + Pair(8, "ROUTE1") + Pair(70, 8) + Pair(71, 1);
    spline += "40\n0\n";
    for (int i = 0; i < count; ++i)
        spline += "40\n" + std::to_string(i) + "\n";
    spline += "40\n" + std::to_string(count - 1) + "\n";
    for (int i = 0; i < count; ++i) {
        spline +=
            "10\n" + std::to_string(i % 1000) + "\n20\n" + std::to_string(i / 1000 + (i % 1000) % 2) + "\n";
    }
    EXPECT_EQ(KindsOf(Read({.Entities = spline})), "SPLINE");
    EXPECT_TRUE(Place.Reported("Layer ROUTE1: SPLINE is left as it is: it has no length, or too many bends"))
        << Place.ReportText();
}

} // namespace
} // namespace kv::test
