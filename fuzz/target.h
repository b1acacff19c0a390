// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "tests/doors/offline_program.h"

#include <QTemporaryDir>

#include <cstdlib>

namespace sondrel::fuzz {

/// A program in an empty folder of its own.
struct Program : QTemporaryDir, OfflineProgram
{
    Program() : OfflineProgram(path()) {}
};

/// Makes a finding of what does not hold.
inline void check(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace sondrel::fuzz
