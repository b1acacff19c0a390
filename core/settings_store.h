// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace sondrel {

/// The door to the per-user settings: values under key paths such as "Software\Vendor\Product\Preference".
/// Paths and names ignore case. Operations throw Failure when the store cannot be read or written.
class SettingsStore
{
public:
    virtual ~SettingsStore() = default;

    virtual bool hasKey(const QString &path) const = 0;
    /// Makes the key and its parents; does nothing when it is there.
    virtual void createKey(const QString &path) = 0;
    /// The value as it was written, nothing when the key or the value is missing.
    virtual std::optional<QVariant> value(const QString &path, const QString &name) const = 0;
    /// Writes a string, a QByteArray or a 32-bit integer under a key that exists.
    virtual void setValue(const QString &path, const QString &name, const QVariant &value) = 0;
};

} // namespace sondrel
