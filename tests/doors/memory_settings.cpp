#include "tests/doors/memory_settings.h"

#include "core/failure.h"
#include "core/text_fold.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

void MemorySettings::check() const
{
    if (broken)
        throw Failure(u"The settings cannot be read"_s);
}

bool MemorySettings::hasKey(const QString &path) const
{
    check();
    return m_keys.contains(folded(path));
}

void MemorySettings::createKey(const QString &path)
{
    check();
    m_keys[folded(path)];
}

std::optional<QVariant> MemorySettings::value(const QString &path, const QString &name) const
{
    check();
    const auto key = m_keys.constFind(folded(path));
    if (key == m_keys.constEnd() || !key->contains(folded(name)))
        return std::nullopt;
    return key->value(folded(name));
}

void MemorySettings::setValue(const QString &path, const QString &name, const QVariant &value)
{
    check();
    written.append(name);
    m_keys[folded(path)].insert(folded(name), value);
}

} // namespace sondrel
