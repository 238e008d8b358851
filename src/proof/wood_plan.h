// Everything of one drawing that routers and saws are asked to do, and do, as pieces of the ways of tools'
// middles: what the proofs of ways share.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "machine/steps.h"
#include "proof/demands.h"
#include "proof/piece_cover.h"
#include "proof/wood_region.h"

namespace kv {

// A cut of a program as the machine makes it.
struct MadeCut {
    const RouterCut* Cut = nullptr;
    std::size_t Program = 0;
    std::size_t FirstPiece = 0, LastPiece = 0; // of MadePieces; behind the last
    std::size_t OwnWay = 0;                    // that it mostly follows; NoWay: none
    std::string NarrowText;                    // where a control could not follow; empty: nowhere
    PathPoint NarrowAt;
    std::size_t NarrowLine = 0;
};
constexpr std::size_t NoWay = static_cast<std::size_t>(-1);

// A way as it is asked for.
struct AskedCut {
    std::size_t FirstPiece = 0, LastPiece = 0; // of AskedPieces
    WoodShape Inside;                          // of a closed way; else empty
    bool IsToolOutside = false;                // of a closed way with the tool beside it
    bool IsJudged = true;                      // false: its tool is not known
};

struct WoodPlan {
    const Demands& Asked;
    double Tolerance = 0;
    std::vector<CutPiece> AskedPieces, MadePieces;
    std::vector<AskedCut> AskedCuts; // by Demands::Ways
    std::vector<MadeCut> MadeCuts;
    std::vector<WoodShape> PocketInsides; // by Demands::Pockets
};

// Radii that a program leaves open are those that the layer of the same tool, or of the same way, asks for.
WoodPlan PlanOf(const Demands& demands, std::vector<MachineSteps>& programs, double tolerance);

bool IsInside(const WoodShape& shape, const PathPoint& at);

} // namespace kv
