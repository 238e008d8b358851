// Names of folders as they were read last, for lookups without regard to case: a list of drawings looks for
// some new names a drawing in folders of many thousand.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// The entry of the host folder that equals `name` (CP1252) without case, in the host's spelling. Of several
// the first in byte order, so that every run takes the same one. Empty when there is none, or when the
// folder cannot be read to its end; the system's error goes to `fault` then.
std::string EntryIgnoringCase(const std::string& folder, std::string_view name, int& fault);

// A change that this process makes in a folder itself: begun in front of it, told when it is made. What is
// remembered of the folder stays good then; a change of others makes it be read again.
class OwnFolderChange {
  public:
    explicit OwnFolderChange(std::string folder); // a host path; empty for the current folder
    void Made(std::string_view newName);          // in the host's spelling; empty: no name that is looked for

  private:
    std::string Folder;
    bool Known = false; // what is remembered was good in front of the change
};

} // namespace kv
