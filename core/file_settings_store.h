// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/settings_store.h"

#include <QSettings>

namespace sondrel {

/// The settings in one per-user file (INI form of QSettings), readable by its owner alone and replaced
/// atomically.
class FileSettingsStore final : public SettingsStore
{
public:
    /// file in the system's spelling; its folder is made when the first value is written.
    explicit FileSettingsStore(const QString &file);

    bool hasKey(const QString &path) const override;
    void createKey(const QString &path) override;
    std::optional<QVariant> value(const QString &path, const QString &name) const override;
    void setValue(const QString &path, const QString &name, const QVariant &value) override;

private:
    void check() const;

    mutable QSettings m_settings;
};

} // namespace sondrel
