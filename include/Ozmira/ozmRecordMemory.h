#pragma once

#include <Ozmira/OzmiraExport.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>

// Memory for the lists of the document model and of the renderer.
//
// A drawing has dozens of lists of one, two or three entries. A general-purpose allocator takes several times
// as long for them.
//
// `OZM_RECORD(Record)` after the definition of a record makes `std::vector<Record>` use this allocator. Only
// the records of the model do, so that lists of other types work as usual.
//
// Each thread keeps freed blocks for reuse, about 256 KB at most. Threads share no blocks, so no locks are
// needed. A block may be freed on another thread than the one that allocated it. Blocks have the alignment of
// `operator new`.
//
// A thread frees the blocks that it keeps when it ends, when they become too many, and on `TrimThreadMemory`.
// Threads that outlive the library, because it is unloaded or the program exits, leak theirs.

namespace ozm {

/// Frees the memory that the calling thread keeps for reuse. The thread can continue to use the library, and
/// keeps memory again.
OZM_CXX_EXPORT void TrimThreadMemory() noexcept;

/// The free blocks that one thread keeps, by size.
class OZM_CXX_EXPORT RecordMemory {
public:
    /// Returns a block of at least `size` bytes. Throws `std::bad_alloc`.
    static void* Allocate(size_t size) {
        RecordMemory* const memory = s_current;
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

    /// Frees a block that `Allocate` returned for the same size, on any thread.
    static void Free(void* block, size_t size) noexcept {
        RecordMemory* const memory = s_current;
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
    class ThreadOwner;

    struct Block {
        Block* next;
    };

    /// Exceeded by one block at most.
    static constexpr size_t kMaximumKeptBytes = size_t{256} << 10;
    static constexpr size_t kGranularity = 16; ///< Sizes are rounded up to multiples of this.
    static constexpr size_t kBlockSizes = 256; ///< Blocks larger than 4 KB are not kept.

    constexpr explicit RecordMemory(size_t keptBytes) : m_keptBytes(keptBytes) {}

    /// At least `kBlockSizes` for sizes that are not kept, which include 0.
    static size_t IndexFor(size_t size) { return (size - 1) / kGranularity; }
    static size_t SizeAt(size_t index) { return (index + 1) * kGranularity; }
    static void* AllocateNew(size_t size);
    static void FreeUnkept(void* block, size_t size) noexcept;
    void FreeBlocks() noexcept;

    /// Sentinel: empty, yet reporting itself full, which saves a null check.
    static constinit RecordMemory s_empty;
    /// `s_empty` until the thread has freed a block. The TLS model avoids a function call per access, even in
    /// shared libraries.
#if defined(__ELF__)
    [[gnu::tls_model("initial-exec")]]
#endif
    static constinit thread_local RecordMemory* s_current;

    size_t m_keptBytes;
    Block* m_blocks[kBlockSizes] = {};
};

} // namespace ozm

/// Makes `std::vector<Record>` allocate its memory with `ozm::RecordMemory`, except in constant expressions.
/// Use it at global scope, after the definition of the record and before any list of it.
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
