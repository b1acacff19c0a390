// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>
#include <QVariant>

#include <functional>
#include <optional>

namespace sondrel {

/// The door to the per-user settings: values under key paths such as "Software\Vendor\Product\Preference".
/// Paths and names ignore case. Operations throw Failure when the store cannot be read or written.
class SettingsStore
{
public:
    virtual ~SettingsStore() = default;

    /// True when the key was made, or one below it.
    virtual bool hasKey(const QString &path) const = 0;
    /// Makes the key and its parents; does nothing when it is there.
    virtual void createKey(const QString &path) = 0;
    /// The value as it was written, nothing when the key or the value is missing.
    virtual std::optional<QVariant> value(const QString &path, const QString &name) const = 0;
    /// Writes a string, a QByteArray or a 32-bit integer; does nothing when the key does not exist.
    virtual void setValue(const QString &path, const QString &name, const QVariant &value) = 0;

    /// Runs a step whose changes are stored together at its end, also when it throws. Steps may nest.
    virtual void storeTogether(const std::function<void()> &changes) = 0;

    /// Another number after every change that this store has seen, so that whoever keeps what he read can
    /// tell whether it still holds.
    virtual quint64 revision() const = 0;
};

} // namespace sondrel
