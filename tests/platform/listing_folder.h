// A scratch folder whose files a test lists.
#pragma once

#include <limits>
#include <string>
#include <vector>

#include "platform/directory.h"
#include "platform/scratch_folder.h"
#include "support/answers.h"

namespace kv {

class ListingFolder : public ScratchFolder {
  protected:
    using Texts = std::vector<std::string>;
    static constexpr Long All = std::numeric_limits<Long>::max();

    void PutAll(const Texts& names) const
    {
        for (const std::string& name : names)
            PutFile(name, "x");
    }
    Long Count(const std::string& pattern) const { return test::Counted(PathOf("") + pattern); }
    std::vector<DirectoryEntry> Read(const std::string& pattern, Long count = All) const
    {
        std::vector<DirectoryEntry> entries;
        EXPECT_TRUE(ReadFileX(PathOf("") + pattern, count, entries).Is != Presence::CannotTell);
        return entries;
    }
    Texts LongNames(const std::string& pattern, Long count = All) const
    {
        Texts names;
        for (const DirectoryEntry& entry : Read(pattern, count))
            names.push_back(entry.LongName);
        return names;
    }
};

} // namespace kv
