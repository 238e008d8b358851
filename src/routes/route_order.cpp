// Three sweeps over the paths, by the kinds 2, 3 and 1: a path with one free end goes to the front,
// so that the chainer begins there. Then the start marks (Kind -4 and the record behind it) go to the
// head of the list. Relies on RouteSegments in drawing order; leaves it reordered.
#include "routes/route_order.h"

#include <algorithm>
#include <cmath>

#include "geometry/point_grid.h"
#include "platform/text.h"
#include "routes/route_paths.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr Int SweepKinds[] = {2, 3, 1};
constexpr double TouchReach = 0.005; // drawing units, in X and in Y

struct Piece {
    Long First = 0, Last = 0;
};

bool Touches(const PlanePoint& a, const GridPoint& b)
{
    return std::fabs(b.X - a.X) < TouchReach && std::fabs(b.Y - a.Y) < TouchReach;
}

std::vector<Piece> FindPieces()
{
    std::vector<Piece> pieces;
    for (Long i = 1; i <= RouteSegments.Last(); ++i)
        if (RouteSegments[i].Kind < 0)
            pieces.push_back({i, LastOfPath(i)});
    return pieces;
}

// Both ends of piece n are the points 2n and 2n + 1.
PointGrid GridOfEnds(const std::vector<Piece>& pieces)
{
    std::vector<GridPoint> ends;
    ends.reserve(pieces.size() * 2);
    for (const Piece& piece : pieces) {
        ends.push_back({RouteSegments[piece.First].X, RouteSegments[piece.First].Y});
        ends.push_back({RouteSegments[piece.Last].X, RouteSegments[piece.Last].Y});
    }
    return PointGrid(std::move(ends));
}

// Whether an end of another piece of the pass lies at the record.
bool AnotherTouches(const std::vector<Piece>& pieces, const PointGrid& ends, std::size_t own, Long record)
{
    const PlanePoint at = PointOf(RouteSegments[record]);
    const Long pass = RouteSegments[pieces[own].First].Pass;
    return ends.Walk([&](const GridBox& box) { return Touches(at, box.Nearest(at.X, at.Y)); },
                     [&](Long end) {
                         const auto piece = static_cast<std::size_t>(end / 2);
                         return piece != own && RouteSegments[pieces[piece].First].Pass == pass &&
                                Touches(at, ends.At(end));
                     });
}

// Returns whether there is any.
bool FlagFreeEnds(Int kind)
{
    const auto opens = [kind](const RouteSegment& record) { return record.Kind == -kind; };
    if (std::none_of(RouteSegments.begin(), RouteSegments.end(), opens))
        return false;
    bool any = false;
    const std::vector<Piece> pieces = FindPieces();
    const PointGrid ends = GridOfEnds(pieces);
    for (std::size_t n = pieces.size(); n-- > 0;) {
        const Piece& piece = pieces[n];
        if (!opens(RouteSegments[piece.First]))
            continue;
        if (piece.First == piece.Last)
            return any; // nothing behind it: the sweep ends
        if (AnotherTouches(pieces, ends, n, piece.First) == AnotherTouches(pieces, ends, n, piece.Last))
            continue;
        RouteSegments[piece.First].Flag = 1;
        RouteSegments[piece.Last].Flag = 1;
        any = true;
    }
    return any;
}

// Only the two flagged records of a path move, not what lies between them.
void BringFlaggedForward()
{
    std::vector<RouteSegment> ordered;
    ordered.reserve(static_cast<std::size_t>(RouteSegments.Last()));
    for (const Int flag : {Int{1}, Int{0}}) {
        for (Long i = 1; i <= RouteSegments.Last(); ++i)
            if (RouteSegments[i].Flag == flag)
                ordered.push_back(RouteSegments[i]);
    }
    for (RouteSegment& record : ordered)
        record.Flag = 0;
    StoreSegments(ordered);
}

// A mark with a Z of its own is a line down to the contour; any other stays a mark.
void SettleStartMark(RouteSegment& first, RouteSegment& second)
{
    if (first.ParamA == 0) {
        second.Kind = 4;
        return;
    }
    first.Kind = -1;
    second.Kind = 1;
    second.Z = 0;
    if (first.ParamB == 0)
        first.Z = first.ParamA;
    for (RouteSegment* const record : {&first, &second}) // a width would be read as a bulge
        record->Aux1 = record->Aux2 = record->ParamA = record->ParamB = 0;
}

// Each mark goes in front of the one before.
void BringStartMarksForward()
{
    std::vector<RouteSegment> marks; // in list order
    std::vector<RouteSegment> others;
    for (Long i = 1; i <= RouteSegments.Last(); ++i) {
        if (RouteSegments[i].Kind != -4 || i == RouteSegments.Last()) {
            others.push_back(RouteSegments[i]);
            continue;
        }
        marks.push_back(RouteSegments[i]);
        marks.push_back(RouteSegments[i + 1]);
        SettleStartMark(marks[marks.size() - 2], marks.back());
        ++i;
    }
    std::vector<RouteSegment> ordered;
    ordered.reserve(marks.size() + others.size());
    for (std::size_t n = marks.size(); n > 0; n -= 2) {
        ordered.push_back(marks[n - 2]);
        ordered.push_back(marks[n - 1]);
    }
    ordered.insert(ordered.end(), others.begin(), others.end());
    StoreSegments(ordered);
}

} // namespace

void OrderRouteChains()
{
    for (const Int kind : SweepKinds) {
        if (FlagFreeEnds(kind))
            BringFlaggedForward();
    }
    if (UpperCase(Config.SPDA) != "NO")
        BringStartMarksForward();
}

} // namespace kv
