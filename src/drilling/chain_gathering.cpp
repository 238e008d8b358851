// Brings the bores of each chain together, in two gatherings: the first keeps the larger chains in their
// places and lets the smaller ones give way, the second takes what is still apart to the chain's first
// bore. Relies on marks and sizes; leaves VBores in the order of the head's stops.
// The first gathering takes bores out and puts them in elsewhere one by one. Here a run of such moves is
// one pass over the places between, on three small numbers a bore.
#include "drilling/hole_chaining.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "state/run.h"

namespace kv {

namespace {

struct Member {
    Int Bore = 0; // index in VBores
    Int Mark = 0;
    Int Size = 0;
};
using MemberList = std::vector<Member>; // from 1

// The gathering of one chain.
struct Gathering {
    MemberList& List;
    Long At; // place of the bore that it started from; what is put in before it moves it up
    Int Mark, Size;
    std::vector<Member> Moved;                       // on their way to their new places
    Long Seen = 1;                                   // members counted
    Long Bound = static_cast<Long>(List.size()) - 1; // no member stands behind it

    Member& Place(Long place) { return List[static_cast<std::size_t>(place)]; }
    Long Last() const { return static_cast<Long>(List.size()) - 1; }
    bool IsMember(Long place) { return Place(place).Mark == Mark; }
    bool IsComplete(Long place) { return Place(place).Size == Seen; }
    bool MostAreSeen() const { return 2 * Seen > Size; }
};

// The last member behind `place`; 0 when there is none.
Long LastMember(Gathering& chain, Long place)
{
    while (chain.Bound > place && !chain.IsMember(chain.Bound))
        --chain.Bound;
    return chain.Bound > place ? chain.Bound : 0;
}

// Takes the bores of the places from `from` on, below `to`, for which `moves` holds out and puts them
// in before the chain's own, in their order.
template <typename Moves> void PutBefore(Gathering& chain, Long from, Long to, const Moves& moves)
{
    chain.Moved.clear();
    Long filled = to; // places from here on, below `to`, have their new bores
    for (Long place = to - 1; place >= from; --place) {
        const Member member = chain.Place(place);
        if (moves(member))
            chain.Moved.push_back(member);
        else
            chain.Place(--filled) = member;
    }
    const auto list = chain.List.begin();
    std::move_backward(list + chain.At, list + from, list + filled);
    std::copy(chain.Moved.rbegin(), chain.Moved.rend(), list + chain.At);
    chain.At += static_cast<Long>(chain.Moved.size());
}

void PullMembersBehind(Gathering& chain, Long place)
{
    const Long last = LastMember(chain, place);
    if (last == 0)
        return;
    const Long before = chain.At;
    PutBefore(chain, place + 1, last + 1, [&](const Member& m) { return m.Mark == chain.Mark; });
    chain.Seen += chain.At - before;
}

// How a walk along the list left a place.
enum class Met { End, Complete, OfSmallerChain };

// Most members are seen: bores of larger chains are put in before the chain's own, up to the place where
// the chain is complete or a bore of a smaller chain makes way for members behind it.
Met PassLargerChains(Gathering& chain, Long& place)
{
    const Long from = std::max(place, chain.At + 1); // members alone stand before
    bool anyLarger = false;
    Met met = Met::End;
    for (; place <= chain.Last() && met == Met::End; ++place) {
        const Member& member = chain.Place(place);
        if (member.Mark == chain.Mark) {
            ++chain.Seen;
            met = chain.IsComplete(place) ? Met::Complete : Met::End;
        } else if (member.Size > chain.Size) {
            anyLarger = true;
        } else if (LastMember(chain, place) != 0) {
            met = Met::OfSmallerChain;
        } else if (chain.IsComplete(place)) {
            met = Met::Complete;
        }
    }
    if (met != Met::End)
        --place;
    if (anyLarger)
        PutBefore(chain, from, place,
                  [&](const Member& m) { return m.Mark != chain.Mark && m.Size > chain.Size; });
    return met;
}

// Few members are seen: a bore of a larger chain goes behind the chain's last member. It counts as one,
// and the bore that moves up into its place is not looked at.
void PutBehindLastMember(Gathering& chain, Long place)
{
    const Long last = LastMember(chain, place);
    if (last == 0)
        return;
    const auto list = chain.List.begin();
    std::rotate(list + place, list + place + 1, list + last + 1);
    ++chain.Seen;
}

// Gives the place to go on behind. It may lie before the chain's place, among its members.
Long GatherChain(Gathering& chain)
{
    for (Long place = chain.At + 1; place <= chain.Last(); ++place) {
        Met met = Met::OfSmallerChain;
        if (chain.MostAreSeen())
            met = PassLargerChains(chain, place);
        else if (chain.IsMember(place))
            met = (++chain.Seen, chain.IsComplete(place)) ? Met::Complete : Met::End;
        else if (chain.Place(place).Size > chain.Size)
            met = (PutBehindLastMember(chain, place), Met::End);
        if (met == Met::OfSmallerChain) {
            PullMembersBehind(chain, place);
            met = chain.IsComplete(place) ? Met::Complete : Met::End; // the bore that now stands there
        }
        if (met == Met::Complete)
            return place;
    }
    return chain.At;
}

void GatherAroundLargeChains(MemberList& list)
{
    std::vector<Member> moved;
    moved.reserve(list.size());
    for (Long i = 1; i + 1 < static_cast<Long>(list.size()); ++i) {
        const Member& first = list[static_cast<std::size_t>(i)];
        if (first.Mark == 0 || first.Size == 0)
            continue;
        Gathering chain{list, i, first.Mark, first.Size, std::move(moved)};
        i = GatherChain(chain);
        moved = std::move(chain.Moved);
    }
}

// Each chain whole at the place of its first bore.
std::vector<Long> GatherWhole(const MemberList& list)
{
    std::vector<Long> firstOf(list.size(), 0); // by the index in the mark
    std::vector<Long> nextOf(list.size(), 0);
    for (Long i = static_cast<Long>(list.size()) - 1; i >= 1; --i) {
        Long& first = firstOf[static_cast<std::size_t>(std::abs(list[static_cast<std::size_t>(i)].Mark))];
        nextOf[static_cast<std::size_t>(i)] = first;
        first = i;
    }
    std::vector<Long> order;
    order.reserve(list.size());
    for (std::size_t i = 1; i < list.size(); ++i) {
        if (list[i].Mark == 0) {
            order.push_back(list[i].Bore);
            continue;
        }
        Long& first = firstOf[static_cast<std::size_t>(std::abs(list[i].Mark))];
        for (; first != 0; first = nextOf[static_cast<std::size_t>(first)]) // 0 once it is copied
            order.push_back(list[static_cast<std::size_t>(first)].Bore);
    }
    return order;
}

} // namespace

void GatherChains()
{
    MemberList list(1);
    list.reserve(static_cast<std::size_t>(VBores.Last()) + 1);
    for (Long i = 1; i <= VBores.Last(); ++i)
        list.push_back({static_cast<Int>(i), VBores[i].Group, VBores[i].Speed});
    GatherAroundLargeChains(list);

    std::vector<VBoreRecord> gathered;
    gathered.reserve(list.size());
    for (const Long bore : GatherWhole(list))
        gathered.push_back(VBores[bore]);
    std::copy(gathered.begin(), gathered.end(), VBores.begin() + 1);
}

} // namespace kv
