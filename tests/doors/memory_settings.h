// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/settings_store.h"

#include <QHash>

namespace sondrel {

/// Settings that live in memory. While broken is set every operation fails as an unreadable file would.
class MemorySettings final : public SettingsStore
{
public:
    bool broken = false;
    /// Names in the order in which they were written.
    QStringList written;

    bool hasKey(const QString &path) const override;
    void createKey(const QString &path) override;
    std::optional<QVariant> value(const QString &path, const QString &name) const override;
    void setValue(const QString &path, const QString &name, const QVariant &value) override;

private:
    void check() const;

    QHash<QString, QHash<QString, QVariant>> m_keys;
};

} // namespace sondrel
