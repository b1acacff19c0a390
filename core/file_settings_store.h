// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/settings_store.h"
#include "core/settings_tree.h"

#include <functional>
#include <optional>

namespace sondrel {

/// The settings in one per-user file, readable by its owner alone and replaced atomically. The file is read
/// again when it has been changed from outside; one that cannot be read is never overwritten.
class FileSettingsStore final : public SettingsStore
{
public:
    /// file in the system's spelling; it is made, with its folder, when the first key is.
    explicit FileSettingsStore(QString file);

    /// Hears when the system does not let the file be replaced, before the Failure is thrown that says the
    /// same. A file that the user has made read-only is no matter for it.
    std::function<void(const QString &problem)> onUnwritten;

    bool hasKey(const QString &path) const override;
    void createKey(const QString &path) override;
    std::optional<QVariant> value(const QString &path, const QString &name) const override;
    void setValue(const QString &path, const QString &name, const QVariant &value) override;
    void storeTogether(const std::function<void()> &changes) override;
    quint64 revision() const override { return m_revision; }

private:
    /// What tells one state of a file on disk from another; all zero when there is no file.
    struct Stamp
    {
        quint64 device = 0;
        quint64 file = 0;
        qint64 size = 0;
        qint64 changed = 0;

        bool operator==(const Stamp &) const = default;
    };

    Stamp stampOnDisk() const;
    void refresh() const;
    SettingsTree load() const;
    void changed();
    void save();
    void replaceFile(const QString &target) const;

    QString m_file;
    mutable SettingsTree m_tree;
    mutable std::optional<Stamp> m_stamp; // of the state in m_tree; nothing when it is to be read anew
    mutable quint64 m_revision = 0;
    int m_together = 0; // depth of storeTogether
    bool m_unsaved = false;
};

} // namespace sondrel
