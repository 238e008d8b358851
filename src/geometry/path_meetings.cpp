// Where closed paths cross, touch or run back along themselves. Chords are entered into the cells of a
// grid that they pass; only chords of one cell are compared, in whole numbers, so no meeting is missed
// by rounding.
#include "geometry/closed_paths.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace kv {

namespace {

int SideOf(const WholePoint& a, const WholePoint& b, const WholePoint& point)
{
    const std::int64_t cross = (b.X - a.X) * (point.Y - a.Y) - (b.Y - a.Y) * (point.X - a.X);
    return cross > 0 ? 1 : cross < 0 ? -1 : 0;
}

bool IsInBox(const WholePoint& a, const WholePoint& b, const WholePoint& point)
{
    return point.X >= std::min(a.X, b.X) && point.X <= std::max(a.X, b.X) && point.Y >= std::min(a.Y, b.Y) &&
           point.Y <= std::max(a.Y, b.Y);
}

bool Meet(const FlatChord& a, const FlatChord& b)
{
    const int fromSide = SideOf(a.From, a.To, b.From), toSide = SideOf(a.From, a.To, b.To);
    const int ownFrom = SideOf(b.From, b.To, a.From), ownTo = SideOf(b.From, b.To, a.To);
    if (fromSide * toSide < 0 && ownFrom * ownTo < 0)
        return true;
    return (fromSide == 0 && IsInBox(a.From, a.To, b.From)) || (toSide == 0 && IsInBox(a.From, a.To, b.To)) ||
           (ownFrom == 0 && IsInBox(b.From, b.To, a.From)) || (ownTo == 0 && IsInBox(b.From, b.To, a.To));
}

// The next chord turns right back.
bool RunsBack(const FlatChord& chord, const FlatChord& next)
{
    const std::int64_t along = (chord.To.X - chord.From.X) * (next.To.X - next.From.X) +
                               (chord.To.Y - chord.From.Y) * (next.To.Y - next.From.Y);
    return SideOf(chord.From, chord.To, next.To) == 0 && along < 0;
}

struct MeetingSearch {
    explicit MeetingSearch(const FlatPaths& paths) : Paths(paths) {}

    const FlatPaths& Paths;
    std::set<std::pair<std::int32_t, std::int32_t>> Pairs; // of paths, already found
    std::vector<PathMeeting> Meetings{};

    void Compare(std::int32_t one, std::int32_t other)
    {
        const FlatChord& a = Paths.Chords[static_cast<std::size_t>(one)];
        const FlatChord& b = Paths.Chords[static_cast<std::size_t>(other)];
        if (!DoMeet(a, b, one, other))
            return;
        const auto pair = std::minmax(a.Path, b.Path);
        if (!Pairs.insert(pair).second)
            return;
        Meetings.push_back({pair.first, pair.second, PlaceOf(a, b)});
    }

    // Where the chords cross, else an end of one that lies on the other.
    PlanePoint PlaceOf(const FlatChord& a, const FlatChord& b) const
    {
        const auto alongX = static_cast<double>(a.To.X - a.From.X);
        const auto alongY = static_cast<double>(a.To.Y - a.From.Y);
        const auto acrossX = static_cast<double>(b.To.X - b.From.X);
        const auto acrossY = static_cast<double>(b.To.Y - b.From.Y);
        const double turn = alongX * acrossY - alongY * acrossX;
        const WholePoint& end = IsInBox(a.From, a.To, b.To) ? b.To : b.From;
        if (turn == 0)
            return Paths.ToPlane(static_cast<double>(end.X), static_cast<double>(end.Y));
        const auto toX = static_cast<double>(b.From.X - a.From.X);
        const auto toY = static_cast<double>(b.From.Y - a.From.Y);
        const double share = (toX * acrossY - toY * acrossX) / turn;
        return Paths.ToPlane(static_cast<double>(a.From.X) + share * alongX,
                             static_cast<double>(a.From.Y) + share * alongY);
    }

    bool DoMeet(const FlatChord& a, const FlatChord& b, std::int32_t one, std::int32_t other) const
    {
        const bool follows = a.Next == other, precedes = b.Next == one;
        if (follows && precedes)
            return true; // a path of two chords encloses nothing
        if (follows)
            return RunsBack(a, b);
        return precedes ? RunsBack(b, a) : Meet(a, b);
    }
};

// Columns of cells over the chords' box; each chord is entered where it passes.
class ChordCells {
  public:
    explicit ChordCells(const std::vector<FlatChord>& chords)
    {
        Low = High = chords.front().From;
        for (const FlatChord& chord : chords) {
            Low = {std::min(Low.X, chord.From.X), std::min(Low.Y, chord.From.Y)};
            High = {std::max(High.X, chord.From.X), std::max(High.Y, chord.From.Y)};
        }
        Count = static_cast<std::int64_t>(std::ceil(std::sqrt(static_cast<double>(chords.size()))));
        const std::int64_t longer = std::max(High.X - Low.X, High.Y - Low.Y);
        Width = longer / Count + 1;
        Cells.resize(static_cast<std::size_t>(Count * Count));
        for (std::size_t i = 0; i < chords.size(); ++i)
            Enter(chords[i], static_cast<std::int32_t>(i));
    }
    std::vector<std::vector<std::int32_t>> Cells;

  private:
    std::int64_t ColumnOf(std::int64_t x) const { return (x - Low.X) / Width; }
    std::int64_t RowOf(std::int64_t y) const { return (y - Low.Y) / Width; }

    void Enter(const FlatChord& chord, std::int32_t number)
    {
        const bool leftFirst = chord.From.X <= chord.To.X;
        const WholePoint& left = leftFirst ? chord.From : chord.To;
        const WholePoint& right = leftFirst ? chord.To : chord.From;
        const double rise =
            left.X == right.X ? 0
                              : static_cast<double>(right.Y - left.Y) / static_cast<double>(right.X - left.X);
        const auto [low, high] = std::minmax(left.Y, right.Y);
        for (std::int64_t column = ColumnOf(left.X); column <= ColumnOf(right.X); ++column) {
            std::int64_t from = low, to = high;
            if (left.X != right.X) { // the part within the column, a step more on both sides
                const double begin = static_cast<double>(std::max(left.X, Low.X + column * Width) - left.X);
                const double end =
                    static_cast<double>(std::min(right.X, Low.X + (column + 1) * Width) - left.X);
                const double a = static_cast<double>(left.Y) + rise * begin;
                const double b = static_cast<double>(left.Y) + rise * end;
                from = std::max(low, static_cast<std::int64_t>(std::floor(std::min(a, b))) - 1);
                to = std::min(high, static_cast<std::int64_t>(std::ceil(std::max(a, b))) + 1);
            }
            for (std::int64_t row = RowOf(from); row <= RowOf(to); ++row)
                Cells[static_cast<std::size_t>(column * Count + row)].push_back(number);
        }
    }

    WholePoint Low, High;
    std::int64_t Count = 1, Width = 1;
};

} // namespace

std::vector<PathMeeting> MeetingsOf(const FlatPaths& paths)
{
    MeetingSearch search(paths);
    if (paths.Chords.empty())
        return {};
    const ChordCells cells(paths.Chords);
    for (const std::vector<std::int32_t>& cell : cells.Cells)
        for (std::size_t i = 0; i < cell.size(); ++i)
            for (std::size_t k = i + 1; k < cell.size(); ++k)
                search.Compare(cell[i], cell[k]);
    return search.Meetings;
}

} // namespace kv
