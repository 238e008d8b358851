// What the programs of the Genesis Evolution and of the horizontal drilling machine share: template
// fields that name the part, variables, the depth word and the way to the disk.
#pragma once

#include <string>
#include <string_view>

#include "writers/side_text.h"
#include "writers/template_fields.h"

namespace kv {

// Field 2: a line feed, "$=" and the description. Field 4: unit and size of the panel; it ends in a
// carriage return of its own, so that the file holds two.
std::string DescriptionField();
std::string PanelField(Single width, Single height);
// Adds the drawing's variables of names R and number to the end of the first field that holds "VAR{".
void AppendRVariables(TemplateFields& fields);
// "#3=-12"; a depth of 200 and more names an R variable: "#3=R5" for 205.
std::string SideDepthWord(Single depth);
// "#1002=" and the diameter, with a zero before its point: "#1002=0.5".
std::string DiameterWord(Single diameter);
// Writes the fields, the finished sides and a line end over the file. False when it failed; that is
// reported and the run is aborted.
bool PlaceSideProgram(const std::string& path, const TemplateFields& fields, const SideTexts& sides);

} // namespace kv
