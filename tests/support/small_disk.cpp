#include "tests/support/small_disk.h"

#include <QFile>

#include <sched.h>
#include <sys/mount.h>

#include <stdexcept>

namespace sondrel {

namespace {

QString fillerIn(const QString &folder)
{
    return folder + QStringLiteral("/filler");
}

} // namespace

SmallDisk::SmallDisk(const QString &folder, qint64 bytes) : m_folder(folder)
{
    // In a name space of this thread's own, so that nothing stays mounted, however the test ends.
    m_there = ::unshare(CLONE_NEWNS) == 0 &&
              ::mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0 &&
              ::mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", MS_NODEV | MS_NOSUID,
                      "size=" + QByteArray::number(bytes)) == 0;
}

SmallDisk::~SmallDisk()
{
    if (m_there)
        ::umount2(QFile::encodeName(m_folder).constData(), MNT_DETACH);
}

void SmallDisk::fill() const
{
    QFile filler(fillerIn(m_folder));
    if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw std::runtime_error("cannot fill a disk");
    const QByteArray page(4096, 'x');
    while (filler.write(page) == page.size())
        continue;
}

void SmallDisk::empty() const
{
    QFile::remove(fillerIn(m_folder));
}

} // namespace sondrel
