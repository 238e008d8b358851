// How long a machine is busy with a program, from its feeds. An estimate: how a machine speeds up, changes
// its tools and moves its head is its own.
#pragma once

#include <string>

#include "scene/scene.h"

namespace kv {

struct TimeRates {
    double RapidSpeed = 30000;  // mm a minute, above the panel
    double FeedNotNamed = 3000; // mm a minute, where the program leaves the feed to the machine
    double Plunge = 1.5;        // s for a bore, a stop of the head or the way into the panel
};

double EstimatedSeconds(const Scene& scene, const TimeRates& rates = {});
// "about 2 min 10 s, an estimate"; above a minute to ten seconds.
std::string EstimateText(double seconds);

} // namespace kv
