#include "tests/support/world.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString made(const QString &folder)
{
    if (!QDir().mkpath(folder))
        throw std::runtime_error("cannot make a test folder");
    return folder;
}

} // namespace

World::World()
    : clock(QDateTime(QDate(2026, 11, 15), QTime(10, 0))),
      app(made(folder.filePath(u"app"_s)), made(folder.filePath(u"system"_s)),
          Doors{clock, desktop, settings, http, &smtp}, QLocale(QLocale::English, QLocale::UnitedStates))
{
}

QString World::path(const QString &relative) const
{
    return folder.filePath(u"app/"_s + relative);
}

QByteArray World::read(const QString &relative) const
{
    QFile file(path(relative));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void World::write(const QString &relative, const QByteArray &bytes) const
{
    made(QFileInfo(path(relative)).path());
    QFile file(path(relative));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write a test file");
}

bool World::has(const QString &relative) const
{
    return QFileInfo::exists(path(relative));
}

void World::writeEngineData(const QByteArray &bytes) const
{
    write(u"../system/qlteng4.dat"_s, bytes);
}

QString World::takeLog()
{
    const QByteArray log = read(u"Error.log"_s).mid(m_logRead);
    m_logRead += log.size();
    return app.fromBytes(log.startsWith("\r\n") ? log.mid(2) : log);
}

void World::setPreference(const QString &name, const QString &value)
{
    settings.createKey(app.RegPreference);
    settings.setValue(app.RegPreference, name, value);
}

} // namespace sondrel
