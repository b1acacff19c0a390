#include "core/host_path.h"

#include "core/failure.h"
#include "core/text_fold.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qsizetype LongestName = 255; // bytes, the limit of Linux file systems

qint64 folderTime(const QString &folder)
{
    struct stat info = {};
    if (::stat(QFile::encodeName(folder).constData(), &info) != 0)
        return -1;
    return static_cast<qint64>(info.st_mtim.tv_sec) * 1'000'000'000 + info.st_mtim.tv_nsec;
}

bool exists(const QString &path)
{
    struct stat info = {};
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0;
}

[[noreturn]] void fail(const QString &what, const QString &path, const QString &why)
{
    throw Failure(what + u" \""_s + path + u"\": "_s + why);
}

} // namespace

HostPath::HostPath(QStringList roots) : m_roots(std::move(roots))
{
    // The longest root first, should one lie inside another.
    std::sort(m_roots.begin(), m_roots.end(),
              [](const QString &left, const QString &right) { return left.size() > right.size(); });
}

bool HostPath::isFileName(const QString &name)
{
    if (name.isEmpty() || name == "."_L1 || name == ".."_L1)
        return false;
    for (const QChar unit : name) {
        if (unit == u'/' || unit == u'\\' || unit < u' ' || unit == QChar(0x7F))
            return false;
    }
    return QFile::encodeName(name).size() <= LongestName;
}

QString HostPath::compose(const QString &root, std::initializer_list<QString> components)
{
    QString path = root;
    for (const QString &component : components) {
        if (!isFileName(component))
            throw Failure(u"\""_s + component + u"\" cannot be the name of a file"_s);
        path += u'\\';
        path += component;
    }
    return path;
}

const HostPath::FolderIndex &HostPath::indexOf(const QString &folder) const
{
    FolderIndex &index = m_index[folder];
    const qint64 changed = folderTime(folder);
    if (index.changed != changed) {
        index.changed = changed;
        index.names.clear();
        const auto names = QDir(folder).entryList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
        for (const QString &name : names) {
            const QString key = folded(name);
            if (!index.names.contains(key))
                index.names.insert(key, name);
        }
    }
    return index;
}

std::optional<QString> HostPath::find(const QString &path) const
{
    QString result;
    QStringView rest;
    for (const QString &root : m_roots) {
        if (path.startsWith(root) && path.size() > root.size() && path[root.size()] == u'\\') {
            result = root;
            rest = QStringView(path).sliced(root.size() + 1);
            break;
        }
    }
    if (result.isEmpty())
        return path;
    bool missing = false;
    for (const QStringView component : rest.split(u'\\')) {
        const QString name = component.toString();
        if (name.isEmpty())
            continue; // a doubled or closing separator
        if (!isFileName(name))
            return std::nullopt;
        const QString spelled = result + u'/' + name;
        if (!missing && !exists(spelled)) {
            const FolderIndex &index = indexOf(result);
            const auto it = index.names.constFind(folded(name));
            if (it != index.names.constEnd()) {
                result += u'/' + it.value();
                continue;
            }
            missing = true;
        }
        result = spelled;
    }
    return result;
}

bool HostPath::fileExists(const QString &path) const
{
    const auto native = find(path);
    return native && QFileInfo(*native).isFile();
}

bool HostPath::folderExists(const QString &path) const
{
    const auto native = find(path);
    return native && QFileInfo(*native).isDir();
}

qint64 HostPath::size(const QString &path) const
{
    const auto native = find(path);
    if (!native)
        return -1;
    const QFileInfo info(*native);
    return info.isFile() ? info.size() : -1;
}

QByteArray HostPath::readAll(const QString &path) const
{
    const auto native = find(path);
    if (!native)
        fail(u"Cannot read"_s, path, u"not a file name"_s);
    QFile file(*native);
    if (!file.open(QIODevice::ReadOnly))
        fail(u"Cannot read"_s, *native, file.errorString());
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        fail(u"Cannot read"_s, *native, file.errorString());
    return bytes;
}

QString HostPath::nativeForWriting(const QString &path) const
{
    const auto native = find(path);
    if (!native)
        fail(u"Cannot write"_s, path, u"not a file name"_s);
    return *native;
}

