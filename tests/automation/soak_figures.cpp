#include "tests/automation/soak_figures.h"

#include <QDir>
#include <QFile>

#include <malloc.h>

#include <atomic>
#include <iomanip>

using namespace Qt::Literals::StringLiterals;

// Where Qt lets a debugger follow its objects.
extern "C" Q_DECL_IMPORT quintptr qtHookData[];

namespace sondrel {

namespace {

constexpr int AddedHook = 3;
constexpr int RemovedHook = 4;
std::atomic<int> livingObjects = 0;

int entries(const QString &folder)
{
    return static_cast<int>(
        QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size());
}

qint64 residentKilobytes()
{
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.sliced(6).trimmed().split(' ').first().toLongLong();
    }
    return 0;
}

} // namespace

std::ostream &operator<<(std::ostream &out, const SoakFigures &figures)
{
    return out << std::setw(9) << figures.residentKilobytes << std::setw(9) << figures.heapKilobytes
               << std::setw(13) << figures.descriptors << std::setw(9) << figures.threads << std::setw(8)
               << figures.timers << std::setw(9) << figures.objects;
}

void countObjects()
{
    qtHookData[AddedHook] = reinterpret_cast<quintptr>(+[](QObject *) { ++livingObjects; });
    qtHookData[RemovedHook] = reinterpret_cast<quintptr>(+[](QObject *) { --livingObjects; });
}

SoakFigures soakFigures(int timers)
{
    SoakFigures figures;
    figures.residentKilobytes = residentKilobytes();
    const struct mallinfo2 heap = mallinfo2();
    figures.heapKilobytes = static_cast<qint64>((heap.uordblks + heap.hblkhd) / 1024);
    figures.descriptors = entries(u"/proc/self/fd"_s);
    figures.threads = entries(u"/proc/self/task"_s);
    figures.timers = timers;
    figures.objects = livingObjects;
    return figures;
}

} // namespace sondrel
