// What tells this process from others that work in the same folders, here and on other machines.
#pragma once

#include <string>

namespace kv {

long long ProcessNumber();
bool ProcessRuns(long long number); // on this machine; also one that this person may not touch
std::string MachineName();          // for a person; CP1252
// Whatever tells the machine from all others on which the same process numbers mean other processes.
std::string MachineIdentity();

} // namespace kv
