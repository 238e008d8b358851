// Blocks and curves that another library (ezdxf) has taken apart, against the import: each entity of the one
// is in the other, and its points along a curve are on the way that the import fits.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <numbers>

#include "import/import_scene.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

struct ExplodedBlocks : ImportScene {
    static std::string BytesOf(const std::string& name)
    {
        std::ifstream stream(fs::path(KORVANTI_SOURCE_DIR) / "tests" / "data" / "writers" / name,
                             std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
};

bool IsNear(double a, double b)
{
    return std::abs(a - b) <= 2e-3;
}

bool IsSameAngle(double a, double b)
{
    return std::abs(std::remainder(a - b, 360)) <= 1e-2;
}

// A line may be written from either end.
bool IsSameEntity(const DxfEntity& a, const DxfEntity& b)
{
    if (a.Kind.Trimmed() != b.Kind.Trimmed() || a.Layer.Trimmed() != b.Layer.Trimmed())
        return false;
    const bool here = IsNear(a.X1, b.X1) && IsNear(a.Y1, b.Y1);
    if (a.Kind == "LINE")
        return (here && IsNear(a.X2, b.X2) && IsNear(a.Y2, b.Y2)) ||
               (IsNear(a.X1, b.X2) && IsNear(a.Y1, b.Y2) && IsNear(a.X2, b.X1) && IsNear(a.Y2, b.Y1));
    if (a.Kind == "ARC")
        return here && IsNear(a.Radius, b.Radius) && IsSameAngle(a.StartAngle, b.StartAngle) &&
               IsSameAngle(a.EndAngle, b.EndAngle);
    if (a.Kind == "CIRCLE")
        return here && IsNear(a.Radius, b.Radius);
    return here && IsNear(a.Bulge, b.Bulge);
}

TEST_F(ExplodedBlocks, AreWhereTheOtherLibraryBringsThem)
{
    const auto opened = ReadBytes(BytesOf("nested.dxf"), "full");
    const auto exploded = ReadBytes(BytesOf("exploded.dxf"), "full"); // mirrored ones are written from below
    EXPECT_EQ(opened.size(), exploded.size());
    ASSERT_GT(opened.size(), 200u);
    std::map<std::string, int> kinds;
    std::vector<bool> isUsed(opened.size());
    for (const DxfEntity& wanted : exploded) {
        if (wanted.Kind == "POLYLINE" || wanted.Kind == "SEQEND")
            continue;
        bool found = false;
        for (std::size_t i = 0; i < opened.size() && !found; ++i)
            if (!isUsed[i] && IsSameEntity(opened[i], wanted))
                found = isUsed[i] = true;
        EXPECT_TRUE(found) << wanted.Kind.Trimmed() << ' ' << wanted.X1 << ' ' << wanted.Y1;
        ++kinds[std::string(wanted.Kind.Trimmed())];
    }
    for (const char* const kind : {"LINE", "POINT", "CIRCLE", "ARC", "VERTEX"})
        EXPECT_GT(kinds[kind], 10) << kind;
}

struct DrawnPiece {
    double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0, Bulge = 0;
};

double DistanceFrom(const DrawnPiece& piece, double x, double y)
{
    const double dx = piece.X2 - piece.X1, dy = piece.Y2 - piece.Y1, square = dx * dx + dy * dy;
    const double s = std::clamp(((x - piece.X1) * dx + (y - piece.Y1) * dy) / square, 0.0, 1.0);
    if (piece.Bulge == 0)
        return std::hypot(piece.X1 + s * dx - x, piece.Y1 + s * dy - y);
    const double half = (1 - piece.Bulge * piece.Bulge) / (4 * piece.Bulge);
    const double cx = (piece.X1 + piece.X2) / 2 - dy * half, cy = (piece.Y1 + piece.Y2) / 2 + dx * half;
    const double ends =
        std::min(std::hypot(piece.X1 - x, piece.Y1 - y), std::hypot(piece.X2 - x, piece.Y2 - y));
    double turn = std::atan2(y - cy, x - cx) - std::atan2(piece.Y1 - cy, piece.X1 - cx);
    turn = std::remainder(turn, 2 * std::numbers::pi);
    const double sweep = 4 * std::atan(piece.Bulge);
    if (sweep > 0 && turn < 0)
        turn += 2 * std::numbers::pi;
    if (sweep < 0 && turn > 0)
        turn -= 2 * std::numbers::pi;
    if (std::abs(turn) > std::abs(sweep))
        return ends;
    return std::min(ends, std::abs(std::hypot(x - cx, y - cy) - std::hypot(piece.X1 - cx, piece.Y1 - cy)));
}

// By layers, of which each curve has its own.
std::map<std::string, std::vector<DxfEntity>> VerticesByLayer(const std::vector<DxfEntity>& records)
{
    std::map<std::string, std::vector<DxfEntity>> vertices;
    for (const DxfEntity& record : records) {
        auto& layer = vertices[std::string(record.Layer.Trimmed())];
        if (record.Kind == "VERTEX")
            layer.push_back(record);
    }
    return vertices;
}

TEST_F(ExplodedBlocks, CurvesRunThroughTheOtherLibrarysPoints)
{
    const auto fitted = ReadBytes(BytesOf("curves.dxf"), "full");
    std::map<std::string, bool> isClosed;
    for (const DxfEntity& record : fitted)
        if (record.Kind == "POLYLINE")
            isClosed[std::string(record.Layer.Trimmed())] = (record.Flags & 1) != 0;
    const auto ways = VerticesByLayer(fitted);
    const auto points = VerticesByLayer(ReadBytes(BytesOf("flattened.dxf"), "plain"));
    EXPECT_GE(points.size(), 12u);
    for (const auto& [layer, wanted] : points) {
        ASSERT_TRUE(ways.contains(layer)) << layer;
        std::vector<DxfEntity> vertices = ways.at(layer);
        if (isClosed[layer])
            vertices.push_back(vertices.front());
        double farthest = 0;
        for (const DxfEntity& point : wanted) {
            double nearest = 1e30;
            for (std::size_t i = 0; i + 1 < vertices.size(); ++i) {
                const DxfEntity &a = vertices[i], &b = vertices[i + 1];
                nearest =
                    std::min(nearest, DistanceFrom({a.X1, a.Y1, b.X1, b.Y1, a.Bulge}, point.X1, point.Y1));
            }
            farthest = std::max(farthest, nearest);
        }
        EXPECT_LE(farthest, 0.0105) << layer;
        EXPECT_GT(wanted.size(), vertices.size()) << layer;
    }
}

} // namespace
} // namespace kv::test
