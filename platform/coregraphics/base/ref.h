// Ownership of reference-counted objects.
#pragma once

#include <utility>

namespace ozcg {

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

    /// Takes over the caller's reference.
    static Ref adopting(T* object) noexcept {
        Ref ref;
        ref.m_object = object;
        return ref;
    }
    /// Adds a reference. NULL makes an empty Ref.
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

/// CGxxxRetain and CGxxxRelease, of which NULL is allowed.
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
