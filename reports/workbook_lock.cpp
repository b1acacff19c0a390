#include "reports/workbook_lock.h"

#include "core/native_file.h"
#include "core/text_fold.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

#include <unistd.h>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// Spreadsheet programs leave this file beside a workbook that they have open.
QString lockFile(const QString &native)
{
    const QFileInfo file(native);
    return file.path() + u"/.~lock."_s + file.fileName() + u'#';
}

// The machine in "name,login,machine,time,profile;", where a "\" stands before a comma that is meant. Some
// programs write the name of the machine with that of its domain.
QString machineOf(const QByteArray &lock)
{
    QStringList fields(1);
    bool meant = false;
    for (const QChar unit : QString::fromUtf8(lock)) {
        if (!meant && unit == u',')
            fields.append(QString());
        else if (meant || unit != u'\\')
            fields.last() += unit;
        meant = !meant && unit == u'\\';
    }
    return fields.value(2).section(u'.', 0, 0);
}

// Whether who left the lock is a program of this user on this machine, whose open files can be seen.
bool isFromHere(const QString &lock)
{
    const auto status = statusOf(lock);
    QFile file(lock);
    if (!status || status->st_uid != ::geteuid() || !file.open(QIODevice::ReadOnly))
        return false;
    const QString machine = machineOf(file.readAll());
    return !machine.isEmpty() && equalsIgnoringCase(machine, QSysInfo::machineHostName().section(u'.', 0, 0));
}

bool hasOpen(const QDir &descriptors, const struct stat &workbook)
{
    const QStringList names = descriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    return std::any_of(names.begin(), names.end(), [&](const QString &name) {
        const auto opened = statusOf(descriptors.filePath(name));
        return opened && opened->st_dev == workbook.st_dev && opened->st_ino == workbook.st_ino;
    });
}

bool isOpenHere(const QString &native)
{
    const auto workbook = statusOf(native);
    const QStringList processes = QDir(u"/proc"_s).entryList({u"[0-9]*"_s}, QDir::Dirs);
    if (!workbook || processes.isEmpty())
        return true; // nobody knows
    return std::any_of(processes.begin(), processes.end(), [&](const QString &process) {
        return hasOpen(QDir(u"/proc/"_s + process + u"/fd"_s), *workbook);
    });
}

} // namespace

bool isWorkbookOpenElsewhere(ApplicationContext &app, const QString &path)
{
    const auto native = app.files.find(path);
    if (!native)
        return false;
    const QString lock = lockFile(*native);
    return QFile::exists(lock) && (!isFromHere(lock) || isOpenHere(*native));
}

} // namespace sondrel
