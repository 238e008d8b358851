// Closed ways of lines and arcs, and what they are as short chords on a grid of whole numbers: the form
// in which crossings are found exactly and insets are computed.
#pragma once

#include <cstdint>
#include <vector>

#include "geometry/path_spans.h"

namespace kv {

// The last vertex leads back to the first.
using ClosedPath = std::vector<PathVertex>;

// With its sign: above 0 counter-clockwise. Arcs count whole.
double SignedArea(const ClosedPath& path);
ClosedPath ReversedPath(const ClosedPath& path);

struct WholePoint {
    std::int64_t X = 0, Y = 0; // below 2^29 either way, so that products of differences fit
    bool operator==(const WholePoint&) const = default;
};

// A chord of a span.
struct FlatChord {
    WholePoint From, To;
    std::int32_t Path = 0, Span = 0; // of the paths; spans count through all of them
    std::int32_t Place = 0;          // among the span's chords, from 0
    std::int32_t Next = 0;           // the chord that follows on the path
};

// Paths as chords. A chord leaves its arc by at most the tolerance (drawing units).
struct FlatPaths {
    FlatPaths(const std::vector<ClosedPath>& paths, double tolerance);

    PlanePoint ToPlane(double x, double y) const { return {x / Scale + Middle.X, y / Scale + Middle.Y}; }
    WholePoint ToGrid(const PlanePoint& point) const;

    std::vector<FlatChord> Chords;
    std::vector<PathSpan> Spans;
    std::vector<std::int32_t> NextSpan;  // on the same path
    std::vector<std::size_t> FirstChord; // of each path, and one behind the last
    double Scale = 1;                    // grid steps in a drawing unit, a power of two
    PlanePoint Middle;

  private:
    void AddPath(const ClosedPath& path, std::int32_t number, double tolerance);
};

// Two chords that meet elsewhere than at the end of one and the beginning of the next: the paths cross,
// touch or run back along themselves.
struct PathMeeting {
    std::int32_t FirstPath = 0, SecondPath = 0;
    PlanePoint At; // near the place
};
// One for each pair of paths at most.
std::vector<PathMeeting> MeetingsOf(const FlatPaths& paths);

// Whether the point lies inside the path, by its chords.
bool IsInside(const FlatPaths& paths, std::int32_t path, const PlanePoint& point);

} // namespace kv
