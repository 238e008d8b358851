// The check of a job: what the drawing asks for, worked out when its panel is known, against the programs as
// they were written, read back.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "machine/steps.h"
#include "proof/proof.h"

namespace kv {

// By the setting Check.
bool ChecksPrograms();
// Another word than "yes" and "no" counts as "no"; it is reported, once a drawing.
void TellUnknownCheck();

// An entity that the check names, kept when the drawing is gone.
struct CheckedEntity {
    std::string Layer, Kind, Handle; // CP1252
    Long Line = 0;                   // of the drawing's file
};

// What a check found; of the drawing that ran last.
struct JobProof {
    bool IsDone = false;
    std::vector<std::string> Programs; // paths, as Finding::Program counts
    Proof Found;
    std::map<Long, CheckedEntity> Entities; // by Finding::Drawn and Unproved::Drawn
    std::vector<std::string> ToolFaults;    // of Tools.cfg: "line 3: ..."
};
extern JobProof ProofOfJob;

// Before the drawing is read: nothing is kept yet.
void StartCheck();
// When the panel and the run's parameters are settled.
void WorkOutDemands();
// When the programs are written: proves them, and reports what it finds.
void CheckPrograms();

// For the check of another program than the one that was written, an edited one say: its text takes the place
// of the drawing's programs. Empty: none does.
struct ProgramInstead {
    std::string Path, Text;
};
extern ProgramInstead CheckInstead;
extern double CheckTolerance; // mm

} // namespace kv
