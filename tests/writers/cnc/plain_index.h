// The rule of a new index record, step by step: the literal twin of IndexFile.
#pragma once

#include <string>
#include <string_view>

#include "platform/text.h"
#include "writers/cnc/index_file.h"

namespace kv {

inline std::string IndexWith(std::string_view index, std::string_view record)
{
    const std::string_view name = record.substr(0, IndexNameWidth);
    for (std::size_t at = 0; at < index.size(); at += IndexRecordSize) {
        const std::string old = UpperCase(index.substr(at, IndexNameWidth));
        if (old < name)
            continue;
        const std::size_t replaced = old == name ? IndexRecordSize : 0;
        std::string updated(index.substr(0, at));
        updated += record;
        updated += index.substr(at + replaced);
        return updated;
    }
    return std::string(index) + std::string(record);
}

} // namespace kv
