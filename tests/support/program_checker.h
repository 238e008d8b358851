// Walks what a machine would run and tells what it could not: over the lines of a program, and over
// the route records as the writers get them. A fault is a text that names its line or record; an
// empty list is a sound program.
#pragma once

#include <string>
#include <vector>

#include "state/run.h"

namespace kv::test {

struct ProgramCheck {
    double Tolerance = 0.01; // drawing units, on top of what three decimals of an end angle leave open
};
// Every number word is a number; every move belongs to a route; an arc has a radius and a length, its
// end lies on its circle, a bulge's chord is no longer than its diameter.
std::vector<std::string> ProgramFaults(const std::vector<std::string>& lines, const ProgramCheck& check = {});

// Where a program's lines lead the router, one point a line, in drawing coordinates: edge views by
// Run's limits.
struct ToolPoint {
    std::size_t Line = 0; // index in the program
    bool Opens = false;   // a G88
    double X = 0, Y = 0;
    double Slack = 0; // what three decimals of the end angles leave open
};
std::vector<ToolPoint> ToolPath(const std::vector<std::string>& lines);

struct RouteCheck {
    double Tolerance = 0.01;
    // Off for circular pockets, whose half turns end by centre and angle beside their own point.
    bool EndsAtPoints = true;
    // Off for rectangular pockets, whose loops begin beside the end of the one in front (a first move
    // that is an arc then has the wrong radius), and for lines that were linked across a gap.
    bool Joined = true;
    // Off where the machine's origin mirrored the points: angles stay as they were.
    bool AnglesHold = true;
};
// Records from 1 on. All numbers finite; inside a route an arc stands where the record in front ends;
// its end lies on its circle, at its end angle; it has a radius and a length.
std::vector<std::string> RouteFaults(const std::vector<RouteSegment>& records, const RouteCheck& check = {});
// The same without what cannot be helped: the arc that goes on round a joined circle to the next path, where
// that path begins at the very place at which the circle ends, save for the last bits of an arc's drawn end.
std::vector<std::string> UnforcedFaults(const std::vector<RouteSegment>& records,
                                        const RouteCheck& check = {});
std::vector<RouteSegment> CurrentRoutes(); // a copy of Run's, blank element 0 included

// The program leads the router along the points of the records, in their order, and nowhere else.
// Routes of one point are left out on both sides (a bore of a router tool is a G88 too), and there may
// be no route circles and no fit points.
std::vector<std::string> PathFaults(const std::vector<std::string>& lines,
                                    const std::vector<RouteSegment>& records, const RouteCheck& check = {});

struct LeadCheck {
    bool In = true, Out = true; // which ends of the routes are leads
    double Angle = 0.5;         // degrees
    // The lead's far end lies left of the way for G41, right of it for G42. Off for a ramp that runs
    // along the contour.
    bool OnToolSide = true;
};
// Arcs at the ends of routes of more than one element meet their neighbours without a corner and keep
// to the side of the compensation.
std::vector<std::string> LeadFaults(const std::vector<RouteSegment>& records, const LeadCheck& check = {});

} // namespace kv::test
