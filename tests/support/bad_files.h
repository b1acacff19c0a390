// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "tests/support/world.h"

#include <QDir>
#include <QFile>

#include <random>
#include <stdexcept>

// What may be found in the place of a file of the program.

namespace sondrel {

/// The same bytes every time.
inline QByteArray randomBytes(qsizetype size)
{
    std::minstd_rand generator(20261115);
    QByteArray bytes;
    while (bytes.size() < size)
        bytes.append(static_cast<char>(generator() >> 8));
    return bytes;
}

inline void putFolder(const World &world, const QString &relative)
{
    if (!QDir().mkpath(world.path(relative)))
        throw std::runtime_error("cannot make a folder");
}

/// A file that opens and whose first read fails, for every user.
inline void putUnreadable(const World &world, const QString &relative)
{
    const QString path = world.path(relative);
    QFile::remove(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !QFile::link(QStringLiteral("/proc/self/mem"), path))
        throw std::runtime_error("cannot make an unreadable file");
}

} // namespace sondrel
