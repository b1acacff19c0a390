#include "core/native_file.h"

#include <QFile>
#include <QStringEncoder>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString temporaryPath(const QString &folder, int number)
{
    return folder + u"/.sondrel-%1.tmp"_s.arg(number);
}

// False when another process holds the lock, or has removed the file before it was locked. Where nothing can
// be locked, nothing is ever taken for a leftover.
bool lockNew(const NativeFile &file)
{
    if (::flock(file.descriptor(), LOCK_EX | LOCK_NB) != 0)
        return errno != EWOULDBLOCK;
    struct stat info = {};
    return ::fstat(file.descriptor(), &info) == 0 && info.st_nlink > 0;
}

bool removeLeftover(const QString &path)
{
    const NativeFile file(path, O_WRONLY | O_NOFOLLOW | O_NONBLOCK);
    struct stat info = {};
    if (!file.isOpen() || ::fstat(file.descriptor(), &info) != 0 || !S_ISREG(info.st_mode) ||
        ::flock(file.descriptor(), LOCK_EX | LOCK_NB) != 0)
        return false;
    // Since it was opened, its writer can have moved it to its place, and another have begun a file.
    const auto there = linkStatusOf(path);
    return there && there->st_dev == info.st_dev && there->st_ino == info.st_ino &&
           ::unlink(NativePath(path).text()) == 0;
}

} // namespace

NativePath::NativePath(QStringView path)
{
    QStringEncoder encoder(QStringEncoder::System, QStringEncoder::Flag::Stateless);
    m_text.resize(encoder.requiredSpace(path.size()) + 1);
    *encoder.appendToBuffer(m_text.data(), path) = '\0';
}

mode_t modeOf(const QString &path)
{
    const auto status = linkStatusOf(path);
    return status ? status->st_mode : 0;
}

std::optional<struct stat> linkStatusOf(const QString &path)
{
    struct stat info = {};
    if (::lstat(NativePath(path).text(), &info) != 0)
        return std::nullopt;
    return info;
}

qint64 changeTime(const struct stat &status)
{
    return static_cast<qint64>(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec;
}

std::optional<struct stat> statusOf(const QString &path)
{
    struct stat info = {};
    if (::stat(NativePath(path).text(), &info) != 0)
        return std::nullopt;
    return info;
}

std::optional<QString> canonicalPath(const QString &path)
{
    const std::unique_ptr<char, decltype(&std::free)> canonical(::realpath(NativePath(path).text(), nullptr),
                                                                std::free);
    return canonical ? std::optional(QFile::decodeName(canonical.get())) : std::nullopt;
}

NativeFile::NativeFile(const QString &path, int flags, mode_t mode)
    : m_descriptor(::open(NativePath(path).text(), flags | O_CLOEXEC, mode))
{
}

std::optional<QByteArray> NativeFile::readAll() const
{
    struct stat info = {};
    if (::fstat(m_descriptor, &info) != 0)
        return std::nullopt;
    // Files that the system makes up as they are read say that they are empty.
    QByteArray bytes(std::max<qsizetype>(info.st_size, 4096), Qt::Uninitialized);
    qsizetype done = 0;
    for (;;) {
        const auto room = static_cast<std::size_t>(bytes.size() - done);
        const auto count = ::read(m_descriptor, bytes.data() + done, room);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        done += count;
        if (count == 0 || done == info.st_size)
            break;
        if (done == bytes.size())
            bytes.resize(bytes.size() * 2);
    }
    bytes.truncate(done);
    return bytes;
}

qsizetype NativeFile::write(QByteArrayView bytes) const
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const auto rest = static_cast<std::size_t>(bytes.size() - done);
        const auto count = ::write(m_descriptor, bytes.data() + done, rest);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        done += count;
    }
    return done;
}

bool NativeFile::writeAll(QByteArrayView bytes, QByteArrayView tail) const
{
    // One call as a rule; libraries let iovec be changed by reading calls alone.
    const auto part = [](QByteArrayView view) {
        return iovec{const_cast<char *>(view.data()), static_cast<std::size_t>(view.size())};
    };
    const std::array parts{part(bytes), part(tail)};
    const qsizetype done = std::max<qsizetype>(::writev(m_descriptor, parts.data(), parts.size()), 0);
    const QByteArrayView rest = bytes.sliced(std::min(done, bytes.size()));
    const QByteArrayView restOfTail = tail.sliced(std::max<qsizetype>(done - bytes.size(), 0));
    return write(rest) == rest.size() && write(restOfTail) == restOfTail.size();
}

bool NativeFile::close()
{
    return m_descriptor < 0 || ::close(std::exchange(m_descriptor, -1)) == 0;
}

TemporaryFile::TemporaryFile(const QString &folder, mode_t mode)
{
    for (int number = 1; !m_there;) {
        m_path = temporaryPath(folder, number);
        m_file.emplace(m_path, O_WRONLY | O_CREAT | O_EXCL, mode);
        if (!isOpen() && errno != EEXIST)
            return;
        m_there = isOpen() && lockNew(*m_file);
        if (!isOpen() && !removeLeftover(m_path))
            ++number;
    }
}

TemporaryFile::~TemporaryFile()
{
    if (m_there)
        ::unlink(NativePath(m_path).text());
}

bool TemporaryFile::moveTo(const QString &path)
{
    // Some file systems tell of a failed write when the file is closed. The lock lasts as long as the second
    // descriptor is open.
    const NativeFile lock(::fcntl(m_file->descriptor(), F_DUPFD_CLOEXEC, 0));
    if (!m_file->close() || ::rename(NativePath(m_path).text(), NativePath(path).text()) != 0)
        return false;
    m_there = false;
    return true;
}

void TemporaryFile::removeLeftovers(const QString &folder)
{
    for (int number = 1; linkStatusOf(temporaryPath(folder, number)); ++number)
        removeLeftover(temporaryPath(folder, number));
}

} // namespace sondrel
