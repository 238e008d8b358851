// A biarc goes from one point to another along both given directions; its two arcs meet where both are
// equally far from the point where their tangents cross (the usual choice, and short of none in evenness).
// How well one fits is measured at points of the curve between its ends, more of them than a cubic piece can
// hide from.
#include "import/curve_fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace kv {

namespace {

constexpr double SharpTurn =
    std::numbers::pi / 2; // a biarc that turns more is shortened, however well it fits
constexpr int MostHalvings = 40;
constexpr int Lengthenings = 5; // a reach that is some hundredths too short costs hardly a further biarc
constexpr double FarthestPlace = 1e7; // drawing units; ten kilometres
constexpr int Samples = 12;           // between the ends of a biarc

double CrossOf(SpacePoint a, SpacePoint b)
{
    return a.X * b.Y - a.Y * b.X;
}

double FlatDot(SpacePoint a, SpacePoint b)
{
    return a.X * b.X + a.Y * b.Y;
}

double FlatLength(SpacePoint a)
{
    return std::hypot(a.X, a.Y);
}

struct Piece {
    SpacePoint From, To;
    double Bulge = 0;
};

// The angle from one direction to another, -pi to pi.
double TurnBetween(SpacePoint from, SpacePoint to)
{
    return std::atan2(CrossOf(from, to), FlatDot(from, to));
}

// Of an arc that leaves its start along `direction`.
double BulgeToward(SpacePoint from, SpacePoint direction, SpacePoint to)
{
    return std::tan(TurnBetween(direction, to - from) / 2);
}

double DistanceFromLine(SpacePoint point, const Piece& piece)
{
    const SpacePoint along = piece.To - piece.From;
    const double length = FlatDot(along, along);
    const double part = length > 0 ? std::clamp(FlatDot(point - piece.From, along) / length, 0.0, 1.0) : 0;
    return FlatLength(point - (piece.From + along * part));
}

double DistanceFromPiece(SpacePoint point, const Piece& piece)
{
    constexpr double straight = 1e-9; // a bulge below it
    if (std::abs(piece.Bulge) < straight)
        return DistanceFromLine(point, piece);
    const SpacePoint chord = piece.To - piece.From;
    const double toCentre = (1 - piece.Bulge * piece.Bulge) / (4 * piece.Bulge); // of the chord, to its left
    const SpacePoint centre = (piece.From + piece.To) * 0.5 + SpacePoint{-chord.Y, chord.X, 0} * toCentre;
    const double radius = FlatLength(piece.From - centre);
    const SpacePoint start = piece.From - centre, out = point - centre;
    double swept = TurnBetween(start, out);
    if (piece.Bulge < 0)
        swept = -swept;
    if (swept < 0)
        swept += 2 * std::numbers::pi;
    if (swept <= 4 * std::atan(std::abs(piece.Bulge)))
        return std::abs(FlatLength(out) - radius);
    return std::min(FlatLength(point - piece.From), FlatLength(point - piece.To));
}

bool IsWithinReason(SpacePoint point)
{
    return std::abs(point.X) <= FarthestPlace && std::abs(point.Y) <= FarthestPlace;
}

class CurveFitter {
  public:
    CurveFitter(const PlaneCurve& curve, double tolerance) : Curve(curve), Tolerance(tolerance) {}
    bool Fit(std::span<const double> breaks);
    std::vector<VertexPoint> Path;

  private:
    struct Place {
        double Parameter = 0;
        SpacePoint Point, Direction;
    };
    SpacePoint DirectionAt(double parameter, double other) const;
    Place PlaceAt(double parameter, double end) const;
    bool Fits(const Place& from, const Place& to) const;
    Place Reach(const Place& from, const Place& to);
    void FitPiece(const Place& from, const Place& to);
    std::array<Piece, 2> Biarc(const Place& from, const Place& to) const;
    double ErrorOf(const std::array<Piece, 2>& biarc, const Place& from, const Place& to) const;
    void Add(const Piece& piece);

