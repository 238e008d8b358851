// File access on Windows. A durable file is written under another name in its folder, flushed and
// moved over its place with write-through; attributes and rights are taken over from the old file. A scanner
// or a sync tool may hold a file for a moment: what is refused for that is tried again, up to two seconds.
// Numbers follow the system's error, the cause is the system's wording.
#include "platform/files.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>

#include <windows.h>
// That header renames functions of ours.
#undef DeleteFile
#undef ReplaceFile

#include <fcntl.h>
#include <io.h>

#include "platform/aside_names.h"
#include "platform/clock.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/stand_ins.h"
#include "platform/text.h"
#include "platform/windows/host_files.h"
#include "platform/windows/wide_text.h"

namespace kv {

std::vector<std::string>* WrittenFiles = nullptr;
std::vector<std::string>* DiskSteps = nullptr;

namespace {

bool IsHeld(DWORD error)
{
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_USER_MAPPED_FILE || error == ERROR_DELETE_PENDING;
}

FileOutcome OutcomeOf(DWORD error, int numberIfMissing)
{
    FileOutcome outcome;
    outcome.Cause = IsHeld(error) ? "in use by another program" : SystemWords(error);
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
        outcome.Number = numberIfMissing;
        outcome.Missing = true;
        break;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_INVALID_NAME:
        outcome.Number = ErrorPathNotFound;
        outcome.Missing = true;
        break;
    case ERROR_NOT_READY: // no disk in the drive, a share that is off: what they hold is not known
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_NETNAME_DELETED:
    case ERROR_DEV_NOT_EXIST:
    case ERROR_NETWORK_UNREACHABLE:
    case ERROR_FILENAME_EXCED_RANGE:
        outcome.Number = ErrorPathNotFound;
        break;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_DELETE_PENDING:
    case ERROR_WRITE_PROTECT:
        outcome.Number = ErrorPermission;
        break;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        outcome.Number = ErrorDiskFull;
        break;
    default:
        outcome.Number = ErrorDeviceIo;
    }
    return outcome;
}

// Calls again what another program holds up: 10 ms later at first, then twice as long each time, two
// seconds in all. Events run meanwhile. ERROR_SUCCESS, or why not.
DWORD Patiently(const std::function<DWORD()>& call)
{
    double next = 0.01, left = 2.0; // seconds
    for (;;) {
        const DWORD error = call();
        if (!IsHeld(error) || left <= 0)
            return error;
        const double wait = std::min(next, left);
        left -= wait;
        next *= 2;
        PauseSeconds(wait);
    }
}

std::wstring WideHostPath(std::string_view host)
{
    return WidePath(PathFromUtf8(host));
}

DWORD AttributesOf(const std::wstring& path)
{
    return GetFileAttributesW(path.c_str());
}

bool Stands(DWORD attributes)
{
    return attributes != INVALID_FILE_ATTRIBUTES;
}

bool IsFolder(DWORD attributes)
{
    return Stands(attributes) && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

FileOutcome LeadsNowhere(std::string_view path)
{
    if (path.empty())
        return {ErrorPathNotFound, "no path", true};
    return {ErrorPathNotFound, "a name cannot hold \"?\"", true};
}

// Opens what stands there, when others let it. ERROR_SUCCESS, or why not.
DWORD OpenPatiently(const std::wstring& path, DWORD access, DWORD shared, DWORD flags, HANDLE& file)
{
    return Patiently([&] {
        file = CreateFileW(path.c_str(), access, shared, nullptr, OPEN_EXISTING, flags, nullptr);
        return file != INVALID_HANDLE_VALUE ? ERROR_SUCCESS : GetLastError();
    });
}

// A file that another program has open is refused to a move or a deletion in the same words as one whose
// rights are missing. Which of the two it is shows when it is opened for that.
DWORD WhyRefused(const std::wstring& path, DWORD error)
{
    const DWORD attributes = AttributesOf(path);
    if (error != ERROR_ACCESS_DENIED || !Stands(attributes) || IsFolder(attributes))
        return error;
    constexpr DWORD sharedWithNobody = 0;
    const HANDLE file =
        CreateFileW(path.c_str(), DELETE, sharedWithNobody, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return IsHeld(GetLastError()) ? ERROR_SHARING_VIOLATION : error;
    CloseHandle(file);
    return error;
}

// For a file that was not found: is it the file or its folder that is missing?
int NumberForMissing(std::string_view path)
{
    const std::string folder = FolderOf(path);
    return folder.empty() || IsFolder(AttributesOf(WidePath(folder))) ? ErrorFileNotFound : ErrorPathNotFound;
}

DWORD MovePatiently(const std::wstring& from, const std::wstring& to)
{
    return Patiently([&]() -> DWORD {
        if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0)
            return ERROR_SUCCESS;
        const DWORD refusal = GetLastError();
        const DWORD error = WhyRefused(to, refusal);
        return error == refusal ? WhyRefused(from, refusal) : error;
    });
}

DWORD DeletePatiently(const std::wstring& path)
{
    return Patiently([&]() -> DWORD {
        return DeleteFileW(path.c_str()) != 0 ? ERROR_SUCCESS : WhyRefused(path, GetLastError());
    });
}

DWORD WriteAll(HANDLE file, std::string_view contents)
{
    constexpr std::size_t LargestPiece = 1 << 24;
    while (!contents.empty()) {
        DWORD written = 0;
        const DWORD piece = static_cast<DWORD>(std::min(contents.size(), LargestPiece));
        if (WriteFile(file, contents.data(), piece, &written, nullptr) == 0)
            return GetLastError();
        contents.remove_prefix(written);
    }
    return FlushFileBuffers(file) != 0 ? ERROR_SUCCESS : GetLastError();
}

// Whether anybody gave rights to the file itself; those of its folder come to a new file anyway.
bool HasOwnRights(PSECURITY_DESCRIPTOR rights)
{
    BOOL present = FALSE, byDefault = FALSE;
    PACL list = nullptr;
    if (GetSecurityDescriptorDacl(rights, &present, &list, &byDefault) == 0 || present == FALSE ||
        list == nullptr)
        return false;
    for (DWORD i = 0; i < list->AceCount; ++i) {
        void* entry = nullptr;
        if (GetAce(list, i, &entry) != 0 && (static_cast<ACE_HEADER*>(entry)->AceFlags & INHERITED_ACE) == 0)
            return true;
    }
    return false;
}

// Without the right to do so the copy keeps those of the folder.
void TakeOverRights(const std::wstring& from, const std::wstring& to)
{
    DWORD length = 0;
    GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &length);
    std::vector<std::byte> rights(length);
    if (length != 0 &&
        GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, rights.data(), length, &length) != 0 &&
        HasOwnRights(rights.data()))
        SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, rights.data());
}

