// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/settings_store.h"
#include "core/settings_tree.h"

#include <QStringList>

namespace sondrel {

/// Settings that live in memory. While broken is set every operation fails as an unreadable file would.
class MemorySettings final : public SettingsStore
{
public:
    bool broken = false;
    /// Names in the order in which they were written.
    QStringList written;
    /// How often changes reached the disk, had there been one.
    int stores = 0;

    bool hasKey(const QString &path) const override;
    void createKey(const QString &path) override;
    std::optional<QVariant> value(const QString &path, const QString &name) const override;
    void setValue(const QString &path, const QString &name, const QVariant &value) override;
    void storeTogether(const std::function<void()> &changes) override;
    quint64 revision() const override { return m_revision; }

private:
    void check() const;
    void changed();

    SettingsTree m_tree;
    quint64 m_revision = 0;
    int m_together = 0;
    bool m_unstored = false;
};

} // namespace sondrel
