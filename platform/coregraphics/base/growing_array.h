// A growing array of plain values.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <span>
#include <type_traits>
#include <utility>

namespace ozcg {

/// Like std::vector, but several values can be added with one test of the capacity and without
/// initialisation. Throws std::bad_alloc.
template <class T>
class GrowingArray {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    GrowingArray() noexcept = default;
    GrowingArray(const GrowingArray& other) {
        if (other.m_size == 0) return;
        reserveMore(other.m_size);
        std::memcpy(m_data, other.m_data, other.m_size * sizeof(T));
        m_size = other.m_size;
    }
    GrowingArray(GrowingArray&& other) noexcept { swap(other); }
    // Not noexcept, although it cannot throw by itself: otherwise the implicit copy assignment of a class
    // that holds arrays would be noexcept, although it allocates.
    GrowingArray& operator=(GrowingArray other) {
        swap(other);
        return *this;
    }
    ~GrowingArray() { std::free(m_data); }

    size_t size() const noexcept { return m_size; }
    size_t capacity() const noexcept { return m_capacity; }
    bool empty() const noexcept { return m_size == 0; }
    const T& back() const noexcept { return m_data[m_size - 1]; }
    std::span<const T> values() const noexcept { return {m_data, m_size}; }
    std::span<T> values() noexcept { return {m_data, m_size}; }

    /// Makes room for `count` more values.
    void reserveMore(size_t count) {
        if (m_capacity - m_size < count) grow(count);
    }
    /// Adds `count` values, which the caller then sets.
    T* extend(size_t count) {
        reserveMore(count);
        T* const added = m_data + m_size;
        m_size += count;
        return added;
    }
    /// Drops all but the first `size` values and keeps the memory.
    void truncate(size_t size) noexcept { m_size = size; }

private:
    static constexpr size_t kLeastCapacity = 16;

    void swap(GrowingArray& other) noexcept {
        std::swap(m_data, other.m_data);
        std::swap(m_size, other.m_size);
        std::swap(m_capacity, other.m_capacity);
    }
    void grow(size_t count) {
        constexpr size_t most = std::numeric_limits<size_t>::max() / sizeof(T) / 4;
        if (count > most || m_size > most) throw std::bad_alloc();
        // A large first request is allocated exactly.
        const size_t capacity = std::max({m_size + count, 2 * m_capacity, m_capacity ? 0 : kLeastCapacity});
        void* const data = std::realloc(m_data, capacity * sizeof(T));
        if (!data) throw std::bad_alloc();
        m_data = static_cast<T*>(data);
        m_capacity = capacity;
    }

    T* m_data = nullptr;
    size_t m_size = 0;
    size_t m_capacity = 0;
};

} // namespace ozcg
