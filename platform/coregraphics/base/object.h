// Base of everything that CFRetain and CFRelease handle, and the smart pointer that owns a reference.
#pragma once

#include <CoreFoundation/CFBase.h>

#include <atomic>
#include <cstddef>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

namespace ozcg {

/// What CFGetTypeID answers; 0 is no type.
enum class TypeId : CFTypeID {
    string = 1,
    data,
    array,
    colorSpace,
    color,
    path,
    gradient,
    dataProvider,
    image,
    context,
    pixelStorage,
    clipMask,
};

/// Counted by reference, atomically. Starts with one reference, the creator's. Every class derives from it
/// first and singly: CFTypeRef is the address of this base.
class Object {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    void retain() const noexcept {
        if (!isImmortal()) m_references.fetch_add(1, std::memory_order_relaxed);
    }

    void release() const noexcept {
        if (isImmortal()) return;
        // A plain load answers for the only owner: nobody else can add a reference meanwhile.
        if (!isUnique() && m_references.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
        m_references.store(0, std::memory_order_relaxed);
        const_cast<Object*>(this)->dispose();
    }

    /// True when the caller's reference is the only one: nobody else can see a change.
    bool isUnique() const noexcept { return m_references.load(std::memory_order_acquire) == 1; }

    std::size_t references() const noexcept { return m_references.load(std::memory_order_relaxed); }

    TypeId typeId() const noexcept { return m_typeId; }

protected:
    /// Immortal objects are not counted, so that threads that share one do not wait for each other.
    enum class Lifetime : std::size_t { counted = 1, immortal = std::numeric_limits<std::size_t>::max() };

    constexpr explicit Object(TypeId typeId, Lifetime lifetime = Lifetime::counted) noexcept
        : m_references(static_cast<std::size_t>(lifetime)), m_typeId(typeId) {}
    virtual ~Object() = default;

    /// Called when the last reference is gone. May keep the object for later, when it is retained again.
    virtual void dispose() noexcept { delete this; }

private:
    bool isImmortal() const noexcept {
        return m_references.load(std::memory_order_relaxed) == static_cast<std::size_t>(Lifetime::immortal);
    }

    mutable std::atomic<std::size_t> m_references;
    const TypeId m_typeId;
};

/// Owns one reference to an object, or none.
template <class T>
class Ref {
public:
    Ref() noexcept = default;
    Ref(const Ref& other) noexcept : Ref(retaining(other.m_object)) {}
    Ref(Ref&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    Ref& operator=(Ref other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~Ref() {
        if (m_object) m_object->release();
    }

    /// Takes over a reference that the caller owns.
    static Ref adopting(T* object) noexcept {
        Ref ref;
        ref.m_object = object;
        return ref;
    }
    /// Adds a reference of its own. NULL gives an empty Ref.
    static Ref retaining(T* object) noexcept {
        if (object) object->retain();
        return adopting(object);
    }

    T* get() const noexcept { return m_object; }
    T* operator->() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }
    bool operator==(const Ref& other) const noexcept { return m_object == other.m_object; }

    /// Hands the reference to the caller.
    [[nodiscard]] T* leak() noexcept { return std::exchange(m_object, nullptr); }

private:
    T* m_object = nullptr;
};

/// Runs what may run out of memory; answers `failure` then. The interface is C's, so nothing may throw
/// through it.
template <class Result, class Function>
Result orWhenOutOfMemory(Result failure, Function&& function) noexcept {
    try {
        return std::forward<Function>(function)();
    } catch (const std::bad_alloc&) {
        return failure;
    } catch (const std::length_error&) {
        return failure;
    }
}

/// Whether the thread failed to make a path, a gradient, a colour or a colour space since it last made a
/// bitmap context: what it draws meanwhile lacks something.
inline constinit thread_local bool missesIngredient = false;

/// Passes on such an object, and takes a note when there is none because memory is short.
template <class T>
T* ingredient(T* object) noexcept {
    if (!object) missesIngredient = true;
    return object;
}

/// A new object, or NULL when memory is short.
template <class T, class... Args>
T* create(Args&&... args) noexcept {
    return orWhenOutOfMemory(static_cast<T*>(nullptr), [&] { return new T(std::forward<Args>(args)...); });
}

/// A static object that is never destroyed, so that it outlives every user of it.
template <class T>
union Immortal {
    template <class... Args>
    constexpr explicit Immortal(Args&&... args) : value(std::forward<Args>(args)...) {}
    ~Immortal() {}

    T value;
};

/// CGxxxRetain and CGxxxRelease, for NULL too.
template <class T>
T* retained(T* object) noexcept {
    if (object) object->retain();
    return object;
}
template <class T>
void released(T* object) noexcept {
    if (object) object->release();
}

} // namespace ozcg
