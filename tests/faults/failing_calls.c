// Stands between a program and the C library (LD_PRELOAD) and lets calls about files fail, on Linux.
// Only calls that concern the folder FAULT_ROOT count, by their paths or by the path that their handle was
// opened with. All is asked for by variables:
//   FAULT_ROOT    the folder, a full path without a slash at its end; without it nothing is done
//   FAULT_AT      the number of the counted call that is disturbed, from 1 on; 0 or none: no call
//   FAULT_ERROR   errno of that call (a number); a failing close still closes, a failing write has written
//   half FAULT_LASTING set: every later call of the same kind (writing or asking) fails too, as on a full
//   disk FAULT_KILL    set: in place of an error the process ends by SIGKILL just before the writing call
//   FAULT_AT FAULT_HIT     a file outside of the folder: the call that was disturbed, as a line of FAULT_LOG
//   FAULT_LOG     a file outside of the folder: every counted call as a line "NUMBER NAME WRITING PATH"
//   FAULT_RECORD  a file outside of the folder: what the writing calls did, for a disk that is built from it
//   FAULT_FAST    set: nobody sleeps; the clocks stand but for what would have been slept, so that a busy
//                 machine makes the same calls as an idle one; a program that has slept for ten minutes is
//                 asked to end by SIGTERM
// With FAULT_KILL the number counts writing calls alone. Programs that the program starts are left in peace.
#define _GNU_SOURCE
#include <dirent.h>
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

enum { LongestPath = 4096, MostHandles = 1024, LongestLine = 2 * LongestPath + 128 };

static struct {
    int Ready;
    char Root[LongestPath];
    size_t RootLength;
    long At;
    int Error;
    int Lasting;
    int Kill;
    int Log, Hit, Record; // handles, -1 for none
    int Fast;
    long Calls, WritingCalls;
} Plan;

static char* Paths[MostHandles]; // of handles below the root, by handle
static long long SleptNanoseconds;

// The C library's own function of a name.
#define REAL(name) ((__typeof__(&name))RealFunction(#name))

static void* RealFunction(const char* name)
{
    void* const found = dlsym(RTLD_NEXT, name);
    if (found == NULL)
        _exit(125);
    return found;
}

// A number of their own, so that the program's handles keep the numbers that they have without this library.
static int OpenOutside(const char* variable)
{
    const char* const path = getenv(variable);
    if (path == NULL)
        return -1;
    const long low = syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    const long high = syscall(SYS_fcntl, low, F_DUPFD_CLOEXEC, 900);
    syscall(SYS_close, low);
    return (int)high;
}

static long NumberOf(const char* variable)
{
    const char* const text = getenv(variable);
    return text == NULL ? 0 : strtol(text, NULL, 10);
}

__attribute__((constructor)) static void GetReady(void)
{
    if (Plan.Ready)
        return;
    Plan.Ready = 1;
    const char* const root = getenv("FAULT_ROOT");
    if (root == NULL || strlen(root) >= LongestPath)
        return;
    strcpy(Plan.Root, root);
    Plan.RootLength = strlen(root);
    Plan.At = NumberOf("FAULT_AT");
    Plan.Error = (int)NumberOf("FAULT_ERROR");
    Plan.Lasting = getenv("FAULT_LASTING") != NULL;
    Plan.Kill = getenv("FAULT_KILL") != NULL;
    Plan.Fast = getenv("FAULT_FAST") != NULL;
    Plan.Log = OpenOutside("FAULT_LOG");
    Plan.Hit = OpenOutside("FAULT_HIT");
    Plan.Record = OpenOutside("FAULT_RECORD");
    unsetenv("LD_PRELOAD");
}

static void WriteOutside(int handle, const char* text, size_t length)
{
    while (length > 0) {
        const long done = syscall(SYS_write, handle, text, length);
        if (done <= 0)
            _exit(124);
        text += done;
        length -= (size_t)done;
    }
}

