#include "tests/support/failing_allocation.h"

#include <cstddef>

// The C library's own allocator, under the names that remain when malloc is replaced.
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
}

namespace {

thread_local int countdown = -1; // -1: off
thread_local bool delivered = false;

bool failsNow()
{
    if (countdown < 0)
        return false;
    if (countdown > 0) {
        --countdown;
        return false;
    }
    countdown = -1;
    delivered = true;
    return true;
}

} // namespace

extern "C" void *malloc(std::size_t size)
{
    return failsNow() ? nullptr : __libc_malloc(size);
}

extern "C" void *realloc(void *block, std::size_t size)
{
    return failsNow() ? nullptr : __libc_realloc(block, size);
}

namespace sondrel {

FailingAllocation::FailingAllocation(int successes)
{
    delivered = false;
    countdown = successes;
}

FailingAllocation::~FailingAllocation()
{
    countdown = -1;
}

bool FailingAllocation::happened() const
{
    return delivered;
}

} // namespace sondrel
