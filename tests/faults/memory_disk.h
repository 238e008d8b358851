// A disk in memory, built from what a program's calls did. It knows what was flushed and what was only
// written, and what may be found on it when the power fails after any call.
//
// Bytes of a file are safe from its flush on; names in a folder are safe from the flush of that folder on.
// Whatever else was done may be there or not.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "faults/shop_tree.h"

namespace fault_test {

struct DiskEvent {
    char Kind =
        0; // 'C' made, 'W' written, 'T' cut to a length, 'R' renamed, 'U' taken away, 'D' folder, 'F' flushed
    std::uint64_t Inode = 0;
    std::size_t At = 0;
    std::string Path, NewPath, Bytes; // paths below the shop, folders without a slash
};

std::vector<DiskEvent> EventsOf(const std::string& record, const fs::path& root);

enum class Forgets {
    Nothing,        // a kill: all that was done is there
    AllUnflushed,   // neither names nor bytes that were not flushed
    UnflushedBytes, // names are there, files without their bytes: empty
    BytesToZeros,   // the same, files at their length with NUL bytes
    HalfOfBytes,    // the same, files with the first half of their bytes
    Some,           // each folder and each file by chance
};

class MemoryDisk {
  public:
    explicit MemoryDisk(const Tree& before);
    void Do(const DiskEvent& event);
    Tree After(Forgets forgets, std::uint32_t seed) const;

  private:
    struct File {
        std::string Bytes;
        std::string Flushed; // bytes at the last flush
        bool EverFlushed = false;
    };
    using Names = std::map<std::string, std::size_t>; // file by name; FolderMark for a folder

    static constexpr std::size_t FolderMark = static_cast<std::size_t>(-1);
    std::size_t FileAt(const std::string& path, std::uint64_t inode);
    Names& FolderOf(const std::string& path);
    std::string BytesOf(const File& file, Forgets forgets) const;
    void Collect(const std::string& folder, Forgets forgets, std::uint32_t& chance, Tree& tree) const;

    std::vector<File> Files;
    std::map<std::string, Names> Now, Safe; // by folder, "" for the shop's own
    std::map<std::uint64_t, std::size_t> ByInode;
};

} // namespace fault_test
