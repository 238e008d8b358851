// Pictures for people: what a panel's drawing asks for and what its program cuts. Only where the variable
// KORVANTI_PICTURES names a folder.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "support/proof/deviations.h"

namespace kv::test {

// The folder of the environment; none: no pictures are wanted.
std::optional<std::string> PictureFolder();

// An SVG of the face, below it the edges that are routed: the drawn ways black, what the tool covers tan,
// the way of its centre thin, what it cuts outside red, what it leaves blue.
std::string PictureOf(const DrawnPanel& panel, const std::vector<AskedCut>& asked, const MachineSteps& steps);

// Writes NAME.svg to that folder; nothing where no pictures are wanted.
void KeepPicture(const std::string& name, const DrawnPanel& panel, const std::vector<AskedCut>& asked,
                 const MachineSteps& steps);

} // namespace kv::test
