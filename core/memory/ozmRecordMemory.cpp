#include <Ozmira/ozmRecordMemory.h>

#include "support/kept_memory.h"
#include "support/thread_owned.h"

namespace ozm {

using support::kKeepsMemory;

constinit RecordMemory RecordMemory::s_empty(kMaximumKeptBytes);
constinit thread_local RecordMemory* RecordMemory::s_ofThread = &s_empty;

/// What a thread keeps, for as long as it runs.
class RecordMemory::OfThread {
public:
    OfThread() noexcept { s_ofThread = &m_memory; }
    ~OfThread() {
        s_ofThread = &s_empty;
        m_memory.FreeBlocks();
    }
    OfThread(const OfThread&) = delete;
    OfThread& operator=(const OfThread&) = delete;

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
    if (s_ofThread == &s_empty) {
        if (!support::ThreadOwned<OfThread>::get()) return ::operator delete(block);
    } else {
        // The thread keeps as much as it may, perhaps of sizes that nobody asks for any more.
        s_ofThread->FreeBlocks();
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
    if (RecordMemory::s_ofThread != &RecordMemory::s_empty) RecordMemory::s_ofThread->FreeBlocks();
}

} // namespace ozm
