// One object for each thread that asks for it, destroyed when the thread ends.
#pragma once

#include <memory>
#include <new>
#include <type_traits>

#include <pthread.h>

namespace ozcg {

/// A thread's object of type `T`. Kept with a key of POSIX and not by a destructor of C++, because
/// registering one of those ends the program when memory is short. What asks again while the thread ends gets
/// a new one.
template <typename T>
class ThreadOwned {
    static_assert(std::is_nothrow_default_constructible_v<T>);

public:
    /// The calling thread's, made if there is none. Null when memory runs out.
    static T* get() noexcept { return s_object ? s_object : make(); }
    /// As above, but throws std::bad_alloc when memory runs out.
    static T& getOrThrow() {
        T* const object = get();
        if (!object) throw std::bad_alloc();
        return *object;
    }

private:
    class Key {
    public:
        Key() noexcept : m_works(pthread_key_create(&m_key, destroy) == 0) {}
        bool hold(T* object) const noexcept { return m_works && pthread_setspecific(m_key, object) == 0; }

    private:
        pthread_key_t m_key{};
        bool m_works;
    };

    static T* make() noexcept {
        static const Key key;
        std::unique_ptr<T> object(new (std::nothrow) T);
        if (object && key.hold(object.get())) s_object = object.release();
        return s_object;
    }

    static void destroy(void* object) {
        s_object = nullptr;
        delete static_cast<T*>(object);
    }

    static inline constinit thread_local T* s_object = nullptr;
};

} // namespace ozcg
