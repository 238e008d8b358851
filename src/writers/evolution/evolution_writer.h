// What the units of the Genesis Evolution writer share: the program in the making and the steps that
// work on it.
#pragma once

#include <string>
#include <vector>

#include "geometry/angles.h"
#include "writers/side_program.h"

namespace kv {

// A template above this is none: its fields would take several times its size.
constexpr std::uint64_t LargestTemplate = 64 * 1024 * 1024; // bytes

struct EvolutionProgram {
    TemplateFields Fields;
    SideTexts Sides;
    Long Done = 0, Total = 0; // bores and route records
};

// Reads EvHeader.dat of the program's own folder. False when there is none; that is told.
bool LoadEvolutionTemplate(TemplateFields& fields);
// Description, panel, offsets, variables and sorting of the drawing.
void FillEvolutionTemplate(TemplateFields& fields);
// The 13 rows behind "OPTI{" for a sort mode.
std::vector<std::string> BuildOptimizerRows(Int sorting);
// Puts the list of sides in its place, which must be one of the first nine fields.
void FillSideList(TemplateFields& fields, const std::string& list);

// Operations of one class; each adds its lines. False when the operator asked to abort.
bool WriteEvolutionVBores(EvolutionProgram& program);
bool WriteEvolutionHBores(EvolutionProgram& program);
bool WriteEvolutionRoutes(EvolutionProgram& program);
bool WriteEvolutionGrooves(EvolutionProgram& program);

// The sides, for words of a record that comes from those entities.
SideTexts& For(EvolutionProgram& program, Long drawn);
// Counts the next bore or route record. False when the operator asked to abort.
bool TakeEvolutionRecord(EvolutionProgram& program);
// Name and value as a coordinate, with FormatCoord; the second form leaves out a value of 0.
void AddCoord(SideTexts& sides, std::string_view name, Single value);
void AddCoordUnlessZero(SideTexts& sides, std::string_view name, Single value);
void AddWhole(SideTexts& sides, std::string_view name, Long value);
// "#205=" and "#1002=", each left out for 0; the diameter has a zero before its point: "0.5".
void AddTool(SideTexts& sides, Long number);
void AddDiameter(SideTexts& sides, Single diameter);
void EndOperation(SideTexts& sides);

// Centre of the arc between two points: left of the way from the second point to the first for a
// radius above 0, right of it otherwise. The points' distance is taken to five decimals.
PlanePoint ArcCentre(const PlanePoint& first, const PlanePoint& second, double r);
// Half away from zero, on the exact binary value.
double RoundedToFiveDecimals(double value);

} // namespace kv
