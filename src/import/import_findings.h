// What an import found in a drawing, counted by kind and layer, and told in the report.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <tuple>

#include "import/flat_entity.h"
#include "import/import_setting.h"

namespace kv {

enum class ImportThing { Block, Curve, Circle, Mirrored, Hidden, Text, Failed };

class ImportFindings {
  public:
    // `subject`: the entity's kind, of an INSERT its block. `detail`: what would be made of it, where it is
    // hidden, or why it failed. The first of a thing, a layer and a subject gives line, handle and detail.
    void Add(ImportThing thing, const EntityStyle& style, std::string_view subject, std::string_view detail);
    void AddMove(SpacePoint move) { Move = move; }
    bool IsEmpty() const { return Counts.empty() && LengthOf(Move) == 0; }
    // Whether an import changes the drawing: what failed alone does not.
    bool ChangesDrawing() const;
    void TellAll(ImportMode mode) const;

  private:
    struct Count {
        Long Times = 0;
        EntityStyle First;
        std::string Subject, Detail;
    };
    using Key = std::tuple<ImportThing, std::string, std::string>; // thing, layer, subject
    std::map<Key, Count> Counts;
    SpacePoint Move;
};

} // namespace kv
