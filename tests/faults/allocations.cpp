#include "allocations.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr size_t kNever = std::numeric_limits<size_t>::max();

struct Watch {
    bool isOn = false;
    size_t blocks = 0, bytes = 0;
    size_t firstFailing = kNever, lastFailing = kNever;
};

constinit thread_local Watch watch;
constinit std::atomic<int64_t> live = 0;

/// Whether an allocation may succeed.
bool IsGranted(size_t size) {
    if (!watch.isOn) return true;
    const size_t number = watch.blocks++;
    watch.bytes += size;
    return number < watch.firstFailing || number > watch.lastFailing;
}

void* Counted(void* block) {
    if (block) ++live;
    return block;
}

} // namespace

// Names that the linker defines: calls of X go to __wrap_X, and __real_X is X itself.
// NOLINTBEGIN(bugprone-reserved-identifier): the names of the C library
extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* block, size_t size);
void* __real_aligned_alloc(size_t alignment, size_t size);
void __real_free(void* block);

void* __wrap_malloc(size_t size) { return IsGranted(size) ? Counted(__real_malloc(size)) : nullptr; }
void* __wrap_calloc(size_t count, size_t size) {
    return IsGranted(count * size) ? Counted(__real_calloc(count, size)) : nullptr;
}
void* __wrap_realloc(void* block, size_t size) {
    if (!IsGranted(size)) return nullptr;
    void* const grown = __real_realloc(block, size);
    return block ? grown : Counted(grown);
}
void* __wrap_aligned_alloc(size_t alignment, size_t size) {
    return IsGranted(size) ? Counted(__real_aligned_alloc(alignment, size)) : nullptr;
}
void __wrap_free(void* block) {
    if (block) --live;
    __real_free(block);
}
}
// NOLINTEND(bugprone-reserved-identifier)

// All forms are replaced, because a sanitizer provides any that are missing.
void* operator new(size_t size, const std::nothrow_t&) noexcept { return __wrap_malloc(size ? size : 1); }
void* operator new(size_t size) {
    if (void* const block = __wrap_malloc(size ? size : 1)) return block;
    throw std::bad_alloc();
}
void* operator new(size_t size, std::align_val_t alignment) {
    const auto step = static_cast<size_t>(alignment);
    if (void* const block = __wrap_aligned_alloc(step, (size + step - 1) / step * step)) return block;
    throw std::bad_alloc();
}
void* operator new[](size_t size) { return operator new(size); }
void* operator new[](size_t size, const std::nothrow_t& tag) noexcept { return operator new(size, tag); }
void* operator new[](size_t size, std::align_val_t alignment) { return operator new(size, alignment); }

void operator delete(void* block) noexcept { __wrap_free(block); }
void operator delete(void* block, size_t) noexcept { __wrap_free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { __wrap_free(block); }
void operator delete(void* block, std::align_val_t) noexcept { __wrap_free(block); }
void operator delete(void* block, size_t, std::align_val_t) noexcept { __wrap_free(block); }
void operator delete[](void* block) noexcept { __wrap_free(block); }
void operator delete[](void* block, size_t) noexcept { __wrap_free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { __wrap_free(block); }
void operator delete[](void* block, std::align_val_t) noexcept { __wrap_free(block); }
void operator delete[](void* block, size_t, std::align_val_t) noexcept { __wrap_free(block); }

namespace ozm::test {

int64_t LiveBlocks() { return live; }

AllocationCount::AllocationCount() : AllocationCount(kNever, kNever) {}
AllocationCount::AllocationCount(size_t first, size_t last) { watch = {true, 0, 0, first, last}; }
AllocationCount::~AllocationCount() { watch = {}; }
size_t AllocationCount::Blocks() const { return watch.blocks; }
size_t AllocationCount::Bytes() const { return watch.bytes; }

bool FailingAllocations::HaveFailed() const { return watch.blocks > watch.firstFailing; }

} // namespace ozm::test
