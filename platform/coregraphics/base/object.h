// The base class of all objects that CFRetain and CFRelease accept.
#pragma once

#include <CoreFoundation/CFBase.h>

#include <atomic>
#include <cstddef>
#include <limits>

namespace ozcg {

/// The values of CFGetTypeID; 0 is no type.
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

/// A reference-counted object; the count is atomic and starts at one, the creator's reference. CFTypeRef is
/// the address of this base, so it must be the first and only base class.
class Object {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    void retain() const noexcept {
        if (!isImmortal()) m_references.fetch_add(1, std::memory_order_relaxed);
    }

    void release() const noexcept {
        if (isImmortal()) return;
        if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1) const_cast<Object*>(this)->dispose();
    }

    /// True when the caller holds the only reference, so that nobody else can see a change.
    bool isUnique() const noexcept { return m_references.load(std::memory_order_acquire) == 1; }

    std::size_t references() const noexcept { return m_references.load(std::memory_order_relaxed); }

    TypeId typeId() const noexcept { return m_typeId; }

    /// The result of CFEqual for two objects of the same type. Identity unless overridden.
    virtual bool isEqualTo(const Object& other) const noexcept { return this == &other; }

protected:
    /// Immortal objects are not counted, so threads that share one do not contend for its counter.
    enum class Lifetime : std::size_t { counted = 1, immortal = std::numeric_limits<std::size_t>::max() };

    constexpr explicit Object(TypeId typeId, Lifetime lifetime = Lifetime::counted) noexcept
        : m_references(static_cast<std::size_t>(lifetime)), m_typeId(typeId) {}
    virtual ~Object() = default;

    /// Called when the last reference is released. May keep the object for reuse.
    virtual void dispose() noexcept { delete this; }

private:
    bool isImmortal() const noexcept {
        return m_references.load(std::memory_order_relaxed) == static_cast<std::size_t>(Lifetime::immortal);
    }

    mutable std::atomic<std::size_t> m_references;
    const TypeId m_typeId;
};

} // namespace ozcg
