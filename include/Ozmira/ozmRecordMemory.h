#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>

// Where the lists of a document's and a renderer's records get their memory from. A drawing has tens of lists
// of one, two or three entries, and an allocator that serves all threads and sizes takes several times as
// long.

namespace ozm {

/// True for types whose `std::allocator` is the one below: to be set right behind a type's definition, before
/// any list of it.
template <typename T>
inline constexpr bool kIsRecord = false;

/// The blocks that a thread keeps when lists end, by their size, to be used again by the lists that it makes.
/// Each thread has its own, so that nothing is shared; a block may end on another thread than it began on.
/// Blocks are aligned for every type without an alignment of its own.
class RecordMemory {
public:
    /// A block that holds anything. Throws `std::bad_alloc`.
    static void* Allocate(size_t size) {
        RecordMemory* const memory = s_ofThread;
        const size_t index = IndexFor(size);
        if (index < kSizes) {
            if (Block* const block = memory->m_blocks[index]) {
                memory->m_blocks[index] = block->next;
                memory->m_kept -= SizeAt(index);
                return block;
            }
        }
        return AllocateNew(size);
    }

    /// Ends a block that `Allocate` made with the same size.
    static void Free(void* block, size_t size) noexcept {
        RecordMemory* const memory = s_ofThread;
        const size_t index = IndexFor(size);
        if (index < kSizes && memory->m_kept < kMost) {
            memory->m_blocks[index] = new (block) Block{memory->m_blocks[index]};
            memory->m_kept += SizeAt(index);
        } else {
            FreeSlowly(block, size);
        }
    }

private:
    struct Block {
        Block* next;
    };

    static constexpr size_t kMost = size_t{256} << 10; ///< Bytes that a thread keeps, and one block.
    static constexpr size_t kUnit = 16;                ///< Sizes are rounded up to multiples.
    static constexpr size_t kSizes = 256;

    constexpr explicit RecordMemory(size_t kept) : m_kept(kept) {}

    /// Out of range for a size that is not kept; 0 is one of them.
    static size_t IndexFor(size_t size) { return (size - 1) / kUnit; }
    static size_t SizeAt(size_t index) { return (index + 1) * kUnit; }
    static void* AllocateNew(size_t size);
    static void FreeSlowly(void* block, size_t size) noexcept;
    static bool MakeForThread() noexcept;
    void FreeBlocks() noexcept;

    /// What threads have that keep nothing: empty, and never to be filled because it counts as full. It saves
    /// a branch.
    static constinit RecordMemory s_none;
    /// `s_none` until the thread has freed something. Its address has to be found fast in shared libraries,
    /// too.
#if defined(__ELF__)
    [[gnu::tls_model("initial-exec")]]
#endif
    static constinit thread_local RecordMemory* s_ofThread;

    size_t m_kept; ///< Bytes.
    Block* m_blocks[kSizes] = {};
};

} // namespace ozm

/// Lists of records stay `std::vector<T>`.
template <typename T>
requires ozm::kIsRecord<T>
class std::allocator<T> {
public:
    using value_type = T;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using propagate_on_container_move_assignment = std::true_type;
    using is_always_equal = std::true_type;

    constexpr allocator() noexcept = default;
    template <typename U>
    constexpr allocator(const allocator<U>&) noexcept {}

    T* allocate(std::size_t count) {
        static_assert(alignof(T) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
        if (count > PTRDIFF_MAX / sizeof(T)) throw std::bad_array_new_length();
        return static_cast<T*>(ozm::RecordMemory::Allocate(count * sizeof(T)));
    }
    void deallocate(T* first, std::size_t count) noexcept {
        ozm::RecordMemory::Free(first, count * sizeof(T));
    }
};
