// One running window for each installation: a second one hands the word to the first and ends.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// True when no other process holds the installation `folder`; this one then does until it ends. False
// when another one does: it has been asked to come to the front.
bool BecomeOnlyInstance(std::string_view folder);
// Whether another process has asked since the last call.
bool AskedToFront();

// For the backends: a short name of letters, digits and "-" for the folder, as spelled.
std::string InstanceName(std::string_view folder);

} // namespace kv
