// What a program does in figures, and an estimate of the time that it takes.
#pragma once

#include <cstddef>
#include <string>

#include "scene/scene.h"

namespace kv {

// What the estimate takes a machine to do. None of it is in a program; a machine may be twice as fast or
// half.
constexpr double SecondsOfBore = 2.5;      // down and up again: a bore, a plunge, a stop of the drill head
constexpr double SecondsOfLowering = 2;    // a router or saw, down and up again
constexpr double SecondsOfPlaneChange = 3; // from one plane to another
constexpr double SawFeed = 10'000;         // mm a minute
constexpr double DefaultFeed = 5'000;      // mm a minute, of a move whose program names none
constexpr double RapidFeed = 30'000;       // mm a minute, between works of one plane

struct RunFigures {
    std::size_t Bores = 0; // plunges of a router too; none of a stop whose drills are not known
    std::size_t Stops = 0; // times that drills come down: one for all bores that a line drills together
    std::size_t Saws = 0, Routes = 0;
    double PathLength = 0; // mm that routers and saws go in the wood, as programmed
    double Seconds = 0;    // an estimate

    void Add(const RunFigures& other);
};

// Feeds count as millimetres a minute, also those of a program in inches. Accelerations, tool changes and the
// way to the first work are left out.
RunFigures FiguresOf(const Scene& scene);

std::string TimeForPeople(double seconds); // "about 1:05" in minutes and seconds

double LengthOf(const Move& move); // mm, of a line or an arc

} // namespace kv
