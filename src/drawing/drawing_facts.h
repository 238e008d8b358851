// What a drawing says of itself beside its entities: the unit in its header, and which layers its table
// hides. The run takes none of it; a person who drew in inch or on a frozen layer is told where that matters.
#pragma once

#include <string_view>

#include "drawing/block_facts.h"
#include "platform/numbers.h"

namespace kv {

// Why a person who looks at the drawing does not see an entity.
enum class Sight : unsigned char { Shown, PaperSpace, FrozenLayer, LayerOff };

// Before a drawing is read.
void ForgetDrawingFacts();
// The number behind $INSUNITS; 0 where the drawing has none.
int DrawnUnits();
// What the numbers of $INSUNITS mean.
struct DrawnUnit {
    int Number = 0;
    std::string_view Name;
    double Millimetres = 0;
};
const DrawnUnit* UnitOfDrawing(); // null: it names none
// The reader met group 67 of 1.
void NotePaperSpace(Long drawn);
// The reader met a letter that is no plain ASCII, or a backslash, which may begin one.
void NoteForeignLetters();
bool MetForeignLetters();
// The reader met extrusion 0,0,-1; a coordinate below zero.
void NoteMirrored();
bool MetMirrored();
void NoteNegative();
bool MetNegative();
bool MetPaperSpace();
bool IsHiddenLayer(std::string_view name); // frozen or off
// Of an entity whose layer is named; a vertex is where its polyline is.
Sight SightOf(Long drawn);

// Reads the sections in front of the entities, line by line. What it cannot follow it leaves alone.
class FactsReader {
  public:
    void BeginSection(std::string_view name);
    bool IsReading() const { return Section != Part::Other; } // else no line matters until the next section
    void Take(std::string_view line);

  private:
    enum class Part : unsigned char { Other, Header, Tables, Blocks };

    bool Matters(int code) const;
    void TakePair(std::string_view value);
    void TakeHeaderPair(std::string_view value);
    void TakeTablePair(std::string_view value);
    void EndLayer();

    Part Section = Part::Other;
    bool HasCode = false;
    int Code = 0;
    bool IsUnits = false; // the header's variable that runs
    bool InLayer = false; // the record of a layer runs
    bool IsFrozen = false, IsOff = false;
    char Name[256] = {}; // of the layer; no drawing's is longer
    std::size_t NameLength = 0;
    BlockReader Blocks;
};

} // namespace kv
