// Milliseconds a frame of a large program in the window: 32,000 bores and 64,000 moves of the router, as a
// person zooms and moves the view. A program of its own, since it alone needs the toolkit.
#include <benchmark/benchmark.h>

#include <cmath>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "machine/steps.h"
#include "window/scene_painter.h"

namespace {

using namespace kv;

constexpr int BoreColumns = 200, BoreRows = 160;        // 32,000
constexpr int Contours = 1000, LinesOfContour = 60;     // and 4 arcs: 64,000 moves
constexpr double PanelLength = 2800, PanelWidth = 2070; // mm

void AddContour(MachineSteps& steps, double x, double y)
{
    constexpr double radius = 24;
    RouterCut cut;
    cut.Radius = 4;
    cut.Side = 1;
    cut.Tool = "0171";
    const auto at = [&](double turn) {
        return PathPoint{x + radius * std::cos(turn), y + radius * std::sin(turn)};
    };
    constexpr int moves = LinesOfContour + 4;
    for (int i = 0; i < moves; ++i) {
        Move move;
        move.From = at(2 * 3.14159265358979 * i / moves);
        move.To = at(2 * 3.14159265358979 * (i + 1) / moves);
        move.IsArc = i % 16 == 0;
        move.Centre = {x, y};
        move.Sweep = 360.0 / moves;
        move.DepthFrom = move.DepthTo = 8;
        move.Feed = 5000;
        move.Line = static_cast<std::size_t>(i);
        cut.Moves.push_back(move);
    }
    cut.Start = cut.Moves.front().From;
    cut.StartDepth = 8;
    steps.Cuts.push_back(std::move(cut));
}

// The entities that the program is made of: a circle for each bore, a polyline for each contour.
void AddDrawing(const MachineSteps& steps, Scene& scene)
{
    for (const Bore& bore : steps.Bores) {
        Move circle;
        circle.IsArc = true;
        circle.Centre = bore.At;
        circle.From = circle.To = {bore.At.X + bore.Diameter / 2, bore.At.Y};
        circle.Sweep = 360;
        scene.Drawn.push_back({{circle}, false, {}, scene.Drawn.size() + 1});
    }
    for (const RouterCut& cut : steps.Cuts)
        scene.Drawn.push_back({cut.Moves, false, {}, scene.Drawn.size() + 1});
}

Scene LargeScene()
{
    MachineSteps steps;
    steps.Length = PanelLength;
    steps.Width = PanelWidth;
    steps.Thickness = 19;
    for (int i = 0; i < BoreColumns * BoreRows; ++i) {
        Bore bore;
        bore.At = {10 + i % BoreColumns * (PanelLength - 20) / BoreColumns,
                   10 + i / BoreColumns * (PanelWidth - 20) / BoreRows};
        bore.Diameter = i % 3 == 0 ? 8 : 5;
        bore.Depth = i % 2 == 0 ? 19 : 13;
        bore.Line = static_cast<std::size_t>(i);
        steps.Bores.push_back(bore);
    }
    for (int i = 0; i < Contours; ++i)
        AddContour(steps, 40 + i % 40 * 69.0, 40 + i / 40 * 80.0);
    Scene scene = SceneOf(steps);
    AddDrawing(steps, scene);
    return scene;
}

const ScenePainter& LargePainter()
{
    static const ScenePainter painter(LargeScene());
    return painter;
}

// By the zoom against the whole sheet; the view moves with each frame.
void PaintFrames(benchmark::State& state, PaintWith care, const SceneLook& look)
{
    QImage image(1280, 900, QImage::Format_RGB32);
    const QRectF area = image.rect();
    const ScenePainter& painter = LargePainter();
    const SheetPlace fitted = PlaceToShow(painter.Picture.Sheet, area);
    const double zoom = static_cast<double>(state.range(0));
    int frame = 0;
    for (auto _ : state) {
        const double scale = fitted.Scale * zoom * (1 + 0.01 * (frame % 10));
        const PathPoint middle{PanelLength / 2 + 7.0 * (frame % 20), PanelWidth / 2 - 5.0 * (frame % 20)};
        const SheetPlace place{{area.center().x() - middle.X * scale, area.center().y() + middle.Y * scale},
                               scale};
        QPainter to(&image);
        painter.Paint(to, area, place, look, ColoursOfScene(false), care);
        ++frame;
    }
    state.counters["items"] = static_cast<double>(painter.Picture.Items.size());
}
void MovingFrame(benchmark::State& state)
{
    PaintFrames(state, PaintWith::Moving, {});
}

void FrameAtRest(benchmark::State& state)
{
    PaintFrames(state, PaintWith::Screen, {});
}

// The bores of one kind, and the contours.
void MovingFrameWithALitGroup(benchmark::State& state)
{
    SceneLook look;
    look.LitGroup = static_cast<std::size_t>(state.range(1));
    PaintFrames(state, PaintWith::Moving, look);
}

void AllZooms(benchmark::internal::Benchmark* frames)
{
    for (const int zoom : {1, 2, 4, 8, 12, 16, 24, 32, 64})
        frames->Arg(zoom);
    frames->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
}

void AllZoomsAndGroups(benchmark::internal::Benchmark* frames)
{
    const auto last = static_cast<int>(LargePainter().Picture.Groups.size()) - 1;
    for (const int zoom : {1, 4, 8, 16, 32})
        for (const int group : {0, last})
            frames->Args({zoom, group});
    frames->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
}
BENCHMARK(MovingFrame)->Apply(AllZooms);
BENCHMARK(FrameAtRest)->Apply(AllZooms);
BENCHMARK(MovingFrameWithALitGroup)->Apply(AllZoomsAndGroups);

void LayDownLargeScene(benchmark::State& state)
{
    const Scene scene = LargeScene();
    for (auto _ : state) {
        ScenePainter painter(scene);
        benchmark::DoNotOptimize(&painter);
    }
}
BENCHMARK(LayDownLargeScene)->Unit(benchmark::kMillisecond);

} // namespace

int main(int count, char** words)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(count, words);
    benchmark::Initialize(&count, words);
    if (benchmark::ReportUnrecognizedArguments(count, words))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
