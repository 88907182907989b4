#pragma once

#include <cstddef>
#include <cstdint>

namespace ozcg {

/// Composites `n` premultiplied pixels over others with the same order of bytes, weighted by coverage.
/// `alphaShift` is 24 where alpha is the last byte of a pixel, 0 where it is the first.
void compositeRow(uint8_t* dst, const uint8_t* src, const uint8_t* coverage, size_t n,
                  int alphaShift) noexcept;

} // namespace ozcg
