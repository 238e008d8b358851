// The setting Import: what becomes of drawings that hold more than the drawing's reader knows.
#pragma once

namespace kv {

// Plain: the reader alone. Told: the report says what Full would do. Full: it is done.
enum class ImportMode { Plain, Told, Full };
ImportMode ModeOfImport();
// Another word than the three counts as "told"; it is reported, once a drawing.
void TellUnknownImport();
double ImportToleranceMm(); // how far a fitted curve may be from the drawn one; 0.01 where none is set

} // namespace kv
