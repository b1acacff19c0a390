#include "core/native_file.h"

#include <QFile>

#include <fcntl.h>
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

mode_t modeOf(const QString &path)
{
    const auto status = linkStatusOf(path);
    return status ? status->st_mode : 0;
}

std::optional<struct stat> linkStatusOf(const QString &path)
{
    struct stat info = {};
    if (::lstat(QFile::encodeName(path).constData(), &info) != 0)
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
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return std::nullopt;
    return info;
}

std::optional<QString> canonicalPath(const QString &path)
{
    const std::unique_ptr<char, decltype(&std::free)> canonical(
        ::realpath(QFile::encodeName(path).constData(), nullptr), std::free);
    return canonical ? std::optional(QFile::decodeName(canonical.get())) : std::nullopt;
}

NativeFile::NativeFile(const QString &path, int flags)
    : m_descriptor(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, 0666))
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

TemporaryFile::TemporaryFile(const QString &folder)
{
    static unsigned number = 0;
    do {
        m_path = folder + u"/.sondrel-%1-%2.tmp"_s.arg(::getpid()).arg(++number);
        m_file.emplace(m_path, O_WRONLY | O_CREAT | O_EXCL);
    } while (!isOpen() && errno == EEXIST);
    m_there = isOpen();
}

TemporaryFile::~TemporaryFile()
{
    if (m_there)
        ::unlink(QFile::encodeName(m_path).constData());
}

bool TemporaryFile::moveTo(const QString &path)
{
    if (!m_file->close() ||
        ::rename(QFile::encodeName(m_path).constData(), QFile::encodeName(path).constData()) != 0)
        return false;
    m_there = false;
    return true;
}

} // namespace sondrel
