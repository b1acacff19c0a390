// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <cstdlib>

namespace sondrel::fuzz {

/// Makes a finding of what does not hold.
inline void check(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace sondrel::fuzz
