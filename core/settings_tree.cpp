#include "core/settings_tree.h"

#include "core/text_fold.h"

namespace sondrel {

namespace {

QString normal(const QString &path)
{
    return path.split(u'\\', Qt::SkipEmptyParts).join(u'\\');
}

} // namespace

bool SettingsTree::hasKey(const QString &path) const
{
    const QString key = folded(normal(path));
    if (key.isEmpty() || m_keys.contains(key))
        return true;
    const QString start = key + u'\\';
    const auto below = m_keys.lower_bound(start);
    return below != m_keys.end() && below->first.startsWith(start);
}

bool SettingsTree::createKey(const QString &path)
{
    const QString spelled = normal(path);
    return m_keys.try_emplace(folded(spelled), Key{spelled, {}}).second;
}

std::optional<QVariant> SettingsTree::value(const QString &path, const QString &name) const
{
    const auto key = m_keys.find(folded(normal(path)));
    if (key == m_keys.end())
        return std::nullopt;
    const auto value = key->second.values.find(folded(name));
    if (value == key->second.values.end())
        return std::nullopt;
    return value->second.value;
}

bool SettingsTree::setValue(const QString &path, const QString &name, const QVariant &value)
{
    if (!hasKey(path))
        return false;
    createKey(path); // it may be there as a parent only
    auto &values = m_keys.at(folded(normal(path))).values;
    const auto [entry, added] = values.try_emplace(folded(name), Value{name, value});
    QVariant &stored = entry->second.value;
    if (!added && stored.typeId() == value.typeId() && stored == value)
        return false;
    stored = value;
    return true;
}

} // namespace sondrel
