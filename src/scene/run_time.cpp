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
        ++figures.Stops;
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

// One line of a program that stops the head once drills all its bores together.
bool IsOfOneStop(const SceneItem& before, const SceneItem& item)
{
    return before.Shape == WorkShape::Bore && item.Shape == WorkShape::Bore && before.Line == item.Line;
}

double TimeBetween(const SceneItem& before, const SceneItem& item)
{
    if (before.On != item.On)
        return SecondsOfPlaneChange;
    return TimeOfWay(Between(before.Way.empty() ? before.At : before.Way.back().To, item.At), RapidFeed);
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
        const SceneItem& item = scene.Items[i];
        if (i > 0 && IsOfOneStop(scene.Items[i - 1], item)) {
            ++figures.Bores;
            continue;
        }
        if (i > 0)
            figures.Seconds += TimeBetween(scene.Items[i - 1], item);
        AddWork(figures, item);
    }
    return figures;
}

std::string TimeForPeople(double seconds)
{
    const auto whole = static_cast<long long>(std::llround(std::min(seconds, 1e12)));
    const std::string rest = std::to_string(whole % 60);
    return "about " + std::to_string(whole / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}

} // namespace kv
