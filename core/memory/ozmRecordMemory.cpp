#include <Ozmira/ozmRecordMemory.h>

#include <pthread.h>

namespace ozm {
namespace {

#if defined(__SANITIZE_ADDRESS__)
#define OZMIRA_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define OZMIRA_ADDRESS_SANITIZER 1
#endif
#endif

#ifdef OZMIRA_ADDRESS_SANITIZER
constexpr bool kKeepsBlocks = false; // It finds more errors when memory is neither rounded nor used again.
#else
constexpr bool kKeepsBlocks = true;
#endif

/// Calls a function with a thread's value when the thread ends. A key of POSIX and no destructor of C++,
/// because registering one of those ends the program when memory is short.
class EndOfThread {
public:
    explicit EndOfThread(void (*function)(void*)) noexcept
        : m_works(pthread_key_create(&m_key, function) == 0) {}
    bool Watch(void* value) const noexcept { return m_works && pthread_setspecific(m_key, value) == 0; }

private:
    pthread_key_t m_key{};
    bool m_works;
};

} // namespace

constinit RecordMemory RecordMemory::s_none(kMost);
constinit thread_local RecordMemory* RecordMemory::s_ofThread = &s_none;

void* RecordMemory::AllocateNew(size_t size) {
    const size_t index = IndexFor(size);
    const bool canBeKept = kKeepsBlocks && index < kSizes;
    return ::operator new(canBeKept ? SizeAt(index) : size);
}

void RecordMemory::FreeSlowly(void* block, size_t size) noexcept {
    if (IndexFor(size) >= kSizes || (s_ofThread == &s_none && !MakeForThread())) {
        ::operator delete(block);
        return;
    }
    // What is kept may be of sizes that are no longer asked for.
    if (s_ofThread->m_kept >= kMost) s_ofThread->FreeBlocks();
    Free(block, size);
}

/// False when memory runs out, too.
bool RecordMemory::MakeForThread() noexcept {
    if (!kKeepsBlocks) return false;
    static const EndOfThread endOfThread([](void* pointer) {
        s_ofThread = &s_none;
        auto* const memory = static_cast<RecordMemory*>(pointer);
        memory->FreeBlocks();
        delete memory;
    });
    auto* const memory = new (std::nothrow) RecordMemory(0);
    if (memory && endOfThread.Watch(memory)) {
        s_ofThread = memory;
    } else {
        delete memory;
    }
    return s_ofThread != &s_none;
}

void RecordMemory::FreeBlocks() noexcept {
    for (Block*& first : m_blocks) {
        while (Block* const block = first) {
            first = block->next;
            ::operator delete(block);
        }
    }
    m_kept = 0;
}

} // namespace ozm
