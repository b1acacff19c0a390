// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>
#include <QVariant>

#include <map>
#include <optional>

namespace sondrel {

/// Keys of the settings in memory, each with its values. Paths and names ignore case and keep the spelling
/// that they were first given.
class SettingsTree
{
public:
    struct Value
    {
        QString name;
        QVariant value;
    };

    struct Key
    {
        QString path;
        std::map<QString, Value> values; // by folded name
    };

    /// True when the key was made, or one below it; the empty path is always there.
    bool hasKey(const QString &path) const;
    /// True when the key was not there.
    bool createKey(const QString &path);
    std::optional<QVariant> value(const QString &path, const QString &name) const;
    /// True when it changed something; a key that does not exist stays so.
    bool setValue(const QString &path, const QString &name, const QVariant &value);

    /// The keys that were made, by folded path; their parents need not be among them.
    const std::map<QString, Key> &keys() const { return m_keys; }

private:
    std::map<QString, Key> m_keys;
};

} // namespace sondrel