    const PlaneCurve& Curve;
    double Tolerance;
    std::size_t Steps = 0;
    double LastLength = 0; // of the last reach, in parts of what was left
    bool IsBroken = false;
};

// Where the curve stands still, the direction in which it goes on toward `other`.
SpacePoint CurveFitter::DirectionAt(double parameter, double other) const
{
    constexpr double inside =
        1e-9; // of the piece: at a break the curve has two directions, and one is its own
    SpacePoint direction = Curve.Towards(parameter + (other - parameter) * inside);
    const double forward = other > parameter ? 1 : -1;
    direction = direction * forward;
    if (!(FlatLength(direction) > 1e-12)) {
        const SpacePoint here = Curve.At(parameter);
        for (double step = 1e-6; step <= 1 && !(FlatLength(direction) > 1e-12); step *= 10)
            direction = Curve.At(parameter + (other - parameter) * step) - here;
    }
    const double length = FlatLength(direction);
    return length > 0 ? direction * (1 / length) : SpacePoint{1, 0, 0};
}

std::array<Piece, 2> CurveFitter::Biarc(const Place& from, const Place& to) const
{
    const SpacePoint chord = to.Point - from.Point;
    const SpacePoint both = from.Direction + to.Direction;
    const double square = FlatDot(chord, chord);
    const double along = FlatDot(chord, both);
    const double apart = 2 * (1 - FlatDot(from.Direction, to.Direction));
    double reach = 0; // from each end to where its tangent meets that of the joint
    if (apart > 1e-12)
        reach = (std::sqrt(along * along + apart * square) - along) / apart;
    else
        reach = square / (2 * along);
    if (!(reach > 0) || !std::isfinite(reach)) // straight, or turned right round: halved if it does not fit
        return {Piece{from.Point, to.Point, 0}, Piece{to.Point, to.Point, 0}};
    const SpacePoint joint = (from.Point + from.Direction * reach + (to.Point - to.Direction * reach)) * 0.5;
    const double first = BulgeToward(from.Point, from.Direction, joint);
    const double second = -BulgeToward(to.Point, to.Direction * -1, joint);
    return {Piece{from.Point, joint, first}, Piece{joint, to.Point, second}};
}

double CurveFitter::ErrorOf(const std::array<Piece, 2>& biarc, const Place& from, const Place& to) const
{
    double error = 0;
    for (int i = 1; i < Samples; ++i) {
        const double part = static_cast<double>(i) / Samples;
        const SpacePoint point = Curve.At(from.Parameter + (to.Parameter - from.Parameter) * part);
        error =
            std::max(error, std::min(DistanceFromPiece(point, biarc[0]), DistanceFromPiece(point, biarc[1])));
    }
    return error;
}

void CurveFitter::Add(const Piece& piece)
{
    constexpr double nothing = 1e-9; // drawing units; far below what a program prints
    if (FlatLength(piece.To - piece.From) < nothing)
        return;
    const double lift = std::abs(piece.Bulge) * FlatLength(piece.To - piece.From) / 2;
    Path.back().Bulge = lift < nothing ? 0 : piece.Bulge;
    VertexPoint end;
    end.X = piece.To.X;
    end.Y = piece.To.Y;
    Path.push_back(end);
    IsBroken |= Path.size() > MostFittedPoints;
}

CurveFitter::Place CurveFitter::PlaceAt(double parameter, double end) const
{
    return {parameter, Curve.At(parameter), DirectionAt(parameter, end)};
}

bool CurveFitter::Fits(const Place& from, const Place& to) const
{
    constexpr double ofTolerance = 0.8; // the rest is for rounding, and for what samples miss
    return std::abs(TurnBetween(from.Direction, to.Direction)) <= SharpTurn &&
           ErrorOf(Biarc(from, to), from, to) <= Tolerance * ofTolerance;
}

// About the farthest place before `to` that one biarc reaches. Neighbours reach about as far as each other,
// so the search begins with the last one's length: halved until it fits, then a little longer by halves.
CurveFitter::Place CurveFitter::Reach(const Place& from, const Place& to)
{
    const double all = to.Parameter - from.Parameter;
    double longest = all; // does not fit
    double length = LastLength > 0 ? std::min(2 * LastLength, 1.0) * all : all / 2;
    Place reached = PlaceAt(from.Parameter + length, to.Parameter);
    bool fits = Fits(from, reached);
    for (int i = 0; i < MostHalvings && !fits; ++i) {
        longest = length;
        length /= 2;
        reached = PlaceAt(from.Parameter + length, to.Parameter);
        fits = Fits(from, reached);
    }
    for (int i = 0; i < Lengthenings && fits; ++i) {
        const double longer = length + (longest - length) / 2;
        const Place place = PlaceAt(from.Parameter + longer, to.Parameter);
        const bool goesOn = Fits(from, place);
        (goesOn ? length : longest) = longer;
        if (goesOn)
            reached = place;
    }
    LastLength = all != 0 ? length / all : 0;
    return reached;
}

void CurveFitter::FitPiece(const Place& from, const Place& to)
{
    Place at = from;
    while (!IsBroken) {
        const bool isLast = Fits(at, to);
        const Place next = isLast ? to : Reach(at, to);
        if (!IsWithinReason(next.Point) || !IsFinite(next.Direction)) {
            IsBroken = true;
            return;
        }
        const std::array<Piece, 2> biarc = Biarc(at, next);
        Add(biarc[0]);
        Add(biarc[1]);
        ++Steps;
        IsBroken |= Steps > MostFittedPoints;
        if (isLast || next.Parameter == to.Parameter || next.Parameter == at.Parameter)
            return;
        at = next;
    }
}

// The direction at a piece's end is that in which the piece arrives.
bool CurveFitter::Fit(std::span<const double> breaks)
{
    const SpacePoint start = Curve.At(breaks.front());
    VertexPoint first;
    first.X = start.X;
    first.Y = start.Y;
    Path.push_back(first);
    for (std::size_t i = 0; i + 1 < breaks.size() && !IsBroken; ++i) {
        Place from{breaks[i], Curve.At(breaks[i]), DirectionAt(breaks[i], breaks[i + 1])};
        Place to{breaks[i + 1], Curve.At(breaks[i + 1]), DirectionAt(breaks[i + 1], breaks[i]) * -1};
        IsBroken = !IsWithinReason(from.Point) || !IsWithinReason(to.Point);
        LastLength = 0;
        if (!IsBroken)
            FitPiece(from, to);
    }
    return !IsBroken;
}

// The arc over both, where they are one; its bulge, 0 for a line.
bool JoinsInto(const VertexPoint& a, const VertexPoint& b, const VertexPoint& c, double tolerance,
               double& bulge)
{
    const auto place = [](const VertexPoint& p) { return SpacePoint{p.X, p.Y, 0}; };
    const double turn = 4 * (std::atan(a.Bulge) + std::atan(b.Bulge));
    if (a.Bulge * b.Bulge < 0 || (a.Bulge == 0) != (b.Bulge == 0) || std::abs(turn) > std::numbers::pi + 1e-9)
        return false;
    bulge = std::tan(turn / 4);
    const Piece whole{place(a), place(c), bulge};
    if (bulge == 0 && FlatDot(place(b) - place(a), place(c) - place(b)) < 0)
        return false; // there and back
    const auto middleOf = [&](const VertexPoint& from, const VertexPoint& to) {
        const SpacePoint chord = place(to) - place(from);
        return (place(from) + place(to)) * 0.5 + SpacePoint{chord.Y, -chord.X, 0} * (from.Bulge / 2);
    };
    return DistanceFromPiece(place(b), whole) <= tolerance &&
           DistanceFromPiece(middleOf(a, b), whole) <= tolerance &&
           DistanceFromPiece(middleOf(b, c), whole) <= tolerance;
}

} // namespace

std::vector<VertexPoint> FitByArcs(const PlaneCurve& curve, std::span<const double> breaks, double tolerance)
{
    CurveFitter fitter(curve, tolerance);
    if (breaks.size() < 2 || !fitter.Fit(breaks))
        return {};
    JoinPieces(fitter.Path, tolerance / 100);
    return std::move(fitter.Path);
}

void JoinPieces(std::vector<VertexPoint>& path, double tolerance)
{
    std::vector<VertexPoint> joined;
    for (const VertexPoint& point : path) {
        double bulge = 0;
        const std::size_t count = joined.size();
        if (count >= 2 && JoinsInto(joined[count - 2], joined[count - 1], point, tolerance, bulge)) {
            joined[count - 2].Bulge = bulge;
            joined.back() = point;
        } else {
            joined.push_back(point);
        }
    }
    path = std::move(joined);
}

} // namespace kv
