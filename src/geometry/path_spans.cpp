#include "geometry/path_spans.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/trigonometry.h"

namespace kv {

namespace {

std::vector<PlanePoint> CrossingsOfLines(const PathSpan& a, const PathSpan& b)
{
    const PlanePoint along{a.To.X - a.From.X, a.To.Y - a.From.Y};
    const PlanePoint across{b.To.X - b.From.X, b.To.Y - b.From.Y};
    const double turn = along.X * across.Y - along.Y * across.X;
    if (turn == 0)
        return {};
    const double share = ((b.From.X - a.From.X) * across.Y - (b.From.Y - a.From.Y) * across.X) / turn;
    return {{a.From.X + share * along.X, a.From.Y + share * along.Y}};
}

std::vector<PlanePoint> CrossingsOnLine(const PathSpan& line, const PathSpan& arc)
{
    const double length = Distance(line.From, line.To);
    if (!(length > 0))
        return {};
    const PlanePoint along{(line.To.X - line.From.X) / length, (line.To.Y - line.From.Y) / length};
    const double place = (arc.Centre.X - line.From.X) * along.X + (arc.Centre.Y - line.From.Y) * along.Y;
    const PlanePoint foot{line.From.X + place * along.X, line.From.Y + place * along.Y};
    const double off = Distance(foot, arc.Centre);
    const double square = (arc.Radius - off) * (arc.Radius + off);
    if (square < 0)
        return {};
    const double half = std::sqrt(square);
    return {{foot.X - half * along.X, foot.Y - half * along.Y},
            {foot.X + half * along.X, foot.Y + half * along.Y}};
}

std::vector<PlanePoint> CrossingsOfCircles(const PathSpan& a, const PathSpan& b)
{
    const double apart = Distance(a.Centre, b.Centre);
    if (!(apart > 0))
        return {};
    const double along = (a.Radius * a.Radius - b.Radius * b.Radius + apart * apart) / (2 * apart);
    const double square = (a.Radius - along) * (a.Radius + along);
    if (square < 0)
        return {};
    const double half = std::sqrt(square);
    const PlanePoint to{(b.Centre.X - a.Centre.X) / apart, (b.Centre.Y - a.Centre.Y) / apart};
    const PlanePoint foot{a.Centre.X + along * to.X, a.Centre.Y + along * to.Y};
    return {{foot.X - half * to.Y, foot.Y + half * to.X}, {foot.X + half * to.Y, foot.Y - half * to.X}};
}

} // namespace

PathSpan SpanBetween(const PathVertex& from, const PlanePoint& to)
{
    PathSpan span{from.At, to, false, false, {}, 0};
    const PlanePoint chord{to.X - from.At.X, to.Y - from.At.Y};
    const double length = Distance(from.At, to);
    if (from.Bulge == 0 || !(length > 0))
        return span;
    // The centre lies on the chord's bisector, left of a counter-clockwise span below a half turn.
    const double ahead = (1 - from.Bulge * from.Bulge) / (4 * from.Bulge);
    span.IsArc = true;
    span.CounterClockwise = from.Bulge > 0;
    span.Centre = {from.At.X + chord.X / 2 - chord.Y * ahead, from.At.Y + chord.Y / 2 + chord.X * ahead};
    span.Radius = Distance(span.Centre, from.At);
    return span;
}

double AngleOfVector(double y, double x)
{
    if (x == 0 && y == 0)
        return 0;
    if (std::fabs(y) > std::fabs(x))
        return (y > 0 ? std::numbers::pi : -std::numbers::pi) / 2 - ArcTangent(x / y);
    const double angle = ArcTangent(y / x);
    if (x > 0)
        return angle;
    return y < 0 ? angle - std::numbers::pi : angle + std::numbers::pi;
}

double SweepOfArc(const PathSpan& arc)
{
    const double from = AngleOfVector(arc.From.Y - arc.Centre.Y, arc.From.X - arc.Centre.X);
    const double to = AngleOfVector(arc.To.Y - arc.Centre.Y, arc.To.X - arc.Centre.X);
    const double sweep = arc.CounterClockwise ? to - from : from - to;
    return sweep < 0 ? sweep + 2 * std::numbers::pi : sweep;
}

PlanePoint NearestOnSpan(const PathSpan& span, const PlanePoint& point)
{
    if (!span.IsArc) {
        const PlanePoint along{span.To.X - span.From.X, span.To.Y - span.From.Y};
        const double square = along.X * along.X + along.Y * along.Y;
        if (!(square > 0))
            return span.From;
        const double place = ((point.X - span.From.X) * along.X + (point.Y - span.From.Y) * along.Y) / square;
        const double kept = std::clamp(place, 0.0, 1.0);
        return {span.From.X + kept * along.X, span.From.Y + kept * along.Y};
    }
    const double apart = Distance(span.Centre, point);
    if (!(apart > 0))
        return span.From;
    const double share = span.Radius / apart;
    const PlanePoint onCircle{span.Centre.X + share * (point.X - span.Centre.X),
                              span.Centre.Y + share * (point.Y - span.Centre.Y)};
    PathSpan part = span;
    part.To = onCircle;
    if (SweepOfArc(part) <= SweepOfArc(span))
        return onCircle;
    return Distance(point, span.From) < Distance(point, span.To) ? span.From : span.To;
}

std::vector<PlanePoint> CrossingsOfWholes(const PathSpan& a, const PathSpan& b)
{
    if (a.IsArc && b.IsArc)
        return CrossingsOfCircles(a, b);
    if (a.IsArc)
        return CrossingsOnLine(b, a);
    return b.IsArc ? CrossingsOnLine(a, b) : CrossingsOfLines(a, b);
}

} // namespace kv
