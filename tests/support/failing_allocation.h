// Marovia Sondrel - positions of web sites in search engine results
#pragma once

namespace sondrel {

/// Makes one allocation of this thread fail as if memory had run out: the one after `successes` further ones.
/// Only tests that link sondrel_failing_allocation have it. The text and byte classes of Qt and the standard
/// containers answer with std::bad_alloc; QHash ends the program when it cannot grow.
class FailingAllocation
{
public:
    explicit FailingAllocation(int successes);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation &) = delete;
    FailingAllocation &operator=(const FailingAllocation &) = delete;

    /// True once the failure has been delivered.
    bool happened() const;
};

} // namespace sondrel
