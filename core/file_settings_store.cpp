#include "core/file_settings_store.h"

#include "core/failure.h"
#include "core/native_file.h"
#include "core/settings_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr mode_t OwnerOnly = 0600;

QString lastSystemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

[[noreturn]] void fail(const QString &what, const QString &file, const QString &why)
{
    throw Failure(what + u" the settings file \""_s + file + u"\": "_s + why);
}

// A link is followed, so that the file it names is the one that is replaced.
QString withoutLinks(const QString &file)
{
    const QString canonical = QFileInfo(file).canonicalFilePath();
    return canonical.isEmpty() ? file : canonical;
}

} // namespace

FileSettingsStore::FileSettingsStore(QString file) : m_file(std::move(file))
{
    // It would hold passwords.
    TemporaryFile::removeLeftovers(QFileInfo(withoutLinks(m_file)).path());
}

FileSettingsStore::Stamp FileSettingsStore::stampOnDisk() const
{
    struct stat info = {};
    if (::stat(NativePath(m_file).text(), &info) != 0) {
        if (errno == ENOENT)
            return {};
        fail(u"Cannot read"_s, m_file, lastSystemError());
    }
    if (!S_ISREG(info.st_mode))
        fail(u"Cannot read"_s, m_file, u"it is not a file"_s);
    return {static_cast<quint64>(info.st_dev), static_cast<quint64>(info.st_ino),
            static_cast<qint64>(info.st_size),
            static_cast<qint64>(info.st_mtim.tv_sec) * 1'000'000'000 + info.st_mtim.tv_nsec};
}

void FileSettingsStore::refresh() const
{
    if (m_unsaved)
        return;
    const Stamp stamp = stampOnDisk();
    if (m_stamp == stamp)
        return;
    m_stamp.reset();
    ++m_revision;
    m_tree = stamp == Stamp() ? SettingsTree() : load();
    m_stamp = stamp;
}

SettingsTree FileSettingsStore::load() const
{
    QFile file(m_file);
    if (!file.open(QIODevice::ReadOnly))
        fail(u"Cannot read"_s, m_file, file.errorString());
    // It holds passwords, so one that came from elsewhere is closed to others.
    ::fchmod(file.handle(), OwnerOnly);
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        fail(u"Cannot read"_s, m_file, file.errorString());
    try {
        return readSettings(bytes);
    } catch (const Failure &failure) {
        fail(u"Cannot read"_s, m_file, failure.text());
    }
}

bool FileSettingsStore::hasKey(const QString &path) const
{
    refresh();
    return m_tree.hasKey(path);
}

void FileSettingsStore::createKey(const QString &path)
{
    refresh();
    if (m_tree.createKey(path))
        changed();
}

std::optional<QVariant> FileSettingsStore::value(const QString &path, const QString &name) const
{
    refresh();
    return m_tree.value(path, name);
}

void FileSettingsStore::setValue(const QString &path, const QString &name, const QVariant &value)
{
    refresh();
    if (m_tree.setValue(path, name, value))
        changed();
}

void FileSettingsStore::storeTogether(const std::function<void()> &changes)
{
    const auto end = [this] {
        if (--m_together == 0 && m_unsaved)
            save();
    };
    ++m_together;
    try {
        changes();
    } catch (...) {
        end();
        throw;
    }
    end();
}

void FileSettingsStore::changed()
{
    ++m_revision;
    m_unsaved = true;
    if (m_together == 0)
        save();
}

void FileSettingsStore::save()
{
    m_unsaved = false; // what cannot be stored is given up: the file holds
    m_stamp.reset();
    const QString target = withoutLinks(m_file);
    if (const QFileInfo old(target); old.exists() && !old.isWritable())
        fail(u"Cannot write"_s, m_file, u"it is read-only"_s);
    try {
        replaceFile(target);
    } catch (const Failure &failure) {
        if (onUnwritten)
            onUnwritten(failure.text());
        throw;
    }
    m_stamp = stampOnDisk();
}

void FileSettingsStore::replaceFile(const QString &target) const
{
    const QString folder = QFileInfo(target).path();
    if (!QDir().mkpath(folder))
        fail(u"Cannot write"_s, m_file, u"its folder cannot be made"_s);
    TemporaryFile file(folder, OwnerOnly); // from the start
    if (!file.isOpen() || !file.file().writeAll(writeSettings(m_tree), {}) ||
        ::fchmod(file.file().descriptor(), OwnerOnly) != 0 || ::fsync(file.file().descriptor()) != 0 ||
        !file.moveTo(target))
        fail(u"Cannot write"_s, m_file, lastSystemError());
}

} // namespace sondrel
