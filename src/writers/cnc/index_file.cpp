// Where a new record goes depends on the first record whose name is not smaller, and that one is greater
// than all in front of it: a leader. Leaders are sorted in a file of any order, so they are searched by
// halves; all other records stay behind the leader that they follow. A new record is a leader itself and
// makes none of the others one, so new ones wait apart, sorted, until the text is asked for.
#include "writers/cnc/index_file.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "platform/text.h"

namespace kv {

IndexFile::IndexFile(std::string text) : Base(std::move(text))
{
    std::string name(IndexNameWidth, '\0');
    for (std::size_t at = 0; at + IndexRecordSize <= Base.size(); at += IndexRecordSize) {
        for (std::size_t i = 0; i < IndexNameWidth; ++i)
            name[i] = UpperChar(Base[at + i]);
        if (!Places.empty() && name <= NameAt(Places.size() - 1))
            continue;
        Places.push_back(at);
        Names += name;
    }
}

std::string_view IndexFile::NameAt(std::size_t leader) const
{
    return std::string_view(Names).substr(leader * IndexNameWidth, IndexNameWidth);
}

// The first leader that is not smaller; their count when all are.
std::size_t IndexFile::LeaderFrom(std::string_view name) const
{
    std::size_t low = 0, high = Places.size();
    while (low < high) {
        const std::size_t middle = std::midpoint(low, high);
        if (NameAt(middle) < name)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

void IndexFile::Put(std::string_view record)
{
    const std::string_view name = record.substr(0, IndexNameWidth);
    const std::size_t leader = LeaderFrom(name);
    if (leader < Places.size() && NameAt(leader) == name)
        Base.replace(Places[leader], IndexRecordSize, record);
    else
        Added.insert_or_assign(std::string(name), std::string(record));
}

std::string IndexFile::Text() const
{
    std::string text;
    text.reserve(Base.size() + Added.size() * IndexRecordSize);
    std::size_t from = 0;
    for (const auto& [name, record] : Added) {
        const std::size_t leader = LeaderFrom(name);
        const std::size_t to = leader < Places.size() ? Places[leader] : Base.size();
        text.append(Base, from, to - from);
        text += record;
        from = to;
    }
    return text.append(Base, from);
}

} // namespace kv
