#include "support/proof/asked.h"

#include <algorithm>
#include <cmath>

namespace kv::test {

namespace {

constexpr double InRadians = 3.14159265358979323846 / 180;
constexpr double Flat = 0.002;        // mm that a chord may lie beside its arc
constexpr double HalfThread = 0.0005; // mm: half the cut that parts a band along its way
constexpr double NearlyThere = 0.005; // mm that the tool's centre may lie nearer to a wall
constexpr double Smooth = 0.5;        // degrees that a seam may turn and still count as none
constexpr double CloseStep =
    1.4; // radii of the tool from loop to loop, below which a pocket is cleared all over
constexpr double Slack = 0.05;    // mm
constexpr double JustFits = 0.01; // mm that a pocket may be narrower than its tool

PathPoint Off(const PathPoint& from, double distance, double degrees)
{
    return {from.X + distance * std::cos(degrees * InRadians),
            from.Y + distance * std::sin(degrees * InRadians)};
}

double Bearing(const PathPoint& from, const PathPoint& to)
{
    return std::atan2(to.Y - from.Y, to.X - from.X) / InRadians;
}

double TurnBetween(double from, double to)
{
    return std::remainder(to - from, 360);
}

std::vector<PathPoint> PointsOf(const std::vector<Move>& pieces)
{
    std::vector<PathPoint> points;
    for (const Move& piece : pieces) {
        std::vector<PathPoint> more = PointsAlong(piece);
        points.insert(points.end(), more.begin(), more.end() - 1);
    }
    points.push_back(pieces.back().To);
    return points;
}

bool RunsCounterClockwise(const std::vector<Move>& pieces)
{
    const std::vector<PathPoint> points = PointsOf(pieces);
    double twice = 0;
    for (std::size_t i = 1; i < points.size(); ++i)
        twice += points[i - 1].X * points[i].Y - points[i].X * points[i - 1].Y;
    return twice > 0;
}

// The sector of a pie between two directions, the short way round.
Region Pie(const PathPoint& at, double radius, double from, double to)
{
    Move rim;
    rim.IsArc = true;
    rim.Centre = at;
    rim.Sweep = TurnBetween(from, to);
    rim.From = Off(at, radius, from);
    rim.To = Off(at, radius, to);
    std::vector<PathPoint> points = PointsAlong(rim);
    points.push_back(at);
    return Polygon(points);
}

// What lies within the width beside the piece, with ends across it. Side 1: left of its way.
Region StripBeside(const Move& piece, double width, int side)
{
    const bool inside = piece.IsArc && (piece.Sweep > 0) == (side > 0);
    const double most = inside ? std::min(width, Between(piece.Centre, piece.From)) : width;
    std::vector<PathPoint> rim = PointsAlong(piece), far;
    for (const PathPoint& point : rim) {
        const double across = piece.IsArc ? Bearing(piece.Centre, point) + (piece.Sweep > 0 ? 180 : 0)
                                          : DirectionAtStart(piece) + 90;
        far.push_back(Off(point, side * most, across));
    }
    rim.insert(rim.end(), far.rbegin(), far.rend());
    return Polygon(rim);
}

// --- closed contours

struct ClosedWay {
    const DrawnWay& Way;
    bool ToolInside;
    Region Kept; // of the plane: inside the contour, or for a tool inside what is not hole
    Region Hole; // inside the contour
};

// How far from an inner corner the tool touches both walls at once.
double FootBetweenWalls(double radius, double turn)
{
    const double corner = 180 - std::fabs(turn);
    return radius / std::tan(corner / 2 * InRadians);
}

double SizeOf(const Move& piece)
{
    return piece.IsArc ? Between(piece.Centre, piece.From) : LengthOf(piece);
}

// The tool comes down across the first piece and follows the last one to its end.
void AllowWholePieces(const DrawnWay& way, const Seam& seam, AskedCut& asked)
{
    const double r = way.Radius;
    const double aside = 90 * way.Side;
    const Region along =
        Union(StripBeside(seam.First, 2 * r, way.Side), StripBeside(seam.Last, 2 * r, way.Side));
    const Region nearby = DiscOf(seam.At(), 2 * r + FootBetweenWalls(r, seam.Turn()));
    asked.May = Union({asked.May, Intersection(along, nearby),
                       DiscOf(Off(seam.At(), r, DirectionAtStart(seam.First) + aside), r),
                       DiscOf(Off(seam.At(), r, DirectionAtEnd(seam.Last) + aside), r)});
}

// Where the tool beside a lead on the bisector of a corner meets one of the walls.
struct LeadFoot {
    bool Found = false;
    bool Free = true;    // up to the lead's end the tool touches no wall
    bool GoesOn = false; // the wall does
    PathPoint Centre, OnWall;
};

// `toward`: 1 for the wall of the seam's last piece, -1 for the first one's, times the tool's side.
LeadFoot FootOf(const DrawnWay& way, const Seam& seam, const Region& room, const Move& wall, int toward)
{
    constexpr double Step = 0.05, FarEnough = 0.3; // mm
    const double corner = 180 - std::fabs(seam.Turn());
    const double bisector = DirectionAtStart(seam.First) + way.Side * corner / 2;
    LeadFoot foot;
    for (double along = 0; along <= way.Lead; along += Step) {
        const PathPoint centre = Off(Off(seam.At(), along, bisector), way.Radius, bisector + 90 * toward);
        const bool fits = Holds(room, centre);
        if (foot.Found && !fits)
            foot.Free = false;
        if (!foot.Found && fits) {
            foot.Found = true;
            foot.Centre = centre;
        }
    }
    foot.OnWall = wall.IsArc
                      ? Off(wall.Centre, Between(wall.Centre, wall.From), Bearing(wall.Centre, foot.Centre))
                      : Off(foot.Centre, way.Radius, DirectionAtStart(wall) - 90 * way.Side);
    const double onward = Bearing(foot.Centre, foot.OnWall) - 90 * toward;
    foot.GoesOn =
        Between(seam.At(), foot.OnWall) < LengthOf(wall) && Holds(room, Off(foot.Centre, FarEnough, onward));
    return foot;
}

PathPoint Opposite(const PathPoint& at, const PathPoint& middle)
{
    return {2 * middle.X - at.X, 2 * middle.Y - at.Y};
}

// What a lead on the bisector leaves between its feet on both walls.
Region LeftBetween(const DrawnWay& way, const Seam& seam, const LeadFoot& first, const LeadFoot& last)
{
    constexpr double Loose = 0.2; // mm, where a wall is an arc
    const double r = way.Radius;
    const Region field = Polygon({seam.At(), first.OnWall, Opposite(first.OnWall, first.Centre),
                                  Opposite(last.OnWall, last.Centre), last.OnWall});
    const Region one = Intersection(StripBeside(seam.First, 2 * r, way.Side),
                                    DiscOf(seam.At(), Between(seam.At(), first.OnWall)));
    const Region other = Intersection(StripBeside(seam.Last, 2 * r, way.Side),
                                      DiscOf(seam.At(), Between(seam.At(), last.OnWall)));
    return Difference(Grown(Union({field, one, other}), Loose),
                      Union(DiscOf(first.Centre, r - Loose / 2), DiscOf(last.Centre, r - Loose / 2)));
}

void MindLeadInCorner(const DrawnWay& way, const Seam& seam, const Region& room, AskedCut& asked)
{
    const Region zone = DiscOf(seam.At(), 1.42 * way.Lead + 2 * way.Radius + Slack);
    const Move& begins = seam.Backward ? seam.Last : seam.First;
    const bool turnsAway = begins.IsArc && (begins.Sweep > 0) == (way.Side < 0);
    if (begins.IsArc && (way.Lead <= SizeOf(begins) || turnsAway)) {
        asked.Doubts.push_back(Doubt::LeadIntoWall);
        asked.May = Union(asked.May, zone);
    }
    const LeadFoot first = FootOf(way, seam, room, seam.First, -way.Side);
    const LeadFoot last = FootOf(way, seam, room, seam.Last, way.Side);
    if (!first.Found || !last.Found) {
        asked.Doubts.push_back(Doubt::LeadTooShort);
        asked.May = Union(asked.May, zone);
        asked.Must = Difference(asked.Must, zone);
        return;
    }
    if (!first.GoesOn || !last.GoesOn)
        asked.Doubts.push_back(Doubt::LeadOnShortPiece);
    if (!first.Free || !last.Free) {
        asked.Doubts.push_back(Doubt::LeadTooLong);
        asked.May = Union(asked.May, zone);
    }
    asked.Must = Difference(asked.Must, LeftBetween(way, seam, first, last));
}

void MindInnerCorner(const DrawnWay& way, const Seam& seam, const Region& room, AskedCut& asked)
{
    if (way.Lead > 0) {
        MindLeadInCorner(way, seam, room, asked);
        return;
    }
    asked.Doubts.push_back(Doubt::BeginsInInnerCorner);
    AllowWholePieces(way, seam, asked);
}

// The tool ends across the last piece and begins across the first one; what it would have cut rolling
// around the corner between them is waste and stays.
void MindOuterCorner(const DrawnWay& way, const Seam& seam, AskedCut& asked)
{
    const double r = way.Radius;
    const double from = DirectionAtEnd(seam.Last) + 90 * way.Side,
                 to = DirectionAtStart(seam.First) + 90 * way.Side;
    const Region discs = Union(DiscOf(Off(seam.At(), r, from), r), DiscOf(Off(seam.At(), r, to), r));
    asked.Must = Difference(asked.Must, Difference(Pie(seam.At(), 2 * r + Slack, from, to), discs));
}

// A tangent lead in a hole wants as much room as its arcs take with the tool, on both sides of the seam.
void MindRoomOfLead(const DrawnWay& way, const Seam& seam, const ClosedWay& closed, AskedCut& asked)
{
    const double leaving = DirectionAtStart(seam.First);
    const PathPoint middle = Off(seam.At(), way.Lead, leaving + 90 * way.Side);
    for (const double along : {leaving + 180, DirectionAtEnd(seam.Last)})
        if (!Difference(DiscOf(Off(middle, way.Lead, along), 2 * way.Radius + Slack), closed.Hole)
                 .IsEmpty()) {
            asked.Doubts.push_back(Doubt::LeadTooLong);
            asked.May = Union(asked.May, DiscOf(seam.At(), 1.42 * way.Lead + 2 * way.Radius + Slack));
            return;
        }
}

void MindLead(const DrawnWay& way, const Seam& seam, const ClosedWay& closed, AskedCut& asked)
{
    if (!(way.Lead > 0))
        return;
    const Region zone = DiscOf(seam.At(), 1.42 * way.Lead + 2 * way.Radius + Slack);
    asked.May =
        Union(asked.May, closed.ToolInside ? Intersection(zone, closed.Hole) : Difference(zone, closed.Hole));
    if (seam.Turn() * way.Side >= Smooth)
        return;
    if (std::min(SizeOf(seam.First), SizeOf(seam.Last)) < way.Lead + Slack) {
        asked.Doubts.push_back(Doubt::LeadBesideWall);
        asked.Must = Difference(asked.Must, DiscOf(seam.At(), 1.42 * way.Radius + Slack));
    }
    if (closed.ToolInside)
        MindRoomOfLead(way, seam, closed, asked);
}

// `room`: where the tool's centre may be.
void MindSeams(const ClosedWay& closed, const Region& room, AskedCut& asked)
{
    const DrawnWay& way = closed.Way;
    for (const Seam& seam : way.Seams) {
        MindLead(way, seam, closed, asked);
        const Move& begins = seam.Backward ? seam.Last : seam.First;
        if (way.Ramps && LengthOf(begins) < way.Lead + way.Radius)
            asked.Doubts.push_back(Doubt::RampPastPiece);
        if (std::fabs(seam.Turn()) < Smooth)
            continue;
        if (seam.Turn() * way.Side > 0)
            MindInnerCorner(way, seam, room, asked);
        else
            MindOuterCorner(way, seam, asked);
    }
}

// Whether the tool can stand beside some place of the piece. `room`: where its centre may be.
bool IsInReach(const Move& piece, const DrawnWay& way, const Region& room)
{
    constexpr int Places = 40;
    constexpr double Least = 0.01; // mm of an arc's radius beyond the tool's
    if (piece.IsArc && (piece.Sweep > 0) == (way.Side > 0) &&
        Between(piece.Centre, piece.From) < way.Radius + Least)
        return false;
    const double aside = 90 * way.Side;
    for (int i = 0; i <= Places; ++i) {
        const double share = static_cast<double>(i) / Places;
        PathPoint at{piece.From.X + share * (piece.To.X - piece.From.X),
                     piece.From.Y + share * (piece.To.Y - piece.From.Y)};
        double direction = DirectionAtStart(piece);
        if (piece.IsArc) {
            direction += share * piece.Sweep;
            at = Off(piece.Centre, Between(piece.Centre, piece.From),
                     direction + (piece.Sweep > 0 ? -90 : 90));
        }
        if (Holds(room, Off(at, way.Radius, direction + aside)))
            return true;
    }
    return false;
}

void MindReach(const DrawnWay& way, const Region& room, AskedCut& asked)
{
    for (const Move& piece : way.Pieces)
        if (!IsInReach(piece, way, room)) {
            asked.Doubts.push_back(Doubt::PieceOutOfReach);
            return;
        }
}

void AskClosed(const DrawnWay& way, AskedCut& asked)
{
    const double r = way.Radius;
    ClosedWay closed{way, RunsCounterClockwise(way.Pieces) == (way.Side > 0), {}, Inside({way.Pieces})};
    Region room;
    if (closed.ToolInside) {
        const Region core = Shrunk(closed.Hole, 2 * r);
        const Region reached = ReachedBy(closed.Hole, 2 * r);
        asked.May = Difference(closed.Hole, core);
        asked.Must = Difference(reached, core);
        room = Shrunk(closed.Hole, r - NearlyThere);
    } else {
        const Region outer = Grown(closed.Hole, 2 * r);
        asked.May = Difference(outer, closed.Hole);
        asked.Must = Difference(outer, Shrunk(Grown(closed.Hole, r), r));
        room = Difference(Grown(closed.Hole, 2 * r + 2 * way.Lead), Grown(closed.Hole, r - NearlyThere));
    }
    MindReach(way, room, asked);
    MindSeams(closed, room, asked);
}

// --- open chains

// All within two radii of the way, on both sides of it, with ends across the way.
Region BandAround(const DrawnWay& way)
{
    std::vector<Region> strips;
    for (std::size_t i = 0; i < way.Pieces.size(); ++i) {
        strips.push_back(StripBeside(way.Pieces[i], 2 * way.Radius, 1));
        strips.push_back(StripBeside(way.Pieces[i], 2 * way.Radius, -1));
        if (i > 0)
            strips.push_back(DiscOf(way.Pieces[i].From, 2 * way.Radius));
    }
    return Union(strips);
}

Region ThreadAlong(const DrawnWay& way)
{
    std::vector<Region> parts;
    const std::vector<PathPoint> points = PointsOf(way.Pieces);
    for (std::size_t i = 1; i < points.size(); ++i) {
        const double direction = Bearing(points[i - 1], points[i]);
        const double before = i == 1 ? Slack : HalfThread;
        const double behind = i + 1 == points.size() ? Slack : HalfThread;
        const PathPoint from = Off(points[i - 1], -before, direction), to = Off(points[i], behind, direction);
        parts.push_back(
            Polygon({Off(from, HalfThread, direction - 90), Off(to, HalfThread, direction - 90),
                     Off(to, HalfThread, direction + 90), Off(from, HalfThread, direction + 90)}));
    }
    return Union(parts);
}

bool IsOnBorder(const PathPoint& point, const DrawnPanel& panel)
{
    return std::min({std::fabs(point.X), std::fabs(point.Y), std::fabs(point.X - panel.Length),
                     std::fabs(point.Y - panel.Width)}) < Slack;
}

// An end on the panel's border is led out of the panel.
void MindEnd(const DrawnWay& way, const PathPoint& end, const DrawnPanel& panel, AskedCut& asked)
{
    if (!(way.Lead > 0) || way.On != Plane::Surface || !IsOnBorder(end, panel))
        return;
    // It leaves along the way, so the tool still covers the panel's edge.
    const double in = way.Side != 0 ? 2 * way.Radius : way.Radius;
    asked.May = Union(asked.May, Difference(DiscOf(end, 1.42 * way.Lead + 2 * way.Radius + Slack),
                                            BoxOf({in, in}, {panel.Length - in, panel.Width - in})));
}

void AskOpen(const DrawnWay& way, AskedCut& asked)
{
    const double aside = 90 * way.Side;
    const Move& first = way.Pieces.front();
    const Move& last = way.Pieces.back();
    const PathPoint begin = Off(first.From, way.Radius, DirectionAtStart(first) + aside);
    const PathPoint end = Off(last.To, way.Radius, DirectionAtEnd(last) + aside);
    for (const RegionPiece& part : PiecesOf(Difference(BandAround(way), ThreadAlong(way))))
        if (Holds(part.Itself, Off(begin, 2 * HalfThread, DirectionAtStart(first))))
            asked.May = part.Itself;
    asked.May = Union({asked.May, DiscOf(begin, way.Radius), DiscOf(end, way.Radius)});
    MindReach(way, Shrunk(asked.May, way.Radius - Slack / 2), asked);
    // A hair below the tool's diameter, which the band is wide.
    asked.Must = ReachedBy(asked.May, 2 * (way.Radius - Slack / 4));
}

void Frame(AskedCut& asked)
{
    bool first = true;
    for (const Ring& ring : asked.May.Rings)
        for (const GridPoint& point : ring) {
            const PathPoint at{static_cast<double>(point.X) * 1e-5, static_cast<double>(point.Y) * 1e-5};
            asked.Low = first ? at : PathPoint{std::min(asked.Low.X, at.X), std::min(asked.Low.Y, at.Y)};
            asked.High = first ? at : PathPoint{std::max(asked.High.X, at.X), std::max(asked.High.Y, at.Y)};
            first = false;
        }
}

// A control may be given an arc by its ends and radius alone: the centre of half a circle then moves with the
// root of what the last digits leave.
bool HasHalfCircle(const std::vector<Move>& pieces)
{
    return std::any_of(pieces.begin(), pieces.end(), [](const Move& piece) {
        return piece.IsArc && std::fabs(std::fabs(piece.Sweep) - 180) < Smooth;
    });
}

// The end of an arc is an angle of three decimals: an arc of 12 m that is nearly straight ends a tenth off.
double RoundedAngles(const std::vector<Move>& pieces)
{
    constexpr double HalfStep = 0.0005; // degrees
    double widest = 0;
    for (const Move& piece : pieces)
        if (piece.IsArc)
            widest = std::max(widest, Between(piece.Centre, piece.From));
    return HalfStep * InRadians * widest;
}

// --- pockets

PathPoint SizeOf(const std::vector<Move>& outline)
{
    PathPoint low = outline.front().From, high = low;
    for (const PathPoint& point : PointsOf(outline)) {
        low = {std::min(low.X, point.X), std::min(low.Y, point.Y)};
        high = {std::max(high.X, point.X), std::max(high.Y, point.Y)};
    }
    return {high.X - low.X, high.Y - low.Y};
}

// The corner of the box at the mark, where the way begins, when the tool does not fit into its rounding.
void AllowCorner(const DrawnPocket& pocket, const Move& before, const Move& here, AskedCut& asked)
{
    const double inward = RunsCounterClockwise(pocket.Outline) ? 90 : -90;
    PathPoint corner = here.From;
    double one = DirectionAtEnd(before), other = DirectionAtStart(here);
    if (before.IsArc) { // the first piece is a line
        corner = Off(here.From, -Between(before.Centre, before.From), other);
        one = DirectionAtStart(before);
    }
    asked.Doubts.push_back(Doubt::BeginsInInnerCorner);
    const double r = pocket.Radius;
    const int side = inward > 0 ? 1 : -1;
    Move first, last; // beside the walls, from and to the corner
    first.From = last.To = corner;
    first.To = Off(corner, 2 * r, other);
    last.From = Off(corner, -2 * r, one);
    asked.May = Union({asked.May, StripBeside(first, 2 * r, side), StripBeside(last, 2 * r, side),
                       DiscOf(Off(corner, r, one + inward), r), DiscOf(Off(corner, r, other + inward), r)});
}

void MindMark(const DrawnPocket& pocket, AskedCut& asked)
{
    const Move& before = pocket.Outline.back();
    const Move& here = pocket.Outline.front();
    if (!before.IsArc || Between(before.Centre, before.From) <= pocket.Radius) {
        AllowCorner(pocket, before, here, asked);
        return;
    }
    // The loops run backward and begin with the outline's last line.
    const Move& last = pocket.Outline[pocket.Outline.size() - 2];
    if (LengthOf(last) < 2 * pocket.Pitch || Between(before.Centre, before.From) < 1.5 * pocket.Radius) {
        asked.Doubts.push_back(Doubt::ShortSideAtMark);
        asked.Must = Difference(asked.Must, DiscOf(last.To, pocket.Radius));
    }
}

} // namespace

double DirectionAtStart(const Move& piece)
{
    if (!piece.IsArc)
        return Bearing(piece.From, piece.To);
    return Bearing(piece.Centre, piece.From) + (piece.Sweep > 0 ? 90 : -90);
}

double DirectionAtEnd(const Move& piece)
{
    return DirectionAtStart(piece) + (piece.IsArc ? piece.Sweep : 0);
}

double LengthOf(const Move& piece)
{
    if (!piece.IsArc)
        return Between(piece.From, piece.To);
    return Between(piece.Centre, piece.From) * std::fabs(piece.Sweep) * InRadians;
}

std::vector<PathPoint> PointsAlong(const Move& piece)
{
    if (!piece.IsArc)
        return {piece.From, piece.To};
    const double radius = Between(piece.Centre, piece.From);
    const double step = radius > Flat ? 2 * std::acos(1 - Flat / radius) / InRadians : 90;
    const int steps = std::max(2, static_cast<int>(std::ceil(std::fabs(piece.Sweep) / step)));
    const double begin = Bearing(piece.Centre, piece.From);
    std::vector<PathPoint> points = {piece.From};
    for (int i = 1; i < steps; ++i)
        points.push_back(Off(piece.Centre, radius, begin + piece.Sweep * i / steps));
    points.push_back(piece.To);
    return points;
}

std::vector<Seam> SeamsOfPieces(const std::vector<Move>& pieces, std::size_t drawnFirst)
{
    constexpr double Alike = 0.05; // degrees
    const std::size_t count = pieces.size();
    const Seam forward{pieces[(drawnFirst + count - 1) % count], pieces[drawnFirst]};
    const Seam backward{pieces[drawnFirst], pieces[(drawnFirst + 1) % count], true};
    const double atBegin = std::fabs(forward.Turn()), atEnd = std::fabs(backward.Turn());
    if (count > 2 && atEnd < atBegin - Alike)
        return {forward};
    if (count > 2 && atBegin < atEnd - Alike)
        return {backward};
    return {forward, backward};
}

Seam SeamInMiddleOf(const Move& line)
{
    Seam seam{line, line};
    seam.Last.To = seam.First.From = {(line.From.X + line.To.X) / 2, (line.From.Y + line.To.Y) / 2};
    return seam;
}

double Seam::Turn() const
{
    return TurnBetween(DirectionAtEnd(Last), DirectionAtStart(First));
}

const char* ShownDoubt(Doubt doubt)
{
    switch (doubt) {
    case Doubt::PocketNarrowerThanTool:
        return "a pocket narrower than its tool";
    case Doubt::PocketLoopsTurnedOver:
        return "a pocket with loops narrower than the tool next to its wall";
    case Doubt::WideStep:
        return "a pocket with a wide step";
    case Doubt::ShortSideAtMark:
        return "a rounded pocket with a short side or corner at its mark";
    case Doubt::PieceOutOfReach:
        return "a piece that the tool does not touch";
    case Doubt::BeginsInInnerCorner:
        return "begins in an inner corner";
    case Doubt::LeadTooShort:
        return "a lead too short for its inner corner";
    case Doubt::LeadOnShortPiece:
        return "a lead in an inner corner with a short side";
    case Doubt::LeadTooLong:
        return "a lead too long for its room";
    case Doubt::LeadBesideWall:
        return "a straight lead across its piece";
    case Doubt::LeadIntoWall:
        return "a tangent lead into an inner corner";
    case Doubt::RampPastPiece:
        return "a ramp longer than the piece below it";
    default:
        return "no doubt";
    }
}

bool AskedCut::Has(Doubt doubt) const
{
    return std::find(Doubts.begin(), Doubts.end(), doubt) != Doubts.end();
}

AskedCut AskedOf(const DrawnWay& way, const DrawnPanel& panel)
{
    AskedCut asked;
    asked.Name = way.Name;
    asked.On = way.On;
    asked.Radius = way.Radius;
    asked.Depth = way.Depth;
    asked.Passes = way.Passes;
    asked.Ramps = way.Ramps;
    if (way.Side == 0)
        asked.May = asked.Must = SweptAlong(way.Pieces, way.Radius);
    else if (way.Closed)
        AskClosed(way, asked);
    else
        AskOpen(way, asked);
    if (!way.Closed) {
        MindEnd(way, way.Pieces.front().From, panel, asked);
        MindEnd(way, way.Pieces.back().To, panel, asked);
    }
    asked.Open = (HasHalfCircle(way.Pieces) ? 2 * Slack : Slack) + RoundedAngles(way.Pieces);
    Frame(asked);
    return asked;
}

AskedCut AskedOf(const DrawnPocket& pocket)
{
    AskedCut asked;
    asked.Name = pocket.Name;
    asked.Radius = pocket.Radius;
    asked.Depth = pocket.Depth;
    asked.Passes = pocket.Passes;
    asked.May = Inside({pocket.Outline});
    asked.Must = ReachedBy(asked.May, 2 * pocket.Radius);
    const PathPoint size = SizeOf(pocket.Outline);
    const double narrow = std::min(size.X, size.Y);
    if (narrow < 2 * pocket.Radius - JustFits)
        asked.Doubts.push_back(Doubt::PocketNarrowerThanTool);
    else if (narrow < 4 * pocket.Radius + 1.25 * pocket.Pitch) // loops run past the middle
        asked.Doubts.push_back(Doubt::PocketLoopsTurnedOver);
    if (pocket.IsBox && pocket.Pitch > CloseStep * pocket.Radius)
        asked.Doubts.push_back(Doubt::WideStep);
    if (pocket.IsBox)
        MindMark(pocket, asked);
    Frame(asked);
    return asked;
}

std::vector<AskedCut> AskedCuts(const DrawnPanel& panel)
{
    std::vector<AskedCut> asked;
    for (const DrawnWay& way : panel.Ways)
        asked.push_back(AskedOf(way, panel));
    for (const DrawnPocket& pocket : panel.Pockets)
        asked.push_back(AskedOf(pocket));
    return asked;
}

} // namespace kv::test
