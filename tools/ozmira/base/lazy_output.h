#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace ozm::tool {

/// Tells whether the bytes of a file are what would be written.
using SameContent = std::function<bool(std::span<const uint8_t>)>;

/// An output that is made only where it has to be written.
struct LazyOutput {
    size_t bound = 0;   ///< Of the size of a file that may hold the same, in bytes.
    SameContent isSame; ///< Whether a file holds the output.
    std::function<std::span<const uint8_t>()> make; ///< What to write, valid until the next call.
};

} // namespace ozm::tool