// The path in full; NULL when it lies outside of the root. `buffer` holds LongestPath.
static const char* Below(int folder, const char* path, char* buffer)
{
    if (!Plan.Ready)
        GetReady();
    if (Plan.RootLength == 0 || path == NULL)
        return NULL;
    if (path[0] != '/') {
        const char* above = NULL;
        char current[LongestPath];
        if (folder == AT_FDCWD)
            above = syscall(SYS_getcwd, current, sizeof current) > 0 ? current : NULL;
        else if (folder >= 0 && folder < MostHandles)
            above = Paths[folder];
        if (above == NULL)
            return NULL;
        const int length = snprintf(buffer, LongestPath, "%s%s%s", above, path[0] != '\0' ? "/" : "", path);
        if (length >= LongestPath)
            return NULL;
        path = buffer;
    }
    const int below = strncmp(path, Plan.Root, Plan.RootLength) == 0 &&
                      (path[Plan.RootLength] == '/' || path[Plan.RootLength] == '\0');
    return below ? path : NULL;
}

static const char* PathOfHandle(int handle)
{
    return handle >= 0 && handle < MostHandles ? Paths[handle] : NULL;
}

static void Remember(int handle, const char* path)
{
    if (handle < 0 || handle >= MostHandles)
        return;
    free(Paths[handle]);
    Paths[handle] = path == NULL ? NULL : strdup(path);
}

static int NeedsRoom(const char* call)
{
    static const char* const calls[] = {"open", "openat", "creat", "write", "pwrite", "mkdir", "mkdirat"};
    for (size_t i = 0; i < sizeof calls / sizeof *calls; ++i) {
        if (strcmp(call, calls[i]) == 0)
            return 1;
    }
    return 0;
}

// Counts a call about `path` (NULL: none of ours). 0 or the error that it fails with.
static int Meet(const char* call, const char* path, int writing)
{
    if (path == NULL)
        return 0;
    const int before = errno;
    ++Plan.Calls;
    Plan.WritingCalls += writing;
    const int disturbed =
        Plan.At > 0 && (Plan.Kill ? writing && Plan.WritingCalls == Plan.At : Plan.Calls == Plan.At);
    char line[LongestLine];
    const int length = snprintf(line, sizeof line, "%ld %s %d %s\n", Plan.Calls, call, writing, path);
    if (Plan.Log >= 0)
        WriteOutside(Plan.Log, line, (size_t)length);
    if (disturbed && Plan.Hit >= 0)
        WriteOutside(Plan.Hit, line, (size_t)length);
    if (disturbed && Plan.Kill)
        syscall(SYS_kill, (long)getpid(), (long)SIGKILL);
    errno = before;
    if (Plan.Kill || Plan.Error == 0 || Plan.At == 0 || Plan.Calls < Plan.At)
        return 0;
    return disturbed || (Plan.Lasting && writing && NeedsRoom(call)) ? Plan.Error : 0;
}

#define FAIL_IF(error, result)                                                                               \
    do {                                                                                                     \
        const int failing_ = (error);                                                                        \
        if (failing_ != 0) {                                                                                 \
            errno = failing_;                                                                                \
            return result;                                                                                   \
        }                                                                                                    \
    } while (0)

static unsigned long long Inode(int handle)
{
    struct stat status;
    return syscall(SYS_fstat, handle, &status) == 0 ? status.st_ino : 0;
}

// One thing that was done: kind, number of the call, inode, place, length, and up to two paths; then the
// bytes.
static void Record(char kind, unsigned long long inode, long long at, const char* path, const char* path2,
                   const void* bytes, size_t length)
{
    if (Plan.Record < 0)
        return;
    const int before = errno;
    char line[LongestLine];
    const int size = snprintf(line, sizeof line, "%c\t%ld\t%llu\t%lld\t%zu\t%s\t%s\n", kind,
                              Plan.WritingCalls, inode, at, length, path, path2);
    WriteOutside(Plan.Record, line, (size_t)size);
    WriteOutside(Plan.Record, bytes, length);
    errno = before;
}

static int IsThere(const char* path)
{
    return syscall(SYS_faccessat, AT_FDCWD, path, F_OK) == 0;
}

// ---- opening and closing

static int OpenAt(const char* call, int folder, const char* path, int flags, mode_t mode)
{
    char buffer[LongestPath];
    const char* const full = Below(folder, path, buffer);
    const int writing = (flags & (O_CREAT | O_TRUNC)) != 0;
    FAIL_IF(Meet(call, full, writing), -1);
    const int made = full != NULL && (flags & O_CREAT) != 0 && !IsThere(full);
    const int handle = (int)syscall(SYS_openat, folder, path, flags, mode);
    if (handle < 0)
        return handle;
    Remember(handle, full);
    if (made)
        Record('C', Inode(handle), 0, full, "", "", 0);
    else if (full != NULL && (flags & O_TRUNC) != 0)
        Record('T', Inode(handle), 0, full, "", "", 0);
    return handle;
}

