#pragma once

#include <utility>

namespace ozcg {

/// Holds a static object that is never destroyed, so that it outlives all its users.
template <class T>
union Immortal {
    template <class... Args>
    constexpr explicit Immortal(Args&&... args) : value(std::forward<Args>(args)...) {}
    ~Immortal() {}

    T value;
};

} // namespace ozcg
