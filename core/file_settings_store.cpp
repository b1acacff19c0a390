#include "core/file_settings_store.h"

#include "core/failure.h"
#include "core/text_fold.h"

#include <QFile>
#include <QUrl>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// Names ignore case, and QSettings gives "/" and "\" a meaning, so both are folded and escaped.
QString escaped(const QString &name)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(folded(name), " ()", "/\\"));
}

QString groupOf(const QString &path)
{
    QStringList parts = path.split(u'\\', Qt::SkipEmptyParts);
    for (QString &part : parts)
        part = escaped(part);
    return parts.join(u'/');
}

// Marks a key that holds no value yet.
constexpr auto KeyMark = "@key"_L1;

} // namespace

FileSettingsStore::FileSettingsStore(const QString &file) : m_settings(file, QSettings::IniFormat)
{
    // A file that came from elsewhere may be open to others; it holds passwords.
    if (QFile::exists(file))
        QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

void FileSettingsStore::check() const
{
    if (m_settings.status() == QSettings::AccessError)
        throw Failure(u"Cannot read or write the settings file \""_s + m_settings.fileName() + u'"');
    if (m_settings.status() == QSettings::FormatError)
        throw Failure(u"The settings file is damaged: \""_s + m_settings.fileName() + u'"');
}

bool FileSettingsStore::hasKey(const QString &path) const
{
    m_settings.beginGroup(groupOf(path));
    const bool any = !m_settings.allKeys().isEmpty();
    m_settings.endGroup();
    return any;
}

void FileSettingsStore::createKey(const QString &path)
{
    m_settings.setValue(groupOf(path) + u'/' + KeyMark, 1);
    m_settings.sync();
    check();
}

std::optional<QVariant> FileSettingsStore::value(const QString &path, const QString &name) const
{
    const QString key = groupOf(path) + u'/' + escaped(name);
    if (!m_settings.contains(key))
        return std::nullopt;
    return m_settings.value(key);
}

void FileSettingsStore::setValue(const QString &path, const QString &name, const QVariant &value)
{
    m_settings.setValue(groupOf(path) + u'/' + escaped(name), value);
    m_settings.sync();
    check();
}

} // namespace sondrel
