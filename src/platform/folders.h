// Whole folders that a process makes for itself: beside files, under the names that say whose they are.
// What is in them is nobody else's, so they are taken away with all that they hold.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kv {

// The host's path of a backslash path.
std::filesystem::path FsPath(std::string_view path);

// A new folder below the system's folder for temporary files. Empty when it cannot be made.
std::filesystem::path MakeOwnFolder();
void RemoveFolder(const std::filesystem::path& folder);
// Removes the folders that processes which have ended left below `above`; no other one.
void SweepFolders(const std::filesystem::path& above);

// A quick look at the first bytes of a file by its path as it is spelled, and no other one: false means
// nothing. A backslash path.
bool ReadHeadAsSpelled(std::string_view path, std::string& head, std::size_t length);

// For files in such a folder: none of them must outlive the machine.
bool WriteOwnFile(const std::filesystem::path& file, std::string_view contents);
bool ReadOwnFile(const std::filesystem::path& file, std::string& contents);

} // namespace kv
