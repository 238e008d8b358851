// The works in the order of the program, each with the way to the next.
#include "scene/run_time.h"

#include <cmath>

namespace kv {

namespace {

constexpr double SecondsOfMinute = 60;

double TimeOfWay(double length, double feed)
{
    return length / feed * SecondsOfMinute;
}

void AddWork(RunFigures& figures, const SceneItem& item)
{
    switch (item.Shape) {
    case WorkShape::BoreRow:
        ++figures.Stops;
        figures.Seconds += SecondsOfBore;
        return;
    case WorkShape::Bore:
    case WorkShape::Plunge:
        ++figures.Bores;
        figures.Seconds += SecondsOfBore;
        return;
    case WorkShape::Saw:
        ++figures.Saws;
        break;
    case WorkShape::Route:
        ++figures.Routes;
        break;
    }
    figures.Seconds += SecondsOfLowering;
    for (const Move& move : item.Way) {
        const double length = LengthOf(move);
        const double named = move.Feed > 0 ? move.Feed : DefaultFeed;
        figures.PathLength += length;
        figures.Seconds += TimeOfWay(length, item.Shape == WorkShape::Saw ? SawFeed : named);
    }
}

} // namespace

void RunFigures::Add(const RunFigures& other)
{
    Bores += other.Bores;
    Stops += other.Stops;
    Saws += other.Saws;
    Routes += other.Routes;
    PathLength += other.PathLength;
    Seconds += other.Seconds;
}

double LengthOf(const Move& move)
{
    if (!move.IsArc)
        return Between(move.From, move.To);
    return Between(move.Centre, move.From) * std::fabs(move.Sweep) * Degree;
}

RunFigures FiguresOf(const Scene& scene)
{
    RunFigures figures;
    for (std::size_t i = 0; i < scene.Items.size(); ++i) {
        if (i > 0 && scene.Items[i - 1].On != scene.Items[i].On)
            figures.Seconds += SecondsOfPlaneChange;
        AddWork(figures, scene.Items[i]);
    }
    for (const SceneRapid& rapid : scene.Rapids)
        figures.Seconds += TimeOfWay(Between(rapid.From, rapid.To), RapidFeed);
    return figures;
}

} // namespace kv
