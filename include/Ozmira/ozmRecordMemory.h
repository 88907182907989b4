#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>

// Memory for the lists of the document model and of the renderer.
//
// A drawing has tens of lists of one, two or three entries. An allocator that serves all threads and sizes
// takes several times as long.
//
// `OZM_RECORD(Record)` after the definition of a record makes `std::vector<Record>` take its memory from
// here. Only the records of the model use it, so no other list of a client's changes.
//
// Each thread keeps the blocks of the lists that end on it, about 256 KB of them at most, and uses them for
// the lists that begin on it. Threads share nothing, so nothing is locked. A list may end on another thread
// than it began on. Blocks are aligned as those of `operator new`.
//
// A thread gives back what it keeps when it ends, when it keeps too much, and when `TrimThreadMemory` asks.
// When the library is unloaded or the program exits, threads that live on keep their blocks for good.

namespace ozm {

/// Gives back the memory that the calling thread keeps for lists to come. The thread stays usable and keeps
/// memory anew.
void TrimThreadMemory() noexcept;

/// The blocks that one thread keeps, by size.
class RecordMemory {
public:
    /// A block of at least `size` bytes. Throws `std::bad_alloc`.
    static void* Allocate(size_t size) {
        RecordMemory* const memory = s_ofThread;
        const size_t index = IndexFor(size);
        if (index < kBlockSizes) {
            if (Block* const block = memory->m_blocks[index]) {
                memory->m_blocks[index] = block->next;
                memory->m_keptBytes -= SizeAt(index);
                return block;
            }
        }
        return AllocateNew(size);
    }

    /// Takes back a block that `Allocate` returned for the same size, on any thread.
    static void Free(void* block, size_t size) noexcept {
        RecordMemory* const memory = s_ofThread;
        const size_t index = IndexFor(size);
        if (index < kBlockSizes && memory->m_keptBytes < kMaximumKeptBytes) {
            memory->m_blocks[index] = new (block) Block{memory->m_blocks[index]};
            memory->m_keptBytes += SizeAt(index);
        } else {
            FreeUnkept(block, size);
        }
    }

private:
    friend void TrimThreadMemory() noexcept;
    class OfThread;

    struct Block {
        Block* next;
    };

    /// A thread keeps one block more than that at most.
    static constexpr size_t kMaximumKeptBytes = size_t{256} << 10;
    static constexpr size_t kGranularity = 16; ///< Sizes are rounded up to multiples.
    static constexpr size_t kBlockSizes = 256; ///< Larger blocks than 4 KB are not kept.

    constexpr explicit RecordMemory(size_t keptBytes) : m_keptBytes(keptBytes) {}

    /// Out of range for sizes that are not kept, 0 among them.
    static size_t IndexFor(size_t size) { return (size - 1) / kGranularity; }
    static size_t SizeAt(size_t index) { return (index + 1) * kGranularity; }
    static void* AllocateNew(size_t size);
    static void FreeUnkept(void* block, size_t size) noexcept;
    void FreeBlocks() noexcept;

    /// Sentinel: empty, yet reporting itself full, which saves a null check.
    static constinit RecordMemory s_empty;
    /// `s_empty` until the thread has freed a block. The model finds it without a call, in shared libraries
    /// too.
#if defined(__ELF__)
    [[gnu::tls_model("initial-exec")]]
#endif
    static constinit thread_local RecordMemory* s_ofThread;

    size_t m_keptBytes;
    Block* m_blocks[kBlockSizes] = {};
};

} // namespace ozm

/// Makes lists of a record of the model take their memory from `ozm::RecordMemory`. To be written at global
/// scope, after the record's definition and before any list of it. In constant expressions lists work as
/// usual.
#define OZM_RECORD(Record)                                                                                   \
    template <>                                                                                              \
    class std::allocator<Record> {                                                                           \
    public:                                                                                                  \
        using value_type = Record;                                                                           \
        using size_type = std::size_t;                                                                       \
        using difference_type = std::ptrdiff_t;                                                              \
        using propagate_on_container_move_assignment = std::true_type;                                       \
        using is_always_equal = std::true_type;                                                              \
                                                                                                             \
        constexpr allocator() noexcept = default;                                                            \
        template <typename Other>                                                                            \
        constexpr allocator(const allocator<Other>&) noexcept {}                                             \
                                                                                                             \
        constexpr Record* allocate(std::size_t count) {                                                      \
            static_assert(alignof(Record) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);                              \
            if (count > PTRDIFF_MAX / sizeof(Record)) throw std::bad_array_new_length();                     \
            const std::size_t size = count * sizeof(Record);                                                 \
            if (std::is_constant_evaluated()) return static_cast<Record*>(::operator new(size));             \
            return static_cast<Record*>(ozm::RecordMemory::Allocate(size));                                  \
        }                                                                                                    \
        constexpr void deallocate(Record* first, std::size_t count) noexcept {                               \
            if (std::is_constant_evaluated()) return ::operator delete(first);                               \
            ozm::RecordMemory::Free(first, count * sizeof(Record));                                          \
        }                                                                                                    \
    }
