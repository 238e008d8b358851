// A lock that processes agree on, one file beside the file it stands for: ".kv-NAME.lock" in its folder.
// The system frees it when the process ends, however it ends, and programs that are started do not inherit
// it. The lock file stays behind when the lock is free: deleting it would let two processes hold two.
// Two locks of one process on the same file exclude each other like those of two processes.
#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"

namespace kv {

enum class LockState {
    Taken,
    Held,     // another process, or another lock of this one, has it
    CannotBe, // the folder or the system does not let anybody lock
};

struct [[nodiscard]] LockAnswer {
    LockState Is = LockState::CannotBe;
    std::string Holder; // of Held: program, process and machine, for a person; CP1252
    FileOutcome Why;    // of CannotBe
};

class FileLock {
  public:
    FileLock() = default;
    ~FileLock() { Release(); }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // Never waits. Through a link it is the file behind the link that is locked. A lock that is held
    // already is given back first.
    LockAnswer TryLock(std::string_view path);
    void Release();
    bool IsTaken() const { return Handle != NoHandle; }

  private:
    static constexpr long long NoHandle = -1;
    long long Handle = NoHandle; // the host's
};

// What a holder writes about itself and a waiter shows: "korvanti, process 1234 on HOST".
std::string LockHolderText();
std::string HolderOf(std::string_view lockFileText); // the first line; words for an unknown one
std::string LockFileName(std::string_view fileName);

} // namespace kv
