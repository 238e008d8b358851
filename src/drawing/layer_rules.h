// A layer's name is a small program: its first five characters say what an entity is, the rest holds
// letter-coded parameters. This header is what the other passes read of it.
#pragma once

#include <string>
#include <string_view>

#include "state/run.h"

namespace kv {

// Two-letter codes are rewritten in the stored layer to a blank and one of these.
constexpr char MarkFeedArc = '\xFC';   // FA
constexpr char MarkFeedDown = '\xE6';  // FD
constexpr char MarkFeedRapid = '\xE7'; // FR
constexpr char MarkLeadIn = '\xE4';    // LD
constexpr char MarkRampOut = '\xE5';   // RO
constexpr char MarkRampIn = '\xE8';    // RI
constexpr char MarkPeckDepth = '\xE9'; // PD
constexpr char MarkExtraSlot = '\xEB'; // ES, EX
constexpr char MarkOscZ = '\xEA';      // OZ
constexpr char MarkZTable = '\xDF';    // ZR, behind a Z
constexpr char MarkBottom0 = '\xEE';   // BB
constexpr char MarkBottom1 = '\xEC';   // TB
constexpr char MarkBottom2 = '\xC4';   // CB
constexpr char MarkBottom3 = '\xC5';   // SB
constexpr char MarkBottom4 = '\xD6';   // DI
constexpr char MarkBottom5 = '\xDC';   // DG

// The entity that the passes look at, loaded by DecodeEntity.
struct DecodedEntity {
    std::string Kind; // without trailing blanks
    std::string Text;
    std::string Layer; // without trailing blanks
    Single X1 = 0, Y1 = 0, X2 = 0, Y2 = 0, Z1 = 0, Z2 = 0;
    Single Elevation = 0, Thickness = 0, SideThickness = 0;
    Single Radius = 0, StartWidth = 0, EndWidth = 0, Bulge = 0, StartAngle = 0, EndAngle = 0;
    Int Color = 0, Flags = 0, TextAlign = 0, ExtrusionZ = 0, FollowFlag = 0;
    Long Drawn = 0; // its number among DrawnEntities
    Int Side = 0;
    Int Sequence = 0;
    std::string NoteText; // in force until the next lookup
    Int SearchNotes = 0;  // True: the next decode looks for a note at its points
};
extern DecodedEntity CurrentEntity;
// True when the last ReadDepth found no Z: the caller may take the entity's own.
extern Int DepthFromEntity;

// Rewrites the two-letter codes of all layers until stable; reads the flags of BORDER layers.
void RewriteLayerCodes();
// The flags of one BORDER layer, from position 6 of its rewritten name.
void ReadBorderFlags(std::string_view layer);
// Splits names with "$" into further passes and renumbers numbered routes.
void ExpandLayerPasses();
// Loads Entities[index] into CurrentEntity and moves index on by one.
void DecodeEntity(Long& index);

// A rewritten name as people know it: as the drawing spells it. Where no layer of the drawing became it, the
// marks are shown as the codes that they stand for (an EX reads ES).
std::string ShownLayer(std::string_view layer);

// First position at which a parameter code of this layer counts (6, or behind a longer layer word).
Long FirstCodePosition(std::string_view layer);

// Parameters of CurrentEntity: its NoteText where that holds the code, else its Layer.
Single ReadDepth();
Single ReadDiameter();
Int ReadToolNumber();
std::string ReadToolString();
Int ReadSpeed();
Single ReadFeed();
Single ReadFeedArc();
Single ReadFeedDown();
Single ReadFeedRapid();
Single ReadParamA();
Single ReadParamB();
Int ReadGroup();
Single ReadExcav();
Single ReadLeadIn();
Single ReadRampOut();
Single ReadRampIn();
Single ReadPeckDepth();
Single ReadOscZ();
Int ReadExtraSlot();
Int ReadMCode();
std::string ReadComp(); // "G42 R4.5", "G41", or empty
Int ReadBottom();
Int ReadGrooveSide();

} // namespace kv
