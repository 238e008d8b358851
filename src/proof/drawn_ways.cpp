#include "proof/drawn_ways.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace kv {

namespace {

Move Reversed(Move move)
{
    std::swap(move.From, move.To);
    std::swap(move.DepthFrom, move.DepthTo);
    move.Sweep = -move.Sweep;
    return move;
}

double DirectionAtStart(const Move& move)
{
    return move.IsArc ? DirectionTo(move.Centre, move.From) + (move.Sweep > 0 ? 90 : -90)
                      : DirectionTo(move.From, move.To);
}

double DirectionAtEnd(const Move& move)
{
    return DirectionAtStart(Reversed(move)) + 180;
}

struct LoosePiece {
    DrawnPiece Piece;
    bool IsUsed = false;
};

// A single line never does, however short.
bool MeetsItself(const AskedWay& way, double joint)
{
    return (way.Pieces.size() > 1 || way.Pieces.front().IsArc) &&
           Between(way.Pieces.front().From, way.Pieces.back().To) < joint;
}

struct GrowingWay {
    AskedWay Way;
    bool IsForward = false, IsBackward = false; // pieces along and against the way as drawn

    void Append(const Move& move, Long drawn, bool asDrawn)
    {
        Way.Pieces.push_back(move);
        Way.Drawn.push_back(drawn);
        (asDrawn ? IsForward : IsBackward) = true;
    }
    void Turn()
    {
        std::reverse(Way.Pieces.begin(), Way.Pieces.end());
        std::reverse(Way.Drawn.begin(), Way.Drawn.end());
        for (Move& move : Way.Pieces)
            move = Reversed(move);
        std::swap(IsForward, IsBackward);
    }
};

class PieceJoiner {
  public:
    PieceJoiner(std::vector<LoosePiece> pieces, double joint) : Pieces(std::move(pieces)), Joint(joint)
    {
        for (std::size_t i = 0; i < Pieces.size(); ++i) {
            Ends.emplace_back(CellOf(Pieces[i].Piece.Way.From), i);
            Ends.emplace_back(CellOf(Pieces[i].Piece.Way.To), i);
        }
        std::sort(Ends.begin(), Ends.end());
    }

    std::vector<GrowingWay> Join()
    {
        std::vector<GrowingWay> ways;
        for (LoosePiece& first : Pieces) {
            if (first.IsUsed)
                continue;
            first.IsUsed = true;
            GrowingWay way;
            way.Append(first.Piece.Way, first.Piece.Drawn, true);
            Grow(way);
            if (!IsClosed(way)) { // and on from its other end
                way.Turn();
                Grow(way);
                way.Turn();
            }
            ways.push_back(std::move(way));
        }
        return ways;
    }
    bool IsClosed(const GrowingWay& way) const { return MeetsItself(way.Way, Joint); }

  private:
    using Cell = std::pair<long long, long long>;
    Cell CellOf(const PathPoint& at) const
    {
        return {static_cast<long long>(std::floor(at.X / Joint)),
                static_cast<long long>(std::floor(at.Y / Joint))};
    }

    void Grow(GrowingWay& way)
    {
        while (!IsClosed(way) && AddNext(way)) {
        }
    }
    bool AddNext(GrowingWay& way)
    {
        const Move& last = way.Way.Pieces.back();
        std::optional<std::pair<std::size_t, bool>> next;
        double leastTurn = 1000;
        for (const std::size_t i : PiecesNear(last.To))
            for (const bool asDrawn : {true, false}) {
                const Move move = asDrawn ? Pieces[i].Piece.Way : Reversed(Pieces[i].Piece.Way);
                const double turn =
                    std::fabs(std::remainder(DirectionAtStart(move) - DirectionAtEnd(last), 360));
                if (Between(move.From, last.To) < Joint && turn < leastTurn) {
                    next = {i, asDrawn};
                    leastTurn = turn;
                }
            }
        if (!next)
            return false;
        LoosePiece& piece = Pieces[next->first];
        piece.IsUsed = true;
        Move move = next->second ? piece.Piece.Way : Reversed(piece.Piece.Way);
        move.From = last.To; // the machine goes on from there
        way.Append(move, piece.Piece.Drawn, next->second);
        return true;
    }
    // Free pieces of which an end is near, in the order of the drawing.
    std::vector<std::size_t> PiecesNear(const PathPoint& at) const
    {
        std::vector<std::size_t> near;
        const Cell cell = CellOf(at);
        for (long long x = cell.first - 1; x <= cell.first + 1; ++x)
            for (long long y = cell.second - 1; y <= cell.second + 1; ++y) {
                auto end =
                    std::lower_bound(Ends.begin(), Ends.end(), std::pair<Cell, std::size_t>{{x, y}, 0});
                for (; end != Ends.end() && end->first == Cell{x, y}; ++end)
                    if (!Pieces[end->second].IsUsed)
                        near.push_back(end->second);
            }
        std::sort(near.begin(), near.end());
        near.erase(std::unique(near.begin(), near.end()), near.end());
        return near;
    }

    std::vector<LoosePiece> Pieces;
    double Joint;
    std::vector<std::pair<Cell, std::size_t>> Ends;
};

AskedWay Finished(GrowingWay&& growing, int side, bool isClosed)
{
    AskedWay way = std::move(growing.Way);
    way.IsClosed = isClosed;
    way.Side = growing.IsForward ? side : -side;
    way.IsSideOpen = side != 0 && growing.IsForward && growing.IsBackward;
    if (isClosed && way.Pieces.size() > 1)
        way.Pieces.back().To = way.Pieces.front().From;
    return way;
}

// A polyline and a circle are ways by themselves.
AskedWay WayOfShape(const DrawnShapePieces& shape, int side, double joint)
{
    GrowingWay way;
    for (const DrawnPiece& piece : shape.Pieces)
        way.Append(piece.Way, piece.Drawn, true);
    const bool isClosed = MeetsItself(way.Way, joint);
    return Finished(std::move(way), side, isClosed);
}

} // namespace

std::vector<AskedWay> WaysOf(const std::vector<DrawnShapePieces>& shapes, int side, double joint)
{
    std::vector<AskedWay> ways;
    std::vector<LoosePiece> loose;
    for (const DrawnShapePieces& shape : shapes) {
        if (shape.Pieces.empty())
            continue;
        if (shape.Kind == PieceKind::Polyline || shape.Kind == PieceKind::Circle)
            ways.push_back(WayOfShape(shape, side, joint));
        else
            loose.push_back({shape.Pieces.front()});
    }
    PieceJoiner joiner(std::move(loose), joint);
    for (GrowingWay& way : joiner.Join()) {
        const bool isClosed = joiner.IsClosed(way);
        ways.push_back(Finished(std::move(way), side, isClosed));
    }
    return ways;
}

} // namespace kv