// Remembers a write of our own in the folder's index, so that it need not be read anew; only if nobody else
// has changed the folder meanwhile.
class HostPath::OwnChange
{
public:
    OwnChange(HostPath &files, const QString &native)
        : m_files(files), m_folder(QFileInfo(native).path()), m_name(QFileInfo(native).fileName())
    {
        const auto it = m_files.m_index.constFind(m_folder);
        m_current = it != m_files.m_index.constEnd() && it->changed == folderTime(m_folder);
    }
    ~OwnChange()
    {
        if (!m_current)
            return;
        FolderIndex &index = m_files.m_index[m_folder];
        index.changed = folderTime(m_folder);
        const QString key = folded(m_name);
        if (exists(m_folder + u'/' + m_name)) {
            if (!index.names.contains(key))
                index.names.insert(key, m_name);
        } else if (index.names.value(key) == m_name) {
            index.changed = -1; // another spelling may stand behind the removed one
        }
    }
    OwnChange(const OwnChange &) = delete;
    OwnChange &operator=(const OwnChange &) = delete;

private:
    HostPath &m_files;
    QString m_folder;
    QString m_name;
    bool m_current = false;
};

void HostPath::writeAll(const QString &path, QByteArrayView bytes)
{
    const QString native = nativeForWriting(path);
    const OwnChange change(*this, native);
    QSaveFile file(native);
    if (!file.open(QIODevice::WriteOnly))
        fail(u"Cannot write"_s, native, file.errorString());
    file.write(bytes.data(), bytes.size());
    if (!file.commit())
        fail(u"Cannot write"_s, native, file.errorString());
}

void HostPath::writeUnflushed(const QString &path, QByteArrayView bytes)
{
    const QString native = nativeForWriting(path);
    const OwnChange change(*this, native);
    // A fixed short name: the page's own name may already have the longest length there is.
    QTemporaryFile file(QFileInfo(native).path() + u"/.page-XXXXXX"_s);
    if (!file.open())
        fail(u"Cannot write"_s, native, file.errorString());
    if (file.write(bytes.data(), bytes.size()) != bytes.size() || !file.flush())
        fail(u"Cannot write"_s, native, file.errorString());
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup
                        | QFileDevice::ReadOther);
    if (::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(native).constData()) != 0)
        fail(u"Cannot write"_s, native, QString::fromLocal8Bit(std::strerror(errno)));
    file.setAutoRemove(false);
}

void HostPath::append(const QString &path, QByteArrayView bytes)
{
    const QString native = nativeForWriting(path);
    const OwnChange change(*this, native);
    QFile file(native);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        fail(u"Cannot write"_s, native, file.errorString());
    if (file.write(bytes.data(), bytes.size()) != bytes.size())
        fail(u"Cannot write"_s, native, file.errorString());
}

void HostPath::remove(const QString &path)
{
    const QString native = nativeForWriting(path);
    if (!exists(native))
        return;
    const OwnChange change(*this, native);
    QFile file(native);
    if (QFileInfo(native).isDir() || !file.remove())
        fail(u"Cannot remove"_s, native,
             QFileInfo(native).isDir() ? u"it is a folder"_s : file.errorString());
}

void HostPath::makeFolder(const QString &path)
{
    const QString native = nativeForWriting(path);
    if (QFileInfo(native).isDir())
        return;
    const OwnChange change(*this, native);
    if (!QDir().mkpath(native))
        fail(u"Cannot make the folder"_s, native,
             exists(native) ? u"a file is in its place"_s : QString::fromLocal8Bit(std::strerror(errno)));
}

void HostPath::linkBeside(const QString &target, const QString &linkName)
{
    if (!isFileName(linkName))
        return;
    const QString native = nativeForWriting(target);
    const QFileInfo info(native);
    const QString link = info.path() + u'/' + linkName;
    if (link == native)
        return;
    const OwnChange change(*this, link);
    const QFileInfo old(link);
    if (old.isSymLink())
        QFile::remove(link);
    else if (old.exists())
        return;
    if (::symlink(QFile::encodeName(info.fileName()).constData(), QFile::encodeName(link).constData()) != 0)
        fail(u"Cannot make the link"_s, link, QString::fromLocal8Bit(std::strerror(errno)));
}

} // namespace sondrel