HANDLE MakeAside(const std::string& folder, std::string& name)
{
    static unsigned counter = 0;
    for (;;) {
        name = folder + AsideName(++counter);
        const HANDLE file = CreateFileW(WidePath(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE || GetLastError() != ERROR_FILE_EXISTS)
            return file;
    }
}

FileAnswer AskAttributes(std::string_view path, DWORD& attributes)
{
    const std::wstring host = WidePath(path);
    if (host.empty())
        return AnswerOf(LeadsNowhere(path));
    attributes = AttributesOf(host);
    if (Stands(attributes))
        return {Presence::There, {}};
    return AnswerOf(OutcomeOf(GetLastError(), ErrorFileNotFound));
}

// Seconds since the file was written, by the clock of this machine.
long long AgeOf(const WIN32_FIND_DATAW& file)
{
    constexpr long long unitsOfSecond = 10000000;
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    const auto joined = [](const FILETIME& time) {
        return static_cast<long long>((std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime);
    };
    return (joined(now) - joined(file.ftLastWriteTime)) / unitsOfSecond;
}

bool IsLeft(const WIN32_FIND_DATAW& file, const std::string& name)
{
    const AsideOwner owner = OwnerOfAside(name);
    if (owner != AsideOwner::Elsewhere)
        return owner == AsideOwner::Ended;
    return AgeOf(file) > LongestAsideSeconds;
}

void NoteStep(std::string_view step, const std::string& host)
{
    if (DiskSteps != nullptr)
        DiskSteps->push_back(std::string(step) + ' ' + host);
}

} // namespace

FileOutcome HostOutcome(unsigned long error)
{
    return OutcomeOf(error, ErrorPathNotFound);
}

FileAnswer AskFile(std::string_view path)
{
    DWORD attributes = 0;
    const FileAnswer answer = AskAttributes(path, attributes);
    return answer.Is == Presence::There && IsFolder(attributes) ? FileAnswer{Presence::NotThere, {}} : answer;
}

FileAnswer AskFolder(std::string_view path)
{
    DWORD attributes = 0;
    const FileAnswer answer = AskAttributes(path, attributes);
    return answer.Is == Presence::There && !IsFolder(attributes) ? FileAnswer{Presence::NotThere, {}}
                                                                 : answer;
}

FileAnswer AskStamp(std::string_view path, FileStamp& stamp)
{
    stamp = {};
    const std::wstring host = WidePath(path);
    if (host.empty())
        return AnswerOf(LeadsNowhere(path));
    WIN32_FILE_ATTRIBUTE_DATA status{};
    if (GetFileAttributesExW(host.c_str(), GetFileExInfoStandard, &status) == 0)
        return AnswerOf(OutcomeOf(GetLastError(), ErrorFileNotFound));
    const auto joined = [](DWORD high, DWORD low) { return (std::uint64_t{high} << 32) | low; };
    stamp = {joined(status.nFileSizeHigh, status.nFileSizeLow),
             static_cast<std::int64_t>(
                 joined(status.ftLastWriteTime.dwHighDateTime, status.ftLastWriteTime.dwLowDateTime)),
             joined(status.ftCreationTime.dwHighDateTime, status.ftCreationTime.dwLowDateTime)};
    return {Presence::There, {}};
}

FileOutcome OpenForReading(std::string_view path, int& handle, std::uint64_t& size)
{
    handle = -1;
    size = 0;
    const std::wstring host = WidePath(path);
    if (host.empty())
        return LeadsNowhere(path);
    if (IsFolder(AttributesOf(host)))
        return {ErrorFileAccess, "is a folder"};
    // Not shared with one who writes: half a file is no drawing.
    HANDLE file = INVALID_HANDLE_VALUE;
    const DWORD error = OpenPatiently(host, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                      FILE_FLAG_SEQUENTIAL_SCAN, file);
    if (error != ERROR_SUCCESS)
        return OutcomeOf(error, NumberForMissing(path));
    LARGE_INTEGER length{};
    if (GetFileType(file) != FILE_TYPE_DISK || GetFileSizeEx(file, &length) == 0) {
        CloseHandle(file);
        return {ErrorFileAccess, "is no regular file"};
    }
    handle = _open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_RDONLY | _O_BINARY);
    if (handle < 0) {
        CloseHandle(file);
        return {ErrorDeviceIo, "too many open files"};
    }
    size = static_cast<std::uint64_t>(length.QuadPart);
    return {};
}

