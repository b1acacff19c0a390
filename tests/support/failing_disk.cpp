#include "tests/support/failing_disk.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using FileId = std::pair<dev_t, ino_t>;

struct Disk
{
    std::string folder; // with a "/" behind it
    int successes = -1;
    int error = 0;
    bool lasting = false;
    bool halved = false;
    int calls = 0;
    std::set<FileId> unflushed{};
    std::vector<std::string> renamedUnflushed{};

    bool holds(std::string_view path) const { return path.substr(0, folder.size()) == folder; }
    bool holds(int descriptor) const
    {
        std::array<char, PATH_MAX> path{};
        const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
        const auto length = ::readlink(link.c_str(), path.data(), path.size());
        return length > 0 && holds(std::string_view(path.data(), static_cast<std::size_t>(length)));
    }
    bool failsNow()
    {
        ++calls;
        return successes >= 0 && calls > successes && (lasting || calls == successes + 1);
    }
};

// The transfers' and the toolkit's threads close and write as well.
std::mutex mutex;
Disk *disk = nullptr;

FileId idOf(const struct stat &status)
{
    return {status.st_dev, status.st_ino};
}

/// One call that changes the disk.
template <typename Place>
bool fails(Place place)
{
    const int before = errno;
    const std::lock_guard lock(mutex);
    if (!disk || !disk->holds(place) || !disk->failsNow()) {
        errno = before;
        return false;
    }
    errno = disk->error;
    return true;
}

void noteWrite(int descriptor)
{
    const int before = errno;
    const std::lock_guard lock(mutex);
    struct stat status = {};
    if (disk && disk->holds(descriptor) && ::fstat(descriptor, &status) == 0)
        disk->unflushed.insert(idOf(status));
    errno = before;
}

void noteFlush(int descriptor)
{
    const std::lock_guard lock(mutex);
    struct stat status = {};
    if (disk && ::fstat(descriptor, &status) == 0)
        disk->unflushed.erase(idOf(status));
}

void noteRename(const char *path)
{
    const std::lock_guard lock(mutex);
    struct stat status = {};
    if (disk && disk->holds(std::string_view(path)) && ::stat(path, &status) == 0 &&
        disk->unflushed.count(idOf(status)) > 0)
        disk->renamedUnflushed.push_back(std::string(path).substr(disk->folder.size()));
}

// The half that a disk still takes when it gets full: 0 when there is none.
ssize_t writeHalf(int descriptor, const void *bytes, std::size_t size)
{
    {
        const std::lock_guard lock(mutex);
        if (!disk || !disk->lasting || disk->halved || disk->calls != disk->successes || size < 2 ||
            !disk->holds(descriptor))
            return 0;
        disk->halved = true;
    }
    return syscall(SYS_write, descriptor, bytes, size / 2);
}

int openFile(const char *path, int flags, mode_t mode)
{
    const bool changes = (flags & (O_CREAT | O_TRUNC)) != 0;
    if (changes && fails(std::string_view(path)))
        return -1;
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

} // namespace

// The C library's functions, under their own names: an executable's come first.

extern "C" int open(const char *path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openFile(path, flags, mode);
}

extern "C" int open64(const char *path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openFile(path, flags, mode);
}

extern "C" ssize_t write(int descriptor, const void *bytes, std::size_t size)
{
    ssize_t done = writeHalf(descriptor, bytes, size);
    if (done == 0) {
        if (fails(descriptor))
            return -1;
        done = syscall(SYS_write, descriptor, bytes, size);
    }
    noteWrite(descriptor);
    return done;
}

extern "C" ssize_t writev(int descriptor, const iovec *parts, int count)
{
    ssize_t done = count > 0 ? writeHalf(descriptor, parts->iov_base, parts->iov_len) : 0;
    if (done == 0) {
        if (fails(descriptor))
            return -1;
        done = syscall(SYS_writev, descriptor, parts, count);
    }
    noteWrite(descriptor);
    return done;
}

extern "C" int fsync(int descriptor)
{
    if (fails(descriptor))
        return -1;
    noteFlush(descriptor);
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}

// It is closed all the same.
extern "C" int close(int descriptor)
{
    const int flags = ::fcntl(descriptor, F_GETFL);
    const bool failed = flags >= 0 && (flags & O_ACCMODE) != O_RDONLY && fails(descriptor);
    const int error = errno;
    const int result = static_cast<int>(syscall(SYS_close, descriptor));
    if (!failed)
        return result;
    errno = error;
    return -1;
}

extern "C" int rename(const char *from, const char *to) noexcept
{
    if (fails(std::string_view(to)))
        return -1;
    const int result = static_cast<int>(syscall(SYS_renameat, AT_FDCWD, from, AT_FDCWD, to));
    if (result == 0)
        noteRename(to);
    return result;
}

extern "C" int unlink(const char *path) noexcept
{
    return fails(std::string_view(path)) ? -1 : static_cast<int>(syscall(SYS_unlinkat, AT_FDCWD, path, 0));
}

extern "C" int symlink(const char *target, const char *path) noexcept
{
    return fails(std::string_view(path)) ? -1
                                         : static_cast<int>(syscall(SYS_symlinkat, target, AT_FDCWD, path));
}

extern "C" int mkdir(const char *path, mode_t mode) noexcept
{
    return fails(std::string_view(path)) ? -1 : static_cast<int>(syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}

namespace sondrel {

FailingDisk::FailingDisk(const QString &folder, int successes, int error, Lasts lasts)
{
    const std::lock_guard lock(mutex);
    disk = new Disk{QFile::encodeName(folder).toStdString() + '/', successes, error,
                    lasts == Lasts::UntilTheEnd};
}

FailingDisk::~FailingDisk()
{
    const std::lock_guard lock(mutex);
    delete std::exchange(disk, nullptr);
}

int FailingDisk::calls() const
{
    const std::lock_guard lock(mutex);
    return disk->calls;
}

QStringList FailingDisk::renamedUnflushed() const
{
    const std::lock_guard lock(mutex);
    QStringList names;
    for (const std::string &name : disk->renamedUnflushed)
        names.append(QFile::decodeName(QByteArray::fromStdString(name)));
    return names;
}

} // namespace sondrel
