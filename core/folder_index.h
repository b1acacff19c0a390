// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QHashFunctions>
#include <QString>

#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace sondrel {

/// Time of the last change of a folder's names in nanoseconds, -1 when there is no such folder.
qint64 folderTime(const QString &folder);

/// The names in folders, looked up without regard to case. A folder is read when a name is first looked up in
/// it and when its time has changed; what the program itself adds and removes is entered without reading it
/// again.
class FolderIndex
{
    struct Names;

public:
    /// How the folder, whose time is changed, spells that name; nothing when no name equals it but for case.
    /// Of several the first in order of characters.
    std::optional<QString> spelling(const QString &folder, qint64 changed, const QString &name);

    /// Stands while the program itself changes a folder, which had the time changed when it was looked at
    /// last; what it did is told afterwards.
    class OwnChange
    {
    public:
        OwnChange(FolderIndex &index, const QString &folder, qint64 changed);
        void added(const QString &name);
        void removed(const QString &name);
        /// The folder's time now, as far as it is known.
        qint64 changed() const { return m_names ? m_names->changed : -1; }

    private:
        QString m_folder;
        Names *m_names = nullptr; // null when they are not known or somebody else has changed them
    };

private:
    struct FoldedHash
    {
        std::size_t operator()(const QString &name) const noexcept;
    };
    struct FoldedEqual
    {
        bool operator()(const QString &left, const QString &right) const noexcept;
    };
    struct Names
    {
        qint64 changed = -1;   // folder time for which the names hold
        qint64 ownChange = -1; // folder time after the program's last change
        bool settled = false;  // false: read so soon after a change that another may bear the same time
        std::unordered_multiset<QString, FoldedHash, FoldedEqual> spellings;
    };

    static void read(const QString &folder, Names &names);

    std::unordered_map<QString, Names> m_folders;
};

} // namespace sondrel
