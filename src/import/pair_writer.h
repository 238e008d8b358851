// Entities as pairs of lines, and which line of them comes from which of the drawing.
#pragma once

#include <string>
#include <string_view>

#include "drawing/dxf_reader.h"
#include "import/flat_entity.h"

namespace kv {

std::string_view KindWord(FlatKind kind); // "LINE"

class PairWriter {
  public:
    void Pair(int code, std::string_view value);
    void Pair(int code, double number);
    // An entity that was made or moved, with the handle of its style.
    void Write(const FlatEntity& flat);
    // An entity as the drawing has it.
    void Copy(const SourceEntity& entity);
    std::size_t Size() const { return Drawing.Text.size(); }
    DrawingText& Written() { return Drawing; }

  private:
    void Begin(std::string_view kind, const FlatEntity& flat);
    void WritePolyline(const FlatEntity& flat);
    void WriteText(const FlatEntity& flat);
    void WritePoint(int code, const VertexPoint& point);
    void WriteExtrusion(const FlatEntity& flat);

    DrawingText Drawing;
    Long Lines = 0; // written
};

} // namespace kv
