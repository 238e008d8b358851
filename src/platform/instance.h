// One process at a time that waits for work in an installation, a window or a watcher, whoever started it: a
// second window hands the word to the first and ends, anything else is told who is there.
#pragma once

#include <string>
#include <string_view>

namespace kv {

struct [[nodiscard]] InstanceAnswer {
    bool Only = false;     // this process holds the installation until it ends
    std::string Holder;    // else: program, process and machine of the one that does, for a person; CP1252
    bool SameHere = false; // that is the same program on this machine, which can come to the front
};

// Takes the installation `folder` when no other process holds it, and gives back the one taken before. Where
// nobody can lock, the work goes on, twice if need be.
InstanceAnswer BecomeOnlyInstance(std::string_view folder);
// Asks the process that holds the installation to come to the front.
void AskToFront(std::string_view folder);
// Whether another process has asked since the last call.
bool AskedToFront();

// For the backends. A short name of letters, digits and "-" for the folder, as spelled.
std::string InstanceName(std::string_view folder);
// The file that stands for the installation in the lock beside it; it need not be there.
std::string InstanceFile(std::string_view folder);
InstanceAnswer HeldBy(const std::string& holder);

} // namespace kv
