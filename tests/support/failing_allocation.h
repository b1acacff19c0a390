// Marovia Sondrel - positions of web sites in search engine results
#pragma once

namespace sondrel {

/// Makes one allocation of this thread fail as if memory had run out: the one after `successes` further ones.
/// Only tests that link sondrel_failing_allocation have it.
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
