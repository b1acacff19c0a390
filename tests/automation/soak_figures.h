// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QtGlobal>

#include <ostream>

namespace sondrel {

/// What the process holds at a moment.
struct SoakFigures
{
    qint64 residentKilobytes = 0;
    qint64 heapKilobytes = 0; // handed out by malloc; 0 where another malloc is in use
    int descriptors = 0;
    int threads = 0;
    int timers = 0; // of the program's clock
    int objects = 0;
};

std::ostream &operator<<(std::ostream &out, const SoakFigures &figures);

/// Counts every QObject from its first call on.
void countObjects();

/// The figures as they are now.
SoakFigures soakFigures(int timers);

} // namespace sondrel
