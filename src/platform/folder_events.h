// Changes in folders, as the system announces them, so that a program that waits for a file need not look
// again and again. An announcement is a hint and may be missing (a folder of another machine often has none):
// what a folder holds is for its listing to say.
#pragma once

#include <string>
#include <vector>

namespace kv {

// From now on the changes in these folders count. To be called again from time to time: a folder that was
// not there, or was replaced, is found then. Cheap where nothing has changed.
void ListenToFolders(const std::vector<std::string>& folders);

// Sleeps until a file came, went or was written in one of the folders (true), or `seconds` are over, or a
// stop request came (false). Where the system announces nothing it just sleeps.
bool WaitForFolderChange(double seconds);

} // namespace kv
