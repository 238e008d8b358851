// The shared arrays and the run block as JSON, for people and scripts that look into a conversion.
// Field names are those of the declarations; zero and blank fields are left out.
#pragma once

#include <nlohmann/json.hpp>

#include "state/run.h"

namespace kv {

using Json = nlohmann::ordered_json; // keeps the order of the declarations

// The records from element 1 on.
Json ShowRecords(const RecordArray<DxfEntity>& records);
Json ShowRecords(const RecordArray<VBoreRecord>& records);
Json ShowRecords(const RecordArray<RouteSegment>& records);
Json ShowRecords(const RecordArray<RouteCircle>& records);
Json ShowRecords(const RecordArray<GrooveRecord>& records);
Json ShowRecords(const RecordArray<HBoreLineRecord>& records);
Json ShowRecords(const RecordArray<HBoreRecord>& records);
Json ShowRecords(const RecordArray<HeadPosition>& records);
Json ShowTexts(const std::vector<std::string>& texts); // from element 1 on

// Where in the drawing each entity of a record stands: line of the file, handle.
Json ShowDrawn(Long drawn);

// All variables of the run block.
Json ShowRun();

// Bytes above 127 become the Unicode character of the same number, whatever CP1252 makes of them:
// layer rules use such bytes as marks, and a trace must tell them apart.
std::string Utf8FromBytes(std::string_view bytes);
// The shortest number that reads back as the same Single.
Json ShowSingle(Single value);

} // namespace kv
