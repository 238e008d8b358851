// Ways by their lengths and feeds, on the sheet: it shows lengths as they are.
#include "scene/run_time.h"

#include <cmath>

namespace kv {

namespace {

double LengthOf(const Move& move)
{
    if (move.IsArc)
        return std::fabs(move.Sweep) * Degree * Between(move.Centre, move.From);
    return Between(move.From, move.To);
}

} // namespace

double EstimatedSeconds(const Scene& scene, const TimeRates& rates)
{
    double minutes = 0;
    for (const SceneItem& item : scene.Items) {
        minutes += rates.Plunge / 60;
        if (item.Shape == WorkShape::BoreRow) // drilled at once
            continue;
        for (const Move& move : item.Way)
            minutes += LengthOf(move) / (move.Feed > 0 ? move.Feed : rates.FeedNotNamed);
    }
    for (const SceneRapid& rapid : scene.Rapids)
        minutes += Between(rapid.From, rapid.To) / rates.RapidSpeed;
    return 60 * minutes;
}

std::string EstimateText(double seconds)
{
    constexpr double mostTold = 1e8;
    if (!(seconds >= 0) || seconds > mostTold)
        return "no estimate of the time";
    const long long whole = std::llround(seconds);
    if (whole < 60)
        return "about " + std::to_string(whole) + " s, an estimate";
    const long long tens = (whole + 5) / 10 * 10;
    if (tens < 3600)
        return "about " + std::to_string(tens / 60) + " min " + std::to_string(tens % 60) + " s, an estimate";
    const long long minutes = (whole + 30) / 60;
    return "about " + std::to_string(minutes / 60) + " h " + std::to_string(minutes % 60) +
           " min, an estimate";
}

} // namespace kv
