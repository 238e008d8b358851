// The first entity pass: bores, grooves, horizontal bores and texts become records.
#pragma once

namespace kv {

void ReadOperations();
// The line about a part name taken from the drawing, held back until the pass is done.
void ReportPartNameLine();

} // namespace kv
