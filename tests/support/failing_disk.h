// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>
#include <QStringList>

namespace sondrel {

/// Counts the calls of this process that change something below a folder, and lets one of them fail as a disk
/// does. Only executables that link sondrel_failing_disk have it, and one object at a time.
class FailingDisk
{
public:
    enum class Lasts { OneCall, UntilTheEnd };

    /// The folder is canonical. After that many calls the error comes; never when they are below 0. A write
    /// that fails until the end has first written the half of it, as a disk does that gets full.
    FailingDisk(const QString &folder, int successes, int error, Lasts lasts);
    ~FailingDisk();
    FailingDisk(const FailingDisk &) = delete;
    FailingDisk &operator=(const FailingDisk &) = delete;

    int calls() const;
    /// Files that have come to their place by a rename before all their bytes were on the disk.
    QStringList renamedUnflushed() const;
};

} // namespace sondrel
