// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/folder_index.h"
#include "core/native_file.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <initializer_list>
#include <optional>
#include <unordered_map>
#include <utility>

namespace sondrel {

class HostPath;

/// A file that is open to be added to. Outlived by its HostPath.
class AppendFile
{
public:
    /// Throws Failure, and leaves the file as it was, when not all bytes could be added.
    void append(QByteArrayView bytes);

private:
    friend class HostPath;
    AppendFile(const HostPath &files, const QString &path, int flags);

    const HostPath *m_files;
    QString m_path;
    NativeFile m_file;
};

/// All access to files. Paths below the program's own folders (the roots) are composed with "\" and their
/// names ignore case: "ROOT\Results\Engine\word.dat" finds ROOT/results/ENGINE/word.DAT. Any other path, such
/// as one picked by the user, is taken as the system spells it.
///
/// An index per folder answers look-ups that miss; the program's own writes update it, a changed folder time
/// renews it. Symbolic links are followed; only a write below a root goes through none that leads out of the
/// roots.
class HostPath
{
public:
    explicit HostPath(QStringList roots);

    /// Hears of each change below the roots that the system did not let happen, before the Failure is thrown
    /// that says the same.
    std::function<void(const QString &problem)> onUnwritten;

    /// root + "\" + components. Throws Failure when a component cannot be a file name.
    static QString compose(const QString &root, std::initializer_list<QString> components);
    /// True when the text can be the name of a file or folder: it is not empty, "." or "..", holds no "/",
    /// "\" or control character of ASCII, and has at most 255 bytes.
    static bool isFileName(const QString &name);
    /// The name; throws Failure when it cannot be that of a file.
    static const QString &checkedName(const QString &name);

    /// The path in the system's spelling: existing files and folders as they are spelled on disk, new ones as
    /// given. Nothing when a component cannot be a file name.
    std::optional<QString> find(const QString &path) const;

    bool fileExists(const QString &path) const;
    bool folderExists(const QString &path) const;
    /// Size in bytes, or -1 when there is no such file.
    qint64 size(const QString &path) const;

    /// The whole file; throws Failure when it cannot be read.
    QByteArray readAll(const QString &path) const;
    /// Replaces the whole file: a crash leaves the old or the new file, never a half. Throws Failure.
    void writeAll(const QString &path, QByteArrayView bytes);
    /// As writeAll, for files that can be fetched again: renamed into place, not flushed to the disk first.
    void writeUnflushed(const QString &path, QByteArrayView bytes);
    class Folder;
    /// The folder, made when it is missing. Throws Failure.
    Folder folder(const QString &path);
    /// The folder, when it has been asked for before and is still where it was: a lookup asks with each page.
    std::optional<Folder> knownFolder(const QString &path);
    /// Opens the file to add to its end; makes it when it is missing. Throws Failure.
    AppendFile openToAppend(const QString &path);
    void append(const QString &path, QByteArrayView bytes) { openToAppend(path).append(bytes); }
    /// Removes the file when there is one; throws Failure when it cannot be removed.
    void remove(const QString &path);
    /// Makes the folder and its parents below the root. Throws Failure.
    void makeFolder(const QString &path);
    /// Makes a relative symbolic link beside the target, replacing an older link but never a file. Does
    /// nothing when the file system cannot have that name, or has no links; a "\" in it is a character like
    /// any other, since browsers ask for names that hold one. A write to the name of such a link goes to its
    /// target where the two names differ in case only, and replaces the link otherwise.
    void linkBeside(const QString &target, const QString &linkName);
    /// As linkBeside, for a name that may stand for several files: once it does, it leads to their folder.
    void linkVaguely(const QString &target, const QString &linkName);

private:
    friend class AppendFile;
    static bool isLinkName(const QString &name);
    struct Place; // a path divided into root and components
    struct Entry; // one name in a folder, as it stands on disk
    // A folder as the system spells it, and its time; -1 when that is not known.
    struct Directory
    {
        QString path;
        qint64 changed = -1;
    };

    std::optional<Place> divide(const QString &path) const;
    QString respelled(const Place &place) const;
    std::optional<struct stat> status(const QString &path) const;
    Entry entry(const Directory &folder, const QString &name) const;
    Entry folderEntry(const Directory &folder, const QString &name) const;
    static QString linkText(const Entry &link);
    static Entry sibling(const Entry &link);
    Entry followed(const Entry &link) const;
    bool isInside(const QString &canonical) const;
    [[noreturn]] void failToChange(const QString &what, const QString &path) const;
    Entry target(const QString &path) const;
    Entry targetIn(const Directory &folder, const QString &name) const;
    Entry fileToWrite(Entry target) const;
    static Directory known(Directory folder);
    FolderIndex::OwnChange ownChange(const Directory &folder);
    // These three keep the time of the file's folder up to date.
    void replace(Entry &file, QByteArrayView bytes, QByteArrayView tail, bool flush);
    AppendFile openToAppend(Entry &file);
    void remove(Entry &file);
    void link(const QString &target, const QString &linkName, bool vaguely);
    Directory madeFolder(const QString &path);

    QStringList m_roots;
    std::unordered_map<QString, QString> m_madeFolders; // composed path, system's spelling
    mutable FolderIndex m_index;
};

/// A folder that is looked up once for several files to be written in it. Outlived by its HostPath.
class HostPath::Folder
{
public:
    /// Like those of HostPath, for a file of this folder. The tail follows the bytes.
    void writeUnflushed(const QString &name, QByteArrayView bytes, QByteArrayView tail);
    AppendFile openToAppend(const QString &name);
    /// As openToAppend, with nothing left of an earlier file.
    AppendFile openAnew(const QString &name);

private:
    friend class HostPath;
    Folder(HostPath &files, Directory place) : m_files(files), m_place(std::move(place)) {}
    Entry target(const QString &name) const;
    void keepTime(const Entry &written);

    HostPath &m_files;
    Directory m_place;
};

} // namespace sondrel
