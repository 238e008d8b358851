// This test program once more, as the process beside the one of the test: the word in its environment says
// what it is to do, its exit code what came of it.
#pragma once

#include <string>

namespace kv::test {

constexpr const char* TaskVariable = "KV_TEST_TASK"; // "exit N", "wait", "second FOLDER", "hold FOLDER"
constexpr const char* SignVariable = "KV_TEST_SIGN"; // a file that "hold" makes when it is ready

// Command line of this program that does the task of the environment and ends.
std::string SecondProcess();

} // namespace kv::test
