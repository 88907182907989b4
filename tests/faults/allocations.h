// What the program allocates: operator new and delete are replaced, and the C functions that the libraries
// under test call are wrapped by the linker.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ozm::test {

/// Blocks that are allocated and not yet freed, by all threads.
int64_t LiveBlocks();

/// Counts the allocations of the calling thread for as long as it lives; one at a time per thread.
class AllocationCount {
public:
    AllocationCount();
    ~AllocationCount();
    AllocationCount(const AllocationCount&) = delete;
    AllocationCount& operator=(const AllocationCount&) = delete;

    size_t Blocks() const;
    size_t Bytes() const;

protected:
    AllocationCount(size_t first, size_t last);
};

/// Lets the calling thread's allocations number `first` to `last` (counted from 0) fail, while it lives.
class FailingAllocations : public AllocationCount {
public:
    FailingAllocations(size_t first, size_t last) : AllocationCount(first, last) {}

    /// Whether any has failed.
    bool HaveFailed() const;
};

} // namespace ozm::test
