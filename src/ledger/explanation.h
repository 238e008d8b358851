// A drawing as a designer wants it explained: the panel, each layer with what became of its entities, texts,
// tools and programs. All texts are CP1252; layers are named as the drawing spells them.
#pragma once

#include <string>
#include <vector>

#include "ledger/entity_answers.h"
#include "ledger/layer_letters.h"

namespace kv {

// Entities of one kind with one answer.
struct ExplainedKind {
    std::string Kind;
    Long Count = 0;
    EntityFate Fate = EntityFate::Unreached;
    Message Why = Message::None;
    Long FirstLine = 0; // of the drawing's file, of the first of them
    std::string Handle;
};
// One operation that the layer asks for; "$" opens further ones.
struct ExplainedState {
    LayerWork Work = LayerWork::Nothing;
    std::string Renamed; // the name that an instruction gives to the layer; empty: none
    std::vector<LayerValue> Values;
    std::vector<ExplainedKind> Kinds;
};
struct ExplainedLayer {
    std::string Name;
    std::string Nearest; // word, where the name means nothing
    std::vector<ExplainedState> States;
};
struct ExplainedPanel {
    bool IsKnown = false;
    Single Length = 0, Width = 0, Thickness = 0, X = 0, Y = 0; // drawing units
    bool IsInch = false;
    std::vector<ExplainedKind> From; // entities, by kind
    std::string BorderLayer;
    std::string DrawnUnit; // that the drawing's header names; empty: none
};
struct ExplainedText {
    std::string Text, As;
    Long Line = 0;
};
struct ExplainedTool {
    std::string Tool;
    Long Entities = 0;     // as drawn
    bool IsInHead = false; // a drill of DT.Par
};
struct ExplainedProgram {
    std::string Path;
    Long Lines = 0, Entities = 0;
};
struct Explanation {
    bool IsWhole = false; // the run came to the programs
    ExplainedPanel Panel;
    std::vector<ExplainedLayer> Layers; // in the order of the drawing
    std::vector<ExplainedText> Texts;
    std::vector<ExplainedTool> Tools;
    bool HasHead = false; // DT.Par names drills
    std::vector<ExplainedProgram> Programs;
    Long Asking = 0, Worked = 0; // entities on layers that ask for work, and those that became it
};

// Of the drawing that runs, as far as it has come: at the stage "layers" or later.
Explanation ExplanationOfRun();
} // namespace kv
