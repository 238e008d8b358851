// The pairs of HEADER and TABLES. Nothing of this refuses a drawing: a line that is no group code ends the
// section for this reader alone.
#include "drawing/drawing_facts.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

#include "drawing/group_codes.h"
#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/drawn_names.h"

namespace kv {

namespace {

constexpr std::size_t MostHiddenLayers = 100'000; // of a damaged table; more are taken as shown

int Units = 0;
bool ForeignLetters = false, Mirrored = false, Negative = false;
std::unordered_map<std::string, Sight> HiddenLayers; // by upper-case names
std::vector<bool> InPaperSpace;                      // by drawn entity; as long as the last one of them

constexpr DrawnUnit UnitRows[] = {
    {1, "inch", 25.4},
    {2, "feet", 304.8},
    {3, "miles", 1609344},
    {4, "mm", 1},
    {5, "cm", 10},
    {6, "m", 1000},
    {7, "km", 1e6},
    {8, "microinches", 25.4e-6},
    {9, "mils", 25.4e-3},
    {10, "yards", 914.4},
    {11, "angstroms", 1e-7},
    {12, "nanometres", 1e-6},
    {13, "microns", 1e-3},
    {14, "dm", 100},
    {15, "decametres", 1e4},
    {16, "hectometres", 1e5},
    {17, "gigametres", 1e12},
    {21, "US survey feet", 304.8006},
    {22, "US survey inches", 25.40005},
};

} // namespace

void ForgetDrawingFacts()
{
    Units = 0;
    ForeignLetters = Mirrored = Negative = false;
    HiddenLayers.clear();
    InPaperSpace.clear();
}

int DrawnUnits()
{
    return Units;
}

void NotePaperSpace(Long drawn)
{
    const auto place = static_cast<std::size_t>(drawn);
    if (InPaperSpace.size() <= place)
        InPaperSpace.resize(place + 1);
    InPaperSpace[place] = true;
}

void NoteForeignLetters()
{
    ForeignLetters = true;
}

bool MetForeignLetters()
{
    return ForeignLetters;
}

void NoteMirrored()
{
    Mirrored = true;
}

bool MetMirrored()
{
    return Mirrored;
}

void NoteNegative()
{
    Negative = true;
}

bool MetNegative()
{
    return Negative;
}

bool MetPaperSpace()
{
    return !InPaperSpace.empty();
}

bool IsHiddenLayer(std::string_view name)
{
    return !HiddenLayers.empty() && HiddenLayers.contains(UpperCase(name));
}

Sight SightOf(Long drawn)
{
    if (drawn <= 0)
        return Sight::Shown;
    const Long whole = DrawnAs(drawn);
    const auto place = static_cast<std::size_t>(whole);
    if (place < InPaperSpace.size() && InPaperSpace[place])
        return Sight::PaperSpace;
    if (HiddenLayers.empty())
        return Sight::Shown;
    const auto layer = HiddenLayers.find(UpperCase(NameOfNumber(LookOf(whole).Layer)));
    return layer == HiddenLayers.end() ? Sight::Shown : layer->second;
}

void FactsReader::BeginSection(std::string_view name)
{
    Section = name == "HEADER"   ? Part::Header
              : name == "TABLES" ? Part::Tables
              : name == "BLOCKS" ? Part::Blocks
                                 : Part::Other;
    HasCode = IsUnits = InLayer = false;
    Blocks.Begin();
}

void FactsReader::Take(std::string_view line)
{
    if (HasCode) {
        HasCode = false;
        if (Matters(Code)) // few lines of a table do
            TakePair(Trim(line));
        return;
    }
    Code = GroupCode(line);
    if (Code == NoNumber)
        Code = UnusualGroupCode(line);
    HasCode = Code != NoNumber;
    if (!HasCode)
        Section = Part::Other;
}

bool FactsReader::Matters(int code) const
{
    if (Section == Part::Blocks)
        return BlockReader::Matters(code);
    return code == 0 || code == 2 || code == 9 || code == 62 || code == 70;
}

void FactsReader::TakePair(std::string_view value)
{
    if (Section == Part::Header)
        TakeHeaderPair(value);
    else if (Section == Part::Blocks)
        Blocks.Take(Code, value);
    else
        TakeTablePair(value);
    if (Code == 0 && value == "ENDSEC")
        Section = Part::Other;
}

void FactsReader::TakeHeaderPair(std::string_view value)
{
    constexpr double mostUnits = 1000; // far above the numbers that have a meaning
    if (Code == 9)
        IsUnits = value == "$INSUNITS";
    if (Code != 70 || !IsUnits)
        return;
    const double number = Val(value);
    Units = number > 0 && number < mostUnits ? static_cast<int>(number) : 0;
}

void FactsReader::TakeTablePair(std::string_view value)
{
    if (Code == 0) {
        EndLayer();
        InLayer = value == "LAYER";
        IsFrozen = IsOff = false;
        NameLength = 0;
    }
    if (!InLayer)
        return;
    if (Code == 2 && value.size() <= sizeof Name) {
        std::copy(value.begin(), value.end(), Name);
        NameLength = value.size();
    } else if (Code == 62) {
        IsOff = BeginsWith(value, "-");
    } else if (Code == 70) {
        const double flags = Val(value);
        IsFrozen = flags >= 0 && flags < 65536 && (static_cast<int>(flags) & 1) != 0;
    }
}

// Of two layers of one name the later one counts.
void FactsReader::EndLayer()
{
    const bool isShown = !IsFrozen && !IsOff;
    if (!InLayer || NameLength == 0 || (isShown && HiddenLayers.empty()))
        return;
    const std::string name = UpperCase(std::string_view(Name, NameLength));
    if (isShown)
        HiddenLayers.erase(name);
    else if (HiddenLayers.size() < MostHiddenLayers)
        HiddenLayers[name] = IsFrozen ? Sight::FrozenLayer : Sight::LayerOff;
}

const DrawnUnit* UnitOfDrawing()
{
    for (const DrawnUnit& row : UnitRows)
        if (row.Number == DrawnUnits())
            return &row;
    return nullptr;
}

} // namespace kv
