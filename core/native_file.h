// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <QVarLengthArray>

#include <sys/stat.h>

#include <optional>
#include <utility>

// The system's files by their native paths. What fails leaves its reason in errno.

namespace sondrel {

/// A path as the system's calls take it, for as long as one lasts. Paths of usual length need no memory of
/// their own.
class NativePath
{
public:
    explicit NativePath(QStringView path);
    const char *text() const { return m_text.constData(); }

private:
    QVarLengthArray<char, 1024> m_text;
};

/// Kind and permissions of what stands at a path, a link being itself; 0 when nothing does.
mode_t modeOf(const QString &path);

/// What stands at a path, a link being itself; nothing when nothing does.
std::optional<struct stat> linkStatusOf(const QString &path);

/// Time of the last change in nanoseconds.
qint64 changeTime(const struct stat &status);

/// What stands at a path, links followed; nothing when nothing does.
std::optional<struct stat> statusOf(const QString &path);

/// The path with all links followed; nothing when it leads nowhere.
std::optional<QString> canonicalPath(const QString &path);

/// An open file, closed with this object.
class NativeFile
{
public:
    /// The mode is for a file that is made, as far as the user's mask allows it.
    NativeFile(const QString &path, int flags, mode_t mode = 0666);
    explicit NativeFile(int descriptor) : m_descriptor(descriptor) {}
    ~NativeFile() { close(); }
    NativeFile(NativeFile &&other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    NativeFile &operator=(NativeFile &&) = delete;

    bool isOpen() const { return m_descriptor >= 0; }
    int descriptor() const { return m_descriptor; }
    /// The bytes to the end of the file; nothing when it fails.
    std::optional<QByteArray> readAll() const;
    /// How many bytes could be written; fewer than all when it failed.
    qsizetype write(QByteArrayView bytes) const;
    bool writeAll(QByteArrayView bytes, QByteArrayView tail) const;
    /// False when the system tells only now that a write has failed.
    bool close();

private:
    int m_descriptor;
};

/// A new file under a name of its own, gone with this object unless it has been moved to its place. The name
/// is short: that of the file which it becomes may already have the longest length there is.
///
/// A process that is killed leaves it behind. The next one that writes in the folder takes it away, and so
/// does removeLeftovers: each file is locked as long as somebody writes it.
class TemporaryFile
{
public:
    explicit TemporaryFile(const QString &folder, mode_t mode = 0666);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    bool isOpen() const { return m_file->isOpen(); }
    const NativeFile &file() const { return *m_file; }
    /// Closes it and replaces what stands at the path.
    bool moveTo(const QString &path);
    /// Takes away what killed processes have left in the folder; what others are writing stays.
    static void removeLeftovers(const QString &folder);

private:
    QString m_path;
    std::optional<NativeFile> m_file;
    bool m_there = false;
};

} // namespace sondrel