static mode_t ModeOf(int flags, va_list more)
{
    return (flags & (O_CREAT | __O_TMPFILE)) != 0 ? va_arg(more, mode_t) : 0;
}

#define DEFINE_OPEN(name)                                                                                    \
    int name(const char* path, int flags, ...)                                                               \
    {                                                                                                        \
        va_list more;                                                                                        \
        va_start(more, flags);                                                                               \
        const mode_t mode = ModeOf(flags, more);                                                             \
        va_end(more);                                                                                        \
        return OpenAt("open", AT_FDCWD, path, flags, mode);                                                  \
    }
DEFINE_OPEN(open)
DEFINE_OPEN(open64)

#define DEFINE_OPENAT(name)                                                                                  \
    int name(int folder, const char* path, int flags, ...)                                                   \
    {                                                                                                        \
        va_list more;                                                                                        \
        va_start(more, flags);                                                                               \
        const mode_t mode = ModeOf(flags, more);                                                             \
        va_end(more);                                                                                        \
        return OpenAt("openat", folder, path, flags, mode);                                                  \
    }
DEFINE_OPENAT(openat)
DEFINE_OPENAT(openat64)

int creat(const char* path, mode_t mode)
{
    return OpenAt("creat", AT_FDCWD, path, O_WRONLY | O_CREAT | O_TRUNC, mode);
}

static int OpenedForWriting(int handle)
{
    const long flags = syscall(SYS_fcntl, handle, F_GETFL);
    return flags >= 0 && (flags & O_ACCMODE) != O_RDONLY;
}

int close(int handle)
{
    const char* const path = PathOfHandle(handle);
    const int error = path == NULL ? 0 : Meet("close", path, OpenedForWriting(handle));
    Remember(handle, NULL);
    const int result = (int)syscall(SYS_close, handle);
    FAIL_IF(error, -1);
    return result;
}

// ---- reading and writing

ssize_t read(int handle, void* into, size_t length)
{
    FAIL_IF(Meet("read", PathOfHandle(handle), 0), -1);
    return syscall(SYS_read, handle, into, length);
}

ssize_t pread(int handle, void* into, size_t length, off_t at)
{
    FAIL_IF(Meet("pread", PathOfHandle(handle), 0), -1);
    return syscall(SYS_pread64, handle, into, length, at);
}

ssize_t pread64(int handle, void* into, size_t length, off64_t at)
{
    return pread(handle, into, length, at);
}

static long long PlaceOfNextWrite(int handle)
{
    const int appends = (syscall(SYS_fcntl, handle, F_GETFL) & O_APPEND) != 0;
    return syscall(SYS_lseek, handle, 0, appends ? SEEK_END : SEEK_CUR);
}

ssize_t write(int handle, const void* bytes, size_t length)
{
    const char* const path = PathOfHandle(handle);
    const int error = Meet("write", path, 1 * (path != NULL));
    if (error != 0 && length > 1)
        syscall(SYS_write, handle, bytes, length / 2);
    FAIL_IF(error, -1);
    if (path == NULL || Plan.Record < 0)
        return syscall(SYS_write, handle, bytes, length);
    const long long at = PlaceOfNextWrite(handle);
    const ssize_t done = syscall(SYS_write, handle, bytes, length);
    if (done > 0)
        Record('W', Inode(handle), at, path, "", bytes, (size_t)done);
    return done;
}

ssize_t pwrite(int handle, const void* bytes, size_t length, off_t at)
{
    const char* const path = PathOfHandle(handle);
    const int error = Meet("pwrite", path, 1 * (path != NULL));
    if (error != 0 && length > 1)
        syscall(SYS_pwrite64, handle, bytes, length / 2, at);
    FAIL_IF(error, -1);
    const ssize_t done = syscall(SYS_pwrite64, handle, bytes, length, at);
    if (path != NULL && done > 0)
        Record('W', Inode(handle), at, path, "", bytes, (size_t)done);
    return done;
}

ssize_t pwrite64(int handle, const void* bytes, size_t length, off64_t at)
{
    return pwrite(handle, bytes, length, at);
}

int ftruncate(int handle, off_t length)
{
    const char* const path = PathOfHandle(handle);
    FAIL_IF(Meet("ftruncate", path, 1), -1);
    const int result = (int)syscall(SYS_ftruncate, handle, length);
    if (path != NULL && result == 0)
        Record('T', Inode(handle), length, path, "", "", 0);
    return result;
}

