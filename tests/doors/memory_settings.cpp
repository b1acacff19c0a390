#include "tests/doors/memory_settings.h"

#include "core/failure.h"

#include <QScopeGuard>

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
    return m_tree.hasKey(path);
}

void MemorySettings::createKey(const QString &path)
{
    check();
    if (m_tree.createKey(path))
        changed();
}

std::optional<QVariant> MemorySettings::value(const QString &path, const QString &name) const
{
    check();
    return m_tree.value(path, name);
}

void MemorySettings::setValue(const QString &path, const QString &name, const QVariant &value)
{
    check();
    written.append(name);
    if (m_tree.setValue(path, name, value))
        changed();
}

void MemorySettings::storeTogether(const std::function<void()> &changes)
{
    ++m_together;
    const auto store = qScopeGuard([this] {
        if (--m_together == 0 && m_unstored) {
            m_unstored = false;
            ++stores;
        }
    });
    changes();
}

void MemorySettings::changed()
{
    ++m_revision;
    if (m_together == 0)
        ++stores;
    else
        m_unstored = true;
}

} // namespace sondrel
