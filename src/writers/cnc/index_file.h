// The records of INDICE.PRG in memory, for as many new records as a list of drawings makes.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

constexpr std::size_t IndexRecordSize = 82; // bytes
constexpr std::size_t IndexNameWidth = 12;  // at the record's start

// Keeps the order of the file, whatever it is. A new record goes over the first one of its name, else in
// front of the first one with a greater name, else to the end; names are compared in upper case.
class IndexFile {
  public:
    // The length is a multiple of the record size.
    explicit IndexFile(std::string text);

    // The record's name is in upper case.
    void Put(std::string_view record);
    std::string Text() const;

  private:
    std::string_view NameAt(std::size_t leader) const;
    std::size_t LeaderFrom(std::string_view name) const;

    std::string Base;                // the file as it was read, records of equal names replaced
    std::string Names;               // of the leaders, in upper case, one behind the other
    std::vector<std::size_t> Places; // of the leaders, in Base
    std::map<std::string, std::string, std::less<>> Added; // by name
};

} // namespace kv
