// One object for each thread that asks for it, destroyed when the thread ends.
#pragma once

#include <atomic>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include <pthread.h>

namespace ozm::support {

/// Owns one object of type `T` per thread. A thread that asks for its object after the object was destroyed,
/// while the thread is ending, gets a new one.
///
/// A POSIX thread key destroys the objects. A C++ thread-local destructor is no alternative, because
/// registering it terminates the program when memory runs out. The key is deleted when the library is
/// unloaded or the program exits, so that threads which end later do not call unloaded code; their objects
/// are leaked.
template <typename T>
class ThreadOwned {
    static_assert(std::is_nothrow_default_constructible_v<T>);

public:
    /// The calling thread's object, made on first use. Null if memory runs out.
    static T* get() noexcept { return s_object ? s_object : make(); }
    /// As above, but throws `std::bad_alloc` if memory runs out.
    static T& getOrThrow() {
        T* const object = get();
        if (!object) throw std::bad_alloc();
        return *object;
    }
    /// The calling thread's object; null if it has none.
    static T* existing() noexcept { return s_object; }
    /// Destroys the calling thread's object, if it has one. The next call of `get` makes another.
    static void release() noexcept { delete std::exchange(s_object, nullptr); }

private:
    class Key {
    public:
        Key() noexcept : m_exists(pthread_key_create(&m_key, destroy) == 0) {}
        ~Key() {
            if (m_exists.exchange(false)) pthread_key_delete(m_key);
        }
        Key(const Key&) = delete;
        Key& operator=(const Key&) = delete;

        bool hold(T* object) const noexcept { return m_exists && pthread_setspecific(m_key, object) == 0; }

    private:
        pthread_key_t m_key{};
        std::atomic<bool> m_exists; // Atomic, because threads may still run while the program exits.
    };

    static T* make() noexcept {
        static const Key key;
        std::unique_ptr<T> object(new (std::nothrow) T);
        if (object && key.hold(object.get())) s_object = object.release();
        return s_object;
    }

    // The key still holds an object that was released, which is the thread's no more.
    static void destroy(void*) { release(); }

    static inline constinit thread_local T* s_object = nullptr;
};

} // namespace ozm::support
