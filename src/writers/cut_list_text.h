// The text of a cut list in memory, for as many rows as a list of drawings makes.
#pragma once

#include <string>
#include <string_view>

#include "platform/numbers.h"

namespace kv {

// The list's text with one row more and a new first line. A first row of under 19 characters in a list
// without header is taken for the header and lost.
std::string CutListWith(std::string list, std::string_view row, bool metric);

// The same for row after row, without going through the whole text for each.
class CutListText {
  public:
    explicit CutListText(std::string list) : Unread(std::move(list)) {}

    void Add(std::string_view row, bool metric);
    // Puts the row in the place of the last one that reads `earlier`; adds it when there is none.
    void Replace(std::string_view earlier, std::string_view row, bool metric);
    std::string Text() const;

  private:
    void TakeApart(const std::string& list);
    void DropLineEnds();

    std::string Unread; // until the first row comes
    bool Apart = false;
    std::string Rows;  // without first line and last line end
    Long LineEnds = 0; // carriage returns in Rows
    bool Metric = true;
};

} // namespace kv
