#pragma once

/// The heap of this program and of the modules in it, with an allocation that fails.

namespace zel::test {

/// While one of these exists, the `number`-th allocation of this thread, 1 the first, has
/// no memory.
class FailingAllocation {
public:
    explicit FailingAllocation(long number);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// False when there were fewer allocations.
    bool HasFailed() const;
};

}  // namespace zel::test