int ftruncate64(int handle, off64_t length)
{
    return ftruncate(handle, length);
}

static int Flush(const char* call, long number, int handle)
{
    const char* const path = PathOfHandle(handle);
    FAIL_IF(Meet(call, path, 1), -1);
    const int result = (int)syscall(number, handle);
    if (path != NULL && result == 0)
        Record('F', Inode(handle), 0, path, "", "", 0);
    return result;
}

int fsync(int handle)
{
    return Flush("fsync", SYS_fsync, handle);
}

int fdatasync(int handle)
{
    return Flush("fdatasync", SYS_fdatasync, handle);
}

// ---- names

static int RenameAt(const char* call, int folder, const char* from, int folder2, const char* to,
                    unsigned flags)
{
    char buffer[LongestPath], buffer2[LongestPath];
    const char* const full = Below(folder, from, buffer);
    const char* const full2 = Below(folder2, to, buffer2);
    FAIL_IF(Meet(call, full2 != NULL ? full2 : full, 1), -1);
    const int result = (int)syscall(SYS_renameat2, folder, from, folder2, to, flags);
    if (result == 0 && full != NULL && full2 != NULL)
        Record('R', 0, 0, full, full2, "", 0);
    return result;
}

int rename(const char* from, const char* to)
{
    return RenameAt("rename", AT_FDCWD, from, AT_FDCWD, to, 0);
}

int renameat(int folder, const char* from, int folder2, const char* to)
{
    return RenameAt("renameat", folder, from, folder2, to, 0);
}

int renameat2(int folder, const char* from, int folder2, const char* to, unsigned flags)
{
    return RenameAt("renameat2", folder, from, folder2, to, flags);
}

static int UnlinkAt(const char* call, int folder, const char* path, int flags)
{
    char buffer[LongestPath];
    const char* const full = Below(folder, path, buffer);
    FAIL_IF(Meet(call, full, 1), -1);
    const int result = (int)syscall(SYS_unlinkat, folder, path, flags);
    if (full != NULL && result == 0)
        Record('U', 0, 0, full, "", "", 0);
    return result;
}

int unlink(const char* path)
{
    return UnlinkAt("unlink", AT_FDCWD, path, 0);
}

int unlinkat(int folder, const char* path, int flags)
{
    return UnlinkAt("unlinkat", folder, path, flags);
}

int rmdir(const char* path)
{
    return UnlinkAt("rmdir", AT_FDCWD, path, AT_REMOVEDIR);
}

