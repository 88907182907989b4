#include <Ozmira/ozmRecordMemory.h>

#include "support/kept_memory.h"
#include "support/thread_owned.h"

namespace ozm {

using support::kKeepsMemory;

constinit RecordMemory RecordMemory::s_empty(kMaximumKeptBytes);
constinit thread_local RecordMemory* RecordMemory::s_current = &s_empty;

/// Owns the memory of a thread and frees its blocks when the thread ends.
class RecordMemory::ThreadOwner {
public:
    ThreadOwner() noexcept { s_current = &m_memory; }
    ~ThreadOwner() {
        s_current = &s_empty;
        m_memory.FreeBlocks();
    }
    ThreadOwner(const ThreadOwner&) = delete;
    ThreadOwner& operator=(const ThreadOwner&) = delete;

private:
    RecordMemory m_memory{0};
};

void* RecordMemory::AllocateNew(size_t size) {
    const size_t index = IndexFor(size);
    const bool canBeKept = kKeepsMemory && index < kBlockSizes;
    return ::operator new(canBeKept ? SizeAt(index) : size);
}

void RecordMemory::FreeUnkept(void* block, size_t size) noexcept {
    if (!kKeepsMemory || IndexFor(size) >= kBlockSizes) return ::operator delete(block);
    if (s_current == &s_empty) {
        if (!support::ThreadOwned<ThreadOwner>::get()) return ::operator delete(block);
    } else {
        // The limit is reached, perhaps by blocks of sizes that are no longer needed.
        s_current->FreeBlocks();
    }
    Free(block, size);
}

void RecordMemory::FreeBlocks() noexcept {
    for (Block*& first : m_blocks) {
        while (Block* const block = first) {
            first = block->next;
            ::operator delete(block);
        }
    }
    m_keptBytes = 0;
}

void TrimThreadMemory() noexcept {
    if (RecordMemory::s_current != &RecordMemory::s_empty) RecordMemory::s_current->FreeBlocks();
}

} // namespace ozm
