// What a disturbed run may leave and what not. A finding is a text that begins with the path.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "faults/shop.h"

namespace fault_test {

using Findings = std::vector<std::string>;

// Trees of undisturbed runs, with which disturbed ones are compared.
struct Reference {
    Tree Before;
    Tree Once; // after the call
    std::vector<Tree>
        Others; // after the call twice, after the probe, after both: what else may stand in a file
    std::set<std::string> Volatile; // differ from run to run: only their names are compared
    Words OperatorLines;

    const Tree* Final = nullptr; // what the last run of a check must leave; Once where it is not set
};

// Paths that no undisturbed run leaves: temporary files, journals.
Findings StraysIn(const Reference& reference, const Tree& now);

// Nothing lost and nothing partial: every file is there with the bytes from before or from an undisturbed
// run; every old record of the index and row of the cut list stands; each record has its program, a new
// record the new one; the operator's lines stand. Strays are passed over.
Findings JudgeKept(const Reference& reference, const Tree& now);

// Exactly the files of the undisturbed run. With `runs` of 2 the notes may be those of a second run, which
// merges again, and a new row of the cut list may stand `rows` times.
Findings JudgeDone(const Reference& reference, const Tree& now, int runs = 1, int rows = 1);

// Whether a line names the file (for one that the shop does not know, its folder) and the system's words.
bool TellsCause(const Reference& reference, const std::string& said, const std::string& path, int error,
                const fs::path& root);

} // namespace fault_test
