// Where a route of the list begins.
#pragma once

#include "state/run.h"

namespace kv {

inline bool OpensRoute(const RouteSegment& record)
{
    return record.Dir < 0;
}
// Refuses a record that would move the tool before its route is opened: such a move would begin where
// the tool happens to stand. One for each program.
class StartCheck {
  public:
    // A RunError with the record's layer, when it is a move in front of a start.
    void Take(const RouteSegment& record);

  private:
    bool Opened = false;
};

// A start mark of two records gives its place as the route's start to the record behind it.
void ClearStartMark(Long i);

} // namespace kv