bool OpenAsSpelled(std::string_view path, int& handle)
{
    std::uint64_t size = 0;
    return OpenForReading(path, handle, size).Ok(); // the system itself knows all spellings
}

FileOutcome ReadSome(int handle, char* into, std::size_t length, std::size_t& got)
{
    constexpr std::size_t LargestPiece = 1 << 30;
    got = 0;
    const HANDLE file = reinterpret_cast<HANDLE>(_get_osfhandle(handle));
    DWORD count = 0;
    if (ReadFile(file, into, static_cast<DWORD>(std::min(length, LargestPiece)), &count, nullptr) == 0)
        return OutcomeOf(GetLastError(), ErrorFileNotFound);
    got = count;
    return {};
}

FileOutcome SkipTo(int handle, std::uint64_t at)
{
    if (_lseeki64(handle, static_cast<std::int64_t>(at), SEEK_SET) < 0)
        return {ErrorDeviceIo, "the place cannot be reached"};
    return {};
}

void CloseReading(int handle)
{
    if (handle >= 0)
        _close(handle);
}

FileOutcome StageFile(std::string_view path, std::string_view contents, StagedFile& staged)
{
    staged = {};
    const std::wstring place = WidePath(path);
    if (place.empty())
        return LeadsNowhere(path);
    // Else only the move would find it out.
    constexpr std::size_t longestName = 255; // of what a volume takes
    if (FileNameOf(path).size() > longestName)
        return OutcomeOf(ERROR_FILENAME_EXCED_RANGE, ErrorPathNotFound);
    const DWORD old = AttributesOf(place);
    if (IsFolder(old))
        return {ErrorFileAccess, "is a folder"};
    if (Stands(old) && (old & FILE_ATTRIBUTE_READONLY) != 0)
        return OutcomeOf(ERROR_ACCESS_DENIED, ErrorPathNotFound);
    std::string aside;
    const HANDLE file = MakeAside(FolderOf(path), aside);
    if (file == INVALID_HANDLE_VALUE)
        return OutcomeOf(GetLastError(), ErrorPathNotFound);
    const DWORD error = WriteAll(file, contents);
    CloseHandle(file);
    staged = {ToHostPath(path), ToHostPath(aside), error == ERROR_SUCCESS}; // the writing flushes
    if (error != ERROR_SUCCESS) {
        DropStaged(staged);
        return OutcomeOf(error, ErrorPathNotFound);
    }
    NoteStep("flush", staged.Aside);
    if (Stands(old)) {
        SetFileAttributesW(WidePath(aside).c_str(), old);
        TakeOverRights(place, WidePath(aside));
    }
    return {};
}

// Nothing is left to do: a copy is flushed when it is written, before it takes over rights that might
// refuse it.
FileOutcome FlushStaged(StagedFile&)
{
    return {};
}

std::vector<FileOutcome> FlushStaged(std::span<StagedFile* const> files)
{
    return std::vector<FileOutcome>(files.size());
}