int remove(const char* path)
{
    struct stat status;
    const int folder =
        syscall(SYS_newfstatat, AT_FDCWD, path, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
    return UnlinkAt("remove", AT_FDCWD, path, folder ? AT_REMOVEDIR : 0);
}

static int MakeFolderAt(const char* call, int folder, const char* path, mode_t mode)
{
    char buffer[LongestPath];
    const char* const full = Below(folder, path, buffer);
    FAIL_IF(Meet(call, full, 1), -1);
    const int result = (int)syscall(SYS_mkdirat, folder, path, mode);
    if (full != NULL && result == 0)
        Record('D', 0, 0, full, "", "", 0);
    return result;
}

int mkdir(const char* path, mode_t mode)
{
    return MakeFolderAt("mkdir", AT_FDCWD, path, mode);
}

int mkdirat(int folder, const char* path, mode_t mode)
{
    return MakeFolderAt("mkdirat", folder, path, mode);
}

// ---- asking

static int StatusAt(const char* call, int folder, const char* path, struct stat* status, int flags)
{
    char buffer[LongestPath];
    FAIL_IF(Meet(call, Below(folder, path, buffer), 0), -1);
    return (int)syscall(SYS_newfstatat, folder, path, status, flags);
}

int stat(const char* restrict path, struct stat* restrict status)
{
    return StatusAt("stat", AT_FDCWD, path, status, 0);
}

int lstat(const char* restrict path, struct stat* restrict status)
{
    return StatusAt("lstat", AT_FDCWD, path, status, AT_SYMLINK_NOFOLLOW);
}

int fstatat(int folder, const char* restrict path, struct stat* restrict status, int flags)
{
    return StatusAt("fstatat", folder, path, status, flags);
}

int fstat(int handle, struct stat* status)
{
    FAIL_IF(Meet("fstat", PathOfHandle(handle), 0), -1);
    return (int)syscall(SYS_fstat, handle, status);
}

// On 64-bit Linux both forms are one.
int stat64(const char* restrict path, struct stat64* restrict status)
{
    return stat(path, (struct stat*)status);
}

int lstat64(const char* restrict path, struct stat64* restrict status)
{
    return lstat(path, (struct stat*)status);
}

int fstatat64(int folder, const char* restrict path, struct stat64* restrict status, int flags)
{
    return fstatat(folder, path, (struct stat*)status, flags);
}

int fstat64(int handle, struct stat64* status)
{
    return fstat(handle, (struct stat*)status);
}

int statx(int folder, const char* restrict path, int flags, unsigned mask, struct statx* restrict status)
{
    char buffer[LongestPath];
    FAIL_IF(Meet("statx", Below(folder, path, buffer), 0), -1);
    return (int)syscall(SYS_statx, folder, path, flags, mask, status);
}

int access(const char* path, int mode)
{
    char buffer[LongestPath];
    FAIL_IF(Meet("access", Below(AT_FDCWD, path, buffer), 0), -1);
    return REAL(access)(path, mode);
}

int faccessat(int folder, const char* path, int mode, int flags)
{
    char buffer[LongestPath];
    FAIL_IF(Meet("faccessat", Below(folder, path, buffer), 0), -1);
    return REAL(faccessat)(folder, path, mode, flags);
}

ssize_t readlink(const char* restrict path, char* restrict into, size_t length)
{
    char buffer[LongestPath];
    FAIL_IF(Meet("readlink", Below(AT_FDCWD, path, buffer), 0), -1);
    return syscall(SYS_readlinkat, AT_FDCWD, path, into, length);
}

DIR* opendir(const char* path)
{
    char buffer[LongestPath];
    const char* const full = Below(AT_FDCWD, path, buffer);
    FAIL_IF(Meet("opendir", full, 0), NULL);
    DIR* const folder = REAL(opendir)(path);
    if (folder != NULL)
        Remember(dirfd(folder), full);
    return folder;
}

struct dirent* readdir(DIR* folder)
{
    FAIL_IF(Meet("readdir", PathOfHandle(dirfd(folder)), 0), NULL);
    return REAL(readdir)(folder);
}

struct dirent64* readdir64(DIR* folder)
{
    FAIL_IF(Meet("readdir", PathOfHandle(dirfd(folder)), 0), NULL);
    return REAL(readdir64)(folder);
}

int closedir(DIR* folder)
{
    Remember(dirfd(folder), NULL);
    return REAL(closedir)(folder);
}

// ---- locks

int flock(int handle, int operation)
{
    FAIL_IF((operation & LOCK_UN) != 0 ? 0 : Meet("flock", PathOfHandle(handle), 0), -1);
    return (int)syscall(SYS_flock, handle, operation);
}

static int Control(int handle, int command, void* argument)
{
    const int locks = command == F_GETLK || command == F_SETLK || command == F_SETLKW ||
                      command == F_OFD_GETLK || command == F_OFD_SETLK || command == F_OFD_SETLKW;
    FAIL_IF(locks ? Meet("fcntl", PathOfHandle(handle), 0) : 0, -1);
    return (int)syscall(SYS_fcntl, handle, command, argument);
}

int fcntl(int handle, int command, ...)
{
    va_list more;
    va_start(more, command);
    void* const argument = va_arg(more, void*);
    va_end(more);
    return Control(handle, command, argument);
}

int fcntl64(int handle, int command, ...)
{
    va_list more;
    va_start(more, command);
    void* const argument = va_arg(more, void*);
    va_end(more);
    return Control(handle, command, argument);
}

// ---- calls that this library cannot see into: a program that begins to use them below the root says so

static void Unseen(const char* call, const char* path)
{
    if (path == NULL)
        return;
    char line[LongestLine];
    const int length = snprintf(line, sizeof line, "failing_calls: %s of %s is not seen\n", call, path);
    WriteOutside(2, line, (size_t)length);
    _exit(123);
}

FILE* fopen(const char* restrict path, const char* restrict mode)
{
    char buffer[LongestPath];
    Unseen("fopen", Below(AT_FDCWD, path, buffer));
    return REAL(fopen)(path, mode);
}

FILE* fopen64(const char* restrict path, const char* restrict mode)
{
    char buffer[LongestPath];
    Unseen("fopen64", Below(AT_FDCWD, path, buffer));
    return REAL(fopen64)(path, mode);
}

int link(const char* from, const char* to)
{
    char buffer[LongestPath];
    Unseen("link", Below(AT_FDCWD, to, buffer));
    return REAL(link)(from, to);
}

int truncate(const char* path, off_t length)
{
    char buffer[LongestPath];
    Unseen("truncate", Below(AT_FDCWD, path, buffer));
    return REAL(truncate)(path, length);
}

ssize_t copy_file_range(int from, off64_t* at, int to, off64_t* at2, size_t length, unsigned flags)
{
    Unseen("copy_file_range", PathOfHandle(to));
    return REAL(copy_file_range)(from, at, to, at2, length, flags);
}

ssize_t sendfile(int to, int from, off_t* at, size_t length);
ssize_t sendfile(int to, int from, off_t* at, size_t length)
{
    Unseen("sendfile", PathOfHandle(to));
    return syscall(SYS_sendfile, to, from, at, length);
}

// ---- the clocks

enum { Second = 1000000000 };

static void PassTime(long long nanoseconds)
{
    const long long longest = 600LL * Second;
    const int patient = SleptNanoseconds < longest;
    SleptNanoseconds += nanoseconds;
    if (patient && SleptNanoseconds >= longest)
        syscall(SYS_kill, (long)getpid(), (long)SIGTERM);
}

static int SleepFast(const struct timespec* time)
{
    PassTime(time->tv_sec * (long long)Second + time->tv_nsec);
    return 0;
}

int nanosleep(const struct timespec* time, struct timespec* left)
{
    return Plan.Fast ? SleepFast(time) : (int)syscall(SYS_nanosleep, time, left);
}

int clock_gettime(clockid_t clock, struct timespec* time)
{
    enum { Clocks = 2 }; // CLOCK_REALTIME, CLOCK_MONOTONIC
    static struct timespec first[Clocks];
    static long long looks; // a microsecond each
    if (!Plan.Fast || clock < 0 || clock >= Clocks)
        return (int)syscall(SYS_clock_gettime, clock, time);
    const int result = first[clock].tv_sec != 0 ? 0 : (int)syscall(SYS_clock_gettime, clock, &first[clock]);
    *time = first[clock];
    const long long nanoseconds = time->tv_nsec + SleptNanoseconds + 1000 * ++looks;
    time->tv_sec += nanoseconds / Second;
    time->tv_nsec = nanoseconds % Second;
    return result;
}

int clock_nanosleep(clockid_t clock, int flags, const struct timespec* time, struct timespec* left)
{
    if (!Plan.Fast)
        return syscall(SYS_clock_nanosleep, clock, flags, time, left) == 0 ? 0 : errno;
    if ((flags & TIMER_ABSTIME) == 0)
        return SleepFast(time);
    struct timespec now;
    clock_gettime(clock, &now);
    const long long wait = (time->tv_sec - now.tv_sec) * (long long)Second + (time->tv_nsec - now.tv_nsec);
    PassTime(wait > 0 ? wait : 0);
    return 0;
}

time_t time(time_t* into)
{
    struct timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    if (into != NULL)
        *into = now.tv_sec;
    return now.tv_sec;
}

int gettimeofday(struct timeval* restrict into, void* restrict zone)
{
    (void)zone;
    struct timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    into->tv_sec = now.tv_sec;
    into->tv_usec = now.tv_nsec / 1000;
    return 0;
}

// What waits for events with a limit passes it at once when there are none.
int poll(struct pollfd* handles, nfds_t count, int milliseconds)
{
    if (!Plan.Fast || milliseconds < 0)
        return (int)syscall(SYS_poll, handles, count, milliseconds);
    const int ready = (int)syscall(SYS_poll, handles, count, 0);
    if (ready == 0)
        PassTime(milliseconds * 1000000LL);
    return ready;
}

int ppoll(struct pollfd* handles, nfds_t count, const struct timespec* time, const sigset_t* mask)
{
    struct timespec wait = {0, 0};
    if (!Plan.Fast && time != NULL)
        wait = *time;
    const int waits = !Plan.Fast && time == NULL;
    const int ready = (int)syscall(SYS_ppoll, handles, count, waits ? NULL : &wait, mask, 8);
    if (Plan.Fast && ready == 0 && time != NULL)
        SleepFast(time);
    return ready;
}
