// What a list without a drawing says, and the steps that it offers: the folders of the drawings and of the
// control, an empty index for a new control folder, the example drawings.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

struct FirstSteps {
    std::vector<std::string> Lines; // CP1252; for people
    bool ChooseControl = false;     // the destination path leads to no folder
    bool MakeIndex = false;         // of the CNC90/WINNER90: it has no INDICE.PRG
    bool SetOrder = false;          // no operation has a place in the sequence: programs would be empty
    bool CopyExamples = false;      // the source folder is there and examples came with the program
};
// By the settings and the disk as they are now.
FirstSteps FirstStepsNow();

// The program folder of the control system becomes that folder. Not while jobs run.
void ChangeProgramFolder(std::string_view folder);
// An empty INDICE.PRG in the program folder; one that is there stays.
void MakeIndexFile();
// Vertical bores, grooves, horizontal bores, routes.
void UseUsualOrder();
// Into the source folder; drawings that are there stay. What cannot be copied is reported.
void CopyExampleDrawings();
// Of the installed program or the tree that it was built in; empty: none.
std::string ExampleFolder();

} // namespace kv
