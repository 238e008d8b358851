// The records of a run as plain structs, fields in the order in which they are documented. Arrays
// are 1-based in use, with a blank element 0; loops that run from 0 rely on that element's being
// blank.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/numbers.h"
#include "platform/run_error.h"

namespace kv {

// A fixed field of N characters: cuts without notice, pads with blanks, compares as the text without
// its trailing blanks. No heap.
template <std::size_t N> struct Text {
    char Characters[N];

    Text() { std::memset(Characters, ' ', N); }
    Text(std::string_view text) { *this = text; }
    Text& operator=(std::string_view text)
    {
        const std::size_t kept = text.size() < N ? text.size() : N;
        char field[N]; // filled apart: the text may stand in this very field
        std::memset(field, ' ', N);
        if (kept > 0) // an empty view may stand at no place
            std::memcpy(field, text.data(), kept);
        std::memcpy(Characters, field, N);
        return *this;
    }
    std::string_view Padded() const { return {Characters, N}; }
    std::string_view Trimmed() const
    {
        std::size_t length = N;
        while (length >= sizeof BlankWord && IsBlankWord(Characters + length - sizeof BlankWord))
            length -= sizeof BlankWord;
        while (length > 0 && Characters[length - 1] == ' ')
            --length;
        return {Characters, length};
    }
    friend bool operator==(const Text& a, std::string_view b)
    {
        const std::string_view text = b.substr(0, b.find_last_not_of(' ') + 1);
        return a.Padded().starts_with(text) && a.Trimmed().size() == text.size();
    }
    friend bool operator==(const Text& a, const Text& b)
    {
        return std::memcmp(a.Characters, b.Characters, N) == 0;
    }

  private:
    // Layers have 114 characters and mostly ten letters, and each pass asks for them: blanks are passed over
    // by words.
    static constexpr std::uint64_t BlankWord = 0x2020202020202020;
    static bool IsBlankWord(const char* characters)
    {
        std::uint64_t word = 0;
        std::memcpy(&word, characters, sizeof word);
        return word == BlankWord;
    }
};

// An array that grows one record at a time and keeps a blank element 0. The records move as plain
// bytes, so a growing array of 100 MB is never held twice where the system can move its pages.
template <typename Record> class RecordArray {
    static_assert(std::is_trivially_copyable_v<Record>);

  public:
    RecordArray() { Clear(); }
    ~RecordArray() { std::free(Records); }
    RecordArray(const RecordArray&) = delete;
    RecordArray& operator=(const RecordArray&) = delete;

    // Back to the blank element 0 alone; the memory is given back.
    void Clear()
    {
        std::free(Records);
        Records = nullptr;
        Count = Room = 0;
        Append(Record{});
    }
    Long Last() const { return static_cast<Long>(Count) - 1; } // highest index
    Record& operator[](Long index) { return Records[index]; }
    const Record& operator[](Long index) const { return Records[index]; }
    Record* begin() { return Records; }
    Record* end() { return Records + Count; }

    Record& Append(const Record& record)
    {
        const Record copy = record; // it may stand in this very array
        if (Count == Room)
            Reserve(Room == 0 ? 1 : Room * 2);
        std::memcpy(static_cast<void*>(Records + Count), &copy, sizeof(Record));
        return Records[Count++];
    }
    // Cuts the array to `last` as its highest index.
    void CutTo(Long last) { Count = static_cast<std::size_t>(last) + 1; }

  private:
    void Reserve(std::size_t room)
    {
        void* const moved = std::realloc(static_cast<void*>(Records), room * sizeof(Record));
        if (moved == nullptr)
            throw RunError{7, "Out of memory"};
        Records = static_cast<Record*>(moved);
        Room = room;
    }

    Record* Records = nullptr;
    std::size_t Count = 0, Room = 0;
};

// Appends a record to an array whose index is an Int; `what` names the records in the error.
template <typename Record>
Record& Grow(RecordArray<Record>& array, std::string_view what, const Record& record = Record{})
{
    if (array.Last() >= MaxIndex)
        throw RunError{ErrorOverflow, "More than " + WholeText(MaxIndex) + " " + std::string(what)};
    return array.Append(record);
}

// One record of the drawing's ENTITIES section.
// The panel's face among its sides; 1 to 4 are the edges, also as indices of the arrays by side.
constexpr Int Face = 5;

struct DxfEntity {
    Text<10> Kind;
    Int TextIndex = 0; // in EntityTexts; 0 for all but TEXT
    Text<114> Layer;   // upper-cased; rewritten in place by instructions and layer rules
    Single X1 = 0, Y1 = 0, X2 = 0, Y2 = 0, Z1 = 0, Z2 = 0;
    Single Elevation = 0, Thickness = 0, Radius = 0, EndWidth = 0, Bulge = 0, StartAngle = 0, EndAngle = 0;
    Int Color = 0, Flags = 0, TextAlign = 0, FollowFlag = 0;
    Text<1> Side; // "1" to "5" or blank
    Int ExtrusionZ = 0;
    Text<3> Reserved;
    Long Drawn = 0; // its number among DrawnEntities
};

// One vertical bore.
struct VBoreRecord {
    Single X = 0, Y = 0; // from the origin
    Single Depth = 0;    // 90 and more are codes
    Single Diameter = 0;
    Int Group = 0; // G code; 0 takes the bore away from the writers
    Int Speed = 0;
    Single Feed = 0;
    Text<30> Tool; // digit pairs
    Single PeckDepth = 0;
    Int Pitch = 0; // of a chain
    Int ExtraSlot = 0;
    Int Bottom = 0; // 0 to 5
    Long Drawn = 0; // the entities that it comes from
};

// One point of a route; a path is a run of records that begins with a negative Kind.
struct RouteSegment {
    Long Pass = 0; // route layer number, from 1
    Single X = 0, Y = 0, Z = 0;
    Single Diameter = 0;
    Int Group = 0;
    Int ToolNo = 0;
    Text<10> Tool;
    Single Aux1 = 0, Aux2 = 0; // by Kind: centre, angles, bulge or widths
    Int Kind = 0; // 0 dead, -1/1 line, -3/3 arc, -5/5 polyline, -4 tapered start, -2/2 three-point arc
    Int Dir = 0;  // on Kind 3: 0 clockwise; on the first record of a chain -8
    Int Speed = 0;
    Single Feed = 0, FeedDown = 0, FeedRapid = 0, LeadIn = 0, RampOut = 0, RampIn = 0;
    Text<10> Comp;
    Int Sequence = 0;
    Single OscZ = 0; // on EXCAV layers -(K + 1)
    Int MCode = 0;
    Int Side = 0; // 1 to 5
    Int ExtraSlot = 0;
    Single ParamA = 0, ParamB = 0;
    Int Flag = 0;
    Long Drawn = 0; // the entities that it comes from
};

// A saw groove, as drawn (Grooves) and as sawn (GroovePasses).
struct GrooveRecord {
    Single X1 = 0, Y1 = 0, X2 = 0, Y2 = 0; // from the origin
    Single Depth = 0;
    Single Width = 0; // -1: the second line of a pair
    Single Kerf = 0;  // drawing units
    Single FeedDown = 0, Feed = 0;
    Long ToolNumber = 0;
    Int GrooveSide = 0; // -1 left, 1 right, 0 centred
    Long Drawn = 0;     // the entities that it comes from
};
using GroovePass = GrooveRecord;

// A CIRCLE on a route layer, until it is joined to a path as two arcs.
struct RouteCircle {
    Single X = 0, Y = 0, Z = 0, Diameter = 0; // centre, depth, tool diameter
    Int Group = 0, ToolNo = 0;
    Text<12> Tool;
    Single Radius = 0;
    Int Pass = 0; // route layer number; 0 after its use as a lead-in circle
    Int Used = 0;
    Int Speed = 0;
    Single Feed = 0, FeedDown = 0, FeedRapid = 0, LeadIn = 0, RampOut = 0, RampIn = 0;
    Text<10> Comp;
    Int Sequence = 0, MCode = 0;
    Single OscZ = 0;
    Int Side = 0; // 1 to 5
    Int ExtraSlot = 0;
    Long Drawn = 0; // the entities that it comes from
};

// A horizontal drilling line in plan.
struct HBoreLineRecord {
    Single X1 = 0, Y1 = 0, X2 = 0, Y2 = 0; // from the origin
    Single Feed = 0;
    Single Depth = 0;
    Single Reserved = 0;
    Int Edge = 0;
    Int Group = 0, Speed = 0;
    Text<30> Tool;
    Int ExtraSlot = 0, Bottom = 0;
    Long Drawn = 0; // the entities that it comes from
};

// A horizontal bore; PosX and PosY are measured by the panel side.
struct HBoreRecord {
    Long Side = 0; // 1 to 4
    Single Feed = 0;
    Single PosX = 0, PosY = 0;
    Single Z = 0;
    Single Diameter = 0;
    Int Group = 0, Speed = 0;
    Text<30> Tool;
    Int ExtraSlot = 0, Bottom = 0;
    Long Drawn = 0; // the entities that it comes from
};

// A stop of the multi-spindle head: one bore or a chain along X or Y.
struct HeadPosition {
    Single X = 0, Y = 0; // start of the row, in the program's coordinates
    Single Depth = 0, Diameter = 0;
    Text<40> Tool; // two digits for each drill that works at the stop; blank: nothing is emitted
    Int ChainSize = 0;
    Int Pitch = 0;     // mm
    Int Direction = 0; // 1 along X, -1 along Y, 0 a lone bore
    Single EndX = 0, EndY = 0;
    Single Feed = 0;
    Int ExtraSlot = 0, Side = 0;
    Long Drawn = 0; // the entities of all its bores
};

} // namespace kv
