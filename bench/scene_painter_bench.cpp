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
    return SceneOf(steps);
}

const ScenePainter& LargePainter()
{
    static const ScenePainter painter(LargeScene());
    return painter;
}

// By the zoom against the whole sheet; the view moves with each frame.
void FrameOfLargeScene(benchmark::State& state)
{
    QImage image(1280, 900, QImage::Format_RGB32);
    const QRectF area = image.rect();
    const ScenePainter& painter = LargePainter();
    const SheetPlace fitted = PlaceToShow(painter.Picture.Sheet, area);
    const double zoom = static_cast<double>(state.range(0));
    int frame = 0;
    SceneLook look;
    for (auto _ : state) {
        const double scale = fitted.Scale * zoom * (1 + 0.01 * (frame % 10));
        const PathPoint middle{PanelLength / 2 + 7.0 * (frame % 20), PanelWidth / 2 - 5.0 * (frame % 20)};
        const SheetPlace place{{area.center().x() - middle.X * scale, area.center().y() + middle.Y * scale},
                               scale};
        QPainter to(&image);
        painter.Paint(to, area, place, look, ColoursOfScene(false));
        ++frame;
    }
    state.counters["items"] = static_cast<double>(painter.Picture.Items.size());
}
BENCHMARK(FrameOfLargeScene)->Arg(1)->Arg(2)->Arg(4)->Arg(8)->Arg(32)->Unit(benchmark::kMillisecond);

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
