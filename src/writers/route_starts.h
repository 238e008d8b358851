// Where a route of the list begins.
#pragma once

#include "state/run.h"

namespace kv {

inline bool OpensRoute(const RouteSegment& record)
{
    return record.Dir < 0;
}
// A start mark of two records gives its place as the route's start to the record behind it.
void ClearStartMark(Long i);

} // namespace kv