FileOutcome MoveOrKeepStaged(StagedFile& staged)
{
    if (staged.Aside.empty())
        return {};
    const DWORD error = MovePatiently(WideHostPath(staged.Aside), WideHostPath(staged.Place));
    if (error != ERROR_SUCCESS)
        return OutcomeOf(error, ErrorPathNotFound);
    NoteStep("move", staged.Place);
    if (WrittenFiles != nullptr)
        WrittenFiles->push_back(staged.Place);
    staged = {};
    return {};
}

// Nothing is left to do: the volume keeps names in the order in which they are made.
FileOutcome FlushNameOfStaged(const StagedFile&)
{
    return {};
}

FileOutcome ReplaceFile(std::string_view path, std::string_view contents)
{
    StagedFile staged;
    const FileOutcome outcome = StageFile(path, contents, staged);
    return outcome.Ok() ? MoveStaged(staged) : outcome;
}

// Nothing is left to do: the moves are written through.
FileOutcome FlushFiles()
{
    return {};
}

void DropStaged(StagedFile& staged)
{
    const DWORD error = staged.Aside.empty() ? ERROR_SUCCESS : DeletePatiently(WideHostPath(staged.Aside));
    if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND)
        CopyStays = true;
    staged = {};
}

FileOutcome CheckWritable(std::string_view path)
{
    const std::wstring host = WidePath(path);
    if (host.empty())
        return LeadsNowhere(path);
    const DWORD attributes = AttributesOf(host);
    if (IsFolder(attributes))
        return {ErrorFileAccess, "is a folder"};
    if (Stands(attributes) && (attributes & FILE_ATTRIBUTE_READONLY) != 0)
        return OutcomeOf(ERROR_ACCESS_DENIED, ErrorPathNotFound);
    // Shared with nobody: whoever has the file open makes this fail.
    HANDLE file = INVALID_HANDLE_VALUE;
    const DWORD error = OpenPatiently(host, GENERIC_WRITE, 0, 0, file);
    if (error != ERROR_SUCCESS)
        return OutcomeOf(error, NumberForMissing(path));
    CloseHandle(file);
    return {};
}

FileOutcome MakeFolder(std::string_view path)
{
    const std::wstring host = WidePath(path);
    if (host.empty())
        return LeadsNowhere(path);
    if (CreateDirectoryW(host.c_str(), nullptr) != 0)
        return {};
    const DWORD error = GetLastError();
    const DWORD attributes = AttributesOf(host);
    if (Stands(attributes))
        return IsFolder(attributes) ? FileOutcome{} : FileOutcome{ErrorFileAccess, "is no folder"};
    return OutcomeOf(error, ErrorPathNotFound);
}

FileOutcome MakeFolders(std::string_view path)
{
    const std::string full = WithBackslash(path);
    for (std::size_t end = full.find('\\', 1); end != std::string::npos; end = full.find('\\', end + 1)) {
        const std::string above = full.substr(0, end);
        if (!IsFolder(AttributesOf(WidePath(above + "\\"))))
            CreateDirectoryW(WidePath(above).c_str(), nullptr); // the last one tells what went wrong
    }
    return MakeFolder(path);
}

FileOutcome DeleteFile(std::string_view path)
{
    const std::wstring host = WidePath(path);
    if (host.empty())
        return {};
    const DWORD error = DeletePatiently(host);
    if (error == ERROR_SUCCESS || error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND)
        return {};
    return OutcomeOf(error, ErrorFileNotFound);
}

FileOutcome RenameFile(std::string_view path, std::string_view newPath)
{
    const std::wstring host = WidePath(path);
    const std::wstring newHost = WidePath(newPath);
    if (host.empty() || newHost.empty())
        return LeadsNowhere(host.empty() ? path : newPath);
    const DWORD error = MovePatiently(host, newHost);
    return error == ERROR_SUCCESS ? FileOutcome{} : OutcomeOf(error, NumberForMissing(path));
}

FileOutcome ListLeftAsides(std::string_view folder, std::vector<std::string>& paths)
{
    paths.clear();
    const std::string place = WithBackslash(folder);
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(WidePath(place + ".kv-*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        const FileOutcome outcome = OutcomeOf(GetLastError(), ErrorPathNotFound);
        return outcome.Missing ? FileOutcome{} : outcome;
    }
    do {
        const std::string name = NameFromWide(found.cFileName);
        if (IsLeft(found, name))
            paths.push_back(place + name);
    } while (FindNextFileW(search, &found) != 0);
    const DWORD error = GetLastError();
    FindClose(search);
    return error == ERROR_NO_MORE_FILES ? FileOutcome{} : OutcomeOf(error, ErrorPathNotFound);
}

} // namespace kv
