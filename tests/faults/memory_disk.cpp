// Folders are kept twice, as they are and as they were flushed; so are the bytes of files.
#include "faults/memory_disk.h"

#include <sstream>

namespace fault_test {

namespace {

std::string Folder(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string BelowRoot(std::string path, const std::string& root)
{
    while (!path.empty() && path.back() == '/')
        path.pop_back();
    // Two slashes in a row are one.
    for (std::size_t at = path.find("//"); at != std::string::npos; at = path.find("//"))
        path.erase(at, 1);
    return path.size() <= root.size() ? std::string() : path.substr(root.size() + 1);
}

// A small generator, so that a seed means the same everywhere.
std::uint32_t NextChance(std::uint32_t& chance)
{
    chance = chance * 1664525U + 1013904223U;
    return chance >> 16;
}

} // namespace

std::vector<DiskEvent> EventsOf(const std::string& record, const fs::path& root)
{
    std::vector<DiskEvent> events;
    for (std::size_t at = 0; at < record.size();) {
        const std::size_t end = record.find('\n', at);
        std::istringstream line(record.substr(at, end - at));
        std::vector<std::string> fields;
        for (std::string field; std::getline(line, field, '\t');)
            fields.push_back(field);
        fields.resize(7);
        const std::size_t length = std::stoul(fields[4]);
        DiskEvent event;
        event.Kind = fields[0][0];
        event.Inode = std::stoull(fields[2]);
        event.At = std::stoul(fields[3]);
        event.Path = BelowRoot(fields[5], root.string());
        event.NewPath = BelowRoot(fields[6], root.string());
        event.Bytes = record.substr(end + 1, length);
        events.push_back(event);
        at = end + 1 + length;
    }
    return events;
}

MemoryDisk::MemoryDisk(const Tree& before)
{
    Now[""];
    for (const auto& [path, bytes] : before) {
        if (path.back() == '/') {
            const std::string folder = path.substr(0, path.size() - 1);
            Now[folder];
            FolderOf(folder)[LastName(folder)] = FolderMark;
        } else {
            FolderOf(path)[LastName(path)] = Files.size();
            Files.push_back({bytes, bytes, true});
        }
    }
    Safe = Now;
}

MemoryDisk::Names& MemoryDisk::FolderOf(const std::string& path)
{
    return Now[Folder(path)];
}

std::size_t MemoryDisk::FileAt(const std::string& path, std::uint64_t inode)
{
    const auto known = ByInode.find(inode);
    if (known != ByInode.end())
        return known->second;
    return ByInode[inode] = FolderOf(path).at(LastName(path));
}

void MemoryDisk::Do(const DiskEvent& event)
{
    const std::string name = LastName(event.Path);
    switch (event.Kind) {
    case 'C':
        ByInode[event.Inode] = Files.size(); // an inode may be used again after its file was taken away
        FolderOf(event.Path)[name] = Files.size();
        Files.emplace_back();
        break;
    case 'W': {
        std::string& bytes = Files[FileAt(event.Path, event.Inode)].Bytes;
        if (bytes.size() < event.At + event.Bytes.size())
            bytes.resize(event.At + event.Bytes.size(), '\0');
        bytes.replace(event.At, event.Bytes.size(), event.Bytes);
        break;
    }
    case 'T':
        Files[FileAt(event.Path, event.Inode)].Bytes.resize(event.At, '\0');
        break;
    case 'R': {
        Names& from = FolderOf(event.Path);
        const std::size_t moved = from.at(name);
        from.erase(name);
        FolderOf(event.NewPath)[LastName(event.NewPath)] = moved;
        break;
    }
    case 'U':
        FolderOf(event.Path).erase(name);
        break;
    case 'D':
        Now[event.Path].clear();
        Safe[event.Path].clear();
        FolderOf(event.Path)[name] = FolderMark;
        break;
    case 'F':
        if (event.Path.empty() || FolderOf(event.Path)[name] == FolderMark) {
            Safe[event.Path] = Now[event.Path];
        } else {
            File& file = Files[FileAt(event.Path, event.Inode)];
            file.Flushed = file.Bytes;
            file.EverFlushed = true;
        }
        break;
    default:
        throw std::runtime_error("an event of no kind");
    }
}

std::string MemoryDisk::BytesOf(const File& file, Forgets forgets) const
{
    if (forgets == Forgets::Nothing || (file.EverFlushed && file.Flushed == file.Bytes))
        return file.Bytes;
    if (forgets == Forgets::BytesToZeros)
        return std::string(file.Bytes.size(), '\0');
    if (forgets == Forgets::HalfOfBytes)
        return file.Bytes.substr(0, file.Bytes.size() / 2);
    return forgets == Forgets::AllUnflushed ? file.Flushed : std::string();
}

void MemoryDisk::Collect(const std::string& folder, Forgets forgets, std::uint32_t& chance, Tree& tree) const
{
    constexpr Forgets Ways[] = {Forgets::Nothing, Forgets::AllUnflushed, Forgets::UnflushedBytes,
                                Forgets::BytesToZeros, Forgets::HalfOfBytes};
    const bool some = forgets == Forgets::Some;
    const bool safe = some ? NextChance(chance) % 2 == 0 : forgets == Forgets::AllUnflushed;
    const auto& folders = safe ? Safe : Now;
    const auto found = folders.find(folder);
    if (found == folders.end())
        return;
    const std::string head = folder.empty() ? std::string() : folder + "/";
    for (const auto& [name, file] : found->second) {
        if (file == FolderMark) {
            tree[head + name + "/"] = "";
            Collect(head + name, forgets, chance, tree);
        } else {
            tree[head + name] = BytesOf(Files[file], some ? Ways[NextChance(chance) % 5] : forgets);
        }
    }
}

Tree MemoryDisk::After(Forgets forgets, std::uint32_t seed) const
{
    Tree tree;
    Collect("", forgets, seed, tree);
    return tree;
}

} // namespace fault_test
