// Observes the program's allocations, and makes them fail. operator new and delete are replaced; the linker
// wraps the C functions that the libraries under test call.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ozm::test {

/// The number of blocks that all threads have allocated and not yet freed.
int64_t LiveBlocks();

/// Counts the calling thread's allocations during its lifetime. Each thread can have one at a time.
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

/// Makes the calling thread's allocations number `first` to `last` (counted from 0) fail during its lifetime.
class FailingAllocations : public AllocationCount {
public:
    FailingAllocations(size_t first, size_t last) : AllocationCount(first, last) {}

    /// Whether any has failed.
    bool HaveFailed() const;
};

} // namespace ozm::test
